// Spreading a picture's brightness evenly over the scale.
#include "src/platform/image/transforms/equalize.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/bands.h"
#include "src/platform/image/transforms/histogram.h"
#include "src/platform/image/transforms/intensity.h"
#include "src/platform/image/transforms/row_loop.h"
#include "src/platform/image/transforms/tables.h"

namespace transforms
{

constexpr std::size_t kBlock = 1024;  // pixels at a time: they stay in the nearest cache

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

template <int kChannels>
ROW_LOOP_PART static void MoveRow(std::uint8_t* __restrict pPixels, std::size_t nPixels,
                                  const std::uint8_t* __restrict pOld, const std::uint8_t* __restrict pNew)
{
    for (std::size_t i = 0; i < nPixels; ++i) {
        std::uint8_t* __restrict pPixel = pPixels + i * kChannels;
        const float fBlue = pPixel[0], fGreen = pPixel[1], fRed = pPixel[2];
        const float fOld = pOld[i], fNew = pNew[i];
        float fMost = fBlue < fGreen ? fGreen : fBlue;
        fMost = fMost < fRed ? fRed : fMost;
        float fLeast = fBlue < fGreen ? fBlue : fGreen;
        fLeast = fLeast < fRed ? fLeast : fRed;
        const float fAbove = fAllowed(255.0F - fNew, fMost - fOld);
        const float fBelow = fAllowed(fNew, fOld - fLeast);
        const float fKept = fAbove < fBelow ? fAbove : fBelow;
        // Rounding may pass the end of the scale by far less than the half level that is added.
        const float fBase = fNew + 0.5F;
        pPixel[0] = static_cast<std::uint8_t>(static_cast<std::int32_t>(fBase + fKept * (fBlue - fOld)));
        pPixel[1] = static_cast<std::uint8_t>(static_cast<std::int32_t>(fBase + fKept * (fGreen - fOld)));
        pPixel[2] = static_cast<std::uint8_t>(static_cast<std::int32_t>(fBase + fKept * (fRed - fOld)));
    }
}

ROW_LOOP static void MoveRow3(std::uint8_t* __restrict pPixels, std::size_t nPixels,
                              const std::uint8_t* __restrict pOld, const std::uint8_t* __restrict pNew)
{
    MoveRow<3>(pPixels, nPixels, pOld, pNew);
}

ROW_LOOP static void MoveRow4(std::uint8_t* __restrict pPixels, std::size_t nPixels,
                              const std::uint8_t* __restrict pOld, const std::uint8_t* __restrict pNew)
{
    MoveRow<4>(pPixels, nPixels, pOld, pNew);
}

bool Equalize(ImageBuffer& aImage, double dLevel)
{
    if (!(dLevel > 0))
        return true;
    const Table aTable = aEqualizing(aIntensityHistogram(aImage), std::min(dLevel, 1.0));
    if (aImage.lChannels == 1) {
        ApplyTable(aImage, aTable);
        return true;
    }
    const auto nChannels = static_cast<std::size_t>(aImage.lChannels);
    const auto nWidth = static_cast<std::size_t>(aImage.lWidth);
    RunBands(aImage, [&](std::int32_t lFirst, std::int32_t lEnd) {
        std::uint8_t aOld[kBlock], aNew[kBlock];
        const std::size_t nLast = nWidth * static_cast<std::size_t>(lEnd);
        for (std::size_t i = nWidth * static_cast<std::size_t>(lFirst); i < nLast; i += kBlock) {
            const std::size_t nPixels = std::min(kBlock, nLast - i);
            std::uint8_t* pPixels = aImage.aBytes.data() + i * nChannels;
            IntensityRow(pPixels, nPixels, aImage.lChannels, aOld);
            for (std::size_t n = 0; n < nPixels; ++n)
                aNew[n] = aTable[aOld[n]];
            (nChannels == 3 ? MoveRow3 : MoveRow4)(pPixels, nPixels, aOld, aNew);
        }
    });
    return true;
}

}  // namespace transforms
