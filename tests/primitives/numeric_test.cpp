// zgNumeric: tolerance tests and small helpers, the split-precision
// discriminant, normalisation, the quadratic and cubic solvers, Newton root
// finding, the Gauss-Legendre tables and integration, and ellipsePoint.
#include <zgraphics/primitives.h>

#include <QtCore/QtNumeric>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

// Reaches the private helpers of zgNumeric (declared friend in the header).
// Defined here only: no other file of this test program may define it.
class zgNumericInternals
{
public:
    // The two parts of split, with the heap array freed.
    static void split(double v, double &hi, double &lo)
    {
        double *parts = zgNumeric::split(v);
        hi = parts[0];
        lo = parts[1];
        delete[] parts;
    }
    static double getNormalizationFactor(const std::vector<double> &values, int n)
    {
        return zgNumeric::getNormalizationFactor(values.data(), n);
    }
};

namespace {

const double kTight = 1e-12;

// The first count entries of roots, sorted ascending.
std::vector<double> sortedRoots(const QVector<double> &roots, int count)
{
    std::vector<double> result(roots.begin(), roots.begin() + std::max(count, 0));
    std::sort(result.begin(), result.end());
    return result;
}

// The Legendre polynomial P_n and its derivative at x, in long double.
void legendre(int n, long double x, long double &value, long double &derivative)
{
    long double previous = 1.0L;
    long double current = x;
    for (int k = 2; k <= n; ++k) {
        const long double next = ((2 * k - 1) * x * current - (k - 1) * previous) / k;
        previous = current;
        current = next;
    }
    value = current;
    derivative = n * (x * current - previous) / (x * x - 1.0L);
}

// The non-negative nodes of order n, ascending, with their weights, by Newton
// iteration on P_n in long double.
void gaussLegendreHalf(int n, std::vector<long double> &nodes, std::vector<long double> &weights)
{
    const long double pi = 3.141592653589793238462643383279502884L;
    nodes.clear();
    weights.clear();
    for (int i = n / 2; i >= 1; --i) {
        long double x = std::cos(pi * (i - 0.25L) / (n + 0.5L));
        for (int step = 0; step < 100; ++step) {
            long double value;
            long double derivative;
            legendre(n, x, value, derivative);
            const long double dx = value / derivative;
            x -= dx;
            if (std::fabs(dx) < 1e-20L)
                break;
        }
        long double value;
        long double derivative;
        legendre(n, x, value, derivative);
        nodes.push_back(x);
        weights.push_back(2.0L / ((1.0L - x * x) * derivative * derivative));
    }
    if (n % 2 == 1) {
        long double value;
        long double derivative;
        legendre(n, 0.0L, value, derivative);
        nodes.insert(nodes.begin(), 0.0L);
        weights.insert(weights.begin(), 2.0L / (derivative * derivative));
    }
}

// The error of the n-point rule on u^(2n) over [-1, 1]:
// 2^(2n+1) (n!)^4 / ((2n + 1) ((2n)!)^2).
long double gaussErrorOfDegree2n(int n)
{
    long double nFactorial = 1.0L;
    for (int k = 2; k <= n; ++k)
        nFactorial *= k;
    long double twoNFactorial = 1.0L;
    for (int k = 2; k <= 2 * n; ++k)
        twoNFactorial *= k;
    const long double numerator =
        std::pow(2.0L, 2 * n + 1) * nFactorial * nFactorial * nFactorial * nFactorial;
    return numerator / ((2 * n + 1) * twoNFactorial * twoNFactorial);
}

// sum of u^k for k = 0..degree, with u = (x - mid) / half.
double powerSum(double x, double mid, double half, int degree)
{
    const double u = (x - mid) / half;
    double sum = 0.0;
    double power = 1.0;
    for (int k = 0; k <= degree; ++k) {
        sum += power;
        power *= u;
    }
    return sum;
}

// Exact integral of powerSum over [mid - half, mid + half].
double powerSumIntegral(double half, int degree)
{
    double sum = 0.0;
    for (int k = 0; k <= degree; k += 2)
        sum += 2.0 / (k + 1);
    return half * sum;
}

} // namespace

// ---- Small helpers ----

TEST(Numeric, IsZeroBoundaryIsInclusiveAtOneTrillionth)
{
    EXPECT_TRUE(zgNumeric::isZero(0.0));
    EXPECT_TRUE(zgNumeric::isZero(1e-12));
    EXPECT_TRUE(zgNumeric::isZero(-1e-12));
    EXPECT_FALSE(zgNumeric::isZero(1.1e-12));
    EXPECT_FALSE(zgNumeric::isZero(-1.1e-12));
    EXPECT_FALSE(zgNumeric::isZero(qQNaN()));
}

TEST(Numeric, Clamp)
{
    EXPECT_EQ(zgNumeric::clamp(-1.0, 0.0, 1.0), 0.0);
    EXPECT_EQ(zgNumeric::clamp(0.5, 0.0, 1.0), 0.5);
    EXPECT_EQ(zgNumeric::clamp(1.0, 0.0, 1.0), 1.0);
    EXPECT_EQ(zgNumeric::clamp(1.5, 0.0, 1.0), 1.0);
    // NaN fails both comparisons and falls through to max.
    EXPECT_EQ(zgNumeric::clamp(qQNaN(), 0.0, 1.0), 1.0);
}

TEST(Numeric, Log2)
{
    EXPECT_NEAR(zgNumeric::log2(8.0), 3.0, kTight);
    EXPECT_NEAR(zgNumeric::log2(0.5), -1.0, kTight);
    EXPECT_NEAR(zgNumeric::log2(10.0), 3.321928094887362, kTight);
}

TEST(Numeric, Distance)
{
    EXPECT_DOUBLE_EQ(zgNumeric::distance(QPointF(1.0, 2.0), QPointF(4.0, 6.0)), 5.0);
    EXPECT_EQ(zgNumeric::distance(QPointF(1.0, 2.0), QPointF(1.0, 2.0)), 0.0);
}

