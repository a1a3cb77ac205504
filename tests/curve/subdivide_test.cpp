// Subdivision, coordinate solving, classification, bounds and area of cubics
// on the 8-value array.
#include "curve/curve_test_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using curvetest::values;

namespace {

const QVector<double> kCurve = values(0.1, 0.2, 30.7, 80.3, 70.9, -20.6, 100.3, 40.1);

QVector<double> reversed(const QVector<double> &v)
{
    return values(v[6], v[7], v[4], v[5], v[2], v[3], v[0], v[1]);
}

} // namespace

// --- subdivide ---------------------------------------------------------------

TEST(CurveSubdivide, FollowsDeCasteljau)
{
    const QVector<double> v = values(0, 0, 0, 8, 8, 8, 8, 0);
    const QVector<QVector<double>> parts = zgCurve::subdivide(v, 0.25);
    ASSERT_EQ(parts.size(), 2);
    // p4 = (0, 2), p5 = (2, 8), p6 = (8, 6); p7 = (0.5, 3.5), p8 = (3.5, 7.5);
    // p9 = (1.25, 4.5).
    EXPECT_EQ(parts[0], values(0, 0, 0, 2, 0.5, 3.5, 1.25, 4.5));
    EXPECT_EQ(parts[1], values(1.25, 4.5, 3.5, 7.5, 8, 6, 8, 0));
}

TEST(CurveSubdivide, HalvesShareTheCutPointExactly)
{
    const QVector<QVector<double>> parts = zgCurve::subdivide(kCurve, 0.37);
    EXPECT_EQ(parts[0][6], parts[1][0]);
    EXPECT_EQ(parts[0][7], parts[1][1]);
    EXPECT_EQ(parts[0][0], kCurve[0]);
    EXPECT_EQ(parts[0][1], kCurve[1]);
    EXPECT_EQ(parts[1][6], kCurve[6]);
    EXPECT_EQ(parts[1][7], kCurve[7]);
    const zgPoint cut = zgCurve::getPoint(kCurve, 0.37);
    EXPECT_NEAR(parts[0][6], cut.x, 1e-12);
    EXPECT_NEAR(parts[0][7], cut.y, 1e-12);
}

TEST(CurveSubdivide, TimeOutsideRangeExtrapolates)
{
    for (double t : { -0.5, 1.5 }) {
        const QVector<QVector<double>> parts = zgCurve::subdivide(kCurve, t);
        long double x, y;
        curvetest::bernstein(kCurve, t, x, y);
        EXPECT_NEAR(parts[0][6], double(x), 1e-10) << t;
        EXPECT_NEAR(parts[0][7], double(y), 1e-10) << t;
        EXPECT_EQ(parts[1][6], kCurve[6]);
    }
}

TEST(CurveSubdivide, AtZeroAndOneDegenerates)
{
    const QVector<QVector<double>> atZero = zgCurve::subdivide(kCurve, 0.0);
    EXPECT_EQ(atZero[1], kCurve);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(atZero[0][i], kCurve[i % 2]);
    const QVector<QVector<double>> atOne = zgCurve::subdivide(kCurve, 1.0);
    EXPECT_EQ(atOne[0], kCurve);
}

// --- getPart -----------------------------------------------------------------

TEST(CurveGetPart, WholeRangeGivesTheValuesUnchanged)
{
    EXPECT_EQ(zgCurve::getPart(kCurve, 0.0, 1.0), kCurve);
    // Beyond both ends nothing is cut either.
    EXPECT_EQ(zgCurve::getPart(kCurve, -0.0, 1.5), kCurve);
}

TEST(CurveGetPart, ReversedRangeGivesTheReversedMiddle)
{
    const QVector<double> forward = zgCurve::getPart(kCurve, 0.25, 0.75);
    const QVector<double> backward = zgCurve::getPart(kCurve, 0.75, 0.25);
    EXPECT_EQ(backward, reversed(forward));
    const zgPoint at75 = zgCurve::getPoint(kCurve, 0.75);
    const zgPoint at25 = zgCurve::getPoint(kCurve, 0.25);
    EXPECT_NEAR(backward[0], at75.x, 1e-12);
    EXPECT_NEAR(backward[1], at75.y, 1e-12);
    EXPECT_NEAR(backward[6], at25.x, 1e-12);
    EXPECT_NEAR(backward[7], at25.y, 1e-12);
}

