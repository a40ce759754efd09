// Stretching levels to the full range.
#include "src/platform/image/transforms/colour/auto_levels.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

TEST(Autocontrast, StretchesAllChannelsAlike)
{
    ImageBuffer image = TestPicture(2, 1, 3, {50, 60, 70, 100, 120, 150});

    EXPECT_TRUE(ApplyKernel(Autocontrast, image));

    // 50 to 0 and 150 to 255
    EXPECT_EQ(image.bytes, (PixelBytes{0, 26, 51, 128, 179, 255}));
}

TEST(AutoLevel, StretchesChannelsSeparatelyAndKeepsFlatOne)
{
    ImageBuffer image = TestPicture(3, 1, 3, {50, 60, 7, 100, 60, 8, 150, 60, 9});

    EXPECT_TRUE(ApplyKernel(AutoLevel, image));

    EXPECT_EQ(image.bytes, (PixelBytes{0, 60, 0, 128, 60, 128, 255, 60, 255}));
}

TEST(AutoLevels, KeepPictureOfOneColourAndAreIdempotent)
{
    ImageBuffer flat = TestPicture(2, 1, 1, {77, 77});
    EXPECT_TRUE(ApplyKernel(Autocontrast, flat) && ApplyKernel(AutoLevel, flat));
    EXPECT_EQ(flat.bytes, (PixelBytes{77, 77}));

    for (const int channels : kChannelCounts) {
        ImageBuffer image = RandomPicture(33, 17, channels);
        for (std::uint8_t& n : image.bytes)
            n = static_cast<std::uint8_t>(20 + n / 2);
        EXPECT_TRUE(ApplyKernel(Autocontrast, image) && ApplyKernel(AutoLevel, image));
        const PixelBytes once = image.bytes;
        EXPECT_TRUE(ApplyKernel(Autocontrast, image) && ApplyKernel(AutoLevel, image));
        EXPECT_EQ(image.bytes, once);
    }
}

TEST(AutoLevels, IgnoreTransparentPixels)
{
    const ImageBuffer before = TestPicture(3, 1, 4, {0, 0, 0, 0, 100, 100, 100, 1, 200, 200, 200, 255});
    ImageBuffer contrast = before, level = before;

    EXPECT_TRUE(ApplyKernel(Autocontrast, contrast) && ApplyKernel(AutoLevel, level));

    const PixelBytes expected{0, 0, 0, 0, 0, 0, 0, 1, 255, 255, 255, 255};
    EXPECT_EQ(contrast.bytes, expected);
    EXPECT_EQ(level.bytes, expected);

    ImageBuffer unseen = TestPicture(2, 1, 4, {1, 2, 3, 0, 4, 5, 6, 0});
    EXPECT_TRUE(ApplyKernel(Autocontrast, unseen) && ApplyKernel(AutoLevel, unseen));
    EXPECT_EQ(unseen.bytes, (PixelBytes{1, 2, 3, 0, 4, 5, 6, 0}));
}

TEST(AutoLevels, CountAllBandsOfLargePicture)
{
    ImageBuffer image = TestPicture(1000, 1000, 1, {});
    image.bytes.assign(1000000, 100);
    image.bytes.front() = 50;
    image.bytes.back() = 150;

    EXPECT_TRUE(ApplyKernel(Autocontrast, image));

    EXPECT_EQ(image.bytes.front(), 0);
    EXPECT_EQ(image.bytes[500000], 128);
    EXPECT_EQ(image.bytes.back(), 255);
}
