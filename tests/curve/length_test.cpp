// Arc length of cubics on the 8-value array and the searches for a time:
// _getLengthIntegrand, getIterations, getLength, getTimeAt, getTimeOf,
// getNearestTime.
#include "curve/curve_test_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using curvetest::values;

namespace {

const QVector<double> kCurve = values(0.1, 0.2, 30.7, 80.3, 70.9, -20.6, 100.3, 40.1);

// The speed |B'(t)| in long double, from the Bernstein form.
long double speed(const QVector<double> &v, long double t)
{
    long double dx, dy;
    curvetest::bernsteinDerivative(v, t, dx, dy);
    return std::sqrt(dx * dx + dy * dy);
}

// Gauss-Legendre quadrature of order n over [a, b] in long double, with
// nodes and weights found here by Newton's method on the Legendre
// polynomial, independent of the library's tables.
long double gaussLegendre(const QVector<double> &v, long double a, long double b, int n)
{
    const long double pi = 3.141592653589793238462643383279503L;
    long double sum = 0.0L;
    for (int i = 1; i <= n; ++i) {
        long double x = std::cos(pi * (i - 0.25L) / (n + 0.5L));
        long double derivative = 0.0L;
        for (int iteration = 0; iteration < 100; ++iteration) {
            long double p0 = 1.0L, p1 = x;
            for (int k = 2; k <= n; ++k) {
                const long double p2 = ((2 * k - 1) * x * p1 - (k - 1) * p0) / k;
                p0 = p1;
                p1 = p2;
            }
            derivative = n * (x * p1 - p0) / (x * x - 1.0L);
            const long double step = p1 / derivative;
            x -= step;
            if (std::fabs(step) < 1e-19L)
                break;
        }
        const long double weight = 2.0L / ((1.0L - x * x) * derivative * derivative);
        sum += weight * speed(v, (b - a) / 2 * x + (a + b) / 2);
    }
    return sum * (b - a) / 2;
}

// Gentle cubics: handles of 0.2 to 0.45 of the chord, turned by at most
// about 52 degrees from it. Their speed keeps well away from zero.
QVector<double> gentleCurve(curvetest::CurveRandom &random)
{
    const double x0 = random.uniform(-100, 100), y0 = random.uniform(-100, 100);
    const double x3 = random.uniform(-100, 100), y3 = random.uniform(-100, 100);
    const double cx = x3 - x0, cy = y3 - y0;
    auto handle = [&](double &hx, double &hy) {
        const double f = random.uniform(0.2, 0.45), angle = random.uniform(-0.9, 0.9);
        hx = f * (cx * std::cos(angle) - cy * std::sin(angle));
        hy = f * (cx * std::sin(angle) + cy * std::cos(angle));
    };
    double h1x, h1y, h2x, h2y;
    handle(h1x, h1y);
    handle(h2x, h2y);
    return values(x0, y0, x0 + h1x, y0 + h1y, x3 - h2x, y3 - h2y, x3, y3);
}

double distance(const zgPoint &a, const zgPoint &b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

} // namespace

// --- the integrand -----------------------------------------------------------

TEST(CurveLengthIntegrand, IsTheSpeedOfTheCurve)
{
    const std::function<double(double)> f = zgCurve::_getLengthIntegrand(kCurve);
    for (double t : { 0.0, 0.1, 0.3, 0.5, 0.77, 1.0 })
        EXPECT_NEAR(f(t), double(speed(kCurve, t)), 1e-12 * double(speed(kCurve, t))) << t;
    // At the ends: three times the handle.
    EXPECT_NEAR(f(0.0), 3.0 * std::hypot(30.6, 80.1), 1e-12);
    EXPECT_NEAR(f(1.0), 3.0 * std::hypot(29.4, 60.7), 1e-12);
}

TEST(CurveLengthIntegrand, DoesNotSnapTinyHandles)
{
    // Unlike _evaluate, the integrand takes a 5e-13 handle as it is.
    const QVector<double> v = values(0, 0, 5e-13, 0, 10, 5, 20, 0);
    EXPECT_NEAR(zgCurve::_getLengthIntegrand(v)(0.0), 1.5e-12, 1e-25);
    EXPECT_EQ(zgCurve::getWeightedTangent(v, 0.0).x, 0.0);
}

TEST(CurveLengthIntegrand, HoldsItsCoefficientsByValue)
{
    QVector<double> v = kCurve;
    const std::function<double(double)> f = zgCurve::_getLengthIntegrand(v);
    const double before = f(0.4);
    v.fill(0.0);
    EXPECT_EQ(f(0.4), before);
}

// --- getIterations -----------------------------------------------------------

TEST(CurveGetIterations, ThirtyTwoPerUnitWithinTwoToSixteen)
{
    EXPECT_EQ(zgCurve::getIterations(0.0, 0.0), 2);
    EXPECT_EQ(zgCurve::getIterations(0.0, 0.25), 8);
    EXPECT_EQ(zgCurve::getIterations(0.0, 1.0), 16);
    EXPECT_EQ(zgCurve::getIterations(1.0, 0.0), 16);
    EXPECT_EQ(zgCurve::getIterations(0.0, 1.0 / 32.0), 2);
    EXPECT_EQ(zgCurve::getIterations(0.0, 0.0625), 2);
    EXPECT_EQ(zgCurve::getIterations(0.0, 0.07), 3);
    EXPECT_EQ(zgCurve::getIterations(0.3, 0.2), 4);
    EXPECT_EQ(zgCurve::getIterations(0.0, 15.0 / 32.0), 15);
    EXPECT_EQ(zgCurve::getIterations(0.0, 0.47), 16);
    EXPECT_EQ(zgCurve::getIterations(-3.0, 5.0), 16);
}

TEST(CurveGetIterations, NonFiniteRangesStayInTheTable)
{
    EXPECT_EQ(zgCurve::getIterations(0.0, qInf()), 16);
    EXPECT_EQ(zgCurve::getIterations(0.0, qQNaN()), 2);
}

// --- getLength ---------------------------------------------------------------

TEST(CurveGetLength, StraightCurveIsMeasuredByItsChord)
{
    // Straight with uneven handles: exactly the chord.
    const QVector<double> v = values(0, 0, 25, 0, 28, 0, 30, 0);
    ASSERT_TRUE(zgCurve::isStraight(v));
    EXPECT_EQ(zgCurve::getLength(v, 0.0, 1.0), 30.0);
    EXPECT_EQ(zgCurve::getLength(values(1, 2, 1, 2, 4, 6, 4, 6), 0.0, 1.0), 5.0);
    // A curve of no length.
    EXPECT_EQ(zgCurve::getLength(values(3, 3, 3, 3, 3, 3, 3, 3), 0.0, 1.0), 0.0);
}

TEST(CurveGetLength, StraightPartIsTheChordOfThePart)
{
    const QVector<double> v = values(0, 0, 25, 0, 28, 0, 30, 0);
    const double expected = distance(zgCurve::getPoint(v, 0.2), zgCurve::getPoint(v, 0.6));
    EXPECT_NEAR(zgCurve::getLength(v, 0.2, 0.6), expected, 1e-12);
    EXPECT_NEAR(zgCurve::getLength(v, 0.0, 0.6), zgCurve::getPoint(v, 0.6).x, 1e-12);
    EXPECT_NEAR(zgCurve::getLength(v, 0.6, 1.0), 30.0 - zgCurve::getPoint(v, 0.6).x, 1e-12);
    // Times are not proportional to the chord on this curve.
    EXPECT_GT(std::fabs(zgCurve::getLength(v, 0.0, 0.5) - 15.0), 1.0);
    // A reversed range is measured the same, and positive.
    EXPECT_NEAR(zgCurve::getLength(v, 0.6, 0.2), expected, 1e-12);
}

TEST(CurveGetLength, CurvedIsTheSixteenPointQuadratureOfTheIntegrand)
{
    const std::function<double(double)> f = zgCurve::_getLengthIntegrand(kCurve);
    EXPECT_EQ(zgCurve::getLength(kCurve, 0.0, 1.0), zgNumeric::integrate(f, 0.0, 1.0, 16));
    EXPECT_EQ(zgCurve::getLength(kCurve, 0.1, 0.2), zgNumeric::integrate(f, 0.1, 0.2, 4));
    EXPECT_EQ(zgCurve::getLength(kCurve, 0.5, 0.5), zgNumeric::integrate(f, 0.5, 0.5, 2));
    EXPECT_EQ(zgCurve::getLength(kCurve, 0.5, 0.5), 0.0);
}

TEST(CurveGetLength, CurvedReversedRangeIsNegative)
{
    const double forward = zgCurve::getLength(kCurve, 0.2, 0.7);
    const double backward = zgCurve::getLength(kCurve, 0.7, 0.2);
    EXPECT_GT(forward, 0.0);
    EXPECT_NEAR(backward, -forward, 1e-12 * forward);
}

TEST(CurveGetLength, ParabolaMatchesItsClosedForm)
{
    // y = x^2 for x from 0 to 1, as a cubic: length (2 sqrt 5 + asinh 2) / 4.
    const QVector<double> parabola = values(0, 0, 1.0 / 3.0, 0, 2.0 / 3.0, 1.0 / 3.0, 1, 1);
    const double exact = (2.0 * std::sqrt(5.0) + std::asinh(2.0)) / 4.0;
    // The reference helper itself.
    EXPECT_NEAR(curvetest::referenceLength(parabola), exact, 1e-14);
    // The speed has its nearest complex zero far from [0, 1]: 16 points give
    // about 13 digits.
    EXPECT_NEAR(zgCurve::getLength(parabola, 0.0, 1.0), exact, 1e-12);
}

TEST(CurveGetLength, GentleCurvesMatchTheReference)
{
    // On gentle curves the speed's nearest complex zero keeps well away from
    // [0, 1], and the 16-point error of the whole length falls below 1e-9
    // relative (the worst seen over these seeds is about 1.5e-10).
    curvetest::CurveRandom random(424242);
    for (int i = 0; i < 300; ++i) {
        const QVector<double> v = gentleCurve(random);
        const double reference = curvetest::referenceLength(v);
        ASSERT_NEAR(zgCurve::getLength(v, 0.0, 1.0), reference, 1e-9 * reference) << i;
    }
}

TEST(CurveGetLength, PartsAreAsGoodAsTheirQuadrature)
{
    // A part of the time range takes only ceil(32 |b - a|) points, 2 at the
    // least, so its error is that of a low-order rule: up to about 2e-6
    // relative on gentle curves. The library must match the same rule,
    // computed independently in long double, and be as far from the
    // reference as that rule is.
    curvetest::CurveRandom random(242424);
    for (int i = 0; i < 200; ++i) {
        const QVector<double> v = gentleCurve(random);
        double a = random.uniform(0.0, 1.0), b = random.uniform(0.0, 1.0);
        if (a > b)
            std::swap(a, b);
        const int n = zgCurve::getIterations(a, b);
        ASSERT_EQ(n, std::max(2, std::min(16, int(std::ceil((b - a) * 32.0)))));
        const double reference = curvetest::referencePartLength(v, a, b);
        const double quadrature = double(gaussLegendre(v, a, b, n));
        const double length = zgCurve::getLength(v, a, b);
        ASSERT_NEAR(length, quadrature, 1e-12 * (1.0 + reference)) << i;
        ASSERT_LE(std::fabs(length - reference),
                  std::fabs(quadrature - reference) + 1e-12 * (1.0 + reference)) << i;
        ASSERT_NEAR(length, reference, 1e-5 * reference) << i;
    }
}

TEST(CurveGetLength, AnyCurveIsAsGoodAsItsQuadrature)
{
    // On arbitrary cubics, with loops and near-cusps, the speed comes close to
    // zero and 16-point Gauss-Legendre is good to only about 1% (0.6% worst
    // seen over 1000 such curves). The bound here is therefore the
    // quadrature's own error, computed independently in long double: the
    // library must be that far from the reference and no farther.
    curvetest::CurveRandom random(8080);
    for (int i = 0; i < 300; ++i) {
        const QVector<double> v = random.curved();
        if (zgCurve::isStraight(v))
            continue;
        const double reference = curvetest::referenceLength(v);
        const double quadrature = double(gaussLegendre(v, 0.0L, 1.0L, 16));
        const double length = zgCurve::getLength(v, 0.0, 1.0);
        ASSERT_NEAR(length, quadrature, 1e-12 * reference) << i;
        ASSERT_LE(std::fabs(length - reference),
                  std::fabs(quadrature - reference) + 1e-12 * reference) << i;
        ASSERT_NEAR(length, reference, 1e-2 * reference) << i;
    }
}

TEST(CurveGetLength, StraightCurvesMatchTheReference)
{
    curvetest::CurveRandom random(31337);
    for (int i = 0; i < 200; ++i) {
        const QVector<double> v = random.straight();
        ASSERT_TRUE(zgCurve::isStraight(v)) << i;
        const double reference = curvetest::referenceLength(v);
        ASSERT_NEAR(zgCurve::getLength(v, 0.0, 1.0), reference, 1e-12 * (1.0 + reference)) << i;
    }
}

// --- getTimeAt ---------------------------------------------------------------

TEST(CurveGetTimeAt, ZeroOffsetGivesTheStart)
{
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, 0.0, -100.0), 0.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, 0.0, 0.3), 0.3);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, -0.0, -100.0), 0.0);
}

