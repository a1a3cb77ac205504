// The members of zgCurve that make or take locations (by time, offset,
// point and nearness; offsets of points; division at a location; cutting the
// contour), and zgSegment::getLocation.
#include "intersect/location_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

using zgtest::DeferredScope;
using zgtest::Owned;
using zgtest::builtContour;
using zgtest::expectPoint;
using zgtest::locationAt;
using zgtest::nanPoint;

namespace {

// A straight curve without handles has its control points at its ends, so
// its point at time t lies at the fraction 3t^2 - 2t^3 of the chord; a
// quarter of the chord is reached at t = 0.3263518223330697, three quarters
// at t = 0.6736481776669303.

// The open polyline (0, 0) (10, 0) (20, 0) (30, 0): three curves of length 10.
zgPath *straightRun()
{
    return builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)}, false);
}

// The closed square (0, 0) (10, 0) (10, 10) (0, 10).
zgPath *closedSquare()
{
    return builtContour(zgtest::squarePoints(0, 0, 10), true);
}

QVector<zgPoint> pointsOf(const zgPath *path)
{
    QVector<zgPoint> points;
    for (const zgSegment *segment : path->segments)
        points.append(segment->point);
    return points;
}

void expectPoints(const zgPath *path, const QVector<zgPoint> &expected, double tolerance = 1e-12)
{
    const QVector<zgPoint> actual = pointsOf(path);
    ASSERT_EQ(actual.size(), expected.size());
    for (int i = 0; i < actual.size(); ++i) {
        EXPECT_NEAR(actual.at(i).x, expected.at(i).x, tolerance) << "segment " << i;
        EXPECT_NEAR(actual.at(i).y, expected.at(i).y, tolerance) << "segment " << i;
    }
}

QVector<int> segmentCounts(const zgPath *path)
{
    QVector<int> counts;
    for (const zgSegment *segment : path->segments)
        counts.append(segment->refCount);
    return counts;
}

// Every curve of a built list is held by the contour alone, and runs from
// segment i to segment i + 1.
void expectCurvesInStep(const zgPath *path)
{
    const int n = path->segments.size();
    for (int i = 0; i < path->curves.size(); ++i) {
        const zgCurve *curve = path->curves.at(i);
        EXPECT_EQ(curve->refCount, 1) << "curve " << i;
        EXPECT_EQ(curve->path(), path) << "curve " << i;
        EXPECT_EQ(curve->segment1(), path->segments.at(i)) << "curve " << i;
        EXPECT_EQ(curve->segment2(), path->segments.at((i + 1) % n)) << "curve " << i;
    }
}

// ---------------------------------------------------------------------------
// Locations by time, offset and point

TEST(CurveLocations, LocationAtTimeOnlyWithinZeroToOne)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(1);
    EXPECT_EQ(curve->getLocationAtTime(-1e-12), nullptr);
    EXPECT_EQ(curve->getLocationAtTime(1.0 + 1e-12), nullptr);
    EXPECT_EQ(curve->getLocationAtTime(-100.0), nullptr);
    EXPECT_EQ(curve->getLocationAtTime(qQNaN()), nullptr);
    Owned<zgCurveLocation> start(curve->getLocationAtTime(0.0));
    ASSERT_NE(start, nullptr);
    EXPECT_EQ(start->curve, curve);
    EXPECT_EQ(start->time, 0.0);
    expectPoint(start->point, 10, 0, 0.0);
    EXPECT_EQ(start->refCount, 0);
    EXPECT_FALSE(start->overlap);
    EXPECT_EQ(start->distance, 0.0);
    Owned<zgCurveLocation> quarter(curve->getLocationAtTime(0.25));
    expectPoint(quarter->point, 11.5625, 0);
}

TEST(CurveLocations, LocationAtTimeOneMovesOnUnlessLast)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> inner(path->curves.at(1)->getLocationAtTime(1.0));
    EXPECT_EQ(inner->curve, path->curves.at(2));
    EXPECT_EQ(inner->time, 0.0);
    Owned<zgCurveLocation> last(path->curves.at(2)->getLocationAtTime(1.0));
    EXPECT_EQ(last->curve, path->curves.at(2));
    EXPECT_EQ(last->time, 1.0);
    expectPoint(last->point, 30, 0, 0.0);
}

