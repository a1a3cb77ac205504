// zgCurveLocation: construction, the plain accessors, finding the curve again
// after an edit of the contour, offsets, segments, comparison, sorted
// insertion, expansion, the touching and crossing tests, division, splitting
// and the debug text.
#include "intersect/location_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

using zgtest::DeferredScope;
using zgtest::Owned;
using zgtest::builtContour;
using zgtest::expectPoint;
using zgtest::locationAt;
using zgtest::nanPoint;
using zgtest::pair;

namespace {

// A straight curve without handles has its control points at its ends, so
// its point at time t lies at the fraction 3t^2 - 2t^3 of the chord: 0.15625
// at t = 0.25, one half at t = 0.5, 7/27 at t = 1/3.

// The open polyline (0, 0) (10, 0) (20, 0) (30, 0): three curves of length 10.
zgPath *straightRun()
{
    return builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0)}, false);
}

// The closed square (0, 0) (10, 0) (10, 10) (0, 10): four curves of length 10.
zgPath *closedSquare()
{
    return builtContour(zgtest::squarePoints(0, 0, 10), true);
}

// An open contour of one cubic, values (x0, y0, x1, y1, x2, y2, x3, y3).
zgPath *cubicContour(const QVector<double> &v)
{
    zgPath *path = new zgPath(nullptr, false);
    path->addSegment(new zgSegment(zgPoint(v[0], v[1]), zgPoint(0, 0),
                                   zgPoint(v[2] - v[0], v[3] - v[1])));
    path->addSegment(new zgSegment(zgPoint(v[6], v[7]), zgPoint(v[4] - v[6], v[5] - v[7]),
                                   zgPoint(0, 0)));
    path->getCurves();
    return path;
}

// The arch (0, 0) (0, 10) (10, 10) (10, 0): at t = 0.5 it stands at (5, 7.5)
// with a horizontal tangent.
QVector<double> archValues()
{
    return {0, 0, 0, 10, 10, 10, 10, 0};
}

bool isNaNPoint(const zgPoint &p)
{
    return std::isnan(p.x) && std::isnan(p.y);
}

// ---------------------------------------------------------------------------
// Construction

TEST(CurveLocation, ConstructorStoresCurveTimeAndComputesTheMissingPoint)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(1);
    Owned<zgCurveLocation> location(new zgCurveLocation(curve, 0.25, nanPoint(), true, 1.5));
    EXPECT_EQ(location->curve, curve);
    EXPECT_EQ(location->path, path.get());
    EXPECT_EQ(location->version, path->version);
    EXPECT_GT(path->version, 0); // building the contour counted
    EXPECT_EQ(location->segment1, path->segments.at(1));
    EXPECT_EQ(location->segment2, path->segments.at(2));
    EXPECT_DOUBLE_EQ(location->time, 0.25);
    EXPECT_DOUBLE_EQ(location->offset, -1.0);
    expectPoint(location->getPoint(), 11.5625, 0.0);
    EXPECT_TRUE(location->overlap);
    EXPECT_DOUBLE_EQ(location->distance, 1.5);
    EXPECT_EQ(location->refCount, 0);
    EXPECT_EQ(location->intersection(), nullptr);
    EXPECT_EQ(location->next(), nullptr);
    EXPECT_EQ(location->previous(), nullptr);
    EXPECT_EQ(location->segmentM(), nullptr);
}

TEST(CurveLocation, ConstructorKeepsAGivenPointEvenOffTheCurve)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(
        new zgCurveLocation(path->curves.at(0), 0.5, zgPoint(7, 7), false, 0.0));
    expectPoint(location->point, 7, 7, 0.0);
    // One NaN coordinate is enough for the point to be computed.
    Owned<zgCurveLocation> half(
        new zgCurveLocation(path->curves.at(0), 0.5, zgPoint(qQNaN(), 3), false, 0.0));
    expectPoint(half->point, 5, 0);
}

TEST(CurveLocation, TimeAboveTheEndBoundMovesToTheStartOfTheNextCurve)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.9999999));
    EXPECT_EQ(location->curve, path->curves.at(1));
    EXPECT_EQ(location->time, 0.0);
    // The point is the start of the next curve, not the first curve at 0.9999999.
    EXPECT_EQ(location->point.x, 10.0);
    EXPECT_EQ(location->point.y, 0.0);
    EXPECT_EQ(location->segment1, path->segments.at(1));
    EXPECT_EQ(location->segment2, path->segments.at(2));
}

TEST(CurveLocation, TimeAtTheEndBoundItselfStays)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> atBound(locationAt(path->curves.at(0), 0.9999996));
    EXPECT_EQ(atBound->curve, path->curves.at(0));
    EXPECT_DOUBLE_EQ(atBound->time, 0.9999996);
    Owned<zgCurveLocation> above(locationAt(path->curves.at(0), 0.9999997));
    EXPECT_EQ(above->curve, path->curves.at(1));
    EXPECT_EQ(above->time, 0.0);
}

TEST(CurveLocation, TimeAboveTheBoundOnTheLastCurveOfAnOpenPathStays)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(2), 0.9999999));
    EXPECT_EQ(location->curve, path->curves.at(2));
    EXPECT_DOUBLE_EQ(location->time, 0.9999999);
    // 1 - 3e-14 of the chord.
    expectPoint(location->point, 30.0 - 3e-13, 0.0, 1e-12);
    EXPECT_LT(location->point.x, 30.0);
}

TEST(CurveLocation, TimeAboveTheBoundOnTheLastCurveOfAClosedPathWraps)
{
    Owned<zgPath> path(closedSquare());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(3), 0.9999999));
    EXPECT_EQ(location->curve, path->curves.at(0));
    EXPECT_EQ(location->time, 0.0);
    expectPoint(location->point, 0, 0, 0.0);
}

TEST(CurveLocation, FreeCurveHasNoPathAndVersionZero)
{
    Owned<zgCurve> curve(new zgCurve(QVector<double>{0, 0, 0, 0, 10, 0, 10, 0}, nullptr));
    Owned<zgCurveLocation> location(locationAt(curve.get(), 0.9999999));
    EXPECT_EQ(location->curve, curve.get());
    EXPECT_EQ(location->path, nullptr);
    EXPECT_EQ(location->version, 0);
    EXPECT_DOUBLE_EQ(location->time, 0.9999999);
    EXPECT_EQ(location->segment1, curve->segment1());
    EXPECT_EQ(location->segment2, curve->segment2());
}

TEST(CurveLocation, NullCurveKeepsTimeAndPointAsGiven)
{
    Owned<zgCurveLocation> location(new zgCurveLocation(nullptr, 0.5, nanPoint(), false, 2.0));
    EXPECT_EQ(location->curve, nullptr);
    EXPECT_EQ(location->path, nullptr);
    EXPECT_DOUBLE_EQ(location->time, 0.5);
    EXPECT_TRUE(isNaNPoint(location->point));
    EXPECT_EQ(location->getIndex(), -1);
    EXPECT_EQ(location->getPath(), nullptr);
    Owned<zgCurveLocation> placed(new zgCurveLocation(nullptr, 0.5, zgPoint(1, 2), false, 0.0));
    expectPoint(placed->point, 1, 2, 0.0);
}

TEST(CurveLocation, TrackedOnlyInDeferredModeAndNotByCopies)
{
    Owned<zgPath> path(straightRun());
    {
        Owned<zgCurveLocation> immediate(locationAt(path->curves.at(0), 0.5));
        EXPECT_FALSE(zgCurveLocation::s_curveLocationList.contains(immediate.get()));
    }
    DeferredScope deferred;
    zgCurveLocation *tracked = locationAt(path->curves.at(0), 0.5);
    EXPECT_TRUE(zgCurveLocation::s_curveLocationList.contains(tracked));
    const int listed = zgCurveLocation::s_curveLocationList.size();
    {
        zgCurveLocation copy(*tracked);
        EXPECT_EQ(zgCurveLocation::s_curveLocationList.size(), listed);
    }
    // The destructor of the copy took every occurrence of its own address
    // only, so the original stays listed.
    EXPECT_TRUE(zgCurveLocation::s_curveLocationList.contains(tracked));
    tracked->release();
    EXPECT_EQ(tracked->refCount, -2);
    EXPECT_TRUE(zgCurveLocation::s_curveLocationList.contains(tracked));
}

