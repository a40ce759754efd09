// Bitmaps and their raster operations in EMF records.
#include <bit>

#include "tests/platform/image/support/metafile_maker.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

static const Dib& objFourColors()
{
    static const Dib objDib = objDib24(2, {kRed, kGreen, kBlue, kYellow});
    return objDib;
}

/// A picture whose left half is red.
static EmfMaker HalfRed()
{
    EmfMaker objMaker(40, 40);
    return objMaker.Brush(1, kRed).Select(kNullPen).Record(Emr::Rectangle, {0, 0, 20, 40});
}

TEST(EmfStretchDibits, CopiesPixelByPixel)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).StretchDib(objFourColors(), {5, 6, 2, 2}, {0, 0, 2, 2}));

    EXPECT_EQ(nColorAt(aImage, 5, 6), kRed);
    EXPECT_EQ(nColorAt(aImage, 6, 6), kGreen);
    EXPECT_EQ(nColorAt(aImage, 5, 7), kBlue);
    EXPECT_EQ(nColorAt(aImage, 6, 7), kYellow);
    EXPECT_EQ(nCountOf(aImage, kWhite, kAll), 1596);
}

TEST(EmfStretchDibits, EnlargesToBlocks)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).StretchDib(objFourColors(), {0, 0, 40, 40}, {0, 0, 2, 2}));

    for (const std::uint32_t nColor : {kRed, kGreen, kBlue, kYellow})
        EXPECT_EQ(nCountOf(aImage, nColor, kAll), 400);
}

TEST(EmfStretchDibits, SmoothsWhenAHalftoneIsAskedFor)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::SetStretchBltMode, {4}).StretchDib(objFourColors(), {0, 0, 40, 40}, {0, 0, 2, 2});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 0, 0), kRed);
    EXPECT_NEAR(nColorAt(aImage, 20, 0) & 255, 128, 12);
}

TEST(EmfStretchDibits, AveragesWhenItShrinks)
{
    std::vector<std::uint32_t> aChecks;
    for (std::size_t n = 0; n < 400 * 400; ++n)
        aChecks.push_back((n + n / 400) % 2 == 0 ? kBlack : kWhite);
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).StretchDib(objDib24(400, aChecks), {0, 0, 40, 40}, {0, 0, 400, 400}));

    EXPECT_NEAR(nColorAt(aImage, 20, 20) & 255, 128, 3);
    EXPECT_NEAR(nColorAt(aImage, 1, 38) & 255, 128, 3);
}

TEST(EmfStretchDibits, CountsTheRowsOfItsSourceFromTheBottom)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).StretchDib(objFourColors(), {0, 0, 2, 1}, {0, 0, 2, 1}));

    EXPECT_EQ(nColorAt(aImage, 0, 0), kBlue);
    EXPECT_EQ(nColorAt(aImage, 1, 0), kYellow);
}

TEST(EmfStretchDibits, MirrorsForSizesBelowNought)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).StretchDib(objFourColors(), {20, 20, -2, 2}, {0, 0, 2, 2}));

    EXPECT_EQ(nColorAt(aImage, 18, 20), kGreen);
    EXPECT_EQ(nColorAt(aImage, 19, 20), kRed);
    EXPECT_EQ(nColorAt(aImage, 18, 21), kYellow);
}

TEST(EmfStretchDibits, LeavesOutWhatTheSourceDoesNotHave)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).StretchDib(objFourColors(), {0, 0, 40, 40}, {0, 0, 4, 4}));

    EXPECT_EQ(nCountOf(aImage, kWhite, kAll), 1200);
    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 100);
}

TEST(EmfStretchDibits, TurnsWithTheWorld)
{
    EmfMaker objMaker(40, 40);
    objMaker.World(0, 0, 1, -1, 0, 40, 0).StretchDib(objFourColors(), {0, 0, 40, 40}, {0, 0, 2, 2});
    const ImageBuffer aImage = aPlayed(objMaker);  // a quarter turn with the clock

    EXPECT_EQ(nColorAt(aImage, 30, 10), kRed);
    EXPECT_EQ(nColorAt(aImage, 30, 30), kGreen);
    EXPECT_EQ(nColorAt(aImage, 10, 10), kBlue);
}

TEST(EmfStretchDibits, InStripsLeavesNoSeam)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::SetMapMode, {8})
        .Record(Emr::SetWindowExt, {700, 700})
        .Record(Emr::SetViewportExt, {40, 40});
    const Dib objStrip = objDib24(7, std::vector<std::uint32_t>(7, kBlue));
    for (std::int32_t y = 0; y < 700; y += 7)
        objMaker.StretchDib(objStrip, {0, y, 700, 7}, {0, 0, 7, 1});

    EXPECT_EQ(nCountOf(aPlayed(objMaker), kBlue, kAll), 1600);
}

