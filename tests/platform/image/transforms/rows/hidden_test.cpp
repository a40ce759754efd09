// Colours given to hidden pixels.
#include "src/platform/image/transforms/rows/hidden.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/kernel_pictures.h"

using transforms::HiddenColours;

TEST(HiddenColours, AreMeansOfVisiblePixelsInSmallestBlock)
{
    // The second pixel shares a 2x2 block with the visible one, the others a 4x4 block.
    ImageBuffer image = TestPicture(4, 1, 4, {10, 20, 30, 255, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 0});
    HiddenColours hidden(image);
    EXPECT_EQ(BytesOf(image),
              (std::vector<int>{10, 20, 30, 255, 10, 20, 30, 0, 10, 20, 30, 0, 10, 20, 30, 0}));
    hidden.Forget();
}

TEST(HiddenColours, AreWeightedByAlpha)
{
    ImageBuffer image = TestPicture(2, 2, 4, {0, 0, 0, 100, 90, 90, 90, 50, 7, 7, 7, 0, 8, 8, 8, 0});
    HiddenColours hidden(image);
    EXPECT_EQ(ValueAt(image, 0, 1), 30);
    EXPECT_EQ(ValueAt(image, 1, 1, 2), 30);
    EXPECT_EQ(ValueAt(image, 1, 0), 90);
}

TEST(HiddenColours, AreRestoredUnlessForgotten)
{
    ImageBuffer before = RandomPicture(21, 14, 4);
    for (std::size_t i = 3; i < before.bytes.size(); i += 12)
        before.bytes[i] = 0;
    ImageBuffer image = before;
    {
        const HiddenColours hidden(image);
        EXPECT_FALSE(Equal(image, before));
    }
    EXPECT_TRUE(Equal(image, before));

    HiddenColours(image).Forget();
    EXPECT_FALSE(Equal(image, before));
}

TEST(HiddenColours, StayIfNoneOrAllPixelsAreHidden)
{
    ImageBuffer opaque = RandomOpaque(9, 7, 4), clear = RandomPicture(9, 7, 4);
    for (std::size_t i = 3; i < clear.bytes.size(); i += 4)
        clear.bytes[i] = 0;
    for (ImageBuffer* image : {&opaque, &clear}) {
        const ImageBuffer before = *image;
        HiddenColours(*image).Forget();
        EXPECT_TRUE(Equal(*image, before));
    }
}