TEST(Numeric, PointEquate1IsStrictOnBothAxes)
{
    const QPointF origin(10.0, 10.0);
    EXPECT_TRUE(zgNumeric::pointEquate1(origin, QPointF(10.999, 9.001)));
    EXPECT_FALSE(zgNumeric::pointEquate1(origin, QPointF(11.0, 10.0)));
    EXPECT_FALSE(zgNumeric::pointEquate1(origin, QPointF(10.0, 9.0)));
    EXPECT_FALSE(zgNumeric::pointEquate1(origin, QPointF(10.5, 11.5)));
}

// ---- split and normalisation ----

TEST(Numeric, SplitGivesExactHighAndLowParts)
{
    const double values[] = { 0.1, 1.0 / 3.0, -123456.789, 1e300, 3.0e-200 };
    for (double v : values) {
        double hi;
        double lo;
        zgNumericInternals::split(v, hi, lo);
        EXPECT_EQ(hi + lo, v) << v;
        // The high part keeps at most 26 significant bits.
        int exponent;
        const double mantissa = std::frexp(hi, &exponent);
        const double scaled = std::ldexp(mantissa, 26);
        EXPECT_EQ(scaled, std::trunc(scaled)) << v;
        EXPECT_LE(std::fabs(lo), std::ldexp(std::fabs(v), -26)) << v;
    }
}

TEST(Numeric, SplitOfKnownValue)
{
    double hi;
    double lo;
    zgNumericInternals::split(1.0 + std::ldexp(1.0, -30), hi, lo);
    EXPECT_EQ(hi, 1.0);
    EXPECT_EQ(lo, std::ldexp(1.0, -30));
}

TEST(Numeric, NormalizationFactorOutsideRangeOnly)
{
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 0.0, 0.0, 0.0 }, 3), 0.0);
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1.0, 2.0, 3.0 }, 3), 0.0);
    // Both ends of the range are inside it.
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1e-08, 0.0 }, 2), 0.0);
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1e+08, 0.0 }, 2), 0.0);
    // log2(0.99e-8) = -26.59 rounds to -27; log2(1.01e8) = 26.59 rounds to 27.
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 0.99e-08, 1e-9 }, 2),
              std::ldexp(1.0, 27));
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1.01e+08, 5.0 }, 2),
              std::ldexp(1.0, -27));
    // log2(3e9) = 31.48 rounds to 31.
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1.0, 3e9 }, 2), std::ldexp(1.0, -31));
}

TEST(Numeric, NormalizationFactorLooksAtTheFirstNValuesOnly)
{
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1e-10, 1e-11, 5.0 }, 2),
              std::pow(2.0, -qRound(std::log(1e-10) / std::log(2.0))));
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1e-10, 1e-11, 5.0 }, 3), 0.0);
    EXPECT_EQ(zgNumericInternals::getNormalizationFactor({ 1e12 }, 0), 0.0);
}

// ---- Discriminant ----

TEST(Numeric, DiscriminantWithoutCancellation)
{
    EXPECT_EQ(zgNumeric::getDiscriminant(1.0, 3.0, 2.0), 7.0);
    EXPECT_EQ(zgNumeric::getDiscriminant(2.0, 5.0, 3.0), 19.0);
    EXPECT_EQ(zgNumeric::getDiscriminant(1.0, 1.0, 2.0), -1.0);
}

TEST(Numeric, DiscriminantSplitPathRecoversLostIntegerBits)
{
    // b^2 and a*c are near 1.8e16, beyond 2^53: both products round.
    const double a = 134217771.0;
    const double b = 134217766.0;
    const double c = 134217761.0;
    const int64_t exact = int64_t(134217766) * 134217766 - int64_t(134217771) * 134217761;
    ASSERT_EQ(exact, 25);
    volatile double p = b * b;
    volatile double q = a * c;
    EXPECT_NE(p - q, 25.0); // the plain subtraction is off
    EXPECT_EQ(zgNumeric::getDiscriminant(a, b, c), 25.0);
}

TEST(Numeric, DiscriminantSplitPathRecoversFractionalBits)
{
    // b = 1 + 2^-30, a*c = 1 + 2^-29: b^2 - a*c = 2^-60 exactly, which the
    // rounded b^2 loses altogether.
    const double b = 1.0 + std::ldexp(1.0, -30);
    const double c = 1.0 + std::ldexp(1.0, -29);
    EXPECT_EQ(zgNumeric::getDiscriminant(1.0, b, c), std::ldexp(1.0, -60));
    // With c = 1 + 2^-29 + 2^-52 the exact value is 2^-60 - 2^-52.
    const double c2 = 1.0 + std::ldexp(1.0, -29) + std::ldexp(1.0, -52);
    EXPECT_EQ(zgNumeric::getDiscriminant(1.0, b, c2), std::ldexp(1.0, -60) - std::ldexp(1.0, -52));
}

// ---- solveQuadratic ----

TEST(Numeric, QuadraticDegenerateCasesLeaveRootsAlone)
{
    QVector<double> roots{ 7.0, 8.0 };
    EXPECT_EQ(zgNumeric::solveQuadratic(0.0, 0.0, 0.0, roots, 0.0, 0.0), -1);
    EXPECT_EQ(zgNumeric::solveQuadratic(0.0, 0.0, 5.0, roots, 0.0, 0.0), 0);
    // Coefficients below 1e-12 count as zero.
    EXPECT_EQ(zgNumeric::solveQuadratic(9e-13, -9e-13, 9e-13, roots, 0.0, 0.0), -1);
    ASSERT_EQ(roots.size(), 2);
    EXPECT_EQ(roots[0], 7.0);
    EXPECT_EQ(roots[1], 8.0);
}

TEST(Numeric, QuadraticLinearCase)
{
    QVector<double> roots;
    ASSERT_EQ(zgNumeric::solveQuadratic(0.0, 2.0, -3.0, roots, 0.0, 0.0), 1);
    EXPECT_EQ(roots[0], 1.5);
    // An infinite root is not kept.
    EXPECT_EQ(zgNumeric::solveQuadratic(0.0, 1.0, qInf(), roots, 0.0, 0.0), 0);
}

