// Tests of turning pictures into palettes and indexes.
#include "src/platform/image/quantiser/quantiser.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "src/platform/image/quantiser/quantiser_dither.h"
#include "src/platform/image/quantiser/quantiser_exact.h"
#include "src/platform/image/quantiser/quantiser_flat.h"
#include "src/platform/image/quantiser/quantiser_palette.h"
#include "src/platform/image/quantiser/quantiser_table.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{
ImageBuffer aFilled(std::int32_t lWidth, std::int32_t lHeight, const PaletteColour& aColour)
{
    ImageBuffer aImage;
    aImage.width = lWidth;
    aImage.height = lHeight;
    aImage.channels = 3;
    for (std::int32_t i = 0; i < lWidth * lHeight; ++i)
        aImage.bytes.insert(aImage.bytes.end(), aColour.begin(), aColour.end());
    return aImage;
}

void Fill(ImageBuffer& aImage, std::int32_t lLeft, std::int32_t lTop, std::int32_t lWidth,
          std::int32_t lHeight, const PaletteColour& aColour)
{
    for (std::int32_t y = lTop; y < lTop + lHeight; ++y)
        for (std::int32_t x = lLeft; x < lLeft + lWidth; ++x)
            std::copy(aColour.begin(), aColour.end(),
                      aImage.bytes.begin() + (y * aImage.width + x) * aImage.channels);
}

PaletteColour ColourAt(const IndexedImage& objImage, std::size_t nPixel)
{
    return objImage.aPalette.at(objImage.aIndexes.at(nPixel));
}

ImageBuffer aShown(const ImageBuffer& aSource, const IndexedImage& objImage)
{
    ImageBuffer aResult = aFilled(aSource.width, aSource.height, {});
    for (std::size_t i = 0; i < objImage.aIndexes.size(); ++i)
        for (std::size_t c = 0; c < 3; ++c)
            aResult.bytes[i * 3 + c] = ColourAt(objImage, i)[c];
    return aResult;
}

double dPsnr(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    double dSum = 0;
    for (std::size_t i = 0; i < aOne.bytes.size(); ++i)
        dSum += std::pow(aOne.bytes[i] - aOther.bytes[i], 2);
    return 10 * std::log10(255 * 255 / (dSum / static_cast<double>(aOne.bytes.size())));
}

// The mean of channel c over a square of the picture.
double dMean(const ImageBuffer& aImage, std::int32_t lLeft, std::int32_t lTop, std::int32_t lSide,
             std::int32_t c)
{
    double dSum = 0;
    for (std::int32_t y = lTop; y < lTop + lSide; ++y)
        for (std::int32_t x = lLeft; x < lLeft + lSide; ++x)
            dSum += aImage.bytes[static_cast<std::size_t>((y * aImage.width + x) * 3 + c)];
    return dSum / lSide / lSide;
}
}  // namespace

TEST(ExactColours, GivesUpAtThe257thColour)
{
    ImageBuffer aImage = aFilled(257, 1, {});
    for (std::size_t i = 0; i < 256; ++i)
        aImage.bytes[i * 3] = static_cast<std::uint8_t>(i);
    ASSERT_TRUE(objExact(aImage));
    EXPECT_EQ(objExact(aImage)->aPalette.size(), 256u);

    aImage.bytes[256 * 3 + 1] = 1;

    EXPECT_FALSE(objExact(aImage));
}

TEST(ExactColours, CountsTransparencyAsOneColourWhateverLiesBelow)
{
    ImageBuffer aImage;
    aImage.width = 3;
    aImage.height = 1;
    aImage.channels = 4;
    aImage.bytes = {1, 2, 3, 255, 4, 5, 6, 127, 7, 8, 9, 0};

    const auto objImage = objExact(aImage);

    ASSERT_TRUE(objImage);
    EXPECT_EQ(objImage->aPalette.size(), 2u);
    EXPECT_EQ(objImage->nTransparent, 1);
    EXPECT_EQ(objImage->aIndexes, (PixelBytes{0, 1, 1}));
}

