// Pixels of three bytes are taken apart by shuffles of 16 bytes, sixteen pixels at a time.
#include "src/platform/image/transforms/rows/planes.h"

#include <array>

#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/processor.h"
#include "src/platform/image/transforms/rows/row_loop.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

namespace
{

template <std::size_t nChannels>
ROW_LOOP_PART void Split(const std::uint8_t* __restrict pPixels, std::size_t nFirst, std::size_t nEnd,
                         Planes& objPlanes)
{
    std::uint8_t* __restrict pBlue = objPlanes.aBlue;
    std::uint8_t* __restrict pGreen = objPlanes.aGreen;
    std::uint8_t* __restrict pRed = objPlanes.aRed;
    for (std::size_t i = nFirst; i < nEnd; ++i) {
        pBlue[i] = pPixels[nChannels * i];
        pGreen[i] = pPixels[nChannels * i + 1];
        pRed[i] = pPixels[nChannels * i + 2];
    }
}

template <std::size_t nChannels>
ROW_LOOP_PART void Join(const Planes& objPlanes, std::size_t nFirst, std::size_t nEnd,
                        std::uint8_t* __restrict pPixels)
{
    const std::uint8_t* __restrict pBlue = objPlanes.aBlue;
    const std::uint8_t* __restrict pGreen = objPlanes.aGreen;
    const std::uint8_t* __restrict pRed = objPlanes.aRed;
    for (std::size_t i = nFirst; i < nEnd; ++i) {
        if constexpr (nChannels == 4) {
            const std::uint8_t nAlpha = pPixels[4 * i + 3];
            pPixels[4 * i + 3] = nAlpha;  // all four bytes are written, so that the loop can be vectorised
        }
        pPixels[nChannels * i] = pBlue[i];
        pPixels[nChannels * i + 1] = pGreen[i];
        pPixels[nChannels * i + 2] = pRed[i];
    }
}

ROW_LOOP void Split4(const std::uint8_t* pPixels, std::size_t nPixels, Planes& objPlanes)
{
    Split<4>(pPixels, 0, nPixels, objPlanes);
}
ROW_LOOP void Join4(const Planes& objPlanes, std::size_t nPixels, std::uint8_t* pPixels)
{
    Join<4>(objPlanes, 0, nPixels, pPixels);
}

#if defined(__x86_64__)

#define WITH_SHUFFLES __attribute__((target("ssse3")))
#define WITH_AVX2 __attribute__((target("avx2")))
using Order = std::array<std::uint8_t, 16>;
using Orders = std::array<std::array<Order, 3>, 3>;
constexpr std::uint8_t kNone = 0x80;

// For plane p the places of its bytes in the three registers that hold 16 pixels.
constexpr Orders aSplitOrders()
{
    Orders aResult{};
    for (std::size_t p = 0; p < 3; ++p)
        for (std::size_t k = 0; k < 3; ++k)
            for (std::size_t i = 0; i < 16; ++i)
                aResult[p][k][i] =
                    static_cast<std::uint8_t>((3 * i + p) / 16 == k ? (3 * i + p) % 16 : kNone);
    return aResult;
}
// For register k the places of its bytes in the three planes.
constexpr Orders aJoinOrders()
{
    Orders aResult{};
    for (std::size_t k = 0; k < 3; ++k)
        for (std::size_t p = 0; p < 3; ++p)
            for (std::size_t j = 0; j < 16; ++j)
                aResult[k][p][j] =
                    static_cast<std::uint8_t>((16 * k + j) % 3 == p ? (16 * k + j) / 3 : kNone);
    return aResult;
}
alignas(16) constexpr Orders kSplit = aSplitOrders();
alignas(16) constexpr Orders kJoin = aJoinOrders();

WITH_SHUFFLES inline __m128i nLoad(const std::uint8_t* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
WITH_SHUFFLES inline __m128i nGathered(const __m128i (&aFrom)[3], const std::array<Order, 3>& aOrders)
{
    return _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(aFrom[0], nLoad(aOrders[0].data())),
                                     _mm_shuffle_epi8(aFrom[1], nLoad(aOrders[1].data()))),
                        _mm_shuffle_epi8(aFrom[2], nLoad(aOrders[2].data())));
}

