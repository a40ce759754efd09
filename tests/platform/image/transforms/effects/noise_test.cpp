// Noise and diffusion: always the same, as strong as asked, and within the picture.
#include "src/platform/image/transforms/effects/noise.h"

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/kernel_pictures.h"

TEST(AddNoise, IsTheSameEachTimeForTheSamePicture)
{
    for (const bool bMonochrome : {false, true}) {
        ImageBuffer aOne = aRandomPicture(300, 401, 3), aOther = aOne;
        ASSERT_TRUE(transforms::AddNoise(aOne, 35, bMonochrome));
        ASSERT_TRUE(transforms::AddNoise(aOther, 35, bMonochrome));
        EXPECT_TRUE(bEqual(aOne, aOther));
    }
}

TEST(AddNoise, HasTheDeviationAskedForAndNoBias)
{
    for (const std::int32_t lLevel : {5, 20, 35}) {
        ImageBuffer aImage = aPlain(200, 200, 3, 128);
        ASSERT_TRUE(transforms::AddNoise(aImage, lLevel, false));
        double dSum = 0, dSquares = 0;
        for (const int nByte : aImage.bytes) {
            dSum += nByte - 128;
            dSquares += (nByte - 128) * (nByte - 128);
        }
        const auto dCount = static_cast<double>(aImage.bytes.size());
        EXPECT_NEAR(dSum / dCount, 0, 0.5);
        EXPECT_NEAR(std::sqrt(dSquares / dCount), lLevel, 0.03 * lLevel);
    }
}

TEST(AddNoise, IsGreyWhenMonochromeAndColouredOtherwise)
{
    ImageBuffer aGrey = aPlain(50, 50, 4, 128), aColoured = aGrey;
    ASSERT_TRUE(transforms::AddNoise(aGrey, 35, true));
    ASSERT_TRUE(transforms::AddNoise(aColoured, 35, false));
    int nDifferent = 0;
    for (std::size_t i = 0; i < aGrey.bytes.size(); i += 4) {
        ASSERT_EQ(aGrey.bytes[i], aGrey.bytes[i + 1]);
        ASSERT_EQ(aGrey.bytes[i], aGrey.bytes[i + 2]);
        ASSERT_EQ(aGrey.bytes[i + 3], 128);
        nDifferent += aColoured.bytes[i] != aColoured.bytes[i + 1];
    }
    EXPECT_GT(nDifferent, 2000);
}

TEST(AddNoise, OfNothingChangesNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 8, 3);
    ImageBuffer aImage = aBefore;
    for (const std::int32_t lLevel : {0, -1, INT32_MIN})
        ASSERT_TRUE(transforms::AddNoise(aImage, lLevel, true));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}

TEST(Diffuse, TakesOnlyPixelsFromNearby)
{
    // A slope, where a pixel's value says where it came from.
    ImageBuffer aBefore = aPlain(80, 80, 1, 0);
    for (int i = 0; i < 80 * 80; ++i)
        aBefore.bytes[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(3 * (i % 80));
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::Diffuse(aImage, 10, 100));
    int nFurthest = 0;
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 80; ++x)
            nFurthest = std::max(nFurthest, std::abs(nValueAt(aImage, x, y) - nValueAt(aBefore, x, y)));
    EXPECT_EQ(nFurthest, 30);
}

TEST(Diffuse, MovesMoreWithMorePenetration)
{
    const ImageBuffer aBefore = aRandomPicture(100, 100, 3);
    int nLast = 0;
    for (const double dPenetration : {1.0, 10.0, 30.0, 1e9}) {
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::Diffuse(aImage, 10, dPenetration));
        int nMoved = 0;
        for (std::size_t i = 0; i < aImage.bytes.size(); i += 3)
            nMoved += aImage.bytes[i] != aBefore.bytes[i];
        EXPECT_GT(nMoved, nLast);
        EXPECT_NEAR(nMoved, 10000 * (1 - std::exp(-dPenetration / 10)), 250);
        nLast = nMoved;
    }
}

TEST(Diffuse, MovesWholePixelsAndCarriesAlpha)
{
    ImageBuffer aImage = aPlain(40, 40, 4, 0);
    for (std::size_t i = 0; i < aImage.bytes.size(); ++i)
        aImage.bytes[i] = static_cast<std::uint8_t>(i % 4 == 3 ? i / 4 : i / 64);
    const ImageBuffer aBefore = aImage;
    ASSERT_TRUE(transforms::Diffuse(aImage, 5, 10));
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 4) {
        ASSERT_EQ(aImage.bytes[i], aImage.bytes[i + 1]);
        ASSERT_EQ(aImage.bytes[i], aImage.bytes[i + 2]);
        ASSERT_EQ(aImage.bytes[i + 3], aBefore.bytes[i + 3]);
    }
}

TEST(Diffuse, IsTheSameEachTimeAndNothingForZero)
{
    const ImageBuffer aBefore = aRandomPicture(200, 300, 3);
    ImageBuffer aOne = aBefore, aOther = aBefore, aNone = aBefore;
    ASSERT_TRUE(transforms::Diffuse(aOne, 10, 10));
    ASSERT_TRUE(transforms::Diffuse(aOther, 10, 10));
    EXPECT_TRUE(bEqual(aOne, aOther));
    for (const double dPenetration : {0.0, -3.0, std::nan("")})
        ASSERT_TRUE(transforms::Diffuse(aNone, 10, dPenetration));
    for (const std::int32_t lDistance : {0, -3, INT32_MIN})
        ASSERT_TRUE(transforms::Diffuse(aNone, lDistance, 10));
    EXPECT_TRUE(bEqual(aNone, aBefore));
}