TEST(CurveGetPart, MiddlePartFollowsTheCurve)
{
    const QVector<double> part = zgCurve::getPart(kCurve, 0.2, 0.7);
    for (double s : { 0.0, 0.1, 0.5, 0.9, 1.0 }) {
        const zgPoint a = zgCurve::getPoint(part, s);
        const zgPoint b = zgCurve::getPoint(kCurve, 0.2 + 0.5 * s);
        EXPECT_NEAR(a.x, b.x, 1e-11) << s;
        EXPECT_NEAR(a.y, b.y, 1e-11) << s;
    }
}

TEST(CurveGetPart, OneSidedCuts)
{
    EXPECT_EQ(zgCurve::getPart(kCurve, 0.25, 1.0), zgCurve::subdivide(kCurve, 0.25)[1]);
    EXPECT_EQ(zgCurve::getPart(kCurve, 0.0, 0.5), zgCurve::subdivide(kCurve, 0.5)[0]);
}

TEST(CurveGetPart, NegativeFromDoesNotTrimButScalesTheTime)
{
    // No first cut; the second cut is at (0.5 - -0.5) / (1 - -0.5) = 2/3.
    const double from = -0.5, to = 0.5;
    const QVector<double> expected = zgCurve::subdivide(kCurve, (to - from) / (1.0 - from))[0];
    EXPECT_EQ(zgCurve::getPart(kCurve, from, to), expected);
    EXPECT_NE(zgCurve::getPart(kCurve, from, to), zgCurve::subdivide(kCurve, 0.5)[0]);
}

// --- solveCubic --------------------------------------------------------------

TEST(CurveSolveCubic, ValueOutsideAllFourReturnsZeroAndLeavesRoots)
{
    const QVector<double> v = values(0, 5, 1, 6, 2, 7, 3, 8);
    QVector<double> roots = { 7.0, 7.0, 7.0 };
    EXPECT_EQ(zgCurve::solveCubic(v, 0, 3.0000001, roots, 0.0, 1.0), 0);
    EXPECT_EQ(zgCurve::solveCubic(v, 0, -1e-9, roots, 0.0, 1.0), 0);
    EXPECT_EQ(zgCurve::solveCubic(v, 1, 4.0, roots, 0.0, 1.0), 0);
    EXPECT_EQ(roots, QVector<double>({ 7.0, 7.0, 7.0 }));
}

TEST(CurveSolveCubic, ValueEqualToStartDoesNotReturnEarly)
{
    // v0 = 0 and the other three above it: the test is strict, so 0 goes on.
    const QVector<double> v = values(0, 0, 5, 0, 8, 0, 10, 0);
    QVector<double> roots;
    const int count = zgCurve::solveCubic(v, 0, 0.0, roots, 0.0, 1.0);
    ASSERT_GE(count, 1);
    EXPECT_NEAR(roots[0], 0.0, 1e-12);
    // The same at the end value.
    const int countEnd = zgCurve::solveCubic(v, 0, 10.0, roots, 0.0, 1.0);
    ASSERT_EQ(countEnd, 1);
    EXPECT_NEAR(roots[0], 1.0, 1e-12);
}

TEST(CurveSolveCubic, SolvesTheCoordinate)
{
    // x(t) = 3t, y(t) = 10 - 6t (handles at thirds).
    const QVector<double> v = values(0, 10, 1, 8, 2, 6, 3, 4);
    QVector<double> roots;
    ASSERT_EQ(zgCurve::solveCubic(v, 0, 1.5, roots, 0.0, 1.0), 1);
    EXPECT_NEAR(roots[0], 0.5, 1e-15);
    ASSERT_EQ(zgCurve::solveCubic(v, 1, 7.0, roots, 0.0, 1.0), 1);
    EXPECT_NEAR(roots[0], 0.5, 1e-15);
    // Bounds apply: 0.5 lies outside [0, 0.25].
    EXPECT_EQ(zgCurve::solveCubic(v, 0, 1.5, roots, 0.0, 0.25), 0);
}

