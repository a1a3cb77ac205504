// zgPath drawing commands: moves, lines, cubic and quadratic curves, curves
// through a point, arcs by radius and by rectangle, ellipses and closing.
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

void expectPoint(const zgPoint &actual, double x, double y, double tolerance = 1e-12)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

// The values of curve i of a contour, from its segments.
QVector<double> valuesOf(const zgPath &path, int i)
{
    return zgCurve::getValues(path.segments.at(i), path.segments.at(i + 1), nullptr);
}

TEST(PathCommands, MoveToStartsAnEmptyContour)
{
    zgPath path;
    path.moveTo(3, 4);
    ASSERT_EQ(path.segments.size(), 1);
    expectPoint(path.segments.at(0)->point, 3, 4);
    EXPECT_FALSE(path.segments.at(0)->hasHandles());
}

TEST(PathCommands, TwoMovesLeaveOneSegmentAtTheSecondPoint)
{
    zgPath path;
    path.moveTo(3, 4);
    zgSegment *first = path.segments.at(0);
    first->addRef(); // watch it
    path.moveToPt(zgPoint(7, 8));
    ASSERT_EQ(path.segments.size(), 1);
    expectPoint(path.segments.at(0)->point, 7, 8);
    EXPECT_NE(path.segments.at(0), first);
    EXPECT_EQ(first->refCount, 1); // removed and released
    first->release();
}

TEST(PathCommands, MoveToOnALongerContourDoesNothing)
{
    zgPath path;
    path.moveTo(0, 0);
    path.lineTo(1, 0);
    path.moveTo(5, 5);
    ASSERT_EQ(path.segments.size(), 2);
    expectPoint(path.segments.at(0)->point, 0, 0);
    expectPoint(path.segments.at(1)->point, 1, 0);
}

TEST(PathCommands, LinesAddPlainSegments)
{
    zgPath path;
    path.lineTo(1, 2); // no test of what came before
    path.lineToPt(zgPoint(3, 4));
    path.lineBy(zgPoint(10, -1));
    ASSERT_EQ(path.segments.size(), 3);
    expectPoint(path.segments.at(2)->point, 13, 3);
    EXPECT_FALSE(path.hasHandles());
}

TEST(PathCommands, RelativeCommandsOnAnEmptyContourDoNothing)
{
    zgPath path;
    path.lineBy(zgPoint(1, 1));
    path.cubicCurveTo(zgPoint(1, 1), zgPoint(2, 2), zgPoint(3, 3));
    path.cubicCurveBy(zgPoint(1, 1), zgPoint(2, 2), zgPoint(3, 3));
    path.quadraticCurveTo(zgPoint(1, 1), zgPoint(2, 2));
    path.quadraticCurveBy(zgPoint(1, 1), zgPoint(2, 2));
    path.curveTo(zgPoint(1, 1), zgPoint(2, 2), 0.5);
    path.curveBy(zgPoint(1, 1), zgPoint(2, 2), 0.5);
    path.arcTo(zgPoint(1, 1), zgSize(1, 1), 0, true, false);
    path.arcBy(zgPoint(1, 1), zgSize(1, 1), 0, true, false);
    EXPECT_TRUE(path.isEmpty());
}

TEST(PathCommands, CubicCurveToSetsBothInnerHandles)
{
    zgPath path;
    path.moveTo(0, 0);
    path.cubicCurveTo(zgPoint(1, 2), zgPoint(8, 9), zgPoint(10, 10));
    ASSERT_EQ(path.segments.size(), 2);
    expectPoint(path.segments.at(0)->handleOut, 1, 2);
    expectPoint(path.segments.at(1)->point, 10, 10);
    expectPoint(path.segments.at(1)->handleIn, -2, -1);
    EXPECT_TRUE(path.segments.at(1)->handleOut.isZero());
}

TEST(PathCommands, CubicCurveByIsRelativeToTheLastPoint)
{
    zgPath path;
    path.moveTo(5, 5);
    path.cubicCurveBy(zgPoint(1, 2), zgPoint(8, 9), zgPoint(10, 10));
    EXPECT_EQ(valuesOf(path, 0), (QVector<double>{5, 5, 6, 7, 13, 14, 15, 15}));
}

TEST(PathCommands, QuadraticCurveToPlacesControlsAtThirds)
{
    zgPath path;
    path.moveTo(0, 0);
    path.quadraticCurveTo(zgPoint(3, 6), zgPoint(6, 0));
    expectPoint(path.segments.at(0)->handleOut, 2, 4, 1e-12);
    expectPoint(path.segments.at(1)->handleIn, -2, 4, 1e-12);
    // The quadratic's midpoint: a quarter of each end and half the handle.
    expectPoint(zgCurve::getPoint(valuesOf(path, 0), 0.5), 3, 3, 1e-12);
}

