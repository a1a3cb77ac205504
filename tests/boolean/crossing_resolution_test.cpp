// Crossing resolution: the interior point, the sort by corrected bounds
// area, the nesting fix under both fill rules, the self-crossing trace and
// overlap removal, and the reference counts of the install step.
#include "boolean/boolean_oracle.h"
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

QVector<zgPoint> pointsOf(const zgPath *path)
{
    QVector<zgPoint> points;
    for (const zgSegment *segment : path->segments)
        points.append(segment->point);
    return points;
}

double shoelace(const zgPath *path)
{
    double twice = 0.0;
    const int n = path->segments.size();
    for (int i = 0; i < n; ++i) {
        const zgPoint a = path->segments.at(i)->point;
        const zgPoint b = path->segments.at((i + 1) % n)->point;
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2.0;
}

// A closed straight contour with the given orientation flag (0: none),
// added to compound as it is: a flagged child is not turned.
zgPath *addFlagged(XPath &compound, const QVector<zgPoint> &points, uint32_t flag,
                   bool closed = true)
{
    zgPath *contour = new zgPath(&compound, closed);
    zgtest::addPoints(*contour, points);
    contour->addFlags(flag);
    compound.addChild(contour);
    return contour;
}

QVector<zgPoint> reversedPoints(QVector<zgPoint> points)
{
    std::reverse(points.begin(), points.end());
    return points;
}

} // namespace

// ---- getInteriorPoint ----------------------------------------------------------

TEST(InteriorPoint, CentreOfAConvexContour)
{
    zgPath square(nullptr, true);
    zgtest::addPoints(square, zgtest::squarePoints(10, 20, 40));
    EXPECT_EQ(square.getInteriorPoint(true), zgPoint(30, 40));
    EXPECT_EQ(square.getInteriorPoint(false), zgPoint(30, 40));
}

TEST(InteriorPoint, CrescentGivesTheMiddleOfTheFirstTwoCrossings)
{
    // A U open to the right: the centre (15, 15) lies in the gap; the line
    // y = 15 crosses the left side at 0 and the inner side at 10.
    zgPath shape(nullptr, true);
    zgtest::addPoints(shape, {zgPoint(0, 0), zgPoint(30, 0), zgPoint(30, 10), zgPoint(10, 10),
                              zgPoint(10, 20), zgPoint(30, 20), zgPoint(30, 30), zgPoint(0, 30)});
    EXPECT_EQ(shape.getInteriorPoint(true), zgPoint(5, 15));
}

TEST(InteriorPoint, CurvedCrescent)
{
    // Two arcs bulging right, the inner one reaching past the centre of the
    // bounds; the answer is checked against the crossings worked out here.
    zgPath moon(nullptr, true);
    moon.moveTo(0, 0);
    moon.cubicCurveTo(zgPoint(40, 0), zgPoint(40, 40), zgPoint(0, 40));
    moon.cubicCurveTo(zgPoint(30, 30), zgPoint(30, 10), zgPoint(0, 0));
    moon.closePath(1e-9);
    const zgPoint point = moon.getInteriorPoint(true);
    EXPECT_DOUBLE_EQ(point.y, 20.0);
    // At y = 20 (t = 0.5 on both arcs) the inner arc is at x = 22.5 and the
    // outer one at x = 30.
    EXPECT_NEAR(point.x, (22.5 + 30.0) / 2, 1e-9);
}

TEST(InteriorPoint, FlatContourGetsAUnitSide)
{
    // A closed horizontal line: the box gets height 1, its centre lies off
    // the line and no piece crosses y = 0.5, so the centre stays.
    zgPath flat(nullptr, true);
    zgtest::addPoints(flat, {zgPoint(0, 0), zgPoint(10, 0)});
    EXPECT_EQ(flat.getInteriorPoint(true), zgPoint(5, 0.5));

    // A closed vertical line: the centre (4.5, 5) is off it, and the line
    // y = 5 meets both of its pieces at x = 4, which becomes the point.
    zgPath upright(nullptr, true);
    zgtest::addPoints(upright, {zgPoint(4, 0), zgPoint(4, 10)});
    EXPECT_EQ(upright.getInteriorPoint(true), zgPoint(4, 5));
}

