// Dilation, erosion, emboss, relief, texture, mosaic, halftones and contours.
#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include "src/platform/image/transforms/effects/emboss.h"
#include "src/platform/image/transforms/effects/halftones.h"
#include "src/platform/image/transforms/effects/mosaic.h"
#include "src/platform/image/transforms/effects/motion_blur.h"
#include "src/platform/image/transforms/effects/noise.h"
#include "src/platform/image/transforms/effects/texture.h"
#include "src/platform/image/transforms/filters/contours.h"
#include "src/platform/image/transforms/filters/dilation.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "tests/platform/image/support/kernel_pictures.h"

static constexpr double kToRadians = 3.14159265358979323846 / 180;

static int nClamped(double d)
{
    return static_cast<int>(std::floor(std::clamp(d, 0.0, 255.0) + 0.5));
}

// The value of the formula of the header for every byte but alpha.
template <typename Formula>
static void ExpectEach(const ImageBuffer& aImage, const ImageBuffer& aBefore, const Formula& fnExpected,
                       double dTolerance = 0)
{
    ASSERT_EQ(aImage.channels, aBefore.channels);
    for (int y = 0; y < aImage.height; ++y)
        for (int x = 0; x < aImage.width; ++x)
            for (int c = 0; c < aImage.channels; ++c) {
                if (c == 3)
                    ASSERT_EQ(nValueAt(aImage, x, y, 3), nValueAt(aBefore, x, y, 3));
                else
                    ASSERT_NEAR(nValueAt(aImage, x, y, c), fnExpected(x, y, c), dTolerance)
                        << aImage.width << "x" << aImage.height << "x" << aImage.channels << " at " << x
                        << "," << y << "," << c;
            }
}

static int nAround(const ImageBuffer& aImage, int x, int y, int c, bool bSquare, bool bGreatest)
{
    int nFound = nValueAt(aImage, x, y, c);
    for (int j = -1; j <= 1; ++j)
        for (int i = -1; i <= 1; ++i)
            if (bSquare || i == 0 || j == 0) {
                const int n = nValueAt(aImage, x + i, y + j, c);
                nFound = bGreatest ? std::max(nFound, n) : std::min(nFound, n);
            }
    return nFound;
}

TEST(Dilation, AgreesWithItsFormula)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes())
        for (const bool bSquare : {false, true})
            for (const auto& [nLevel, nThreshold] :
                 {std::pair{100, 100}, {255, 0}, {0, 0}, {7, 200}, {255, 255}}) {
                const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
                ImageBuffer aImage = aBefore;
                ASSERT_TRUE(transforms::Dilation(aImage, static_cast<std::uint8_t>(nLevel),
                                                 static_cast<std::uint8_t>(nThreshold), bSquare));
                const int nMost = nLevel, nLimit = nThreshold;
                ExpectEach(aImage, aBefore, [&](int x, int y, int c) {
                    const int m = nAround(aBefore, x, y, c, bSquare, true), v = nValueAt(aBefore, x, y, c);
                    return m > nLimit ? std::min(m, v + nMost) : v;
                });
            }
}

TEST(Erosion, AgreesWithItsFormula)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes())
        for (const bool bSquare : {false, true})
            for (const auto& [nLevel, nThreshold] :
                 {std::pair{40, 40}, {255, 0}, {0, 0}, {7, 200}, {255, 255}}) {
                const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
                ImageBuffer aImage = aBefore;
                ASSERT_TRUE(transforms::Erosion(aImage, static_cast<std::uint8_t>(nLevel),
                                                static_cast<std::uint8_t>(nThreshold), bSquare));
                const int nMost = nLevel, nLimit = nThreshold;
                ExpectEach(aImage, aBefore, [&](int x, int y, int c) {
                    const int m = nAround(aBefore, x, y, c, bSquare, false), v = nValueAt(aBefore, x, y, c);
                    return v > nLimit ? std::max(m, v - nMost) : v;
                });
            }
}