TEST(PathCommands, QuadraticCurveByIsRelative)
{
    zgPath path;
    path.moveTo(1, 1);
    path.quadraticCurveBy(zgPoint(3, 6), zgPoint(6, 0));
    expectPoint(path.segments.at(1)->point, 7, 1);
    expectPoint(path.segments.at(0)->handleOut, 2, 4, 1e-12);
}

TEST(PathCommands, CurveToPassesThroughThePointAtT)
{
    for (double t : {0.5, 0.25, 0.8}) {
        zgPath path;
        path.moveTo(0, 0);
        path.curveTo(zgPoint(5, 5), zgPoint(10, 0), t);
        ASSERT_EQ(path.segments.size(), 2);
        expectPoint(path.segments.at(1)->point, 10, 0);
        expectPoint(zgCurve::getPoint(valuesOf(path, 0), t), 5, 5, 1e-9);
    }
}

TEST(PathCommands, CurveToAtTheEndsDrawsNothing)
{
    zgPath path;
    path.moveTo(0, 0);
    path.curveTo(zgPoint(5, 5), zgPoint(10, 0), 0.0);
    path.curveTo(zgPoint(5, 5), zgPoint(10, 0), 1.0);
    path.curveTo(zgPoint(0, 0), zgPoint(10, 0), 0.0); // 0 / 0: a NaN handle
    ASSERT_EQ(path.segments.size(), 1);
    EXPECT_TRUE(path.segments.at(0)->handleOut.isZero());
}

TEST(PathCommands, CurveByIsRelative)
{
    zgPath path;
    path.moveTo(10, 10);
    path.curveBy(zgPoint(5, 5), zgPoint(10, 0), 0.5);
    expectPoint(path.segments.at(1)->point, 20, 10);
    expectPoint(zgCurve::getPoint(valuesOf(path, 0), 0.5), 15, 15, 1e-9);
}

TEST(PathCommands, ArcWithAZeroRadiusIsAPlainSegment)
{
    zgPath path;
    path.moveTo(0, 0);
    path.arcTo(zgPoint(10, 0), zgSize(0, 5), 0, true, false);
    path.arcTo(zgPoint(20, 0), zgSize(5, 1e-12), 0, true, false); // zero within 1e-12
    ASSERT_EQ(path.segments.size(), 3);
    expectPoint(path.segments.at(1)->point, 10, 0);
    expectPoint(path.segments.at(2)->point, 20, 0);
    EXPECT_FALSE(path.hasHandles());
}

TEST(PathCommands, ArcWithATinyButNonZeroRadiusIsAnArc)
{
    zgPath path;
    path.moveTo(0, 0);
    path.arcTo(zgPoint(10, 0), zgSize(5, 2e-12), 0, true, false);
    EXPECT_GT(path.segments.size(), 2);
    EXPECT_TRUE(path.hasHandles());
    expectPoint(path.segments.last()->point, 10, 0);
}

// The arc on the unit circle from (1, 0) to (-1, 0): the ellipse's frame is
// the identity, so the points lie on the circle through the point beside the
// chord's middle.
TEST(PathCommands, ArcOnAnIdentityFrameIsASemicircleOfPlainQuotientHandles)
{
    zgPath path;
    path.moveTo(1, 0);
    path.arcTo(zgPoint(-1, 0), zgSize(1, 1), 0, true, false);
    ASSERT_EQ(path.segments.size(), 3); // 180 degrees in two pieces
    const zgSegment *middle = path.segments.at(1);
    EXPECT_NEAR(middle->point.getLength(), 1.0, 1e-9);
    EXPECT_NEAR(middle->point.x, 0.0, 1e-9);
    expectPoint(path.segments.at(2)->point, -1, 0, 0.0); // exactly the target
    // sin(h) / (1 + cos(h)) = tan(22.5 degrees) for h = 45 degrees: the plain
    // quotient, without the factor of 4/3.
    const double z = std::tan(M_PI / 8.0);
    EXPECT_NEAR(path.segments.at(0)->handleOut.getLength(), z, 1e-9);
    EXPECT_NEAR(middle->handleIn.getLength(), z, 1e-9);
    EXPECT_NEAR(middle->handleOut.getLength(), z, 1e-9);
    EXPECT_NEAR(path.segments.at(2)->handleIn.getLength(), z, 1e-9);
    EXPECT_TRUE(path.segments.at(2)->handleOut.isZero());
    // Tangent handles: at right angles to the radius.
    EXPECT_NEAR(middle->handleOut.dot(middle->point), 0.0, 1e-9);
}

