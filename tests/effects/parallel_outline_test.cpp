// Tests of ZDPath::parallelPath, the polyline at a signed distance from a
// path. The normal of a unit direction (tx, ty) is (ty, -tx): with y pointing
// down on screen, a positive distance lies to the left of the direction of
// travel in mathematical axes. Expected values are worked out by hand or by
// the reference geometry below, which is independent of the library: cubics
// in Bernstein form, arc length by composite Gauss-Legendre quadrature on a
// fine table, nearest points by dense sampling and golden-section refinement.
#include <zgraphics/drawing.h>

#include <gtest/gtest.h>

#include <QtCore/QtNumeric>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

const int32_t Move = ZDMoveToElement;
const int32_t Line = ZDLineToElement;
const int32_t Close = ZDCloseElement;

struct Pt
{
    double x = 0.0;
    double y = 0.0;
};

Pt operator+(Pt a, Pt b) { return {a.x + b.x, a.y + b.y}; }
Pt operator-(Pt a, Pt b) { return {a.x - b.x, a.y - b.y}; }
Pt operator*(double s, Pt a) { return {s * a.x, s * a.y}; }
double dot(Pt a, Pt b) { return a.x * b.x + a.y * b.y; }
double cross(Pt a, Pt b) { return a.x * b.y - a.y * b.x; }
double norm(Pt a) { return std::hypot(a.x, a.y); }
Pt unit(Pt a) { return (1.0 / norm(a)) * a; }
Pt midpointOf(Pt a, Pt b) { return 0.5 * (a + b); }
// The sideways normal of a direction: (ty, -tx) of its unit vector.
Pt normalOf(Pt direction)
{
    const Pt u = unit(direction);
    return {u.y, -u.x};
}
Pt pointOf(const ZDPathElement &e) { return {e.x, e.y}; }

// Signed distance of p from the infinite line through a with direction v,
// positive on the side of the normal (vy, -vx).
double signedDistance(Pt p, Pt a, Pt v)
{
    return dot(p - a, normalOf(v));
}

// The crossing of the infinite lines a + s*u and b + t*v.
Pt crossLines(Pt a, Pt u, Pt b, Pt v)
{
    const double s = cross(b - a, v) / cross(u, v);
    return a + s * u;
}

// A cubic in Bernstein form, with its arc length tabulated so that the point
// at an arc length can be found without the library.
class RefCubic
{
public:
    RefCubic(Pt p0, Pt p1, Pt p2, Pt p3) : m_p{p0, p1, p2, p3} { tabulate(); }

    RefCubic reversed() const { return RefCubic(m_p[3], m_p[2], m_p[1], m_p[0]); }

    Pt point(double t) const
    {
        const double s = 1.0 - t;
        return (s * s * s) * m_p[0] + (3.0 * s * s * t) * m_p[1] + (3.0 * s * t * t) * m_p[2]
               + (t * t * t) * m_p[3];
    }

    Pt derivative(double t) const
    {
        const double s = 1.0 - t;
        return (3.0 * s * s) * (m_p[1] - m_p[0]) + (6.0 * s * t) * (m_p[2] - m_p[1])
               + (3.0 * t * t) * (m_p[3] - m_p[2]);
    }

    Pt second(double t) const
    {
        return (6.0 * (1.0 - t)) * (m_p[2] - 2.0 * m_p[1] + m_p[0])
               + (6.0 * t) * (m_p[3] - 2.0 * m_p[2] + m_p[1]);
    }

    double curvature(double t) const
    {
        const Pt d = derivative(t);
        return cross(d, second(t)) / std::pow(dot(d, d), 1.5);
    }

    double length() const { return m_cumulative.back(); }

    // Arc length from time 0 to t.
    double lengthTo(double t) const
    {
        const int k = std::min(kPieces - 1, static_cast<int>(t * kPieces));
        return m_cumulative[k] + gauss(double(k) / kPieces, t);
    }

    // The time at arc length s, by bisection within one piece of the table.
    double timeAt(double s) const
    {
        if (s <= 0.0)
            return 0.0;
        if (s >= length())
            return 1.0;
        const int k = int(std::upper_bound(m_cumulative.begin(), m_cumulative.end(), s)
                          - m_cumulative.begin()) - 1;
        double low = double(k) / kPieces;
        double high = double(k + 1) / kPieces;
        for (int i = 0; i < 60; ++i) {
            const double middle = 0.5 * (low + high);
            (m_cumulative[k] + gauss(double(k) / kPieces, middle) < s ? low : high) = middle;
        }
        return 0.5 * (low + high);
    }

    // The offset point at arc length s: the curve point moved by distance
    // along the normal of the unit tangent.
    Pt offsetAt(double s, double distance) const
    {
        const double t = timeAt(s);
        return point(t) + distance * normalOf(derivative(t));
    }

    // Distance from p to the curve, and the time of the nearest point.
    double nearest(Pt p, double *time = nullptr) const
    {
        const int samples = 2000;
        int best = 0;
        double bestDistance = std::numeric_limits<double>::infinity();
        for (int i = 0; i <= samples; ++i) {
            const double d = norm(point(double(i) / samples) - p);
            if (d < bestDistance) {
                bestDistance = d;
                best = i;
            }
        }
        double low = std::max(0.0, (best - 1.0) / samples);
        double high = std::min(1.0, (best + 1.0) / samples);
        const double golden = 0.6180339887498949;
        for (int i = 0; i < 100; ++i) {
            const double a = high - golden * (high - low);
            const double b = low + golden * (high - low);
            if (norm(point(a) - p) < norm(point(b) - p))
                high = b;
            else
                low = a;
        }
        const double t = 0.5 * (low + high);
        if (time)
            *time = t;
        return norm(point(t) - p);
    }

    // The smallest radius of curvature, sampled.
    double minRadius() const
    {
        double radius = std::numeric_limits<double>::infinity();
        for (int i = 0; i <= 1000; ++i)
            radius = std::min(radius, 1.0 / std::fabs(curvature(i / 1000.0)));
        return radius;
    }

    const Pt &operator[](int i) const { return m_p[i]; }

private:
    static constexpr int kPieces = 2048;

    // Five-point Gauss-Legendre quadrature of the speed from a to b.
    double gauss(double a, double b) const
    {
        static const double nodes[5] = {0.0, -0.5384693101056831, 0.5384693101056831,
                                        -0.9061798459386640, 0.9061798459386640};
        static const double weights[5] = {0.5688888888888889, 0.4786286704993665,
                                          0.4786286704993665, 0.2369268850561891,
                                          0.2369268850561891};
        const double half = 0.5 * (b - a);
        const double middle = 0.5 * (a + b);
        double sum = 0.0;
        for (int i = 0; i < 5; ++i)
            sum += weights[i] * norm(derivative(middle + half * nodes[i]));
        return sum * half;
    }

    void tabulate()
    {
        m_cumulative.assign(1, 0.0);
        for (int k = 0; k < kPieces; ++k)
            m_cumulative.push_back(m_cumulative.back()
                                   + gauss(double(k) / kPieces, double(k + 1) / kPieces));
    }

    Pt m_p[4];
    std::vector<double> m_cumulative;
};

ZDPath polyline(std::initializer_list<Pt> points)
{
    ZDPath path;
    bool first = true;
    for (const Pt &p : points) {
        if (first)
            path.moveTo(p.x, p.y);
        else
            path.lineTo(p.x, p.y);
        first = false;
    }
    return path;
}

void appendCubic(ZDPath &path, const RefCubic &c)
{
    path.cubicTo(QPointF(c[1].x, c[1].y), QPointF(c[2].x, c[2].y), QPointF(c[3].x, c[3].y));
}

ZDPath outline(ZDPath path, double distance, double step)
{
    ZDPath out;
    path.parallelPath(out, distance, step);
    return out;
}

