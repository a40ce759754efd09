// Sums of pairs of values that lie as far to both sides, times the curve there.
#include "src/platform/image/transforms/filters/gaussian_curve.h"

#include <algorithm>
#include <cmath>

#include "src/platform/image/transforms/rows/processor.h"
#include "src/platform/image/transforms/rows/row_loop.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

namespace
{

// Half the product of both to the nearest 1/65536, which is one instruction for many of them.
ROW_LOOP_PART std::int16_t nTimes(std::int16_t nValue, std::int16_t nWeight)
{
    return static_cast<std::int16_t>((((static_cast<std::int32_t>(nValue) * nWeight) >> 14) + 1) >> 1);
}

// The sums for nFirst to nCount - 1, pair by pair. fnAt gives the values that lie so far from the middle.
template <typename At>
void AddPlainly(const std::vector<std::int16_t>& aWeights, const At& fnAt, int nScale, std::size_t nFirst,
                std::size_t nCount, std::int16_t* pMeans)
{
    for (std::size_t i = nFirst; i < nCount; ++i) {
        int nSum = 0;
        for (std::size_t k = 0; k < aWeights.size(); ++k) {
            const auto nFar = static_cast<std::ptrdiff_t>(k);
            nSum += nTimes(static_cast<std::int16_t>((fnAt(-nFar)[i] + fnAt(nFar)[i]) * nScale), aWeights[k]);
        }
        pMeans[i] = static_cast<std::int16_t>(nSum);
    }
}

#if defined(__x86_64__)

#define WITH_AVX2 __attribute__((target("avx2")))

WITH_AVX2 inline __m256i nLoad(const void* p)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(p));
}
WITH_AVX2 inline void Store(std::int16_t* p, __m256i n)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), n);
}

// Adds the products of 32 sums of two bytes. They come in the order of the interleaved bytes, which is put
// right when they are stored.
WITH_AVX2 inline void AddBytePairs(const std::uint8_t* pOne, const std::uint8_t* pOther, __m256i nWeight,
                                   __m256i& nLow, __m256i& nHigh)
{
    const __m256i nSteps = _mm256_set1_epi8(kSteps);
    const __m256i nA = nLoad(pOne), nB = nLoad(pOther);
    const __m256i nLowPairs = _mm256_maddubs_epi16(_mm256_unpacklo_epi8(nA, nB), nSteps);
    const __m256i nHighPairs = _mm256_maddubs_epi16(_mm256_unpackhi_epi8(nA, nB), nSteps);
    nLow = _mm256_add_epi16(nLow, _mm256_mulhrs_epi16(nLowPairs, nWeight));
    nHigh = _mm256_add_epi16(nHigh, _mm256_mulhrs_epi16(nHighPairs, nWeight));
}
WITH_AVX2 inline void AddShortPair(const std::int16_t* pOne, const std::int16_t* pOther, __m256i nWeight,
                                   __m256i& nSum)
{
    const __m256i nPair = _mm256_add_epi16(nLoad(pOne), nLoad(pOther));
    nSum = _mm256_add_epi16(nSum, _mm256_mulhrs_epi16(nPair, nWeight));
}

// How many sums of bytes were made: a multiple of 64.
template <typename At>
WITH_AVX2 std::size_t nAddBytes(const std::vector<std::int16_t>& aWeights, const At& fnAt, std::size_t nCount,
                                std::int16_t* pMeans)
{
    std::size_t i = 0;
    for (; i + 64 <= nCount; i += 64) {
        __m256i nLow = _mm256_setzero_si256(), nHigh = nLow, nNextLow = nLow, nNextHigh = nLow;
        for (std::size_t k = 0; k < aWeights.size(); ++k) {
            const std::uint8_t* pOne = fnAt(-static_cast<std::ptrdiff_t>(k)) + i;
            const std::uint8_t* pOther = fnAt(static_cast<std::ptrdiff_t>(k)) + i;
            const __m256i nWeight = _mm256_set1_epi16(aWeights[k]);
            AddBytePairs(pOne, pOther, nWeight, nLow, nHigh);
            AddBytePairs(pOne + 32, pOther + 32, nWeight, nNextLow, nNextHigh);
        }
        Store(pMeans + i, _mm256_permute2x128_si256(nLow, nHigh, 0x20));
        Store(pMeans + i + 16, _mm256_permute2x128_si256(nLow, nHigh, 0x31));
        Store(pMeans + i + 32, _mm256_permute2x128_si256(nNextLow, nNextHigh, 0x20));
        Store(pMeans + i + 48, _mm256_permute2x128_si256(nNextLow, nNextHigh, 0x31));
    }
    return i;
}

