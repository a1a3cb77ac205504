// Knot spans and de Boor evaluation.
#include "spline/spline_block.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

using namespace zgSplineDetail;

namespace {

int belowDomain(SplineStatus *status, double u, double min)
{
    return report(status, SplineKnotOutOfDomain, "knot (%f) < min(domain) (%f)", u, min);
}

int aboveDomain(SplineStatus *status, double u, double max)
{
    return report(status, SplineKnotOutOfDomain, "knot (%f) > max(domain) (%f)", u, max);
}

// The net's storage is sized for the largest table of the degree, with room
// to spare: max(2, (degree + 2)(degree + 1) / 2) * dimension slots of 48
// doubles each. Null if the size overflows or the allocation fails.
DeBoorNet *allocateNet(std::size_t degree, std::size_t dimension)
{
    const std::size_t maxSlots = (std::numeric_limits<std::size_t>::max() - sizeof(DeBoorNet))
            / (48 * sizeof(double));
    if (degree > 0xFFFFFFFFu)
        return nullptr;
    const std::size_t tablePoints = std::max<std::size_t>(2, (degree + 2) * (degree + 1) / 2);
    if (tablePoints > maxSlots / dimension)
        return nullptr;
    const std::size_t bytes = sizeof(DeBoorNet) + tablePoints * dimension * 48 * sizeof(double);
    return static_cast<DeBoorNet *>(zgSplineAllocation::allocate(bytes));
}

} // namespace

int findKnotSpan(const SplineRecord *spline, double u, std::size_t *k, std::size_t *s, SplineStatus *status)
{
    const std::size_t numKnots = spline->numKnots;
    const std::size_t order = splineOrder(spline);
    const double *knots = splineKnots(spline);
    const double min = knots[spline->degree];
    const double max = knots[numKnots - order];
    // Written so that a NaN u (or a NaN bound) fails the first test it meets.
    if (!(u >= min) && !knotsEqual(u, min))
        return belowDomain(status, u, min);
    if (!(u <= max) && !knotsEqual(u, max))
        return aboveDomain(status, u, max);

    std::size_t span;
    if (knotsEqual(u, knots[numKnots - 1])) {
        span = numKnots - 1;
    } else {
        // Binary search for knot[span] <= u < knot[span + 1], a knot within
        // 1e-09 of u counting as at or below it. The width test only matters
        // for NaN knots, where the bracket is never found.
        std::size_t low = 0;
        std::size_t high = numKnots - 1;
        span = (low + high) / 2;
        auto atOrBelow = [&](std::size_t i) { return knots[i] <= u || knotsEqual(knots[i], u); };
        while (!(atOrBelow(span) && u < knots[span + 1]) && high - low > 1) {
            if (atOrBelow(span))
                low = span;
            else
                high = span;
            span = (low + high) / 2;
        }
        while (span < numKnots - 1 && knotsEqual(knots[span + 1], u))
            ++span;
    }

    // The multiplicity never counts knots before the first one.
    std::size_t mult = std::min(order, span + 1);
    while (mult != 0 && !knotsEqual(knots[span - mult + 1], u))
        --mult;
    *k = span;
    *s = mult;
    return succeed(status);
}

int evaluateNet(const SplineRecord *spline, double u, DeBoorNet **net, SplineStatus *status)
{
    *net = nullptr;
    std::size_t k = 0;
    std::size_t s = 0;
    const int found = findKnotSpan(spline, u, &k, &s, status);
    if (found != SplineSuccess)
        return found;

    const std::size_t degree = spline->degree;
    const std::size_t order = degree + 1;
    const std::size_t dim = spline->dimension;
    const std::size_t numKnots = spline->numKnots;
    const double *knots = splineKnots(spline);
    const double *controlPoints = splineControlPoints(spline);
    if (knotsEqual(u, knots[k]))
        u = knots[k];
    const std::size_t h = s > degree ? 0 : degree - s;

    // Spans found among NaN knots can point outside the arrays; such a u is
    // not inside the domain.
    const bool breakSpan = s == order;
    const bool outside = k < degree
            || (breakSpan ? k != degree && k != numKnots - 1 && k - s + 1 >= spline->numControlPoints
                          : k - s >= spline->numControlPoints || k - s + degree >= numKnots);
    if (outside)
        return aboveDomain(status, u, knots[numKnots - order]);

    DeBoorNet *result = allocateNet(degree, dim);
    if (!result)
        return outOfMemory(status);
    result->u = u;
    result->k = k;
    result->s = s;
    result->h = h;
    result->dimension = dim;
    double *points = pointsOf(result);
    const std::size_t pointBytes = dim * sizeof(double);

    if (breakSpan) {
        // The curve ends or is broken here: its end point, or both sides.
        if (k == degree) {
            result->numPoints = 1;
            std::memcpy(points, controlPoints, pointBytes);
        } else if (k == numKnots - 1) {
            result->numPoints = 1;
            std::memcpy(points, controlPoints + (k - s) * dim, pointBytes);
        } else {
            result->numPoints = 2;
            std::memcpy(points, controlPoints + (k - s) * dim, 2 * pointBytes);
        }
        *net = result;
        return succeed(status);
    }

    const std::size_t first = k - degree;
    const std::size_t last = k - s;
    const std::size_t count = last - first + 1;
    result->numPoints = count * (count + 1) / 2;
    std::memcpy(points, controlPoints + first * dim, count * pointBytes);
    // Each row blends neighbouring points of the row before it.
    const double *left = points;
    const double *right = points + dim;
    double *next = points + count * dim;
    for (std::size_t r = 1; r <= h; ++r) {
        for (std::size_t i = first + r; i <= last; ++i) {
            const double a = (u - knots[i]) / (knots[i + degree - r + 1] - knots[i]);
            for (std::size_t c = 0; c < dim; ++c)
                next[c] = (1.0 - a) * left[c] + a * right[c];
            next += dim;
            left += dim;
            right += dim;
        }
        left += dim;
        right += dim;
    }
    *net = result;
    return succeed(status);
}