TEST(InteriorPoint, RingUnderBothRules)
{
    // A contour that runs around twice (winding 2 inside): under the
    // even-odd rule its centre is outside, so the ray decides.
    zgPath twice(nullptr, true);
    zgtest::addPoints(twice, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10),
                              zgPoint(0, 1), zgPoint(9, 1), zgPoint(9, 9), zgPoint(1, 9),
                              zgPoint(1, 0.5), zgPoint(0, 0.5)});
    const zgPoint nonZero = twice.getInteriorPoint(false);
    EXPECT_EQ(nonZero, zgPoint(5, 5));
    const zgPoint evenOdd = twice.getInteriorPoint(true);
    EXPECT_DOUBLE_EQ(evenOdd.y, 5.0);
    EXPECT_DOUBLE_EQ(evenOdd.x, 0.5); // between x = 0 and x = 1
}

TEST(InteriorPoint, EmptyContourGivesTheCentreOfNothing)
{
    zgPath empty(nullptr, true);
    const zgPoint point = empty.getInteriorPoint(true);
    EXPECT_EQ(point, empty.getBounds(zgBoundOpt(), zgStyle(), nullptr).center());
}

// ---- Nesting without crossings -------------------------------------------------

TEST(ResolveCrossings, OneSimpleContourStaysAsItIs)
{
    XPath compound;
    zgPath *only = addFlagged(compound, zgtest::squarePoints(0, 0, 10), 0);
    const uint32_t flags = only->flags;
    EXPECT_EQ(compound.resolveCrossings(true), &compound);
    ASSERT_EQ(compound.children.size(), 1);
    EXPECT_EQ(compound.children.first(), only);
    EXPECT_EQ(only->flags, flags);
    EXPECT_EQ(only->refCount, 1);
    EXPECT_EQ(pointsOf(only), zgtest::squarePoints(0, 0, 10));
}

TEST(ResolveCrossings, SortsByBoundsAreaLargestFirst)
{
    XPath compound;
    zgPath *small = addFlagged(compound, zgtest::squarePoints(200, 0, 10), 0x1);
    // An open line counts as 150 by 1.
    zgPath *line = addFlagged(compound, {zgPoint(0, 300), zgPoint(150, 300)}, 0, false);
    zgPath *large = addFlagged(compound, reversedPoints(zgtest::squarePoints(0, 0, 100)), 0x2);
    compound.resolveCrossings(true);
    ASSERT_EQ(compound.children.size(), 3);
    EXPECT_EQ(compound.children.at(0), large);
    EXPECT_EQ(compound.children.at(1), line);
    EXPECT_EQ(compound.children.at(2), small);
    for (zgPath *child : compound.children)
        EXPECT_EQ(child->refCount, 1);
}

TEST(ResolveCrossings, WithoutSortTheOrderStays)
{
    XPath compound;
    zgPath *small = addFlagged(compound, zgtest::squarePoints(200, 0, 10), 0x1);
    zgPath *large = addFlagged(compound, reversedPoints(zgtest::squarePoints(0, 0, 100)), 0x2);
    compound.resolveCrossings(false);
    ASSERT_EQ(compound.children.size(), 2);
    EXPECT_EQ(compound.children.at(0), small);
    EXPECT_EQ(compound.children.at(1), large);
    // Disjoint: each is oriented like the first.
    EXPECT_TRUE(large->isClockwise());
    EXPECT_GT(shoelace(large), 0.0);
}

TEST(ResolveCrossings, ThreeNestedAlternateUnderEvenOdd)
{
    XPath compound;
    zgPath *outer = addFlagged(compound, zgtest::squarePoints(0, 0, 100), 0x1);
    zgPath *middle = addFlagged(compound, zgtest::squarePoints(20, 20, 60), 0x1);
    zgPath *inner = addFlagged(compound, zgtest::squarePoints(40, 40, 20), 0x1);
    compound.resolveCrossings(true);
    ASSERT_EQ(compound.children.size(), 3);
    EXPECT_GT(shoelace(outer), 0.0);
    EXPECT_LT(shoelace(middle), 0.0);
    EXPECT_GT(shoelace(inner), 0.0);
    EXPECT_EQ(middle->flags & 0x3u, 0x2u);
    EXPECT_EQ(inner->flags & 0x3u, 0x1u);
}