TEST(CurveLocations, LocationAtAnOffset)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(1);
    Owned<zgCurveLocation> forward(curve->getLocationAt(2.5, false));
    ASSERT_NE(forward, nullptr);
    EXPECT_NEAR(forward->time, 0.3263518223330697, 1e-12);
    expectPoint(forward->point, 12.5, 0, 1e-11);
    // A negative offset measures back from the end.
    Owned<zgCurveLocation> backward(curve->getLocationAt(-2.5, false));
    ASSERT_NE(backward, nullptr);
    EXPECT_NEAR(backward->time, 0.6736481776669303, 1e-12);
    // The whole length reaches the end, which is the next curve's start.
    Owned<zgCurveLocation> end(curve->getLocationAt(10.0, false));
    ASSERT_NE(end, nullptr);
    EXPECT_EQ(end->curve, path->curves.at(2));
    EXPECT_EQ(end->time, 0.0);
    EXPECT_EQ(curve->getLocationAt(10.5, false), nullptr);
    Owned<zgCurveLocation> byTime(curve->getLocationAt(0.4, true));
    EXPECT_DOUBLE_EQ(byTime->time, 0.4);
    EXPECT_EQ(curve->getLocationAt(1.5, true), nullptr);
}

TEST(CurveLocations, LocationOfAPoint)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(1);
    Owned<zgCurveLocation> on(curve->getLocationOf(zgPoint(12.5, 0)));
    ASSERT_NE(on, nullptr);
    EXPECT_NEAR(on->time, 0.3263518223330697, 1e-12);
    // Within 2e-07 of the curve counts; the location's point is the curve's.
    Owned<zgCurveLocation> near(curve->getLocationOf(zgPoint(12.5, 1e-07)));
    ASSERT_NE(near, nullptr);
    expectPoint(near->point, 12.5, 0, 1e-11);
    EXPECT_EQ(curve->getLocationOf(zgPoint(12.5, 3e-07)), nullptr);
    EXPECT_EQ(curve->getLocationOf(zgPoint(25, 0)), nullptr);
}

TEST(CurveLocations, NearestLocationCarriesTheDistance)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(1);
    Owned<zgCurveLocation> above(curve->getNearestLocation(zgPoint(15, 3)));
    ASSERT_NE(above, nullptr);
    EXPECT_EQ(above->curve, curve);
    EXPECT_NEAR(above->time, 0.5, 1e-12);
    expectPoint(above->point, 15, 0, 1e-11);
    EXPECT_NEAR(above->distance, 3.0, 1e-12);
    EXPECT_EQ(above->refCount, 0);
    // Beyond the end: time 1, which stands for the start of the next curve;
    // the point and the distance are those of the end.
    Owned<zgCurveLocation> beyond(curve->getNearestLocation(zgPoint(23, 4)));
    EXPECT_EQ(beyond->curve, path->curves.at(2));
    EXPECT_EQ(beyond->time, 0.0);
    expectPoint(beyond->point, 20, 0, 0.0);
    EXPECT_DOUBLE_EQ(beyond->distance, 5.0);
}

TEST(CurveLocations, NearestLocationOnACubic)
{
    zgPath *arch = new zgPath(nullptr, false);
    Owned<zgPath> held(arch);
    arch->addSegment(new zgSegment(zgPoint(0, 0), zgPoint(0, 0), zgPoint(0, 10)));
    arch->addSegment(new zgSegment(zgPoint(10, 0), zgPoint(0, 10), zgPoint(0, 0)));
    Owned<zgCurveLocation> top(arch->getCurves().at(0)->getNearestLocation(zgPoint(5, 10)));
    EXPECT_NEAR(top->time, 0.5, 4e-07);
    expectPoint(top->point, 5, 7.5, 1e-9);
    EXPECT_NEAR(top->distance, 2.5, 1e-9);
}