TEST(CurveSolveCubic, CoordinateIsCutToAnInteger)
{
    const QVector<double> v = values(0, 10, 1, 8, 2, 6, 3, 4);
    QVector<double> roots;
    // 1.9 reads the y values, 0.9 the x values.
    ASSERT_EQ(zgCurve::solveCubic(v, 1.9, 7.0, roots, 0.0, 1.0), 1);
    EXPECT_NEAR(roots[0], 0.5, 1e-15);
    ASSERT_EQ(zgCurve::solveCubic(v, 0.9, 1.5, roots, 0.0, 1.0), 1);
    EXPECT_NEAR(roots[0], 0.5, 1e-15);
}

TEST(CurveSolveCubic, FindsAllThreeRoots)
{
    // x runs 0 -> 10 -> -10 -> 0 (x(t) = 30t - 90t^2 + 60t^3): three crossings of 0.
    const QVector<double> v = values(0, 0, 10, 1, -10, 2, 0, 3);
    QVector<double> roots;
    const int count = zgCurve::solveCubic(v, 0, 0.0, roots, 0.0, 1.0);
    ASSERT_EQ(count, 3);
    QVector<double> found = roots.mid(0, 3);
    std::sort(found.begin(), found.end());
    EXPECT_NEAR(found[0], 0.0, 1e-12);
    EXPECT_NEAR(found[1], 0.5, 1e-12);
    EXPECT_NEAR(found[2], 1.0, 1e-12);
}

TEST(CurveSolveCubic, CoordinateOutsideTheArraySolvesNothing)
{
    QVector<double> roots;
    EXPECT_EQ(zgCurve::solveCubic(kCurve, 2.0, 50.0, roots, 0.0, 1.0), 0);
    EXPECT_EQ(zgCurve::solveCubic(kCurve, -1.0, 50.0, roots, 0.0, 1.0), 0);
    EXPECT_EQ(zgCurve::solveCubic(kCurve, std::nan(""), 50.0, roots, 0.0, 1.0), 0);
    EXPECT_EQ(zgCurve::solveCubic(QVector<double>(4, 0.0), 0.0, 0.0, roots, 0.0, 1.0), 0);
    EXPECT_TRUE(roots.isEmpty());
}

// --- isStraight --------------------------------------------------------------

TEST(CurveIsStraight, ZeroLineWithZeroHandlesIsStraight)
{
    const zgLine zeroLine(5, 5, 5, 5);
    EXPECT_TRUE(zgCurve::isStraight(zeroLine, zgPoint(), zgPoint()));
    EXPECT_TRUE(zgCurve::isStraight(values(5, 5, 5, 5, 5, 5, 5, 5)));
    // Handles within 1e-12 still count as zero.
    EXPECT_TRUE(zgCurve::isStraight(zeroLine, zgPoint(1e-12, 0), zgPoint(0, -1e-12)));
}

TEST(CurveIsStraight, ZeroLineWithOneHandleIsNotStraight)
{
    const zgLine zeroLine(5, 5, 5, 5);
    EXPECT_FALSE(zgCurve::isStraight(zeroLine, zgPoint(1, 0), zgPoint()));
    EXPECT_FALSE(zgCurve::isStraight(zeroLine, zgPoint(), zgPoint(0, 2e-12)));
    EXPECT_FALSE(zgCurve::isStraight(values(5, 5, 6, 5, 5, 5, 5, 5)));
}

TEST(CurveIsStraight, HandlesInsideTheChordAreStraight)
{
    const zgLine line(0, 0, 100, 0);
    EXPECT_TRUE(zgCurve::isStraight(line, zgPoint(10, 0), zgPoint(-20, 0)));
    EXPECT_TRUE(zgCurve::isStraight(values(0, 0, 10, 0, 80, 0, 100, 0)));
    // One zero handle is fine.
    EXPECT_TRUE(zgCurve::isStraight(line, zgPoint(), zgPoint(-20, 0)));
}

TEST(CurveIsStraight, BackwardFirstHandleIsNotStraight)
{
    const zgLine line(0, 0, 100, 0);
    EXPECT_FALSE(zgCurve::isStraight(line, zgPoint(-1, 0), zgPoint(-20, 0)));
    EXPECT_FALSE(zgCurve::isStraight(values(0, 0, -1, 0, 80, 0, 100, 0)));
}

