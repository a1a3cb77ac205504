// Tests of the ZDPath measures along the path: lengths, shares of the
// length, points, nearest points, tangents, direction angles and the
// orientation of the first subpath.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "services/services_test_support.h"
#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace drawingtest;

namespace {

// An L of two lines: 30 to the right, then 40 down; 70 long.
ZDPath lShape()
{
    return pathOf({{0, 0, Move}, {30, 0, Line}, {30, 40, Line}});
}

// One arch-shaped cubic from (0, 0) to (100, 0); its speed varies along it.
ZDPath arch()
{
    return pathOf({{0, 0, Move}, {0, 50, Curve}, {100, 50, CurveData}, {100, 0, CurveData}});
}

QVector<double> archValues()
{
    return {0, 0, 0, 50, 100, 50, 100, 0};
}

void expectNaN(const zgPoint &p)
{
    EXPECT_TRUE(qIsNaN(p.x));
    EXPECT_TRUE(qIsNaN(p.y));
}

void expectPoint(const zgPoint &p, double x, double y, double tolerance = 1e-9)
{
    EXPECT_NEAR(p.x, x, tolerance);
    EXPECT_NEAR(p.y, y, tolerance);
}

} // namespace

TEST(ZDPathMeasure, EmptyPathGivesTheFailureValues)
{
    ZDPath path;
    EXPECT_EQ(path.getLength(), 0.0);
    EXPECT_EQ(path.getLength(zgPoint(0, 0)), -1.0);
    EXPECT_EQ(path.getPathProportionFromPoint(zgPoint(0, 0)), -1.0);
    expectNaN(path.getPointAt(0.5));
    expectNaN(path.getPointAt(0.0));
    EXPECT_EQ(path.pointAtPercent(0.5), QPointF(0, 0));
    EXPECT_EQ(path.getTangent(0, true), 0.0);
    EXPECT_EQ(path.getTangent(0, false), 0.0);
    expectNaN(path.getPointFromCurveProportion(0, 0.5));
    expectNaN(path.getNearestPoint(zgPoint(0, 0)));
    expectNaN(path.getTangentAt(zgPoint(0, 0)));
    QPointF start, next;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
}

// getLength()

TEST(ZDPathMeasure, LengthSumsTheCurvesOfAllSubpaths)
{
    EXPECT_DOUBLE_EQ(lShape().getLength(), 70.0);

    // A closed square counts its closing line.
    ZDPath both = lShape();
    both.addRect(QRectF(100, 100, 10, 10));
    EXPECT_DOUBLE_EQ(both.getLength(), 110.0);

    const double archLength = zgCurve::getLength(archValues(), 0.0, 1.0);
    EXPECT_GT(archLength, 100.0);
    EXPECT_DOUBLE_EQ(arch().getLength(), archLength);
}

TEST(ZDPathMeasure, MeasuringCleansThePathUp)
{
    ZDPath path = pathOf({{5, 5, Move}, {0, 0, Move}, {30, 0, Line}, {9, 9, Move}});
    EXPECT_DOUBLE_EQ(path.getLength(), 30.0);
    EXPECT_EQ(path.count(), 2);
}

// getLength(point)

TEST(ZDPathMeasure, LengthToAPointOnThePath)
{
    ZDPath path = lShape();
    EXPECT_DOUBLE_EQ(path.getLength(zgPoint(15, 0)), 15.0);
    EXPECT_DOUBLE_EQ(path.getLength(zgPoint(30, 20)), 50.0);
    EXPECT_DOUBLE_EQ(path.getLength(zgPoint(30, 40)), 70.0);
    EXPECT_DOUBLE_EQ(path.getLength(zgPoint(0, 0)), 0.0);
    EXPECT_EQ(path.getLength(zgPoint(15, 1)), -1.0);

    // The point must lie on a curve within 2e-07.
    EXPECT_NEAR(path.getLength(zgPoint(15, 1.5e-07)), 15.0, 1e-9);
    EXPECT_EQ(path.getLength(zgPoint(15, 2.5e-07)), -1.0);

    // On the second subpath the first one counts in full.
    ZDPath two = lShape();
    two.moveTo(100, 0);
    two.lineTo(100, 10);
    EXPECT_DOUBLE_EQ(two.getLength(zgPoint(100, 4)), 74.0);
}

