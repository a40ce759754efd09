// Tests of what holds for every colour operation: greys, alpha, sizes, hostile numbers.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "src/platform/image/transforms/colour/auto_levels.h"
#include "src/platform/image/transforms/colour/equalize.h"
#include "src/platform/image/transforms/colour/hls.h"
#include "src/platform/image/transforms/colour/levels.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

struct Operation {
    std::string sName;
    std::function<bool(ImageBuffer&)> fnApply;
};

static std::vector<Operation> aOperations(double d, std::int32_t l)
{
    const auto n = static_cast<std::uint8_t>(l);
    return {{"Autocontrast", [](ImageBuffer& a) { return Autocontrast(a); }},
            {"AutoLevel", [](ImageBuffer& a) { return AutoLevel(a); }},
            {"Brightness", [=](ImageBuffer& a) { return Brightness(a, l); }},
            {"Contrast", [=](ImageBuffer& a) { return Contrast(a, d); }},
            {"Gamma", [=](ImageBuffer& a) { return Gamma(a, d); }},
            {"Hue", [=](ImageBuffer& a) { return Hue(a, d); }},
            {"Lightness", [=](ImageBuffer& a) { return Lightness(a, d); }},
            {"Saturation", [=](ImageBuffer& a) { return Saturation(a, d); }},
            {"BalanceHLS", [=](ImageBuffer& a) { return BalanceHLS(a, 100 * d, d, -d); }},
            {"Red", [=](ImageBuffer& a) { return Red(a, l); }},
            {"Green", [=](ImageBuffer& a) { return Green(a, l); }},
            {"Blue", [=](ImageBuffer& a) { return Blue(a, l); }},
            {"Colorize", [=](ImageBuffer& a) { return Colorize(a, n, 255, 7); }},
            {"Desaturate", [](ImageBuffer& a) { return Desaturate(a); }},
            {"Intensity", [](ImageBuffer& a) { return Intensity(a); }},
            {"Invert", [](ImageBuffer& a) { return Invert(a); }},
            {"Equalize", [=](ImageBuffer& a) { return Equalize(a, d); }},
            {"Threshold", [=](ImageBuffer& a) { return Threshold(a, n); }},
            {"Posterize", [=](ImageBuffer& a) { return Posterize(a, l); }}};
}

TEST(ColourOperations, KeepSizeAndAlphaWhateverNumbersTheyGet)
{
    for (const int lChannels : kChannelCounts)
        for (const auto& [lWidth, lHeight] : kSizes) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            std::vector<Operation> aAll;
            for (const double d : aHostileDoubles())
                for (const Operation& obj : aOperations(d, 3))
                    aAll.push_back(obj);
            for (const std::int32_t l : aHostileLongs())
                for (const Operation& obj : aOperations(0.3, l))
                    aAll.push_back(obj);
            for (const Operation& obj : aAll) {
                ImageBuffer aImage = aBefore;
                ASSERT_TRUE(obj.fnApply(aImage)) << obj.sName;
                ASSERT_TRUE(bSameAlpha(aImage, aBefore)) << obj.sName;
            }
        }
}

TEST(ColourOperations, GiveAGreyPictureTheIntensityOfItsColouredTwin)
{
    for (const Operation& obj : aOperations(0.4, 90)) {
        ImageBuffer aGrey = aRandomPicture(33, 17, 1);
        ImageBuffer aColour = aWidened(aGrey);
        ASSERT_TRUE(obj.fnApply(aGrey) && obj.fnApply(aColour) && Intensity(aColour));
        EXPECT_EQ(aWidened(aGrey).bytes, aColour.bytes) << obj.sName;
    }
}

TEST(ColourOperations, GiveALargePictureInBandsWhatASmallOneGets)
{
    // Every row is the same, so every band must come out as one row alone does.
    for (const Operation& obj : aOperations(0.4, 90)) {
        ImageBuffer aRow = aRandomPicture(601, 1, 3), aLarge = aRow;
        aLarge.height = 600;
        while (aLarge.bytes.size() < 601 * 600 * 3)
            aLarge.bytes.insert(aLarge.bytes.end(), aRow.bytes.begin(), aRow.bytes.end());
        ASSERT_TRUE(obj.fnApply(aRow) && obj.fnApply(aLarge));
        for (std::size_t y = 0; y < 600; ++y)
            ASSERT_TRUE(std::equal(aRow.bytes.begin(), aRow.bytes.end(),
                                   aLarge.bytes.begin() + static_cast<std::ptrdiff_t>(y * 601 * 3)))
                << obj.sName << " " << y;
    }
}

RC_GTEST_PROP(ColourOperations, TreatEveryPixelAlikeWhereverItStands, (std::uint32_t nSeed))
{
    const auto lWidth = *rc::gen::inRange(1, 80);
    const auto lChannels = *rc::gen::element(1, 3, 4);
    const double d = *rc::gen::inRange(-150, 150) / 100.0;
    const auto l = *rc::gen::inRange(-300, 300);
    const ImageBuffer aBefore = aRandomPicture(lWidth, 3, lChannels, nSeed);
    ImageBuffer aTurned = aBefore;
    const auto n = static_cast<std::size_t>(lChannels);
    for (std::size_t i = 0; i < aBefore.bytes.size(); ++i)
        aTurned.bytes[aBefore.bytes.size() - n - i / n * n + i % n] = aBefore.bytes[i];

    for (const Operation& obj : aOperations(d, l)) {
        ImageBuffer aOne = aBefore, aOther = aTurned;
        RC_ASSERT(obj.fnApply(aOne) && obj.fnApply(aOther));
        for (std::size_t i = 0; i < aBefore.bytes.size(); ++i)
            RC_ASSERT(aOther.bytes[aBefore.bytes.size() - n - i / n * n + i % n] == aOne.bytes[i]);
    }
}
