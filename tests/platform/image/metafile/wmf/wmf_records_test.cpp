// Tests of WMF records, pixel by pixel.
#include <gtest/gtest.h>

#include <algorithm>

#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

using Box = std::array<std::int32_t, 4>;
static constexpr Box kAll{0, 0, 40, 40};

enum Function : std::uint16_t {
    kSetBkColor = 0x0201,
    kSetBkMode = 0x0102,
    kSetMapMode = 0x0103,
    kSetRop2 = 0x0104,
    kSetPolyFillMode = 0x0106,
    kSetTextColor = 0x0209,
    kSetWindowOrg = 0x020B,
    kSetWindowExt = 0x020C,
    kSetViewportExt = 0x020E,
    kOffsetWindowOrg = 0x020F,
    kLineTo = 0x0213,
    kMoveTo = 0x0214,
    kExcludeClipRect = 0x0415,
    kIntersectClipRect = 0x0416,
    kEllipse = 0x0418,
    kFloodFill = 0x0419,
    kPie = 0x081A,
    kRectangle = 0x041B,
    kRoundRect = 0x061C,
    kPatBlt = 0x061D,
    kSaveDc = 0x001E,
    kSetPixel = 0x041F,
    kOffsetClip = 0x0220,
    kTextOut = 0x0521,
    kBitBlt = 0x0922,
    kPolygon = 0x0324,
    kPolyline = 0x0325,
    kEscape = 0x0626,
    kRestoreDc = 0x0127,
    kFillRegion = 0x0228,
    kInvertRegion = 0x012A,
    kSelectClip = 0x012C,
    kSetTextAlign = 0x012E,
    kChord = 0x0830,
    kExtTextOut = 0x0A32,
    kSetDibToDev = 0x0D33,
    kPolyPolygon = 0x0538,
    kDibBitBlt = 0x0940,
    kDibStretchBlt = 0x0B41,
    kDibPattern = 0x0142,
    kStretchDib = 0x0F43,
    kDeleteObject = 0x01F0,
    kCreatePalette = 0x00F7,
    kCreateRegion = 0x06FF,
    kCreatePattern = 0x01F9,
};

/// Selects a null pen as object 0 and a brush as object 1.
static WmfMaker WithBrush(std::uint32_t color)
{
    WmfMaker maker(40, 40);
    maker.Record(kSetWindowOrg, {0, 0}).Record(kSetWindowExt, {40, 40});
    return maker.Pen(5, 0, kBlack).Select(0).Brush(color).Select(1);
}

static WmfMaker WithPen()
{
    WmfMaker maker(40, 40);
    return maker.Record(kSetWindowExt, {40, 40});
}

TEST(WmfPicture, TakesSizeFromPlaceableHeader)
{
    const ImageBuffer image = Render(WmfMaker(2880, 1440).UnitsPerInch(1440).Record(kSetBkMode, {1}));

    EXPECT_EQ(image.width, 192);
    EXPECT_EQ(image.height, 96);
    EXPECT_EQ(image.channels, 3);
    EXPECT_EQ(image.dots_per_inch_x, 96);
    EXPECT_EQ(CountOf(image, kWhite, {0, 0, 192, 96}), 192 * 96);
}

TEST(WmfPicture, TakesSizeFromWindowWithoutPlaceableHeader)
{
    const ImageBuffer image =
        Render(WmfMaker().Record(kSetWindowExt, {50, 70}).Record(kSetPixel, {255, 0, 0, 0}));

    EXPECT_EQ(image.width, 70);
    EXPECT_EQ(image.height, 50);
    EXPECT_EQ(image.dots_per_inch_x, 0);
    EXPECT_EQ(ColorAt(image, 0, 0), kRed);
}

TEST(WmfPicture, LimitsPixelsOfFineWindowWithoutUnits)
{
    const ImageBuffer image = Render(WmfMaker().Record(kSetWindowExt, {16000, 32000}));

    EXPECT_EQ(image.width, 1024);
    EXPECT_EQ(image.height, 512);
}

