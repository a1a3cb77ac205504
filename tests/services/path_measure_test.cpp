// zgPath measured along its length: length and area with their caches,
// locations, curves and offsets by arc length, and the point, tangent,
// normal and curvature at an offset.
#include "services/services_test_support.h"

#include <cmath>

using namespace zgtest;

namespace {

// An open polyline along the x axis through the given x values.
zgPath *newLine(const QVector<double> &xs, bool closed = false)
{
    QVector<zgPoint> points;
    for (double x : xs)
        points.append(zgPoint(x, 0.0));
    return newContour(points, closed);
}

// Four straight curves of length 2.5 each: total 10.0.
zgPath *newFourQuarters()
{
    return newLine({0.0, 2.5, 5.0, 7.5, 10.0});
}

// The arch (0, 0) (0, 10) (10, 10) (10, 0) as one cubic, symmetric about
// x = 5, so that half its length lies at time 0.5.
void addArch(zgPath &path)
{
    path.moveTo(0.0, 0.0);
    path.cubicCurveTo(zgPoint(0.0, 10.0), zgPoint(10.0, 10.0), zgPoint(10.0, 0.0));
}

} // namespace

// --- getLength ----------------------------------------------------------

TEST(PathLength, SumsTheCurvesAndFillsEveryCache)
{
    zgPath open;
    addPoints(open, squarePoints(0.0, 0.0, 10.0));
    EXPECT_NEAR(open.getLength(), 30.0, 1e-12);
    EXPECT_NEAR(open.length, 30.0, 1e-12);
    for (zgCurve *curve : open.curves)
        EXPECT_NEAR(curve->length, 10.0, 1e-12);

    zgPath closed(nullptr, true);
    addPoints(closed, squarePoints(0.0, 0.0, 10.0));
    EXPECT_NEAR(closed.getLength(), 40.0, 1e-12);
}

TEST(PathLength, AKnownCacheIsReturnedAsItIs)
{
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    path.length = 5.0;
    EXPECT_DOUBLE_EQ(path.getLength(), 5.0);
    // A curve's own cache is used too.
    path.length = 0.0;
    path.getCurves().first()->length = 3.0;
    EXPECT_DOUBLE_EQ(path.getLength(), 3.0);
}

TEST(PathLength, ALengthOfZeroIsSummedAgainOnEveryCall)
{
    zgPath path;
    addPoints(path, {zgPoint(2, 2), zgPoint(2, 2)});
    EXPECT_DOUBLE_EQ(path.getLength(), 0.0);
    // Moving the point shows that nothing was remembered: the curve, whose
    // cache is 0 as well, is measured afresh.
    path.segments.at(1)->setPoint(zgPoint(2, 6));
    EXPECT_NEAR(path.getLength(), 4.0, 1e-12);
}

// --- getArea --------------------------------------------------------------
//
// The square (1, 1) (11, 1) (11, 11) (1, 11): its curves sweep -5, 55, 55
// and -5 about the origin, so the closed area is 100 and the open sum 105.

TEST(PathArea, ClosedSquareWithTheCacheStoresTheArea)
{
    zgPath path(nullptr, true);
    addPoints(path, squarePoints(1.0, 1.0, 10.0));
    EXPECT_NEAR(path.getArea(), 100.0, 1e-9);
    EXPECT_NEAR(path.area, 100.0, 1e-9);
    // A known cache answers.
    path.area = 7.0;
    EXPECT_DOUBLE_EQ(path.getArea(true, false), 7.0);
}

TEST(PathArea, WithTheCacheTheContoursOwnFlagDecides)
{
    zgPath path;
    addPoints(path, squarePoints(1.0, 1.0, 10.0));
    // The argument says closed, the contour is open: no closing curve.
    EXPECT_NEAR(path.getArea(true, true), 105.0, 1e-9);
    EXPECT_NEAR(path.area, 105.0, 1e-9);
}

