// Tests of paths, clipping and regions in EMF records.
#include <gtest/gtest.h>

#include "tests/platform/image/support/metafile_maker.h"

using Box = std::array<std::int32_t, 4>;
static constexpr Box kAll{0, 0, 40, 40};

static EmfMaker WithBrush(std::uint32_t color)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, color).Select(kNullPen);
    return maker;
}

/// Adds a square to the path.
static void AddSquare(EmfMaker& maker, std::int32_t from, std::int32_t to)
{
    maker.Record(Emr::kMoveTo, {from, from}).Record(Emr::kLineTo, {to, from}).Record(Emr::kLineTo, {to, to});
    maker.Record(Emr::kLineTo, {from, to}).Record(Emr::kCloseFigure);
}

TEST(EmfPath, FillsAllItsFigures)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kBeginPath);
    AddSquare(maker, 5, 35);
    AddSquare(maker, 15, 25);
    maker.Record(Emr::kEndPath).Bounded(Emr::kFillPath, {});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 800);
    EXPECT_EQ(ColorAt(image, 20, 20), kWhite);
}

TEST(EmfPath, IsStrokedWithPen)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kBeginPath);
    AddSquare(maker, 5, 24);
    maker.Record(Emr::kEndPath).Bounded(Emr::kStrokePath, {});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlack, kAll), 76);
    EXPECT_EQ(ColorAt(image, 15, 15), kWhite);
}

TEST(EmfPath, IsFilledAndStrokedByOneRecord)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, kRed).Record(Emr::kBeginPath);
    AddSquare(maker, 5, 24);
    maker.Record(Emr::kEndPath).Bounded(Emr::kStrokeAndFillPath, {});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlack, kAll), 76);
    EXPECT_EQ(CountOf(image, kRed, kAll), 18 * 18);
}

TEST(EmfPath, DrawsNothingWhileOpenAndIsConsumedByUse)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kBeginPath).Record(Emr::kRectangle, {5, 5, 15, 15}).Record(Emr::kEndPath);
    maker.Bounded(Emr::kFillPath, {}).Brush(2, kBlue).Bounded(Emr::kFillPath, {});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 100);
    EXPECT_EQ(CountOf(image, kBlue, kAll), 0);
}

TEST(EmfPath, IsDiscardedByAbort)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kBeginPath).Record(Emr::kRectangle, {5, 5, 15, 15}).Record(Emr::kAbortPath);
    maker.Record(Emr::kEndPath).Bounded(Emr::kFillPath, {});

    EXPECT_EQ(CountOf(Render(maker), kWhite, kAll), 1600);
}

TEST(EmfPath, JoinsLinesCurvesAndArcsInOneFigure)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kBeginPath).Record(Emr::kMoveTo, {5, 20});
    maker.Record(Emr::kArcTo, {5, 5, 35, 35, 5, 20, 35, 20});  // below, counter-clockwise
    maker.Bounded(Emr::kPolyBezierTo, {3, 35, 0, 5, 0, 5, 20})
        .Record(Emr::kCloseFigure)
        .Record(Emr::kEndPath);
    const ImageBuffer image = Render(maker.Bounded(Emr::kFillPath, {}));

    EXPECT_EQ(ColorAt(image, 20, 30), kRed);
    EXPECT_EQ(ColorAt(image, 20, 10), kRed);
    EXPECT_EQ(ColorAt(image, 20, 3), kWhite);
    EXPECT_EQ(ColorAt(image, 20, 20), kRed);
}

TEST(EmfWidenPath, FillsAreaOfWideLine)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, kRed).GeometricPen(2, 0x200, 6, kBlue).Record(Emr::kBeginPath);
    maker.Record(Emr::kMoveTo, {5, 20}).Record(Emr::kLineTo, {35, 20}).Record(Emr::kEndPath);
    maker.Record(Emr::kWidenPath).Bounded(Emr::kFillPath, {});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 20, 18), kRed);
    EXPECT_EQ(ColorAt(image, 20, 21), kRed);
    EXPECT_EQ(CountOf(image, kBlue, kAll), 0);
}

TEST(EmfFlattenPath, KeepsShape)
{
    const auto shape = [](bool flatten) {
        EmfMaker maker = WithBrush(kRed);
        maker.Record(Emr::kBeginPath).Record(Emr::kEllipse, {5, 5, 35, 35}).Record(Emr::kEndPath);
        if (flatten)
            maker.Record(Emr::kFlattenPath);
        return Render(maker.Bounded(Emr::kFillPath, {}));
    };

    EXPECT_EQ(shape(true).bytes, shape(false).bytes);
}

