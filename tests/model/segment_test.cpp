// zgSegment: construction, copying and assignment, comparison, handles,
// neighbours and curves in a contour, the counted intersection, removal,
// interpolation, transformation and the debug text.
#include "model/model_test_support.h"

#include <gtest/gtest.h>

using zgtest::DeferredScope;

namespace {

void expectPoint(const zgPoint &actual, double x, double y, double tolerance = 1e-12)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

TEST(Segment, DefaultConstructorSetsAllDefaults)
{
    zgSegment segment;
    EXPECT_FALSE(segment.visited);
    EXPECT_EQ(segment.onPath, 0);
    EXPECT_EQ(segment.refCount, 0);
    EXPECT_EQ(segment.index, -1);
    EXPECT_EQ(segment.winding, -1);
    EXPECT_EQ(segment.path, nullptr);
    EXPECT_EQ(segment.intersection(), nullptr);
    EXPECT_DOUBLE_EQ(segment.point.x, 0.0);
    EXPECT_DOUBLE_EQ(segment.point.y, 0.0);
    EXPECT_TRUE(segment.handleIn.isZero());
    EXPECT_TRUE(segment.handleOut.isZero());
}

TEST(Segment, PointConstructorHasNoHandles)
{
    zgSegment segment(3.5, -2.0);
    EXPECT_DOUBLE_EQ(segment.point.x, 3.5);
    EXPECT_DOUBLE_EQ(segment.point.y, -2.0);
    EXPECT_FALSE(segment.hasHandles());
    EXPECT_EQ(segment.index, -1);
}

TEST(Segment, ThreePointConstructorStoresAll)
{
    zgSegment segment(zgPoint(1, 2), zgPoint(-3, 0), zgPoint(4, 5));
    expectPoint(segment.getPoint(), 1, 2);
    expectPoint(segment.getHandleIn(), -3, 0);
    expectPoint(segment.getHandleOut(), 4, 5);
    EXPECT_EQ(segment.refCount, 0);
}

TEST(Segment, CopyConstructorIsBitwiseWithoutCountingOrTracking)
{
    DeferredScope deferred;
    zgPath path;
    zgSegment *original = path.addSegment(new zgSegment(zgPoint(1, 1), zgPoint(2, 0), zgPoint(0, 3)));
    zgCurveLocation *location = new zgCurveLocation();
    original->setIntersection(location);
    original->winding = 5;
    original->onPath = 1;
    original->visited = true;
    const int listed = zgSegment::s_segmentList.size();
    {
        zgSegment copy(*original);
        EXPECT_EQ(zgSegment::s_segmentList.size(), listed); // not tracked
        EXPECT_EQ(copy.refCount, original->refCount);
        EXPECT_EQ(copy.path, &path);
        EXPECT_EQ(copy.index, 0);
        EXPECT_EQ(copy.winding, 5);
        EXPECT_EQ(copy.onPath, 1);
        EXPECT_TRUE(copy.visited);
        EXPECT_EQ(copy.intersection(), location);
        EXPECT_EQ(location->refCount, 1); // no reference taken
        expectPoint(copy.handleIn, 2, 0);
        expectPoint(copy.handleOut, 0, 3);
        // Destroying the copy releases the shared location once more: in the
        // deferred mode that only marks it.
    }
    EXPECT_EQ(location->refCount, -2);
}

TEST(Segment, AssignmentCopiesGeometryAndCountsTheIntersection)
{
    zgCurveLocation *oldLocation = new zgCurveLocation();
    zgCurveLocation *newLocation = new zgCurveLocation();
    oldLocation->addRef(); // the test's own references
    newLocation->addRef();

    zgPath path;
    zgSegment *source = path.addSegment(new zgSegment(zgPoint(7, 8), zgPoint(1, 0), zgPoint(0, 1)));
    source->visited = true;
    source->winding = 4;
    source->onPath = 1;
    source->setIntersection(newLocation);
    EXPECT_EQ(newLocation->refCount, 2);

    zgSegment target(1, 1);
    target.setIntersection(oldLocation);
    target.winding = 9;
    target.onPath = 0;
    target.addRef();
    target.addRef();
    EXPECT_EQ(oldLocation->refCount, 2);

    target = *source;
    EXPECT_EQ(target.path, &path);
    EXPECT_TRUE(target.visited);
    EXPECT_EQ(target.index, 0);
    expectPoint(target.point, 7, 8);
    expectPoint(target.handleIn, 1, 0);
    expectPoint(target.handleOut, 0, 1);
    EXPECT_EQ(target.intersection(), newLocation);
    EXPECT_EQ(newLocation->refCount, 3); // taken by the assignment
    EXPECT_EQ(oldLocation->refCount, 1); // given back
    // Left alone: refCount, onPath and winding.
    EXPECT_EQ(target.refCount, 2);
    EXPECT_EQ(target.onPath, 0);
    EXPECT_EQ(target.winding, 9);

    target.refCount = 0;
    target.setIntersection(nullptr);
    EXPECT_EQ(newLocation->refCount, 2);
    oldLocation->release();
    newLocation->release(); // source still holds one
    EXPECT_EQ(newLocation->refCount, 1);
}

TEST(Segment, SelfAssignmentKeepsTheIntersectionAlive)
{
    zgCurveLocation *location = new zgCurveLocation();
    location->addRef(); // the test's
    {
        zgSegment segment(1, 2);
        segment.setIntersection(location);
        zgSegment &alias = segment;
        segment = alias;
        EXPECT_EQ(segment.intersection(), location);
        EXPECT_EQ(location->refCount, 2);
    }
    EXPECT_EQ(location->refCount, 1);
    location->release();
}

TEST(Segment, EqualityIsPointAndHandlesWithinInclusiveTolerance)
{
    zgSegment a(zgPoint(0, 0), zgPoint(0, 0), zgPoint(0, 0));
    zgSegment b(zgPoint(1e-12, -1e-12), zgPoint(0, 1e-12), zgPoint(-1e-12, 0));
    EXPECT_TRUE(a == b); // 1e-12 is still equal
    zgSegment c(zgPoint(2e-12, 0), zgPoint(0, 0), zgPoint(0, 0));
    EXPECT_FALSE(a == c);
    zgSegment d(zgPoint(0, 0), zgPoint(0, 2e-12), zgPoint(0, 0));
    EXPECT_FALSE(a == d);
    zgSegment e(zgPoint(0, 0), zgPoint(0, 0), zgPoint(2e-12, 0));
    EXPECT_FALSE(a == e);
    EXPECT_TRUE(a != e);
}

TEST(Segment, SegmentsDifferingOnlyInWindingAreEqual)
{
    zgSegment a(zgPoint(5, 5), zgPoint(1, 1), zgPoint(-1, -1));
    zgSegment b(zgPoint(5, 5), zgPoint(1, 1), zgPoint(-1, -1));
    a.winding = 1;
    b.winding = 3;
    b.visited = true;
    b.index = 7;
    EXPECT_TRUE(a == b);
}

TEST(Segment, SegsEqualsComparesPlaceByPlace)
{
    zgSegment a1(1, 1), a2(2, 2), b1(1, 1), b2(2, 2), other(2, 3);
    EXPECT_TRUE(zgSegment::segsEquals({&a1, &a2}, {&b1, &b2}));
    EXPECT_FALSE(zgSegment::segsEquals({&a1, &a2}, {&b2, &b1})); // no search for a rotation
    EXPECT_FALSE(zgSegment::segsEquals({&a1, &a2}, {&b1}));
    EXPECT_FALSE(zgSegment::segsEquals({&a1, &a2}, {&b1, &other}));
    EXPECT_TRUE(zgSegment::segsEquals({}, {}));
}

TEST(Segment, CloneCopiesPointAndHandlesOnly)
{
    zgPath path;
    zgSegment *segment = path.addSegment(new zgSegment(zgPoint(3, 4), zgPoint(1, 2), zgPoint(5, 6)));
    zgCurveLocation *location = new zgCurveLocation();
    segment->setIntersection(location);
    segment->winding = 2;
    segment->visited = true;
    zgSegment *copy = segment->clone();
    EXPECT_NE(copy, segment);
    EXPECT_TRUE(*copy == *segment);
    EXPECT_EQ(copy->refCount, 0);
    EXPECT_EQ(copy->path, nullptr);
    EXPECT_EQ(copy->index, -1);
    EXPECT_EQ(copy->winding, -1);
    EXPECT_FALSE(copy->visited);
    EXPECT_EQ(copy->intersection(), nullptr);
    copy->release(); // an unheld object dies on its first release
}

TEST(Segment, CloneIsTrackedInDeferredMode)
{
    DeferredScope deferred;
    zgSegment *segment = new zgSegment(1, 1);
    const int listed = zgSegment::s_segmentList.size();
    zgSegment *copy = segment->clone();
    EXPECT_EQ(zgSegment::s_segmentList.size(), listed + 1);
    EXPECT_TRUE(zgSegment::s_segmentList.contains(copy));
}

TEST(Segment, SettersStoreOnlyAndLeaveCurveCachesStale)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    zgCurve *curve = path.getCurves().at(0);
    EXPECT_NEAR(curve->getLength(), 10.0, 1e-9);
    path.segments.at(1)->setPoint(zgPoint(20, 0));
    path.segments.at(1)->setHandleIn(zgPoint(-1, 1));
    path.segments.at(0)->setHandleOut(zgPoint(1, 1));
    expectPoint(path.segments.at(1)->getPoint(), 20, 0);
    expectPoint(path.segments.at(1)->getHandleIn(), -1, 1);
    expectPoint(path.segments.at(0)->getHandleOut(), 1, 1);
    EXPECT_DOUBLE_EQ(curve->getLength(), 10.0); // still the cached value
    curve->_changed();
    EXPECT_GT(curve->getLength(), 20.0);
}

