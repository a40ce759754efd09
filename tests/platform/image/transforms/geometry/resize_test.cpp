// Other sizes: against the formulas in doubles, and what a person would notice.
#include "src/platform/image/transforms/geometry/resize.h"

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

static ImageBuffer aResized(ImageBuffer aImage, std::int32_t lWidth, std::int32_t lHeight, std::int32_t lKind)
{
    EXPECT_TRUE(transforms::Resize(aImage, lWidth, lHeight, lKind, 0));
    EXPECT_EQ(aImage.width, lWidth);
    EXPECT_EQ(aImage.height, lHeight);
    EXPECT_TRUE(bSound(aImage));
    return aImage;
}

TEST(Resize, RepeatsAndDropsPixelsByNearest)
{
    EXPECT_EQ(aBytesOf(aResized(aGreyOf(2, 1, {10, 20}), 4, 2, 0)),
              (std::vector<int>{10, 10, 20, 20, 10, 10, 20, 20}));
    EXPECT_EQ(aBytesOf(aResized(aGreyOf(6, 1, {1, 2, 3, 4, 5, 6}), 2, 1, 0)), (std::vector<int>{2, 5}));
}

TEST(Resize, InterpolatesBetweenMiddlesByBilinear)
{
    EXPECT_EQ(aBytesOf(aResized(aGreyOf(2, 1, {0, 100}), 4, 1, 1)), (std::vector<int>{0, 25, 75, 100}));
}

TEST(Resize, ToItsOwnSizeChangesNothing)
{
    for (const std::int32_t lKind : {0, 1, 2}) {
        const ImageBuffer aBefore = aRandomPicture(13, 7, 4);
        EXPECT_TRUE(bEqual(aResized(aBefore, 13, 7, lKind), aBefore));
    }
}

TEST(Resize, KeepsAPlainPicturePlain)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes())
        for (const std::int32_t lKind : {0, 1, 2})
            for (const auto nValue : {std::uint8_t{1}, std::uint8_t{128}, std::uint8_t{255}})
                EXPECT_TRUE(bEqual(aResized(aPlain(lWidth, lHeight, lChannels, nValue), 17, 29, lKind),
                                   aPlain(17, 29, lChannels, nValue)));
}

static double dFilter(double d, bool bCubic)
{
    d = std::fabs(d);
    if (!bCubic)
        return std::max(0.0, 1 - d);
    return d < 1 ? 1.5 * d * d * d - 2.5 * d * d + 1 : d < 2 ? -0.5 * d * d * d + 2.5 * d * d - 4 * d + 2 : 0;
}

// Both directions at once, over all source pixels.
static double dReference(const ImageBuffer& aImage, int lWidth, int lHeight, bool bCubic, int x, int y, int c)
{
    const double dStepX = static_cast<double>(aImage.width) / lWidth;
    const double dStepY = static_cast<double>(aImage.height) / lHeight;
    double dSum = 0, dWeights = 0;
    for (int j = 0; j < aImage.height; ++j) {
        for (int i = 0; i < aImage.width; ++i) {
            double dWeight = dFilter((i + 0.5 - (x + 0.5) * dStepX) / std::max(1.0, dStepX), bCubic) *
                             dFilter((j + 0.5 - (y + 0.5) * dStepY) / std::max(1.0, dStepY), bCubic);
            if (aImage.channels == 4 && c < 3)
                dWeight *= nValueAt(aImage, i, j, 3);
            dSum += dWeight * nValueAt(aImage, i, j, c);
            dWeights += dWeight;
        }
    }
    return dWeights > 0.5 || aImage.channels != 4 ? std::min(255.0, std::max(0.0, dSum / dWeights)) : -1;
}

TEST(Resize, AgreesWithTheFormulas)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        const ImageBuffer aBefore = lWidth == 33 ? aRandomPicture(lWidth, lHeight, lChannels)
                                                 : aRandomOpaque(lWidth, lHeight, lChannels);
        for (const auto& [lToWidth, lToHeight] : {std::pair{5, 3}, {1, 1}, {9, 41}, {20, 20}}) {
            for (const bool bCubic : {false, true}) {
                const ImageBuffer aAfter = aResized(aBefore, lToWidth, lToHeight, bCubic ? 2 : 1);
                for (int y = 0; y < lToHeight; ++y)
                    for (int x = 0; x < lToWidth; ++x)
                        for (int c = 0; c < lChannels; ++c) {
                            const double dExpected =
                                dReference(aBefore, lToWidth, lToHeight, bCubic, x, y, c);
                            // Where the cubic's overshoot has left next to no alpha, the colour is anything.
                            const bool bClear = lChannels == 4 && c < 3 && nValueAt(aAfter, x, y, 3) < 8;
                            if (!bClear && dExpected >= 0) {
                                ASSERT_NEAR(nValueAt(aAfter, x, y, c), dExpected, 0.54)
                                    << lWidth << "x" << lHeight << " to " << lToWidth << "x" << lToHeight;
                            }
                        }
            }
        }
    }
}

