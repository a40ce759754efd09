// Rotation: exact quarter turns, other angles compared with a slow reference.
#include "src/platform/image/transforms/geometry/rotate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

static constexpr Colour kBlack = 0;
static constexpr Colour kRed = 255;

TEST(Rotate, RotatesClockwiseByQuarters)
{
    ImageBuffer image = GreyOf(3, 2, {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, 90, kRed));
    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 3);
    EXPECT_EQ(image.channels, 1);
    EXPECT_EQ(BytesOf(image), (std::vector<int>{4, 1, 5, 2, 6, 3}));
}

TEST(Rotate, TakesAngleModulo360)
{
    const ImageBuffer before = RandomPicture(7, 5, 3);
    for (const double angle : {0.0, 360.0, -360.0, 3.6e9}) {
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, angle, kRed));
        EXPECT_TRUE(Equal(image, before)) << angle;
    }
    ImageBuffer left = before, right = before;
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, left, -90, kBlack));
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, right, 270, kBlack));
    EXPECT_TRUE(Equal(left, right));
}

TEST(Rotate, RestoresPictureAfterFourQuarters)
{
    for (const auto& [width, height, channels] : Shapes()) {
        const ImageBuffer before = RandomPicture(width, height, channels);
        ImageBuffer image = before;
        for (int i = 0; i < 4; ++i)
            ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, 90, kRed));
        EXPECT_TRUE(Equal(image, before));
    }
}

TEST(Rotate, GrowsCanvasToFit)
{
    ImageBuffer image = RandomPicture(40, 20, 3);
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, 30, kBlack));
    EXPECT_EQ(image.width, 45);   // 40 cos 30 + 20 sin 30 = 44.6
    EXPECT_EQ(image.height, 38);  // 40 sin 30 + 20 cos 30 = 37.3
}

// The header's formula in doubles.
static double Reference(const ImageBuffer& image, const ImageBuffer& canvas, double angle, int x, int y,
                        int c, int outside)
{
    const double radians = angle * 3.14159265358979323846 / 180;
    const double dx = x - (canvas.width - 1) / 2.0, dy = y - (canvas.height - 1) / 2.0;
    const double from_x = dx * std::cos(radians) + dy * std::sin(radians) + (image.width - 1) / 2.0;
    const double from_y = dy * std::cos(radians) - dx * std::sin(radians) + (image.height - 1) / 2.0;
    const int left = static_cast<int>(std::floor(from_x)), top = static_cast<int>(std::floor(from_y));
    double sum = 0;
    for (int j = 0; j < 2; ++j) {
        for (int i = 0; i < 2; ++i) {
            const bool inside =
                left + i >= 0 && left + i < image.width && top + j >= 0 && top + j < image.height;
            sum += (1 - std::fabs(from_x - left - i)) * (1 - std::fabs(from_y - top - j)) *
                   (inside ? ValueAt(image, left + i, top + j, c) : outside);
        }
    }
    return sum;
}

TEST(Rotate, MatchesFormulaWithinResolutionOfMap)
{
    for (const auto& [width, height, channels] : Shapes()) {
        for (const double angle : {30.0, -47.0, 135.5, 271.25}) {
            const ImageBuffer before = RandomOpaque(width, height, channels);
            ImageBuffer image = before;
            ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, angle, 0x0A0A0A));
            ASSERT_TRUE(Sound(image));
            for (int y = 0; y < image.height; ++y)
                for (int x = 0; x < image.width; ++x)
                    for (int c = 0; c < std::min(channels, 3); ++c)
                        ASSERT_NEAR(ValueAt(image, x, y, c), Reference(before, image, angle, x, y, c, 10),
                                    2.5)
                            << width << "x" << height << " " << angle << " at " << x << "," << y;
        }
    }
}

TEST(Rotate, FillsCornersWithBackground)
{
    ImageBuffer image = Plain(20, 20, 4, 200);
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, 45, 0x030201));  // red 1, green 2, blue 3
    EXPECT_EQ(ValueAt(image, 0, 0, 0), 3);
    EXPECT_EQ(ValueAt(image, 0, 0, 1), 2);
    EXPECT_EQ(ValueAt(image, 0, 0, 2), 1);
    EXPECT_EQ(ValueAt(image, 0, 0, 3), 255);
    EXPECT_EQ(ValueAt(image, 14, 14, 0), 200);
    EXPECT_EQ(ValueAt(image, 14, 14, 3), 200);
}

TEST(Rotate, WidensGreyPictureOnlyForColouredBackground)
{
    ImageBuffer grey = Plain(9, 9, 1, 50), coloured = grey;
    coloured.icc_profile = {1, 2, 3};
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, grey, 10, 0x808080));
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, coloured, 10, kRed));
    EXPECT_EQ(grey.channels, 1);
    EXPECT_EQ(ValueAt(grey, 0, 0), 128);
    EXPECT_EQ(coloured.channels, 3);
    EXPECT_TRUE(coloured.icc_profile.empty());
    EXPECT_EQ(ValueAt(coloured, 0, 0, 2), 255);
    EXPECT_EQ(ValueAt(coloured, 5, 5, 2), 50);
}

TEST(Rotate, IgnoresHiddenColours)
{
    ImageBuffer image = Plain(8, 8, 4, 255);
    for (std::size_t i = 0; i < image.bytes.size(); i += 8)
        image.bytes[i] = image.bytes[i + 1] = image.bytes[i + 2] = image.bytes[i + 3] = 0;
    ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, 20, 0xFFFFFF));
    for (std::size_t i = 0; i < image.bytes.size(); i += 4)
        ASSERT_TRUE(image.bytes[i] == 255 || image.bytes[i + 3] == 0);
}

TEST(Rotate, GivesPictureForAnyAngle)
{
    for (const double angle : HostileDoubles()) {
        for (const auto& [width, height, channels] : Shapes()) {
            ImageBuffer image = RandomPicture(width, height, channels);
            ASSERT_TRUE(ApplyKernel(transforms::Rotate, image, angle, -1));
            ASSERT_TRUE(Sound(image));
        }
    }
}

TEST(Rotate, RefusesCanvasBeyondLimits)
{
    ImageBuffer image = Plain(65500, 10, 1, 7);
    EXPECT_TRUE(ApplyKernel(transforms::Rotate, image, 90, kBlack));
    EXPECT_EQ(image.height, 65500);
    image = Plain(65500, 65, 1, 7);
    const ImageBuffer before = image;
    EXPECT_FALSE(ApplyKernel(transforms::Rotate, image, 45, kRed));
    EXPECT_TRUE(Equal(image, before));
}
