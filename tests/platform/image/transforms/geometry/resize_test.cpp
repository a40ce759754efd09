// Resizing: compared with the formulas in doubles, and for visible artefacts.
#include "src/platform/image/transforms/geometry/resize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

static ImageBuffer Resized(ImageBuffer image, std::int32_t width, std::int32_t height, std::int32_t kind)
{
    EXPECT_TRUE(ApplyKernel(transforms::Resize, image, width, height, kind, 0));
    EXPECT_EQ(image.width, width);
    EXPECT_EQ(image.height, height);
    EXPECT_TRUE(Sound(image));
    return image;
}

TEST(Resize, RepeatsAndDropsPixelsWithNearest)
{
    EXPECT_EQ(BytesOf(Resized(GreyOf(2, 1, {10, 20}), 4, 2, 0)),
              (std::vector<int>{10, 10, 20, 20, 10, 10, 20, 20}));
    EXPECT_EQ(BytesOf(Resized(GreyOf(6, 1, {1, 2, 3, 4, 5, 6}), 2, 1, 0)), (std::vector<int>{2, 5}));
}

TEST(Resize, InterpolatesBetweenPixelCentresWithBilinear)
{
    EXPECT_EQ(BytesOf(Resized(GreyOf(2, 1, {0, 100}), 4, 1, 1)), (std::vector<int>{0, 25, 75, 100}));
}

TEST(Resize, ToSameSizeChangesNothing)
{
    for (const std::int32_t kind : {0, 1, 2}) {
        const ImageBuffer before = RandomPicture(13, 7, 4);
        EXPECT_TRUE(Equal(Resized(before, 13, 7, kind), before));
    }
}

TEST(Resize, KeepsFlatPictureFlat)
{
    for (const auto& [width, height, channels] : Shapes())
        for (const std::int32_t kind : {0, 1, 2})
            for (const auto value : {std::uint8_t{1}, std::uint8_t{128}, std::uint8_t{255}})
                EXPECT_TRUE(Equal(Resized(Plain(width, height, channels, value), 17, 29, kind),
                                  Plain(17, 29, channels, value)));
}

static double Filter(double d, bool cubic)
{
    d = std::fabs(d);
    if (!cubic)
        return std::max(0.0, 1 - d);
    return d < 1 ? 1.5 * d * d * d - 2.5 * d * d + 1 : d < 2 ? -0.5 * d * d * d + 2.5 * d * d - 4 * d + 2 : 0;
}

// Both directions at once, summing over all source pixels.
static double Reference(const ImageBuffer& image, int width, int height, bool cubic, int x, int y, int c)
{
    const double step_x = static_cast<double>(image.width) / width;
    const double step_y = static_cast<double>(image.height) / height;
    double sum = 0, weights = 0;
    for (int j = 0; j < image.height; ++j) {
        for (int i = 0; i < image.width; ++i) {
            double weight = Filter((i + 0.5 - (x + 0.5) * step_x) / std::max(1.0, step_x), cubic) *
                            Filter((j + 0.5 - (y + 0.5) * step_y) / std::max(1.0, step_y), cubic);
            if (image.channels == 4 && c < 3)
                weight *= ValueAt(image, i, j, 3);
            sum += weight * ValueAt(image, i, j, c);
            weights += weight;
        }
    }
    return weights > 0.5 || image.channels != 4 ? std::min(255.0, std::max(0.0, sum / weights)) : -1;
}

TEST(Resize, MatchesFormulas)
{
    for (const auto& [width, height, channels] : Shapes()) {
        const ImageBuffer before =
            width == 33 ? RandomPicture(width, height, channels) : RandomOpaque(width, height, channels);
        for (const auto& [to_width, to_height] : {std::pair{5, 3}, {1, 1}, {9, 41}, {20, 20}}) {
            for (const bool cubic : {false, true}) {
                const ImageBuffer after = Resized(before, to_width, to_height, cubic ? 2 : 1);
                for (int y = 0; y < to_height; ++y)
                    for (int x = 0; x < to_width; ++x)
                        for (int c = 0; c < channels; ++c) {
                            const double expected = Reference(before, to_width, to_height, cubic, x, y, c);
                            // Where the cubic's undershoot leaves hardly any alpha, the colour is arbitrary.
                            const bool transparent = channels == 4 && c < 3 && ValueAt(after, x, y, 3) < 8;
                            if (!transparent && expected >= 0) {
                                ASSERT_NEAR(ValueAt(after, x, y, c), expected, 0.54)
                                    << width << "x" << height << " to " << to_width << "x" << to_height;
                            }
                        }
            }
        }
    }
}