TEST(CurveGetTimeAt, WholeLengthReachesTheEndExactly)
{
    const double length = zgCurve::getLength(kCurve, 0.0, 1.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, length, 0.0), 1.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, length, -100.0), 1.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, -length, 1.0), 0.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, -length, -100.0), 0.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, length + 1.0, 0.0), -100.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, -length - 1.0, -100.0), -100.0);
}

TEST(CurveGetTimeAt, EndToleranceIs1em12)
{
    const double length = zgCurve::getLength(kCurve, 0.0, 1.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, length + 5e-13, 0.0), 1.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, length + 3e-12, 0.0), -100.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, -(length + 5e-13), 1.0), 0.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, -(length + 3e-12), 1.0), -100.0);
    // Just short of the end: a root search, which lands next to 1.
    const double t = zgCurve::getTimeAt(kCurve, length - 3e-12, 0.0);
    EXPECT_NE(t, -100.0);
    EXPECT_NEAR(t, 1.0, 1e-12);
}

TEST(CurveGetTimeAt, ForwardFromAGivenStart)
{
    const QVector<double> v = values(0, 0, 30, 40, 70, 40, 100, 0);
    const double t = zgCurve::getTimeAt(v, 10.0, 0.3);
    EXPECT_GT(t, 0.3);
    // The running integral walks with few quadrature points per step; it
    // comes to within about 1e-7 relative here.
    EXPECT_NEAR(curvetest::referencePartLength(v, 0.3, t), 10.0, 1e-6);
    const double rest = zgCurve::getLength(v, 0.3, 1.0);
    EXPECT_EQ(zgCurve::getTimeAt(v, rest, 0.3), 1.0);
    EXPECT_EQ(zgCurve::getTimeAt(v, rest + 1e-6, 0.3), -100.0);
}

