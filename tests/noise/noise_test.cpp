// Noise in single precision and the noise curve drawn into images.
#include "noise/noise_hash_reference.h"

#include <zgraphics/primitives.h>

#include <gtest/gtest.h>

#include <QtGui/QImage>

#include <climits>
#include <cstdint>
#include <cmath>
#include <cstring>
#include <limits>

using noisetest::referenceHashBits;
using noisetest::referenceNoiseDouble;
using noisetest::referenceNoiseFloat;

namespace {

float expectedCosineBlend(float a, float b, float t)
{
    const float f = (1.0f - cosf(t * 3.1415927f)) * 0.5f;
    return a * (1.0f - f) + b * f;
}

// The smoothed 2D value from the hashes at the given truncated coordinates.
double expectedSmooth2D(int left, int midX, int right, int up, int midY, int down)
{
    const double edges = double(Noise::intNoise_2D(left, midY)) + Noise::intNoise_2D(right, midY)
            + Noise::intNoise_2D(midX, up) + Noise::intNoise_2D(midX, down);
    const double corners = double(Noise::intNoise_2D(left, up)) + Noise::intNoise_2D(right, up)
            + Noise::intNoise_2D(left, down) + Noise::intNoise_2D(right, down);
    return edges / 8.0 + corners / 16.0 + Noise::intNoise_2D(midX, midY) / 4.0;
}

// The row offset of the noise curve in column x, as the drawing defines it.
int curveRow(int x)
{
    const float v = static_cast<float>(x * 0.05);
    return static_cast<int>(std::floor(static_cast<float>(Noise::perlinNoise_1D(v) * 5.0)));
}

QImage filledImage(int width, int height, QImage::Format format, QRgb colour)
{
    QImage image(width, height, format);
    image.fill(colour);
    return image;
}

// Checks every pixel of result against original: the curve pixels (rows
// curveRow(x) + 200 and + 201, columns from 1 on) have their first three
// bytes zeroed and the fourth kept; all others are unchanged.
void expectCurveDrawn(const QImage &original, const QImage &result)
{
    ASSERT_EQ(result.size(), original.size());
    ASSERT_EQ(result.format(), original.format());
    int blackened = 0;
    for (int x = 0; x < original.width(); ++x) {
        const int top = x >= 1 ? curveRow(x) + 200 : -1;
        for (int y = 0; y < original.height(); ++y) {
            const uchar *before = original.constScanLine(y) + 4 * x;
            const uchar *after = result.constScanLine(y) + 4 * x;
            const bool onCurve = x >= 1 && (y == top || y == top + 1);
            if (onCurve) {
                ++blackened;
                EXPECT_EQ(after[0], 0) << x << "," << y;
                EXPECT_EQ(after[1], 0) << x << "," << y;
                EXPECT_EQ(after[2], 0) << x << "," << y;
                EXPECT_EQ(after[3], before[3]) << x << "," << y;
            } else {
                EXPECT_EQ(std::memcmp(before, after, 4), 0) << x << "," << y;
            }
        }
    }
    int expectedCount = 0;
    for (int x = 1; x < original.width(); ++x) {
        const int top = curveRow(x) + 200;
        expectedCount += (top >= 0 && top < original.height()) ? 1 : 0;
        expectedCount += (top + 1 >= 0 && top + 1 < original.height()) ? 1 : 0;
    }
    EXPECT_EQ(blackened, expectedCount);
}

} // namespace

TEST(Noise, HashFactorIsTwoToMinus30InSinglePrecision)
{
    EXPECT_EQ(9.313226e-10f, std::ldexp(1.0f, -30));
}

TEST(Noise, IntNoiseOfZero)
{
    const float expected = 1.0f - static_cast<float>(0x5208DD0D) * std::ldexp(1.0f, -30);
    EXPECT_EQ(Noise::intNoise_1D(0), expected);
    EXPECT_NEAR(Noise::intNoise_1D(0), 1.0 - 0x5208DD0D * std::ldexp(1.0, -30), 6e-8);
}

TEST(Noise, IntNoiseMatchesWrappedHashInSinglePrecision)
{
    const int values[] = {0, 1, -1, 3, 58, -987654, 2024, INT_MAX, INT_MIN};
    for (int n : values)
        EXPECT_EQ(Noise::intNoise_1D(n), referenceNoiseFloat(n)) << "n = " << n;
}