TEST(Resize, DoesNotAliasWhenShrinking)
{
    ImageBuffer stripes = Plain(64, 64, 1, 0);
    for (std::size_t i = 0; i < stripes.bytes.size(); i += 2)
        stripes.bytes[i] = 255;
    for (const std::int32_t kind : {1, 2}) {
        const ImageBuffer small = Resized(stripes, 21, 21, kind);
        for (int x = 2; x < 19; ++x)
            EXPECT_NEAR(ValueAt(small, x, 10), 127, 12) << kind;
    }
}

TEST(Resize, IgnoresHiddenColours)
{
    ImageBuffer image = Plain(8, 8, 4, 0);
    for (std::size_t i = 0; i < image.bytes.size(); i += 8)
        image.bytes[i] = image.bytes[i + 1] = image.bytes[i + 2] = image.bytes[i + 3] = 200;
    for (const std::int32_t kind : {1, 2}) {
        const ImageBuffer small = Resized(image, 3, 3, kind);
        for (std::size_t i = 0; i < small.bytes.size(); i += 4)
            EXPECT_EQ(small.bytes[i], 200);
    }
}

TEST(Resize, KeepsProfileResolutionAndMetadata)
{
    ImageBuffer image = RandomPicture(4, 4, 3);
    image.icc_profile = {1, 2};
    image.metadata.xmp = {3};
    ASSERT_TRUE(ApplyKernel(transforms::Resize, image, 2, 2, 2, 0));
    EXPECT_EQ(image.icc_profile.size(), 2U);
    EXPECT_EQ(image.metadata.xmp.size(), 1U);
}

TEST(Resize, ClampsArguments)
{
    ImageBuffer image = RandomPicture(4, 4, 3), twin = image;
    ASSERT_TRUE(ApplyKernel(transforms::Resize, image, 0, INT32_MIN, -7, 0));
    EXPECT_EQ(image.width, 1);
    EXPECT_EQ(image.height, 1);
    image = twin;
    ASSERT_TRUE(ApplyKernel(transforms::Resize, image, 9, 9, 99, 0));
    EXPECT_TRUE(Equal(image, Resized(twin, 9, 9, 2)));
}

TEST(Resize, RefusesSizesBeyondLimits)
{
    const ImageBuffer before = RandomPicture(3, 3, 3);
    ImageBuffer image = before;
    EXPECT_FALSE(ApplyKernel(transforms::Resize, image, 32767, 32767, 2, 0));
    EXPECT_FALSE(ApplyKernel(transforms::Resize, image, 65501, 1, 0, 0));
    EXPECT_FALSE(ApplyKernel(transforms::Resize, image, INT32_MAX, INT32_MAX, 1, 0));
    EXPECT_TRUE(Equal(image, before));
}

TEST(Reproduce, TilesReducedCopies)
{
    ImageBuffer image = GreyOf(4, 2,
                               {10, 10, 30, 30,  //
                                10, 10, 30, 30});
    ASSERT_TRUE(ApplyKernel(transforms::Reproduce, image, 2));
    // In the 2x1 copy each pixel's triangle filter overlaps half of its neighbour.
    EXPECT_EQ(ValueAt(image, 0, 0), ValueAt(image, 2, 1));
    EXPECT_EQ(ValueAt(image, 1, 0), ValueAt(image, 3, 0));
    EXPECT_NEAR(ValueAt(image, 0, 0), 13, 1);
    EXPECT_NEAR(ValueAt(image, 1, 0), 27, 1);
}

TEST(Reproduce, RepeatsExactlyIfSidesDivide)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        ImageBuffer image = RandomPicture(24, 12, channels);
        ASSERT_TRUE(ApplyKernel(transforms::Reproduce, image, 3));
        for (int y = 0; y < 12; ++y)
            for (int x = 0; x < 24; ++x)
                ASSERT_EQ(ValueAt(image, x, y), ValueAt(image, x % 8, y % 4));
    }
}

TEST(Reproduce, ClampsCopiesAndIgnoresOne)
{
    const ImageBuffer before = RandomPicture(40, 33, 3);
    ImageBuffer once = before, below = before, max = before, above = before;
    ASSERT_TRUE(ApplyKernel(transforms::Reproduce, once, 1));
    ASSERT_TRUE(ApplyKernel(transforms::Reproduce, below, INT32_MIN));
    ASSERT_TRUE(ApplyKernel(transforms::Reproduce, max, 32));
    ASSERT_TRUE(ApplyKernel(transforms::Reproduce, above, INT32_MAX));
    EXPECT_TRUE(Equal(once, before));
    EXPECT_TRUE(Equal(below, before));
    EXPECT_TRUE(Equal(max, above));
}

TEST(Reproduce, KeepsSizeForAnyNumber)
{
    for (const auto& [width, height, channels] : Shapes()) {
        for (const std::int32_t copies : HostileLongs()) {
            ImageBuffer image = RandomPicture(width, height, channels);
            ASSERT_TRUE(ApplyKernel(transforms::Reproduce, image, copies));
            ASSERT_TRUE(Sound(image));
            ASSERT_EQ(image.width, width);
        }
    }
}