TEST(CurveGetTimeAt, BackwardFromAGivenStart)
{
    const QVector<double> v = values(0, 0, 30, 40, 70, 40, 100, 0);
    const double t = zgCurve::getTimeAt(v, -10.0, 0.6);
    EXPECT_LT(t, 0.6);
    EXPECT_NEAR(curvetest::referencePartLength(v, t, 0.6), 10.0, 1e-5);
    const double before = zgCurve::getLength(v, 0.0, 0.6);
    EXPECT_EQ(zgCurve::getTimeAt(v, -before, 0.6), 0.0);
    EXPECT_EQ(zgCurve::getTimeAt(v, -before - 1e-6, 0.6), -100.0);
}

TEST(CurveGetTimeAt, StartAtTheEndLeavesNoRoomForward)
{
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, 1.0, 1.0), -100.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, -1.0, 0.0), -100.0);
}

TEST(CurveGetTimeAt, RoundTripsOnStraightCurves)
{
    curvetest::CurveRandom random(1234);
    for (int i = 0; i < 300; ++i) {
        const QVector<double> v = random.straight();
        const double length = zgCurve::getLength(v, 0.0, 1.0);
        if (length < 1e-6)
            continue;
        for (double fraction : { 0.001, 0.1, 0.37, 0.5, 0.81, 0.999 }) {
            const double offset = fraction * length;
            const double t = zgCurve::getTimeAt(v, offset, -100.0);
            ASSERT_GE(t, 0.0) << i;
            ASSERT_LE(t, 1.0) << i;
            // Arc length on a straight curve is the distance along the chord.
            ASSERT_NEAR(distance(zgCurve::getPoint(v, 0.0), zgCurve::getPoint(v, t)), offset,
                        1e-9 * length) << i << " " << fraction;
            const double back = zgCurve::getTimeAt(v, -offset, -100.0);
            ASSERT_NEAR(distance(zgCurve::getPoint(v, back), zgCurve::getPoint(v, 1.0)), offset,
                        1e-9 * length) << i << " " << fraction;
        }
        ASSERT_EQ(zgCurve::getTimeAt(v, length * 1.001, 0.0), -100.0) << i;
        ASSERT_EQ(zgCurve::getTimeAt(v, -length * 1.001, 1.0), -100.0) << i;
    }
}

