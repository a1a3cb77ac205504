// Bezier clipping with fat lines: the convex hull of the distance function,
// the clipping of the hull against the strip, addCurveIntersections with its
// limits and its role exchange, and addLocation with the joins, the split
// remap, the choice of the listed side, the filter and the merging.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using crossingtest::Contour;
using crossingtest::FreeCurve;
using crossingtest::noPoint;
using crossingtest::releaseAll;
using crossingtest::timeOn;
using crossingtest::values;

namespace {

typedef QVector<QVector<double>> Chain;

// An arch from (0, 0) to (100, 0) and an S-shaped curve that crosses it once.
const QVector<double> kArch = values(0, 0, 30, 60, 70, 60, 100, 0);
const QVector<double> kRiser = values(20, -10, 30, 40, 60, 30, 80, 70);
// The crossing of kArch and kRiser, by Newton's method in long double.
const double kRiserT = 0.58650344526090314;
const double kRiserU = 0.68512847967064694;
// A wave that crosses kArch twice.
const QVector<double> kWave = values(0, 10, 30, 50, 70, -20, 100, 40);
const double kWaveT1 = 0.13221124494690073;
const double kWaveT2 = 0.85947055882712786;

Chain chain(std::initializer_list<QVector<double>> points)
{
    return Chain(points);
}

void expectChain(const Chain &actual, const Chain &expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(actual.at(i).size(), 2);
        EXPECT_DOUBLE_EQ(actual.at(i).at(0), expected.at(i).at(0)) << "point " << i;
        EXPECT_DOUBLE_EQ(actual.at(i).at(1), expected.at(i).at(1)) << "point " << i;
    }
}

const QVector<double> P0 = { 0.0, 0.0 };
const double kThird = 1.0 / 3.0;
const double kTwoThirds = 2.0 / 3.0;

// Runs the clipping of a on b from its first call.
int clipCurves(const QVector<double> &a, const QVector<double> &b, zgCurve *ca, zgCurve *cb,
               QList<zgCurveLocation *> &list, bool flip = false, double recursion = 0.0,
               int calls = 0)
{
    opParam param;
    return zgCurve::addCurveIntersections(a, b, ca, cb, list, param, 0.0, 1.0, 0.0, 1.0, flip,
                                          recursion, calls);
}

// Switches the library into its deferred mode for one test, so that released
// locations stay readable; the objects made meanwhile are freed at the end.
class DeferredDeletion
{
public:
    DeferredDeletion() { zgPath::s_canDelete = false; }
    ~DeferredDeletion()
    {
        const QList<zgCurveLocation *> kept = zgCurveLocation::s_curveLocationList;
        for (zgCurveLocation *location : kept)
            delete location;
        zgPath::s_canDelete = true;
    }
};

} // namespace

// Convex hull ---------------------------------------------------------------

TEST(ConvexHull, InnerPointsOnDifferentSidesGiveTwoTriangles)
{
    const auto hull = zgCurve::getConvexHull(0.0, 3.0, -3.0, 0.0);
    ASSERT_EQ(hull.size(), 2);
    expectChain(hull.at(0), chain({ P0, { kThird, 3.0 }, { 1.0, 0.0 } }));
    expectChain(hull.at(1), chain({ P0, { kTwoThirds, -3.0 }, { 1.0, 0.0 } }));
}

TEST(ConvexHull, FirstInnerPointBelowPutsTheOtherTriangleOnTop)
{
    const auto hull = zgCurve::getConvexHull(0.0, -3.0, 3.0, 0.0);
    expectChain(hull.at(0), chain({ P0, { kTwoThirds, 3.0 }, { 1.0, 0.0 } }));
    expectChain(hull.at(1), chain({ P0, { kThird, -3.0 }, { 1.0, 0.0 } }));
}

