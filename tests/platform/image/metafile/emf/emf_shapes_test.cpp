// Tests of lines and shapes in EMF records, pixel by pixel.
#include <gtest/gtest.h>

#include "tests/platform/image/support/metafile_maker.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

static EmfMaker WithBrush(std::uint32_t color)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, color).Select(kNullPen);
    return maker;
}

TEST(EmfPicture, IsWhiteWhereNothingIsDrawn)
{
    const ImageBuffer image = Render(EmfMaker(40, 40).Record(Emr::kSetBkMode, {1}));

    EXPECT_EQ(image.width, 40);
    EXPECT_EQ(image.height, 40);
    EXPECT_EQ(image.channels, 3);
    EXPECT_EQ(image.dots_per_inch_x, 96);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1600);
}

TEST(EmfRectangle, IsFilledInsideOnePixelLine)
{
    const ImageBuffer image =
        Render(EmfMaker(40, 40).Brush(1, kRed).Pen(2, 0, 1, kBlue).Record(Emr::kRectangle, {5, 10, 24, 29}));

    EXPECT_EQ(CountOf(image, kBlue, kAll), 2 * 20 + 2 * 18);
    EXPECT_EQ(CountOf(image, kRed, kAll), 18 * 18);
    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{5, 10, 25, 30}));
}

TEST(EmfRectangle, ExcludesLastRowAndColumnWithoutPen)
{
    const ImageBuffer image = Render(WithBrush(kRed).Record(Emr::kRectangle, {5, 10, 24, 29}));

    EXPECT_EQ(CountOf(image, kRed, kAll), 19 * 19);
    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{5, 10, 24, 29}));
}

TEST(EmfRectangle, IsOnlyOutlineWithoutBrush)
{
    const ImageBuffer image =
        Render(EmfMaker(40, 40).Select(kNullBrush).Record(Emr::kRectangle, {5, 5, 14, 14}));

    EXPECT_EQ(CountOf(image, kBlack, kAll), 36);
    EXPECT_EQ(ColorAt(image, 10, 10), kWhite);
}

TEST(EmfPen, CoversTwoRowsAtWidthTwo)
{
    const ImageBuffer image = Render(EmfMaker(40, 40)
                                         .GeometricPen(1, 0x200, 2, kRed)
                                         .Record(Emr::kMoveTo, {10, 20})
                                         .Record(Emr::kLineTo, {30, 20}));

    EXPECT_EQ(InkBounds(image)[1], 19);
    EXPECT_EQ(InkBounds(image)[3], 21);
    EXPECT_EQ(ColorAt(image, 20, 19), kRed);
    EXPECT_EQ(ColorAt(image, 20, 20), kRed);
}

TEST(EmfPen, IsCentredOnLineAtOddWidth)
{
    const ImageBuffer image = Render(EmfMaker(40, 40)
                                         .GeometricPen(1, 0x200, 5, kRed)
                                         .Record(Emr::kMoveTo, {10, 20})
                                         .Record(Emr::kLineTo, {30, 20}));

    EXPECT_EQ(InkBounds(image)[1], 18);
    EXPECT_EQ(InkBounds(image)[3], 23);
}

TEST(EmfPen, IsOnePixelAtWidthZeroAndAnyScale)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kSetMapMode, {8})
        .Record(Emr::kSetWindowExt, {4, 4})
        .Record(Emr::kSetViewportExt, {40, 40});
    const ImageBuffer image =
        Render(maker.Pen(1, 0, 0, kBlack).Record(Emr::kMoveTo, {1, 2}).Record(Emr::kLineTo, {3, 2}));

    EXPECT_EQ(InkBounds(image)[3] - InkBounds(image)[1], 1);
}

TEST(EmfPen, WidensWithScale)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kSetMapMode, {8})
        .Record(Emr::kSetWindowExt, {10, 10})
        .Record(Emr::kSetViewportExt, {40, 40});
    const ImageBuffer image = Render(
        maker.GeometricPen(1, 0x200, 2, kBlack).Record(Emr::kMoveTo, {2, 5}).Record(Emr::kLineTo, {8, 5}));

    EXPECT_EQ(InkBounds(image)[3] - InkBounds(image)[1], 8);
}

TEST(EmfPen, DrawsNothingInNullStyle)
{
    const ImageBuffer image = Render(
        EmfMaker(40, 40).Pen(1, 5, 3, kRed).Record(Emr::kMoveTo, {1, 1}).Record(Emr::kLineTo, {30, 30}));

    EXPECT_EQ(CountOf(image, kWhite, kAll), 1600);
}