static double dSlope(const ImageBuffer& aImage, int x, int y, int c, double dAngle, int h)
{
    return std::cos(dAngle * kToRadians) * (nValueAt(aImage, x - h, y, c) - nValueAt(aImage, x + h, y, c)) +
           std::sin(dAngle * kToRadians) * (nValueAt(aImage, x, y + h, c) - nValueAt(aImage, x, y - h, c));
}

TEST(Emboss, AgreesWithItsFormula)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes())
        for (const auto& [dAngle, lHigh, dBrightness] :
             {std::tuple{0.0, 1, 10.0}, {90.0, 2, 5.0}, {217.0, 16, 1.0}, {33.0, 999, 20.0}}) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(transforms::Emboss(aImage, dAngle, lHigh, dBrightness));
            ExpectEach(
                aImage, aBefore,
                [&, dTurn = dAngle, lReach = std::min(lHigh, 16), dFactor = dBrightness / 10](int x, int y,
                                                                                              int c) {
                    return nClamped(128 + dFactor * dSlope(aBefore, x, y, c, dTurn, lReach));
                },
                1);
        }
}

TEST(Emboss, WorksInBandsAsInOnePiece)
{
    // Large enough for several bands, and as high as the rows that a band needs of the next one.
    const ImageBuffer aBefore = aRandomPicture(500, 700, 3);
    ImageBuffer aImage = aBefore;
    ASSERT_TRUE(transforms::Emboss(aImage, 70, 16, 3));
    ExpectEach(
        aImage, aBefore,
        [&](int x, int y, int c) { return nClamped(128 + 0.3 * dSlope(aBefore, x, y, c, 70, 16)); }, 1);
}

TEST(Emboss, LightsTheSideTowardsTheLight)
{
    // A raised square: its right side is the light one under light from the right, its top under light from
    // above.
    ImageBuffer aImage = aPlain(20, 20, 1, 50);
    for (int y = 5; y < 15; ++y)
        std::fill_n(aImage.bytes.begin() + y * 20 + 5, 10, std::uint8_t{90});
    ImageBuffer aRight = aImage, aAbove = aImage;
    ASSERT_TRUE(transforms::Emboss(aRight, 0, 1, 10));
    EXPECT_EQ(nValueAt(aRight, 14, 10), 168);
    EXPECT_EQ(nValueAt(aRight, 5, 10), 88);
    EXPECT_EQ(nValueAt(aRight, 10, 10), 128);
    ASSERT_TRUE(transforms::Emboss(aAbove, 90, 1, 10));
    EXPECT_EQ(nValueAt(aAbove, 10, 5), 168);
    EXPECT_EQ(nValueAt(aAbove, 10, 14), 88);
}

TEST(Relief, IsAddedToTheColours)
{
    for (const std::int32_t lChannels : {1, 3, 4}) {
        const ImageBuffer aBefore = aRandomPicture(21, 13, lChannels);
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::Relief(aImage, 60, 0.5, 0));
        ImageBuffer aGrey = aPlain(21, 13, 1, 0);
        for (int i = 0; i < 21 * 13; ++i) {
            const int x = i % 21, y = i / 21;
            aGrey.bytes[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(
                lChannels == 1
                    ? nValueAt(aBefore, x, y)
                    : transforms::nIntensity(static_cast<std::uint32_t>(nValueAt(aBefore, x, y, 0)),
                                             static_cast<std::uint32_t>(nValueAt(aBefore, x, y, 1)),
                                             static_cast<std::uint32_t>(nValueAt(aBefore, x, y, 2))));
        }
        ExpectEach(
            aImage, aBefore,
            [&](int x, int y, int c) {
                return nClamped(nValueAt(aBefore, x, y, c) + 0.5 * dSlope(aGrey, x, y, 0, 60, 1));
            },
            1);
    }
}

