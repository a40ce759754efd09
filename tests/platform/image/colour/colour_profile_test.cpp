// Tests of the colour conversion.
#include "src/platform/image/colour/colour_profile.h"

#include <gtest/gtest.h>
#include <lcms2.h>

#include <algorithm>
#include <array>

#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/profiles.h"

static ImageBuffer aColours(std::initializer_list<std::array<std::uint8_t, 3>> aBgr,
                            std::vector<std::uint8_t> aProfile)
{
    ImageBuffer aImage;
    aImage.width = static_cast<std::int32_t>(aBgr.size());
    aImage.height = 1;
    aImage.channels = 3;
    for (const auto& aColour : aBgr)
        aImage.bytes.insert(aImage.bytes.end(), aColour.begin(), aColour.end());
    aImage.icc_profile = std::move(aProfile);
    return aImage;
}

TEST(ProfileFits, AsksForTheColourSpaceOfTheChannels)
{
    EXPECT_TRUE(bProfileFits(aSrgbProfile(), 3));
    EXPECT_TRUE(bProfileFits(aSrgbProfile(), 4));
    EXPECT_FALSE(bProfileFits(aSrgbProfile(), 1));
    EXPECT_TRUE(bProfileFits(aGreyProfile(1.0), 1));
    EXPECT_FALSE(bProfileFits(aGreyProfile(1.0), 3));
    EXPECT_FALSE(bProfileFits(aCmykProfile(), 3));
}

TEST(ProfileFits, RefusesWhatIsCutShortOrNoProfile)
{
    std::vector<std::uint8_t> aProfile = aSrgbProfile();
    aProfile.pop_back();
    EXPECT_FALSE(bProfileFits(aProfile, 3));
    EXPECT_FALSE(bProfileFits({}, 3));
    EXPECT_FALSE(bProfileFits(std::vector<std::uint8_t>(5000, 0x41), 3));
}

TEST(ProfileIsSrgb, KnowsSrgbByWhatItDoes)
{
    EXPECT_TRUE(bProfileIsSrgb(aSrgbProfile()));
    EXPECT_FALSE(bProfileIsSrgb(aSwappedProfile()));
    EXPECT_FALSE(bProfileIsSrgb(aGreyProfile(1.0)));
    EXPECT_FALSE(bProfileIsSrgb(aCmykProfile()));
    EXPECT_FALSE(bProfileIsSrgb({}));
}

TEST(ConvertToSrgb, ShowsRedAsGreenWhenTheProfileSaysSo)
{
    ImageBuffer aImage = aColours({{0, 0, 255}, {0, 255, 0}, {255, 0, 0}, {90, 90, 90}}, aSwappedProfile());

    EXPECT_TRUE(bConvertToSrgb(aImage));

    EXPECT_TRUE(aImage.icc_profile.empty());
    EXPECT_LE(
        objDifference(aImage, aColours({{0, 255, 0}, {0, 0, 255}, {255, 0, 0}, {90, 90, 90}}, {})).lGreatest,
        1);
}

TEST(ConvertToSrgb, KeepsAlpha)
{
    ImageBuffer aImage = aPattern(20, 10, 4);
    aImage.icc_profile = aSwappedProfile();
    const ImageBuffer aBefore = aImage;

    EXPECT_TRUE(bConvertToSrgb(aImage));

    EXPECT_GT(objDifference(aImage, aBefore).lGreatest, 50);
    for (std::size_t i = 3; i < aImage.bytes.size(); i += 4)
        ASSERT_EQ(aImage.bytes[i], aBefore.bytes[i]);
}

TEST(ConvertToSrgb, TouchesNothingForSrgbAndForNoProfile)
{
    for (const auto& aProfile : {aSrgbProfile(), std::vector<std::uint8_t>{}}) {
        ImageBuffer aImage = aPattern(20, 10, 3);
        aImage.icc_profile = aProfile;
        EXPECT_TRUE(bConvertToSrgb(aImage));
        EXPECT_EQ(objDifference(aImage, aPattern(20, 10, 3)).lGreatest, 0);
        EXPECT_TRUE(aImage.icc_profile.empty());
    }
}

