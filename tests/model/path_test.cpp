// zgPath: construction, copying, the segment list and the curve list kept in
// step with it, removal, closing, flags and orientation, reversal, area and
// the structure version.
#include "model/model_test_support.h"

#include <gtest/gtest.h>

using zgtest::DeferredScope;

namespace {

void expectPoint(const zgPoint &actual, double x, double y, double tolerance = 1e-12)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

// Every segment knows its contour and place; a built curve list has the
// right length and runs from segment i to segment i + 1.
void expectConsistent(zgPath &path)
{
    for (int i = 0; i < path.segments.size(); ++i) {
        EXPECT_EQ(path.segments.at(i)->path, &path) << "segment " << i;
        EXPECT_EQ(path.segments.at(i)->index, i) << "segment " << i;
    }
    if (path.curves.isEmpty())
        return;
    const int n = path.segments.size();
    ASSERT_EQ(path.curves.size(), int(path._countCurves()));
    for (int i = 0; i < path.curves.size(); ++i) {
        const zgCurve *curve = path.curves.at(i);
        EXPECT_EQ(curve->path(), &path) << "curve " << i;
        EXPECT_EQ(curve->segment1(), path.segments.at(i)) << "curve " << i;
        EXPECT_EQ(curve->segment2(), path.segments.at((i + 1) % n)) << "curve " << i;
    }
}

QVector<zgPoint> pointsOf(const zgPath &path)
{
    QVector<zgPoint> points;
    for (const zgSegment *segment : path.segments)
        points.append(segment->point);
    return points;
}

TEST(Path, ConstructorDefaultsAndRunningIds)
{
    XPath owner;
    zgPath first(&owner, true);
    zgPath second;
    EXPECT_TRUE(first.closed);
    EXPECT_EQ(first.parent, &owner);
    EXPECT_EQ(first.flags, 0u);
    EXPECT_EQ(first.refCount, 0);
    EXPECT_EQ(first.index, 0);
    EXPECT_DOUBLE_EQ(first.length, 0.0);
    EXPECT_DOUBLE_EQ(first.area, 0.0);
    EXPECT_EQ(first.version, 0);
    EXPECT_TRUE(first.isEmpty());
    EXPECT_FALSE(second.closed);
    EXPECT_EQ(second.parent, nullptr);
    EXPECT_EQ(second.id, first.id + 1);
    EXPECT_EQ(zgPath::s_maxID, second.id);
}

TEST(Path, TrackedInDeferredMode)
{
    DeferredScope deferred;
    const int listed = zgPath::s_pathList.size();
    {
        zgPath onStack;
        EXPECT_TRUE(zgPath::s_pathList.contains(&onStack));
    }
    EXPECT_EQ(zgPath::s_pathList.size(), listed);
}

TEST(Path, CloneCopiesClosedAndSegmentsOnly)
{
    zgPath *source = zgtest::newContour(zgtest::squarePoints(0, 0, 10), true);
    source->addRef();
    source->segments.at(1)->handleOut = zgPoint(1, 2);
    source->addFlags(zgPath::ClockwiseFlag);
    source->getCurves();
    source->getArea();
    zgPath *copy = source->clone();
    copy->addRef();
    EXPECT_TRUE(copy->closed);
    EXPECT_EQ(copy->parent, nullptr);
    EXPECT_EQ(copy->flags, 0u);
    EXPECT_TRUE(copy->curves.isEmpty());
    EXPECT_DOUBLE_EQ(copy->area, 0.0);
    EXPECT_NE(copy->id, source->id);
    ASSERT_EQ(copy->segments.size(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NE(copy->segments.at(i), source->segments.at(i));
        EXPECT_EQ(copy->segments.at(i)->refCount, 1);
    }
    expectConsistent(*copy);
    EXPECT_TRUE(copy->equals(source));
    copy->release();
    source->release();
}

TEST(Path, AssignAppendsNumberedFromZero)
{
    zgPath source(nullptr, true);
    zgtest::addPoints(source, {zgPoint(1, 1), zgPoint(2, 2)});
    zgPath target;
    target.assign(&source);
    EXPECT_TRUE(target.closed);
    ASSERT_EQ(target.segments.size(), 2);
    expectConsistent(target);
    EXPECT_EQ(source.segments.at(0)->refCount, 1); // the source is untouched
    target.assign(nullptr); // ignored
    EXPECT_EQ(target.segments.size(), 2);
}

TEST(Path, EqualsComparesClosedAndSegments)
{
    zgPath a(nullptr, true), b(nullptr, true), c(nullptr, false);
    zgtest::addPoints(a, {zgPoint(0, 0), zgPoint(1, 0)});
    zgtest::addPoints(b, {zgPoint(0, 0), zgPoint(1, 0)});
    zgtest::addPoints(c, {zgPoint(0, 0), zgPoint(1, 0)});
    EXPECT_TRUE(a.equals(&b));
    EXPECT_FALSE(a.equals(&c));
    b.segments.at(1)->handleIn = zgPoint(0, 1);
    EXPECT_FALSE(a.equals(&b));
    EXPECT_FALSE(a.equals(nullptr));
}

TEST(Path, GetSegmentsIsTheListItself)
{
    zgPath path;
    EXPECT_EQ(&path.getSegments(), &path.segments);
}

TEST(Path, AddSegmentAppendsAndCounts)
{
    zgPath path;
    zgSegment *segment = new zgSegment(1, 2);
    EXPECT_EQ(path.addSegment(segment), segment);
    EXPECT_EQ(segment->refCount, 1);
    EXPECT_EQ(segment->path, &path);
    EXPECT_EQ(segment->index, 0);
    EXPECT_EQ(path.getCurrentSegment(), segment);
}

TEST(Path, AnOwnedSegmentIsClonedWhenAdded)
{
    zgPath owner;
    zgSegment *owned = owner.addSegment(new zgSegment(zgPoint(3, 3), zgPoint(1, 0), zgPoint()));
    zgPath path;
    zgSegment *added = path.addSegment(owned);
    EXPECT_NE(added, owned);
    EXPECT_TRUE(*added == *owned);
    EXPECT_EQ(added->path, &path);
    EXPECT_EQ(owned->path, &owner); // left as it was
    EXPECT_EQ(owned->refCount, 1);
    EXPECT_EQ(owner.segments.size(), 1);
}

TEST(Path, AddSegmentsReplacesOwnedEntriesInTheList)
{
    zgPath owner;
    zgSegment *owned = owner.addSegment(new zgSegment(5, 5));
    zgSegment *fresh = new zgSegment(6, 6);
    QList<zgSegment *> list{fresh, owned, nullptr};
    zgPath path;
    const QList<zgSegment *> result = path.addSegments(list, -1);
    ASSERT_EQ(list.size(), 2); // the null entry is dropped
    EXPECT_EQ(list.at(0), fresh);
    EXPECT_NE(list.at(1), owned);
    EXPECT_EQ(result, list);
    EXPECT_EQ(path.segments, list);
    expectConsistent(path);
}

TEST(Path, AddSegmentsTwiceTheSameObjectClonesTheSecond)
{
    zgSegment *segment = new zgSegment(1, 1);
    QList<zgSegment *> list{segment, segment};
    zgPath path;
    path.addSegments(list, -1);
    EXPECT_EQ(list.at(0), segment);
    EXPECT_NE(list.at(1), segment);
    EXPECT_EQ(segment->refCount, 1);
    expectConsistent(path);
}

TEST(Path, InsertSegmentRenumbersTheRest)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(2, 0)});
    zgSegment *inserted = path.insertSegment(1, new zgSegment(1, 0));
    EXPECT_EQ(path.segments.at(1), inserted);
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)}));
    expectConsistent(path);
    QList<zgSegment *> pair{new zgSegment(-2, 0), new zgSegment(-1, 0)};
    path.addSegments(pair, 0);
    EXPECT_EQ(path.segments.at(0), pair.at(0)); // order kept
    EXPECT_EQ(path.segments.at(1), pair.at(1));
    expectConsistent(path);
}

