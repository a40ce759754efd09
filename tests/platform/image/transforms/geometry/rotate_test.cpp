// Turns: quarters exactly, all other angles against a slow reference.
#include "src/platform/image/transforms/geometry/rotate.h"

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

static constexpr Colour kBlack = 0;
static constexpr Colour kRed = 255;

TEST(Rotate, TurnsClockwiseByQuarters)
{
    ImageBuffer aImage = aGreyOf(3, 2, {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(transforms::Rotate(aImage, 90, kRed));
    EXPECT_EQ(aImage.width, 2);
    EXPECT_EQ(aImage.height, 3);
    EXPECT_EQ(aImage.channels, 1);
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{4, 1, 5, 2, 6, 3}));
}

TEST(Rotate, TakesWholeTurnsOff)
{
    const ImageBuffer aBefore = aRandomPicture(7, 5, 3);
    for (const double dAngle : {0.0, 360.0, -360.0, 3.6e9}) {
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::Rotate(aImage, dAngle, kRed));
        EXPECT_TRUE(bEqual(aImage, aBefore)) << dAngle;
    }
    ImageBuffer aLeft = aBefore, aRight = aBefore;
    ASSERT_TRUE(transforms::Rotate(aLeft, -90, kBlack));
    ASSERT_TRUE(transforms::Rotate(aRight, 270, kBlack));
    EXPECT_TRUE(bEqual(aLeft, aRight));
}

TEST(Rotate, FourQuartersAreThePictureAgain)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
        ImageBuffer aImage = aBefore;
        for (int i = 0; i < 4; ++i)
            ASSERT_TRUE(transforms::Rotate(aImage, 90, kRed));
        EXPECT_TRUE(bEqual(aImage, aBefore));
    }
}

TEST(Rotate, GrowsTheCanvasToHoldAll)
{
    ImageBuffer aImage = aRandomPicture(40, 20, 3);
    ASSERT_TRUE(transforms::Rotate(aImage, 30, kBlack));
    EXPECT_EQ(aImage.width, 45);   // 40 cos 30 + 20 sin 30 = 44.6
    EXPECT_EQ(aImage.height, 38);  // 40 sin 30 + 20 cos 30 = 37.3
}

// The header's formula, literally, in doubles.
static double dReference(const ImageBuffer& aImage, const ImageBuffer& aCanvas, double dAngle, int x, int y,
                         int c, int nOutside)
{
    const double dRadians = dAngle * 3.14159265358979323846 / 180;
    const double dX = x - (aCanvas.width - 1) / 2.0, dY = y - (aCanvas.height - 1) / 2.0;
    const double dFromX = dX * std::cos(dRadians) + dY * std::sin(dRadians) + (aImage.width - 1) / 2.0;
    const double dFromY = dY * std::cos(dRadians) - dX * std::sin(dRadians) + (aImage.height - 1) / 2.0;
    const int lX = static_cast<int>(std::floor(dFromX)), lY = static_cast<int>(std::floor(dFromY));
    double dSum = 0;
    for (int j = 0; j < 2; ++j) {
        for (int i = 0; i < 2; ++i) {
            const bool bInside =
                lX + i >= 0 && lX + i < aImage.width && lY + j >= 0 && lY + j < aImage.height;
            dSum += (1 - std::fabs(dFromX - lX - i)) * (1 - std::fabs(dFromY - lY - j)) *
                    (bInside ? nValueAt(aImage, lX + i, lY + j, c) : nOutside);
        }
    }
    return dSum;
}

TEST(Rotate, AgreesWithTheFormulaWithinTheMapsResolution)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        for (const double dAngle : {30.0, -47.0, 135.5, 271.25}) {
            const ImageBuffer aBefore = aRandomOpaque(lWidth, lHeight, lChannels);
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(transforms::Rotate(aImage, dAngle, 0x0A0A0A));
            ASSERT_TRUE(bSound(aImage));
            for (int y = 0; y < aImage.height; ++y)
                for (int x = 0; x < aImage.width; ++x)
                    for (int c = 0; c < std::min(lChannels, 3); ++c)
                        ASSERT_NEAR(nValueAt(aImage, x, y, c),
                                    dReference(aBefore, aImage, dAngle, x, y, c, 10), 2.5)
                            << lWidth << "x" << lHeight << " " << dAngle << " at " << x << "," << y;
        }
    }
}

TEST(Rotate, LaysTheBackgroundIntoTheCorners)
{
    ImageBuffer aImage = aPlain(20, 20, 4, 200);
    ASSERT_TRUE(transforms::Rotate(aImage, 45, 0x030201));  // red 1, green 2, blue 3
    EXPECT_EQ(nValueAt(aImage, 0, 0, 0), 3);
    EXPECT_EQ(nValueAt(aImage, 0, 0, 1), 2);
    EXPECT_EQ(nValueAt(aImage, 0, 0, 2), 1);
    EXPECT_EQ(nValueAt(aImage, 0, 0, 3), 255);
    EXPECT_EQ(nValueAt(aImage, 14, 14, 0), 200);
    EXPECT_EQ(nValueAt(aImage, 14, 14, 3), 200);
}

TEST(Rotate, MakesAGreyPictureColouredOnlyForAColour)
{
    ImageBuffer aGrey = aPlain(9, 9, 1, 50), aColoured = aGrey;
    aColoured.icc_profile = {1, 2, 3};
    ASSERT_TRUE(transforms::Rotate(aGrey, 10, 0x808080));
    ASSERT_TRUE(transforms::Rotate(aColoured, 10, kRed));
    EXPECT_EQ(aGrey.channels, 1);
    EXPECT_EQ(nValueAt(aGrey, 0, 0), 128);
    EXPECT_EQ(aColoured.channels, 3);
    EXPECT_TRUE(aColoured.icc_profile.empty());
    EXPECT_EQ(nValueAt(aColoured, 0, 0, 2), 255);
    EXPECT_EQ(nValueAt(aColoured, 5, 5, 2), 50);
}

TEST(Rotate, KeepsHiddenColoursOfTransparentPixelsOut)
{
    ImageBuffer aImage = aPlain(8, 8, 4, 255);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 8)
        aImage.bytes[i] = aImage.bytes[i + 1] = aImage.bytes[i + 2] = aImage.bytes[i + 3] = 0;
    ASSERT_TRUE(transforms::Rotate(aImage, 20, 0xFFFFFF));
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 4)
        ASSERT_TRUE(aImage.bytes[i] == 255 || aImage.bytes[i + 3] == 0);
}

TEST(Rotate, IsAPictureForAnyAngle)
{
    for (const double dAngle : aHostileDoubles()) {
        for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
            ImageBuffer aImage = aRandomPicture(lWidth, lHeight, lChannels);
            ASSERT_TRUE(transforms::Rotate(aImage, dAngle, -1));
            ASSERT_TRUE(bSound(aImage));
        }
    }
}

TEST(Rotate, RefusesACanvasBeyondTheLimits)
{
    ImageBuffer aImage = aPlain(65500, 10, 1, 7);
    EXPECT_TRUE(transforms::Rotate(aImage, 90, kBlack));
    EXPECT_EQ(aImage.height, 65500);
    aImage = aPlain(65500, 65, 1, 7);
    const ImageBuffer aBefore = aImage;
    EXPECT_FALSE(transforms::Rotate(aImage, 45, kRed));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}
