// Moving a picture in its frame, and cutting its borders.
#include "src/platform/image/transforms/geometry/shift.h"

#include <algorithm>

#include "tests/platform/image/support/kernel_pictures.h"

TEST(Shift, MovesRightAndDown)
{
    ImageBuffer aImage = aGreyOf(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    ASSERT_TRUE(transforms::Shift(aImage, 1, 2, 0));
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 1, 2}));
}

TEST(Shift, MovesLeftAndUpByNegativeNumbers)
{
    ImageBuffer aImage = aGreyOf(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    ASSERT_TRUE(transforms::Shift(aImage, -1, -1, 0x090909));
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{5, 6, 9, 8, 9, 9, 9, 9, 9}));
}

TEST(Shift, ByNothingChangesNothingWhateverTheBackground)
{
    const ImageBuffer aBefore = aRandomPicture(5, 4, 1);
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::Shift(aImage, 0, 0, 255));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}

TEST(Shift, PutsEachPixelAtItsPlaceOrTheBackground)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        for (const std::int32_t lX : {-40, -3, -1, 0, 2, 33}) {
            for (const std::int32_t lY : {-50, -2, 1, 4, 19}) {
                const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
                ImageBuffer aImage = aBefore;
                ASSERT_TRUE(transforms::Shift(aImage, lX, lY, 0x777777));
                for (std::int32_t y = 0; y < lHeight; ++y)
                    for (std::int32_t x = 0; x < lWidth; ++x)
                        for (std::int32_t c = 0; c < lChannels; ++c) {
                            const bool bFrom =
                                x - lX >= 0 && x - lX < lWidth && y - lY >= 0 && y - lY < lHeight;
                            const int nFill = c == 3 ? 255 : 0x77;
                            ASSERT_EQ(nValueAt(aImage, x, y, c),
                                      bFrom ? nValueAt(aBefore, x - lX, y - lY, c) : nFill);
                        }
            }
        }
    }
}

TEST(Shift, BeyondTheFrameLeavesOnlyTheBackground)
{
    for (const std::int32_t lFar : {INT32_MIN, INT32_MAX, 32767}) {
        ImageBuffer aImage = aRandomPicture(5, 4, 1);
        ASSERT_TRUE(transforms::Shift(aImage, lFar, 1, 0x0000FF));
        EXPECT_EQ(aImage.channels, 3);
        for (std::size_t i = 0; i < aImage.bytes.size(); i += 3)
            ASSERT_TRUE(aImage.bytes[i] == 0 && aImage.bytes[i + 1] == 0 && aImage.bytes[i + 2] == 255);
    }
}

TEST(Autocrop, CutsTheBordersOfTheCornersColour)
{
    ImageBuffer aImage = aGreyOf(5, 4, {7, 7, 7, 7, 7,  //
                                        7, 7, 1, 7, 7,  //
                                        7, 2, 7, 7, 7,  //
                                        7, 7, 7, 7, 7});
    ASSERT_TRUE(transforms::Autocrop(aImage));
    EXPECT_EQ(aImage.width, 2);
    EXPECT_EQ(aImage.height, 2);
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{7, 1, 2, 7}));
}

TEST(Autocrop, TakesTheColourOfMostCorners)
{
    ImageBuffer aImage = aGreyOf(3, 3,
                                 {1, 7, 7,  //
                                  1, 2, 7,  //
                                  7, 7, 7});
    ASSERT_TRUE(transforms::Autocrop(aImage));
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{1, 7, 1, 2}));
}

TEST(Autocrop, LeavesAPictureOfOneColour)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        ImageBuffer aImage = aPlain(lWidth, lHeight, lChannels, 90);
        ASSERT_TRUE(transforms::Autocrop(aImage));
        EXPECT_TRUE(bEqual(aImage, aPlain(lWidth, lHeight, lChannels, 90)));
    }
}

TEST(Autocrop, LeavesAPictureWithoutABorder)
{
    const ImageBuffer aBefore = aGreyOf(2, 2, {1, 2, 3, 4});
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::Autocrop(aImage));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}

TEST(Autocrop, FindsAPictureInAnyFrame)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        const ImageBuffer aInside = aRandomOpaque(lWidth, lHeight, lChannels, 3);
        ImageBuffer aImage = aPlain(lWidth + 9, lHeight + 6, lChannels, 255);
        const auto nRow = static_cast<std::size_t>(lWidth * lChannels);
        for (std::int32_t y = 0; y < lHeight; ++y)
            std::copy_n(aInside.bytes.begin() + y * static_cast<std::ptrdiff_t>(nRow), nRow,
                        aImage.bytes.begin() + ((y + 2) * (lWidth + 9) + 4) * lChannels);
        aImage.dots_per_inch_x = 300;
        ASSERT_TRUE(transforms::Autocrop(aImage));
        EXPECT_TRUE(bEqual(aImage, aInside)) << lWidth << "x" << lHeight;
        EXPECT_EQ(aImage.dots_per_inch_x, 300);
    }
}

TEST(Autocrop, TakesTransparentPixelsForOneColour)
{
    ImageBuffer aImage = aRandomPicture(5, 5, 4);
    for (std::size_t i = 3; i < aImage.bytes.size(); i += 4)
        aImage.bytes[i] = 0;
    aImage.bytes[4 * 12 + 3] = 255;
    ASSERT_TRUE(transforms::Autocrop(aImage));
    EXPECT_EQ(aImage.width, 1);
    EXPECT_EQ(aImage.height, 1);
    EXPECT_EQ(nValueAt(aImage, 0, 0, 3), 255);
}
