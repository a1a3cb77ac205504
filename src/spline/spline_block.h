// Inner helpers of the spline engine: raw access to a block's arrays, block
// allocation, status reporting and the knot comparison.
#ifndef ZGRAPHICS_SPLINE_BLOCK_H
#define ZGRAPHICS_SPLINE_BLOCK_H

#include "spline/bspline.h"

#include <cmath>
#include <cstddef>

// Every allocation of the engine goes through here. s_failAfter is the
// number of allocations that still succeed before all later ones fail; -1,
// the default, never fails. Only tests change it, to reach the paths of a
// failed allocation.
class ZG_EXPORT zgSplineAllocation
{
public:
    static void *allocate(std::size_t bytes);
    static void *allocateZeroed(std::size_t bytes);
    static int s_failAfter;

private:
    static bool mayAllocate();
};

namespace zgSplineDetail {

inline double *controlPointsOf(SplineRecord *spline)
{
    return reinterpret_cast<double *>(spline + 1);
}

inline double *knotsOf(SplineRecord *spline)
{
    return controlPointsOf(spline) + spline->numControlPoints * spline->dimension;
}

inline double *pointsOf(DeBoorNet *net)
{
    return reinterpret_cast<double *>(net + 1);
}

// Two knot values closer than this count as equal.
inline bool knotsEqual(double a, double b)
{
    return std::fabs(a - b) < 1e-09;
}

// Writes code and the printf-formatted message to status (if any) and
// returns code.
int report(SplineStatus *status, int code, const char *format, ...);
// Success: code 0 and an empty message.
int succeed(SplineStatus *status);
int outOfMemory(SplineStatus *status);

// The checks of createSpline on the given counts, in its order; 0 if all pass.
int checkCounts(std::size_t numControlPoints, std::size_t dimension, std::size_t degree,
                SplineStatus *status);
// A zero-filled block with the header set, or null if the size overflows or
// the allocation fails.
SplineRecord *allocateSpline(std::size_t numControlPoints, std::size_t dimension, std::size_t degree);
// An exact copy of spline, or null if the allocation fails.
SplineRecord *copySpline(const SplineRecord *spline);
// Stores result in *out; frees the input block first if out holds it.
void deliver(const SplineRecord *input, SplineRecord **out, SplineRecord *result);

} // namespace zgSplineDetail

#endif // ZGRAPHICS_SPLINE_BLOCK_H
