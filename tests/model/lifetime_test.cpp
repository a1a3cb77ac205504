// The counting rule of the object graph: addRef/release with the -2
// sentinel, immediate and deferred destruction, tracked lists and ids.
#include <zgraphics/model.h>

#include <gtest/gtest.h>

namespace {

// Runs the library in deferred mode for the scope of a test and restores the
// immediate mode afterwards, freeing whatever the test left in the lists.
class DeferredMode
{
public:
    DeferredMode() { zgPath::s_canDelete = false; }
    ~DeferredMode()
    {
        zgPath::s_canDelete = true;
        s_disposeAll();
    }

    // Frees every listed object, in the immediate mode, without destructors
    // releasing neighbours twice: the lists hold objects nobody else owns here.
    static void s_disposeAll()
    {
        const QList<zgSegment *> segments = zgSegment::s_segmentList;
        zgSegment::s_segmentList.clear();
        qDeleteAll(segments);
        const QList<zgCurve *> curves = zgCurve::s_curveList;
        zgCurve::s_curveList.clear();
        qDeleteAll(curves);
        const QList<zgCurveLocation *> locations = zgCurveLocation::s_curveLocationList;
        zgCurveLocation::s_curveLocationList.clear();
        qDeleteAll(locations);
        zgPath::s_pathList.clear();
    }
};

TEST(Lifetime, ConstructorsStartAtZero)
{
    zgSegment segment;
    zgCurve curve;
    zgCurveLocation location;
    zgPath path;
    EXPECT_EQ(segment.refCount, 0);
    EXPECT_EQ(curve.refCount, 0);
    EXPECT_EQ(location.refCount, 0);
    EXPECT_EQ(path.refCount, 0);
}

TEST(Lifetime, AddRefCountsUpWithoutTests)
{
    zgSegment segment;
    segment.addRef();
    segment.addRef();
    EXPECT_EQ(segment.refCount, 2);
    segment.refCount = -7;
    segment.addRef();
    EXPECT_EQ(segment.refCount, -6);
    segment.refCount = 0; // a stack object must not reach release()
}

TEST(Lifetime, HeldObjectSurvivesUntilLastRelease)
{
    DeferredMode deferred; // keeps objects readable after the count runs out
    zgSegment *segment = new zgSegment(1, 2);
    segment->addRef();
    segment->addRef();
    segment->release();
    EXPECT_EQ(segment->refCount, 1);
    segment->release();
    EXPECT_EQ(segment->refCount, -2);
}

TEST(Lifetime, ReleaseOfUnheldObjectDestroysItInImmediateMode)
{
    ASSERT_TRUE(zgPath::s_canDelete);
    // A curve holds one reference on each segment; releasing the curve's
    // references is observable through a second holder's count.
    zgSegment *segment = new zgSegment(5, 5);
    segment->addRef(); // the test's own reference
    zgCurve *curve = new zgCurve(nullptr, segment, nullptr);
    EXPECT_EQ(segment->refCount, 2);
    curve->release(); // count 0 -> -2 -> destroyed, releasing its segment
    EXPECT_EQ(segment->refCount, 1);
    EXPECT_TRUE(zgSegment::s_segmentList.isEmpty());
    segment->release(); // destroyed; LeakSanitizer checks nothing is left
}

TEST(Lifetime, ReleaseInDeferredModeMarksAndKeepsTheSegment)
{
    DeferredMode deferred;
    zgSegment *segment = new zgSegment(3, 4);
    ASSERT_EQ(zgSegment::s_segmentList.size(), 1);
    EXPECT_EQ(zgSegment::s_segmentList.first(), segment);
    segment->release();
    EXPECT_EQ(segment->refCount, -2);
    EXPECT_EQ(segment->point.x, 3.0); // still allocated and readable
    EXPECT_EQ(zgSegment::s_segmentList.size(), 1);
    delete segment; // destroyed while deferred: leaves the list
    EXPECT_TRUE(zgSegment::s_segmentList.isEmpty());
}

TEST(Lifetime, RepeatedReleaseInDeferredModeOnlyCountsDown)
{
    DeferredMode deferred;
    zgCurve *curve = new zgCurve();
    curve->release();
    curve->release();
    curve->release();
    EXPECT_EQ(curve->refCount, -4);
    EXPECT_EQ(zgCurve::s_curveList.size(), 1);
}

TEST(Lifetime, SentinelFiresOnlyAtZeroOrMinusOne)
{
    DeferredMode deferred;
    zgCurveLocation *location = new zgCurveLocation();
    location->refCount = 2;
    location->release();
    EXPECT_EQ(location->refCount, 1); // 1 stays held
    location->release();
    EXPECT_EQ(location->refCount, -2); // 0 turns to the sentinel
    location->refCount = 0;
    location->release();
    EXPECT_EQ(location->refCount, -2); // -1 turns to the sentinel too
    location->refCount = -2;
    location->release();
    EXPECT_EQ(location->refCount, -3); // already dead: no second firing
}

TEST(Lifetime, AddRefOnKeptObjectDoesNotRevive)
{
    DeferredMode deferred;
    zgSegment *segment = new zgSegment();
    segment->release();
    ASSERT_EQ(segment->refCount, -2);
    segment->addRef();
    segment->addRef();
    EXPECT_EQ(segment->refCount, 0);
    segment->release(); // fires again: 0 -> -1 -> -2
    EXPECT_EQ(segment->refCount, -2);
    zgPath::s_canDelete = true;
    segment->addRef();
    segment->addRef();
    segment->release(); // 0 -> -1: destroyed now, in the immediate mode
    zgPath::s_canDelete = false;
    // Built while tracking, destroyed while not: the list keeps a dangling entry.
    EXPECT_EQ(zgSegment::s_segmentList.size(), 1);
    zgSegment::s_segmentList.clear();
}

TEST(Lifetime, StackPathIsListedWhileTrackingAndRemovesItself)
{
    DeferredMode deferred;
    {
        zgPath path;
        ASSERT_EQ(zgPath::s_pathList.size(), 1);
        EXPECT_EQ(zgPath::s_pathList.first(), &path);
    }
    EXPECT_TRUE(zgPath::s_pathList.isEmpty());
}

TEST(Lifetime, ObjectBuiltUntrackedDestroyedWhileTrackingLeavesListAlone)
{
    zgSegment *untracked = new zgSegment();
    DeferredMode deferred;
    zgSegment *tracked = new zgSegment();
    ASSERT_EQ(zgSegment::s_segmentList.size(), 1);
    delete untracked; // searched for, not found: nothing changes
    ASSERT_EQ(zgSegment::s_segmentList.size(), 1);
    EXPECT_EQ(zgSegment::s_segmentList.first(), tracked);
}

TEST(Lifetime, ObjectBuiltTrackedReleasedImmediatelyStaysDanglingInList)
{
    zgPath::s_canDelete = false;
    zgCurve *curve = new zgCurve();
    zgPath::s_canDelete = true;
    ASSERT_EQ(zgCurve::s_curveList.size(), 1);
    curve->addRef();
    curve->release(); // destroyed; the destructor does not touch the list
    EXPECT_EQ(zgCurve::s_curveList.size(), 1);
    zgCurve::s_curveList.clear(); // the host deals with the dangling entry
}

TEST(Lifetime, DestructorRemovesEveryOccurrence)
{
    DeferredMode deferred;
    zgCurveLocation *location = new zgCurveLocation();
    zgCurveLocation::s_curveLocationList.append(location);
    zgCurveLocation::s_curveLocationList.append(location);
    ASSERT_EQ(zgCurveLocation::s_curveLocationList.size(), 3);
    delete location;
    EXPECT_TRUE(zgCurveLocation::s_curveLocationList.isEmpty());
}

TEST(Lifetime, CopyConstructorsAreShallowAndUntracked)
{
    DeferredMode deferred;
    zgSegment *segment = new zgSegment(1, 1);
    segment->addRef();
    {
        zgSegment copy(*segment);
        EXPECT_EQ(copy.refCount, 1);
        EXPECT_EQ(zgSegment::s_segmentList.size(), 1);
        zgPath path;
        zgPath pathCopy(path);
        EXPECT_EQ(pathCopy.id, path.id);
        EXPECT_EQ(zgPath::s_pathList.size(), 1);
    }
    // The copies' destructors looked for their own addresses, never listed.
    EXPECT_EQ(zgSegment::s_segmentList.size(), 1);
}

TEST(Lifetime, PathIdsAreRunningNumbers)
{
    const int before = zgPath::s_maxID;
    zgPath first;
    zgPath second(nullptr, true);
    EXPECT_EQ(first.id, before + 1);
    EXPECT_EQ(second.id, before + 2);
    EXPECT_EQ(zgPath::s_maxID, before + 2);
    EXPECT_TRUE(second.closed);
}

TEST(Lifetime, DefaultModeTracksNothing)
{
    ASSERT_TRUE(zgPath::s_canDelete);
    zgSegment segment;
    zgCurve curve;
    zgCurveLocation location;
    zgPath path;
    EXPECT_TRUE(zgSegment::s_segmentList.isEmpty());
    EXPECT_TRUE(zgCurve::s_curveList.isEmpty());
    EXPECT_TRUE(zgCurveLocation::s_curveLocationList.isEmpty());
    EXPECT_TRUE(zgPath::s_pathList.isEmpty());
}

TEST(Lifetime, XPathReleasesItsChildren)
{
    DeferredMode deferred;
    zgPath *child = new zgPath();
    {
        XPath compound;
        child->addRef();
        compound.children.append(child);
    }
    EXPECT_EQ(child->refCount, -2);
    delete child;
    EXPECT_TRUE(zgPath::s_pathList.isEmpty());
}

} // namespace
