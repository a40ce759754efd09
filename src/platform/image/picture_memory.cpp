// Asks the system for large pages.
#include "src/platform/image/picture_memory.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstdint>
#include <utility>

static constexpr std::size_t kLargePage = 2 * 1024 * 1024;

void ResizeFresh(PixelBytes& aBytes, std::size_t nBytes)
{
    PixelBytes aFresh;
    aFresh.resize(nBytes);
    // Only whole large pages inside count; the rest stays as it comes.
    const auto nBegin =
        (reinterpret_cast<std::uintptr_t>(aFresh.data()) + kLargePage - 1) / kLargePage * kLargePage;
    const auto nEnd = (reinterpret_cast<std::uintptr_t>(aFresh.data()) + nBytes) / kLargePage * kLargePage;
    if (nBegin < nEnd)
        madvise(reinterpret_cast<void*>(nBegin), nEnd - nBegin,
                MADV_HUGEPAGE);  // a refusal costs nothing but time
    aBytes = std::move(aFresh);
}

void KeepPictureMemory()
{
    constexpr int kKept = 256 * 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, kKept);  // what is mapped on its own is always given back
    mallopt(M_TRIM_THRESHOLD, kKept);
}
