// Interpolates four pixels in one register of 256 bits: each has four lanes of 16 bits.
#include "src/platform/image/transforms/geometry/warp_fours.h"

#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/processor.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

#if defined(__x86_64__)

#define WITH_AVX2 __attribute__((target("avx2")))
#define WITH_AVX2_INLINE __attribute__((target("avx2"), always_inline)) inline

WITH_AVX2_INLINE static __m128i nLoadEight(const std::uint8_t* p)
{
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
}

// Two neighbouring pixels from each of four places.
WITH_AVX2_INLINE static __m256i nLoadPairs(const std::uint8_t* const (&aPlaces)[4], std::int64_t nOffset)
{
    return _mm256_set_m128i(
        _mm_unpacklo_epi64(nLoadEight(aPlaces[2] + nOffset), nLoadEight(aPlaces[3] + nOffset)),
        _mm_unpacklo_epi64(nLoadEight(aPlaces[0] + nOffset), nLoadEight(aPlaces[1] + nOffset)));
}

// Moves the bytes n, n + 1, n + 2, n + 3 of each half of a register's halves into lanes, times 128.
WITH_AVX2_INLINE static __m256i nLanes(__m256i nBytes, int n, int nSecond)
{
    const auto fnHigh = [](int nByte) { return static_cast<short>((nByte << 8) | 0x80); };
    const __m256i nOrder = _mm256_setr_epi16(
        fnHigh(n), fnHigh(n + 1), fnHigh(n + 2), fnHigh(n + 3), fnHigh(nSecond), fnHigh(nSecond + 1),
        fnHigh(nSecond + 2), fnHigh(nSecond + 3), fnHigh(n), fnHigh(n + 1), fnHigh(n + 2), fnHigh(n + 3),
        fnHigh(nSecond), fnHigh(nSecond + 1), fnHigh(nSecond + 2), fnHigh(nSecond + 3));
    return _mm256_srli_epi16(_mm256_shuffle_epi8(nBytes, nOrder), 1);
}

// The places' fractions as weights of 15 bits, one for each lane of their pixels.
WITH_AVX2_INLINE static __m256i nWeights(__m128i nPlaces)
{
    const __m128i nShares = _mm_slli_epi32(_mm_and_si128(nPlaces, _mm_set1_epi32(255)), 7);
    const __m256i nOrder = _mm256_setr_epi8(0, 1, 0, 1, 0, 1, 0, 1, 4, 5, 4, 5, 4, 5, 4, 5, 8, 9, 8, 9, 8, 9,
                                            8, 9, 12, 13, 12, 13, 12, 13, 12, 13);
    return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(nShares), nOrder);
}

WITH_AVX2_INLINE static __m256i nMixed(__m256i nOne, __m256i nOther, __m256i nWeight)
{
    return _mm256_add_epi16(nOne, _mm256_mulhrs_epi16(_mm256_sub_epi16(nOther, nOne), nWeight));
}

