// Guarantees of all colour operations: greys, alpha, sizes, hostile numbers.
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
    std::string name;
    std::function<bool(ImageBuffer&)> apply;
};

static std::vector<Operation> Operations(double d, std::int32_t l)
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

TEST(ColourOperations, KeepSizeAndAlphaForAnyNumber)
{
    for (const int channels : kChannelCounts)
        for (const auto& [width, height] : kSizes) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            std::vector<Operation> all;
            for (const double d : HostileDoubles())
                for (const Operation& operation : Operations(d, 3))
                    all.push_back(operation);
            for (const std::int32_t l : HostileLongs())
                for (const Operation& operation : Operations(0.3, l))
                    all.push_back(operation);
            for (const Operation& operation : all) {
                ImageBuffer image = before;
                ASSERT_TRUE(operation.apply(image)) << operation.name;
                ASSERT_TRUE(SameAlpha(image, before)) << operation.name;
            }
        }
}

TEST(ColourOperations, GiveGreyPictureIntensityOfColouredResult)
{
    for (const Operation& operation : Operations(0.4, 90)) {
        ImageBuffer grey = RandomPicture(33, 17, 1);
        ImageBuffer colour = Widened(grey);
        ASSERT_TRUE(operation.apply(grey) && operation.apply(colour) && Intensity(colour));
        EXPECT_EQ(Widened(grey).bytes, colour.bytes) << operation.name;
    }
}

TEST(ColourOperations, GiveSameResultInBands)
{
    // All rows are equal, so every band must give the same result as a single row.
    for (const Operation& operation : Operations(0.4, 90)) {
        ImageBuffer row = RandomPicture(601, 1, 3), large = row;
        large.height = 600;
        while (large.bytes.size() < 601 * 600 * 3)
            large.bytes.insert(large.bytes.end(), row.bytes.begin(), row.bytes.end());
        ASSERT_TRUE(operation.apply(row) && operation.apply(large));
        for (std::size_t y = 0; y < 600; ++y)
            ASSERT_TRUE(std::equal(row.bytes.begin(), row.bytes.end(),
                                   large.bytes.begin() + static_cast<std::ptrdiff_t>(y * 601 * 3)))
                << operation.name << " " << y;
    }
}

RC_GTEST_PROP(ColourOperations, AreIndependentOfPosition, (std::uint32_t seed))
{
    const auto width = *rc::gen::inRange(1, 80);
    const auto channels = *rc::gen::element(1, 3, 4);
    const double d = *rc::gen::inRange(-150, 150) / 100.0;
    const auto l = *rc::gen::inRange(-300, 300);
    const ImageBuffer before = RandomPicture(width, 3, channels, seed);
    ImageBuffer turned = before;
    const auto n = static_cast<std::size_t>(channels);
    for (std::size_t i = 0; i < before.bytes.size(); ++i)
        turned.bytes[before.bytes.size() - n - i / n * n + i % n] = before.bytes[i];

    for (const Operation& operation : Operations(d, l)) {
        ImageBuffer one = before, other = turned;
        RC_ASSERT(operation.apply(one) && operation.apply(other));
        for (std::size_t i = 0; i < before.bytes.size(); ++i)
            RC_ASSERT(other.bytes[before.bytes.size() - n - i / n * n + i % n] == one.bytes[i]);
    }
}
