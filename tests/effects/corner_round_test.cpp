// Tests of the corner rounding effects of ZDPath: setCornerRound (on the
// element list, with a truncated radius), setCornerRoundForConnectline (marked
// line-line corners, real radius) and setCornerRound2 (on the contours,
// measured along the curves).
//
// Expected values are worked out by hand from the rules: corner vectors
// r (cos a, sin a) with components below 0.01 set to 0, control points at
// 0.448 of them from a corner and at 0.672 from a split point on a curve.
// Curve geometry is checked against a reference written here: de Casteljau
// splitting, and arc length by composite Simpson with bisection for times.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <gtest/gtest.h>

#include <QtCore/QRectF>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace {

const int32_t Move = ZDMoveToElement;
const int32_t Line = ZDLineToElement;
const int32_t Curve = ZDCurveToElement;
const int32_t CurveData = ZDCurveToDataElement;
const int32_t Close = ZDCloseElement;

const double kPi = 3.141592653589793;

struct Pt
{
    double x;
    double y;
};

Pt operator+(Pt a, Pt b) { return {a.x + b.x, a.y + b.y}; }
Pt operator-(Pt a, Pt b) { return {a.x - b.x, a.y - b.y}; }
Pt operator*(double s, Pt a) { return {s * a.x, s * a.y}; }
double dot(Pt a, Pt b) { return a.x * b.x + a.y * b.y; }
double cross(Pt a, Pt b) { return a.x * b.y - a.y * b.x; }
double norm(Pt a) { return std::sqrt(dot(a, a)); }
Pt unit(Pt a) { return (1.0 / norm(a)) * a; }

Pt ptOf(const ZDPathElement &e) { return {e.x, e.y}; }

// The corner vector rule: r (cos a, sin a), components below 0.01 zeroed.
Pt cornerVector(double r, double angle)
{
    Pt v{r * std::cos(angle), r * std::sin(angle)};
    if (std::fabs(v.x) < 0.01)
        v.x = 0.0;
    if (std::fabs(v.y) < 0.01)
        v.y = 0.0;
    return v;
}

double angleOf(Pt v) { return std::atan2(v.y, v.x); }

struct El
{
    double x;
    double y;
    int32_t type;
};

ZDPath pathOf(const std::vector<El> &list)
{
    ZDPath path;
    for (const El &e : list)
        path.elements.append(ZDPathElement(e.x, e.y, e.type));
    return path;
}

void expectElements(const ZDPath &path, const std::vector<El> &expected, double tolerance = 1e-9)
{
    ASSERT_EQ(path.count(), int(expected.size()));
    for (int i = 0; i < path.count(); ++i) {
        SCOPED_TRACE(testing::Message() << "element " << i);
        EXPECT_EQ(path.elements.at(i).type, expected[i].type);
        EXPECT_NEAR(path.elements.at(i).x, expected[i].x, tolerance);
        EXPECT_NEAR(path.elements.at(i).y, expected[i].y, tolerance);
    }
}

// Bitwise equality of the five fields, element by element.
bool identical(const ZDPath &a, const ZDPath &b)
{
    if (a.count() != b.count())
        return false;
    for (int i = 0; i < a.count(); ++i) {
        const ZDPathElement &p = a.elements.at(i);
        const ZDPathElement &q = b.elements.at(i);
        if (p.type != q.type || std::memcmp(&p.x, &q.x, sizeof(double)) != 0
            || std::memcmp(&p.y, &q.y, sizeof(double)) != 0
            || std::memcmp(&p.auxX, &q.auxX, sizeof(double)) != 0
            || std::memcmp(&p.auxY, &q.auxY, sizeof(double)) != 0)
            return false;
    }
    return true;
}

// The cubics drawn by a path: start (the point before), two controls, end.
struct Cubic
{
    Pt p[4];
};

std::vector<Cubic> cubicsOf(const ZDPath &path)
{
    std::vector<Cubic> cubics;
    Pt current{0.0, 0.0};
    for (int i = 0; i < path.count(); ++i) {
        const ZDPathElement &e = path.elements.at(i);
        if (e.type == Curve && i + 2 < path.count()) {
            cubics.push_back({{current, ptOf(e), ptOf(path.elements.at(i + 1)),
                               ptOf(path.elements.at(i + 2))}});
            current = ptOf(path.elements.at(i + 2));
            i += 2;
        } else {
            current = ptOf(e);
        }
    }
    return cubics;
}

int countType(const ZDPath &path, int32_t type)
{
    int n = 0;
    for (const ZDPathElement &e : path.elements)
        n += e.type == type ? 1 : 0;
    return n;
}

// Reference cubic geometry --------------------------------------------------

Pt bezierPoint(const Pt p[4], double t)
{
    const double u = 1.0 - t;
    return (u * u * u) * p[0] + (3 * u * u * t) * p[1] + (3 * u * t * t) * p[2] + (t * t * t) * p[3];
}

Pt bezierDerivative(const Pt p[4], double t)
{
    const double u = 1.0 - t;
    return (3 * u * u) * (p[1] - p[0]) + (6 * u * t) * (p[2] - p[1]) + (3 * t * t) * (p[3] - p[2]);
}

// Arc length from t0 to t1 by composite Simpson on 4000 intervals.
double arcLength(const Pt p[4], double t0, double t1)
{
    const int n = 4000;
    const double h = (t1 - t0) / n;
    double sum = norm(bezierDerivative(p, t0)) + norm(bezierDerivative(p, t1));
    for (int i = 1; i < n; ++i)
        sum += (i % 2 ? 4.0 : 2.0) * norm(bezierDerivative(p, t0 + i * h));
    return sum * h / 3.0;
}

// The time at which the arc length from the start reaches s, by bisection.
double timeAtLength(const Pt p[4], double s)
{
    double lo = 0.0;
    double hi = 1.0;
    for (int i = 0; i < 60; ++i) {
        const double mid = 0.5 * (lo + hi);
        if (arcLength(p, 0.0, mid) < s)
            lo = mid;
        else
            hi = mid;
    }
    return 0.5 * (lo + hi);
}

// de Casteljau: the parts before (left) and after (right) t.
void splitBezier(const Pt p[4], double t, Pt left[4], Pt right[4])
{
    const double u = 1.0 - t;
    const Pt p01 = u * p[0] + t * p[1];
    const Pt p12 = u * p[1] + t * p[2];
    const Pt p23 = u * p[2] + t * p[3];
    const Pt a = u * p01 + t * p12;
    const Pt b = u * p12 + t * p23;
    const Pt m = u * a + t * b;
    left[0] = p[0];
    left[1] = p01;
    left[2] = a;
    left[3] = m;
    right[0] = m;
    right[1] = b;
    right[2] = p23;
    right[3] = p[3];
}

void expectPt(Pt actual, Pt expected, double tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
}

// The L-shaped polyline (0,0) - (100,0) - (100,100).
ZDPath lShape()
{
    return pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}});
}

} // namespace

// setCornerRound: line-line corners ---------------------------------------

TEST(ZDPathSetCornerRound, ZeroRadiusLeavesPathUnchanged)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line},
                          {150, 100, Curve}, {200, 50, CurveData}, {200, 0, CurveData}, {0, 0, Line}, {0, 0, Close}});
    const ZDPath before = path;
    path.setCornerRound(0.0);
    EXPECT_TRUE(identical(path, before));
    // Nothing was written: the list is still shared with the copy.
    EXPECT_EQ(path.elements.constData(), before.elements.constData());
}

TEST(ZDPathSetCornerRound, LineLineCornerBecomesArcAtRadius)
{
    ZDPath path = lShape();
    path.setCornerRound(10);
    // a1 = atan2(0, -100) = pi, a2 = pi / 2: vIn = (-10, 0), vOut = (0, 10).
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {95.52, 0, Curve}, {100, 4.48, CurveData},
                          {100, 10, CurveData}, {100, 100, Line}});
    // 10 sin(pi) = 1.2e-15 and 10 cos(pi / 2) = 6e-16 are set to exactly 0.
    EXPECT_EQ(path.elements.at(1).y, 0.0);
    EXPECT_EQ(path.elements.at(2).y, 0.0);
    EXPECT_EQ(path.elements.at(3).x, 100.0);
    EXPECT_EQ(path.elements.at(4).x, 100.0);
    // New elements carry no auxiliary point.
    for (const ZDPathElement &e : path.elements) {
        EXPECT_EQ(e.auxX, 0.0);
        EXPECT_EQ(e.auxY, 0.0);
    }
}

TEST(ZDPathSetCornerRound, SmallComponentBoundOfCornerVector)
{
    // The incoming side leaves the corner (100, 0) slightly downwards: its
    // vector component 10 sin(a1) is about -0.009, set to 0, or -0.011, kept.
    ZDPath below = pathOf({{0, -0.09, Move}, {100, 0, Line}, {100, 100, Line}});
    below.setCornerRound(10);
    ASSERT_EQ(below.count(), 6);
    EXPECT_EQ(below.elements.at(1).y, 0.0);

    ZDPath above = pathOf({{0, -0.11, Move}, {100, 0, Line}, {100, 100, Line}});
    above.setCornerRound(10);
    ASSERT_EQ(above.count(), 6);
    const double expectedY = 10.0 * std::sin(std::atan2(-0.11, -100.0));
    EXPECT_NEAR(expectedY, -0.011, 1e-5);
    EXPECT_NEAR(above.elements.at(1).y, expectedY, 1e-12);
    EXPECT_NEAR(above.elements.at(2).y, 0.448 * expectedY, 1e-12);
}

