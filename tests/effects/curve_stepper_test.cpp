// ZDCurve: forward-differencing walks of one cubic, searches on the walk,
// and splits.
#include "curve/curve_test_util.h"

#include <zgraphics/drawing.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <random>
#include <type_traits>

namespace {

// (0, 0), (30, 40), (80, 40), (110, 0): control polygon 50 + 50 + 50 = 150.
const double kCurve[8] = {0, 0, 30, 40, 80, 40, 110, 0};

ZDCurve stepper(double scale = 1.0)
{
    ZDCurve curve;
    curve.approximation_scale(scale);
    curve.init(kCurve[0], kCurve[1], kCurve[2], kCurve[3], kCurve[4], kCurve[5], kCurve[6],
               kCurve[7]);
    return curve;
}

QVector<double> valuesOf(const double *c)
{
    return curvetest::values(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
}

QPointF curvePoint(const QVector<double> &v, double t)
{
    long double x = 0, y = 0;
    curvetest::bernstein(v, t, x, y);
    return QPointF(double(x), double(y));
}

QVector<QPointF> walk(ZDCurve &curve)
{
    QVector<QPointF> points;
    double x = 0, y = 0;
    while (curve.vertex(&x, &y))
        points.append(QPointF(x, y));
    return points;
}

void expectNear(const QPointF &actual, const QPointF &expected, double tolerance = 1e-9)
{
    EXPECT_NEAR(actual.x(), expected.x(), tolerance);
    EXPECT_NEAR(actual.y(), expected.y(), tolerance);
}

} // namespace

TEST(CurveStepper, MembersInTheirOrder)
{
    static_assert(std::is_standard_layout<ZDCurve>::value, "plain value class");
    EXPECT_LT(offsetof(ZDCurve, stepCount), offsetof(ZDCurve, step));
    EXPECT_LT(offsetof(ZDCurve, step), offsetof(ZDCurve, scale));
    EXPECT_LT(offsetof(ZDCurve, scale), offsetof(ZDCurve, start));
    EXPECT_LT(offsetof(ZDCurve, start), offsetof(ZDCurve, end));
    EXPECT_LT(offsetof(ZDCurve, end), offsetof(ZDCurve, control1));
    EXPECT_LT(offsetof(ZDCurve, control1), offsetof(ZDCurve, control2));
    EXPECT_LT(offsetof(ZDCurve, control2), offsetof(ZDCurve, fx));
    EXPECT_LT(offsetof(ZDCurve, fy), offsetof(ZDCurve, dfx));
    EXPECT_LT(offsetof(ZDCurve, dfy), offsetof(ZDCurve, ddfx));
    EXPECT_LT(offsetof(ZDCurve, ddfy), offsetof(ZDCurve, dddfx));
    EXPECT_LT(offsetof(ZDCurve, dddfy), offsetof(ZDCurve, savedFx));
    EXPECT_LT(offsetof(ZDCurve, savedFx), offsetof(ZDCurve, savedDdfy));
    EXPECT_FALSE(std::is_polymorphic<ZDCurve>::value);
}

TEST(CurveStepper, ConstructorsAndTheirScales)
{
    const ZDCurve fresh;
    EXPECT_EQ(fresh.stepCount, 0);
    EXPECT_EQ(fresh.step, 0);
    EXPECT_EQ(fresh.scale, 1.0);

    // Control polygon 150: 150 steps at scale 1.0, 225 at 1.5.
    const ZDCurve byNumbers(0, 0, 30, 40, 80, 40, 110, 0);
    EXPECT_EQ(byNumbers.approximation_scale(), 1.0);
    EXPECT_EQ(byNumbers.stepNum(), 150);
    EXPECT_EQ(byNumbers.step, 150);
    const ZDCurve byPoints(QPointF(0, 0), QPointF(30, 40), QPointF(80, 40), QPointF(110, 0));
    EXPECT_EQ(byPoints.approximation_scale(), 1.5);
    EXPECT_EQ(byPoints.stepNum(), 225);
    // Stored as start, end, control1, control2.
    EXPECT_EQ(byPoints.start[0], 0.0);
    EXPECT_EQ(byPoints.end[0], 110.0);
    EXPECT_EQ(byPoints.control1[1], 40.0);
    EXPECT_EQ(byPoints.control2[0], 80.0);
}

TEST(CurveStepper, InitDifferencesAndSavedCopies)
{
    ZDCurve curve = stepper(0.02); // 150 * 0.02 = 3 steps
    ASSERT_EQ(curve.stepNum(), 3);
    const double s = 1.0 / 3, s2 = s * s, s3 = s2 * s;
    // x: a = 0 - 60 + 80 = 20, b = 3 (30 - 80) - 0 + 110 = -40.
    EXPECT_DOUBLE_EQ(curve.dfx, 3 * s * 30 + 3 * s2 * 20 + s3 * -40);
    EXPECT_DOUBLE_EQ(curve.ddfx, 6 * s2 * 20 + 6 * s3 * -40);
    EXPECT_DOUBLE_EQ(curve.dddfx, 6 * s3 * -40);
    // y: a = 0 - 80 + 40 = -40, b = 3 (40 - 40) - 0 + 0 = 0.
    EXPECT_DOUBLE_EQ(curve.dfy, 3 * s * 40 + 3 * s2 * -40);
    EXPECT_DOUBLE_EQ(curve.dddfy, 0.0);
    EXPECT_EQ(curve.savedFx, curve.fx);
    EXPECT_EQ(curve.savedDfx, curve.dfx);
    EXPECT_EQ(curve.savedDdfy, curve.ddfy);
}

TEST(CurveStepper, WalkMatchesDirectEvaluation)
{
    for (double scale : {0.02, 0.1, 1.0, 1.5, 7.3}) {
        ZDCurve curve = stepper(scale);
        const int n = curve.stepNum();
        EXPECT_EQ(n, std::max(2, int(150 * scale)));
        const QVector<QPointF> points = walk(curve);
        ASSERT_EQ(points.size(), n + 1);
        for (int k = 0; k <= n; ++k)
            expectNear(points[k], curvePoint(valuesOf(kCurve), double(k) / n));
        EXPECT_EQ(points.first(), QPointF(0, 0));
        EXPECT_EQ(points.last(), QPointF(110, 0));
        EXPECT_EQ(curve.step, -1);
        double x = 0, y = 0;
        EXPECT_FALSE(curve.vertex(&x, &y));
    }
}

TEST(CurveStepper, ShortCurvesStillTakeTwoSteps)
{
    // A control polygon shorter than 2 / scale: two steps, three points.
    ZDCurve curve;
    curve.approximation_scale(2.0);
    curve.init(0, 0, 0.3, 0.2, 0.6, 0.2, 0.9, 0); // about 0.97 long
    EXPECT_EQ(curve.stepNum(), 2);
    const QVector<QPointF> points = walk(curve);
    ASSERT_EQ(points.size(), 3);
    expectNear(points[1], curvePoint(curvetest::values(0, 0, 0.3, 0.2, 0.6, 0.2, 0.9, 0), 0.5));

    // All points equal: two steps, three equal points.
    ZDCurve dot(5, 5, 5, 5, 5, 5, 5, 5);
    EXPECT_EQ(dot.stepNum(), 2);
    const QVector<QPointF> same = walk(dot);
    ASSERT_EQ(same.size(), 3);
    for (const QPointF &p : same)
        EXPECT_EQ(p, QPointF(5, 5));
}

TEST(CurveStepper, NonFiniteAndHugeCurvesGetABoundedCount)
{
    ZDCurve nan(0, 0, qQNaN(), 0, 1, 1, 2, 2);
    EXPECT_EQ(nan.stepNum(), 2);
    ZDCurve negativeScale;
    negativeScale.approximation_scale(-3.0);
    negativeScale.init(0, 0, 30, 40, 80, 40, 110, 0);
    EXPECT_EQ(negativeScale.stepNum(), 2);
    ZDCurve huge(0, 0, 1e300, 0, -1e300, 0, 1e300, 0);
    EXPECT_EQ(huge.stepNum(), 1 << 20);
    ZDCurve infinite(0, 0, qInf(), 0, 1, 1, 2, 2);
    EXPECT_EQ(infinite.stepNum(), 1 << 20);
}

TEST(CurveStepper, StepCountIsCappedAtTwoToTheTwentieth)
{
    // A straight polygon of length 1048575: every step below the cap counts.
    ZDCurve below(0, 0, 1, 0, 2, 0, 1048575, 0);
    EXPECT_EQ(below.stepNum(), 1048575);
    ZDCurve at(0, 0, 1, 0, 2, 0, 1048576, 0);
    EXPECT_EQ(at.stepNum(), 1 << 20);
    ZDCurve above(0, 0, 1, 0, 2, 0, 3e6, 0);
    EXPECT_EQ(above.stepNum(), 1 << 20);
    // A huge scale on a small curve: the walk gives 2^20 + 1 points and
    // ends on the curve's end.
    ZDCurve scaled;
    scaled.approximation_scale(1e300);
    scaled.init(0, 0, 10, 0, 20, 10, 30, 10);
    ASSERT_EQ(scaled.stepNum(), 1 << 20);
    int points = 0;
    double x = 0.0, y = 0.0;
    while (scaled.vertex(&x, &y))
        ++points;
    EXPECT_EQ(points, (1 << 20) + 1);
    EXPECT_EQ(x, 30.0);
    EXPECT_EQ(y, 10.0);
    // The search walks the capped count and finds the curve's middle point
    // (15, 5) at a step index within the walk.
    scaled.init(0, 0, 10, 0, 20, 10, 30, 10);
    const int index = scaled.getstep(15, 5);
    EXPECT_NE(index, -1);
    EXPECT_GE(index, 0);
    EXPECT_LT(index, 1 << 20);
}

TEST(CurveStepper, NewScaleTakesEffectAtTheNextInit)
{
    ZDCurve curve = stepper(1.0);
    curve.approximation_scale(0.5);
    EXPECT_EQ(curve.stepNum(), 150);
    curve.init(kCurve[0], kCurve[1], kCurve[2], kCurve[3], kCurve[4], kCurve[5], kCurve[6], kCurve[7]);
    EXPECT_EQ(curve.stepNum(), 75);
    // The point form of init keeps the current scale too.
    curve.init(QPointF(0, 0), QPointF(30, 40), QPointF(80, 40), QPointF(110, 0));
    EXPECT_EQ(curve.stepNum(), 75);
}

TEST(CurveStepper, ResetClearsOnlyTheCounters)
{
    ZDCurve curve = stepper(0.1);
    const double dfx = curve.dfx;
    curve.reset();
    EXPECT_EQ(curve.stepNum(), 0);
    EXPECT_EQ(curve.step, -1);
    EXPECT_EQ(curve.dfx, dfx);
    EXPECT_EQ(curve.end[0], 110.0);
    double x = 0, y = 0;
    EXPECT_FALSE(curve.vertex(&x, &y));
}

TEST(CurveStepper, BackwardWalkRightAfterInit)
{
    // step == stepCount: one call gives the end, the next returns false.
    ZDCurve curve = stepper(0.1);
    QPointF p;
    ASSERT_TRUE(curve.vertexn(p));
    EXPECT_EQ(p, QPointF(110, 0));
    EXPECT_FALSE(curve.vertexn(p));
}

TEST(CurveStepper, BackwardWalkAfterAForwardWalk)
{
    ZDCurve curve = stepper(0.1); // 15 steps
    const int n = curve.stepNum();
    walk(curve);
    ASSERT_EQ(curve.step, -1);
    // Replays of the stated order of the take-back, from the walk's end state.
    double fx = curve.fx, fy = curve.fy, dfx = curve.dfx, dfy = curve.dfy;
    double ddfx = curve.ddfx, ddfy = curve.ddfy;
    auto takeBack = [&] {
        fx -= dfx;
        fy -= dfy;
        dfx -= ddfx;
        dfy -= ddfy;
        ddfx -= curve.dddfx;
        ddfy -= curve.dddfy;
    };
    QPointF p;
    // Step -1: the differences are taken back once.
    ASSERT_TRUE(curve.vertexn(p));
    takeBack();
    EXPECT_EQ(p, QPointF(fx, fy));
    // Step 0: the start.
    ASSERT_TRUE(curve.vertexn(p));
    EXPECT_EQ(p, QPointF(0, 0));
    // Steps 1 to n - 1 go on taking back; step n gives the end.
    for (int k = 1; k < n; ++k) {
        ASSERT_TRUE(curve.vertexn(p));
        takeBack();
        EXPECT_EQ(p, QPointF(fx, fy)) << k;
    }
    ASSERT_TRUE(curve.vertexn(p));
    EXPECT_EQ(p, QPointF(110, 0));
    EXPECT_FALSE(curve.vertexn(p));
    EXPECT_EQ(curve.step, n + 1);
}

TEST(CurveStepper, GetStepFindsTheNearestStep)
{
    ZDCurve curve = stepper(0.1); // 15 steps: index k is walk point 15 - 1 - k
    const int n = curve.stepNum();
    // Near walk point 5 (t = 5 / 15): index n - 1 - 5.
    const QPointF target = curvePoint(valuesOf(kCurve), 5.0 / n) + QPointF(0.5, -0.5);
    EXPECT_EQ(curve.getstep(target.x(), target.y()), n - 1 - 5);
    // The start has index stepCount - 1.
    curve = stepper(0.1);
    EXPECT_EQ(curve.getstep(0.5, 0.5), n - 1);
    // A match on the end reads as not found.
    curve = stepper(0.1);
    EXPECT_EQ(curve.getstep(110, 0), -1);
}

TEST(CurveStepper, GetStepReachIsBelowFourInManhattanDistance)
{
    // Every walk point of a straight curve from (0, 0) to (60, 0) lies on
    // y = 0: a point 4.0 above the line is out of reach, 3.99 is in.
    ZDCurve line;
    line.approximation_scale(0.1);
    line.init(0, 0, 20, 0, 40, 0, 60, 0); // 6 steps of 10
    EXPECT_EQ(line.getstep(20, 4.0), -1);
    line.init(0, 0, 20, 0, 40, 0, 60, 0);
    EXPECT_EQ(line.getstep(20, 3.99), 6 - 1 - 2);
    line.init(0, 0, 20, 0, 40, 0, 60, 0);
    EXPECT_EQ(line.getstep(21.5, 2.5), -1); // 1.5 + 2.5 = 4.0
}

TEST(CurveStepper, EqualDistanceTieGoesToTheEarlierStep)
{
    // Three steps of exactly 2 along (0, 0) to (6, 0): x = 3 lies 1 from the
    // walk points at 2 and 4; the earlier one (walk point 1) is kept.
    ZDCurve line;
    line.approximation_scale(0.5);
    line.init(0, 0, 2, 0, 4, 0, 6, 0);
    ASSERT_EQ(line.stepNum(), 3);
    EXPECT_EQ(line.getstep(3, 0), 3 - 1 - 1);

    // Out and back along x: x(t) = 24 t (1 - t), four steps, walk points at
    // 0, 4.5, 6, 4.5, 0, all exact. From the start with dist 4 the points at
    // 4.5 tie (|20.25 - 16|) and the earlier one (walk point 1) wins.
    ZDCurve outAndBack;
    outAndBack.approximation_scale(0.25);
    outAndBack.init(0, 0, 8, 0, 8, 0, 0, 0);
    ASSERT_EQ(outAndBack.stepNum(), 4);
    EXPECT_EQ(outAndBack.frontPtAtDist(4.0), 4 - 1 - 1);
}

TEST(CurveStepper, FrontAndBackPointAtDistance)
{
    // A straight line of 10 steps of 10: walk point k at x = 10 k.
    ZDCurve line;
    line.approximation_scale(0.1);
    line.init(0, 0, 100.0 / 3, 0, 200.0 / 3, 0, 100, 0);
    ASSERT_EQ(line.stepNum(), 10);
    // From the start, dist 31: points 40 (Manhattan 40 in 31..62) and 50, 60
    // qualify; 40 is nearest in squares (1600 - 961). Walk point 4, index 5.
    EXPECT_EQ(line.frontPtAtDist(31), 10 - 1 - 4);
    // From the end, dist 31: points 60 (40 away), 50, 40 (60 away);
    // 60 is nearest: walk point 6, index 3.
    line.init(0, 0, 100.0 / 3, 0, 200.0 / 3, 0, 100, 0);
    EXPECT_EQ(line.backPtAtDist(31), 10 - 1 - 6);
    // Beyond reach: nothing lies more than 200 from the start.
    line.init(0, 0, 100.0 / 3, 0, 200.0 / 3, 0, 100, 0);
    EXPECT_EQ(line.frontPtAtDist(200), -1);
}

TEST(CurveStepper, FrontAtDistanceZeroFindsNothing)
{
    ZDCurve curve = stepper(1.0);
    EXPECT_EQ(curve.frontPtAtDist(0.0), -1);
    curve = stepper(1.0);
    EXPECT_EQ(curve.backPtAtDist(0.0), -1);
    curve = stepper(1.0);
    EXPECT_EQ(curve.frontPtAtDist(-5.0), -1);
    curve = stepper(1.0);
    EXPECT_EQ(curve.frontPtAtDist(qQNaN()), -1);
}

TEST(CurveStepper, FrontSkipsTheStartBackDoesNot)
{
    // Walk points of the line at x = 0, 10, ..., 100.
    ZDCurve line;
    line.approximation_scale(0.1);
    line.init(0, 0, 100.0 / 3, 0, 200.0 / 3, 0, 100, 0);
    // dist 99: only the start, 100 from the end, qualifies for backPtAtDist.
    EXPECT_EQ(line.backPtAtDist(99), 10 - 1);
    // From the start, dist 99: only the end, 100 away, qualifies: index -1.
    line.init(0, 0, 100.0 / 3, 0, 200.0 / 3, 0, 100, 0);
    EXPECT_EQ(line.frontPtAtDist(99), -1);
}

TEST(CurveStepper, SecondSearchWithoutInitWalksOffTheCurve)
{
    ZDCurve curve = stepper(0.1);
    const int n = curve.stepNum();
    const QPointF onCurve = curvePoint(valuesOf(kCurve), 5.0 / n);
    EXPECT_EQ(curve.getstep(onCurve.x(), onCurve.y()), n - 1 - 5);
    // The differences are stale: the restarted walk drifts off the curve
    // and the same point is no longer found.
    EXPECT_EQ(curve.getstep(onCurve.x(), onCurve.y()), -1);
    curve.step = curve.stepCount;
    const QVector<QPointF> stale = walk(curve);
    ASSERT_EQ(stale.size(), n + 1);
    double worst = 0.0;
    for (int k = 1; k < n; ++k) {
        const QPointF d = stale[k] - curvePoint(valuesOf(kCurve), double(k) / n);
        worst = std::max(worst, std::hypot(d.x(), d.y()));
    }
    EXPECT_GT(worst, 10.0);
    // The ends are exact whatever the differences hold.
    EXPECT_EQ(stale.first(), QPointF(0, 0));
    EXPECT_EQ(stale.last(), QPointF(110, 0));
}

TEST(CurveStepper, SplitAtAParameterWithReversedWeights)
{
    ZDCurve curve = stepper(1.0);
    QPointF first[4], second[4];
    const QVector<double> v = valuesOf(kCurve);
    for (double t : {0.25, 0.5, 0.9}) {
        ASSERT_TRUE(curve.splitcurve(first, second, t));
        // t on the start side: the split point is the curve at 1 - t.
        const QPointF split = curvePoint(v, 1.0 - t);
        expectNear(first[3], split);
        expectNear(second[0], split);
        EXPECT_EQ(first[0], QPointF(0, 0));
        EXPECT_EQ(second[3], QPointF(110, 0));
        // Each piece is the source curve over its share of the time.
        const QVector<double> a = curvetest::values(first[0].x(), first[0].y(), first[1].x(),
                                                    first[1].y(), first[2].x(), first[2].y(),
                                                    first[3].x(), first[3].y());
        const QVector<double> b = curvetest::values(second[0].x(), second[0].y(), second[1].x(),
                                                    second[1].y(), second[2].x(), second[2].y(),
                                                    second[3].x(), second[3].y());
        for (double s : {0.2, 0.5, 0.7}) {
            expectNear(curvePoint(a, s), curvePoint(v, s * (1.0 - t)));
            expectNear(curvePoint(b, s), curvePoint(v, (1.0 - t) + s * t));
        }
    }
    // t 1 falls on the start, t 0 on the end.
    ASSERT_TRUE(curve.splitcurve(first, second, 1.0));
    EXPECT_EQ(first[3], QPointF(0, 0));
    EXPECT_EQ(second[1], QPointF(30, 40));
    ASSERT_TRUE(curve.splitcurve(first, second, 0.0));
    EXPECT_EQ(second[0], QPointF(110, 0));
    EXPECT_EQ(first[2], QPointF(80, 40));
}

TEST(CurveStepper, SplitOutsideTheUnitIntervalWritesNothing)
{
    ZDCurve curve = stepper(1.0);
    const QPointF marker(-7, -7);
    QPointF first[4] = {marker, marker, marker, marker};
    QPointF second[4] = {marker, marker, marker, marker};
    EXPECT_FALSE(curve.splitcurve(first, second, -0.1));
    EXPECT_FALSE(curve.splitcurve(first, second, 1.0000001));
    EXPECT_FALSE(curve.splitcurve(first, second, qQNaN()));
    EXPECT_FALSE(curve.splitcurve(nullptr, second, 0.5));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(first[i], marker);
        EXPECT_EQ(second[i], marker);
    }
}