TEST(Path, AppendingToAnOpenContourWithCurvesAddsOneCurve)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    zgCurve *curve = path.getCurves().at(0);
    EXPECT_DOUBLE_EQ(curve->getLength(), 10.0);
    path.addSegment(new zgSegment(10, 10));
    ASSERT_EQ(path.curves.size(), 2);
    EXPECT_EQ(path.curves.at(0), curve);
    EXPECT_EQ(path.curves.at(1)->segment1(), path.segments.at(1));
    EXPECT_EQ(path.curves.at(1)->segment2(), path.segments.at(2));
    // The curve that was touched lost its cached length.
    EXPECT_DOUBLE_EQ(curve->length, 0.0);
    expectConsistent(path);
    EXPECT_EQ(path.segments.at(1)->refCount, 3);
    EXPECT_EQ(path.segments.at(2)->refCount, 2);
}

TEST(Path, AppendingToAClosedContourWithCurves)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)});
    path.getCurves();
    QList<zgSegment *> more{new zgSegment(5, 15), new zgSegment(0, 10)};
    path.addSegments(more, -1);
    expectConsistent(path);
    for (zgSegment *segment : path.segments)
        EXPECT_EQ(segment->refCount, 3);
}

TEST(Path, InsertAtZeroOfAClosedContourWithCurves)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10));
    const QList<zgCurve *> before = path.getCurves();
    zgSegment *s = path.insertSegment(0, new zgSegment(-5, 5));
    ASSERT_EQ(path.curves.size(), path.segments.size());
    EXPECT_EQ(path.curves.last()->segment2(), s);
    EXPECT_EQ(path.curves.last(), before.last());
    expectConsistent(path);
}