TEST(ZDPathMeasure, LengthToAPointOnACubicIsItsArcLength)
{
    ZDPath path = arch();
    const QVector<double> values = archValues();
    const double t = 0.3;
    const zgPoint onCurve = zgCurve::getPoint(values, t);
    EXPECT_NEAR(path.getLength(onCurve), zgCurve::getLength(values, 0.0, t), 1e-6);
}

TEST(ZDPathMeasure, APointOnTwoCurvesCountsAtTheFirstForLengthAndTheLastForTheShare)
{
    // The third line crosses the first at (50, 0).
    ZDPath crossing = pathOf({{0, 0, Move}, {100, 0, Line}, {50, 50, Line}, {50, -50, Line}});
    const double diagonal = std::sqrt(50.0 * 50.0 * 2.0);
    const double total = 100.0 + diagonal + 100.0;
    EXPECT_DOUBLE_EQ(crossing.getLength(zgPoint(50, 0)), 50.0);
    EXPECT_NEAR(crossing.getPathProportionFromPoint(zgPoint(50, 0)), (100.0 + diagonal + 50.0) / total, 1e-12);

    // The start of a closed square is also the end of its closing line.
    ZDPath square(QRectF(0, 0, 10, 10));
    EXPECT_EQ(square.getLength(zgPoint(0, 0)), 0.0);
    EXPECT_DOUBLE_EQ(square.getPathProportionFromPoint(zgPoint(0, 0)), 1.0);

    // The joint of two lines in a row is 30 along either way.
    EXPECT_DOUBLE_EQ(lShape().getLength(zgPoint(30, 0)), 30.0);
    EXPECT_DOUBLE_EQ(lShape().getPathProportionFromPoint(zgPoint(30, 0)), 30.0 / 70.0);
}

// getPathProportionFromPoint

TEST(ZDPathMeasure, ProportionIsTheShareOfTheWholeLength)
{
    ZDPath path = lShape();
    EXPECT_DOUBLE_EQ(path.getPathProportionFromPoint(zgPoint(30, 20)), 50.0 / 70.0);
    EXPECT_DOUBLE_EQ(path.getPathProportionFromPoint(zgPoint(30, 40)), 1.0);
    EXPECT_EQ(path.getPathProportionFromPoint(zgPoint(31, 20)), -1.0);

    // The whole length includes the subpaths behind the point.
    ZDPath two = lShape();
    two.moveTo(100, 0);
    two.lineTo(100, 30);
    EXPECT_DOUBLE_EQ(two.getPathProportionFromPoint(zgPoint(15, 0)), 15.0 / 100.0);
}

TEST(ZDPathMeasure, ProportionOnAPathOfNoLengthIsMinusOne)
{
    ZDPath point = pathOf({{5, 5, Move}, {5, 5, Line}});
    EXPECT_EQ(point.getLength(zgPoint(5, 5)), 0.0);
    EXPECT_EQ(point.getPathProportionFromPoint(zgPoint(5, 5)), -1.0);
}

// getPointAt

TEST(ZDPathMeasure, PointAtAShareOfTheLength)
{
    ZDPath path = lShape();
    expectPoint(path.getPointAt(0.0), 0, 0);
    expectPoint(path.getPointAt(0.5), 30, 5);
    // The joint lies on the first curve.
    expectPoint(path.getPointAt(30.0 / 70.0), 30, 0);
    expectPoint(path.getPointAt(1.0), 30, 40);
}

TEST(ZDPathMeasure, PointAtAcceptsOnlyZeroToOne)
{
    ZDPath path = lShape();
    expectPoint(path.getPointAt(1.0), 30, 40);
    expectNaN(path.getPointAt(1.0000001));
    expectNaN(path.getPointAt(-1e-12));
    expectNaN(path.getPointAt(qQNaN()));
}

TEST(ZDPathMeasure, PointAtOneIsTheEndOfTheLastCurve)
{
    ZDPath path = arch();
    path.lineTo(100, 33.3);
    path.cubicTo(QPointF(70, 90), QPointF(20, 10), QPointF(-7.7, 61.9));
    expectPoint(path.getPointAt(1.0), -7.7, 61.9, 1e-9);
    expectPoint(path.getPointAt(0.0), 0, 0);
}

