// Noise and diffusion: reproducible, of the requested strength, within the picture.
#include "src/platform/image/transforms/effects/noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

TEST(AddNoise, GivesSameNoiseForSamePicture)
{
    for (const bool monochrome : {false, true}) {
        ImageBuffer one = RandomPicture(300, 401, 3), other = one;
        ASSERT_TRUE(ApplyKernel(transforms::AddNoise, one, 35, monochrome));
        ASSERT_TRUE(ApplyKernel(transforms::AddNoise, other, 35, monochrome));
        EXPECT_TRUE(Equal(one, other));
    }
}

TEST(AddNoise, HasRequestedDeviationAndNoBias)
{
    for (const std::int32_t level : {5, 20, 35}) {
        ImageBuffer image = Plain(200, 200, 3, 128);
        ASSERT_TRUE(ApplyKernel(transforms::AddNoise, image, level, false));
        double sum = 0, squares = 0;
        for (const int byte : image.bytes) {
            sum += byte - 128;
            squares += (byte - 128) * (byte - 128);
        }
        const auto count = static_cast<double>(image.bytes.size());
        EXPECT_NEAR(sum / count, 0, 0.5);
        EXPECT_NEAR(std::sqrt(squares / count), level, 0.03 * level);
    }
}

TEST(AddNoise, IsGreyOnlyWhenMonochrome)
{
    ImageBuffer grey = Plain(50, 50, 4, 128), coloured = grey;
    ASSERT_TRUE(ApplyKernel(transforms::AddNoise, grey, 35, true));
    ASSERT_TRUE(ApplyKernel(transforms::AddNoise, coloured, 35, false));
    int different = 0;
    for (std::size_t i = 0; i < grey.bytes.size(); i += 4) {
        ASSERT_EQ(grey.bytes[i], grey.bytes[i + 1]);
        ASSERT_EQ(grey.bytes[i], grey.bytes[i + 2]);
        ASSERT_EQ(grey.bytes[i + 3], 128);
        different += coloured.bytes[i] != coloured.bytes[i + 1];
    }
    EXPECT_GT(different, 2000);
}

TEST(AddNoise, WithoutLevelChangesNothing)
{
    const ImageBuffer before = RandomPicture(9, 8, 3);
    ImageBuffer image = before;
    for (const std::int32_t level : {0, -1, INT32_MIN})
        ASSERT_TRUE(ApplyKernel(transforms::AddNoise, image, level, true));
    EXPECT_TRUE(Equal(image, before));
}

TEST(Diffuse, TakesPixelsFromWithinDistance)
{
    // A gradient, so that a pixel's value tells where it came from.
    ImageBuffer before = Plain(80, 80, 1, 0);
    for (int i = 0; i < 80 * 80; ++i)
        before.bytes[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(3 * (i % 80));
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::Diffuse, image, 10, 100));
    int furthest = 0;
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 80; ++x)
            furthest = std::max(furthest, std::abs(ValueAt(image, x, y) - ValueAt(before, x, y)));
    EXPECT_EQ(furthest, 30);
}

TEST(Diffuse, MovesMorePixelsWithHigherPenetration)
{
    const ImageBuffer before = RandomPicture(100, 100, 3);
    int last = 0;
    for (const double penetration : {1.0, 10.0, 30.0, 1e9}) {
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::Diffuse, image, 10, penetration));
        int moved = 0;
        for (std::size_t i = 0; i < image.bytes.size(); i += 3)
            moved += image.bytes[i] != before.bytes[i];
        EXPECT_GT(moved, last);
        EXPECT_NEAR(moved, 10000 * (1 - std::exp(-penetration / 10)), 250);
        last = moved;
    }
}

TEST(Diffuse, MovesWholePixelsButLeavesAlpha)
{
    ImageBuffer image = Plain(40, 40, 4, 0);
    for (std::size_t i = 0; i < image.bytes.size(); ++i)
        image.bytes[i] = static_cast<std::uint8_t>(i % 4 == 3 ? i / 4 : i / 64);
    const ImageBuffer before = image;
    ASSERT_TRUE(ApplyKernel(transforms::Diffuse, image, 5, 10));
    for (std::size_t i = 0; i < image.bytes.size(); i += 4) {
        ASSERT_EQ(image.bytes[i], image.bytes[i + 1]);
        ASSERT_EQ(image.bytes[i], image.bytes[i + 2]);
        ASSERT_EQ(image.bytes[i + 3], before.bytes[i + 3]);
    }
}

TEST(Diffuse, IsReproducibleAndNeutralAtZero)
{
    const ImageBuffer before = RandomPicture(200, 300, 3);
    ImageBuffer one = before, other = before, none = before;
    ASSERT_TRUE(ApplyKernel(transforms::Diffuse, one, 10, 10));
    ASSERT_TRUE(ApplyKernel(transforms::Diffuse, other, 10, 10));
    EXPECT_TRUE(Equal(one, other));
    for (const double penetration : {0.0, -3.0, std::nan("")})
        ASSERT_TRUE(ApplyKernel(transforms::Diffuse, none, 10, penetration));
    for (const std::int32_t distance : {0, -3, INT32_MIN})
        ASSERT_TRUE(ApplyKernel(transforms::Diffuse, none, distance, 10));
    EXPECT_TRUE(Equal(none, before));
}
