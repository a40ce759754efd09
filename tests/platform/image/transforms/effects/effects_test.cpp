// Dilation, erosion, emboss, relief, texture, mosaic, halftones and contours.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include "src/platform/image/transforms/effects/emboss.h"
#include "src/platform/image/transforms/effects/halftones.h"
#include "src/platform/image/transforms/effects/mosaic.h"
#include "src/platform/image/transforms/effects/motion_blur.h"
#include "src/platform/image/transforms/effects/noise.h"
#include "src/platform/image/transforms/effects/texture.h"
#include "src/platform/image/transforms/filters/contours.h"
#include "src/platform/image/transforms/filters/dilation.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "tests/platform/image/support/kernel_pictures.h"

static constexpr double kToRadians = 3.14159265358979323846 / 180;

static int Clamped(double d)
{
    return static_cast<int>(std::floor(std::clamp(d, 0.0, 255.0) + 0.5));
}

// Compares every byte but alpha with the header's formula.
template <typename Formula>
static void ExpectEach(const ImageBuffer& image, const ImageBuffer& before, const Formula& expected,
                       double tolerance = 0)
{
    ASSERT_EQ(image.channels, before.channels);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            for (int c = 0; c < image.channels; ++c) {
                if (c == 3)
                    ASSERT_EQ(ValueAt(image, x, y, 3), ValueAt(before, x, y, 3));
                else
                    ASSERT_NEAR(ValueAt(image, x, y, c), expected(x, y, c), tolerance)
                        << image.width << "x" << image.height << "x" << image.channels << " at " << x << ","
                        << y << "," << c;
            }
}

static int Around(const ImageBuffer& image, int x, int y, int c, bool square, bool greatest)
{
    int found = ValueAt(image, x, y, c);
    for (int j = -1; j <= 1; ++j)
        for (int i = -1; i <= 1; ++i)
            if (square || i == 0 || j == 0) {
                const int n = ValueAt(image, x + i, y + j, c);
                found = greatest ? std::max(found, n) : std::min(found, n);
            }
    return found;
}

TEST(Dilation, MatchesFormula)
{
    for (const auto& [width, height, channels] : Shapes())
        for (const bool square : {false, true})
            for (const auto& [level, threshold] :
                 {std::pair{100, 100}, {255, 0}, {0, 0}, {7, 200}, {255, 255}}) {
                const ImageBuffer before = RandomPicture(width, height, channels);
                ImageBuffer image = before;
                ASSERT_TRUE(ApplyKernel(transforms::Dilation, image, static_cast<std::uint8_t>(level),
                                        static_cast<std::uint8_t>(threshold), square));
                const int max = level, limit = threshold;
                ExpectEach(image, before, [&](int x, int y, int c) {
                    const int m = Around(before, x, y, c, square, true), v = ValueAt(before, x, y, c);
                    return m > limit ? std::min(m, v + max) : v;
                });
            }
}

TEST(Erosion, MatchesFormula)
{
    for (const auto& [width, height, channels] : Shapes())
        for (const bool square : {false, true})
            for (const auto& [level, threshold] :
                 {std::pair{40, 40}, {255, 0}, {0, 0}, {7, 200}, {255, 255}}) {
                const ImageBuffer before = RandomPicture(width, height, channels);
                ImageBuffer image = before;
                ASSERT_TRUE(ApplyKernel(transforms::Erosion, image, static_cast<std::uint8_t>(level),
                                        static_cast<std::uint8_t>(threshold), square));
                const int max = level, limit = threshold;
                ExpectEach(image, before, [&](int x, int y, int c) {
                    const int m = Around(before, x, y, c, square, false), v = ValueAt(before, x, y, c);
                    return v > limit ? std::max(m, v - max) : v;
                });
            }
}

static double Slope(const ImageBuffer& image, int x, int y, int c, double angle, int h)
{
    return std::cos(angle * kToRadians) * (ValueAt(image, x - h, y, c) - ValueAt(image, x + h, y, c)) +
           std::sin(angle * kToRadians) * (ValueAt(image, x, y + h, c) - ValueAt(image, x, y - h, c));
}

TEST(Emboss, MatchesFormula)
{
    for (const auto& [width, height, channels] : Shapes())
        for (const auto& [angle, high, brightness] :
             {std::tuple{0.0, 1, 10.0}, {90.0, 2, 5.0}, {217.0, 16, 1.0}, {33.0, 999, 20.0}}) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            ImageBuffer image = before;
            ASSERT_TRUE(ApplyKernel(transforms::Emboss, image, angle, high, brightness));
            ExpectEach(
                image, before,
                [&, turn = angle, reach = std::min(high, 16), factor = brightness / 10](int x, int y, int c) {
                    return Clamped(128 + factor * Slope(before, x, y, c, turn, reach));
                },
                1);
        }
}

