// Metafiles that lie: none may crash, hang or read beyond its bytes. What is seen of them doesn't matter.
#include <bit>

#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

/// A file with a record of every family.
static std::vector<std::uint8_t> aRichEmf()
{
    const Dib objDib = objDib24(2, {kRed, kGreen, kBlue, kYellow});
    EmfMaker objMaker(30, 20);
    objMaker.Record(Emr::SetMapMode, {8})
        .Record(Emr::SetWindowExt, {30, 20})
        .Record(Emr::SetViewportExt, {30, 20});
    objMaker.GeometricPen(1, 0x107, 2, kRed, {3, 2}).Brush(2, kGreen, 2, 4).Record(Emr::SaveDc);
    objMaker.World(2, 1, 0.1, 0, 1, 1, 1).Bounded(Emr::Polygon, {3, 1, 1, 20, 3, 9, 15});
    objMaker.Bounded(Emr::PolyPolygon, {1, 3, 3, 1, 1, 20, 3, 9, 15}).Record(Emr::RestoreDc, {-1});
    objMaker.Record(Emr::Pie, {1, 1, 20, 15, 20, 5, 3, 1}).Record(Emr::SetRop2, {7});
    objMaker.Record(Emr::BeginPath)
        .Record(Emr::MoveTo, {1, 1})
        .Bounded(Emr::PolyBezierTo, {3, 9, 9, 20, 1, 25, 15});
    objMaker.Record(Emr::CloseFigure).Record(Emr::EndPath).Record(Emr::SelectClipPath, {2});
    objMaker.Region(Emr::ExtSelectClipRegion, {2}, {{0, 0, 10, 10}, {5, 5, 15, 15}});
    objMaker.Region(Emr::FrameRegion, {2, 1, 1}, {{0, 0, 10, 10}});
    objMaker.StretchDib(objDib, {1, 1, 10, 10}, {0, 0, 2, 2}, kSrcInvert);
    objMaker.Transfer(Emr::AlphaBlend, {3, 3, 9, 9}, 0x01800000, {0, 0}, objDib32(1, {0x80402010}), {1, 1});
    ByteMaker objGradient;
    objGradient.Zeros(16).U32Le({2, 1, 1}).U32Le({0, 0}).U16Le({0xFF00, 0, 0, 0}).U32Le({9, 9});
    objGradient.U16Le({0, 0, 0xFF00, 0}).U32Le({0, 1});
    objMaker.Record(Emr::GradientFill, objGradient)
        .Font(3, -9, u"Arial", 300)
        .Text(2, 5, u"Ab", {5, 5}, 2, {1, 1, 9, 9});
    return objMaker.aFile();
}

static std::vector<std::uint8_t> aRichWmf()
{
    const Dib objDib = objDib24(2, {kRed, kGreen, kBlue, kYellow});
    WmfMaker objMaker(30, 20);
    objMaker.Record(0x0103, {8})
        .Record(0x020C, {20, 30})
        .Pen(1, 2, kRed)
        .Select(0)
        .Brush(kBlue, 2, 5)
        .Select(1);
    objMaker.Record(0x001E).Record(0x0416, {15, 25, 1, 1}).Record(0x081A, {9, 1, 3, 9, 15, 20, 1, 1});
    objMaker.Record(0x0538, {1, 3, 1, 1, 20, 3, 9, 15}).Record(0x0127, {-1});
    objMaker.Record(0x06FF, {0, 6, 0, 0, 0, 1, 4, 5, 5, 35, 20, 2, 5, 10, 5, 20, 2})
        .Record(0x0429, {2, 1, 1, 1});
    ByteMaker objBlit;
    objBlit.U16Le({kSrcCopy & 0xFFFF, kSrcCopy >> 16, 0, 2, 2, 0, 0, 9, 9, 1, 1});
    objMaker.Record(0x0F43, objBlit.All(objDib.objHeader.aBytes()).All(objDib.objBits.aBytes()));
    ByteMaker objText;
    objText.U16Le({5, 3, 2, 6, 1, 1, 20, 9}).Text("ab").U16Le({5, 5});
    objMaker.Font(-9, "Arial").Select(3).Record(0x0A32, objText).Record(0x0548, {1, 0xFFFF, 0xFF, 1, 28});
    return objMaker.aFile();
}