void expectElement(const ZDPath &path, int i, int32_t type, Pt p, double tolerance = 1e-9)
{
    ASSERT_LT(i, path.count());
    EXPECT_EQ(path.elements[i].type, type) << "element " << i;
    EXPECT_NEAR(path.elements[i].x, p.x, tolerance) << "element " << i;
    EXPECT_NEAR(path.elements[i].y, p.y, tolerance) << "element " << i;
}

void expectElements(const ZDPath &path, const std::vector<std::pair<int32_t, Pt>> &expected,
                    double tolerance = 1e-9)
{
    ASSERT_EQ(path.count(), int(expected.size()));
    for (int i = 0; i < int(expected.size()); ++i)
        expectElement(path, i, expected[i].first, expected[i].second, tolerance);
}

// Where a sample stands along its curve: the library measures arc length by
// a 16-point quadrature of the whole curve and short running integrals of 2
// to 16 points in its time search, which on the curves used here place a
// sample within a few 1e-5 of its exact arc length (4.3e-5 at worst over the
// random curves below).
const double kSampleTolerance = 1e-4;

// How far a vertex lies from |distance| off the source: a sample is a curve
// point moved along the unit normal, so only rounding and the reference's
// nearest-point search (golden section to about 1e-8) enter.
const double kDistanceTolerance = 1e-6;

// Samples that resume after an inner trim start one step past the curve
// time nearest to the trim point. The library finds that time by halving a
// search step down to 4e-07, so the restart can be off by that much time,
// times a speed of up to 150 units on the curves used here, on top of the
// placement error of kSampleTolerance.
const double kRestartTolerance = 2e-4;

// Samples of a curve at from, from + step, ... below end, as the outline
// writes them.
std::vector<Pt> referenceSamples(const RefCubic &c, double from, double end, double step,
                                 double distance)
{
    std::vector<Pt> samples;
    for (double s = from; s < end; s += step)
        samples.push_back(c.offsetAt(s, distance));
    return samples;
}

// The stepping search of an inner trim against a line side: walk `walked`
// from arc length 0 by `step` up to and including its length, offsetting by
// `walkDistance`, until a sample lies on the side of the line a + k v that
// `distance` names and |distance| or more from it. The trim point is the
// midpoint of that sample and the one before (the first sample is its own
// predecessor); `s` is the arc length of the sample that ended the walk.
struct RefTrim
{
    bool found = false;
    Pt point;
    double s = 0.0;
};

RefTrim referenceTrimAgainstLine(const RefCubic &walked, double walkDistance, Pt a, Pt v,
                                 double distance, double step)
{
    RefTrim trim;
    Pt previous = walked.offsetAt(0.0, walkDistance);
    for (double s = 0.0; s <= walked.length(); s += step) {
        const Pt p = walked.offsetAt(s, walkDistance);
        const double beyond = (distance > 0 ? 1.0 : -1.0) * signedDistance(p, a, v);
        if (beyond >= std::fabs(distance)) {
            // Not a borderline sample, where rounding could decide the walk.
            EXPECT_GT(beyond - std::fabs(distance), 1e-3);
            trim.found = true;
            trim.point = midpointOf(previous, p);
            trim.s = s;
            return trim;
        }
        previous = p;
    }
    return trim;
}

} // namespace

// --- Zero distance and the shape of the result ------------------------------

TEST(ZDPathParallelPath, ZeroDistanceAssignsThePathCurvesIncluded)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 0);
    path.cubicTo(QPointF(150, 0), QPointF(150, 100), QPointF(100, 100));
    path.closeSubpath();
    ZDPath out;
    out.moveTo(-5, -5);
    out.lineTo(-6, -6);
    path.parallelPath(out, 0.0, 5.0);
    ASSERT_EQ(out.count(), path.count());
    for (int i = 0; i < path.count(); ++i) {
        EXPECT_EQ(out.elements[i].type, path.elements[i].type);
        EXPECT_EQ(out.elements[i].x, path.elements[i].x);
        EXPECT_EQ(out.elements[i].y, path.elements[i].y);
    }
    EXPECT_EQ(out.elements[2].type, ZDCurveToElement);
}

TEST(ZDPathParallelPath, NonZeroDistanceWritesOnlyMovesLinesAndCloses)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 0);
    path.cubicTo(QPointF(150, 0), QPointF(150, 100), QPointF(100, 100));
    path.closeSubpath();
    for (double distance : {-1e-9, 1e-9, 7.0, -7.0}) {
        const ZDPath out = outline(path, distance, 5.0);
        ASSERT_GT(out.count(), 10);
        EXPECT_EQ(out.elements.first().type, Move);
        EXPECT_EQ(out.elements.last().type, Close);
        for (int i = 1; i + 1 < out.count(); ++i)
            EXPECT_EQ(out.elements[i].type, Line) << "element " << i;
    }
}

TEST(ZDPathParallelPath, AppendsAfterWhatTheOutputHolds)
{
    ZDPath out;
    out.moveTo(500, 500);
    out.lineTo(600, 600);
    polyline({{0, 0}, {100, 0}}).parallelPath(out, 10, 5);
    expectElements(out, {{Move, {500, 500}}, {Line, {600, 600}}, {Move, {0, -10}}, {Line, {100, -10}}});
}

TEST(ZDPathParallelPath, OutputMayBeThePathItself)
{
    ZDPath path = polyline({{0, 0}, {100, 0}, {100, 100}});
    const ZDPath separate = outline(path, 10, 5);
    path.parallelPath(path, 10, 5);
    ASSERT_EQ(path.count(), 3 + separate.count());
    expectElement(path, 0, Move, {0, 0}, 0.0);
    expectElement(path, 2, Line, {100, 100}, 0.0);
    for (int i = 0; i < separate.count(); ++i)
        expectElement(path, 3 + i, separate.elements[i].type, pointOf(separate.elements[i]), 0.0);
}

// --- Lines and their corners ------------------------------------------------

TEST(ZDPathParallelPath, SingleLineMovesAlongItsNormal)
{
    expectElements(outline(polyline({{0, 0}, {100, 0}}), 10, 5),
                   {{Move, {0, -10}}, {Line, {100, -10}}});
    expectElements(outline(polyline({{0, 0}, {100, 0}}), -10, 5),
                   {{Move, {0, 10}}, {Line, {100, 10}}});
    // Direction (0.6, 0.8), normal (0.8, -0.6).
    expectElements(outline(polyline({{0, 0}, {30, 40}}), 5, 5),
                   {{Move, {4, -3}}, {Line, {34, 37}}});
}

TEST(ZDPathParallelPath, RightAngleOuterCornerKeepsItsMiterPoint)
{
    // The miter point lies exactly |distance| from the end of the first
    // offset side, and the limit |distance| / tan(pi / 4) is just above it.
    expectElements(outline(polyline({{0, 0}, {100, 0}, {100, 100}}), 10, 5),
                   {{Move, {0, -10}}, {Line, {110, -10}}, {Line, {110, 100}}}, 0.0);
    expectElements(outline(polyline({{0, 0}, {100, 0}, {100, -100}}), -10, 5),
                   {{Move, {0, 10}}, {Line, {110, 10}}, {Line, {110, -100}}}, 0.0);
    expectElements(outline(polyline({{20, 30}, {20, 80}, {-40, 80}}), 7, 5),
                   {{Move, {27, 30}}, {Line, {27, 87}}, {Line, {-40, 87}}}, 0.0);
}

