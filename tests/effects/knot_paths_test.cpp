// Tests of ZDPath::knotsPath and ZDPath::smooth(int). A chain is checked
// against what defines it, independently of how it is solved: it runs through
// its knots, its pieces meet with equal first and second derivatives, and its
// second derivative is zero at both ends. The middle knots of the reshaping
// modes are worked out by hand and evaluated in Bernstein form.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <gtest/gtest.h>

#include <QtCore/QtNumeric>

#include <cmath>
#include <random>

namespace {

QPointF bezierPoint(const QPointF &p0, const QPointF &p1, const QPointF &p2, const QPointF &p3, double t)
{
    const double s = 1.0 - t;
    return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
}

void expectNear(const QPointF &actual, const QPointF &expected, double tolerance)
{
    EXPECT_NEAR(actual.x(), expected.x(), tolerance);
    EXPECT_NEAR(actual.y(), expected.y(), tolerance);
}

// The chain runs through knots and is C2 with a zero second derivative at
// both ends, each within tolerance relative to the size of the knots.
void expectNaturalSplineThrough(const QVector<QPointF> &chain, const QVector<QPointF> &knots, double tolerance)
{
    const int n = knots.size() - 1;
    ASSERT_EQ(chain.size(), 3 * n + 1);
    for (int i = 0; i <= n; ++i)
        expectNear(chain[3 * i], knots[i], tolerance);
    for (int i = 1; i < n; ++i) {
        const QPointF k = chain[3 * i];
        const QPointF before = chain[3 * i - 1];
        const QPointF after = chain[3 * i + 1];
        // First derivative: 3 (k - before) = 3 (after - k).
        expectNear(k - before, after - k, tolerance);
        // Second derivative: 6 (k - 2 before + c) = 6 (k - 2 after + d).
        const QPointF endSecond = k - 2.0 * before + chain[3 * i - 2];
        const QPointF startSecond = k - 2.0 * after + chain[3 * i + 2];
        expectNear(endSecond, startSecond, tolerance);
    }
    expectNear(chain[0] - 2.0 * chain[1] + chain[2], QPointF(0, 0), tolerance);
    expectNear(chain[3 * n] - 2.0 * chain[3 * n - 1] + chain[3 * n - 2], QPointF(0, 0), tolerance);
}

QVector<QPointF> knotsOf(const QVector<QPointF> &chain)
{
    QVector<QPointF> knots;
    for (int i = 0; i < chain.size(); i += 3)
        knots.append(chain[i]);
    return knots;
}

// ------------------------------------------------------- solve through knots

TEST(KnotsPath, StraightEquallySpacedKnotsGiveHandlesAtThirds)
{
    QVector<QPointF> points;
    for (int i = 0; i < 5; ++i) {
        points.append(QPointF(10.0 * i, 0));
        if (i < 4)
            points << QPointF(99, 99) << QPointF(-99, -99);
    }
    ZDPath::knotsPath(points, false, false);
    ASSERT_EQ(points.size(), 13);
    for (int i = 0; i < 13; ++i)
        expectNear(points[i], QPointF(10.0 * i / 3.0, 0), 1e-12);
}

TEST(KnotsPath, ThroughKnotsIsANaturalSpline)
{
    std::mt19937 rng(5150);
    std::uniform_real_distribution<double> coord(-300.0, 300.0);
    for (int trial = 0; trial < 100; ++trial) {
        const int knotCount = 3 + trial % 12;
        QVector<QPointF> points;
        QVector<QPointF> knots;
        for (int i = 0; i < knotCount; ++i) {
            knots.append(QPointF(coord(rng), coord(rng)));
            points.append(knots.last());
            if (i < knotCount - 1)
                points << QPointF(coord(rng), coord(rng)) << QPointF(coord(rng), coord(rng));
        }
        ZDPath::knotsPath(points, false, false);
        expectNaturalSplineThrough(points, knots, 1e-9);
    }
}

TEST(KnotsPath, KnotsAreEveryThirdPointOfAnyLength)
{
    // Seven points: knots at 0, 3 and 6; a trailing handle pair is ignored,
    // and so are points after the last knot.
    QVector<QPointF> points = {QPointF(0, 0), QPointF(1, 1), QPointF(2, 2), QPointF(10, 5),
                               QPointF(3, 3), QPointF(4, 4), QPointF(20, 0), QPointF(7, 7)};
    ZDPath::knotsPath(points, false, false);
    ASSERT_EQ(points.size(), 7);
    expectNaturalSplineThrough(points, {QPointF(0, 0), QPointF(10, 5), QPointF(20, 0)}, 1e-12);
    // Three knots: rows (2, 1 | k0 + 2 k1), (2, 7 | 8 k1 + k2): in x, p0 = 10/3
    // and p1 = 40/3; the last control point (60 - 40/3) / 2.
    EXPECT_NEAR(points[1].x(), 10.0 / 3.0, 1e-12);
    EXPECT_NEAR(points[4].x(), 40.0 / 3.0, 1e-12);
    EXPECT_NEAR(points[5].x(), 20.0 - ((60.0 - 40.0 / 3.0) * 0.5 - 20.0), 1e-12);
}

TEST(KnotsPath, TooFewKnotsLeaveTheListAsItIs)
{
    // Two knots in mode false.
    const QVector<QPointF> twoKnots = {QPointF(0, 0), QPointF(5, 9), QPointF(7, 1), QPointF(20, 0)};
    QVector<QPointF> points = twoKnots;
    ZDPath::knotsPath(points, false, false);
    EXPECT_EQ(points, twoKnots);
    points = twoKnots;
    ZDPath::knotsPath(points, false, true);
    EXPECT_EQ(points, twoKnots);
    // One knot (three points, except where keepEnds takes them as ends) and
    // no points at all, in every mode.
    for (bool reshape : {false, true}) {
        for (bool keepEnds : {false, true}) {
            QVector<QPointF> one = {QPointF(3, 4), QPointF(5, 6), QPointF(7, 8)};
            ZDPath::knotsPath(one, reshape, keepEnds);
            EXPECT_EQ(one.size(), reshape && keepEnds ? 10 : 3);
            EXPECT_EQ(one[0], QPointF(3, 4));
            QVector<QPointF> none;
            ZDPath::knotsPath(none, reshape, keepEnds);
            EXPECT_TRUE(none.isEmpty());
        }
    }
    QVector<QPointF> single = {QPointF(3, 4)};
    ZDPath::knotsPath(single, true, true);
    EXPECT_EQ(single.size(), 1);
}

// ------------------------------------------------------------ the S shape

TEST(KnotsPath, ReshapeMakesAnSOfFixedHeightTurnedWithTheLine)
{
    QVector<QPointF> points = {QPointF(0, 0), QPointF(100, 0)};
    ZDPath::knotsPath(points, true, false);
    ASSERT_EQ(points.size(), 10);
    const QVector<QPointF> flat = {QPointF(0, 0), QPointF(30, -30), QPointF(70, 30), QPointF(100, 0)};
    expectNaturalSplineThrough(points, flat, 1e-12);

    // Turned by 90 degrees: (30, -30) goes to (30, 30), (70, 30) to (-30, 70).
    points = {QPointF(0, 0), QPointF(0, 100)};
    ZDPath::knotsPath(points, true, false);
    const QVector<QPointF> knots = knotsOf(points);
    expectNear(knots[1], QPointF(30, 30), 1e-12);
    expectNear(knots[2], QPointF(-30, 70), 1e-12);
}

TEST(KnotsPath, SHeightDoesNotScaleWithTheDistance)
{
    for (double d : {10.0, 100.0, 2000.0}) {
        for (double angle : {0.0, 0.5, 2.0, -2.7}) {
            const QPointF a(40, -25);
            const QPointF dir(std::cos(angle), std::sin(angle));
            const QPointF normal(-dir.y(), dir.x());
            QVector<QPointF> points = {a, QPointF(7, 7), QPointF(8, 8), a + d * dir};
            ZDPath::knotsPath(points, true, false);
            const QVector<QPointF> knots = knotsOf(points);
            ASSERT_EQ(knots.size(), 4);
            const double tolerance = 1e-9 * (1.0 + d);
            expectNear(knots[1], a + 0.3 * d * dir - 30.0 * normal, tolerance);
            expectNear(knots[2], a + 0.7 * d * dir + 30.0 * normal, tolerance);
            expectNear(knots[3], a + d * dir, 0.0);
        }
    }
}

TEST(KnotsPath, ReshapeTakesTheFirstAndLastKnots)
{
    // Ten points: knots at 0, 3, 6, 9; the S runs from knot 0 to knot 9.
    QVector<QPointF> points;
    for (int i = 0; i < 10; ++i)
        points.append(QPointF(10.0 * i, i % 2 ? 5.0 : -5.0));
    const QPointF a = points[0];
    const QPointF b = points[9];
    ZDPath::knotsPath(points, true, false);
    ASSERT_EQ(points.size(), 10);
    expectNear(points[0], a, 0.0);
    expectNear(points[9], b, 0.0);
    // Three points: a single knot, so too few.
    QVector<QPointF> three = {QPointF(0, 0), QPointF(1, 1), QPointF(50, 0)};
    ZDPath::knotsPath(three, true, false);
    EXPECT_EQ(three.size(), 3);
}

// ------------------------------------------------ keeping the end handles

TEST(KnotsPath, KeepEndsWithTwoPointsTakesQuarters)
{
    QVector<QPointF> points = {QPointF(0, 0), QPointF(40, 80)};
    ZDPath::knotsPath(points, true, true);
    expectNaturalSplineThrough(points, {QPointF(0, 0), QPointF(10, 20), QPointF(30, 60), QPointF(40, 80)}, 1e-12);
}

TEST(KnotsPath, KeepEndsWithThreePointsPutsTheMiddleKnotsAtTheOrigin)
{
    QVector<QPointF> points = {QPointF(100, 100), QPointF(150, 120), QPointF(200, 100)};
    ZDPath::knotsPath(points, true, true);
    expectNaturalSplineThrough(points, {QPointF(100, 100), QPointF(0, 0), QPointF(0, 0), QPointF(200, 100)}, 1e-12);
}

struct PolygonCase
{
    int number;
    QPointF c1;        // control points of the input
    QPointF c2;
    QPointF newC1;     // after the case's rule, worked out by hand
    QPointF newC2;
    double t1;
    double t2;
};

// A = (0, 0), B = (100, 50): D = (100, 50), dx = 100, dy = 50.
const PolygonCase kCases[] = {
    // 1: w.x u.x < 0; snap both by 0.6 max(dx, dy) = 60.
    {1, QPointF(10, 0), QPointF(90, 50), QPointF(60, 0), QPointF(40, 50), 0.28, 0.72},
    // 1 through y: w.y u.y < 0; c1.y snaps to 60 above A, c2.y to 60 below B.
    {1, QPointF(0, 10), QPointF(100, 40), QPointF(0, 60), QPointF(100, -10), 0.28, 0.72},
    // 2: D.x u.x > 0 and D.y w.y < 0; ox = 80, oy = 40.
    {2, QPointF(10, 0), QPointF(100, 40), QPointF(80, 0), QPointF(100, 10), 0.3, 0.7},
    // 2 through its second clause: D.y u.y > 0 and D.x w.x < 0.
    {2, QPointF(0, 10), QPointF(90, 50), QPointF(0, 40), QPointF(20, 50), 0.3, 0.7},
    // 3: w.x u.x > 0; ox = (80 + 10) 0.68 = 61.2, oy = (20 + 40) 0.68 = 40.8.
    {3, QPointF(10, 0), QPointF(110, 50), QPointF(61.2, 0), QPointF(161.2, 50), 0.38, 0.62},
    // 4: all four products <= 0; ox = 90 * 0.85 = 76.5, oy = 60 * 0.85 = 51.
    {4, QPointF(-10, 0), QPointF(100, 60), QPointF(-76.5, 0), QPointF(100, 101), 0.35, 0.65},
    // 4 with a zero handle at the start: c1 = A stays on equality.
    {4, QPointF(0, 0), QPointF(100, 60), QPointF(0, 0), QPointF(100, 101), 0.35, 0.65},
    // 5: -D.y w.y > 0, c2 below B: c2.y = 50 - 30, c1.y = 0 + 40, c1.x snapped by 80.
    {5, QPointF(-10, 0), QPointF(100, 40), QPointF(-80, 40), QPointF(100, 20), 0.3, 0.7},
    // 6: D.y u.y > 0, c1 above A: c1.y = 0 + 30, c2.y = 50 - 40, c2.x snapped by 80.
    {6, QPointF(0, 10), QPointF(110, 50), QPointF(0, 30), QPointF(180, 10), 0.3, 0.7},
    // 7: -D.x w.x > 0, c2 below B: c2.x = 100 - 60, c1.x = 0 + 20, c1.y snapped by 40.
    {7, QPointF(0, -10), QPointF(90, 50), QPointF(20, -40), QPointF(40, 50), 0.3, 0.7},
    // 8: D.x u.x > 0, c1 above A: c1.x = 0 + 60, c2.x = 100 - 20, c2.y snapped by 40.
    {8, QPointF(10, 0), QPointF(100, 60), QPointF(60, 0), QPointF(80, 90), 0.3, 0.7},
};

TEST(KnotsPath, KeepEndsEachCaseOfTheControlPolygon)
{
    const QPointF A(0, 0);
    const QPointF B(100, 50);
    for (const PolygonCase &c : kCases) {
        SCOPED_TRACE(c.number);
        QVector<QPointF> points = {A, c.c1, c.c2, B};
        ZDPath::knotsPath(points, true, true);
        const QPointF p = bezierPoint(A, c.newC1, c.newC2, B, c.t1);
        const QPointF q = bezierPoint(A, c.newC1, c.newC2, B, c.t2);
        expectNaturalSplineThrough(points, {A, p, q, B}, 1e-9);
        const QVector<QPointF> knots = knotsOf(points);
        expectNear(knots[1], p, 1e-12);
        expectNear(knots[2], q, 1e-12);
    }
}

TEST(KnotsPath, KeepEndsOtherBranchesOfTheLastFourCases)
{
    // The mirror images in the axis of the case's test take the other branch.
    struct Mirror
    {
        QPointF A, B, c1, c2, newC1, newC2;
    };
    const Mirror mirrors[] = {
        // 5, c2 above B: A = (0, 50), B = (100, 0), D = (100, -50):
        // -D.y w.y > 0 with w.y > 0; c2.y = 0 + 30, c1.y = 50 - 40.
        {QPointF(0, 50), QPointF(100, 0), QPointF(-10, 50), QPointF(100, 10), QPointF(-80, 10), QPointF(100, 30)},
        // 6, c1 below A: D.y u.y > 0 with D.y < 0; c1.y = 50 - 30, c2.y = 0 + 40.
        {QPointF(0, 50), QPointF(100, 0), QPointF(0, 40), QPointF(110, 0), QPointF(0, 20), QPointF(180, 40)},
        // 7, c2 above B: A = (100, 0), B = (0, 50), D = (-100, 50);
        // w.x > 0 gives -D.x w.x > 0; c2.x = 0 + 60, c1.x = 100 - 20.
        {QPointF(100, 0), QPointF(0, 50), QPointF(100, -10), QPointF(10, 50), QPointF(80, -40), QPointF(60, 50)},
        // 8, c1 below A: D.x u.x > 0 with u.x < 0; c1.x = 100 - 60,
        // c2.x = 0 + 20, c2.y snapped above B by 40.
        {QPointF(100, 0), QPointF(0, 50), QPointF(90, 0), QPointF(0, 60), QPointF(40, 0), QPointF(20, 90)},
    };
    int number = 5;
    for (const Mirror &m : mirrors) {
        SCOPED_TRACE(number++);
        QVector<QPointF> points = {m.A, m.c1, QPointF(1, 2), QPointF(3, 4), m.c2, m.B};
        ZDPath::knotsPath(points, true, true);
        const QVector<QPointF> knots = knotsOf(points);
        ASSERT_EQ(knots.size(), 4);
        expectNear(knots[1], bezierPoint(m.A, m.newC1, m.newC2, m.B, 0.3), 1e-12);
        expectNear(knots[2], bezierPoint(m.A, m.newC1, m.newC2, m.B, 0.7), 1e-12);
    }
}

TEST(KnotsPath, KeepEndsSeededChainsRunThroughTheirEnds)
{
    std::mt19937 rng(31337);
    std::uniform_real_distribution<double> coord(-200.0, 200.0);
    for (int trial = 0; trial < 200; ++trial) {
        QVector<QPointF> points;
        const int count = 4 + trial % 6;
        for (int i = 0; i < count; ++i)
            points.append(QPointF(coord(rng), coord(rng)));
        const QPointF A = points.first();
        const QPointF B = points.last();
        ZDPath::knotsPath(points, true, true);
        ASSERT_EQ(points.size(), 10);
        const QVector<QPointF> knots = knotsOf(points);
        expectNear(knots[0], A, 0.0);
        expectNear(knots[3], B, 0.0);
        expectNaturalSplineThrough(points, knots, 1e-9);
    }
}

TEST(KnotsPath, NaNPointsEndNormally)
{
    QVector<QPointF> points = {QPointF(0, 0), QPointF(qQNaN(), qQNaN()), QPointF(5, 5), QPointF(9, 9)};
    ZDPath::knotsPath(points, true, true);
    // No case applies to NaN products: the middle knots stay at the origin.
    ASSERT_EQ(points.size(), 10);
    expectNear(points[3], QPointF(0, 0), 0.0);
    expectNear(points[6], QPointF(0, 0), 0.0);
    QVector<QPointF> huge = {QPointF(-1e300, 0), QPointF(1e300, 1e300)};
    ZDPath::knotsPath(huge, true, false);
    EXPECT_EQ(huge.size(), 10);
}

TEST(KnotsPath, RunTwiceGivesTheSameList)
{
    for (bool reshape : {false, true}) {
        for (bool keepEnds : {false, true}) {
            QVector<QPointF> a = {QPointF(0, 0), QPointF(10, 30), QPointF(40, -20), QPointF(60, 10),
                                  QPointF(70, 30), QPointF(90, 5), QPointF(120, 40)};
            QVector<QPointF> b = a;
            ZDPath::knotsPath(a, reshape, keepEnds);
            ZDPath::knotsPath(b, reshape, keepEnds);
            EXPECT_EQ(a, b);
        }
    }
}

// ------------------------------------------------------------ smooth(int)

// The elements of one contour with the given handles, written as fromXPath does.
TEST(DrawingSmooth, SmoothsEveryContourWithFactorHalfOverTheWholeContour)
{
    for (int type : {1, 2, 3, 4}) {
        SCOPED_TRACE(type);
        ZDPath path;
        path.moveTo(0, 0);
        path.lineTo(40, 0);
        path.lineTo(60, 30);
        path.lineTo(100, 10);
        path.moveTo(200, 0);
        path.lineTo(240, 20);
        path.lineTo(260, 0);

        zgPath expected;
        for (const QPointF &p : {QPointF(0, 0), QPointF(40, 0), QPointF(60, 30), QPointF(100, 10)})
            expected.addSegment(new zgSegment(p.x(), p.y()));
        expected.smooth(type, 0.5, 0, -1);

        path.smooth(type);
        ASSERT_EQ(path.count(), 1 + 9 + 1 + 6);
        EXPECT_EQ(path.elementAt(0).type, ZDMoveToElement);
        for (int i = 0; i < 3; ++i) {
            const zgSegment *a = expected.segments.at(i);
            const zgSegment *b = expected.segments.at(i + 1);
            const ZDPathElement &c1 = path.elementAt(1 + 3 * i);
            const ZDPathElement &c2 = path.elementAt(2 + 3 * i);
            EXPECT_EQ(c1.type, ZDCurveToElement);
            EXPECT_DOUBLE_EQ(c1.x, a->point.x + a->handleOut.x);
            EXPECT_DOUBLE_EQ(c1.y, a->point.y + a->handleOut.y);
            EXPECT_DOUBLE_EQ(c2.x, b->point.x + b->handleIn.x);
            EXPECT_DOUBLE_EQ(c2.y, b->point.y + b->handleIn.y);
            EXPECT_EQ(path.elementAt(3 + 3 * i).x, b->point.x);
        }
        EXPECT_EQ(path.elementAt(10).type, ZDMoveToElement);
        EXPECT_EQ(path.elementAt(10).x, 200.0);
    }
}

TEST(DrawingSmooth, TwoPointContoursStayLines)
{
    // A range type has n = 1 and changes nothing; Catmull-Rom uses the point
    // itself for the missing neighbour of an end, whose zero distance makes
    // the denominator 0 and the handle (0, 0).
    for (int type : {1, 2, 3, 4}) {
        ZDPath path;
        path.moveTo(0, 0);
        path.lineTo(50, 20);
        path.smooth(type);
        ASSERT_EQ(path.count(), 2);
        EXPECT_EQ(path.elementAt(1).type, ZDLineToElement);
    }
}

TEST(DrawingSmooth, ClosedContourIsALoopAndStaysClosed)
{
    ZDPath path(QRectF(0, 0, 100, 100));
    path.smooth(4);
    // Four cubics and a close; every node has mirrored handles.
    ASSERT_EQ(path.count(), 1 + 12 + 1);
    EXPECT_EQ(path.elementAt(13).type, ZDCloseElement);
    for (int i = 1; i < 4; ++i) {
        const QPointF in = path.elementAt(3 * i - 1).toPoint();
        const QPointF node = path.elementAt(3 * i).toPoint();
        const QPointF out = path.elementAt(3 * i + 1).toPoint();
        expectNear(node - in, out - node, 1e-9);
    }
    const QPointF out = path.elementAt(1).toPoint();
    const QPointF in = path.elementAt(11).toPoint();
    expectNear(-in, out, 1e-9);
    // The handle at (0, 0) runs nearly along (100, -100), from the previous
    // corner to the next: the padded system is not quite symmetric about it.
    EXPECT_GT(out.x(), 1.0);
    EXPECT_NEAR(out.x(), -out.y(), 0.01 * out.x());
}

TEST(DrawingSmooth, EmptyAndTrailingMoveAndNaN)
{
    ZDPath empty;
    empty.smooth(4);
    EXPECT_TRUE(empty.isEmpty());
    // The conversion cleans the list up: the trailing move is gone.
    ZDPath lone;
    lone.moveTo(5, 5);
    lone.lineTo(5.5, 5);
    lone.moveTo(9, 9);
    lone.smooth(1);
    ASSERT_EQ(lone.count(), 2);
    EXPECT_EQ(lone.elementAt(1).type, ZDLineToElement);
    ZDPath nan;
    nan.moveTo(0, 0);
    nan.lineTo(qQNaN(), 5);
    nan.lineTo(10, 10);
    nan.smooth(4);
    EXPECT_EQ(nan.count(), 7);
}

TEST(DrawingSmooth, RunTwiceGivesTheSameElements)
{
    for (int type : {1, 2, 3, 4}) {
        ZDPath a;
        a.moveTo(0, 0);
        a.lineTo(30, 40);
        a.lineTo(70, -10);
        a.lineTo(90, 20);
        a.closeSubpath();
        ZDPath b = a;
        b.elements.detach();
        a.smooth(type);
        b.smooth(type);
        ASSERT_EQ(a.count(), b.count());
        for (int i = 0; i < a.count(); ++i) {
            EXPECT_EQ(a.elementAt(i).x, b.elementAt(i).x);
            EXPECT_EQ(a.elementAt(i).y, b.elementAt(i).y);
            EXPECT_EQ(a.elementAt(i).type, b.elementAt(i).type);
        }
    }
}

} // namespace
