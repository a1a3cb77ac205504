// zgRect: construction, sides, the mutating and the pure members, the strict
// and the inclusive relations, and the near-side rule.
#include <zgraphics/primitives.h>

#include <QtCore/QtNumeric>

#include <gtest/gtest.h>

namespace {

void expectRect(const zgRect &r, double x, double y, double width, double height)
{
    EXPECT_DOUBLE_EQ(r.x, x);
    EXPECT_DOUBLE_EQ(r.y, y);
    EXPECT_DOUBLE_EQ(r.width, width);
    EXPECT_DOUBLE_EQ(r.height, height);
}

TEST(Rect, ConstructorsAndSides)
{
    expectRect(zgRect(), 0.0, 0.0, 0.0, 0.0);
    const zgRect r(1.0, 2.0, -3.0, 4.0);
    expectRect(r, 1.0, 2.0, -3.0, 4.0); // negative extent kept
    EXPECT_DOUBLE_EQ(r.left(), 1.0);
    EXPECT_DOUBLE_EQ(r.top(), 2.0);
    EXPECT_DOUBLE_EQ(r.right(), -2.0);
    EXPECT_DOUBLE_EQ(r.bottom(), 6.0);
}

TEST(Rect, TwoPointConstructorNormalises)
{
    expectRect(zgRect(zgPoint(5.0, -1.0), zgPoint(2.0, 3.0)), 2.0, -1.0, 3.0, 4.0);
    expectRect(zgRect(zgPoint(2.0, 3.0), zgPoint(5.0, -1.0)), 2.0, -1.0, 3.0, 4.0);
}

TEST(Rect, CornersCentreAndSize)
{
    const zgRect r(1.0, 2.0, 4.0, 6.0);
    EXPECT_EQ(r.topLeft(), zgPoint(1.0, 2.0));
    EXPECT_EQ(r.topRight(), zgPoint(5.0, 2.0));
    EXPECT_EQ(r.bottomLeft(), zgPoint(1.0, 8.0));
    EXPECT_EQ(r.bottomRight(), zgPoint(5.0, 8.0));
    EXPECT_EQ(r.center(), zgPoint(3.0, 5.0));
    EXPECT_EQ(r.size(), zgSize(4.0, 6.0));
}

TEST(Rect, SetResetTranslate)
{
    zgRect r;
    r.set(1.0, 2.0, 3.0, 4.0);
    expectRect(r, 1.0, 2.0, 3.0, 4.0);
    r.translate(-1.5, 0.5);
    expectRect(r, -0.5, 2.5, 3.0, 4.0);
    r.reset();
    expectRect(r, 0.0, 0.0, 0.0, 0.0);
}

TEST(Rect, AdjustMovesBothCorners)
{
    zgRect r(0.0, 0.0, 10.0, 10.0);
    r.adjust(1.0, 2.0, -3.0, 4.0);
    EXPECT_DOUBLE_EQ(r.left(), 1.0);
    EXPECT_DOUBLE_EQ(r.top(), 2.0);
    EXPECT_DOUBLE_EQ(r.right(), 7.0);
    EXPECT_DOUBLE_EQ(r.bottom(), 14.0);
}

TEST(Rect, ExpandGrowsHalfOnEachSide)
{
    zgRect r(0.0, 0.0, 10.0, 10.0);
    r.expand(4.0, -2.0);
    expectRect(r, -2.0, 1.0, 14.0, 8.0);
}

TEST(Rect, SetCenterLeavesTheObjectAlone)
{
    const zgRect r(0.0, 0.0, 4.0, 2.0);
    const zgRect moved = r.setCenter(zgPoint(10.0, 10.0));
    expectRect(moved, 8.0, 9.0, 4.0, 2.0);
    expectRect(r, 0.0, 0.0, 4.0, 2.0);
}

TEST(Rect, IncludeCountsAnEmptyRectanglesCorner)
{
    const zgRect corner(100.0, 100.0, 0.0, 0.0);
    expectRect(corner.include(zgPoint(0.0, 0.0)), 0.0, 0.0, 100.0, 100.0);
    const zgRect r(0.0, 0.0, 1.0, 1.0);
    expectRect(r.include(zgPoint(100.0, 100.0)), 0.0, 0.0, 100.0, 100.0);
    expectRect(r.include(zgPoint(0.5, 0.5)), 0.0, 0.0, 1.0, 1.0);
    expectRect(r.include(zgPoint(-2.0, 0.5)), -2.0, 0.0, 3.0, 1.0);
}

TEST(Rect, IntersectMayGiveNegativeExtents)
{
    const zgRect a(0.0, 0.0, 4.0, 4.0);
    expectRect(a.intersect(zgRect(2.0, 1.0, 5.0, 2.0)), 2.0, 1.0, 2.0, 2.0);
    expectRect(a.intersect(zgRect(6.0, 7.0, 1.0, 1.0)), 6.0, 7.0, -2.0, -3.0);
}

TEST(Rect, UniteIgnoresAbsentRectangles)
{
    const zgRect corner(100.0, 100.0, 0.0, 0.0);
    const zgRect unit(0.0, 0.0, 1.0, 1.0);
    expectRect(corner.unite(unit), 0.0, 0.0, 1.0, 1.0);
    expectRect(unit.unite(corner), 0.0, 0.0, 1.0, 1.0);
    // Zero width alone, or a negative height alone, is enough to be absent.
    expectRect(unit.unite(zgRect(50.0, 50.0, 0.0, 10.0)), 0.0, 0.0, 1.0, 1.0);
    expectRect(unit.unite(zgRect(50.0, 50.0, 10.0, -1.0)), 0.0, 0.0, 1.0, 1.0);
    // A tiny positive extent is present.
    expectRect(unit.unite(zgRect(5.0, 5.0, 1e-13, 1e-13)), 0.0, 0.0, 5.0 + 1e-13, 5.0 + 1e-13);
    expectRect(unit.unite(zgRect(-1.0, 2.0, 1.0, 1.0)), -1.0, 0.0, 2.0, 3.0);
}

TEST(Rect, BoundaryPointIsOutsideButRectanglesTouch)
{
    const zgRect r(1.0, 1.0, 2.0, 2.0);
    const zgPoint corner(1.0, 1.0);
    EXPECT_FALSE(r.containsPt(corner));
    EXPECT_FALSE(corner.isInside(r));
    const zgRect cornerOnly(0.0, 0.0, 1.0, 1.0);
    EXPECT_TRUE(r.touches(cornerOnly));
    EXPECT_FALSE(r.intersects(cornerOnly));
    EXPECT_TRUE(cornerOnly.touches(r));
    EXPECT_FALSE(cornerOnly.intersects(r));
}

TEST(Rect, ContainsPtIsStrictOnEachSide)
{
    const zgRect r(0.0, 0.0, 2.0, 2.0);
    EXPECT_TRUE(r.containsPt(zgPoint(1.0, 1.0)));
    EXPECT_TRUE(r.containsPt(zgPoint(1e-300, 1.999999)));
    EXPECT_FALSE(r.containsPt(zgPoint(0.0, 1.0)));
    EXPECT_FALSE(r.containsPt(zgPoint(2.0, 1.0)));
    EXPECT_FALSE(r.containsPt(zgPoint(1.0, 0.0)));
    EXPECT_FALSE(r.containsPt(zgPoint(1.0, 2.0)));
}

TEST(Rect, ContainsRectIsInclusive)
{
    const zgRect r(0.0, 0.0, 2.0, 2.0);
    EXPECT_TRUE(r.containsRect(r));
    EXPECT_TRUE(r.containsRect(zgRect(0.0, 0.5, 2.0, 1.0)));
    EXPECT_FALSE(r.containsRect(zgRect(-1e-9, 0.0, 1.0, 1.0)));
    EXPECT_FALSE(r.containsRect(zgRect(1.0, 1.0, 1.0 + 1e-9, 1.0)));
    EXPECT_FALSE(r.containsRect(zgRect(1.0, 1.0, 1.0, 1.5)));
}

TEST(Rect, IntersectsIsStrictTouchesIsNot)
{
    const zgRect r(0.0, 0.0, 2.0, 2.0);
    const zgRect sharedEdge(2.0, 0.5, 1.0, 1.0);
    EXPECT_FALSE(r.intersects(sharedEdge));
    EXPECT_TRUE(r.touches(sharedEdge));
    const zgRect overlapping(1.999, 0.5, 1.0, 1.0);
    EXPECT_TRUE(r.intersects(overlapping));
    EXPECT_TRUE(r.touches(overlapping));
    const zgRect apart(2.001, 0.5, 1.0, 1.0);
    EXPECT_FALSE(r.intersects(apart));
    EXPECT_FALSE(r.touches(apart));
    const zgRect below(0.0, -1.0, 1.0, 1.0);
    EXPECT_FALSE(r.intersects(below));
    EXPECT_TRUE(r.touches(below));
}

TEST(Rect, IsEmptyBound)
{
    EXPECT_TRUE(zgRect(0.0, 0.0, 1e-13, 100.0).isEmpty());
    EXPECT_TRUE(zgRect(0.0, 0.0, 100.0, 1e-13).isEmpty());
    EXPECT_TRUE(zgRect(0.0, 0.0, -5.0, 5.0).isEmpty());
    EXPECT_FALSE(zgRect(0.0, 0.0, 1e-12, 1e-12).isEmpty());
}

TEST(Rect, Area)
{
    EXPECT_DOUBLE_EQ(zgRect(3.0, 4.0, 2.5, 4.0).getArea(), 10.0);
    EXPECT_DOUBLE_EQ(zgRect(0.0, 0.0, -2.0, 3.0).getArea(), -6.0);
}

TEST(Rect, EqualityWithinZeroTolerance)
{
    const zgRect r(1.0, 2.0, 3.0, 4.0);
    EXPECT_TRUE(r == zgRect(1.0 + 1e-13, 2.0, 3.0, 4.0 - 1e-13));
    EXPECT_FALSE(r == zgRect(1.0, 2.0 + 3e-12, 3.0, 4.0));
    EXPECT_FALSE(r == zgRect(1.0, 2.0, 3.0 - 3e-12, 4.0));
    EXPECT_FALSE(r == zgRect(1.0, 2.0, 3.0, 4.0 + 3e-12));
    EXPECT_FALSE(r == zgRect(1.0 - 3e-12, 2.0, 3.0, 4.0));
}

TEST(Rect, NearSideCentreZone)
{
    const zgRect r(0.0, 0.0, 10.0, 10.0);
    EXPECT_EQ(r.nearSide(QPointF(5.0, 5.0)), 0);
    EXPECT_EQ(r.nearSide(QPointF(7.99, 2.01)), 0);
    EXPECT_EQ(r.nearSide(QPointF(8.0, 5.0)), 4);
    EXPECT_EQ(r.nearSide(QPointF(2.0, 5.0)), 3);
    EXPECT_EQ(r.nearSide(QPointF(5.0, 8.0)), 2);
    EXPECT_EQ(r.nearSide(QPointF(5.0, 2.0)), 1);
}

TEST(Rect, NearSideMeasuresToInfiniteEdgeLines)
{
    const zgRect r(0.0, 0.0, 10.0, 10.0);
    // Far to the right of the rectangle, yet nearest the line of the top edge.
    EXPECT_EQ(r.nearSide(QPointF(50.0, 1.0)), 1);
    EXPECT_EQ(r.nearSide(QPointF(50.0, 9.5)), 2);
    EXPECT_EQ(r.nearSide(QPointF(-0.5, 40.0)), 3);
}

TEST(Rect, NearSideTiesGoInOrder)
{
    const zgRect r(0.0, 0.0, 100.0, 100.0);
    EXPECT_EQ(r.nearSide(QPointF(10.0, 10.0)), 1);  // top ties with left
    EXPECT_EQ(r.nearSide(QPointF(90.0, 90.0)), 2);  // bottom ties with right
    EXPECT_EQ(r.nearSide(QPointF(10.0, 50.0)), 3);
    // Within 0.0001 of the minimum still a tie, won by the top.
    EXPECT_EQ(r.nearSide(QPointF(10.0, 10.00009)), 1);
    // Beyond that the left edge is nearer.
    EXPECT_EQ(r.nearSide(QPointF(10.0, 10.0002)), 3);
    EXPECT_EQ(r.nearSide(QPointF(90.0, 89.9998)), 4);
}

TEST(Rect, NearSideOfNaNDoesNotCrash)
{
    const zgRect r(0.0, 0.0, 10.0, 10.0);
    EXPECT_EQ(r.nearSide(QPointF(qQNaN(), qQNaN())), 0);
}

TEST(Rect, ToString)
{
    EXPECT_EQ(zgRect(1.0, -2.5, 3.0, 0.25).toString(),
              QStringLiteral("x: 1, y: -2.5, width: 3, height: 0.25"));
    EXPECT_EQ(zgRect(1.0 / 3, 2e-7, 1234567, 100).toString(),
              QStringLiteral("x: 0.333333, y: 2e-07, width: 1.23457e+06, height: 100"));
}

TEST(Rect, IntersectsIsStrictOnEachSideAlone)
{
    const zgRect r(0, 0, 2, 2);
    EXPECT_FALSE(r.intersects(zgRect(-1, 0.5, 1, 1))); // touches the left side only
    EXPECT_FALSE(r.intersects(zgRect(0.5, 2, 1, 1)));  // touches the bottom side only
    EXPECT_FALSE(r.intersects(zgRect(2, 0.5, 1, 1)));  // touches the right side only
    EXPECT_FALSE(r.intersects(zgRect(0.5, -1, 1, 1))); // touches the top side only
    EXPECT_TRUE(r.intersects(zgRect(0.5, -0.5, 1, 1)));
}

TEST(Rect, ContainsRectChecksTheTopSide)
{
    const zgRect r(0, 0, 2, 2);
    EXPECT_FALSE(r.containsRect(zgRect(0.5, -1e-9, 1, 1)));
    EXPECT_TRUE(r.containsRect(zgRect(0.5, 0, 1, 1)));
}

} // namespace
