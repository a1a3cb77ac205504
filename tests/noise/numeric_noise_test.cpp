// One-dimensional noise of zgNumeric (double precision).
#include "noise/noise_hash_reference.h"

#include <zgraphics/primitives.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>

using noisetest::referenceHashBits;
using noisetest::referenceNoiseDouble;

namespace {

// Pi as the single-precision constant of the cosine blend, widened.
const double kFloatPi = 3.1415927f;

double expectedCosineBlend(double a, double b, double t)
{
    const double f = (1.0 - std::cos(t * kFloatPi)) * 0.5;
    return a * (1.0 - f) + b * f;
}

} // namespace

TEST(NumericNoise, IntNoiseOfZeroIsOneMinusTheOffsetConstant)
{
    EXPECT_EQ(referenceHashBits(0), 0x5208DD0Dull);
    EXPECT_EQ(zgNumeric::intNoise_1D(0), 1.0 - 0x5208DD0D * std::ldexp(1.0, -30));
}

TEST(NumericNoise, IntNoiseMatchesWrappedHashExactly)
{
    const int values[] = {1, -1, 2, 7, 57, -123456, 123456789, INT_MAX, INT_MIN, INT_MIN + 1};
    for (int n : values)
        EXPECT_EQ(zgNumeric::intNoise_1D(n), referenceNoiseDouble(n)) << "n = " << n;
}

TEST(NumericNoise, IntNoiseKnownValueOfOne)
{
    // n = 1: n ^= n << 13 gives 8193; the wrapped polynomial is worked out
    // here step by step in 64 bits.
    const std::uint64_t k = 8193;
    const std::uint64_t poly = ((((k * k) & 0xFFFFFFFFull) * 15731 + 789221) & 0xFFFFFFFFull);
    const std::uint64_t bits = ((poly * k + 0xD208DD0Dull) & 0xFFFFFFFFull) & 0x7FFFFFFFull;
    EXPECT_EQ(zgNumeric::intNoise_1D(1), 1.0 - static_cast<double>(bits) / 1073741824.0);
}

TEST(NumericNoise, IntNoiseLiesInHalfOpenUnitRange)
{
    for (int n = -2000; n <= 2000; ++n) {
        const double v = zgNumeric::intNoise_1D(n);
        ASSERT_GT(v, -1.0) << n;
        ASSERT_LE(v, 1.0) << n;
    }
}

TEST(NumericNoise, SmoothNoiseTruncatesTowardsZero)
{
    EXPECT_EQ(zgNumeric::smoothNoise_1D(2.9), zgNumeric::intNoise_1D(2));
    EXPECT_EQ(zgNumeric::smoothNoise_1D(-2.9), zgNumeric::intNoise_1D(-2));
    EXPECT_NE(zgNumeric::smoothNoise_1D(-2.9), zgNumeric::intNoise_1D(-3));
    EXPECT_EQ(zgNumeric::smoothNoise_1D(-0.5), zgNumeric::intNoise_1D(0));
    EXPECT_EQ(zgNumeric::smoothNoise_1D(5.0), zgNumeric::intNoise_1D(5));
}

TEST(NumericNoise, SmoothNoiseOfUnrepresentableValuesUsesLowestInt)
{
    const double lowest = zgNumeric::intNoise_1D(INT_MIN);
    EXPECT_EQ(zgNumeric::smoothNoise_1D(std::numeric_limits<double>::quiet_NaN()), lowest);
    EXPECT_EQ(zgNumeric::smoothNoise_1D(1e300), lowest);
    EXPECT_EQ(zgNumeric::smoothNoise_1D(-1e300), lowest);
    EXPECT_EQ(zgNumeric::smoothNoise_1D(2147483648.0), lowest);
    // The largest values that still fit are truncated normally.
    EXPECT_EQ(zgNumeric::smoothNoise_1D(2147483647.9), zgNumeric::intNoise_1D(INT_MAX));
    EXPECT_EQ(zgNumeric::smoothNoise_1D(-2147483648.9), zgNumeric::intNoise_1D(INT_MIN));
}

TEST(NumericNoise, CosineInterpolateEndsAndMiddle)
{
    EXPECT_EQ(zgNumeric::cosineInterpolate_1D(3.0, 7.0, 0.0), 3.0);
    // cos(3.1415927f) is not exactly -1: the far end is reached within 1e-14.
    EXPECT_NEAR(zgNumeric::cosineInterpolate_1D(3.0, 7.0, 1.0), 7.0, 1e-14);
    EXPECT_NEAR(zgNumeric::cosineInterpolate_1D(3.0, 7.0, 0.25),
                expectedCosineBlend(3.0, 7.0, 0.25), 1e-15);
    // f(0.25) = (1 - cos(pi/4)) / 2, about 0.1464466.
    EXPECT_NEAR(zgNumeric::cosineInterpolate_1D(0.0, 1.0, 0.25), 0.1464466, 1e-7);
    // Outside [0, 1] the formula is applied as it is.
    EXPECT_NEAR(zgNumeric::cosineInterpolate_1D(0.0, 1.0, 2.0), 0.0, 1e-13);
}

TEST(NumericNoise, CosineInterpolateUsesSinglePrecisionPi)
{
    // At t = 0.5 the float pi (larger than pi by about 8.7e-8) moves f above
    // 0.5 by sin((3.1415927f - pi) / 2) / 2, about 2.2e-8; with the double pi
    // the excess would stay below 1e-15.
    const double expected = 0.5 + 0.5 * std::sin(0.5 * (kFloatPi - std::acos(-1.0)));
    const double value = zgNumeric::cosineInterpolate_1D(0.0, 1.0, 0.5);
    EXPECT_NEAR(value, expected, 1e-15);
    EXPECT_GT(value - 0.5, 2e-8);
    EXPECT_LT(value - 0.5, 2.4e-8);
}

