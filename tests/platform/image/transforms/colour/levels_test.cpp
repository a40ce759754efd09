// Tests of brightness, contrast, gamma and the other operations on single channels.
#include "src/platform/image/transforms/colour/levels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

// Blue 10, green 100, red 200, half transparent.
static ImageBuffer aOnePixel()
{
    return aPicture(1, 1, 4, {10, 100, 200, 128});
}

TEST(Brightness, AddsTheLevelToEveryColourChannelAndStopsAtTheEnds)
{
    ImageBuffer aLighter = aOnePixel(), aDarker = aOnePixel();

    EXPECT_TRUE(Brightness(aLighter, 60));
    EXPECT_TRUE(Brightness(aDarker, -60));

    EXPECT_EQ(aLighter.bytes, (PixelBytes{70, 160, 255, 128}));
    EXPECT_EQ(aDarker.bytes, (PixelBytes{0, 40, 140, 128}));
}

TEST(Brightness, MakesAllBlackOrWhiteAtItsEndsAndBeyond)
{
    for (const std::int32_t lLevel : {255, 256, 2147483647}) {
        ImageBuffer aImage = aRandomPicture(5, 4, 3);
        EXPECT_TRUE(Brightness(aImage, lLevel));
        EXPECT_EQ(aImage.bytes, PixelBytes(60, 255));
        EXPECT_TRUE(Brightness(aImage, -lLevel));
        EXPECT_EQ(aImage.bytes, PixelBytes(60, 0));
    }
}

TEST(Contrast, StretchesTheValuesAwayFromTheMiddle)
{
    ImageBuffer aImage = aPicture(5, 1, 1, {0, 100, 127, 128, 140});

    EXPECT_TRUE(Contrast(aImage, 0.75));

    // 127.5 + 1.75 * (100 - 127.5) = 79.375 and so on
    EXPECT_EQ(aImage.bytes, (PixelBytes{0, 79, 127, 128, 149}));
}

TEST(Contrast, DoublesAtMostHoweverLargeTheNumber)
{
    ImageBuffer aOne = aRandomPicture(20, 20, 3), aHuge = aOne;
    EXPECT_TRUE(Contrast(aOne, 1));
    EXPECT_TRUE(Contrast(aHuge, 1e300));
    EXPECT_EQ(aOne.bytes, aHuge.bytes);
}

TEST(Gamma, RaisesTheShareOfWhiteToItsPower)
{
    ImageBuffer aImage = aPicture(4, 1, 1, {0, 64, 128, 255});
    ImageBuffer aLighter = aImage;

    EXPECT_TRUE(Gamma(aImage, 2));
    EXPECT_TRUE(Gamma(aLighter, 0.5));

    EXPECT_EQ(aImage.bytes, (PixelBytes{0, 16, 64, 255}));
    EXPECT_EQ(aLighter.bytes, (PixelBytes{0, 128, 181, 255}));
}

TEST(Gamma, LeavesBlackBlackAndMakesTheRestWhiteAtNaughtOrBelow)
{
    for (const double dGamma : {0.0, -1.0, -1e300}) {
        ImageBuffer aImage = aPicture(3, 1, 1, {0, 1, 255});
        EXPECT_TRUE(Gamma(aImage, dGamma));
        EXPECT_EQ(aImage.bytes, (PixelBytes{0, 255, 255}));
    }
}

TEST(Gamma, NeverChangesTheOrderOfLevels)
{
    for (const double dGamma : {0.1, 0.5, 0.99, 1.01, 2.2, 30.0}) {
        ImageBuffer aImage = aPicture(256, 1, 1, {});
        for (int n = 0; n < 256; ++n)
            aImage.bytes.push_back(static_cast<std::uint8_t>(n));
        EXPECT_TRUE(Gamma(aImage, dGamma));
        EXPECT_TRUE(std::is_sorted(aImage.bytes.begin(), aImage.bytes.end()));
    }
}