TEST(Emboss, GivesSameResultInBands)
{
    // Large enough for several bands, with the greatest height, for which bands need most rows of each other.
    const ImageBuffer before = RandomPicture(500, 700, 3);
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::Emboss, image, 70, 16, 3));
    ExpectEach(
        image, before,
        [&](int x, int y, int c) { return Clamped(128 + 0.3 * Slope(before, x, y, c, 70, 16)); }, 1);
}

TEST(Emboss, LightensSlopesFacingLight)
{
    // A raised square: its right side is lit by light from the right, its top by light from above.
    ImageBuffer image = Plain(20, 20, 1, 50);
    for (int y = 5; y < 15; ++y)
        std::fill_n(image.bytes.begin() + y * 20 + 5, 10, std::uint8_t{90});
    ImageBuffer right = image, above = image;
    ASSERT_TRUE(ApplyKernel(transforms::Emboss, right, 0, 1, 10));
    EXPECT_EQ(ValueAt(right, 14, 10), 168);
    EXPECT_EQ(ValueAt(right, 5, 10), 88);
    EXPECT_EQ(ValueAt(right, 10, 10), 128);
    ASSERT_TRUE(ApplyKernel(transforms::Emboss, above, 90, 1, 10));
    EXPECT_EQ(ValueAt(above, 10, 5), 168);
    EXPECT_EQ(ValueAt(above, 10, 14), 88);
}

TEST(Relief, AddsSlopesOfIntensityToColours)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer before = RandomPicture(21, 13, channels);
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::Relief, image, 60, 0.5, 0));
        ImageBuffer grey = Plain(21, 13, 1, 0);
        for (int i = 0; i < 21 * 13; ++i) {
            const int x = i % 21, y = i / 21;
            grey.bytes[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(
                channels == 1
                    ? ValueAt(before, x, y)
                    : transforms::IntensityOfPixel(static_cast<std::uint32_t>(ValueAt(before, x, y, 0)),
                                                   static_cast<std::uint32_t>(ValueAt(before, x, y, 1)),
                                                   static_cast<std::uint32_t>(ValueAt(before, x, y, 2))));
        }
        ExpectEach(
            image, before,
            [&](int x, int y, int c) {
                return Clamped(ValueAt(before, x, y, c) + 0.5 * Slope(grey, x, y, 0, 60, 1));
            },
            1);
    }
}

TEST(Relief, FlattensWithSmoothness)
{
    const ImageBuffer before = RandomPicture(64, 64, 1);
    double last = 1e9;
    for (const double smoothness : {0.0, 4.0, 8.0, 16.0}) {
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::Relief, image, 0, 1, smoothness));
        double change = 0;
        for (std::size_t i = 0; i < image.bytes.size(); ++i)
            change += std::abs(image.bytes[i] - before.bytes[i]);
        EXPECT_LT(change, last);
        last = change;
    }
}

TEST(Relief, LeavesNoStripesInSmoothGradient)
{
    // A sky: one level in 16 pixels.
    ImageBuffer before = Plain(320, 40, 3, 0);
    for (std::size_t i = 0; i < before.bytes.size(); ++i)
        before.bytes[i] = static_cast<std::uint8_t>(100 + i / 3 % 320 / 16);
    ImageBuffer image = before;

    ASSERT_TRUE(ApplyKernel(transforms::Relief, image, 0, 4, 16));

    for (std::size_t i = 0; i < image.bytes.size(); ++i)
        ASSERT_NEAR(image.bytes[i], before.bytes[i], 1) << i / 3 % 320;
}

TEST(Texturize, AddsSlopesOfTexture)
{
    for (std::int32_t texture = 0; texture < 6; ++texture) {
        const std::vector<float> heights = transforms::TextureHeights(texture);
        ASSERT_EQ(heights.size(), 256U * 256U);
        ImageBuffer image = Plain(300, 280, 3, 128);
        ASSERT_TRUE(ApplyKernel(transforms::Texturize, image, 0, 3, texture));
        double squares = 0, sum = 0;
        for (int y = 0; y < 256; ++y)
            for (int x = 1; x < 255; ++x) {
                const double towards = heights[static_cast<std::size_t>(y * 256 + x - 1)] -
                                       heights[static_cast<std::size_t>(y * 256 + x + 1)];
                const int lit = ValueAt(image, x, y) - 128;
                ASSERT_TRUE(lit * towards > 0 || std::abs(lit) <= 1) << texture;
                squares += lit * lit;
                sum += lit;
            }
        EXPECT_NEAR(sum / (256 * 254), 0, 0.3) << texture;
        EXPECT_GT(std::sqrt(squares / (256 * 254)), 1.5) << texture;
        EXPECT_LT(std::sqrt(squares / (256 * 254)), 12) << texture;
        EXPECT_EQ(ValueAt(image, 3, 4), ValueAt(image, 259, 260));
    }
}