TEST(ZDPathSetCornerRound, RadiusIsTruncatedToAnInteger)
{
    ZDPath path = lShape();
    path.setCornerRound(7.9);
    expectElements(path, {{0, 0, Move}, {93, 0, Line}, {100 - 0.448 * 7, 0, Curve},
                          {100, 0.448 * 7, CurveData}, {100, 7, CurveData}, {100, 100, Line}});
}

TEST(ZDPathSetCornerRound, RadiusBelowOneGivesDegenerateArcsOnTheCorners)
{
    for (double radius : {0.5, 0.999, -0.5}) {
        SCOPED_TRACE(radius);
        ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {200, 100, Line}});
        path.setCornerRound(radius);
        expectElements(path, {{0, 0, Move}, {100, 0, Line}, {100, 0, Curve}, {100, 0, CurveData},
                              {100, 0, CurveData}, {100, 100, Line}, {100, 100, Curve},
                              {100, 100, CurveData}, {100, 100, CurveData}, {200, 100, Line}},
                       0.0);
    }
}

TEST(ZDPathSetCornerRound, ShortSidesCutRadiusToTruncatedHalf)
{
    // d1 = 30 < 40: r = 15; then d2 = 9 < 30: r = trunc(4.5) = 4.
    ZDPath path = pathOf({{0, 0, Move}, {30, 0, Line}, {30, 9, Line}});
    path.setCornerRound(20);
    expectElements(path, {{0, 0, Move}, {26, 0, Line}, {30 - 0.448 * 4, 0, Curve},
                          {30, 0.448 * 4, CurveData}, {30, 4, CurveData}, {30, 9, Line}});
}

TEST(ZDPathSetCornerRound, RadiusClampBoundIsStrict)
{
    // At the bound, a side of exactly 2 r, `<` keeps r and `<=` would set r
    // to trunc(2 r * 0.5), which is r again: halving a doubled integer is
    // exact, so no input can tell the two apart. The cases below pin the
    // bound from both sides instead.
    // d1 = 20 is not below 2 r = 20: r stays 10.
    ZDPath atBound = pathOf({{0, 0, Move}, {20, 0, Line}, {20, 100, Line}});
    atBound.setCornerRound(10);
    ASSERT_EQ(atBound.count(), 6);
    EXPECT_NEAR(atBound.elements.at(1).x, 10.0, 1e-12);
    EXPECT_NEAR(atBound.elements.at(4).y, 10.0, 1e-12);

    // d1 = 19.9: r = trunc(9.95) = 9 on both sides.
    ZDPath below = pathOf({{0, 0, Move}, {19.9, 0, Line}, {19.9, 100, Line}});
    below.setCornerRound(10);
    ASSERT_EQ(below.count(), 6);
    EXPECT_NEAR(below.elements.at(1).x, 10.9, 1e-12);
    EXPECT_NEAR(below.elements.at(4).y, 9.0, 1e-12);
}

TEST(ZDPathSetCornerRound, NeighbouringArcsMeetAtOrBeforeTheMiddleOfAShortSide)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 15, Line}, {0, 15, Line}});
    path.setCornerRound(50);
    // Both corners are cut to trunc(15 / 2) = 7 by the short side.
    expectElements(path, {{0, 0, Move}, {93, 0, Line}, {100 - 0.448 * 7, 0, Curve},
                          {100, 0.448 * 7, CurveData}, {100, 7, CurveData}, {100, 8, Line},
                          {100, 15 - 0.448 * 7, Curve}, {100 - 0.448 * 7, 15, CurveData},
                          {93, 15, CurveData}, {0, 15, Line}});
    EXPECT_LE(path.elements.at(4).y, 7.5);
    EXPECT_GE(path.elements.at(5).y, 7.5);
}

TEST(ZDPathSetCornerRound, RepeatedPointIsDropped)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 0, Line}, {100, 100, Line}});
    path.setCornerRound(10);
    // The repeat is dropped; the next corner is then measured from the
    // repeated point itself, a side of length 0, so r is 0 and the arc
    // collapses onto the corner.
    expectElements(path, {{0, 0, Move}, {100, 0, Line}, {100, 0, Curve}, {100, 0, CurveData},
                          {100, 0, CurveData}, {100, 100, Line}},
                   0.0);
}

TEST(ZDPathSetCornerRound, RepeatTestIsStrictOnBothAxes)
{
    // Within 0.001 on both axes: dropped.
    ZDPath inside = pathOf({{0, 0, Move}, {100, 0, Line}, {100.0009, 0.0009, Line}});
    inside.setCornerRound(10);
    expectElements(inside, {{0, 0, Move}, {100, 0, Line}}, 0.0);

    // 0.0011 off in x: a real (straight-on) point, kept.
    ZDPath outsideX = pathOf({{0, 0, Move}, {100, 0, Line}, {100.0011, 0, Line}});
    outsideX.setCornerRound(10);
    expectElements(outsideX, {{0, 0, Move}, {100, 0, Line}, {100.0011, 0, Line}}, 0.0);

    // 0.0011 off in y only: kept, and rounded with r = 0 (side shorter than 1).
    ZDPath outsideY = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 0.0011, Line}});
    outsideY.setCornerRound(10);
    expectElements(outsideY, {{0, 0, Move}, {100, 0, Line}, {100, 0, Curve}, {100, 0, CurveData},
                              {100, 0, CurveData}, {100, 0.0011, Line}},
                   0.0);
}

TEST(ZDPathSetCornerRound, StraightOnAndDoublingBackStaySharp)
{
    const ZDPath straight = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line}});
    ZDPath a = straight;
    a.setCornerRound(10);
    EXPECT_TRUE(identical(a, straight));

    const ZDPath back = pathOf({{0, 0, Move}, {100, 0, Line}, {50, 0, Line}});
    ZDPath b = back;
    b.setCornerRound(10);
    EXPECT_TRUE(identical(b, back));
}

TEST(ZDPathSetCornerRound, AngleToleranceBound)
{
    // Off straight by atan(0.05 / 100) = 0.0005 rad: kept.
    const ZDPath nearlyStraight = pathOf({{0, 0, Move}, {100, 0, Line}, {200, 0.05, Line}});
    ZDPath a = nearlyStraight;
    a.setCornerRound(10);
    EXPECT_TRUE(identical(a, nearlyStraight));

    // Off by 0.0015 rad: rounded.
    ZDPath b = pathOf({{0, 0, Move}, {100, 0, Line}, {200, 0.15, Line}});
    b.setCornerRound(10);
    EXPECT_EQ(b.count(), 6);
    EXPECT_EQ(countType(b, Curve), 1);
}

TEST(ZDPathSetCornerRound, AngleDifferenceIsNotWrapped)
{
    // Doubling back across the -pi/pi cut: a1 = pi - 1e-4, a2 = -pi + 2e-4,
    // a raw difference near -2 pi, which neither test catches: rounded.
    ZDPath across = pathOf({{0, 0.01, Move}, {100, 0, Line}, {50, -0.01, Line}});
    across.setCornerRound(10);
    EXPECT_EQ(across.count(), 6);
    EXPECT_EQ(countType(across, Curve), 1);

    // Doubling back on one side of the cut: difference 3e-4, kept.
    const ZDPath sameSide = pathOf({{0, -0.01, Move}, {100, 0, Line}, {50, -0.02, Line}});
    ZDPath b = sameSide;
    b.setCornerRound(10);
    EXPECT_TRUE(identical(b, sameSide));
}

TEST(ZDPathSetCornerRound, OpenPathKeepsItsFirstAndLastPoints)
{
    ZDPath path = pathOf({{3.25, 7.5, Move}, {50, 0, Line}, {50, 50, Line}, {120, 80, Line}, {140.5, 10.75, Line}});
    path.setCornerRound(12);
    ASSERT_EQ(path.count(), 5 + 3 * 3);
    EXPECT_EQ(path.elements.first().type, Move);
    EXPECT_EQ(path.elements.first().x, 3.25);
    EXPECT_EQ(path.elements.first().y, 7.5);
    EXPECT_EQ(path.elements.last().type, Line);
    EXPECT_EQ(path.elements.last().x, 140.5);
    EXPECT_EQ(path.elements.last().y, 10.75);
}

TEST(ZDPathSetCornerRound, RectangleClosedByExplicitLastLine)
{
    ZDPath path(QRectF(0, 0, 100, 50));
    ASSERT_EQ(path.count(), 6);
    path.setCornerRound(10);
    // The move point goes to 10 along the first side, all four corners get an
    // arc, and the close element sits on the new start.
    expectElements(path, {{10, 0, Move}, {90, 0, Line}, {95.52, 0, Curve}, {100, 4.48, CurveData},
                          {100, 10, CurveData}, {100, 40, Line}, {100, 45.52, Curve},
                          {95.52, 50, CurveData}, {90, 50, CurveData}, {10, 50, Line},
                          {4.48, 50, Curve}, {0, 45.52, CurveData}, {0, 40, CurveData},
                          {0, 10, Line}, {0, 4.48, Curve}, {4.48, 0, CurveData}, {10, 0, CurveData},
                          {10, 0, Close}});
}

TEST(ZDPathSetCornerRound, StraightClosingCornerKeepsTheMovePoint)
{
    ZDPath path = pathOf({{50, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0, 100, Line},
                          {0, 0, Line}, {50, 0, Line}, {50, 0, Close}});
    path.setCornerRound(10);
    ASSERT_EQ(path.count(), 7 + 4 * 3);
    EXPECT_EQ(path.elements.first().x, 50.0);
    EXPECT_EQ(path.elements.first().y, 0.0);
    EXPECT_EQ(path.elements.last().type, Close);
    EXPECT_EQ(path.elements.last().x, 50.0);
    EXPECT_EQ(path.elements.last().y, 0.0);
}