TEST(CurveStepper, SplitAtAPointUsesTheStepIndex)
{
    ZDCurve curve = stepper(0.1);
    const int n = curve.stepNum();
    // Walk point 5 has index n - 1 - 5, so t = (n - 6) / n and the split
    // falls on the curve at 1 - t = 6 / n: one step past the point picked.
    const QPointF picked = curvePoint(valuesOf(kCurve), 5.0 / n);
    QPointF first[4], second[4];
    ASSERT_TRUE(curve.splitcurve(first, second, picked.x(), picked.y()));
    expectNear(first[3], curvePoint(valuesOf(kCurve), 6.0 / n));
    // No step within reach: false, nothing written.
    curve = stepper(0.1);
    const QPointF marker(-7, -7);
    first[0] = marker;
    EXPECT_FALSE(curve.splitcurve(first, second, 500.0, 500.0));
    EXPECT_EQ(first[0], marker);
}

TEST(CurveStepper, AssignmentCopiesEveryMember)
{
    ZDCurve source = stepper(0.1);
    double x, y;
    source.vertex(&x, &y);
    source.vertex(&x, &y);
    ZDCurve copy;
    copy = source;
    EXPECT_EQ(std::memcmp(&copy, &source, sizeof(ZDCurve)), 0);
    ZDCurve moved;
    moved = std::move(copy);
    EXPECT_EQ(std::memcmp(&moved, &source, sizeof(ZDCurve)), 0);
    // The copy walks on from where the source stood.
    ASSERT_TRUE(moved.vertex(&x, &y));
    const QPointF expected = curvePoint(valuesOf(kCurve), 2.0 / source.stepNum());
    EXPECT_NEAR(x, expected.x(), 1e-9);
    EXPECT_NEAR(y, expected.y(), 1e-9);
}