TEST(PathArea, WithoutTheCacheTheArgumentDecidesAndNothingIsStored)
{
    zgPath path;
    addPoints(path, squarePoints(1.0, 1.0, 10.0));
    EXPECT_NEAR(path.getArea(false, true), 100.0, 1e-9);
    EXPECT_NEAR(path.getArea(false, false), 105.0, 1e-9);
    EXPECT_DOUBLE_EQ(path.area, 0.0);
}

TEST(PathArea, WithoutTheCacheAKnownCacheIsAddedToTheSum)
{
    zgPath path(nullptr, true);
    addPoints(path, squarePoints(1.0, 1.0, 10.0));
    ASSERT_NEAR(path.getArea(), 100.0, 1e-9);
    EXPECT_NEAR(path.getArea(false, true), 200.0, 1e-9);
    EXPECT_NEAR(path.getArea(false, false), 205.0, 1e-9);
    EXPECT_NEAR(path.area, 100.0, 1e-9);
}

TEST(PathArea, FewerThanTwoSegmentsGiveNoArea)
{
    zgPath empty(nullptr, true);
    EXPECT_DOUBLE_EQ(empty.getArea(), 0.0);
    zgPath single(nullptr, true);
    addPoints(single, {zgPoint(3, 4)});
    // The closing pair is the segment with itself: a curve of no extent.
    EXPECT_DOUBLE_EQ(single.getArea(), 0.0);
}

// --- getLocationAt ----------------------------------------------------------

TEST(PathLocationAt, NegativeOffsetCountsBackFromTheEnd)
{
    zgPath *path = newLine({0.0, 10.0});
    path->addRef();
    zgCurveLocation *location = path->getLocationAt(-1.0);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->refCount, 0);
    expectPoint(location->getPoint(), 9.0, 0.0);
    EXPECT_NEAR(location->getOffset(), 9.0, 1e-9);
    location->release();

    zgPath *twoCurves = newLine({0.0, 5.0, 10.0});
    twoCurves->addRef();
    location = twoCurves->getLocationAt(-1.0);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getIndex(), 1);
    expectPoint(location->getPoint(), 9.0, 0.0);
    location->release();
    twoCurves->release();
    path->release();
}

TEST(PathLocationAt, PastTheTruncatedSumButWithinTheLengthIsTheLastCurvesEnd)
{
    zgPath *path = newFourQuarters();
    path->addRef();
    zgCurveLocation *location = path->getLocationAt(9.5);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->curve, path->getLastCurve());
    EXPECT_DOUBLE_EQ(location->getTime(), 1.0);
    EXPECT_FALSE(location->overlap);
    expectPoint(location->getPoint(), 10.0, 0.0);
    location->release();

    // The bound is the true length, inclusive.
    location = path->getLocationAt(10.0);
    ASSERT_NE(location, nullptr);
    expectPoint(location->getPoint(), 10.0, 0.0);
    location->release();
    EXPECT_EQ(path->getLocationAt(10.0 + 1e-9), nullptr);
    EXPECT_EQ(path->getLocationAt(10.5), nullptr);
    path->release();
}

TEST(PathLocationAt, TheRunningSumDropsTheFractionAfterEveryCurve)
{
    // The sum runs 2, 4, 6, 8 instead of 2.5, 5, 7.5, 10.
    zgPath *path = newFourQuarters();
    path->addRef();
    // 1.5 lies before 2: first curve, measured exactly.
    zgCurveLocation *location = path->getLocationAt(1.5);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getIndex(), 0);
    expectPoint(location->getPoint(), 1.5, 0.0);
    location->release();
    // 2.0 is not below 2: second curve, 0.0 into it, at x = 2.5.
    location = path->getLocationAt(2.0);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getIndex(), 1);
    expectPoint(location->getPoint(), 2.5, 0.0);
    location->release();
    // 6.5 falls on the fourth curve (6 to 8), 0.5 into it: x = 8.0.
    location = path->getLocationAt(6.5);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getIndex(), 3);
    expectPoint(location->getPoint(), 8.0, 0.0);
    location->release();
    path->release();
}

