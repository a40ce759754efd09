// Minimum and maximum filters.
#include "src/platform/image/transforms/filters/extremes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "src/platform/image/transforms/colour/levels.h"
#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

static int LeastAround(const ImageBuffer& image, int x, int y, int c, int size)
{
    int min = 255;
    for (int dy = -(size / 2); dy < size - size / 2; ++dy)
        for (int dx = -(size / 2); dx < size - size / 2; ++dx)
            min = std::min(min, ValueAt(image, x + dx, y + dy, c));
    return min;
}

TEST(FilterMinimal, TakesMinimumOfWindowForAllSizes)
{
    for (const int channels : kChannelCounts)
        for (const auto& [width, height] : kSizes)
            for (const int size : {2, 3, 4, 5, 8, 9, 16, 33}) {
                const ImageBuffer before = RandomPicture(width, height, channels);
                ImageBuffer image = before;
                ASSERT_TRUE(ApplyKernel(FilterMinimal, image, size));
                ASSERT_TRUE(SameAlpha(image, before));
                for (int y = 0; y < height; ++y)
                    for (int x = 0; x < width; ++x)
                        for (int c = 0; c < std::min(channels, 3); ++c)
                            ASSERT_EQ(ValueAt(image, x, y, c), LeastAround(before, x, y, c, size))
                                << width << "x" << height << "x" << channels << " size " << size << " at "
                                << x << " " << y;
            }
}

TEST(FilterMinimal, GivesSameResultInBandsAndStrips)
{
    ImageBuffer image = TestPicture(1100, 400, 3, {});
    image.bytes.assign(1100 * 400 * 3, 200);
    const auto place = [](int x, int y) { return static_cast<std::size_t>((y * 1100 + x) * 3 + 1); };
    for (const auto& [x, y] : {std::pair{0, 0}, {682, 199}, {683, 200}, {1099, 399}})
        image.bytes[place(x, y)] = 5;
    const ImageBuffer before = image;

    EXPECT_TRUE(ApplyKernel(FilterMinimal, image, 7));

    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 1100; ++x) {
            int expected = 200;
            for (const auto& [px, py] : {std::pair{0, 0}, {682, 199}, {683, 200}, {1099, 399}})
                if (std::abs(x - px) <= 3 && std::abs(y - py) <= 3)
                    expected = 5;
            ASSERT_EQ(image.bytes[place(x, y)], expected) << x << " " << y;
            ASSERT_EQ(image.bytes[place(x, y) + 1], 200);
        }
}

TEST(FilterMinimal, HandlesPicturesSmallerThanWindow)
{
    ImageBuffer image = RandomPicture(3, 3, 1);
    const std::uint8_t min = *std::min_element(image.bytes.begin(), image.bytes.end());
    for (const std::int32_t size : {256, 257, 2147483647}) {
        ImageBuffer covered = image;
        EXPECT_TRUE(ApplyKernel(FilterMinimal, covered, size));
        EXPECT_EQ(covered.bytes, PixelBytes(9, min));
    }
}

TEST(FilterMaximal, MirrorsFilterMinimal)
{
    for (const int channels : kChannelCounts)
        for (const int size : {2, 5, 12, 256}) {
            ImageBuffer greatest = RandomPicture(67, 41, channels), min = greatest;
            EXPECT_TRUE(ApplyKernel(FilterMaximal, greatest, size));
            EXPECT_TRUE(ApplyKernel(Invert, min) && ApplyKernel(FilterMinimal, min, size) &&
                        ApplyKernel(Invert, min));
            EXPECT_EQ(greatest.bytes, min.bytes);
        }
}

TEST(Extremes, ChangeNothingForWindowOfOnePixel)
{
    for (const std::int32_t size : {1, 0, -1, -2147483647 - 1}) {
        ImageBuffer image = RandomPicture(9, 8, 4);
        const PixelBytes before = image.bytes;
        EXPECT_TRUE(ApplyKernel(FilterMinimal, image, size) && ApplyKernel(FilterMaximal, image, size));
        EXPECT_EQ(image.bytes, before);
    }
}
