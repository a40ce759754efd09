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

struct NamedKernel {
    std::string name;
    std::function<bool(ImageBuffer&)> apply;
};

static std::vector<NamedKernel> Operations(double d, std::int32_t l)
{
    const auto n = static_cast<std::uint8_t>(l);
    return {{"Autocontrast", [](ImageBuffer& a) { return ApplyKernel(Autocontrast, a); }},
            {"AutoLevel", [](ImageBuffer& a) { return ApplyKernel(AutoLevel, a); }},
            {"Brightness", [=](ImageBuffer& a) { return ApplyKernel(Brightness, a, l); }},
            {"Contrast", [=](ImageBuffer& a) { return ApplyKernel(Contrast, a, d); }},
            {"Gamma", [=](ImageBuffer& a) { return ApplyKernel(Gamma, a, d); }},
            {"Hue", [=](ImageBuffer& a) { return ApplyKernel(Hue, a, d); }},
            {"Lightness", [=](ImageBuffer& a) { return ApplyKernel(Lightness, a, d); }},
            {"Saturation", [=](ImageBuffer& a) { return ApplyKernel(Saturation, a, d); }},
            {"BalanceHLS", [=](ImageBuffer& a) { return ApplyKernel(BalanceHLS, a, 100 * d, d, -d); }},
            {"Red", [=](ImageBuffer& a) { return ApplyKernel(Red, a, l); }},
            {"Green", [=](ImageBuffer& a) { return ApplyKernel(Green, a, l); }},
            {"Blue", [=](ImageBuffer& a) { return ApplyKernel(Blue, a, l); }},
            {"Colorize", [=](ImageBuffer& a) { return ApplyKernel(Colorize, a, n, 255, 7); }},
            {"Desaturate", [](ImageBuffer& a) { return ApplyKernel(Desaturate, a); }},
            {"Intensity", [](ImageBuffer& a) { return ApplyKernel(Intensity, a); }},
            {"Invert", [](ImageBuffer& a) { return ApplyKernel(Invert, a); }},
            {"Equalize", [=](ImageBuffer& a) { return ApplyKernel(Equalize, a, d); }},
            {"Threshold", [=](ImageBuffer& a) { return ApplyKernel(Threshold, a, n); }},
            {"Posterize", [=](ImageBuffer& a) { return ApplyKernel(Posterize, a, l); }}};
}

TEST(ColourOperations, KeepSizeAndAlphaForAnyNumber)
{
    for (const int channels : kChannelCounts)
        for (const auto& [width, height] : kSizes) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            std::vector<NamedKernel> all;
            for (const double d : HostileDoubles())
                for (const NamedKernel& operation : Operations(d, 3))
                    all.push_back(operation);
            for (const std::int32_t l : HostileLongs())
                for (const NamedKernel& operation : Operations(0.3, l))
                    all.push_back(operation);
            for (const NamedKernel& operation : all) {
                ImageBuffer image = before;
                ASSERT_TRUE(operation.apply(image)) << operation.name;
                const bool coloured = image.channels == 3 && channels == 1;
                ASSERT_TRUE(SameAlpha(image, coloured ? Widened(before) : before)) << operation.name;
            }
        }
}

TEST(ColourOperations, GiveSameResultInBands)
{
    // All rows are equal, so every band must give the same result as a single row.
    for (const NamedKernel& operation : Operations(0.4, 90)) {
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
    const auto opposite = [](const ImageBuffer& image, std::size_t i) {
        const auto n = static_cast<std::size_t>(image.channels);
        return image.bytes.size() - n - i / n * n + i % n;
    };
    for (std::size_t i = 0; i < before.bytes.size(); ++i)
        turned.bytes[opposite(before, i)] = before.bytes[i];

    for (const NamedKernel& operation : Operations(d, l)) {
        ImageBuffer one = before, other = turned;
        RC_ASSERT(operation.apply(one) && operation.apply(other));
        for (std::size_t i = 0; i < one.bytes.size(); ++i)
            RC_ASSERT(other.bytes[opposite(one, i)] == one.bytes[i]);
    }
}
