// Tests of the colours that hidden pixels lend.
#include "src/platform/image/transforms/rows/hidden.h"

#include "tests/platform/image/support/kernel_pictures.h"

using transforms::HiddenColours;

TEST(HiddenColours, AreThoseOfTheVisiblePixelsOfTheSmallestSquare)
{
    // The second pixel shares a square of two with the visible one, the others one of four.
    ImageBuffer aImage = aPicture(4, 1, 4, {10, 20, 30, 255, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 0});
    HiddenColours objHidden(aImage);
    EXPECT_EQ(aBytesOf(aImage),
              (std::vector<int>{10, 20, 30, 255, 10, 20, 30, 0, 10, 20, 30, 0, 10, 20, 30, 0}));
    objHidden.Forget();
}

TEST(HiddenColours, AreMeansThatWeighByAlpha)
{
    ImageBuffer aImage = aPicture(2, 2, 4, {0, 0, 0, 100, 90, 90, 90, 50, 7, 7, 7, 0, 8, 8, 8, 0});
    HiddenColours objHidden(aImage);
    EXPECT_EQ(nValueAt(aImage, 0, 1), 30);
    EXPECT_EQ(nValueAt(aImage, 1, 1, 2), 30);
    EXPECT_EQ(nValueAt(aImage, 1, 0), 90);
}

TEST(HiddenColours, GiveTheirOwnBackUnlessToldToForget)
{
    ImageBuffer aBefore = aRandomPicture(21, 14, 4);
    for (std::size_t i = 3; i < aBefore.bytes.size(); i += 12)
        aBefore.bytes[i] = 0;
    ImageBuffer aImage = aBefore;
    {
        const HiddenColours objHidden(aImage);
        EXPECT_FALSE(bEqual(aImage, aBefore));
    }
    EXPECT_TRUE(bEqual(aImage, aBefore));

    HiddenColours(aImage).Forget();
    EXPECT_FALSE(bEqual(aImage, aBefore));
}

TEST(HiddenColours, AreLeftWhereNothingOrAllIsHidden)
{
    ImageBuffer aOpaque = aRandomOpaque(9, 7, 4), aClear = aRandomPicture(9, 7, 4);
    for (std::size_t i = 3; i < aClear.bytes.size(); i += 4)
        aClear.bytes[i] = 0;
    for (ImageBuffer* pImage : {&aOpaque, &aClear}) {
        const ImageBuffer aBefore = *pImage;
        HiddenColours(*pImage).Forget();
        EXPECT_TRUE(bEqual(*pImage, aBefore));
    }
}
