// Spreads rows over the cores, and moves pixels and backgrounds between pictures.
#include "src/platform/image/transforms/kernel_support.h"

#include <algorithm>
#include <new>
#include <utility>

#include "src/platform/image/limits.h"
#include "src/platform/image/parallel.h"
#include "src/platform/image/picture_memory.h"
#include "src/platform/image/transforms/intensity.h"

namespace transforms
{

void EachRows(std::int32_t lRows, std::size_t nRowBytes,
              const std::function<void(std::int32_t, std::int32_t)>& fnRows)
{
    constexpr std::size_t kWorthIt = 1 << 18;  // bytes; below, starting the others costs more than it saves
    if (lRows < 2 || nRowBytes * static_cast<std::size_t>(lRows) < kWorthIt || nCores() < 2) {
        fnRows(0, lRows);
        return;
    }
    // More parts than cores, since some rows take longer than others.
    const auto nRows = static_cast<std::size_t>(lRows), nParts = std::min(nRows, 4 * nCores());
    const auto fnPart = [&](std::size_t n) {
        fnRows(static_cast<std::int32_t>(nRows * n / nParts),
               static_cast<std::int32_t>(nRows * (n + 1) / nParts));
    };
    RunParts(nParts, std::ref(fnPart));
}

ImageBuffer aLike(const ImageBuffer& aImage)
{
    ImageBuffer aResult;
    ResizeFresh(aResult.aBytes, aImage.aBytes.size());
    aResult.lWidth = aImage.lWidth;
    aResult.lHeight = aImage.lHeight;
    aResult.lChannels = aImage.lChannels;
    return aResult;
}

void TakePixels(ImageBuffer& aImage, ImageBuffer&& aPixels)
{
    aImage.lWidth = aPixels.lWidth;
    aImage.lHeight = aPixels.lHeight;
    aImage.lChannels = aPixels.lChannels;
    aImage.aBytes = std::move(aPixels.aBytes);
}

bool bOpaque(const ImageBuffer& aImage)
{
    if (aImage.lChannels != 4)
        return true;
    for (std::int32_t y = 0; y < aImage.lHeight; ++y) {
        const std::uint8_t* pPixel = pRow(aImage, y);
        std::uint8_t nAll = 255;
        for (std::int32_t x = 0; x < aImage.lWidth; ++x)
            nAll &= pPixel[4 * static_cast<std::size_t>(x) + 3];
        if (nAll != 255)
            return false;
    }
    return true;
}

bool bGrey(Colour lColour)
{
    return (lColour & 255) == ((lColour >> 8) & 255) && (lColour & 255) == ((lColour >> 16) & 255);
}

PixelValue aBackground(const ImageBuffer& aImage, Colour lColour)
{
    const auto nRed = static_cast<std::uint8_t>(lColour & 255);
    const auto nGreen = static_cast<std::uint8_t>((lColour >> 8) & 255);
    const auto nBlue = static_cast<std::uint8_t>((lColour >> 16) & 255);
    if (aImage.lChannels == 1)
        return {nIntensity(nBlue, nGreen, nRed), 0, 0, 0};
    return {nBlue, nGreen, nRed, 255};
}

bool bWidened(const ImageBuffer& aGrey, ImageBuffer& aWide)
{
    if (!bAllocate(aWide, static_cast<std::uint64_t>(aGrey.lWidth), static_cast<std::uint64_t>(aGrey.lHeight),
                   3))
        return false;
    for (std::size_t i = 0; i < aGrey.aBytes.size(); ++i)
        aWide.aBytes[3 * i] = aWide.aBytes[3 * i + 1] = aWide.aBytes[3 * i + 2] = aGrey.aBytes[i];
    return true;
}

ImageBuffer aIntensity(const ImageBuffer& aImage)
{
    ImageBuffer aResult;
    aResult.lWidth = aImage.lWidth;
    aResult.lHeight = aImage.lHeight;
    aResult.lChannels = 1;
    if (aImage.lChannels == 1) {
        aResult.aBytes = aImage.aBytes;
        return aResult;
    }
    ResizeFresh(aResult.aBytes, aImage.aBytes.size() / static_cast<std::size_t>(aImage.lChannels));
    EachRows(aImage.lHeight, nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
        for (std::int32_t y = lFirst; y < lLast; ++y)
            IntensityRow(pRow(aImage, y), static_cast<std::size_t>(aImage.lWidth), aImage.lChannels,
                         pRow(aResult, y));
    });
    return aResult;
}

std::uint64_t nSeed(const ImageBuffer& aImage)
{
    std::uint64_t nHash = (static_cast<std::uint64_t>(aImage.lWidth) << 32) ^
                          static_cast<std::uint64_t>(aImage.lHeight) * 0x100000001B3U;
    const std::size_t nStep = std::max<std::size_t>(1, aImage.aBytes.size() / 4099);
    for (std::size_t i = 0; i < aImage.aBytes.size(); i += nStep)
        nHash = (nHash ^ aImage.aBytes[i]) * 0x100000001B3U;
    return nRandom(nHash);
}

}  // namespace transforms