TEST(WmfPicture, TakesSizeFromMetricMapMode)
{
    WmfMaker maker;
    maker.Record(kSetMapMode, {3}).Record(kSetWindowExt, {2540, 5080});
    maker.Pen(5, 0, kBlack).Select(0).Brush(kRed).Select(1).Record(kRectangle, {-1270, 2540, 0, 0});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(image.width, 192);
    EXPECT_EQ(image.height, 96);
    EXPECT_EQ(CountOf(image, kRed, {0, 0, 96, 48}), 96 * 48);
    EXPECT_EQ(CountOf(image, kRed, {0, 0, 192, 96}), 96 * 48);
}

TEST(WmfPicture, TakesSizeFromDrawingInMetricMapMode)
{
    WmfMaker maker;
    maker.Record(kSetMapMode, {6}).Pen(5, 0, kBlack).Select(0).Brush(kRed).Select(1);
    const ImageBuffer image = Render(maker.Record(kRectangle, {-1440, 2880, -720, 1440}));

    EXPECT_EQ(image.width, 96);
    EXPECT_EQ(image.height, 48);
    EXPECT_EQ(CountOf(image, kRed, {0, 0, 96, 48}), 96 * 48);
}

TEST(WmfPicture, TakesSizeFromViewport)
{
    WmfMaker maker;
    maker.Record(kSetMapMode, {8}).Record(kSetWindowExt, {10000, 20000}).Record(kSetViewportExt, {60, 120});
    const ImageBuffer image = Render(maker.Record(kSetPixel, {255, 0, 0, 0}));

    EXPECT_EQ(image.width, 120);
    EXPECT_EQ(image.height, 60);
}

TEST(WmfPicture, TakesSizeFromDrawingWithoutWindow)
{
    WmfMaker maker;
    maker.Pen(5, 0, kBlack).Select(0).Brush(kRed).Select(1).Record(kRectangle, {60, 90, 10, 30});
    const ImageBuffer image = Render(maker.Record(kRectangle, {20, 100, 10, 80}));

    EXPECT_EQ(image.width, 70);
    EXPECT_EQ(image.height, 50);
    EXPECT_EQ(ColorAt(image, 0, 0), kRed);
    EXPECT_EQ(ColorAt(image, 65, 5), kRed);
    EXPECT_EQ(ColorAt(image, 65, 30), kWhite);
}

TEST(WmfPicture, IsRefusedIfNothingIsDrawn)
{
    EXPECT_FALSE(Decoded(kWmfCodec, WmfMaker().Record(kSetBkMode, {1}).File()).has_value());
}

TEST(WmfRectangle, ExcludesItsLastRow)
{
    WmfMaker maker = WithBrush(kRed);
    const ImageBuffer filled = Render(maker.Record(kRectangle, {30, 25, 10, 5}));
    const ImageBuffer drawn = Render(WithPen().Brush(kRed).Select(0).Record(kRectangle, {30, 25, 10, 5}));

    EXPECT_EQ(CountOf(filled, kRed, kAll), 400);
    EXPECT_EQ(InkBounds(drawn), (Box{5, 10, 25, 30}));
    EXPECT_EQ(CountOf(drawn, kBlack, kAll), 76);
    EXPECT_EQ(CountOf(drawn, kRed, kAll), 18 * 18);
}

TEST(WmfLines, RunFromPointToPoint)
{
    WmfMaker maker = WithPen();
    maker.Record(kMoveTo, {5, 5}).Record(kLineTo, {5, 20}).Record(kPolyline, {2, 5, 30, 20, 30});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlack, {5, 5, 21, 6}), 16);
    EXPECT_EQ(CountOf(image, kBlack, {5, 30, 21, 31}), 16);
}