TEST(ConvexHull, RatioExactlyTwoTakesTheTriangleOverTheFirstInnerPoint)
{
    // Chord from 3 to 6: heights dist1 = dq1 - 4 = 2, dist2 = dq2 - 5 = 1.
    const auto hull = zgCurve::getConvexHull(3.0, 6.0, 6.0, 6.0);
    expectChain(hull.at(0), chain({ { 0.0, 3.0 }, { kThird, 6.0 }, { 1.0, 6.0 } }));
    expectChain(hull.at(1), chain({ { 0.0, 3.0 }, { 1.0, 6.0 } }));
}

TEST(ConvexHull, RatioExactlyHalfTakesTheTriangleOverTheSecondInnerPoint)
{
    const auto hull = zgCurve::getConvexHull(0.0, 1.0, 2.0, 0.0);
    expectChain(hull.at(0), chain({ P0, { kTwoThirds, 2.0 }, { 1.0, 0.0 } }));
    expectChain(hull.at(1), chain({ P0, { 1.0, 0.0 } }));
}

TEST(ConvexHull, RatioBetweenTakesBothInnerPoints)
{
    const auto hull = zgCurve::getConvexHull(0.0, 2.0, 1.5, 0.0);
    expectChain(hull.at(0), chain({ P0, { kThird, 2.0 }, { kTwoThirds, 1.5 }, { 1.0, 0.0 } }));
    expectChain(hull.at(1), chain({ P0, { 1.0, 0.0 } }));
    // Just inside the bounds of the quadrilateral.
    EXPECT_EQ(zgCurve::getConvexHull(0.0, 1.999, 1.0, 0.0).at(0).size(), 4);
    EXPECT_EQ(zgCurve::getConvexHull(0.0, 1.0, 1.999, 0.0).at(0).size(), 4);
}

TEST(ConvexHull, BothBelowTheChordPutsTheChordOnTop)
{
    const auto hull = zgCurve::getConvexHull(0.0, -2.0, -1.5, 0.0);
    expectChain(hull.at(0), chain({ P0, { 1.0, 0.0 } }));
    expectChain(hull.at(1), chain({ P0, { kThird, -2.0 }, { kTwoThirds, -1.5 }, { 1.0, 0.0 } }));
}

TEST(ConvexHull, FirstHeightZeroFollowsTheSecond)
{
    // dist1 is 0: the sign of dist2 decides which chain is the upper one.
    const auto below = zgCurve::getConvexHull(0.0, 0.0, -1.0, 0.0);
    expectChain(below.at(0), chain({ P0, { 1.0, 0.0 } }));
    expectChain(below.at(1), chain({ P0, { kTwoThirds, -1.0 }, { 1.0, 0.0 } }));
    const auto above = zgCurve::getConvexHull(0.0, 0.0, 1.0, 0.0);
    expectChain(above.at(0), chain({ P0, { kTwoThirds, 1.0 }, { 1.0, 0.0 } }));
    expectChain(above.at(1), chain({ P0, { 1.0, 0.0 } }));
}

TEST(ConvexHull, FlatFunctionGivesTheFullChainOnTop)
{
    // 0 / 0 is no ratio at all: the chain over both inner points stays first.
    const auto hull = zgCurve::getConvexHull(1.0, 1.0, 1.0, 1.0);
    EXPECT_EQ(hull.at(0).size(), 4);
    EXPECT_EQ(hull.at(1).size(), 2);
}

// Clipping of the hull --------------------------------------------------------

TEST(ClipConvexHullPart, TopChainCrossesTheThresholdOnAnEdge)
{
    const Chain top = chain({ { 0.0, -2.0 }, { 0.5, 1.0 }, { 1.0, 2.0 } });
    EXPECT_NEAR(zgCurve::clipConvexHullPart(top, true, 0.0), 1.0 / 3.0, 1e-15);
}

TEST(ClipConvexHullPart, PointOnTheThresholdGivesItsTimeExactly)
{
    const Chain top = chain({ { 0.0, -2.0 }, { 0.5, 0.0 }, { 1.0, 2.0 } });
    EXPECT_EQ(zgCurve::clipConvexHullPart(top, true, 0.0), 0.5);
}

