// Tests of hue, lightness and saturation.
#include "src/platform/image/transforms/colour/hls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

struct Hls {
    double dHue = 0, dLightness = 0, dSaturation = 0;  // sixths of a turn, 0 to 1, 0 to 1
};

// The textbook's way there and back (Foley and van Dam), which the operations don't go.
static Hls objHls(double b, double g, double r)
{
    const double dMost = std::max({b, g, r}) / 255, dLeast = std::min({b, g, r}) / 255;
    Hls obj;
    obj.dLightness = (dMost + dLeast) / 2;
    const double dChroma = dMost - dLeast;
    if (dChroma == 0)
        return obj;
    obj.dSaturation = obj.dLightness <= 0.5 ? dChroma / (dMost + dLeast) : dChroma / (2 - dMost - dLeast);
    if (r >= g && r >= b)
        obj.dHue = (g - b) / 255 / dChroma;
    else if (g >= b)
        obj.dHue = 2 + (b - r) / 255 / dChroma;
    else
        obj.dHue = 4 + (r - g) / 255 / dChroma;
    return obj;
}

static double dChannel(const Hls& obj, double dOffset)
{
    const double dHigh = obj.dLightness <= 0.5
                             ? obj.dLightness * (1 + obj.dSaturation)
                             : obj.dLightness + obj.dSaturation - obj.dLightness * obj.dSaturation;
    const double dLow = 2 * obj.dLightness - dHigh;
    double dHue = std::fmod(obj.dHue + dOffset + 24, 6);
    if (dHue < 1)
        return 255 * (dLow + (dHigh - dLow) * dHue);
    if (dHue < 3)
        return 255 * dHigh;
    return 255 * (dHue < 4 ? dLow + (dHigh - dLow) * (4 - dHue) : dLow);
}

// Compares an operation with the textbook pixel by pixel. The few pixels next to black and white, whose
// saturation isn't kept, are left out on asking.
template <typename Operation, typename Change>
static void ExpectLikeTheTextbook(const Operation& fnOperation, const Change& fnChange, double dLeastRoom)
{
    for (const int lChannels : {3, 4}) {
        const ImageBuffer aBefore = aRandomPicture(67, 41, lChannels, 5);
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(fnOperation(aImage));
        ASSERT_TRUE(bSameAlpha(aImage, aBefore));
        for (int y = 0; y < 41; ++y)
            for (int x = 0; x < 67; ++x) {
                Hls obj = objHls(nValueAt(aBefore, x, y, 0), nValueAt(aBefore, x, y, 1),
                                 nValueAt(aBefore, x, y, 2));
                if (1 - std::fabs(2 * obj.dLightness - 1) < dLeastRoom)
                    continue;
                fnChange(obj);
                ASSERT_NEAR(nValueAt(aImage, x, y, 0), dChannel(obj, -2), 0.51) << x << " " << y;
                ASSERT_NEAR(nValueAt(aImage, x, y, 1), dChannel(obj, 0), 0.51) << x << " " << y;
                ASSERT_NEAR(nValueAt(aImage, x, y, 2), dChannel(obj, 2), 0.51) << x << " " << y;
            }
    }
}

TEST(Hue, TurnsRedThroughYellowToGreen)
{
    ImageBuffer aSixty = aPicture(1, 1, 3, {0, 0, 255}), aHundredTwenty = aSixty, aBack = aSixty;

    EXPECT_TRUE(Hue(aSixty, 60) && Hue(aHundredTwenty, 120) && Hue(aBack, -120));

    EXPECT_EQ(aSixty.bytes, (PixelBytes{0, 255, 255}));
    EXPECT_EQ(aHundredTwenty.bytes, (PixelBytes{0, 255, 0}));
    EXPECT_EQ(aBack.bytes, (PixelBytes{255, 0, 0}));
}

TEST(Hue, AgreesWithTheTextbookAtEveryAngle)
{
    for (const double dAngle : {1.0, 30.0, 59.5, 60.0, 119.0, 180.0, 233.0, 300.0, 359.0, -45.0, 1000.0})
        ExpectLikeTheTextbook([=](ImageBuffer& a) { return Hue(a, dAngle); },
                              [=](Hls& obj) { obj.dHue += std::fmod(dAngle, 360) / 60; }, 0);
}

TEST(Hue, ComesBackWithinOneLevel)
{
    for (const double dAngle : {0.3, 17.0, 60.0, 100.0, 181.0, 345.0, 1e9 + 1}) {
        const ImageBuffer aBefore = aRandomPicture(100, 50, 3);
        ImageBuffer aImage = aBefore;
        EXPECT_TRUE(Hue(aImage, dAngle) && Hue(aImage, -dAngle));
        for (std::size_t i = 0; i < aImage.bytes.size(); ++i)
            ASSERT_NEAR(aImage.bytes[i], aBefore.bytes[i], 1);
    }
}

