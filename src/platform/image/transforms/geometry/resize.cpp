// Scales row by row: down the columns into one row of fractions, then along that row.
#include "src/platform/image/transforms/geometry/resize.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/geometry/resize_rows.h"
#include "src/platform/image/transforms/geometry/resize_weights.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

// False if any pixel is transparent in any degree.
static bool bOpaque(const ImageBuffer& aImage)
{
    if (aImage.channels != 4)
        return true;
    for (std::int32_t y = 0; y < aImage.height; ++y) {
        const std::uint8_t* pPixel = pRow(aImage, y);
        std::uint8_t nAll = 255;
        for (std::int32_t x = 0; x < aImage.width; ++x)
            nAll &= pPixel[4 * static_cast<std::size_t>(x) + 3];
        if (nAll != 255)
            return false;
    }
    return true;
}

namespace
{

using Four = float __attribute__((vector_size(16)));

void ResizeNearest(const ImageBuffer& aImage, ImageBuffer& aResult)
{
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    std::vector<std::size_t> aFrom(static_cast<std::size_t>(aResult.width));
    for (std::size_t x = 0; x < aFrom.size(); ++x)
        aFrom[x] = (2 * x + 1) * static_cast<std::size_t>(aImage.width) / (2 * aFrom.size()) * nChannels;
    EachRows(aResult.height, nStride(aResult), [&](std::int32_t lFirst, std::int32_t lLast) {
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            const std::uint8_t* pSource = pRow(
                aImage, static_cast<std::int32_t>((2 * static_cast<std::int64_t>(y) + 1) * aImage.height /
                                                  (2 * static_cast<std::int64_t>(aResult.height))));
            std::uint8_t* pTarget = pRow(aResult, y);
            for (const std::size_t nFrom : aFrom) {
                for (std::size_t c = 0; c < nChannels; ++c)
                    *pTarget++ = pSource[nFrom + c];
            }
        }
    });
}

// A row whose colours weigh by their alpha.
ROW_LOOP void AddWeighedRow(const std::uint8_t* __restrict pPixel, float dWeight, std::size_t nPixels,
                            float* __restrict aSums)
{
    for (std::size_t i = 0; i < nPixels; ++i) {
        const float dAlpha = dWeight * static_cast<float>(pPixel[4 * i + 3]);
        aSums[4 * i] += dAlpha * static_cast<float>(pPixel[4 * i]);
        aSums[4 * i + 1] += dAlpha * static_cast<float>(pPixel[4 * i + 1]);
        aSums[4 * i + 2] += dAlpha * static_cast<float>(pPixel[4 * i + 2]);
        aSums[4 * i + 3] += dAlpha;
    }
}

// Pixels of three values on places of four, where one register holds a pixel.
void Spread(const float* __restrict aPixels, std::size_t nPixels, Four* __restrict aTarget)
{
    for (std::size_t i = 0; i < nPixels; ++i, aPixels += 3)
        aTarget[i] = Four{aPixels[0], aPixels[1], aPixels[2], 0};
}

// One row of the target from the row of sums.
template <int nChannels, bool bWeighed>
void AlongRow(const float* aSums, const ResizeWeights& objWeights, std::uint8_t* pTarget)
{
    const std::size_t nTaps = objWeights.nTaps;
    const float* pWeight = objWeights.aWeights.data();
    for (const std::int32_t lFirst : objWeights.aFirst) {
        if constexpr (nChannels == 1) {
            const float* pSum = aSums + lFirst;
            float dSum = 0;
            for (std::size_t k = 0; k < nTaps; ++k)
                dSum += pWeight[k] * pSum[k];
            *pTarget++ = nLevel(dSum);
        } else {
            // Two sums, so that one addition needn't wait for the other.
            Four aSum{0, 0, 0, 0}, aNext{0, 0, 0, 0};
            const float* pSum = aSums + 4 * static_cast<std::size_t>(lFirst);
            std::size_t k = 0;
            for (; k + 2 <= nTaps; k += 2, pSum += 8) {
                Four aPixel, aNextPixel;
                std::memcpy(&aPixel, pSum, sizeof aPixel);
                std::memcpy(&aNextPixel, pSum + 4, sizeof aNextPixel);
                aSum += aPixel * pWeight[k];
                aNext += aNextPixel * pWeight[k + 1];
            }
            if (k < nTaps) {
                Four aPixel;
                std::memcpy(&aPixel, pSum, sizeof aPixel);
                aSum += aPixel * pWeight[k];
            }
            aSum += aNext;
            if constexpr (bWeighed) {
                const float dAlpha = aSum[3];
                pTarget[3] = nLevel(dAlpha);
                for (int c = 0; c < 3; ++c)
                    pTarget[c] = dAlpha > 1e-3F ? nLevel(aSum[c] / dAlpha) : std::uint8_t{0};
            } else {
                for (int c = 0; c < nChannels; ++c)
                    pTarget[c] = nLevel(aSum[c]);
            }
            pTarget += nChannels;
        }
        pWeight += nTaps;
    }
}