TEST(ClipConvexHullPart, BottomChainCrossesFromAbove)
{
    const Chain bottom = chain({ { 0.0, 2.0 }, { 1.0, -2.0 } });
    EXPECT_NEAR(zgCurve::clipConvexHullPart(bottom, false, 1.0), 0.25, 1e-15);
    // The top rule on the same chain never reaches 1 from below.
    EXPECT_TRUE(qIsNaN(zgCurve::clipConvexHullPart(bottom, true, 3.0)));
}

TEST(ClipConvexHullPart, ChainThatNeverReachesGivesNaN)
{
    EXPECT_TRUE(qIsNaN(zgCurve::clipConvexHullPart(chain({ { 0.0, -2.0 }, { 1.0, -1.0 } }),
                                                   true, 0.0)));
    EXPECT_TRUE(qIsNaN(zgCurve::clipConvexHullPart(Chain(), true, 0.0)));
    // The first point is where the walk starts; it is not tested itself.
    EXPECT_TRUE(qIsNaN(zgCurve::clipConvexHullPart(chain({ { 0.0, 5.0 } }), true, 0.0)));
}

TEST(ClipConvexHull, TopBelowTheStripIsClippedFromBelow)
{
    const Chain top = chain({ { 0.0, -2.0 }, { 0.5, 1.0 }, { 1.0, 2.0 } });
    const Chain bottom = chain({ { 0.0, -2.0 }, { 1.0, 2.0 } });
    EXPECT_NEAR(zgCurve::clipConvexHull(top, bottom, 0.0, 1.0), 1.0 / 3.0, 1e-15);
}

TEST(ClipConvexHull, BottomAboveTheStripIsClippedFromAbove)
{
    const Chain top = chain({ { 0.0, 5.0 }, { 1.0, -3.0 } });
    const Chain bottom = chain({ { 0.0, 5.0 }, { 0.5, 4.0 }, { 1.0, -3.0 } });
    EXPECT_NEAR(zgCurve::clipConvexHull(top, bottom, -1.0, 1.0), 0.5 + 0.5 * 3.0 / 7.0, 1e-15);
}

TEST(ClipConvexHull, HullStartingInsideTheStripDoesNotShrink)
{
    Chain top = chain({ { 0.0, 0.5 }, { 0.5, 3.0 }, { 1.0, 0.7 } });
    Chain bottom = chain({ { 0.0, 0.5 }, { 1.0, 0.7 } });
    EXPECT_EQ(zgCurve::clipConvexHull(top, bottom, 0.0, 1.0), 0.0);
    std::reverse(top.begin(), top.end());
    std::reverse(bottom.begin(), bottom.end());
    EXPECT_EQ(zgCurve::clipConvexHull(top, bottom, 0.0, 1.0), 1.0);
}

TEST(ClipConvexHull, HullAwayFromTheStripGivesNaN)
{
    const Chain top = chain({ { 0.0, 5.0 }, { 1.0, 6.0 } });
    const Chain bottom = chain({ { 0.0, 5.0 }, { 0.5, 4.0 }, { 1.0, 6.0 } });
    EXPECT_TRUE(qIsNaN(zgCurve::clipConvexHull(top, bottom, -1.0, 1.0)));
    EXPECT_TRUE(qIsNaN(zgCurve::clipConvexHull(Chain(), Chain(), -1.0, 1.0)));
}

// addCurveIntersections -------------------------------------------------------

