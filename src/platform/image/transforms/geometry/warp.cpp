// Draws a picture through a map: quickly inside, pixel by pixel at the border and where it is transparent.
#include "src/platform/image/transforms/geometry/warp.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "src/platform/image/transforms/geometry/warp_fours.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

namespace
{

const std::uint8_t* pTap(const ImageBuffer& aSource, std::int32_t x, std::int32_t y,
                         const PixelValue* pOutside)
{
    if (x < 0 || y < 0 || x >= aSource.width || y >= aSource.height) {
        if (pOutside)
            return pOutside->data();
        x = std::clamp(x, 0, aSource.width - 1);
        y = std::clamp(y, 0, aSource.height - 1);
    }
    return pRow(aSource, y) + static_cast<std::ptrdiff_t>(x) * aSource.channels;
}

// True when none of the four pixels from x, y on is inside.
bool bWhollyOutside(const ImageBuffer& aSource, std::int32_t x, std::int32_t y)
{
    return x < -1 || y < -1 || x >= aSource.width || y >= aSource.height;
}

// Any place at all, and pixels of any transparency.
template <int nChannels>
void DrawCarefully(const ImageBuffer& aSource, std::int32_t lX, std::int32_t lY, const PixelValue* pOutside,
                   std::uint8_t* pTarget)
{
    const std::int32_t x = lX >> 8, y = lY >> 8;
    if (pOutside && bWhollyOutside(aSource, x, y)) {
        std::memcpy(pTarget, pOutside->data(), nChannels);
        return;
    }
    const std::uint32_t nX = lX & 255, nY = lY & 255;
    const std::uint8_t* aTaps[4] = {pTap(aSource, x, y, pOutside), pTap(aSource, x + 1, y, pOutside),
                                    pTap(aSource, x, y + 1, pOutside), pTap(aSource, x + 1, y + 1, pOutside)};
    std::uint32_t aWeights[4] = {(256 - nX) * (256 - nY), nX * (256 - nY), (256 - nX) * nY, nX * nY};
    std::uint64_t nWhole = 1 << 16;
    if constexpr (nChannels == 4) {
        nWhole = 0;
        for (int i = 0; i < 4; ++i) {
            aWeights[i] *= aTaps[i][3];
            nWhole += aWeights[i];
        }
        pTarget[3] = static_cast<std::uint8_t>((nWhole + (1 << 15)) >> 16);
        if (nWhole == 0) {
            std::memcpy(pTarget, aTaps[0], 3);  // nothing to see, but the hidden colour stays what it was
            return;
        }
    }
    for (int c = 0; c < (nChannels == 1 ? 1 : 3); ++c) {
        std::uint64_t nSum = nWhole / 2;
        for (int i = 0; i < 4; ++i)
            nSum += static_cast<std::uint64_t>(aWeights[i]) * aTaps[i][c];
        pTarget[c] = static_cast<std::uint8_t>(nSum / nWhole);
    }
}

void DrawGreyRow(const ImageBuffer& aSource, const std::int32_t* __restrict aX,
                 const std::int32_t* __restrict aY, std::int32_t lCount, const PixelValue* pOutside,
                 std::uint8_t* __restrict pTarget)
{
    const auto nRight = static_cast<std::uint32_t>(aSource.width - 1);
    const auto nBottom = static_cast<std::uint32_t>(aSource.height - 1);
    for (std::int32_t i = 0; i < lCount; ++i, ++pTarget) {
        const std::int32_t x = aX[i] >> 8, y = aY[i] >> 8;
        if (static_cast<std::uint32_t>(x) >= nRight || static_cast<std::uint32_t>(y) >= nBottom) {
            DrawCarefully<1>(aSource, aX[i], aY[i], pOutside, pTarget);
            continue;
        }
        const std::int32_t lX = aX[i] & 255, lY = aY[i] & 255;
        const std::uint8_t* pUpper = pRow(aSource, y) + x;
        const std::uint8_t* pLower = pUpper + aSource.width;
        const std::int32_t lUpper = pUpper[0] * (256 - lX) + pUpper[1] * lX;
        const std::int32_t lLower = pLower[0] * (256 - lX) + pLower[1] * lX;
        pTarget[0] = static_cast<std::uint8_t>((lUpper * (256 - lY) + lLower * lY + (1 << 15)) >> 16);
    }
}

template <int nChannels>
void DrawRow(const ImageBuffer& aSource, const std::int32_t* aX, const std::int32_t* aY, std::int32_t lCount,
             const PixelValue* pOutside, std::uint8_t* pTarget)
{
    for (std::int32_t i = 0; i < lCount;) {
        for (; pOutside && i < lCount && bWhollyOutside(aSource, aX[i] >> 8, aY[i] >> 8); ++i)
            std::memcpy(pTarget + static_cast<std::ptrdiff_t>(i) * nChannels, pOutside->data(), nChannels);
        i += lDrawFours(aSource, aX + i, aY + i, nullptr, lCount - i,
                        pTarget + static_cast<std::ptrdiff_t>(i) * nChannels);
        for (const std::int32_t lEnd = std::min(i + 4, lCount); i < lEnd; ++i)
            DrawCarefully<nChannels>(aSource, aX[i], aY[i], pOutside,
                                     pTarget + static_cast<std::ptrdiff_t>(i) * nChannels);
    }
}

}  // namespace

void DrawWarped(const ImageBuffer& aSource, ImageBuffer& aTarget, const RowOfPlaces& fnPlaces,
                const PixelValue* pOutside)
{
    const auto fnDraw = aTarget.channels == 1 ? DrawGreyRow : aTarget.channels == 3 ? DrawRow<3> : DrawRow<4>;
    EachRows(aTarget.height, nStride(aTarget), [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<std::int32_t> aX(static_cast<std::size_t>(aTarget.width)), aY(aX.size());
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            fnPlaces(y, aX.data(), aY.data());
            fnDraw(aSource, aX.data(), aY.data(), aTarget.width, pOutside, pRow(aTarget, y));
        }
    });
}

// Sums of 64 bits, 32 of them behind the point: over the longest row they stray by less than 1/60000 pixel.
ROW_LOOP static void Progress(std::uint64_t nPlace, std::uint64_t nStep, std::int32_t lCount,
                              std::int32_t* __restrict aPlaces)
{
    for (std::int32_t i = 0; i < lCount; ++i, nPlace += nStep)
        aPlaces[i] = static_cast<std::int32_t>(static_cast<std::uint32_t>(nPlace >> 24));
}

void StraightPlaces(const StraightMap& objMap, std::int32_t y, std::int32_t lCount, std::int32_t* aX,
                    std::int32_t* aY)
{
    constexpr double kOne = 4294967296.0;
    constexpr std::int64_t kHalfUnit = 1 << 23;
    const auto fnFixed = [](double dPlace, std::int64_t nAdd) {
        return static_cast<std::uint64_t>(std::llround(dPlace * kOne) + nAdd);
    };
    Progress(fnFixed(objMap.dXY * y + objMap.dX0, kHalfUnit), fnFixed(objMap.dXX, 0), lCount, aX);
    Progress(fnFixed(objMap.dYY * y + objMap.dY0, kHalfUnit), fnFixed(objMap.dYX, 0), lCount, aY);
}

}  // namespace transforms