TEST(CurveLocations, NearestPointLeavesOneUnreleasedLocationPerCall)
{
    DeferredScope deferred;
    zgPath *path = straightRun();
    zgCurve *curve = path->curves.at(1);
    const int before = zgCurveLocation::s_curveLocationList.size();
    expectPoint(curve->getNearestPoint(zgPoint(15, 3)), 15, 0, 1e-11);
    ASSERT_EQ(zgCurveLocation::s_curveLocationList.size(), before + 1);
    const zgCurveLocation *first = zgCurveLocation::s_curveLocationList.last();
    EXPECT_EQ(first->refCount, 0); // never released
    EXPECT_EQ(first->curve, curve);
    EXPECT_NEAR(first->distance, 3.0, 1e-12);
    expectPoint(curve->getNearestPoint(zgPoint(12, -1)), 12, 0, 1e-11);
    EXPECT_EQ(zgCurveLocation::s_curveLocationList.size(), before + 2);
    EXPECT_EQ(zgCurveLocation::s_curveLocationList.last()->refCount, 0);
}

TEST(CurveLocations, OffsetOfAPointMeasuresFromTheContourStart)
{
    Owned<zgPath> path(straightRun());
    EXPECT_NEAR(path->curves.at(2)->getOffsetOf(zgPoint(25, 0)), 25.0, 1e-10);
    EXPECT_NEAR(path->curves.at(0)->getOffsetOf(zgPoint(0, 0)), 0.0, 1e-12);
    EXPECT_EQ(path->curves.at(2)->getOffsetOf(zgPoint(25, 1)), -1.0);
    EXPECT_EQ(path->curves.at(2)->getOffsetOf(zgPoint(15, 0)), -1.0);
}

TEST(CurveLocations, OffsetOfAPointReleasesItsLocation)
{
    DeferredScope deferred;
    zgPath *path = straightRun();
    const int before = zgCurveLocation::s_curveLocationList.size();
    EXPECT_NEAR(path->curves.at(1)->getOffsetOf(zgPoint(12, 0)), 12.0, 1e-10);
    ASSERT_EQ(zgCurveLocation::s_curveLocationList.size(), before + 1);
    const zgCurveLocation *location = zgCurveLocation::s_curveLocationList.last();
    EXPECT_EQ(location->refCount, -2);
    EXPECT_NEAR(location->offset, 12.0, 1e-10); // stored in the location
}

// ---------------------------------------------------------------------------
// divideAt

TEST(CurveLocations, DivideAtTakesTheTimeOfALocationOnThisCurve)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.25));
    zgCurve *after = path->curves.at(0)->divideAt(location.get(), 0.75);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after, path->curves.at(1));
    expectPoint(after->getPoint1(), 1.5625, 0);
    // Without handles asked for, a straight curve gets none.
    EXPECT_TRUE(after->segment1()->handleIn.isZero());
    EXPECT_TRUE(after->segment1()->handleOut.isZero());
}

TEST(CurveLocations, DivideAtTakesTheGivenTimeOtherwise)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> elsewhere(locationAt(path->curves.at(2), 0.5));
    zgCurve *after = path->curves.at(0)->divideAt(elsewhere.get(), 0.75);
    ASSERT_NE(after, nullptr);
    expectPoint(after->getPoint1(), 8.4375, 0);
    // The first piece, (0, 0) to (8.4375, 0), again without handles: 0.352 of it.
    zgCurve *again = path->curves.at(0)->divideAt(nullptr, 0.4);
    ASSERT_NE(again, nullptr);
    expectPoint(again->getPoint1(), 2.97, 0);
    EXPECT_EQ(path->curves.at(0)->divideAt(nullptr, 0.9999997), nullptr);
    EXPECT_EQ(path->segments.size(), 6);
}

// ---------------------------------------------------------------------------
// splitAt, splitAtTime, split

