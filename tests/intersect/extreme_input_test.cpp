// Intersections and locations under extreme input: curves of NaN, infinite,
// huge (1e150) and tiny (1e-300) values, empty compounds and contours of a
// lone point. The searches return lists (empty where nothing is found,
// finite points for finite curves), and a location without a curve gives
// the failure values of its getters.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "extreme_input.h"
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <memory>

using namespace extreme;
using crossingtest::FreeCurve;
using crossingtest::releaseAll;
using crossingtest::values;

namespace {

// A crossing pair: a cubic from (0, 0) to (100, 100) and a line from
// (0, 100) to (100, 0), scaled, with value k of the first set to bad if
// k >= 0.
QVector<double> arch(double scale, int k = -1, double bad = 0.0)
{
    QVector<double> v = values(0, 0, 30 * scale, 0, 70 * scale, 100 * scale, 100 * scale,
                               100 * scale);
    if (k >= 0)
        v[k] = bad;
    return v;
}

QVector<double> diagonal(double scale)
{
    return values(0, 100 * scale, 100 * scale / 3, 200 * scale / 3, 200 * scale / 3,
                  100 * scale / 3, 100 * scale, 0);
}

std::unique_ptr<XPath> compoundOf(ZDPath path)
{
    std::unique_ptr<XPath> xpath(new XPath());
    path.toXPath(*xpath);
    return xpath;
}

} // namespace

TEST(IntersectExtremeInput, CurvePairsWithNonFiniteValuesReturnAList)
{
    for (double bad : nonFinite()) {
        for (int k = 0; k < 8; ++k) {
            FreeCurve a(arch(1, k, bad));
            FreeCurve b(diagonal(1));
            QList<zgCurveLocation *> found = a.get()->getIntersectionscurve(b.get());
            EXPECT_LE(found.size(), 9) << bad << " " << k;
            releaseAll(found);
            QList<zgCurveLocation *> self = a.get()->getIntersectionscurve(nullptr);
            releaseAll(self);
            const QVector<QVector<double>> overlaps = zgCurve::getOverlaps(arch(1, k, bad), diagonal(1));
            EXPECT_TRUE(overlaps.isEmpty()) << bad << " " << k;
        }
    }
}

TEST(IntersectExtremeInput, CrossingsAreFoundWhereTheTolerancesHoldTheScale)
{
    // The crossing of a cubic and a line is found from 1e-8 to 1e6...
    for (double scale : {1e-8, 1e-3, 1.0, 1e3, 1e6}) {
        FreeCurve a(arch(scale));
        FreeCurve b(diagonal(scale));
        QList<zgCurveLocation *> found = a.get()->getIntersectionscurve(b.get());
        ASSERT_EQ(found.size(), 1) << scale;
        const zgPoint p = found.at(0)->point;
        EXPECT_NEAR(p.x + p.y, 100 * scale, 1e-9 * scale) << scale;
        releaseAll(found);
    }
    // ...while at 1e7 and beyond the absolute tolerances (2e-07 for a point
    // on a curve) are finer than the rounding of the coordinates, and the
    // crossing may be lost; below 1e-12 every point is close to every
    // other. The search returns at every scale, with at most the one
    // crossing at a finite point.
    for (double scale : {1e7, 1e15, 1e50, 1e100, kHuge, 1e-20, 1e-150, kTiny}) {
        FreeCurve a(arch(scale));
        FreeCurve b(diagonal(scale));
        QList<zgCurveLocation *> found = a.get()->getIntersectionscurve(b.get());
        EXPECT_LE(found.size(), 1) << scale;
        for (zgCurveLocation *location : found)
            EXPECT_TRUE(finitePoint(location->point)) << scale;
        releaseAll(found);
    }
    // Two curved curves are clipped to their crossing at every scale.
    for (double scale : {1e-3, 1.0, 1e7, 1e100, kHuge}) {
        FreeCurve a(arch(scale));
        FreeCurve b(values(0, 100 * scale, 40 * scale, 70 * scale, 60 * scale, 30 * scale,
                           100 * scale, 0));
        QList<zgCurveLocation *> found = a.get()->getIntersectionscurve(b.get());
        ASSERT_EQ(found.size(), 1) << scale;
        EXPECT_TRUE(finitePoint(found.at(0)->point)) << scale;
        releaseAll(found);
    }
}

TEST(IntersectExtremeInput, TinyCurvesFallWithinTheTolerances)
{
    // At 1e-300 every point lies within 2e-07 of every other: whatever the
    // search reports, it has finite points and the call returns.
    FreeCurve a(arch(kTiny));
    FreeCurve b(diagonal(kTiny));
    QList<zgCurveLocation *> found = a.get()->getIntersectionscurve(b.get());
    for (zgCurveLocation *location : found)
        EXPECT_TRUE(finitePoint(location->point));
    releaseAll(found);
}