TEST(ZDPathSetCornerRound, AuxiliaryPointsOfCopiedElementsStay)
{
    ZDPath path = lShape();
    path.elements[2].auxX = 7.0;
    path.elements[2].auxY = 8.0;
    path.setCornerRound(10);
    ASSERT_EQ(path.count(), 6);
    EXPECT_EQ(path.elements.last().auxX, 7.0);
    EXPECT_EQ(path.elements.last().auxY, 8.0);
}

// setCornerRound: corners with a curve -----------------------------------

TEST(ZDPathSetCornerRound, CurveLineCornerCutsTheCurveAtRadiusBeforeItsEnd)
{
    const Pt curve[4] = {{0, 0}, {50, 0}, {100, 50}, {100, 100}};
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Curve}, {100, 50, CurveData}, {100, 100, CurveData},
                          {0, 100, Line}});
    path.setCornerRound(10);

    const double length = arcLength(curve, 0.0, 1.0);
    ASSERT_GT(length, 20.0);
    const double t = timeAtLength(curve, length - 10.0);
    Pt left[4];
    Pt right[4];
    splitBezier(curve, t, left, right);
    const Pt split = right[0];
    const Pt vIn = cornerVector(10, angleOf(bezierDerivative(curve, t)));
    const Pt vOut = cornerVector(10, kPi); // towards (0, 100)
    const Pt corner{100, 100};
    const Pt control1 = split + 0.672 * vIn;
    const Pt control2 = corner + 0.448 * vOut;
    const Pt end = corner + vOut;
    expectElements(path, {{0, 0, Move}, {left[1].x, left[1].y, Curve}, {left[2].x, left[2].y, CurveData},
                          {split.x, split.y, CurveData}, {control1.x, control1.y, Curve},
                          {control2.x, control2.y, CurveData}, {end.x, end.y, CurveData},
                          {0, 100, Line}},
                   1e-6);

    // What is left of the curve is 10 shorter, and the arc leaves it along
    // its tangent.
    const std::vector<Cubic> cubics = cubicsOf(path);
    ASSERT_EQ(cubics.size(), 2u);
    EXPECT_NEAR(arcLength(cubics[0].p, 0.0, 1.0), length - 10.0, 1e-6);
    const Pt curveEnd = unit(cubics[0].p[3] - cubics[0].p[2]);
    const Pt arcStart = unit(cubics[1].p[1] - cubics[1].p[0]);
    EXPECT_NEAR(cross(curveEnd, arcStart), 0.0, 1e-9);
    EXPECT_GT(dot(curveEnd, arcStart), 0.0);
    // The arc reaches the line along it.
    EXPECT_NEAR(cross(cubics[1].p[3] - cubics[1].p[2], Pt{-1, 0}), 0.0, 1e-9);
}

TEST(ZDPathSetCornerRound, LineContinuingTheCurveStaysSharp)
{
    // The curve ends heading along +x; the line goes on within 0.0005 rad.
    const ZDPath along = pathOf({{0, 0, Move}, {30, 30, Curve}, {60, 0, CurveData}, {100, 0, CurveData},
                                 {200, 0.05, Line}});
    ZDPath a = along;
    a.setCornerRound(10);
    EXPECT_TRUE(identical(a, along));

    // 0.0015 rad off: rounded.
    ZDPath b = pathOf({{0, 0, Move}, {30, 30, Curve}, {60, 0, CurveData}, {100, 0, CurveData},
                       {200, 0.15, Line}});
    b.setCornerRound(10);
    EXPECT_EQ(b.count(), 8);
    EXPECT_EQ(countType(b, Curve), 2);
}

TEST(ZDPathSetCornerRound, LineCurveCornerIsRoundedEvenWhenSmooth)
{
    // The line runs smoothly into the curve (both along +x at the joint);
    // the test compares the backward angle of the line with the forward one
    // of the curve, so the corner is rounded all the same.
    const Pt curve[4] = {{100, 0}, {140, 0}, {200, 40}, {200, 100}};
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {140, 0, Curve}, {200, 40, CurveData},
                          {200, 100, CurveData}});
    path.setCornerRound(10);

    const double t = timeAtLength(curve, 10.0);
    Pt left[4];
    Pt right[4];
    splitBezier(curve, t, left, right);
    const Pt split = left[3];
    const Pt vIn = cornerVector(10, kPi);
    const Pt vOut = cornerVector(10, angleOf(bezierDerivative(curve, t)) + kPi);
    const Pt control2 = split + 0.672 * vOut;
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {95.52, 0, Curve},
                          {control2.x, control2.y, CurveData}, {split.x, split.y, CurveData},
                          {right[1].x, right[1].y, Curve}, {right[2].x, right[2].y, CurveData},
                          {200, 100, CurveData}},
                   1e-6);
    EXPECT_DOUBLE_EQ(vIn.x, -10.0);
    EXPECT_EQ(vIn.y, 0.0);

    const std::vector<Cubic> cubics = cubicsOf(path);
    ASSERT_EQ(cubics.size(), 2u);
    // The arc starts 10 before the corner, on the line, and joins the rest of
    // the curve, which starts 10 along it, tangentially.
    EXPECT_NEAR(norm(cubics[0].p[0] - Pt{100, 0}), 10.0, 1e-12);
    EXPECT_NEAR(arcLength(curve, 0.0, t), 10.0, 1e-6);
    const Pt arcEnd = unit(cubics[0].p[3] - cubics[0].p[2]);
    const Pt restStart = unit(cubics[1].p[1] - cubics[1].p[0]);
    EXPECT_NEAR(cross(arcEnd, restStart), 0.0, 1e-9);
    EXPECT_GT(dot(arcEnd, restStart), 0.0);
}

TEST(ZDPathSetCornerRound, CurveTurningBackAlongTheLineStaysSharp)
{
    // The curve leaves (100, 0) towards (50, 0), back along the line: a1 = ac = pi.
    const ZDPath back = pathOf({{0, 0, Move}, {100, 0, Line}, {50, 0, Curve}, {50, 50, CurveData},
                                {100, 50, CurveData}});
    ZDPath a = back;
    a.setCornerRound(10);
    EXPECT_TRUE(identical(a, back));

    // Within 0.0004 rad of it: kept.
    const ZDPath nearly = pathOf({{0, 0, Move}, {100, 0, Line}, {50, 0.02, Curve}, {50, 50, CurveData},
                                  {100, 50, CurveData}});
    ZDPath b = nearly;
    b.setCornerRound(10);
    EXPECT_TRUE(identical(b, nearly));

    // 0.002 rad off: rounded, three elements more.
    ZDPath c = pathOf({{0, 0, Move}, {100, 0, Line}, {50, 0.1, Curve}, {50, 50, CurveData},
                       {100, 50, CurveData}});
    c.setCornerRound(10);
    EXPECT_EQ(c.count(), 8);
}

TEST(ZDPathSetCornerRound, CornerBetweenTwoCurvesStaysSharp)
{
    const ZDPath curves = pathOf({{0, 0, Move}, {30, 30, Curve}, {70, 30, CurveData}, {100, 0, CurveData},
                                  {130, 30, Curve}, {170, 30, CurveData}, {200, 0, CurveData}});
    ZDPath path = curves;
    path.setCornerRound(10);
    EXPECT_TRUE(identical(path, curves));
}

TEST(ZDPathSetCornerRound, ZeroRadiusOnCurveLineCornerFlattensTheCurve)
{
    // With r truncated to 0 the time is getTimeAt(values, -0.0, -100.0),
    // which is 0: the curve collapses onto its start and the arc runs
    // straight from there to the corner.
    ZDPath path = pathOf({{0, 0, Move}, {30, 30, Curve}, {70, 30, CurveData}, {100, 0, CurveData},
                          {100, 100, Line}});
    path.setCornerRound(0.5);
    expectElements(path, {{0, 0, Move}, {0, 0, Curve}, {0, 0, CurveData}, {0, 0, CurveData},
                          {0, 0, Curve}, {100, 0, CurveData}, {100, 0, CurveData}, {100, 100, Line}},
                   1e-12);
}

TEST(ZDPathSetCornerRound, ZeroRadiusOnLineCurveCornerKeepsTheCurve)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 50, Curve}, {150, 100, CurveData},
                          {200, 100, CurveData}});
    path.setCornerRound(0.5);
    expectElements(path, {{0, 0, Move}, {100, 0, Line}, {100, 0, Curve}, {100, 0, CurveData},
                          {100, 0, CurveData}, {100, 50, Curve}, {150, 100, CurveData},
                          {200, 100, CurveData}},
                   1e-12);
}

// setCornerRound: the closing corner --------------------------------------

TEST(ZDPathSetCornerRound, ClosingCornerFromLastLineIntoFirstCurve)
{
    // The first side is a curve with handles at the thirds (constant speed),
    // so times are proportions of its length 100.
    ZDPath path = pathOf({{0, 0, Move}, {100.0 / 3, 0, Curve}, {200.0 / 3, 0, CurveData},
                          {100, 0, CurveData}, {100, 100, Line}, {0, 100, Line}, {0, 0, Line},
                          {0, 0, Close}});
    path.setCornerRound(10);
    // Curve-line at (100, 0): the curve is cut at t = 0.9. The two line-line
    // corners follow. At the close the first curve is cut at t = 0.1: the
    // start moves to (10, 0) and the curve's control points are replaced by
    // those of the part after t = 0.1 of the original curve, (40, 0) and
    // (70, 0); its end stays at the earlier cut (90, 0).
    expectElements(path, {{10, 0, Move}, {40, 0, Curve}, {70, 0, CurveData}, {90, 0, CurveData},
                          {90 + 6.72, 0, Curve}, {100, 4.48, CurveData}, {100, 10, CurveData},
                          {100, 90, Line}, {100, 95.52, Curve}, {95.52, 100, CurveData},
                          {90, 100, CurveData}, {10, 100, Line}, {4.48, 100, Curve},
                          {0, 95.52, CurveData}, {0, 90, CurveData}, {0, 10, Line},
                          {0, 4.48, Curve}, {10 - 6.72, 0, CurveData}, {10, 0, CurveData},
                          {10, 0, Close}});
}