TEST(Numeric, QuadraticZeroDiscriminantGivesOneRoot)
{
    QVector<double> roots;
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, -2.0, 1.0, roots, 0.0, 0.0), 1);
    EXPECT_EQ(roots[0], 1.0);
    EXPECT_EQ(roots.size(), 1);
}

TEST(Numeric, QuadraticTwoRootsUnsorted)
{
    QVector<double> roots;
    // b' = 1.5 >= 0: R = b' + Q = 2, x1 = R/a = 2, x2 = c/R = 1.
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, -3.0, 2.0, roots, 0.0, 0.0), 2);
    EXPECT_EQ(roots[0], 2.0);
    EXPECT_EQ(roots[1], 1.0);
    // b' = -1.5 < 0: R = b' - Q = -2, x1 = -2, x2 = -1.
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, 3.0, 2.0, roots, 0.0, 0.0), 2);
    EXPECT_EQ(roots[0], -2.0);
    EXPECT_EQ(roots[1], -1.0);
}

TEST(Numeric, QuadraticAccurateForSmallRootBesideLargeOne)
{
    QVector<double> roots;
    // x^2 - (1e8 + 1e-8) x + 1: roots 1e8 and 1e-8.
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, -(1e8 + 1e-8), 1.0, roots, 0.0, 0.0), 2);
    const std::vector<double> sorted = sortedRoots(roots, 2);
    EXPECT_NEAR(sorted[0], 1e-8, 1e-8 * kTight);
    EXPECT_NEAR(sorted[1], 1e8, 1e8 * kTight);
}

TEST(Numeric, QuadraticNoRealRoots)
{
    QVector<double> roots;
    EXPECT_EQ(zgNumeric::solveQuadratic(1.0, 0.0, 1.0, roots, 0.0, 0.0), 0);
    EXPECT_TRUE(roots.isEmpty());
}

TEST(Numeric, QuadraticNaNCoefficientsGiveNoRoots)
{
    QVector<double> roots;
    EXPECT_EQ(zgNumeric::solveQuadratic(qQNaN(), 1.0, 1.0, roots, 0.0, 0.0), 0);
    EXPECT_EQ(zgNumeric::solveQuadratic(1.0, qQNaN(), 1.0, roots, 0.0, 0.0), 0);
    EXPECT_EQ(zgNumeric::solveQuadratic(0.0, 1.0, qQNaN(), roots, 0.0, 0.0), 0);
    EXPECT_EQ(zgNumeric::solveQuadratic(0.0, qQNaN(), 1.0, roots, 0.0, 0.0), 0);
    EXPECT_TRUE(roots.isEmpty());
}

TEST(Numeric, QuadraticMachineEpsilonOfDiscriminant)
{
    QVector<double> roots;
    // D = -1e-16 is within -1.12e-16 and taken as zero: R = 0, roots +-c/a.
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, 0.0, 1e-16, roots, 0.0, 0.0), 2);
    EXPECT_EQ(roots[0], 1e-16);
    EXPECT_EQ(roots[1], -1e-16);
    // D = -1.2e-16 is below it: no roots.
    EXPECT_EQ(zgNumeric::solveQuadratic(1.0, 0.0, 1.2e-16, roots, 0.0, 0.0), 0);
}

TEST(Numeric, QuadraticNormalisesSmallCoefficientsBelowOneHundredMillionth)
{
    QVector<double> roots;
    // 1e-8 (x^2 + 1): largest coefficient 1e-8 is in range, D = -1e-16 stays
    // unscaled and passes as zero, so +-1 come out.
    ASSERT_EQ(zgNumeric::solveQuadratic(1e-8, 0.0, 1e-8, roots, 0.0, 0.0), 2);
    EXPECT_NEAR(roots[0], 1.0, kTight);
    EXPECT_NEAR(roots[1], -1.0, kTight);
    // 0.99e-8 (x^2 + 1): scaled by 2^27, D becomes -1.76 and no roots remain.
    EXPECT_EQ(zgNumeric::solveQuadratic(0.99e-8, 0.0, 0.99e-8, roots, 0.0, 0.0), 0);
    // Same with coefficients near 1e-10.
    EXPECT_EQ(zgNumeric::solveQuadratic(1e-10, 0.0, 1e-10, roots, 0.0, 0.0), 0);
}

TEST(Numeric, QuadraticScaledRootsDoNotChange)
{
    QVector<double> roots;
    // 1e-10 (x - 1)(x - 2): D = 2.5e-21 triggers the scaling.
    ASSERT_EQ(zgNumeric::solveQuadratic(1e-10, -3e-10, 2e-10, roots, 0.0, 0.0), 2);
    const std::vector<double> sorted = sortedRoots(roots, 2);
    EXPECT_NEAR(sorted[0], 1.0, kTight);
    EXPECT_NEAR(sorted[1], 2.0, kTight);
}

TEST(Numeric, QuadraticBoundsKeepAndClampJustOutside)
{
    QVector<double> roots;
    ASSERT_EQ(zgNumeric::solveQuadratic(0.0, 1.0, -(1.0 + 5e-13), roots, 0.0, 1.0), 1);
    EXPECT_EQ(roots[0], 1.0);
    EXPECT_EQ(zgNumeric::solveQuadratic(0.0, 1.0, -(1.0 + 2e-12), roots, 0.0, 1.0), 0);
    ASSERT_EQ(zgNumeric::solveQuadratic(0.0, 1.0, 5e-13, roots, 0.0, 1.0), 1);
    EXPECT_EQ(roots[0], 0.0);
    EXPECT_EQ(zgNumeric::solveQuadratic(0.0, 1.0, 2e-12, roots, 0.0, 1.0), 0);
}