TEST(EmfPen, FillsDashGapsWithOpaqueBackground)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kSetBkColor, {static_cast<std::int32_t>(kYellow)}).Pen(1, 1, 1, kRed);
    maker.Record(Emr::kMoveTo, {0, 10}).Record(Emr::kLineTo, {39, 10});
    maker.Record(Emr::kSetBkMode, {1}).Record(Emr::kMoveTo, {0, 20}).Record(Emr::kLineTo, {39, 20});
    const ImageBuffer image = Render(maker);

    EXPECT_GT(CountOf(image, kRed, {0, 10, 40, 11}), 24);
    EXPECT_GE(CountOf(image, kYellow, {0, 10, 40, 11}), 5);
    EXPECT_EQ(CountOf(image, kYellow, {0, 20, 40, 21}), 0);
    EXPECT_GE(CountOf(image, kWhite, {0, 20, 40, 21}), 5);
}

TEST(EmfPen, FollowsCustomDashes)
{
    EmfMaker maker(40, 40);
    maker.GeometricPen(1, 0x207, 4, kRed, {8, 8})
        .Record(Emr::kMoveTo, {0, 10})
        .Record(Emr::kLineTo, {39, 10});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 4, 10), kRed);
    EXPECT_EQ(ColorAt(image, 12, 10), kWhite);
    EXPECT_EQ(ColorAt(image, 20, 10), kRed);
    EXPECT_EQ(ColorAt(image, 28, 10), kWhite);
}

TEST(EmfPen, DrawsFlatSquareAndRoundCaps)
{
    const auto reach = [](std::uint32_t cap) {
        EmfMaker maker(40, 40);
        maker.GeometricPen(1, cap, 9, kBlack).Record(Emr::kMoveTo, {15, 20}).Record(Emr::kLineTo, {25, 20});
        const ImageBuffer image = Render(maker);
        return std::pair(CountOf(image, kBlack, {0, 20, 40, 21}), CountOf(image, kBlack, {0, 16, 40, 17}));
    };

    const auto [flat, flat_edge] = reach(0x200);
    const auto [square, square_edge] = reach(0x100);
    const auto [round, round_edge] = reach(0);

    EXPECT_EQ(square, square_edge);
    EXPECT_GE(square, flat + 8);
    EXPECT_GE(round, flat + 7);
    EXPECT_LT(round_edge, round - 4);
    EXPECT_LE(flat_edge, flat + 1);
}

TEST(EmfPen, DrawsMitredBevelledAndRoundJoins)
{
    const auto at_corner = [](std::uint32_t join) {
        EmfMaker maker(40, 40);
        maker.GeometricPen(1, 0x200 | join, 11, kBlack);
        maker.Bounded(Emr::kPolyline, {3, 10, 30, 30, 30, 30, 10});
        return CountOf(Render(maker), kBlack, {30, 30, 40, 40});
    };

    const int miter = at_corner(0x2000);
    const int round = at_corner(0);
    const int bevel = at_corner(0x1000);

    EXPECT_GT(miter, round);
    EXPECT_GT(round, bevel);
}

TEST(EmfPen, StaysInsideBoxInInsideFrameStyle)
{
    EmfMaker maker(40, 40);
    maker.Select(kNullBrush).Pen(1, 6, 6, kRed).Record(Emr::kRectangle, {5, 5, 34, 34});

    EXPECT_EQ(InkBounds(Render(maker)), (std::array<std::int32_t, 4>{5, 5, 35, 35}));
}

TEST(EmfLineTo, ContinuesFromEndOfLastLine)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kMoveTo, {5, 5}).Record(Emr::kLineTo, {20, 5}).Record(Emr::kLineTo, {20, 20});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlack, {5, 5, 21, 6}), 16);
    EXPECT_EQ(CountOf(image, kBlack, {20, 5, 21, 21}), 16);
    EXPECT_EQ(CountOf(image, kBlack, kAll), 31);
}

TEST(EmfPolygon, IsClosedAndFilled)
{
    const ImageBuffer image =
        Render(WithBrush(kGreen).Bounded(Emr::kPolygon, {4, 5, 5, 25, 5, 25, 25, 5, 25}));

    EXPECT_EQ(CountOf(image, kGreen, kAll), 400);
    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{5, 5, 25, 25}));
}

TEST(EmfPolygon16, ReadsSixteenBitPoints)
{
    ByteMaker data;
    data.Zeros(16).U32Le({4}).U16Le({5, 5, 25, 5, 25, 25, 5, 25});

    EXPECT_EQ(CountOf(Render(WithBrush(kGreen).Record(Emr::kPolygon16, data)), kGreen, kAll), 400);
}