TEST(Segment, HasHandlesUsesTheZeroTolerance)
{
    zgSegment segment(0, 0);
    EXPECT_FALSE(segment.hasHandles());
    segment.handleIn = zgPoint(1e-12, -1e-12);
    EXPECT_FALSE(segment.hasHandles());
    segment.handleIn = zgPoint(2e-12, 0);
    EXPECT_TRUE(segment.hasHandles());
    segment.handleIn = zgPoint();
    segment.handleOut = zgPoint(0, 3);
    EXPECT_TRUE(segment.hasHandles());
    segment.clearHandles();
    EXPECT_FALSE(segment.hasHandles());
    EXPECT_DOUBLE_EQ(segment.handleOut.y, 0.0);
}

TEST(Segment, ReverseSwapsHandlesInPlace)
{
    zgSegment segment(zgPoint(1, 1), zgPoint(2, 3), zgPoint(4, 5));
    segment.reverse();
    expectPoint(segment.handleIn, 4, 5);
    expectPoint(segment.handleOut, 2, 3);
    expectPoint(segment.point, 1, 1);
}

TEST(Segment, ReversedIsANewTrackedSegmentWithoutTheIntersection)
{
    DeferredScope deferred;
    zgSegment *segment = new zgSegment(zgPoint(1, 1), zgPoint(2, 3), zgPoint(4, 5));
    segment->setIntersection(new zgCurveLocation());
    segment->winding = 3;
    const int listed = zgSegment::s_segmentList.size();
    {
        const zgSegment reversed = segment->reversed();
        EXPECT_EQ(zgSegment::s_segmentList.size(), listed + 1);
        expectPoint(reversed.point, 1, 1);
        expectPoint(reversed.handleIn, 4, 5);
        expectPoint(reversed.handleOut, 2, 3);
        EXPECT_EQ(reversed.intersection(), nullptr);
        EXPECT_EQ(reversed.winding, -1);
        EXPECT_EQ(reversed.refCount, 0);
        expectPoint(segment->handleIn, 2, 3); // the original is unchanged
    }
    EXPECT_EQ(zgSegment::s_segmentList.size(), listed);
}