TEST(Numeric, QuadraticBoundsOnBothRoots)
{
    QVector<double> roots;
    // (x - (1 + 5e-13)) (x - 0.5) and (x - (1 + 2e-12)) (x - 0.5) on [0, 1].
    const double kept = 1.0 + 5e-13;
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, -(kept + 0.5), kept * 0.5, roots, 0.0, 1.0), 2);
    std::vector<double> sorted = sortedRoots(roots, 2);
    EXPECT_NEAR(sorted[0], 0.5, kTight);
    EXPECT_EQ(sorted[1], 1.0);
    const double dropped = 1.0 + 2e-12;
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, -(dropped + 0.5), dropped * 0.5, roots, 0.0, 1.0), 1);
    EXPECT_NEAR(roots[0], 0.5, kTight);
}

TEST(Numeric, QuadraticZeroPairMeansNoBounds)
{
    QVector<double> roots;
    // (x - 5)(x + 7): without bounds neither root is clamped.
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, 2.0, -35.0, roots, 0.0, 0.0), 2);
    const std::vector<double> sorted = sortedRoots(roots, 2);
    EXPECT_EQ(sorted[0], -7.0);
    EXPECT_EQ(sorted[1], 5.0);
    // [-10, 0] is a real interval: only -7 is inside.
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, 2.0, -35.0, roots, -10.0, 0.0), 1);
    EXPECT_EQ(roots[0], -7.0);
}

TEST(Numeric, QuadraticOverwritesExistingEntriesAndKeepsTheRest)
{
    QVector<double> roots{ 9.0, 9.0, 9.0 };
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, -3.0, 2.0, roots, 0.0, 0.0), 2);
    ASSERT_EQ(roots.size(), 3);
    EXPECT_EQ(roots[0], 2.0);
    EXPECT_EQ(roots[1], 1.0);
    EXPECT_EQ(roots[2], 9.0);
}

TEST(Numeric, QuadraticAppendsBeyondTheEnd)
{
    QVector<double> roots{ 9.0 };
    ASSERT_EQ(zgNumeric::solveQuadratic(1.0, -3.0, 2.0, roots, 0.0, 0.0), 2);
    ASSERT_EQ(roots.size(), 2);
    EXPECT_EQ(roots[0], 2.0);
    EXPECT_EQ(roots[1], 1.0);
    // Fewer roots later: the vector does not shrink.
    ASSERT_EQ(zgNumeric::solveQuadratic(0.0, 1.0, -4.0, roots, 0.0, 0.0), 1);
    ASSERT_EQ(roots.size(), 2);
    EXPECT_EQ(roots[0], 4.0);
    EXPECT_EQ(roots[1], 1.0);
}

// ---- solveCubic ----

TEST(Numeric, CubicThreeRealRoots)
{
    QVector<double> roots;
    // (x - 1)(x - 2)(x - 3)
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -6.0, 11.0, -6.0, roots, 0.0, 0.0), 3);
    const std::vector<double> sorted = sortedRoots(roots, 3);
    EXPECT_NEAR(sorted[0], 1.0, kTight);
    EXPECT_NEAR(sorted[1], 2.0, kTight);
    EXPECT_NEAR(sorted[2], 3.0, kTight);
}

TEST(Numeric, CubicWidelySpreadRoots)
{
    QVector<double> roots;
    // (x - 1000)(x - 1)(x - 0.001)
    const double b = -(1000.0 + 1.0 + 0.001);
    const double c = 1000.0 * 1.0 + 1000.0 * 0.001 + 1.0 * 0.001;
    const double d = -(1000.0 * 1.0 * 0.001);
    ASSERT_EQ(zgNumeric::solveCubic(1.0, b, c, d, roots, 0.0, 0.0), 3);
    const std::vector<double> sorted = sortedRoots(roots, 3);
    EXPECT_NEAR(sorted[0], 0.001, 0.001 * 1e-10);
    EXPECT_NEAR(sorted[1], 1.0, 1e-10);
    EXPECT_NEAR(sorted[2], 1000.0, 1000.0 * 1e-12);
}

TEST(Numeric, CubicLargeRootDeflatesFromConstant)
{
    QVector<double> roots;
    // (x - 1e6)(x - 0.001)(x - 2): with the large root found first, the
    // deflated quadratic has to be rebuilt from d to keep the small roots.
    const double b = -(1e6 + 0.001 + 2.0);
    const double c = 1e6 * 0.001 + 1e6 * 2.0 + 0.001 * 2.0;
    const double d = -(1e6 * 0.001 * 2.0);
    ASSERT_EQ(zgNumeric::solveCubic(1.0, b, c, d, roots, 0.0, 0.0), 3);
    const std::vector<double> sorted = sortedRoots(roots, 3);
    EXPECT_NEAR(sorted[0], 0.001, 0.001 * 1e-12);
    EXPECT_NEAR(sorted[1], 2.0, 2.0 * 1e-12);
    EXPECT_NEAR(sorted[2], 1e6, 1e6 * 1e-12);
}

TEST(Numeric, CubicOneRealRoot)
{
    QVector<double> roots;
    // (x - 2)(x^2 + 1)
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -2.0, 1.0, -2.0, roots, 0.0, 0.0), 1);
    EXPECT_NEAR(roots[0], 2.0, kTight);
    // x^3 + x + 1: the real root of the depressed cubic.
    ASSERT_EQ(zgNumeric::solveCubic(1.0, 0.0, 1.0, 1.0, roots, 0.0, 0.0), 1);
    EXPECT_NEAR(roots[0], -0.6823278038280193, kTight);
}

TEST(Numeric, CubicDoubleRoots)
{
    QVector<double> roots;
    // (x - 1)^2 (x - 2): the double root found once, 2 beside it.
    int count = zgNumeric::solveCubic(1.0, -4.0, 5.0, -2.0, roots, 0.0, 0.0);
    ASSERT_EQ(count, 2);
    std::vector<double> sorted = sortedRoots(roots, count);
    EXPECT_NEAR(sorted[0], 1.0, kTight);
    EXPECT_NEAR(sorted[1], 2.0, kTight);
    // (x - 1)(x - 2)^2: the double root may split into a close pair; every
    // root is near one of the true ones, to the square root of rounding.
    count = zgNumeric::solveCubic(1.0, -5.0, 8.0, -4.0, roots, 0.0, 0.0);
    ASSERT_GE(count, 2);
    ASSERT_LE(count, 3);
    sorted = sortedRoots(roots, count);
    EXPECT_NEAR(sorted[0], 1.0, kTight);
    for (int i = 1; i < count; ++i)
        EXPECT_NEAR(sorted[i], 2.0, 1e-7);
}