// How many pixels of three bytes were split or joined: a multiple of 16.
WITH_SHUFFLES std::size_t nSplitSixteens(const std::uint8_t* pPixels, std::size_t nPixels, Planes& objPlanes)
{
    std::size_t i = 0;
    for (; i + 16 <= nPixels; i += 16, pPixels += 48) {
        const __m128i aFrom[3] = {nLoad(pPixels), nLoad(pPixels + 16), nLoad(pPixels + 32)};
        _mm_store_si128(reinterpret_cast<__m128i*>(objPlanes.aBlue + i), nGathered(aFrom, kSplit[0]));
        _mm_store_si128(reinterpret_cast<__m128i*>(objPlanes.aGreen + i), nGathered(aFrom, kSplit[1]));
        _mm_store_si128(reinterpret_cast<__m128i*>(objPlanes.aRed + i), nGathered(aFrom, kSplit[2]));
    }
    return i;
}
WITH_SHUFFLES std::size_t nJoinSixteens(const Planes& objPlanes, std::size_t nPixels, std::uint8_t* pPixels)
{
    std::size_t i = 0;
    for (; i + 16 <= nPixels; i += 16, pPixels += 48) {
        const __m128i aFrom[3] = {nLoad(objPlanes.aBlue + i), nLoad(objPlanes.aGreen + i),
                                  nLoad(objPlanes.aRed + i)};
        for (std::size_t k = 0; k < 3; ++k)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(pPixels + 16 * k), nGathered(aFrom, kJoin[k]));
    }
    return i;
}

// How many values were rounded: a multiple of 32. Packing them into bytes keeps them on the scale.
WITH_AVX2 std::size_t nRoundThirtyTwos(const float* pValues, std::size_t nCount, std::uint8_t* pLevels)
{
    const __m256 fHalf = _mm256_set1_ps(0.5F);
    const __m256i nOrder = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    std::size_t i = 0;
    for (; i + 32 <= nCount; i += 32) {
        __m256i aWhole[4];
        for (std::size_t k = 0; k < 4; ++k)
            aWhole[k] = _mm256_cvttps_epi32(_mm256_add_ps(_mm256_loadu_ps(pValues + i + 8 * k), fHalf));
        const __m256i nPacked = _mm256_packus_epi16(_mm256_packs_epi32(aWhole[0], aWhole[1]),
                                                    _mm256_packs_epi32(aWhole[2], aWhole[3]));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(pLevels + i),
                            _mm256_permutevar8x32_epi32(nPacked, nOrder));
    }
    return i;
}

// How many intensities were computed: a multiple of 16. A pixel's sum is made of two products of pairs, the
// green one's weight being too large for one.
WITH_AVX2 std::size_t nWeighSixteens(const Planes& objPlanes, std::size_t nPixels, std::uint8_t* pIntensity)
{
    const __m256i nBlueGreen = _mm256_set1_epi32(19235 << 16 | 7471);
    const __m256i nRedGreen = _mm256_set1_epi32(19235 << 16 | 19595);
    const __m256i nHalf = _mm256_set1_epi32(1 << 15);
    std::size_t i = 0;
    for (; i + 16 <= nPixels; i += 16) {
        const __m256i nBlue = _mm256_cvtepu8_epi16(nLoad(objPlanes.aBlue + i));
        const __m256i nGreen = _mm256_cvtepu8_epi16(nLoad(objPlanes.aGreen + i));
        const __m256i nRed = _mm256_cvtepu8_epi16(nLoad(objPlanes.aRed + i));
        const __m256i nFirst =
            _mm256_add_epi32(_mm256_madd_epi16(_mm256_unpacklo_epi16(nBlue, nGreen), nBlueGreen),
                             _mm256_madd_epi16(_mm256_unpacklo_epi16(nRed, nGreen), nRedGreen));
        const __m256i nSecond =
            _mm256_add_epi32(_mm256_madd_epi16(_mm256_unpackhi_epi16(nBlue, nGreen), nBlueGreen),
                             _mm256_madd_epi16(_mm256_unpackhi_epi16(nRed, nGreen), nRedGreen));
        const __m256i nLevels = _mm256_packus_epi32(_mm256_srli_epi32(_mm256_add_epi32(nFirst, nHalf), 16),
                                                    _mm256_srli_epi32(_mm256_add_epi32(nSecond, nHalf), 16));
        _mm_storeu_si128(
            reinterpret_cast<__m128i*>(pIntensity + i),
            _mm_packus_epi16(_mm256_castsi256_si128(nLevels), _mm256_extracti128_si256(nLevels, 1)));
    }
    return i;
}