TEST(ResolveCrossings, NonZeroDropsASameWayInnerContour)
{
    XPath compound;
    compound.evenOdd = false;
    zgPath *outer = addFlagged(compound, zgtest::squarePoints(0, 0, 100), 0x1);
    zgPath *inner = addFlagged(compound, zgtest::squarePoints(25, 25, 50), 0x1);
    inner->addRef(); // watched after the compound lets go
    compound.resolveCrossings(true);
    ASSERT_EQ(compound.children.size(), 1);
    EXPECT_EQ(compound.children.first(), outer);
    EXPECT_EQ(outer->refCount, 1);
    // The compound's reference on the dropped contour went once, not twice.
    EXPECT_EQ(inner->refCount, 1);
    EXPECT_EQ(inner->parent, &compound); // not touched by setChildren
    inner->release();
}

TEST(ResolveCrossings, NonZeroKeepsAnOppositeInnerContourAsAHole)
{
    XPath compound;
    compound.evenOdd = false;
    addFlagged(compound, zgtest::squarePoints(0, 0, 100), 0x1);
    zgPath *inner = addFlagged(compound, reversedPoints(zgtest::squarePoints(25, 25, 50)), 0x2);
    compound.resolveCrossings(true);
    ASSERT_EQ(compound.children.size(), 2);
    EXPECT_EQ(compound.children.at(1), inner);
    EXPECT_LT(shoelace(inner), 0.0);
}

TEST(ResolveCrossings, NonZeroDropOfANestedPairInTheDeferredMode)
{
    zgtest::DeferredScope deferred;
    XPath compound;
    compound.evenOdd = false;
    addFlagged(compound, zgtest::squarePoints(0, 0, 100), 0x1);
    zgPath *inner = addFlagged(compound, zgtest::squarePoints(25, 25, 50), 0x1);
    compound.resolveCrossings(true);
    ASSERT_EQ(compound.children.size(), 1);
    // Released to the sentinel once, and still allocated.
    EXPECT_EQ(inner->refCount, -2);
    EXPECT_TRUE(zgPath::s_pathList.contains(inner));
}

TEST(ResolveCrossings, OpenContourKeepsItsDirection)
{
    XPath compound;
    addFlagged(compound, zgtest::squarePoints(0, 0, 100), 0x1);
    zgPath *open = addFlagged(compound, {zgPoint(60, 50), zgPoint(40, 50), zgPoint(40, 40)}, 0,
                              false);
    compound.resolveCrossings(true);
    ASSERT_EQ(compound.children.size(), 2);
    EXPECT_EQ(pointsOf(compound.children.at(1)),
              (QVector<zgPoint>{zgPoint(60, 50), zgPoint(40, 50), zgPoint(40, 40)}));
    EXPECT_EQ(open->flags & 0x3u, 0u);
}

// ---- Self-crossings and overlaps -------------------------------------------------

TEST(ResolveCrossings, FigureEightBecomesTwoLoops)
{
    XPath compound;
    addFlagged(compound, {zgPoint(0, 0), zgPoint(10, 10), zgPoint(10, 0), zgPoint(0, 10)}, 0);
    compound.resolveCrossings(true);
    ASSERT_EQ(compound.children.size(), 2);
    double total = 0.0;
    for (zgPath *loop : compound.children) {
        EXPECT_EQ(loop->segments.size(), 3);
        EXPECT_DOUBLE_EQ(std::fabs(shoelace(loop)), 25.0);
        EXPECT_EQ(loop->refCount, 1);
        total += shoelace(loop);
    }
    // Neither holds the other: the second runs like the first.
    EXPECT_EQ(shoelace(compound.children.at(0)) > 0, shoelace(compound.children.at(1)) > 0);
    EXPECT_DOUBLE_EQ(std::fabs(total), 50.0);
}

