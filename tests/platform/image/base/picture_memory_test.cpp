// Tests of the memory of pictures.
#include "src/platform/image/base/picture_memory.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

TEST(ResizeFresh, GivesMemoryOfAnySizeThatCanBeWrittenToItsEnd)
{
    for (const std::size_t nBytes : {0u, 1u, 4096u, 2u << 20, (5u << 20) + 3, 40u << 20}) {
        PixelBytes aBytes = {1, 2, 3};
        ResizeFresh(aBytes, nBytes);
        ASSERT_EQ(aBytes.size(), nBytes);
        std::fill(aBytes.begin(), aBytes.end(), std::uint8_t{7});
        EXPECT_EQ(std::count(aBytes.begin(), aBytes.end(), 7), static_cast<std::ptrdiff_t>(nBytes));
    }
}

#if !defined( \
    __SANITIZE_ADDRESS__)  // its own allocator takes no advice, and ends the process when it has no memory

TEST(ResizeFresh, LeavesTheBytesWhenThereIsNoMemory)
{
    PixelBytes aBytes = {1, 2, 3};
    EXPECT_ANY_THROW(ResizeFresh(aBytes, std::numeric_limits<std::size_t>::max() / 4));
    EXPECT_EQ(aBytes, (PixelBytes{1, 2, 3}));
}

static long lPageFaults()
{
    rusage objUsage{};
    getrusage(RUSAGE_SELF, &objUsage);
    return objUsage.ru_minflt;
}

TEST(KeepPictureMemory, LetsTheNextPictureComeWithoutAskingTheSystem)
{
    constexpr std::size_t kBytes = 48u << 20;
    constexpr long kPages = kBytes / 4096;
    KeepPictureMemory();
    const auto FillAndFree = [] {
        PixelBytes aBytes;
        ResizeFresh(aBytes, kBytes);
        std::fill(aBytes.begin(), aBytes.end(), std::uint8_t{7});
    };
    FillAndFree();

    const long lBefore = lPageFaults();
    FillAndFree();

    EXPECT_LT(lPageFaults() - lBefore, kPages / 10);
}

TEST(KeepPictureMemory, TakesNoMoreWithEachPictureOfAnotherSize)
{
    constexpr std::size_t kMegabyte = 1 << 20;
    KeepPictureMemory();
    const std::size_t nBefore = mallinfo2().arena;
    PixelBytes aLast;
    for (std::size_t i = 0; i < 100; ++i) {
        PixelBytes aNext;
        ResizeFresh(aNext, (10 + i * 7 % 20) * kMegabyte + i * 4099);
        aLast = std::move(aNext);  // two are there at a time, of 30 MB at most
    }

    EXPECT_LT(mallinfo2().arena, nBefore + 130 * kMegabyte);
}

TEST(ExpectLibraryMemory, LeavesWhatIsAllocatedNextUsable)
{
    for (const std::size_t nBytes : {0u, 1u, 30u << 20}) {
        ExpectLibraryMemory(nBytes);
        auto* pMemory = static_cast<std::uint8_t*>(std::calloc(nBytes + 1, 1));
        ASSERT_NE(pMemory, nullptr);
        EXPECT_EQ(std::count(pMemory, pMemory + nBytes + 1, 0), static_cast<std::ptrdiff_t>(nBytes + 1));
        std::free(pMemory);
    }
    ExpectLibraryMemory(std::numeric_limits<std::size_t>::max() / 2);  // refused, and no harm done
}

#endif