// From (0, 0) to (4, 0) with radius 2: the frame maps a vector v to
// (2, 0) + 2 v, and it is applied to vectors taken from the centre of the
// circle through the chord's ends, which doubles the bulge.
TEST(PathCommands, ArcOnAScaledFrameMapsVectorsFromTheCircleCentre)
{
    zgPath path;
    path.moveTo(0, 0);
    path.arcTo(zgPoint(4, 0), zgSize(2, 2), 0, true, false);
    ASSERT_EQ(path.segments.size(), 3);
    const zgSegment *middle = path.segments.at(1);
    EXPECT_NEAR(middle->point.x, 2.0, 1e-9);
    EXPECT_NEAR(qAbs(middle->point.y), 4.0, 1e-9);
    const double z = std::tan(M_PI / 8.0);
    EXPECT_NEAR(path.segments.at(0)->handleOut.getLength(), 4.0 * z, 1e-9);
    const zgSegment *last = path.segments.at(2);
    expectPoint(last->point, 4, 0, 0.0);
    EXPECT_NEAR(last->handleIn.x, 2.0, 1e-9);
    EXPECT_NEAR(qAbs(last->handleIn.y), 4.0 * z, 1e-9);
}

// Radii too small for the chord are grown to fit it exactly, which leaves
// the root under the centre formula at zero give or take rounding; here it
// comes out at about -1.1e-16 and is taken as 0 rather than giving a NaN
// centre and a NaN frame.
TEST(PathCommands, ArcWithGrownRadiiSnapsTheCentreRootToZero)
{
    zgPath path;
    path.moveTo(0, 0);
    path.arcTo(zgPoint(0.37, 1.45), zgSize(0.5, 0.5), 0, true, false);
    ASSERT_EQ(path.segments.size(), 3);
    for (const zgSegment *segment : path.segments) {
        EXPECT_FALSE(segment->point.isNaN());
        EXPECT_FALSE(segment->handleIn.isNaN());
        EXPECT_FALSE(segment->handleOut.isNaN());
    }
    expectPoint(path.segments.at(2)->point, 0.37, 1.45, 0.0);
}

TEST(PathCommands, ArcByIsRelative)
{
    zgPath relative;
    relative.moveTo(1, 0);
    relative.arcBy(zgPoint(-2, 0), zgSize(1, 1), 0, true, false);
    zgPath absolute;
    absolute.moveTo(1, 0);
    absolute.arcTo(zgPoint(-1, 0), zgSize(1, 1), 0, true, false);
    EXPECT_TRUE(relative.equals(&absolute));
}

TEST(PathCommands, ArcToTheCurrentPointIsAPlainSegment)
{
    zgPath path;
    path.moveTo(3, 3);
    path.arcTo(zgPoint(3, 3), zgSize(2, 2), 0, true, false);
    ASSERT_EQ(path.segments.size(), 2);
    expectPoint(path.segments.at(1)->point, 3, 3);
    EXPECT_FALSE(path.hasHandles());
}

TEST(PathCommands, ArcToANaNPointAddsNothing)
{
    zgPath path;
    path.moveTo(0, 0);
    path.arcTo(zgPoint(qQNaN(), 0), zgSize(2, 2), 30, false, true);
    EXPECT_EQ(path.segments.size(), 1);
}

TEST(PathCommands, ArcTo2StartsAnEmptyContourAtTheArc)
{
    const zgRect rect(0, 0, 10, 10);
    QVector<zgPoint> expected;
    const zgPoint start = zgBezier::arcToBezier(rect, -30.0, -90.0, expected);
    ASSERT_EQ(expected.size() % 3, 0);
    zgPath path;
    path.arcTo2(rect, 30.0, 90.0);
    ASSERT_EQ(path.segments.size(), 1 + expected.size() / 3);
    expectPoint(path.segments.at(0)->point, start.x, start.y);
    for (int i = 0; i < expected.size() / 3; ++i) {
        const QVector<double> values = valuesOf(path, i);
        EXPECT_NEAR(values.at(2), expected.at(3 * i).x, 1e-12);
        EXPECT_NEAR(values.at(5), expected.at(3 * i + 1).y, 1e-12);
        EXPECT_NEAR(values.at(6), expected.at(3 * i + 2).x, 1e-12);
    }
}

TEST(PathCommands, ArcTo2JoinsAStartWithinATenth)
{
    const zgRect rect(0, 0, 10, 10);
    QVector<zgPoint> pieces;
    const zgPoint start = zgBezier::arcToBezier(rect, 0.0, -90.0, pieces);
    const int added = pieces.size() / 3;

    zgPath near;
    near.moveToPt(start.add(zgPoint(0.0999, 0)));
    near.arcTo2(rect, 0.0, 90.0);
    EXPECT_EQ(near.segments.size(), 1 + added); // no segment for the start

    zgPath far;
    far.moveToPt(start.add(zgPoint(0.1001, 0)));
    far.arcTo2(rect, 0.0, 90.0);
    ASSERT_EQ(far.segments.size(), 2 + added);
    expectPoint(far.segments.at(1)->point, start.x, start.y);
}