TEST(Numeric, CubicTripleRootTakesFirstEvaluation)
{
    QVector<double> roots;
    // (x - 1)^3: the inflection point is the root, so the first step is
    // zero and the quadratic (1, -2, 1) comes from the first evaluation.
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -3.0, 3.0, -1.0, roots, 0.0, 0.0), 1);
    EXPECT_EQ(roots[0], 1.0);
}

TEST(Numeric, CubicWithZeroLeadingCoefficientIsQuadratic)
{
    QVector<double> roots;
    // (x + 1)^2 with a = 0: one root, and the infinite x isn't added.
    ASSERT_EQ(zgNumeric::solveCubic(0.0, 1.0, 2.0, 1.0, roots, 0.0, 0.0), 1);
    EXPECT_EQ(roots[0], -1.0);
    EXPECT_EQ(roots.size(), 1);
}

TEST(Numeric, CubicWithZeroConstantAddsZeroOnce)
{
    QVector<double> roots;
    // x^3: the quadratic x^2 gives 0, and x = 0 isn't added again.
    ASSERT_EQ(zgNumeric::solveCubic(1.0, 0.0, 0.0, 0.0, roots, 0.0, 0.0), 1);
    EXPECT_EQ(roots[0], 0.0);
    // x (x - 1)(x + 1): the quadratic gives +-1, then 0 is added.
    ASSERT_EQ(zgNumeric::solveCubic(1.0, 0.0, -1.0, 0.0, roots, 0.0, 0.0), 3);
    EXPECT_EQ(roots[2], 0.0);
    const std::vector<double> sorted = sortedRoots(roots, 3);
    EXPECT_EQ(sorted[0], -1.0);
    EXPECT_EQ(sorted[2], 1.0);
}

TEST(Numeric, CubicDegenerateCases)
{
    QVector<double> roots{ 4.0 };
    EXPECT_EQ(zgNumeric::solveCubic(0.0, 0.0, 0.0, 0.0, roots, 0.0, 0.0), -1);
    EXPECT_EQ(zgNumeric::solveCubic(0.0, 0.0, 0.0, 5.0, roots, 0.0, 0.0), 0);
    EXPECT_EQ(zgNumeric::solveCubic(qQNaN(), 1.0, 1.0, 1.0, roots, 0.0, 0.0), 0);
    EXPECT_EQ(zgNumeric::solveCubic(1.0, 1.0, qQNaN(), 1.0, roots, 0.0, 0.0), 0);
    ASSERT_EQ(roots.size(), 1);
    EXPECT_EQ(roots[0], 4.0);
}

TEST(Numeric, CubicBounds)
{
    QVector<double> roots;
    // (x - 1)(x - 2)(x - 3) on [1.5, 2.5]: only 2.
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -6.0, 11.0, -6.0, roots, 1.5, 2.5), 1);
    EXPECT_NEAR(roots[0], 2.0, kTight);
    // On [3, 4]: 3 is found a few ulps low, kept and clamped to exactly 3.
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -6.0, 11.0, -6.0, roots, 3.0, 4.0), 1);
    EXPECT_EQ(roots[0], 3.0);
    EXPECT_EQ(zgNumeric::solveCubic(1.0, -6.0, 11.0, -6.0, roots, 3.5, 4.0), 0);
}

TEST(Numeric, CubicBoundsOnTheDirectRoot)
{
    QVector<double> roots;
    // x (x - 1)(x - 2): x = 0 comes from the |d| < 1e-12 branch.
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -3.0, 2.0, 0.0, roots, 5e-13, 1.0), 2);
    EXPECT_EQ(roots[0], 1.0);
    EXPECT_EQ(roots[1], 5e-13); // 0 kept and clamped
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -3.0, 2.0, 0.0, roots, 2e-12, 1.0), 1);
    EXPECT_EQ(roots[0], 1.0);
}

TEST(Numeric, CubicOverwritesExistingEntries)
{
    QVector<double> roots{ 9.0, 9.0, 9.0, 9.0 };
    ASSERT_EQ(zgNumeric::solveCubic(1.0, -6.0, 11.0, -6.0, roots, 0.0, 0.0), 3);
    ASSERT_EQ(roots.size(), 4);
    EXPECT_EQ(roots[3], 9.0);
    const std::vector<double> sorted = sortedRoots(roots, 3);
    EXPECT_NEAR(sorted[0], 1.0, kTight);
    EXPECT_NEAR(sorted[2], 3.0, kTight);
}

TEST(Numeric, CubicCoefficientsNearTenBillionthAreScaled)
{
    QVector<double> roots;
    // 1e-10 (x - 1)(x - 2)(x - 3) and 1e-13 (x - 1)(x - 2)(x - 3): unscaled,
    // the second would count as a quadratic. Scaled, both give 1, 2, 3.
    const double scales[] = { 1e-10, 1e-13 };
    for (double s : scales) {
        ASSERT_EQ(zgNumeric::solveCubic(s, -6.0 * s, 11.0 * s, -6.0 * s, roots, 0.0, 0.0), 3) << s;
        const std::vector<double> sorted = sortedRoots(roots, 3);
        EXPECT_NEAR(sorted[0], 1.0, kTight) << s;
        EXPECT_NEAR(sorted[1], 2.0, kTight) << s;
        EXPECT_NEAR(sorted[2], 3.0, kTight) << s;
    }
}

