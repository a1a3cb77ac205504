// Textbook references for the spline tests: Cox-de Boor basis values, de Boor
// evaluation, de Casteljau evaluation of Beziers, and a plain Gaussian
// elimination, all written independently of the library's code.
#ifndef ZGRAPHICS_TESTS_SPLINE_SUPPORT_H
#define ZGRAPHICS_TESTS_SPLINE_SUPPORT_H

#include "spline/bspline.h"

#include <QtCore/QPointF>
#include <QtCore/QVector>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <utility>
#include <vector>

// Reaches the block that a BSpline owns.
class zgSplineInternals
{
public:
    static const SplineRecord *record(const BSpline &spline) { return spline.m_record; }
};

namespace splinetest {

// Owns a block or net for the length of a test.
struct SplineGuard
{
    SplineRecord *spline = nullptr;
    ~SplineGuard() { freeSpline(spline); }
};

struct NetGuard
{
    DeBoorNet *net = nullptr;
    ~NetGuard() { freeDeBoorNet(net); }
};

inline std::vector<double> knotsOf(const SplineRecord *spline)
{
    return std::vector<double>(splineKnots(spline), splineKnots(spline) + splineNumKnots(spline));
}

inline std::vector<double> controlPointsOf(const SplineRecord *spline)
{
    return std::vector<double>(splineControlPoints(spline),
                               splineControlPoints(spline) + splineLenControlPoints(spline));
}

// N(i, p)(t) by the recursive definition on half-open spans, 0/0 read as 0.
inline double coxDeBoor(const std::vector<double> &knots, int i, int p, double t)
{
    if (p == 0)
        return knots[i] <= t && t < knots[i + 1] ? 1.0 : 0.0;
    double value = 0.0;
    const double leftSpan = knots[i + p] - knots[i];
    if (leftSpan != 0.0)
        value += (t - knots[i]) / leftSpan * coxDeBoor(knots, i, p - 1, t);
    const double rightSpan = knots[i + p + 1] - knots[i + 1];
    if (rightSpan != 0.0)
        value += (knots[i + p + 1] - t) / rightSpan * coxDeBoor(knots, i + 1, p - 1, t);
    return value;
}

// The spline point at t by de Boor's algorithm on the last non-empty span
// of the domain that starts at or below t: the right-hand limit at a knot
// where the curve breaks, or the left-hand one with leftLimit.
inline std::vector<double> deBoorPoint(const std::vector<double> &knots, const std::vector<double> &points,
                                       int degree, int dim, double t, bool leftLimit = false)
{
    const int numPoints = int(points.size()) / dim;
    int k = degree;
    for (int j = degree; j < numPoints; ++j)
        if ((leftLimit ? knots[j] < t : knots[j] <= t) && knots[j] < knots[j + 1])
            k = j;
    std::vector<std::vector<double>> d(degree + 1, std::vector<double>(dim));
    for (int j = 0; j <= degree; ++j)
        for (int c = 0; c < dim; ++c)
            d[j][c] = points[(j + k - degree) * dim + c];
    for (int r = 1; r <= degree; ++r) {
        for (int j = degree; j >= r; --j) {
            const double alpha = (t - knots[j + k - degree]) / (knots[j + 1 + k - r] - knots[j + k - degree]);
            for (int c = 0; c < dim; ++c)
                d[j][c] = (1.0 - alpha) * d[j - 1][c] + alpha * d[j][c];
        }
    }
    return d[degree];
}

// The Bezier of the given points (order of them, dim coordinates each,
// starting at first) at local parameter s, by de Casteljau.
inline std::vector<double> bezierPoint(const std::vector<double> &points, int first, int order, int dim, double s)
{
    std::vector<double> work(points.begin() + first * dim, points.begin() + (first + order) * dim);
    for (int r = 1; r < order; ++r)
        for (int j = 0; j < order - r; ++j)
            for (int c = 0; c < dim; ++c)
                work[j * dim + c] = (1.0 - s) * work[j * dim + c] + s * work[(j + 1) * dim + c];
    return std::vector<double>(work.begin(), work.begin() + dim);
}

inline QPointF bezierPoint(const QVector<QPointF> &points, int first, double s)
{
    std::vector<double> flat;
    for (int i = first; i < first + 4; ++i) {
        flat.push_back(points[i].x());
        flat.push_back(points[i].y());
    }
    const std::vector<double> p = bezierPoint(flat, 0, 4, 2, s);
    return QPointF(p[0], p[1]);
}

// Solves a x = b (b with several columns) by Gaussian elimination with
// row exchanges on the largest pivot; a and b are row-major and square / n
// by columns.
inline std::vector<double> gaussSolve(std::vector<double> a, std::vector<double> b, int n, int columns)
{
    for (int col = 0; col < n; ++col) {
        int pivot = col;
        for (int r = col + 1; r < n; ++r)
            if (std::fabs(a[r * n + col]) > std::fabs(a[pivot * n + col]))
                pivot = r;
        for (int c = 0; c < n; ++c)
            std::swap(a[col * n + c], a[pivot * n + c]);
        for (int c = 0; c < columns; ++c)
            std::swap(b[col * columns + c], b[pivot * columns + c]);
        for (int r = col + 1; r < n; ++r) {
            const double factor = a[r * n + col] / a[col * n + col];
            for (int c = col; c < n; ++c)
                a[r * n + c] -= factor * a[col * n + c];
            for (int c = 0; c < columns; ++c)
                b[r * columns + c] -= factor * b[col * columns + c];
        }
    }
    std::vector<double> x(n * columns);
    for (int r = n - 1; r >= 0; --r) {
        for (int c = 0; c < columns; ++c) {
            double sum = b[r * columns + c];
            for (int j = r + 1; j < n; ++j)
                sum -= a[r * n + j] * x[j * columns + c];
            x[r * columns + c] = sum / a[r * n + r];
        }
    }
    return x;
}

// Points along a wobbly line with steps between minStep and maxStep.
inline QVector<QPointF> wobblyPoints(int count, unsigned seed, double minStep = 2.0, double maxStep = 30.0)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> step(minStep, maxStep);
    std::uniform_real_distribution<double> turn(-1.2, 1.2);
    QVector<QPointF> points;
    QPointF p(0.0, 0.0);
    double angle = 0.0;
    for (int i = 0; i < count; ++i) {
        points << p;
        angle += turn(random);
        const double length = step(random);
        p += QPointF(std::cos(angle) * length, std::sin(angle) * length);
    }
    return points;
}

inline double distance(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

} // namespace splinetest

#endif // ZGRAPHICS_TESTS_SPLINE_SUPPORT_H