TEST(AddCurveIntersections, OneTransversalCrossingToAboutNanoTime)
{
    FreeCurve a(kArch), b(kRiser);
    QList<zgCurveLocation *> list;
    const int calls = clipCurves(kArch, kRiser, a.get(), b.get(), list);
    EXPECT_GT(calls, 1);
    EXPECT_LE(calls, 4096);
    ASSERT_EQ(list.size(), 1);
    zgCurveLocation *first = list.at(0);
    ASSERT_NE(first->intersection(), nullptr);
    EXPECT_EQ(first->intersection()->intersection(), first);
    EXPECT_EQ(first->curve, a.get());
    EXPECT_NEAR(first->time, kRiserT, 1e-9);
    EXPECT_NEAR(first->intersection()->time, kRiserU, 1e-9);
    EXPECT_FALSE(first->overlap);
    // The points are those of each curve at its own time.
    EXPECT_NEAR(first->point.getDistance(zgCurve::getPoint(kArch, first->time)), 0.0, 1e-12);
    EXPECT_NEAR(first->point.getDistance(first->intersection()->point), 0.0, 1e-7);
    releaseAll(list);
}

TEST(AddCurveIntersections, TwoCrossingsNeedTheHalving)
{
    FreeCurve a(kArch), b(kWave);
    QList<zgCurveLocation *> list;
    clipCurves(kArch, kWave, a.get(), b.get(), list);
    ASSERT_EQ(list.size(), 2);
    // Sorted by time on the curve of the listed side.
    EXPECT_NEAR(list.at(0)->time, kWaveT1, 1e-9);
    EXPECT_NEAR(list.at(1)->time, kWaveT2, 1e-9);
    releaseAll(list);
}

TEST(AddCurveIntersections, FlipAtTheLeafListsTheSecondCurve)
{
    FreeCurve a(kArch), b(kRiser);
    QList<zgCurveLocation *> list;
    clipCurves(kArch, kRiser, a.get(), b.get(), list, true);
    ASSERT_EQ(list.size(), 1);
    // Same pair; the listed location is now the one on the second curve.
    EXPECT_EQ(list.at(0)->curve, b.get());
    EXPECT_NEAR(list.at(0)->time, kRiserU, 1e-9);
    EXPECT_EQ(list.at(0)->intersection()->curve, a.get());
    EXPECT_NEAR(list.at(0)->intersection()->time, kRiserT, 1e-9);
    releaseAll(list);
}

TEST(AddCurveIntersections, DepthLimitReturnsAtOnce)
{
    FreeCurve a(kArch), b(kRiser);
    QList<zgCurveLocation *> list;
    // Depth 47 is at the limit: the call count is not even raised.
    EXPECT_EQ(clipCurves(kArch, kRiser, a.get(), b.get(), list, false, 47.0, 7), 7);
    EXPECT_TRUE(list.isEmpty());
    // Depth 46 still works one step, whose children stop at the limit.
    EXPECT_EQ(clipCurves(kArch, kRiser, a.get(), b.get(), list, false, 46.0, 7), 8);
    EXPECT_TRUE(list.isEmpty());
    releaseAll(list);
}

TEST(AddCurveIntersections, CallLimitStopsTheSearch)
{
    FreeCurve a(kArch), b(kRiser);
    QList<zgCurveLocation *> list;
    EXPECT_EQ(clipCurves(kArch, kRiser, a.get(), b.get(), list, false, 0.0, 4096), 4097);
    EXPECT_TRUE(list.isEmpty());
    // One call below the limit does its step; its children are cut off, each
    // still counting.
    EXPECT_GE(clipCurves(kArch, kRiser, a.get(), b.get(), list, false, 0.0, 4095), 4097);
    EXPECT_TRUE(list.isEmpty());
}

TEST(AddCurveIntersections, IdenticalCurvesRunIntoTheCallLimit)
{
    // Coinciding curves never clip: the search halves until the limit. The
    // calls still pending on the way back up count one each.
    FreeCurve a(kArch), b(kArch);
    QList<zgCurveLocation *> list;
    const int calls = clipCurves(kArch, kArch, a.get(), b.get(), list);
    EXPECT_GT(calls, 4096);
    EXPECT_LE(calls, 4096 + 48);
    releaseAll(list);
}

