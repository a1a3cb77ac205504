// Orientation queries and setters, and the reduction of degenerate curves on
// contours and compounds.
#include "model/model_test_support.h"

#include <gtest/gtest.h>

namespace {

QVector<zgPoint> pointsOf(const zgPath &path)
{
    QVector<zgPoint> points;
    for (const zgSegment *segment : path.segments)
        points.append(segment->point);
    return points;
}

// Shoelace area of the segment points (the tests use straight contours).
double polygonArea(const zgPath &path)
{
    double twice = 0.0;
    const int n = path.segments.size();
    for (int i = 0; i < n; ++i) {
        const zgPoint a = path.segments.at(i)->point;
        const zgPoint b = path.segments.at((i + 1) % n)->point;
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2.0;
}

// A heap contour held by a compound, so that the compound frees it.
zgPath *addContour(XPath &compound, const QVector<zgPoint> &points, bool closed)
{
    zgPath *contour = new zgPath(&compound, closed);
    zgtest::addPoints(*contour, points);
    compound.addChild(contour);
    return contour;
}

} // namespace

TEST(Orientation, FlagsWinOverTheArea)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10)); // area +100
    EXPECT_TRUE(path.isClockwise());
    path.addFlags(zgPath::CounterClockwiseFlag);
    EXPECT_FALSE(path.isClockwise());
    path.addFlags(zgPath::ClockwiseFlag); // both set: bit 0x1 answers
    EXPECT_TRUE(path.isClockwise());
}

TEST(Orientation, QueryDoesNotStoreTheAnswer)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(0, 10), zgPoint(10, 10)}); // area -50
    EXPECT_FALSE(path.isClockwise());
    EXPECT_EQ(path.flags & 0x3u, 0u);
}

TEST(Orientation, ZeroAreaCountsAsClockwise)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
    EXPECT_TRUE(path.isClockwise());
}

TEST(Orientation, CompoundAsksItsFirstChild)
{
    XPath empty;
    EXPECT_FALSE(empty.isClockwise());
    empty.setClockwise(true); // reverse() of no children
    EXPECT_TRUE(empty.isEmpty());

    XPath compound;
    zgPath *first = addContour(compound, zgtest::squarePoints(0, 0, 10), true);
    zgPath *second = addContour(compound, zgtest::squarePoints(20, 0, 10), true);
    EXPECT_TRUE(compound.isClockwise());
    EXPECT_FALSE(second->isClockwise()); // turned by the compound rule
    compound.setClockwise(false);        // every child reverses
    EXPECT_FALSE(first->isClockwise());
    EXPECT_TRUE(second->isClockwise());
    compound.setClockwise(false);        // already so: nothing
    EXPECT_FALSE(first->isClockwise());
}

TEST(Orientation, ReorientTurnsAClosedContourClockwise)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(0, 10), zgPoint(10, 10)});
    path.reorient();
    EXPECT_EQ(path.flags & 0x3u, 0x1u);
    EXPECT_GT(polygonArea(path), 0.0);
    EXPECT_EQ(pointsOf(path).first(), zgPoint(10, 10));

    zgPath open;
    zgtest::addPoints(open, {zgPoint(0, 0), zgPoint(0, 10), zgPoint(10, 10)});
    open.reorient();
    EXPECT_EQ(open.flags, 0u);
    EXPECT_EQ(pointsOf(open).first(), zgPoint(0, 0));
}

TEST(Orientation, SetClockwiseRecordsEvenWithoutAReversal)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10));
    path.addFlags(zgPath::CounterClockwiseFlag); // a wrong record: believed
    path.setClockwise(true);                     // so it reverses
    EXPECT_EQ(path.flags & 0x3u, 0x1u);
    EXPECT_LT(polygonArea(path), 0.0);
}

TEST(Reduce, DropsAZeroLengthLine)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 0), zgPoint(10, 10)});
    EXPECT_EQ(path.reduce(true), &path);
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)}));
    EXPECT_EQ(path.getCurves().size(), 3);
}