TEST(CurveGetTimeAt, RoundTripsOnGentleCurves)
{
    // The search's running integral takes ceil(32 |step|) points per Newton
    // step, 2 for the short steps near the end, so the offset it reaches is
    // that of low-order quadrature over the stretches walked: within 1e-6 of
    // the curve's length on gentle curves (3.2e-7 the worst seen over 1000).
    // The first guess, start + offset / rangeLength, is a proportion of the
    // range only when start is an end; from a start inside the curve it can
    // overshoot the range, and the walk then leaves [0, 1] (its error grows
    // with that), so the inner starts here keep the guess inside.
    curvetest::CurveRandom random(5678);
    for (int i = 0; i < 300; ++i) {
        const QVector<double> v = gentleCurve(random);
        const double length = zgCurve::getLength(v, 0.0, 1.0);
        const double tolerance = 1e-6 * length;
        const double start = random.uniform(0.0, 1.0);
        const double ahead = zgCurve::getLength(v, start, 1.0);
        const double behind = zgCurve::getLength(v, 0.0, start);
        for (double fraction : { 0.001, 0.25, 0.5, 0.9, 0.999 }) {
            const double offset = fraction * length;
            const double t = zgCurve::getTimeAt(v, offset, -100.0);
            ASSERT_GE(t, 0.0) << i;
            ASSERT_LE(t, 1.0) << i;
            ASSERT_NEAR(curvetest::referencePartLength(v, 0.0, t), offset, tolerance) << i;
            const double back = zgCurve::getTimeAt(v, -offset, -100.0);
            ASSERT_GE(back, 0.0) << i;
            ASSERT_LE(back, 1.0) << i;
            ASSERT_NEAR(curvetest::referencePartLength(v, back, 1.0), offset, tolerance) << i;
            if (start + fraction <= 1.0) {
                const double inner = zgCurve::getTimeAt(v, fraction * ahead, start);
                ASSERT_GE(inner, start) << i;
                ASSERT_NEAR(curvetest::referencePartLength(v, start, inner), fraction * ahead,
                            tolerance) << i;
            }
            if (start - fraction >= 0.0) {
                const double inner = zgCurve::getTimeAt(v, -fraction * behind, start);
                ASSERT_LE(inner, start) << i;
                ASSERT_NEAR(curvetest::referencePartLength(v, inner, start), fraction * behind,
                            tolerance) << i;
            }
        }
        ASSERT_EQ(zgCurve::getTimeAt(v, ahead + 1e-9, start), -100.0) << i;
        ASSERT_EQ(zgCurve::getTimeAt(v, -behind - 1e-9, start), -100.0) << i;
        ASSERT_EQ(zgCurve::getTimeAt(v, length * 1.5, -100.0), -100.0) << i;
        ASSERT_EQ(zgCurve::getTimeAt(v, -length * 1.5, -100.0), -100.0) << i;
    }
}

