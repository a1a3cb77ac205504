// Arc length of a cubic on its 8-value array, and the searches that turn an
// arc-length offset, a point on the curve or a point near it into a time.
#include "curve/values.h"

#include <zgraphics/model.h>

#include <algorithm>
#include <cmath>

std::function<double(double)> zgCurve::_getLengthIntegrand(QVector<double> values)
{
    const zgCurveValues v(values);
    // Coefficients of the derivative B'(t) = (a t + b) t + c, per coordinate.
    const double ax = 9.0 * (v.x1 - v.x2) + 3.0 * (v.x3 - v.x0);
    const double bx = 6.0 * (v.x0 + v.x2) - 12.0 * v.x1;
    const double cx = 3.0 * (v.x1 - v.x0);
    const double ay = 9.0 * (v.y1 - v.y2) + 3.0 * (v.y3 - v.y0);
    const double by = 6.0 * (v.y0 + v.y2) - 12.0 * v.y1;
    const double cy = 3.0 * (v.y1 - v.y0);
    return [ax, bx, cx, ay, by, cy](double t) {
        const double dx = (ax * t + bx) * t + cx;
        const double dy = (ay * t + by) * t + cy;
        return std::sqrt(dx * dx + dy * dy);
    };
}

int zgCurve::getIterations(double a, double b)
{
    // 32 points per unit of time, at least 2 and at most the 16 of the
    // quadrature tables. Decided in doubles, so that an infinite range takes
    // 16 and a NaN one 2, without an undefined conversion.
    const double n = std::ceil(std::fabs(b - a) * 32.0);
    if (n > 16.0)
        return 16;
    if (!(n >= 2.0))
        return 2;
    return int(n);
}

double zgCurve::getLength(QVector<double> values, double a, double b)
{
    if (isStraight(values)) {
        // A straight curve is as long as the chord of the part.
        QVector<double> part = values;
        if (b < 1.0) {
            part = subdivide(part, b).at(0);
            a /= b;
        }
        if (a > 0.0)
            part = subdivide(part, a).at(1);
        const zgCurveValues p(part);
        return zgPoint(p.x0, p.y0).getDistance(zgPoint(p.x3, p.y3));
    }
    return zgNumeric::integrate(_getLengthIntegrand(values), a, b, getIterations(a, b));
}

double zgCurve::getTimeAt(QVector<double> values, double offset, double start)
{
    if (start == -100.0)
        start = offset < 0.0 ? 1.0 : 0.0;
    if (offset == 0.0)
        return start;

    const bool forward = offset > 0.0;
    const double a = forward ? start : 0.0;
    const double b = forward ? 1.0 : start;
    const double rangeLength = getLength(values, a, b);
    const double diff = std::fabs(offset) - rangeLength;
    // 1e-12: the offset reaches the end of the range exactly.
    if (std::fabs(diff) < 1e-12)
        return forward ? b : a;
    // Also for a NaN diff (a NaN offset or start): no time is found.
    if (!(diff <= 1e-12))
        return -100.0;

    // The running integral: each Newton step integrates only the stretch
    // between the previous guess and the new one, signed, so that the sum
    // stays right when a guess moves backwards.
    const std::function<double(double)> integrand = _getLengthIntegrand(values);
    double runningLength = 0.0;
    double runningTime = start;
    const auto lengthMinusOffset = [&](double t) {
        runningLength += zgNumeric::integrate(integrand, runningTime, t,
                                              getIterations(runningTime, t));
        runningTime = t;
        return runningLength - offset;
    };
    // At most 32 Newton steps, to a step below 1e-12.
    return zgNumeric::findRoot(lengthMinusOffset, integrand, start + offset / rangeLength, a, b,
                               32, 1e-12);
}