TEST(WmfShapes, AreFilledWithBrush)
{
    EXPECT_EQ(CountOf(Render(WithBrush(kRed).Record(kPolygon, {4, 5, 5, 25, 5, 25, 25, 5, 25})), kRed, kAll),
              400);
    EXPECT_EQ(InkBounds(Render(WithBrush(kRed).Record(kEllipse, {35, 35, 5, 5}))), (Box{5, 5, 35, 35}));
    EXPECT_EQ(ColorAt(Render(WithBrush(kRed).Record(kRoundRect, {20, 20, 35, 35, 5, 5})), 5, 5), kWhite);
    EXPECT_EQ(CountOf(Render(WithBrush(kRed).Record(kPolyPolygon, {2, 4, 4, 5, 5, 35, 5, 35, 35, 5, 35, 15,
                                                                   15, 25, 15, 25, 25, 15, 25})),
                      kRed, kAll),
              800);
}

TEST(WmfPie, RunsCounterClockwiseFromFirstRay)
{
    const ImageBuffer image = Render(WithBrush(kRed).Record(kPie, {0, 20, 20, 40, 40, 40, 0, 0}));

    EXPECT_EQ(ColorAt(image, 28, 12), kRed);
    EXPECT_EQ(ColorAt(image, 12, 28), kWhite);
}

TEST(WmfWindow, MovesAndScalesWhatFollows)
{
    WmfMaker maker(40, 40);
    maker.Pen(5, 0, kBlack).Select(0).Brush(kRed).Select(1);
    maker.Record(kSetMapMode, {8}).Record(kSetWindowOrg, {100, 100}).Record(kSetWindowExt, {400, 400});
    maker.Record(kRectangle, {200, 200, 100, 100}).Record(kOffsetWindowOrg, {-200, -200});
    maker.Record(kRectangle, {200, 200, 100, 100});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, {0, 0, 10, 10}), 100);
    EXPECT_EQ(CountOf(image, kRed, {20, 20, 30, 30}), 100);
    EXPECT_EQ(CountOf(image, kRed, kAll), 200);
}

TEST(WmfViewport, CoversPictureWhateverItsScreenSize)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kSetViewportExt, {768, 1024}).Record(kRectangle, {20, 20, 0, 0});

    EXPECT_EQ(CountOf(Render(maker), kRed, {0, 0, 20, 20}), 400);
}

TEST(WmfState, IsSavedAndRestored)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kSaveDc).Brush(kBlue).Select(2).Record(kIntersectClipRect, {5, 5, 0, 0});
    maker.Record(kRestoreDc, {-1}).Record(kRectangle, {10, 10, 0, 0});

    EXPECT_EQ(CountOf(Render(maker), kRed, kAll), 100);
}

TEST(WmfClip, IsIntersectedExcludedAndMoved)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kIntersectClipRect, {20, 20, 0, 0}).Record(kExcludeClipRect, {10, 10, 5, 5});
    maker.Record(kOffsetClip, {10, 5}).Record(kRectangle, {40, 40, 0, 0});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(InkBounds(image), (Box{5, 10, 25, 30}));
    EXPECT_EQ(CountOf(image, kRed, kAll), 375);
}

TEST(WmfObjects, TakeFirstFreeSlot)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kDeleteObject, {0}).Brush(kBlue).Select(0).Record(kRectangle, {10, 10, 0, 0});

    EXPECT_EQ(CountOf(Render(maker), kBlue, kAll), 100);
}

TEST(WmfObjects, TakeSlotEvenIfTheyDrawNothing)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kCreatePalette, {0x300, 1, 0, 0}).Brush(kBlue).Select(3).Record(kRectangle, {10, 10, 0, 0});

    EXPECT_EQ(CountOf(Render(maker), kBlue, kAll), 100);
}

TEST(WmfRop2, RestoresPictureAfterTwoInversions)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kSetRop2, {6}).Record(kRectangle, {30, 30, 0, 0}).Record(kRectangle, {20, 20, 10, 10});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlack, kAll), 800);
}