TEST(Path, InsertInTheMiddleOfAnOpenContourWithCurves)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
    path.getCurves();
    path.insertSegment(1, new zgSegment(5, 5));
    expectConsistent(path);
    path.insertSegment(0, new zgSegment(-5, 5));
    expectConsistent(path);
    EXPECT_EQ(path.curves.size(), 4);
}

TEST(Path, AddSegmentsPutsGivenCurvesBackAndReleasesThem)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)});
    path.getCurves();
    QList<zgSegment *> removed;
    QList<zgCurve *> removedCurves;
    EXPECT_EQ(path.removeSegments(removed, removedCurves, 2, -1, false), 2);
    ASSERT_EQ(removedCurves.size(), 2);
    zgCurve *kept = removedCurves.at(1);
    kept->addRef(); // watch it
    EXPECT_EQ(kept->refCount, 2);
    path.addSegments(removed, -1, removedCurves);
    // Reinserted: the list took one reference and the caller's went back.
    EXPECT_EQ(kept->refCount, 2);
    EXPECT_EQ(path.curves.size(), 3);
    EXPECT_TRUE(path.curves.contains(kept));
    expectConsistent(path);
    // The segments were counted again; the references removeSegments
    // handed out are still the caller's.
    ASSERT_EQ(removed.size(), 2);
    EXPECT_EQ(removed.at(0)->refCount, 4); // contour, two curves, caller
    EXPECT_EQ(removed.at(1)->refCount, 3); // contour, one curve, caller
    for (zgSegment *segment : removed)
        segment->release();
    kept->release();
}

TEST(Path, AddSegmentsReleasesGivenCurvesOnAContourWithoutCurves)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
    path.getCurves();
    QList<zgSegment *> removed;
    QList<zgCurve *> removedCurves;
    path.removeSegments(removed, removedCurves, 1, -1, false);
    ASSERT_EQ(removedCurves.size(), 2);
    zgCurve *watched = removedCurves.at(0);
    watched->addRef();
    zgPath other;
    other.addSegments(removed, 0, removedCurves);
    EXPECT_EQ(watched->refCount, 1); // only the test holds it now
    EXPECT_TRUE(other.curves.isEmpty());
    EXPECT_EQ(other.segments.size(), 2);
    expectConsistent(other);
    watched->release();
    for (zgSegment *segment : removed)
        segment->release(); // the reference removeSegments handed out
}

TEST(Path, SetSegmentsReplacesEverything)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    zgSegment *old = path.segments.at(0);
    old->addRef();
    path.getCurves();
    path.setSegments({new zgSegment(1, 1), new zgSegment(2, 2), new zgSegment(3, 3)});
    EXPECT_EQ(old->refCount, 1); // only the test's reference is left
    EXPECT_TRUE(path.curves.isEmpty());
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(1, 1), zgPoint(2, 2), zgPoint(3, 3)}));
    expectConsistent(path);
    old->release();
    path.setSegments({});
    EXPECT_TRUE(path.isEmpty());
}

TEST(Path, RemoveSegmentReturnsWhetherSomethingWent)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    EXPECT_FALSE(path.removeSegment(3));
    EXPECT_FALSE(path.removeSegments(2, 1));
    EXPECT_TRUE(path.removeSegment(1));
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(0, 0), zgPoint(2, 0)}));
    EXPECT_TRUE(path.removeSegments(0, -1));
    EXPECT_TRUE(path.isEmpty());
}

