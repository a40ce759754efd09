// Tests of bitmaps and raster operations in EMF records.
#include <gtest/gtest.h>

#include <bit>

#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/codecs/png/png.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

static const Dib& FourColors()
{
    static const Dib kDib = Dib24(2, {kRed, kGreen, kBlue, kYellow});
    return kDib;
}

/// A picture with a red left half.
static EmfMaker HalfRed()
{
    EmfMaker maker(40, 40);
    return maker.Brush(1, kRed).Select(kNullPen).Record(Emr::kRectangle, {0, 0, 20, 40});
}

TEST(EmfStretchDibits, CopiesUnscaledPixelsExactly)
{
    const ImageBuffer image = Render(EmfMaker(40, 40).StretchDib(FourColors(), {5, 6, 2, 2}, {0, 0, 2, 2}));

    EXPECT_EQ(ColorAt(image, 5, 6), kRed);
    EXPECT_EQ(ColorAt(image, 6, 6), kGreen);
    EXPECT_EQ(ColorAt(image, 5, 7), kBlue);
    EXPECT_EQ(ColorAt(image, 6, 7), kYellow);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1596);
}

TEST(EmfStretchDibits, MagnifiesPixelsToBlocks)
{
    const ImageBuffer image = Render(EmfMaker(40, 40).StretchDib(FourColors(), {0, 0, 40, 40}, {0, 0, 2, 2}));

    for (const std::uint32_t color : {kRed, kGreen, kBlue, kYellow})
        EXPECT_EQ(CountOf(image, color, kAll), 400);
}

TEST(EmfStretchDibits, SmoothsIfHalftoneIsSet)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kSetStretchBltMode, {4}).StretchDib(FourColors(), {0, 0, 40, 40}, {0, 0, 2, 2});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 0, 0), kRed);
    EXPECT_NEAR(ColorAt(image, 20, 0) & 255, 128, 12);
}

TEST(EmfStretchDibits, AveragesPixelsWhenShrinking)
{
    std::vector<std::uint32_t> checks;
    for (std::size_t n = 0; n < 400 * 400; ++n)
        checks.push_back((n + n / 400) % 2 == 0 ? kBlack : kWhite);
    const ImageBuffer image =
        Render(EmfMaker(40, 40).StretchDib(Dib24(400, checks), {0, 0, 40, 40}, {0, 0, 400, 400}));

    EXPECT_NEAR(ColorAt(image, 20, 20) & 255, 128, 3);
    EXPECT_NEAR(ColorAt(image, 1, 38) & 255, 128, 3);
}

TEST(EmfStretchDibits, CountsSourceRowsFromBottom)
{
    const ImageBuffer image = Render(EmfMaker(40, 40).StretchDib(FourColors(), {0, 0, 2, 1}, {0, 0, 2, 1}));

    EXPECT_EQ(ColorAt(image, 0, 0), kBlue);
    EXPECT_EQ(ColorAt(image, 1, 0), kYellow);
}

TEST(EmfStretchDibits, MirrorsForNegativeSizes)
{
    const ImageBuffer image =
        Render(EmfMaker(40, 40).StretchDib(FourColors(), {20, 20, -2, 2}, {0, 0, 2, 2}));

    EXPECT_EQ(ColorAt(image, 18, 20), kGreen);
    EXPECT_EQ(ColorAt(image, 19, 20), kRed);
    EXPECT_EQ(ColorAt(image, 18, 21), kYellow);
}

TEST(EmfStretchDibits, SkipsAreaOutsideSource)
{
    const ImageBuffer image = Render(EmfMaker(40, 40).StretchDib(FourColors(), {0, 0, 40, 40}, {0, 0, 4, 4}));

    EXPECT_EQ(CountOf(image, kWhite, kAll), 1200);
    EXPECT_EQ(CountOf(image, kRed, kAll), 100);
}

TEST(EmfStretchDibits, RotatesWithWorldTransform)
{
    EmfMaker maker(40, 40);
    maker.World(0, 0, 1, -1, 0, 40, 0).StretchDib(FourColors(), {0, 0, 40, 40}, {0, 0, 2, 2});
    const ImageBuffer image = Render(maker);  // a quarter turn clockwise

    EXPECT_EQ(ColorAt(image, 30, 10), kRed);
    EXPECT_EQ(ColorAt(image, 30, 30), kGreen);
    EXPECT_EQ(ColorAt(image, 10, 10), kBlue);
}