TEST(CurveIsStraight, HandleLongerThanTheChordIsNotStraight)
{
    const zgLine line(0, 0, 100, 0);
    // Up to the other end inclusive is straight, past it is not.
    EXPECT_TRUE(zgCurve::isStraight(line, zgPoint(100, 0), zgPoint()));
    EXPECT_FALSE(zgCurve::isStraight(line, zgPoint(100.0001, 0), zgPoint()));
    EXPECT_TRUE(zgCurve::isStraight(line, zgPoint(), zgPoint(-100, 0)));
    EXPECT_FALSE(zgCurve::isStraight(line, zgPoint(), zgPoint(-100.0001, 0)));
    // The second handle pointing outwards, past the end.
    EXPECT_FALSE(zgCurve::isStraight(line, zgPoint(10, 0), zgPoint(1e-6, 0)));
}

TEST(CurveIsStraight, DistanceFromChordBoundIs2em07Exclusive)
{
    const zgLine line(0, 0, 100, 0);
    EXPECT_TRUE(zgCurve::isStraight(line, zgPoint(10, 1.9e-07), zgPoint(-10, 0)));
    EXPECT_FALSE(zgCurve::isStraight(line, zgPoint(10, 2e-07), zgPoint(-10, 0)));
    EXPECT_TRUE(zgCurve::isStraight(line, zgPoint(10, 0), zgPoint(-10, -1.9e-07)));
    EXPECT_FALSE(zgCurve::isStraight(line, zgPoint(10, 0), zgPoint(-10, -2e-07)));
    EXPECT_TRUE(zgCurve::isStraight(values(0, 0, 10, 1.9e-07, 90, 0, 100, 0)));
    EXPECT_FALSE(zgCurve::isStraight(values(0, 0, 10, 2e-07, 90, 0, 100, 0)));
}

TEST(CurveIsStraight, ArrayFormMatchesLineForm)
{
    curvetest::CurveRandom random(11);
    for (int i = 0; i < 500; ++i) {
        const QVector<double> v = i % 2 ? random.straight() : random.curved();
        const zgLine line(v[0], v[1], v[6], v[7]);
        const bool lineForm = zgCurve::isStraight(line, zgPoint(v[2] - v[0], v[3] - v[1]),
                                                  zgPoint(v[4] - v[6], v[5] - v[7]));
        EXPECT_EQ(zgCurve::isStraight(v), lineForm) << i;
        if (i % 2) {
            EXPECT_TRUE(zgCurve::isStraight(v)) << i;
        }
    }
}

// --- isLinear ----------------------------------------------------------------

TEST(CurveIsLinear, HandlesAtThirdsAreStraightAndLinear)
{
    const QVector<double> v = values(0, 0, 1, 2, 2, 4, 3, 6);
    EXPECT_TRUE(zgCurve::isStraight(v));
    EXPECT_TRUE(zgCurve::isLinear(v));
    EXPECT_TRUE(zgCurve::isLinear(zgLine(0, 0, 30, 0), zgPoint(10, 0), zgPoint(-10, 0)));
}

TEST(CurveIsLinear, HandlesAtQuartersAreStraightNotLinear)
{
    const QVector<double> v = values(0, 0, 1, 2, 3, 6, 4, 8);
    EXPECT_TRUE(zgCurve::isStraight(v));
    EXPECT_FALSE(zgCurve::isLinear(v));
    // No handles: straight, not linear.
    EXPECT_FALSE(zgCurve::isLinear(values(0, 0, 0, 0, 4, 8, 4, 8)));
}

TEST(CurveIsLinear, ToleranceIs1em12Inclusive)
{
    // On a zero chord the thirds are zero, so the handles are the deviations.
    const zgLine zeroLine(2, 3, 2, 3);
    EXPECT_TRUE(zgCurve::isLinear(zeroLine, zgPoint(1e-12, -1e-12), zgPoint(-1e-12, 1e-12)));
    EXPECT_FALSE(zgCurve::isLinear(zeroLine, zgPoint(1.1e-12, 0), zgPoint()));
    EXPECT_FALSE(zgCurve::isLinear(zeroLine, zgPoint(), zgPoint(0, -1.1e-12)));
    EXPECT_TRUE(zgCurve::isLinear(values(0, 0, 1e-12, 0, 0, -1e-12, 0, 0)));
    EXPECT_FALSE(zgCurve::isLinear(values(0, 0, 1.1e-12, 0, 0, 0, 0, 0)));
}

