// Shift and autocrop.
#include "src/platform/image/transforms/geometry/shift.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/platform/image/support/kernel_pictures.h"

TEST(Shift, MovesRightAndDown)
{
    ImageBuffer image = GreyOf(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    ASSERT_TRUE(ApplyKernel(transforms::Shift, image, 1, 2, 0));
    EXPECT_EQ(BytesOf(image), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 1, 2}));
}

TEST(Shift, MovesLeftAndUpForNegativeNumbers)
{
    ImageBuffer image = GreyOf(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    ASSERT_TRUE(ApplyKernel(transforms::Shift, image, -1, -1, 0x090909));
    EXPECT_EQ(BytesOf(image), (std::vector<int>{5, 6, 9, 8, 9, 9, 9, 9, 9}));
}

TEST(Shift, ByZeroChangesNothing)
{
    const ImageBuffer before = RandomPicture(5, 4, 1);
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::Shift, image, 0, 0, 255));
    EXPECT_TRUE(Equal(image, before));
}

TEST(Shift, MovesPixelsAndFillsWithBackground)
{
    for (const auto& [width, height, channels] : Shapes()) {
        for (const std::int32_t shift_x : {-40, -3, -1, 0, 2, 33}) {
            for (const std::int32_t shift_y : {-50, -2, 1, 4, 19}) {
                const ImageBuffer before = RandomPicture(width, height, channels);
                ImageBuffer image = before;
                ASSERT_TRUE(ApplyKernel(transforms::Shift, image, shift_x, shift_y, 0x777777));
                for (std::int32_t y = 0; y < height; ++y)
                    for (std::int32_t x = 0; x < width; ++x)
                        for (std::int32_t c = 0; c < channels; ++c) {
                            const bool from = x - shift_x >= 0 && x - shift_x < width && y - shift_y >= 0 &&
                                              y - shift_y < height;
                            const int fill = c == 3 ? 255 : 0x77;
                            ASSERT_EQ(ValueAt(image, x, y, c),
                                      from ? ValueAt(before, x - shift_x, y - shift_y, c) : fill);
                        }
            }
        }
    }
}

TEST(Shift, BeyondFrameLeavesOnlyBackground)
{
    for (const std::int32_t far : {INT32_MIN, INT32_MAX, 32767}) {
        ImageBuffer image = RandomPicture(5, 4, 1);
        ASSERT_TRUE(ApplyKernel(transforms::Shift, image, far, 1, 0x0000FF));
        EXPECT_EQ(image.channels, 3);
        for (std::size_t i = 0; i < image.bytes.size(); i += 3)
            ASSERT_TRUE(image.bytes[i] == 0 && image.bytes[i + 1] == 0 && image.bytes[i + 2] == 255);
    }
}

TEST(Autocrop, CropsBordersOfCornerColour)
{
    ImageBuffer image = GreyOf(5, 4, {7, 7, 7, 7, 7,  //
                                      7, 7, 1, 7, 7,  //
                                      7, 2, 7, 7, 7,  //
                                      7, 7, 7, 7, 7});
    ASSERT_TRUE(ApplyKernel(transforms::Autocrop, image));
    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(BytesOf(image), (std::vector<int>{7, 1, 2, 7}));
}

TEST(Autocrop, UsesMostFrequentCornerColour)
{
    ImageBuffer image = GreyOf(3, 3,
                               {1, 7, 7,  //
                                1, 2, 7,  //
                                7, 7, 7});
    ASSERT_TRUE(ApplyKernel(transforms::Autocrop, image));
    EXPECT_EQ(BytesOf(image), (std::vector<int>{1, 7, 1, 2}));
}

TEST(Autocrop, LeavesPictureOfOneColour)
{
    for (const auto& [width, height, channels] : Shapes()) {
        ImageBuffer image = Plain(width, height, channels, 90);
        ASSERT_TRUE(ApplyKernel(transforms::Autocrop, image));
        EXPECT_TRUE(Equal(image, Plain(width, height, channels, 90)));
    }
}

TEST(Autocrop, LeavesPictureWithoutBorder)
{
    const ImageBuffer before = GreyOf(2, 2, {1, 2, 3, 4});
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::Autocrop, image));
    EXPECT_TRUE(Equal(image, before));
}

TEST(Autocrop, FindsPictureInAnyFrame)
{
    for (const auto& [width, height, channels] : Shapes()) {
        const ImageBuffer inside = RandomOpaque(width, height, channels, 3);
        ImageBuffer image = Plain(width + 9, height + 6, channels, 255);
        const auto row = static_cast<std::size_t>(width * channels);
        for (std::int32_t y = 0; y < height; ++y)
            std::copy_n(inside.bytes.begin() + y * static_cast<std::ptrdiff_t>(row), row,
                        image.bytes.begin() + ((y + 2) * (width + 9) + 4) * channels);
        image.dots_per_inch_x = 300;
        ASSERT_TRUE(ApplyKernel(transforms::Autocrop, image));
        EXPECT_TRUE(Equal(image, inside)) << width << "x" << height;
        EXPECT_EQ(image.dots_per_inch_x, 300);
    }
}

TEST(Autocrop, TreatsTransparentPixelsAsOneColour)
{
    ImageBuffer image = RandomPicture(5, 5, 4);
    for (std::size_t i = 3; i < image.bytes.size(); i += 4)
        image.bytes[i] = 0;
    image.bytes[4 * 12 + 3] = 255;
    ASSERT_TRUE(ApplyKernel(transforms::Autocrop, image));
    EXPECT_EQ(image.width, 1);
    EXPECT_EQ(image.height, 1);
    EXPECT_EQ(ValueAt(image, 0, 0, 3), 255);
}