namespace {

// Whether point lies so far outside the box of the control points that no
// point of the curve, as evaluated, comes within 2e-07 of it. The curve lies
// in that box, and its evaluation strays from it by rounding only, far less
// than 1e-10 of the largest value. A NaN value or coordinate never tells.
bool farOutsideControlBox(const zgCurveValues &v, const zgPoint &point)
{
    const double xs[4] = { v.x0, v.x1, v.x2, v.x3 };
    const double ys[4] = { v.y0, v.y1, v.y2, v.y3 };
    double minX = xs[0], maxX = xs[0], minY = ys[0], maxY = ys[0];
    double largest = 0.0;
    for (int k = 0; k < 4; ++k) {
        if (qIsNaN(xs[k]) || qIsNaN(ys[k]))
            return false;
        minX = std::min(minX, xs[k]);
        maxX = std::max(maxX, xs[k]);
        minY = std::min(minY, ys[k]);
        maxY = std::max(maxY, ys[k]);
        largest = std::max({ largest, std::fabs(xs[k]), std::fabs(ys[k]) });
    }
    // 2e-07: the tolerance of the root test below, widened by the rounding
    // of the evaluation.
    const double margin = 2e-07 + 1e-10 * largest;
    return point.x < minX - margin || point.x > maxX + margin || point.y < minY - margin
            || point.y > maxY + margin;
}

} // namespace

double zgCurve::getTimeOf(QVector<double> values, const zgPoint &point)
{
    const zgCurveValues v(values);
    const zgPoint start(v.x0, v.y0);
    const zgPoint end(v.x3, v.y3);
    // 1e-12: the point is an end point.
    if (point.isClose(start, 1e-12))
        return 0.0;
    if (point.isClose(end, 1e-12))
        return 1.0;
    // Far from the curve neither a root nor an end point comes close.
    if (farOutsideControlBox(v, point))
        return -100.0;

    // Solve x first, then y; the first root whose curve point lies within
    // 2e-07 of the point wins.
    const double coordinates[2] = { point.x, point.y };
    QVector<double> roots;
    for (int coord = 0; coord < 2; ++coord) {
        const int count = solveCubic(values, coord, coordinates[coord], roots, 0.0, 1.0);
        for (int i = 0; i < count && i < roots.size(); ++i) {
            const double u = roots.at(i);
            if (point.isClose(getPoint(values, u), 2e-07))
                return u;
        }
    }

    // 2e-07: no root came close, but an end point does.
    if (point.isClose(start, 2e-07))
        return 0.0;
    if (point.isClose(end, 2e-07))
        return 1.0;
    return -100.0;
}

namespace {

// Nearest time on a straight curve, by projection onto the chord.
double nearestTimeOnChord(const QVector<double> &values, const zgPoint &point)
{
    const zgCurveValues v(values);
    const double vx = v.x3 - v.x0;
    const double vy = v.y3 - v.y0;
    const double det = vx * vx + vy * vy;
    if (det == 0.0)
        return 0.0;
    const double u = ((point.x - v.x0) * vx + (point.y - v.y0) * vy) / det;
    // 1e-12: a projection this close to an end is the end.
    if (u < 1e-12)
        return 0.0;
    if (u > 0.999999999999)
        return 1.0;
    // With handles, time and chord proportion differ: find the time of the
    // projected point.
    return zgCurve::getTimeOf(values, zgPoint(v.x0 + u * vx, v.y0 + u * vy));
}

} // namespace

double zgCurve::getNearestTime(QVector<double> values, const zgPoint &point)
{
    if (isStraight(values))
        return nearestTimeOnChord(values, point);

    double bestDistance = qInf();
    double bestTime = 0.0;
    // Takes t as the best time if its point is strictly nearer than the best.
    const auto refine = [&](double t) {
        if (t < 0.0 || t > 1.0)
            return false;
        const double distance = point.getDistance(getPoint(values, t), true);
        if (distance < bestDistance) {
            bestDistance = distance;
            bestTime = t;
            return true;
        }
        return false;
    };

    for (int i = 0; i <= 100; ++i)
        refine(i / 100.0);
    // Walk from the best sample while a side improves, halving the step when
    // neither does, down to 4e-07 (the time resolution at the ends).
    double step = 0.005;
    while (step > 4e-07) {
        if (!refine(bestTime - step) && !refine(bestTime + step))
            step /= 2.0;
    }
    return bestTime;
}