TEST(ZDPathParallelPath, MiterLimitStaysJustAboveTheDistance)
{
    // A tilted right angle whose miter point comes out one unit in the last
    // place farther than |distance| from the end of the first offset side:
    // the limit |distance| / tan(pi / 4) equals that value, so the miter
    // stays, where a limit of |distance| itself would cut it square.
    const Pt a{0, 0}, b{1, -49}, c{50, -48};
    const double d = 10;
    const Pt n1 = normalOf(b - a), n2 = normalOf(c - b);
    const ZDPath out = outline(polyline({a, b, c}), d, 5);
    ASSERT_EQ(out.count(), 3);
    expectElement(out, 1, Line, b + d * (n1 + n2), 1e-12);
    // The distance as the outline measures it, from the offset side's end.
    const double length = std::sqrt(1.0 + 49.0 * 49.0);
    const Pt e1{d * (-49.0 / length) + 1.0, -(d * (1.0 / length)) + -49.0};
    const double dx = out.elements[1].x - e1.x, dy = out.elements[1].y - e1.y;
    const double miterDistance = std::sqrt(dx * dx + dy * dy);
    EXPECT_GT(miterDistance, d);
    EXPECT_EQ(miterDistance, d / std::tan(0.7853981633974483));
}

TEST(ZDPathParallelPath, RoundedRightAngleMitersStayWithinTheLimit)
{
    // Exact right angles of integer vectors v and (-vy, vx) or (vy, -vx),
    // turning away from the offset side, in four directions and with both
    // signs of the distance. Rounding in the crossing of the offset sides
    // puts each of these miter points a unit in the last place farther than
    // |distance| from the end of the first offset side, so a limit of
    // |distance| itself would cut them square; |distance| / tan(pi / 4) keeps
    // them.
    struct Corner
    {
        Pt a;
        Pt v;
        double distance;
    };
    const Corner corners[] = {{{-123, 40}, {71, -3}, 10.0},
                              {{-444, 500}, {73, 19}, -33.3},
                              {{-301, -451}, {11, -19}, -7.0},
                              {{-38, 5}, {51, 38}, 7.0}};
    for (const Corner &corner : corners) {
        const double d = corner.distance;
        const Pt b = corner.a + corner.v;
        // (vy, -vx) is the side of a positive distance: turn the other way.
        const Pt turned = d > 0 ? Pt{-corner.v.y, corner.v.x} : Pt{corner.v.y, -corner.v.x};
        const Pt c = b + turned;
        ASSERT_EQ(dot(corner.v, turned), 0.0);
        const ZDPath out = outline(polyline({corner.a, b, c}), d, 5);
        const Pt n1 = normalOf(corner.v), n2 = normalOf(turned);
        expectElements(out, {{Move, corner.a + d * n1}, {Line, b + d * (n1 + n2)}, {Line, c + d * n2}},
                       1e-9);
    }
}

TEST(ZDPathParallelPath, SharperOuterCornerKeepsItsMiterPoint)
{
    // A turn of 60 degrees: the miter point is corner + d (n1 + n2) / (1 + n1.n2).
    const Pt a{0, 0}, b{100, 0}, c{125, 25 * std::sqrt(3.0)};
    const double d = 10;
    const Pt n1 = normalOf(b - a), n2 = normalOf(c - b);
    const Pt miter = b + (d / (1.0 + dot(n1, n2))) * (n1 + n2);
    expectElements(outline(polyline({a, b, c}), d, 5),
                   {{Move, a + d * n1}, {Line, miter}, {Line, c + d * n2}});
    EXPECT_NEAR(miter.x, 100 + 10 / std::sqrt(3.0), 1e-12);
    EXPECT_NEAR(miter.y, -10, 1e-12);
}

TEST(ZDPathParallelPath, MiterLimitLiesAtARightAngle)
{
    // Just below a quarter turn the miter stays; just above it is cut square.
    const double d = 10;
    for (double turnDegrees : {89.9, 90.1}) {
        const double turn = turnDegrees * M_PI / 180.0;
        const Pt a{0, 0}, b{100, 0};
        const Pt c = b + 100.0 * Pt{std::cos(turn), std::sin(turn)};
        const ZDPath out = outline(polyline({a, b, c}), d, 5);
        const Pt n1 = normalOf(b - a), n2 = normalOf(c - b);
        if (turnDegrees < 90) {
            const Pt miter = b + (d / (1.0 + dot(n1, n2))) * (n1 + n2);
            expectElements(out, {{Move, a + d * n1}, {Line, miter}, {Line, c + d * n2}});
        } else {
            expectElements(out, {{Move, a + d * n1},
                                 {Line, b + d * n1 + d * unit(b - a)},
                                 {Line, b + d * n2 - d * unit(c - b)},
                                 {Line, c + d * n2}});
        }
    }
}

TEST(ZDPathParallelPath, WideOuterTurnGetsTheSquareCut)
{
    // A turn of 135 degrees: two points, each |distance| beyond the ends of
    // the offset sides at the corner.
    const Pt a{0, 0}, b{100, 0}, c{50, 50};
    const double d = 10;
    const ZDPath out = outline(polyline({a, b, c}), d, 5);
    const Pt e1 = b + d * normalOf(b - a);
    const Pt s2 = b + d * normalOf(c - b);
    expectElements(out, {{Move, {0, -10}},
                         {Line, {110, -10}},
                         {Line, {100 + 10 * std::sqrt(2.0), 0}},
                         {Line, c + d * normalOf(c - b)}});
    EXPECT_NEAR(norm(pointOf(out.elements[1]) - e1), d, 1e-12);
    EXPECT_NEAR(norm(pointOf(out.elements[2]) - s2), d, 1e-12);
}

TEST(ZDPathParallelPath, FoldBackGetsTheSquareCutBeyondTheTurningPoint)
{
    expectElements(outline(polyline({{0, 0}, {100, 0}, {50, 0}}), 10, 5),
                   {{Move, {0, -10}}, {Line, {110, -10}}, {Line, {110, 10}}, {Line, {50, 10}}});
    expectElements(outline(polyline({{0, 0}, {100, 0}, {50, 0}}), -10, 5),
                   {{Move, {0, 10}}, {Line, {110, 10}}, {Line, {110, -10}}, {Line, {50, -10}}});
}

TEST(ZDPathParallelPath, StraightContinuationJoinsAtTheNextSide)
{
    expectElements(outline(polyline({{0, 0}, {50, 0}, {100, 0}}), 10, 5),
                   {{Move, {0, -10}}, {Line, {50, -10}}, {Line, {100, -10}}});
}

TEST(ZDPathParallelPath, InnerCornerOfLinesTakesTheCrossingOfTheSides)
{
    expectElements(outline(polyline({{0, 0}, {100, 0}, {100, 100}}), -10, 5),
                   {{Move, {0, 10}}, {Line, {90, 10}}, {Line, {90, 100}}}, 0.0);
    // A sharp inner turn keeps the crossing even far past the miter limit.
    const Pt a{0, 0}, b{100, 0}, c{0, 20};
    const double d = -5;
    const Pt n1 = normalOf(b - a), n2 = normalOf(c - b);
    const Pt crossing = crossLines(b + d * n1, b - a, b + d * n2, c - b);
    EXPECT_GT(norm(crossing - (b + d * n1)), 40.0);
    expectElements(outline(polyline({a, b, c}), d, 5),
                   {{Move, a + d * n1}, {Line, crossing}, {Line, c + d * n2}});
}

// --- Subpaths ----------------------------------------------------------------

TEST(ZDPathParallelPath, EmptyPathAndLoneMovesWriteNothing)
{
    EXPECT_EQ(outline(ZDPath(), 10, 5).count(), 0);
    ZDPath lone;
    lone.moveTo(3, 4);
    EXPECT_EQ(outline(lone, 10, 5).count(), 0);
    ZDPath twoMoves;
    twoMoves.moveTo(3, 4);
    twoMoves.moveTo(10, 10);
    EXPECT_EQ(outline(twoMoves, 10, 5).count(), 0);
    twoMoves.lineTo(20, 10);
    expectElements(outline(twoMoves, 10, 5), {{Move, {10, 0}}, {Line, {20, 0}}});
}