TEST(Path, RemoveSegmentsHandsOutWithoutRelease)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0)});
    QList<zgSegment *> out;
    QList<zgCurve *> outCurves;
    // To beyond the count is cut to the count; without curves none come out.
    EXPECT_EQ(path.removeSegments(out, outCurves, 1, 10, false), 3);
    ASSERT_EQ(out.size(), 3);
    EXPECT_TRUE(outCurves.isEmpty());
    for (zgSegment *segment : out) {
        EXPECT_EQ(segment->path, nullptr);
        EXPECT_EQ(segment->index, 0);
        EXPECT_EQ(segment->refCount, 1); // the reference is the caller's now
        segment->release();
    }
    EXPECT_EQ(path.removeSegments(out, outCurves, 5, -1, false), 0);
}

TEST(Path, RemovingTheEndOfAnOpenContourTakesTheCurveBefore)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0)});
    const QList<zgCurve *> curves = path.getCurves();
    QList<zgSegment *> out;
    QList<zgCurve *> outCurves;
    path.removeSegments(out, outCurves, 3, -1, false);
    ASSERT_EQ(outCurves.size(), 1);
    EXPECT_EQ(outCurves.at(0), curves.at(2));
    EXPECT_EQ(outCurves.at(0)->path(), nullptr);
    EXPECT_EQ(path.curves.size(), 2);
    expectConsistent(path);
    outCurves.at(0)->release();
    out.at(0)->release();
}

TEST(Path, RemovingAllOfAnOpenContourTakesOneCurveLess)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    path.getCurves();
    QList<zgSegment *> out;
    QList<zgCurve *> outCurves;
    EXPECT_EQ(path.removeSegments(out, outCurves, 0, -1, true), 3);
    EXPECT_TRUE(out.isEmpty()); // released and emptied
    EXPECT_TRUE(outCurves.isEmpty());
    EXPECT_TRUE(path.curves.isEmpty());
    EXPECT_TRUE(path.isEmpty());
}

TEST(Path, RemovingTheStartOfAnOpenContour)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0)});
    const QList<zgCurve *> curves = path.getCurves();
    curves.at(1)->getLength();
    EXPECT_TRUE(path.removeSegments(0, 1));
    ASSERT_EQ(path.curves.size(), 2);
    EXPECT_EQ(path.curves.at(0), curves.at(1));
    EXPECT_DOUBLE_EQ(curves.at(1)->length, 0.0); // adjusted, so changed
    expectConsistent(path);
}

TEST(Path, RemovingFromAClosedContour)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(1, 1), zgPoint(0, 1)});
    path.getCurves();
    EXPECT_TRUE(path.removeSegment(0));
    expectConsistent(path);
    EXPECT_TRUE(path.removeSegment(2)); // the last one
    expectConsistent(path);
    EXPECT_TRUE(path.removeSegments(1, -1));
    ASSERT_EQ(path.curves.size(), 1);
    EXPECT_EQ(path.curves.at(0)->segment2(), path.segments.at(0)); // back to itself
    expectConsistent(path);
    for (zgSegment *segment : path.segments)
        EXPECT_EQ(segment->refCount, 3);
}

TEST(Path, RemoveSegmentReleasesTheSegmentAndItsCurve)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    path.getCurves();
    zgSegment *gone = path.segments.at(2);
    gone->addRef();
    EXPECT_EQ(gone->refCount, 3);
    EXPECT_TRUE(path.removeSegment(2));
    // The curve that ended at it died and let it go; so did the contour.
    EXPECT_EQ(gone->refCount, 1);
    EXPECT_EQ(path.segments.at(1)->refCount, 2);
    gone->release();
}

TEST(Path, InDeferredModeRemovedCurvesKeepTheirSegments)
{
    DeferredScope deferred;
    zgPath *path = zgtest::newContour({zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)}, false);
    path->getCurves();
    zgCurve *curve = path->curves.at(1);
    zgSegment *gone = path->segments.at(2);
    EXPECT_TRUE(path->removeSegment(2));
    EXPECT_EQ(curve->refCount, -2); // marked, not destroyed
    EXPECT_EQ(gone->refCount, 1);   // so its reference on the segment stays
    EXPECT_EQ(path->segments.at(1)->refCount, 3);
}

