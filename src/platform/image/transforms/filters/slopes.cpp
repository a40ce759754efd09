// Slopes in whole numbers: of 32 bits, and of 16 where they fit.
#include "src/platform/image/transforms/filters/slopes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "src/platform/image/transforms/rows/processor.h"
#include "src/platform/image/transforms/rows/row_loop.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

static constexpr std::int32_t kOne = 4096;

Light objLight(double dAngle, double dFactor)
{
    const double dTurn = std::fmod(dAngle, 360) * 3.14159265358979323846 / 180;
    return {static_cast<std::int32_t>(std::lround(std::cos(dTurn) * dFactor * kOne)),
            static_cast<std::int32_t>(std::lround(std::sin(dTurn) * dFactor * kOne))};
}

ROW_LOOP static void AllSlopes(const std::uint8_t* __restrict pLeft, const std::uint8_t* __restrict pRight,
                               const std::uint8_t* __restrict pUpper, const std::uint8_t* __restrict pLower,
                               Light objFrom, std::size_t nCount, std::int32_t* __restrict aSlopes)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSlopes[i] =
            (objFrom.lRight * (pLeft[i] - pRight[i]) + objFrom.lUp * (pLower[i] - pUpper[i]) + kOne / 2) >>
            12;
}

void Slopes(const RowsAround& objRows, Light objFrom, std::size_t nCount, std::int32_t* aSlopes)
{
    AllSlopes(objRows.pLeft, objRows.pRight, objRows.pUpper, objRows.pLower, objFrom, nCount, aSlopes);
}

ROW_LOOP static void AroundGrey(const std::int32_t* __restrict aSlopes, std::size_t nCount,
                                std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::int32_t lValue = 128 + aSlopes[i];
        pTarget[i] = static_cast<std::uint8_t>(lValue < 0 ? 0 : lValue > 255 ? 255 : lValue);
    }
}

#if defined(__x86_64__)

#define WITH_AVX2 __attribute__((target("avx2")))

WITH_AVX2 static inline __m256i nLoad(const std::uint8_t* p)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
WITH_AVX2 static inline __m256i nLit(__m256i nAcross, __m256i nDown, __m256i nRight, __m256i nUp)
{
    // A half level more is added for the rounding.
    const __m256i nGrey = _mm256_set1_epi16(128 * 64 + 32);
    const __m256i nSlope =
        _mm256_add_epi16(_mm256_mulhrs_epi16(nAcross, nRight), _mm256_mulhrs_epi16(nDown, nUp));
    return _mm256_srai_epi16(_mm256_add_epi16(nSlope, nGrey), 6);
}

// For cosines and sines of 1 at most; the differences are counted in 1/64 level. How many values were made: a
// multiple of 32.
WITH_AVX2 static std::size_t nThirtyTwos(const RowsAround& objRows, Light objFrom, std::size_t nCount,
                                         std::uint8_t* pTarget)
{
    const auto fnWeight = [](std::int32_t l) { return static_cast<short>(std::min(8 * l, 32767)); };
    const __m256i nRight = _mm256_set1_epi16(fnWeight(objFrom.lRight));
    const __m256i nUp = _mm256_set1_epi16(fnWeight(objFrom.lUp));
    const __m256i nDifference = _mm256_set1_epi16(static_cast<short>(-64 * 256 + 64));  // bytes 64 and -64
    std::size_t i = 0;
    for (; i + 32 <= nCount; i += 32) {
        const __m256i nOne = nLoad(objRows.pLeft + i), nOther = nLoad(objRows.pRight + i);
        const __m256i nLower = nLoad(objRows.pLower + i), nUpper = nLoad(objRows.pUpper + i);
        const __m256i nFirst =
            nLit(_mm256_maddubs_epi16(_mm256_unpacklo_epi8(nOne, nOther), nDifference),
                 _mm256_maddubs_epi16(_mm256_unpacklo_epi8(nLower, nUpper), nDifference), nRight, nUp);
        const __m256i nSecond =
            nLit(_mm256_maddubs_epi16(_mm256_unpackhi_epi8(nOne, nOther), nDifference),
                 _mm256_maddubs_epi16(_mm256_unpackhi_epi8(nLower, nUpper), nDifference), nRight, nUp);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(pTarget + i), _mm256_packus_epi16(nFirst, nSecond));
    }
    return i;
}

static std::size_t nQuickly(const RowsAround& objRows, Light objFrom, std::size_t nCount,
                            std::uint8_t* pTarget)
{
    const bool bFit = std::max(std::abs(objFrom.lRight), std::abs(objFrom.lUp)) <= kOne &&
                      std::hypot(objFrom.lRight, objFrom.lUp) <= 1.001 * kOne;
    return bHasAvx2() && bFit ? nThirtyTwos(objRows, objFrom, nCount, pTarget) : 0;
}

#else

static std::size_t nQuickly(const RowsAround&, Light, std::size_t, std::uint8_t*)
{
    return 0;
}

#endif

void SlopesAroundGrey(const RowsAround& objRows, Light objFrom, std::size_t nCount, std::int32_t* aSlopes,
                      std::uint8_t* pTarget)
{
    const std::size_t nDone = nQuickly(objRows, objFrom, nCount, pTarget);
    AllSlopes(objRows.pLeft + nDone, objRows.pRight + nDone, objRows.pUpper + nDone, objRows.pLower + nDone,
              objFrom, nCount - nDone, aSlopes);
    AroundGrey(aSlopes, nCount - nDone, pTarget + nDone);
}

}  // namespace transforms