TEST(ZDPathSetCornerRound, ClosingCornerFromLastCurveIntoFirstLine)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0, 100, Line},
                          {0, 200.0 / 3, Curve}, {0, 100.0 / 3, CurveData}, {0, 0, CurveData},
                          {0, 0, Close}});
    path.setCornerRound(10);
    // Line-curve at (0, 100) cuts the last curve at t = 0.1 and appends its
    // rest (0, 60), (0, 30), (0, 0). The close then overwrites those three
    // with the part before t = 0.9 of the original curve: (0, 70), (0, 40),
    // and the cut (0, 10).
    expectElements(path, {{10, 0, Move}, {90, 0, Line}, {95.52, 0, Curve}, {100, 4.48, CurveData},
                          {100, 10, CurveData}, {100, 90, Line}, {100, 95.52, Curve},
                          {95.52, 100, CurveData}, {90, 100, CurveData}, {10, 100, Line},
                          {4.48, 100, Curve}, {0, 96.72, CurveData}, {0, 90, CurveData},
                          {0, 70, Curve}, {0, 40, CurveData}, {0, 10, CurveData},
                          {0, 10 - 6.72, Curve}, {4.48, 0, CurveData}, {10, 0, CurveData},
                          {10, 0, Close}});
}

TEST(ZDPathSetCornerRound, ClosingCornerBetweenTwoCurvesStaysSharp)
{
    const ZDPath curves = pathOf({{0, 0, Move}, {30, -30, Curve}, {70, -30, CurveData}, {100, 0, CurveData},
                                  {70, 30, Curve}, {30, 30, CurveData}, {0, 0, CurveData}, {0, 0, Close}});
    ZDPath path = curves;
    path.setCornerRound(10);
    EXPECT_TRUE(identical(path, curves));
}

TEST(ZDPathSetCornerRound, StrayElementsAreDropped)
{
    // A line after a close, a lone second control point, and a curve after a
    // close (its two followers are then dropped one by one).
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 0, Close}, {200, 200, Line},
                          {5, 5, CurveData}, {0, 0, Move}, {100, 0, Line}, {0, 0, Close},
                          {1, 1, Curve}, {2, 2, CurveData}, {3, 3, CurveData}});
    path.setCornerRound(10);
    // The first close: a1 = atan2((0,0) - (100,0)) = pi and a2 = atan2 of the
    // zero vector = 0, a straight-through reading: the close is kept.
    // Close after a single line at (100, 0) of a subpath from (0, 0) that does
    // not come back: kept for the same reason.
    expectElements(path, {{0, 0, Move}, {100, 0, Line}, {100, 0, Close}, {0, 0, Move}, {100, 0, Line},
                          {0, 0, Close}},
                   0.0);
}

TEST(ZDPathSetCornerRound, CloseThatFitsNoCaseIsDropped)
{
    // Right after its move the close is its own first element.
    ZDPath bare = pathOf({{0, 0, Move}, {0, 0, Close}});
    bare.setCornerRound(10);
    expectElements(bare, {{0, 0, Move}}, 0.0);

    // A second close: the element before it is a close.
    ZDPath twice = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 0, Close}, {100, 0, Close}});
    twice.setCornerRound(10);
    expectElements(twice, {{0, 0, Move}, {100, 0, Line}, {100, 0, Close}}, 0.0);
}

// setCornerRoundForConnectline --------------------------------------------

TEST(ZDPathSetCornerRoundForConnectline, ZeroRadiusLeavesPathUnchanged)
{
    const ZDPath original = lShape();
    ZDPath path = original;
    ZDPath marks = lShape();
    path.setCornerRoundForConnectline(0.0, marks);
    EXPECT_TRUE(identical(path, original));
}

TEST(ZDPathSetCornerRoundForConnectline, EmptyMarksLeavePathUnchanged)
{
    const ZDPath original = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0, 100, Line}});
    ZDPath path = original;
    ZDPath marks;
    path.setCornerRoundForConnectline(10, marks);
    EXPECT_TRUE(identical(path, original));
}

TEST(ZDPathSetCornerRoundForConnectline, RoundsOnlyTheMarkedCorner)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0, 100, Line}});
    // 0.0707 from the corner (100, 0), of the corner's type.
    ZDPath marks = pathOf({{100.05, 0.05, Line}});
    const ZDPath marksBefore = marks;
    path.setCornerRoundForConnectline(10, marks);
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {95.52, 0, Curve}, {100, 4.48, CurveData},
                          {100, 10, CurveData}, {100, 100, Line}, {0, 100, Line}});
    EXPECT_TRUE(identical(marks, marksBefore));
}

TEST(ZDPathSetCornerRoundForConnectline, MarkMustMatchTypeAndLieWithinTenth)
{
    const ZDPath original = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}});
    // Right point, wrong type.
    ZDPath wrongType = pathOf({{100, 0, Move}});
    ZDPath a = original;
    a.setCornerRoundForConnectline(10, wrongType);
    EXPECT_TRUE(identical(a, original));

    // 0.1001 away: not a mark.
    ZDPath far = pathOf({{100.1001, 0, Line}});
    ZDPath b = original;
    b.setCornerRoundForConnectline(10, far);
    EXPECT_TRUE(identical(b, original));

    // 0.0999 away: a mark.
    ZDPath near = pathOf({{100, 0.0999, Line}});
    ZDPath c = original;
    c.setCornerRoundForConnectline(10, near);
    EXPECT_EQ(c.count(), 6);
}

TEST(ZDPathSetCornerRoundForConnectline, RadiusIsNotTruncated)
{
    ZDPath path = lShape();
    ZDPath marks = lShape();
    path.setCornerRoundForConnectline(7.9, marks);
    expectElements(path, {{0, 0, Move}, {92.1, 0, Line}, {100 - 0.448 * 7.9, 0, Curve},
                          {100, 0.448 * 7.9, CurveData}, {100, 7.9, CurveData}, {100, 100, Line}});
}

TEST(ZDPathSetCornerRoundForConnectline, ShortSidesCutRadiusToHalf)
{
    // d1 = 15 < 20: r = 7.5; then d2 = 9 < 15: r = 4.5, in doubles.
    ZDPath path = pathOf({{0, 0, Move}, {15, 0, Line}, {15, 9, Line}});
    ZDPath marks = path;
    path.setCornerRoundForConnectline(10, marks);
    expectElements(path, {{0, 0, Move}, {10.5, 0, Line}, {15 - 0.448 * 4.5, 0, Curve},
                          {15, 0.448 * 4.5, CurveData}, {15, 4.5, CurveData}, {15, 9, Line}});
}

TEST(ZDPathSetCornerRoundForConnectline, RepeatedPointIsKept)
{
    // No repeat test here: the repeat reads as a straight-through corner.
    const ZDPath original = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 0, Line}});
    ZDPath path = original;
    ZDPath marks = original;
    path.setCornerRoundForConnectline(10, marks);
    EXPECT_TRUE(identical(path, original));
}

TEST(ZDPathSetCornerRoundForConnectline, MarkedElementOfOtherKindIsDropped)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {150, 50, Curve}, {200, 50, CurveData},
                          {200, 100, CurveData}, {200, 100, Close}});
    // Marks the line end (100, 0), so the curve's first control point is
    // marked and dropped; the close after a marked (200, 100) end is dropped.
    ZDPath marks = pathOf({{100, 0, Line}, {200, 100, CurveData}});
    path.setCornerRoundForConnectline(10, marks);
    expectElements(path, {{0, 0, Move}, {100, 0, Line}, {200, 50, CurveData}, {200, 100, CurveData}},
                   0.0);
}

TEST(ZDPathSetCornerRoundForConnectline, MarkedLineAfterMoveIsCopied)
{
    const ZDPath original = pathOf({{0, 0, Move}, {100, 0, Line}});
    ZDPath path = original;
    ZDPath marks = original;
    path.setCornerRoundForConnectline(10, marks);
    EXPECT_TRUE(identical(path, original));
}

TEST(ZDPathSetCornerRoundForConnectline, StraightOnCornerIsKept)
{
    const ZDPath original = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line}});
    ZDPath path = original;
    ZDPath marks = original;
    path.setCornerRoundForConnectline(10, marks);
    EXPECT_TRUE(identical(path, original));
}

TEST(ZDPathSetCornerRoundForConnectline, MarksMayBeThePathItself)
{
    ZDPath path = lShape();
    path.setCornerRoundForConnectline(10, path);
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {95.52, 0, Curve}, {100, 4.48, CurveData},
                          {100, 10, CurveData}, {100, 100, Line}});
}

// setCornerRound2 ----------------------------------------------------------

