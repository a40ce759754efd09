// Tests of taking one half picture out of an interlaced one.
#include "src/platform/image/transforms/filters/deinterlace.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

static ImageBuffer aFiveLines()
{
    return aPicture(1, 5, 1, {10, 20, 31, 40, 50});
}

TEST(Deinterlace, RepeatsTheLineAbove)
{
    ImageBuffer aOdd = aFiveLines(), aEven = aFiveLines();
    EXPECT_TRUE(Deinterlace(aOdd, true, false) && Deinterlace(aEven, false, false));
    EXPECT_EQ(aOdd.bytes, (PixelBytes{10, 10, 31, 31, 50}));
    EXPECT_EQ(aEven.bytes, (PixelBytes{20, 20, 20, 40, 40}));
}

TEST(Deinterlace, TakesTheMeanOfTheLinesAboveAndBelow)
{
    ImageBuffer aOdd = aFiveLines(), aEven = aFiveLines();
    EXPECT_TRUE(Deinterlace(aOdd, true, true) && Deinterlace(aEven, false, true));
    EXPECT_EQ(aOdd.bytes, (PixelBytes{10, 21, 31, 41, 50}));
    EXPECT_EQ(aEven.bytes, (PixelBytes{20, 20, 30, 40, 40}));
}

TEST(Deinterlace, LeavesTheOtherLinesAlphaAndAPictureOfOneLine)
{
    for (const int lChannels : kChannelCounts)
        for (const auto& [lWidth, lHeight] : kSizes)
            for (const bool bOdd : {false, true})
                for (const bool bInterpolate : {false, true}) {
                    const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
                    ImageBuffer aImage = aBefore;
                    ASSERT_TRUE(Deinterlace(aImage, bOdd, bInterpolate));
                    ASSERT_TRUE(bSameAlpha(aImage, aBefore));
                    for (int y = 0; y < lHeight; ++y) {
                        if ((y % 2 == 1) == bOdd && lHeight > 1)
                            continue;
                        for (int x = 0; x < lWidth; ++x)
                            for (int c = 0; c < lChannels; ++c)
                                ASSERT_EQ(nValueAt(aImage, x, y, c), nValueAt(aBefore, x, y, c));
                    }
                }
}