TEST(CurveLocations, SplitAtNeedsAPathAndALocation)
{
    Owned<zgCurve> free(new zgCurve(QVector<double>{0, 0, 0, 0, 10, 0, 10, 0}, nullptr));
    Owned<zgCurveLocation> location(locationAt(free.get(), 0.5));
    EXPECT_EQ(free->splitAt(location.get()), nullptr);
    Owned<zgPath> path(straightRun());
    EXPECT_EQ(path->curves.at(0)->splitAt(nullptr), nullptr);
    EXPECT_EQ(path->segments.size(), 4);
}

TEST(CurveLocations, SplitAtTheEndOfAnOpenContourGivesNull)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> end(path->curves.at(2)->getLocationAtTime(1.0));
    ASSERT_EQ(end->time, 1.0);
    const int version = path->version;
    EXPECT_EQ(path->curves.at(2)->splitAt(end.get()), nullptr);
    EXPECT_EQ(path->version, version);
    expectPoints(path.get(), {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)});
}

TEST(CurveLocations, SplitAtALostLocationGivesNull)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.5));
    location->point = zgPoint(5, 5); // off the contour, found nowhere after an edit
    path->addSegment(new zgSegment(40, 0));
    EXPECT_EQ(path->curves.at(0)->splitAt(location.get()), nullptr);
    EXPECT_EQ(path->segments.size(), 5);
}

TEST(CurveLocations, SplitAtTheEndTimeBoundCutsAtTheNextSegment)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.9999996));
    ASSERT_EQ(location->curve, path->curves.at(0)); // not moved on by the constructor
    Owned<zgPath> piece(path->curves.at(0)->splitAt(location.get()));
    ASSERT_NE(piece, nullptr);
    expectPoints(path.get(), {zgPoint(0, 0), zgPoint(10, 0)});
    expectPoints(piece.get(), {zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)});
}

TEST(CurveLocations, SplitJustBelowTheEndTimeBoundDivides)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.9999995));
    Owned<zgPath> piece(path->curves.at(0)->splitAt(location.get()));
    ASSERT_NE(piece, nullptr);
    // At 1 - 5e-07 the point stands 3 (5e-07)^2 of the chord before the end.
    const double cut = 10.0 - 7.5e-12;
    expectPoints(path.get(), {zgPoint(0, 0), zgPoint(cut, 0)}, 1e-12);
    expectPoints(piece.get(), {zgPoint(cut, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)},
                 1e-12);
}

TEST(CurveLocations, SplitBelowTheStartTimeBoundCutsAtTheSegment)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 3e-07));
    Owned<zgPath> piece(path->curves.at(1)->splitAt(location.get()));
    ASSERT_NE(piece, nullptr);
    expectPoints(path.get(), {zgPoint(0, 0), zgPoint(10, 0)});
    expectPoints(piece.get(), {zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)});
}

TEST(CurveLocations, SplitAtTheStartTimeBoundDivides)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 4e-07));
    Owned<zgPath> piece(path->curves.at(1)->splitAt(location.get()));
    ASSERT_NE(piece, nullptr);
    // At 4e-07 the point stands 3 (4e-07)^2 of the chord after the start.
    const double cut = 10.0 + 4.8e-12;
    expectPoints(path.get(), {zgPoint(0, 0), zgPoint(10, 0), zgPoint(cut, 0)}, 1e-12);
    expectPoints(piece.get(), {zgPoint(cut, 0), zgPoint(20, 0), zgPoint(30, 0)}, 1e-12);
}

TEST(CurveLocations, SplitAtTheFirstSegmentMovesEverything)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.0));
    Owned<zgPath> piece(path->curves.at(0)->splitAt(location.get()));
    ASSERT_NE(piece, nullptr);
    expectPoints(path.get(), {zgPoint(0, 0)});
    expectPoints(piece.get(), {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)});
}

TEST(CurveLocations, SplitAtDividesWithHandlesAlongTheLine)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    Owned<zgPath> piece(path->curves.at(1)->splitAt(location.get()));
    ASSERT_NE(piece, nullptr);
    // (10, 0) (12.5, 0) | (15, 0) | (17.5, 0) (20, 0): the cut segment has
    // handles of a third of each half.
    const zgSegment *cut = piece->segments.at(0);
    expectPoint(cut->point, 15, 0);
    expectPoint(cut->handleIn, -2.5, 0);
    expectPoint(cut->handleOut, 2.5, 0);
    const zgSegment *copy = path->segments.last();
    expectPoint(copy->point, 15, 0);
    expectPoint(copy->handleIn, -2.5, 0);
    expectPoint(copy->handleOut, 2.5, 0);
    EXPECT_NE(copy, cut);
}

