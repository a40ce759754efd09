// Tests of equalisation.
#include "src/platform/image/transforms/colour/equalize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "src/platform/image/transforms/rows/intensity.h"
#include "tests/platform/image/support/kernel_pictures.h"

using namespace transforms;

TEST(Equalize, SpreadsTheLevelsByHowManyPixelsLieBelow)
{
    ImageBuffer aImage = aPicture(5, 1, 1, {10, 20, 20, 20, 30}), aHalf = aImage;

    EXPECT_TRUE(Equalize(aImage, 1) && Equalize(aHalf, 0.5));

    EXPECT_EQ(aImage.bytes, (PixelBytes{0, 191, 191, 191, 255}));
    EXPECT_EQ(aHalf.bytes, (PixelBytes{5, 106, 106, 106, 143}));  // 20 + (191.25 - 20) / 2
}

TEST(Equalize, LeavesAPictureOfOneIntensity)
{
    ImageBuffer aImage = aPicture(2, 1, 3, {5, 60, 7, 5, 60, 7});
    EXPECT_TRUE(Equalize(aImage, 1));
    EXPECT_EQ(aImage.bytes, (PixelBytes{5, 60, 7, 5, 60, 7}));
}

TEST(Equalize, ChangesNothingAtNaughtBelowOrForNaN)
{
    for (const int lChannels : kChannelCounts) {
        const ImageBuffer aBefore = aRandomPicture(33, 17, lChannels);
        ImageBuffer aImage = aBefore;
        EXPECT_TRUE(Equalize(aImage, 0) && Equalize(aImage, -2) && Equalize(aImage, std::nan("")));
        EXPECT_EQ(aImage.bytes, aBefore.bytes);
    }
}

// Slowly, by the formula, over all pixels for each pixel.
static double dEqualized(const ImageBuffer& aIntensities, int nOwn)
{
    double dAtMost = 0, dDarkest = 0, dAll = 0;
    int nLeast = 255;
    for (const std::uint8_t n : aIntensities.bytes)
        nLeast = std::min<int>(nLeast, n);
    for (const std::uint8_t n : aIntensities.bytes) {
        dAtMost += n <= nOwn;
        dDarkest += n == nLeast;
        ++dAll;
    }
    return 255 * (dAtMost - dDarkest) / (dAll - dDarkest);
}

TEST(Equalize, MovesTheIntensityByTheFormulaAndKeepsEveryHue)
{
    for (const double dLevel : {0.25, 1.0, 50.0}) {
        const ImageBuffer aBefore = aRandomPicture(31, 20, 3, 3);
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(Equalize(aImage, dLevel));
        ImageBuffer aIntensities = aRandomPicture(31, 20, 1);
        IntensityRow(aBefore.bytes.data(), 31 * 20, 3, aIntensities.bytes.data());
        for (int x = 0; x < 31 * 20; ++x) {
            const std::uint8_t* pOld = aBefore.bytes.data() + 3 * x;
            const std::uint8_t* pNew = aImage.bytes.data() + 3 * x;
            const int nOwn = aIntensities.bytes[static_cast<std::size_t>(x)];
            const double dNew = nOwn + std::min(dLevel, 1.0) * (dEqualized(aIntensities, nOwn) - nOwn);
            EXPECT_NEAR(nIntensity(pNew[0], pNew[1], pNew[2]), dNew, 2);
            // Same hue: the differences between the channels keep their proportion.
            for (const auto& [c, d] : {std::pair{0, 1}, {1, 2}, {2, 0}}) {
                const double dCross = (pNew[c] - pNew[d]) * (pOld[d] - pOld[3 - c - d]) -
                                      (pNew[d] - pNew[3 - c - d]) * (pOld[c] - pOld[d]);
                EXPECT_LE(std::fabs(dCross), 2.0 * 255);
            }
        }
    }
}

TEST(Equalize, KeepsTheOrderOfGreysAndDoesNotCountWhatIsNotSeen)
{
    ImageBuffer aRamp = aPicture(256, 1, 1, {});
    for (int n = 0; n < 256; ++n)
        aRamp.bytes.push_back(static_cast<std::uint8_t>(n * n / 255));
    EXPECT_TRUE(Equalize(aRamp, 1));
    EXPECT_TRUE(std::is_sorted(aRamp.bytes.begin(), aRamp.bytes.end()));
    EXPECT_EQ(aRamp.bytes.back(), 255);

    ImageBuffer aCut = aPicture(3, 1, 4, {0, 0, 0, 0, 90, 90, 90, 255, 100, 100, 100, 255});
    EXPECT_TRUE(Equalize(aCut, 1));
    EXPECT_EQ(aCut.bytes, (PixelBytes{0, 0, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255}));
}