TEST(ZDPathParallelPath, EachOpenSubpathGetsItsOwnPolyline)
{
    ZDPath path = polyline({{0, 0}, {100, 0}});
    path.moveTo(0, 50);
    path.lineTo(0, 100);
    expectElements(outline(path, 10, 5),
                   {{Move, {0, -10}}, {Line, {100, -10}}, {Move, {10, 50}}, {Line, {10, 100}}});
}

TEST(ZDPathParallelPath, ClosedSquareIsJoinedAtItsStart)
{
    const ZDPath square(QRectF(0, 0, 100, 100));
    ASSERT_EQ(square.count(), 6);
    // Outer side: the first move is moved onto the closing miter point.
    expectElements(outline(square, 10, 5),
                   {{Move, {-10, -10}}, {Line, {110, -10}}, {Line, {110, 110}}, {Line, {-10, 110}},
                    {Line, {-10, -10}}, {Close, {-10, -10}}}, 0.0);
    // Inner side.
    expectElements(outline(square, -10, 5),
                   {{Move, {10, 10}}, {Line, {90, 10}}, {Line, {90, 90}}, {Line, {10, 90}},
                    {Line, {10, 10}}, {Close, {10, 10}}}, 0.0);
}

TEST(ZDPathParallelPath, ClosingCornerOfTwoLinesLeavesOutTheFoldBackTest)
{
    // The corner at (100, 0) folds back and is cut square; the closing corner
    // folds back too, but there the outgoing side's start is taken as it is.
    ZDPath path = polyline({{0, 0}, {100, 0}, {0, 0}});
    path.closeSubpath();
    ASSERT_EQ(path.count(), 4);
    expectElements(outline(path, 10, 5), {{Move, {0, -10}},
                                           {Line, {110, -10}},
                                           {Line, {110, 10}},
                                           {Line, {0, -10}},
                                           {Close, {0, -10}}});
}

TEST(ZDPathParallelPath, ClosingPointIsWrittenAtTheInputIndexOfTheMove)
{
    const ZDPath square(QRectF(0, 0, 100, 100));
    // Output that already holds two elements: element 0 of the output takes
    // the closing point, and the square's own move keeps its first offset.
    ZDPath out;
    out.moveTo(500, 500);
    out.lineTo(600, 600);
    ZDPath(square).parallelPath(out, 10, 5);
    ASSERT_EQ(out.count(), 8);
    expectElement(out, 0, Move, {-10, -10}, 0.0);
    expectElement(out, 2, Move, {0, -10}, 0.0);
    expectElement(out, 7, Close, {-10, -10}, 0.0);

    // A square cut in a first subpath shifts the output by one element: the
    // closing point of the second subpath lands on the last point of the
    // first one.
    ZDPath path = polyline({{0, 0}, {100, 0}, {50, 50}});
    path.moveTo(200, 0);
    path.lineTo(300, 0);
    path.lineTo(300, 100);
    path.lineTo(200, 100);
    path.closeSubpath();
    const ZDPath shifted = outline(path, 10, 5);
    ASSERT_EQ(shifted.count(), 4 + 6);
    expectElement(shifted, 3, Line, {190, -10}, 0.0);
    expectElement(shifted, 4, Move, {200, -10}, 0.0);
    expectElement(shifted, 9, Close, {190, -10}, 0.0);
}

// --- Curves ------------------------------------------------------------------

TEST(ZDPathParallelPath, SingleCurveIsSampledByArcLength)
{
    const RefCubic c({0, 0}, {30, 0}, {60, 30}, {60, 60});
    ZDPath path;
    path.moveTo(0, 0);
    appendCubic(path, c);
    for (double d : {5.0, -5.0}) {
        const double step = 10;
        const ZDPath out = outline(path, d, step);
        // A move to the start, samples from one step on, and the end.
        const std::vector<Pt> samples = referenceSamples(c, step, c.length(), step, d);
        ASSERT_EQ(out.count(), 1 + int(samples.size()) + 1);
        expectElement(out, 0, Move, {0, -d}, 1e-12);
        for (int i = 0; i < int(samples.size()); ++i)
            expectElement(out, 1 + i, Line, samples[i], kSampleTolerance);
        expectElement(out, out.count() - 1, Line, {60 + d, 60}, 1e-12);
    }
}

TEST(ZDPathParallelPath, SmoothJoinsOfLinesAndCurveRepeatTheJoinPoint)
{
    // Tangent-continuous joints: the join writes the start of the next side,
    // then the curve's samples begin at its start, and its end sample
    // precedes the join into the line.
    const RefCubic c({50, 0}, {80, 0}, {100, 20}, {100, 50});
    ZDPath path = polyline({{0, 0}, {50, 0}});
    appendCubic(path, c);
    path.lineTo(100, 100);
    const double d = 5, step = 10;
    const ZDPath out = outline(path, d, step);
    const std::vector<Pt> samples = referenceSamples(c, 0.0, c.length(), step, d);
    ASSERT_EQ(out.count(), 2 + int(samples.size()) + 3);
    expectElement(out, 0, Move, {0, -5});
    expectElement(out, 1, Line, {50, -5});
    for (int i = 0; i < int(samples.size()); ++i)
        expectElement(out, 2 + i, Line, samples[i], kSampleTolerance);
    const int n = out.count();
    expectElement(out, n - 3, Line, {105, 50});
    expectElement(out, n - 2, Line, {105, 50});
    expectElement(out, n - 1, Line, {105, 100});
}

TEST(ZDPathParallelPath, OuterCornerAfterCurveIsCutSquare)
{
    const RefCubic c({0, 0}, {40, 0}, {80, 20}, {100, 50});
    ZDPath path;
    path.moveTo(0, 0);
    appendCubic(path, c);
    path.lineTo(0, 60);
    const double d = 5, step = 5;
    const ZDPath out = outline(path, d, step);
    const std::vector<Pt> samples = referenceSamples(c, 0.0, c.length(), step, d);
    ASSERT_EQ(out.count(), 1 + int(samples.size()) + 4);
    expectElement(out, 0, Move, {0, -5});
    for (int i = 0; i < int(samples.size()); ++i)
        expectElement(out, 1 + i, Line, samples[i], kSampleTolerance);
    const Pt corner{100, 50}, next{0, 60};
    const Pt t1 = unit(c.derivative(1.0)), t2 = unit(next - corner);
    const Pt e1 = corner + d * normalOf(t1);
    const Pt s2 = corner + d * normalOf(t2);
    const int n = out.count();
    expectElement(out, n - 4, Line, e1);
    expectElement(out, n - 3, Line, e1 + d * t1);
    expectElement(out, n - 2, Line, s2 - d * t2);
    expectElement(out, n - 1, Line, next + d * normalOf(t2));
}

TEST(ZDPathParallelPath, InnerCornerFromCurveIntoLineIsTrimmed)
{
    const RefCubic c({0, 0}, {40, 0}, {80, 20}, {100, 50});
    const Pt corner{100, 50}, next{0, 60};
    ZDPath path;
    path.moveTo(0, 0);
    appendCubic(path, c);
    path.lineTo(next.x, next.y);
    const double d = -5, step = 5;
    const ZDPath out = outline(path, d, step);

    // The reversed curve is walked with the flipped distance until a sample
    // lies on the offset side of the line and |d| or more from it.
    const RefCubic back = c.reversed();
    const Pt start = c.offsetAt(0.0, d);
    Pt trim = start;
    double end = c.length();
    Pt previous = back.offsetAt(0.0, -d); // the first sample is its own predecessor
    for (double s = 0.0; s <= back.length(); s += step) {
        const Pt p = back.offsetAt(s, -d);
        const double side = signedDistance(p, corner, next - corner);
        if (side < 0 && -side >= std::fabs(d)) {
            ASSERT_GT(-side - std::fabs(d), 1e-3); // not a borderline sample
            trim = midpointOf(previous, p);
            end = back.length() - s;
            break;
        }
        previous = p;
    }
    ASSERT_LT(end, c.length());
    const std::vector<Pt> samples = referenceSamples(c, 0.0, end, step, d);
    ASSERT_EQ(out.count(), 1 + int(samples.size()) + 2);
    expectElement(out, 0, Move, start);
    for (int i = 0; i < int(samples.size()); ++i)
        expectElement(out, 1 + i, Line, samples[i], kSampleTolerance);
    expectElement(out, out.count() - 2, Line, trim, kSampleTolerance);
    expectElement(out, out.count() - 1, Line, next + d * normalOf(next - corner));
}