TEST(Noise, FloatAndDoubleFormsDifferByRounding)
{
    // 0x5208DD0D is odd and needs 31 bits: the float form cannot equal the
    // double one at 0, but stays within a float's rounding of it.
    EXPECT_NE(static_cast<double>(Noise::intNoise_1D(0)), zgNumeric::intNoise_1D(0));
    for (int n = -500; n <= 500; ++n)
        ASSERT_NEAR(Noise::intNoise_1D(n), zgNumeric::intNoise_1D(n), 1.2e-7) << n;
    EXPECT_NE(static_cast<double>(Noise::perlinNoise_1D(0.37f)), zgNumeric::perlinNoise_1D(0.37f));
    EXPECT_NEAR(Noise::perlinNoise_1D(0.37f), zgNumeric::perlinNoise_1D(0.37f), 1e-6);
}

TEST(Noise, IntNoise2DHashesXPlus57Y)
{
    EXPECT_EQ(Noise::intNoise_2D(0, 0), Noise::intNoise_1D(0));
    EXPECT_EQ(Noise::intNoise_2D(3, 2), referenceNoiseFloat(3 + 57 * 2));
    EXPECT_EQ(Noise::intNoise_2D(-5, 7), referenceNoiseFloat(-5 + 57 * 7));
    EXPECT_EQ(Noise::intNoise_2D(57, 0), Noise::intNoise_2D(0, 1));
    // Wrap-around of x + 57 y.
    const std::int64_t wrapped = static_cast<std::int64_t>(INT_MAX) + 57 * 100;
    EXPECT_EQ(Noise::intNoise_2D(INT_MAX, 100), referenceNoiseFloat(wrapped));
    EXPECT_EQ(Noise::intNoise_2D(INT_MIN, INT_MIN),
              referenceNoiseFloat(static_cast<std::int64_t>(INT_MIN) * 58));
}

TEST(Noise, SmoothNoise1DTruncates)
{
    EXPECT_EQ(Noise::smoothNoise_1D(6.99f), Noise::intNoise_1D(6));
    EXPECT_EQ(Noise::smoothNoise_1D(-6.99f), Noise::intNoise_1D(-6));
    EXPECT_NE(Noise::smoothNoise_1D(-6.99f), Noise::intNoise_1D(-7));
    EXPECT_EQ(Noise::smoothNoise_1D(std::numeric_limits<float>::quiet_NaN()),
              Noise::intNoise_1D(INT_MIN));
    EXPECT_EQ(Noise::smoothNoise_1D(std::numeric_limits<float>::infinity()),
              Noise::intNoise_1D(INT_MIN));
    EXPECT_EQ(Noise::smoothNoise_1D(3e9f), Noise::intNoise_1D(INT_MIN));
}

TEST(Noise, SmoothNoise2DWeights)
{
    // x = 3.5, y = -2.25: columns trunc(2.5) = 2, 3, trunc(4.5) = 4; rows
    // trunc(-3.25) = -3, -2, trunc(-1.25) = -1.
    EXPECT_NEAR(Noise::smoothNoise_2D(3.5f, -2.25f), expectedSmooth2D(2, 3, 4, -3, -2, -1), 1e-6);
    // The weights sum to 1: equal hashes would give that hash back; here the
    // centre alone contributes a quarter.
    const double centreOnly = Noise::intNoise_2D(3, -2) * 0.25;
    EXPECT_GT(std::abs(Noise::smoothNoise_2D(3.5f, -2.25f) - centreOnly), 0.0);
}

TEST(Noise, SmoothNoise2DOffsetsBeforeTruncation)
{
    // x = 0.5: x - 1 = -0.5 truncates to 0, the centre column, not -1.
    const double offsetFirst = expectedSmooth2D(0, 0, 1, 4, 5, 6);
    const double truncateFirst = expectedSmooth2D(-1, 0, 1, 4, 5, 6);
    const float value = Noise::smoothNoise_2D(0.5f, 5.0f);
    EXPECT_NEAR(value, offsetFirst, 1e-6);
    EXPECT_GT(std::abs(value - truncateFirst), 1e-3);
}

TEST(Noise, CosineInterpolate2DIsOneDimensionalBlend)
{
    EXPECT_EQ(Noise::cosineInterpolate_2D(2.0f, 6.0f, 0.0f), 2.0f);
    EXPECT_NEAR(Noise::cosineInterpolate_2D(2.0f, 6.0f, 1.0f), 6.0f, 1e-6);
    EXPECT_FLOAT_EQ(Noise::cosineInterpolate_2D(2.0f, 6.0f, 0.3f), expectedCosineBlend(2.0f, 6.0f, 0.3f));
    // f(0.5) is 1/2 up to float rounding: the midpoint.
    EXPECT_NEAR(Noise::cosineInterpolate_2D(2.0f, 6.0f, 0.5f), 4.0f, 1e-6);
    EXPECT_NEAR(Noise::cosineInterpolate_2D(2.0f, 6.0f, 0.3f),
                zgNumeric::cosineInterpolate_1D(2.0, 6.0, 0.3), 2e-6);
}

