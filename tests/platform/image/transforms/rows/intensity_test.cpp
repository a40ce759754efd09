// Tests of intensity and of the threshold on it.
#include "src/platform/image/transforms/rows/intensity.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

TEST(Intensity, WeighsGreenMostAndBlueLeast)
{
    ImageBuffer aImage = aPicture(4, 1, 3, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255});

    EXPECT_TRUE(Intensity(aImage));

    EXPECT_EQ(aImage.bytes, (PixelBytes{29, 29, 29, 150, 150, 150, 76, 76, 76, 255, 255, 255}));
}

TEST(Intensity, AgreesWithTheFormulaOverRandomPixels)
{
    for (const int lChannels : {3, 4})
        for (const auto& [lWidth, lHeight] : kSizes) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(Intensity(aImage));
            for (int y = 0; y < lHeight; ++y)
                for (int x = 0; x < lWidth; ++x) {
                    const double dExpected = 0.114 * nValueAt(aBefore, x, y, 0) +
                                             0.587 * nValueAt(aBefore, x, y, 1) +
                                             0.299 * nValueAt(aBefore, x, y, 2);
                    for (int c = 0; c < 3; ++c)
                        ASSERT_NEAR(nValueAt(aImage, x, y, c), dExpected, 0.51);
                }
        }
}

TEST(Intensity, LeavesGreysOfAnyLevel)
{
    for (unsigned n = 0; n < 256; ++n)
        EXPECT_EQ(nIntensity(n, n, n), n);
    ImageBuffer aImage = aRandomPicture(9, 9, 1);
    const PixelBytes aBefore = aImage.bytes;
    EXPECT_TRUE(Intensity(aImage));
    EXPECT_EQ(aImage.bytes, aBefore);
}

TEST(Threshold, TurnsWhatIsAboveItWhiteAndTheRestBlack)
{
    ImageBuffer aGrey = aPicture(3, 1, 1, {99, 100, 101});
    ImageBuffer aColour = aPicture(2, 1, 4, {255, 0, 0, 9, 0, 255, 0, 8});

    EXPECT_TRUE(Threshold(aGrey, 100));
    EXPECT_TRUE(Threshold(aColour, 100));

    EXPECT_EQ(aGrey.bytes, (PixelBytes{0, 0, 255}));
    EXPECT_EQ(aColour.bytes, (PixelBytes{0, 0, 0, 9, 255, 255, 255, 8}));
}

TEST(Threshold, LeavesNothingWhiteAtTheTopAndOnlyBlackBlackAtTheBottom)
{
    ImageBuffer aTop = aPicture(3, 1, 1, {0, 1, 255}), aBottom = aTop;
    EXPECT_TRUE(Threshold(aTop, 255) && Threshold(aBottom, 0));
    EXPECT_EQ(aTop.bytes, (PixelBytes{0, 0, 0}));
    EXPECT_EQ(aBottom.bytes, (PixelBytes{0, 255, 255}));
}
