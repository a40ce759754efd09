// Perspective, skew and twirl: sizes, directions, formulas, arbitrary angles.
#include "src/platform/image/transforms/geometry/distort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tests/platform/image/support/kernel_pictures.h"

static constexpr double kToRadians = 3.14159265358979323846 / 180;

TEST(Perspective, WithoutAngleChangesNothing)
{
    const ImageBuffer before = RandomPicture(9, 6, 4);
    for (const double angle : {0.0, -0.0, std::nan("")}) {
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::Perspective, image, true, angle));
        EXPECT_TRUE(Equal(image, before));
    }
}

// How many pixels of a row or column of a white picture are still white.
static int White(const ImageBuffer& image, int line, bool is_row)
{
    int n = 0;
    for (int i = 0; i < (is_row ? image.width : image.height); ++i)
        n += ValueAt(image, is_row ? i : line, is_row ? line : i) >= 128;
    return n;
}

TEST(Perspective, ShortensTopOrBottomWhenVertical)
{
    ImageBuffer up = Plain(200, 100, 1, 255), down = up;
    ASSERT_TRUE(ApplyKernel(transforms::Perspective, up, true, 60));
    ASSERT_TRUE(ApplyKernel(transforms::Perspective, down, true, -60));
    EXPECT_NEAR(White(up, 0, true), 100, 2);  // cos 60 = 0.5
    EXPECT_NEAR(White(up, 99, true), 200, 2);
    EXPECT_NEAR(White(up, 50, true), 150, 2);
    EXPECT_NEAR(White(down, 0, true), 200, 2);
    EXPECT_NEAR(White(down, 99, true), 100, 2);
}

TEST(Perspective, DoesNotDarkenFullLengthEdge)
{
    for (const double angle : {20.0, 45.0, 80.0}) {
        ImageBuffer up = Plain(200, 100, 3, 255), left = Plain(100, 200, 3, 255), down = up, right = left;
        ASSERT_TRUE(ApplyKernel(transforms::Perspective, up, true, angle));
        ASSERT_TRUE(ApplyKernel(transforms::Perspective, down, true, -angle));
        ASSERT_TRUE(ApplyKernel(transforms::Perspective, left, false, angle));
        ASSERT_TRUE(ApplyKernel(transforms::Perspective, right, false, -angle));
        EXPECT_EQ(ValueAt(up, 100, 99), 255) << angle;
        EXPECT_EQ(ValueAt(down, 100, 0), 255) << angle;
        EXPECT_EQ(ValueAt(left, 0, 100), 255) << angle;
        EXPECT_EQ(ValueAt(right, 99, 100), 255) << angle;
    }
}

TEST(Perspective, ShortensRightOrLeftOtherwise)
{
    ImageBuffer image = Plain(100, 200, 3, 255);
    ASSERT_TRUE(ApplyKernel(transforms::Perspective, image, false, 60));
    EXPECT_NEAR(White(image, 99, false), 100, 2);
    EXPECT_NEAR(White(image, 0, false), 200, 2);
    EXPECT_EQ(image.width, 100);
    EXPECT_EQ(image.height, 200);
}

TEST(Perspective, KeepsStraightLinesStraight)
{
    // After the tilt the diagonal runs from the left end of the shortened top edge to the bottom right
    // corner.
    ImageBuffer image = Plain(200, 200, 1, 0);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < y; ++x)
            image.bytes[static_cast<std::size_t>(y * 200 + x)] = 255;
    ASSERT_TRUE(ApplyKernel(transforms::Perspective, image, true, 60));
    for (int y = 10; y < 190; y += 20) {
        const double line = 50 + (200 - 50) * (y + 0.5) / 200;
        EXPECT_GE(ValueAt(image, static_cast<int>(line) - 3, y), 200) << y;
        EXPECT_LE(ValueAt(image, static_cast<int>(line) + 3, y), 55) << y;
    }
}

TEST(Perspective, UncoversTransparentPixelsWithAlpha)
{
    ImageBuffer image = Plain(50, 50, 4, 255);
    ASSERT_TRUE(ApplyKernel(transforms::Perspective, image, true, 45));
    EXPECT_EQ(ValueAt(image, 0, 0, 3), 0);
    EXPECT_EQ(ValueAt(image, 25, 25, 3), 255);
    for (std::size_t i = 0; i < image.bytes.size(); i += 4)
        ASSERT_TRUE(image.bytes[i] == 255 || image.bytes[i + 3] == 0);  // no dark fringe
}

TEST(Skew, WithoutAngleChangesNothing)
{
    const ImageBuffer before = RandomPicture(9, 6, 3);
    for (const double angle : {0.0, std::nan("")}) {
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::Skew, image, false, angle));
        EXPECT_TRUE(Equal(image, before));
    }
}

TEST(Skew, MovesTopRightByHeightAt45Degrees)
{
    ImageBuffer image = Plain(40, 20, 1, 255);
    ASSERT_TRUE(ApplyKernel(transforms::Skew, image, false, 45));
    EXPECT_EQ(image.width, 60);
    EXPECT_EQ(image.height, 20);
    EXPECT_EQ(ValueAt(image, 18, 0), 0);
    EXPECT_EQ(ValueAt(image, 21, 0), 255);
    EXPECT_EQ(ValueAt(image, 1, 19), 255);
    EXPECT_EQ(ValueAt(image, 42, 19), 0);
}