TEST(EmfStretchDibits, CombinesByItsRasterOperation)
{
    const Dib objGrey = objDib24(1, {0x0F0F0F});
    const auto nResult = [&](std::uint32_t nRop) {
        return nColorAt(aPlayed(HalfRed().StretchDib(objGrey, {0, 0, 40, 40}, {0, 0, 1, 1}, nRop)), 10, 10);
    };

    EXPECT_EQ(nResult(kSrcAnd), 0x00000Fu);
    EXPECT_EQ(nResult(kSrcPaint), 0x0F0FFFu);
    EXPECT_EQ(nResult(kSrcInvert), 0x0F0FF0u);
}

TEST(EmfBitBlt, WithoutABitmapPaintsThePattern)
{
    const auto aResult = [](std::uint32_t nRop) {
        return aPlayed(HalfRed().Brush(2, kBlue).Transfer(Emr::BitBlt, {10, 10, 20, 20}, nRop, {0, 0}, {}));
    };

    EXPECT_EQ(nCountOf(aResult(kPatCopy), kBlue, kAll), 400);
    EXPECT_EQ(nCountOf(aResult(kBlackness), kBlack, kAll), 400);
    EXPECT_EQ(nCountOf(aResult(kWhiteness), kRed, kAll), 600);
    EXPECT_EQ(nColorAt(aResult(kDstInvert), 15, 15), kWhite ^ kRed);
    EXPECT_EQ(nColorAt(aResult(kDstInvert), 25, 15), kBlack);
    EXPECT_EQ(nColorAt(aResult(kPatInvert), 15, 15), kRed ^ kBlue);
}

TEST(EmfBitBlt, TakesItsSourceFromTheTop)
{
    EmfMaker objMaker(40, 40);
    objMaker.Transfer(Emr::BitBlt, {3, 4, 2, 1}, kSrcCopy, {0, 0}, objFourColors());
    objMaker.Transfer(Emr::BitBlt, {10, 4, 1, 1}, kSrcCopy, {1, 1}, objFourColors());
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 3, 4), kRed);
    EXPECT_EQ(nColorAt(aImage, 4, 4), kGreen);
    EXPECT_EQ(nColorAt(aImage, 10, 4), kYellow);
}

TEST(EmfBitBlt, UsesThePatternWhereTheOperationDoes)
{
    EmfMaker objMaker(40, 40);
    objMaker.Brush(1, kRed);
    // Pattern where the source is white, otherwise the picture: the usual way to colour a mask.
    objMaker.Transfer(Emr::BitBlt, {0, 0, 4, 1}, 0x00E20746, {0, 0}, objDib1({"#.#."}, kBlack, kWhite));
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 0, 0), kRed);
    EXPECT_EQ(nColorAt(aImage, 1, 0), kWhite);
    EXPECT_EQ(nColorAt(aImage, 2, 0), kRed);
}

TEST(EmfStretchBlt, ScalesAPartOfTheSource)
{
    EmfMaker objMaker(40, 40);
    objMaker.Transfer(Emr::StretchBlt, {0, 0, 20, 20}, kSrcCopy, {1, 0}, objFourColors(), {1, 2});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kGreen, kAll), 200);
    EXPECT_EQ(nCountOf(aImage, kYellow, kAll), 200);
}

TEST(EmfSetDibitsToDevice, TakesTheRowsThatAreThere)
{
    ByteMaker objData;
    // A bitmap of 2 by 4 pixels, of which the rows 1 and 2 from the bottom come along.
    const Dib objRows = objDib24(2, {kRed, kGreen, kBlue, kYellow});
    std::vector<std::uint8_t> aHeader = objRows.objHeader.aBytes();
    aHeader[8] = 4;
    objData.Zeros(16)
        .U32Le({10, 10, 0, 0, 2, 4, 76, 40, 116, 16, 0, 1, 2})
        .All(aHeader)
        .All(objRows.objBits.aBytes());
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40).Record(Emr::SetDibitsToDevice, objData));

    EXPECT_EQ(nColorAt(aImage, 10, 10), kWhite);
    EXPECT_EQ(nColorAt(aImage, 10, 11), kRed);
    EXPECT_EQ(nColorAt(aImage, 11, 12), kYellow);
    EXPECT_EQ(nColorAt(aImage, 10, 13), kWhite);
}

