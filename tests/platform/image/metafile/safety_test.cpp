// Tests with corrupt metafiles: none may crash, hang or read out of bounds. The resulting picture doesn't
// matter.
#include <gtest/gtest.h>

#include <bit>

#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

/// A file with a record of every family.
static std::vector<std::uint8_t> RichEmf()
{
    const Dib dib = Dib24(2, {kRed, kGreen, kBlue, kYellow});
    EmfMaker maker(30, 20);
    maker.Record(Emr::kSetMapMode, {8})
        .Record(Emr::kSetWindowExt, {30, 20})
        .Record(Emr::kSetViewportExt, {30, 20});
    maker.GeometricPen(1, 0x107, 2, kRed, {3, 2}).Brush(2, kGreen, 2, 4).Record(Emr::kSaveDc);
    maker.World(2, 1, 0.1, 0, 1, 1, 1).Bounded(Emr::kPolygon, {3, 1, 1, 20, 3, 9, 15});
    maker.Bounded(Emr::kPolyPolygon, {1, 3, 3, 1, 1, 20, 3, 9, 15}).Record(Emr::kRestoreDc, {-1});
    maker.Record(Emr::kPie, {1, 1, 20, 15, 20, 5, 3, 1}).Record(Emr::kSetRop2, {7});
    maker.Record(Emr::kBeginPath)
        .Record(Emr::kMoveTo, {1, 1})
        .Bounded(Emr::kPolyBezierTo, {3, 9, 9, 20, 1, 25, 15});
    maker.Record(Emr::kCloseFigure).Record(Emr::kEndPath).Record(Emr::kSelectClipPath, {2});
    maker.Region(Emr::kExtSelectClipRegion, {2}, {{0, 0, 10, 10}, {5, 5, 15, 15}});
    maker.Region(Emr::kFrameRegion, {2, 1, 1}, {{0, 0, 10, 10}});
    maker.StretchDib(dib, {1, 1, 10, 10}, {0, 0, 2, 2}, kSrcInvert);
    maker.Transfer(Emr::kAlphaBlend, {3, 3, 9, 9}, 0x01800000, {0, 0}, Dib32(1, {0x80402010}), {1, 1});
    ByteMaker gradient;
    gradient.Zeros(16).U32Le({2, 1, 1}).U32Le({0, 0}).U16Le({0xFF00, 0, 0, 0}).U32Le({9, 9});
    gradient.U16Le({0, 0, 0xFF00, 0}).U32Le({0, 1});
    maker.Record(Emr::kGradientFill, gradient)
        .Font(3, -9, u"Arial", 300)
        .Text(2, 5, u"Ab", {5, 5}, 2, {1, 1, 9, 9});
    return maker.File();
}

static std::vector<std::uint8_t> RichWmf()
{
    const Dib dib = Dib24(2, {kRed, kGreen, kBlue, kYellow});
    WmfMaker maker(30, 20);
    maker.Record(0x0103, {8}).Record(0x020C, {20, 30}).Pen(1, 2, kRed).Select(0).Brush(kBlue, 2, 5).Select(1);
    maker.Record(0x001E).Record(0x0416, {15, 25, 1, 1}).Record(0x081A, {9, 1, 3, 9, 15, 20, 1, 1});
    maker.Record(0x0538, {1, 3, 1, 1, 20, 3, 9, 15}).Record(0x0127, {-1});
    maker.Record(0x06FF, {0, 6, 0, 0, 0, 1, 4, 5, 5, 35, 20, 2, 5, 10, 5, 20, 2})
        .Record(0x0429, {2, 1, 1, 1});
    ByteMaker blit;
    blit.U16Le({kSrcCopy & 0xFFFF, kSrcCopy >> 16, 0, 2, 2, 0, 0, 9, 9, 1, 1});
    maker.Record(0x0F43, blit.All(dib.header.Data()).All(dib.bits.Data()));
    ByteMaker text;
    text.U16Le({5, 3, 2, 6, 1, 1, 20, 9}).Text("ab").U16Le({5, 5});
    maker.Font(-9, "Arial").Select(3).Record(0x0A32, text).Record(0x0548, {1, 0xFFFF, 0xFF, 1, 28});
    return maker.File();
}