TEST(CurveGetTimeAt, FindsATimeOnAnyCurve)
{
    // Arbitrary cubics, whose speed may come close to zero: low-order
    // quadrature over the walked stretches is good to only about 0.6% of the
    // length here (the worst seen over 1000 curves), so 2% is allowed.
    curvetest::CurveRandom random(91011);
    for (int i = 0; i < 150; ++i) {
        const QVector<double> v = random.curved();
        const double length = zgCurve::getLength(v, 0.0, 1.0);
        for (double fraction : { 0.2, 0.5, 0.8 }) {
            const double t = zgCurve::getTimeAt(v, fraction * length, 0.0);
            ASSERT_GE(t, 0.0) << i;
            ASSERT_LE(t, 1.0) << i;
            ASSERT_NEAR(curvetest::referencePartLength(v, 0.0, t), fraction * length,
                        2e-2 * length) << i << " " << fraction;
            const double back = zgCurve::getTimeAt(v, -fraction * length, 1.0);
            ASSERT_GE(back, 0.0) << i;
            ASSERT_LE(back, 1.0) << i;
            ASSERT_NEAR(curvetest::referencePartLength(v, back, 1.0), fraction * length,
                        2e-2 * length) << i << " " << fraction;
        }
        ASSERT_EQ(zgCurve::getTimeAt(v, length + 1e-6, 0.0), -100.0) << i;
        ASSERT_EQ(zgCurve::getTimeAt(v, -length - 1e-6, 1.0), -100.0) << i;
    }
}