TEST(ZDPathMeasure, PointAtWalksByArcLengthNotByTime)
{
    ZDPath path = arch();
    const QVector<double> values = archValues();
    const double length = zgCurve::getLength(values, 0.0, 1.0);
    const zgPoint byLength = zgCurve::getPoint(values, zgCurve::getTimeAt(values, 0.25 * length, -100.0));
    const zgPoint byTime = zgCurve::getPoint(values, 0.25);
    ASSERT_GT(byLength.getDistance(byTime), 1.0);
    expectPoint(path.getPointAt(0.25), byLength.x, byLength.y, 1e-9);
}

TEST(ZDPathMeasure, PointAtCrossesIntoLaterSubpaths)
{
    ZDPath two = lShape();
    two.moveTo(100, 0);
    two.lineTo(100, 30);
    expectPoint(two.getPointAt(0.8), 100, 10);
}

// pointAtPercent

TEST(ZDPathMeasure, PointAtPercentMeasuresTheFirstContourOnly)
{
    ZDPath two = lShape();
    two.moveTo(100, 0);
    two.lineTo(100, 1000);
    EXPECT_EQ(two.pointAtPercent(0.0), QPointF(0, 0));
    const QPointF middle = two.pointAtPercent(0.5);
    EXPECT_NEAR(middle.x(), 30, 1e-9);
    EXPECT_NEAR(middle.y(), 5, 1e-9);
}

TEST(ZDPathMeasure, PointAtPercentDriftsByTheWholeUnitsOfItsLocation)
{
    // Curves of 10.5 each: the running sum keeps 10 after the first, so half
    // of the 21 units lands half a unit into the second curve.
    ZDPath path = pathOf({{0, 0, Move}, {10.5, 0, Line}, {10.5, 10.5, Line}});
    const QPointF half = path.pointAtPercent(0.5);
    EXPECT_NEAR(half.x(), 10.5, 1e-9);
    EXPECT_NEAR(half.y(), 0.5, 1e-9);

    // A negative share counts back from the end.
    const QPointF back = path.pointAtPercent(-0.25);
    EXPECT_NEAR(back.x(), 10.5, 1e-9);
    EXPECT_NEAR(back.y(), 5.75, 1e-9);

    // Past the last whole-unit end, but within the length: the location at
    // the end of the last curve.
    const QPointF whole = path.pointAtPercent(1.0);
    EXPECT_NEAR(whole.x(), 10.5, 1e-9);
    EXPECT_NEAR(whole.y(), 10.5, 1e-9);

    // Beyond the length there is no location.
    EXPECT_EQ(path.pointAtPercent(1.5), QPointF(0, 0));
}

TEST(ZDPathMeasure, PointAtPercentReleasesItsLocation)
{
    ZDPath path = lShape();
    QPointF point;
    const zgtest::Survivors survivors = zgtest::countSurvivors([&] { point = path.pointAtPercent(0.5); });
    zgtest::expectNoSurvivors(survivors);
    EXPECT_NEAR(point.y(), 5, 1e-9);
}

// getPointFromCurveProportion

TEST(ZDPathMeasure, PointFromCurveProportionIndexesTheCurvesOfAllContours)
{
    ZDPath path = lShape();
    path.addRect(QRectF(100, 100, 10, 20));
    expectPoint(path.getPointFromCurveProportion(0, 0.5), 15, 0);
    expectPoint(path.getPointFromCurveProportion(1, 0.5), 30, 20);
    // The rectangle, a closed contour after the first, is turned to run
    // counter-clockwise: from (100, 120) right, up, left and down.
    expectPoint(path.getPointFromCurveProportion(2, 0.25), 102.5, 120);
    expectPoint(path.getPointFromCurveProportion(3, 0.25), 110, 115);
    expectPoint(path.getPointFromCurveProportion(5, 0.25), 100, 105);
    expectNaN(path.getPointFromCurveProportion(6, 0.5));
    expectNaN(path.getPointFromCurveProportion(-1, 0.5));
}