#else

std::size_t nSplitSixteens(const std::uint8_t*, std::size_t, Planes&)
{
    return 0;
}
std::size_t nJoinSixteens(const Planes&, std::size_t, std::uint8_t*)
{
    return 0;
}
std::size_t nRoundThirtyTwos(const float*, std::size_t, std::uint8_t*)
{
    return 0;
}
std::size_t nWeighSixteens(const Planes&, std::size_t, std::uint8_t*)
{
    return 0;
}

#endif

}  // namespace

ROW_LOOP void Widen(const std::uint8_t* __restrict pLevels, std::size_t nCount, float* __restrict pValues)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pValues[i] = static_cast<float>(pLevels[i]);
}

void Widen(const Planes& objPlanes, std::size_t nPixels, FloatPlanes& objValues)
{
    Widen(objPlanes.aBlue, nPixels, objValues.aBlue);
    Widen(objPlanes.aGreen, nPixels, objValues.aGreen);
    Widen(objPlanes.aRed, nPixels, objValues.aRed);
}

void Round(const float* pValues, std::size_t nCount, std::uint8_t* pLevels)
{
    for (std::size_t i = bHasAvx2() ? nRoundThirtyTwos(pValues, nCount, pLevels) : 0; i < nCount; ++i) {
        const float fLow = pValues[i] < 0.0F ? 0.0F : pValues[i];
        const float fBetween = fLow < 255.0F ? fLow : 255.0F;
        pLevels[i] = static_cast<std::uint8_t>(static_cast<std::int32_t>(fBetween + 0.5F));
    }
}

void Round(const FloatPlanes& objValues, std::size_t nPixels, Planes& objPlanes)
{
    Round(objValues.aBlue, nPixels, objPlanes.aBlue);
    Round(objValues.aGreen, nPixels, objPlanes.aGreen);
    Round(objValues.aRed, nPixels, objPlanes.aRed);
}

void SplitPixels(const std::uint8_t* pPixels, std::size_t nPixels, std::size_t nChannels, Planes& objPlanes)
{
    if (nChannels == 4)
        Split4(pPixels, nPixels, objPlanes);
    else
        Split<3>(pPixels, bHasAvx2() ? nSplitSixteens(pPixels, nPixels, objPlanes) : 0, nPixels, objPlanes);
}

void IntensityOf(const Planes& objPlanes, std::size_t nPixels, std::uint8_t* pIntensity)
{
    for (std::size_t i = bHasAvx2() ? nWeighSixteens(objPlanes, nPixels, pIntensity) : 0; i < nPixels; ++i)
        pIntensity[i] = nIntensity(objPlanes.aBlue[i], objPlanes.aGreen[i], objPlanes.aRed[i]);
}

void JoinPixels(const Planes& objPlanes, std::size_t nPixels, std::size_t nChannels, std::uint8_t* pPixels)
{
    if (nChannels == 4)
        Join4(objPlanes, nPixels, pPixels);
    else
        Join<3>(objPlanes, bHasAvx2() ? nJoinSixteens(objPlanes, nPixels, pPixels) : 0, nPixels, pPixels);
}

}  // namespace transforms