TEST(ZDPathSetCornerRound2, RadiusBelowOneLeavesPathUnchanged)
{
    // Not even cleaned up: the leading double move survives.
    const ZDPath original = pathOf({{5, 5, Move}, {0, 0, Move}, {100, 0, Line}, {100, 100, Line}});
    ZDPath path = original;
    path.setCornerRound2(0.9);
    EXPECT_TRUE(identical(path, original));
    path.setCornerRound2(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(identical(path, original));
    path.setCornerRound2(-10.0);
    EXPECT_TRUE(identical(path, original));
}

TEST(ZDPathSetCornerRound2, RadiusOfOneRounds)
{
    ZDPath path = lShape();
    path.setCornerRound2(1.0);
    expectElements(path, {{0, 0, Move}, {99, 0, Line}, {99.672, 0, Curve}, {100, 0.328, CurveData},
                          {100, 1, CurveData}, {100, 100, Line}});
}

TEST(ZDPathSetCornerRound2, LineLineCornerHandlesStandAtFactorFromTheSplits)
{
    ZDPath path = lShape();
    path.setCornerRound2(10);
    // The split points are 10 from the corner; their handles are 0.672 of the
    // corner vectors, measured from the splits (not 0.448 from the corner).
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {96.72, 0, Curve}, {100, 3.28, CurveData},
                          {100, 10, CurveData}, {100, 100, Line}});
}

TEST(ZDPathSetCornerRound2, ClosedRectangleKeepsItsLastCornerSharp)
{
    ZDPath path(QRectF(0, 0, 100, 50));
    path.setCornerRound2(10);
    // Contour (0,0), (100,0), (100,50), (0,50), closed. The first three
    // corners are rounded, the last segment (0, 50) is not; the contour now
    // starts after the removed first corner, at (10, 0).
    expectElements(path, {{10, 0, Move}, {90, 0, Line}, {96.72, 0, Curve}, {100, 3.28, CurveData},
                          {100, 10, CurveData}, {100, 40, Line}, {100, 46.72, Curve},
                          {96.72, 50, CurveData}, {90, 50, CurveData}, {0, 50, Line}, {0, 10, Line},
                          {0, 3.28, Curve}, {3.28, 0, CurveData}, {10, 0, CurveData}, {10, 0, Close}});
}

TEST(ZDPathSetCornerRound2, CornerBetweenTwoCurvesIsRounded)
{
    const Pt first[4] = {{0, 0}, {30, 30}, {70, 30}, {100, 0}};
    const Pt second[4] = {{100, 0}, {130, 30}, {170, 30}, {200, 0}};
    ZDPath path = pathOf({{0, 0, Move}, {30, 30, Curve}, {70, 30, CurveData}, {100, 0, CurveData},
                          {130, 30, Curve}, {170, 30, CurveData}, {200, 0, CurveData}});
    ZDPath sharp = path;
    sharp.setCornerRound(10);
    EXPECT_TRUE(identical(sharp, path));

    path.setCornerRound2(10);
    const double length1 = arcLength(first, 0.0, 1.0);
    const double t1 = timeAtLength(first, length1 - 10.0);
    const double t2 = timeAtLength(second, 10.0);
    Pt left1[4], right1[4], left2[4], right2[4];
    splitBezier(first, t1, left1, right1);
    splitBezier(second, t2, left2, right2);
    const Pt vIn = cornerVector(10, angleOf(bezierDerivative(first, t1)));
    const Pt vOut = cornerVector(10, angleOf(bezierDerivative(second, t2)) + kPi);
    const Pt handle1 = left1[3] + 0.672 * vIn;
    const Pt handle2 = right2[0] + 0.672 * vOut;
    expectElements(path, {{0, 0, Move}, {left1[1].x, left1[1].y, Curve}, {left1[2].x, left1[2].y, CurveData},
                          {left1[3].x, left1[3].y, CurveData}, {handle1.x, handle1.y, Curve},
                          {handle2.x, handle2.y, CurveData}, {right2[0].x, right2[0].y, CurveData},
                          {right2[1].x, right2[1].y, Curve}, {right2[2].x, right2[2].y, CurveData},
                          {200, 0, CurveData}},
                   1e-6);

    // Symmetric: the arc is the mirror of itself about x = 100, and tangent
    // to both curves at its ends.
    const std::vector<Cubic> cubics = cubicsOf(path);
    ASSERT_EQ(cubics.size(), 3u);
    EXPECT_NEAR(cubics[1].p[0].x + cubics[1].p[3].x, 200.0, 1e-6);
    EXPECT_NEAR(cubics[1].p[0].y, cubics[1].p[3].y, 1e-6);
    EXPECT_NEAR(cross(unit(cubics[0].p[3] - cubics[0].p[2]), unit(cubics[1].p[1] - cubics[1].p[0])), 0.0, 1e-9);
    EXPECT_NEAR(cross(unit(cubics[1].p[3] - cubics[1].p[2]), unit(cubics[2].p[1] - cubics[2].p[0])), 0.0, 1e-9);
}

TEST(ZDPathSetCornerRound2, RunOfSmoothNodesIsOneSide)
{
    // (80, 0) lies on the straight run from (0, 0) to (100, 0): the incoming
    // side of the corner (100, 0) is 100 long, so r = 40 is not cut, and the
    // arc starts at (60, 0), past the smooth node, which is removed.
    ZDPath path = pathOf({{0, 0, Move}, {80, 0, Line}, {100, 0, Line}, {100, 100, Line}});
    path.setCornerRound2(40);
    expectElements(path, {{0, 0, Move}, {60, 0, Line}, {60 + 0.672 * 40, 0, Curve},
                          {100, 40 - 0.672 * 40, CurveData}, {100, 40, CurveData}, {100, 100, Line}});
}

TEST(ZDPathSetCornerRound2, SmoothNodeAngleBound)
{
    // (80, 0.008): the two directions differ from pi by 5e-4: smooth, one arc.
    ZDPath smooth = pathOf({{0, 0, Move}, {80, 0.008, Line}, {100, 0, Line}, {100, 100, Line}});
    smooth.setCornerRound2(40);
    EXPECT_EQ(cubicsOf(smooth).size(), 1u);
    EXPECT_EQ(smooth.count(), 6);

    // (80, 0.024): off by 1.5e-3: a corner of its own, two arcs.
    ZDPath corner = pathOf({{0, 0, Move}, {80, 0.024, Line}, {100, 0, Line}, {100, 100, Line}});
    corner.setCornerRound2(40);
    EXPECT_EQ(cubicsOf(corner).size(), 2u);
}

TEST(ZDPathSetCornerRound2, ZeroLengthSegmentJoinsTheRun)
{
    // The repeated point reads as a smooth node (its outgoing direction is
    // that of the zero vector, 0); the next node's incoming side runs back
    // over it to (0, 0).
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 0, Line}, {100, 100, Line}});
    path.setCornerRound2(10);
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {96.72, 0, Curve}, {100, 3.28, CurveData},
                          {100, 10, CurveData}, {100, 100, Line}});
}

TEST(ZDPathSetCornerRound2, ZeroLengthSideTakesOutTheCornerWithoutArc)
{
    // (0, 100) is repeated. The first copy is a corner whose outgoing side
    // has length 0, so r = 0: no walk, zero handles, and the node is removed.
    // The second copy then ends that (empty) arc and is not rounded itself.
    ZDPath path = pathOf({{0, 0, Move}, {0, 100, Line}, {0, 100, Line}, {100, 100, Line}});
    path.setCornerRound2(10);
    expectElements(path, {{0, 0, Move}, {0, 100, Line}, {100, 100, Line}}, 0.0);
}

TEST(ZDPathSetCornerRound2, ArcsMeetInTheMiddleOfAShortSide)
{
    // The side from (100, 0) to (100, 20) is 20 long: both corners get r = 10,
    // and the second arc starts where the first ends, at (100, 10).
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 20, Line}, {0, 20, Line}});
    path.setCornerRound2(10);
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {96.72, 0, Curve}, {100, 3.28, CurveData},
                          {100, 10, CurveData}, {100, 16.72, Curve}, {96.72, 20, CurveData},
                          {90, 20, CurveData}, {0, 20, Line}});
}

TEST(ZDPathSetCornerRound2, ShortContoursAreNotRounded)
{
    // Two segments only.
    ZDPath two = pathOf({{0, 0, Move}, {100, 0, Line}});
    two.setCornerRound2(10);
    expectElements(two, {{0, 0, Move}, {100, 0, Line}}, 0.0);

    // Length 20 is not above the radius 20: left alone.
    ZDPath atLength = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}});
    atLength.setCornerRound2(20);
    expectElements(atLength, {{0, 0, Move}, {10, 0, Line}, {10, 10, Line}}, 0.0);

    // Radius 19.9 below the length 20: rounded with r cut to 5.
    ZDPath below = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}});
    below.setCornerRound2(19.9);
    expectElements(below, {{0, 0, Move}, {5, 0, Line}, {5 + 0.672 * 5, 0, Curve},
                           {10, 5 - 0.672 * 5, CurveData}, {10, 5, CurveData}, {10, 10, Line}});
}

TEST(ZDPathSetCornerRound2, RadiusIsCutToHalfOfAShorterSideWithoutTruncation)
{
    // d1 = 15 < 20: r = 7.5; d2 = 9 < 15: r = 4.5.
    ZDPath path = pathOf({{0, 0, Move}, {15, 0, Line}, {15, 9, Line}});
    path.setCornerRound2(10);
    expectElements(path, {{0, 0, Move}, {10.5, 0, Line}, {10.5 + 0.672 * 4.5, 0, Curve},
                          {15, 4.5 - 0.672 * 4.5, CurveData}, {15, 4.5, CurveData}, {15, 9, Line}});
}

