// Knot insertion, resizing, splitting and the conversion into Beziers.
#include "spline/spline_block.h"

#include <algorithm>
#include <cstring>

using namespace zgSplineDetail;

namespace {

// *out = a copy of spline, or spline itself when out already holds it.
int copyInto(const SplineRecord *spline, SplineRecord **out, SplineStatus *status)
{
    if (*out == spline)
        return succeed(status);
    *out = copySpline(spline);
    return *out ? succeed(status) : outOfMemory(status);
}

// Clears *out unless it holds the input, which stays until the new block is
// complete.
void clearOutput(const SplineRecord *spline, SplineRecord **out)
{
    if (*out != spline)
        *out = nullptr;
}

} // namespace

int insertKnot(const SplineRecord *spline, const DeBoorNet *net, std::size_t n, SplineRecord **out,
               SplineStatus *status)
{
    clearOutput(spline, out);
    if (n == 0)
        return copyInto(spline, out, status);
    const std::size_t degree = spline->degree;
    const std::size_t order = degree + 1;
    if (net->s + n > order)
        return report(status, SplineMultiplicityTooHigh, "multiplicity(%f) (%lu) + %lu > order (%lu)", net->u,
                      static_cast<unsigned long>(net->s), static_cast<unsigned long>(n),
                      static_cast<unsigned long>(order));

    SplineRecord *result = nullptr;
    const int resized = resizeSpline(spline, static_cast<std::ptrdiff_t>(n), true, &result, status);
    if (resized != SplineSuccess)
        return resized;

    const std::size_t dim = spline->dimension;
    const std::size_t k = net->k;
    const std::size_t rowLength = net->h + 1; // points in the net's first row
    const std::size_t firstChanged = k - degree;
    const std::size_t firstKept = firstChanged + rowLength;
    const double *from = splineControlPoints(spline);
    double *to = controlPointsOf(result);
    std::memcpy(to, from, firstChanged * dim * sizeof(double));
    std::memcpy(to + (firstKept + n) * dim, from + firstKept * dim,
                (spline->numControlPoints - firstKept) * dim * sizeof(double));
    const double *fromKnots = splineKnots(spline);
    double *toKnots = knotsOf(result);
    std::memcpy(toKnots, fromKnots, (k + 1) * sizeof(double));
    std::memcpy(toKnots + k + 1 + n, fromKnots + k + 1, (spline->numKnots - k - 1) * sizeof(double));

    // The new control points: the first point of each of the net's first n
    // rows, the whole of row n, then the last point of rows n - 1 down to 0.
    const double *table = deBoorNetPoints(net);
    auto rowStart = [rowLength](std::size_t r) { return r * rowLength - r * (r - 1) / 2; };
    double *next = to + firstChanged * dim;
    auto take = [&](std::size_t point, std::size_t count) {
        std::memcpy(next, table + point * dim, count * dim * sizeof(double));
        next += count * dim;
    };
    for (std::size_t r = 0; r < n; ++r)
        take(rowStart(r), 1);
    take(rowStart(n), rowLength - n);
    for (std::size_t r = n; r-- > 0;)
        take(rowStart(r) + rowLength - r - 1, 1);

    std::fill(toKnots + k + 1, toKnots + k + 1 + n, net->u);
    deliver(spline, out, result);
    return succeed(status);
}

int resizeSpline(const SplineRecord *spline, std::ptrdiff_t n, bool back, SplineRecord **out,
                 SplineStatus *status)
{
    clearOutput(spline, out);
    if (n == 0)
        return copyInto(spline, out, status);
    const std::size_t oldCount = spline->numControlPoints;
    const bool belowZero = n < 0 && static_cast<std::size_t>(-n) > oldCount;
    const std::size_t newCount = belowZero ? 0 : oldCount + n;
    const int checked = checkCounts(newCount, spline->dimension, spline->degree, status);
    if (checked != SplineSuccess)
        return checked;
    SplineRecord *result = allocateSpline(newCount, spline->dimension, spline->degree);
    if (!result)
        return outOfMemory(status);
    generateKnots(result, SplineOpened, nullptr);

    const std::size_t dim = spline->dimension;
    const std::size_t keptPoints = std::min(oldCount, newCount);
    const std::size_t keptKnots = std::min(spline->numKnots, result->numKnots);
    // Where the kept stretch starts in the old arrays and in the new ones.
    const std::size_t fromOffset = !back && n < 0 ? static_cast<std::size_t>(-n) : 0;
    const std::size_t toOffset = !back && n > 0 ? static_cast<std::size_t>(n) : 0;
    std::memcpy(controlPointsOf(result) + toOffset * dim, splineControlPoints(spline) + fromOffset * dim,
                keptPoints * dim * sizeof(double));
    std::memcpy(knotsOf(result) + toOffset, splineKnots(spline) + fromOffset, keptKnots * sizeof(double));
    deliver(spline, out, result);
    return succeed(status);
}

int splitAtKnot(const SplineRecord *spline, double u, SplineRecord **out, std::size_t *k, SplineStatus *status)
{
    clearOutput(spline, out);
    DeBoorNet *net = nullptr;
    const int evaluated = evaluateNet(spline, u, &net, status);
    if (evaluated != SplineSuccess)
        return evaluated;
    int result;
    if (net->s == splineOrder(spline)) {
        result = copyInto(spline, out, status);
        *k = net->k;
    } else {
        result = insertKnot(spline, net, net->h + 1, out, status);
        *k = net->k + 1 + net->h;
    }
    freeDeBoorNet(net);
    return result;
}

int toBeziers(const SplineRecord *spline, SplineRecord **out, SplineStatus *status)
{
    clearOutput(spline, out);
    SplineRecord *work = copySpline(spline);
    if (!work)
        return outOfMemory(status);
    const std::size_t degree = spline->degree;
    const std::size_t order = degree + 1;
    auto fail = [&work](int code) {
        freeSpline(work);
        return code;
    };
    std::size_t k = 0;
    int code = SplineSuccess;

    // The start: a knot of full multiplicity at the domain's start, and the
    // control points before it dropped.
    if (!knotsEqual(knotsOf(work)[0], knotsOf(work)[degree])) {
        if ((code = splitAtKnot(work, knotsOf(work)[degree], &work, &k, status)) != SplineSuccess)
            return fail(code);
        const std::ptrdiff_t dropped = static_cast<std::ptrdiff_t>(k - degree);
        if ((code = resizeSpline(work, -dropped, false, &work, status)) != SplineSuccess)
            return fail(code);
    }

    // The end, likewise.
    std::size_t numKnots = work->numKnots;
    if (!knotsEqual(knotsOf(work)[numKnots - 1], knotsOf(work)[numKnots - order])) {
        if ((code = splitAtKnot(work, knotsOf(work)[numKnots - order], &work, &k, status)) != SplineSuccess)
            return fail(code);
        numKnots = work->numKnots;
        const std::ptrdiff_t change = static_cast<std::ptrdiff_t>(order + k)
                - static_cast<std::ptrdiff_t>(numKnots + degree);
        if ((code = resizeSpline(work, change, true, &work, status)) != SplineSuccess)
            return fail(code);
    }

    // Every interior knot to full multiplicity; a split leaves k on the last
    // copy of its value.
    k = order;
    while (k < work->numKnots - order) {
        if ((code = splitAtKnot(work, knotsOf(work)[k], &work, &k, status)) != SplineSuccess)
            return fail(code);
        ++k;
    }

    deliver(spline, out, work);
    return succeed(status);
}
