// Finds runs in a PNG's filtered rows.
#include "src/platform/image/deflate/run_length.h"

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

static constexpr std::size_t kShortRun = 4;
static constexpr std::size_t kLongRun = 8;
static constexpr std::size_t kGroup = 32;  // positions that are compared at once

// Bit i is set where p[i] is the same as the byte nDistance before it; i from 0 to 31.
static inline std::uint32_t nSameMask(const std::uint8_t* p, std::size_t nDistance)
{
    std::uint32_t nMask = 0;
#ifdef __SSE2__
    for (std::size_t i = 0; i < kGroup; i += 16) {
        const __m128i vHere = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
        const __m128i vBefore = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i - nDistance));
        nMask |= static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(vHere, vBefore))) << i;
    }
#else
    for (std::size_t i = 0; i < kGroup; ++i)
        nMask |= static_cast<std::uint32_t>(p[i] == *(p + i - nDistance)) << i;
#endif
    return nMask;
}

// Keeps the bits at which kShortRun, or kLongRun, set bits begin.
static inline std::uint32_t nRunStarts(std::uint32_t nMask, bool bLong)
{
    nMask &= nMask >> 1;
    nMask &= nMask >> 2;
    return bLong ? nMask & nMask >> 4 : nMask;
}

static std::size_t nRunLength(const std::uint8_t* p, std::size_t nDistance, std::size_t nMost)
{
    std::size_t nLength = 0;
    while (nLength + kGroup <= nMost) {
        const std::uint32_t nDiffer = ~nSameMask(p + nLength, nDistance);
        if (nDiffer)
            return nLength + static_cast<std::size_t>(std::countr_zero(nDiffer));
        nLength += kGroup;
    }
    while (nLength < nMost && p[nLength] == *(p + nLength - nDistance))
        ++nLength;
    return nLength;
}

namespace
{
struct Run {
    std::size_t nLength = 0;
    std::uint32_t nDistance = 1;
    int nGain = 0;  ///< bits saved
};
}  // namespace

static Run objRunAt(const std::uint8_t* p, std::uint32_t nDistance, std::size_t nMost,
                    const PngCosts& objCosts)
{
    Run objRun;
    objRun.nDistance = nDistance;
    objRun.nLength = nRunLength(p, nDistance, std::min<std::size_t>(nMost, kPngLongestCopy));
    if (objRun.nLength < kShortRun)
        return objRun;
    std::size_t nLiterals = 0;  // bits of one pixel, since all of them are the same
    for (std::uint32_t i = 0; i < nDistance; ++i)
        nLiterals += objCosts.aLiteral[p[i]];
    nLiterals = nLiterals * objRun.nLength / nDistance;
    objRun.nGain = static_cast<int>(nLiterals) - objCosts.aLength[objRun.nLength] -
                   objCosts.aDistance[nPngDistanceSymbol(nDistance)];
    return objRun;
}

void FindPngRuns(const std::uint8_t* pBytes, std::size_t nBytes, std::size_t nBefore,
                 std::uint32_t nPixelBytes, const PngCosts& objCosts, PngTokens& aTokens)
{
    aTokens.clear();
    // Where even a run of the cheapest literals doesn't pay below the long length, short ones aren't looked
    // for.
    const bool bLong = kLongRun * objCosts.nLeastLiteral <= objCosts.nLeastCopy;
    const std::size_t nStep = kGroup - (bLong ? kLongRun : kShortRun) + 1;
    std::size_t nLiteral = 0;  // the first that no token stands for yet
    std::size_t i = nBefore < nPixelBytes ? std::min<std::size_t>(nPixelBytes - nBefore, nBytes) : 0;
    while (i + kGroup <= nBytes) {
        const std::uint8_t* p = pBytes + i;
        std::uint32_t nStarts = nRunStarts(nSameMask(p, 1), bLong);
        if (nPixelBytes > 1)
            nStarts |= nRunStarts(nSameMask(p, nPixelBytes), bLong);
        if (nStarts == 0) {
            i += nStep;
            continue;
        }
        i += static_cast<std::size_t>(std::countr_zero(nStarts));
        p = pBytes + i;
        Run objRun = objRunAt(p, 1, nBytes - i, objCosts);
        if (nPixelBytes > 1 && objRun.nLength < kPngLongestCopy) {
            const Run objPixels = objRunAt(p, nPixelBytes, nBytes - i, objCosts);
            if (objPixels.nGain > objRun.nGain)
                objRun = objPixels;
        }
        if (objRun.nGain <= 0) {
            i += std::max<std::size_t>(objRun.nLength, 1);
            continue;
        }
        aTokens.push_back({static_cast<std::uint32_t>(i - nLiteral),
                           static_cast<std::uint16_t>(objRun.nLength),
                           static_cast<std::uint16_t>(objRun.nDistance)});
        i += objRun.nLength;
        nLiteral = i;
    }
    aTokens.push_back({static_cast<std::uint32_t>(nBytes - nLiteral), 0, 0});
}