TEST(ResolveCrossings, FigureEightUnderNonZeroKeepsBothLoops)
{
    XPath compound;
    compound.evenOdd = false;
    addFlagged(compound, {zgPoint(0, 0), zgPoint(10, 10), zgPoint(10, 0), zgPoint(0, 10)}, 0);
    compound.resolveCrossings(true);
    EXPECT_EQ(compound.children.size(), 2);
}

TEST(ResolveCrossings, SelfCrossingInsideAnotherContourInTheDeferredMode)
{
    // A traced compound where the non-zero rule drops a loop: the dropped
    // trace is released to the sentinel once and the kept ones hold 1.
    zgtest::DeferredScope deferred;
    XPath compound;
    compound.evenOdd = false;
    addFlagged(compound, {zgPoint(0, 0), zgPoint(100, 0), zgPoint(100, 100), zgPoint(0, 100),
                          zgPoint(0, 50), zgPoint(60, 50), zgPoint(60, 60), zgPoint(50, 60),
                          zgPoint(50, 40), zgPoint(0, 40)},
               0);
    compound.resolveCrossings(true);
    for (zgPath *child : compound.children)
        EXPECT_EQ(child->refCount, 1);
    int dropped = 0;
    for (zgPath *path : zgPath::s_pathList) {
        if (path->refCount < 0 && !compound.children.contains(path) && path->segments.size() > 0)
            ++dropped;
    }
    EXPECT_GE(dropped, 1);
}

TEST(ResolveCrossings, SpikeDoublingBackIsRemoved)
{
    // A square with a spike that runs out from (10, 5) to (20, 5) and back.
    // The overlap step removes the tip and the doubled node; the overlap
    // ends also count as crossings here, so the trace runs afterwards, and
    // the location left on (10, 5) still names the removed node, where the
    // trace meets a segment without a contour and drops the loop. Whatever
    // comes out holds no spike, and nothing is used after it was freed.
    XPath compound;
    zgPath *spiked = addFlagged(compound, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 5),
                                           zgPoint(20, 5), zgPoint(10, 5), zgPoint(10, 10),
                                           zgPoint(0, 10)},
                                0);
    spiked->addRef(); // watched after the compound lets go
    compound.resolveCrossings(true);
    EXPECT_EQ(pointsOf(spiked), (QVector<zgPoint>{zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 5),
                                                   zgPoint(10, 10), zgPoint(0, 10)}));
    EXPECT_LE(compound.children.size(), 1);
    for (const zgPath *outline : compound.children) {
        EXPECT_DOUBLE_EQ(std::fabs(shoelace(outline)), 100.0);
        for (const zgSegment *segment : outline->segments)
            EXPECT_LE(segment->point.x, 10.0);
    }
    spiked->release();
}

TEST(ResolveCrossings, EvenOddResultMatchesTheOperandsFill)
{
    // A pentagram under the even-odd rule: resolved, its fill is the five
    // points without the pentagon in the middle.
    XPath compound;
    QVector<zgPoint> points;
    for (int k = 0; k < 5; ++k) {
        const double angle = -M_PI / 2 + 2 * M_PI * ((2 * k) % 5) / 5;
        points.append(zgPoint(50 + 40 * std::cos(angle), 50 + 40 * std::sin(angle)));
    }
    addFlagged(compound, points, 0);
    booleanoracle::Loop star;
    for (int k = 0; k < 5; ++k)
        star.append(booleanoracle::Piece::line(points[k].x, points[k].y, points[(k + 1) % 5].x,
                                               points[(k + 1) % 5].y));
    compound.resolveCrossings(true);
    const booleanoracle::Shape resolved = booleanoracle::fromXPath(compound);
    for (double x = 10.5; x < 90; x += 3.7) {
        for (double y = 10.5; y < 90; y += 3.3) {
            EXPECT_EQ(booleanoracle::containsEvenOdd(resolved, x, y),
                      booleanoracle::containsEvenOdd({star}, x, y))
                    << x << " " << y;
        }
    }
}