TEST(ZDPathSetCornerRound2, PathIsRebuiltFromItsContours)
{
    // Even with nothing to round the list goes through the contours: the
    // auxiliary points are gone and an empty subpath is cleaned away.
    ZDPath path = pathOf({{7, 7, Move}, {0, 0, Move}, {100, 0, Line}});
    path.elements[2].auxX = 3.0;
    path.setCornerRound2(10);
    expectElements(path, {{0, 0, Move}, {100, 0, Line}}, 0.0);
    EXPECT_EQ(path.elements.at(1).auxX, 0.0);
}

TEST(ZDPathSetCornerRound2, EverySubpathIsRounded)
{
    ZDPath path = lShape();
    path.moveTo(200, 0);
    path.lineTo(300, 0);
    path.lineTo(300, 100);
    path.setCornerRound2(10);
    expectElements(path, {{0, 0, Move}, {90, 0, Line}, {96.72, 0, Curve}, {100, 3.28, CurveData},
                          {100, 10, CurveData}, {100, 100, Line}, {200, 0, Move}, {290, 0, Line},
                          {296.72, 0, Curve}, {300, 3.28, CurveData}, {300, 10, CurveData},
                          {300, 100, Line}});
}

// Seeded random paths --------------------------------------------------------

namespace {

// True if the heading lies within 0.05 rad of an axis direction, where the
// 0.01 rule on corner vector components could come into play.
bool nearAxis(double heading)
{
    const double quarter = kPi / 2;
    const double offset = std::fmod(std::fabs(heading), quarter);
    return offset < 0.05 || quarter - offset < 0.05;
}

// An open polyline whose turns lie between 0.2 and 2.8 rad either way, so
// that no corner runs straight on or doubles back, with sides 3 to 60 long
// and no side within 0.05 rad of an axis.
std::vector<Pt> randomPolyline(std::mt19937 &random, int n)
{
    std::uniform_real_distribution<double> coordinate(-100.0, 100.0);
    std::uniform_real_distribution<double> side(3.0, 60.0);
    std::uniform_real_distribution<double> turn(0.2, 2.8);
    std::uniform_real_distribution<double> direction(-kPi, kPi);
    std::bernoulli_distribution left(0.5);
    std::vector<Pt> points{{coordinate(random), coordinate(random)}};
    double heading = direction(random);
    while (nearAxis(heading))
        heading = direction(random);
    for (int k = 1; k < n; ++k) {
        if (k > 1) {
            double next;
            do {
                next = heading + (left(random) ? 1.0 : -1.0) * turn(random);
            } while (nearAxis(next));
            heading = next;
        }
        const double length = side(random);
        points.push_back(points.back() + Pt{length * std::cos(heading), length * std::sin(heading)});
    }
    return points;
}

ZDPath polylinePath(const std::vector<Pt> &points)
{
    ZDPath path;
    path.moveTo(points[0].x, points[0].y);
    for (size_t k = 1; k < points.size(); ++k)
        path.lineTo(points[k].x, points[k].y);
    return path;
}

double truncatedRule(double radius, double d1, double d2)
{
    double r = std::trunc(radius);
    if (d1 < 2 * r)
        r = std::trunc(d1 * 0.5);
    if (d2 < 2 * r)
        r = std::trunc(d2 * 0.5);
    return r;
}

double halfRule(double radius, double d1, double d2)
{
    double r = radius;
    if (d1 < 2 * r)
        r = d1 * 0.5;
    if (d2 < 2 * r)
        r = d2 * 0.5;
    return r;
}

// Checks one arc of corner p between sides to a and to b: it starts r from
// p towards a and ends r from p towards b, its controls lie on the sides at
// the given fraction of r (from the corner for 0.448, from the arc's ends
// for 0.672), and it is tangent to both sides. Where two arcs meet in the
// middle of a side, setCornerRound2 takes the direction there from a curve
// cut right at its end, which is good to about 1e-7 only.
void expectArc(const Cubic &arc, Pt a, Pt p, Pt b, double r, bool fromCorner, double tolerance,
               double tangentTolerance)
{
    const Pt in = unit(a - p);
    const Pt out = unit(b - p);
    expectPt(arc.p[0], p + r * in, tolerance);
    expectPt(arc.p[3], p + r * out, tolerance);
    if (fromCorner) {
        expectPt(arc.p[1], p + (0.448 * r) * in, tolerance);
        expectPt(arc.p[2], p + (0.448 * r) * out, tolerance);
    } else {
        expectPt(arc.p[1], p + ((1 - 0.672) * r) * in, tolerance);
        expectPt(arc.p[2], p + ((1 - 0.672) * r) * out, tolerance);
    }
    if (r > 0.0) {
        EXPECT_NEAR(cross(unit(arc.p[1] - arc.p[0]), in), 0.0, tangentTolerance);
        EXPECT_LT(dot(arc.p[1] - arc.p[0], in), 0.0);
        EXPECT_NEAR(cross(unit(arc.p[3] - arc.p[2]), out), 0.0, tangentTolerance);
        EXPECT_GT(dot(arc.p[3] - arc.p[2], out), 0.0);
    }
}

} // namespace

TEST(ZDPathCornerRoundRandom, SetCornerRoundOnOpenPolylines)
{
    std::mt19937 random(20240517);
    std::uniform_int_distribution<int> count(3, 25);
    const double radii[] = {7.9, 12.0, 25.5};
    for (int trial = 0; trial < 60; ++trial) {
        SCOPED_TRACE(trial);
        const std::vector<Pt> p = randomPolyline(random, count(random));
        const double radius = radii[trial % 3];
        ZDPath path = polylinePath(p);
        path.setCornerRound(radius);
        const int n = int(p.size());
        ASSERT_EQ(path.count(), 2 + 4 * (n - 2));
        expectPt(ptOf(path.elements.first()), p.front(), 0.0);
        expectPt(ptOf(path.elements.last()), p.back(), 0.0);
        const std::vector<Cubic> arcs = cubicsOf(path);
        ASSERT_EQ(int(arcs.size()), n - 2);
        for (int j = 1; j + 1 < n; ++j) {
            SCOPED_TRACE(j);
            const double d1 = norm(p[j - 1] - p[j]);
            const double d2 = norm(p[j + 1] - p[j]);
            const double r = truncatedRule(radius, d1, d2);
            EXPECT_LE(r, std::trunc(d1 / 2));
            EXPECT_LE(r, std::trunc(d2 / 2));
            expectArc(arcs[j - 1], p[j - 1], p[j], p[j + 1], r, true, 1e-9, 1e-9);
            // Each arc start is preceded by a line element on the side.
            EXPECT_EQ(path.elements.at(1 + 4 * (j - 1)).type, Line);
        }
    }
}

TEST(ZDPathCornerRoundRandom, SetCornerRoundOnClosedPolygons)
{
    std::mt19937 random(7771);
    std::uniform_int_distribution<int> count(3, 12);
    std::uniform_real_distribution<double> jitter(-0.1, 0.1);
    std::uniform_real_distribution<double> size(40.0, 120.0);
    for (int trial = 0; trial < 40; ++trial) {
        SCOPED_TRACE(trial);
        const int n = count(random);
        std::vector<Pt> p;
        for (int k = 0; k < n; ++k) {
            const double angle = 2 * kPi * k / n + jitter(random);
            const double distance = size(random);
            p.push_back({distance * std::cos(angle), distance * std::sin(angle)});
        }
        ZDPath path = polylinePath(p);
        path.closeSubpath();
        ASSERT_EQ(path.count(), n + 2);
        const double radius = 15.0;
        path.setCornerRound(radius);
        ASSERT_EQ(path.count(), 4 * n + 2);
        // Corner k's vectors: r along the directions (atan2) of its two sides.
        auto corner = [&](int k, Pt &start, Pt &end, double &r) {
            const Pt a = p[(k + n - 1) % n];
            const Pt c = p[k];
            const Pt b = p[(k + 1) % n];
            r = truncatedRule(radius, norm(a - c), norm(c - b));
            start = c + cornerVector(r, angleOf(a - c));
            end = c + cornerVector(r, angleOf(b - c));
        };
        Pt start, end;
        double r;
        for (int k = 1; k < n; ++k) {
            SCOPED_TRACE(k);
            corner(k, start, end, r);
            expectPt(ptOf(path.elements.at(1 + 4 * (k - 1))), start, 1e-9);
            expectPt(ptOf(path.elements.at(4 + 4 * (k - 1))), end, 1e-9);
            EXPECT_NEAR(norm(start - p[k]), r, 0.01);
        }
        // The closing corner: the subpath now starts and closes at its end.
        corner(0, start, end, r);
        expectPt(ptOf(path.elements.at(4 * n - 3)), start, 1e-9);
        expectPt(ptOf(path.elements.at(4 * n)), end, 1e-9);
        expectPt(ptOf(path.elements.first()), end, 0.0);
        EXPECT_EQ(path.elements.last().type, Close);
        expectPt(ptOf(path.elements.last()), end, 0.0);
    }
}

TEST(ZDPathCornerRoundRandom, ConnectlineWithEveryCornerMarked)
{
    std::mt19937 random(99);
    std::uniform_int_distribution<int> count(3, 20);
    for (int trial = 0; trial < 40; ++trial) {
        SCOPED_TRACE(trial);
        const std::vector<Pt> p = randomPolyline(random, count(random));
        ZDPath path = polylinePath(p);
        ZDPath marks = path;
        path.setCornerRoundForConnectline(11.5, marks);
        const int n = int(p.size());
        ASSERT_EQ(path.count(), 2 + 4 * (n - 2));
        const std::vector<Cubic> arcs = cubicsOf(path);
        ASSERT_EQ(int(arcs.size()), n - 2);
        for (int j = 1; j + 1 < n; ++j) {
            SCOPED_TRACE(j);
            const double r = halfRule(11.5, norm(p[j - 1] - p[j]), norm(p[j + 1] - p[j]));
            expectArc(arcs[j - 1], p[j - 1], p[j], p[j + 1], r, true, 1e-9, 1e-9);
        }
    }
}