template <int nChannels>
WITH_AVX2_INLINE static std::int32_t lFours(const ImageBuffer& aSource, const std::int32_t* aX,
                                            const std::int32_t* aY, const std::uint8_t* pUnmoved,
                                            std::int32_t lCount, std::uint8_t* pTarget)
{
    // Eight bytes are read at a place, which with three channels are nearly three pixels.
    const __m128i nLastX = _mm_set1_epi32(aSource.width - (nChannels == 3 ? 3 : 2));
    const __m128i nLastY = _mm_set1_epi32(aSource.height - 2);
    const auto nRowBytes = static_cast<std::int64_t>(nStride(aSource));
    const std::uint8_t* pBytes = aSource.bytes.data();
    const __m256i nAlpha = _mm256_set1_epi32(static_cast<int>(0xFF000000U));

    std::int32_t i = 0;
    for (; i + 5 <= lCount; i += 4, pTarget += 4 * nChannels) {
        const __m128i nX = _mm_loadu_si128(reinterpret_cast<const __m128i*>(aX + i));
        const __m128i nY = _mm_loadu_si128(reinterpret_cast<const __m128i*>(aY + i));
        const __m128i nColumns = _mm_srai_epi32(nX, 8), nRows = _mm_srai_epi32(nY, 8);
        const __m128i nBeyond =
            _mm_or_si128(_mm_or_si128(_mm_cmpgt_epi32(nColumns, nLastX), _mm_cmpgt_epi32(nRows, nLastY)),
                         _mm_or_si128(nColumns, nRows));
        if (_mm_movemask_ps(_mm_castsi128_ps(nBeyond)) != 0)  // the sign of a negative one counts, too
            break;
        const std::uint8_t* aPlaces[4];
        for (int k = 0; k < 4; ++k)
            aPlaces[k] = pBytes + (aY[i + k] >> 8) * nRowBytes + std::int64_t{aX[i + k] >> 8} * nChannels;
        const __m256i nUpper = nLoadPairs(aPlaces, 0), nLower = nLoadPairs(aPlaces, nRowBytes);
        if (nChannels == 4 && !pUnmoved && !_mm256_testc_si256(_mm256_and_si256(nUpper, nLower), nAlpha))
            break;

        const __m256i nAcross = nWeights(nX);
        const __m256i nAbove =
            nMixed(nLanes(nUpper, 0, 8), nLanes(nUpper, nChannels, 8 + nChannels), nAcross);
        const __m256i nBelow =
            nMixed(nLanes(nLower, 0, 8), nLanes(nLower, nChannels, 8 + nChannels), nAcross);
        __m256i nPixels = nMixed(nAbove, nBelow, nWeights(nY));
        if (pUnmoved) {
            const std::uint8_t* p = pUnmoved + static_cast<std::ptrdiff_t>(i) * nChannels;
            const __m256i nBytes = _mm256_set_m128i(nLoadEight(p + 2 * nChannels), nLoadEight(p));
            nPixels = _mm256_avg_epu16(nPixels, nLanes(nBytes, 0, nChannels));
        }
        const __m256i nLevels = _mm256_srli_epi16(_mm256_add_epi16(nPixels, _mm256_set1_epi16(64)), 7);
        const __m256i nPacked = _mm256_packus_epi16(nLevels, nLevels);
        __m128i nFirst = _mm256_castsi256_si128(nPacked), nSecond = _mm256_extracti128_si256(nPacked, 1);
        if constexpr (nChannels == 3) {
            const __m128i nOrder = _mm_setr_epi8(0, 1, 2, 4, 5, 6, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
            nFirst = _mm_shuffle_epi8(nFirst, nOrder);
            nSecond = _mm_shuffle_epi8(nSecond, nOrder);
        }
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pTarget), nFirst);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pTarget + 2 * nChannels), nSecond);
    }
    return i;
}

WITH_AVX2 static std::int32_t lFoursOf(const ImageBuffer& aSource, const std::int32_t* aX,
                                       const std::int32_t* aY, const std::uint8_t* pUnmoved,
                                       std::int32_t lCount, std::uint8_t* pTarget)
{
    return aSource.channels == 3 ? lFours<3>(aSource, aX, aY, pUnmoved, lCount, pTarget)
                                 : lFours<4>(aSource, aX, aY, pUnmoved, lCount, pTarget);
}

std::int32_t lDrawFours(const ImageBuffer& aSource, const std::int32_t* aX, const std::int32_t* aY,
                        const std::uint8_t* pUnmoved, std::int32_t lCount, std::uint8_t* pTarget)
{
    return bHasAvx2() ? lFoursOf(aSource, aX, aY, pUnmoved, lCount, pTarget) : 0;
}

#else

std::int32_t lDrawFours(const ImageBuffer&, const std::int32_t*, const std::int32_t*, const std::uint8_t*,
                        std::int32_t, std::uint8_t*)
{
    return 0;
}

#endif

}  // namespace transforms