TEST(Segment, FirstAndLastNeedAPath)
{
    zgSegment loose(0, 0);
    loose.index = 0;
    EXPECT_FALSE(loose.isFirst());
    EXPECT_FALSE(loose.isLast());

    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    EXPECT_TRUE(path.segments.at(0)->isFirst());
    EXPECT_FALSE(path.segments.at(0)->isLast());
    EXPECT_FALSE(path.segments.at(1)->isFirst());
    EXPECT_FALSE(path.segments.at(1)->isLast());
    EXPECT_TRUE(path.segments.at(2)->isLast());
}

TEST(Segment, NextAndPreviousOnAnOpenContour)
{
    zgSegment loose(0, 0);
    EXPECT_EQ(loose.getNext(), nullptr);
    EXPECT_EQ(loose.getPrevious(), nullptr);

    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    const QList<zgSegment *> &s = path.segments;
    EXPECT_EQ(s.at(0)->getNext(), s.at(1));
    EXPECT_EQ(s.at(1)->getNext(), s.at(2));
    EXPECT_EQ(s.at(2)->getNext(), nullptr);
    EXPECT_EQ(s.at(0)->getPrevious(), nullptr);
    EXPECT_EQ(s.at(2)->getPrevious(), s.at(1));
}

TEST(Segment, NextAndPreviousWrapOnAClosedContour)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    const QList<zgSegment *> &s = path.segments;
    EXPECT_EQ(s.at(2)->getNext(), s.at(0));
    EXPECT_EQ(s.at(0)->getPrevious(), s.at(2));
}