TEST(CurveLocation, CopyCopiesEveryMember)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> partner(locationAt(path->curves.at(2), 0.5));
    Owned<zgCurveLocation> original(new zgCurveLocation(path->curves.at(1), 0.5, nanPoint(), true,
                                                        4.0));
    original->setIntersection(partner.get());
    original->setNext(partner.get());
    original->setPrevious(original.get());
    original->setSegmentM(path->segments.at(3));
    original->offset = 15.0;
    original->refCount = 7;
    const zgCurveLocation copy(*original);
    EXPECT_EQ(copy.overlap, true);
    EXPECT_EQ(copy.refCount, 7);
    EXPECT_EQ(copy.version, original->version);
    EXPECT_EQ(copy.path, path.get());
    EXPECT_EQ(copy.curve, path->curves.at(1));
    EXPECT_DOUBLE_EQ(copy.offset, 15.0);
    EXPECT_DOUBLE_EQ(copy.time, 0.5);
    EXPECT_DOUBLE_EQ(copy.distance, 4.0);
    expectPoint(copy.point, 15, 0);
    EXPECT_EQ(copy.intersection(), partner.get());
    EXPECT_EQ(copy.next(), partner.get());
    EXPECT_EQ(copy.previous(), original.get());
    EXPECT_EQ(copy.segmentM(), path->segments.at(3));
    EXPECT_EQ(copy.segment1, path->segments.at(1));
    EXPECT_EQ(copy.segment2, path->segments.at(2));
    original->refCount = 0;
}

// ---------------------------------------------------------------------------
// Plain accessors

TEST(CurveLocation, AccessorsForwardToTheCurve)
{
    Owned<zgPath> path(cubicContour(archValues()));
    zgCurve *curve = path->curves.at(0);
    Owned<zgCurveLocation> location(locationAt(curve, 0.5));
    EXPECT_EQ(location->getIndex(), 0);
    EXPECT_EQ(location->getPath(), path.get());
    expectPoint(location->getPoint(), 5, 7.5);
    expectPoint(location->getTangent(), 1, 0);
    expectPoint(location->getNormal(), 0, -1);
    expectPoint(location->getWeightedTangent(), 15, 0);
    expectPoint(location->getWeightedNormal(), 0, -15);
    // B' = (15, 0), B'' = (0, -60): |curvature| = 900 / 15^3.
    EXPECT_NEAR(std::fabs(location->getCurvature()), 900.0 / 3375.0, 1e-12);
    EXPECT_DOUBLE_EQ(location->getCurvature(), zgCurve::getCurvature(archValues(), 0.5));
}

TEST(CurveLocation, ChainLinksArePlainPointers)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> a(locationAt(path->curves.at(0), 0.5));
    Owned<zgCurveLocation> b(locationAt(path->curves.at(1), 0.5));
    a->setNext(b.get());
    b->setPrevious(a.get());
    a->setIntersection(b.get());
    EXPECT_EQ(a->next(), b.get());
    EXPECT_EQ(b->previous(), a.get());
    EXPECT_EQ(a->intersection(), b.get());
    EXPECT_EQ(b->intersection(), nullptr); // setting is one-sided
    EXPECT_EQ(a->refCount, 0);
    EXPECT_EQ(b->refCount, 0);
    a->setSegment1(path->segments.at(3));
    a->setSegment2(nullptr);
    EXPECT_EQ(a->segment1, path->segments.at(3));
    EXPECT_EQ(a->segment2, nullptr);
}

// ---------------------------------------------------------------------------
// setCurve, setSegment, setSegmentPrev

TEST(CurveLocation, SetCurveTakesPathVersionAndSegmentsButNotTimeOrOffset)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(new zgCurveLocation());
    location->time = 0.7;
    location->offset = 3.0;
    location->setSegmentM(path->segments.at(0));
    location->setCurve(nullptr);
    EXPECT_EQ(location->curve, nullptr);
    EXPECT_EQ(location->segmentM(), path->segments.at(0));

    location->setCurve(path->curves.at(2));
    EXPECT_EQ(location->curve, path->curves.at(2));
    EXPECT_EQ(location->path, path.get());
    EXPECT_EQ(location->version, path->version);
    EXPECT_EQ(location->segment1, path->segments.at(2));
    EXPECT_EQ(location->segment2, path->segments.at(3));
    EXPECT_EQ(location->segmentM(), nullptr);
    EXPECT_DOUBLE_EQ(location->time, 0.7);
    EXPECT_DOUBLE_EQ(location->offset, 3.0);
}

TEST(CurveLocation, SetSegmentStandsAtTheStartOfTheSegmentsCurve)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(new zgCurveLocation());
    location->setSegment(path->segments.at(1));
    EXPECT_EQ(location->curve, path->curves.at(1));
    EXPECT_EQ(location->segmentM(), path->segments.at(1));
    EXPECT_EQ(location->time, 0.0);
    expectPoint(location->point, 10, 0, 0.0);
}

TEST(CurveLocation, SetSegmentOnTheLastSegmentOfAnOpenPathStandsAtTimeOne)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(new zgCurveLocation());
    location->setSegment(path->segments.at(3));
    EXPECT_EQ(location->curve, path->curves.at(2));
    EXPECT_EQ(location->time, 1.0);
    expectPoint(location->point, 30, 0, 0.0);
}

TEST(CurveLocation, SetSegmentWithoutACurveKeepsTheOldCurve)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.5));
    Owned<zgSegment> loose(new zgSegment(3, 4));
    location->setSegment(loose.get());
    EXPECT_EQ(location->curve, path->curves.at(0));
    EXPECT_EQ(location->segmentM(), loose.get());
    EXPECT_EQ(location->time, 1.0); // not segment1
    expectPoint(location->point, 3, 4, 0.0);
    // The curve's own first segment gives time 0.
    location->setSegment(path->segments.at(0));
    EXPECT_EQ(location->time, 0.0);
}

TEST(CurveLocation, SetSegmentPrevTakesTheCurveBefore)
{
    Owned<zgPath> open(straightRun());
    Owned<zgCurveLocation> location(new zgCurveLocation());
    location->setSegmentPrev(open->segments.at(2));
    EXPECT_EQ(location->curve, open->curves.at(1));
    EXPECT_EQ(location->time, 1.0);
    expectPoint(location->point, 20, 0, 0.0);

    // On a closed contour only segment 0 answers with the curve before it.
    Owned<zgPath> closed(closedSquare());
    location->setSegmentPrev(closed->segments.at(0));
    EXPECT_EQ(location->curve, closed->curves.at(3));
    EXPECT_EQ(location->time, 1.0);
    location->setSegmentPrev(closed->segments.at(2));
    EXPECT_EQ(location->curve, closed->curves.at(2));
    EXPECT_EQ(location->time, 0.0);
}

// ---------------------------------------------------------------------------
// getCurve and the failure values

TEST(CurveLocation, GetCurveKeepsEverythingWhileTheVersionStands)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    location->time = 0.3;            // not where the point is
    location->setSegmentM(path->segments.at(0));
    EXPECT_EQ(location->getCurve(), path->curves.at(1));
    EXPECT_DOUBLE_EQ(location->getTime(), 0.3);
}

TEST(CurveLocation, GetTimeComputesAnUnknownTimeFromThePoint)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.25));
    location->time = -100.0;
    EXPECT_NEAR(location->getTime(), 0.25, 1e-12);
    EXPECT_NEAR(location->time, 0.25, 1e-12);
}

