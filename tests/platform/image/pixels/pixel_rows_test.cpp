// Tests of operations on rows of pixels.
#include "src/platform/image/pixels/pixel_rows.h"

#include <gtest/gtest.h>

#include <numeric>

namespace
{
std::vector<std::uint8_t> CountingBytes(std::size_t byte_count)
{
    std::vector<std::uint8_t> bytes(byte_count);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

// The scalar reference.
std::vector<std::uint8_t> SwapByReference(std::vector<std::uint8_t> bytes, std::size_t step)
{
    for (std::size_t i = 0; i + step <= bytes.size(); i += step)
        std::swap(bytes[i], bytes[i + 2]);
    return bytes;
}
}  // namespace

TEST(SwapRedAndBlue, MatchesReferenceForEveryLength)
{
    for (std::size_t pixels = 0; pixels < 50; ++pixels) {
        const auto three = CountingBytes(pixels * 3);
        std::vector<std::uint8_t> out(pixels * 3 + 1, 99);
        SwapRedAndBlue(three.data(), out.data(), pixels);
        EXPECT_EQ(out.back(), 99);
        out.pop_back();
        EXPECT_EQ(out, SwapByReference(three, 3));
        SwapRedAndBlue(out.data(), out.data(), pixels);
        EXPECT_EQ(out, three);

        const auto four = CountingBytes(pixels * 4);
        out.assign(pixels * 4 + 1, 99);
        SwapRedAndBlueOfFour(four.data(), out.data(), pixels);
        EXPECT_EQ(out.back(), 99);
        out.pop_back();
        EXPECT_EQ(out, SwapByReference(four, 4));
        SwapRedAndBlueOfFour(out.data(), out.data(), pixels);
        EXPECT_EQ(out, four);
    }
}