TEST(Segment, NextOfTheOnlySegmentOfAClosedContourIsItself)
{
    zgPath path(nullptr, true);
    zgSegment *only = path.addSegment(new zgSegment(4, 4));
    EXPECT_EQ(only->getNext(), only);
    EXPECT_EQ(only->getPrevious(), only);
}

TEST(Segment, NextInAnEmptiedPathIsNull)
{
    zgPath path(nullptr, true);
    zgSegment orphan(0, 0);
    orphan.path = &path; // a stale pointer into an empty contour
    orphan.index = 0;
    EXPECT_EQ(orphan.getNext(), nullptr);
    EXPECT_EQ(orphan.getPrevious(), nullptr);
    orphan.path = nullptr;
}

TEST(Segment, CurveOfTheOnlySegmentOfAnOpenContourIsNull)
{
    zgPath path;
    zgSegment *only = path.addSegment(new zgSegment(1, 1));
    EXPECT_EQ(only->getCurve(), nullptr);
    EXPECT_EQ(only->getCurvePrev(), nullptr);
    zgSegment loose(0, 0);
    EXPECT_EQ(loose.getCurve(), nullptr);
    EXPECT_EQ(loose.getCurvePrev(), nullptr);
}

TEST(Segment, GetCurveOnAnOpenContourBuildsTheList)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0)});
    EXPECT_TRUE(path.curves.isEmpty());
    zgCurve *curve = path.segments.at(1)->getCurve();
    ASSERT_EQ(path.curves.size(), 3);
    EXPECT_EQ(curve, path.curves.at(1));
    EXPECT_EQ(curve->segment1(), path.segments.at(1));
    // The last segment answers with the curve that ends at it.
    EXPECT_EQ(path.segments.at(3)->getCurve(), path.curves.at(2));
}

TEST(Segment, GetCurveOnAClosedContourIsTheCurveStartingThere)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(1, 1)});
    EXPECT_EQ(path.segments.at(2)->getCurve(), path.getCurves().at(2));
    EXPECT_EQ(path.segments.at(0)->getCurve(), path.curves.at(0));
}