TEST(CurveLocation, AfterAnEditTheCurveIsFoundAgainThroughSegment1)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(1);
    Owned<zgCurveLocation> location(locationAt(curve, 0.5));
    EXPECT_DOUBLE_EQ(location->getOffset(), 15.0);
    path->insertSegment(0, new zgSegment(-10, 0));
    ASSERT_NE(location->version, path->version);

    EXPECT_EQ(location->getCurve(), curve);
    EXPECT_EQ(location->version, path->version);
    EXPECT_EQ(location->segmentM(), path->segments.at(2)); // the old segment1
    EXPECT_NEAR(location->time, 0.5, 1e-12);
    EXPECT_DOUBLE_EQ(location->offset, -1.0);
    EXPECT_EQ(location->getIndex(), 2);
    expectPoint(location->point, 15, 0, 0.0);
}

TEST(CurveLocation, AfterAnEditSegmentMIsTriedFirst)
{
    Owned<zgPath> path(straightRun());
    // At the joint (10, 0), which lies on curve 0 (t = 1) and curve 1 (t = 0).
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.0));
    location->setSegmentM(path->segments.at(0));
    path->addSegment(new zgSegment(40, 0));

    EXPECT_EQ(location->getCurve(), path->curves.at(0));
    EXPECT_EQ(location->segmentM(), path->segments.at(0));
    EXPECT_EQ(location->time, 1.0);
    EXPECT_EQ(location->segment1, path->segments.at(0));
    EXPECT_EQ(location->segment2, path->segments.at(1));
}

TEST(CurveLocation, AfterAnEditThePreviousSegmentOfSegment2IsTriedLast)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5)); // (15, 0)
    // The location counts no segment: keep the one that goes alive for the
    // attempt through it.
    Owned<zgSegment> removed(path->segments.at(1));
    removed->addRef();
    path->removeSegment(1);
    ASSERT_EQ(removed->path, nullptr);

    // Segment1 has no curve any more; segment2 (20, 0) is now preceded by
    // (0, 0), whose curve runs through the point at three quarters of its
    // chord: 3t^2 - 2t^3 = 0.75 at t = 0.6736481776669303.
    zgCurve *found = location->getCurve();
    EXPECT_EQ(found, path->curves.at(0));
    EXPECT_EQ(location->segmentM(), path->segments.at(0));
    EXPECT_NEAR(location->time, 0.6736481776669303, 1e-12);
    EXPECT_EQ(location->getIndex(), 0);
    EXPECT_NEAR(location->getOffset(), 15.0, 1e-10);
}

// The location at (5, 0) on curve 0, after its first point went to (0, 5)
// and the contour was changed: no curve of the contour holds the point.
struct LostLocation
{
    Owned<zgPath> path{straightRun()};
    Owned<zgCurveLocation> location{locationAt(path->curves.at(0), 0.5)};

    void lose()
    {
        path->segments.at(0)->setPoint(zgPoint(0, 5));
        path->addSegment(new zgSegment(40, 0));
    }
};

TEST(CurveLocation, MovingPointsAloneIsNoEdit)
{
    LostLocation lost;
    lost.path->segments.at(0)->setPoint(zgPoint(0, 5));
    EXPECT_EQ(lost.location->getCurve(), lost.path->curves.at(0));
    EXPECT_DOUBLE_EQ(lost.location->getTime(), 0.5);
}

TEST(CurveLocation, ALostLocationGivesTheFailureValues)
{
    LostLocation lost;
    lost.lose();
    zgCurveLocation *location = lost.location.get();
    EXPECT_EQ(location->getCurve(), nullptr);
    EXPECT_EQ(location->time, -100.0); // the failed attempts left it so
    EXPECT_EQ(location->getIndex(), -1);
    EXPECT_EQ(location->getTime(), -100.0);
    EXPECT_EQ(location->getCurveOffset(), 0.0);
    EXPECT_EQ(location->getOffset(), 0.0);
    EXPECT_EQ(location->getSegment(), nullptr);
    EXPECT_EQ(location->getPath(), nullptr);
    EXPECT_TRUE(isNaNPoint(location->getTangent()));
    EXPECT_TRUE(isNaNPoint(location->getNormal()));
    EXPECT_TRUE(isNaNPoint(location->getWeightedTangent()));
    EXPECT_TRUE(isNaNPoint(location->getWeightedNormal()));
    EXPECT_TRUE(std::isnan(location->getCurvature()));
    // The point never changes on that road.
    expectPoint(location->point, 5, 0, 0.0);
}

TEST(CurveLocation, ALostLocationHasNoSegmentEvenIfItRememberedOne)
{
    LostLocation lost;
    EXPECT_EQ(lost.location->getSegment(), lost.path->segments.at(1)); // tie at 0.5
    lost.lose();
    EXPECT_EQ(lost.location->getSegment(), nullptr);
    EXPECT_EQ(lost.location->getCurve(), nullptr);
}

// ---------------------------------------------------------------------------
// Offsets

TEST(CurveLocation, GetOffsetSumsTheCurvesBeforeAndCaches)
{
    Owned<zgPath> path(builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 20),
                                     zgPoint(40, 20)}, false));
    Owned<zgCurveLocation> location(locationAt(path->curves.at(2), 0.5));
    EXPECT_DOUBLE_EQ(location->getCurveOffset(), 15.0);
    EXPECT_DOUBLE_EQ(location->getOffset(), 10.0 + 20.0 + 15.0);
    EXPECT_DOUBLE_EQ(location->offset, 45.0);
    // A known offset is returned as it is while the contour is unchanged.
    location->offset = 7.0;
    EXPECT_DOUBLE_EQ(location->getOffset(), 7.0);
}

TEST(CurveLocation, GetOffsetRecomputesAfterAChangeOfVersion)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    EXPECT_DOUBLE_EQ(location->getOffset(), 15.0);
    path->insertSegment(0, new zgSegment(-5, 0));
    EXPECT_NEAR(location->getOffset(), 20.0, 1e-10);
    EXPECT_EQ(location->getIndex(), 2);
}

TEST(CurveLocation, GetOffsetOfAFreeCurveIsTheCurveOffset)
{
    Owned<zgCurve> curve(new zgCurve(QVector<double>{0, 0, 0, 0, 10, 0, 10, 0}, nullptr));
    Owned<zgCurveLocation> location(locationAt(curve.get(), 0.25));
    // A straight curve is measured along its chord: up to (1.5625, 0).
    EXPECT_DOUBLE_EQ(location->getOffset(), 1.5625);
}

TEST(CurveLocation, CurveOffsetOfACubicIsItsPartLength)
{
    Owned<zgPath> path(cubicContour(archValues()));
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.5));
    EXPECT_DOUBLE_EQ(location->getCurveOffset(), zgCurve::getLength(archValues(), 0.0, 0.5));
    // By symmetry, half of the arch (about 20 long).
    EXPECT_NEAR(location->getCurveOffset(), 0.5 * zgCurve::getLength(archValues(), 0.0, 1.0),
                1e-9);
    EXPECT_NEAR(location->getCurveOffset(), 10.0, 1e-6);
}

// ---------------------------------------------------------------------------
// getSegment

TEST(CurveLocation, GetSegmentAtTheEndsIsThatSegment)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> start(locationAt(path->curves.at(1), 0.0));
    EXPECT_EQ(start->getSegment(), path->segments.at(1));
    Owned<zgCurveLocation> end(locationAt(path->curves.at(2), 1.0));
    EXPECT_EQ(end->getSegment(), path->segments.at(3));
}

TEST(CurveLocation, GetSegmentAtTheExactMiddleIsTheSecondSegment)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> middle(locationAt(path->curves.at(1), 0.5));
    EXPECT_EQ(middle->getSegment(), path->segments.at(2));
    EXPECT_EQ(middle->segmentM(), path->segments.at(2)); // stored
}

