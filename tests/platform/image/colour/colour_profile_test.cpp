// Tests of colour conversion.
#include "src/platform/image/colour/colour_profile.h"

#include <gtest/gtest.h>
#include <lcms2.h>

#include <algorithm>
#include <array>

#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/profiles.h"

static ImageBuffer Colours(std::initializer_list<std::array<std::uint8_t, 3>> bgr,
                           std::vector<std::uint8_t> profile)
{
    ImageBuffer image;
    image.width = static_cast<std::int32_t>(bgr.size());
    image.height = 1;
    image.channels = 3;
    for (const auto& colour : bgr)
        image.bytes.insert(image.bytes.end(), colour.begin(), colour.end());
    image.icc_profile = std::move(profile);
    return image;
}

TEST(ProfileFits, RequiresColourSpaceOfChannels)
{
    EXPECT_TRUE(ProfileFits(SrgbProfile(), 3));
    EXPECT_TRUE(ProfileFits(SrgbProfile(), 4));
    EXPECT_FALSE(ProfileFits(SrgbProfile(), 1));
    EXPECT_TRUE(ProfileFits(GreyProfile(1.0), 1));
    EXPECT_FALSE(ProfileFits(GreyProfile(1.0), 3));
    EXPECT_FALSE(ProfileFits(CmykProfile(), 3));
}

TEST(ProfileFits, RejectsTruncatedAndInvalidProfiles)
{
    std::vector<std::uint8_t> profile = SrgbProfile();
    profile.pop_back();
    EXPECT_FALSE(ProfileFits(profile, 3));
    EXPECT_FALSE(ProfileFits({}, 3));
    EXPECT_FALSE(ProfileFits(std::vector<std::uint8_t>(5000, 0x41), 3));
}

TEST(ProfileIsSrgb, RecognisesSrgbByItsEffect)
{
    EXPECT_TRUE(IsSrgbProfile(SrgbProfile()));
    EXPECT_FALSE(IsSrgbProfile(SwappedProfile()));
    EXPECT_FALSE(IsSrgbProfile(GreyProfile(1.0)));
    EXPECT_FALSE(IsSrgbProfile(CmykProfile()));
    EXPECT_FALSE(IsSrgbProfile({}));
}

TEST(ConvertToSrgb, MapsColoursThroughProfile)
{
    ImageBuffer image = Colours({{0, 0, 255}, {0, 255, 0}, {255, 0, 0}, {90, 90, 90}}, SwappedProfile());

    EXPECT_TRUE(ConvertToSrgb(image));

    EXPECT_TRUE(image.icc_profile.empty());
    EXPECT_LE(
        DifferenceBetween(image, Colours({{0, 255, 0}, {0, 0, 255}, {255, 0, 0}, {90, 90, 90}}, {})).greatest,
        1);
}

TEST(ConvertToSrgb, KeepsAlpha)
{
    ImageBuffer image = Pattern(20, 10, 4);
    image.icc_profile = SwappedProfile();
    const ImageBuffer before = image;

    EXPECT_TRUE(ConvertToSrgb(image));

    EXPECT_GT(DifferenceBetween(image, before).greatest, 50);
    for (std::size_t i = 3; i < image.bytes.size(); i += 4)
        ASSERT_EQ(image.bytes[i], before.bytes[i]);
}

TEST(ConvertToSrgb, KeepsPixelsForSrgbAndMissingProfile)
{
    for (const auto& profile : {SrgbProfile(), std::vector<std::uint8_t>{}}) {
        ImageBuffer image = Pattern(20, 10, 3);
        image.icc_profile = profile;
        EXPECT_TRUE(ConvertToSrgb(image));
        EXPECT_EQ(DifferenceBetween(image, Pattern(20, 10, 3)).greatest, 0);
        EXPECT_TRUE(image.icc_profile.empty());
    }
}

