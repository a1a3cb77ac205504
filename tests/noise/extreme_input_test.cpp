// Noise under extreme input: NaN, infinite, huge (1e150) and tiny (1e-300)
// coordinates read at the lowest int where they do not fit one, so every
// value stays finite and within the octave sum's bound; images that are
// null, of another depth or too small come back unchanged.
#include <zgraphics/primitives.h>

#include "extreme_input.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>

#include <limits>

using namespace extreme;

TEST(NoiseExtremeInput, ValuesStayFiniteAndBounded)
{
    const float nanF = std::numeric_limits<float>::quiet_NaN();
    const float infF = std::numeric_limits<float>::infinity();
    // Finite coordinates beyond the int range: finite values within the
    // bound of the four octaves (1.111).
    for (float v : {1e30f, -1e30f, 1e-30f}) {
        for (float value : {Noise::perlinNoise_1D(v), Noise::perlinNoise_2D(v, 1), Noise::perlinNoise_2D(1, v),
                            Noise::smoothNoise_2D(v, v), Noise::interpolateNoise_1D(v)}) {
            EXPECT_TRUE(std::isfinite(value)) << v;
            EXPECT_LE(std::fabs(value), 1.2f) << v;
        }
    }
    for (double v : finiteExtremes()) {
        const double value = zgNumeric::perlinNoise_1D(v);
        EXPECT_TRUE(std::isfinite(value)) << v;
        EXPECT_LE(std::fabs(value), 1.2) << v;
    }
    // NaN and infinite ones: the hashes are finite, but the blend factor
    // v - trunc(v) is not a number, and so is the blend.
    for (float v : {nanF, infF, -infF}) {
        EXPECT_TRUE(std::isfinite(Noise::smoothNoise_2D(v, v))) << v;
        EXPECT_TRUE(std::isnan(Noise::perlinNoise_1D(v))) << v;
        EXPECT_TRUE(std::isnan(Noise::perlinNoise_2D(v, 1))) << v;
    }
    for (double v : nonFinite()) {
        EXPECT_TRUE(std::isfinite(zgNumeric::smoothNoise_1D(v))) << v;
        EXPECT_TRUE(std::isnan(zgNumeric::perlinNoise_1D(v))) << v;
    }
    // Out of range coordinates read as the lowest int.
    EXPECT_EQ(zgNumeric::smoothNoise_1D(kNaN), zgNumeric::intNoise_1D(std::numeric_limits<int>::min()));
    EXPECT_EQ(zgNumeric::smoothNoise_1D(kHuge), zgNumeric::intNoise_1D(std::numeric_limits<int>::min()));
    EXPECT_EQ(zgNumeric::smoothNoise_1D(kTiny), zgNumeric::intNoise_1D(0));
}

TEST(NoiseExtremeInput, ImagesThatCannotHoldTheCurveComeBackUnchanged)
{
    const QImage null;
    EXPECT_TRUE(Noise::perlinNoise(null).isNull());
    QImage gray(300, 300, QImage::Format_Grayscale8);
    gray.fill(200);
    EXPECT_EQ(Noise::perlinNoise(gray), gray);
    QImage tiny(1, 1, QImage::Format_ARGB32);
    tiny.fill(Qt::white);
    EXPECT_EQ(Noise::perlinNoise(tiny), tiny);
    QImage shallow(300, 100, QImage::Format_RGB32);
    shallow.fill(Qt::white);
    EXPECT_EQ(Noise::perlinNoise(shallow), shallow);
}