TEST(CurveLocation, GetSegmentEitherSideOfTheMiddle)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> before(locationAt(path->curves.at(1), 0.5 - 1e-9));
    EXPECT_EQ(before->getSegment(), path->segments.at(1));
    Owned<zgCurveLocation> after(locationAt(path->curves.at(1), 0.5 + 1e-9));
    EXPECT_EQ(after->getSegment(), path->segments.at(2));
    Owned<zgCurveLocation> quarter(locationAt(path->curves.at(1), 0.25));
    EXPECT_EQ(quarter->getSegment(), path->segments.at(1));
}

TEST(CurveLocation, GetSegmentReturnsAKnownSegmentM)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.1));
    location->setSegmentM(path->segments.at(3));
    EXPECT_EQ(location->getSegment(), path->segments.at(3));
}

// ---------------------------------------------------------------------------
// equals

TEST(CurveLocation, EqualsItself)
{
    LostLocation lost;
    lost.lose();
    EXPECT_TRUE(lost.location->equals(lost.location.get(), false));
}

TEST(CurveLocation, EqualsNeedsTheSamePath)
{
    Owned<zgPath> first(straightRun());
    Owned<zgPath> second(straightRun());
    Owned<zgCurveLocation> a(locationAt(first->curves.at(0), 0.5));
    Owned<zgCurveLocation> b(locationAt(second->curves.at(0), 0.5));
    EXPECT_FALSE(a->equals(b.get(), false));
    Owned<zgCurveLocation> c(locationAt(first->curves.at(0), 0.5));
    EXPECT_TRUE(a->equals(c.get(), false));
}

TEST(CurveLocation, EqualsTestsThePointFirst)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(0);
    Owned<zgCurveLocation> a(new zgCurveLocation(curve, 0.5, zgPoint(5, 0), false, 0.0));
    // The same time on paper, but 3e-07 apart: different places.
    Owned<zgCurveLocation> far(new zgCurveLocation(curve, 0.5, zgPoint(5, 3e-07), false, 0.0));
    EXPECT_FALSE(a->equals(far.get(), false));
    EXPECT_FALSE(far->equals(a.get(), false));
    Owned<zgCurveLocation> near(new zgCurveLocation(curve, 0.5, zgPoint(5, 1e-07), false, 0.0));
    EXPECT_TRUE(a->equals(near.get(), false));
}

TEST(CurveLocation, EqualsByTimeWithin4e07)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(0);
    Owned<zgCurveLocation> a(new zgCurveLocation(curve, 0.5, zgPoint(5, 0), false, 0.0));
    Owned<zgCurveLocation> close(new zgCurveLocation(curve, 0.5 + 3e-07, zgPoint(5, 0), false,
                                                     0.0));
    Owned<zgCurveLocation> apart(new zgCurveLocation(curve, 0.5 + 5e-07, zgPoint(5, 0), false,
                                                     0.0));
    // Offsets far apart, so that only the time can make them equal.
    a->offset = 1.0;
    close->offset = 2.0;
    apart->offset = 2.0;
    EXPECT_TRUE(a->equals(close.get(), false));
    EXPECT_FALSE(a->equals(apart.get(), false));
}

TEST(CurveLocation, EqualsByOffsetWithin2e07)
{
    Owned<zgPath> path(closedSquare());
    zgCurve *curve = path->curves.at(1);
    Owned<zgCurveLocation> a(new zgCurveLocation(curve, 0.2, zgPoint(10, 3), false, 0.0));
    Owned<zgCurveLocation> b(new zgCurveLocation(curve, 0.7, zgPoint(10, 3), false, 0.0));
    a->offset = 5.0;
    b->offset = 5.0 + 1e-07;
    EXPECT_TRUE(a->equals(b.get(), false));
    b->offset = 5.0 + 3e-07;
    EXPECT_FALSE(a->equals(b.get(), false));
}

TEST(CurveLocation, EqualsByOffsetsOneWholeTurnApart)
{
    Owned<zgPath> path(closedSquare());
    ASSERT_DOUBLE_EQ(path->getLength(), 40.0);
    zgCurve *curve = path->curves.at(1);
    Owned<zgCurveLocation> a(new zgCurveLocation(curve, 0.2, zgPoint(10, 3), false, 0.0));
    Owned<zgCurveLocation> b(new zgCurveLocation(curve, 0.7, zgPoint(10, 3), false, 0.0));
    a->offset = 1.0;
    b->offset = 41.0 - 1e-07;
    EXPECT_TRUE(a->equals(b.get(), false));
    b->offset = 41.0 + 1e-07;
    EXPECT_TRUE(a->equals(b.get(), false));
    b->offset = 41.0 - 3e-07;
    EXPECT_FALSE(a->equals(b.get(), false));
}

TEST(CurveLocation, EqualsMeetsTheEndOfAClosedPathWithItsStart)
{
    Owned<zgPath> path(closedSquare());
    Owned<zgCurveLocation> end(new zgCurveLocation());
    end->setSegmentPrev(path->segments.at(0));
    ASSERT_EQ(end->getCurve(), path->curves.at(3));
    ASSERT_EQ(end->getTime(), 1.0);
    Owned<zgCurveLocation> start(locationAt(path->curves.at(0), 0.0));
    EXPECT_TRUE(end->equals(start.get(), false));
    EXPECT_TRUE(start->equals(end.get(), false));
    // The time test alone decides: offsets that say otherwise don't matter.
    end->offset = 5.0;
    start->offset = 17.0;
    EXPECT_TRUE(end->equals(start.get(), false));
    EXPECT_TRUE(start->equals(end.get(), false));
}

TEST(CurveLocation, EqualsShiftsTheLastCurveOfAnOpenPathToo)
{
    // An open contour that ends where it starts.
    Owned<zgPath> path(builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10),
                                     zgPoint(0, 0)}, false));
    Owned<zgCurveLocation> end(locationAt(path->curves.at(2), 1.0));
    Owned<zgCurveLocation> start(locationAt(path->curves.at(0), 0.0));
    end->offset = 5.0;
    start->offset = 17.0;
    EXPECT_TRUE(end->equals(start.get(), false));
    EXPECT_TRUE(start->equals(end.get(), false));
}

// Two equal locations a and b on path (0, 0)-(10, 0) at (5, 0), and places on
// the crossing line (5, -5)-(5, 5) for their partners.
struct CrossingPair
{
    Owned<zgPath> path{builtContour({zgPoint(0, 0), zgPoint(10, 0)}, false)};
    Owned<zgPath> line{builtContour({zgPoint(5, -5), zgPoint(5, 5)}, false)};
    Owned<zgCurveLocation> a{locationAt(path->curves.at(0), 0.5)};
    Owned<zgCurveLocation> b{locationAt(path->curves.at(0), 0.5)};
    Owned<zgCurveLocation> onLine1{locationAt(line->curves.at(0), 0.5)};
    Owned<zgCurveLocation> onLine2{locationAt(line->curves.at(0), 0.5)};
    Owned<zgCurveLocation> elsewhere{locationAt(line->curves.at(0), 0.25)};
};

TEST(CurveLocation, EqualsComparesTheIntersectionsUnlessIgnored)
{
    CrossingPair pairs;
    pair(pairs.a.get(), pairs.onLine1.get());
    pair(pairs.b.get(), pairs.elsewhere.get());
    EXPECT_FALSE(pairs.a->equals(pairs.b.get(), false));
    EXPECT_TRUE(pairs.a->equals(pairs.b.get(), true));
    pair(pairs.b.get(), pairs.onLine2.get());
    EXPECT_TRUE(pairs.a->equals(pairs.b.get(), false));
}

TEST(CurveLocation, EqualsWithoutIntersectionNeedsNoneOnTheOther)
{
    CrossingPair pairs;
    EXPECT_TRUE(pairs.a->equals(pairs.b.get(), false));
    pairs.b->setIntersection(pairs.onLine2.get());
    EXPECT_FALSE(pairs.a->equals(pairs.b.get(), false));
    EXPECT_FALSE(pairs.b->equals(pairs.a.get(), false));
    EXPECT_TRUE(pairs.a->equals(pairs.b.get(), true));
}

