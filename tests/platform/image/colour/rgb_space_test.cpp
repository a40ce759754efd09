// Tests of colour spaces given by numbers, checked against Little CMS.
#include "src/platform/image/colour/rgb_space.h"

#include <gtest/gtest.h>
#include <lcms2.h>

#include <algorithm>
#include <random>

#include "src/platform/image/colour/colour_profile.h"
#include "tests/platform/image/support/image_tools.h"

namespace
{
RgbSpace DisplayP3()
{
    RgbSpace space;
    space.red = {0.680, 0.320};
    space.green = {0.265, 0.690};
    return space;
}

// ROMM's white point is D50.
RgbSpace WideGamut()
{
    RgbSpace space;
    space.white = {0.3457, 0.3585};
    space.red = {0.735, 0.265};
    space.green = {0.115, 0.826};
    space.blue = {0.157, 0.018};
    space.transfer = TransferFunction::kGamma;
    space.gamma = 2.2;
    return space;
}

// The same space as a profile.
std::vector<std::uint8_t> ProfileOf(const RgbSpace& space)
{
    const cmsCIExyY white = {space.white.x, space.white.y, 1};
    const cmsCIExyYTRIPLE primaries = {
        {space.red.x, space.red.y, 1}, {space.green.x, space.green.y, 1}, {space.blue.x, space.blue.y, 1}};
    const cmsFloat64Number srgb[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    cmsToneCurve* curve = space.transfer == TransferFunction::kGamma
                              ? cmsBuildGamma(nullptr, space.gamma)
                              : cmsBuildParametricToneCurve(nullptr, 4, srgb);
    cmsToneCurve* curves[] = {curve, curve, curve};
    cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    std::vector<std::uint8_t> bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    cmsFreeToneCurve(curve);
    return bytes;
}

ImageBuffer RandomColours(std::int32_t channels)
{
    std::mt19937 random(11);
    ImageBuffer image = Pattern(500, 4, channels);
    for (std::uint8_t& level : image.bytes)
        level = static_cast<std::uint8_t>(random());
    return image;
}

ImageBuffer Converted(const RgbSpace& space, ImageBuffer image)
{
    RgbSpaceToSrgb(space, 8).Convert(image.bytes.data(), image.channels,
                                     image.bytes.size() / static_cast<std::size_t>(image.channels));
    return image;
}

// The grey to which a grey sample, 0 to 1, is converted.
int GreyOf(const RgbSpace& space, double sample)
{
    const auto in = static_cast<std::uint16_t>(sample * 65535 + 0.5);
    std::uint8_t out = 0;
    RgbSpaceToSrgb(space, 16).Convert(&in, 1, 1, &out);
    return out;
}
}  // namespace

TEST(RgbSpace, ConvertsLikeProfileOfSameSpace)
{
    for (const RgbSpace& space : {DisplayP3(), WideGamut()}) {
        ImageBuffer by_profile = RandomColours(3);
        const ImageBuffer image = Converted(space, by_profile);
        by_profile.icc_profile = ProfileOf(space);
        ASSERT_TRUE(ConvertToSrgb(by_profile));

        EXPECT_LE(DifferenceBetween(image, by_profile).greatest, 2);
        EXPECT_LT(DifferenceBetween(image, by_profile).mean, 0.2);
    }
}

TEST(RgbSpace, LeavesGreysAndAlphaAlone)
{
    ImageBuffer image = RandomColours(4);
    for (std::size_t i = 0; i < image.bytes.size(); i += 4)
        image.bytes[i + 1] = image.bytes[i + 2] = image.bytes[i];

    EXPECT_EQ(Converted(DisplayP3(), image).bytes, image.bytes);
    EXPECT_EQ(Converted(DisplayP3(), RandomColours(1)).bytes, RandomColours(1).bytes);
}

TEST(RgbSpace, ConvertsSixteenBitsLikeEight)
{
    const ImageBuffer narrow = RandomColours(4);
    std::vector<std::uint16_t> wide;
    for (std::size_t i = 0; i < narrow.bytes.size(); i += 4)
        for (const std::size_t c : {2u, 1u, 0u, 3u})
            wide.push_back(static_cast<std::uint16_t>(narrow.bytes[i + c] * 257));
    ImageBuffer image = narrow;

    RgbSpaceToSrgb(WideGamut(), 16).Convert(wide.data(), 4, wide.size() / 4, image.bytes.data());

    EXPECT_EQ(image.bytes, Converted(WideGamut(), narrow).bytes);
}

TEST(RgbSpace, KeepsDarkSixteenBitLevelsOfLinearLightApart)
{
    RgbSpace linear;
    linear.transfer = TransferFunction::kGamma;

    EXPECT_EQ(GreyOf(linear, 0.0), 0);
    EXPECT_EQ(GreyOf(linear, 0.001), 3);
    EXPECT_EQ(GreyOf(linear, 0.002), 7);
    EXPECT_EQ(GreyOf(linear, 0.214), 127);
    EXPECT_EQ(GreyOf(linear, 1.0), 255);
}

TEST(RgbSpace, CompressesHighDynamicRange)
{
    for (const TransferFunction transfer : {TransferFunction::kPq, TransferFunction::kHlg}) {
        RgbSpace space;
        space.transfer = transfer;
        const bool is_pq = transfer == TransferFunction::kPq;
        EXPECT_EQ(GreyOf(space, 0), 0);
        EXPECT_NEAR(GreyOf(space, is_pq ? 0.5807 : 0.75), 191, 2) << "reference white, 203 cd/m2";
        EXPECT_EQ(GreyOf(space, is_pq ? 0.7518 : 1), 255) << "1000 cd/m2";
        EXPECT_EQ(GreyOf(space, 1), 255);
        for (int i = 0; i < 100; ++i)
            EXPECT_LE(GreyOf(space, i / 100.0), GreyOf(space, (i + 1) / 100.0));
    }
}

TEST(RgbSpace, RecognisesSrgbPrimariesAndRejectsImpossibleOnes)
{
    RgbSpace rounded;
    rounded.white = {0.3127, 0.3291};
    EXPECT_TRUE(HasSrgbPrimaries(rounded));
    EXPECT_FALSE(HasSrgbPrimaries(DisplayP3()));
    EXPECT_TRUE(IsUsable(DisplayP3()));

    RgbSpace collinear;
    collinear.green = {0.395, 0.195};
    RgbSpace dark;
    dark.red = {0.5, 0};
    RgbSpace outside;
    outside.green = {0.9, 0.9};
    for (const RgbSpace& space : {collinear, dark, outside})
        EXPECT_FALSE(IsUsable(space));
}