TEST(PathLocationAt, OnAClosedContourTheEndLocationMovesToTheStart)
{
    // A closed square of side 2.5: the end location at time 1.0 of the
    // closing curve stands at time 0 of the first curve.
    zgPath *path = newContour(squarePoints(0.0, 0.0, 2.5), true);
    path->addRef();
    zgCurveLocation *location = path->getLocationAt(9.5);
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getIndex(), 0);
    EXPECT_DOUBLE_EQ(location->getTime(), 0.0);
    expectPoint(location->getPoint(), 0.0, 0.0);
    location->release();
    path->release();
}

TEST(PathLocationAt, StillNegativeOffsetIsMeasuredBackFromTheFirstCurvesEnd)
{
    // -15 + 10 = -5 falls on the first (and only) curve: 5 back from its end.
    zgPath *path = newLine({0.0, 10.0});
    path->addRef();
    zgCurveLocation *location = path->getLocationAt(-15.0);
    ASSERT_NE(location, nullptr);
    expectPoint(location->getPoint(), 5.0, 0.0);
    location->release();
    EXPECT_EQ(path->getLocationAt(-20.0 - 1e-9), nullptr);
    path->release();
}

TEST(PathLocationAt, NothingWithoutCurvesOrFarBeforeTheStart)
{
    zgPath empty;
    EXPECT_EQ(empty.getLocationAt(0.0), nullptr);
    zgPath single;
    addPoints(single, {zgPoint(1, 1)});
    EXPECT_EQ(single.getLocationAt(0.0), nullptr);

    zgPath *path = newFourQuarters();
    path->addRef();
    // -20 + 10 = -10 is measured back from the first curve's end, which is
    // beyond that curve: no time, no location.
    EXPECT_EQ(path->getLocationAt(-20.0), nullptr);
    EXPECT_EQ(path->getLocationAt(qQNaN()), nullptr);
    path->release();
}

// --- getLocationOf and getOffsetOf ----------------------------------------

TEST(PathLocationOf, FirstCurveHoldingThePointAnswers)
{
    zgPath *path = newContour(squarePoints(0.0, 0.0, 10.0), true);
    path->addRef();
    zgCurveLocation *location = path->getLocationOf(zgPoint(10.0, 5.0));
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->refCount, 0);
    EXPECT_EQ(location->getIndex(), 1);
    EXPECT_NEAR(location->getTime(), 0.5, 1e-9);
    location->release();
    // The closing curve holds (0, 5).
    location = path->getLocationOf(zgPoint(0.0, 5.0));
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getIndex(), 3);
    location->release();
    EXPECT_EQ(path->getLocationOf(zgPoint(5.0, 5.0)), nullptr);
    path->release();
}

TEST(PathLocationOf, ThePointMustLieWithinTheGeometricTolerance)
{
    zgPath *path = newLine({0.0, 10.0});
    path->addRef();
    zgCurveLocation *near = path->getLocationOf(zgPoint(4.0, 1.5e-07));
    ASSERT_NE(near, nullptr);
    near->release();
    EXPECT_EQ(path->getLocationOf(zgPoint(4.0, 3e-07)), nullptr);
    path->release();
}

TEST(PathOffsetOf, OffsetOfAPointOrZero)
{
    zgPath *path = newContour(squarePoints(0.0, 0.0, 10.0), true);
    path->addRef();
    EXPECT_NEAR(path->getOffsetOf(zgPoint(10.0, 5.0)), 15.0, 1e-9);
    EXPECT_NEAR(path->getOffsetOf(zgPoint(0.0, 2.5)), 37.5, 1e-9);
    // A joint belongs to the curve that starts there.
    EXPECT_NEAR(path->getOffsetOf(zgPoint(10.0, 10.0)), 20.0, 1e-9);
    EXPECT_DOUBLE_EQ(path->getOffsetOf(zgPoint(5.0, 5.0)), 0.0);
    path->release();
}