TEST(ZDPathMeasure, PointFromCurveProportionTakesTheShareAsAnOffset)
{
    ZDPath path = lShape();
    // A negative offset counts from the curve's end; one beyond it has no point.
    expectPoint(path.getPointFromCurveProportion(1, -0.25), 30, 30);
    expectNaN(path.getPointFromCurveProportion(1, 1.5));
    expectPoint(path.getPointFromCurveProportion(1, 1.0), 30, 40);

    ZDPath curved = arch();
    const QVector<double> values = archValues();
    const double length = zgCurve::getLength(values, 0.0, 1.0);
    const zgPoint expected = zgCurve::getPoint(values, zgCurve::getTimeAt(values, 0.1 * length, -100.0));
    expectPoint(curved.getPointFromCurveProportion(0, 0.1), expected.x, expected.y);
}

// getNearestPoint

TEST(ZDPathMeasure, NearestPointOnAnyCurve)
{
    ZDPath path = lShape();
    expectPoint(path.getNearestPoint(zgPoint(40, 20)), 30, 20);
    expectPoint(path.getNearestPoint(zgPoint(15, -5)), 15, 0);
    expectPoint(path.getNearestPoint(zgPoint(-5, -5)), 0, 0);

    ZDPath curved = arch();
    const zgPoint nearest = curved.getNearestPoint(zgPoint(50, 60));
    expectPoint(nearest, 50, 37.5, 1e-6);
}

TEST(ZDPathMeasure, NearestPointKeepsTheFirstOfEqualDistances)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 10, Move}, {10, 10, Line}});
    expectPoint(path.getNearestPoint(zgPoint(5, 5)), 5, 0);
    expectPoint(path.getNearestPoint(zgPoint(5, 5.5)), 5, 10);
}

TEST(ZDPathMeasure, NearestPointIsOnlyTakenStrictlyWithinOneHundredMillion)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}});
    expectPoint(path.getNearestPoint(zgPoint(10 + 99999999.0, 0)), 10, 0);
    expectNaN(path.getNearestPoint(zgPoint(10 + 100000000.0, 0)));
    expectNaN(path.getNearestPoint(zgPoint(qQNaN(), 0)));
}

// getTangentAt

TEST(ZDPathMeasure, TangentWherePointLies)
{
    ZDPath path = lShape();
    expectPoint(path.getTangentAt(zgPoint(15, 0)), 1, 0);
    expectPoint(path.getTangentAt(zgPoint(30, 20)), 0, 1);
    // The joint lies at the end of the first curve.
    expectPoint(path.getTangentAt(zgPoint(30, 0)), 1, 0);
    expectNaN(path.getTangentAt(zgPoint(20, 20)));

    ZDPath curved = arch();
    const QVector<double> values = archValues();
    const zgPoint onCurve = zgCurve::getPoint(values, 0.2);
    const zgPoint tangent = zgCurve::getTangent(values, 0.2);
    expectPoint(curved.getTangentAt(onCurve), tangent.x, tangent.y, 1e-6);
}

// getTangent

TEST(ZDPathMeasure, TangentAngleAtTheEndsOfTheFirstContour)
{
    ZDPath path = lShape();
    path.moveTo(50, 50);
    path.lineTo(50, 0);
    EXPECT_NEAR(path.getTangent(0, true), 0.0, 1e-12);
    EXPECT_NEAR(path.getTangent(0, false), 90.0, 1e-12);
    // Conversion from element 3 starts at the second subpath's move.
    EXPECT_NEAR(path.getTangent(3, true), -90.0, 1e-12);
    // From element 1 the lines before the next move draw nothing.
    EXPECT_NEAR(path.getTangent(1, false), -90.0, 1e-12);
    EXPECT_EQ(path.getTangent(5, true), 0.0);
}

TEST(ZDPathMeasure, TangentAngleAtTheEndOfAClosedContourIsThatOfItsStart)
{
    // At the end of a closed contour the location at the end of the closing
    // curve stands at the start of the first curve, so both ends give the
    // direction of the first side.
    ZDPath square(QRectF(0, 0, 10, 10));
    EXPECT_NEAR(square.getTangent(0, true), 0.0, 1e-12);
    EXPECT_NEAR(square.getTangent(0, false), 0.0, 1e-12);
    // Drawn counter-clockwise, the contour is turned by the conversion to
    // start at (10, 0) and run down first.
    ZDPath tall(QRectF(0, 0, 10, 20));
    tall.reverse();
    EXPECT_NEAR(tall.getTangent(0, true), 90.0, 1e-12);
    EXPECT_NEAR(tall.getTangent(0, false), 90.0, 1e-12);

    ZDPath curved = arch();
    EXPECT_NEAR(curved.getTangent(0, true), 90.0, 1e-9);
    EXPECT_NEAR(curved.getTangent(0, false), -90.0, 1e-9);
}

