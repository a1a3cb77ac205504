// Helpers of the curve tests: building 8-value arrays, seeded random
// cubics, and reference computations done independently of the library
// (Bernstein form in long double, recursive subdivision for lengths).
#ifndef ZGRAPHICS_TESTS_CURVE_TEST_UTIL_H
#define ZGRAPHICS_TESTS_CURVE_TEST_UTIL_H

#include <zgraphics/model.h>

#include <QtCore/QVector>

#include <cmath>
#include <random>

namespace curvetest {

inline QVector<double> values(double x0, double y0, double x1, double y1, double x2, double y2,
                              double x3, double y3)
{
    return { x0, y0, x1, y1, x2, y2, x3, y3 };
}

// Seeded random cubics with coordinates in [-100, 100].
class CurveRandom
{
public:
    explicit CurveRandom(unsigned seed) : m_engine(seed) {}

    double uniform(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }

    // Four free control points.
    QVector<double> curved()
    {
        QVector<double> v(8);
        for (double &c : v)
            c = uniform(-100.0, 100.0);
        return v;
    }

    // A straight curve: handles along the chord, pointing inwards and not
    // reaching past the other end (so isStraight holds), or none at all.
    QVector<double> straight()
    {
        const double x0 = uniform(-100.0, 100.0), y0 = uniform(-100.0, 100.0);
        const double x3 = uniform(-100.0, 100.0), y3 = uniform(-100.0, 100.0);
        const bool withHandles = uniform(0.0, 1.0) < 0.75;
        const double f1 = withHandles ? uniform(0.0, 0.9) : 0.0;
        const double f2 = withHandles ? uniform(0.0, 0.9) : 0.0;
        return values(x0, y0, x0 + f1 * (x3 - x0), y0 + f1 * (y3 - y0), x3 + f2 * (x0 - x3),
                      y3 + f2 * (y0 - y3), x3, y3);
    }

private:
    std::mt19937 m_engine;
};

// The point at t in Bernstein form, in long double.
inline void bernstein(const QVector<double> &v, long double t, long double &x, long double &y)
{
    const long double u = 1.0L - t;
    const long double b0 = u * u * u, b1 = 3.0L * u * u * t, b2 = 3.0L * u * t * t,
                      b3 = t * t * t;
    x = b0 * v[0] + b1 * v[2] + b2 * v[4] + b3 * v[6];
    y = b0 * v[1] + b1 * v[3] + b2 * v[5] + b3 * v[7];
}

// The derivative at t in Bernstein form, in long double.
inline void bernsteinDerivative(const QVector<double> &v, long double t, long double &dx,
                                long double &dy)
{
    const long double u = 1.0L - t;
    const long double b0 = 3.0L * u * u, b1 = 6.0L * u * t, b2 = 3.0L * t * t;
    dx = b0 * ((long double)v[2] - v[0]) + b1 * ((long double)v[4] - v[2])
        + b2 * ((long double)v[6] - v[4]);
    dy = b0 * ((long double)v[3] - v[1]) + b1 * ((long double)v[5] - v[3])
        + b2 * ((long double)v[7] - v[5]);
}

// The second derivative at t, in long double.
inline void bernsteinSecond(const QVector<double> &v, long double t, long double &ddx,
                            long double &ddy)
{
    const long double u = 1.0L - t;
    ddx = 6.0L * (u * ((long double)v[4] - 2.0L * v[2] + v[0])
                  + t * ((long double)v[6] - 2.0L * v[4] + v[2]));
    ddy = 6.0L * (u * ((long double)v[5] - 2.0L * v[3] + v[1])
                  + t * ((long double)v[7] - 2.0L * v[5] + v[3]));
}

namespace detail {

struct Cubic
{
    long double x[4];
    long double y[4];
};

inline void split(const Cubic &c, Cubic &left, Cubic &right)
{
    long double x01 = (c.x[0] + c.x[1]) / 2, y01 = (c.y[0] + c.y[1]) / 2;
    long double x12 = (c.x[1] + c.x[2]) / 2, y12 = (c.y[1] + c.y[2]) / 2;
    long double x23 = (c.x[2] + c.x[3]) / 2, y23 = (c.y[2] + c.y[3]) / 2;
    long double xa = (x01 + x12) / 2, ya = (y01 + y12) / 2;
    long double xb = (x12 + x23) / 2, yb = (y12 + y23) / 2;
    long double xm = (xa + xb) / 2, ym = (ya + yb) / 2;
    left = { { c.x[0], x01, xa, xm }, { c.y[0], y01, ya, ym } };
    right = { { xm, xb, x23, c.x[3] }, { ym, yb, y23, c.y[3] } };
}

// Mean of chord and control polygon length: exact for a line, and the error
// falls with the fourth power of the piece size.
inline long double estimate(const Cubic &c)
{
    const long double chord = std::hypot(c.x[3] - c.x[0], c.y[3] - c.y[0]);
    long double polygon = 0;
    for (int i = 0; i < 3; ++i)
        polygon += std::hypot(c.x[i + 1] - c.x[i], c.y[i + 1] - c.y[i]);
    return (chord + polygon) / 2;
}

inline long double length(const Cubic &c, long double whole, long double tolerance, int depth)
{
    Cubic left, right;
    split(c, left, right);
    const long double halves = estimate(left) + estimate(right);
    if (depth > 40 || std::fabs(halves - whole) <= tolerance)
        return halves + (halves - whole) / 15; // Richardson step on the O(h^4) error
    return length(left, estimate(left), tolerance / 2, depth + 1)
        + length(right, estimate(right), tolerance / 2, depth + 1);
}

} // namespace detail

// Arc length of the whole curve by recursive subdivision of its control
// polygon, independent of the library's quadrature, to a relative 1e-13.
inline double referenceLength(const QVector<double> &v)
{
    const detail::Cubic c = { { v[0], v[2], v[4], v[6] }, { v[1], v[3], v[5], v[7] } };
    const long double whole = detail::estimate(c);
    return double(detail::length(c, whole, 1e-13L * whole, 0));
}

// Arc length between times a <= b: the reference length of that part, cut by
// de Casteljau in long double.
inline double referencePartLength(const QVector<double> &v, double a, double b)
{
    // Cut at b, then the piece before b at a / b, all in long double.
    auto cut = [](const detail::Cubic &c, long double t, detail::Cubic &before,
                  detail::Cubic &after) {
        const long double u = 1 - t;
        long double x[10], y[10];
        for (int i = 0; i < 4; ++i) {
            x[i] = c.x[i];
            y[i] = c.y[i];
        }
        x[4] = u * x[0] + t * x[1]; y[4] = u * y[0] + t * y[1];
        x[5] = u * x[1] + t * x[2]; y[5] = u * y[1] + t * y[2];
        x[6] = u * x[2] + t * x[3]; y[6] = u * y[2] + t * y[3];
        x[7] = u * x[4] + t * x[5]; y[7] = u * y[4] + t * y[5];
        x[8] = u * x[5] + t * x[6]; y[8] = u * y[5] + t * y[6];
        x[9] = u * x[7] + t * x[8]; y[9] = u * y[7] + t * y[8];
        before = { { x[0], x[4], x[7], x[9] }, { y[0], y[4], y[7], y[9] } };
        after = { { x[9], x[8], x[6], x[3] }, { y[9], y[8], y[6], y[3] } };
    };
    detail::Cubic c = { { v[0], v[2], v[4], v[6] }, { v[1], v[3], v[5], v[7] } };
    detail::Cubic before, after;
    if (b < 1.0) {
        cut(c, b, before, after);
        c = before;
    }
    if (a > 0.0) {
        cut(c, (long double)a / b, before, after);
        c = after;
    }
    const long double whole = detail::estimate(c);
    return double(detail::length(c, whole, 1e-13L * whole, 0));
}

// Distance from p to the curve, by dense sampling and golden-section
// refinement around every local minimum of the samples, in long double.
inline double referenceDistance(const QVector<double> &v, const zgPoint &p)
{
    const int samples = 2000;
    auto dist2 = [&](long double t) {
        long double x, y;
        bernstein(v, t, x, y);
        return (x - p.x) * (x - p.x) + (y - p.y) * (y - p.y);
    };
    QVector<long double> d(samples + 1);
    for (int i = 0; i <= samples; ++i)
        d[i] = dist2((long double)i / samples);
    long double best = std::min(d[0], d[samples]);
    for (int i = 0; i <= samples; ++i) {
        const bool localMinimum = (i == 0 || d[i] <= d[i - 1]) && (i == samples || d[i] <= d[i + 1]);
        if (!localMinimum)
            continue;
        long double lo = std::max(0.0L, (long double)(i - 1) / samples);
        long double hi = std::min(1.0L, (long double)(i + 1) / samples);
        const long double g = 0.6180339887498948482L;
        for (int k = 0; k < 80; ++k) {
            const long double m1 = hi - g * (hi - lo), m2 = lo + g * (hi - lo);
            if (dist2(m1) < dist2(m2))
                hi = m2;
            else
                lo = m1;
        }
        best = std::min(best, std::min(d[i], dist2((lo + hi) / 2)));
    }
    return double(std::sqrt(best));
}

} // namespace curvetest

#endif // ZGRAPHICS_TESTS_CURVE_TEST_UTIL_H