TEST(EmfClip, IntersectsAndExcludesRectangles)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kIntersectClipRect, {5, 5, 35, 35}).Record(Emr::kExcludeClipRect, {15, 15, 25, 25});
    const ImageBuffer image = Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40}));

    EXPECT_EQ(CountOf(image, kRed, kAll), 800);
    EXPECT_EQ(ColorAt(image, 20, 20), kWhite);
    EXPECT_EQ(ColorAt(image, 4, 20), kWhite);
}

TEST(EmfClip, MovesByOffset)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kIntersectClipRect, {0, 0, 20, 20}).Record(Emr::kExcludeClipRect, {5, 5, 10, 10});
    maker.Record(Emr::kOffsetClip, {10, 15}).Record(Emr::kRectangle, {0, 0, 40, 40});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(InkBounds(image), (Box{10, 15, 30, 35}));
    EXPECT_EQ(CountOf(image, kRed, kAll), 400 - 25);
    EXPECT_EQ(ColorAt(image, 17, 22), kWhite);
}

TEST(EmfClip, IsSavedWithState)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kSaveDc).Record(Emr::kIntersectClipRect, {0, 0, 5, 5}).Record(Emr::kRestoreDc, {-1});

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40})), kRed, kAll), 1600);
}

TEST(EmfClip, CombinesRegionsInAllModes)
{
    const auto area = [](std::int32_t mode) {
        EmfMaker maker = WithBrush(kRed);
        maker.Record(Emr::kIntersectClipRect, {0, 0, 20, 20});
        maker.Region(Emr::kExtSelectClipRegion, {mode}, {{10, 10, 30, 30}});
        return CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40})), kRed, kAll);
    };

    EXPECT_EQ(area(1), 100);
    EXPECT_EQ(area(2), 700);
    EXPECT_EQ(area(3), 600);
    EXPECT_EQ(area(4), 300);
    EXPECT_EQ(area(5), 400);
}

TEST(EmfClip, IsUnionOfBoxesOfRegion)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Region(Emr::kExtSelectClipRegion, {5}, {{0, 0, 20, 10}, {10, 5, 30, 15}, {35, 35, 40, 40}});

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40})), kRed, kAll),
              200 + 200 - 50 + 25);
}

TEST(EmfClip, IsResetByEmptyRegion)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kIntersectClipRect, {0, 0, 5, 5}).Record(Emr::kExtSelectClipRegion, {0, 5});

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40})), kRed, kAll), 1600);
}

TEST(EmfClip, StaysWithinMetaRegion)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kIntersectClipRect, {0, 0, 20, 20}).Record(Emr::kSetMetaRegion);
    maker.Record(Emr::kExtSelectClipRegion, {0, 5}).Record(Emr::kRectangle, {0, 0, 40, 40});

    EXPECT_EQ(CountOf(Render(maker), kRed, kAll), 400);
}

TEST(EmfClip, CanBePath)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Record(Emr::kBeginPath).Record(Emr::kEllipse, {5, 5, 35, 35}).Record(Emr::kEndPath);
    maker.Record(Emr::kSelectClipPath, {1}).Record(Emr::kRectangle, {0, 0, 40, 40});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 20, 20), kRed);
    EXPECT_EQ(ColorAt(image, 7, 7), kWhite);
    EXPECT_EQ(InkBounds(image), (Box{5, 5, 35, 35}));
}

TEST(EmfClip, LimitsRasterOperations)
{
    EmfMaker maker = WithBrush(kWhite);
    maker.Record(Emr::kIntersectClipRect, {10, 10, 20, 20}).Record(Emr::kSetRop2, {7});

    EXPECT_EQ(CountOf(Render(maker.Record(Emr::kRectangle, {0, 0, 40, 40})), kBlack, kAll), 100);
}

TEST(EmfRegion, IsFilledPaintedAndInverted)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Brush(2, kBlue).Region(Emr::kFillRegion, {1}, {{0, 0, 10, 10}, {5, 5, 15, 15}});
    maker.Region(Emr::kPaintRegion, {}, {{20, 0, 30, 10}});
    maker.Region(Emr::kInvertRegion, {}, {{0, 20, 40, 40}});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 175);
    EXPECT_EQ(CountOf(image, kBlue, kAll), 100);
    EXPECT_EQ(CountOf(image, kBlack, kAll), 800);
}

TEST(EmfRegion, FramesItsOuterEdgeOnly)
{
    EmfMaker maker = WithBrush(kRed);
    maker.Region(Emr::kFrameRegion, {1, 2, 3}, {{5, 5, 25, 25}, {15, 15, 35, 35}});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 6, 15), kRed);
    EXPECT_EQ(ColorAt(image, 7, 15), kWhite);
    EXPECT_EQ(ColorAt(image, 12, 7), kRed);
    EXPECT_EQ(ColorAt(image, 12, 8), kWhite);
    EXPECT_EQ(ColorAt(image, 20, 20), kWhite);  // no edge inside, where the boxes overlap
}