TEST(WmfRegion, ConsistsOfScansAndCanBeClip)
{
    WmfMaker maker = WithBrush(kRed);
    // Two scans: rows 5 to 10 with one run, rows 10 to 20 with two.
    maker.Record(kCreateRegion, {0, 6, 0,  0, 0,  2, 4, 5,  5,  35, 20,  //
                                 2, 5, 10, 5, 35, 2, 4, 10, 20, 5,  10, 30, 35, 4});
    maker.Record(kFillRegion, {2, 1});
    const ImageBuffer image = Render(maker);
    WmfMaker clipped = maker;
    clipped.Brush(kBlue).Select(3).Record(kSelectClip, {2}).Record(kRectangle, {40, 40, 0, 0});

    EXPECT_EQ(CountOf(image, kRed, kAll), 150 + 100);
    EXPECT_EQ(CountOf(Render(clipped), kBlue, kAll), 250);
    EXPECT_EQ(CountOf(Render(maker.Record(kInvertRegion, {2})), kRed, kAll), 0);
}

TEST(WmfPixels, AreSetAndFloodFilledUpToColour)
{
    WmfMaker maker = WithPen();
    maker.Brush(0, 1).Select(0).Record(kRectangle, {30, 30, 10, 10}).Brush(kGreen).Select(1);
    maker.Record(kFloodFill, {0, 0, 20, 20}).Record(kSetPixel, {Low(kBlue), High(kBlue), 15, 12});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 12, 15), kBlue);
    EXPECT_EQ(CountOf(image, kGreen, kAll), 18 * 18 - 1);
}

static ByteMaker WithDib(std::initializer_list<std::uint32_t> words, const Dib& dib)
{
    ByteMaker result;
    result.U16Le(words).All(dib.header.Data()).All(dib.bits.Data());
    return result;
}

TEST(WmfBitmaps, AreCopiedAndScaled)
{
    const Dib dib = Dib24(2, {kRed, kGreen, kBlue, kYellow});
    const std::uint32_t low = kSrcCopy & 0xFFFF, high = kSrcCopy >> 16;
    const ImageBuffer stretched =
        Render(WithPen().Record(kStretchDib, WithDib({low, high, 0, 2, 2, 0, 0, 20, 20, 10, 10}, dib)));
    const ImageBuffer blt = Render(WithPen().Record(kDibBitBlt, WithDib({low, high, 0, 0, 2, 2, 7, 5}, dib)));
    const ImageBuffer stretch_blt =
        Render(WithPen().Record(kDibStretchBlt, WithDib({low, high, 1, 2, 0, 0, 10, 20, 0, 0}, dib)));
    const ImageBuffer set = Render(WithPen().Record(kSetDibToDev, WithDib({0, 2, 0, 0, 0, 2, 2, 4, 3}, dib)));

    EXPECT_EQ(CountOf(stretched, kRed, {10, 10, 20, 20}), 100);
    EXPECT_EQ(CountOf(stretched, kYellow, {20, 20, 30, 30}), 100);
    EXPECT_EQ(ColorAt(blt, 5, 7), kRed);
    EXPECT_EQ(ColorAt(blt, 6, 8), kYellow);
    EXPECT_EQ(CountOf(stretch_blt, kRed, kAll), 100);
    EXPECT_EQ(CountOf(stretch_blt, kGreen, kAll), 100);
    EXPECT_EQ(ColorAt(set, 3, 4), kRed);
    EXPECT_EQ(ColorAt(set, 4, 5), kYellow);
}

TEST(WmfBitmaps, TakeTextAndBackgroundColoursInOldFormat)
{
    ByteMaker data;
    data.U16Le({kSrcCopy & 0xFFFF, kSrcCopy >> 16, 0, 0, 2, 8, 0, 0});
    data.U16Le({0, 8, 2, 2}).U8({1, 1}).U8({0xF0, 0, 0x0F, 0});
    WmfMaker maker = WithPen();
    maker.Record(kSetTextColor, {Low(kRed), High(kRed)}).Record(kSetBkColor, {Low(kBlue), High(kBlue)});
    const ImageBuffer image = Render(maker.Record(kBitBlt, data));

    EXPECT_EQ(ColorAt(image, 0, 0), kBlue);
    EXPECT_EQ(ColorAt(image, 7, 0), kRed);
    EXPECT_EQ(ColorAt(image, 0, 1), kRed);
}