TEST(AddCurveIntersections, CollinearCurvesAddNothing)
{
    const QVector<double> first = values(2, 0, 4, 0, 6, 0, 12, 0);
    const QVector<double> second = values(0, 0, 3, 0, 7, 0, 10, 0);
    FreeCurve a(first), b(second);
    QList<zgCurveLocation *> list;
    EXPECT_EQ(clipCurves(first, second, a.get(), b.get(), list), 1);
    EXPECT_TRUE(list.isEmpty());
}

TEST(AddCurveIntersections, CurvesApartEndAfterOneCall)
{
    const QVector<double> far = values(0, 100, 30, 160, 70, 160, 100, 100);
    FreeCurve a(kArch), b(far);
    QList<zgCurveLocation *> list;
    EXPECT_EQ(clipCurves(kArch, far, a.get(), b.get(), list), 1);
    EXPECT_TRUE(list.isEmpty());
}

// addLocation -----------------------------------------------------------------

namespace {

// A straight free curve along the x axis from 0 to 10 and one along y.
const QVector<double> kAlongX = values(0, 0, 0, 0, 10, 0, 10, 0);
const QVector<double> kAlongY = values(0, -5, 0, -5, 0, 5, 0, 5);

// Adds one pair at the given times on kAlongX and kAlongY; true if listed.
bool addPair(opParam &param, double t1, double t2, bool overlap = false)
{
    FreeCurve a(kAlongX), b(kAlongY);
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, kAlongX, a.get(), t1, noPoint(), kAlongY, b.get(), t2,
                         noPoint(), overlap);
    const bool listed = list.size() == 1;
    releaseAll(list);
    return listed;
}

} // namespace

TEST(AddLocation, TimesFromPointsAndSymmetricPartners)
{
    FreeCurve a(kAlongX), b(kAlongY);
    opParam param;
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, kAlongX, a.get(), -100.0, zgPoint(0, 0), kAlongY, b.get(),
                         -100.0, zgPoint(0, 0), false);
    ASSERT_EQ(list.size(), 1);
    zgCurveLocation *first = list.at(0);
    EXPECT_EQ(first->curve, a.get());
    EXPECT_EQ(first->time, 0.0);
    EXPECT_EQ(first->intersection()->curve, b.get());
    EXPECT_NEAR(first->intersection()->time, 0.5, 1e-12);
    EXPECT_EQ(first->intersection()->intersection(), first);
    EXPECT_EQ(first->refCount, 0);
    releaseAll(list);
}

TEST(AddLocation, PointOffTheCurveAddsNothing)
{
    FreeCurve a(kAlongX), b(kAlongY);
    opParam param;
    QList<zgCurveLocation *> list;
    // 3e-07 from the first curve: beyond the geometric tolerance.
    zgCurve::addLocation(list, param, kAlongX, a.get(), -100.0, zgPoint(5, 3e-07), kAlongY,
                         b.get(), 0.5, noPoint(), false);
    EXPECT_TRUE(list.isEmpty());
    zgCurve::addLocation(list, param, kAlongX, a.get(), 0.5, noPoint(), kAlongY, b.get(),
                         -100.0, zgPoint(3e-07, 0), false);
    EXPECT_TRUE(list.isEmpty());
    // 1e-07 away is on it.
    zgCurve::addLocation(list, param, kAlongX, a.get(), -100.0, zgPoint(5, 1e-07), kAlongY,
                         b.get(), 0.5, noPoint(), false);
    EXPECT_EQ(list.size(), 1);
    releaseAll(list);
}

TEST(AddLocation, TimesOutsideTheCurveAreRefused)
{
    opParam param;
    EXPECT_TRUE(addPair(param, 0.0, 1.0));
    EXPECT_TRUE(addPair(param, 1.0, 0.0));
    EXPECT_FALSE(addPair(param, -1e-09, 0.5));
    EXPECT_FALSE(addPair(param, 1.0 + 1e-09, 0.5));
    EXPECT_FALSE(addPair(param, 0.5, -1e-09));
    EXPECT_FALSE(addPair(param, 0.5, 1.0 + 1e-09));
}