// --- getTimeOf ---------------------------------------------------------------

TEST(CurveGetTimeOf, EndPointsGiveZeroAndOne)
{
    EXPECT_EQ(zgCurve::getTimeOf(kCurve, zgPoint(0.1, 0.2)), 0.0);
    EXPECT_EQ(zgCurve::getTimeOf(kCurve, zgPoint(100.3, 40.1)), 1.0);
}

TEST(CurveGetTimeOf, WithinOneEm12OfAnEndIsThatEnd)
{
    const QVector<double> v = values(0, 0, 10, 0, 20, 10, 30, 10);
    // 5e-13 along x would be found by the solver at t ~ 1.7e-14; the end
    // test comes first.
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(5e-13, 0)), 0.0);
    const double beyond = zgCurve::getTimeOf(v, zgPoint(2e-12, 0));
    EXPECT_GT(beyond, 0.0);
    EXPECT_NEAR(beyond, 2e-12 / 30.0, 1e-15);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(30 - 5e-13, 10)), 1.0);
    EXPECT_LT(zgCurve::getTimeOf(v, zgPoint(30 - 2e-12, 10)), 1.0);
}

TEST(CurveGetTimeOf, PointOneEm07FromTheStart)
{
    const QVector<double> v = values(0, 0, 10, 0, 20, 10, 30, 10);
    // On the curve, 1e-07 along it (speed 30 at the start): the solver finds
    // the root near 0.
    const double t = 1e-07 / 30.0;
    const double found = zgCurve::getTimeOf(v, zgCurve::getPoint(v, t));
    EXPECT_GT(found, 0.0);
    EXPECT_NEAR(found, t, 1e-12);
    // Off the curve, before the start (below all x and y values): no root,
    // and 0.0 from the end-point test.
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(-7e-08, -7e-08)), 0.0);
    // The same beyond 2e-07 (distance 2.1e-07): no time at all.
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(-1.5e-07, -1.5e-07)), -100.0);
    // And at the end.
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(30 + 7e-08, 10 + 7e-08)), 1.0);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(30 + 1.5e-07, 10 + 1.5e-07)), -100.0);
}

TEST(CurveGetTimeOf, PointToleranceIs2em07Inclusive)
{
    // x(t) = 3t exactly, y = 0: the root for x = 1.5 is exactly 0.5.
    const QVector<double> v = values(0, 0, 1, 0, 2, 0, 3, 0);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(1.5, 1.9e-07)), 0.5);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(1.5, 2e-07)), 0.5);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(1.5, 2.1e-07)), -100.0);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(1.5, -2.1e-07)), -100.0);
}

TEST(CurveGetTimeOf, SolvesYWhenXSolvesNothing)
{
    // A vertical line: every x is the same, so the x equation is degenerate.
    const QVector<double> v = values(5, 0, 5, 1, 5, 2, 5, 3);
    EXPECT_NEAR(zgCurve::getTimeOf(v, zgPoint(5, 1.5)), 0.5, 1e-15);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(5.001, 1.5)), -100.0);
}

TEST(CurveGetTimeOf, SelfCrossingGivesTheFirstRootFoundOnX)
{
    // x = 5 + 100 s^3 - 15 s and y = 7.5 - 30 s^2 with s = t - 0.5: the curve
    // crosses itself at s = +-sqrt(0.15).
    const QVector<double> loop = values(0, 0, 20, 10, -10, 10, 10, 0);
    const double t1 = 0.5 - std::sqrt(0.15), t2 = 0.5 + std::sqrt(0.15);
    const zgPoint crossing = zgCurve::getPoint(loop, t1);
    ASSERT_NEAR(distance(crossing, zgCurve::getPoint(loop, t2)), 0.0, 1e-12);

    auto firstClose = [&](int coord) {
        QVector<double> roots;
        const int count = zgCurve::solveCubic(loop, coord, coord == 0 ? crossing.x : crossing.y,
                                              roots, 0.0, 1.0);
        for (int i = 0; i < count; ++i)
            if (distance(crossing, zgCurve::getPoint(loop, roots[i])) <= 2e-07)
                return roots[i];
        return -100.0;
    };
    const double onX = firstClose(0);
    ASSERT_NE(onX, -100.0);
    const double found = zgCurve::getTimeOf(loop, crossing);
    EXPECT_EQ(found, onX);
    EXPECT_TRUE(std::fabs(found - t1) < 1e-9 || std::fabs(found - t2) < 1e-9) << found;
}