TEST(NumericNoise, CubicInterpolateFormula)
{
    // v = 1, 2, 4, 8: p = 5, (v0 - v1) - p = -6, v2 - v0 = 3.
    EXPECT_DOUBLE_EQ(zgNumeric::cubicInterpolate_1D(1, 2, 4, 8, 0.0), 2.0);
    EXPECT_DOUBLE_EQ(zgNumeric::cubicInterpolate_1D(1, 2, 4, 8, 1.0), 4.0);
    EXPECT_DOUBLE_EQ(zgNumeric::cubicInterpolate_1D(1, 2, 4, 8, 0.5), 2.625);
    EXPECT_DOUBLE_EQ(zgNumeric::cubicInterpolate_1D(1, 2, 4, 8, 2.0), 24.0);
    EXPECT_DOUBLE_EQ(zgNumeric::cubicInterpolate_1D(1, 2, 4, 8, -1.0), -12.0);
    // Evenly spaced values do not give the straight line: p = 2, -3, 2, so at
    // 0.3 the value is 0.054 - 0.27 + 0.6 + 1 = 1.384, not 1.3.
    EXPECT_NEAR(zgNumeric::cubicInterpolate_1D(0, 1, 2, 3, 0.3), 1.384, 1e-14);
}

TEST(NumericNoise, InterpolateNoiseAtIntegerIsTheHash)
{
    EXPECT_EQ(zgNumeric::interpolateNoise_1D(3.0), zgNumeric::intNoise_1D(3));
    EXPECT_EQ(zgNumeric::interpolateNoise_1D(-4.0), zgNumeric::intNoise_1D(-4));
}

TEST(NumericNoise, InterpolateNoiseBlendsTruncatedCellAndNext)
{
    const double a = referenceNoiseDouble(3);
    const double b = referenceNoiseDouble(4);
    EXPECT_NEAR(zgNumeric::interpolateNoise_1D(3.25), expectedCosineBlend(a, b, 0.25), 1e-15);

    // Negative values: cell -1 and 0 with the negative fraction -0.5.
    const double c = referenceNoiseDouble(-1);
    const double d = referenceNoiseDouble(0);
    EXPECT_NEAR(zgNumeric::interpolateNoise_1D(-1.5), expectedCosineBlend(c, d, -0.5), 1e-15);
}

TEST(NumericNoise, InterpolateNoiseWrapsAfterLargestInt)
{
    const double a = referenceNoiseDouble(INT_MAX);
    const double b = referenceNoiseDouble(INT_MIN);
    EXPECT_NEAR(zgNumeric::interpolateNoise_1D(2147483647.5), expectedCosineBlend(a, b, 0.5),
                1e-15);
}

TEST(NumericNoise, InterpolateNoiseOfNaNIsNaN)
{
    EXPECT_TRUE(std::isnan(zgNumeric::interpolateNoise_1D(std::numeric_limits<double>::quiet_NaN())));
}

TEST(NumericNoise, PerlinIsFourOctavesOfInterpolatedNoise)
{
    const double points[] = {0.0, 0.37, 2.5, -3.71, 17.05, 1000.125};
    for (double v : points) {
        double expected = 0.0;
        for (int i = 0; i < 4; ++i)
            expected += zgNumeric::interpolateNoise_1D(v * std::pow(2.0, i)) * std::pow(0.1, i);
        EXPECT_NEAR(zgNumeric::perlinNoise_1D(v), expected, 1e-15) << "v = " << v;
    }
}

TEST(NumericNoise, PerlinAtZeroFromHashes)
{
    // At 0 every octave samples cell 0 with fraction 0.
    const double h0 = referenceNoiseDouble(0);
    EXPECT_NEAR(zgNumeric::perlinNoise_1D(0.0), h0 * 1.111, 1e-15);
}

TEST(NumericNoise, DeterministicForEqualArguments)
{
    // Equal arguments give equal values, and those values are the ones built
    // from the hashes alone: the hash of the truncated cell, its cosine blend
    // with the next, four octaves of that.
    auto referenceInterpolate = [](double v) {
        const double cell = std::trunc(v);
        return expectedCosineBlend(referenceNoiseDouble(std::int64_t(cell)),
                                   referenceNoiseDouble(std::int64_t(cell) + 1), v - cell);
    };
    for (double v = -5.0; v < 5.0; v += 0.37) {
        SCOPED_TRACE(v);
        EXPECT_EQ(zgNumeric::perlinNoise_1D(v), zgNumeric::perlinNoise_1D(v));
        EXPECT_EQ(zgNumeric::interpolateNoise_1D(v), zgNumeric::interpolateNoise_1D(v));
        EXPECT_EQ(zgNumeric::smoothNoise_1D(v), zgNumeric::smoothNoise_1D(v));
        EXPECT_EQ(zgNumeric::smoothNoise_1D(v), referenceNoiseDouble(std::int64_t(std::trunc(v))));
        EXPECT_NEAR(zgNumeric::interpolateNoise_1D(v), referenceInterpolate(v), 1e-15);
        double perlin = 0.0;
        for (int i = 0; i < 4; ++i)
            perlin += referenceInterpolate(v * std::pow(2.0, i)) * std::pow(0.1, i);
        EXPECT_NEAR(zgNumeric::perlinNoise_1D(v), perlin, 1e-14);
    }
    EXPECT_EQ(zgNumeric::intNoise_1D(42), zgNumeric::intNoise_1D(42));
    EXPECT_EQ(zgNumeric::intNoise_1D(42), referenceNoiseDouble(42));
}