TEST(AddLocation, JoinedAtStartGuardsTheStartOfTheFirstAndTheEndOfTheSecond)
{
    opParam param;
    param.joinedAtStart = true;
    EXPECT_FALSE(addPair(param, 0.0, 0.5));
    EXPECT_FALSE(addPair(param, 3.9e-07, 0.5));
    EXPECT_TRUE(addPair(param, 4e-07, 0.5));
    EXPECT_TRUE(addPair(param, 1.0, 0.5));
    EXPECT_TRUE(addPair(param, 0.5, 0.9999996));
    EXPECT_FALSE(addPair(param, 0.5, 0.9999997));
    EXPECT_TRUE(addPair(param, 0.5, 0.0));
}

TEST(AddLocation, JoinedAtEndGuardsTheEndOfTheFirstAndTheStartOfTheSecond)
{
    opParam param;
    param.joinedAtEnd = true;
    EXPECT_TRUE(addPair(param, 0.9999996, 0.5));
    EXPECT_FALSE(addPair(param, 0.9999997, 0.5));
    EXPECT_FALSE(addPair(param, 1.0, 0.5));
    EXPECT_TRUE(addPair(param, 0.0, 0.5));
    EXPECT_FALSE(addPair(param, 0.5, 3.9e-07));
    EXPECT_TRUE(addPair(param, 0.5, 4e-07));
    EXPECT_TRUE(addPair(param, 0.5, 1.0));
}

TEST(AddLocation, OverlapsIgnoreTheJoins)
{
    opParam param;
    param.joinedAtStart = true;
    param.joinedAtEnd = true;
    EXPECT_TRUE(addPair(param, 0.0, 1.0, true));
    EXPECT_TRUE(addPair(param, 1.0, 0.0, true));
    EXPECT_FALSE(addPair(param, 1.0, 0.0, false));
}

TEST(AddLocation, SplitRemapMapsBothTimesOntoTheWholeCurve)
{
    const QVector<double> loop = values(0, 0, 150, 100, -50, 100, 100, 0);
    FreeCurve c(loop);
    opParam param;
    param.splitRemap = true;
    param.splitTime = 0.25;
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, loop, c.get(), 0.5, noPoint(), loop, c.get(), 0.5,
                         noPoint(), false);
    ASSERT_EQ(list.size(), 1);
    zgCurveLocation *first = list.at(0);
    EXPECT_DOUBLE_EQ(first->time, 0.125);
    EXPECT_DOUBLE_EQ(first->intersection()->time, 0.625);
    // The missing points come from the remapped times on the values given.
    EXPECT_EQ(first->point, zgCurve::getPoint(loop, 0.125));
    EXPECT_EQ(first->intersection()->point, zgCurve::getPoint(loop, 0.625));
    releaseAll(list);
}

TEST(AddLocation, LocationOnTheLowerCurveIndexIsListed)
{
    Contour contour;
    contour.add(0, 0);
    contour.add(10, 0);
    contour.add(10, 10);
    contour.add(0, 10);
    zgCurve *first = contour.curve(0);
    zgCurve *third = contour.curve(2);
    opParam param;
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, third->getValues(), third, 0.5, noPoint(),
                         first->getValues(), first, 0.25, noPoint(), false);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0)->curve, first);
    EXPECT_EQ(list.at(0)->time, 0.25);
    EXPECT_EQ(list.at(0)->intersection()->curve, third);
    releaseAll(list);

    zgCurve::addLocation(list, param, first->getValues(), first, 0.25, noPoint(),
                         third->getValues(), third, 0.5, noPoint(), false);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0)->curve, first);
    releaseAll(list);
}