TEST(ZDPathParallelPath, InnerTrimWithoutACrossingGoesBackToTheCurrentPoint)
{
    // A short curve offset far to its inner side: no sample of the reversed
    // walk gets |d| beyond the line, so the whole curve is written and the
    // join goes back to the point last written by a join, the start.
    const RefCubic c({0, 0}, {3, 0}, {6, 1}, {8, 3});
    const Pt corner{8, 3}, next{0, 10};
    ZDPath path;
    path.moveTo(0, 0);
    appendCubic(path, c);
    path.lineTo(next.x, next.y);
    const double d = -20, step = 2;
    const RefCubic back = c.reversed();
    for (double s = 0.0; s <= back.length(); s += step) {
        const double side = signedDistance(back.offsetAt(s, -d), corner, next - corner);
        ASSERT_FALSE(side < 0 && -side >= std::fabs(d) - 1e-3);
    }
    const ZDPath out = outline(path, d, step);
    const std::vector<Pt> samples = referenceSamples(c, 0.0, c.length(), step, d);
    ASSERT_EQ(out.count(), 1 + int(samples.size()) + 2);
    expectElement(out, 0, Move, {0, 20}, 1e-12);
    for (int i = 0; i < int(samples.size()); ++i)
        expectElement(out, 1 + i, Line, samples[i], kSampleTolerance);
    expectElement(out, out.count() - 2, Line, {0, 20}, 1e-12);
    expectElement(out, out.count() - 1, Line, next + d * normalOf(next - corner), 1e-12);
}

TEST(ZDPathParallelPath, JointTurnedByAHairIsTrimmedAtTheJoint)
{
    // A line that leaves a curve along its end tangent turned by 1e-12: one
    // way the corner is outer (the sides count as collinear and join at the
    // line's offset start), the other way it is inner, and the first sample
    // of the walk, the offset end of the curve, already lies |d| beyond the
    // line: the trim point is that sample itself, and no point of the
    // outline jumps back along the curve.
    const RefCubic c({0, 0}, {40, 0}, {80, 20}, {100, 50});
    const Pt corner{100, 50};
    const double d = -5, step = 5;
    const Pt t1 = unit(c.derivative(1.0));
    const Pt e1 = corner + d * normalOf(t1);
    const std::vector<Pt> samples = referenceSamples(c, 0.0, c.length(), step, d);
    int innerCorners = 0;
    for (double hair : {1e-12, -1e-12}) {
        const Pt direction{t1.x * std::cos(hair) - t1.y * std::sin(hair),
                           t1.x * std::sin(hair) + t1.y * std::cos(hair)};
        const Pt next = corner + 100.0 * direction;
        ZDPath path;
        path.moveTo(0, 0);
        appendCubic(path, c);
        path.lineTo(next.x, next.y);
        const ZDPath out = outline(path, d, step);
        const bool inner = out.count() == 1 + int(samples.size()) + 2;
        ASSERT_TRUE(inner || out.count() == 1 + int(samples.size()) + 3);
        innerCorners += inner;
        for (int i = 0; i < int(samples.size()); ++i)
            expectElement(out, 1 + i, Line, samples[i], kSampleTolerance);
        // The curve's end sample (outer) or the trim point (inner), then the
        // join (outer only), then the line's end.
        expectElement(out, 1 + int(samples.size()), Line, e1, 1e-9);
        if (!inner)
            expectElement(out, 2 + int(samples.size()), Line, e1, 1e-9);
        expectElement(out, out.count() - 1, Line, next + d * normalOf(direction), 1e-9);
    }
    EXPECT_EQ(innerCorners, 1);
}

TEST(ZDPathParallelPath, InnerCornerFromLineIntoCurveIsTrimmed)
{
    // The mirror of the previous case: the curve is walked forward until its
    // offset has crossed the line's; the curve's samples then resume one step
    // past the curve point nearest to the trim point.
    const RefCubic c({100, 50}, {80, 20}, {40, 0}, {0, 0});
    const Pt a{0, 60}, corner{100, 50};
    ZDPath path = polyline({a, corner});
    appendCubic(path, c);
    const double d = 5, step = 5;
    const ZDPath out = outline(path, d, step);

    Pt trim = a + d * normalOf(corner - a);
    Pt previous = c.offsetAt(0.0, d);
    for (double s = 0.0; s <= c.length(); s += step) {
        const Pt p = c.offsetAt(s, d);
        const double side = signedDistance(p, a, corner - a);
        if (side > 0 && side >= d) {
            ASSERT_GT(side - d, 1e-3);
            trim = midpointOf(previous, p);
            break;
        }
        previous = p;
    }
    double nearestTime = 0.0;
    c.nearest(trim, &nearestTime);
    const std::vector<Pt> samples =
        referenceSamples(c, c.lengthTo(nearestTime) + step, c.length(), step, d);
    ASSERT_EQ(out.count(), 2 + int(samples.size()) + 1);
    expectElement(out, 0, Move, a + d * normalOf(corner - a));
    expectElement(out, 1, Line, trim, kSampleTolerance);
    for (int i = 0; i < int(samples.size()); ++i)
        expectElement(out, 2 + i, Line, samples[i], kRestartTolerance);
    expectElement(out, out.count() - 1, Line, {0, 5}, 1e-12);
}

TEST(ZDPathParallelPath, InnerCornerBetweenCurvesIsTrimmed)
{
    const RefCubic in({0, 0}, {40, 0}, {80, 20}, {100, 50});
    const RefCubic outgoing({100, 50}, {60, 50}, {30, 55}, {0, 60});
    ZDPath path;
    path.moveTo(0, 0);
    appendCubic(path, in);
    appendCubic(path, outgoing);
    const double d = -5, step = 5;
    const ZDPath out = outline(path, d, step);

    // Walk the outgoing curve: a sample on the offset side of the incoming
    // tangent that lies |d| or more from the incoming curve ends the walk.
    const Pt corner{100, 50};
    const Pt t1 = in.derivative(1.0);
    Pt trim = in.offsetAt(0.0, d);
    Pt previous = outgoing.offsetAt(0.0, d);
    double nearestTime = 1.0;
    for (double s = 0.0; s <= outgoing.length(); s += step) {
        const Pt p = outgoing.offsetAt(s, d);
        double t = 0.0;
        if (signedDistance(p, corner, t1) < 0 && in.nearest(p, &t) >= std::fabs(d)) {
            ASSERT_GT(in.nearest(p) - std::fabs(d), 1e-3);
            trim = midpointOf(previous, p);
            nearestTime = t;
            break;
        }
        previous = p;
    }
    ASSERT_LT(nearestTime, 1.0);
    const std::vector<Pt> first = referenceSamples(in, 0.0, in.lengthTo(nearestTime), step, d);
    double outgoingTime = 0.0;
    outgoing.nearest(trim, &outgoingTime);
    const std::vector<Pt> second = referenceSamples(
        outgoing, outgoing.lengthTo(outgoingTime) + step, outgoing.length(), step, d);
    ASSERT_EQ(out.count(), 1 + int(first.size()) + 1 + int(second.size()) + 1);
    expectElement(out, 0, Move, in.offsetAt(0.0, d));
    int i = 1;
    for (const Pt &p : first)
        expectElement(out, i++, Line, p, kSampleTolerance);
    expectElement(out, i++, Line, trim, kSampleTolerance);
    for (const Pt &p : second)
        expectElement(out, i++, Line, p, kRestartTolerance);
    expectElement(out, i, Line, outgoing.offsetAt(outgoing.length(), d), 1e-12);
}

