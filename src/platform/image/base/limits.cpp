// Refuses pictures that are too large, before they are allocated.
#include "src/platform/image/base/limits.h"

#include <cstdlib>
#include <new>
#include <utility>

#include "src/platform/image/base/picture_memory.h"

static std::uint64_t nMegapixelLimit()
{
    const char* sSetting = std::getenv("VARNEL_MAX_MEGAPIXELS");
    const std::uint64_t nSetting = sSetting ? std::strtoul(sSetting, nullptr, 10) : 0;
    return nSetting >= 1 && nSetting <= 4096 ? nSetting : kMaxMegapixels;
}

bool bSizeAllowed(std::uint64_t nWidth, std::uint64_t nHeight)
{
    if (nWidth < 1 || nHeight < 1 || nWidth > kMaxSide || nHeight > kMaxSide)
        return false;
    return nWidth * nHeight <= nMegapixelLimit() * 1'000'000;
}

std::uint64_t nLargestFile()
{
    constexpr std::uint64_t kBytesPerPixel = 8;  // four channels of 16 bits
    constexpr std::uint64_t kBesidePixels = 64 << 20;
    return nMegapixelLimit() * 1'000'000 * kBytesPerPixel + kBesidePixels;
}

bool bAllocate(ImageBuffer& aImage, std::uint64_t nWidth, std::uint64_t nHeight, std::int32_t lChannels)
{
    if (!bSizeAllowed(nWidth, nHeight))
        return false;
    ImageBuffer aResult;
    aResult.width = static_cast<std::int32_t>(nWidth);
    aResult.height = static_cast<std::int32_t>(nHeight);
    aResult.channels = lChannels;
    try {
        ResizeFresh(aResult.bytes, nWidth * nHeight * static_cast<std::uint64_t>(lChannels));
    } catch (const std::bad_alloc&) {
        return false;
    }
    aImage = std::move(aResult);
    return true;
}