TEST(EmfMaskBlt, ChoosesTheOperationByTheMask)
{
    const Dib objSource = objDib24(4, {kRed, kRed, kRed, kRed});
    const Dib objMask = objDib1({"#.#."}, kBlack, kWhite);
    ByteMaker objData;
    const auto nOne = std::bit_cast<std::uint32_t>(1.0f);
    objData.Zeros(16).U32Le({0, 0, 4, 1, 0xAACC0020, 0, 0, nOne, 0, 0, nOne, 0, 0, kWhite, 0});
    objData.U32Le({128, 40, 168, 12, 0, 0, 0, 180, 48, 228, 4});
    objData.All(objSource.objHeader.aBytes()).All(objSource.objBits.aBytes());
    objData.All(objMask.objHeader.aBytes()).All(objMask.objBits.aBytes());
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40).Record(Emr::MaskBlt, objData));

    EXPECT_EQ(nColorAt(aImage, 0, 0), kRed);
    EXPECT_EQ(nColorAt(aImage, 1, 0), kWhite);
    EXPECT_EQ(nColorAt(aImage, 2, 0), kRed);
    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 2);
}

TEST(EmfPlgBlt, FillsAParallelogram)
{
    const Dib objSource = objDib24(1, {kRed});
    ByteMaker objData;
    const auto nOne = std::bit_cast<std::uint32_t>(1.0f);
    objData.Zeros(16).U32Le({20, 0, 40, 20, 0, 20});  // on its corner
    objData.U32Le({0, 0, 1, 1, nOne, 0, 0, nOne, 0, 0, kWhite, 0, 140, 40, 180, 4, 0, 0, 0, 0, 0, 0, 0});
    objData.All(objSource.objHeader.aBytes()).All(objSource.objBits.aBytes());
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40).Record(Emr::PlgBlt, objData));

    EXPECT_EQ(nColorAt(aImage, 20, 20), kRed);
    EXPECT_EQ(nColorAt(aImage, 20, 38), kRed);
    EXPECT_EQ(nColorAt(aImage, 3, 3), kWhite);
    EXPECT_EQ(nColorAt(aImage, 38, 38), kWhite);
}

TEST(EmfAlphaBlend, MixesByAConstant)
{
    EmfMaker objMaker(40, 40);
    objMaker.Transfer(Emr::AlphaBlend, {0, 0, 40, 40}, 0x00800000, {0, 0}, objDib24(1, {kBlack}), {1, 1});

    EXPECT_NEAR(nColorAt(aPlayed(objMaker), 20, 20) & 255, 127, 1);
}

TEST(EmfAlphaBlend, MixesByTheBitmapsOwnAlpha)
{
    EmfMaker objMaker(40, 40);
    // Opaque red, nothing, and half of blue, which is stored multiplied.
    const Dib objDib = objDib32(3, {0xFF000000 | kRed, 0, 0x80800000});
    objMaker.Transfer(Emr::AlphaBlend, {0, 0, 3, 1}, 0x01FF0000, {0, 0}, objDib, {3, 1});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 0, 0), kRed);
    EXPECT_EQ(nColorAt(aImage, 1, 0), kWhite);
    EXPECT_EQ(nColorAt(aImage, 2, 0) >> 16, 0xFFu);
    EXPECT_NEAR(nColorAt(aImage, 2, 0) & 255, 127, 1);
}

TEST(EmfTransparentBlt, LeavesOutOneColour)
{
    EmfMaker objMaker = HalfRed();
    objMaker.Transfer(Emr::TransparentBlt, {0, 0, 20, 20}, kGreen, {0, 0}, objFourColors(), {2, 2});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 15, 5), kRed);  // the picture's own, where the bitmap is green
    EXPECT_EQ(nCountOf(aImage, kGreen, kAll), 0);
    EXPECT_EQ(nColorAt(aImage, 5, 15), kBlue);
}

TEST(EmfBitmap, OfPaletteIndexesTakesTheSelectedPalette)
{
    EmfMaker objMaker(40, 40);
    ByteMaker objPalette;
    objPalette.U32Le({5}).U16Le({0x300, 2}).U8({255, 0, 0, 0, 0, 0, 255, 0});
    objMaker.Record(Emr::CreatePalette, objPalette).Record(Emr::SelectPalette, {5});
    ByteMaker objData;
    objData.Zeros(16).U32Le({0, 0, 0, 0, 2, 1, 80, 44, 124, 4, 1, kSrcCopy, 2, 1});
    objData.U32Le({40, 2, 1}).U16Le({1, 1}).Zeros(24).U16Le({1, 0}).U8({0x40, 0, 0, 0});
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::StretchDibits, objData));

    EXPECT_EQ(nColorAt(aImage, 0, 0), kBlue);
    EXPECT_EQ(nColorAt(aImage, 1, 0), kRed);
}
