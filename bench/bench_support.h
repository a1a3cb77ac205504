// High-precision reference geometry for the benchmarks, in long double and
// independent of the library: arc length of lines and cubics by adaptive
// Gauss-Legendre quadrature of the speed to 1e-12 relative, and the point and
// the tangent at a share of the length found by bisection on that length.
#ifndef ZG_BENCH_SUPPORT_H
#define ZG_BENCH_SUPPORT_H

#include <array>
#include <cmath>
#include <vector>

namespace zgbench {

using Real = long double;

struct RefPoint
{
    Real x = 0.0L;
    Real y = 0.0L;
};

inline RefPoint operator-(const RefPoint &a, const RefPoint &b)
{
    return {a.x - b.x, a.y - b.y};
}

inline Real distance(const RefPoint &a, const RefPoint &b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

// The difference of two directions in degrees, folded into 0 to 180.
inline Real angleDifference(Real a, Real b)
{
    const Real d = std::fabs(std::fmod(a - b, 360.0L));
    return d > 180.0L ? 360.0L - d : d;
}

// The direction of a vector as QLineF::angle gives it: counter-clockwise on
// screen (y down), 0 to 360 degrees, 0 towards +x.
inline Real screenAngle(const RefPoint &v)
{
    const Real pi = 3.14159265358979323846264338327950288L;
    const Real degrees = std::atan2(-v.y, v.x) * 180.0L / pi;
    return degrees < 0.0L ? degrees + 360.0L : degrees;
}

// Nodes and weights of the 10-point Gauss-Legendre rule on [-1, 1], by
// Newton's method on the Legendre polynomial in long double.
class GaussLegendre10
{
public:
    static constexpr int N = 10;

    static const GaussLegendre10 &rule()
    {
        static const GaussLegendre10 r;
        return r;
    }

    std::array<Real, N> nodes;
    std::array<Real, N> weights;

private:
    GaussLegendre10()
    {
        const Real pi = 3.14159265358979323846264338327950288L;
        for (int i = 0; i < N; ++i) {
            Real x = std::cos(pi * (i + 0.75L) / (N + 0.5L));
            Real derivative = 1.0L;
            for (int step = 0; step < 100; ++step) {
                Real previous = 1.0L;
                Real current = x;
                for (int k = 2; k <= N; ++k) {
                    const Real next = ((2 * k - 1) * x * current - (k - 1) * previous) / k;
                    previous = current;
                    current = next;
                }
                derivative = N * (x * current - previous) / (x * x - 1.0L);
                const Real dx = current / derivative;
                x -= dx;
                if (std::fabs(dx) < 1e-19L)
                    break;
            }
            nodes[i] = x;
            weights[i] = 2.0L / ((1.0L - x * x) * derivative * derivative);
        }
    }
};

// One piece of a path: a line from p[0] to p[3], or a cubic p[0] .. p[3].
struct RefPiece
{
    bool isLine = true;
    RefPoint p[4];

    RefPoint pointAt(Real t) const
    {
        if (isLine)
            return {p[0].x + (p[3].x - p[0].x) * t, p[0].y + (p[3].y - p[0].y) * t};
        const Real s = 1.0L - t;
        const Real b0 = s * s * s, b1 = 3.0L * s * s * t, b2 = 3.0L * s * t * t, b3 = t * t * t;
        return {b0 * p[0].x + b1 * p[1].x + b2 * p[2].x + b3 * p[3].x,
                b0 * p[0].y + b1 * p[1].y + b2 * p[2].y + b3 * p[3].y};
    }

    RefPoint derivativeAt(Real t) const
    {
        if (isLine)
            return p[3] - p[0];
        const Real s = 1.0L - t;
        const RefPoint d0 = p[1] - p[0], d1 = p[2] - p[1], d2 = p[3] - p[2];
        const Real a = 3.0L * s * s, b = 6.0L * s * t, c = 3.0L * t * t;
        return {a * d0.x + b * d1.x + c * d2.x, a * d0.y + b * d1.y + c * d2.y};
    }

    Real speedAt(Real t) const
    {
        const RefPoint d = derivativeAt(t);
        return std::hypot(d.x, d.y);
    }

    // Arc length from time 0 to time u, to 1e-12 relative: exact for a line.
    Real lengthTo(Real u) const
    {
        if (isLine)
            return distance(p[0], p[3]) * u;
        // The control polygon bounds the length from above; a tolerance of
        // 1e-13 of it per piece keeps the sum within 1e-12 relative.
        const Real bound = distance(p[0], p[1]) + distance(p[1], p[2]) + distance(p[2], p[3]);
        return adaptive(0.0L, u, gauss(0.0L, u), 1e-13L * bound, 0);
    }

    Real length() const { return lengthTo(1.0L); }

    // The time at which the arc length from time 0 reaches target, by
    // bisection on lengthTo until the interval stops shrinking.
    Real timeAtLength(Real target) const
    {
        const Real total = length();
        if (total <= 0.0L)
            return 0.0L;
        if (isLine)
            return std::fmin(std::fmax(target / total, 0.0L), 1.0L);
        Real low = 0.0L;
        Real high = 1.0L;
        for (int step = 0; step < 80; ++step) {
            const Real middle = 0.5L * (low + high);
            if (middle <= low || middle >= high)
                break;
            if (lengthTo(middle) < target)
                low = middle;
            else
                high = middle;
        }
        return 0.5L * (low + high);
    }

private:
    Real gauss(Real a, Real b) const
    {
        const GaussLegendre10 &rule = GaussLegendre10::rule();
        const Real half = 0.5L * (b - a);
        const Real middle = 0.5L * (a + b);
        Real sum = 0.0L;
        for (int i = 0; i < GaussLegendre10::N; ++i)
            sum += rule.weights[i] * speedAt(middle + half * rule.nodes[i]);
        return sum * half;
    }

    // Splits [a, b] until the two halves agree with the whole within tol,
    // halving the tolerance at each split; at least one split is made.
    Real adaptive(Real a, Real b, Real whole, Real tol, int depth) const
    {
        const Real middle = 0.5L * (a + b);
        const Real left = gauss(a, middle);
        const Real right = gauss(middle, b);
        const Real halves = left + right;
        if (depth >= 40 || std::fabs(halves - whole) <= tol)
            return halves;
        return adaptive(a, middle, left, 0.5L * tol, depth + 1)
            + adaptive(middle, b, right, 0.5L * tol, depth + 1);
    }
};

// Where a share of the length falls: the piece, its time, point and derivative.
struct RefPlace
{
    int piece = -1;
    Real time = 0.0L;
    RefPoint point;
    RefPoint derivative;
};

// One open subpath of lines and cubics with the lengths of its pieces.
class ReferencePath
{
public:
    void moveTo(Real x, Real y)
    {
        m_current = {x, y};
    }

    void lineTo(Real x, Real y)
    {
        RefPiece piece;
        piece.isLine = true;
        piece.p[0] = m_current;
        piece.p[3] = {x, y};
        piece.p[1] = {m_current.x + (x - m_current.x) / 3.0L, m_current.y + (y - m_current.y) / 3.0L};
        piece.p[2] = {m_current.x + 2.0L * (x - m_current.x) / 3.0L,
                      m_current.y + 2.0L * (y - m_current.y) / 3.0L};
        append(piece);
    }

    void cubicTo(Real x1, Real y1, Real x2, Real y2, Real x3, Real y3)
    {
        RefPiece piece;
        piece.isLine = false;
        piece.p[0] = m_current;
        piece.p[1] = {x1, y1};
        piece.p[2] = {x2, y2};
        piece.p[3] = {x3, y3};
        append(piece);
    }

    Real length() const { return m_total; }
    const std::vector<RefPiece> &pieces() const { return m_pieces; }

    // The place at share (0 to 1) of the whole length.
    RefPlace placeAtShare(Real share) const
    {
        RefPlace place;
        if (m_pieces.empty())
            return place;
        const Real target = share * m_total;
        Real before = 0.0L;
        int index = 0;
        const int last = int(m_pieces.size()) - 1;
        while (index < last && before + m_lengths[index] < target) {
            before += m_lengths[index];
            ++index;
        }
        const RefPiece &piece = m_pieces[index];
        const Real remaining = std::fmin(std::fmax(target - before, 0.0L), m_lengths[index]);
        place.piece = index;
        place.time = piece.timeAtLength(remaining);
        place.point = piece.pointAt(place.time);
        place.derivative = piece.derivativeAt(place.time);
        return place;
    }

    // The direction at the path's end.
    RefPoint endDerivative() const
    {
        return m_pieces.empty() ? RefPoint() : m_pieces.back().derivativeAt(1.0L);
    }

private:
    void append(const RefPiece &piece)
    {
        m_pieces.push_back(piece);
        m_lengths.push_back(piece.length());
        m_total += m_lengths.back();
        m_current = piece.p[3];
    }

    RefPoint m_current;
    std::vector<RefPiece> m_pieces;
    std::vector<Real> m_lengths;
    Real m_total = 0.0L;
};

} // namespace zgbench

#endif // ZG_BENCH_SUPPORT_H
