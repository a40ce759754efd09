// Tests of mapping, saved states, raster operations and objects in EMF records.
#include <gtest/gtest.h>

#include "tests/platform/image/support/metafile_maker.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

static EmfMaker WithBrush(std::uint32_t color)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, color).Select(kNullPen);
    return maker;
}

TEST(EmfWindow, MapsToViewport)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSetMapMode, {8})
        .Record(Emr::kSetWindowOrg, {100, 100})
        .Record(Emr::kSetWindowExt, {200, 400});
    maker.Record(Emr::kSetViewportOrg, {10, 0}).Record(Emr::kSetViewportExt, {20, 40});
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {100, 100, 200, 200}));

    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{10, 0, 20, 10}));
}

TEST(EmfWindow, MayBeMirrored)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSetMapMode, {8})
        .Record(Emr::kSetWindowExt, {40, -40})
        .Record(Emr::kSetViewportExt, {40, 40});
    maker.Record(Emr::kSetViewportOrg, {0, 40});
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {0, 0, 10, 10}));

    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{0, 30, 10, 40}));
}

TEST(EmfWindow, IsScaledByRecord)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSetMapMode, {8})
        .Record(Emr::kSetWindowExt, {40, 40})
        .Record(Emr::kSetViewportExt, {40, 40});
    maker.Record(Emr::kScaleWindowExt, {2, 1, 2, 1}).Record(Emr::kScaleViewportExt, {1, 2, 1, 2});
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40}));

    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{0, 0, 10, 10}));
}

TEST(EmfMapMode, KeepsSquaresSquareInIsotropicMode)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSetMapMode, {7})
        .Record(Emr::kSetWindowExt, {10, 10})
        .Record(Emr::kSetViewportExt, {40, 20});

    EXPECT_EQ(InkBounds(Render(maker.Record(Emr::kRectangle, {0, 0, 10, 10}))),
              (std::array<std::int32_t, 4>{0, 0, 20, 20}));
}

TEST(EmfMapMode, MapsTenthsOfMillimetreUpwards)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSetMapMode, {2}).Record(Emr::kSetViewportOrg, {0, 40});
    // 5.08 mm are 19.2 pixels at 96 dpi.
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {0, 0, 51, 51}));

    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{0, 21, 19, 40}));
}

TEST(EmfMapMode, IgnoresExtentsInTextMode)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSetWindowExt, {4000, 4000}).Record(Emr::kSetViewportExt, {40, 40});

    EXPECT_EQ(InkBounds(Render(maker.Record(Emr::kRectangle, {5, 5, 10, 10}))),
              (std::array<std::int32_t, 4>{5, 5, 10, 10}));
}

TEST(EmfWorldTransform, MovesScalesAndRotates)
{
    EmfMaker maker = WithBrush(kRed);
    maker.World(0, 0, 2, -2, 0, 30, 5);  // scaled by two, rotated by a quarter turn, then moved

    EXPECT_EQ(InkBounds(Render(maker.Record(Emr::kRectangle, {0, 0, 10, 5}))),
              (std::array<std::int32_t, 4>{20, 5, 30, 25}));
}

TEST(EmfWorldTransform, MultipliesFromLeftOrRight)
{
    const auto place = [](std::uint32_t mode) {
        EmfMaker maker = WithBrush(kRed);
        maker.World(0, 2, 0, 0, 2, 0, 0).World(mode, 1, 0, 0, 1, 5, 5);
        return InkBounds(Render(maker.Record(Emr::kRectangle, {0, 0, 5, 5})));
    };

    EXPECT_EQ(place(2), (std::array<std::int32_t, 4>{10, 10, 20, 20}));  // moved before scaling
    EXPECT_EQ(place(3), (std::array<std::int32_t, 4>{5, 5, 15, 15}));
    EXPECT_EQ(place(1), (std::array<std::int32_t, 4>{0, 0, 5, 5}));
    EXPECT_EQ(place(4), (std::array<std::int32_t, 4>{5, 5, 10, 10}));
}

TEST(EmfRestoreDc, RestoresSavedState)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSaveDc).Brush(2, kBlue).World(0, 1, 0, 0, 1, 20, 20).Record(Emr::kSaveDc);
    maker.Brush(3, kGreen).Record(Emr::kRestoreDc, {-2}).Record(Emr::kRectangle, {0, 0, 10, 10});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, {0, 0, 10, 10}), 100);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1500);
}

TEST(EmfRestoreDc, IgnoresStateThatWasNeverSaved)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kRestoreDc, {-1}).Record(Emr::kRestoreDc, {7}).Record(Emr::kRestoreDc, {0});

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 10, 10})), kRed, kAll), 100);
}

TEST(EmfRop2, CombinesPenAndPictureBitwise)
{
    const auto result = [](std::int32_t rop2) {
        EmfMaker maker = WithBrush(0x00FF00);
        maker.Record(Emr::kRectangle, {0, 0, 40, 40}).Brush(2, 0x0F0FF0).Record(Emr::kSetRop2, {rop2});
        return ColorAt(Render(maker.Record(Emr::kRectangle, {10, 10, 30, 30})), 20, 20);
    };
    constexpr std::uint32_t kOld = 0x00FF00, kPen = 0x0F0FF0, kAllBits = 0xFFFFFF;

    EXPECT_EQ(result(1), 0u);
    EXPECT_EQ(result(2), ~(kPen | kOld) & kAllBits);
    EXPECT_EQ(result(3), ~kPen & kOld);
    EXPECT_EQ(result(4), ~kPen & kAllBits);
    EXPECT_EQ(result(5), kPen & ~kOld);
    EXPECT_EQ(result(6), ~kOld & kAllBits);
    EXPECT_EQ(result(7), kPen ^ kOld);
    EXPECT_EQ(result(8), ~(kPen & kOld) & kAllBits);
    EXPECT_EQ(result(9), kPen & kOld);
    EXPECT_EQ(result(10), ~(kPen ^ kOld) & kAllBits);
    EXPECT_EQ(result(11), kOld);
    EXPECT_EQ(result(12), (~kPen | kOld) & kAllBits);
    EXPECT_EQ(result(13), kPen);
    EXPECT_EQ(result(14), (kPen | ~kOld) & kAllBits);
    EXPECT_EQ(result(15), kPen | kOld);
    EXPECT_EQ(result(16), kAllBits);
}