TEST(PathOffsetOf, TheLocationIsReleased)
{
    const Survivors survivors = countSurvivors([] {
        zgPath path(nullptr, true);
        addPoints(path, squarePoints(0.0, 0.0, 10.0));
        EXPECT_NEAR(path.getOffsetOf(zgPoint(10.0, 5.0)), 15.0, 1e-9);
    });
    expectNoSurvivors(survivors);
}

// --- getCurveAtOff ------------------------------------------------------------

TEST(PathCurveAtOff, TheOffsetComesBackAsTheDistanceIntoTheCurve)
{
    zgPath *path = newFourQuarters();
    path->addRef();
    const QList<zgCurve *> curves = path->getCurves();
    double offset = 6.0;
    EXPECT_EQ(path->getCurveAtOff(offset), curves.at(2));
    EXPECT_NEAR(offset, 1.0, 1e-12);
    // At a joint the curve that starts there, 0.0 into it.
    offset = 2.5;
    EXPECT_EQ(path->getCurveAtOff(offset), curves.at(1));
    EXPECT_NEAR(offset, 0.0, 1e-12);
    // Before the start the first curve, the offset left as it is.
    offset = -1.0;
    EXPECT_EQ(path->getCurveAtOff(offset), curves.at(0));
    EXPECT_NEAR(offset, -1.0, 1e-12);
    path->release();
}

TEST(PathCurveAtOff, AtTheEndNothingAndPastItTheLastCurveWithTheExcess)
{
    zgPath *path = newFourQuarters();
    path->addRef();
    double offset = 10.0;
    EXPECT_EQ(path->getCurveAtOff(offset), nullptr);
    EXPECT_NEAR(offset, 0.0, 1e-12);
    offset = 12.0;
    EXPECT_EQ(path->getCurveAtOff(offset), path->getLastCurve());
    EXPECT_NEAR(offset, 2.0, 1e-12);
    path->release();

    zgPath empty;
    offset = 3.0;
    EXPECT_EQ(empty.getCurveAtOff(offset), nullptr);
    EXPECT_DOUBLE_EQ(offset, 3.0);
}

// --- the getXxxAt family ----------------------------------------------------

TEST(PathValuesAt, StraightContour)
{
    zgPath *path = newContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)}, false);
    path->addRef();
    expectPoint(path->getPointAt(5.0), 5.0, 0.0);
    expectPoint(path->getTangentAt(5.0), 1.0, 0.0);
    // The normal is the tangent turned to (y, -x).
    expectPoint(path->getNormalAt(5.0), 0.0, -1.0);
    expectPoint(path->getPointAt(15.0), 10.0, 5.0);
    expectPoint(path->getTangentAt(15.0), 0.0, 1.0);
    expectPoint(path->getNormalAt(15.0), 1.0, 0.0);
    EXPECT_NEAR(path->getCurvatureAt(5.0), 0.0, 1e-12);
    path->release();
}

TEST(PathValuesAt, CubicAtItsApex)
{
    zgPath path;
    addArch(path);
    const QVector<double> values = path.getCurves().first()->getValues(nullptr);
    const double half = path.getLength() / 2.0;
    expectPoint(path.getPointAt(half), 5.0, 7.5, 1e-7);
    expectPoint(path.getTangentAt(half), 1.0, 0.0, 1e-7);
    expectPoint(path.getNormalAt(half), 0.0, -1.0, 1e-7);
    // The derivative at t = 0.5 is 3 * (5, 0); turned, (0, -15).
    expectPoint(path.getWeightedTangentAt(half), 15.0, 0.0, 1e-6);
    expectPoint(path.getWeightedNormalAt(half), 0.0, -15.0, 1e-6);
    // |B' x B''| / |B'|^3 = 900 / 3375 at the apex.
    EXPECT_NEAR(std::fabs(path.getCurvatureAt(half)), 900.0 / 3375.0, 1e-6);
    EXPECT_NEAR(path.getCurvatureAt(half), zgCurve::getCurvature(values, 0.5), 1e-6);
}