TEST(CurveIsLinear, SecondHandleIsMeasuredBackwards)
{
    // h2 = +third (pointing outwards) is not linear.
    EXPECT_FALSE(zgCurve::isLinear(zgLine(0, 0, 30, 0), zgPoint(10, 0), zgPoint(10, 0)));
}

// --- hasHandles --------------------------------------------------------------

TEST(CurveHasHandles, BoundIs1em12Inclusive)
{
    EXPECT_FALSE(zgCurve::hasHandles(values(0, 0, 0, 0, 5, 5, 5, 5)));
    EXPECT_FALSE(zgCurve::hasHandles(values(0, 0, 1e-12, -1e-12, 5, 5, 5, 5)));
    EXPECT_TRUE(zgCurve::hasHandles(values(0, 0, 1.5e-12, 0, 5, 5, 5, 5)));
    EXPECT_TRUE(zgCurve::hasHandles(values(0, 0, 0, -1.5e-12, 5, 5, 5, 5)));
    EXPECT_FALSE(zgCurve::hasHandles(values(5, 5, 5, 5, 1e-12, 0, 0, 0)));
    EXPECT_TRUE(zgCurve::hasHandles(values(5, 5, 5, 5, 0, 1.5e-12, 0, 0)));
    EXPECT_TRUE(zgCurve::hasHandles(kCurve));
}

// --- isFlatEnough ------------------------------------------------------------

TEST(CurveIsFlatEnough, BoundIsInclusive)
{
    // uy = 3, every other deviation 0: the measure is 9 = 16 * 0.75^2.
    const QVector<double> v = values(0, 0, 0, 1, 0, 0, 0, 0);
    EXPECT_TRUE(zgCurve::isFlatEnough(v, 0.75));
    EXPECT_FALSE(zgCurve::isFlatEnough(v, 0.7499));
    // Linear handles deviate by nothing.
    EXPECT_TRUE(zgCurve::isFlatEnough(values(0, 0, 1, 1, 2, 2, 3, 3), 0.0));
}

TEST(CurveIsFlatEnough, TakesTheGreaterDeviationPerCoordinate)
{
    // ux = 3*3 - 0 - 3 = 6, vx = 3*1 - 6 - 0 = -3; uy = 0, vy = 3*4 = 12:
    // max(36, 9) + max(0, 144) = 180; 16 f^2 = 180 at f = sqrt(180) / 4.
    // (u alone would give 36, v alone 153, all four 189.)
    const QVector<double> v = values(0, 0, 3, 0, 1, 4, 3, 0);
    const double f = std::sqrt(180.0) / 4.0;
    EXPECT_TRUE(zgCurve::isFlatEnough(v, f * (1.0 + 1e-12)));
    EXPECT_FALSE(zgCurve::isFlatEnough(v, f * (1.0 - 1e-12)));
}

// --- getBounds and addBounds -------------------------------------------------

TEST(CurveGetBounds, ArchReachesItsTop)
{
    const zgRect r = zgCurve::getBounds(values(0, 0, 0, 10, 10, 10, 10, 0));
    EXPECT_NEAR(r.x, 0.0, 1e-12);
    EXPECT_NEAR(r.y, 0.0, 1e-12);
    EXPECT_NEAR(r.width, 10.0, 1e-12);
    EXPECT_NEAR(r.height, 7.5, 1e-12);
}

TEST(CurveGetBounds, MonotoneCurveIsBoundedByItsEnds)
{
    const zgRect r = zgCurve::getBounds(values(10, 20, 12, 25, 18, 27, 20, 30));
    EXPECT_EQ(r.x, 10.0);
    EXPECT_EQ(r.y, 20.0);
    EXPECT_EQ(r.width, 10.0);
    EXPECT_EQ(r.height, 10.0);
}