TEST(ZDPathCornerRoundRandom, SetCornerRound2OnOpenPolylines)
{
    std::mt19937 random(4242);
    std::uniform_int_distribution<int> count(3, 25);
    const double radii[] = {1.0, 9.5, 40.0};
    for (int trial = 0; trial < 60; ++trial) {
        SCOPED_TRACE(trial);
        const std::vector<Pt> p = randomPolyline(random, count(random));
        const double radius = radii[trial % 3];
        ZDPath path = polylinePath(p);
        path.setCornerRound2(radius);
        const int n = int(p.size());
        expectPt(ptOf(path.elements.first()), p.front(), 1e-9);
        expectPt(ptOf(path.elements.last()), p.back(), 1e-9);
        const std::vector<Cubic> arcs = cubicsOf(path);
        double total = 0.0;
        for (int k = 1; k < n; ++k)
            total += norm(p[k] - p[k - 1]);
        if (total <= radius) {
            EXPECT_TRUE(arcs.empty()); // not longer than the radius: left alone
            continue;
        }
        ASSERT_EQ(int(arcs.size()), n - 2);
        for (int j = 1; j + 1 < n; ++j) {
            SCOPED_TRACE(j);
            const double r = halfRule(radius, norm(p[j - 1] - p[j]), norm(p[j + 1] - p[j]));
            expectArc(arcs[j - 1], p[j - 1], p[j], p[j + 1], r, false, 1e-6, 1e-6);
        }
    }
}

TEST(ZDPathCornerRoundRandom, SetCornerRound2OnClosedPolygonsSparesTheLastCorner)
{
    std::mt19937 random(31337);
    std::uniform_int_distribution<int> count(3, 12);
    std::uniform_real_distribution<double> jitter(-0.1, 0.1);
    for (int trial = 0; trial < 30; ++trial) {
        SCOPED_TRACE(trial);
        const int n = count(random);
        std::vector<Pt> p;
        for (int k = 0; k < n; ++k) {
            const double angle = 2 * kPi * k / n + jitter(random);
            p.push_back({100 * std::cos(angle), 100 * std::sin(angle)});
        }
        ZDPath path = polylinePath(p);
        path.closeSubpath();
        path.setCornerRound2(12);
        EXPECT_EQ(int(cubicsOf(path).size()), n - 1);
        EXPECT_EQ(path.elements.last().type, Close);
        bool lastCornerKept = false;
        for (const ZDPathElement &e : path.elements)
            lastCornerKept = lastCornerKept || (e.x == p[n - 1].x && e.y == p[n - 1].y);
        EXPECT_TRUE(lastCornerKept);
    }
}

TEST(ZDPathCornerRoundRandom, CurveCornersStartAtRadiusAlongTheCurve)
{
    // Move, line, curve, curve, line: a line-curve corner at the first curve's
    // start, a sharp curve-curve corner, and a curve-line corner at the
    // second curve's end. Chords of at least 70 keep r at 10.
    std::mt19937 random(5150);
    std::uniform_real_distribution<double> unitValue(0.0, 1.0);
    std::bernoulli_distribution left(0.5);
    auto direction = [](double a) { return Pt{std::cos(a), std::sin(a)}; };
    for (int trial = 0; trial < 25; ++trial) {
        SCOPED_TRACE(trial);
        const double h0 = 2 * kPi * unitValue(random);
        const Pt p0{0, 0};
        const Pt p1 = p0 + 80.0 * direction(h0);
        const double turn1 = (left(random) ? 1 : -1) * (0.4 + 2.0 * unitValue(random));
        // Cubics without cusps: the control polygon turns by at most 0.3 rad
        // at each control point.
        auto gentleCubic = [&](Pt start, double heading, Pt out[4]) {
            const double bend = 0.6 * (unitValue(random) - 0.5);
            out[0] = start;
            out[1] = start + (20 + 15 * unitValue(random)) * direction(heading);
            out[3] = start + (70 + 30 * unitValue(random)) * direction(heading + bend);
            out[2] = out[3] - (20 + 15 * unitValue(random)) * direction(heading + 2 * bend);
        };
        Pt first[4];
        gentleCubic(p1, h0 + turn1, first);
        Pt second[4];
        gentleCubic(first[3], 2 * kPi * unitValue(random), second);
        const double endHeading = angleOf(second[3] - second[2]);
        const Pt p4 = second[3] + 80.0 * direction(endHeading + (left(random) ? 1 : -1) * (0.4 + 2.0 * unitValue(random)));
        ZDPath path = pathOf({{p0.x, p0.y, Move}, {p1.x, p1.y, Line},
                              {first[1].x, first[1].y, Curve}, {first[2].x, first[2].y, CurveData},
                              {first[3].x, first[3].y, CurveData}, {second[1].x, second[1].y, Curve},
                              {second[2].x, second[2].y, CurveData}, {second[3].x, second[3].y, CurveData},
                              {p4.x, p4.y, Line}});
        path.setCornerRound(10);
        ASSERT_EQ(path.count(), 15);
        const std::vector<Cubic> cubics = cubicsOf(path);
        ASSERT_EQ(cubics.size(), 4u);

        // Line-curve: the arc starts 10 before p1 on the line and ends on the
        // first curve 10 along it, where the rest of that curve begins.
        const double t1 = timeAtLength(first, 10.0);
        const Pt s1 = bezierPoint(first, t1);
        expectPt(cubics[0].p[0], p1 + cornerVector(10, angleOf(p0 - p1)), 1e-9);
        expectPt(cubics[0].p[3], s1, 1e-6);
        EXPECT_NEAR(cross(unit(cubics[0].p[3] - cubics[0].p[2]), unit(bezierDerivative(first, t1))), 0.0, 1e-6);
        EXPECT_NEAR(cross(unit(cubics[1].p[1] - cubics[1].p[0]), unit(bezierDerivative(first, t1))), 0.0, 1e-6);
        expectPt(cubics[1].p[3], first[3], 0.0);

        // Curve-line: the second curve now ends 10 before its end, where the
        // arc starts along its tangent; the arc ends 10 along the line.
        const double length2 = arcLength(second, 0.0, 1.0);
        const double t2 = timeAtLength(second, length2 - 10.0);
        const Pt s2 = bezierPoint(second, t2);
        expectPt(cubics[2].p[3], s2, 1e-6);
        EXPECT_NEAR(arcLength(cubics[2].p, 0.0, 1.0), length2 - 10.0, 1e-6);
        EXPECT_NEAR(cross(unit(cubics[3].p[1] - cubics[3].p[0]), unit(bezierDerivative(second, t2))), 0.0, 1e-6);
        EXPECT_GT(dot(cubics[3].p[1] - cubics[3].p[0], bezierDerivative(second, t2)), 0.0);
        expectPt(cubics[3].p[3], second[3] + cornerVector(10, angleOf(p4 - second[3])), 1e-9);
        expectPt(ptOf(path.elements.last()), p4, 0.0);
    }
}

// Determinism and degenerate input -----------------------------------------

namespace {

// Whether some cubic runs from `start` to `end`, within the tolerance of the
// split points measured along the sides.
bool hasArcAt(const std::vector<Cubic> &arcs, Pt start, Pt end)
{
    for (const Cubic &arc : arcs) {
        if (norm(arc.p[0] - start) < 1e-6 && norm(arc.p[3] - end) < 1e-6)
            return true;
    }
    return false;
}

} // namespace

TEST(ZDPathCornerRoundDeterminism, EqualInputGivesIdenticalElements)
{
    std::mt19937 random(123);
    const std::vector<Pt> p = randomPolyline(random, 30);
    const ZDPath input = [&] {
        ZDPath path = polylinePath(p);
        path.cubicTo(QPointF(10, 10), QPointF(40, -20), QPointF(60, 30));
        path.lineTo(-20, 50);
        path.closeSubpath();
        return path;
    }();
    for (int operation = 0; operation < 3; ++operation) {
        SCOPED_TRACE(operation);
        ZDPath a = input;
        ZDPath b = input;
        ZDPath marksA = input;
        ZDPath marksB = input;
        if (operation == 0) {
            a.setCornerRound(9.5);
            b.setCornerRound(9.5);
        } else if (operation == 1) {
            a.setCornerRoundForConnectline(9.5, marksA);
            b.setCornerRoundForConnectline(9.5, marksB);
        } else {
            a.setCornerRound2(9.5);
            b.setCornerRound2(9.5);
        }
        EXPECT_GT(a.count(), input.count());
        EXPECT_TRUE(identical(a, b));
        // The arcs of the polyline's corners, in order before those of the
        // corners at the curve and at the close: truncated radius and
        // controls from the corner for setCornerRound, the radius as it is
        // for the other two, with controls from the arc's ends for
        // setCornerRound2.
        const std::vector<Cubic> arcs = cubicsOf(a);
        ASSERT_GT(arcs.size(), size_t(28));
        for (int j = 1; j + 1 < 30; ++j) {
            SCOPED_TRACE(j);
            const double d1 = norm(p[j - 1] - p[j]), d2 = norm(p[j + 1] - p[j]);
            if (operation == 0)
                expectArc(arcs[j - 1], p[j - 1], p[j], p[j + 1], truncatedRule(9.5, d1, d2), true, 1e-9, 1e-9);
            else if (operation == 1)
                expectArc(arcs[j - 1], p[j - 1], p[j], p[j + 1], halfRule(9.5, d1, d2), true, 1e-9, 1e-9);
            else // the closed contour comes back clockwise, here reversed
                EXPECT_TRUE(hasArcAt(arcs, p[j] + halfRule(9.5, d1, d2) * unit(p[j + 1] - p[j]),
                                     p[j] + halfRule(9.5, d1, d2) * unit(p[j - 1] - p[j])));
        }
    }
}