TEST(Noise, CubicInterpolateFloat)
{
    EXPECT_FLOAT_EQ(Noise::cubicInterpolate_1D(1, 2, 4, 8, 0.0f), 2.0f);
    EXPECT_FLOAT_EQ(Noise::cubicInterpolate_1D(1, 2, 4, 8, 1.0f), 4.0f);
    EXPECT_FLOAT_EQ(Noise::cubicInterpolate_1D(1, 2, 4, 8, 0.5f), 2.625f);
    EXPECT_FLOAT_EQ(Noise::cubicInterpolate_1D(1, 2, 4, 8, 2.0f), 24.0f);
    // v = -1, 0, 3, 1: p = -1, (v0 - v1) - p = 0, v2 - v0 = 4; at 0.25:
    // -1/64 + 0 + 1 + 0 = 0.984375.
    EXPECT_FLOAT_EQ(Noise::cubicInterpolate_1D(-1, 0, 3, 1, 0.25f), 0.984375f);
}

TEST(Noise, InterpolateNoise1DBlendsTruncatedCells)
{
    EXPECT_EQ(Noise::interpolateNoise_1D(9.0f), Noise::intNoise_1D(9));
    EXPECT_FLOAT_EQ(Noise::interpolateNoise_1D(9.75f),
                    expectedCosineBlend(referenceNoiseFloat(9), referenceNoiseFloat(10), 0.75f));
    EXPECT_FLOAT_EQ(Noise::interpolateNoise_1D(-2.5f),
                    expectedCosineBlend(referenceNoiseFloat(-2), referenceNoiseFloat(-1), -0.5f));
}

TEST(Noise, InterpolateNoise2DGridAndFactors)
{
    // x = 2.25, y = -0.75: grid (floor(2.75), floor(-0.25)) = (2, -1),
    // fx = 0.25, fy = 0.25.
    const double a = Noise::smoothNoise_2D(2.0f, -1.0f);
    const double b = Noise::smoothNoise_2D(3.0f, -1.0f);
    const double c = Noise::smoothNoise_2D(2.0f, 0.0f);
    const double d = Noise::smoothNoise_2D(3.0f, 0.0f);
    const double fx = 0.25, fy = 0.25;
    const double expected = (a * fx + b * (1 - fx)) * (1 - fy) + (c * fx + d * (1 - fx)) * fy;
    EXPECT_NEAR(Noise::interpolateNoise_2D(2.25f, -0.75f), expected, 1e-6);
}

TEST(Noise, InterpolateNoise2DAtGridPointGivesRightNeighbour)
{
    // fx = fy = 0: (a * 0 + b * 1) * 1 + (...) * 0 = b, the point at gx + 1.
    EXPECT_EQ(Noise::interpolateNoise_2D(4.0f, 7.0f), Noise::smoothNoise_2D(5.0f, 7.0f));
}

TEST(Noise, InterpolateNoise2DRoundsHalfUp)
{
    // x = 1.5: grid floor(2.0) = 2, fx = -0.5; y = -3.5: grid -3, fy = -0.5.
    const double a = Noise::smoothNoise_2D(2.0f, -3.0f);
    const double b = Noise::smoothNoise_2D(3.0f, -3.0f);
    const double c = Noise::smoothNoise_2D(2.0f, -2.0f);
    const double d = Noise::smoothNoise_2D(3.0f, -2.0f);
    const double expected = (a * -0.5 + b * 1.5) * 1.5 + (c * -0.5 + d * 1.5) * -0.5;
    EXPECT_NEAR(Noise::interpolateNoise_2D(1.5f, -3.5f), expected, 2e-6);
}

TEST(Noise, Perlin1DIsFourOctaves)
{
    const double amplitudeBase = 0.1f;
    const float points[] = {0.0f, 0.37f, 2.5f, -3.71f, 17.05f, 1000.125f};
    for (float v : points) {
        double expected = 0.0;
        for (int i = 0; i < 4; ++i)
            expected += Noise::interpolateNoise_1D(v * std::ldexp(1.0f, i)) * std::pow(amplitudeBase, i);
        // Four float roundings of a total near 1.
        EXPECT_NEAR(Noise::perlinNoise_1D(v), expected, 5e-7) << "v = " << v;
    }
    EXPECT_NEAR(Noise::perlinNoise_1D(0.0f), Noise::intNoise_1D(0) * 1.111, 5e-7);
}