// isClockWise

TEST(ZDPathMeasure, ClockwiseIsTheOrientationOfTheFirstSubpath)
{
    // With y down, a rectangle drawn right, down, left has positive area.
    ZDPath square(QRectF(0, 0, 10, 10));
    EXPECT_TRUE(square.isClockWise());

    ZDPath reversed = pathOf({{0, 0, Move}, {0, 10, Line}, {10, 10, Line}, {10, 0, Line}, {0, 0, Line},
                              {0, 0, Close}});
    EXPECT_FALSE(reversed.isClockWise());

    // Later subpaths have no say.
    ZDPath both = reversed;
    both.addRect(QRectF(100, 100, 500, 500));
    EXPECT_FALSE(both.isClockWise());
    ZDPath other = square;
    other.addPath(reversed);
    EXPECT_TRUE(other.isClockWise());
}

TEST(ZDPathMeasure, ClockwiseOfAnOpenSubpathIsTheSignOfItsOpenArea)
{
    // Area swept about the origin: the line from (30, 0) to (30, 40) gives +600.
    EXPECT_TRUE(lShape().isClockWise());
    ZDPath back = pathOf({{30, 40, Move}, {30, 0, Line}, {0, 0, Line}});
    EXPECT_FALSE(back.isClockWise());
    // No area at all counts as clockwise.
    EXPECT_TRUE(ZDPath().isClockWise());
}

TEST(ZDPathMeasure, ClockwiseDoesNotCleanUp)
{
    // The first subpath is the lone move: a contour of one point and no
    // area. Cleaned up, the path would start with the backward L instead.
    ZDPath path = pathOf({{5, 5, Move}, {30, 40, Move}, {30, 0, Line}, {0, 0, Line}});
    EXPECT_TRUE(path.isClockWise());
    EXPECT_EQ(path.count(), 4);
}

TEST(ZDPathMeasure, ClockwiseCountsTheAreaOfCurves)
{
    // The line there and the curve back: only the curve has area, below the
    // line (clockwise with y down) or above it.
    ZDPath below = pathOf({{0, 0, Move}, {10, 0, Line},
                           {10, 50, Curve}, {0, 50, CurveData}, {0, 0, CurveData}, {0, 0, Close}});
    EXPECT_TRUE(below.isClockWise());
    ZDPath above = pathOf({{0, 0, Move}, {10, 0, Line},
                           {10, -50, Curve}, {0, -50, CurveData}, {0, 0, CurveData}, {0, 0, Close}});
    EXPECT_FALSE(above.isClockWise());
}

// The walk over the open starts

TEST(ZDPathMeasure, OpenStartsWalkSkipsClosedSubpaths)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line},
                          {20, 0, Move}, {30, 0, Line}, {30, 10, Line}, {20, 0, Line}, {20, 0, Close},
                          {40, 0, Move}, {50, 5, Line}});
    QPointF start, next;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), 0);
    EXPECT_EQ(start, QPointF(0, 0));
    EXPECT_EQ(next, QPointF(10, 0));
    EXPECT_EQ(path.getOpenedStart(start, next, index), 7);
    EXPECT_EQ(start, QPointF(40, 0));
    EXPECT_EQ(next, QPointF(50, 5));
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
}

// Lifetime

TEST(ZDPathMeasure, MeasuresLeaveNoCountedObjectBehind)
{
    ZDPath path = arch();
    path.lineTo(100, 50);
    path.addRect(QRectF(200, 0, 30, 30));
    const zgPoint onPath = zgCurve::getPoint(archValues(), 0.4);
    const zgtest::Survivors survivors = zgtest::countSurvivors([&] {
        path.getLength();
        path.getLength(onPath);
        path.getPathProportionFromPoint(onPath);
        path.getPointAt(0.7);
        path.pointAtPercent(0.3);
        path.pointAtPercent(1.0);
        path.getPointFromCurveProportion(2, 0.5);
        path.getNearestPoint(zgPoint(10, 10));
        path.getTangentAt(onPath);
        path.getTangent(0, false);
        path.getTangent(5, true);
        path.isClockWise();
    });
    zgtest::expectNoSurvivors(survivors);
}