// ---------------------------------------------------------------------------
// insert

TEST(CurveLocation, InsertIntoAnEmptyList)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.5));
    QList<zgCurveLocation *> list;
    EXPECT_EQ(zgCurveLocation::insert(list, location.get(), true), location.get());
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0), location.get());
    EXPECT_EQ(location->refCount, 0); // the list takes no reference
}

TEST(CurveLocation, InsertMergesAnEqualLocationAtTheFront)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> there(locationAt(path->curves.at(0), 0.5));
    Owned<zgCurveLocation> given(locationAt(path->curves.at(0), 0.5));
    QList<zgCurveLocation *> list{there.get()};
    EXPECT_EQ(zgCurveLocation::insert(list, given.get(), true), there.get());
    EXPECT_EQ(list.size(), 1);
    // The location itself is a match too.
    EXPECT_EQ(zgCurveLocation::insert(list, there.get(), true), there.get());
    EXPECT_EQ(list.size(), 1);
    // Without merge it goes in behind the equal one.
    EXPECT_EQ(zgCurveLocation::insert(list, given.get(), false), given.get());
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(1), given.get());
}

TEST(CurveLocation, InsertMergeScanSeesOnlyTheLeadingRun)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> elsewhere(locationAt(path->curves.at(0), 0.1));
    Owned<zgCurveLocation> equal(locationAt(path->curves.at(0), 0.5));
    Owned<zgCurveLocation> given(locationAt(path->curves.at(0), 0.5));
    QList<zgCurveLocation *> list{elsewhere.get(), equal.get()};
    EXPECT_EQ(zgCurveLocation::insert(list, given.get(), true), given.get());
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(list.at(0), elsewhere.get());
    EXPECT_EQ(list.at(1), equal.get());
    EXPECT_EQ(list.at(2), given.get());
}

TEST(CurveLocation, InsertMergeScanPassesOverOtherEntriesAtThePoint)
{
    CrossingPair pairs;
    // On the other path at the same point, and on the same path at the same
    // point with another intersection: both passed over.
    pair(pairs.b.get(), pairs.elsewhere.get());
    Owned<zgCurveLocation> equal(locationAt(pairs.path->curves.at(0), 0.5));
    QList<zgCurveLocation *> list{pairs.onLine1.get(), pairs.b.get(), equal.get()};
    EXPECT_EQ(zgCurveLocation::insert(list, pairs.a.get(), true), equal.get());
    EXPECT_EQ(list.size(), 3);
}

TEST(CurveLocation, InsertMergeScanStopsBeyond2e07)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(0);
    Owned<zgCurveLocation> given(new zgCurveLocation(curve, 0.5, zgPoint(5, 0), false, 0.0));
    Owned<zgCurveLocation> near(new zgCurveLocation(curve, 0.5, zgPoint(5, 1e-07), false, 0.0));
    QList<zgCurveLocation *> list{near.get()};
    EXPECT_EQ(zgCurveLocation::insert(list, given.get(), true), near.get());
    Owned<zgCurveLocation> far(new zgCurveLocation(curve, 0.5, zgPoint(5, 3e-07), false, 0.0));
    QList<zgCurveLocation *> other{far.get()};
    EXPECT_EQ(zgCurveLocation::insert(other, given.get(), true), given.get());
    EXPECT_EQ(other.size(), 2);
}

TEST(CurveLocation, InsertOfAnOverlapTurnsTheMatchAndItsPartnerIntoOverlaps)
{
    CrossingPair pairs;
    pair(pairs.a.get(), pairs.onLine1.get());
    pair(pairs.b.get(), pairs.onLine2.get());
    pairs.b->overlap = true;
    QList<zgCurveLocation *> list{pairs.a.get()};
    EXPECT_EQ(zgCurveLocation::insert(list, pairs.b.get(), true), pairs.a.get());
    EXPECT_EQ(list.size(), 1);
    EXPECT_TRUE(pairs.a->overlap);
    EXPECT_TRUE(pairs.onLine1->overlap);
    EXPECT_FALSE(pairs.onLine2->overlap); // the given side is left as it was
}

TEST(CurveLocation, InsertOfAPlainLocationLeavesTheMatchPlain)
{
    CrossingPair pairs;
    pair(pairs.a.get(), pairs.onLine1.get());
    pair(pairs.b.get(), pairs.onLine2.get());
    QList<zgCurveLocation *> list{pairs.a.get()};
    EXPECT_EQ(zgCurveLocation::insert(list, pairs.b.get(), true), pairs.a.get());
    EXPECT_FALSE(pairs.a->overlap);
    EXPECT_FALSE(pairs.onLine1->overlap);
}

TEST(CurveLocation, InsertSortsByIndexPlusTime)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> late(locationAt(path->curves.at(1), 0.1));  // 1.1
    Owned<zgCurveLocation> early(locationAt(path->curves.at(0), 0.9)); // 0.9
    Owned<zgCurveLocation> last(locationAt(path->curves.at(2), 0.0));  // 2.0
    QList<zgCurveLocation *> list;
    zgCurveLocation::insert(list, late.get(), false);
    zgCurveLocation::insert(list, last.get(), false);
    zgCurveLocation::insert(list, early.get(), false);
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(list.at(0), early.get());
    EXPECT_EQ(list.at(1), late.get());
    EXPECT_EQ(list.at(2), last.get());
}

TEST(CurveLocation, InsertPutsAnEqualKeyBehind)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> first(locationAt(path->curves.at(0), 0.5));
    Owned<zgCurveLocation> second(locationAt(path->curves.at(0), 0.5));
    Owned<zgCurveLocation> third(locationAt(path->curves.at(0), 0.5));
    QList<zgCurveLocation *> list;
    zgCurveLocation::insert(list, first.get(), false);
    zgCurveLocation::insert(list, second.get(), false);
    zgCurveLocation::insert(list, third.get(), false);
    EXPECT_EQ(list, (QList<zgCurveLocation *>{first.get(), second.get(), third.get()}));
}

TEST(CurveLocation, InsertSortsDifferentPathsByPathId)
{
    Owned<zgPath> lower(straightRun());
    Owned<zgPath> higher(straightRun());
    ASSERT_LT(lower->id, higher->id);
    Owned<zgCurveLocation> onLower(locationAt(lower->curves.at(2), 0.9));
    Owned<zgCurveLocation> onHigher(locationAt(higher->curves.at(0), 0.1));
    Owned<zgCurveLocation> onLowerToo(locationAt(lower->curves.at(2), 0.95));
    QList<zgCurveLocation *> list;
    zgCurveLocation::insert(list, onHigher.get(), false);
    zgCurveLocation::insert(list, onLower.get(), false);
    zgCurveLocation::insert(list, onLowerToo.get(), false);
    EXPECT_EQ(list, (QList<zgCurveLocation *>{onLower.get(), onLowerToo.get(), onHigher.get()}));
}

TEST(CurveLocation, InsertIsABinarySearchEvenOnAnUnsortedList)
{
    Owned<zgPath> path(straightRun());
    zgCurve *curve = path->curves.at(0);
    Owned<zgCurveLocation> k9(locationAt(curve, 0.9));
    Owned<zgCurveLocation> k1(locationAt(curve, 0.1));
    Owned<zgCurveLocation> k5(locationAt(curve, 0.5));
    Owned<zgCurveLocation> k3(locationAt(curve, 0.3));
    QList<zgCurveLocation *> list{k9.get(), k1.get(), k5.get()};
    // m = 1 (0.1): behind it; m = 2 (0.5): before it; so position 2.
    zgCurveLocation::insert(list, k3.get(), false);
    EXPECT_EQ(list, (QList<zgCurveLocation *>{k9.get(), k1.get(), k3.get(), k5.get()}));
}