TEST(Noise, Perlin2DIsFourOctaves)
{
    const double amplitudeBase = 0.1f;
    const float points[][2] = {{0.0f, 0.0f}, {0.3f, 0.7f}, {-4.2f, 9.9f}, {123.5f, -64.25f}};
    for (const auto &p : points) {
        double expected = 0.0;
        for (int i = 0; i < 4; ++i) {
            const float frequency = std::ldexp(1.0f, i);
            expected += Noise::interpolateNoise_2D(p[0] * frequency, p[1] * frequency)
                    * std::pow(amplitudeBase, i);
        }
        EXPECT_NEAR(Noise::perlinNoise_2D(p[0], p[1]), expected, 5e-7) << p[0] << "," << p[1];
    }
}

namespace {

// Reference noise built from the hashes alone, without the library's
// intermediate functions.
double referenceHash2D(int x, int y)
{
    return referenceNoiseFloat(std::int64_t(x) + 57 * std::int64_t(y));
}

double referenceSmooth2D(float x, float y)
{
    const int left = int(x - 1), midX = int(x), right = int(x + 1);
    const int up = int(y - 1), midY = int(y), down = int(y + 1);
    const double edges = referenceHash2D(left, midY) + referenceHash2D(right, midY)
            + referenceHash2D(midX, up) + referenceHash2D(midX, down);
    const double corners = referenceHash2D(left, up) + referenceHash2D(right, up)
            + referenceHash2D(left, down) + referenceHash2D(right, down);
    return edges * 0.125 + corners * 0.0625 + referenceHash2D(midX, midY) * 0.25;
}

double referenceInterpolate2D(float x, float y)
{
    const float gx = std::floor(x + 0.5f), gy = std::floor(y + 0.5f);
    const double fx = x - gx, fy = y - gy;
    const double a = referenceSmooth2D(gx, gy), b = referenceSmooth2D(gx + 1, gy);
    const double c = referenceSmooth2D(gx, gy + 1), d = referenceSmooth2D(gx + 1, gy + 1);
    return (a * fx + b * (1 - fx)) * (1 - fy) + (c * fx + d * (1 - fx)) * fy;
}

double referenceInterpolate1D(float v)
{
    const int i = int(v);
    return expectedCosineBlend(referenceNoiseFloat(i), referenceNoiseFloat(std::int64_t(i) + 1), v - float(i));
}

double referencePerlin1D(float v)
{
    double sum = 0.0;
    for (int i = 0; i < 4; ++i)
        sum += referenceInterpolate1D(v * std::ldexp(1.0f, i)) * std::pow(double(0.1f), i);
    return sum;
}

double referencePerlin2D(float x, float y)
{
    double sum = 0.0;
    for (int i = 0; i < 4; ++i) {
        const float frequency = std::ldexp(1.0f, i);
        sum += referenceInterpolate2D(x * frequency, y * frequency) * std::pow(double(0.1f), i);
    }
    return sum;
}

} // namespace

TEST(Noise, DeterministicForEqualArguments)
{
    // Equal arguments give equal values, and those values are the ones built
    // from the hashes alone (within float rounding of the blends).
    for (float v = -3.0f; v < 3.0f; v += 0.41f) {
        SCOPED_TRACE(v);
        EXPECT_EQ(Noise::perlinNoise_1D(v), Noise::perlinNoise_1D(v));
        EXPECT_EQ(Noise::perlinNoise_2D(v, 2 * v), Noise::perlinNoise_2D(v, 2 * v));
        EXPECT_EQ(Noise::interpolateNoise_2D(v, -v), Noise::interpolateNoise_2D(v, -v));
        EXPECT_EQ(Noise::smoothNoise_2D(v, 1.5f), Noise::smoothNoise_2D(v, 1.5f));
        EXPECT_NEAR(Noise::perlinNoise_1D(v), referencePerlin1D(v), 1e-6);
        EXPECT_NEAR(Noise::perlinNoise_2D(v, 2 * v), referencePerlin2D(v, 2 * v), 1e-5);
        EXPECT_NEAR(Noise::interpolateNoise_2D(v, -v), referenceInterpolate2D(v, -v), 1e-5);
        EXPECT_NEAR(Noise::smoothNoise_2D(v, 1.5f), referenceSmooth2D(v, 1.5f), 1e-6);
    }
    const QImage image = filledImage(80, 230, QImage::Format_ARGB32, 0xFF336699u);
    const QImage drawn = Noise::perlinNoise(image);
    EXPECT_EQ(drawn, Noise::perlinNoise(image));
    // The curve's rows from the reference: floor of 5 times the noise at
    // x * 0.05, plus 200, where no value lies within rounding of an integer.
    int columns = 0;
    for (int x = 1; x < 80; ++x) {
        const double value = referencePerlin1D(float(x * 0.05)) * 5.0;
        if (std::fabs(value - std::round(value)) < 1e-4)
            continue;
        ++columns;
        const int top = int(std::floor(value)) + 200;
        for (int y = 0; y < 230; ++y) {
            const bool black = (drawn.pixel(x, y) & 0xFFFFFFu) == 0;
            EXPECT_EQ(black, y == top || y == top + 1) << x << "," << y;
        }
    }
    EXPECT_GT(columns, 70);
}

