// Asks the system for large pages.
#include "src/platform/image/base/picture_memory.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <utility>

static constexpr std::size_t kPage = 4096;
static constexpr std::size_t kLargePage = 2 * 1024 * 1024;

// Asks for large pages for every page that the bytes touch. One is taken only where the hint covers all of
// it, and the memory of pictures begins a little behind a large page's beginning. A refusal costs nothing but
// time.
static void AskForLargePages(const void* pMemory, std::size_t nBytes)
{
    if (nBytes < kLargePage)
        return;
    const auto nMemory = reinterpret_cast<std::uintptr_t>(pMemory);
    const std::uintptr_t nBegin = nMemory / kPage * kPage;
    const std::uintptr_t nEnd = (nMemory + nBytes + kPage - 1) / kPage * kPage;
    madvise(reinterpret_cast<void*>(nBegin), nEnd - nBegin, MADV_HUGEPAGE);
}

void ResizeFresh(PixelBytes& aBytes, std::size_t nBytes)
{
    PixelBytes aFresh;
    aFresh.resize(nBytes);
    AskForLargePages(aFresh.data(), nBytes);
    aBytes = std::move(aFresh);
}

void KeepPictureMemory()
{
    constexpr int kKept = 256 * 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, kKept);  // what is mapped on its own is always given back
    mallopt(M_TRIM_THRESHOLD, kKept);
}

void ExpectLibraryMemory(std::size_t nBytes)
{
    if (nBytes < 2 * kLargePage)
        return;
    // What is freed here is what the library gets next: the request outlives the block.
    void* pMemory = std::malloc(nBytes);
    AskForLargePages(pMemory, pMemory ? nBytes : 0);
    std::free(pMemory);
}

std::uint8_t* pGivenBack(std::uint8_t* pBegin, std::uint8_t* pEnd)
{
    const auto nBegin = (reinterpret_cast<std::uintptr_t>(pBegin) + kLargePage - 1) / kLargePage * kLargePage;
    const auto nEnd = reinterpret_cast<std::uintptr_t>(pEnd) / kLargePage * kLargePage;
    if (nBegin >= nEnd || madvise(reinterpret_cast<void*>(nBegin), nEnd - nBegin, MADV_DONTNEED) != 0)
        return pBegin;
    return reinterpret_cast<std::uint8_t*>(nEnd);
}
