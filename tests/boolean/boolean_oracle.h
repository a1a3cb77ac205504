// An independent geometric oracle for the boolean operators: shapes as lists
// of line and cubic pieces, their even-odd containment by ray casting on
// y-monotone pieces, their area by exact integrals over the pieces, and the
// seeded shape families the operators are checked on. Nothing here calls the
// library's geometry; only the conversions to and from its objects do.
#ifndef ZGRAPHICS_TESTS_BOOLEAN_ORACLE_H
#define ZGRAPHICS_TESTS_BOOLEAN_ORACLE_H

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QVector>

#include <algorithm>
#include <cmath>
#include <random>

namespace booleanoracle {

// A line (p0 to p3) or a cubic (p0, p1, p2, p3).
struct Piece
{
    bool cubic = false;
    double x[4] = {0, 0, 0, 0};
    double y[4] = {0, 0, 0, 0};

    static Piece line(double x0, double y0, double x1, double y1)
    {
        Piece p;
        p.x[0] = x0; p.y[0] = y0; p.x[3] = x1; p.y[3] = y1;
        p.x[1] = x0; p.y[1] = y0; p.x[2] = x1; p.y[2] = y1;
        return p;
    }
    static Piece curve(double x0, double y0, double x1, double y1, double x2, double y2,
                       double x3, double y3)
    {
        Piece p;
        p.cubic = true;
        p.x[0] = x0; p.y[0] = y0; p.x[1] = x1; p.y[1] = y1;
        p.x[2] = x2; p.y[2] = y2; p.x[3] = x3; p.y[3] = y3;
        return p;
    }
    double xAt(double t) const { return bez(x, t); }
    double yAt(double t) const { return bez(y, t); }
    static double bez(const double *v, double t)
    {
        const double s = 1.0 - t;
        return s * s * s * v[0] + 3 * s * s * t * v[1] + 3 * s * t * t * v[2] + t * t * t * v[3];
    }
    static double dbez(const double *v, double t)
    {
        const double s = 1.0 - t;
        return 3 * s * s * (v[1] - v[0]) + 6 * s * t * (v[2] - v[1]) + 3 * t * t * (v[3] - v[2]);
    }
};

// A closed loop of pieces, each starting where the previous one ends.
using Loop = QVector<Piece>;
using Shape = QVector<Loop>;

// ---- Containment -----------------------------------------------------------

// The parameters in (0, 1) where y'(t) = 0, ascending.
inline QVector<double> yExtremes(const Piece &p)
{
    QVector<double> roots;
    if (!p.cubic)
        return roots;
    // y'(t)/3 = a t^2 + b t + c
    const double a = -p.y[0] + 3 * p.y[1] - 3 * p.y[2] + p.y[3];
    const double b = 2 * (p.y[0] - 2 * p.y[1] + p.y[2]);
    const double c = p.y[1] - p.y[0];
    if (std::fabs(a) < 1e-14) {
        if (std::fabs(b) > 1e-14)
            roots.append(-c / b);
    } else {
        const double disc = b * b - 4 * a * c;
        if (disc >= 0) {
            const double r = std::sqrt(disc);
            roots.append((-b - r) / (2 * a));
            roots.append((-b + r) / (2 * a));
        }
    }
    QVector<double> inside;
    for (double t : roots) {
        if (t > 0.0 && t < 1.0)
            inside.append(t);
    }
    std::sort(inside.begin(), inside.end());
    return inside;
}

// Crossings of the ray from (px, py) to +x with one y-monotone stretch of p
// between t0 and t1, counted half-open in y so that a vertex counts once.
inline int rayCrossings(const Piece &p, double t0, double t1, double px, double py)
{
    double ya = p.yAt(t0);
    double yb = p.yAt(t1);
    if (ya == yb)
        return 0;
    const double lo = std::min(ya, yb);
    const double hi = std::max(ya, yb);
    if (!(py >= lo && py < hi))
        return 0;
    double xmin = p.xAt(t0), xmax = xmin;
    for (int k = 0; k < 4; ++k) {
        xmin = std::min(xmin, p.x[k]);
        xmax = std::max(xmax, p.x[k]);
    }
    if (px >= xmax)
        return 0;
    if (px < xmin)
        return 1;
    // Bisection on the monotone stretch for the t with y(t) = py.
    double a = t0, b = t1;
    const bool rising = yb > ya;
    for (int k = 0; k < 80; ++k) {
        const double m = 0.5 * (a + b);
        if ((p.yAt(m) < py) == rising)
            a = m;
        else
            b = m;
    }
    return p.xAt(0.5 * (a + b)) > px ? 1 : 0;
}

inline int crossingCount(const Loop &loop, double px, double py)
{
    int count = 0;
    for (const Piece &p : loop) {
        double t0 = 0.0;
        for (double t : yExtremes(p)) {
            count += rayCrossings(p, t0, t, px, py);
            t0 = t;
        }
        count += rayCrossings(p, t0, 1.0, px, py);
    }
    return count;
}

inline bool containsEvenOdd(const Shape &shape, double px, double py)
{
    int count = 0;
    for (const Loop &loop : shape)
        count += crossingCount(loop, px, py);
    return (count & 1) != 0;
}

// Whether (px, py) lies farther than margin from every piece: a bounding box
// rejection, then a sampled distance refined by golden-section search.
inline bool isClearOf(const Shape &shape, double px, double py, double margin)
{
    for (const Loop &loop : shape) {
        for (const Piece &p : loop) {
            double xmin = p.x[0], xmax = p.x[0], ymin = p.y[0], ymax = p.y[0];
            for (int k = 1; k < 4; ++k) {
                xmin = std::min(xmin, p.x[k]); xmax = std::max(xmax, p.x[k]);
                ymin = std::min(ymin, p.y[k]); ymax = std::max(ymax, p.y[k]);
            }
            if (px < xmin - margin || px > xmax + margin || py < ymin - margin
                || py > ymax + margin)
                continue;
            auto dist2 = [&](double t) {
                const double dx = p.xAt(t) - px, dy = p.yAt(t) - py;
                return dx * dx + dy * dy;
            };
            const int samples = 64;
            int best = 0;
            for (int k = 1; k <= samples; ++k) {
                if (dist2(double(k) / samples) < dist2(double(best) / samples))
                    best = k;
            }
            double a = std::max(0.0, double(best - 1) / samples);
            double b = std::min(1.0, double(best + 1) / samples);
            for (int k = 0; k < 60; ++k) {
                const double m1 = a + (b - a) * 0.381966, m2 = a + (b - a) * 0.618034;
                if (dist2(m1) < dist2(m2))
                    b = m2;
                else
                    a = m1;
            }
            if (std::sqrt(dist2(0.5 * (a + b))) <= margin)
                return false;
        }
    }
    return true;
}

// ---- Area --------------------------------------------------------------------

// Half the integral of x dy - y dx over the piece: exact by three-point
// Gauss-Legendre, as the integrand is a polynomial of degree 5 at most.
inline double pieceArea(const Piece &p)
{
    if (!p.cubic)
        return 0.5 * (p.x[0] * p.y[3] - p.x[3] * p.y[0]);
    static const double nodes[3] = {-std::sqrt(0.6), 0.0, std::sqrt(0.6)};
    static const double weights[3] = {5.0 / 9.0, 8.0 / 9.0, 5.0 / 9.0};
    double sum = 0.0;
    for (int k = 0; k < 3; ++k) {
        const double t = 0.5 * (nodes[k] + 1.0);
        sum += weights[k] * 0.5
                * (p.xAt(t) * Piece::dbez(p.y, t) - p.yAt(t) * Piece::dbez(p.x, t));
    }
    return 0.5 * sum; // the interval 0..1 is half of -1..1
}

inline double loopArea(const Loop &loop)
{
    double area = 0.0;
    for (const Piece &p : loop)
        area += pieceArea(p);
    return area;
}

// The even-odd area of a shape of simple loops that do not cross one another:
// each loop counts with the sign of the parity of the loops around it, found
// at a point on the loop (the middle of its longest piece).
inline double evenOddArea(const Shape &shape)
{
    double area = 0.0;
    for (int i = 0; i < shape.size(); ++i) {
        const Loop &loop = shape.at(i);
        if (loop.isEmpty())
            continue;
        const Piece *longest = &loop.first();
        double longestChord = -1.0;
        for (const Piece &p : loop) {
            const double chord = std::hypot(p.x[3] - p.x[0], p.y[3] - p.y[0])
                    + std::hypot(p.x[1] - p.x[0], p.y[1] - p.y[0]);
            if (chord > longestChord) {
                longestChord = chord;
                longest = &p;
            }
        }
        const double px = longest->xAt(0.5), py = longest->yAt(0.5);
        int depth = 0;
        for (int j = 0; j < shape.size(); ++j) {
            if (j != i && (crossingCount(shape.at(j), px, py) & 1))
                ++depth;
        }
        area += (depth % 2 == 0 ? 1.0 : -1.0) * std::fabs(loopArea(loop));
    }
    return area;
}

// ---- Conversions -------------------------------------------------------------

// Builds a compound of closed contours; the caller owns it.
inline XPath *toXPath(const Shape &shape)
{
    XPath *path = new XPath();
    for (const Loop &loop : shape) {
        if (loop.isEmpty())
            continue;
        zgPath *contour = new zgPath(path, false);
        contour->moveTo(loop.first().x[0], loop.first().y[0]);
        for (int k = 0; k < loop.size(); ++k) {
            const Piece &p = loop.at(k);
            const bool closing = k == loop.size() - 1;
            if (!p.cubic) {
                if (!closing)
                    contour->lineTo(p.x[3], p.y[3]);
            } else {
                contour->cubicCurveTo(zgPoint(p.x[1], p.y[1]), zgPoint(p.x[2], p.y[2]),
                                      zgPoint(p.x[3], p.y[3]));
            }
        }
        // Exact closure: the last piece ends on the first point.
        contour->closePath(1e-9);
        path->addChild(contour);
    }
    return path;
}

// Reads a drawing-path element list into loops. A subpath that is not closed
// by a close element is closed by a line, as filling does.
inline Shape fromElements(const ZDPath &path)
{
    Shape shape;
    Loop loop;
    double sx = 0, sy = 0, cx = 0, cy = 0;
    auto finish = [&]() {
        if (!loop.isEmpty() && (cx != sx || cy != sy))
            loop.append(Piece::line(cx, cy, sx, sy));
        if (!loop.isEmpty())
            shape.append(loop);
        loop.clear();
    };
    for (int i = 0; i < path.count(); ++i) {
        const ZDPathElement &e = path.elementAt(i);
        switch (e.type) {
        case 0:
            finish();
            sx = cx = e.x;
            sy = cy = e.y;
            break;
        case 1:
            loop.append(Piece::line(cx, cy, e.x, e.y));
            cx = e.x;
            cy = e.y;
            break;
        case 2:
            if (i + 2 < path.count()) {
                const ZDPathElement &c2 = path.elementAt(i + 1);
                const ZDPathElement &end = path.elementAt(i + 2);
                loop.append(Piece::curve(cx, cy, e.x, e.y, c2.x, c2.y, end.x, end.y));
                cx = end.x;
                cy = end.y;
                i += 2;
            }
            break;
        case 4:
            finish();
            cx = sx;
            cy = sy;
            break;
        default:
            break;
        }
    }
    finish();
    return shape;
}

// The loops of a compound, through the drawing-path element list.
inline Shape fromXPath(XPath &path)
{
    ZDPath elements;
    elements.fromXPath(path);
    return fromElements(elements);
}

// ---- Shape families ------------------------------------------------------------

inline Loop rectangle(double x, double y, double w, double h)
{
    return {Piece::line(x, y, x + w, y), Piece::line(x + w, y, x + w, y + h),
            Piece::line(x + w, y + h, x, y + h), Piece::line(x, y + h, x, y)};
}

// A circle of four cubics with the usual handle length.
inline Loop circle(double cx, double cy, double r)
{
    const double k = 0.5522847498307936 * r;
    return {Piece::curve(cx + r, cy, cx + r, cy + k, cx + k, cy + r, cx, cy + r),
            Piece::curve(cx, cy + r, cx - k, cy + r, cx - r, cy + k, cx - r, cy),
            Piece::curve(cx - r, cy, cx - r, cy - k, cx - k, cy - r, cx, cy - r),
            Piece::curve(cx, cy - r, cx + k, cy - r, cx + r, cy - k, cx + r, cy)};
}

inline Loop polygon(const QVector<double> &xs, const QVector<double> &ys)
{
    Loop loop;
    const int n = xs.size();
    for (int k = 0; k < n; ++k)
        loop.append(Piece::line(xs[k], ys[k], xs[(k + 1) % n], ys[(k + 1) % n]));
    return loop;
}

// The loop run backwards.
inline Loop reversed(const Loop &loop)
{
    Loop back;
    for (int k = loop.size() - 1; k >= 0; --k) {
        const Piece &p = loop.at(k);
        back.append(p.cubic ? Piece::curve(p.x[3], p.y[3], p.x[2], p.y[2], p.x[1], p.y[1],
                                           p.x[0], p.y[0])
                            : Piece::line(p.x[3], p.y[3], p.x[0], p.y[0]));
    }
    return back;
}

class Families
{
public:
    explicit Families(unsigned seed) : m_random(seed) {}