TEST(EmfPolyPolygon, FillsOverlapByFillMode)
{
    const auto hole = [](std::int32_t mode) {
        EmfMaker maker = WithBrush(kRed);
        maker.Record(Emr::kSetPolyFillMode, {mode});
        maker.Bounded(Emr::kPolyPolygon,
                      {2, 8, 4, 4, 5, 5, 35, 5, 35, 35, 5, 35, 15, 15, 25, 15, 25, 25, 15, 25});
        return ColorAt(Render(maker), 20, 20);
    };

    EXPECT_EQ(hole(1), kWhite);
    EXPECT_EQ(hole(2), kRed);
}

TEST(EmfPolyPolygon16, EqualsPolyPolygonWithShortPoints)
{
    ByteMaker data;
    data.Zeros(16).U32Le({2, 8, 4, 4});
    data.U16Le({5, 5, 35, 5, 35, 35, 5, 35, 15, 15, 25, 15, 25, 25, 15, 25});
    const ImageBuffer image = Render(WithBrush(kRed).Record(Emr::kPolyPolygon16, data));

    EXPECT_EQ(CountOf(image, kRed, kAll), 900 - 100);
}

TEST(EmfPolyPolyline, DrawsSeparateLines)
{
    EmfMaker maker(40, 40);
    maker.Bounded(Emr::kPolyPolyline, {2, 4, 2, 2, 5, 5, 20, 5, 5, 30, 20, 30});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kBlack, kAll), 32);
    EXPECT_EQ(CountOf(image, kBlack, {5, 5, 21, 6}), 16);
}

TEST(EmfPolylineTo, StartsAtCurrentPosition)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kMoveTo, {5, 5})
        .Bounded(Emr::kPolylineTo, {2, 20, 5, 20, 20})
        .Record(Emr::kLineTo, {5, 20});

    EXPECT_EQ(CountOf(Render(maker), kBlack, kAll), 16 + 15 + 15);
}

TEST(EmfPolyBezier, PassesThroughItsEndpoints)
{
    EmfMaker maker(40, 40);
    maker.GeometricPen(1, 0x200, 3, kBlack);
    maker.Bounded(Emr::kPolyBezier, {4, 5, 35, 5, 5, 35, 5, 35, 35});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 5, 33), kBlack);
    EXPECT_EQ(ColorAt(image, 35, 33), kBlack);
    EXPECT_EQ(ColorAt(image, 20, 12), kBlack);  // the curve's midpoint is at 12.5
    EXPECT_EQ(ColorAt(image, 20, 35), kWhite);
}

TEST(EmfPolyBezierTo16, StartsAtCurrentPosition)
{
    ByteMaker data;
    data.Zeros(16).U32Le({3}).U16Le({5, 5, 35, 5, 35, 35});
    EmfMaker maker(40, 40);
    maker.GeometricPen(1, 0x200, 3, kBlack).Record(Emr::kMoveTo, {5, 35}).Record(Emr::kPolyBezierTo16, data);

    EXPECT_EQ(ColorAt(Render(maker), 20, 12), kBlack);
}

TEST(EmfPolyDraw, MixesMovesLinesAndCurvesAndCloses)
{
    ByteMaker data;
    data.Zeros(16).U32Le({4}).U16Le({5, 5, 25, 5, 25, 25, 5, 25}).U8({6, 2, 2, 3});
    const ImageBuffer image = Render(EmfMaker(40, 40).Record(Emr::kPolyDraw16, data));

    EXPECT_EQ(CountOf(image, kBlack, kAll), 80);
}

TEST(EmfEllipse, FillsItsBox)
{
    const ImageBuffer image = Render(WithBrush(kBlue).Record(Emr::kEllipse, {5, 5, 35, 35}));

    EXPECT_EQ(InkBounds(image), (std::array<std::int32_t, 4>{5, 5, 35, 35}));
    EXPECT_NEAR(CountOf(image, kBlue, kAll), 15 * 15 * 3.1416, 80);
    EXPECT_EQ(ColorAt(image, 6, 6), kWhite);
}

TEST(EmfRoundRect, LeavesCornersEmpty)
{
    const ImageBuffer image = Render(WithBrush(kBlue).Record(Emr::kRoundRect, {5, 5, 35, 35, 20, 20}));

    EXPECT_EQ(ColorAt(image, 5, 5), kWhite);
    EXPECT_EQ(ColorAt(image, 20, 5), kBlue);
    EXPECT_EQ(ColorAt(image, 5, 20), kBlue);
}

TEST(EmfPie, RunsCounterClockwiseByDefault)
{
    const auto pie = [](std::int32_t direction) {
        return Render(WithBrush(kBlue)
                          .Record(Emr::kSetArcDirection, {direction})
                          .Record(Emr::kPie, {0, 0, 40, 40, 40, 20, 20, 0}));  // from the right to the top
    };

    const ImageBuffer against = pie(1);
    const ImageBuffer with = pie(2);

    EXPECT_EQ(ColorAt(against, 28, 12), kBlue);
    EXPECT_EQ(ColorAt(against, 12, 28), kWhite);
    EXPECT_EQ(ColorAt(with, 28, 12), kWhite);
    EXPECT_EQ(ColorAt(with, 12, 28), kBlue);
}