TEST(CurveGetBounds, ExtremeAt2em07IsIgnored)
{
    // x(t) has its minimum just after the start; its derivative / 3 is
    // a t^2 + b t + c with c = v1 - v0 = -d.
    auto extremeTime = [](double d) {
        const double a = 3.0 * (-d - 10.0) + 10.0, b = 20.0 + 4.0 * d, c = -d;
        return (-b + std::sqrt(b * b - 4.0 * a * c)) / (2.0 * a);
    };
    // d = 4e-06 puts the extreme at t ~ 2e-07: ignored, the start stays the minimum.
    const double dIgnored = 4e-06;
    ASSERT_NEAR(extremeTime(dIgnored), 2e-07, 1e-09);
    const zgRect ignored = zgCurve::getBounds(values(0, 0, -dIgnored, 1, 10, 2, 10, 3));
    EXPECT_EQ(ignored.x, 0.0);
    EXPECT_EQ(ignored.width, 10.0);
    // d = 1e-05 puts it at t ~ 5e-07: taken, the minimum lies below 0.
    const double dTaken = 1e-05;
    const double t = extremeTime(dTaken);
    ASSERT_GT(t, 4e-07);
    const zgRect taken = zgCurve::getBounds(values(0, 0, -dTaken, 1, 10, 2, 10, 3));
    long double x, y;
    curvetest::bernstein(values(0, 0, -dTaken, 1, 10, 2, 10, 3), t, x, y);
    EXPECT_LT(taken.x, 0.0);
    EXPECT_NEAR(taken.x, double(x), 1e-18);
}

TEST(CurveGetBounds, ExtremeNearTheEndIsIgnoredToo)
{
    // Mirror of the case above, at t ~ 1 - 2e-07: the end stays the maximum.
    const double d = 4e-06;
    const zgRect r = zgCurve::getBounds(values(0, 3, 0, 2, 10 + d, 1, 10, 0));
    EXPECT_EQ(r.x, 0.0);
    EXPECT_EQ(r.width, 10.0);
    const zgRect taken = zgCurve::getBounds(values(0, 3, 0, 2, 10 + 1e-05, 1, 10, 0));
    EXPECT_GT(taken.x + taken.width, 10.0);
}

TEST(CurveAddBounds, PaddedBoxThatHoldsTheCurveStaysUnchanged)
{
    double min[2] = { 0.0, 0.0 };
    double max[2] = { 10.0, 10.0 };
    QVector<double> roots = { 7.0, 7.0 };
    // Padding 2 widens the test box by 1 on each side: -1 and 11 are inside.
    zgCurve::addBounds(-1.0, 5.0, 11.0, 11.0, 0, 2.0, min, max, roots);
    EXPECT_EQ(min[0], 0.0);
    EXPECT_EQ(max[0], 10.0);
    EXPECT_EQ(roots, QVector<double>({ 7.0, 7.0 }));
    // Slightly outside the padded box: the box changes, and as the values
    // are monotone both ends go in padded.
    zgCurve::addBounds(-1.0, 5.0, 11.0, 11.01, 0, 2.0, min, max, roots);
    EXPECT_EQ(min[0], -2.0);
    EXPECT_EQ(max[0], 11.01 + 1.0);
}

TEST(CurveAddBounds, MonotoneValuesAddBothEndsPadded)
{
    double min[2] = { 0.0, 0.0 };
    double max[2] = { 0.0, 0.0 };
    QVector<double> roots(2, 0.0);
    zgCurve::addBounds(0.0, 3.0, 7.0, 10.0, 1, 2.0, min, max, roots);
    EXPECT_EQ(min[1], -1.0);
    EXPECT_EQ(max[1], 11.0);
    // The other coordinate is not touched.
    EXPECT_EQ(min[0], 0.0);
    EXPECT_EQ(max[0], 0.0);
}

TEST(CurveAddBounds, ExtremePathPadsExtremesButNotTheEnd)
{
    double min[2] = { 0.0, 0.0 };
    double max[2] = { 0.0, 0.0 };
    QVector<double> roots(2, 0.0);
    // v1 below both ends: the minimum lies inside the curve.
    const double v0 = 0.0, v1 = -5.0, v2 = 5.0, v3 = 10.0;
    zgCurve::addBounds(v0, v1, v2, v3, 0, 2.0, min, max, roots);
    EXPECT_EQ(max[0], 10.0); // the end value, not widened
    // Expected minimum from the derivative's zero.
    const double a = 3.0 * (v1 - v2) - v0 + v3, b = 2.0 * (v0 + v2) - 4.0 * v1, c = v1 - v0;
    const double t = (-b + std::sqrt(b * b - 4.0 * a * c)) / (2.0 * a);
    ASSERT_GT(t, 0.0);
    ASSERT_LT(t, 1.0);
    const double u = 1.0 - t;
    const double w = u * u * u * v0 + 3 * u * u * t * v1 + 3 * u * t * t * v2 + t * t * t * v3;
    EXPECT_NEAR(min[0], w - 1.0, 1e-12);
}