TEST(Path, GetCurvesBuildsOnceWithTheRightCount)
{
    zgPath empty;
    EXPECT_TRUE(empty.getCurves().isEmpty());
    EXPECT_DOUBLE_EQ(empty._countCurves(), 0.0);
    zgPath open;
    zgtest::addPoints(open, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    EXPECT_DOUBLE_EQ(open._countCurves(), 2.0);
    const QList<zgCurve *> first = open.getCurves();
    EXPECT_EQ(first.size(), 2);
    EXPECT_EQ(open.getCurves(), first); // not rebuilt
    EXPECT_EQ(first.at(0)->refCount, 1);
    expectConsistent(open);
    zgPath closed(nullptr, true);
    zgtest::addPoints(closed, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    EXPECT_DOUBLE_EQ(closed._countCurves(), 3.0);
    EXPECT_EQ(closed.getCurves().size(), 3);
    expectConsistent(closed);
}

TEST(Path, AdjustCurvesPlacesARangeAndItsNeighbours)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0)});
    const QList<zgCurve *> curves = path.getCurves();
    for (zgCurve *curve : curves) {
        curve->setSegment1(nullptr);
        curve->setSegment2(nullptr);
        curve->length = 1.0;
    }
    path._adjustCurves(1, 2);
    EXPECT_EQ(curves.at(1)->segment1(), path.segments.at(1));
    EXPECT_EQ(curves.at(1)->segment2(), path.segments.at(2));
    EXPECT_EQ(curves.at(0)->segment1(), nullptr); // only its end is set
    EXPECT_EQ(curves.at(0)->segment2(), path.segments.at(1));
    EXPECT_EQ(curves.at(2)->segment1(), path.segments.at(2));
    EXPECT_EQ(curves.at(2)->segment2(), nullptr);
    EXPECT_DOUBLE_EQ(curves.at(0)->length, 0.0);
    EXPECT_DOUBLE_EQ(curves.at(2)->length, 0.0);
    path._adjustCurves(0, 3);
    expectConsistent(path);
}

TEST(Path, AdjustCurvesAtZeroOfAClosedContourWrapsToTheLastCurve)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(1, 1)});
    const QList<zgCurve *> curves = path.getCurves();
    curves.at(2)->setSegment2(nullptr);
    path._adjustCurves(0, 0);
    EXPECT_EQ(curves.at(2)->segment2(), path.segments.at(0));
}

TEST(Path, FirstLastAndCurrent)
{
    zgPath path;
    EXPECT_EQ(path.getFirstSegment(), nullptr);
    EXPECT_EQ(path.getLastSegment(), nullptr);
    EXPECT_EQ(path.getCurrentSegment(), nullptr);
    EXPECT_EQ(path.getFirstCurve(), nullptr);
    EXPECT_EQ(path.getLastCurve(), nullptr);
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    EXPECT_EQ(path.getFirstSegment(), path.segments.at(0));
    EXPECT_EQ(path.getLastSegment(), path.segments.at(2));
    EXPECT_EQ(path.getCurrentSegment(), path.segments.at(2));
    zgCurve *first = path.getFirstCurve(); // builds the list
    EXPECT_EQ(first, path.curves.at(0));
    EXPECT_EQ(path.getLastCurve(), path.curves.at(1));
}

TEST(Path, ClearSegmentsAndCurvesReleaseEach)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0)});
    zgSegment *watched = path.segments.at(0);
    watched->addRef();
    zgCurve *curve = path.getCurves().at(0);
    curve->addRef();
    EXPECT_EQ(watched->refCount, 3);
    path.clearCurves();
    EXPECT_TRUE(path.curves.isEmpty());
    EXPECT_EQ(curve->refCount, 1);
    path.clearSegments();
    EXPECT_TRUE(path.isEmpty());
    EXPECT_EQ(watched->refCount, 2); // the test and the curve
    curve->release();
    EXPECT_EQ(watched->refCount, 1);
    watched->release();
}

TEST(Path, ClearMonosDeletesTheRecords)
{
    zgPath path;
    path.monos.append(new zgMono());
    path.monos.append(new zgMono());
    path.clearMonos();
    EXPECT_TRUE(path.monos.isEmpty());
    path.monos.append(new zgMono()); // the destructor deletes it too
}

