// Moves rows of a picture in place, or leaves some out.
#include "src/platform/image/transforms/geometry/shift.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

static void Fill(std::uint8_t* pTarget, std::int64_t nPixels, std::int32_t lChannels,
                 const PixelValue& aValue)
{
    for (std::int64_t i = 0; i < nPixels; ++i, pTarget += lChannels)
        std::memcpy(pTarget, aValue.data(), static_cast<std::size_t>(lChannels));
}

bool Shift(ImageBuffer& aImage, std::int32_t lX, std::int32_t lY, Colour lBackground)
{
    if (lX == 0 && lY == 0)
        return true;
    if (aImage.channels == 1 && !bGrey(lBackground)) {
        ImageBuffer aWide;
        if (!bWidened(aImage, aWide))
            return false;
        TakePixels(aImage, std::move(aWide));
        aImage.icc_profile.clear();
    }
    const std::int64_t nWidth = aImage.width, nHeight = aImage.height, nChannels = aImage.channels;
    const std::int64_t nX = std::clamp<std::int64_t>(lX, -nWidth, nWidth);
    const std::int64_t nY = std::clamp<std::int64_t>(lY, -nHeight, nHeight);
    const PixelValue aFill = aBackground(aImage, lBackground);
    const std::int64_t nKept = nWidth - std::abs(nX);

    // Against the direction of the move, so that no row is overwritten before it was moved.
    for (std::int64_t i = 0; i < nHeight; ++i) {
        const std::int64_t y = nY > 0 ? nHeight - 1 - i : i;
        std::uint8_t* pTarget = pRow(aImage, static_cast<std::int32_t>(y));
        if (y - nY < 0 || y - nY >= nHeight) {
            Fill(pTarget, nWidth, aImage.channels, aFill);
            continue;
        }
        const std::uint8_t* pSource = pRow(aImage, static_cast<std::int32_t>(y - nY));
        std::memmove(pTarget + std::max<std::int64_t>(nX, 0) * nChannels,
                     pSource + std::max<std::int64_t>(-nX, 0) * nChannels,
                     static_cast<std::size_t>(nKept * nChannels));
        Fill(nX > 0 ? pTarget : pTarget + nKept * nChannels, nWidth - nKept, aImage.channels, aFill);
    }
    return true;
}

static bool bSame(const std::uint8_t* pOne, const std::uint8_t* pOther, std::int32_t lChannels)
{
    return (lChannels == 4 && pOne[3] == 0 && pOther[3] == 0) ||
           std::memcmp(pOne, pOther, static_cast<std::size_t>(lChannels)) == 0;
}

// How many pixels from x on, in steps of lStep, have the colour; at most lCount.
static std::int32_t lRun(const std::uint8_t* pPixel, std::int64_t nStep, std::int32_t lCount,
                         std::int32_t lChannels, const std::uint8_t* pColour)
{
    std::int32_t lFound = 0;
    while (lFound < lCount && bSame(pPixel + lFound * nStep, pColour, lChannels))
        ++lFound;
    return lFound;
}

static PixelValue aBorderColour(const ImageBuffer& aImage)
{
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::uint8_t* pTop = pRow(aImage, 0);
    const std::uint8_t* pBottom = pRow(aImage, aImage.height - 1);
    const std::uint8_t* aCorners[4] = {pTop, pTop + nStride(aImage) - nChannels, pBottom,
                                       pBottom + nStride(aImage) - nChannels};
    std::ptrdiff_t nBest = 0;
    const std::uint8_t* pBest = pTop;
    for (const std::uint8_t* pCorner : aCorners) {
        const auto nEqual = std::count_if(std::begin(aCorners), std::end(aCorners), [&](const auto* pOther) {
            return bSame(pCorner, pOther, aImage.channels);
        });
        if (nEqual > nBest) {
            nBest = nEqual;
            pBest = pCorner;
        }
    }
    PixelValue aColour{};
    std::memcpy(aColour.data(), pBest, nChannels);
    return aColour;
}

bool Autocrop(ImageBuffer& aImage)
{
    if (aImage.width < 1 || aImage.height < 1)
        return true;
    const PixelValue aColour = aBorderColour(aImage);
    const std::int32_t lWidth = aImage.width, lChannels = aImage.channels;
    const auto fnWholeRow = [&](std::int32_t y) {
        return lRun(pRow(aImage, y), lChannels, lWidth, lChannels, aColour.data()) == lWidth;
    };
    std::int32_t lTop = 0, lBottom = aImage.height;
    while (lTop < lBottom && fnWholeRow(lTop))
        ++lTop;
    if (lTop == lBottom)
        return true;
    while (fnWholeRow(lBottom - 1))
        --lBottom;

    std::int32_t lLeft = lWidth, lRight = lWidth;  // counted inwards from their borders
    for (std::int32_t y = lTop; y < lBottom; ++y) {
        const std::uint8_t* pFirst = pRow(aImage, y);
        lLeft = lRun(pFirst, lChannels, lLeft, lChannels, aColour.data());
        lRight = lRun(pFirst + nStride(aImage) - lChannels, -lChannels, lRight, lChannels, aColour.data());
    }
    const std::int32_t lNewWidth = lWidth - lLeft - lRight, lNewHeight = lBottom - lTop;
    if (lNewWidth == lWidth && lNewHeight == aImage.height)
        return true;

    ImageBuffer aCut;
    if (!Allocate(aCut, static_cast<std::uint64_t>(lNewWidth), static_cast<std::uint64_t>(lNewHeight),
                  lChannels))
        return false;
    for (std::int32_t y = 0; y < lNewHeight; ++y)
        std::memcpy(pRow(aCut, y), pRow(aImage, lTop + y) + static_cast<std::int64_t>(lLeft) * lChannels,
                    nStride(aCut));
    TakePixels(aImage, std::move(aCut));
    return true;
}

}  // namespace transforms
