// Chooses and applies PNG's row filters on any machine, and picks the fastest kernels that this one has.
#include "src/platform/image/codecs/png/filters/png_filter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>

#include "src/platform/image/codecs/png/filters/png_kernels.h"

static constexpr std::array<std::uint8_t, 256> MakeCosts()
{
    std::array<std::uint8_t, 256> aCosts{};
    for (std::size_t i = 0; i < 256; ++i) {
        const std::size_t nMagnitude = i < 128 ? i : 256 - i;
        aCosts[i] = nMagnitude < 16 ? kPngSmallCosts[nMagnitude] : kPngLargeCosts[nMagnitude / 16];
    }
    return aCosts;
}

static constexpr std::array<std::uint8_t, 256> kCosts = MakeCosts();

static inline int nPaethGuess(int nLeft, int nAbove, int nAboveLeft)
{
    const int nToLeft = std::abs(nAbove - nAboveLeft);
    const int nToAbove = std::abs(nLeft - nAboveLeft);
    const int nToAboveLeft = std::abs(nLeft + nAbove - 2 * nAboveLeft);
    if (nToLeft <= nToAbove && nToLeft <= nToAboveLeft)
        return nLeft;
    return nToAbove <= nToAboveLeft ? nAbove : nAboveLeft;
}

// nCount differences from nFirst on. What is in front of a row is zero, so that its first pixel is no special
// case.
static void Differences(PngFilter objFilter, const PngFilterRow& objRow, std::size_t nFirst,
                        std::size_t nCount, std::uint8_t* __restrict pOut)
{
    const std::uint8_t* __restrict pRow = objRow.pRow + nFirst;
    const std::uint8_t* __restrict pAbove = objRow.pAbove + nFirst;
    const std::uint8_t* __restrict pLeft = pRow - objRow.nPixelBytes;
    const std::uint8_t* __restrict pAboveLeft = pAbove - objRow.nPixelBytes;
    switch (objFilter) {
        case PngFilter::None:
            std::copy_n(pRow, nCount, pOut);
            break;
        case PngFilter::Sub:
            for (std::size_t i = 0; i < nCount; ++i)
                pOut[i] = static_cast<std::uint8_t>(pRow[i] - pLeft[i]);
            break;
        case PngFilter::Up:
            for (std::size_t i = 0; i < nCount; ++i)
                pOut[i] = static_cast<std::uint8_t>(pRow[i] - pAbove[i]);
            break;
        case PngFilter::Average:
            for (std::size_t i = 0; i < nCount; ++i)
                pOut[i] = static_cast<std::uint8_t>(pRow[i] - (pLeft[i] + pAbove[i]) / 2);
            break;
        case PngFilter::Paeth:
            for (std::size_t i = 0; i < nCount; ++i)
                pOut[i] =
                    static_cast<std::uint8_t>(pRow[i] - nPaethGuess(pLeft[i], pAbove[i], pAboveLeft[i]));
            break;
    }
}

static std::int64_t nCostOf(PngFilter objFilter, const PngFilterRow& objRow)
{
    std::int64_t nCost = 0;
    std::uint8_t nBefore = 0;
    std::array<std::uint8_t, kPngFilterGroup> aGroup{};
    for (std::size_t nFirst = 0; nFirst < objRow.nBytes; nFirst += kPngFilterGroup) {
        const std::size_t nCount = std::min(kPngFilterGroup, objRow.nBytes - nFirst);
        Differences(objFilter, objRow, nFirst, nCount, aGroup.data());
        std::uint32_t nSame = 0;
        for (std::size_t i = 0; i < nCount; ++i) {
            nCost += kCosts[aGroup[i]];
            nSame |= static_cast<std::uint32_t>(aGroup[i] == nBefore) << i;
            nBefore = aGroup[i];
        }
        nCost -= std::popcount(nSame & nSame >> 1 & nSame >> 2) * static_cast<std::int64_t>(kPngRunBonus);
    }
    return nCost;
}

static PngFilter ChooseAnywhere(const PngFilterRow& objRow)
{
    PngFilter objBest = PngFilter::None;
    std::int64_t nBest = nCostOf(objBest, objRow);
    for (std::uint32_t i = 1; i < kPngFilters; ++i) {
        const auto objFilter = static_cast<PngFilter>(i);
        const std::int64_t nCost = nCostOf(objFilter, objRow);
        if (nCost < nBest) {
            nBest = nCost;
            objBest = objFilter;
        }
    }
    return objBest;
}

static void ApplyAnywhere(PngFilter objFilter, const PngFilterRow& objRow, std::uint8_t* pOut)
{
    pOut[0] = static_cast<std::uint8_t>(objFilter);
    Differences(objFilter, objRow, 0, objRow.nBytes, pOut + 1);
}

const PngFilters& objPngFilters(bool bPortable)
{
    static constexpr PngFilters objEverywhere = {ChooseAnywhere, ApplyAnywhere};
#ifdef VARNEL_PNG_AVX2
    if (!bPortable && bPngHasAvx2())
        return objPngFiltersAvx2;
#endif
    static_cast<void>(bPortable);
    return objEverywhere;
}