TEST(EmfChord, IsCutOffByStraightLine)
{
    const ImageBuffer image = Render(WithBrush(kBlue).Record(Emr::kChord, {0, 0, 40, 40, 40, 20, 20, 0}));

    EXPECT_EQ(ColorAt(image, 32, 8), kBlue);
    EXPECT_EQ(ColorAt(image, 20, 20), kWhite);
}

TEST(EmfArc, DrawsLineWithoutFill)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, kRed).GeometricPen(2, 0x200, 3, kBlack).Record(Emr::kArc, {5, 5, 35, 35, 35, 20, 20, 5});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 0);
    EXPECT_LT(ColorAt(image, 30, 10) & 255, 32u);
    EXPECT_EQ(ColorAt(image, 9, 30), kWhite);
}

TEST(EmfArcTo, ConnectsToCurrentPositionAndMovesIt)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::kMoveTo, {39, 20}).Record(Emr::kArcTo, {10, 5, 30, 35, 30, 20, 20, 5});
    maker.Record(Emr::kLineTo, {0, 5});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 35, 20), kBlack);
    EXPECT_EQ(ColorAt(image, 10, 5), kBlack);
}

TEST(EmfAngleArc, MeasuresAnglesCounterClockwise)
{
    ByteMaker data;
    data.U32Le({20, 20, 15, 0x00000000, 0x42B40000});  // 90 degrees, starting at 0
    EmfMaker maker(40, 40);
    maker.GeometricPen(1, 0x200, 3, kBlack).Record(Emr::kMoveTo, {20, 20}).Record(Emr::kAngleArc, data);
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(ColorAt(image, 27, 20), kBlack);  // the line to the arc's start
    EXPECT_EQ(ColorAt(image, 30, 9), kBlack);
    EXPECT_EQ(ColorAt(image, 30, 31), kWhite);
}

TEST(EmfSetPixel, SetsSinglePixel)
{
    const ImageBuffer image =
        Render(EmfMaker(40, 40).Record(Emr::kSetPixel, {7, 9, static_cast<std::int32_t>(kRed)}));

    EXPECT_EQ(ColorAt(image, 7, 9), kRed);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1599);
}

TEST(EmfGradientFill, BlendsFromOneColourToTheOther)
{
    ByteMaker data;
    data.Zeros(16).U32Le({2, 1, 0});
    data.U32Le({0, 0}).U16Le({0xFF00, 0, 0, 0}).U32Le({40, 40}).U16Le({0, 0, 0xFF00, 0}).U32Le({0, 1});
    const ImageBuffer image = Render(EmfMaker(40, 40).Record(Emr::kGradientFill, data));

    EXPECT_GT(ColorAt(image, 0, 20) & 255, 245u);
    EXPECT_GT(ColorAt(image, 39, 20) >> 16, 245u);
    EXPECT_NEAR(ColorAt(image, 20, 5) & 255, 128, 8);
    EXPECT_EQ(ColorAt(image, 20, 5), ColorAt(image, 20, 35));
}

TEST(EmfGradientFill, MatchesColoursOfTriangleCorners)
{
    ByteMaker data;
    data.Zeros(16).U32Le({3, 1, 2});
    data.U32Le({0, 0}).U16Le({0xFF00, 0, 0, 0}).U32Le({40, 0}).U16Le({0, 0, 0xFF00, 0});
    data.U32Le({0, 40}).U16Le({0, 0xFF00, 0, 0}).U32Le({0, 1, 2});
    const ImageBuffer image = Render(EmfMaker(40, 40).Record(Emr::kGradientFill, data));

    EXPECT_GT(ColorAt(image, 0, 0) & 255, 240u);
    EXPECT_GT(ColorAt(image, 38, 0) >> 16, 235u);
    EXPECT_GT(ColorAt(image, 0, 38) >> 8 & 255, 235u);
    EXPECT_EQ(ColorAt(image, 30, 30), kWhite);
}

TEST(EmfExtFloodFill, FillsUpToBorderOrOverColour)
{
    EmfMaker maker(40, 40);
    maker.Select(kNullBrush).Record(Emr::kRectangle, {5, 5, 34, 34}).Brush(1, kRed);
    maker.Record(Emr::kExtFloodFill, {20, 20, 0, 0});  // up to black
    maker.Brush(2, kGreen).Record(Emr::kExtFloodFill, {0, 0, static_cast<std::int32_t>(kWhite), 1});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 28 * 28);
    EXPECT_EQ(CountOf(image, kGreen, kAll), 1600 - 900);
}
