// Mirrors: each pixel at its place, and twice is the picture again.
#include "src/platform/image/transforms/geometry/flip.h"

#include "tests/platform/image/support/kernel_pictures.h"

TEST(Flip, ExchangesTopAndBottomWhenVertical)
{
    ImageBuffer aImage = aGreyOf(2, 3, {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(transforms::Flip(aImage, true));
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{5, 6, 3, 4, 1, 2}));
}

TEST(Flip, ExchangesLeftAndRightOtherwise)
{
    ImageBuffer aImage = aGreyOf(3, 2, {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(transforms::Flip(aImage, false));
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{3, 2, 1, 6, 5, 4}));
}

TEST(Flip, MovesWholePixels)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        for (const bool bVertical : {false, true}) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(transforms::Flip(aImage, bVertical));
            for (std::int32_t y = 0; y < lHeight; ++y)
                for (std::int32_t x = 0; x < lWidth; ++x)
                    for (std::int32_t c = 0; c < lChannels; ++c)
                        ASSERT_EQ(nValueAt(aImage, x, y, c), nValueAt(aBefore, bVertical ? x : lWidth - 1 - x,
                                                                      bVertical ? lHeight - 1 - y : y, c));
            ASSERT_TRUE(transforms::Flip(aImage, bVertical));
            EXPECT_TRUE(bEqual(aImage, aBefore));
        }
    }
}
