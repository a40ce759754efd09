// Flips in both directions.
#include "src/platform/image/transforms/geometry/flip.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/kernel_pictures.h"

TEST(Flip, SwapsTopAndBottomWhenVertical)
{
    ImageBuffer image = GreyOf(2, 3, {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(ApplyKernel(transforms::Flip, image, true));
    EXPECT_EQ(BytesOf(image), (std::vector<int>{5, 6, 3, 4, 1, 2}));
}

TEST(Flip, SwapsLeftAndRightOtherwise)
{
    ImageBuffer image = GreyOf(3, 2, {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(ApplyKernel(transforms::Flip, image, false));
    EXPECT_EQ(BytesOf(image), (std::vector<int>{3, 2, 1, 6, 5, 4}));
}

TEST(Flip, MovesWholePixels)
{
    for (const auto& [width, height, channels] : Shapes()) {
        for (const bool vertical : {false, true}) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            ImageBuffer image = before;
            ASSERT_TRUE(ApplyKernel(transforms::Flip, image, vertical));
            for (std::int32_t y = 0; y < height; ++y)
                for (std::int32_t x = 0; x < width; ++x)
                    for (std::int32_t c = 0; c < channels; ++c)
                        ASSERT_EQ(ValueAt(image, x, y, c), ValueAt(before, vertical ? x : width - 1 - x,
                                                                   vertical ? height - 1 - y : y, c));
            ASSERT_TRUE(ApplyKernel(transforms::Flip, image, vertical));
            EXPECT_TRUE(Equal(image, before));
        }
    }
}