TEST(EmfStretchDibits, DrawsStripsWithoutSeam)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kSetMapMode, {8})
        .Record(Emr::kSetWindowExt, {700, 700})
        .Record(Emr::kSetViewportExt, {40, 40});
    const Dib strip = Dib24(7, std::vector<std::uint32_t>(7, kBlue));
    for (std::int32_t y = 0; y < 700; y += 7)
        maker.StretchDib(strip, {0, y, 700, 7}, {0, 0, 7, 1});

    EXPECT_EQ(CountOf(Render(maker), kBlue, kAll), 1600);
}

TEST(EmfStretchDibits, AppliesItsRasterOperation)
{
    const Dib grey = Dib24(1, {0x0F0F0F});
    const auto result = [&](std::uint32_t rop) {
        return ColorAt(Render(HalfRed().StretchDib(grey, {0, 0, 40, 40}, {0, 0, 1, 1}, rop)), 10, 10);
    };

    EXPECT_EQ(result(kSrcAnd), 0x00000Fu);
    EXPECT_EQ(result(kSrcPaint), 0x0F0FFFu);
    EXPECT_EQ(result(kSrcInvert), 0x0F0FF0u);
}

TEST(EmfBitBlt, PaintsPatternWithoutBitmap)
{
    const auto result = [](std::uint32_t rop) {
        return Render(HalfRed().Brush(2, kBlue).Transfer(Emr::kBitBlt, {10, 10, 20, 20}, rop, {0, 0}, {}));
    };

    EXPECT_EQ(CountOf(result(kPatCopy), kBlue, kAll), 400);
    EXPECT_EQ(CountOf(result(kBlackness), kBlack, kAll), 400);
    EXPECT_EQ(CountOf(result(kWhiteness), kRed, kAll), 600);
    EXPECT_EQ(ColorAt(result(kDstInvert), 15, 15), kWhite ^ kRed);
    EXPECT_EQ(ColorAt(result(kDstInvert), 25, 15), kBlack);
    EXPECT_EQ(ColorAt(result(kPatInvert), 15, 15), kRed ^ kBlue);
}

TEST(EmfBitBlt, CountsSourceRowsFromTop)
{
    EmfMaker maker(40, 40);
    maker.Transfer(Emr::kBitBlt, {3, 4, 2, 1}, kSrcCopy, {0, 0}, FourColors());
    maker.Transfer(Emr::kBitBlt, {10, 4, 1, 1}, kSrcCopy, {1, 1}, FourColors());
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 3, 4), kRed);
    EXPECT_EQ(ColorAt(image, 4, 4), kGreen);
    EXPECT_EQ(ColorAt(image, 10, 4), kYellow);
}

TEST(EmfBitBlt, CombinesPatternWithSource)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, kRed);
    // The pattern where the source is white, otherwise the picture: the usual way to colour a mask.
    maker.Transfer(Emr::kBitBlt, {0, 0, 4, 1}, 0x00E20746, {0, 0}, Dib1({"#.#."}, kBlack, kWhite));
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 0, 0), kRed);
    EXPECT_EQ(ColorAt(image, 1, 0), kWhite);
    EXPECT_EQ(ColorAt(image, 2, 0), kRed);
}

TEST(EmfStretchBlt, ScalesPartOfSource)
{
    EmfMaker maker(40, 40);
    maker.Transfer(Emr::kStretchBlt, {0, 0, 20, 20}, kSrcCopy, {1, 0}, FourColors(), {1, 2});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kGreen, kAll), 200);
    EXPECT_EQ(CountOf(image, kYellow, kAll), 200);
}

TEST(EmfSetDibitsToDevice, DrawsOnlyRowsInRecord)
{
    ByteMaker data;
    // Of the 2 by 4 bitmap, the record holds rows 1 and 2, counted from the bottom.
    const Dib rows = Dib24(2, {kRed, kGreen, kBlue, kYellow});
    std::vector<std::uint8_t> header = rows.header.Data();
    header[8] = 4;
    data.Zeros(16).U32Le({10, 10, 0, 0, 2, 4, 76, 40, 116, 16, 0, 1, 2}).All(header).All(rows.bits.Data());
    const ImageBuffer image = Render(EmfMaker(40, 40).Record(Emr::kSetDibitsToDevice, data));

    EXPECT_EQ(ColorAt(image, 10, 10), kWhite);
    EXPECT_EQ(ColorAt(image, 10, 11), kRed);
    EXPECT_EQ(ColorAt(image, 11, 12), kYellow);
    EXPECT_EQ(ColorAt(image, 10, 13), kWhite);
}