TEST(CurveGetTimeOf, RoundTripsOnRandomCurves)
{
    curvetest::CurveRandom random(2468);
    int found = 0;
    for (int i = 0; i < 2000; ++i) {
        const bool straight = i % 4 == 0;
        const QVector<double> v = straight ? random.straight() : random.curved();
        const double t = random.uniform(0.0, 1.0);
        const zgPoint p = zgCurve::getPoint(v, t);
        const double r = zgCurve::getTimeOf(v, p);
        ASSERT_NE(r, -100.0) << i << " t " << t;
        ASSERT_GE(r, 0.0) << i;
        ASSERT_LE(r, 1.0) << i;
        // The time found gives the point back within 2e-07, whichever branch
        // of a self-crossing it lies on.
        ASSERT_LE(distance(zgCurve::getPoint(v, r), p), 2e-07) << i;
        if (std::fabs(r - t) < 1e-6)
            ++found;
    }
    // Almost always the very time (self-crossings aside).
    EXPECT_GT(found, 1950);
}

TEST(CurveGetTimeOf, PointsOffTheCurveGiveMinus100)
{
    curvetest::CurveRandom random(13579);
    int checked = 0;
    for (int i = 0; i < 300; ++i) {
        const bool straight = i % 4 == 0;
        const QVector<double> v = straight ? random.straight() : random.curved();
        const double t = random.uniform(0.0, 1.0);
        const zgPoint normal = zgCurve::getNormal(v, t);
        const double offset = i % 2 ? 1e-3 : 1e-6;
        const zgPoint on = zgCurve::getPoint(v, t);
        const zgPoint off(on.x + offset * normal.x, on.y + offset * normal.y);
        // Only where the curve does not pass near the point elsewhere.
        if (curvetest::referenceDistance(v, off) < 0.5 * offset)
            continue;
        ++checked;
        ASSERT_EQ(zgCurve::getTimeOf(v, off), -100.0) << i;
    }
    EXPECT_GT(checked, 250);
}

// --- getNearestTime ----------------------------------------------------------

TEST(CurveGetNearestTime, ZeroLengthStraightCurveGivesZero)
{
    EXPECT_EQ(zgCurve::getNearestTime(values(3, 4, 3, 4, 3, 4, 3, 4), zgPoint(10, 10)), 0.0);
}

TEST(CurveGetNearestTime, StraightCurveClampsToItsEnds)
{
    const QVector<double> v = values(0, 0, 0, 0, 1, 0, 1, 0);
    EXPECT_EQ(zgCurve::getNearestTime(v, zgPoint(2, 3)), 1.0);
    EXPECT_EQ(zgCurve::getNearestTime(v, zgPoint(-1, 3)), 0.0);
}

TEST(CurveGetNearestTime, ChordProportionBoundsAre1em12)
{
    const QVector<double> v = values(0, 0, 0, 0, 1, 0, 1, 0);
    // u = 5e-13: the start.
    EXPECT_EQ(zgCurve::getNearestTime(v, zgPoint(5e-13, 5)), 0.0);
    // u = 2e-12: the time of (2e-12, 0), where x = 3t^2 - 2t^3.
    const double near0 = zgCurve::getNearestTime(v, zgPoint(2e-12, 5));
    EXPECT_GT(near0, 0.0);
    EXPECT_NEAR(near0, std::sqrt(2e-12 / 3.0), 1e-9);
    // u above 0.999999999999: the end.
    EXPECT_EQ(zgCurve::getNearestTime(v, zgPoint(1.0 - 5e-13, 5)), 1.0);
    const double near1 = zgCurve::getNearestTime(v, zgPoint(0.99999999999, 5));
    EXPECT_LT(near1, 1.0);
    EXPECT_NEAR(near1, 1.0 - std::sqrt(1e-11 / 3.0), 1e-9);
}

