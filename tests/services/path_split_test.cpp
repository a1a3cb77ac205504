// Cutting contours: zgPath::splitAt by location and by offset, zgPath::split
// by curve and time, XPath::splitAt along a compound, and the cut shared
// with zgCurve::splitAt.
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

// The polyline (0, 0) (10, 0) (20, 0).
zgPath *heldTwoCurves()
{
    return heldContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
}

// Splits path at a new location at time t of curve index, made directly so
// that the time is kept as given, and releases the location.
zgPath *splitAtTime(zgPath *path, int index, double t)
{
    zgCurveLocation *location =
            new zgCurveLocation(path->getCurves().at(index), t, zgPoint(qQNaN(), qQNaN()));
    zgPath *piece = path->splitAt(location);
    location->release();
    return piece;
}

} // namespace

// --- zgPath::splitAt(location) ------------------------------------------------

TEST(PathSplitAt, OpenContourGivesANewPieceBehindTheCut)
{
    zgPath *path = heldTwoCurves();
    zgCurveLocation *location = path->getLocationAt(15.0);
    ASSERT_NE(location, nullptr);
    zgPath *piece = path->splitAt(location);
    ASSERT_NE(piece, nullptr);
    EXPECT_NE(piece, path);
    EXPECT_EQ(piece->refCount, 0);
    EXPECT_EQ(piece->parent, nullptr);
    EXPECT_FALSE(piece->closed);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(15, 0)});
    expectPoints(*piece, {zgPoint(15, 0), zgPoint(20, 0)});
    // Two segments, one point: the cut segment was cloned for this contour.
    EXPECT_NE(path->segments.last(), piece->segments.first());
    // Divided without setHandles: a straight curve stays without handles.
    EXPECT_FALSE(path->hasHandles());
    EXPECT_FALSE(piece->hasHandles());
    // The location is the caller's still.
    EXPECT_EQ(location->refCount, 0);
    location->release();
    piece->addRef();
    piece->release();
    path->release();
}

TEST(PathSplitAt, CurveFormDividesWithHandlesTheContourFormWithout)
{
    zgPath *path = heldTwoCurves();
    zgCurve *second = path->getCurves().at(1);
    zgCurveLocation *location = second->getLocationAtTime(0.5);
    zgPath *piece = second->splitAt(location);
    location->release();
    ASSERT_NE(piece, nullptr);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(15, 0)});
    expectPoints(*piece, {zgPoint(15, 0), zgPoint(20, 0)});
    // setHandles: the new node gets the handles of the subdivided cubic,
    // along the line; the curve's own zero handles stay zero.
    EXPECT_TRUE(piece->hasHandles());
    expectPoint(path->segments.at(1)->handleOut, 0.0, 0.0);
    expectPoint(path->segments.at(2)->handleIn, -2.5, 0.0);
    expectPoint(piece->segments.at(0)->handleOut, 2.5, 0.0);
    expectPoint(piece->segments.at(1)->handleIn, 0.0, 0.0);
    piece->release();
    path->release();
}

TEST(PathSplitAt, ClosedContourOpensAndStartsAtTheCut)
{
    zgPath *path = heldContour(squarePoints(0.0, 0.0, 10.0), true);
    path->addFlags(zgPath::ClockwiseFlag);
    path->getCurves();
    for (zgSegment *segment : path->segments)
        ASSERT_EQ(segment->refCount, 3);

    zgCurveLocation *location = path->getLocationAt(15.0);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(path->splitAt(location), path);
    location->release();
    EXPECT_FALSE(path->closed);
    expectPoints(*path, {zgPoint(10, 5), zgPoint(10, 10), zgPoint(0, 10), zgPoint(0, 0),
                         zgPoint(10, 0), zgPoint(10, 5)});
    EXPECT_EQ(path->flags, uint32_t(zgPath::ClockwiseFlag));
    // The curve list went along: five curves, in step, and the counts stay
    // balanced: 3 inside, 2 at the two open ends.
    expectConsistent(*path);
    EXPECT_EQ(path->curves.size(), 5);
    for (int i = 0; i < path->segments.size(); ++i) {
        const bool end = i == 0 || i == path->segments.size() - 1;
        EXPECT_EQ(path->segments.at(i)->refCount, end ? 2 : 3) << "segment " << i;
    }
    EXPECT_NEAR(path->getLength(), 40.0, 1e-9);
    path->release();
}