TEST(ZDPathParallelPath, FoldBackIntoCurveIsToldApartByCurvature)
{
    // The curve leaves the corner straight back along the line (its first
    // control point lies on the line), so the side test gives 0; the sign of
    // the curve's curvature at the corner then tells the inner side.
    const Pt a{0, 0}, corner{100, 0};
    for (double bend : {30.0, -30.0}) {
        const RefCubic c(corner, {50, 0}, {50, bend}, {0, bend});
        ZDPath path = polyline({a, corner});
        appendCubic(path, c);
        const double d = 5;
        const ZDPath out = outline(path, d, 5);
        const bool outer = c.curvature(0.0) < 0; // d > 0 takes a positive curvature as inner
        ASSERT_EQ(outer, bend > 0);
        if (outer) {
            // Collinear sides that fold back: the square cut.
            expectElement(out, 0, Move, {0, -5});
            expectElement(out, 1, Line, {105, -5});
            expectElement(out, 2, Line, {105, 5});
            expectElement(out, 3, Line, {100, 5}, kSampleTolerance); // the curve's first sample
        } else {
            // Trimmed: the curve is walked forward against the line; its
            // samples resume one step past the curve point nearest the trim.
            const RefTrim trim = referenceTrimAgainstLine(c, d, a, corner - a, d, 5);
            ASSERT_TRUE(trim.found);
            double nearestTime = 0.0;
            c.nearest(trim.point, &nearestTime);
            const std::vector<Pt> samples =
                referenceSamples(c, c.lengthTo(nearestTime) + 5, c.length(), 5, d);
            ASSERT_EQ(out.count(), 2 + int(samples.size()) + 1);
            expectElement(out, 0, Move, {0, -5});
            expectElement(out, 1, Line, trim.point, kSampleTolerance);
            for (int i = 0; i < int(samples.size()); ++i)
                expectElement(out, 2 + i, Line, samples[i], kRestartTolerance);
        }
        // The curve ends heading along -x, so its offset end lies at y + 5.
        expectElement(out, out.count() - 1, Line, {0, bend + 5}, 1e-12);
    }
}

TEST(ZDPathParallelPath, ClosedCurvedOutlineMeetsItsStart)
{
    // A closed circle of four cubics: both sides meet at the start of the
    // first curve's offset, where the close element stands.
    const double k = 0.5522847498 * 100;
    ZDPath path;
    path.moveTo(100, 0);
    const RefCubic arcs[4] = {RefCubic({100, 0}, {100, k}, {k, 100}, {0, 100}),
                              RefCubic({0, 100}, {-k, 100}, {-100, k}, {-100, 0}),
                              RefCubic({-100, 0}, {-100, -k}, {-k, -100}, {0, -100}),
                              RefCubic({0, -100}, {k, -100}, {100, -k}, {100, 0})};
    for (const RefCubic &arc : arcs)
        appendCubic(path, arc);
    path.closeSubpath();
    ASSERT_EQ(path.count(), 1 + 12 + 1);
    for (double d : {8.0, -8.0}) {
        const ZDPath out = outline(path, d, 4);
        const Pt start = arcs[0].offsetAt(0.0, d);
        expectElement(out, 0, Move, start, 1e-12);
        expectElement(out, out.count() - 2, Line, start, 1e-12);
        expectElement(out, out.count() - 1, Close, start, 1e-12);
        for (int i = 0; i + 1 < out.count(); ++i) {
            const Pt p = pointOf(out.elements[i]);
            double best = std::numeric_limits<double>::infinity();
            for (const RefCubic &arc : arcs)
                best = std::min(best, arc.nearest(p));
            EXPECT_NEAR(best, std::fabs(d), kDistanceTolerance) << "element " << i;
        }
    }
}

TEST(ZDPathParallelPath, ClosingCornerFromCurveIntoFirstLine)
{
    // Last side a curve, first side a line: the close element and the
    // output's element at the move's index take the closing point.
    const RefCubic back({100, 100}, {50, 130}, {-30, 60}, {0, 0});
    ZDPath path = polyline({{0, 0}, {100, 0}, {100, 100}});
    appendCubic(path, back);
    path.closeSubpath();
    ASSERT_EQ(path.count(), 3 + 3 + 1);
    for (double d : {6.0, -6.0}) {
        const ZDPath out = outline(path, d, 4);
        const int n = out.count();
        ASSERT_GT(n, 6);
        const Pt closing = pointOf(out.elements[n - 1]);
        EXPECT_EQ(out.elements[n - 1].type, Close);
        expectElement(out, n - 2, Line, closing, 0.0);
        expectElement(out, 0, Move, closing, 0.0);
        if (d > 0) {
            // The outer miter lies exactly on the first line's offset.
            EXPECT_NEAR(signedDistance(closing, {0, 0}, {100, 0}), d, 1e-9);
        } else {
            // The inner trim: the last curve walked backwards, with the
            // distance flipped, against the first line.
            const RefTrim trim =
                referenceTrimAgainstLine(back.reversed(), -d, {0, 0}, {100, 0}, d, 4);
            ASSERT_TRUE(trim.found);
            expectElement(out, n - 1, Close, trim.point, kSampleTolerance);
            // Before it, the last curve's samples: they resume after the
            // inner trim at (100, 100), one step past the curve point nearest
            // to it, and end short of the curve's length by the walked arc
            // length.
            const RefTrim entry = referenceTrimAgainstLine(back, d, {100, 0}, {0, 100}, d, 4);
            ASSERT_TRUE(entry.found);
            double entryTime = 0.0;
            back.nearest(entry.point, &entryTime);
            const std::vector<Pt> tail = referenceSamples(
                back, back.lengthTo(entryTime) + 4, back.length() - trim.s, 4, d);
            ASSERT_GT(n, int(tail.size()) + 3);
            expectElement(out, n - 3 - int(tail.size()), Line, entry.point, kSampleTolerance);
            for (int i = 0; i < int(tail.size()); ++i)
                expectElement(out, n - 2 - int(tail.size()) + i, Line, tail[i], kRestartTolerance);
        }
    }
}

TEST(ZDPathParallelPath, ClosingCornerFromLineIntoFirstCurve)
{
    // First side a curve, last side a line. On the outer side the join is
    // followed by a line back to the start of the first curve's offset; on
    // the inner side the outline ends at its trim point.
    const RefCubic first({0, 0}, {40, -30}, {80, -30}, {100, 0});
    ZDPath path;
    path.moveTo(0, 0);
    appendCubic(path, first);
    path.lineTo(100, 100);
    path.lineTo(0, 100);
    path.closeSubpath();
    ASSERT_EQ(path.count(), 1 + 3 + 3 + 1);
    const Pt startOffset8 = first.offsetAt(0.0, 8);
    const ZDPath outer = outline(path, 8, 4);
    expectElement(outer, 0, Move, startOffset8, 1e-12);
    expectElement(outer, outer.count() - 2, Line, startOffset8, 1e-12);
    expectElement(outer, outer.count() - 1, Close, startOffset8, 1e-12);
    // The join before it: the corner at (0, 0) turns by about 53 degrees
    // from (0, -1) to (0.8, -0.6), so it keeps its miter point,
    // corner + d (n1 + n2) / (1 + n1.n2) = 8 (-1.6, -0.8) / 1.6.
    expectElement(outer, outer.count() - 3, Line, {-8, -4}, 1e-12);

    const ZDPath inner = outline(path, -8, 4);
    const int n = inner.count();
    const Pt trim = pointOf(inner.elements[n - 1]);
    EXPECT_EQ(inner.elements[n - 1].type, Close);
    expectElement(inner, n - 2, Line, trim, 0.0);
    // The first curve walked forward against the last line, from (0, 100)
    // up to (0, 0); the output's move keeps its place.
    const RefTrim reference = referenceTrimAgainstLine(first, -8, {0, 100}, {0, -100}, -8, 4);
    ASSERT_TRUE(reference.found);
    expectElement(inner, n - 1, Close, reference.point, kSampleTolerance);
    expectElement(inner, 0, Move, first.offsetAt(0.0, -8), 1e-12);
}