TEST(PathValuesAt, FamilyFollowsTheCurveAtTheLocationsTime)
{
    zgPath path;
    addArch(path);
    const QVector<double> values = path.getCurves().first()->getValues(nullptr);
    const double offset = 3.0;
    zgCurveLocation *location = path.getLocationAt(offset);
    ASSERT_NE(location, nullptr);
    const double t = location->getTime();
    location->release();
    ASSERT_GT(t, 0.0);
    ASSERT_LT(t, 0.5);
    expectPoint(path.getPointAt(offset), zgCurve::getPoint(values, t).x,
                zgCurve::getPoint(values, t).y, 1e-12);
    const zgPoint tangent = zgCurve::getTangent(values, t);
    expectPoint(path.getTangentAt(offset), tangent.x, tangent.y, 1e-12);
    const zgPoint normal = zgCurve::getNormal(values, t);
    expectPoint(path.getNormalAt(offset), normal.x, normal.y, 1e-12);
    const zgPoint weightedTangent = zgCurve::getWeightedTangent(values, t);
    expectPoint(path.getWeightedTangentAt(offset), weightedTangent.x, weightedTangent.y, 1e-12);
    const zgPoint weightedNormal = zgCurve::getWeightedNormal(values, t);
    expectPoint(path.getWeightedNormalAt(offset), weightedNormal.x, weightedNormal.y, 1e-12);
    EXPECT_NEAR(path.getCurvatureAt(offset), zgCurve::getCurvature(values, t), 1e-12);
    // The point at the offset lies 3.0 along the arc.
    EXPECT_NEAR(zgCurve::getLength(values, 0.0, t), offset, 1e-9);
}

TEST(PathValuesAt, NaNWhereThereIsNoLocation)
{
    zgPath *path = newLine({0.0, 10.0});
    path->addRef();
    expectNaNPoint(path->getPointAt(10.5));
    expectNaNPoint(path->getTangentAt(10.5));
    expectNaNPoint(path->getNormalAt(10.5));
    expectNaNPoint(path->getWeightedTangentAt(10.5));
    expectNaNPoint(path->getWeightedNormalAt(10.5));
    EXPECT_TRUE(qIsNaN(path->getCurvatureAt(10.5)));
    path->release();
    zgPath empty;
    expectNaNPoint(empty.getPointAt(0.0));
    expectNaNPoint(empty.getTangentAt(0.0));
    EXPECT_TRUE(qIsNaN(empty.getCurvatureAt(0.0)));
}

// --- reference counts -----------------------------------------------------------

TEST(PathMeasureCounts, TheCensusSeesAnUnreleasedLocation)
{
    const Survivors survivors = countSurvivors([] {
        zgPath path;
        addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
        EXPECT_NE(path.getLocationAt(5.0), nullptr);
    });
    EXPECT_EQ(survivors.locations, 1);
    EXPECT_EQ(survivors.total(), 1);
}

TEST(PathMeasureCounts, TheFamilyReleasesItsLocations)
{
    const Survivors survivors = countSurvivors([] {
        zgPath path;
        addArch(path);
        path.lineTo(20.0, 0.0);
        for (double offset : {1.0, 15.0, 100.0}) {
            path.getPointAt(offset);
            path.getTangentAt(offset);
            path.getNormalAt(offset);
            path.getWeightedTangentAt(offset);
            path.getWeightedNormalAt(offset);
            path.getCurvatureAt(offset);
            double remaining = offset;
            path.getCurveAtOff(remaining);
        }
        zgCurveLocation *location = path.getLocationAt(2.0);
        ASSERT_NE(location, nullptr);
        location->release();
        location = path.getLocationOf(zgPoint(15.0, 0.0));
        ASSERT_NE(location, nullptr);
        location->release();
        path.getOffsetOf(zgPoint(15.0, 0.0));
    });
    expectNoSurvivors(survivors);
}