TEST(CurveLocation, InsertMakesTheTimesKnownOnTheWay)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> entry(locationAt(path->curves.at(0), 0.5));
    Owned<zgCurveLocation> given(locationAt(path->curves.at(0), 0.25));
    entry->time = -100.0;
    QList<zgCurveLocation *> list{entry.get()};
    zgCurveLocation::insert(list, given.get(), false);
    EXPECT_NEAR(entry->time, 0.5, 1e-12);
    EXPECT_EQ(list, (QList<zgCurveLocation *>{given.get(), entry.get()}));
}

TEST(CurveLocation, InsertOfNullAddsNothing)
{
    QList<zgCurveLocation *> list;
    EXPECT_EQ(zgCurveLocation::insert(list, nullptr, true), nullptr);
    EXPECT_TRUE(list.isEmpty());
}

// ---------------------------------------------------------------------------
// expand

TEST(CurveLocation, ExpandAddsThePartnersInOrder)
{
    Owned<zgPath> first(straightRun());
    Owned<zgPath> second(straightRun());
    Owned<zgCurveLocation> e1(locationAt(first->curves.at(0), 0.2));
    Owned<zgCurveLocation> e2(locationAt(first->curves.at(1), 0.5));
    Owned<zgCurveLocation> p1(locationAt(second->curves.at(0), 0.7));
    Owned<zgCurveLocation> p2(locationAt(second->curves.at(0), 0.3));
    pair(e1.get(), p1.get());
    pair(e2.get(), p2.get());
    const QList<zgCurveLocation *> given{e1.get(), e2.get()};
    const QList<zgCurveLocation *> expanded = zgCurveLocation::expand(given);
    EXPECT_EQ(expanded, (QList<zgCurveLocation *>{e1.get(), e2.get(), p2.get(), p1.get()}));
    EXPECT_EQ(given.size(), 2);
}

TEST(CurveLocation, ExpandInsertsFromTheLastEntryToTheFirst)
{
    Owned<zgPath> first(straightRun());
    Owned<zgPath> second(straightRun());
    Owned<zgCurveLocation> e1(locationAt(second->curves.at(0), 0.2));
    Owned<zgCurveLocation> e2(locationAt(second->curves.at(1), 0.5));
    // Equal keys on the path with the lower id: the partner of the last entry
    // goes in first, the other one behind it, and both before the entries.
    Owned<zgCurveLocation> p1(locationAt(first->curves.at(0), 0.4));
    Owned<zgCurveLocation> p2(locationAt(first->curves.at(0), 0.4));
    pair(e1.get(), p1.get());
    pair(e2.get(), p2.get());
    const QList<zgCurveLocation *> expanded = zgCurveLocation::expand({e1.get(), e2.get()});
    EXPECT_EQ(expanded, (QList<zgCurveLocation *>{p2.get(), p1.get(), e1.get(), e2.get()}));
}

// ---------------------------------------------------------------------------
// isTouching and isCrossing at inner times

// A location at time a on one contour paired with one at time b on the
// other, both with computed points; the contours are held here too.
struct Meeting
{
    Owned<zgPath> first;
    Owned<zgPath> second;
    Owned<zgCurveLocation> here;
    Owned<zgCurveLocation> there;

    Meeting(zgPath *p, int curveP, double a, zgPath *q, int curveQ, double b)
        : first(p), second(q), here(locationAt(p->curves.at(curveP), a)),
          there(locationAt(q->curves.at(curveQ), b))
    {
        pair(here.get(), there.get());
    }
};

TEST(CurveLocation, NoIntersectionIsNeitherTouchingNorCrossing)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    EXPECT_FALSE(location->isTouching());
    EXPECT_FALSE(location->isCrossing());
    Owned<zgCurveLocation> joint(locationAt(path->curves.at(1), 0.0));
    EXPECT_FALSE(joint->isCrossing());
}

TEST(CurveLocation, PerpendicularLinesCross)
{
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(10, 0)}, false), 0, 0.5,
              builtContour({zgPoint(5, -5), zgPoint(5, 5)}, false), 0, 0.5);
    EXPECT_FALSE(m.here->isTouching());
    EXPECT_TRUE(m.here->isCrossing());
    EXPECT_TRUE(m.there->isCrossing());
}

TEST(CurveLocation, ACurveOnItsTangentLineTouches)
{
    Meeting m(cubicContour(archValues()), 0, 0.5,
              builtContour({zgPoint(0, 7.5), zgPoint(10, 7.5)}, false), 0, 0.5);
    EXPECT_TRUE(m.here->isTouching());
    EXPECT_TRUE(m.there->isTouching());
    EXPECT_FALSE(m.here->isCrossing());
    EXPECT_FALSE(m.there->isCrossing());
}

TEST(CurveLocation, AnInflectionOnItsTangentLineCountsAsTouchingAtInnerTimes)
{
    // y = 0 at t = 0.5 with a horizontal tangent, below before and above
    // after: it does cross the line, but at inner times only the tangents are
    // compared.
    Meeting m(cubicContour({0, -1, 10.0 / 3.0, 1, 20.0 / 3.0, -1, 10, 1}), 0, 0.5,
              builtContour({zgPoint(0, 0), zgPoint(10, 0)}, false), 0, 0.5);
    expectPoint(m.here->point, 5, 0);
    EXPECT_TRUE(m.here->isTouching());
    EXPECT_FALSE(m.here->isCrossing());
}

TEST(CurveLocation, NearlyCollinearStraightLinesWithARealIntersectionCross)
{
    // Tangents 2e-09 apart in direction count as collinear, but the finite
    // lines do intersect at (5, 0).
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(10, 0)}, false), 0, 0.5,
              builtContour({zgPoint(0, -1e-08), zgPoint(10, 1e-08)}, false), 0, 0.5);
    ASSERT_TRUE(m.here->getTangent().isCollinear(m.there->getTangent()));
    EXPECT_FALSE(m.here->isTouching());
    EXPECT_TRUE(m.here->isCrossing());
}

TEST(CurveLocation, CollinearOverlappingStraightLinesTouch)
{
    // Parallel lines have no intersection point.
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(10, 0)}, false), 0, 0.5,
              builtContour({zgPoint(-5, 0), zgPoint(15, 0)}, false), 0, 0.5);
    EXPECT_TRUE(m.here->isTouching());
    EXPECT_FALSE(m.here->isCrossing());
}

// ---------------------------------------------------------------------------
// isCrossing at joints
//
// The hand-worked answers below use the angles in degrees of the four
// directions: a1, a2 along the path of the location (before and after it),
// a3, a4 along the other path.

TEST(CurveLocation, TJunctionThroughAJointCrosses)
{
    // The path (0, 0) (10, 0) (20, 0) is passed at its joint by the vertical
    // line x = 10. Samples at 10 / 64 along the path: a1 = 180, a2 = 0; the
    // line's tangents: a3 = -90, a4 = 90. inRange(-90, 180, 0) is true and
    // inRange(90, 180, 0) false; inRange(-90, 0, 180) false and
    // inRange(90, 0, 180) true: crossing.
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)}, false), 1, 0.0,
              builtContour({zgPoint(10, -10), zgPoint(10, 10)}, false), 0, 0.5);
    EXPECT_TRUE(m.here->isCrossing());
    // From the line's side: a inside, the path sampled at its joint.
    EXPECT_TRUE(m.there->isCrossing());
}

TEST(CurveLocation, ACornerOnAStraightPathTouches)
{
    // The V (5, 10) (10, 0) (15, 10) stands on the path at its joint (10, 0).
    // a1 = 180, a2 = 0; a3 = 116.57, a4 = 63.43: both directions of the V lie
    // on the same side: not crossing.
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)}, false), 1, 0.0,
              builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, 10)}, false), 1, 0.0);
    EXPECT_FALSE(m.here->isCrossing());
    EXPECT_FALSE(m.there->isCrossing());
}

TEST(CurveLocation, ACornerThroughAStraightPathCrosses)
{
    // The path (5, 10) (10, 0) (15, -10) turns at (10, 0) and passes to the
    // other side: a3 = 116.57, a4 = -63.43.
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)}, false), 1, 0.0,
              builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, -10)}, false), 1, 0.0);
    EXPECT_TRUE(m.here->isCrossing());
    EXPECT_TRUE(m.there->isCrossing());
}