TEST(Resize, LeavesNoFalsePatternWhenItShrinks)
{
    ImageBuffer aStripes = aPlain(64, 64, 1, 0);
    for (std::size_t i = 0; i < aStripes.bytes.size(); i += 2)
        aStripes.bytes[i] = 255;
    for (const std::int32_t lKind : {1, 2}) {
        const ImageBuffer aSmall = aResized(aStripes, 21, 21, lKind);
        for (int x = 2; x < 19; ++x)
            EXPECT_NEAR(nValueAt(aSmall, x, 10), 127, 12) << lKind;
    }
}

TEST(Resize, KeepsHiddenColoursOfTransparentPixelsOut)
{
    ImageBuffer aImage = aPlain(8, 8, 4, 0);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 8)
        aImage.bytes[i] = aImage.bytes[i + 1] = aImage.bytes[i + 2] = aImage.bytes[i + 3] = 200;
    for (const std::int32_t lKind : {1, 2}) {
        const ImageBuffer aSmall = aResized(aImage, 3, 3, lKind);
        for (std::size_t i = 0; i < aSmall.bytes.size(); i += 4)
            EXPECT_EQ(aSmall.bytes[i], 200);
    }
}

TEST(Resize, KeepsWhatStandsBesideThePixels)
{
    ImageBuffer aImage = aRandomPicture(4, 4, 3);
    aImage.icc_profile = {1, 2};
    aImage.metadata.xmp = {3};
    ASSERT_TRUE(transforms::Resize(aImage, 2, 2, 2, 0));
    EXPECT_EQ(aImage.icc_profile.size(), 2U);
    EXPECT_EQ(aImage.metadata.xmp.size(), 1U);
}

TEST(Resize, BringsNumbersToTheirNearestSense)
{
    ImageBuffer aImage = aRandomPicture(4, 4, 3), aTwin = aImage;
    ASSERT_TRUE(transforms::Resize(aImage, 0, INT32_MIN, -7, 0));
    EXPECT_EQ(aImage.width, 1);
    EXPECT_EQ(aImage.height, 1);
    aImage = aTwin;
    ASSERT_TRUE(transforms::Resize(aImage, 9, 9, 99, 0));
    EXPECT_TRUE(bEqual(aImage, aResized(aTwin, 9, 9, 2)));
}

TEST(Resize, RefusesWhatIsLargerThanAPictureMayBe)
{
    const ImageBuffer aBefore = aRandomPicture(3, 3, 3);
    ImageBuffer aImage = aBefore;
    EXPECT_FALSE(transforms::Resize(aImage, 32767, 32767, 2, 0));
    EXPECT_FALSE(transforms::Resize(aImage, 65501, 1, 0, 0));
    EXPECT_FALSE(transforms::Resize(aImage, INT32_MAX, INT32_MAX, 1, 0));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}

TEST(Reproduce, LaysCopiesSideBySide)
{
    ImageBuffer aImage = aGreyOf(4, 2,
                                 {10, 10, 30, 30,  //
                                  10, 10, 30, 30});
    ASSERT_TRUE(transforms::Reproduce(aImage, 2));
    // Each pixel of the copy, two wide and one high, has its triangle reach half over its neighbour.
    EXPECT_EQ(nValueAt(aImage, 0, 0), nValueAt(aImage, 2, 1));
    EXPECT_EQ(nValueAt(aImage, 1, 0), nValueAt(aImage, 3, 0));
    EXPECT_NEAR(nValueAt(aImage, 0, 0), 13, 1);
    EXPECT_NEAR(nValueAt(aImage, 1, 0), 27, 1);
}

TEST(Reproduce, RepeatsWhereTheSidesDivide)
{
    for (const std::int32_t lChannels : {1, 3, 4}) {
        ImageBuffer aImage = aRandomPicture(24, 12, lChannels);
        ASSERT_TRUE(transforms::Reproduce(aImage, 3));
        for (int y = 0; y < 12; ++y)
            for (int x = 0; x < 24; ++x)
                ASSERT_EQ(nValueAt(aImage, x, y), nValueAt(aImage, x % 8, y % 4));
    }
}

TEST(Reproduce, OnceChangesNothingAndNumbersBeyondTheRangeAreBroughtIntoIt)
{
    const ImageBuffer aBefore = aRandomPicture(40, 33, 3);
    ImageBuffer aOnce = aBefore, aBelow = aBefore, aMost = aBefore, aAbove = aBefore;
    ASSERT_TRUE(transforms::Reproduce(aOnce, 1));
    ASSERT_TRUE(transforms::Reproduce(aBelow, INT32_MIN));
    ASSERT_TRUE(transforms::Reproduce(aMost, 32));
    ASSERT_TRUE(transforms::Reproduce(aAbove, INT32_MAX));
    EXPECT_TRUE(bEqual(aOnce, aBefore));
    EXPECT_TRUE(bEqual(aBelow, aBefore));
    EXPECT_TRUE(bEqual(aMost, aAbove));
}

TEST(Reproduce, IsAPictureOfTheSameSizeForAnyNumber)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        for (const std::int32_t lCopies : aHostileLongs()) {
            ImageBuffer aImage = aRandomPicture(lWidth, lHeight, lChannels);
            ASSERT_TRUE(transforms::Reproduce(aImage, lCopies));
            ASSERT_TRUE(bSound(aImage));
            ASSERT_EQ(aImage.width, lWidth);
        }
    }
}
