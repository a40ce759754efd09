// Tests of memory management for pictures.
#include "src/platform/image/base/picture_memory.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

TEST(ResizeFresh, ProvidesWritableMemoryOfAnySize)
{
    for (const std::size_t byte_count : {0u, 1u, 4096u, 2u << 20, (5u << 20) + 3, 40u << 20}) {
        PixelBytes bytes = {1, 2, 3};
        ResizeFresh(bytes, byte_count);
        ASSERT_EQ(bytes.size(), byte_count);
        std::fill(bytes.begin(), bytes.end(), std::uint8_t{7});
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 7), static_cast<std::ptrdiff_t>(byte_count));
    }
}

#if !defined(__SANITIZE_ADDRESS__)  // ASan's allocator ignores hints and aborts when out of memory

TEST(ResizeFresh, KeepsBytesIfOutOfMemory)
{
    PixelBytes bytes = {1, 2, 3};
    EXPECT_ANY_THROW(ResizeFresh(bytes, std::numeric_limits<std::size_t>::max() / 4));
    EXPECT_EQ(bytes, (PixelBytes{1, 2, 3}));
}

static long PageFaults()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

TEST(KeepPictureMemory, ReusesMemoryForNextPicture)
{
    constexpr std::size_t kBytes = 48u << 20;
    constexpr long kPages = kBytes / 4096;
    KeepPictureMemory();
    const auto fill_and_free = [] {
        PixelBytes bytes;
        ResizeFresh(bytes, kBytes);
        std::fill(bytes.begin(), bytes.end(), std::uint8_t{7});
    };
    fill_and_free();

    const long before = PageFaults();
    fill_and_free();

    EXPECT_LT(PageFaults() - before, kPages / 10);
}

TEST(KeepPictureMemory, DoesNotGrowWithVaryingPictureSizes)
{
    constexpr std::size_t kMegabyte = 1 << 20;
    KeepPictureMemory();
    const std::size_t before = mallinfo2().arena;
    PixelBytes last;
    for (std::size_t i = 0; i < 100; ++i) {
        PixelBytes next;
        ResizeFresh(next, (10 + i * 7 % 20) * kMegabyte + i * 4099);
        last = std::move(next);  // at most two at a time, of up to 30 MB
    }

    EXPECT_LT(mallinfo2().arena, before + 130 * kMegabyte);
}

TEST(ExpectLibraryMemory, KeepsNextAllocationUsable)
{
    for (const std::size_t bytes : {0u, 1u, 30u << 20}) {
        ExpectLibraryMemory(bytes);
        auto* memory = static_cast<std::uint8_t*>(std::calloc(bytes + 1, 1));
        ASSERT_NE(memory, nullptr);
        EXPECT_EQ(std::count(memory, memory + bytes + 1, 0), static_cast<std::ptrdiff_t>(bytes + 1));
        std::free(memory);
    }
    ExpectLibraryMemory(std::numeric_limits<std::size_t>::max() / 2);  // refused without side effects
}

#endif