TEST(Texturize, ClampsTextureToSixKinds)
{
    const ImageBuffer before = Plain(64, 64, 1, 128);
    std::vector<ImageBuffer> all;
    for (std::int32_t texture = 0; texture < 6; ++texture) {
        all.push_back(before);
        ASSERT_TRUE(ApplyKernel(transforms::Texturize, all.back(), 10, 5, texture));
        for (std::size_t i = 0; i + 1 < all.size(); ++i)
            EXPECT_FALSE(Equal(all[i], all.back()));
    }
    ImageBuffer beyond = before, below = before;
    ASSERT_TRUE(ApplyKernel(transforms::Texturize, beyond, 10, 5, INT32_MAX));
    ASSERT_TRUE(ApplyKernel(transforms::Texturize, below, 10, 5, INT32_MIN));
    EXPECT_TRUE(Equal(beyond, all[5]));
    EXPECT_TRUE(Equal(below, all[0]));
}

TEST(Mosaic, FillsPlainTilesWithMean)
{
    for (const auto& [width, height, channels] : Shapes())
        for (const std::int32_t tile : {2, 3, 6, 40}) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            ImageBuffer image = before;
            ASSERT_TRUE(ApplyKernel(transforms::Mosaic, image, tile, true));
            const std::int32_t right = width, bottom = height;
            ExpectEach(image, before, [&](int x, int y, int c) {
                int sum = 0, pixels = 0;
                for (int j = y / tile * tile; j < std::min(y / tile * tile + tile, bottom); ++j)
                    for (int i = x / tile * tile; i < std::min(x / tile * tile + tile, right); ++i, ++pixels)
                        sum += ValueAt(before, i, j, c);
                return (sum + pixels / 2) / pixels;
            });
        }
}

TEST(Mosaic, BlendsSoftTilesIntoNeighbours)
{
    ImageBuffer image = GreyOf(8, 1, {0, 0, 0, 0, 160, 160, 160, 160});
    ASSERT_TRUE(ApplyKernel(transforms::Mosaic, image, 4, false));
    EXPECT_EQ(BytesOf(image), (std::vector<int>{0, 0, 0, 40, 120, 160, 160, 160}));
}

TEST(Mosaic, WithTilesOfOnePixelChangesNothing)
{
    const ImageBuffer before = RandomPicture(9, 8, 3);
    ImageBuffer image = before;
    for (const std::int32_t tile : {1, 0, -1, INT32_MIN})
        for (const bool plain : {false, true})
            ASSERT_TRUE(ApplyKernel(transforms::Mosaic, image, tile, plain));
    EXPECT_TRUE(Equal(image, before));
}

TEST(Halftones, KeepToneOfFlatPicture)
{
    for (const std::int32_t cell : {1, 2, 3, 4, 7, 16}) {
        for (const int tone : {0, 30, 128, 200, 255}) {
            ImageBuffer image = Plain(4 * cell, 4 * cell, 1, static_cast<std::uint8_t>(tone));
            ASSERT_TRUE(ApplyKernel(transforms::Halftones, image, cell, 1));
            double white = 0;
            for (const int byte : image.bytes) {
                ASSERT_TRUE(byte == 0 || byte == 255);
                white += byte;
            }
            EXPECT_NEAR(white / static_cast<double>(image.bytes.size()), tone, 16) << cell;
        }
    }
}

TEST(Halftones, GrowLightDotsFromCellCentres)
{
    ImageBuffer image = Plain(16, 16, 1, 60);
    ASSERT_TRUE(ApplyKernel(transforms::Halftones, image, 8, 1));
    EXPECT_EQ(ValueAt(image, 4, 4), 255);
    EXPECT_EQ(ValueAt(image, 0, 0), 0);
    EXPECT_EQ(ValueAt(image, 11, 12), 255);
    EXPECT_EQ(ValueAt(image, 8, 8), 0);
}

TEST(Halftones, ThresholdPixelsByScreen)
{
    for (const auto& [width, height, channels] : Shapes())
        for (const std::int32_t cell : {1, 5})
            for (const double contrast : {1.0, 0.5}) {
                const std::vector<std::uint8_t> screen = transforms::HalftoneScreen(cell);
                const ImageBuffer before = RandomPicture(width, height, channels);
                ImageBuffer image = before;
                ASSERT_TRUE(ApplyKernel(transforms::Halftones, image, cell, contrast));
                ExpectEach(
                    image, before,
                    [&](int x, int y, int c) {
                        const int v = ValueAt(before, x, y, c);
                        const int s =
                            screen[static_cast<std::size_t>(y % (4 * cell) * 4 * cell + x % (4 * cell))];
                        return Clamped(v + contrast * ((v > s ? 255 : 0) - v));
                    },
                    contrast < 1 ? 1 : 0);
            }
}