static void TryEveryByte(const Codec& codec, const std::vector<std::uint8_t>& file)
{
    ASSERT_TRUE(Decoded(codec, file).has_value());
    for (std::size_t n = 0; n < file.size(); ++n)
        for (const int value : {0x7F, 0xFF}) {
            std::vector<std::uint8_t> changed = file;
            changed[n] = static_cast<std::uint8_t>(value);
            // An enlarged size is valid but slow, and isn't what this test looks for.
            const bool size_field = &codec == &kEmfCodec ? n >= 24 && n < 88 : n < 18;
            if (!size_field)
                Decoded(codec, changed);
        }
}

TEST(MetafileSafety, EmfSurvivesCorruptionOfAnySingleByte)
{
    TryEveryByte(kEmfCodec, RichEmf());
}

TEST(MetafileSafety, WmfSurvivesCorruptionOfAnySingleByte)
{
    TryEveryByte(kWmfCodec, RichWmf());
}

TEST(MetafileSafety, SurvivesNanAndHugeCoordinates)
{
    constexpr std::int32_t kFar = 0x7FFFFFFF;
    constexpr double kNone = std::bit_cast<float>(0x7FC00000u);
    EmfMaker maker(30, 20);
    maker.World(0, kNone, 0, 0, kNone, 0, 0)
        .World(2, 1e30, 0, 0, 1e30, 0, 0)
        .World(2, 1e30, 1e30, 1e30, 1e30, 0, 0);
    maker.Bounded(Emr::kPolygon, {3, -kFar, -kFar, kFar, -kFar, 0, kFar})
        .Record(Emr::kEllipse, {-kFar, -kFar, kFar, kFar});
    maker.GeometricPen(1, 0x2107, kFar, kRed, {1, 1}).Record(Emr::kLineTo, {kFar, kFar});
    maker.World(0, 0, 0, 0, 0, 0, 0).Record(Emr::kLineTo, {5, 5}).Record(Emr::kPie, {0, 0, 0, 0, 0, 0, 0, 0});
    maker.Font(2, kFar, u"Arial").Text(kFar, -kFar, u"far", {kFar, kFar, kFar});
    maker.World(0, 1, 0, 0, 1, 0, 0).Text(0, 0, u"far").Font(2, -1, u"Arial").Text(0, 0, u"near");
    maker.StretchDib(Dib24(1, {kRed}), {-kFar, -kFar, kFar, kFar}, {0, 0, 1, 1});
    maker.StretchDib(Dib24(1, {kRed}), {0, 0, 9, 9}, {-kFar, -kFar, kFar, kFar});
    maker.Record(Emr::kOffsetClip, {kFar, -kFar}).Record(Emr::kExcludeClipRect, {-kFar, -kFar, kFar, kFar});

    EXPECT_TRUE(Decoded(kEmfCodec, maker.File()).has_value());
}

TEST(MetafileSafety, RefusesTooManyDashes)
{
    EmfMaker maker(100, 100);
    maker.GeometricPen(1, 0x207, 1, kRed, {1, 1});
    for (int n = 0; n < 3000; ++n)
        maker.Record(Emr::kMoveTo, {-1000000, n % 100}).Record(Emr::kLineTo, {1000000, n % 100 + 1});

    EXPECT_FALSE(Decoded(kEmfCodec, maker.File()).has_value());
}

TEST(MetafileSafety, RefusesTooManySavedStates)
{
    EmfMaker maker(10, 10);
    for (int n = 0; n < 5000; ++n)
        maker.Record(Emr::kSaveDc);

    EXPECT_FALSE(Decoded(kEmfCodec, maker.File()).has_value());
}

TEST(MetafileSafety, RefusesBitmapLargerThanItsData)
{
    Dib dib = Dib24(1, {kRed});
    ByteMaker header;
    header.U32Le({40, 60000, 60000}).U16Le({1, 24}).Zeros(24);
    dib.header = header;

    EXPECT_FALSE(
        Decoded(kEmfCodec, EmfMaker(10, 10).StretchDib(dib, {0, 0, 9, 9}, {0, 0, 9, 9}).File()).has_value());
}

TEST(MetafileSafety, SkipsInvalidOrMissingPattern)
{
    EmfMaker maker(10, 10);
    ByteMaker data;
    data.U32Le({1, 0, 32, 40, 72, 4, 40, 60, 60}).U16Le({1, 24}).Zeros(24).U32Le({0});
    maker.Record(Emr::kCreateDibBrush, data).Select(1).Record(Emr::kRectangle, {0, 0, 9, 9});

    EXPECT_TRUE(Decoded(kEmfCodec, maker.File()).has_value());
}