TEST(CurveLocations, SplitOfAnOpenContourCountsEveryReferenceOnce)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    Owned<zgPath> piece(path->curves.at(1)->splitAt(location.get()));
    ASSERT_NE(piece, nullptr);
    EXPECT_EQ(piece->refCount, 0);
    EXPECT_EQ(piece->parent, nullptr);
    EXPECT_FALSE(piece->closed);
    // The old contour: the contour's reference, and one per curve at the segment.
    ASSERT_EQ(path->curves.size(), 2);
    EXPECT_EQ(segmentCounts(path.get()), (QVector<int>{2, 3, 2}));
    expectCurvesInStep(path.get());
    // The new contour has no curves yet: its segments hold the contour's
    // reference only, which the cut gave back for the old one.
    EXPECT_TRUE(piece->curves.isEmpty());
    EXPECT_EQ(segmentCounts(piece.get()), (QVector<int>{1, 1, 1}));
    piece->getCurves();
    EXPECT_EQ(segmentCounts(piece.get()), (QVector<int>{2, 3, 2}));
    expectCurvesInStep(piece.get());
    for (int i = 0; i < piece->segments.size(); ++i) {
        EXPECT_EQ(piece->segments.at(i)->path, piece.get());
        EXPECT_EQ(piece->segments.at(i)->index, i);
    }
}

TEST(CurveLocations, SplitOfAClosedContourOpensAndTurnsIt)
{
    Owned<zgPath> path(closedSquare());
    path->addFlags(zgPath::ClockwiseFlag);
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    zgPath *piece = path->curves.at(1)->splitAt(location.get());
    EXPECT_EQ(piece, path.get());
    EXPECT_FALSE(path->closed);
    EXPECT_EQ(path->flags, uint32_t(zgPath::ClockwiseFlag));
    expectPoints(path.get(), {zgPoint(10, 5), zgPoint(10, 10), zgPoint(0, 10), zgPoint(0, 0),
                              zgPoint(10, 0), zgPoint(10, 5)});
    // Curves built throughout: the inner segments stand at 3, the two ends at 2.
    ASSERT_EQ(path->curves.size(), 5);
    EXPECT_EQ(segmentCounts(path.get()), (QVector<int>{2, 3, 3, 3, 3, 2}));
    expectCurvesInStep(path.get());
    EXPECT_EQ(path->refCount, 0);
}

TEST(CurveLocations, SplitOfAClosedContourAtItsFirstSegment)
{
    Owned<zgPath> path(closedSquare());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.0));
    EXPECT_EQ(path->curves.at(0)->splitAt(location.get()), path.get());
    EXPECT_FALSE(path->closed);
    expectPoints(path.get(), {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10),
                              zgPoint(0, 0)});
    path->getCurves();
    EXPECT_EQ(segmentCounts(path.get()), (QVector<int>{2, 3, 3, 3, 2}));
    expectCurvesInStep(path.get());
}

TEST(CurveLocations, SplitPutsThePieceRightAfterItsContourInTheParent)
{
    XPath parent;
    zgPath *before = builtContour({zgPoint(0, 50), zgPoint(10, 50)}, false);
    zgPath *path = straightRun();
    zgPath *behind = builtContour({zgPoint(0, 90), zgPoint(10, 90)}, false);
    parent.addChild(before);
    parent.addChild(path);
    parent.addChild(behind);
    path->addFlags(0x4);
    Owned<zgCurveLocation> location(locationAt(path->curves.at(2), 0.5));
    zgPath *piece = path->curves.at(2)->splitAt(location.get());
    ASSERT_NE(piece, nullptr);
    ASSERT_EQ(parent.children.size(), 4);
    EXPECT_EQ(parent.children.at(0), before);
    EXPECT_EQ(parent.children.at(1), path);
    EXPECT_EQ(parent.children.at(2), piece);
    EXPECT_EQ(parent.children.at(3), behind);
    EXPECT_EQ(piece->parent, &parent);
    EXPECT_EQ(piece->index, 2);
    EXPECT_EQ(behind->index, 3);
    EXPECT_EQ(piece->refCount, 1); // the parent's
    EXPECT_EQ(piece->flags, 0x4u);
    EXPECT_FALSE(piece->closed);
    expectPoints(piece, {zgPoint(25, 0), zgPoint(30, 0)});
}