TEST(CurveGetNearestTime, StraightCurveWithHandlesFindsTheTimeOfTheProjection)
{
    const QVector<double> v = values(0, 0, 20, 0, 25, 0, 30, 0);
    ASSERT_TRUE(zgCurve::isStraight(v));
    const double t = zgCurve::getNearestTime(v, zgPoint(15, 7));
    EXPECT_NEAR(zgCurve::getPoint(v, t).x, 15.0, 2e-07);
    EXPECT_GT(std::fabs(t - 0.5), 0.05);
}

TEST(CurveGetNearestTime, FirstOfEqualSamplesStays)
{
    // A symmetric arch; the point is as far from both ends, which are the
    // nearest points: the first sample, t = 0, stays.
    const QVector<double> arch = values(0, 0, 0, 10, 10, 10, 10, 0);
    EXPECT_EQ(zgCurve::getNearestTime(arch, zgPoint(5, -100)), 0.0);
}

TEST(CurveGetNearestTime, MatchesTheReferenceDistance)
{
    curvetest::CurveRandom random(97531);
    for (int i = 0; i < 100; ++i) {
        const QVector<double> v = random.curved();
        const zgPoint p(random.uniform(-120, 120), random.uniform(-120, 120));
        const double t = zgCurve::getNearestTime(v, p);
        ASSERT_GE(t, 0.0);
        ASSERT_LE(t, 1.0);
        // The search ends with a time step of 4e-07; the distance, flat at
        // the minimum, comes to within 1e-6 of the reference.
        const double reference = curvetest::referenceDistance(v, p);
        ASSERT_NEAR(distance(zgCurve::getPoint(v, t), p), reference, 1e-6) << i;
    }
}

TEST(CurveGetNearestTime, NeverWorseThanTheBestOf101Samples)
{
    curvetest::CurveRandom random(112358);
    for (int i = 0; i < 3000; ++i) {
        const bool straight = i % 10 == 0;
        const QVector<double> v = straight ? random.straight() : random.curved();
        const zgPoint p(random.uniform(-150, 150), random.uniform(-150, 150));
        auto squared = [&](double t) {
            const zgPoint q = zgCurve::getPoint(v, t);
            return (q.x - p.x) * (q.x - p.x) + (q.y - p.y) * (q.y - p.y);
        };
        double best = qInf();
        for (int k = 0; k <= 100; ++k)
            best = std::min(best, squared(k / 100.0));
        const double t = zgCurve::getNearestTime(v, p);
        ASSERT_NE(t, -100.0) << i;
        if (straight) {
            // Projection, then the time of the projected point within 2e-07.
            ASSERT_LE(std::sqrt(squared(t)), std::sqrt(best) + 2e-07) << i;
        } else {
            ASSERT_LE(squared(t), best) << i;
        }
    }
}

// --- bad input ---------------------------------------------------------------

TEST(CurveSearches, NaNInputEndsWithoutAResult)
{
    const QVector<double> nanValues(8, qQNaN());
    EXPECT_TRUE(std::isnan(zgCurve::getLength(nanValues, 0.0, 1.0)));
    EXPECT_EQ(zgCurve::getTimeOf(nanValues, zgPoint(1, 1)), -100.0);
    EXPECT_EQ(zgCurve::getTimeOf(kCurve, zgPoint(qQNaN(), qQNaN())), -100.0);
    // Nothing is ever nearer than the first sample: the search stays at 0.
    EXPECT_EQ(zgCurve::getNearestTime(nanValues, zgPoint(1, 1)), 0.0);
    EXPECT_EQ(zgCurve::getNearestTime(kCurve, zgPoint(qQNaN(), 0)), 0.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, qInf(), 0.0), -100.0);
    // A NaN offset (or start) finds no time: -100.0, never a NaN time.
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, qQNaN(), 0.0), -100.0);
    EXPECT_EQ(zgCurve::getTimeAt(kCurve, 10.0, qQNaN()), -100.0);
    EXPECT_EQ(zgCurve::getTimeOf(QVector<double>(3, 0.0), zgPoint(1, 1)), -100.0);
}
