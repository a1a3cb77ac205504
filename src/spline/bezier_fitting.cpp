// Cubic interpolation of points, B-spline to Bezier conversion and Bezier
// degree elevation.
#include "spline/bspline.h"
#include "spline/fitting.h"

#include <zgraphics/drawing.h>

#include <algorithm>
#include <cmath>

namespace {

// Finite points whose parameters strictly increase: no zero step, no NaN.
bool isRegular(const QVector<QPointF> &points, const QVector<double> &knots)
{
    for (const QPointF &p : points)
        if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
            return false;
    for (int i = 4; i < points.size() + 3; ++i)
        if (!(knots[i] > knots[i - 1]) || !std::isfinite(knots[i]))
            return false;
    return true;
}

// Extends knots to target values: the last value first stands degree + 1
// times, then each further value, a step of the last difference on, does.
// A degree below 0 counts as 0, so that every value stands at least once
// and the extension ends.
void extendKnots(QVector<double> &knots, int target, int degree)
{
    const int multiplicity = std::max(degree, 0) + 1;
    const double last = knots.isEmpty() ? 0.0 : knots.last();
    const double step = knots.size() < 2 ? 0.0 : last - knots.at(knots.size() - 2);
    int remaining = multiplicity - 1; // the last value already stands once
    double value = last;
    while (knots.size() < target) {
        for (; remaining > 0 && knots.size() < target; --remaining)
            knots.append(value);
        value += step;
        remaining = multiplicity;
    }
}

} // namespace

QVector<QPointF> ZDPath::bezierFitting(const QVector<QPointF> &points, int &degree)
{
    const int n = points.size();
    if (n < 3)
        return {};
    const QVector<double> knots = fittingKnots(points);
    // The dense solve grows with the cube of n; from here on the tridiagonal
    // form takes over where the system is regular, with the same result.
    const int bandedFrom = 128;
    QVector<QPointF> controlPoints;
    if (n >= bandedFrom && isRegular(points, knots))
        controlPoints = fittingControlPointsBanded(points, knots);
    if (controlPoints.isEmpty())
        controlPoints = fittingControlPointsDense(points, knots);
    degree = 3;
    return bsplineToBezier(controlPoints, knots, degree);
}

QVector<QPointF> ZDPath::bsplineToBezier(QVector<QPointF> controlPoints, QVector<double> knots, int &degree)
{
    if (knots.size() > 50000)
        return {};
    const int numPoints = controlPoints.size();
    const int splineDegree = numPoints == 3 ? 2 : degree;
    BSpline spline(numPoints, 2, static_cast<std::size_t>(splineDegree), SplineClamped);

    std::vector<double> coordinates;
    coordinates.reserve(2 * numPoints);
    for (const QPointF &p : controlPoints) {
        coordinates.push_back(p.x());
        coordinates.push_back(p.y());
    }
    spline.setControlPoints(coordinates);

    // The knot count of a cubic, whatever the degree: setKnots throws on a
    // spline of another degree.
    const int target = numPoints + 4;
    if (knots.size() > target)
        knots.resize(target);
    else if (knots.size() < target)
        extendKnots(knots, target, degree);
    spline.setKnots(std::vector<double>(knots.cbegin(), knots.cend()));

    const BSpline beziers = spline.toBeziers();
    const std::vector<double> values = beziers.getControlPoints();
    QVector<QPointF> result;
    result.reserve(static_cast<int>(values.size() / 2));
    for (std::size_t i = 0; i + 1 < values.size(); i += 2)
        result.append(QPointF(values[i], values[i + 1]));
    degree = static_cast<int>(beziers.degree());
    return result;
}

QVector<QPointF> ZDPath::BezierElevate(QVector<QPointF> &points)
{
    const int n = points.size();
    if (n == 0)
        return {};
    QVector<QPointF> result(n + 1);
    result[0] = points.first();
    for (int i = 1; i < n; ++i)
        result[i] = points[i] * double(n - i) / double(n) + points[i - 1] * double(i) / double(n);
    result[n] = points.last();
    return result;
}