TEST(Segment, GetCurvePrevOnAnOpenContour)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    const QList<zgCurve *> curves = path.getCurves();
    // The first segment answers with the first curve.
    EXPECT_EQ(path.segments.at(0)->getCurvePrev(), curves.at(0));
    EXPECT_EQ(path.segments.at(1)->getCurvePrev(), curves.at(0));
    EXPECT_EQ(path.segments.at(2)->getCurvePrev(), curves.at(1));
}

TEST(Segment, GetCurvePrevOnAClosedContour)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(1, 1), zgPoint(0, 1)});
    const QList<zgCurve *> curves = path.getCurves();
    // Segment 0 answers with the curve before it, the others with their own.
    EXPECT_EQ(path.segments.at(0)->getCurvePrev(), curves.at(3));
    EXPECT_EQ(path.segments.at(1)->getCurvePrev(), curves.at(1));
    EXPECT_EQ(path.segments.at(3)->getCurvePrev(), curves.at(3));
}

TEST(Segment, SetIntersectionTakesTheNewReferenceFirst)
{
    zgCurveLocation *first = new zgCurveLocation();
    zgCurveLocation *second = new zgCurveLocation();
    first->addRef();
    second->addRef();
    {
        zgSegment segment(0, 0);
        segment.setIntersection(first);
        EXPECT_EQ(first->refCount, 2);
        segment.setIntersection(first); // same head again: no change
        EXPECT_EQ(first->refCount, 2);
        segment.setIntersection(second);
        EXPECT_EQ(first->refCount, 1);
        EXPECT_EQ(second->refCount, 2);
        EXPECT_EQ(segment.intersection(), second);
    }
    // The destructor released the head.
    EXPECT_EQ(second->refCount, 1);
    first->release();
    second->release();
}

TEST(Segment, SetIntersectionToTheOnlyHolderKeepsIt)
{
    zgSegment segment(0, 0);
    zgCurveLocation *location = new zgCurveLocation();
    segment.setIntersection(location);
    EXPECT_EQ(location->refCount, 1);
    segment.setIntersection(location); // addRef before release: it survives
    EXPECT_EQ(location->refCount, 1);
    segment.setIntersection(nullptr); // released, destroyed
    EXPECT_EQ(segment.intersection(), nullptr);
}

TEST(Segment, RemoveWithoutPathIsFalse)
{
    zgSegment segment(0, 0);
    EXPECT_FALSE(segment.remove());
}

TEST(Segment, RemoveTakesTheSegmentOutAndReleasesIt)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    zgSegment *middle = path.segments.at(1);
    middle->addRef(); // keep it readable
    EXPECT_TRUE(middle->remove());
    EXPECT_EQ(path.segments.size(), 2);
    EXPECT_EQ(middle->refCount, 1);
    EXPECT_EQ(middle->path, nullptr);
    EXPECT_EQ(middle->index, 0);
    EXPECT_EQ(path.segments.at(1)->index, 1);
    EXPECT_FALSE(middle->remove()); // no longer in a contour
    middle->release();
}

TEST(Segment, InterpolateBlendsPointAndHandles)
{
    const zgSegment from(zgPoint(0, 0), zgPoint(-4, 0), zgPoint(4, 8));
    const zgSegment to(zgPoint(8, 4), zgPoint(0, 4), zgPoint(0, 0));
    zgSegment segment;
    segment.interpolate(&from, &to, 0.25);
    expectPoint(segment.point, 2, 1);
    expectPoint(segment.handleIn, -3, 1);
    expectPoint(segment.handleOut, 3, 6);
    segment.interpolate(&from, &to, 1.0);
    expectPoint(segment.point, 8, 4);
    segment.interpolate(nullptr, &to, 0.5); // nothing without both ends
    expectPoint(segment.point, 8, 4);
}

TEST(Segment, TransformMapsHandlesAsAbsolutePoints)
{
    zgSegment segment(zgPoint(1, 2), zgPoint(-1, 0), zgPoint(0, 3));
    zgMatrix matrix;
    matrix.translate(10, 20);
    matrix.scale(2, 3);
    segment.transform(&matrix);
    expectPoint(segment.point, 12, 26);
    expectPoint(segment.handleIn, -2, 0);
    expectPoint(segment.handleOut, 0, 9);
}

