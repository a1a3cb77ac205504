// zgPath::join: appending where the ends of two contours meet, reversing
// the joined contour when needed, prepending, closed contours, removal from
// the parent, and closing a contour whose ends touch.
#include "services/services_test_support.h"

using namespace zgtest;

namespace {

// A heap contour held once by the test; free it with release().
zgPath *heldContour(const QVector<zgPoint> &points, bool closed = false)
{
    zgPath *path = newContour(points, closed);
    path->addRef();
    return path;
}

} // namespace

TEST(PathJoin, EndToEndMergesTheSharedNode)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    zgPath *b = heldContour({zgPoint(10, 0), zgPoint(20, 0), zgPoint(20, 5)});
    b->segments.at(0)->setHandleOut(zgPoint(1, 1));
    b->segments.at(0)->setHandleIn(zgPoint(-7, -7));
    zgSegment *bSecond = b->segments.at(1);

    EXPECT_EQ(a->join(b, 0.0), a);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(20, 5)});
    // The node stays a's, with b's handle out and a's own handle in.
    expectPoint(a->segments.at(1)->handleOut, 1.0, 1.0);
    expectPoint(a->segments.at(1)->handleIn, 0.0, 0.0);
    // b's segments were copied, not taken.
    EXPECT_NE(a->segments.at(2), bSecond);
    EXPECT_EQ(b->segments.size(), 3);
    EXPECT_EQ(bSecond->path, b);
    EXPECT_FALSE(a->closed);
    expectConsistent(*a);
    b->release();
    a->release();
}

TEST(PathJoin, MatchingWithinTheToleranceInclusive)
{
    // The ends lie 0.5 apart.
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    zgPath *b = heldContour({zgPoint(10, 0.5), zgPoint(20, 0)});
    a->join(b, 0.5);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
    b->release();
    a->release();

    a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    b = heldContour({zgPoint(10, 0.5), zgPoint(20, 0)});
    a->join(b, 0.4999);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 0.5), zgPoint(20, 0)});
    b->release();
    a->release();
}

TEST(PathJoin, EndMeetingEndReversesThePath)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    zgPath *b = heldContour({zgPoint(20, 5), zgPoint(20, 0), zgPoint(10, 0)});
    // Before the reversal this is the handle in of b's last segment.
    b->segments.at(2)->setHandleIn(zgPoint(2, 3));
    a->join(b, 0.0);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(20, 5)});
    expectPoint(a->segments.at(1)->handleOut, 2.0, 3.0);
    // b itself was reversed.
    expectPoints(*b, {zgPoint(10, 0), zgPoint(20, 0), zgPoint(20, 5)});
    b->release();
    a->release();
}

TEST(PathJoin, EndOfPathMeetingTheStartIsPrepended)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    zgPath *b = heldContour({zgPoint(-10, 5), zgPoint(-10, 0), zgPoint(0, 0)});
    b->segments.at(2)->setHandleIn(zgPoint(-1, 2));
    b->segments.at(2)->setHandleOut(zgPoint(9, 9));
    a->getCurves();
    a->join(b, 0.0);
    expectPoints(*a, {zgPoint(-10, 5), zgPoint(-10, 0), zgPoint(0, 0), zgPoint(10, 0)});
    // The node keeps a's handle out and takes b's handle in.
    expectPoint(a->segments.at(2)->handleIn, -1.0, 2.0);
    expectPoint(a->segments.at(2)->handleOut, 0.0, 0.0);
    // b was not reversed.
    expectPoint(b->segments.first()->point, -10.0, 5.0);
    expectConsistent(*a);
    EXPECT_EQ(a->segments.at(1)->refCount, 3);
    b->release();
    a->release();
}

TEST(PathJoin, StartMeetingStartReversesThePathAndPrepends)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    zgPath *b = heldContour({zgPoint(0, 0), zgPoint(-10, 0), zgPoint(-10, 5)});
    // After the reversal this handle out is b's last handle in.
    b->segments.at(0)->setHandleOut(zgPoint(0, 2));
    a->join(b, 0.0);
    expectPoints(*a, {zgPoint(-10, 5), zgPoint(-10, 0), zgPoint(0, 0), zgPoint(10, 0)});
    expectPoint(a->segments.at(2)->handleIn, 0.0, 2.0);
    expectPoints(*b, {zgPoint(-10, 5), zgPoint(-10, 0), zgPoint(0, 0)});
    b->release();
    a->release();
}

TEST(PathJoin, WithoutAMeetingTheWholePathIsAppended)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    zgPath *b = heldContour({zgPoint(20, 5), zgPoint(30, 5)});
    a->join(b, 1.0);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 5)});
    EXPECT_EQ(b->segments.size(), 2);
    b->release();
    a->release();
}

TEST(PathJoin, IntoAnEmptyContour)
{
    zgPath *a = heldContour({});
    zgPath *b = heldContour({zgPoint(1, 1), zgPoint(2, 2)});
    a->join(b, 0.0);
    expectPoints(*a, {zgPoint(1, 1), zgPoint(2, 2)});
    b->release();
    a->release();
}

TEST(PathJoin, AClosedPathAddsTheListsFirstSegmentAgain)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    zgPath *b = heldContour(squarePoints(20.0, 0.0, 10.0), true);
    a->join(b, 0.0);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0),
                      zgPoint(30, 10), zgPoint(20, 10), zgPoint(20, 0)});
    EXPECT_FALSE(a->closed);
    b->release();
    a->release();
}