TEST(EmfMaskBlt, SelectsRasterOperationByMask)
{
    const Dib source = Dib24(4, {kRed, kRed, kRed, kRed});
    const Dib mask = Dib1({"#.#."}, kBlack, kWhite);
    ByteMaker data;
    const auto one = std::bit_cast<std::uint32_t>(1.0f);
    data.Zeros(16).U32Le({0, 0, 4, 1, 0xAACC0020, 0, 0, one, 0, 0, one, 0, 0, kWhite, 0});
    data.U32Le({128, 40, 168, 12, 0, 0, 0, 180, 48, 228, 4});
    data.All(source.header.Data()).All(source.bits.Data());
    data.All(mask.header.Data()).All(mask.bits.Data());
    const ImageBuffer image = Render(EmfMaker(40, 40).Record(Emr::kMaskBlt, data));

    EXPECT_EQ(ColorAt(image, 0, 0), kRed);
    EXPECT_EQ(ColorAt(image, 1, 0), kWhite);
    EXPECT_EQ(ColorAt(image, 2, 0), kRed);
    EXPECT_EQ(CountOf(image, kRed, kAll), 2);
}

TEST(EmfPlgBlt, FillsParallelogram)
{
    const Dib source = Dib24(1, {kRed});
    ByteMaker data;
    const auto one = std::bit_cast<std::uint32_t>(1.0f);
    data.Zeros(16).U32Le({20, 0, 40, 20, 0, 20});  // relative to its corner
    data.U32Le({0, 0, 1, 1, one, 0, 0, one, 0, 0, kWhite, 0, 140, 40, 180, 4, 0, 0, 0, 0, 0, 0, 0});
    data.All(source.header.Data()).All(source.bits.Data());
    const ImageBuffer image = Render(EmfMaker(40, 40).Record(Emr::kPlgBlt, data));

    EXPECT_EQ(ColorAt(image, 20, 20), kRed);
    EXPECT_EQ(ColorAt(image, 20, 38), kRed);
    EXPECT_EQ(ColorAt(image, 3, 3), kWhite);
    EXPECT_EQ(ColorAt(image, 38, 38), kWhite);
}

TEST(EmfAlphaBlend, BlendsByConstantAlpha)
{
    EmfMaker maker(40, 40);
    maker.Transfer(Emr::kAlphaBlend, {0, 0, 40, 40}, 0x00800000, {0, 0}, Dib24(1, {kBlack}), {1, 1});

    EXPECT_NEAR(ColorAt(Render(maker), 20, 20) & 255, 127, 1);
}

TEST(EmfAlphaBlend, BlendsByPixelAlpha)
{
    EmfMaker maker(40, 40);
    // Opaque red, transparent, and half-transparent blue, premultiplied.
    const Dib dib = Dib32(3, {0xFF000000 | kRed, 0, 0x80800000});
    maker.Transfer(Emr::kAlphaBlend, {0, 0, 3, 1}, 0x01FF0000, {0, 0}, dib, {3, 1});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 0, 0), kRed);
    EXPECT_EQ(ColorAt(image, 1, 0), kWhite);
    EXPECT_EQ(ColorAt(image, 2, 0) >> 16, 0xFFu);
    EXPECT_NEAR(ColorAt(image, 2, 0) & 255, 127, 1);
}

TEST(EmfTransparentBlt, SkipsPixelsOfTransparentColour)
{
    EmfMaker maker = HalfRed();
    maker.Transfer(Emr::kTransparentBlt, {0, 0, 20, 20}, kGreen, {0, 0}, FourColors(), {2, 2});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 15, 5), kRed);  // the background, where the bitmap is green
    EXPECT_EQ(CountOf(image, kGreen, kAll), 0);
    EXPECT_EQ(ColorAt(image, 5, 15), kBlue);
}

