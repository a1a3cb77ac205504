// zgLine: construction, parallel lines, side and signed distance, and the
// three intersection rules with their parameter bounds.
#include <zgraphics/primitives.h>

#include <QtCore/QtNumeric>

#include <gtest/gtest.h>

namespace {

void expectPoint(const zgPoint &p, double x, double y, double tolerance = 1e-15)
{
    EXPECT_NEAR(p.x, x, tolerance);
    EXPECT_NEAR(p.y, y, tolerance);
}

TEST(Line, ConstructorsStorePointAndVector)
{
    const zgLine fromPoints(zgPoint(1.0, 2.0), zgPoint(4.0, 6.0));
    expectPoint(fromPoints.getPoint(), 1.0, 2.0);
    expectPoint(fromPoints.getVector(), 3.0, 4.0);
    EXPECT_DOUBLE_EQ(fromPoints.getLength(), 5.0);

    const zgLine fromVector(zgPoint(1.0, 2.0), zgPoint(4.0, 6.0), true);
    expectPoint(fromVector.vector, 4.0, 6.0);

    const zgLine fromCoordinates(1.0, 2.0, 4.0, 6.0);
    expectPoint(fromCoordinates.point, 1.0, 2.0);
    expectPoint(fromCoordinates.vector, 3.0, 4.0);
    const zgLine fromCoordinateVector(1.0, 2.0, 4.0, 6.0, true);
    expectPoint(fromCoordinateVector.vector, 4.0, 6.0);

    const zgLine empty;
    expectPoint(empty.point, 0.0, 0.0);
    expectPoint(empty.vector, 0.0, 0.0);
}

TEST(Line, CollineIsParallelAtDistance)
{
    const zgLine horizontal(0.0, 0.0, 4.0, 0.0);
    const zgLine below = horizontal.getColline(2.0);
    expectPoint(below.point, 0.0, -2.0);
    expectPoint(below.vector, 4.0, 0.0);

    const zgLine slanted(1.0, 2.0, 4.0, 6.0);
    const zgLine shifted = slanted.getColline(2.5);
    // Unit vector (0.6, 0.8): offset (0.8, -0.6) times 2.5.
    expectPoint(shifted.point, 3.0, 0.5, 1e-14);
    expectPoint(shifted.vector, 3.0, 4.0, 1e-14);
    EXPECT_NEAR(zgLine::getSignedDistance(1.0, 2.0, 3.0, 4.0, shifted.point.x, shifted.point.y,
                                          true),
                2.5, 1e-14);

    const zgLine opposite = slanted.getColline(-1.0);
    expectPoint(opposite.point, 0.2, 2.6, 1e-14);
}

TEST(Line, CollineOfZeroLengthLineStaysPut)
{
    const zgLine dot(3.0, 4.0, 3.0, 4.0);
    const zgLine colline = dot.getColline(10.0);
    expectPoint(colline.point, 3.0, 4.0);
    expectPoint(colline.vector, 0.0, 0.0);
}

TEST(Line, SideBeyondTheEndsOfAFiniteLine)
{
    const zgLine line(0.0, 0.0, 2.0, 0.0);
    EXPECT_EQ(line.getSide(zgPoint(3.0, 0.0), false), 1);
    EXPECT_EQ(line.getSide(zgPoint(-1.0, 0.0), false), -1);
    EXPECT_EQ(line.getSide(zgPoint(3.0, 0.0), true), 0);
    EXPECT_EQ(line.getSide(zgPoint(-1.0, 0.0), true), 0);
}

TEST(Line, SideOnAndOffTheLine)
{
    const zgLine line(0.0, 0.0, 2.0, 0.0);
    EXPECT_EQ(line.getSide(zgPoint(0.0, 0.0), false), 0);
    EXPECT_EQ(line.getSide(zgPoint(1.0, 0.0), false), 0);
    EXPECT_EQ(line.getSide(zgPoint(2.0, 0.0), false), 0);
    // The sign of dx*vy - dy*vx.
    EXPECT_EQ(line.getSide(zgPoint(1.0, 1.0), false), -1);
    EXPECT_EQ(line.getSide(zgPoint(1.0, -1.0), false), 1);
    EXPECT_EQ(line.getSide(zgPoint(5.0, 1e-300), true), -1);
    // Any non-zero cross product decides, however small.
    EXPECT_EQ(line.getSide(zgPoint(5.0, -1e-300), false), 1);
}

TEST(Line, SideStaticFormConvertsEndPoint)
{
    // As an end point (3, 1) gives the vector (2, 0): the point lies on it.
    EXPECT_EQ(zgLine::getSide(1.0, 1.0, 3.0, 1.0, 2.5, 1.0, false, false), 0);
    // As a vector (3, 1) it passes below the point.
    EXPECT_EQ(zgLine::getSide(1.0, 1.0, 3.0, 1.0, 2.5, 1.0, true, false), 1);
    EXPECT_EQ(zgLine::getSide(1.0, 1.0, 3.0, 1.0, 3.5, 1.0, false, false), 1);
    EXPECT_EQ(zgLine::getSide(1.0, 1.0, 3.0, 1.0, 0.5, 1.0, false, false), -1);
}

TEST(Line, SideOfZeroLengthLineIsZero)
{
    EXPECT_EQ(zgLine::getSide(1.0, 1.0, 0.0, 0.0, 5.0, 5.0, true, false), 0);
    EXPECT_EQ(zgLine::getSide(1.0, 1.0, 0.0, 0.0, 5.0, 5.0, true, true), 0);
}

TEST(Line, SignedDistanceBranches)
{
    // Vertical lines.
    EXPECT_EQ(zgLine::getSignedDistance(1.0, 1.0, 0.0, 2.0, 4.0, 0.0, true), 3.0);
    EXPECT_EQ(zgLine::getSignedDistance(1.0, 1.0, 0.0, -2.0, 4.0, 0.0, true), -3.0);
    // Horizontal lines.
    EXPECT_EQ(zgLine::getSignedDistance(1.0, 1.0, 2.0, 0.0, 4.0, 5.0, true), -4.0);
    EXPECT_EQ(zgLine::getSignedDistance(1.0, 1.0, -2.0, 0.0, 4.0, 5.0, true), 4.0);
    // General direction.
    EXPECT_DOUBLE_EQ(zgLine::getSignedDistance(0.0, 0.0, 3.0, 4.0, 4.0, -3.0, true), 5.0);
    EXPECT_DOUBLE_EQ(zgLine::getSignedDistance(0.0, 0.0, 3.0, 4.0, -4.0, 3.0, true), -5.0);
    // End point form.
    EXPECT_EQ(zgLine::getSignedDistance(1.0, 1.0, 1.0, 5.0, 4.0, 0.0, false), 3.0);
}

TEST(Line, SignedDistanceOfZeroLengthLineIsPxMinusX)
{
    EXPECT_EQ(zgLine::getSignedDistance(1.0, 1.0, 0.0, 0.0, 4.0, 9.0, true), -3.0);
    EXPECT_EQ(zgLine::getSignedDistance(1.0, 1.0, 1.0, 1.0, -4.0, 9.0, false), 5.0);
}

TEST(Line, DistanceIsAbsolute)
{
    const zgLine line(0.0, 0.0, 3.0, 4.0);
    EXPECT_DOUBLE_EQ(line.getDistance(zgPoint(-4.0, 3.0)), 5.0);
    EXPECT_DOUBLE_EQ(line.getDistance(zgPoint(4.0, -3.0)), 5.0);
    // The infinite line: a point past the end measures to its extension.
    EXPECT_NEAR(line.getDistance(zgPoint(6.0, 8.0)), 0.0, 1e-15);
}

TEST(Line, CollinearAndOrthogonalOfVectors)
{
    const zgLine line(0.0, 0.0, 2.0, 1.0);
    EXPECT_TRUE(line.isCollinear(zgLine(5.0, 5.0, 1.0, 3.0)));
    EXPECT_FALSE(line.isCollinear(zgLine(5.0, 5.0, 1.0, 3.0 + 1e-3)));
    EXPECT_TRUE(line.isOrthogonal(zgLine(0.0, 0.0, -1.0, 2.0)));
    EXPECT_FALSE(line.isOrthogonal(zgLine(0.0, 0.0, -1.0, 2.001)));
}

TEST(Line, IntersectFiniteSegments)
{
    const zgPoint crossing = zgLine::intersect(0.0, 0.0, 4.0, 4.0, 0.0, 4.0, 4.0, 0.0, false, false);
    expectPoint(crossing, 2.0, 2.0);
    const zgLine first(0.0, 0.0, 4.0, 4.0);
    const zgLine second(0.0, 4.0, 4.0, 0.0);
    expectPoint(first.intersect(second, false), 2.0, 2.0);
}

TEST(Line, IntersectOfParallelLinesIsNaN)
{
    EXPECT_TRUE(zgLine::intersect(0.0, 0.0, 1.0, 0.0, 0.0, 1.0, 5.0, 0.0, true, true).isNaN());
    // cross = 1e-12 exactly still counts as parallel.
    EXPECT_TRUE(zgLine::intersect(0.0, 0.0, 1.0, 0.0, 0.5, -1.0, 0.0, 1e-12, true, true).isNaN());
    // Just above it the lines meet.
    const zgPoint nearlyParallel =
        zgLine::intersect(0.0, 0.0, 1.0, 0.0, 0.5, -1.0, 0.0, 2e-12, true, true);
    ASSERT_FALSE(nearlyParallel.isNaN());
    expectPoint(nearlyParallel, 0.5, 0.0, 1e-12);
    // A failure is a pair of NaNs.
    const zgPoint failed = zgLine::intersect(0.0, 0.0, 1.0, 0.0, 0.0, 1.0, 5.0, 0.0, true, false);
    EXPECT_TRUE(qIsNaN(failed.x));
    EXPECT_TRUE(qIsNaN(failed.y));
}

TEST(Line, IntersectClampsJustPastTheEnd)
{
    // The second line crosses x = 1 + 5e-13: u1 is just above 1.
    const zgPoint atEnd =
        zgLine::intersect(0.0, 0.0, 1.0, 0.0, 1.0 + 5e-13, -1.0, 0.0, 2.0, true, false);
    ASSERT_FALSE(atEnd.isNaN());
    EXPECT_EQ(atEnd.x, 1.0);
    EXPECT_EQ(atEnd.y, 0.0);
    // 2e-12 past the end is out of range.
    EXPECT_TRUE(
        zgLine::intersect(0.0, 0.0, 1.0, 0.0, 1.0 + 2e-12, -1.0, 0.0, 2.0, true, false).isNaN());
    // The same at the start.
    const zgPoint atStart =
        zgLine::intersect(0.0, 0.0, 1.0, 0.0, -5e-13, -1.0, 0.0, 2.0, true, false);
    ASSERT_FALSE(atStart.isNaN());
    EXPECT_EQ(atStart.x, 0.0);
    EXPECT_TRUE(zgLine::intersect(0.0, 0.0, 1.0, 0.0, -2e-12, -1.0, 0.0, 2.0, true, false).isNaN());
}

TEST(Line, IntersectNeedsBothParametersInRange)
{
    // Meets the first segment at u1 = 0.5 but the second only at u2 = 2.
    EXPECT_TRUE(zgLine::intersect(0.0, 0.0, 1.0, 0.0, 0.5, -1.0, 0.0, 0.5, true, false).isNaN());
    // Infinite: the unclamped crossing, here far beyond both segments.
    const zgPoint infinite =
        zgLine::intersect(0.0, 0.0, 1.0, 0.0, 3.0, -1.0, 0.0, 0.5, true, true);
    expectPoint(infinite, 3.0, 0.0);
}

TEST(Line, Intersect1ReportsParameters)
{
    double u1 = 42.0;
    double u2 = 42.0;
    const zgPoint crossing =
        zgLine::intersect1(u1, u2, 0.0, 0.0, 4.0, 0.0, 1.0, -1.0, 1.0, 3.0, false, false);
    expectPoint(crossing, 1.0, 0.0);
    EXPECT_DOUBLE_EQ(u1, 0.25);
    EXPECT_DOUBLE_EQ(u2, 0.25);
}

TEST(Line, Intersect1WritesRawParametersOnFailure)
{
    double u1 = 42.0;
    double u2 = 42.0;
    const zgPoint failed =
        zgLine::intersect1(u1, u2, 0.0, 0.0, 1.0, 0.0, 1.5, -1.0, 0.0, 4.0, true, false);
    EXPECT_TRUE(failed.isNaN());
    EXPECT_DOUBLE_EQ(u1, 1.5);
    EXPECT_DOUBLE_EQ(u2, 0.25);
}

TEST(Line, Intersect1ClampsU1OnSuccess)
{
    double u1 = 42.0;
    double u2 = 42.0;
    const zgPoint atEnd =
        zgLine::intersect1(u1, u2, 0.0, 0.0, 1.0, 0.0, 1.0 + 5e-13, -1.0, 0.0, 2.0, true, false);
    ASSERT_FALSE(atEnd.isNaN());
    EXPECT_EQ(u1, 1.0);
    EXPECT_DOUBLE_EQ(u2, 0.5);
}

TEST(Line, Intersect1InfiniteKeepsU1)
{
    double u1 = 42.0;
    double u2 = 42.0;
    const zgLine first(0.0, 0.0, 1.0, 0.0);
    const zgLine second(3.0, -1.0, 3.0, 1.0);
    const zgPoint crossing = first.intersect1(u1, u2, second, true);
    expectPoint(crossing, 3.0, 0.0);
    EXPECT_DOUBLE_EQ(u1, 3.0);
    EXPECT_DOUBLE_EQ(u2, 0.5);
}

TEST(Line, Intersect1LeavesOutputsForParallelLines)
{
    double u1 = 42.0;
    double u2 = -7.0;
    const zgLine first(0.0, 0.0, 1.0, 0.0);
    const zgLine second(0.0, 1.0, 3.0, 1.0);
    EXPECT_TRUE(first.intersect1(u1, u2, second, true).isNaN());
    EXPECT_EQ(u1, 42.0);
    EXPECT_EQ(u2, -7.0);
}

TEST(Line, Intersect2BothInfinite)
{
    // u1 = 3, u2 = 2: outside both segments.
    expectPoint(zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 3.0, -1.0, 0.0, 0.5, true, true, true),
                3.0, 0.0);
}