TEST(PathSplitAt, ClosedContourCutAtItsFirstSegment)
{
    zgPath *path = heldContour(squarePoints(0.0, 0.0, 10.0), true);
    EXPECT_EQ(splitAtTime(path, 0, 0.0), path);
    EXPECT_FALSE(path->closed);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10),
                         zgPoint(0, 0)});
    for (zgSegment *segment : path->segments)
        EXPECT_EQ(segment->refCount, 1);
    path->release();
}

TEST(PathSplitAt, AtTheVeryEndOfAnOpenContourNothing)
{
    zgPath *path = heldTwoCurves();
    zgCurve *last = path->getLastCurve();
    zgCurveLocation *location = last->getLocationAtTime(1.0);
    ASSERT_NE(location, nullptr);
    // On the last curve of an open contour the time stays at 1.
    ASSERT_EQ(location->curve, last);
    EXPECT_EQ(path->splitAt(location), nullptr);
    location->release();
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
    path->release();
}

TEST(PathSplitAt, NullOrCurvelessLocationGivesNull)
{
    zgPath *path = heldTwoCurves();
    EXPECT_EQ(path->splitAt(static_cast<zgCurveLocation *>(nullptr)), nullptr);
    zgCurveLocation *lost = new zgCurveLocation();
    EXPECT_EQ(path->splitAt(lost), nullptr);
    lost->release();
    EXPECT_EQ(path->segments.size(), 3);
    path->release();
}

TEST(PathSplitAt, NearTheStartOfACurveTheCutStandsOnTheSegment)
{
    // Below 4e-07 no division: the cut is at (10, 0) itself.
    zgPath *path = heldTwoCurves();
    zgPath *piece = splitAtTime(path, 1, 3e-07);
    ASSERT_NE(piece, nullptr);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0)});
    expectPoints(*piece, {zgPoint(10, 0), zgPoint(20, 0)});
    piece->release();
    path->release();

    // From 4e-07 on the curve is divided.
    path = heldTwoCurves();
    piece = splitAtTime(path, 1, 5e-07);
    ASSERT_NE(piece, nullptr);
    // A straight curve without handles runs as 3t^2 - 2t^3 of its chord,
    // so the new node lies within 1e-11 of (10, 0).
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 0)});
    expectPoints(*piece, {zgPoint(10, 0), zgPoint(20, 0)});
    EXPECT_NE(path->segments.at(1), path->segments.at(2));
    piece->release();
    path->release();
}

TEST(PathSplitAt, NearTheEndOfACurveTheCutMovesToTheNextSegment)
{
    // At 0.9999996 the cut is the next segment's.
    zgPath *path = heldTwoCurves();
    zgPath *piece = splitAtTime(path, 0, 0.9999996);
    ASSERT_NE(piece, nullptr);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0)});
    expectPoints(*piece, {zgPoint(10, 0), zgPoint(20, 0)});
    piece->release();
    path->release();

    // Just below, the curve is divided.
    path = heldTwoCurves();
    piece = splitAtTime(path, 0, 0.9999995);
    ASSERT_NE(piece, nullptr);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0)});
    expectPoints(*piece, {zgPoint(10, 0), zgPoint(10, 0), zgPoint(20, 0)});
    piece->release();
    path->release();
}

TEST(PathSplitAt, ThePieceJoinsTheParentAfterTheContour)
{
    XPath compound;
    zgPath *first = newContour({zgPoint(0, 50), zgPoint(10, 50)}, false);
    zgPath *middle = newContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)}, false);
    zgPath *last = newContour({zgPoint(0, 90), zgPoint(10, 90)}, false);
    compound.addChild(first);
    compound.addChild(middle);
    compound.addChild(last);
    middle->addFlags(0x4);

    zgCurveLocation *location = middle->getLocationAt(5.0);
    zgPath *piece = middle->splitAt(location);
    location->release();
    ASSERT_NE(piece, nullptr);
    ASSERT_EQ(compound.children.size(), 4);
    EXPECT_EQ(compound.children.at(2), piece);
    EXPECT_EQ(compound.children.at(3), last);
    EXPECT_EQ(piece->index, 2);
    EXPECT_EQ(piece->parent, &compound);
    EXPECT_EQ(piece->refCount, 1);
    EXPECT_EQ(piece->flags, uint32_t(0x4));
    expectPoints(*middle, {zgPoint(0, 0), zgPoint(5, 0)});
    expectPoints(*piece, {zgPoint(5, 0), zgPoint(10, 0), zgPoint(20, 0)});
}

