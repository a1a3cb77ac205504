// One-dimensional value noise of zgNumeric, in double precision.
#include "zgraphics/primitives.h"

#include "noise/hash.h"

#include <cmath>

using namespace zgNoiseDetail;

double zgNumeric::intNoise_1D(int n)
{
    const double scale = 1.0 / 1073741824.0; // 2^-30
    return 1.0 - static_cast<double>(hashBits(bitsOf(n))) * scale;
}

double zgNumeric::smoothNoise_1D(double v)
{
    return intNoise_1D(truncToInt(v));
}

double zgNumeric::interpolateNoise_1D(double v)
{
    const int cell = truncToInt(v);
    const double fraction = v - cell;
    return cosineInterpolate_1D(intNoise_1D(cell), intNoise_1D(wrapAdd(cell, 1)), fraction);
}

double zgNumeric::perlinNoise_1D(double v)
{
    const int octaves = 4;
    const double amplitudeBase = 0.1;
    double total = 0.0;
    for (int octave = 0; octave < octaves; ++octave) {
        const double frequency = std::pow(2.0, octave);
        const double amplitude = std::pow(amplitudeBase, octave);
        total += interpolateNoise_1D(v * frequency) * amplitude;
    }
    return total;
}

double zgNumeric::cosineInterpolate_1D(double a, double b, double t)
{
    // Pi in single precision, widened: the blend is the same as the float one.
    const double pi = 3.1415927f;
    const double f = (1.0 - std::cos(t * pi)) * 0.5;
    return a * (1.0 - f) + b * f;
}

double zgNumeric::cubicInterpolate_1D(double v0, double v1, double v2, double v3, double t)
{
    const double p = (v3 - v2) - (v0 - v1);
    const double q = (v0 - v1) - p;
    const double r = v2 - v0;
    return p * t * t * t + q * t * t + r * t + v1;
}