// The same of values of 16 bits.
template <typename At>
WITH_AVX2 std::size_t nAddShorts(const std::vector<std::int16_t>& aWeights, const At& fnAt,
                                 std::size_t nCount, std::int16_t* pMeans)
{
    std::size_t i = 0;
    for (; i + 64 <= nCount; i += 64) {
        __m256i n0 = _mm256_setzero_si256(), n1 = n0, n2 = n0, n3 = n0;
        for (std::size_t k = 0; k < aWeights.size(); ++k) {
            const std::int16_t* pOne = fnAt(-static_cast<std::ptrdiff_t>(k)) + i;
            const std::int16_t* pOther = fnAt(static_cast<std::ptrdiff_t>(k)) + i;
            const __m256i nWeight = _mm256_set1_epi16(aWeights[k]);
            AddShortPair(pOne, pOther, nWeight, n0);
            AddShortPair(pOne + 16, pOther + 16, nWeight, n1);
            AddShortPair(pOne + 32, pOther + 32, nWeight, n2);
            AddShortPair(pOne + 48, pOther + 48, nWeight, n3);
        }
        Store(pMeans + i, n0);
        Store(pMeans + i + 16, n1);
        Store(pMeans + i + 32, n2);
        Store(pMeans + i + 48, n3);
    }
    return i;
}

#else

template <typename At>
std::size_t nAddBytes(const std::vector<std::int16_t>&, const At&, std::size_t, std::int16_t*)
{
    return 0;
}
template <typename At>
std::size_t nAddShorts(const std::vector<std::int16_t>&, const At&, std::size_t, std::int16_t*)
{
    return 0;
}
#endif

template <typename At>
void AddShorts(const std::vector<std::int16_t>& aWeights, const At& fnAt, std::size_t nCount,
               std::int16_t* pMeans)
{
    const std::size_t nDone = bHasAvx2() ? nAddShorts(aWeights, fnAt, nCount, pMeans) : 0;
    AddPlainly(aWeights, fnAt, 1, nDone, nCount, pMeans);
}

}  // namespace

GaussianCurve::GaussianCurve(double dDeviation)
    : m_nReach(static_cast<std::size_t>(std::ceil(3 * dDeviation))), m_aWeights(m_nReach + 1)
{
    const auto fnCurve = [dDeviation](std::size_t n) {
        const auto d = static_cast<double>(n);
        return std::exp(-d * d / (2 * dDeviation * dDeviation));
    };
    double dSum = 1;
    for (std::size_t n = 1; n <= m_nReach; ++n)
        dSum += 2 * fnCurve(n);
    // The value in the middle makes a pair with itself. It takes what rounding the others left.
    std::int32_t lMiddle = 16384;
    for (std::size_t n = 1; n <= m_nReach; ++n) {
        m_aWeights[n] = static_cast<std::int16_t>(std::lround(32768 * fnCurve(n) / dSum));
        lMiddle -= m_aWeights[n];
    }
    m_aWeights[0] = static_cast<std::int16_t>(lMiddle);
}

void GaussianCurve::Down(const std::uint8_t* const* pRows, std::size_t nCount, std::int16_t* pMeans) const
{
    const std::uint8_t* const* pMiddle = pRows + m_nReach;
    const auto fnAt = [pMiddle](std::ptrdiff_t n) { return pMiddle[n]; };
    const std::size_t nDone = bHasAvx2() ? nAddBytes(m_aWeights, fnAt, nCount, pMeans) : 0;
    AddPlainly(m_aWeights, fnAt, kSteps, nDone, nCount, pMeans);
}

void GaussianCurve::Down(const std::int16_t* const* pRows, std::size_t nCount, std::int16_t* pMeans) const
{
    const std::int16_t* const* pMiddle = pRows + m_nReach;
    AddShorts(
        m_aWeights, [pMiddle](std::ptrdiff_t n) { return pMiddle[n]; }, nCount, pMeans);
}

void GaussianCurve::Along(const std::int16_t* pRow, std::size_t nCount, std::size_t nStep,
                          std::int16_t* pMeans) const
{
    const auto nPixel = static_cast<std::ptrdiff_t>(nStep);
    AddShorts(
        m_aWeights, [pRow, nPixel](std::ptrdiff_t n) { return pRow + n * nPixel; }, nCount, pMeans);
}

void RepeatEnds(std::int16_t* pRow, std::size_t nCount, std::size_t nStep, std::size_t nReach)
{
    for (std::size_t i = 0; i < nReach * nStep; ++i) {
        pRow[nCount + i] = pRow[nCount - nStep + i % nStep];
        *(pRow - 1 - static_cast<std::ptrdiff_t>(i)) = pRow[nStep - 1 - i % nStep];
    }
}

}  // namespace transforms