TEST(Numeric, CubicNormalisationBelowOneHundredMillionth)
{
    QVector<double> roots;
    // 1e-13 x^3 - 1e-8 x: greatest 1e-8 is in range, no scaling, a counts as
    // zero and the linear rest gives 0 alone.
    ASSERT_EQ(zgNumeric::solveCubic(1e-13, 0.0, -1e-8, 0.0, roots, 0.0, 0.0), 1);
    EXPECT_EQ(roots[0], 0.0);
    // With 0.99e-8 the scaling by 2^27 lifts a over the epsilon: three roots,
    // 0 and +-sqrt(0.99e5).
    ASSERT_EQ(zgNumeric::solveCubic(1e-13, 0.0, -0.99e-8, 0.0, roots, 0.0, 0.0), 3);
    const std::vector<double> sorted = sortedRoots(roots, 3);
    EXPECT_NEAR(sorted[0], -std::sqrt(0.99e5), 1e-9);
    EXPECT_EQ(sorted[1], 0.0);
    EXPECT_NEAR(sorted[2], std::sqrt(0.99e5), 1e-9);
}

TEST(Numeric, CubicNormalisationAboveOneHundredMillion)
{
    QVector<double> roots;
    // 1e8 (x^3 - x) + 1e-5: in range, d stays above the epsilon and the small
    // root near 1e-13 is found.
    ASSERT_EQ(zgNumeric::solveCubic(1e8, 0.0, -1e8, 1e-5, roots, 0.0, 0.0), 3);
    std::vector<double> sorted = sortedRoots(roots, 3);
    EXPECT_NEAR(sorted[0], -1.0, 1e-12);
    EXPECT_NEAR(sorted[1], 1e-13, 1e-20);
    EXPECT_NEAR(sorted[2], 1.0, 1e-12);
    // 1.01e8: scaled by 2^-27, d drops below the epsilon and the small root
    // comes out as exactly 0.
    ASSERT_EQ(zgNumeric::solveCubic(1.01e8, 0.0, -1.01e8, 1e-5, roots, 0.0, 0.0), 3);
    sorted = sortedRoots(roots, 3);
    EXPECT_NEAR(sorted[0], -1.0, 1e-12);
    EXPECT_EQ(sorted[1], 0.0);
    EXPECT_NEAR(sorted[2], 1.0, 1e-12);
}

// ---- findRoot ----

TEST(Numeric, FindRootConverges)
{
    const auto f = [](double x) { return x * x - 2.0; };
    const auto df = [](double x) { return 2.0 * x; };
    EXPECT_NEAR(zgNumeric::findRoot(f, df, 1.0, 0.0, 2.0, 50, 1e-12), std::sqrt(2.0), 1e-15);
}

TEST(Numeric, FindRootReturnsNewtonStepOnceBelowTolerance)
{
    int calls = 0;
    const auto f = [&calls](double x) {
        ++calls;
        return 2.0 * x - 1.0;
    };
    const auto df = [](double) { return 2.0; };
    // Step 0.5 below tolerance 0.6: returns x - dx = 0.5 after one pass.
    EXPECT_EQ(zgNumeric::findRoot(f, df, 0.0, -1.0, 1.0, 10, 0.6), 0.5);
    EXPECT_EQ(calls, 1);
    // Tolerance exactly 0.5: not below, a second pass is needed.
    calls = 0;
    EXPECT_EQ(zgNumeric::findRoot(f, df, 0.0, -1.0, 1.0, 10, 0.5), 0.5);
    EXPECT_EQ(calls, 2);
}

TEST(Numeric, FindRootBisectsTowardsLowerBound)
{
    // f(1.5) > 0 and the step overshoots below a = 0: midpoint of x and a.
    const auto f = [](double x) { return x - 1.0; };
    const auto badSlope = [](double) { return 0.1; };
    EXPECT_EQ(zgNumeric::findRoot(f, badSlope, 1.5, 0.0, 2.0, 1, 1e-12), 0.75);
    // The second pass bisects towards the new upper bound 1.5, not 2.
    EXPECT_EQ(zgNumeric::findRoot(f, badSlope, 1.5, 0.0, 2.0, 2, 1e-12), 1.125);
}

TEST(Numeric, FindRootBisectsTowardsUpperBound)
{
    // f(0.5) < 0 and the step overshoots above b = 2: midpoint of x and b.
    const auto f = [](double x) { return x - 1.0; };
    const auto badSlope = [](double) { return 0.1; };
    EXPECT_EQ(zgNumeric::findRoot(f, badSlope, 0.5, 0.0, 2.0, 1, 1e-12), 1.25);
    // Second pass from 1.25 (f > 0): bisects towards the new lower bound 0.5.
    EXPECT_EQ(zgNumeric::findRoot(f, badSlope, 0.5, 0.0, 2.0, 2, 1e-12), 0.875);
}

TEST(Numeric, FindRootWithoutPassesReturnsStart)
{
    int calls = 0;
    const auto f = [&calls](double x) {
        ++calls;
        return x;
    };
    const auto df = [](double) { return 1.0; };
    EXPECT_EQ(zgNumeric::findRoot(f, df, 7.5, 0.0, 1.0, 0, 1e-12), 7.5);
    EXPECT_EQ(zgNumeric::findRoot(f, df, 7.5, 0.0, 1.0, -3, 1e-12), 7.5);
    EXPECT_EQ(calls, 0);
}

TEST(Numeric, FindRootIsNotClamped)
{
    // Start at 3 outside [0, 1] with the root at 5: f(3) < 0, a becomes 3,
    // the step to 5 passes b = 1, and the midpoint 2 is returned unclamped.
    const auto f = [](double x) { return x - 5.0; };
    const auto df = [](double) { return 1.0; };
    EXPECT_EQ(zgNumeric::findRoot(f, df, 3.0, 0.0, 1.0, 1, 1e-12), 2.0);
}

// ---- Gauss-Legendre ----