TEST(ZDPathCornerRoundDegenerate, EmptyAndSingleElementPaths)
{
    ZDPath empty;
    ZDPath marks;
    empty.setCornerRound(10);
    empty.setCornerRoundForConnectline(10, marks);
    empty.setCornerRound2(10);
    EXPECT_TRUE(empty.isEmpty());

    ZDPath one = pathOf({{5, 5, Move}});
    one.setCornerRound(10);
    one.setCornerRoundForConnectline(10, marks);
    expectElements(one, {{5, 5, Move}}, 0.0);
    one.setCornerRound2(10); // cleaned up: a lone move is an empty subpath
    EXPECT_TRUE(one.isEmpty());
}

TEST(ZDPathCornerRoundDegenerate, CoincidentPoints)
{
    ZDPath path = pathOf({{5, 5, Move}, {5, 5, Line}, {5, 5, Line}, {5, 5, Line}, {5, 5, Close}});
    ZDPath a = path;
    a.setCornerRound(10);
    // The line after the move is copied (the repeat test is for line-line
    // corners only), the others repeat the corner and are dropped, and the
    // close reads its corner as doubling back (both angles 0) and is kept.
    expectElements(a, {{5, 5, Move}, {5, 5, Line}, {5, 5, Close}}, 0.0);

    ZDPath b = path;
    ZDPath marks = path;
    b.setCornerRoundForConnectline(10, marks);
    // Marked lines all read as doubling back (both angles atan2(0, 0) = 0);
    // the marked close is dropped.
    expectElements(b, {{5, 5, Move}, {5, 5, Line}, {5, 5, Line}, {5, 5, Line}}, 0.0);

    // A contour of length 0 is left alone and comes back through the
    // contours: the last point is joined into the start on closing, and the
    // closed contour of three segments is written as a move, two lines, the
    // closing line and the close.
    ZDPath c = path;
    c.setCornerRound2(10);
    expectElements(c, {{5, 5, Move}, {5, 5, Line}, {5, 5, Line}, {5, 5, Line}, {5, 5, Close}}, 0.0);
}

TEST(ZDPathCornerRoundDegenerate, NegativeRadiusRoundsOutwards)
{
    // trunc(-10) = -10 is never cut by a side; the vectors point away from
    // the sides.
    ZDPath path = lShape();
    path.setCornerRound(-10);
    expectElements(path, {{0, 0, Move}, {110, 0, Line}, {104.48, 0, Curve}, {100, -4.48, CurveData},
                          {100, -10, CurveData}, {100, 100, Line}});

    ZDPath marked = lShape();
    ZDPath marks = lShape();
    marked.setCornerRoundForConnectline(-10, marks);
    expectElements(marked, {{0, 0, Move}, {110, 0, Line}, {104.48, 0, Curve}, {100, -4.48, CurveData},
                            {100, -10, CurveData}, {100, 100, Line}});
}

TEST(ZDPathCornerRoundDegenerate, NanAndInfiniteRadius)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const ZDPath original = lShape();
    ZDPath a = original;
    ZDPath marks = original;
    a.setCornerRound(nan);
    a.setCornerRoundForConnectline(nan, marks);
    EXPECT_TRUE(identical(a, original));

    // An infinite radius is cut by the sides: r = 50.
    ZDPath b = original;
    b.setCornerRound(inf);
    expectElements(b, {{0, 0, Move}, {50, 0, Line}, {77.6, 0, Curve}, {100, 22.4, CurveData},
                       {100, 50, CurveData}, {100, 100, Line}});
    ZDPath c = original;
    c.setCornerRound2(inf); // no contour is longer than the radius
    expectElements(c, {{0, 0, Move}, {100, 0, Line}, {100, 100, Line}}, 0.0);
}

TEST(ZDPathCornerRoundDegenerate, NonFiniteAndHugeCoordinatesFinish)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const double values[] = {nan, inf, -inf, 1e300, -1e300, 1e-300};
    for (double v : values) {
        SCOPED_TRACE(v);
        const ZDPath input = pathOf({{0, 0, Move}, {100, 0, Line}, {v, 100, Line}, {0, 100, Line},
                                     {v, 150, Curve}, {50, v, CurveData}, {80, 80, CurveData},
                                     {0, 0, Line}, {0, 0, Close}});
        ZDPath a = input;
        a.setCornerRound(10);
        EXPECT_LE(a.count(), 4 * input.count());
        ZDPath b = input;
        ZDPath marks = input;
        b.setCornerRoundForConnectline(10, marks);
        EXPECT_LE(b.count(), 4 * input.count());
        ZDPath c = input;
        c.setCornerRound2(10);
        EXPECT_LE(c.count(), 8 * input.count());
        // Finite input gives finite output; every result keeps the move.
        for (const ZDPath *result : {&a, &b, &c}) {
            ASSERT_FALSE(result->isEmpty());
            if (std::isfinite(v)) {
                for (const ZDPathElement &e : result->elements)
                    EXPECT_TRUE(std::isfinite(e.x) && std::isfinite(e.y));
            }
        }
        // The first corner, from (0, 0) over (100, 0) towards (v, 100): a
        // NaN angle fails both straight tests and rounds with r 10 (a NaN
        // side is not below 2 r), leaving its incoming half finite; an
        // infinite or huge v points the side along the axis, which reads as
        // doubling back or running straight on, so the line is copied; a
        // tiny v makes a 45 degree turn, rounded with r 10. The closing
        // corner at (0, 0), coming from (80, 80), is rounded as well and
        // moves the move point 10 along the first side.
        ASSERT_GE(a.count(), 5);
        const bool roundsTheCorner = qIsNaN(v) || v == 1e-300;
        const std::vector<El> head =
            roundsTheCorner ? std::vector<El>{{10, 0, Move}, {90, 0, Line}, {95.52, 0, Curve}}
                            : std::vector<El>{{10, 0, Move}, {100, 0, Line}, {v, 100, Line}};
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(a.elements.at(i).type, head[i].type) << "element " << i;
            if (std::isfinite(head[i].x))
                EXPECT_NEAR(a.elements.at(i).x, head[i].x, 1e-9) << "element " << i;
            else
                EXPECT_EQ(a.elements.at(i).x, head[i].x) << "element " << i;
            EXPECT_EQ(a.elements.at(i).y, head[i].y) << "element " << i;
        }
        if (v == 1e-300) {
            const double c45 = 10 * std::cos(3 * kPi / 4), s45 = 10 * std::sin(3 * kPi / 4);
            expectPt(ptOf(a.elements.at(3)), {100 + 0.448 * c45, 0.448 * s45}, 1e-9);
            expectPt(ptOf(a.elements.at(4)), {100 + c45, s45}, 1e-9);
        }
    }
}

TEST(ZDPathCornerRoundDegenerate, MalformedListsFinish)
{
    // A list without a move, a cubic cut short, curves at the very start.
    ZDPath noMove = pathOf({{0, 0, Line}, {100, 0, Line}, {100, 100, Line}, {0, 0, Close}});
    noMove.setCornerRound(10);
    // Line-line corner at (100, 0) rounded; the close has no subpath start
    // to move and is kept.
    expectElements(noMove, {{0, 0, Line}, {90, 0, Line}, {95.52, 0, Curve}, {100, 4.48, CurveData},
                            {100, 10, CurveData}, {100, 100, Line}, {0, 0, Close}});

    const ZDPath cut = pathOf({{0, 0, Move}, {100, 0, Line}, {120, 0, Curve}, {130, 10, CurveData}});
    ZDPath a = cut;
    a.setCornerRound(10);
    EXPECT_TRUE(identical(a, cut));

    const ZDPath leading = pathOf({{10, 0, Curve}, {20, 0, CurveData}, {30, 0, CurveData}, {30, 50, Line}});
    ZDPath b = leading;
    b.setCornerRound(10);
    ASSERT_GE(b.count(), 4);
    EXPECT_TRUE(identical(b, leading)); // no start point before the curve to round from

    // Random element soup: every effect finishes and stays bounded.
    std::mt19937 random(2718);
    std::uniform_int_distribution<int> type(0, 5);
    std::uniform_int_distribution<int> length(0, 24);
    std::uniform_real_distribution<double> coordinate(-50.0, 50.0);
    for (int trial = 0; trial < 300; ++trial) {
        ZDPath soup;
        const int n = length(random);
        for (int i = 0; i < n; ++i)
            soup.elements.append(ZDPathElement(std::round(coordinate(random)), std::round(coordinate(random)),
                                               type(random)));
        ZDPath a2 = soup;
        a2.setCornerRound(7);
        EXPECT_LE(a2.count(), 4 * n);
        ZDPath b2 = soup;
        ZDPath marks = soup;
        b2.setCornerRoundForConnectline(7, marks);
        EXPECT_LE(b2.count(), 4 * n);
        ZDPath c2 = soup;
        c2.setCornerRound2(7);
        EXPECT_LE(c2.count(), 8 * n + 8);
        // Finite points in, finite points out.
        for (const ZDPath *result : {&a2, &b2, &c2}) {
            for (const ZDPathElement &e : result->elements)
                EXPECT_TRUE(std::isfinite(e.x) && std::isfinite(e.y)) << "trial " << trial;
        }
    }
}
