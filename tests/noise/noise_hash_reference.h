// Reference hash for the noise tests, computed in 64-bit arithmetic and
// masked to 32 bits after every step, independent of the library's code.
#ifndef ZG_TESTS_NOISE_HASH_REFERENCE_H
#define ZG_TESTS_NOISE_HASH_REFERENCE_H

#include <cstdint>

namespace noisetest {

const std::uint64_t kMask32 = 0xFFFFFFFFull;

// The 31-bit hash of the 32-bit pattern of n.
inline std::uint64_t referenceHashBits(std::int64_t n)
{
    std::uint64_t k = static_cast<std::uint64_t>(n) & kMask32;
    k = (k ^ (k << 13)) & kMask32;
    std::uint64_t s = (k * k) & kMask32;
    s = (s * 15731ull) & kMask32;
    s = (s + 789221ull) & kMask32;
    s = (s * k) & kMask32;
    s = (s + 0xD208DD0Dull) & kMask32;
    return s & 0x7FFFFFFFull;
}

// 1 - bits * 2^-30 in double precision.
inline double referenceNoiseDouble(std::int64_t n)
{
    return 1.0 - static_cast<double>(referenceHashBits(n)) / 1073741824.0;
}

// The same in single precision: bits rounded to float, times 2^-30, from 1.
inline float referenceNoiseFloat(std::int64_t n)
{
    const float twoToMinus30 = 1.0f / 1073741824.0f;
    return 1.0f - static_cast<float>(referenceHashBits(n)) * twoToMinus30;
}

} // namespace noisetest

#endif // ZG_TESTS_NOISE_HASH_REFERENCE_H