TEST(WmfBitmaps, CanBeCopiedFromPictureItself)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kRectangle, {10, 10, 0, 0});
    // Without a bitmap: operation, source y and x, an unused word, size, target.
    maker.Record(kDibBitBlt, {kSrcCopy & 0xFFFF, kSrcCopy >> 16, 0, 0, 0, 10, 10, 20, 25});

    EXPECT_EQ(CountOf(Render(maker), kRed, {25, 20, 35, 30}), 100);
}

TEST(WmfPatBlt, PaintsWithBrush)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kPatBlt, {kPatCopy & 0xFFFF, kPatCopy >> 16, 10, 20, 5, 6});
    maker.Record(kPatBlt, {kDstInvert & 0xFFFF, kDstInvert >> 16, 1, 1, 39, 39});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, {6, 5, 26, 15}), 200);
    EXPECT_EQ(ColorAt(image, 39, 39), kBlack);
}

TEST(WmfPatternBrush, RepeatsItsBitmap)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kDibPattern, WithDib({5, 0}, Dib24(2, {kRed, kGreen, kBlue, kYellow}))).Select(2);
    const ImageBuffer image = Render(maker.Record(kRectangle, {40, 40, 0, 0}));

    EXPECT_EQ(CountOf(image, kYellow, kAll), 400);
    EXPECT_EQ(ColorAt(image, 20, 20), kRed);
}

TEST(WmfPatternBrush, AcceptsOldBitmapWithoutPalette)
{
    ByteMaker pattern;
    pattern.U16Le({0, 8, 2, 2}).U8({1, 1}).Zeros(22).U8({0xF0, 0, 0x0F, 0});
    WmfMaker maker = WithBrush(kRed);
    maker.Record(kCreatePattern, pattern).Select(2).Record(kRectangle, {8, 8, 0, 0});

    EXPECT_EQ(CountOf(Render(maker), kBlack, kAll), 32);
}

TEST(WmfText, FollowsDistancesOnOpaqueBackground)
{
    WmfMaker maker(200, 60);
    maker.Record(kSetWindowExt, {60, 200}).Font(-20, "Arial").Select(0);
    maker.Record(kSetBkColor, {Low(kYellow), High(kYellow)});
    ByteMaker text;
    text.U16Le({10, 20, 3, 0}).Text("iii").U8({0}).U16Le({50, 50, 50});
    const ImageBuffer image = Render(maker.Record(kExtTextOut, text));

    EXPECT_EQ(InkBounds(image)[0], 20);
    EXPECT_EQ(InkBounds(image)[2], 170);
    EXPECT_EQ(InkBounds(image)[1], 10);
    EXPECT_GT(CountOf(image, kYellow, {0, 0, 200, 60}), 2500);
}

TEST(WmfText, RisesByDistancesInTwoDimensions)
{
    WmfMaker maker(200, 60);
    maker.Record(kSetWindowExt, {60, 200}).Record(kSetBkMode, {1}).Font(-20, "Arial").Select(0);
    ByteMaker text;
    text.U16Le({30, 20, 2, 0x2000}).Text("HH").U16Le({50, 20, 50, 0});
    const ImageBuffer image = Render(maker.Record(kExtTextOut, text));

    EXPECT_EQ(CountOf(image, kWhite, {0, 0, 60, 30}), 1800);
    EXPECT_LT(CountOf(image, kWhite, {70, 10, 90, 30}), 400);
    EXPECT_EQ(CountOf(image, kWhite, {70, 36, 200, 60}), 130 * 24);
}

TEST(WmfText, FillsItsBox)
{
    WmfMaker maker(200, 60);
    maker.Record(kSetWindowExt, {60, 200}).Record(kSetBkColor, {Low(kGreen), High(kGreen)});

    EXPECT_EQ(InkBounds(Render(maker.Record(kExtTextOut, {0, 0, 0, 2, 10, 20, 100, 40}))),
              (Box{10, 20, 100, 40}));
}