TEST(ChannelLevels, MoveTheirOwnChannelOnly)
{
    ImageBuffer aRed = aOnePixel(), aGreen = aOnePixel(), aBlue = aOnePixel();

    EXPECT_TRUE(Red(aRed, -50));
    EXPECT_TRUE(Green(aGreen, 128));
    EXPECT_TRUE(Blue(aBlue, -50));

    EXPECT_EQ(aRed.bytes, (PixelBytes{10, 100, 150, 128}));
    EXPECT_EQ(aGreen.bytes, (PixelBytes{10, 228, 200, 128}));
    EXPECT_EQ(aBlue.bytes, (PixelBytes{0, 100, 200, 128}));
}

TEST(ChannelLevels, MoveAGreyPictureByTheirShareOfTheIntensity)
{
    ImageBuffer aImage = aPicture(1, 1, 1, {100});
    EXPECT_TRUE(Green(aImage, 100));
    EXPECT_EQ(aImage.bytes, (PixelBytes{159}));  // 100 + 0.587 * 100
}

TEST(Colorize, LeavesOfEachComponentTheShareGiven)
{
    ImageBuffer aImage = aOnePixel();
    EXPECT_TRUE(Colorize(aImage, 128, 255, 0));
    EXPECT_EQ(aImage.bytes, (PixelBytes{0, 100, 100, 128}));  // 200 * 128 / 255 = 100.4
}

TEST(Invert, GivesTheNegativeAndTwiceThePicture)
{
    ImageBuffer aImage = aOnePixel();
    EXPECT_TRUE(Invert(aImage));
    EXPECT_EQ(aImage.bytes, (PixelBytes{245, 155, 55, 128}));
    EXPECT_TRUE(Invert(aImage));
    EXPECT_EQ(aImage.bytes, aOnePixel().bytes);
}

TEST(Posterize, TakesEveryValueToTheClosestOfTheLevels)
{
    ImageBuffer aTwo = aPicture(4, 1, 1, {0, 127, 128, 255});
    ImageBuffer aFive = aPicture(6, 1, 1, {31, 32, 100, 160, 223, 224});

    EXPECT_TRUE(Posterize(aTwo, 2));
    EXPECT_TRUE(Posterize(aFive, 5));

    EXPECT_EQ(aTwo.bytes, (PixelBytes{0, 0, 255, 255}));
    EXPECT_EQ(aFive.bytes, (PixelBytes{0, 64, 128, 191, 191, 255}));
}

TEST(Posterize, LeavesAsManyLevelsAsAskedForAndIsDoneInOneGo)
{
    for (const int lLevels : {2, 3, 7, 128, 255}) {
        ImageBuffer aImage = aRandomPicture(100, 100, 1);
        EXPECT_TRUE(Posterize(aImage, lLevels));
        const PixelBytes aOnce = aImage.bytes;
        EXPECT_TRUE(Posterize(aImage, lLevels));
        EXPECT_EQ(aImage.bytes, aOnce);
        std::vector<bool> aSeen(256);
        for (const std::uint8_t n : aOnce)
            aSeen[n] = true;
        EXPECT_EQ(std::count(aSeen.begin(), aSeen.end(), true), lLevels);
    }
}

TEST(Levels, ChangeNothingAtTheirNeutralValues)
{
    for (const int lChannels : kChannelCounts) {
        const ImageBuffer aBefore = aRandomPicture(33, 17, lChannels);
        ImageBuffer aImage = aBefore;
        EXPECT_TRUE(Brightness(aImage, 0) && Contrast(aImage, 0) && Contrast(aImage, -3) &&
                    Contrast(aImage, std::nan("")) && Gamma(aImage, 1) && Gamma(aImage, std::nan("")) &&
                    Red(aImage, 0) && Green(aImage, 0) && Blue(aImage, 0) &&
                    Colorize(aImage, 255, 255, 255) && Posterize(aImage, 256));
        EXPECT_EQ(aImage.bytes, aBefore.bytes);
    }
}