TEST(CurveLocation, ACornerOnAStraightLineTouchesFromEitherSide)
{
    // The line is one curve, met at t = 0.5: only the V is sampled.
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(20, 0)}, false), 0, 0.5,
              builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, 10)}, false), 1, 0.0);
    EXPECT_FALSE(m.here->isCrossing());
    EXPECT_FALSE(m.there->isCrossing());
}

TEST(CurveLocation, JointsAreSampledAtOneSixtyFourthOfTheShortestCurve)
{
    // The path (9, 0) (10, 0) (20, 0): its first curve is 1 long, the shortest
    // of the four, so the samples stand 1/64 from the joint. The other path
    // comes down x = 10 and leaves (10, 0) on the cubic (10, 0) (10.1, 0)
    // (10.2, -0.1) (10.3, 1) of length 1.12, whose tangent there is exactly
    // along the first path (0 degrees, the bound a2) but which dips below:
    // at 1/64 it stands at (10.015609, -0.000629), a4 = -2.31 degrees.
    // a1 = 180, a2 = 0, a3 = 90: inRange(90, 180, 0) false and
    // inRange(-2.31, 180, 0) true; inRange(90, 0, 180) true and
    // inRange(-2.31, 0, 180) false: crossing. At 10/64 it would stand above
    // (a4 = 22.35) and the same test would say touching, as would the
    // tangent.
    zgPath *other = new zgPath(nullptr, false);
    other->addSegment(new zgSegment(10, 10));
    other->addSegment(new zgSegment(zgPoint(10, 0), zgPoint(0, 0), zgPoint(0.1, 0)));
    other->addSegment(new zgSegment(zgPoint(10.3, 1), zgPoint(-0.1, -1.1), zgPoint(0, 0)));
    other->getCurves();
    Meeting m(builtContour({zgPoint(9, 0), zgPoint(10, 0), zgPoint(20, 0)}, false), 1, 0.0,
              other, 1, 0.0);
    ASSERT_NEAR(m.second->curves.at(1)->getLength(), 1.12027, 1e-5);
    const zgPoint sample = m.second->curves.at(1)->getPointAt(0.015625, false);
    EXPECT_NEAR(sample.x, 10.015609, 1e-6);
    EXPECT_NEAR(sample.y, -0.000629, 1e-6);
    EXPECT_TRUE(m.here->isCrossing());
    EXPECT_TRUE(m.there->isCrossing());
}

TEST(CurveLocation, EndTimeBoundDecidesBetweenTangentsAndSamples)
{
    // The V (5, 10) (10, 0) (15, 10) met on its first curve near the corner
    // by the line y = 0 at t = 0.5. At 0.9999996 the location counts as the
    // joint and the V is sampled: touching. Just inside, at 0.9999995, the
    // tangents of the V's first curve and of the line differ: crossing.
    Meeting atBound(builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, 10)}, false), 0,
                    0.9999996, builtContour({zgPoint(0, 0), zgPoint(20, 0)}, false), 0, 0.5);
    EXPECT_FALSE(atBound.here->isCrossing());
    EXPECT_FALSE(atBound.there->isCrossing());
    Meeting inside(builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, 10)}, false), 0,
                   0.9999995, builtContour({zgPoint(0, 0), zgPoint(20, 0)}, false), 0, 0.5);
    EXPECT_TRUE(inside.here->isCrossing());
    EXPECT_TRUE(inside.there->isCrossing());
}

TEST(CurveLocation, StartTimeBoundDecidesBetweenTangentsAndSamples)
{
    Meeting atBound(builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, 10)}, false), 1,
                    4e-07, builtContour({zgPoint(0, 0), zgPoint(20, 0)}, false), 0, 0.5);
    EXPECT_FALSE(atBound.here->isCrossing());
    EXPECT_FALSE(atBound.there->isCrossing());
    Meeting inside(builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, 10)}, false), 1,
                   5e-07, builtContour({zgPoint(0, 0), zgPoint(20, 0)}, false), 0, 0.5);
    EXPECT_TRUE(inside.here->isCrossing());
    EXPECT_TRUE(inside.there->isCrossing());
}

TEST(CurveLocation, StartTimeBoundOnEitherSideOfThePair)
{
    // The same bound seen from the other side of the pair: a line y = 0
    // meets an upturned V (0, -8) (6, 0) (12, -8) at its corner, where the
    // V's location is the partner. Up to and at 4e-07 on the V's second
    // curve the location is the corner, and the V only touches the line
    // there; just above it the tangent of that curve leaves the line:
    // crossing.
    for (double time : {3.99e-07, 4e-07, 4.01e-07}) {
        SCOPED_TRACE(time);
        Meeting m(builtContour({zgPoint(-5, 0), zgPoint(20, 0)}, false), 0, 0.44,
                  builtContour({zgPoint(0, -8), zgPoint(6, 0), zgPoint(12, -8)}, false), 1, time);
        const bool atTheCorner = time <= 4e-07;
        EXPECT_EQ(m.here->isCrossing(), !atTheCorner);
        EXPECT_EQ(m.there->isCrossing(), !atTheCorner);
    }
    // A path that runs straight through the line at its joint crosses at
    // every one of these times, on either side of the pair. At 4e-07 itself
    // the direction back is sampled on the curve before the joint; sampled
    // back from the end of the curve after it, it would point the same way
    // as the direction forward.
    for (double time : {3.99e-07, 4e-07, 4.01e-07}) {
        SCOPED_TRACE(time);
        Meeting there(builtContour({zgPoint(-5, 0), zgPoint(20, 0)}, false), 0, 0.44,
                      builtContour({zgPoint(0, -8), zgPoint(6, 0), zgPoint(12, 8)}, false), 1, time);
        EXPECT_TRUE(there.here->isCrossing());
        EXPECT_TRUE(there.there->isCrossing());
        Meeting here(builtContour({zgPoint(0, -8), zgPoint(6, 0), zgPoint(12, 8)}, false), 1, time,
                     builtContour({zgPoint(-5, 0), zgPoint(20, 0)}, false), 0, 0.44);
        EXPECT_TRUE(here.here->isCrossing());
        EXPECT_TRUE(here.there->isCrossing());
    }
}

TEST(CurveLocation, TimeOneStandsForTheJointWithTheNextCurve)
{
    Meeting m(builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)}, false), 0, 0.5,
              builtContour({zgPoint(10, -10), zgPoint(10, 10)}, false), 0, 0.5);
    m.here->time = 1.0;
    m.here->point = zgPoint(10, 0);
    EXPECT_TRUE(m.here->isCrossing());
    // The same V as above, touching.
    Meeting v(builtContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)}, false), 0, 0.5,
              builtContour({zgPoint(5, 10), zgPoint(10, 0), zgPoint(15, 10)}, false), 1, 0.0);
    v.here->time = 1.0;
    v.here->point = zgPoint(10, 0);
    EXPECT_FALSE(v.here->isCrossing());
}

TEST(CurveLocation, AMissingNeighbourCurveIsNoCrossing)
{
    // At the very start of an open path there is no curve before.
    Meeting start(builtContour({zgPoint(10, 0), zgPoint(20, 0)}, false), 0, 0.0,
                  builtContour({zgPoint(10, -10), zgPoint(10, 10)}, false), 0, 0.5);
    EXPECT_FALSE(start.here->isCrossing());
    EXPECT_FALSE(start.there->isCrossing());
    // At the very end (time 1.0 stays on the last curve) there is none after.
    Meeting end(builtContour({zgPoint(0, 0), zgPoint(10, 0)}, false), 0, 1.0,
                builtContour({zgPoint(10, -10), zgPoint(10, 10)}, false), 0, 0.5);
    EXPECT_FALSE(end.here->isCrossing());
    EXPECT_FALSE(end.there->isCrossing());
}

