// Deinterlacing.
#include "src/platform/image/transforms/filters/deinterlace.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

static ImageBuffer FiveLines()
{
    return TestPicture(1, 5, 1, {10, 20, 31, 40, 50});
}

TEST(Deinterlace, CopiesLineAbove)
{
    ImageBuffer odd = FiveLines(), even = FiveLines();
    EXPECT_TRUE(ApplyKernel(Deinterlace, odd, true, false) && ApplyKernel(Deinterlace, even, false, false));
    EXPECT_EQ(odd.bytes, (PixelBytes{10, 10, 31, 31, 50}));
    EXPECT_EQ(even.bytes, (PixelBytes{20, 20, 20, 40, 40}));
}

TEST(Deinterlace, AveragesLinesAboveAndBelow)
{
    ImageBuffer odd = FiveLines(), even = FiveLines();
    EXPECT_TRUE(ApplyKernel(Deinterlace, odd, true, true) && ApplyKernel(Deinterlace, even, false, true));
    EXPECT_EQ(odd.bytes, (PixelBytes{10, 21, 31, 41, 50}));
    EXPECT_EQ(even.bytes, (PixelBytes{20, 20, 30, 40, 40}));
}

TEST(Deinterlace, KeepsOtherFieldAlphaAndSingleLine)
{
    for (const int channels : kChannelCounts)
        for (const auto& [width, height] : kSizes)
            for (const bool is_odd : {false, true})
                for (const bool interpolate : {false, true}) {
                    const ImageBuffer before = RandomPicture(width, height, channels);
                    ImageBuffer image = before;
                    ASSERT_TRUE(ApplyKernel(Deinterlace, image, is_odd, interpolate));
                    ASSERT_TRUE(SameAlpha(image, before));
                    for (int y = 0; y < height; ++y) {
                        if ((y % 2 == 1) == is_odd && height > 1)
                            continue;
                        for (int x = 0; x < width; ++x)
                            for (int c = 0; c < channels; ++c)
                                ASSERT_EQ(ValueAt(image, x, y, c), ValueAt(before, x, y, c));
                    }
                }
}