RC_GTEST_PROP(NearestTable, IsNeverFartherOffThanTheNearestColourOfEachCellsMiddle, ())
{
    const auto aPalette = *rc::gen::suchThat(
        rc::gen::container<std::vector<PaletteColour>>(rc::gen::arbitrary<PaletteColour>()),
        [](const auto& a) { return !a.empty() && a.size() <= 256; });
    const auto aTable = aNearestTable(aPalette);
    RC_ASSERT(aTable.size() == std::size_t{1} << 3 * kTableBits);
    const auto nDistance = [](const PaletteColour& a, int b, int g, int r) {
        return (a[0] - b) * (a[0] - b) + (a[1] - g) * (a[1] - g) + (a[2] - r) * (a[2] - r);
    };
    for (std::size_t nCell = 0; nCell < aTable.size(); nCell += 997) {
        const int b = static_cast<int>(nCell >> 12) * 4 + 2, g = static_cast<int>(nCell >> 6 & 63) * 4 + 2;
        const int r = static_cast<int>(nCell & 63) * 4 + 2;
        int nLeast = std::numeric_limits<int>::max();
        for (const auto& aColour : aPalette)
            nLeast = std::min(nLeast, nDistance(aColour, b, g, r));
        RC_ASSERT(nDistance(aPalette.at(aTable[nCell]), b, g, r) == nLeast);
    }
}

TEST(FittedPalette, HasTheMeanAndNoMoreColoursThanAsked)
{
    ImageBuffer aImage = aFilled(10, 10, {10, 20, 30});
    Fill(aImage, 0, 0, 10, 5, {12, 22, 32});

    EXPECT_EQ(aFittedPalette(aImage, {}, 1), (std::vector<PaletteColour>{{11, 21, 31}}));
    EXPECT_LE(aFittedPalette(aPattern(100, 100, 3), {}, 17).size(), 17u);
    EXPECT_EQ(aFittedPalette(aPattern(100, 100, 3), {}, 256).size(), 256u);
}

TEST(FittedPalette, PutsTheFlatColoursFirstAsTheyAre)
{
    ImageBuffer aImage = aPattern(96, 96, 3);
    Fill(aImage, 0, 0, 48, 48, {3, 3, 201});
    const auto aFlats = aFlatColours(aImage);
    ASSERT_FALSE(aFlats.empty());

    const auto aPalette = aFittedPalette(aImage, aFlats, 64);

    EXPECT_EQ(aPalette[0], (PaletteColour{3, 3, 201}));
    EXPECT_LE(aPalette.size(), 64u);
}

TEST(FittedPalette, DoesNotCountTransparentPixels)
{
    ImageBuffer aImage = aPattern(64, 64, 4);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 4) {
        aImage.bytes[i + 3] = i % 8 == 0 ? 127 : 128;
        if (i % 8 != 0)
            std::fill_n(&aImage.bytes[i], 3, std::uint8_t{77});
    }

    EXPECT_EQ(aFittedPalette(aImage, {}, 256), (std::vector<PaletteColour>{{77, 77, 77}}));
    for (std::size_t i = 3; i < aImage.bytes.size(); i += 4)
        aImage.bytes[i] = 0;
    EXPECT_TRUE(aFittedPalette(aImage, {}, 256).empty());
}

TEST(FlatColours, AreThoseOfPlainBlocksByFrequency)
{
    ImageBuffer aImage = aPattern(200, 200, 3);
    Fill(aImage, 0, 0, 80, 80, {240, 240, 240});
    Fill(aImage, 80, 0, 80, 160, {242, 242, 242});
    Fill(aImage, 3, 180, 8, 8, {1, 1, 1});  // on no boundary of blocks

    const auto aFlats = aFlatColours(aImage);

    ASSERT_GE(aFlats.size(), 2u);
    EXPECT_EQ(aFlats[0].aColour, (PaletteColour{242, 242, 242}));
    EXPECT_EQ(aFlats[0].nPixels, 80u * 160u);
    EXPECT_EQ(aFlats[1].aColour, (PaletteColour{240, 240, 240}));
    for (const FlatColour& objFlat : aFlats)
        EXPECT_NE(objFlat.aColour, (PaletteColour{1, 1, 1}));
    EXPECT_TRUE(aFlatColours(aFilled(7, 7, {})).empty());
}