TEST(AddLocation, OnDifferentPathsTheFirstIsListed)
{
    Contour one, other;
    one.add(0, 0);
    one.add(10, 0);
    one.add(10, 10);
    other.add(5, -5);
    other.add(5, 5);
    zgCurve *second = one.curve(1);
    zgCurve *lone = other.curve(0);
    opParam param;
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, second->getValues(), second, 0.5, noPoint(),
                         lone->getValues(), lone, 0.5, noPoint(), false);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0)->curve, second);
    releaseAll(list);
}

TEST(AddLocation, RefusedByTheFilterLeavesTheListAndReleasesBoth)
{
    FreeCurve a(kAlongX), b(kAlongY);
    DeferredDeletion deferred;
    zgCurveLocation *seen = nullptr;
    opParam param;
    param.filter = [&seen](zgCurveLocation *location) {
        seen = location;
        return false;
    };
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, kAlongX, a.get(), 0.5, noPoint(), kAlongY, b.get(), 0.5,
                         noPoint(), false);
    EXPECT_TRUE(list.isEmpty());
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->curve, a.get());
    EXPECT_EQ(seen->refCount, -2);
    ASSERT_NE(seen->intersection(), nullptr);
    EXPECT_EQ(seen->intersection()->refCount, -2);
}

TEST(AddLocation, AcceptedByTheFilterIsListed)
{
    FreeCurve a(kAlongX), b(kAlongY);
    int asked = 0;
    opParam param;
    param.filter = [&asked](zgCurveLocation *location) {
        ++asked;
        return location->time == 0.5;
    };
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, kAlongX, a.get(), 0.5, noPoint(), kAlongY, b.get(), 0.5,
                         noPoint(), false);
    zgCurve::addLocation(list, param, kAlongX, a.get(), 0.25, noPoint(), kAlongY, b.get(), 0.5,
                         noPoint(), false);
    EXPECT_EQ(asked, 2);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0)->time, 0.5);
    releaseAll(list);
}

TEST(AddLocation, EqualPairMergesAndIsReleased)
{
    FreeCurve a(kAlongX), b(kAlongY);
    DeferredDeletion deferred;
    opParam param;
    zgCurveLocation *seen = nullptr;
    param.filter = [&seen](zgCurveLocation *location) {
        seen = location;
        return true;
    };
    QList<zgCurveLocation *> list;
    zgCurve::addLocation(list, param, kAlongX, a.get(), 0.0, noPoint(), kAlongY, b.get(), 0.5,
                         noPoint(), false);
    ASSERT_EQ(list.size(), 1);
    zgCurveLocation *listed = list.at(0);
    // The same place again, as an overlap end: it merges into the listed
    // pair, which becomes an overlap on both sides.
    zgCurve::addLocation(list, param, kAlongX, a.get(), 0.0, noPoint(), kAlongY, b.get(), 0.5,
                         noPoint(), true);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0), listed);
    EXPECT_TRUE(listed->overlap);
    EXPECT_TRUE(listed->intersection()->overlap);
    ASSERT_NE(seen, listed);
    EXPECT_EQ(seen->refCount, -2);
    EXPECT_EQ(seen->intersection()->refCount, -2);
    EXPECT_EQ(listed->refCount, 0);
}

TEST(AddLocation, ListStaysSortedByTime)
{
    FreeCurve a(kAlongX), b(kAlongY);
    opParam param;
    QList<zgCurveLocation *> list;
    for (double t : { 0.75, 0.25, 0.5 })
        zgCurve::addLocation(list, param, kAlongX, a.get(), t, noPoint(), kAlongY, b.get(),
                             0.5, noPoint(), false);
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(list.at(0)->time, 0.25);
    EXPECT_EQ(list.at(1)->time, 0.5);
    EXPECT_EQ(list.at(2)->time, 0.75);
    EXPECT_EQ(timeOn(list.at(2), b.get()), 0.5);
    releaseAll(list);
}