TEST(Relief, IsFlatterTheSmootherItIs)
{
    const ImageBuffer aBefore = aRandomPicture(64, 64, 1);
    double dLast = 1e9;
    for (const double dSmoothness : {0.0, 4.0, 8.0, 16.0}) {
        ImageBuffer aImage = aBefore;
        ASSERT_TRUE(transforms::Relief(aImage, 0, 1, dSmoothness));
        double dChange = 0;
        for (std::size_t i = 0; i < aImage.bytes.size(); ++i)
            dChange += std::abs(aImage.bytes[i] - aBefore.bytes[i]);
        EXPECT_LT(dChange, dLast);
        dLast = dChange;
    }
}

TEST(Texturize, AddsTheTexturesSlopesAndNothingElse)
{
    for (std::int32_t lTexture = 0; lTexture < 6; ++lTexture) {
        const std::vector<float> aHeights = transforms::aTextureHeights(lTexture);
        ASSERT_EQ(aHeights.size(), 256U * 256U);
        ImageBuffer aImage = aPlain(300, 280, 3, 128);
        ASSERT_TRUE(transforms::Texturize(aImage, 0, 3, lTexture));
        double dSquares = 0, dSum = 0;
        for (int y = 0; y < 256; ++y)
            for (int x = 1; x < 255; ++x) {
                const double dTowards = aHeights[static_cast<std::size_t>(y * 256 + x - 1)] -
                                        aHeights[static_cast<std::size_t>(y * 256 + x + 1)];
                const int nLit = nValueAt(aImage, x, y) - 128;
                ASSERT_TRUE(nLit * dTowards > 0 || std::abs(nLit) <= 1) << lTexture;
                dSquares += nLit * nLit;
                dSum += nLit;
            }
        EXPECT_NEAR(dSum / (256 * 254), 0, 0.3) << lTexture;
        EXPECT_GT(std::sqrt(dSquares / (256 * 254)), 1.5) << lTexture;
        EXPECT_LT(std::sqrt(dSquares / (256 * 254)), 12) << lTexture;
        EXPECT_EQ(nValueAt(aImage, 3, 4), nValueAt(aImage, 259, 260));
    }
}

TEST(Texturize, HasSixTexturesAndNoMore)
{
    const ImageBuffer aBefore = aPlain(64, 64, 1, 128);
    std::vector<ImageBuffer> aAll;
    for (std::int32_t lTexture = 0; lTexture < 6; ++lTexture) {
        aAll.push_back(aBefore);
        ASSERT_TRUE(transforms::Texturize(aAll.back(), 10, 5, lTexture));
        for (std::size_t i = 0; i + 1 < aAll.size(); ++i)
            EXPECT_FALSE(bEqual(aAll[i], aAll.back()));
    }
    ImageBuffer aBeyond = aBefore, aBelow = aBefore;
    ASSERT_TRUE(transforms::Texturize(aBeyond, 10, 5, INT32_MAX));
    ASSERT_TRUE(transforms::Texturize(aBelow, 10, 5, INT32_MIN));
    EXPECT_TRUE(bEqual(aBeyond, aAll[5]));
    EXPECT_TRUE(bEqual(aBelow, aAll[0]));
}

TEST(Mosaic, GivesPlainTilesTheirMean)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes())
        for (const std::int32_t lTile : {2, 3, 6, 40}) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(transforms::Mosaic(aImage, lTile, true));
            const std::int32_t lRight = lWidth, lBottom = lHeight;
            ExpectEach(aImage, aBefore, [&](int x, int y, int c) {
                int nSum = 0, nPixels = 0;
                for (int j = y / lTile * lTile; j < std::min(y / lTile * lTile + lTile, lBottom); ++j)
                    for (int i = x / lTile * lTile; i < std::min(x / lTile * lTile + lTile, lRight);
                         ++i, ++nPixels)
                        nSum += nValueAt(aBefore, i, j, c);
                return (nSum + nPixels / 2) / nPixels;
            });
        }
}

TEST(Mosaic, PassesSoftlyFromTileToTile)
{
    ImageBuffer aImage = aGreyOf(8, 1, {0, 0, 0, 0, 160, 160, 160, 160});
    ASSERT_TRUE(transforms::Mosaic(aImage, 4, false));
    EXPECT_EQ(aBytesOf(aImage), (std::vector<int>{0, 0, 0, 40, 120, 160, 160, 160}));
}