TEST(Lightness, GoesAShareOfTheWayToBlackOrWhite)
{
    ImageBuffer aLighter = aPicture(2, 1, 3, {0, 0, 255, 100, 100, 100}), aDarker = aLighter;

    EXPECT_TRUE(Lightness(aLighter, 0.2) && Lightness(aDarker, -0.2));

    EXPECT_EQ(aLighter.bytes, (PixelBytes{51, 51, 255, 131, 131, 131}));
    EXPECT_EQ(aDarker.bytes, (PixelBytes{0, 0, 204, 80, 80, 80}));
}

TEST(Lightness, AgreesWithTheTextbook)
{
    for (const double dShare : {-0.9, -0.5, -0.1, 0.2, 0.5, 0.75})
        ExpectLikeTheTextbook([=](ImageBuffer& a) { return Lightness(a, dShare); },
                              [=](Hls& obj) {
                                  obj.dLightness = dShare > 0 ? obj.dLightness + (1 - obj.dLightness) * dShare
                                                              : obj.dLightness * (1 + dShare);
                              },
                              1.0 / 8);
}

TEST(Lightness, MakesNoSpeckleOfShadows)
{
    ImageBuffer aImage = aPicture(1, 1, 3, {1, 0, 2});

    EXPECT_TRUE(Lightness(aImage, 0.2));

    // With the saturation of 1 kept it would be 51, 0, 103.
    EXPECT_EQ(*std::min_element(aImage.bytes.begin(), aImage.bytes.end()), 49);
    EXPECT_EQ(*std::max_element(aImage.bytes.begin(), aImage.bytes.end()), 55);
}

TEST(Lightness, EndsAtBlackAndWhite)
{
    for (const int lChannels : {1, 3})
        for (const double dEnd : {1.0, 7.0, std::numeric_limits<double>::infinity()}) {
            ImageBuffer aWhite = aRandomPicture(20, 20, lChannels), aBlack = aWhite;
            EXPECT_TRUE(Lightness(aWhite, dEnd) && Lightness(aBlack, -dEnd));
            EXPECT_EQ(aWhite.bytes, PixelBytes(aWhite.bytes.size(), 255));
            EXPECT_EQ(aBlack.bytes, PixelBytes(aBlack.bytes.size(), 0));
        }
}

TEST(Saturation, AgreesWithTheTextbook)
{
    for (const double dShare : {-1.0, -0.5, -0.1, 0.2, 0.5, 0.9, 1.0})
        ExpectLikeTheTextbook([=](ImageBuffer& a) { return Saturation(a, dShare); },
                              [=](Hls& obj) {
                                  const double dGain = dShare < 1 ? 1 / (1 - dShare) : 1e9;
                                  obj.dSaturation = dShare < 0 ? obj.dSaturation * (1 + dShare)
                                                               : std::min(1.0, obj.dSaturation * dGain);
                              },
                              0);
}

TEST(Saturation, LeavesGreysGreyAtItsGreatest)
{
    ImageBuffer aImage = aWidened(aRandomPicture(16, 16, 1));
    const PixelBytes aBefore = aImage.bytes;
    EXPECT_TRUE(Saturation(aImage, 1));
    EXPECT_EQ(aImage.bytes, aBefore);
}

TEST(Desaturate, GivesTheMiddleOfTheGreatestAndTheLeastChannel)
{
    ImageBuffer aImage = aPicture(2, 1, 4, {10, 200, 100, 7, 255, 0, 0, 255});
    ImageBuffer aOther = aImage;

    EXPECT_TRUE(Desaturate(aImage) && Saturation(aOther, -1));

    EXPECT_EQ(aImage.bytes, (PixelBytes{105, 105, 105, 7, 128, 128, 128, 255}));
    EXPECT_EQ(aOther.bytes, aImage.bytes);
}

TEST(BalanceHLS, DoesAllThreeInOneStep)
{
    ExpectLikeTheTextbook([](ImageBuffer& a) { return BalanceHLS(a, 100, 0.25, -0.5); },
                          [](Hls& obj) {
                              obj.dHue += 100.0 / 60;
                              obj.dLightness += (1 - obj.dLightness) * 0.25;
                              obj.dSaturation /= 2;
                          },
                          1.0 / 8);
}

TEST(BalanceHLS, ChangesNothingAtNeutralValuesNorForNaN)
{
    const double dNaN = std::numeric_limits<double>::quiet_NaN();
    const double dInfinity = std::numeric_limits<double>::infinity();
    for (const int lChannels : kChannelCounts) {
        const ImageBuffer aBefore = aRandomPicture(33, 17, lChannels);
        ImageBuffer aImage = aBefore;
        EXPECT_TRUE(Hue(aImage, 0) && Hue(aImage, 360) && Hue(aImage, -720) && Hue(aImage, dInfinity) &&
                    Hue(aImage, dNaN) && Lightness(aImage, 0) && Lightness(aImage, dNaN) &&
                    Saturation(aImage, 0) && Saturation(aImage, dNaN) && BalanceHLS(aImage, 360, 0, 0));
        EXPECT_EQ(aImage.bytes, aBefore.bytes);
    }
}
