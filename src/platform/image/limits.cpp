// Refuses pictures that are too large, before they are allocated.
#include "src/platform/image/limits.h"

#include <sys/mman.h>

#include <cstdlib>
#include <new>
#include <utility>

#include "src/platform/image/picture_memory.h"

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

// A large picture's memory is touched for the first time by its decoder, and with small pages the kernel's
// part of that costs more than the decoder's. A hint: what comes of it doesn't matter.
static void AskForLargePages(PixelBytes& aBytes)
{
    constexpr std::size_t kPage = 4096;
    constexpr std::size_t kLargePage = 2 << 20;
    if (aBytes.size() < 2 * kLargePage)
        return;
    const std::size_t nToPage = (kPage - reinterpret_cast<std::uintptr_t>(aBytes.data()) % kPage) % kPage;
    madvise(aBytes.data() + nToPage, (aBytes.size() - nToPage) / kPage * kPage, MADV_HUGEPAGE);
}

bool bAllocate(ImageBuffer& aImage, std::uint64_t nWidth, std::uint64_t nHeight, std::int32_t lChannels)
{
    if (!bSizeAllowed(nWidth, nHeight))
        return false;
    ImageBuffer aResult;
    aResult.lWidth = static_cast<std::int32_t>(nWidth);
    aResult.lHeight = static_cast<std::int32_t>(nHeight);
    aResult.lChannels = lChannels;
    try {
        ResizeFresh(aResult.aBytes, nWidth * nHeight * static_cast<std::uint64_t>(lChannels));
    } catch (const std::bad_alloc&) {
        return false;
    }
    AskForLargePages(aResult.aBytes);
    aImage = std::move(aResult);
    return true;
}