// --- zgPath::split and zgPath::splitAt(offset) ------------------------------

TEST(PathSplit, ByCurveIndexAndTime)
{
    zgPath *path = heldTwoCurves();
    // At time 0.25 a straight curve without handles stands at
    // 3t^2 - 2t^3 = 0.15625 of its chord.
    zgPath *piece = path->split(1, 0.25);
    ASSERT_NE(piece, nullptr);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(11.5625, 0)});
    expectPoints(*piece, {zgPoint(11.5625, 0), zgPoint(20, 0)});
    piece->release();
    path->release();
}

TEST(PathSplit, InvalidIndexOrTimeGivesNull)
{
    zgPath *path = heldTwoCurves();
    EXPECT_EQ(path->split(-1, 0.5), nullptr);
    EXPECT_EQ(path->split(2, 0.5), nullptr);
    EXPECT_EQ(path->split(0, 1.5), nullptr);
    EXPECT_EQ(path->split(0, -0.1), nullptr);
    // Time 1.0 of the last curve: a location, but the end of the contour.
    EXPECT_EQ(path->split(1, 1.0), nullptr);
    EXPECT_EQ(path->segments.size(), 3);
    path->release();
}

TEST(PathSplit, ByOffset)
{
    zgPath *path = heldTwoCurves();
    zgPath *piece = path->splitAt(4.0);
    ASSERT_NE(piece, nullptr);
    expectPoints(*path, {zgPoint(0, 0), zgPoint(4, 0)});
    expectPoints(*piece, {zgPoint(4, 0), zgPoint(10, 0), zgPoint(20, 0)});
    piece->release();
    path->release();

    // A negative offset counts from the end.
    path = heldTwoCurves();
    piece = path->splitAt(-4.0);
    ASSERT_NE(piece, nullptr);
    expectPoints(*piece, {zgPoint(16, 0), zgPoint(20, 0)});
    piece->release();
    path->release();

    path = heldTwoCurves();
    EXPECT_EQ(path->splitAt(20.5), nullptr);
    // The end of an open contour: a location, but nothing behind it.
    EXPECT_EQ(path->splitAt(20.0), nullptr);
    EXPECT_EQ(path->segments.size(), 3);
    path->release();
}

// --- XPath::splitAt --------------------------------------------------------------

namespace {

// Two open children: (0, 0) to (10, 0), length 10, and (0, 10) to (20, 10),
// length 20.
void addTwoChildren(XPath &compound)
{
    compound.addChild(newContour({zgPoint(0, 0), zgPoint(10, 0)}, false));
    compound.addChild(newContour({zgPoint(0, 10), zgPoint(20, 10)}, false));
}

} // namespace

TEST(XPathSplitAt, PositiveOffsetCutsAtTheDistanceBackFromTheChildsEnd)
{
    XPath compound;
    addTwoChildren(compound);
    zgPath *first = compound.children.at(0);
    // 3 falls in the first child (sum 10): it is cut 10 - 3 = 7 from its start.
    zgPath *piece = compound.splitAt(3.0);
    ASSERT_NE(piece, nullptr);
    expectPoints(*first, {zgPoint(0, 0), zgPoint(7, 0)});
    expectPoints(*piece, {zgPoint(7, 0), zgPoint(10, 0)});
    ASSERT_EQ(compound.children.size(), 3);
    EXPECT_EQ(compound.children.at(1), piece);
}

TEST(XPathSplitAt, PositiveOffsetInALaterChild)
{
    XPath compound;
    addTwoChildren(compound);
    zgPath *second = compound.children.at(1);
    // 12 falls in the second child (sum 30): cut at 30 - 12 = 18.
    zgPath *piece = compound.splitAt(12.0);
    ASSERT_NE(piece, nullptr);
    expectPoints(*second, {zgPoint(0, 10), zgPoint(18, 10)});
    expectPoints(*piece, {zgPoint(18, 10), zgPoint(20, 10)});
    EXPECT_EQ(compound.children.last(), piece);

    // The sum must exceed the offset: at 30 no child qualifies.
    EXPECT_EQ(compound.splitAt(30.0), nullptr);
}