TEST(CurveLocations, SplitAtTimeAndSplitByOffset)
{
    Owned<zgPath> path(straightRun());
    Owned<zgPath> piece(path->curves.at(2)->splitAtTime(0.5));
    ASSERT_NE(piece, nullptr);
    expectPoints(piece.get(), {zgPoint(25, 0), zgPoint(30, 0)});
    EXPECT_EQ(path->curves.at(0)->splitAtTime(1.5), nullptr);

    Owned<zgPath> other(straightRun());
    Owned<zgPath> byOffset(other->curves.at(1)->split(2.5, false));
    ASSERT_NE(byOffset, nullptr);
    expectPoints(byOffset.get(), {zgPoint(12.5, 0), zgPoint(20, 0), zgPoint(30, 0)}, 1e-11);
    Owned<zgPath> byTime(other->curves.at(0)->split(0.5, true));
    ASSERT_NE(byTime, nullptr);
    expectPoints(byTime.get(), {zgPoint(5, 0), zgPoint(10, 0), zgPoint(12.5, 0)}, 1e-11);
    // A cut at the second segment leaves one segment and so no curves: the
    // list is built again. An offset beyond the curve (5 long) has no time.
    ASSERT_TRUE(other->curves.isEmpty());
    EXPECT_EQ(other->getCurves().at(0)->split(5.5, false), nullptr);
    expectPoints(other.get(), {zgPoint(0, 0), zgPoint(5, 0)}, 1e-11);
}

TEST(CurveLocations, SplitAtTimeReleasesItsLocation)
{
    DeferredScope deferred;
    zgPath *path = straightRun();
    const int before = zgCurveLocation::s_curveLocationList.size();
    ASSERT_NE(path->curves.at(1)->splitAtTime(0.5), nullptr);
    ASSERT_GT(zgCurveLocation::s_curveLocationList.size(), before);
    for (int i = before; i < zgCurveLocation::s_curveLocationList.size(); ++i)
        EXPECT_LE(zgCurveLocation::s_curveLocationList.at(i)->refCount, -2);
}

// ---------------------------------------------------------------------------
// zgSegment::getLocation

TEST(CurveLocations, SegmentLocationStandsOnItsCurve)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> inner(path->segments.at(1)->getLocation());
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->curve, path->curves.at(1));
    EXPECT_EQ(inner->time, 0.0);
    expectPoint(inner->point, 10, 0, 0.0);
    EXPECT_EQ(inner->refCount, 0);
    // The last segment of an open contour: the end of the curve before it.
    Owned<zgCurveLocation> last(path->segments.at(3)->getLocation());
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->curve, path->curves.at(2));
    EXPECT_EQ(last->time, 1.0);
    expectPoint(last->point, 30, 0, 0.0);

    Owned<zgPath> square(closedSquare());
    Owned<zgCurveLocation> closing(square->segments.at(3)->getLocation());
    EXPECT_EQ(closing->curve, square->curves.at(3));
    EXPECT_EQ(closing->time, 0.0);
    expectPoint(closing->point, 0, 10, 0.0);
}

TEST(CurveLocations, SegmentLocationWithoutACurveIsNull)
{
    Owned<zgSegment> loose(new zgSegment(1, 2));
    EXPECT_EQ(loose->getLocation(), nullptr);
    Owned<zgPath> single(builtContour({zgPoint(1, 2)}, false));
    EXPECT_EQ(single->segments.at(0)->getLocation(), nullptr);
}

} // namespace
