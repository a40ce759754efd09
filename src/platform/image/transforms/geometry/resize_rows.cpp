// Two rows at a time are multiplied and added in one instruction where the processor has it.
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

// Weights in whole numbers whose sum is that of 1, with one of 0 behind them. What rounding left goes to the
// greatest.
void RoundWeights(const WeighedRows& objRows, std::int16_t* pWeights)
{
    int nLeft = kOne;
    std::size_t nGreatest = 0;
    for (std::size_t k = 0; k < objRows.nRows; ++k) {
        pWeights[k] = static_cast<std::int16_t>(std::lround(objRows.pWeights[k] * kOne));
        nLeft -= pWeights[k];
        nGreatest = objRows.pWeights[k] > objRows.pWeights[nGreatest] ? k : nGreatest;
    }
    pWeights[nGreatest] = static_cast<std::int16_t>(pWeights[nGreatest] + nLeft);
    pWeights[objRows.nRows] = 0;
}

WITH_AVX2 inline __m256i nLoad(const std::uint8_t* p)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
// The values of both halves' first or second 128 bits, brought to levels.
WITH_AVX2 inline void StoreEight(float* pSums, __m256i nSums)
{
    _mm256_storeu_ps(pSums, _mm256_mul_ps(_mm256_cvtepi32_ps(nSums), _mm256_set1_ps(1.F / kOne)));
}

// How many sums were made: a multiple of 32. The four registers hold every other four values, since
// interleaving works on halves of registers.
WITH_AVX2 std::size_t nSumThirtyTwos(const WeighedRows& objRows, const std::int16_t* pWeights,
                                     std::size_t nCount, float* pSums)
{
    const __m256i nZero = _mm256_setzero_si256();
    std::size_t i = 0;
    for (; i + 32 <= nCount; i += 32) {
        __m256i aSums[4] = {nZero, nZero, nZero, nZero};
        for (std::size_t k = 0; k < objRows.nRows; k += 2) {
            const std::uint8_t* pOne = objRows.pFirst + k * objRows.nStride + i;
            const __m256i nOne = nLoad(pOne);
            const __m256i nOther = k + 1 < objRows.nRows ? nLoad(pOne + objRows.nStride) : nOne;
            const __m256i nWeights = _mm256_set1_epi32(static_cast<int>(
                static_cast<std::uint32_t>(static_cast<std::uint16_t>(pWeights[k])) |
                static_cast<std::uint32_t>(static_cast<std::uint16_t>(pWeights[k + 1])) << 16));
            const __m256i nLow = _mm256_unpacklo_epi8(nOne, nOther);
            const __m256i nHigh = _mm256_unpackhi_epi8(nOne, nOther);
            const __m256i aPairs[4] = {_mm256_unpacklo_epi8(nLow, nZero), _mm256_unpackhi_epi8(nLow, nZero),
                                       _mm256_unpacklo_epi8(nHigh, nZero),
                                       _mm256_unpackhi_epi8(nHigh, nZero)};
            for (std::size_t n = 0; n < 4; ++n)
                aSums[n] = _mm256_add_epi32(aSums[n], _mm256_madd_epi16(aPairs[n], nWeights));
        }
        StoreEight(pSums + i, _mm256_permute2x128_si256(aSums[0], aSums[1], 0x20));
        StoreEight(pSums + i + 8, _mm256_permute2x128_si256(aSums[2], aSums[3], 0x20));
        StoreEight(pSums + i + 16, _mm256_permute2x128_si256(aSums[0], aSums[1], 0x31));
        StoreEight(pSums + i + 24, _mm256_permute2x128_si256(aSums[2], aSums[3], 0x31));
    }
    return i;
}

std::size_t nSumQuickly(const WeighedRows& objRows, std::size_t nCount, std::int16_t* pMemory, float* pSums)
{
    // Many small weights would add up what rounding each of them lost.
    constexpr std::size_t kMost = 256;
    if (!bHasAvx2() || objRows.nRows > kMost || nCount < 32)
        return 0;
    RoundWeights(objRows, pMemory);
    return nSumThirtyTwos(objRows, pMemory, nCount, pSums);
}

#else

std::size_t nSumQuickly(const WeighedRows&, std::size_t, std::int16_t*, float*)
{
    return 0;
}

#endif

}  // namespace

void SumRows(const WeighedRows& objRows, std::size_t nCount, std::int16_t* pMemory, float* pSums)
{
    const std::size_t nDone = nSumQuickly(objRows, nCount, pMemory, pSums);
    std::fill(pSums + nDone, pSums + nCount, 0.F);
    for (std::size_t k = 0; k < objRows.nRows; ++k) {
        const std::uint8_t* __restrict pRow = objRows.pFirst + k * objRows.nStride;
        const float dWeight = objRows.pWeights[k];
        float* __restrict pTo = pSums;
        for (std::size_t i = nDone; i < nCount; ++i)
            pTo[i] += dWeight * static_cast<float>(pRow[i]);
    }
}

}  // namespace transforms