TEST(Path, HandlesOverAllSegments)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0)});
    EXPECT_FALSE(path.hasHandles());
    path.segments.at(1)->handleIn = zgPoint(0, 1);
    EXPECT_TRUE(path.hasHandles());
    path.clearHandles();
    EXPECT_FALSE(path.hasHandles());
}

TEST(Path, SetClosedAndBackWithBuiltCurves)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(1, 1)});
    const QList<zgCurve *> open = path.getCurves();
    path.setClosed(true);
    EXPECT_TRUE(path.isClosed());
    ASSERT_EQ(path.curves.size(), 3);
    EXPECT_EQ(path.curves.at(0), open.at(0));
    EXPECT_EQ(path.curves.at(1), open.at(1));
    EXPECT_EQ(path.curves.at(2)->segment1(), path.segments.at(2));
    EXPECT_EQ(path.curves.at(2)->segment2(), path.segments.at(0));
    expectConsistent(path);
    zgCurve *closing = path.curves.at(2);
    closing->addRef();
    path.setClosed(false);
    EXPECT_EQ(closing->refCount, 1); // dropped and released
    ASSERT_EQ(path.curves.size(), 2);
    EXPECT_EQ(path.curves.at(1), open.at(1));
    expectConsistent(path);
    for (zgSegment *segment : path.segments)
        EXPECT_EQ(segment->path, &path);
    closing->release();
}

TEST(Path, SetClosedWithoutCurvesOrChange)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0)});
    const int version = path.version;
    path.setClosed(false);
    EXPECT_EQ(path.version, version); // already so
    path.setClosed(true);
    EXPECT_TRUE(path.curves.isEmpty()); // not built: nothing to keep in step
    EXPECT_EQ(path.getCurves().size(), 2);
}

TEST(Path, RemoveTakesTheContourOutOfItsParent)
{
    XPath compound;
    zgPath *child = zgtest::newContour(zgtest::squarePoints(0, 0, 1), true);
    compound.addChild(child);
    child->addRef(); // the test's
    child->remove();
    EXPECT_TRUE(compound.isEmpty());
    EXPECT_EQ(child->refCount, 1);
    child->parent = nullptr;
    child->remove(); // no parent: nothing
    EXPECT_EQ(child->refCount, 1);
    child->release();
}

TEST(Path, TransformContentLeavesTheCurvesUntold)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    zgCurve *curve = path.getCurves().at(0);
    EXPECT_DOUBLE_EQ(curve->getLength(), 10.0);
    path.segments.at(0)->handleOut = zgPoint(1, 0);
    zgMatrix matrix;
    matrix.scale(2, 2);
    EXPECT_TRUE(path.transformContent(&matrix));
    expectPoint(path.segments.at(1)->point, 20, 0);
    expectPoint(path.segments.at(0)->handleOut, 2, 0);
    EXPECT_DOUBLE_EQ(curve->getLength(), 10.0);
    EXPECT_TRUE(path.transformContent(nullptr));
    expectPoint(path.segments.at(1)->point, 20, 0);
}

TEST(Path, GenericFlagAccess)
{
    zgPath path;
    path.addFlags(0x1 | 0x4);
    EXPECT_EQ(path.flags, 0x5u);
    EXPECT_TRUE(path.isFlags(0x3)); // any of the bits
    EXPECT_FALSE(path.isFlags(0x2 | 0x8));
    path.removeFlags(0x1);
    EXPECT_EQ(path.flags, 0x4u);
}

TEST(Path, ClockwiseFromFlagsOrArea)
{
    zgPath *square = zgtest::newContour(zgtest::squarePoints(5, 5, 10), true);
    square->addRef();
    EXPECT_TRUE(square->isClockwise());
    EXPECT_DOUBLE_EQ(square->area, 100.0); // computed and cached by getArea
    square->addFlags(zgPath::CounterClockwiseFlag);
    EXPECT_FALSE(square->isClockwise()); // the flag wins over the area
    square->addFlags(zgPath::ClockwiseFlag);
    EXPECT_TRUE(square->isClockwise()); // with both set, bit 1 answers
    square->release();

    QVector<zgPoint> points = zgtest::squarePoints(5, 5, 10);
    std::reverse(points.begin(), points.end());
    zgPath *reversed = zgtest::newContour(points, true);
    reversed->addRef();
    EXPECT_FALSE(reversed->isClockwise());
    EXPECT_EQ(reversed->flags, 0u); // not remembered
    reversed->release();
}