static void TryEveryByte(const Codec& objCodec, const std::vector<std::uint8_t>& aFile)
{
    ASSERT_TRUE(aDecoded(objCodec, aFile).has_value());
    for (std::size_t n = 0; n < aFile.size(); ++n)
        for (const int lValue : {0x7F, 0xFF}) {
            std::vector<std::uint8_t> aChanged = aFile;
            aChanged[n] = static_cast<std::uint8_t>(lValue);
            // A size that was made large is allowed, and then takes its time: what is looked for lies
            // elsewhere.
            const bool bSizeField = &objCodec == &kEmfCodec ? n >= 24 && n < 88 : n < 18;
            if (!bSizeField)
                aDecoded(objCodec, aChanged);
        }
}

TEST(MetafileSafety, EmfStandsAnyByteChanged)
{
    TryEveryByte(kEmfCodec, aRichEmf());
}

TEST(MetafileSafety, WmfStandsAnyByteChanged)
{
    TryEveryByte(kWmfCodec, aRichWmf());
}

TEST(MetafileSafety, StandsCoordinatesThatAreNoNumbersOrTooFar)
{
    constexpr std::int32_t kFar = 0x7FFFFFFF;
    constexpr double kNone = std::bit_cast<float>(0x7FC00000u);
    EmfMaker objMaker(30, 20);
    objMaker.World(0, kNone, 0, 0, kNone, 0, 0)
        .World(2, 1e30, 0, 0, 1e30, 0, 0)
        .World(2, 1e30, 1e30, 1e30, 1e30, 0, 0);
    objMaker.Bounded(Emr::Polygon, {3, -kFar, -kFar, kFar, -kFar, 0, kFar})
        .Record(Emr::Ellipse, {-kFar, -kFar, kFar, kFar});
    objMaker.GeometricPen(1, 0x2107, kFar, kRed, {1, 1}).Record(Emr::LineTo, {kFar, kFar});
    objMaker.World(0, 0, 0, 0, 0, 0, 0)
        .Record(Emr::LineTo, {5, 5})
        .Record(Emr::Pie, {0, 0, 0, 0, 0, 0, 0, 0});
    objMaker.Font(2, kFar, u"Arial").Text(kFar, -kFar, u"far", {kFar, kFar, kFar});
    objMaker.World(0, 1, 0, 0, 1, 0, 0).Text(0, 0, u"far").Font(2, -1, u"Arial").Text(0, 0, u"near");
    objMaker.StretchDib(objDib24(1, {kRed}), {-kFar, -kFar, kFar, kFar}, {0, 0, 1, 1});
    objMaker.StretchDib(objDib24(1, {kRed}), {0, 0, 9, 9}, {-kFar, -kFar, kFar, kFar});
    objMaker.Record(Emr::OffsetClip, {kFar, -kFar}).Record(Emr::ExcludeClipRect, {-kFar, -kFar, kFar, kFar});

    EXPECT_TRUE(aDecoded(kEmfCodec, objMaker.aFile()).has_value());
}

TEST(MetafileSafety, RefusesDashesWithoutEnd)
{
    EmfMaker objMaker(100, 100);
    objMaker.GeometricPen(1, 0x207, 1, kRed, {1, 1});
    for (int n = 0; n < 3000; ++n)
        objMaker.Record(Emr::MoveTo, {-1000000, n % 100}).Record(Emr::LineTo, {1000000, n % 100 + 1});

    EXPECT_FALSE(aDecoded(kEmfCodec, objMaker.aFile()).has_value());
}

TEST(MetafileSafety, RefusesStatesSavedWithoutEnd)
{
    EmfMaker objMaker(10, 10);
    for (int n = 0; n < 5000; ++n)
        objMaker.Record(Emr::SaveDc);

    EXPECT_FALSE(aDecoded(kEmfCodec, objMaker.aFile()).has_value());
}

TEST(MetafileSafety, RefusesABitmapThatClaimsMoreThanItHolds)
{
    Dib objDib = objDib24(1, {kRed});
    ByteMaker objHeader;
    objHeader.U32Le({40, 60000, 60000}).U16Le({1, 24}).Zeros(24);
    objDib.objHeader = objHeader;

    EXPECT_FALSE(aDecoded(kEmfCodec, EmfMaker(10, 10).StretchDib(objDib, {0, 0, 9, 9}, {0, 0, 9, 9}).aFile())
                     .has_value());
}

TEST(MetafileSafety, LeavesOutAPatternThatIsBrokenOrNone)
{
    EmfMaker objMaker(10, 10);
    ByteMaker objData;
    objData.U32Le({1, 0, 32, 40, 72, 4, 40, 60, 60}).U16Le({1, 24}).Zeros(24).U32Le({0});
    objMaker.Record(Emr::CreateDibBrush, objData).Select(1).Record(Emr::Rectangle, {0, 0, 9, 9});

    EXPECT_TRUE(aDecoded(kEmfCodec, objMaker.aFile()).has_value());
}