TEST(IntersectExtremeInput, CurveLocationsAtBadTimesAndOffsets)
{
    FreeCurve a(arch(1));
    for (double bad : allExtremes()) {
        if (bad >= 0.0 && bad <= 1.0)
            continue;
        // Times outside 0 to 1: null.
        EXPECT_EQ(a.get()->getLocationAtTime(bad), nullptr) << bad;
        EXPECT_EQ(a.get()->getLocationAt(bad, true), nullptr) << bad;
    }
    EXPECT_EQ(a.get()->getLocationAtTime(-100.0), nullptr);
    for (double bad : {kNaN, kInf, kHuge, -kHuge}) {
        zgCurveLocation *location = a.get()->getLocationAt(bad, false);
        if (location) {
            EXPECT_FALSE(std::isnan(location->time)) << bad;
            location->addRef();
            location->release();
        }
    }
    // A point off the curve, or no point at all: null and -1.0.
    for (double bad : nonFinite()) {
        EXPECT_EQ(a.get()->getLocationOf(zgPoint(bad, 0)), nullptr) << bad;
        EXPECT_EQ(a.get()->getOffsetOf(zgPoint(bad, bad)), -1.0) << bad;
        EXPECT_EQ(zgCurve::getTimeOf(arch(1), zgPoint(bad, 0)), -100.0) << bad;
    }
    EXPECT_EQ(a.get()->getLocationOf(zgPoint(kHuge, 0)), nullptr);
    // A tiny time is an ordinary one.
    zgCurveLocation *start = a.get()->getLocationAtTime(kTiny);
    ASSERT_NE(start, nullptr);
    EXPECT_NEAR(start->point.x, 0.0, 1e-12);
    start->addRef();
    start->release();
}

TEST(IntersectExtremeInput, LocationWithoutACurveGivesItsFailureValues)
{
    zgCurveLocation empty;
    EXPECT_EQ(empty.getIndex(), -1);
    EXPECT_EQ(empty.getTime(), -100.0);
    EXPECT_EQ(empty.getCurveOffset(), 0.0);
    EXPECT_EQ(empty.getSegment(), nullptr);
    EXPECT_TRUE(nanPoint(empty.getTangent()));
    EXPECT_TRUE(nanPoint(empty.getNormal()));
    EXPECT_TRUE(nanPoint(empty.getWeightedTangent()));
    EXPECT_TRUE(nanPoint(empty.getWeightedNormal()));
    EXPECT_TRUE(std::isnan(empty.getCurvature()));
    EXPECT_FALSE(empty.isCrossing());
    EXPECT_FALSE(empty.isTouching());
    EXPECT_EQ(empty.divide(), nullptr);
}

TEST(IntersectExtremeInput, NearestLocationsOfBadPoints)
{
    FreeCurve a(arch(1));
    for (double bad : nonFinite()) {
        zgCurveLocation *nearest = a.get()->getNearestLocation(zgPoint(bad, 5));
        if (nearest) {
            // No finite distance to a point that is not finite.
            EXPECT_FALSE(std::isfinite(nearest->distance)) << bad;
            nearest->addRef();
            nearest->release();
        }
    }
    // A far point still has a nearest place on the curve, at its end; from
    // 1e150 away both ends are equally far in doubles, and one is given.
    zgCurveLocation *far = a.get()->getNearestLocation(zgPoint(1e10, 1e10));
    ASSERT_NE(far, nullptr);
    EXPECT_EQ(far->point.x, 100.0);
    EXPECT_EQ(far->point.y, 100.0);
    far->addRef();
    far->release();
    zgCurveLocation *huge = a.get()->getNearestLocation(zgPoint(kHuge, kHuge));
    ASSERT_NE(huge, nullptr);
    EXPECT_TRUE(huge->point.x == huge->point.y && (huge->point.x == 0.0 || huge->point.x == 100.0));
    huge->addRef();
    huge->release();
}

TEST(IntersectExtremeInput, PathSweepOfEmptyAndLonePointCompounds)
{
    auto empty = std::make_unique<XPath>();
    auto square = compoundOf(squarePath(0, 0, 10));
    QList<zgCurveLocation *> none = empty->getCrossings(square.get());
    EXPECT_TRUE(none.isEmpty());
    none = square->getCrossings(empty.get());
    EXPECT_TRUE(none.isEmpty());
    none = empty->getCrossings(nullptr);
    EXPECT_TRUE(none.isEmpty());
    EXPECT_TRUE(empty->getCrossings(square.get()).isEmpty());

    // A closed lone point: a curve from the point to itself, which crosses
    // nothing away from the square's outline.
    auto lone = std::make_unique<XPath>();
    zgPath *contour = new zgPath(lone.get(), true);
    contour->addSegment(new zgSegment(5, 5));
    lone->addChild(contour);
    QList<zgCurveLocation *> found = lone->getCrossings(square.get());
    EXPECT_TRUE(found.isEmpty());
    releaseAll(found);
}

TEST(IntersectExtremeInput, PathSweepOfBadCompoundsReturns)
{
    for (double bad : allExtremes()) {
        auto odd = compoundOf(squareWithBadCorner(bad));
        auto square = compoundOf(squarePath(5, -5, 10));
        QList<zgCurveLocation *> found = odd->getCrossings(square.get());
        if (std::isfinite(bad)) {
            for (zgCurveLocation *location : found)
                EXPECT_TRUE(finitePoint(location->point)) << bad;
        }
        releaseAll(found);
        QList<zgCurveLocation *> self = odd->getCrossings(nullptr);
        releaseAll(self);
    }
    // Two huge overlapping squares: the sweep returns, finite points only.
    auto a = compoundOf(squarePath(0, 0, kHuge));
    auto b = compoundOf(squarePath(kHuge / 2, kHuge / 2, kHuge));
    QList<zgCurveLocation *> found = a->getCrossings(b.get());
    for (zgCurveLocation *location : found)
        EXPECT_TRUE(finitePoint(location->point));
    releaseAll(found);
}
