// Tests of stretching a picture's levels to the whole scale.
#include "src/platform/image/transforms/colour/auto_levels.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

TEST(Autocontrast, StretchesAllChannelsByTheSameMap)
{
    ImageBuffer aImage = aPicture(2, 1, 3, {50, 60, 70, 100, 120, 150});

    EXPECT_TRUE(Autocontrast(aImage));

    // 50 to 0 and 150 to 255
    EXPECT_EQ(aImage.bytes, (PixelBytes{0, 26, 51, 128, 179, 255}));
}

TEST(AutoLevel, StretchesEveryChannelByItsOwnAndLeavesAFlatOne)
{
    ImageBuffer aImage = aPicture(3, 1, 3, {50, 60, 7, 100, 60, 8, 150, 60, 9});

    EXPECT_TRUE(AutoLevel(aImage));

    EXPECT_EQ(aImage.bytes, (PixelBytes{0, 60, 0, 128, 60, 128, 255, 60, 255}));
}

TEST(AutoLevels, LeaveAPictureOfOneColourAndAreDoneInOneGo)
{
    ImageBuffer aFlat = aPicture(2, 1, 1, {77, 77});
    EXPECT_TRUE(Autocontrast(aFlat) && AutoLevel(aFlat));
    EXPECT_EQ(aFlat.bytes, (PixelBytes{77, 77}));

    for (const int lChannels : kChannelCounts) {
        ImageBuffer aImage = aRandomPicture(33, 17, lChannels);
        for (std::uint8_t& n : aImage.bytes)
            n = static_cast<std::uint8_t>(20 + n / 2);
        EXPECT_TRUE(Autocontrast(aImage) && AutoLevel(aImage));
        const PixelBytes aOnce = aImage.bytes;
        EXPECT_TRUE(Autocontrast(aImage) && AutoLevel(aImage));
        EXPECT_EQ(aImage.bytes, aOnce);
    }
}

TEST(AutoLevels, DoNotListenToPixelsThatAreNotSeen)
{
    const ImageBuffer aBefore = aPicture(3, 1, 4, {0, 0, 0, 0, 100, 100, 100, 1, 200, 200, 200, 255});
    ImageBuffer aContrast = aBefore, aLevel = aBefore;

    EXPECT_TRUE(Autocontrast(aContrast) && AutoLevel(aLevel));

    const PixelBytes aExpected{0, 0, 0, 0, 0, 0, 0, 1, 255, 255, 255, 255};
    EXPECT_EQ(aContrast.bytes, aExpected);
    EXPECT_EQ(aLevel.bytes, aExpected);

    ImageBuffer aUnseen = aPicture(2, 1, 4, {1, 2, 3, 0, 4, 5, 6, 0});
    EXPECT_TRUE(Autocontrast(aUnseen) && AutoLevel(aUnseen));
    EXPECT_EQ(aUnseen.bytes, (PixelBytes{1, 2, 3, 0, 4, 5, 6, 0}));
}

TEST(AutoLevels, CountEveryBandOfALargePicture)
{
    ImageBuffer aImage = aPicture(1000, 1000, 1, {});
    aImage.bytes.assign(1000000, 100);
    aImage.bytes.front() = 50;
    aImage.bytes.back() = 150;

    EXPECT_TRUE(Autocontrast(aImage));

    EXPECT_EQ(aImage.bytes.front(), 0);
    EXPECT_EQ(aImage.bytes[500000], 128);
    EXPECT_EQ(aImage.bytes.back(), 255);
}
