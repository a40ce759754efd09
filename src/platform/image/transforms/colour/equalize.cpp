// Spreading a picture's brightness evenly over the scale.
#include "src/platform/image/transforms/colour/equalize.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/histogram.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/planes.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/tables.h"

namespace transforms
{

static Table aEqualizing(const Histogram& aCounts, double dLevel)
{
    Table aTable = aIdentityTable();
    std::uint64_t nAll = 0, nDarkest = 0, nSoFar = 0;
    for (const std::uint64_t nCount : aCounts) {
        nDarkest = nAll == 0 ? nCount : nDarkest;
        nAll += nCount;
    }
    if (nAll == nDarkest)
        return aTable;
    for (std::size_t n = 0; n < aTable.size(); ++n) {
        nSoFar += aCounts[n];
        const double dWhole = nSoFar < nDarkest ? 0
                                                : 255.0 * static_cast<double>(nSoFar - nDarkest) /
                                                      static_cast<double>(nAll - nDarkest);
        const auto dOld = static_cast<double>(n);
        aTable[n] = nLevel(dOld + dLevel * (dWhole - dOld));
    }
    return aTable;
}

// What of k one side of the scale allows: its room over the pixel's reach to that side.
ROW_LOOP_PART static float fAllowed(float fRoom, float fReach)
{
    const float fShare = fRoom / (fReach < 1.0F ? 1.0F : fReach);
    return fReach <= 0.0F || fShare > 1.0F ? 1.0F : fShare;
}

ROW_LOOP static void MovePlanes(FloatPlanes& objPlanes, std::size_t nPixels, const float* __restrict pOld,
                                const float* __restrict pNew)
{
    float* __restrict pBlue = objPlanes.aBlue;
    float* __restrict pGreen = objPlanes.aGreen;
    float* __restrict pRed = objPlanes.aRed;
    for (std::size_t i = 0; i < nPixels; ++i) {
        const float fBlue = pBlue[i], fGreen = pGreen[i], fRed = pRed[i];
        const float fOld = pOld[i], fNew = pNew[i];
        float fMost = fBlue < fGreen ? fGreen : fBlue;
        fMost = fMost < fRed ? fRed : fMost;
        float fLeast = fBlue < fGreen ? fBlue : fGreen;
        fLeast = fLeast < fRed ? fLeast : fRed;
        const float fAbove = fAllowed(255.0F - fNew, fMost - fOld);
        const float fBelow = fAllowed(fNew, fOld - fLeast);
        const float fKept = fAbove < fBelow ? fAbove : fBelow;
        pBlue[i] = fNew + fKept * (fBlue - fOld);
        pGreen[i] = fNew + fKept * (fGreen - fOld);
        pRed[i] = fNew + fKept * (fRed - fOld);
    }
}

// Whether every channel can move as far as its pixel's intensity does and stay on the scale.
ROW_LOOP static bool bAllFit(const Planes& objPlanes, std::size_t nFirst, std::size_t nCount,
                             const std::uint8_t* __restrict pOld, const std::uint8_t* __restrict pNew)
{
    const std::uint8_t* __restrict pBlue = objPlanes.aBlue + nFirst;
    const std::uint8_t* __restrict pGreen = objPlanes.aGreen + nFirst;
    const std::uint8_t* __restrict pRed = objPlanes.aRed + nFirst;
    std::uint16_t nAll = 0;
    for (std::size_t i = 0; i < nCount; ++i) {
        const auto nMove = static_cast<std::uint16_t>(pNew[i] - pOld[i]);
        nAll = static_cast<std::uint16_t>(nAll | static_cast<std::uint16_t>(pBlue[i] + nMove) |
                                          static_cast<std::uint16_t>(pGreen[i] + nMove) |
                                          static_cast<std::uint16_t>(pRed[i] + nMove));
    }
    return nAll < 256;
}

ROW_LOOP static void MoveAll(std::uint8_t* __restrict pLevels, std::size_t nCount,
                             const std::uint8_t* __restrict pOld, const std::uint8_t* __restrict pNew)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pLevels[i] = static_cast<std::uint8_t>(pLevels[i] + pNew[i] - pOld[i]);
}

// What the planes of a block become, group by group: where all fits, which is most of it, that is a sum.
static void MoveBlock(Planes& objPlanes, std::size_t nPixels, const std::uint8_t* pOld,
                      const std::uint8_t* pNew)
{
    constexpr std::size_t kGroup = 32;
    FloatPlanes objValues;
    float aOld[kGroup], aNew[kGroup];
    for (std::size_t i = 0; i < nPixels; i += kGroup) {
        const std::size_t nCount = std::min(kGroup, nPixels - i);
        std::uint8_t* const aLevels[3] = {objPlanes.aBlue + i, objPlanes.aGreen + i, objPlanes.aRed + i};
        if (bAllFit(objPlanes, i, nCount, pOld + i, pNew + i)) {
            for (std::uint8_t* pLevels : aLevels)
                MoveAll(pLevels, nCount, pOld + i, pNew + i);
            continue;
        }
        float* const aValues[3] = {objValues.aBlue, objValues.aGreen, objValues.aRed};
        for (std::size_t c = 0; c < 3; ++c)
            Widen(aLevels[c], nCount, aValues[c]);
        Widen(pOld + i, nCount, aOld);
        Widen(pNew + i, nCount, aNew);
        MovePlanes(objValues, nCount, aOld, aNew);
        for (std::size_t c = 0; c < 3; ++c)
            Round(aValues[c], nCount, aLevels[c]);
    }
}

bool Equalize(ImageBuffer& aImage, double dLevel)
{
    if (!(dLevel > 0))
        return true;
    const Table aTable = aEqualizing(aIntensityHistogram(aImage), std::min(dLevel, 1.0));
    if (aImage.channels == 1) {
        ApplyTable(aImage, aTable);
        return true;
    }
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    RunBands(aImage, [&](std::int32_t lFirst, std::int32_t lEnd) {
        Planes objPlanes;
        std::uint8_t aOld[kPlaneBlock], aNew[kPlaneBlock];
        const std::size_t nLast = nWidth * static_cast<std::size_t>(lEnd);
        for (std::size_t i = nWidth * static_cast<std::size_t>(lFirst); i < nLast; i += kPlaneBlock) {
            const std::size_t nPixels = std::min(kPlaneBlock, nLast - i);
            std::uint8_t* pPixels = aImage.bytes.data() + i * nChannels;
            SplitPixels(pPixels, nPixels, nChannels, objPlanes);
            IntensityOf(objPlanes, nPixels, aOld);
            for (std::size_t n = 0; n < nPixels; ++n)
                aNew[n] = aTable[aOld[n]];
            MoveBlock(objPlanes, nPixels, aOld, aNew);
            JoinPixels(objPlanes, nPixels, nChannels, pPixels);
        }
    });
    return true;
}

}  // namespace transforms