TEST(WmfText, CountsDistancesPerByteOfDoubleByteText)
{
    WmfMaker maker(200, 60);
    maker.Record(kSetWindowExt, {60, 200}).Font(-20, "MS Gothic", 128).Select(0).Record(kSetBkMode, {2});
    maker.Record(kSetBkColor, {Low(kYellow), High(kYellow)});
    ByteMaker text;
    text.U16Le({10, 20, 3, 0}).U8({0x88, 0x9F, 'i', 0}).U16Le({20, 20, 60});
    const ImageBuffer image = Render(maker.Record(kExtTextOut, text));

    EXPECT_EQ(InkBounds(image)[2], 120);
}

TEST(WmfText, WorksWithoutDistances)
{
    WmfMaker maker(200, 60);
    ByteMaker text;
    text.U16Le({4}).Text("HHHH").U16Le({10, 20});
    maker.Record(kSetWindowExt, {60, 200}).Record(kSetBkMode, {1}).Font(-20, "Arial").Select(0);
    const Box box = InkBounds(Render(maker.Record(kTextOut, text)));

    EXPECT_NEAR(box[0], 22, 3);
    EXPECT_GE(box[1], 10);
    EXPECT_GT(box[2], 60);
}

TEST(WmfRecords, AreSkippedIfUnknownOrForPrinters)
{
    WmfMaker maker = WithBrush(kRed);
    maker.Record(0x0FEE, {1, 2, 3}).Record(kEscape, {15, 4, 0, 0}).Record(kRectangle, {10, 10, 0, 0});

    EXPECT_EQ(CountOf(Render(maker), kRed, kAll), 100);
}

/// Adds a file in pieces, as comments of the WMF.
static void Embed(WmfMaker& maker, const std::vector<std::uint8_t>& emf, std::size_t pieces)
{
    const std::size_t most = (emf.size() + pieces - 1) / pieces;
    for (std::size_t n = 0; n < emf.size(); n += most) {
        const std::size_t size = std::min(most, emf.size() - n);
        const auto fields = [](std::size_t value) { return static_cast<std::uint32_t>(value); };
        ByteMaker comment;
        comment.U16Le({15, fields(34 + size)}).U32Le({0x43464D57, 1, 0x10000}).U16Le({0}).U32Le({0});
        comment.U32Le({fields(pieces), fields(size), fields(emf.size() - n - size), fields(emf.size())});
        comment.All({emf.begin() + static_cast<std::ptrdiff_t>(n),
                     emf.begin() + static_cast<std::ptrdiff_t>(n + size)});
        maker.Record(kEscape, comment);
    }
}

TEST(WmfEmbeddedEmf, IsDrawnInsteadOfRecords)
{
    const std::vector<std::uint8_t> emf =
        EmfMaker(60, 30).Select(kNullPen).Brush(1, kBlue).Record(Emr::kRectangle, {0, 0, 60, 30}).File();
    WmfMaker maker = WithBrush(kRed);
    Embed(maker, emf, 3);
    const ImageBuffer image = Render(maker.Record(kRectangle, {40, 40, 0, 0}));

    EXPECT_EQ(image.width, 60);
    EXPECT_EQ(image.height, 30);
    EXPECT_EQ(CountOf(image, kBlue, {0, 0, 60, 30}), 1800);
}

TEST(WmfEmbeddedEmf, GivesWayToRecordsIfBroken)
{
    std::vector<std::uint8_t> emf = EmfMaker(60, 30).Record(Emr::kRectangle, {0, 0, 60, 30}).File();
    emf.resize(emf.size() - 20);
    WmfMaker maker = WithBrush(kRed);
    Embed(maker, emf, 2);
    const ImageBuffer image = Render(maker.Record(kRectangle, {40, 40, 0, 0}));

    EXPECT_EQ(CountOf(image, kRed, kAll), 1600);
}
