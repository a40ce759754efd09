// Tests of turning pictures upright.
#include "src/platform/image/pixels/orientation.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/image_tools.h"

// What each orientation means, pixel by pixel: the source place of target pixel (x, y) of a W by H source.
static ImageBuffer aTurnedSlowly(const ImageBuffer& aSource, int lOrientation)
{
    const bool bQuarter = lOrientation >= 5;
    ImageBuffer aResult = aSource;
    aResult.width = bQuarter ? aSource.height : aSource.width;
    aResult.height = bQuarter ? aSource.width : aSource.height;
    const int W = aSource.width, H = aSource.height, C = aSource.channels;
    for (int y = 0; y < aResult.height; ++y)
        for (int x = 0; x < aResult.width; ++x) {
            int sx = bQuarter ? y : x;
            int sy = bQuarter ? x : y;
            if (lOrientation == 2 || lOrientation == 3 || lOrientation == 7 || lOrientation == 8)
                sx = W - 1 - sx;
            if (lOrientation == 3 || lOrientation == 4 || lOrientation == 6 || lOrientation == 7)
                sy = H - 1 - sy;
            for (int c = 0; c < C; ++c)
                aResult.bytes[static_cast<std::size_t>((y * aResult.width + x) * C + c)] =
                    aSource.bytes[static_cast<std::size_t>((sy * W + sx) * C + c)];
        }
    return aResult;
}

TEST(ApplyOrientation, MovesEveryPixelToItsPlaceForAllEightAndAllChannelCounts)
{
    for (const int lChannels : {1, 3, 4})
        for (int lOrientation = 1; lOrientation <= 8; ++lOrientation)
            for (const auto& [W, H] : {std::pair{1, 1}, {1, 7}, {67, 1}, {33, 64}, {100, 37}}) {
                const ImageBuffer aSource = aPattern(W, H, lChannels);
                ImageBuffer aImage = aSource;
                ApplyOrientation(aImage, lOrientation);
                EXPECT_EQ(objDifference(aImage, aTurnedSlowly(aSource, lOrientation)).lGreatest, 0)
                    << lOrientation << " " << W << "x" << H << " " << lChannels;
            }
}

TEST(ApplyOrientation, PutsTheFirstPixelWhereTheNumberSays)
{
    ImageBuffer aImage;
    aImage.width = 3;
    aImage.height = 2;
    aImage.channels = 1;
    aImage.bytes = {1, 2, 3, 4, 5, 6};

    ApplyOrientation(aImage, 6);

    EXPECT_EQ(aImage.width, 2);
    EXPECT_EQ(aImage.height, 3);
    EXPECT_EQ(aImage.bytes, (PixelBytes{4, 1, 5, 2, 6, 3}));
}

TEST(ApplyOrientation, ExchangesTheResolutionsForQuarterTurnsOnly)
{
    ImageBuffer aImage = aPattern(4, 4, 3);
    aImage.dots_per_inch_x = 100;
    aImage.dots_per_inch_y = 200;

    ApplyOrientation(aImage, 3);
    EXPECT_EQ(aImage.dots_per_inch_x, 100);
    ApplyOrientation(aImage, 8);
    EXPECT_EQ(aImage.dots_per_inch_x, 200);
    EXPECT_EQ(aImage.dots_per_inch_y, 100);
}

TEST(ApplyOrientation, LeavesAPictureAloneForANumberThatIsNone)
{
    const ImageBuffer aSource = aPattern(5, 3, 3);
    for (const int lOrientation : {-1, 0, 1, 9, 65536}) {
        ImageBuffer aImage = aSource;
        ApplyOrientation(aImage, lOrientation);
        EXPECT_EQ(objDifference(aImage, aSource).lGreatest, 0);
    }
}
