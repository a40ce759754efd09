// Brightness, contrast, gamma and other per-channel maps.
#include "src/platform/image/transforms/colour/levels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

// Blue 10, green 100, red 200, half transparent.
static ImageBuffer OnePixel()
{
    return TestPicture(1, 1, 4, {10, 100, 200, 128});
}

TEST(Brightness, AddsLevelToColourChannelsAndClamps)
{
    ImageBuffer lighter = OnePixel(), darker = OnePixel();

    EXPECT_TRUE(ApplyKernel(Brightness, lighter, 60));
    EXPECT_TRUE(ApplyKernel(Brightness, darker, -60));

    EXPECT_EQ(lighter.bytes, (PixelBytes{70, 160, 255, 128}));
    EXPECT_EQ(darker.bytes, (PixelBytes{0, 40, 140, 128}));
}

TEST(Brightness, ReachesBlackAndWhiteAtItsEnds)
{
    for (const std::int32_t level : {255, 256, 2147483647}) {
        ImageBuffer image = RandomPicture(5, 4, 3);
        EXPECT_TRUE(ApplyKernel(Brightness, image, level));
        EXPECT_EQ(image.bytes, PixelBytes(60, 255));
        EXPECT_TRUE(ApplyKernel(Brightness, image, -level));
        EXPECT_EQ(image.bytes, PixelBytes(60, 0));
    }
}

TEST(Contrast, StretchesValuesAwayFromMiddleGrey)
{
    ImageBuffer image = TestPicture(5, 1, 1, {0, 100, 127, 128, 140});

    EXPECT_TRUE(ApplyKernel(Contrast, image, 0.75));

    // 127.5 + 1.75 * (100 - 127.5) = 79.375 and so on
    EXPECT_EQ(image.bytes, (PixelBytes{0, 79, 127, 128, 149}));
}

TEST(Contrast, DoublesAtMost)
{
    ImageBuffer one = RandomPicture(20, 20, 3), huge = one;
    EXPECT_TRUE(ApplyKernel(Contrast, one, 1));
    EXPECT_TRUE(ApplyKernel(Contrast, huge, 1e300));
    EXPECT_EQ(one.bytes, huge.bytes);
}

TEST(Gamma, AppliesPowerFunction)
{
    ImageBuffer image = TestPicture(4, 1, 1, {0, 64, 128, 255});
    ImageBuffer lighter = image;

    EXPECT_TRUE(ApplyKernel(Gamma, image, 2));
    EXPECT_TRUE(ApplyKernel(Gamma, lighter, 0.5));

    EXPECT_EQ(image.bytes, (PixelBytes{0, 16, 64, 255}));
    EXPECT_EQ(lighter.bytes, (PixelBytes{0, 128, 181, 255}));
}

TEST(Gamma, MakesAllButBlackWhiteAtZero)
{
    for (const double gamma : {0.0, -1.0, -1e300}) {
        ImageBuffer image = TestPicture(3, 1, 1, {0, 1, 255});
        EXPECT_TRUE(ApplyKernel(Gamma, image, gamma));
        EXPECT_EQ(image.bytes, (PixelBytes{0, 255, 255}));
    }
}

TEST(Gamma, PreservesOrderOfLevels)
{
    for (const double gamma : {0.1, 0.5, 0.99, 1.01, 2.2, 30.0}) {
        ImageBuffer image = TestPicture(256, 1, 1, {});
        for (int n = 0; n < 256; ++n)
            image.bytes.push_back(static_cast<std::uint8_t>(n));
        EXPECT_TRUE(ApplyKernel(Gamma, image, gamma));
        EXPECT_TRUE(std::is_sorted(image.bytes.begin(), image.bytes.end()));
    }
}

