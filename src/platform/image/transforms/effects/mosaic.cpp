// The means of the tiles, and rows drawn from them.
#include "src/platform/image/transforms/effects/mosaic.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

namespace
{

constexpr std::int32_t kWhole = 256;

// Which two tiles a row or column of pixels is mixed from, and how much the second one weighs, in 1/256.
struct Mix {
    std::int32_t lOne, lOther, lWeight;
};

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

ROW_LOOP void AddBytes(const std::uint8_t* __restrict pBytes, std::size_t nCount,
                       std::uint16_t* __restrict aSums)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSums[i] = static_cast<std::uint16_t>(aSums[i] + pBytes[i]);
}
ROW_LOOP void AddSums(const std::uint16_t* __restrict aFew, std::size_t nCount,
                      std::uint32_t* __restrict aSums)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSums[i] += aFew[i];
}

// The sums of a row of tiles' columns: of some rows first, which fit into 16 bits, and of those in 32.
struct Columns {
    std::vector<std::uint16_t> aFew;
    std::vector<std::uint32_t> aSums;
};

void AddColumns(const ImageBuffer& aImage, std::int32_t lTop, std::int32_t lBottom, Columns& objColumns)
{
    constexpr std::int32_t kFew = 256;
    std::fill(objColumns.aSums.begin(), objColumns.aSums.end(), 0U);
    for (std::int32_t lFirst = lTop; lFirst < lBottom; lFirst += kFew) {
        std::fill(objColumns.aFew.begin(), objColumns.aFew.end(), std::uint16_t{0});
        for (std::int32_t y = lFirst; y < std::min(lFirst + kFew, lBottom); ++y)
            AddBytes(pRow(aImage, y), objColumns.aFew.size(), objColumns.aFew.data());
        AddSums(objColumns.aFew.data(), objColumns.aFew.size(), objColumns.aSums.data());
    }
}

// The means of one row of tiles, all channels of them.
void MeansOfTiles(const ImageBuffer& aImage, std::int32_t lTop, std::int32_t lTile, Columns& objColumns,
                  std::uint8_t* pMeans)
{
    const std::int32_t lBottom = std::min(lTop + lTile, aImage.height);
    const std::int32_t lChannels = aImage.channels;
    AddColumns(aImage, lTop, lBottom, objColumns);
    const std::uint32_t* pSums = objColumns.aSums.data();
    for (std::int32_t lLeft = 0; lLeft < aImage.width; lLeft += lTile) {
        const std::int32_t lRight = std::min(lLeft + lTile, aImage.width);
        const auto nPixels =
            static_cast<std::uint64_t>(lRight - lLeft) * static_cast<std::uint64_t>(lBottom - lTop);
        for (std::int32_t c = 0; c < lChannels; ++c) {
            std::uint64_t nSum = nPixels / 2;
            for (std::int64_t x = lLeft; x < lRight; ++x)
                nSum += pSums[x * lChannels + c];
            *pMeans++ = static_cast<std::uint8_t>(nSum / nPixels);
        }
    }
}

// A row of tiles as a row of pixels, in 1/256 level.
void DrawTiles(const std::uint8_t* pMeans, const std::vector<Mix>& aAcross, std::int32_t lChannels,
               std::uint16_t* pValues)
{
    for (const Mix& objMix : aAcross) {
        const std::uint8_t* pOne = pMeans + static_cast<std::ptrdiff_t>(objMix.lOne) * lChannels;
        const std::uint8_t* pOther = pMeans + static_cast<std::ptrdiff_t>(objMix.lOther) * lChannels;
        for (std::int32_t c = 0; c < lChannels; ++c)
            *pValues++ =
                static_cast<std::uint16_t>(pOne[c] * (kWhole - objMix.lWeight) + pOther[c] * objMix.lWeight);
    }
}