TEST(Segment, TransformWithNullMatrixChangesNothing)
{
    zgSegment segment(zgPoint(1, 2), zgPoint(-1, 0), zgPoint(0, 3));
    segment.transform(nullptr);
    expectPoint(segment.point, 1, 2);
    expectPoint(segment.handleIn, -1, 0);
    expectPoint(segment.handleOut, 0, 3);
}

TEST(Segment, TransformCoordinatesWritesAbsolutePairs)
{
    zgSegment segment(zgPoint(1, 2), zgPoint(-1, 0), zgPoint(0, 3));
    QVector<double> coords(6, 99.0);
    segment.transformCoordinates(nullptr, coords, true);
    EXPECT_EQ(coords, (QVector<double>{1, 2, 0, 2, 1, 5}));

    zgMatrix matrix;
    matrix.translate(5, 0);
    segment.transformCoordinates(&matrix, coords, false);
    EXPECT_EQ(coords, (QVector<double>{6, 2, 5, 2, 6, 5}));
    expectPoint(segment.point, 1, 2); // change clear: the segment stays

    segment.transformCoordinates(&matrix, coords, true);
    expectPoint(segment.point, 6, 2);
    expectPoint(segment.handleIn, -1, 0);
    expectPoint(segment.handleOut, 0, 3);
}

TEST(Segment, TransformCoordinatesGrowsAShortVector)
{
    zgSegment segment(zgPoint(1, 2), zgPoint(), zgPoint());
    QVector<double> coords;
    segment.transformCoordinates(nullptr, coords);
    ASSERT_EQ(coords.size(), 6);
    EXPECT_DOUBLE_EQ(coords.at(4), 1.0);
}

TEST(Segment, ToStringWithHandles)
{
    zgPath path;
    path.addSegment(new zgSegment(0, 0));
    zgSegment *segment =
        path.addSegment(new zgSegment(zgPoint(1.5, 2), zgPoint(-1, 0), zgPoint(0, 3)));
    segment->winding = 2;
    segment->onPath = 1;
    segment->visited = true;
    const QString expected = QStringLiteral("point: ") + zgPoint(1.5, 2).toString() +
                             QStringLiteral(", handleIn: ") + zgPoint(-1, 0).toString() +
                             QStringLiteral(", handleOut: ") + zgPoint(0, 3).toString() +
                             QStringLiteral(", winding: 2, contour: 1, visited: 1 1 1");
    EXPECT_EQ(segment->toString(), expected);
}

TEST(Segment, ToStringLeavesOutZeroHandles)
{
    zgSegment segment(zgPoint(3, 4), zgPoint(1e-13, 0), zgPoint());
    const QString expected = QStringLiteral("point: ") + zgPoint(3, 4).toString() +
                             QStringLiteral(", winding: -1, contour: 0, visited: 0 -1 0");
    EXPECT_EQ(segment.toString(), expected);
}

TEST(Segment, CountsInAContourWithBuiltCurves)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10));
    for (zgSegment *segment : path.segments)
        EXPECT_EQ(segment->refCount, 1);
    path.getCurves();
    // One reference from the contour and one from each curve around it.
    for (zgSegment *segment : path.segments)
        EXPECT_EQ(segment->refCount, 3);

    zgPath open;
    zgtest::addPoints(open, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    open.getCurves();
    EXPECT_EQ(open.segments.at(0)->refCount, 2);
    EXPECT_EQ(open.segments.at(1)->refCount, 3);
    EXPECT_EQ(open.segments.at(2)->refCount, 2);
}

TEST(Segment, DestructionReleasesTheIntersection)
{
    zgCurveLocation *location = new zgCurveLocation();
    location->addRef();
    zgSegment *segment = new zgSegment(0, 0);
    segment->setIntersection(location);
    segment->release(); // unheld: destroyed
    EXPECT_EQ(location->refCount, 1);
    location->release();
}

} // namespace