TEST(CurveAddBounds, BadArgumentsChangeNothing)
{
    double min[2] = { 0.0, 0.0 };
    double max[2] = { 0.0, 0.0 };
    QVector<double> roots(2, 0.0);
    zgCurve::addBounds(0.0, 3.0, 7.0, 10.0, 2, 0.0, min, max, roots);
    zgCurve::addBounds(0.0, 3.0, 7.0, 10.0, -1, 0.0, min, max, roots);
    zgCurve::addBounds(0.0, 3.0, 7.0, 10.0, 0, 0.0, nullptr, max, roots);
    EXPECT_EQ(min[0], 0.0);
    EXPECT_EQ(min[1], 0.0);
    EXPECT_EQ(max[0], 0.0);
    EXPECT_EQ(max[1], 0.0);
}

// --- getArea -----------------------------------------------------------------

TEST(CurveGetArea, ArchHasAreaThreeFifths)
{
    const QVector<double> arch = values(0, 0, 0, 1, 1, 1, 1, 0);
    // Clockwise in a y-up picture (out along the arch, back along the chord).
    EXPECT_NEAR(zgCurve::getArea(arch), -0.6, 1e-15);
    EXPECT_NEAR(zgCurve::getArea(reversed(arch)), 0.6, 1e-15);
}

TEST(CurveGetArea, StraightCurveHasNoArea)
{
    EXPECT_NEAR(zgCurve::getArea(values(1, 2, 2, 4, 4, 8, 5, 10)), 0.0, 1e-14);
}

TEST(CurveGetArea, IsTheAreaSweptFromTheOrigin)
{
    curvetest::CurveRandom random(5);
    for (int i = 0; i < 50; ++i) {
        const QVector<double> v = random.curved();
        // Half the integral of x y' - y x' along the curve, by composite
        // Simpson (the integrand is a quintic). Closed by the chord this would
        // be the area between curve and chord; the closed form is the open
        // integral, so that the areas of the curves of a closed contour add up
        // to the contour's area.
        auto cross = [&](long double t) {
            long double x, y, dx, dy;
            curvetest::bernstein(v, t, x, y);
            curvetest::bernsteinDerivative(v, t, dx, dy);
            return x * dy - y * dx;
        };
        const int n = 2000;
        long double sum = cross(0) + cross(1);
        for (int k = 1; k < n; ++k)
            sum += (k % 2 ? 4 : 2) * cross((long double)k / n);
        const double expected = double(sum / (3.0L * n) / 2);
        // Simpson's error on this quintic is below 1e-8 for coordinates up to 100.
        EXPECT_NEAR(zgCurve::getArea(v), expected, 1e-8 + 1e-12 * std::fabs(expected)) << i;
    }
}

TEST(CurveGetArea, DependsOnThePlaceOfTheChord)
{
    // The arch moved by (5, 7): the area between curve and chord stays 0.6 in
    // size, the closed form adds the chord's own term (x3 y0 - x0 y3) / 2 = -3.5.
    const QVector<double> moved = values(5, 7, 5, 8, 6, 8, 6, 7);
    EXPECT_NEAR(zgCurve::getArea(moved), -0.6 - 3.5, 1e-14);
}

TEST(CurveGetArea, CurvesOfAClosedContourAddUpToItsArea)
{
    // A circle of radius 10 about (30, 40) from four quarter arcs, counter-
    // clockwise in a y-up picture: about pi r^2 (the cubic circle is 0.03%
    // too wide in places, so its area is a little larger).
    const double k = 0.5522847498307936 * 10.0;
    const double cx = 30.0, cy = 40.0;
    const QVector<QVector<double>> arcs = {
        values(cx + 10, cy, cx + 10, cy + k, cx + k, cy + 10, cx, cy + 10),
        values(cx, cy + 10, cx - k, cy + 10, cx - 10, cy + k, cx - 10, cy),
        values(cx - 10, cy, cx - 10, cy - k, cx - k, cy - 10, cx, cy - 10),
        values(cx, cy - 10, cx + k, cy - 10, cx + 10, cy - k, cx + 10, cy),
    };
    double area = 0.0;
    for (const QVector<double> &arc : arcs)
        area += zgCurve::getArea(arc);
    EXPECT_NEAR(area, M_PI * 100.0, M_PI * 100.0 * 1e-3);
    EXPECT_GT(area, M_PI * 100.0);
}