TEST(Mosaic, OfOnePixelChangesNothing)
{
    const ImageBuffer aBefore = aRandomPicture(9, 8, 3);
    ImageBuffer aImage = aBefore;
    for (const std::int32_t lTile : {1, 0, -1, INT32_MIN})
        for (const bool bPlain : {false, true})
            ASSERT_TRUE(transforms::Mosaic(aImage, lTile, bPlain));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}

TEST(Halftones, KeepTheToneOfAPlainPicture)
{
    for (const std::int32_t lCell : {1, 2, 3, 4, 7, 16}) {
        for (const int nTone : {0, 30, 128, 200, 255}) {
            ImageBuffer aImage = aPlain(4 * lCell, 4 * lCell, 1, static_cast<std::uint8_t>(nTone));
            ASSERT_TRUE(transforms::Halftones(aImage, lCell, 1));
            double dWhite = 0;
            for (const int nByte : aImage.bytes) {
                ASSERT_TRUE(nByte == 0 || nByte == 255);
                dWhite += nByte;
            }
            EXPECT_NEAR(dWhite / static_cast<double>(aImage.bytes.size()), nTone, 16) << lCell;
        }
    }
}

TEST(Halftones, PutLightDotsIntoTheMiddlesOfTheCells)
{
    ImageBuffer aImage = aPlain(16, 16, 1, 60);
    ASSERT_TRUE(transforms::Halftones(aImage, 8, 1));
    EXPECT_EQ(nValueAt(aImage, 4, 4), 255);
    EXPECT_EQ(nValueAt(aImage, 0, 0), 0);
    EXPECT_EQ(nValueAt(aImage, 11, 12), 255);
    EXPECT_EQ(nValueAt(aImage, 8, 8), 0);
}

TEST(Halftones, ComparePixelsWithTheScreen)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes())
        for (const std::int32_t lCell : {1, 5})
            for (const double dContrast : {1.0, 0.5}) {
                const std::vector<std::uint8_t> aScreen = transforms::aHalftoneScreen(lCell);
                const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
                ImageBuffer aImage = aBefore;
                ASSERT_TRUE(transforms::Halftones(aImage, lCell, dContrast));
                ExpectEach(
                    aImage, aBefore,
                    [&](int x, int y, int c) {
                        const int v = nValueAt(aBefore, x, y, c);
                        const int s =
                            aScreen[static_cast<std::size_t>(y % (4 * lCell) * 4 * lCell + x % (4 * lCell))];
                        return nClamped(v + dContrast * ((v > s ? 255 : 0) - v));
                    },
                    dContrast < 1 ? 1 : 0);
            }
}

TEST(TraceContours, AgreesWithItsRule)
{
    for (const auto& [lWidth, lHeight, lChannels] : aShapes())
        for (const auto& [nLevel, nThreshold] : {std::pair{100, 100}, {0, 20}, {200, 255}, {0, 255}}) {
            const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
            ImageBuffer aImage = aBefore;
            const int nLine = nLevel, nStep = nThreshold;
            ASSERT_TRUE(transforms::TraceContours(aImage, static_cast<std::uint8_t>(nLevel),
                                                  static_cast<std::uint8_t>(nThreshold), false));
            ExpectEach(aImage, aBefore, [&](int x, int y, int c) {
                const int v = nValueAt(aBefore, x, y, c);
                for (const int u : {nValueAt(aBefore, x + 1, y, c), nValueAt(aBefore, x, y + 1, c)})
                    if ((v < nLine) != (u < nLine) || std::abs(u - v) > nStep)
                        return 0;
                return 255;
            });
        }
}

