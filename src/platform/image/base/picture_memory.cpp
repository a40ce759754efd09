// Asks the system for huge pages.
#include "src/platform/image/base/picture_memory.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <utility>

static constexpr std::size_t kPage = 4096;
static constexpr std::size_t kLargePage = 2 * 1024 * 1024;

// Asks for huge pages for the whole range, rounded outwards: the kernel uses one only if the hint covers all
// of it, and a picture's memory starts a little past a page boundary. A refusal is harmless.
static void AskForLargePages(const void* memory, std::size_t bytes)
{
    if (bytes < kLargePage)
        return;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t begin = address / kPage * kPage;
    const std::uintptr_t end = (address + bytes + kPage - 1) / kPage * kPage;
    madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

void ResizeFresh(PixelBytes& bytes, std::size_t byte_count)
{
    PixelBytes fresh;
    fresh.resize(byte_count);
    AskForLargePages(fresh.data(), byte_count);
    bytes = std::move(fresh);
}

void KeepPictureMemory()
{
    constexpr int kKept = 256 * 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, kKept);  // separate mappings are always returned to the system
    mallopt(M_TRIM_THRESHOLD, kKept);
}

void ExpectLibraryMemory(std::size_t bytes)
{
    if (bytes < 2 * kLargePage)
        return;
    // The library's next allocation reuses this freed block, and the hint outlives it.
    void* memory = std::malloc(bytes);
    AskForLargePages(memory, memory ? bytes : 0);
    std::free(memory);
}

void ReturnFreedMemory()
{
    malloc_trim(0);
}

std::uint8_t* ReleasePages(std::uint8_t* begin, std::uint8_t* end)
{
    const auto first_page =
        (reinterpret_cast<std::uintptr_t>(begin) + kLargePage - 1) / kLargePage * kLargePage;
    const auto end_page = reinterpret_cast<std::uintptr_t>(end) / kLargePage * kLargePage;
    if (first_page >= end_page ||
        madvise(reinterpret_cast<void*>(first_page), end_page - first_page, MADV_DONTNEED) != 0)
        return begin;
    return reinterpret_cast<std::uint8_t*>(end_page);
}
