// Compares a picture with a screen of thresholds.
#include "src/platform/image/transforms/effects/halftones.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

// Each pixel's place in the order in which a cell's pixels grow light.
static std::vector<std::uint32_t> aRanks(std::size_t nCell)
{
    // Rounded, so that places that are equal by symmetry don't differ in a cosine's last digit.
    std::vector<std::int64_t> aWave(nCell);
    for (std::size_t i = 0; i < nCell; ++i)
        aWave[i] = std::llround(1e9 * std::cos(2 * std::numbers::pi * (static_cast<double>(i) + 0.5) /
                                               static_cast<double>(nCell)));
    std::vector<std::uint32_t> aOrder(nCell * nCell), aResult(aOrder.size());
    std::iota(aOrder.begin(), aOrder.end(), 0U);
    const auto fnHeight = [&](std::uint32_t n) { return aWave[n % nCell] + aWave[n / nCell]; };
    std::stable_sort(aOrder.begin(), aOrder.end(), [&](std::uint32_t nOne, std::uint32_t nOther) {
        return fnHeight(nOne) < fnHeight(nOther);
    });
    for (std::uint32_t n = 0; n < aOrder.size(); ++n)
        aResult[aOrder[n]] = n;
    return aResult;
}

std::vector<std::uint8_t> aHalftoneScreen(std::int32_t lCellSize)
{
    constexpr std::size_t kBayer[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    const auto nCell = static_cast<std::size_t>(lCellSize), nSide = 4 * nCell;
    const std::vector<std::uint32_t> aCell = aRanks(nCell);
    std::vector<std::uint8_t> aScreen(nSide * nSide);
    for (std::size_t y = 0; y < nSide; ++y) {
        for (std::size_t x = 0; x < nSide; ++x) {
            const std::size_t nOrder =
                32 * aCell[y % nCell * nCell + x % nCell] + 2 * kBayer[y / nCell][x / nCell] + 1;
            aScreen[y * nSide + x] = static_cast<std::uint8_t>(255 * nOrder / (32 * nCell * nCell));
        }
    }
    return aScreen;
}

// aThresholds has one for each of the row's bytes.
ROW_LOOP static void Screen(const std::uint8_t* __restrict aThresholds, std::size_t nCount,
                            std::int32_t lShare, std::uint8_t* __restrict aValues)
{
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::int32_t lDot = aValues[i] > aThresholds[i] ? 255 : 0;
        aValues[i] = static_cast<std::uint8_t>((aValues[i] * (256 - lShare) + lDot * lShare + 128) >> 8);
    }
}

bool Halftones(ImageBuffer& aImage, std::int32_t lCellSize, double dContrast)
{
    const auto lShare = static_cast<std::int32_t>(256 * (dContrast > 0 ? std::min(dContrast, 1.0) : 0) + 0.5);
    if (lShare == 0)
        return true;
    return bGuarded([&] {
        const std::int32_t lCell = std::clamp(lCellSize, 1, 255);
        const std::vector<std::uint8_t> aScreen = aHalftoneScreen(lCell);
        const std::size_t nSide = 4 * static_cast<std::size_t>(lCell), nRow = nStride(aImage);
        const auto nChannels = static_cast<std::size_t>(aImage.channels);
        // For each band a row of thresholds, and one of alpha.
        std::vector<std::vector<std::uint8_t>> aRows(nBands(aImage), std::vector<std::uint8_t>(nRow));
        std::vector<std::vector<std::uint8_t>> aAlphas(
            aRows.size(), std::vector<std::uint8_t>(nChannels == 4 ? nRow / 4 : 0));
        const auto fnBand = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
            std::vector<std::uint8_t>&aThresholds = aRows[nBand], &aAlpha = aAlphas[nBand];
            for (std::int32_t y = lFirst; y < lEnd; ++y) {
                const std::uint8_t* pScreen = aScreen.data() + static_cast<std::size_t>(y) % nSide * nSide;
                for (std::size_t i = 0, x = 0; i < nRow; i += nChannels) {
                    for (std::size_t c = 0; c < nChannels; ++c)
                        aThresholds[i + c] = pScreen[x];
                    x = x + 1 == nSide ? 0 : x + 1;
                }
                std::uint8_t* pPixels = pRow(aImage, y);
                for (std::size_t i = 0; i < aAlpha.size(); ++i)
                    aAlpha[i] = pPixels[4 * i + 3];
                Screen(aThresholds.data(), nRow, lShare, pPixels);
                for (std::size_t i = 0; i < aAlpha.size(); ++i)
                    pPixels[4 * i + 3] = aAlpha[i];
            }
        };
        RunBands(aImage, aRows.size(), std::ref(fnBand));
        return true;
    });
}

}  // namespace transforms