TEST(ChannelLevels, ChangeOnlyTheirChannel)
{
    ImageBuffer red = OnePixel(), green = OnePixel(), blue = OnePixel();

    EXPECT_TRUE(ApplyKernel(Red, red, -50));
    EXPECT_TRUE(ApplyKernel(Green, green, 128));
    EXPECT_TRUE(ApplyKernel(Blue, blue, -50));

    EXPECT_EQ(red.bytes, (PixelBytes{10, 100, 150, 128}));
    EXPECT_EQ(green.bytes, (PixelBytes{10, 228, 200, 128}));
    EXPECT_EQ(blue.bytes, (PixelBytes{0, 100, 200, 128}));
}

TEST(ChannelLevels, GiveGreyPictureColour)
{
    ImageBuffer image = TestPicture(1, 1, 1, {100});
    EXPECT_TRUE(ApplyKernel(Green, image, 100));
    EXPECT_EQ(image.channels, 3);
    EXPECT_EQ(image.bytes, (PixelBytes{100, 200, 100}));
}

TEST(Colorize, KeepsGreyPictureGreyForEqualLevels)
{
    ImageBuffer image = TestPicture(1, 1, 1, {100});
    EXPECT_TRUE(ApplyKernel(Colorize, image, 51, 51, 51));
    EXPECT_EQ(image.bytes, (PixelBytes{20}));
}

TEST(Colorize, ScalesEachChannel)
{
    ImageBuffer image = OnePixel();
    EXPECT_TRUE(ApplyKernel(Colorize, image, 128, 255, 0));
    EXPECT_EQ(image.bytes, (PixelBytes{0, 100, 100, 128}));  // 200 * 128 / 255 = 100.4
}

TEST(Invert, GivesNegativeAndIsItsOwnInverse)
{
    ImageBuffer image = OnePixel();
    EXPECT_TRUE(ApplyKernel(Invert, image));
    EXPECT_EQ(image.bytes, (PixelBytes{245, 155, 55, 128}));
    EXPECT_TRUE(ApplyKernel(Invert, image));
    EXPECT_EQ(image.bytes, OnePixel().bytes);
}

TEST(Posterize, QuantisesToNearestLevel)
{
    ImageBuffer two = TestPicture(4, 1, 1, {0, 127, 128, 255});
    ImageBuffer five = TestPicture(6, 1, 1, {31, 32, 100, 160, 223, 224});

    EXPECT_TRUE(ApplyKernel(Posterize, two, 2));
    EXPECT_TRUE(ApplyKernel(Posterize, five, 5));

    EXPECT_EQ(two.bytes, (PixelBytes{0, 0, 255, 255}));
    EXPECT_EQ(five.bytes, (PixelBytes{0, 64, 128, 191, 191, 255}));
}

TEST(Posterize, LeavesRequestedLevelsAndIsIdempotent)
{
    for (const int levels : {2, 3, 7, 128, 255}) {
        ImageBuffer image = RandomPicture(100, 100, 1);
        EXPECT_TRUE(ApplyKernel(Posterize, image, levels));
        const PixelBytes once = image.bytes;
        EXPECT_TRUE(ApplyKernel(Posterize, image, levels));
        EXPECT_EQ(image.bytes, once);
        std::vector<bool> seen(256);
        for (const std::uint8_t n : once)
            seen[n] = true;
        EXPECT_EQ(std::count(seen.begin(), seen.end(), true), levels);
    }
}

TEST(Levels, ChangeNothingAtNeutralValues)
{
    for (const int channels : kChannelCounts) {
        const ImageBuffer before = RandomPicture(33, 17, channels);
        ImageBuffer image = before;
        EXPECT_TRUE(ApplyKernel(Brightness, image, 0) && ApplyKernel(Contrast, image, 0) &&
                    ApplyKernel(Contrast, image, -3) && ApplyKernel(Contrast, image, std::nan("")) &&
                    ApplyKernel(Gamma, image, 1) && ApplyKernel(Gamma, image, std::nan("")) &&
                    ApplyKernel(Red, image, 0) && ApplyKernel(Green, image, 0) &&
                    ApplyKernel(Blue, image, 0) && ApplyKernel(Colorize, image, 255, 255, 255) &&
                    ApplyKernel(Posterize, image, 256));
        EXPECT_EQ(image.bytes, before.bytes);
    }
}