TEST(Reduce, WithoutSimplifyNothingGoes)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(5, 0), zgPoint(10, 0), zgPoint(10, 0),
                             zgPoint(10, 10)});
    path.reduce(false);
    EXPECT_EQ(path.segments.size(), 5);
    EXPECT_EQ(path.getCurves().size(), 5);
}

TEST(Reduce, MergesCollinearLines)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(5, 0), zgPoint(10, 0), zgPoint(10, 10),
                             zgPoint(0, 10)});
    path.reduce(true);
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10),
                                                 zgPoint(0, 10)}));
    EXPECT_DOUBLE_EQ(polygonArea(path), 100.0);
}

TEST(Reduce, ClosingLineCollinearWithTheFirst)
{
    // The closing line (0, 10) -> (0, 5) continues into (0, 5) -> (0, 0):
    // the first segment goes, as the walk reaches the closing curve first.
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 5), zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10),
                             zgPoint(0, 10)});
    path.reduce(true);
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10),
                                                 zgPoint(0, 10)}));
    EXPECT_DOUBLE_EQ(polygonArea(path), 100.0);
}

TEST(Reduce, LengthToleranceOnBothSides)
{
    zgPath shortEdge(nullptr, true);
    zgtest::addPoints(shortEdge, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 1e-7),
                                  zgPoint(0, 10)});
    shortEdge.reduce(true);
    EXPECT_EQ(shortEdge.segments.size(), 3);

    zgPath longerEdge(nullptr, true);
    zgtest::addPoints(longerEdge, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 3e-7),
                                   zgPoint(0, 10)});
    longerEdge.reduce(true);
    EXPECT_EQ(longerEdge.segments.size(), 4);
}

TEST(Reduce, KeepsCurvedPiecesEvenOfZeroChord)
{
    // A loop curve from (10, 0) back to (10, 0) is not straight.
    zgPath path(nullptr, true);
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint()));
    path.addSegment(new zgSegment(zgPoint(10, 0), zgPoint(), zgPoint(5, 5)));
    path.addSegment(new zgSegment(zgPoint(10, 0), zgPoint(-5, 5), zgPoint()));
    path.addSegment(new zgSegment(zgPoint(10, 10), zgPoint(), zgPoint()));
    path.reduce(true);
    EXPECT_EQ(path.segments.size(), 4);
}

TEST(Reduce, OpenPolylineKeepsItsEnds)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(3, 3), zgPoint(6, 6), zgPoint(6, 6)});
    path.reduce(true);
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(0, 0), zgPoint(6, 6)}));
}

TEST(Reduce, ContourOfCoincidentPointsEmptiesAndLeavesItsCompound)
{
    XPath compound;
    zgPath *square = addContour(compound, zgtest::squarePoints(0, 0, 10), true);
    zgPath *dot = addContour(compound, {zgPoint(3, 3), zgPoint(3, 3), zgPoint(3, 3)}, true);
    dot->addRef(); // watch it after the compound lets go
    EXPECT_EQ(compound.reduce(true), &compound);
    EXPECT_TRUE(dot->isEmpty());
    ASSERT_EQ(compound.children.size(), 1);
    EXPECT_EQ(compound.children.first(), square);
    EXPECT_EQ(dot->refCount, 1);
    dot->release();
}

TEST(Reduce, SingleChildStaysACompound)
{
    XPath compound;
    addContour(compound, {zgPoint(0, 0), zgPoint(5, 0), zgPoint(10, 0), zgPoint(10, 10)}, true);
    compound.reduce(true);
    ASSERT_EQ(compound.children.size(), 1);
    EXPECT_EQ(compound.children.first()->segments.size(), 3);
}

TEST(Reduce, ChildWithoutParentIsNotTakenOut)
{
    XPath compound;
    zgPath *dot = new zgPath(nullptr, true);
    zgtest::addPoints(*dot, {zgPoint(3, 3), zgPoint(3, 3)});
    compound.addChildren({dot});
    compound.reduce(true);
    EXPECT_TRUE(dot->isEmpty());
    EXPECT_EQ(compound.children.size(), 1);
}