TEST(EmfRop2, RestoresPictureAfterTwoExclusiveOrs)
{
    EmfMaker maker = WithBrush(0x5500AA);
    maker.Record(Emr::kSetRop2, {7});
    maker.Record(Emr::kEllipse, {5, 5, 35, 35}).Record(Emr::kEllipse, {5, 5, 35, 35});

    EXPECT_EQ(CountOf(Render(maker), kWhite, kAll), 1600);
}

TEST(EmfBrush, HatchesOnOpaqueBackground)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kSetBkColor, {static_cast<std::int32_t>(kYellow)})
        .Select(kNullPen)
        .Brush(1, kRed, 2, 0);
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40}));

    EXPECT_EQ(CountOf(image, kRed, kAll), 5 * 40);  // every eighth row
    EXPECT_EQ(CountOf(image, kYellow, kAll), 35 * 40);
}

TEST(EmfBrush, HatchesWithoutChangingTransparentBackground)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kSetBkMode, {1}).Select(kNullPen).Brush(1, kRed, 2, 5);
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40}));

    EXPECT_EQ(CountOf(image, kRed, kAll), 25 * 16);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1600 - 25 * 16);
}

static EmfMaker WithPattern(std::uint32_t type, const Dib& dib)
{
    EmfMaker maker(40, 40);
    const auto header = static_cast<std::uint32_t>(dib.header.Size());
    ByteMaker data;
    data.U32Le({1, 0, 32, header, 32 + header, static_cast<std::uint32_t>(dib.bits.Size())});
    data.All(dib.header.Data()).All(dib.bits.Data());
    maker.Select(kNullPen).Record(type, data).Select(1);
    return maker;
}

TEST(EmfPatternBrush, RepeatsBitmapFromBrushOrigin)
{
    EmfMaker maker = WithPattern(Emr::kCreateDibBrush, Dib24(2, {kRed, kGreen, kBlue, kYellow}));
    maker.Record(Emr::kSetBrushOrg, {1, 0});
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {0, 0, 20, 20}));

    EXPECT_EQ(ColorAt(image, 1, 0), kRed);
    EXPECT_EQ(ColorAt(image, 0, 0), kGreen);
    EXPECT_EQ(ColorAt(image, 1, 1), kBlue);
    EXPECT_EQ(ColorAt(image, 12, 17), kYellow);
    EXPECT_EQ(CountOf(image, kRed, kAll), 100);
}

TEST(EmfMonoBrush, TakesTextAndBackgroundColours)
{
    EmfMaker maker = WithPattern(Emr::kCreateMonoBrush, Dib1({"#...", "...."}, kBlack, kWhite));
    maker.Record(Emr::kSetTextColor, {static_cast<std::int32_t>(kRed)});
    maker.Record(Emr::kSetBkColor, {static_cast<std::int32_t>(kBlue)}).Record(Emr::kRectangle, {0, 0, 8, 8});
    maker.Record(Emr::kSetBkColor, {static_cast<std::int32_t>(kGreen)})
        .Record(Emr::kRectangle, {8, 0, 16, 8});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 2 * 56);
    EXPECT_EQ(CountOf(image, kBlue, {0, 0, 8, 8}), 8);
    EXPECT_EQ(CountOf(image, kGreen, {8, 0, 16, 8}), 8);
}

TEST(EmfPalette, ResolvesIndexedColours)
{
    EmfMaker maker(40, 40);
    ByteMaker palette;
    palette.U32Le({5}).U16Le({0x300, 2}).U8({10, 20, 30, 0, 40, 50, 60, 0});
    ByteMaker change;
    change.U32Le({5, 1, 1}).U8({70, 80, 90, 0});
    maker.Select(kNullPen).Record(Emr::kCreatePalette, palette).Record(Emr::kSelectPalette, {5});
    maker.Brush(1, 0x01000001).Record(Emr::kRectangle, {0, 0, 10, 10});
    maker.Record(Emr::kSetPaletteEntries, change).Record(Emr::kRectangle, {10, 0, 20, 10});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 5, 5), 40u | 50u << 8 | 60u << 16);
    EXPECT_EQ(ColorAt(image, 15, 5), 70u | 80u << 8 | 90u << 16);
}

TEST(EmfObjects, FreeTheirSlotWhenDeleted)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kDeleteObject, {1}).Brush(1, kBlue).Record(Emr::kRectangle, {0, 0, 10, 10});

    EXPECT_EQ(CountOf(Render(maker), kBlue, kAll), 100);
}

TEST(EmfObjects, AreIgnoredIfTheyDoNotExist)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Select(17)
        .Select(12345)
        .Select(static_cast<std::int32_t>(0x80000063))
        .Record(Emr::kDeleteObject, {999});

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 10, 10})), kRed, kAll), 100);
}

TEST(EmfRecords, AreSkippedIfUnknown)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(4711, {1, 2, 3}).Record(Emr::kComment, {4, 0x12345678}).Record(98, {1});

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 10, 10})), kRed, kAll), 100);
}