TEST(ConvertToSrgb, BrightensLinearGreyAndKeepsItGrey)
{
    ImageBuffer image;
    image.width = 3;
    image.height = 1;
    image.channels = 1;
    image.bytes = {0, 55, 255};
    image.icc_profile = GreyProfile(1.0);

    EXPECT_TRUE(ConvertToSrgb(image));

    ASSERT_EQ(image.bytes.size(), 3u);
    EXPECT_EQ(image.bytes[0], 0);
    EXPECT_NEAR(image.bytes[1], 128, 1);  // linear 55/255 is 128 in sRGB
    EXPECT_EQ(image.bytes[2], 255);
}

TEST(ConvertToSrgb, KeepsPixelsIfProfileIsUnusable)
{
    std::vector<std::uint8_t> broken = SwappedProfile();
    std::fill(broken.begin() + 132, broken.end(), std::uint8_t{0xFF});
    for (const auto& profile : {broken, GreyProfile(1.0), CmykProfile()}) {
        ImageBuffer image = Pattern(20, 10, 3);
        image.icc_profile = profile;
        EXPECT_FALSE(ConvertToSrgb(image));
        EXPECT_EQ(DifferenceBetween(image, Pattern(20, 10, 3)).greatest, 0);
        EXPECT_TRUE(image.icc_profile.empty());
    }
}

TEST(ConvertToSrgb, SurvivesCorruptionOfAnySingleByteOfProfile)
{
    for (const auto& good : {SwappedProfile(), GreyProfile(1.8)})
        for (std::size_t n = 0; n < good.size(); ++n) {
            ImageBuffer image = Pattern(4, 2, good == SwappedProfile() ? 3 : 1);
            image.icc_profile = good;
            image.icc_profile[n] ^= 0xFF;
            ConvertToSrgb(image);
            EXPECT_EQ(image.bytes.size(), Pattern(4, 2, image.channels).bytes.size());
        }
}

TEST(CmykToBgr, UsesNaiveFormulaWithoutProfile)
{
    const std::vector<std::uint8_t> inks = {0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 255, 10, 100, 200, 50};
    std::vector<std::uint8_t> inverted;
    for (const std::uint8_t n : inks)
        inverted.push_back(static_cast<std::uint8_t>(255 - n));
    const std::vector<std::uint8_t> expected = {255, 255, 255, 255, 255, 0, 0, 0, 0, 44, 125, 197};

    std::vector<std::uint8_t> bgr(12);
    CmykToBgr({}).Convert(inks.data(), bgr.data(), 4);
    EXPECT_EQ(bgr, expected);
    CmykToBgr({}, true).Convert(inverted.data(), bgr.data(), 4);
    EXPECT_EQ(bgr, expected);
    CmykToBgr(SrgbProfile()).Convert(inks.data(), bgr.data(), 4);  // not a CMYK profile: ignored
    EXPECT_EQ(bgr, expected);
}

TEST(CmykToBgr, AppliesProfile)
{
    // The test profile swaps cyan and yellow.
    const std::vector<std::uint8_t> inks = {255, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0};
    std::vector<std::uint8_t> bgr(9);

    CmykToBgr(CmykProfile()).Convert(inks.data(), bgr.data(), 3);

    EXPECT_LT(bgr[0], 60);  // cyan ink appears yellow: no blue
    EXPECT_GT(bgr[2], 200);
    EXPECT_GT(bgr[3], 200);  // yellow ink appears cyan: no red
    EXPECT_LT(bgr[5], 60);
    EXPECT_GT(bgr[6], 250);
    EXPECT_GT(bgr[8], 250);
}

TEST(LabToBgr, ConvertsBlackWhiteAndRed)
{
    const std::vector<std::uint8_t> lab = {0,   128, 128, 255, 128,
                                           128, 138, 209, 198};  // the last is sRGB red
    std::vector<std::uint8_t> bgr(9);

    EXPECT_TRUE(LabToBgr(lab.data(), bgr.data(), 3));

    for (int i = 0; i < 3; ++i) {
        EXPECT_LE(bgr[static_cast<std::size_t>(i)], 1);
        EXPECT_GE(bgr[static_cast<std::size_t>(3 + i)], 254);
    }
    EXPECT_LE(bgr[6], 12);
    EXPECT_LE(bgr[7], 12);
    EXPECT_GE(bgr[8], 250);
}
