// Intensity and threshold.
#include "src/platform/image/transforms/rows/intensity.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

TEST(Intensity, WeightsGreenMostAndBlueLeast)
{
    ImageBuffer image = TestPicture(4, 1, 3, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255});

    EXPECT_TRUE(ApplyKernel(Intensity, image));

    EXPECT_EQ(image.bytes, (PixelBytes{29, 29, 29, 150, 150, 150, 76, 76, 76, 255, 255, 255}));
}

TEST(Intensity, MatchesFormulaOnRandomPixels)
{
    for (const int channels : {3, 4})
        for (const auto& [width, height] : kSizes) {
            const ImageBuffer before = RandomPicture(width, height, channels);
            ImageBuffer image = before;
            ASSERT_TRUE(ApplyKernel(Intensity, image));
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    const double expected = 0.114 * ValueAt(before, x, y, 0) +
                                            0.587 * ValueAt(before, x, y, 1) +
                                            0.299 * ValueAt(before, x, y, 2);
                    for (int c = 0; c < 3; ++c)
                        ASSERT_NEAR(ValueAt(image, x, y, c), expected, 0.51);
                }
        }
}

TEST(Intensity, LeavesGreysUnchanged)
{
    for (unsigned n = 0; n < 256; ++n)
        EXPECT_EQ(IntensityOfPixel(n, n, n), n);
    ImageBuffer image = RandomPicture(9, 9, 1);
    const PixelBytes before = image.bytes;
    EXPECT_TRUE(ApplyKernel(Intensity, image));
    EXPECT_EQ(image.bytes, before);
}

TEST(Threshold, MakesPixelsAboveLevelWhiteAndOthersBlack)
{
    ImageBuffer grey = TestPicture(3, 1, 1, {99, 100, 101});
    ImageBuffer colour = TestPicture(2, 1, 4, {255, 0, 0, 9, 0, 255, 0, 8});

    EXPECT_TRUE(ApplyKernel(Threshold, grey, 100));
    EXPECT_TRUE(ApplyKernel(Threshold, colour, 100));

    EXPECT_EQ(grey.bytes, (PixelBytes{0, 0, 255}));
    EXPECT_EQ(colour.bytes, (PixelBytes{0, 0, 0, 9, 255, 255, 255, 8}));
}

TEST(Threshold, HandlesBothEndsOfRange)
{
    ImageBuffer top = TestPicture(3, 1, 1, {0, 1, 255}), bottom = top;
    EXPECT_TRUE(ApplyKernel(Threshold, top, 255) && ApplyKernel(Threshold, bottom, 0));
    EXPECT_EQ(top.bytes, (PixelBytes{0, 0, 0}));
    EXPECT_EQ(bottom.bytes, (PixelBytes{0, 255, 255}));
}
