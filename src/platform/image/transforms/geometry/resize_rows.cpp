// Weighted sums of rows, with AVX2 two rows per multiply-add.
#include "src/platform/image/transforms/geometry/resize_rows.h"

#include <algorithm>
#include <cmath>

#include "src/platform/image/transforms/rows/processor.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

namespace
{

#if defined(__x86_64__)

#define WITH_AVX2 __attribute__((target("avx2")))
constexpr int kOne = 1 << 14;  // leaves room for weights up to 2

// Converts weights to fixed point so that they add up to exactly 1, followed by a 0. The largest weight
// absorbs the rounding error.
void RoundWeights(const WeighedRows& rows, std::int16_t* weights)
{
    int left = kOne;
    std::size_t greatest = 0;
    for (std::size_t k = 0; k < rows.rows; ++k) {
        weights[k] = static_cast<std::int16_t>(std::lround(rows.weights[k] * kOne));
        left -= weights[k];
        greatest = rows.weights[k] > rows.weights[greatest] ? k : greatest;
    }
    weights[greatest] = static_cast<std::int16_t>(weights[greatest] + left);
    weights[rows.rows] = 0;
}

WITH_AVX2 inline __m256i Load(const std::uint8_t* p)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
// Stores eight fixed-point sums as floats in levels.
WITH_AVX2 inline void StoreEight(float* target, __m256i sums)
{
    _mm256_storeu_ps(target, _mm256_mul_ps(_mm256_cvtepi32_ps(sums), _mm256_set1_ps(1.F / kOne)));
}

// Returns how many sums it made, a multiple of 32. Unpacking works within 128-bit lanes, so the four
// registers hold alternating groups of four values.
WITH_AVX2 std::size_t SumThirtyTwos(const WeighedRows& rows, const std::int16_t* weights, std::size_t count,
                                    float* target)
{
    const __m256i zero = _mm256_setzero_si256();
    std::size_t i = 0;
    for (; i + 32 <= count; i += 32) {
        __m256i sums[4] = {zero, zero, zero, zero};
        for (std::size_t k = 0; k < rows.rows; k += 2) {
            const std::uint8_t* one = rows.first + k * rows.stride + i;
            const __m256i pixels = Load(one);
            const __m256i other = k + 1 < rows.rows ? Load(one + rows.stride) : pixels;
            const __m256i weight_pair = _mm256_set1_epi32(static_cast<int>(
                static_cast<std::uint32_t>(static_cast<std::uint16_t>(weights[k])) |
                static_cast<std::uint32_t>(static_cast<std::uint16_t>(weights[k + 1])) << 16));
            const __m256i low = _mm256_unpacklo_epi8(pixels, other);
            const __m256i high = _mm256_unpackhi_epi8(pixels, other);
            const __m256i pairs[4] = {_mm256_unpacklo_epi8(low, zero), _mm256_unpackhi_epi8(low, zero),
                                      _mm256_unpacklo_epi8(high, zero), _mm256_unpackhi_epi8(high, zero)};
            for (std::size_t n = 0; n < 4; ++n)
                sums[n] = _mm256_add_epi32(sums[n], _mm256_madd_epi16(pairs[n], weight_pair));
        }
        StoreEight(target + i, _mm256_permute2x128_si256(sums[0], sums[1], 0x20));
        StoreEight(target + i + 8, _mm256_permute2x128_si256(sums[2], sums[3], 0x20));
        StoreEight(target + i + 16, _mm256_permute2x128_si256(sums[0], sums[1], 0x31));
        StoreEight(target + i + 24, _mm256_permute2x128_si256(sums[2], sums[3], 0x31));
    }
    return i;
}

std::size_t SumQuickly(const WeighedRows& rows, std::size_t count, std::int16_t* memory, float* sums)
{
    // With many small weights, their rounding errors would add up.
    constexpr std::size_t kMost = 256;
    if (!HasAvx2() || rows.rows > kMost || count < 32)
        return 0;
    RoundWeights(rows, memory);
    return SumThirtyTwos(rows, memory, count, sums);
}

#else

std::size_t SumQuickly(const WeighedRows&, std::size_t, std::int16_t*, float*)
{
    return 0;
}

#endif

}  // namespace

void SumRows(const WeighedRows& rows, std::size_t count, std::int16_t* memory, float* sums)
{
    const std::size_t done = SumQuickly(rows, count, memory, sums);
    std::fill(sums + done, sums + count, 0.F);
    for (std::size_t k = 0; k < rows.rows; ++k) {
        const std::uint8_t* __restrict row = rows.first + k * rows.stride;
        const float weight = rows.weights[k];
        float* __restrict to = sums;
        for (std::size_t i = done; i < count; ++i)
            to[i] += weight * static_cast<float>(row[i]);
    }
}

}  // namespace transforms
