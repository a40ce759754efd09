// The means of the tiles, and rows drawn from them.
#include "src/platform/image/transforms/mosaic.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/bands.h"
#include "src/platform/image/transforms/hidden.h"
#include "src/platform/image/transforms/kernel_support.h"
#include "src/platform/image/transforms/row_loop.h"

namespace transforms
{

namespace
{

constexpr std::int32_t kWhole = 256;

// Which two tiles a row or column of pixels is mixed from, and how much the second one weighs, in 1/256.
struct Mix {
    std::int32_t lOne, lOther, lWeight;
};

bool bSame(const Mix& objOne, const Mix& objOther)
{
    return objOne.lOne == objOther.lOne && objOne.lWeight == objOther.lWeight &&
           (objOne.lWeight == 0 || objOne.lOther == objOther.lOther);
}

std::vector<Mix> aMixes(std::int32_t lSide, std::int32_t lTile, bool bPlain)
{
    const std::int32_t lTiles = (lSide + lTile - 1) / lTile;
    std::vector<Mix> aResult(static_cast<std::size_t>(lSide));
    for (std::int32_t i = 0; i < lSide; ++i) {
        const std::int32_t lOwn = i / lTile;
        // From -0.5 at the tile's beginning to 0.5 at its end.
        const double dAt = (i % lTile + 0.5) / lTile - 0.5;
        const double dShare = bPlain ? 0 : std::max(0.0, std::fabs(dAt) - 0.25) * 2;
        const std::int32_t lNeighbour = std::clamp(lOwn + (dAt < 0 ? -1 : 1), 0, lTiles - 1);
        aResult[static_cast<std::size_t>(i)] = {lOwn, lNeighbour,
                                                static_cast<std::int32_t>(std::lround(dShare * kWhole))};
    }
    return aResult;
}

ROW_LOOP void AddValues(const std::uint8_t* __restrict pBytes, std::size_t nCount,
                        std::uint32_t* __restrict aSums)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSums[i] += pBytes[i];
}

// The means of one row of tiles, all channels of them.
void MeansOfTiles(const ImageBuffer& aImage, std::int32_t lTop, std::int32_t lTile, std::uint32_t* aSums,
                  std::uint8_t* pMeans)
{
    const std::int32_t lBottom = std::min(lTop + lTile, aImage.lHeight);
    const std::int32_t lChannels = aImage.lChannels;
    std::fill_n(aSums, nStride(aImage), 0U);
    for (std::int32_t y = lTop; y < lBottom; ++y)
        AddValues(pRow(aImage, y), nStride(aImage), aSums);
    for (std::int32_t lLeft = 0; lLeft < aImage.lWidth; lLeft += lTile) {
        const std::int32_t lRight = std::min(lLeft + lTile, aImage.lWidth);
        const auto nPixels =
            static_cast<std::uint64_t>(lRight - lLeft) * static_cast<std::uint64_t>(lBottom - lTop);
        for (std::int32_t c = 0; c < lChannels; ++c) {
            std::uint64_t nSum = nPixels / 2;
            for (std::int64_t x = lLeft; x < lRight; ++x)
                nSum += aSums[x * lChannels + c];
            *pMeans++ = static_cast<std::uint8_t>(nSum / nPixels);
        }
    }
}

void DrawTiles(const std::vector<std::int32_t>& aTiles, const std::vector<Mix>& aAcross,
               std::int32_t lChannels, std::uint8_t* pPixel)
{
    const std::int32_t lColours = lChannels == 1 ? 1 : 3;
    for (const Mix& objMix : aAcross) {
        const std::int32_t* pOne = aTiles.data() + static_cast<std::ptrdiff_t>(objMix.lOne) * lChannels;
        const std::int32_t* pOther = aTiles.data() + static_cast<std::ptrdiff_t>(objMix.lOther) * lChannels;
        for (std::int32_t c = 0; c < lColours; ++c)
            pPixel[c] = static_cast<std::uint8_t>(
                (pOne[c] * (kWhole - objMix.lWeight) + pOther[c] * objMix.lWeight + kWhole * kWhole / 2) >>
                16);
        pPixel += lChannels;
    }
}

}  // namespace

bool Mosaic(ImageBuffer& aImage, std::int32_t lTileSize, bool bPlainColour)
{
    if (lTileSize <= 1)
        return true;
    return bAmongVisible(aImage, [&] {
        const std::int32_t lTile = std::min(lTileSize, std::max(aImage.lWidth, aImage.lHeight));
        const std::vector<Mix> aAcross = aMixes(aImage.lWidth, lTile, bPlainColour);
        const std::vector<Mix> aDown = aMixes(aImage.lHeight, lTile, bPlainColour);
        const std::size_t nTileRow =
            static_cast<std::size_t>(aAcross.back().lOne + 1) * static_cast<std::size_t>(aImage.lChannels);
        const std::int32_t lTileRows = aDown.back().lOne + 1;
        std::vector<std::uint8_t> aMeans(nTileRow * static_cast<std::size_t>(lTileRows));
        EachRows(lTileRows, nStride(aImage) * static_cast<std::size_t>(lTile),
                 [&](std::int32_t lFirst, std::int32_t lLast) {
                     std::vector<std::uint32_t> aSums(nStride(aImage));
                     for (std::int32_t i = lFirst; i < lLast; ++i)
                         MeansOfTiles(aImage, i * lTile, lTile, aSums.data(),
                                      aMeans.data() + static_cast<std::size_t>(i) * nTileRow);
                 });
        std::vector<std::vector<std::int32_t>> aMixed(nBands(aImage), std::vector<std::int32_t>(nTileRow));
        const auto fnDraw = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
            std::vector<std::int32_t>& aTiles = aMixed[nBand];
            for (std::int32_t y = lFirst; y < lEnd; ++y) {
                const Mix& objMix = aDown[static_cast<std::size_t>(y)];
                // Most rows of a tile are like the one above, and with alpha of its own none is.
                if (aImage.lChannels != 4 && y > lFirst &&
                    bSame(aDown[static_cast<std::size_t>(y - 1)], objMix)) {
                    std::copy_n(pRow(aImage, y - 1), nStride(aImage), pRow(aImage, y));
                    continue;
                }
                const std::uint8_t* pOne = aMeans.data() + static_cast<std::size_t>(objMix.lOne) * nTileRow;
                const std::uint8_t* pOther =
                    aMeans.data() + static_cast<std::size_t>(objMix.lOther) * nTileRow;
                for (std::size_t i = 0; i < nTileRow; ++i)
                    aTiles[i] = pOne[i] * (kWhole - objMix.lWeight) + pOther[i] * objMix.lWeight;
                DrawTiles(aTiles, aAcross, aImage.lChannels, pRow(aImage, y));
            }
        };
        RunBands(aImage, aMixed.size(), std::ref(fnDraw));
        return true;
    });
}

}  // namespace transforms