// --- Geometric properties on seeded random input ------------------------------

TEST(ZDPathParallelPath, RandomPolylinesKeepTheirSidesAtTheDistance)
{
    // Every vertex of the outline of a polyline lies on the offset line of a
    // source side: the sides' offset lines are met in order, one at a time
    // (a miter or trim point lies on two, a square cut puts one point on
    // each). Tolerance 1e-9: the points come from a handful of operations on
    // coordinates below 1000.
    std::mt19937 engine(20240611);
    std::uniform_real_distribution<double> unitRange(0.0, 1.0);
    for (int round = 0; round < 200; ++round) {
        const int sides = 1 + int(unitRange(engine) * 7);
        std::vector<Pt> points{{unitRange(engine) * 200, unitRange(engine) * 200}};
        double heading = unitRange(engine) * 2 * M_PI;
        for (int i = 0; i < sides; ++i) {
            if (i > 0) {
                // Turns between 10 and 170 degrees either way: no fold-backs.
                const double turn = (10 + 160 * unitRange(engine)) * M_PI / 180;
                heading += unitRange(engine) < 0.5 ? turn : -turn;
            }
            const double length = 20 + 180 * unitRange(engine);
            points.push_back(points.back() + length * Pt{std::cos(heading), std::sin(heading)});
        }
        const double distance = (unitRange(engine) < 0.5 ? -1 : 1) * (1 + 19 * unitRange(engine));
        ZDPath path;
        path.moveTo(points[0].x, points[0].y);
        for (int i = 1; i < int(points.size()); ++i)
            path.lineTo(points[i].x, points[i].y);
        const ZDPath out = outline(path, distance, 5);
        ASSERT_GE(out.count(), sides + 1);
        ASSERT_LE(out.count(), 2 * sides);
        int side = 0;
        for (int i = 0; i < out.count(); ++i) {
            const Pt v = pointOf(out.elements[i]);
            auto onSide = [&](int j) {
                return std::fabs(signedDistance(v, points[j], points[j + 1] - points[j]) - distance)
                       < 1e-9;
            };
            if (!onSide(side) && side + 1 < sides && onSide(side + 1))
                ++side;
            EXPECT_TRUE(onSide(side)) << "round " << round << " vertex " << i;
        }
        EXPECT_EQ(side, sides - 1) << "round " << round;
    }
}

TEST(ZDPathParallelPath, RandomCurvesStayAtTheDistance)
{
    // Gentle random cubics whose radius of curvature stays above three times
    // the distance: every vertex of the outline lies |d| from the curve
    // (kDistanceTolerance), the samples
    // stand at one step after another of the source's arc length
    // (kSampleTolerance), and the middle
    // of each chord between samples lies within the chord's sag of |d|:
    // a chord of length h on an offset of radius R sags by about h^2 / (8 R),
    // with h at most step * (1 + |d| / Rmin) and R at least Rmin - |d|.
    std::mt19937 engine(777);
    std::uniform_real_distribution<double> unitRange(0.0, 1.0);
    int tested = 0;
    while (tested < 60) {
        const double length = 100 + 200 * unitRange(engine);
        auto jitter = [&](double scale) { return (unitRange(engine) - 0.5) * scale; };
        const RefCubic c({0, 0}, {length / 3 + jitter(length / 5), jitter(length / 2)},
                         {2 * length / 3 + jitter(length / 5), jitter(length / 2)},
                         {length, jitter(length / 4)});
        const double d = (unitRange(engine) < 0.5 ? -1 : 1) * (2 + 6 * unitRange(engine));
        const double minRadius = c.minRadius();
        if (minRadius < 3 * std::fabs(d))
            continue;
        ++tested;
        const double step = 1 + 3 * unitRange(engine);
        ZDPath path;
        path.moveTo(0, 0);
        appendCubic(path, c);
        const ZDPath out = outline(path, d, step);
        const std::vector<Pt> samples = referenceSamples(c, step, c.length(), step, d);
        ASSERT_EQ(out.count(), int(samples.size()) + 2);
        const double reach = step * (1 + std::fabs(d) / minRadius);
        const double sag = reach * reach / (8 * (minRadius - std::fabs(d)));
        for (int i = 0; i < out.count(); ++i) {
            const Pt v = pointOf(out.elements[i]);
            double t = 0.0;
            EXPECT_NEAR(c.nearest(v, &t), std::fabs(d), kDistanceTolerance) << "vertex " << i;
            // The vertex lies on the side the sign of d selects.
            EXPECT_GT(dot(v - c.point(t), normalOf(c.derivative(t))) * d, 0.0);
            if (i > 0 && i + 1 < out.count())
                expectElement(out, i, Line, samples[i - 1], kSampleTolerance);
            if (i > 0) {
                const Pt middle = midpointOf(v, pointOf(out.elements[i - 1]));
                EXPECT_NEAR(c.nearest(middle), std::fabs(d), sag + kDistanceTolerance);
            }
        }
    }
}

TEST(ZDPathParallelPath, RandomMixedPathsAreDeterministicAndBounded)
{
    // Random runs of lines and curves: the outline is the same on every call,
    // holds one move and then lines, and no vertex lies farther from the
    // source than the corner of a square cut or a right-angle miter, |d| times
    // the square root of 2 (plus the sampling tolerance).
    std::mt19937 engine(4242);
    std::uniform_real_distribution<double> unitRange(0.0, 1.0);
    for (int round = 0; round < 40; ++round) {
        ZDPath path;
        std::vector<RefCubic> pieces;
        Pt at{unitRange(engine) * 100, unitRange(engine) * 100};
        path.moveTo(at.x, at.y);
        const int count = 2 + int(unitRange(engine) * 4);
        for (int i = 0; i < count; ++i) {
            const Pt to = at + Pt{40 + 80 * unitRange(engine), (unitRange(engine) - 0.5) * 160};
            Pt c1 = at + 0.33 * (to - at), c2 = at + 0.66 * (to - at);
            if (unitRange(engine) < 0.5) {
                c1 = c1 + Pt{0, (unitRange(engine) - 0.5) * 60};
                c2 = c2 + Pt{0, (unitRange(engine) - 0.5) * 60};
                path.cubicTo(QPointF(c1.x, c1.y), QPointF(c2.x, c2.y), QPointF(to.x, to.y));
            } else {
                path.lineTo(to.x, to.y);
            }
            pieces.emplace_back(at, c1, c2, to);
            at = to;
        }
        const double d = (unitRange(engine) < 0.5 ? -1 : 1) * (2 + 8 * unitRange(engine));
        const double step = 2 + 3 * unitRange(engine);
        const ZDPath first = outline(path, d, step);
        const ZDPath second = outline(path, d, step);
        ASSERT_EQ(first.count(), second.count());
        ASSERT_GE(first.count(), 2);
        EXPECT_EQ(first.elements[0].type, Move);
        expectElement(first, 0, Move, pieces[0].offsetAt(0.0, d), 1e-9);
        for (int i = 0; i < first.count(); ++i) {
            EXPECT_EQ(first.elements[i].x, second.elements[i].x);
            EXPECT_EQ(first.elements[i].y, second.elements[i].y);
            EXPECT_EQ(first.elements[i].type, second.elements[i].type);
            if (i > 0) {
                EXPECT_EQ(first.elements[i].type, Line);
            }
            const Pt v = pointOf(first.elements[i]);
            ASSERT_TRUE(std::isfinite(v.x) && std::isfinite(v.y));
            double best = std::numeric_limits<double>::infinity();
            for (const RefCubic &piece : pieces)
                best = std::min(best, piece.nearest(v));
            EXPECT_LE(best, std::fabs(d) * std::sqrt(2.0) + kDistanceTolerance) << "round " << round;
        }
    }
}