TEST(Quantiser, LeavesPlainAreasWithoutASpeckle)
{
    // Two greys that lie in one cell of any coarse table, beside a slope that needs all the other colours.
    ImageBuffer aImage = aPattern(256, 256, 3);
    Fill(aImage, 0, 128, 128, 128, {240, 240, 240});
    Fill(aImage, 128, 128, 128, 128, {242, 242, 242});

    const IndexedImage objImage = objQuantised(aImage);

    for (std::size_t y = 128; y < 256; ++y)
        for (std::size_t x = 0; x < 256; ++x) {
            const std::uint8_t nGrey = x < 128 ? 240 : 242;
            ASSERT_EQ(ColourAt(objImage, y * 256 + x), (PaletteColour{nGrey, nGrey, nGrey})) << x << "," << y;
        }
}

TEST(Quantiser, KeepsTheMeanOfEveryRegionByDithering)
{
    const ImageBuffer aImage = aPattern(256, 192, 3);

    const ImageBuffer aResult = aShown(aImage, objQuantised(aImage));

    for (std::int32_t y = 0; y < 192; y += 16)
        for (std::int32_t x = 0; x < 256; x += 16)
            for (std::int32_t c = 0; c < 3; ++c)
                EXPECT_NEAR(dMean(aResult, x, y, 16, c), dMean(aImage, x, y, 16, c), 4) << x << "," << y;
}

TEST(Quantiser, ComesCloserThanTheBestDitheringOfOtherPrograms)
{
    const ImageBuffer aImage = aPattern(320, 240, 3);
    const TestFolder objFolder;
    WritePnm(objFolder.sPath("in.ppm"), aImage);

    const double dOwn = dPsnr(aShown(aImage, objQuantised(aImage)), aImage);

    for (const std::string& sProgram : {ImageMagick("convert"), std::string("gm convert")}) {
        ASSERT_TRUE(bRun(sProgram + " " + objFolder.sPath("in.ppm") + " " + objFolder.sPath("out.gif")));
        ASSERT_TRUE(bRun(ImageMagick("convert") + " " + objFolder.sPath("out.gif") + " " +
                         objFolder.sPath("out.ppm")));
        EXPECT_GE(dOwn, dPsnr(*aReadPnm(objFolder.sPath("out.ppm")), aImage)) << sProgram;
    }
}

TEST(Dithering, LeavesNoSeamBetweenItsBands)
{
    // A flat tone between two greys: every row is to be as light as every other, those at the bands' edges
    // too.
    const ImageBuffer aImage = aFilled(512, 403, {101, 101, 101});
    const std::vector<PaletteColour> aGreys = {{96, 96, 96}, {112, 112, 112}};

    const PixelBytes aIndexes = aDithered(aImage, aGreys, -1);

    for (std::size_t y = 0; y < 403; ++y) {
        double dSum = 0;
        for (std::size_t x = 0; x < 512; ++x)
            dSum += aGreys.at(aIndexes[y * 512 + x])[0];
        EXPECT_NEAR(dSum / 512, 101, 1.5) << y;
    }
}

TEST(Dithering, TakesPicturesOfAnySize)
{
    for (std::int32_t lHeight = 1; lHeight < 12; ++lHeight)
        for (const std::int32_t lWidth : {1, 2, 33}) {
            const ImageBuffer aImage = aFilled(lWidth, lHeight, {200, 0, 0});
            const std::vector<PaletteColour> aColours = {{0, 0, 200}, {200, 0, 0}};
            EXPECT_EQ(aDithered(aImage, aColours, -1), PixelBytes(aImage.bytes.size() / 3, 1));
        }
}

TEST(Dithering, PassesNoErrorIntoTransparentPixelsNorOutOfThem)
{
    ImageBuffer aImage;
    aImage.width = 40;
    aImage.height = 40;
    aImage.channels = 4;
    for (int i = 0; i < 1600; ++i) {
        const bool bOpaque = i % 2 == 0;
        const auto nGrey = static_cast<std::uint8_t>(bOpaque ? 8 : 255);
        aImage.bytes.insert(aImage.bytes.end(),
                            {nGrey, nGrey, nGrey, static_cast<std::uint8_t>(bOpaque ? 255 : 0)});
    }
    const std::vector<PaletteColour> aColours = {{8, 8, 8}, {255, 255, 255}};

    const PixelBytes aIndexes = aDithered(aImage, aColours, 2);

    for (std::size_t i = 0; i < aIndexes.size(); ++i)
        EXPECT_EQ(aIndexes[i], i % 2 == 0 ? 0 : 2);
}