    double uniform(double lo, double hi)
    {
        return std::uniform_real_distribution<double>(lo, hi)(m_random);
    }
    int integer(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(m_random); }

    Shape rect(double cx, double cy)
    {
        const double w = uniform(20, 80), h = uniform(20, 80);
        return {rectangle(cx - w / 2, cy - h / 2, w, h)};
    }
    Shape circleShape(double cx, double cy) { return {circle(cx, cy, uniform(15, 45))}; }
    // A star polygon, simple: radii alternate about the centre at rising angles.
    Shape star(double cx, double cy)
    {
        const int n = integer(4, 9) * 2;
        const double phase = uniform(0, 2 * M_PI);
        QVector<double> xs, ys;
        for (int k = 0; k < n; ++k) {
            const double r = (k % 2 ? uniform(10, 25) : uniform(30, 50));
            const double a = phase + 2 * M_PI * (k + uniform(-0.2, 0.2)) / n;
            xs.append(cx + r * std::cos(a));
            ys.append(cy + r * std::sin(a));
        }
        return {polygon(xs, ys)};
    }
    // A smooth star-shaped blob of cubics with short handles.
    Shape blob(double cx, double cy, int n = 0)
    {
        if (n == 0)
            n = integer(4, 10);
        const double phase = uniform(0, 2 * M_PI);
        QVector<double> xs, ys, txs, tys;
        for (int k = 0; k < n; ++k) {
            const double r = uniform(20, 45);
            const double a = phase + 2 * M_PI * k / n;
            xs.append(cx + r * std::cos(a));
            ys.append(cy + r * std::sin(a));
        }
        for (int k = 0; k < n; ++k) {
            const int prev = (k + n - 1) % n, next = (k + 1) % n;
            txs.append((xs[next] - xs[prev]) / 6.0);
            tys.append((ys[next] - ys[prev]) / 6.0);
        }
        Loop loop;
        for (int k = 0; k < n; ++k) {
            const int next = (k + 1) % n;
            loop.append(Piece::curve(xs[k], ys[k], xs[k] + txs[k], ys[k] + tys[k],
                                     xs[next] - txs[next], ys[next] - tys[next], xs[next],
                                     ys[next]));
        }
        return {loop};
    }
    // An outer rectangle or circle with a circular hole, run either way.
    Shape withHole(double cx, double cy)
    {
        const double r = uniform(30, 50);
        Loop outer = integer(0, 1) ? circle(cx, cy, r) : rectangle(cx - r, cy - r, 2 * r, 2 * r);
        Loop inner = circle(cx + uniform(-5, 5), cy + uniform(-5, 5), r * uniform(0.3, 0.6));
        if (integer(0, 1))
            inner = reversed(inner);
        return {outer, inner};
    }
    // A pentagram-like star {n/2}: a polygon that crosses itself.
    Shape selfCrossing(double cx, double cy)
    {
        const int n = 2 * integer(2, 4) + 1;
        const double r = uniform(25, 45), phase = uniform(0, 2 * M_PI);
        QVector<double> xs, ys;
        for (int k = 0; k < n; ++k) {
            const double a = phase + 2 * M_PI * ((2 * k) % n) / n;
            xs.append(cx + r * std::cos(a));
            ys.append(cy + r * std::sin(a));
        }
        return {polygon(xs, ys)};
    }

private:
    std::mt19937 m_random;
};

} // namespace booleanoracle

#endif