TEST(PathJoin, AClosedPathMeetingEndToEndAddsTheFirstOfWhatWasAdded)
{
    // The shared node is dropped from the list, so the segment added again
    // is the first one that was appended: b's second.
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(20, 0)});
    zgPath *b = heldContour(squarePoints(20.0, 0.0, 10.0), true);
    a->join(b, 0.0);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(20, 0), zgPoint(30, 0), zgPoint(30, 10),
                      zgPoint(20, 10), zgPoint(30, 0)});
    b->release();
    a->release();
}

TEST(PathJoin, AnOpenPathAddsNothingMore)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(20, 0)});
    zgPath *b = heldContour(squarePoints(20.0, 0.0, 10.0), false);
    a->join(b, 0.0);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(20, 0), zgPoint(30, 0), zgPoint(30, 10),
                      zgPoint(20, 10)});
    b->release();
    a->release();
}

TEST(PathJoin, ThePathLeavesItsParent)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0)});
    XPath compound;
    zgPath *b = newContour({zgPoint(10, 0), zgPoint(20, 0)}, false);
    zgPath *sibling = newContour({zgPoint(50, 50), zgPoint(60, 60)}, false);
    compound.addChild(b);
    compound.addChild(sibling);
    b->addRef(); // the test's own hold, to look at b afterwards
    ASSERT_EQ(b->refCount, 2);

    a->join(b, 0.0);
    ASSERT_EQ(compound.children.size(), 1);
    EXPECT_EQ(compound.children.first(), sibling);
    EXPECT_EQ(sibling->index, 0);
    EXPECT_EQ(b->refCount, 1);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
    b->release();
    a->release();
}

TEST(PathJoin, AnEmptyPathReturnsAtOnceWithoutClosing)
{
    // The ends of a touch, but an empty path ends the join before the
    // closing step.
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(0, 0)});
    XPath compound;
    zgPath *empty = new zgPath(nullptr, false);
    compound.addChild(empty);
    EXPECT_EQ(a->join(empty, 1.0), a);
    EXPECT_FALSE(a->closed);
    EXPECT_EQ(a->segments.size(), 3);
    // Nor does the empty path leave its parent.
    EXPECT_EQ(compound.children.size(), 1);
    a->release();
}

TEST(PathJoin, JoiningNothingClosesTouchingEnds)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 0.5)});
    a->segments.at(3)->setHandleIn(zgPoint(3, 4));
    a->segments.at(3)->setHandleOut(zgPoint(8, 8));
    a->segments.at(0)->setHandleOut(zgPoint(1, 0));
    a->getCurves();
    EXPECT_EQ(a->join(nullptr, 0.5), a);
    EXPECT_TRUE(a->closed);
    expectPoints(*a, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)});
    expectPoint(a->segments.at(0)->handleIn, 3.0, 4.0);
    expectPoint(a->segments.at(0)->handleOut, 1.0, 0.0);
    // Built curves stay in step; a closed contour's segments stand at 3.
    expectConsistent(*a);
    for (zgSegment *segment : a->segments)
        EXPECT_EQ(segment->refCount, 3);
    a->release();
}

TEST(PathJoin, ClosingHonoursTheToleranceBound)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 0.5)});
    a->join(nullptr, 0.4999);
    EXPECT_FALSE(a->closed);
    EXPECT_EQ(a->segments.size(), 4);
    a->release();
}

TEST(PathJoin, JoiningItselfOnlyCloses)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 0)});
    EXPECT_EQ(a->join(a, 0.0), a);
    EXPECT_TRUE(a->closed);
    EXPECT_EQ(a->segments.size(), 3);
    a->release();

    // A single segment is first and last at once: nothing to close.
    zgPath *single = heldContour({zgPoint(1, 1)});
    single->join(nullptr, 1.0);
    EXPECT_FALSE(single->closed);
    EXPECT_EQ(single->segments.size(), 1);
    single->release();
}

TEST(PathJoin, TwoOpenContoursTouchingAtBothEndsCloseUp)
{
    zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)});
    zgPath *b = heldContour({zgPoint(10, 10), zgPoint(0, 10), zgPoint(0, 0)});
    a->join(b, 0.0);
    EXPECT_TRUE(a->closed);
    expectPoints(*a, squarePoints(0.0, 0.0, 10.0));
    EXPECT_NEAR(a->getArea(), 100.0, 1e-9);
    b->release();
    a->release();
}

TEST(PathJoinCounts, NoObjectOutlivesAJoin)
{
    expectNoSurvivors(countSurvivors([] {
        zgPath *a = heldContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)});
        a->getCurves();
        XPath compound;
        zgPath *b = newContour({zgPoint(10, 10), zgPoint(0, 10), zgPoint(0, 0)}, false);
        b->getCurves();
        compound.addChild(b);
        a->join(b, 0.0);
        EXPECT_TRUE(a->closed);
        zgPath *c = heldContour(squarePoints(20.0, 0.0, 10.0), true);
        zgPath *d = heldContour({zgPoint(30, 0), zgPoint(40, 0)});
        d->join(c, 0.0);
        c->release();
        d->release();
        a->release();
    }));
}
