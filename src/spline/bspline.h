// A small B-spline engine for any dimension and degree.
//
// A spline is one heap block (SplineRecord followed by its coordinates and
// knots). The plain functions return an integer status and, through an
// optional SplineStatus, a message; BSpline owns one block and turns every
// failing status into std::runtime_error. The engine is not part of the
// installed headers, but it is exported from the shared library.
//
// Outputs: a function that writes a new spline to *out first sets *out to
// null (the block it held, if any, stays the caller's), unless out holds the
// input itself, in which case the input block is freed once the new one is
// complete. A failing function leaves its input as it was, and *out null (or
// still holding the input), and frees whatever it allocated on the way.
// Blocks and arrays given out are freed with freeSpline, freeDeBoorNet and
// std::free.
#ifndef ZGRAPHICS_SPLINE_BSPLINE_H
#define ZGRAPHICS_SPLINE_BSPLINE_H

#include <zgraphics/primitives.h>

#include <cstddef>
#include <cstdint>
#include <vector>

// Status codes.
enum SplineStatusCode : int {
    SplineSuccess = 0,
    SplineOutOfMemory = -1,           // "out of memory"
    SplineDimensionZero = -2,         // "unsupported dimension: 0"
    SplineDegreeTooHigh = -3,         // "degree (%lu) >= num(control_points) (%lu)"
    SplineKnotOutOfDomain = -4,       // "knot (%f) < min(domain) (%f)", "knot (%f) > max(domain) (%f)"
    SplineMultiplicityTooHigh = -5,   // "mult(%f) (%lu) > order (%lu)",
                                      // "multiplicity(%f) (%lu) + %lu > order (%lu)"
    SplineKnotsDecreasing = -6,       // "decreasing knot vector at index: %lu"
    SplineKnotCountUnsupported = -7   // "unsupported number of knots: %lu > %i",
                                      // "num(knots) (%lu) %% order (%lu) != 0"
};

// Knot generation of createSpline and generateKnots. Any other value leaves
// the knots as they are (zeros in a new block).
enum SplineKnotType : int {
    SplineOpened = 0,   // equally spaced from 0.0 to 1.0
    SplineClamped = 1,  // order zeros, equal steps, order ones
    SplineBeziers = 2   // every value repeated order times: a chain of Beziers
};

// The most knots a spline may have. Knot values closer than 1e-09 count as
// equal throughout.
constexpr std::size_t SplineMaxKnots = 10000;

struct SplineStatus
{
    int code;
    char message[100]; // empty on success
};

// Header of a spline's block. It is followed by numControlPoints * dimension
// control point coordinates (interleaved) and numKnots non-decreasing knots,
// all doubles. numKnots is always numControlPoints + degree + 1.
struct SplineRecord
{
    std::uint64_t degree;           // the order is degree + 1
    std::uint64_t dimension;        // coordinates per control point, at least 1
    std::uint64_t numControlPoints;
    std::uint64_t numKnots;
};

// Header of the result of a de Boor evaluation, followed by numPoints points
// of dimension doubles each: the triangular table of de Boor points, row
// after row, or the one or two control points where the curve ends or breaks.
struct DeBoorNet
{
    double u;                 // the knot value evaluated
    std::uint64_t k;          // index of the last knot at or below u
    std::uint64_t s;          // multiplicity of u
    std::uint64_t h;          // insertions needed: degree - s, or 0 when s > degree
    std::uint64_t dimension;
    std::uint64_t numPoints;
};

// Accessors of a spline block.
ZG_EXPORT std::size_t splineDegree(const SplineRecord *spline);
ZG_EXPORT std::size_t splineOrder(const SplineRecord *spline);
ZG_EXPORT std::size_t splineDimension(const SplineRecord *spline);
ZG_EXPORT std::size_t splineNumControlPoints(const SplineRecord *spline);
ZG_EXPORT std::size_t splineNumKnots(const SplineRecord *spline);
// numControlPoints * dimension: the length of the coordinate array.
ZG_EXPORT std::size_t splineLenControlPoints(const SplineRecord *spline);
// Views into the block; valid while it lives.
ZG_EXPORT const double *splineControlPoints(const SplineRecord *spline);
ZG_EXPORT const double *splineKnots(const SplineRecord *spline);
// The points of a net, numPoints * dimension doubles.
ZG_EXPORT const double *deBoorNetPoints(const DeBoorNet *net);

ZG_EXPORT void freeSpline(SplineRecord *spline);
ZG_EXPORT void freeDeBoorNet(DeBoorNet *net);