TEST(CurveLocation, AClosedPathHasACurveBeforeItsStart)
{
    // The square's corner (0, 0) at the start of its first curve: the curve
    // before is the closing one, so a1 = 90 (back up the left side), a2 = 0.
    // The diagonal from (-5, -5) to (5, 5) enters the square there:
    // a3 = -135, a4 = 45, one inside the corner and one outside: crossing.
    Meeting m(closedSquare(), 0, 0.0,
              builtContour({zgPoint(-5, -5), zgPoint(5, 5)}, false), 0, 0.5);
    EXPECT_TRUE(m.here->isCrossing());
    EXPECT_TRUE(m.there->isCrossing());
    // The diagonal from (-5, 5) to (5, -5) only touches the corner: a3 = 135
    // and a4 = -45 both lie outside.
    Meeting t(closedSquare(), 0, 0.0,
              builtContour({zgPoint(-5, 5), zgPoint(5, -5)}, false), 0, 0.5);
    EXPECT_FALSE(t.here->isCrossing());
    EXPECT_FALSE(t.there->isCrossing());
}

// ---------------------------------------------------------------------------
// divide and split

TEST(CurveLocation, DivideInsertsASegmentAndStandsOnIt)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 0.5));
    zgCurve *after = location->divide();
    ASSERT_NE(after, nullptr);
    ASSERT_EQ(path->segments.size(), 5);
    EXPECT_EQ(after, path->curves.at(1));
    zgSegment *inserted = path->segments.at(1);
    expectPoint(inserted->point, 5, 0);
    EXPECT_TRUE(inserted->handleIn.isZero()); // a straight curve, no handles asked
    EXPECT_TRUE(inserted->handleOut.isZero());
    EXPECT_EQ(after->segment1(), inserted);
    EXPECT_EQ(location->getCurve(), after);
    EXPECT_EQ(location->segmentM(), inserted);
    EXPECT_EQ(location->time, 0.0);
    EXPECT_EQ(location->version, path->version);
    expectPoint(location->point, 5, 0);
    // Every segment is held by the contour and by the curves at it.
    EXPECT_EQ(path->segments.at(0)->refCount, 2);
    EXPECT_EQ(inserted->refCount, 3);
    EXPECT_EQ(path->segments.at(2)->refCount, 3);
    EXPECT_EQ(path->segments.at(4)->refCount, 2);
    for (zgCurve *curve : path->curves)
        EXPECT_EQ(curve->refCount, 1);
    EXPECT_EQ(location->refCount, 0);
}

TEST(CurveLocation, DivideNearAnEndGivesNull)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(0), 3e-07));
    const int version = path->version;
    EXPECT_EQ(location->divide(), nullptr);
    EXPECT_EQ(path->segments.size(), 4);
    EXPECT_EQ(path->version, version);
    EXPECT_EQ(location->curve, path->curves.at(0));
    EXPECT_DOUBLE_EQ(location->time, 3e-07);
}

TEST(CurveLocation, DivideOfALostLocationGivesNull)
{
    LostLocation lost;
    lost.lose();
    EXPECT_EQ(lost.location->divide(), nullptr);
    EXPECT_EQ(lost.path->segments.size(), 5);
}

TEST(CurveLocation, DivideOfAFreeCurve)
{
    // A free curve shares its new segment with the new curve without a
    // reference of its own: deferred mode keeps the unbalanced counts safe.
    DeferredScope deferred;
    zgCurve *curve = new zgCurve(QVector<double>{0, 0, 0, 0, 10, 0, 10, 0}, nullptr);
    zgSegment *end = curve->segment2();
    zgCurveLocation *location = locationAt(curve, 0.25);
    zgCurve *after = location->divide();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->path(), nullptr);
    expectPoint(after->getPoint1(), 1.5625, 0);
    EXPECT_EQ(after->segment2(), end);
    EXPECT_EQ(curve->segment2(), after->segment1());
    // No curve of the new segment: the location keeps its curve and stands
    // at its end.
    EXPECT_EQ(location->curve, curve);
    EXPECT_EQ(location->segmentM(), after->segment1());
    EXPECT_EQ(location->time, 1.0);
    EXPECT_EQ(after->segment1()->refCount, 1);
    EXPECT_EQ(end->refCount, 2);
}

TEST(CurveLocation, SplitOfAnOpenPathGivesTheRearPiece)
{
    Owned<zgPath> path(straightRun());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    Owned<zgPath> piece(location->split());
    ASSERT_NE(piece, nullptr);
    ASSERT_NE(piece.get(), path.get());
    ASSERT_EQ(path->segments.size(), 3);
    expectPoint(path->segments.at(2)->point, 15, 0);
    ASSERT_EQ(piece->segments.size(), 3);
    expectPoint(piece->segments.at(0)->point, 15, 0);
    expectPoint(piece->segments.at(1)->point, 20, 0);
    expectPoint(piece->segments.at(2)->point, 30, 0);
    EXPECT_EQ(location->refCount, 0);
}

TEST(CurveLocation, SplitOfAClosedPathOpensItThere)
{
    Owned<zgPath> path(closedSquare());
    Owned<zgCurveLocation> location(locationAt(path->curves.at(1), 0.5));
    zgPath *piece = location->split();
    EXPECT_EQ(piece, path.get());
    EXPECT_FALSE(path->closed);
    ASSERT_EQ(path->segments.size(), 6);
    expectPoint(path->segments.at(0)->point, 10, 5);
    expectPoint(path->segments.at(1)->point, 10, 10);
    expectPoint(path->segments.at(4)->point, 10, 0);
    expectPoint(path->segments.at(5)->point, 10, 5);
}

TEST(CurveLocation, SplitOfALostLocationGivesNull)
{
    LostLocation lost;
    lost.lose();
    EXPECT_EQ(lost.location->split(), nullptr);
    EXPECT_EQ(lost.path->segments.size(), 5);
}

// ---------------------------------------------------------------------------
// toString

TEST(CurveLocation, ToStringText)
{
    Owned<zgPath> path(builtContour({zgPoint(0, 0), zgPoint(3, 0)}, false));
    Owned<zgCurveLocation> location(
        new zgCurveLocation(path->curves.at(0), 1.0 / 3.0, nanPoint(), false, 1234567.0));
    location->addRef(); // the handle gives it back
    EXPECT_EQ(location->toString().toStdString(),
              "point: x: 0.777778, y: 0 index: 0 1 time: 0.333333 distance: 1.23457e+06"
              " segment1: point: x: 0, y: 0, winding: -1, contour: 0, visited: 0 0 2"
              " segment2: point: x: 3, y: 0, winding: -1, contour: 0, visited: 0 1 2");
}

TEST(CurveLocation, ToStringOfAFreeCurveWithHandles)
{
    Owned<zgCurve> curve(new zgCurve(QVector<double>{0, 0, 0, 10, 10, 10, 10, 0}, nullptr));
    Owned<zgCurveLocation> location(
        new zgCurveLocation(curve.get(), 0.125, zgPoint(0.5, 2.5), false, 0.0));
    EXPECT_EQ(location->toString().toStdString(),
              "point: x: 0.5, y: 2.5 index: -1 0 time: 0.125 distance: 0"
              " segment1: point: x: 0, y: 0, handleOut: x: 0, y: 10, winding: -1, contour: 0,"
              " visited: 0 -1 1"
              " segment2: point: x: 10, y: 0, handleIn: x: 0, y: 10, winding: -1, contour: 0,"
              " visited: 0 -1 1");
}

TEST(CurveLocation, ToStringOfALostLocation)
{
    LostLocation lost;
    lost.lose();
    const QString text = lost.location->toString();
    EXPECT_TRUE(text.startsWith(QStringLiteral("point: x: 5, y: 0 index: -1 0 time: -100 "
                                               "distance: 0 segment1: point: x: 0, y: 5,")))
        << text.toStdString();
}

} // namespace