TEST(Numeric, GaussLegendreTablesMatchNewtonOnLegendrePolynomials)
{
    for (int n = 2; n <= 16; ++n) {
        std::vector<long double> nodes;
        std::vector<long double> weights;
        gaussLegendreHalf(n, nodes, weights);
        const int entries = (n + 1) / 2;
        ASSERT_EQ(int(nodes.size()), entries);
        const double *tableX = zgNumeric::abscissas[n - 2];
        const double *tableW = zgNumeric::weights[n - 2];
        for (int i = 0; i < entries; ++i) {
            EXPECT_NEAR(tableX[i], double(nodes[i]), 1e-15) << "n=" << n << " i=" << i;
            EXPECT_NEAR(tableW[i], double(weights[i]), 1e-15) << "n=" << n << " i=" << i;
            if (i > 0) {
                EXPECT_GT(tableX[i], tableX[i - 1]) << "n=" << n;
            }
        }
        if (n % 2 == 1) {
            EXPECT_EQ(tableX[0], 0.0) << "n=" << n;
        }
        for (int i = entries; i < 8; ++i) {
            EXPECT_EQ(tableX[i], 0.0) << "n=" << n << " i=" << i;
            EXPECT_EQ(tableW[i], 0.0) << "n=" << n << " i=" << i;
        }
    }
}

TEST(Numeric, GaussLegendreWeightsSumToTwo)
{
    for (int n = 2; n <= 16; ++n) {
        double sum = 0.0;
        for (int i = 0; i < (n + 1) / 2; ++i)
            sum += 2.0 * zgNumeric::weights[n - 2][i];
        if (n % 2 == 1)
            sum -= zgNumeric::weights[n - 2][0]; // the middle node counts once
        EXPECT_NEAR(sum, 2.0, 1e-14) << "n=" << n;
    }
}

TEST(Numeric, IntegrateIsExactUpToDegreeTwoNMinusOne)
{
    const double mid = 0.7;
    const double half = 1.3;
    for (int n = 2; n <= 16; ++n) {
        const int degree = 2 * n - 1;
        const auto f = [=](double x) { return powerSum(x, mid, half, degree); };
        const double exact = powerSumIntegral(half, degree);
        const double value = zgNumeric::integrate(f, mid - half, mid + half, n);
        EXPECT_NEAR(value, exact, std::fabs(exact) * 1e-12) << "n=" << n;
    }
}

TEST(Numeric, IntegrateIsNotExactAtDegreeTwoN)
{
    const double mid = 0.7;
    const double half = 1.3;
    for (int n = 2; n <= 16; ++n) {
        const int degree = 2 * n;
        const auto f = [=](double x) { return powerSum(x, mid, half, degree); };
        const double exact = powerSumIntegral(half, degree);
        const double value = zgNumeric::integrate(f, mid - half, mid + half, n);
        EXPECT_GT(std::fabs(value - exact), std::fabs(exact) * 1e-12) << "n=" << n;
        // The shortfall is the rule's error term on u^(2n), scaled by half.
        const double expectedError = half * double(gaussErrorOfDegree2n(n));
        EXPECT_NEAR(exact - value, expectedError, expectedError * 1e-3) << "n=" << n;
    }
}

TEST(Numeric, IntegrateOfKnownFunctions)
{
    const auto sine = [](double x) { return std::sin(x); };
    EXPECT_NEAR(zgNumeric::integrate(sine, 0.0, M_PI, 16), 2.0, 1e-14);
    const auto exponential = [](double x) { return std::exp(x); };
    EXPECT_NEAR(zgNumeric::integrate(exponential, -1.0, 2.0, 12), std::exp(2.0) - std::exp(-1.0),
                1e-13);
    // Reversed bounds change the sign.
    EXPECT_NEAR(zgNumeric::integrate(sine, M_PI, 0.0, 16), -2.0, 1e-14);
}

TEST(Numeric, IntegrateEvaluatesMiddleThenRightBeforeLeft)
{
    std::vector<double> calls;
    const auto record = [&calls](double x) {
        calls.push_back(x);
        return 1.0;
    };
    // Order 3 on [0, 2]: B = 1, A = 1.
    EXPECT_NEAR(zgNumeric::integrate(record, 0.0, 2.0, 3), 2.0, 1e-15);
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0], 1.0);
    EXPECT_EQ(calls[1], 1.0 + zgNumeric::abscissas[1][1]);
    EXPECT_EQ(calls[2], 1.0 - zgNumeric::abscissas[1][1]);
    // Order 4: no middle node, pairs from the inside out, right first.
    calls.clear();
    zgNumeric::integrate(record, 0.0, 2.0, 4);
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[0], 1.0 + zgNumeric::abscissas[2][0]);
    EXPECT_EQ(calls[1], 1.0 - zgNumeric::abscissas[2][0]);
    EXPECT_EQ(calls[2], 1.0 + zgNumeric::abscissas[2][1]);
    EXPECT_EQ(calls[3], 1.0 - zgNumeric::abscissas[2][1]);
}

TEST(Numeric, IntegrateOutsideTheTablesUsesNearestOrder)
{
    const auto sixth = [](double x) { return x * x * x * x * x * x; };
    EXPECT_EQ(zgNumeric::integrate(sixth, 0.0, 1.0, 1), zgNumeric::integrate(sixth, 0.0, 1.0, 2));
    EXPECT_EQ(zgNumeric::integrate(sixth, 0.0, 1.0, 40), zgNumeric::integrate(sixth, 0.0, 1.0, 16));
}

// ---- ellipsePoint ----

TEST(Numeric, EllipsePointAtRightAngleIsBottomMiddle)
{
    const zgRect rect(10.0, 20.0, 100.0, 50.0);
    const zgPoint p = zgNumeric::ellipsePoint(rect, 90.0);
    EXPECT_NEAR(p.x, 60.0, kTight);
    EXPECT_NEAR(p.y, 70.0, kTight);
    const zgPoint q = zgNumeric::ellipsePoint(rect, -90.0);
    EXPECT_NEAR(q.x, 60.0, kTight);
    EXPECT_NEAR(q.y, 20.0, kTight);
}