ROW_LOOP void MixRows(const std::uint16_t* __restrict pOne, const std::uint16_t* __restrict pOther,
                      std::uint32_t nOther, std::size_t nCount, std::uint8_t* __restrict pTarget)
{
    const std::uint32_t nOne = kWhole - nOther;
    for (std::size_t i = 0; i < nCount; ++i)
        pTarget[i] = static_cast<std::uint8_t>((pOne[i] * nOne + pOther[i] * nOther + (1U << 15)) >> 16);
}

// What a band draws with: two rows of tiles, drawn across, and the row of pixels that they make.
struct Drawing {
    std::vector<std::uint16_t> aDrawn[2];
    std::int32_t aTile[2] = {-1, -1};  // which rows of tiles they are
    std::vector<std::uint8_t> aPixels;
};

}  // namespace

bool Mosaic(ImageBuffer& aImage, std::int32_t lTileSize, bool bPlainColour)
{
    if (lTileSize <= 1)
        return true;
    return bAmongVisible(aImage, [&] {
        const std::int32_t lTile = std::min(lTileSize, std::max(aImage.width, aImage.height));
        const std::vector<Mix> aAcross = aMixes(aImage.width, lTile, bPlainColour);
        const std::vector<Mix> aDown = aMixes(aImage.height, lTile, bPlainColour);
        const std::size_t nTileRow =
            static_cast<std::size_t>(aAcross.back().lOne + 1) * static_cast<std::size_t>(aImage.channels);
        const std::int32_t lTileRows = aDown.back().lOne + 1;
        std::vector<std::uint8_t> aMeans(nTileRow * static_cast<std::size_t>(lTileRows));
        EachRows(lTileRows, nStride(aImage) * static_cast<std::size_t>(lTile),
                 [&](std::int32_t lFirst, std::int32_t lLast) {
                     Columns objColumns{std::vector<std::uint16_t>(nStride(aImage)),
                                        std::vector<std::uint32_t>(nStride(aImage))};
                     for (std::int32_t i = lFirst; i < lLast; ++i)
                         MeansOfTiles(aImage, i * lTile, lTile, objColumns,
                                      aMeans.data() + static_cast<std::size_t>(i) * nTileRow);
                 });
        const std::size_t nRow = nStride(aImage);
        std::vector<Drawing> aDrawings(nBands(aImage));
        for (Drawing& obj : aDrawings) {
            obj.aPixels.resize(nRow);
            for (auto& aRow : obj.aDrawn)
                aRow.resize(nRow);
        }
        const auto fnDraw = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
            Drawing& obj = aDrawings[nBand];
            // Rows of tiles that are even and odd take turns, so that of two neighbours neither is drawn
            // twice.
            const auto fnDrawn = [&](std::int32_t lTileRow) {
                const std::size_t n = lTileRow & 1;
                if (obj.aTile[n] != lTileRow)
                    DrawTiles(aMeans.data() + static_cast<std::size_t>(lTileRow) * nTileRow, aAcross,
                              aImage.channels, obj.aDrawn[n].data());
                obj.aTile[n] = lTileRow;
                return obj.aDrawn[n].data();
            };
            const Mix* pLast = nullptr;
            for (std::int32_t y = lFirst; y < lEnd; ++y) {
                const Mix& objMix = aDown[static_cast<std::size_t>(y)];
                if (!pLast || pLast->lOne != objMix.lOne || pLast->lWeight != 0 || objMix.lWeight != 0) {
                    const std::uint16_t* pOne = fnDrawn(objMix.lOne);
                    MixRows(pOne, fnDrawn(objMix.lOther), static_cast<std::uint32_t>(objMix.lWeight), nRow,
                            obj.aPixels.data());
                }
                pLast = &objMix;
                std::uint8_t* pTarget = pRow(aImage, y);
                for (std::size_t i = 3; aImage.channels == 4 && i < nRow; i += 4)
                    obj.aPixels[i] = pTarget[i];
                std::copy(obj.aPixels.begin(), obj.aPixels.end(), pTarget);
            }
        };
        RunBands(aImage, aDrawings.size(), std::ref(fnDraw));
        return true;
    });
}

}  // namespace transforms
