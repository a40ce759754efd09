// Tests of the memory of pictures.
#include "src/platform/image/picture_memory.h"

#include <gtest/gtest.h>

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

TEST(ResizeFresh, LeavesTheBytesWhenThereIsNoMemory)
{
    PixelBytes aBytes = {1, 2, 3};
    EXPECT_ANY_THROW(ResizeFresh(aBytes, std::numeric_limits<std::size_t>::max() / 4));
    EXPECT_EQ(aBytes, (PixelBytes{1, 2, 3}));
}