TEST(Skew, MovesRightEdgeDownWhenVertical)
{
    ImageBuffer image = Plain(20, 40, 4, 255);
    ASSERT_TRUE(ApplyKernel(transforms::Skew, image, true, 45));
    EXPECT_EQ(image.width, 20);
    EXPECT_EQ(image.height, 60);
    EXPECT_EQ(ValueAt(image, 0, 1, 3), 255);
    EXPECT_EQ(ValueAt(image, 19, 0, 3), 0);
    EXPECT_EQ(ValueAt(image, 19, 58, 3), 255);
}

TEST(Skew, MovesOtherWayForNegativeAngle)
{
    for (const auto& [width, height, channels] : Shapes()) {
        ImageBuffer left = RandomOpaque(width, height, 3), right = left;
        ASSERT_TRUE(ApplyKernel(transforms::Skew, right, false, 45));
        for (auto* p = left.bytes.data(); p < left.bytes.data() + left.bytes.size(); p += 3 * width)
            for (int x = 0; x < width / 2; ++x)
                for (int c = 0; c < 3; ++c)
                    std::swap(p[3 * x + c], p[3 * (width - 1 - x) + c]);
        ASSERT_TRUE(ApplyKernel(transforms::Skew, left, false, -45));
        ASSERT_EQ(left.width, right.width);
        for (int y = 0; y < left.height; ++y)
            for (int x = 0; x < left.width; ++x)
                ASSERT_NEAR(ValueAt(left, x, y), ValueAt(right, left.width - 1 - x, y), 2);
    }
}

TEST(Skew, StaysWithinSizeLimits)
{
    ImageBuffer image = Plain(100, 5000, 1, 255);
    setenv("VARNEL_MAX_MEGAPIXELS", "1", 1);
    const bool skewed = ApplyKernel(transforms::Skew, image, false, 80);
    unsetenv("VARNEL_MAX_MEGAPIXELS");
    EXPECT_TRUE(skewed);
    EXPECT_EQ(image.width, 200);
    EXPECT_EQ(image.height, 5000);
    EXPECT_EQ(ValueAt(image, 150, 1), 255);
    EXPECT_EQ(ValueAt(image, 50, 4998), 255);
}

TEST(Twirl, WithoutAngleChangesNothing)
{
    const ImageBuffer before = RandomPicture(9, 6, 3);
    for (const double angle : {0.0, std::nan("")}) {
        ImageBuffer image = before;
        ASSERT_TRUE(ApplyKernel(transforms::Twirl, image, angle));
        EXPECT_TRUE(Equal(image, before));
    }
}

TEST(Twirl, RotatesCentreClockwiseAndLeavesEdges)
{
    // The upper half is white; near the centre a quarter turn clockwise moves it to the right.
    ImageBuffer image = Plain(101, 101, 1, 0);
    std::fill_n(image.bytes.begin(), 50 * 101, std::uint8_t{255});
    ASSERT_TRUE(ApplyKernel(transforms::Twirl, image, 90));
    EXPECT_EQ(ValueAt(image, 53, 50), 255);
    EXPECT_EQ(ValueAt(image, 47, 50), 0);
    EXPECT_EQ(ValueAt(image, 0, 20), 255);
    EXPECT_EQ(ValueAt(image, 100, 80), 0);
}

TEST(Twirl, MatchesFormula)
{
    // A gradient, so that a coordinate error of a few hundredths of a pixel is at most one level.
    ImageBuffer image = Plain(120, 80, 1, 0);
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 120; ++x)
            image.bytes[static_cast<std::size_t>(y * 120 + x)] = static_cast<std::uint8_t>(x + y);
    for (const double angle : {50.0, -200.0, 360.0}) {
        ImageBuffer twirled = image;
        ASSERT_TRUE(ApplyKernel(transforms::Twirl, twirled, angle));
        for (int y = 0; y < 80; ++y) {
            for (int x = 0; x < 120; ++x) {
                const double unit_x = (x - 59.5) / 60, unit_y = (y - 39.5) / 40;
                const double d = std::min(1.0, std::hypot(unit_x, unit_y));
                const double turn = angle * kToRadians * (1 - d) * (1 - d);
                const double from_x = 59.5 + 60 * (unit_x * std::cos(turn) + unit_y * std::sin(turn));
                const double from_y = 39.5 + 40 * (unit_y * std::cos(turn) - unit_x * std::sin(turn));
                ASSERT_NEAR(ValueAt(twirled, x, y), from_x + from_y, 1.1) << x << "," << y;
            }
        }
    }
}

TEST(Twirl, MovesNothingOutsideEllipse)
{
    const ImageBuffer before = RandomPicture(301, 97, 3);
    ImageBuffer image = before;
    ASSERT_TRUE(ApplyKernel(transforms::Twirl, image, 300));
    for (int i = 0; i < 10; ++i)
        for (int j = 0; j < 5; ++j)
            EXPECT_EQ(ValueAt(image, i, j, 1), ValueAt(before, i, j, 1));
}

TEST(Distortions, GivePictureForAnyAngle)
{
    for (const double angle : HostileDoubles()) {
        for (const auto& [width, height, channels] : Shapes()) {
            for (const bool vertical : {false, true}) {
                ImageBuffer one = RandomPicture(width, height, channels), two = one, three = one;
                ASSERT_TRUE(ApplyKernel(transforms::Perspective, one, vertical, angle));
                ASSERT_TRUE(ApplyKernel(transforms::Skew, two, vertical, angle));
                ASSERT_TRUE(ApplyKernel(transforms::Twirl, three, angle));
                ASSERT_TRUE(Sound(one) && Sound(two) && Sound(three));
                ASSERT_EQ(one.width, width);
                ASSERT_EQ(three.height, height);
            }
        }
    }
}
