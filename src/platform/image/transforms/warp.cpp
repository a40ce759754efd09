// Draws a picture through a map: four source pixels in one register where they are all inside.
#include "src/platform/image/transforms/warp.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "src/platform/image/transforms/row_loop.h"

namespace transforms
{

namespace
{

// One source picture, with what the inner loop asks of it.
struct Source {
    const std::uint8_t* pBytes;
    std::int64_t nSize;
    std::int64_t nRowBytes;
    std::int32_t lWidth;
    std::int32_t lHeight;
    const PixelValue* pOutside;
};

std::uint64_t nLoad(const std::uint8_t* p)
{
    std::uint64_t n;
    std::memcpy(&n, p, sizeof n);
    return n;
}

constexpr std::uint64_t kLanes = 0x00FF00FF00FF00FFU;
constexpr std::uint64_t kHalves = 0x0080008000800080U;

// The four bytes of a pixel in lanes of 16 bits, in the order 0, 2, 1, 3.
std::uint64_t nSpread(std::uint64_t nPixel)
{
    nPixel &= 0xFFFFFFFFU;
    return (nPixel | nPixel << 24) & kLanes;
}

// Both pixels mixed by n / 256, each lane rounded.
std::uint64_t nMixed(std::uint64_t nOne, std::uint64_t nOther, std::uint64_t n)
{
    return ((nOne * (256 - n) + nOther * n + kHalves) >> 8) & kLanes;
}

const std::uint8_t* pTap(const Source& objSource, std::int32_t x, std::int32_t y, int nChannels)
{
    if (x < 0 || y < 0 || x >= objSource.lWidth || y >= objSource.lHeight) {
        if (objSource.pOutside)
            return objSource.pOutside->data();
        x = std::clamp(x, 0, objSource.lWidth - 1);
        y = std::clamp(y, 0, objSource.lHeight - 1);
    }
    return objSource.pBytes + y * objSource.nRowBytes + static_cast<std::int64_t>(x) * nChannels;
}

// Any place at all, and pixels of any transparency.
template <int nChannels>
void DrawCarefully(const Source& objSource, std::int32_t lX, std::int32_t lY, std::uint8_t* pTarget)
{
    const std::int32_t x = lX >> 8, y = lY >> 8;
    if (objSource.pOutside && (x < -1 || y < -1 || x >= objSource.lWidth || y >= objSource.lHeight)) {
        std::memcpy(pTarget, objSource.pOutside->data(), nChannels);
        return;
    }
    const std::uint32_t nX = lX & 255, nY = lY & 255;
    const std::uint8_t* aTaps[4] = {pTap(objSource, x, y, nChannels), pTap(objSource, x + 1, y, nChannels),
                                    pTap(objSource, x, y + 1, nChannels),
                                    pTap(objSource, x + 1, y + 1, nChannels)};
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

template <int nChannels>
void DrawRow(const Source& objSource, const std::int32_t* __restrict aX, const std::int32_t* __restrict aY,
             std::int32_t lCount, std::uint8_t* __restrict pTarget)
{
    const auto nRight = static_cast<std::uint32_t>(objSource.lWidth - 1);
    const auto nBottom = static_cast<std::uint32_t>(objSource.lHeight - 1);
    const std::int64_t nLastLoad = objSource.nSize - 8 - objSource.nRowBytes;
    for (std::int32_t i = 0; i < lCount; ++i, pTarget += nChannels) {
        const std::int32_t x = aX[i] >> 8, y = aY[i] >> 8;
        const std::int64_t nAt = y * objSource.nRowBytes + static_cast<std::int64_t>(x) * nChannels;
        if (static_cast<std::uint32_t>(x) >= nRight || static_cast<std::uint32_t>(y) >= nBottom ||
            nAt > nLastLoad) {
            DrawCarefully<nChannels>(objSource, aX[i], aY[i], pTarget);
            continue;
        }
        const std::uint64_t nX = aX[i] & 255, nY = aY[i] & 255;
        const std::uint8_t* pUpper = objSource.pBytes + nAt;
        const std::uint8_t* pLower = pUpper + objSource.nRowBytes;
        if constexpr (nChannels == 1) {
            const std::uint64_t nUpper = pUpper[0] * (256 - nX) + pUpper[1] * nX;
            const std::uint64_t nLower = pLower[0] * (256 - nX) + pLower[1] * nX;
            pTarget[0] = static_cast<std::uint8_t>((nUpper * (256 - nY) + nLower * nY + (1 << 15)) >> 16);
        } else {
            const std::uint64_t nUpper = nLoad(pUpper), nLower = nLoad(pLower);
            if constexpr (nChannels == 4) {
                if ((nUpper & nLower & 0xFF000000FF000000U) != 0xFF000000FF000000U) {
                    DrawCarefully<4>(objSource, aX[i], aY[i], pTarget);
                    continue;
                }
            }
            const std::uint64_t nAbove = nMixed(nSpread(nUpper), nSpread(nUpper >> (8 * nChannels)), nX);
            const std::uint64_t nBelow = nMixed(nSpread(nLower), nSpread(nLower >> (8 * nChannels)), nX);
            const std::uint64_t nPixel = nMixed(nAbove, nBelow, nY);
            pTarget[0] = static_cast<std::uint8_t>(nPixel);
            pTarget[1] = static_cast<std::uint8_t>(nPixel >> 32);
            pTarget[2] = static_cast<std::uint8_t>(nPixel >> 16);
            if constexpr (nChannels == 4)
                pTarget[3] = 255;
        }
    }
}

}  // namespace

void DrawWarped(const ImageBuffer& aSource, ImageBuffer& aTarget, const RowOfPlaces& fnPlaces,
                const PixelValue* pOutside)
{
    const Source objSource{aSource.aBytes.data(),
                           static_cast<std::int64_t>(aSource.aBytes.size()),
                           static_cast<std::int64_t>(nStride(aSource)),
                           aSource.lWidth,
                           aSource.lHeight,
                           pOutside};
    const auto fnDraw = aTarget.lChannels == 1   ? DrawRow<1>
                        : aTarget.lChannels == 3 ? DrawRow<3>
                                                 : DrawRow<4>;
    EachRows(aTarget.lHeight, nStride(aTarget), [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<std::int32_t> aX(static_cast<std::size_t>(aTarget.lWidth)), aY(aX.size());
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            fnPlaces(y, aX.data(), aY.data());
            fnDraw(objSource, aX.data(), aY.data(), aTarget.lWidth, pRow(aTarget, y));
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