// Seeded cubics and scales: every walk gives stepCount + 1 points, the ends
// exact and every point within 1e-9 of direct evaluation.
TEST(CurveStepper, SeededWalksMatchDirectEvaluation)
{
    curvetest::CurveRandom random(8101u);
    int walks = 0;
    long points = 0;
    double worst = 0.0;
    for (int n = 0; n < 300; ++n) {
        const QVector<double> v = random.curved();
        ZDCurve curve;
        curve.approximation_scale(random.uniform(0.01, 5.0));
        curve.init(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7]);
        const QVector<QPointF> walked = walk(curve);
        ASSERT_EQ(walked.size(), curve.stepNum() + 1);
        EXPECT_EQ(walked.first(), QPointF(v[0], v[1]));
        EXPECT_EQ(walked.last(), QPointF(v[6], v[7]));
        for (int k = 0; k < walked.size(); ++k) {
            const QPointF d = walked[k] - curvePoint(v, double(k) / curve.stepNum());
            worst = std::max(worst, std::hypot(d.x(), d.y()));
        }
        ++walks;
        points += walked.size();
    }
    EXPECT_LT(worst, 1e-9);
    std::printf("stepper: %d walks, %ld points, worst distance from direct evaluation %.2e\n",
                walks, points, worst);
}
