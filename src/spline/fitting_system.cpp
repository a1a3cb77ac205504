// The linear system of the cubic fit through points: knots, basis rows,
// end tangents, and its two solvers.
#include "spline/fitting.h"

#include <Eigen/Dense>

#include <cmath>

namespace {

double distance(const QPointF &a, const QPointF &b)
{
    const double dx = a.x() - b.x();
    const double dy = a.y() - b.y();
    return std::sqrt(dx * dx + dy * dy);
}

// Right sides of the two tangent rows: the end derivatives of the curve
// times a third of the first and the last parameter step.
void tangentSides(const QVector<QPointF> &points, const QVector<double> &knots, QPointF &startSide,
                  QPointF &endSide)
{
    const int n = points.size();
    QPointF startTangent, endTangent, unused1, unused2;
    threePointTangents(points[0], points[1], points[2], startTangent, unused1, unused2);
    threePointTangents(points[n - 3], points[n - 2], points[n - 1], unused1, unused2, endTangent);
    const double startSpan = knots[4] - knots[1];
    const double endSpan = knots[n + 4] - knots[n + 1];
    startSide = QPointF(startSpan * startTangent.x() / 3.0, startSpan * startTangent.y() / 3.0);
    endSide = QPointF(endSpan * endTangent.x() / 3.0, endSpan * endTangent.y() / 3.0);
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
    // Written last, so that the outputs may share a variable.
    const QPointF atB = v2 * w1 + v1 * w2;
    tangentA = 2.0 * v1 - atB;
    tangentC = 2.0 * v2 - atB;
    tangentB = atB;
}

QVector<double> fittingKnots(const QVector<QPointF> &points)
{
    QVector<double> knots;
    knots.reserve(points.size() + 6);
    knots << 0.0 << 0.0 << 0.0 << 0.0;
    for (int i = 1; i < points.size(); ++i)
        knots << knots.last() + distance(points[i - 1], points[i]);
    knots << knots.last() << knots.last() << knots.last();
    return knots;
}

QVector<QPointF> fittingControlPointsDense(const QVector<QPointF> &points, const QVector<double> &knots)
{
    const int n = points.size();
    const int m = n + 2;
    Eigen::MatrixXd a = Eigen::MatrixXd::Zero(m, m);
    Eigen::MatrixXd b = Eigen::MatrixXd::Zero(m, 3); // the third column stays zero
    Eigen::MatrixXd x = Eigen::MatrixXd::Zero(m, 3);

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
    // Rows n and n + 1: the end derivatives.
    QPointF startSide, endSide;
    tangentSides(points, knots, startSide, endSide);
    a(n, 0) = -1.0;
    a(n, 1) = 1.0;
    a(n + 1, n) = -1.0;
    a(n + 1, n + 1) = 1.0;
    b(n, 0) = startSide.x();
    b(n, 1) = startSide.y();
    b(n + 1, 0) = endSide.x();
    b(n + 1, 1) = endSide.y();

    x = a.partialPivLu().solve(b);

    QVector<QPointF> controlPoints(m);
    for (int i = 0; i < m; ++i)
        controlPoints[i] = QPointF(x(i, 0), x(i, 1));
    return controlPoints;
}

QVector<QPointF> fittingControlPointsBanded(const QVector<QPointF> &points, const QVector<double> &knots)
{
    // Rows in the order: first control point, start tangent, interior rows
    // 1 to n - 2, end tangent, last control point. Row i then has entries in
    // columns i - 1 (lower[i - 1]), i (diag[i]) and i + 1 (upper[i]).
    const int n = points.size();
    const int size = n + 2;
    std::vector<double> lower(size - 1, 0.0), diag(size, 0.0), upper(size - 1, 0.0);
    std::vector<double> upper2(size, 0.0); // fill-in of the row exchanges
    std::vector<double> sideX(size), sideY(size);
    QPointF startSide, endSide;
    tangentSides(points, knots, startSide, endSide);

    diag[0] = 1.0;
    sideX[0] = points[0].x();
    sideY[0] = points[0].y();
    lower[0] = -1.0;
    diag[1] = 1.0;
    sideX[1] = startSide.x();
    sideY[1] = startSide.y();
    std::vector<double> basis;
    for (int r = 1; r <= n - 2; ++r) {
        basisFunctions(knots[r + 3], r + 3, knots, basis);
        if (basis[3] != 0.0) // not tridiagonal: only on repeated or NaN knots
            return {};
        lower[r] = basis[0];
        diag[r + 1] = basis[1];
        upper[r + 1] = basis[2];
        sideX[r + 1] = points[r].x();
        sideY[r + 1] = points[r].y();
    }
    diag[n] = -1.0;
    upper[n] = 1.0;
    sideX[n] = endSide.x();
    sideY[n] = endSide.y();
    diag[n + 1] = 1.0;
    sideX[n + 1] = points[n - 1].x();
    sideY[n + 1] = points[n - 1].y();

    // Elimination below the diagonal, taking the larger of the two
    // candidate pivots in each column.
    for (int i = 0; i + 1 < size; ++i) {
        if (std::fabs(diag[i]) >= std::fabs(lower[i])) {
            if (diag[i] == 0.0)
                return {};
            const double factor = lower[i] / diag[i];
            diag[i + 1] -= factor * upper[i];
            sideX[i + 1] -= factor * sideX[i];
            sideY[i + 1] -= factor * sideY[i];
        } else {
            const double factor = diag[i] / lower[i];
            diag[i] = lower[i];
            const double below = diag[i + 1];
            diag[i + 1] = upper[i] - factor * below;
            if (i + 2 < size) {
                upper2[i] = upper[i + 1];
                upper[i + 1] = -factor * upper2[i];
            }
            upper[i] = below;
            std::swap(sideX[i], sideX[i + 1]);
            std::swap(sideY[i], sideY[i + 1]);
            sideX[i + 1] -= factor * sideX[i];
            sideY[i + 1] -= factor * sideY[i];
        }
    }
    if (diag[size - 1] == 0.0)
        return {};

    QVector<QPointF> controlPoints(size);
    for (int i = size - 1; i >= 0; --i) {
        double x = sideX[i];
        double y = sideY[i];
        if (i + 1 < size) {
            x -= upper[i] * controlPoints[i + 1].x();
            y -= upper[i] * controlPoints[i + 1].y();
        }
        if (i + 2 < size) {
            x -= upper2[i] * controlPoints[i + 2].x();
            y -= upper2[i] * controlPoints[i + 2].y();
        }
        controlPoints[i] = QPointF(x / diag[i], y / diag[i]);
    }
    return controlPoints;
}
