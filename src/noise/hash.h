// Integer hash and safe truncation shared by the noise functions.
#ifndef ZGRAPHICS_NOISE_HASH_H
#define ZGRAPHICS_NOISE_HASH_H

#include <QtCore/qglobal.h>

#include <climits>

namespace zgNoiseDetail {

// The hash before scaling: n ^= n << 13, then
// ((n * n * 15731 + 789221) * n + 0xD208DD0D) & 0x7FFFFFFF, all in 32-bit
// wrap-around arithmetic (unsigned, so that overflow is defined).
inline quint32 hashBits(quint32 n)
{
    n ^= n << 13;
    return ((n * n * 15731u + 789221u) * n + 0xD208DD0Du) & 0x7FFFFFFFu;
}

// n as a 32-bit pattern, so that sums wrap instead of overflowing.
inline quint32 bitsOf(int n)
{
    return static_cast<quint32>(n);
}

// a + b with 32-bit wrap-around.
inline int wrapAdd(int a, int b)
{
    return static_cast<int>(bitsOf(a) + bitsOf(b));
}

// v truncated towards zero. NaN and values whose truncation does not fit an
// int give INT_MIN, the value the x86 conversion instruction produces, instead
// of undefined behaviour.
inline int truncToInt(double v)
{
    const bool fits = v > -2147483649.0 && v < 2147483648.0;
    return fits ? static_cast<int>(v) : INT_MIN;
}

} // namespace zgNoiseDetail

#endif // ZGRAPHICS_NOISE_HASH_H