TEST(TraceContours, DrawsBlackLinesByIntensity)
{
    ImageBuffer aImage = aPlain(4, 2, 3, 0);
    for (const std::size_t i : {6U, 9U, 18U, 21U})
        aImage.bytes[i] = aImage.bytes[i + 1] = aImage.bytes[i + 2] = 255;
    ASSERT_TRUE(transforms::TraceContours(aImage, 100, 100, true));
    for (int y = 0; y < 2; ++y)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ((std::vector<int>{nValueAt(aImage, 0, y, c), nValueAt(aImage, 1, y, c),
                                        nValueAt(aImage, 2, y, c), nValueAt(aImage, 3, y, c)}),
                      (std::vector<int>{255, 0, 255, 255}));
}

TEST(Effects, ArePicturesForAnyNumber)
{
    using namespace transforms;
    for (const auto& [lWidth, lHeight, lChannels] : aShapes()) {
        const ImageBuffer aBefore = aRandomPicture(lWidth, lHeight, lChannels);
        const auto fnExpect = [&aBefore](const auto& fnOperation) {
            ImageBuffer aImage = aBefore;
            ASSERT_TRUE(fnOperation(aImage));
            ASSERT_TRUE(bSound(aImage));
            ASSERT_EQ(aImage.width, aBefore.width);
            ASSERT_EQ(aImage.height, aBefore.height);
            ASSERT_EQ(aImage.channels, aBefore.channels);
        };
        for (const double d : aHostileDoubles()) {
            fnExpect([&](ImageBuffer& a) { return Emboss(a, d, 3, 10); });
            fnExpect([&](ImageBuffer& a) { return Emboss(a, 30, 16, d); });
            fnExpect([&](ImageBuffer& a) { return Relief(a, d, 4, 10); });
            fnExpect([&](ImageBuffer& a) { return Relief(a, 1, d, 1); });
            fnExpect([&](ImageBuffer& a) { return Relief(a, 1, 4, d); });
            fnExpect([&](ImageBuffer& a) { return Texturize(a, d, 5, 1); });
            fnExpect([&](ImageBuffer& a) { return Texturize(a, 0, d, 4); });
            fnExpect([&](ImageBuffer& a) { return Halftones(a, 3, d); });
            fnExpect([&](ImageBuffer& a) { return MotionBlur(a, d, 9); });
            fnExpect([&](ImageBuffer& a) { return RadialBlur(a, d); });
            fnExpect([&](ImageBuffer& a) { return ZoomBlur(a, d); });
            fnExpect([&](ImageBuffer& a) { return Diffuse(a, 3, d); });
        }
        for (const std::int32_t l : aHostileLongs()) {
            fnExpect([&](ImageBuffer& a) { return Emboss(a, 30, l, 10); });
            fnExpect([&](ImageBuffer& a) { return Halftones(a, l, 1); });
            fnExpect([&](ImageBuffer& a) { return Mosaic(a, l, false); });
            fnExpect([&](ImageBuffer& a) { return Mosaic(a, l, true); });
            fnExpect([&](ImageBuffer& a) { return MotionBlur(a, 1e9, l); });
            fnExpect([&](ImageBuffer& a) { return AddNoise(a, l, false); });
            fnExpect([&](ImageBuffer& a) { return Diffuse(a, l, 1e9); });
        }
    }
}

TEST(Effects, OfNothingChangeNothing)
{
    using namespace transforms;
    const ImageBuffer aBefore = aRandomPicture(17, 11, 3);
    ImageBuffer aImage = aBefore;
    const double dNan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(Emboss(aImage, 0, 0, 10) && Emboss(aImage, dNan, 1, 10) && Emboss(aImage, 0, 1, dNan));
    EXPECT_TRUE(Relief(aImage, 0, 0, 10) && Relief(aImage, dNan, 1, 10) && Relief(aImage, 0, 1, dNan));
    EXPECT_TRUE(Texturize(aImage, 0, 0, 1) && Texturize(aImage, dNan, 5, 1) && Texturize(aImage, 0, dNan, 1));
    EXPECT_TRUE(Halftones(aImage, 5, 0) && Halftones(aImage, 5, dNan));
    EXPECT_TRUE(bEqual(aImage, aBefore));
}