TEST(PathCommands, ArcTo2OnAnEmptyRectangleDoesNothing)
{
    zgPath path;
    path.moveTo(1, 1);
    path.arcTo2(zgRect(0, 0, 10, 1e-13), 0.0, 90.0);
    path.arcTo2(zgRect(0, 0, 0, 10), 0.0, 90.0);
    EXPECT_EQ(path.segments.size(), 1);
}

TEST(PathCommands, EllipseOnAnEmptyContour)
{
    const zgRect rect(0, 0, 20, 10);
    QVector<zgPoint> expected;
    const zgPoint start = zgBezier::arcToBezier(rect, 0.0, -360.0, expected);
    ASSERT_EQ(expected.size(), 12);
    zgPath path;
    path.ellipse(rect);
    ASSERT_EQ(path.segments.size(), 5);
    EXPECT_FALSE(path.closed);
    expectPoint(path.segments.at(0)->point, start.x, start.y);
    for (int i = 0; i < 4; ++i)
        expectPoint(path.segments.at(i + 1)->point, expected.at(3 * i + 2).x,
                    expected.at(3 * i + 2).y);
    expectPoint(path.segments.at(4)->point, start.x, start.y, 1e-9);
}

TEST(PathCommands, EllipseDropsALoneSegmentWithoutReleasingIt)
{
    zgPath path;
    path.moveTo(-50, -50);
    zgSegment *lone = path.segments.at(0);
    path.ellipse(zgRect(0, 0, 20, 10));
    ASSERT_EQ(path.segments.size(), 5);
    EXPECT_FALSE(path.segments.contains(lone));
    EXPECT_EQ(lone->refCount, 1); // still the contour's reference
    lone->release();              // so the test gives it back
}

TEST(PathCommands, EllipseAfterTwoSegmentsAppendsItsCurves)
{
    zgPath path;
    path.moveTo(-50, -50);
    path.lineTo(-40, -50);
    path.ellipse(zgRect(0, 0, 20, 10));
    ASSERT_EQ(path.segments.size(), 6);
    expectPoint(path.segments.at(1)->point, -40, -50); // no segment for the start
}

TEST(PathCommands, EllipseOnAnEmptyRectangleDoesNothing)
{
    zgPath path;
    path.moveTo(1, 1);
    path.ellipse(zgRect(0, 0, 1e-13, 10));
    ASSERT_EQ(path.segments.size(), 1);
}

TEST(PathCommands, ClosePathMergesExactlyCoincidentEndsAtZeroTolerance)
{
    zgPath path;
    path.moveTo(0, 0);
    path.cubicCurveTo(zgPoint(5, -5), zgPoint(10, -5), zgPoint(10, 0));
    path.cubicCurveTo(zgPoint(10, 10), zgPoint(3, 4), zgPoint(0, 0));
    path.getCurves();
    path.closePath(0);
    EXPECT_TRUE(path.closed);
    ASSERT_EQ(path.segments.size(), 2);
    expectPoint(path.segments.at(0)->handleIn, 3, 4); // the last one's handle
    ASSERT_EQ(path.curves.size(), 2);
    EXPECT_EQ(path.curves.at(1)->segment2(), path.segments.at(0));
    EXPECT_EQ(path.segments.at(0)->refCount, 3);
}

TEST(PathCommands, ClosePathToleranceIsInclusive)
{
    zgPath inside;
    inside.moveTo(0, 0);
    inside.lineTo(10, 0);
    inside.lineTo(0, 0.5);
    inside.closePath(0.5);
    EXPECT_EQ(inside.segments.size(), 2);

    zgPath outside;
    outside.moveTo(0, 0);
    outside.lineTo(10, 0);
    outside.lineTo(0, 0.5);
    outside.closePath(0.4999);
    EXPECT_TRUE(outside.closed);
    EXPECT_EQ(outside.segments.size(), 3);
}

TEST(PathCommands, ClosePathOnOneOrNoSegment)
{
    zgPath one;
    one.moveTo(1, 1);
    one.closePath(10);
    EXPECT_TRUE(one.closed);
    EXPECT_EQ(one.segments.size(), 1);
    zgPath none;
    none.closePath(10);
    EXPECT_TRUE(none.closed);
    EXPECT_TRUE(none.isEmpty());
}

} // namespace