// --- properties over random cubics -------------------------------------------

TEST(CurveProperties, SubdivisionPreservesTheCurve)
{
    curvetest::CurveRandom random(20240611);
    for (int i = 0; i < 3000; ++i) {
        const QVector<double> v = i % 10 == 0 ? random.straight() : random.curved();
        const double t = random.uniform(0.0, 1.0);
        const QVector<QVector<double>> parts = zgCurve::subdivide(v, t);
        for (double s : { 0.0, 0.13, 0.5, 0.71, 1.0 }) {
            const zgPoint left = zgCurve::getPoint(parts[0], s);
            const zgPoint leftExpected = zgCurve::getPoint(v, s * t);
            const zgPoint right = zgCurve::getPoint(parts[1], s);
            const zgPoint rightExpected = zgCurve::getPoint(v, t + s * (1.0 - t));
            // Coordinates are below 100: 1e-9 covers rounding in both evaluations.
            ASSERT_NEAR(left.x, leftExpected.x, 1e-9) << i << " " << s;
            ASSERT_NEAR(left.y, leftExpected.y, 1e-9) << i << " " << s;
            ASSERT_NEAR(right.x, rightExpected.x, 1e-9) << i << " " << s;
            ASSERT_NEAR(right.y, rightExpected.y, 1e-9) << i << " " << s;
        }
        // Derivatives scale with the length of the part's time range.
        const zgPoint d = zgCurve::getWeightedTangent(parts[0], 0.5);
        const zgPoint dExpected = zgCurve::getWeightedTangent(v, 0.5 * t);
        ASSERT_NEAR(d.x, dExpected.x * t, 1e-8) << i;
        ASSERT_NEAR(d.y, dExpected.y * t, 1e-8) << i;
    }
}

TEST(CurveProperties, BoundsHoldEverySampleAndAreTight)
{
    curvetest::CurveRandom random(777);
    for (int i = 0; i < 3000; ++i) {
        const QVector<double> v = i % 10 == 0 ? random.straight() : random.curved();
        const zgRect r = zgCurve::getBounds(v);
        const double scale = 100.0; // the greatest coordinate
        const double slack = 1e-9 * scale;
        // Each side: the extreme coordinate of the curve, from dense samples
        // refined by golden section in long double.
        double extreme[4] = { qInf(), qInf(), -qInf(), -qInf() }; // minX, minY, maxX, maxY
        const int samples = 400;
        for (int k = 0; k <= samples; ++k) {
            const zgPoint p = zgCurve::getPoint(v, double(k) / samples);
            ASSERT_GE(p.x, r.left() - slack) << i << " " << k;
            ASSERT_LE(p.x, r.right() + slack) << i << " " << k;
            ASSERT_GE(p.y, r.top() - slack) << i << " " << k;
            ASSERT_LE(p.y, r.bottom() + slack) << i << " " << k;
        }
        for (int side = 0; side < 4; ++side) {
            const int coord = side % 2;
            const long double sign = side < 2 ? 1.0L : -1.0L;
            auto value = [&](long double t) {
                long double x, y;
                curvetest::bernstein(v, t, x, y);
                return sign * (coord == 0 ? x : y);
            };
            int bestK = 0;
            for (int k = 1; k <= samples; ++k)
                if (value((long double)k / samples) < value((long double)bestK / samples))
                    bestK = k;
            long double lo = std::max(0.0L, (long double)(bestK - 1) / samples);
            long double hi = std::min(1.0L, (long double)(bestK + 1) / samples);
            for (int k = 0; k < 100; ++k) {
                const long double m1 = hi - 0.6180339887498948482L * (hi - lo);
                const long double m2 = lo + 0.6180339887498948482L * (hi - lo);
                if (value(m1) < value(m2))
                    hi = m2;
                else
                    lo = m1;
            }
            const long double best = std::min(value((lo + hi) / 2),
                                               value((long double)bestK / samples));
            extreme[side] = double(sign * best);
        }
        EXPECT_NEAR(r.left(), extreme[0], slack) << i;
        EXPECT_NEAR(r.top(), extreme[1], slack) << i;
        EXPECT_NEAR(r.right(), extreme[2], slack) << i;
        EXPECT_NEAR(r.bottom(), extreme[3], slack) << i;
    }
}