TEST(EmfBitmap, LooksUpIndexesInSelectedPalette)
{
    EmfMaker maker(40, 40);
    ByteMaker palette;
    palette.U32Le({5}).U16Le({0x300, 2}).U8({255, 0, 0, 0, 0, 0, 255, 0});
    maker.Record(Emr::kCreatePalette, palette).Record(Emr::kSelectPalette, {5});
    ByteMaker data;
    data.Zeros(16).U32Le({0, 0, 0, 0, 2, 1, 80, 44, 124, 4, 1, kSrcCopy, 2, 1});
    data.U32Le({40, 2, 1}).U16Le({1, 1}).Zeros(24).U16Le({1, 0}).U8({0x40, 0, 0, 0});
    const ImageBuffer image = Render(maker.Record(Emr::kStretchDibits, data));

    EXPECT_EQ(ColorAt(image, 0, 0), kBlue);
    EXPECT_EQ(ColorAt(image, 1, 0), kRed);
}

/// A bitmap whose pixels are a whole file of another format.
static Dib DibOfFile(const Codec& codec, std::uint32_t compression, const ImageBuffer& image)
{
    const std::vector<std::uint8_t> file = Encoded(codec, image);
    Dib dib;
    dib.header.U32Le({40, static_cast<std::uint32_t>(image.width), static_cast<std::uint32_t>(image.height)});
    dib.header.U16Le({1, 0}).U32Le({compression, static_cast<std::uint32_t>(file.size())}).Zeros(16);
    dib.bits.All(file);
    return dib;
}

static ImageBuffer Plain(std::int32_t side, std::array<std::uint8_t, 3> color)
{
    ImageBuffer image;
    image.width = image.height = side;
    image.channels = 3;
    for (std::int32_t n = 0; n < side * side; ++n)
        image.bytes.insert(image.bytes.end(), color.begin(), color.end());
    return image;
}

TEST(EmfStretchDibits, DrawsEmbeddedJpegAndPng)
{
    const ImageBuffer picture = Plain(16, {0, 0, 255});
    for (const Dib& dib : {DibOfFile(kJpegCodec, 4, picture), DibOfFile(kPngCodec, 5, picture)}) {
        const ImageBuffer image = Render(EmfMaker(40, 40).StretchDib(dib, {4, 4, 32, 32}, {0, 0, 16, 16}));

        EXPECT_NEAR(ColorAt(image, 20, 20) & 255, 255, 3);
        EXPECT_LE(ColorAt(image, 20, 20) >> 8, 0x0303u);
        EXPECT_EQ(ColorAt(image, 2, 2), kWhite);
    }
}

/// The same bitmap with colour masks behind the header.
static Dib WithMasks(Dib dib)
{
    ByteMaker header;
    header.U32Le({40, 2, 2}).U16Le({1, 32}).U32Le({3}).Zeros(20).U32Le({0xFF0000, 0xFF00, 0xFF});
    dib.header = header;
    return dib;
}

TEST(EmfStretchDibits, DrawsColorMasksBehindHeaderSize)
{
    const Dib dib = WithMasks(Dib32(2, {kRed, kRed, kRed, kRed}));
    EmfMaker maker(40, 40);
    ByteMaker data;
    data.Zeros(16).U32Le({0, 0, 0, 0, 2, 2, 80, 40, 132, 16, 0, kSrcCopy, 40, 40});
    data.All(dib.header.Data()).All(dib.bits.Data());

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kStretchDibits, data)), kRed, kAll), 1600);
}

TEST(EmfAlphaBlend, BlendsPixelsWithColorMasks)
{
    const Dib dib = WithMasks(Dib32(2, {0x80000080, 0x80000080, 0x80000080, 0x80000080}));
    const ImageBuffer image =
        Render(EmfMaker(40, 40).Transfer(Emr::kAlphaBlend, {0, 0, 40, 40}, 0x01FF0000, {0, 0}, dib, {2, 2}));

    EXPECT_EQ(ColorAt(image, 20, 20), 0x7F7FFFu);
}

TEST(EmfAlphaBlend, DrawsBitmapWithUnsetAlphaOpaquely)
{
    const auto render = [](const Dib& dib) {
        return Render(EmfMaker(40, 40)
                          .Transfer(Emr::kAlphaBlend, {0, 0, 40, 40}, 0x01FF0000, {0, 0}, dib, {2, 2})
                          .Select(kBlackBrush)
                          .Record(Emr::kRectangle, {38, 38, 40, 40}));
    };

    EXPECT_EQ(ColorAt(render(Dib32(2, {kRed, kRed, kRed, kRed})), 20, 20), kRed);
    EXPECT_EQ(ColorAt(render(Dib32(2, {0, 0, 0, 0})), 20, 20), kWhite);
}
