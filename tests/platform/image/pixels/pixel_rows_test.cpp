// Tests of the small steps on rows of pixels.
#include "src/platform/image/pixels/pixel_rows.h"

#include <gtest/gtest.h>

#include <numeric>

namespace
{
std::vector<std::uint8_t> aNumbered(std::size_t nBytes)
{
    std::vector<std::uint8_t> aBytes(nBytes);
    std::iota(aBytes.begin(), aBytes.end(), std::uint8_t{1});
    return aBytes;
}

// The same by the plain rule.
std::vector<std::uint8_t> aSwapped(std::vector<std::uint8_t> aBytes, std::size_t nStep)
{
    for (std::size_t i = 0; i + nStep <= aBytes.size(); i += nStep)
        std::swap(aBytes[i], aBytes[i + 2]);
    return aBytes;
}
}  // namespace

TEST(SwapRedAndBlue, ExchangesThemInPlaceAndOtherwiseForEveryLength)
{
    for (std::size_t nPixels = 0; nPixels < 50; ++nPixels) {
        const auto aThree = aNumbered(nPixels * 3);
        std::vector<std::uint8_t> aOut(nPixels * 3 + 1, 99);
        SwapRedAndBlue(aThree.data(), aOut.data(), nPixels);
        EXPECT_EQ(aOut.back(), 99);
        aOut.pop_back();
        EXPECT_EQ(aOut, aSwapped(aThree, 3));
        SwapRedAndBlue(aOut.data(), aOut.data(), nPixels);
        EXPECT_EQ(aOut, aThree);

        const auto aFour = aNumbered(nPixels * 4);
        aOut.assign(nPixels * 4 + 1, 99);
        SwapRedAndBlueOfFour(aFour.data(), aOut.data(), nPixels);
        EXPECT_EQ(aOut.back(), 99);
        aOut.pop_back();
        EXPECT_EQ(aOut, aSwapped(aFour, 4));
        SwapRedAndBlueOfFour(aOut.data(), aOut.data(), nPixels);
        EXPECT_EQ(aOut, aFour);
    }
}