TEST(ConvertToSrgb, BrightensAGreyOfLinearLightAndLeavesItGrey)
{
    ImageBuffer aImage;
    aImage.width = 3;
    aImage.height = 1;
    aImage.channels = 1;
    aImage.bytes = {0, 55, 255};
    aImage.icc_profile = aGreyProfile(1.0);

    EXPECT_TRUE(bConvertToSrgb(aImage));

    ASSERT_EQ(aImage.bytes.size(), 3u);
    EXPECT_EQ(aImage.bytes[0], 0);
    EXPECT_NEAR(aImage.bytes[1], 128, 1);  // 55/255 of the light is 128 in sRGB's curve
    EXPECT_EQ(aImage.bytes[2], 255);
}

TEST(ConvertToSrgb, LeavesThePixelsWhenTheProfileCannotBeUsed)
{
    std::vector<std::uint8_t> aBroken = aSwappedProfile();
    std::fill(aBroken.begin() + 132, aBroken.end(), std::uint8_t{0xFF});
    for (const auto& aProfile : {aBroken, aGreyProfile(1.0), aCmykProfile()}) {
        ImageBuffer aImage = aPattern(20, 10, 3);
        aImage.icc_profile = aProfile;
        EXPECT_FALSE(bConvertToSrgb(aImage));
        EXPECT_EQ(objDifference(aImage, aPattern(20, 10, 3)).lGreatest, 0);
        EXPECT_TRUE(aImage.icc_profile.empty());
    }
}

TEST(ConvertToSrgb, SurvivesEveryChangedByteOfAProfile)
{
    for (const auto& aGood : {aSwappedProfile(), aGreyProfile(1.8)})
        for (std::size_t n = 0; n < aGood.size(); ++n) {
            ImageBuffer aImage = aPattern(4, 2, aGood == aSwappedProfile() ? 3 : 1);
            aImage.icc_profile = aGood;
            aImage.icc_profile[n] ^= 0xFF;
            bConvertToSrgb(aImage);
            EXPECT_EQ(aImage.bytes.size(), aPattern(4, 2, aImage.channels).bytes.size());
        }
}

TEST(CmykToBgr, IsTheFormulaOfIdealInksWithoutAProfile)
{
    const std::vector<std::uint8_t> aInks = {0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 255, 10, 100, 200, 50};
    std::vector<std::uint8_t> aInverted;
    for (const std::uint8_t n : aInks)
        aInverted.push_back(static_cast<std::uint8_t>(255 - n));
    const std::vector<std::uint8_t> aExpected = {255, 255, 255, 255, 255, 0, 0, 0, 0, 44, 125, 197};

    std::vector<std::uint8_t> aBgr(12);
    CmykToBgr({}).Convert(aInks.data(), aBgr.data(), 4);
    EXPECT_EQ(aBgr, aExpected);
    CmykToBgr({}, true).Convert(aInverted.data(), aBgr.data(), 4);
    EXPECT_EQ(aBgr, aExpected);
    CmykToBgr(aSrgbProfile()).Convert(aInks.data(), aBgr.data(), 4);  // no profile of inks: not used
    EXPECT_EQ(aBgr, aExpected);
}

TEST(CmykToBgr, GoesThroughTheProfile)
{
    // The profile of the tests has cyan and yellow exchanged.
    const std::vector<std::uint8_t> aInks = {255, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0};
    std::vector<std::uint8_t> aBgr(9);

    CmykToBgr(aCmykProfile()).Convert(aInks.data(), aBgr.data(), 3);

    EXPECT_LT(aBgr[0], 60);  // cyan ink shows yellow: no blue
    EXPECT_GT(aBgr[2], 200);
    EXPECT_GT(aBgr[3], 200);  // yellow ink shows cyan: no red
    EXPECT_LT(aBgr[5], 60);
    EXPECT_GT(aBgr[6], 250);
    EXPECT_GT(aBgr[8], 250);
}

TEST(LabToBgr, ShowsBlackWhiteAndRed)
{
    const std::vector<std::uint8_t> aLab = {0,   128, 128, 255, 128,
                                            128, 138, 209, 198};  // the last is sRGB's red
    std::vector<std::uint8_t> aBgr(9);

    EXPECT_TRUE(bLabToBgr(aLab.data(), aBgr.data(), 3));

    for (int i = 0; i < 3; ++i) {
        EXPECT_LE(aBgr[static_cast<std::size_t>(i)], 1);
        EXPECT_GE(aBgr[static_cast<std::size_t>(3 + i)], 254);
    }
    EXPECT_LE(aBgr[6], 12);
    EXPECT_LE(aBgr[7], 12);
    EXPECT_GE(aBgr[8], 250);
}