TEST(TraceContours, MatchesDefinition)
{
    for (const auto& [width, height, channels] : Shapes())
        for (const auto& [level, threshold] : {std::pair{100, 100}, {0, 20}, {200, 255}, {0, 255}}) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            ImageBuffer image = before;
            const int line = level, step = threshold;
            ASSERT_TRUE(ApplyKernel(transforms::TraceContours, image, static_cast<std::uint8_t>(level),
                                    static_cast<std::uint8_t>(threshold), false));
            ExpectEach(image, before, [&](int x, int y, int c) {
                const int v = ValueAt(before, x, y, c);
                for (const int u : {ValueAt(before, x + 1, y, c), ValueAt(before, x, y + 1, c)})
                    if ((v < line) != (u < line) || std::abs(u - v) > step)
                        return 0;
                return 255;
            });
        }
}

TEST(TraceContours, DrawsBlackLinesForIntensity)
{
    ImageBuffer image = Plain(4, 2, 3, 0);
    for (const std::size_t i : {6U, 9U, 18U, 21U})
        image.bytes[i] = image.bytes[i + 1] = image.bytes[i + 2] = 255;
    ASSERT_TRUE(ApplyKernel(transforms::TraceContours, image, 100, 100, true));
    for (int y = 0; y < 2; ++y)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ((std::vector<int>{ValueAt(image, 0, y, c), ValueAt(image, 1, y, c),
                                        ValueAt(image, 2, y, c), ValueAt(image, 3, y, c)}),
                      (std::vector<int>{255, 0, 255, 255}));
}

TEST(Effects, GivePictureForAnyNumber)
{
    using namespace transforms;
    for (const auto& [width, height, channels] : Shapes()) {
        const ImageBuffer before = RandomPicture(width, height, channels);
        const auto expect = [&before](const auto& operation) {
            ImageBuffer image = before;
            ASSERT_TRUE(operation(image));
            ASSERT_TRUE(Sound(image));
            ASSERT_EQ(image.width, before.width);
            ASSERT_EQ(image.height, before.height);
            ASSERT_TRUE(image.channels == before.channels || (image.channels == 3 && before.channels == 1));
        };
        for (const double d : HostileDoubles()) {
            expect([&](ImageBuffer& a) { return ApplyKernel(Emboss, a, d, 3, 10); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Emboss, a, 30, 16, d); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Relief, a, d, 4, 10); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Relief, a, 1, d, 1); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Relief, a, 1, 4, d); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Texturize, a, d, 5, 1); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Texturize, a, 0, d, 4); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Halftones, a, 3, d); });
            expect([&](ImageBuffer& a) { return ApplyKernel(MotionBlur, a, d, 9); });
            expect([&](ImageBuffer& a) { return ApplyKernel(RadialBlur, a, d); });
            expect([&](ImageBuffer& a) { return ApplyKernel(ZoomBlur, a, d); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Diffuse, a, 3, d); });
        }
        for (const std::int32_t l : HostileLongs()) {
            expect([&](ImageBuffer& a) { return ApplyKernel(Emboss, a, 30, l, 10); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Halftones, a, l, 1); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Mosaic, a, l, false); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Mosaic, a, l, true); });
            expect([&](ImageBuffer& a) { return ApplyKernel(MotionBlur, a, 1e9, l); });
            expect([&](ImageBuffer& a) { return ApplyKernel(AddNoise, a, l, false); });
            expect([&](ImageBuffer& a) { return ApplyKernel(Diffuse, a, l, 1e9); });
        }
    }
}

TEST(Effects, ChangeNothingAtNeutralValues)
{
    using namespace transforms;
    const ImageBuffer before = RandomPicture(17, 11, 3);
    ImageBuffer image = before;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(ApplyKernel(Emboss, image, 0, 0, 10) && ApplyKernel(Emboss, image, nan, 1, 10) &&
                ApplyKernel(Emboss, image, 0, 1, nan));
    EXPECT_TRUE(ApplyKernel(Relief, image, 0, 0, 10) && ApplyKernel(Relief, image, nan, 1, 10) &&
                ApplyKernel(Relief, image, 0, 1, nan));
    EXPECT_TRUE(ApplyKernel(Texturize, image, 0, 0, 1) && ApplyKernel(Texturize, image, nan, 5, 1) &&
                ApplyKernel(Texturize, image, 0, nan, 1));
    EXPECT_TRUE(ApplyKernel(Halftones, image, 5, 0) && ApplyKernel(Halftones, image, 5, nan));
    EXPECT_TRUE(Equal(image, before));
}