TEST(Path, ZeroAreaCountsAsClockwise)
{
    zgPath line(nullptr, true);
    zgtest::addPoints(line, {zgPoint(0, 0), zgPoint(10, 0)});
    EXPECT_DOUBLE_EQ(line.getArea(), 0.0);
    EXPECT_TRUE(line.isClockwise());
}

TEST(Path, SetClockwiseOnAnOpenContourDoesNothing)
{
    zgPath path;
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10));
    path.setClockwise(false);
    EXPECT_EQ(path.flags, 0u);
    expectPoint(path.segments.at(1)->point, 10, 0);
}

TEST(Path, SetClockwiseReversesWhenNeededAndRecords)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10));
    path.setClockwise(true); // already clockwise
    EXPECT_EQ(path.flags, 0x1u);
    expectPoint(path.segments.at(1)->point, 10, 0);
    path.setClockwise(false);
    EXPECT_EQ(path.flags, 0x2u);
    expectPoint(path.segments.at(0)->point, 0, 10); // reversed
    expectPoint(path.segments.at(1)->point, 10, 10);
    path.reorient();
    EXPECT_EQ(path.flags, 0x1u);
    expectPoint(path.segments.at(1)->point, 10, 0);
    EXPECT_TRUE(path.isClockwise());
}

TEST(Path, ReverseTurnsSegmentsAndHandles)
{
    zgPath path;
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(1, 0)));
    path.addSegment(new zgSegment(zgPoint(5, 0), zgPoint(-1, 0), zgPoint(0, 2)));
    path.addSegment(new zgSegment(zgPoint(5, 5), zgPoint(0, -2), zgPoint()));
    path.getCurves();
    path.reverse();
    EXPECT_EQ(pointsOf(path), (QVector<zgPoint>{zgPoint(5, 5), zgPoint(5, 0), zgPoint(0, 0)}));
    expectPoint(path.segments.at(0)->handleOut, 0, -2);
    expectPoint(path.segments.at(1)->handleIn, 0, 2);
    expectPoint(path.segments.at(1)->handleOut, -1, 0);
    expectPoint(path.segments.at(2)->handleIn, 1, 0);
    EXPECT_TRUE(path.curves.isEmpty()); // thrown away
    expectConsistent(path);
    EXPECT_EQ(path.flags, 0u);
}

TEST(Path, ReverseSwapsTheOrientationFlags)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10));
    path.addFlags(zgPath::ClockwiseFlag | 0x4);
    path.reverse();
    EXPECT_EQ(path.flags, 0x2u | 0x4u);
    EXPECT_FALSE(path.isClockwise()); // from the flag, not the area
    path.reverse();
    EXPECT_EQ(path.flags, 0x1u | 0x4u);
}

TEST(Path, ReverseKeepsTheCachedArea)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(5, 5, 10));
    EXPECT_TRUE(path.isClockwise()); // caches +100
    path.reverse();
    EXPECT_EQ(path.flags, 0u);
    EXPECT_DOUBLE_EQ(path.area, 100.0);
    EXPECT_TRUE(path.isClockwise()); // the stale cache still says so
    path.area = 0.0;
    EXPECT_FALSE(path.isClockwise());
}

TEST(Path, AreaUsesTheCacheAndTheClosedFlag)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(5, 5, 10));
    EXPECT_DOUBLE_EQ(path.getArea(true, false), 100.0); // own flag: closed
    EXPECT_DOUBLE_EQ(path.area, 100.0);
    path.segments.at(2)->point = zgPoint(25, 25);
    EXPECT_DOUBLE_EQ(path.getArea(), 100.0); // cached
    path.segments.at(2)->point = zgPoint(15, 15);
    // Without the cache: the sum starts from the cached value.
    EXPECT_DOUBLE_EQ(path.getArea(false, true), 200.0);
    EXPECT_DOUBLE_EQ(path.getArea(false, false), 225.0); // open: no closing pair
    EXPECT_DOUBLE_EQ(path.area, 100.0);                  // not stored
    path.area = 0.0;
    EXPECT_DOUBLE_EQ(path.getArea(false, false), 125.0);
    EXPECT_DOUBLE_EQ(path.area, 0.0);

    zgPath open;
    zgtest::addPoints(open, zgtest::squarePoints(5, 5, 10));
    EXPECT_DOUBLE_EQ(open.getArea(true, true), 125.0); // own flag: open
    zgPath empty;
    EXPECT_DOUBLE_EQ(empty.getArea(), 0.0);
}

