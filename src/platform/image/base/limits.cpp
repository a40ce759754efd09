// Refuses oversized pictures before memory is allocated for them.
#include "src/platform/image/base/limits.h"

#include <cstdlib>
#include <new>
#include <utility>

#include "src/platform/image/base/picture_memory.h"

static std::uint64_t MegapixelLimit()
{
    const char* text = std::getenv("VARNEL_MAX_MEGAPIXELS");
    const std::uint64_t megapixels = text ? std::strtoul(text, nullptr, 10) : 0;
    return megapixels >= 1 && megapixels <= 4096 ? megapixels : kMaxMegapixels;
}

bool IsSizeAllowed(std::uint64_t width, std::uint64_t height)
{
    if (width < 1 || height < 1 || width > kMaxSide || height > kMaxSide)
        return false;
    return width * height <= MegapixelLimit() * 1'000'000;
}

std::uint64_t LargestFile()
{
    constexpr std::uint64_t kBytesPerPixel = 8;  // four channels of 16 bits
    constexpr std::uint64_t kBesidePixels = 64 << 20;
    return MegapixelLimit() * 1'000'000 * kBytesPerPixel + kBesidePixels;
}

bool Allocate(ImageBuffer& image, std::uint64_t width, std::uint64_t height, std::int32_t channels)
{
    if (!IsSizeAllowed(width, height))
        return false;
    ImageBuffer result;
    result.width = static_cast<std::int32_t>(width);
    result.height = static_cast<std::int32_t>(height);
    result.channels = channels;
    try {
        ResizeFresh(result.bytes, width * height * static_cast<std::uint64_t>(channels));
    } catch (const std::bad_alloc&) {
        return false;
    }
    image = std::move(result);
    return true;
}