// Allocates a spline and fills its knots by generateKnots. Tests, in this
// order: dimension 0 gives -2; more than SplineMaxKnots knots gives -7;
// degree not below numControlPoints gives -3. The control points are zeros.
ZG_EXPORT int createSpline(std::size_t numControlPoints, std::size_t dimension, std::size_t degree,
                           int knotType, SplineRecord **out, SplineStatus *status);
// Fills the knots of spline for knotType. Each step is 1.0 divided by the
// count in single precision, widened to double, so the knots hold
// single-precision steps. SplineBeziers needs a knot count that is a multiple
// of the order (-7 otherwise, knots unchanged).
ZG_EXPORT int generateKnots(SplineRecord *spline, int knotType, SplineStatus *status);
// *out becomes a copy of the control points, allocated with std::malloc.
ZG_EXPORT int getControlPoints(const SplineRecord *spline, double **out, SplineStatus *status);
// Copies splineLenControlPoints(spline) values in; nothing is checked.
ZG_EXPORT int setControlPoints(SplineRecord *spline, const double *values, SplineStatus *status);
// Checks and copies splineNumKnots(spline) values in. The multiplicity count
// starts at 1 for the first value and restarts at 0 after a step, so a later
// value may stand once more than the first one before -5. A value below its
// predecessor by 1e-09 or more gives -6 with its index. Nothing is copied on
// failure.
ZG_EXPORT int setKnots(SplineRecord *spline, const double *values, SplineStatus *status);
// The index k of the last knot at or below u and the multiplicity s of u.
// u outside [knot[degree], knot[numKnots - order]] by 1e-09 or more gives
// -4; a NaN u counts as below the domain.
ZG_EXPORT int findKnotSpan(const SplineRecord *spline, double u, std::size_t *k, std::size_t *s,
                           SplineStatus *status);
// The de Boor net of u, allocated in *net, with u snapped to a knot within
// 1e-09. Where s is the order, the net holds the control point at an end of
// the curve, or the two on either side of a break; otherwise the triangular
// table of N (N + 1) / 2 points, N = degree - s + 1, whose first row is
// control points k - degree to k - s and whose last point lies on the
// curve. A span among NaN knots that would read outside the arrays gives -4.
ZG_EXPORT int evaluateNet(const SplineRecord *spline, double u, DeBoorNet **net, SplineStatus *status);
// *out is spline with the net's knot inserted n more times (a copy for n 0).
// s + n above the order gives -5.
ZG_EXPORT int insertKnot(const SplineRecord *spline, const DeBoorNet *net, std::size_t n, SplineRecord **out,
                         SplineStatus *status);
// *out is spline with n more control points (fewer for n below 0), added or
// removed at the back (back true) or at the front; the kept control points
// and knots keep their order, the new ones are zeros and opened knots. The
// tests of createSpline apply to the new counts; a count below zero counts
// as zero.
ZG_EXPORT int resizeSpline(const SplineRecord *spline, std::ptrdiff_t n, bool back, SplineRecord **out,
                           SplineStatus *status);
// Raises the multiplicity of u to the order, so that the spline breaks into
// two pieces there; *k is then the index of the last copy of u.
ZG_EXPORT int splitAtKnot(const SplineRecord *spline, double u, SplineRecord **out, std::size_t *k,
                          SplineStatus *status);
// *out is the same curve as a chain of Beziers: every knot, the two ends
// included, has multiplicity order, and each group of order control points
// is one Bezier (neighbouring groups share no point: the end of one and the
// start of the next stand both).
ZG_EXPORT int toBeziers(const SplineRecord *spline, SplineRecord **out, SplineStatus *status);

// Owns one spline block. Every failing status becomes std::runtime_error
// with the status message. A moved-from BSpline may only be destroyed or
// assigned to.
class ZG_EXPORT BSpline
{
public:
    BSpline(std::size_t numControlPoints, std::size_t dimension, std::size_t degree, int knotType);
    BSpline(BSpline &&other) noexcept;
    BSpline &operator=(BSpline &&other) noexcept;
    BSpline(const BSpline &) = delete;
    BSpline &operator=(const BSpline &) = delete;
    ~BSpline();

    std::vector<double> getControlPoints() const;
    // Both throw "Expected size: E, Actual size: A" when values does not hold
    // exactly the expected number of doubles.
    void setControlPoints(const std::vector<double> &values);
    void setKnots(const std::vector<double> &values);
    BSpline toBeziers() const;
    std::size_t degree() const;
    std::size_t numControlPoints() const;

private:
    explicit BSpline(SplineRecord *record) : m_record(record) {}
    static void checkSize(std::size_t expected, std::size_t actual);

    SplineRecord *m_record;

    friend class zgSplineInternals;
};

#endif // ZGRAPHICS_SPLINE_BSPLINE_H
