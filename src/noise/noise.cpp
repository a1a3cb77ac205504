// Value noise of the class Noise, in single precision, and its image use.
#include "zgraphics/primitives.h"

#include "noise/hash.h"

#include <cmath>

using namespace zgNoiseDetail;

namespace {

// 2^-30 as written in single precision.
const float kHashScale = 9.313226e-10f;

} // namespace

float Noise::intNoise_1D(int n)
{
    return 1.0f - static_cast<float>(hashBits(bitsOf(n))) * kHashScale;
}

float Noise::intNoise_2D(int x, int y)
{
    const quint32 n = bitsOf(x) + 57u * bitsOf(y);
    return 1.0f - static_cast<float>(hashBits(n)) * kHashScale;
}

float Noise::smoothNoise_1D(float v)
{
    return intNoise_1D(truncToInt(v));
}

float Noise::smoothNoise_2D(float x, float y)
{
    // Each neighbour coordinate is offset before truncation, in float.
    const int left = truncToInt(x - 1.0f);
    const int midX = truncToInt(x);
    const int right = truncToInt(x + 1.0f);
    const int up = truncToInt(y - 1.0f);
    const int midY = truncToInt(y);
    const int down = truncToInt(y + 1.0f);

    const float edges = intNoise_2D(left, midY) + intNoise_2D(right, midY)
            + intNoise_2D(midX, up) + intNoise_2D(midX, down);
    const float corners = intNoise_2D(left, up) + intNoise_2D(right, up)
            + intNoise_2D(left, down) + intNoise_2D(right, down);
    const float centre = intNoise_2D(midX, midY);
    return static_cast<float>(edges * 0.125 + corners * 0.0625 + centre * 0.25);
}

float Noise::interpolateNoise_1D(float v)
{
    const int cell = truncToInt(v);
    const float fraction = v - static_cast<float>(cell);
    return cosineInterpolate_2D(intNoise_1D(cell), intNoise_1D(wrapAdd(cell, 1)), fraction);
}

float Noise::interpolateNoise_2D(float x, float y)
{
    const float gridX = static_cast<float>(std::floor(x + 0.5));
    const float gridY = static_cast<float>(std::floor(y + 0.5));
    const float fx = x - gridX;
    const float fy = y - gridY;

    const float a = smoothNoise_2D(gridX, gridY);
    const float b = smoothNoise_2D(gridX + 1.0f, gridY);
    const float c = smoothNoise_2D(gridX, gridY + 1.0f);
    const float d = smoothNoise_2D(gridX + 1.0f, gridY + 1.0f);
    const float firstRow = a * fx + b * (1.0f - fx);
    const float secondRow = c * fx + d * (1.0f - fx);
    return firstRow * (1.0f - fy) + secondRow * fy;
}

float Noise::perlinNoise_1D(float v)
{
    const int octaves = 4;
    const double amplitudeBase = 0.1f; // single-precision 0.1, widened
    float total = 0.0f;
    for (int octave = 0; octave < octaves; ++octave) {
        const double frequency = std::pow(2.0, octave);
        const double amplitude = std::pow(amplitudeBase, octave);
        const float sample = interpolateNoise_1D(static_cast<float>(v * frequency));
        total = static_cast<float>(total + sample * amplitude);
    }
    return total;
}

float Noise::perlinNoise_2D(float x, float y)
{
    const int octaves = 4;
    const double amplitudeBase = 0.1f; // single-precision 0.1, widened
    float total = 0.0f;
    for (int octave = 0; octave < octaves; ++octave) {
        const double frequency = std::pow(2.0, octave);
        const double amplitude = std::pow(amplitudeBase, octave);
        const float sample = interpolateNoise_2D(static_cast<float>(x * frequency),
                                                 static_cast<float>(y * frequency));
        total = static_cast<float>(total + sample * amplitude);
    }
    return total;
}

float Noise::cosineInterpolate_2D(float a, float b, float t)
{
    const float f = (1.0f - cosf(t * 3.1415927f)) * 0.5f;
    return a * (1.0f - f) + b * f;
}

float Noise::cubicInterpolate_1D(float v0, float v1, float v2, float v3, float t)
{
    const float p = (v3 - v2) - (v0 - v1);
    const float q = (v0 - v1) - p;
    const float r = v2 - v0;
    return p * t * t * t + q * t * t + r * t + v1;
}

namespace {

// Zeroes the first three bytes of pixel (x, row) if the row lies in the image.
void blackenPixel(QImage &image, int x, int row)
{
    if (row < 0 || row >= image.height())
        return;
    uchar *pixel = image.scanLine(row) + 4 * x;
    pixel[0] = 0;
    pixel[1] = 0;
    pixel[2] = 0;
}

} // namespace

QImage Noise::perlinNoise(QImage image)
{
    // The curve is written as 4-byte pixels; other layouts are left alone.
    if (image.isNull() || image.depth() != 32)
        return image;

    // The curve lies about 200 rows down; rows outside the image are skipped.
    const int rowOffset = 200;
    const int width = image.width();
    for (int x = 1; x < width; ++x) {
        const float v = static_cast<float>(x * 0.05);
        const double value = perlinNoise_1D(v) * 5.0;
        const int r = static_cast<int>(floorf(static_cast<float>(value)));
        blackenPixel(image, x, r + rowOffset);
        blackenPixel(image, x, r + rowOffset + 1);
    }
    return image;
}
