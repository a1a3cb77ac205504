// Cubic interpolation of points, B-spline to Bezier conversion and Bezier
// degree elevation.
#include "spline/bspline.h"
#include "spline/fitting.h"

#include <zgraphics/drawing.h>

#include <Eigen/Dense>

#include <cmath>

namespace {

double distance(const QPointF &a, const QPointF &b)
{
    const double dx = a.x() - b.x();
    const double dy = a.y() - b.y();
    return std::sqrt(dx * dx + dy * dy);
}

// Cumulative chord lengths, starting at 0.0; coincident points repeat a value.
QVector<double> chordParameters(const QVector<QPointF> &points)
{
    QVector<double> u(points.size());
    u[0] = 0.0;
    for (int i = 1; i < points.size(); ++i)
        u[i] = u[i - 1] + distance(points[i - 1], points[i]);
    return u;
}

// u with its first and its last value standing four times each.
QVector<double> clampedKnots(const QVector<double> &u)
{
    QVector<double> knots;
    knots.reserve(u.size() + 6);
    knots << u.first() << u.first() << u.first();
    knots << u;
    knots << u.last() << u.last() << u.last();
    return knots;
}

// Extends knots to target values: the last value first stands degree + 1
// times, then each further value, a step of the last difference on, does.
void extendKnots(QVector<double> &knots, int target, int degree)
{
    const double last = knots.isEmpty() ? 0.0 : knots.last();
    const double step = knots.size() < 2 ? 0.0 : last - knots.at(knots.size() - 2);
    int remaining = degree; // the last value already stands once
    double value = last;
    while (knots.size() < target) {
        for (; remaining > 0 && knots.size() < target; --remaining)
            knots.append(value);
        value += step;
        remaining = degree + 1;
    }
}

} // namespace

void basisFunctions(double t, double span, const QVector<double> &knots, std::vector<double> &out)
{
    out.assign(4, 0.0);
    double temp[7] = {0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0};
    const int base = static_cast<int>(span - 3);
    for (int d = 1; d <= 3; ++d) {
        const int count = 7 - d;
        for (int j = 0; j < count; ++j) {
            const int k = base + j;
            const double leftSpan = knots[k + d] - knots[k];
            const double rightSpan = knots[k + d + 1] - knots[k + 1];
            // Repeated knots make a zero span; its term counts as 0.0.
            const double left = leftSpan == 0.0 ? 0.0 : (t - knots[k]) / leftSpan;
            const double right = rightSpan == 0.0 ? 0.0 : (knots[k + d + 1] - t) / rightSpan;
            temp[j] = left * temp[j] + right * temp[j + 1];
        }
    }
    for (int j = 0; j < 4; ++j)
        out[j] = temp[j];
}

void threePointTangents(const QPointF &a, const QPointF &b, const QPointF &c, QPointF &tangentA,
                        QPointF &tangentB, QPointF &tangentC)
{
    const double l1 = distance(b, a);
    const double l2 = distance(c, b);
    const double w1 = l1 / (l1 + l2);
    const double w2 = l2 / (l1 + l2);
    const QPointF v1 = (b - a) * (1.0 / l1);
    const QPointF v2 = (c - b) * (1.0 / l2);
    tangentB = v2 * w1 + v1 * w2;
    tangentA = 2.0 * v1 - tangentB;
    tangentC = 2.0 * v2 - tangentB;
}

QVector<QPointF> ZDPath::bezierFitting(const QVector<QPointF> &points, int &degree)
{
    const int n = points.size();
    if (n < 3)
        return {};
    const int m = n + 2; // control points of the interpolating spline
    Eigen::MatrixXd a = Eigen::MatrixXd::Zero(m, m);
    Eigen::MatrixXd b = Eigen::MatrixXd::Zero(m, 3); // the third column stays zero
    Eigen::MatrixXd x = Eigen::MatrixXd::Zero(m, 3);
    const QVector<double> knots = clampedKnots(chordParameters(points));

    // Rows 0 to n - 1: the curve passes through each point at its parameter;
    // the end control points are the end points themselves.
    a(0, 0) = 1.0;
    a(n - 1, n + 1) = 1.0;
    std::vector<double> basis;
    for (int r = 1; r <= n - 2; ++r) {
        basisFunctions(knots[r + 3], r + 3, knots, basis);
        for (int j = 0; j < 4; ++j)
            a(r, r + j) = basis[j];
    }
    for (int i = 0; i < n; ++i) {
        b(i, 0) = points[i].x();
        b(i, 1) = points[i].y();
    }

    // Rows n and n + 1: the end derivatives follow the three-point tangents.
    QPointF startTangent, endTangent, unused1, unused2;
    threePointTangents(points[0], points[1], points[2], startTangent, unused1, unused2);
    threePointTangents(points[n - 3], points[n - 2], points[n - 1], unused1, unused2, endTangent);
    a(n, 0) = -1.0;
    a(n, 1) = 1.0;
    a(n + 1, n) = -1.0;
    a(n + 1, n + 1) = 1.0;
    const double startSpan = knots[4] - knots[1];
    const double endSpan = knots[n + 4] - knots[n + 1];
    b(n, 0) = startSpan * startTangent.x() / 3.0;
    b(n, 1) = startSpan * startTangent.y() / 3.0;
    b(n + 1, 0) = endSpan * endTangent.x() / 3.0;
    b(n + 1, 1) = endSpan * endTangent.y() / 3.0;

    x = a.partialPivLu().solve(b);

    QVector<QPointF> controlPoints(m);
    for (int i = 0; i < m; ++i)
        controlPoints[i] = QPointF(x(i, 0), x(i, 1));
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