TEST(Noise, NaNArgumentsDoNotCrash)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(std::isnan(Noise::interpolateNoise_1D(nan)));
    EXPECT_TRUE(std::isnan(Noise::interpolateNoise_2D(nan, 1.0f)));
    EXPECT_TRUE(std::isnan(Noise::perlinNoise_2D(1.0f, nan)));
    EXPECT_EQ(Noise::smoothNoise_2D(nan, nan), Noise::smoothNoise_2D(-3e9f, 3e9f));
}

TEST(Noise, CurveRowsLieNear200)
{
    for (int x = 1; x < 2000; ++x) {
        const int r = curveRow(x);
        ASSERT_GE(r, -6) << x;
        ASSERT_LE(r, 5) << x;
    }
}

TEST(Noise, PerlinImageDrawsExpectedPixels)
{
    const QImage original = filledImage(120, 240, QImage::Format_ARGB32, 0x80C0A0E0u);
    const QImage result = Noise::perlinNoise(original);
    expectCurveDrawn(original, result);
    // The argument is a copy: the caller's image is unchanged.
    EXPECT_EQ(original.pixel(5, curveRow(5) + 200), 0x80C0A0E0u);
    // In ARGB32 on this byte order the pixel keeps its alpha and turns black.
    EXPECT_EQ(result.pixel(5, curveRow(5) + 200), 0x80000000u);
    EXPECT_EQ(result.pixel(5, curveRow(5) + 201), 0x80000000u);
}

TEST(Noise, PerlinImageLeavesColumnZero)
{
    const QImage original = filledImage(10, 220, QImage::Format_RGB32, 0xFF123456u);
    const QImage result = Noise::perlinNoise(original);
    for (int y = 0; y < original.height(); ++y)
        EXPECT_EQ(result.pixel(0, y), 0xFF123456u) << y;
    expectCurveDrawn(original, result);
}

TEST(Noise, PerlinImageOfWidthOneIsUnchanged)
{
    const QImage original = filledImage(1, 300, QImage::Format_ARGB32, 0xFFFFFFFFu);
    EXPECT_EQ(Noise::perlinNoise(original), original);
}

TEST(Noise, PerlinShortImageIsUntouched)
{
    const QImage original = filledImage(50, 10, QImage::Format_ARGB32, 0xFFABCDEFu);
    EXPECT_EQ(Noise::perlinNoise(original), original);
}

TEST(Noise, PerlinImageCutThroughTheCurveWritesOnlyInside)
{
    // Height 201: only rows up to 200 exist, so only columns whose curve
    // starts at or above row 200 are written, and their second row is skipped.
    const QImage original = filledImage(200, 201, QImage::Format_ARGB32, 0xFF808080u);
    const QImage result = Noise::perlinNoise(original);
    expectCurveDrawn(original, result);
    EXPECT_NE(result, original);
}

TEST(Noise, PerlinImageOtherDepthsAndNullUnchanged)
{
    const QImage rgb888 = filledImage(40, 230, QImage::Format_RGB888, 0xFF102030u);
    EXPECT_EQ(Noise::perlinNoise(rgb888), rgb888);
    const QImage indexed = filledImage(40, 230, QImage::Format_Grayscale8, 0xFF102030u);
    EXPECT_EQ(Noise::perlinNoise(indexed), indexed);
    EXPECT_TRUE(Noise::perlinNoise(QImage()).isNull());
}