// --- Degenerate input --------------------------------------------------------

TEST(ZDPathParallelPath, ZeroLengthLineOffsetsToAZeroLengthLine)
{
    expectElements(outline(polyline({{5, 5}, {5, 5}}), 3, 1), {{Move, {5, 5}}, {Line, {5, 5}}});
    // Inside a polyline the zero vector is collinear with both neighbours and
    // its dot product with them is 0: both corners are cut square, with the
    // zero vector's direction read as (1, 0).
    expectElements(outline(polyline({{0, 0}, {100, 0}, {100, 0}, {100, 100}}), 10, 5),
                   {{Move, {0, -10}},
                    {Line, {110, -10}},
                    {Line, {90, 0}},
                    {Line, {110, 0}},
                    {Line, {110, -10}},
                    {Line, {110, 100}}},
                   1e-12);
}

TEST(ZDPathParallelPath, CurveOfCoincidentPointsGivesItsPoint)
{
    ZDPath path;
    path.moveTo(5, 5);
    path.cubicTo(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    expectElements(outline(path, 3, 1), {{Move, {5, 5}}, {Line, {5, 5}}}, 0.0);
}

TEST(ZDPathParallelPath, StepNotAboveZeroKeepsOnlyTheCurveEnds)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.cubicTo(QPointF(30, 0), QPointF(60, 30), QPointF(60, 60));
    for (double step : {0.0, -1.0, qQNaN()}) {
        expectElements(outline(path, 5, step), {{Move, {0, -5}}, {Line, {65, 60}}}, 1e-12);
    }
    // An inner trim that cannot walk keeps the current point.
    path.lineTo(0, 70);
    const ZDPath out = outline(path, -5, 0.0);
    ASSERT_EQ(out.count(), 3);
    expectElements(out, {{Move, {0, 5}}, {Line, {0, 5}}, {Line, pointOf(out.elements[2])}}, 1e-12);
    EXPECT_NEAR(signedDistance(pointOf(out.elements[2]), {60, 60}, {-60, 10}), -5, 1e-9);
}

TEST(ZDPathParallelPath, SmallestPositiveStepStillReturns)
{
    // A curve far longer than its step in samples: each walk is bounded.
    ZDPath path;
    path.moveTo(0, 0);
    path.cubicTo(QPointF(1e7, 0), QPointF(2e7, 0), QPointF(3e7, 0));
    const ZDPath out = outline(path, 1, 1.0);
    EXPECT_GT(out.count(), 1000);
    EXPECT_LE(out.count(), (1 << 20) + 2);
    expectElement(out, out.count() - 1, Line, {3e7, -1}, 1e-6);
}

TEST(ZDPathParallelPath, NonFiniteInputEndsWithADefinedResult)
{
    const double nan = qQNaN();
    const double inf = std::numeric_limits<double>::infinity();
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(nan, 5);
    path.lineTo(100, 100);
    path.cubicTo(QPointF(inf, 0), QPointF(0, -inf), QPointF(50, 50));
    path.lineTo(0, 0);
    path.closeSubpath();
    // One element per side and join: the move, the joins at the NaN point,
    // at (100, 100) and at (50, 50), the end of the curve's samples (none
    // lie below an infinite length), the closing join and its close. The
    // first line has a NaN vector, so the closing join, and with it the
    // move at the input's move index, is no point.
    const ZDPath out = outline(path, 4, 2);
    ASSERT_EQ(out.count(), 7);
    const int32_t types[] = {Move, Line, Line, Line, Line, Line, Close};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(out.elements[i].type, types[i]) << "element " << i;
    for (int i : {0, 5, 6}) {
        EXPECT_TRUE(qIsNaN(out.elements[i].x)) << "element " << i;
        EXPECT_TRUE(qIsNaN(out.elements[i].y)) << "element " << i;
    }

    // A distance that is not finite offsets every side to no point: the
    // square's outline keeps its shape of elements with NaN in every place.
    const ZDPath square(QRectF(0, 0, 100, 100));
    for (double d : {nan, inf, -inf}) {
        const ZDPath result = outline(square, d, 2);
        ASSERT_EQ(result.count(), 6);
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(result.elements[i].type, i == 0 ? Move : i == 5 ? Close : Line);
            EXPECT_TRUE(qIsNaN(result.elements[i].x) && qIsNaN(result.elements[i].y))
                << "distance " << d << ", element " << i;
        }
    }
    ZDPath curve;
    curve.moveTo(0, 0);
    curve.cubicTo(QPointF(30, 0), QPointF(60, 30), QPointF(60, 60));
    // An infinite step samples nothing between the curve's offset ends.
    expectElements(outline(curve, 5, inf), {{Move, {0, -5}}, {Line, {65, 60}}}, 1e-12);
    const ZDPath nanOutline = outline(curve, nan, 5);
    ASSERT_EQ(nanOutline.count(), outline(curve, 5, 5).count());
    for (const ZDPathElement &e : nanOutline.elements)
        EXPECT_TRUE(qIsNaN(e.x) && qIsNaN(e.y));
}

TEST(ZDPathParallelPath, HugeCoordinatesEndWithADefinedResult)
{
    // Lengths that overflow to infinity give no samples between the ends;
    // large finite ones are sampled as usual.
    ZDPath overflow;
    overflow.moveTo(0, 0);
    overflow.cubicTo(QPointF(1e300, 0), QPointF(1e300, 1e300), QPointF(0, 1e300));
    EXPECT_EQ(outline(overflow, 1, 1).count(), 2);

    ZDPath large;
    large.moveTo(0, 0);
    large.cubicTo(QPointF(1e150, 0), QPointF(2e150, 0), QPointF(3e150, 0));
    const ZDPath out = outline(large, 1e149, 1e149);
    // Samples at 1, 2, ... times 1e149 below the length 3e150 (the sum of
    // the steps may fall just short of 30 of them), then the end.
    ASSERT_GE(out.count(), 1 + 29 + 1);
    ASSERT_LE(out.count(), 1 + 30 + 1);
    for (int i = 0; i < out.count(); ++i)
        EXPECT_NEAR(out.elements[i].y, -1e149, 1e135);
    EXPECT_NEAR(out.elements[1].x, 1e149, 1e137);
}

TEST(ZDPathParallelPath, MalformedListsAreSkippedQuietly)
{
    // A list that begins with a line, a cubic cut short, and a lone second
    // control point.
    ZDPath path;
    path.lineTo(10, 10);
    path.lineTo(20, 10);
    path.elements.append(ZDPathElement(30, 10, ZDCurveToDataElement));
    path.lineTo(40, 10);
    path.elements.append(ZDPathElement(50, 10, ZDCurveToElement));
    path.elements.append(ZDPathElement(60, 10, ZDCurveToDataElement));
    // No element has a move before it, so no side starts: the outline is
    // empty. With a move in front, the first line starts the outline and the
    // second joins it; the lone control point ends no curve, so the line
    // after it writes nothing, and the cubic cut short ends the walk before
    // any subpath end is written.
    EXPECT_EQ(outline(path, 2, 1).count(), 0);
    path.elements.prepend(ZDPathElement(0, 10, ZDMoveToElement));
    expectElements(outline(path, 2, 1), {{Move, {0, 8}}, {Line, {10, 8}}}, 1e-12);
}
