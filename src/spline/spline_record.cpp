// Spline blocks: allocation, copies, accessors, status messages, knots and
// control points.
#include "spline/spline_block.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

using namespace zgSplineDetail;

int zgSplineAllocation::s_failAfter = -1;

bool zgSplineAllocation::mayAllocate()
{
    if (s_failAfter < 0)
        return true;
    if (s_failAfter == 0)
        return false;
    --s_failAfter;
    return true;
}

void *zgSplineAllocation::allocate(std::size_t bytes)
{
    return mayAllocate() ? std::malloc(bytes) : nullptr;
}

void *zgSplineAllocation::allocateZeroed(std::size_t bytes)
{
    return mayAllocate() ? std::calloc(1, bytes) : nullptr;
}

namespace zgSplineDetail {

int report(SplineStatus *status, int code, const char *format, ...)
{
    if (status) {
        status->code = code;
        va_list args;
        va_start(args, format);
        std::vsnprintf(status->message, sizeof status->message, format, args);
        va_end(args);
    }
    return code;
}

int succeed(SplineStatus *status)
{
    if (status) {
        status->code = SplineSuccess;
        status->message[0] = '\0';
    }
    return SplineSuccess;
}

int outOfMemory(SplineStatus *status)
{
    return report(status, SplineOutOfMemory, "out of memory");
}

int checkCounts(std::size_t numControlPoints, std::size_t dimension, std::size_t degree,
                SplineStatus *status)
{
    if (dimension == 0)
        return report(status, SplineDimensionZero, "unsupported dimension: 0");
    const std::size_t numKnots = numControlPoints + degree + 1;
    // A count that wraps around is no smaller than the limit.
    const bool wrapped = numKnots <= degree;
    if (wrapped || numKnots > SplineMaxKnots)
        return report(status, SplineKnotCountUnsupported, "unsupported number of knots: %lu > %i",
                      static_cast<unsigned long>(numKnots), static_cast<int>(SplineMaxKnots));
    if (degree >= numControlPoints)
        return report(status, SplineDegreeTooHigh, "degree (%lu) >= num(control_points) (%lu)",
                      static_cast<unsigned long>(degree), static_cast<unsigned long>(numControlPoints));
    return SplineSuccess;
}

SplineRecord *allocateSpline(std::size_t numControlPoints, std::size_t dimension, std::size_t degree)
{
    const std::size_t maxDoubles = (std::numeric_limits<std::size_t>::max() - sizeof(SplineRecord))
            / sizeof(double);
    const std::size_t numKnots = numControlPoints + degree + 1;
    if (numControlPoints > maxDoubles / dimension)
        return nullptr;
    const std::size_t numCoordinates = numControlPoints * dimension;
    if (numKnots > maxDoubles - numCoordinates)
        return nullptr;
    const std::size_t bytes = sizeof(SplineRecord) + (numCoordinates + numKnots) * sizeof(double);
    auto *spline = static_cast<SplineRecord *>(zgSplineAllocation::allocateZeroed(bytes));
    if (!spline)
        return nullptr;
    spline->degree = degree;
    spline->dimension = dimension;
    spline->numControlPoints = numControlPoints;
    spline->numKnots = numKnots;
    return spline;
}

SplineRecord *copySpline(const SplineRecord *spline)
{
    const std::size_t bytes = sizeof(SplineRecord)
            + (splineLenControlPoints(spline) + spline->numKnots) * sizeof(double);
    auto *copy = static_cast<SplineRecord *>(zgSplineAllocation::allocate(bytes));
    if (copy)
        std::memcpy(copy, spline, bytes);
    return copy;
}

void deliver(const SplineRecord *input, SplineRecord **out, SplineRecord *result)
{
    if (*out == input)
        freeSpline(*out);
    *out = result;
}

} // namespace zgSplineDetail

std::size_t splineDegree(const SplineRecord *spline)
{
    return spline->degree;
}

std::size_t splineOrder(const SplineRecord *spline)
{
    return spline->degree + 1;
}

std::size_t splineDimension(const SplineRecord *spline)
{
    return spline->dimension;
}

std::size_t splineNumControlPoints(const SplineRecord *spline)
{
    return spline->numControlPoints;
}

std::size_t splineNumKnots(const SplineRecord *spline)
{
    return spline->numKnots;
}