TEST(Line, Intersect2FirstInfiniteChecksSecond)
{
    // u2 = 2 is outside the finite second line.
    EXPECT_TRUE(
        zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 3.0, -1.0, 0.0, 0.5, true, true, false).isNaN());
    // u1 = 3 does not matter when the first line is infinite.
    expectPoint(zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 3.0, -1.0, 0.0, 2.0, true, true, false),
                3.0, 0.0);
    // The point comes from the second line, clamped to its end.
    const double shortBy = 5e-13;
    const zgPoint clamped = zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 3.0, -1.0, 0.0, 1.0 - shortBy,
                                               true, true, false);
    ASSERT_FALSE(clamped.isNaN());
    EXPECT_EQ(clamped.x, 3.0);
    EXPECT_NEAR(clamped.y, -shortBy, 1e-16);
}

TEST(Line, Intersect2SecondInfiniteChecksFirst)
{
    // u2 = -10 on the second line, which is infinite; u1 = 0.5.
    expectPoint(zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 0.5, 5.0, 0.0, 0.5, true, false, true),
                0.5, 0.0);
    // u1 = 3 fails.
    EXPECT_TRUE(
        zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 3.0, -1.0, 0.0, 2.0, true, false, true).isNaN());
    // Clamped on the first line.
    const zgPoint clamped =
        zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 1.0 + 5e-13, 5.0, 0.0, 1.0, true, false, true);
    ASSERT_FALSE(clamped.isNaN());
    EXPECT_EQ(clamped.x, 1.0);
}

TEST(Line, Intersect2NeitherInfinite)
{
    EXPECT_TRUE(
        zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 0.5, 5.0, 0.0, 0.5, true, false, false).isNaN());
    expectPoint(zgLine::intersect2(0.0, 0.0, 1.0, 0.0, 0.5, -1.0, 0.5, 1.0, false, false, false),
                0.5, 0.0);
    const zgLine first(0.0, 0.0, 1.0, 0.0);
    EXPECT_TRUE(first.intersect2(zgLine(0.5, 5.0, 0.5, 6.0), false, false).isNaN());
    expectPoint(first.intersect2(zgLine(0.5, 5.0, 0.5, 6.0), false, true), 0.5, 0.0);
    EXPECT_TRUE(first.intersect2(zgLine(0.0, 1.0, 1.0, 1.0), true, true).isNaN());
}

} // namespace