TEST(Numeric, EllipsePointOnTheAxes)
{
    const zgRect rect(10.0, 20.0, 100.0, 50.0);
    zgPoint p = zgNumeric::ellipsePoint(rect, 0.0);
    EXPECT_NEAR(p.x, 110.0, kTight);
    EXPECT_NEAR(p.y, 45.0, kTight);
    p = zgNumeric::ellipsePoint(rect, 180.0);
    EXPECT_NEAR(p.x, 10.0, kTight);
    EXPECT_NEAR(p.y, 45.0, kTight);
    p = zgNumeric::ellipsePoint(rect, -180.0);
    EXPECT_NEAR(p.x, 10.0, kTight);
    EXPECT_NEAR(p.y, 45.0, kTight);
}

TEST(Numeric, EllipsePointAngleIsTrueInTheRectangle)
{
    const zgRect rect(10.0, 20.0, 100.0, 50.0);
    const double angles[] = { 30.0, 45.0, 60.0, -45.0, 120.0, -150.0, 170.0 };
    for (double angle : angles) {
        const zgPoint p = zgNumeric::ellipsePoint(rect, angle);
        const double dx = p.x - 60.0;
        const double dy = p.y - 45.0;
        EXPECT_NEAR(std::atan2(dy, dx) * 180.0 / M_PI, angle, 1e-10) << angle;
        // On the ellipse: (dx / 50)^2 + (dy / 25)^2 = 1.
        EXPECT_NEAR(dx * dx / 2500.0 + dy * dy / 625.0, 1.0, kTight) << angle;
    }
}

TEST(Numeric, EllipsePointNormalisesAnglesBeyondFullTurns)
{
    const zgRect rect(10.0, 20.0, 100.0, 50.0);
    const double pairs[][2] = { { 450.0, 90.0 },   { -450.0, -90.0 }, { 810.0, 90.0 },
                                { 1125.0, 45.0 },  { -1125.0, -45.0 }, { 270.0, -90.0 },
                                { -270.0, 90.0 },  { 360.0, 0.0 },    { -360.0, 0.0 },
                                { 720.0, 0.0 },    { 585.0, -135.0 } };
    for (const auto &pair : pairs) {
        const zgPoint p = zgNumeric::ellipsePoint(rect, pair[0]);
        const zgPoint q = zgNumeric::ellipsePoint(rect, pair[1]);
        EXPECT_NEAR(p.x, q.x, 1e-9) << pair[0];
        EXPECT_NEAR(p.y, q.y, 1e-9) << pair[0];
    }
}

TEST(Numeric, EllipsePointUsesMinimumHeight)
{
    const zgRect flat(0.0, 0.0, 100.0, 0.0);
    zgPoint p = zgNumeric::ellipsePoint(flat, 90.0);
    EXPECT_NEAR(p.x, 50.0, kTight);
    EXPECT_NEAR(p.y, 0.1, kTight);
    p = zgNumeric::ellipsePoint(flat, 0.0);
    EXPECT_NEAR(p.x, 100.0, kTight);
    EXPECT_NEAR(p.y, 0.05, kTight);
    p = zgNumeric::ellipsePoint(flat, -90.0);
    EXPECT_NEAR(p.y, 0.0, kTight);
    // A negative height is raised to 0.1 as well; a height of 0.1 is used as it is.
    p = zgNumeric::ellipsePoint(zgRect(0.0, 0.0, 100.0, -5.0), 90.0);
    EXPECT_NEAR(p.y, 0.1, kTight);
    p = zgNumeric::ellipsePoint(zgRect(0.0, 0.0, 100.0, 0.2), 90.0);
    EXPECT_NEAR(p.y, 0.2, kTight);
}

TEST(Numeric, EllipsePointQtFormMatches)
{
    const double angles[] = { -200.0, -30.0, 0.0, 75.0, 400.0 };
    for (double angle : angles) {
        const zgPoint expected = zgNumeric::ellipsePoint(zgRect(-5.0, 3.0, 40.0, 30.0), angle);
        const QPointF p = zgNumeric::ellipsePoint(QRectF(-5.0, 3.0, 40.0, 30.0), angle);
        EXPECT_EQ(p.x(), expected.x) << angle;
        EXPECT_EQ(p.y(), expected.y) << angle;
    }
}

namespace {

// Exact boundaries of the solvers' comparisons.
TEST(NumericBoundaries, QuadraticBoundsAreStrictAtTheMargin)
{
    QVector<double> roots;
    // A root exactly 1e-12 beyond a bound is dropped.
    EXPECT_EQ(zgNumeric::solveQuadratic(0, 1, -(1.0 + 1e-12), roots, 0, 1), 0);
    EXPECT_EQ(zgNumeric::solveQuadratic(0, 1, 1e-12, roots, 0, 1), 0);
}

TEST(NumericBoundaries, LeadingCoefficientTestIsStrict)
{
    QVector<double> roots;
    // |a| = 1e-12 is not below 1e-12: the quadratic branch runs and finds +-1.
    ASSERT_EQ(zgNumeric::solveQuadratic(1e-12, 0, -1e-12, roots, 0, 0), 2);
    EXPECT_NEAR(std::abs(roots[0]), 1.0, 1e-12);
    EXPECT_NEAR(roots[0] + roots[1], 0.0, 1e-12);
}

TEST(NumericBoundaries, DiscriminantLimitIsInclusive)
{
    QVector<double> roots;
    // D = -1.12e-16 exactly still counts as a (double) root pair.
    ASSERT_EQ(zgNumeric::solveQuadratic(1, 0, 1.12e-16, roots, 0, 0), 2);
    EXPECT_NEAR(std::abs(roots[0]), 1.12e-16, 1e-30);
}

TEST(NumericBoundaries, FindRootBisectsWhenTheStepReachesABound)
{
    const auto f = [](double x) { return x - 1.0; };
    const auto slow = [](double) { return 0.5; };
    // fx > 0 and the Newton step lands exactly on a: bisect towards a.
    EXPECT_DOUBLE_EQ(zgNumeric::findRoot(f, slow, 1.5, 0.5, 3.0, 1, 1e-12), 1.0);
    // fx < 0 and the Newton step lands exactly on b: bisect towards b.
    EXPECT_DOUBLE_EQ(zgNumeric::findRoot(f, slow, 0.5, -3.0, 1.5, 1, 1e-12), 1.0);
}

} // namespace