std::size_t splineLenControlPoints(const SplineRecord *spline)
{
    return spline->numControlPoints * spline->dimension;
}

const double *splineControlPoints(const SplineRecord *spline)
{
    return controlPointsOf(const_cast<SplineRecord *>(spline));
}

const double *splineKnots(const SplineRecord *spline)
{
    return knotsOf(const_cast<SplineRecord *>(spline));
}

const double *deBoorNetPoints(const DeBoorNet *net)
{
    return pointsOf(const_cast<DeBoorNet *>(net));
}

void freeSpline(SplineRecord *spline)
{
    std::free(spline);
}

void freeDeBoorNet(DeBoorNet *net)
{
    std::free(net);
}

int createSpline(std::size_t numControlPoints, std::size_t dimension, std::size_t degree, int knotType,
                 SplineRecord **out, SplineStatus *status)
{
    *out = nullptr;
    const int checked = checkCounts(numControlPoints, dimension, degree, status);
    if (checked != SplineSuccess)
        return checked;
    SplineRecord *spline = allocateSpline(numControlPoints, dimension, degree);
    if (!spline)
        return outOfMemory(status);
    const int generated = generateKnots(spline, knotType, status);
    if (generated != SplineSuccess) {
        freeSpline(spline);
        return generated;
    }
    *out = spline;
    return SplineSuccess;
}

int generateKnots(SplineRecord *spline, int knotType, SplineStatus *status)
{
    const std::size_t numKnots = spline->numKnots;
    const std::size_t degree = spline->degree;
    const std::size_t order = degree + 1;
    double *knots = knotsOf(spline);
    // Each step is divided in single precision and then widened.
    auto stepFor = [](std::size_t count) { return static_cast<double>(1.0f / static_cast<float>(count)); };

    if (knotType == SplineBeziers && numKnots % order != 0)
        return report(status, SplineKnotCountUnsupported, "num(knots) (%lu) %% order (%lu) != 0",
                      static_cast<unsigned long>(numKnots), static_cast<unsigned long>(order));

    if (knotType == SplineOpened) {
        const double step = stepFor(numKnots - 1);
        for (std::size_t i = 0; i + 1 < numKnots; ++i)
            knots[i] = i * step;
        knots[numKnots - 1] = 1.0;
    } else if (knotType == SplineClamped || knotType == SplineBeziers) {
        const bool clamped = knotType == SplineClamped;
        const double step = clamped ? stepFor(numKnots - 2 * degree - 1) : stepFor(numKnots / order - 1);
        for (std::size_t i = 0; i < order; ++i) {
            knots[i] = 0.0;
            knots[numKnots - 1 - i] = 1.0;
        }
        for (std::size_t i = order; i < numKnots - order; ++i)
            knots[i] = clamped ? (i - degree) * step : (i / order) * step;
    }
    return succeed(status);
}

int getControlPoints(const SplineRecord *spline, double **out, SplineStatus *status)
{
    const std::size_t bytes = splineLenControlPoints(spline) * sizeof(double);
    *out = static_cast<double *>(zgSplineAllocation::allocate(bytes));
    if (!*out)
        return outOfMemory(status);
    std::memcpy(*out, splineControlPoints(spline), bytes);
    return succeed(status);
}

int setControlPoints(SplineRecord *spline, const double *values, SplineStatus *status)
{
    std::memcpy(controlPointsOf(spline), values, splineLenControlPoints(spline) * sizeof(double));
    return succeed(status);
}

int setKnots(SplineRecord *spline, const double *values, SplineStatus *status)
{
    const std::size_t order = splineOrder(spline);
    std::size_t mult = 1;
    for (std::size_t i = 1; i < spline->numKnots; ++i) {
        if (knotsEqual(values[i], values[i - 1])) {
            ++mult;
            if (mult > order)
                return report(status, SplineMultiplicityTooHigh, "mult(%f) (%lu) > order (%lu)", values[i],
                              static_cast<unsigned long>(mult), static_cast<unsigned long>(order));
        } else if (values[i] < values[i - 1]) {
            return report(status, SplineKnotsDecreasing, "decreasing knot vector at index: %lu",
                          static_cast<unsigned long>(i));
        } else {
            mult = 0;
        }
    }
    std::memcpy(knotsOf(spline), values, spline->numKnots * sizeof(double));
    return succeed(status);
}