TEST(Path, AreaCountsCurvedPieces)
{
    zgPath path(nullptr, true);
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(0, 10)));
    path.addSegment(new zgSegment(zgPoint(10, 0), zgPoint(0, 10), zgPoint()));
    const QVector<double> arch{0, 0, 0, 10, 10, 10, 10, 0};
    const QVector<double> chord{10, 0, 10, 0, 0, 0, 0, 0};
    EXPECT_DOUBLE_EQ(path.getArea(),
                     zgCurve::getArea(arch) + zgCurve::getArea(chord));
}

TEST(Path, VersionGoesUpWithEveryStructuralChange)
{
    zgPath path;
    int version = path.version;
    auto changed = [&]() {
        const bool up = path.version > version;
        version = path.version;
        return up;
    };
    path.addSegment(new zgSegment(0, 0));
    EXPECT_TRUE(changed());
    zgtest::addPoints(path, {zgPoint(1, 0), zgPoint(1, 1)});
    EXPECT_TRUE(changed());
    path.getCurves();
    EXPECT_FALSE(changed()); // building the curves changes no existing one
    path.segments.at(1)->point = zgPoint(2, 0);
    path.transformContent(nullptr);
    EXPECT_FALSE(changed()); // geometry only
    path.removeSegment(2);
    EXPECT_TRUE(changed());
    path.removeSegment(7);
    EXPECT_FALSE(changed()); // nothing removed
    path.setClosed(true);
    EXPECT_TRUE(changed());
    path.reverse();
    EXPECT_TRUE(changed());
    path.clearCurves();
    EXPECT_TRUE(changed());
    path.setSegments({new zgSegment(3, 3)});
    EXPECT_TRUE(changed());
    path.clearSegments();
    EXPECT_TRUE(changed());
    zgPath source;
    zgtest::addPoints(source, {zgPoint(0, 0)});
    path.assign(&source);
    EXPECT_TRUE(changed());
}

TEST(Path, DestructionReleasesCurvesThenSegments)
{
    zgSegment *watched = nullptr;
    zgCurve *curve = nullptr;
    {
        zgPath path(nullptr, true);
        zgtest::addPoints(path, zgtest::squarePoints(0, 0, 1));
        watched = path.segments.at(0);
        curve = path.getCurves().at(0);
        watched->addRef();
        curve->addRef();
        EXPECT_EQ(watched->refCount, 4);
    }
    // The contour's references are gone, and with them the closing curve;
    // the curve the test holds keeps one on the segment.
    EXPECT_EQ(curve->refCount, 1);
    EXPECT_EQ(watched->refCount, 2);
    curve->release();
    EXPECT_EQ(watched->refCount, 1);
    watched->release();
}

TEST(Path, DeferredModeMarksButKeepsEverything)
{
    DeferredScope deferred;
    const int segments = zgSegment::s_segmentList.size();
    const int curves = zgCurve::s_curveList.size();
    zgPath *path = zgtest::newContour(zgtest::squarePoints(0, 0, 10), true);
    path->getCurves();
    EXPECT_EQ(zgSegment::s_segmentList.size(), segments + 4);
    EXPECT_EQ(zgCurve::s_curveList.size(), curves + 4);
    path->addRef();
    path->release();
    EXPECT_EQ(path->refCount, -2);
    EXPECT_EQ(path->segments.size(), 4); // not destroyed
    delete path; // in deferred mode: releases only mark
    EXPECT_EQ(zgSegment::s_segmentList.size(), segments + 4);
    EXPECT_EQ(zgCurve::s_curveList.size(), curves + 4);
    // The curves were only marked, so they still hold their segments.
    for (int i = segments; i < zgSegment::s_segmentList.size(); ++i)
        EXPECT_EQ(zgSegment::s_segmentList.at(i)->refCount, 2);
    for (int i = curves; i < zgCurve::s_curveList.size(); ++i)
        EXPECT_EQ(zgCurve::s_curveList.at(i)->refCount, -2);
}

} // namespace