void ResizeSmoothly(const ImageBuffer& aImage, ImageBuffer& aResult, bool bCubic)
{
    const ResizeWeights objAcross = objResizeWeights(aImage.width, aResult.width, bCubic);
    const ResizeWeights objDown = objResizeWeights(aImage.height, aResult.height, bCubic);
    const bool bWeighed = !bOpaque(aImage);
    const std::size_t nRow = nStride(aImage), nPixels = static_cast<std::size_t>(aImage.width);
    const auto fnAlong = aImage.channels == 1   ? AlongRow<1, false>
                         : aImage.channels == 3 ? AlongRow<3, false>
                         : bWeighed             ? AlongRow<4, true>
                                                : AlongRow<4, false>;

    EachRows(aResult.height, nStride(aResult) + nRow, [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<float> aSums(nRow);
        std::vector<std::int16_t> aWeights(objDown.nTaps + 1);
        std::vector<float> aSpread(aImage.channels == 3 ? 4 * nPixels : 0);
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            const std::int32_t lFrom = objDown.aFirst[static_cast<std::size_t>(y)];
            const float* pWeight = objDown.aWeights.data() + static_cast<std::size_t>(y) * objDown.nTaps;
            if (bWeighed) {
                std::fill(aSums.begin(), aSums.end(), 0.F);
                for (std::size_t k = 0; k < objDown.nTaps; ++k)
                    AddWeighedRow(pRow(aImage, lFrom + static_cast<std::int32_t>(k)), pWeight[k], nPixels,
                                  aSums.data());
            } else {
                SumRows({pRow(aImage, lFrom), nRow, pWeight, objDown.nTaps}, nRow, aWeights.data(),
                        aSums.data());
            }
            if (aImage.channels == 3)
                Spread(aSums.data(), nPixels, reinterpret_cast<Four*>(aSpread.data()));
            fnAlong(aImage.channels == 3 ? aSpread.data() : aSums.data(), objAcross, pRow(aResult, y));
        }
    });
}

}  // namespace

bool Resize(ImageBuffer& aImage, std::int32_t lWidth, std::int32_t lHeight, std::int32_t lInterpolation,
            Colour /*lBackground*/)
{
    lWidth = std::max(lWidth, 1);
    lHeight = std::max(lHeight, 1);
    if (lWidth == aImage.width && lHeight == aImage.height)
        return true;
    return bGuarded([&] {
        ImageBuffer aResult;
        if (!Allocate(aResult, static_cast<std::uint64_t>(lWidth), static_cast<std::uint64_t>(lHeight),
                      aImage.channels))
            return false;
        if (lInterpolation <= 0)
            ResizeNearest(aImage, aResult);
        else
            ResizeSmoothly(aImage, aResult, lInterpolation >= 2);
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

bool Reproduce(ImageBuffer& aImage, std::int32_t lCopies)
{
    const std::int32_t lCount = std::clamp(lCopies, 1, 32);
    if (lCount == 1)
        return true;
    return bGuarded([&] {
        ImageBuffer aCopy;
        if (!Allocate(aCopy, static_cast<std::uint64_t>((aImage.width + lCount - 1) / lCount),
                      static_cast<std::uint64_t>((aImage.height + lCount - 1) / lCount), aImage.channels))
            return false;
        ResizeSmoothly(aImage, aCopy, false);

        const auto fnStart = [lCount](std::int32_t lSide, std::int32_t i) {
            return static_cast<std::int32_t>(static_cast<std::int64_t>(lSide) * i / lCount);
        };
        const auto nChannels = static_cast<std::size_t>(aImage.channels);
        for (std::int32_t j = 0; j < lCount; ++j) {
            const std::int32_t lTop = fnStart(aImage.height, j), lBottom = fnStart(aImage.height, j + 1);
            for (std::int32_t y = lTop; y < lBottom; ++y) {
                for (std::int32_t i = 0; i < lCount; ++i) {
                    const auto nLeft = static_cast<std::size_t>(fnStart(aImage.width, i));
                    const auto nRight = static_cast<std::size_t>(fnStart(aImage.width, i + 1));
                    std::memcpy(pRow(aImage, y) + nLeft * nChannels, pRow(aCopy, y - lTop),
                                (nRight - nLeft) * nChannels);
                }
            }
        }
        return true;
    });
}

}  // namespace transforms