TEST(XPathSplitAt, PositiveOffsetJustBelowTheTotal)
{
    XPath compound;
    addTwoChildren(compound);
    zgPath *piece = compound.splitAt(29.5);
    ASSERT_NE(piece, nullptr);
    expectPoints(*compound.children.at(1), {zgPoint(0, 10), zgPoint(0.5, 10)});
}

TEST(XPathSplitAt, NegativeOffsetWalksBackFromTheLastChild)
{
    XPath compound;
    addTwoChildren(compound);
    zgPath *second = compound.children.at(1);
    // d = 5 falls in the last child (sum 20), with nothing after it: cut 5
    // from its start.
    zgPath *piece = compound.splitAt(-5.0);
    ASSERT_NE(piece, nullptr);
    expectPoints(*second, {zgPoint(0, 10), zgPoint(5, 10)});
    expectPoints(*piece, {zgPoint(5, 10), zgPoint(20, 10)});
}

TEST(XPathSplitAt, NegativeOffsetInAnEarlierChild)
{
    XPath compound;
    addTwoChildren(compound);
    zgPath *first = compound.children.at(0);
    // d = 25 passes the last child (20) and falls in the first: 25 - 20 = 5.
    zgPath *piece = compound.splitAt(-25.0);
    ASSERT_NE(piece, nullptr);
    expectPoints(*first, {zgPoint(0, 0), zgPoint(5, 0)});
    expectPoints(*piece, {zgPoint(5, 0), zgPoint(10, 0)});
    // d = 30 is the whole length: no child qualifies.
    EXPECT_EQ(compound.splitAt(-30.0), nullptr);
}

TEST(XPathSplitAt, EmptyCompoundOrNaNGivesNull)
{
    XPath empty;
    EXPECT_EQ(empty.splitAt(0.0), nullptr);
    EXPECT_EQ(empty.splitAt(-1.0), nullptr);
    XPath compound;
    addTwoChildren(compound);
    EXPECT_EQ(compound.splitAt(qQNaN()), nullptr);
    EXPECT_EQ(compound.children.size(), 2);
}

TEST(XPathSplitAt, ClosedChildIsOpenedInPlace)
{
    XPath compound;
    compound.addChild(newContour(squarePoints(0.0, 0.0, 10.0), true));
    zgPath *child = compound.children.first();
    // 25 in a child of length 40: cut at 40 - 25 = 15.
    EXPECT_EQ(compound.splitAt(25.0), child);
    EXPECT_EQ(compound.children.size(), 1);
    EXPECT_FALSE(child->closed);
    expectPoint(child->segments.first()->point, 10.0, 5.0);
    expectPoint(child->segments.last()->point, 10.0, 5.0);
}

// --- reference counts -------------------------------------------------------------

TEST(PathSplitCounts, NoObjectOutlivesTheCuts)
{
    expectNoSurvivors(countSurvivors([] {
        zgPath *open = heldTwoCurves();
        open->getCurves();
        zgPath *piece = open->splitAt(15.0);
        ASSERT_NE(piece, nullptr);
        piece->addRef();
        piece->release();
        piece = open->split(0, 0.5);
        ASSERT_NE(piece, nullptr);
        piece->addRef();
        piece->release();
        EXPECT_EQ(open->split(1, 1.0), nullptr);
        open->release();

        zgPath *closed = heldContour(squarePoints(0.0, 0.0, 10.0), true);
        closed->getCurves();
        EXPECT_EQ(closed->splitAt(15.0), closed);
        closed->release();

        zgPath *curveCut = heldTwoCurves();
        piece = curveCut->getCurves().at(1)->splitAtTime(0.5);
        ASSERT_NE(piece, nullptr);
        piece->addRef();
        piece->release();
        curveCut->release();

        XPath compound;
        addTwoChildren(compound);
        compound.addChild(newContour(squarePoints(0.0, 0.0, 10.0), true));
        EXPECT_NE(compound.splitAt(3.0), nullptr);
        EXPECT_NE(compound.splitAt(-5.0), nullptr);
    }));
}
