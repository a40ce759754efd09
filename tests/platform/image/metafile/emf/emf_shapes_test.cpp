// Lines and shapes of EMF records, pixel by pixel.
#include "tests/platform/image/support/metafile_maker.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

static EmfMaker Filled(std::uint32_t nColor)
{
    EmfMaker objMaker(40, 40);
    objMaker.Brush(1, nColor).Select(kNullPen);
    return objMaker;
}

TEST(EmfPicture, IsWhiteWhereNothingIsDrawn)
{
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40).Record(Emr::SetBkMode, {1}));

    EXPECT_EQ(aImage.width, 40);
    EXPECT_EQ(aImage.height, 40);
    EXPECT_EQ(aImage.channels, 3);
    EXPECT_EQ(aImage.dots_per_inch_x, 96);
    EXPECT_EQ(nCountOf(aImage, kWhite, kAll), 1600);
}

TEST(EmfRectangle, IsFilledInsideALineOfOnePixel)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).Brush(1, kRed).Pen(2, 0, 1, kBlue).Record(Emr::Rectangle, {5, 10, 24, 29}));

    EXPECT_EQ(nCountOf(aImage, kBlue, kAll), 2 * 20 + 2 * 18);
    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 18 * 18);
    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{5, 10, 25, 30}));
}

TEST(EmfRectangle, WithoutAPenEndsBeforeItsLastRow)
{
    const ImageBuffer aImage = aPlayed(Filled(kRed).Record(Emr::Rectangle, {5, 10, 24, 29}));

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 19 * 19);
    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{5, 10, 24, 29}));
}

TEST(EmfRectangle, WithoutABrushIsItsLine)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).Select(kNullBrush).Record(Emr::Rectangle, {5, 5, 14, 14}));

    EXPECT_EQ(nCountOf(aImage, kBlack, kAll), 36);
    EXPECT_EQ(nColorAt(aImage, 10, 10), kWhite);
}

TEST(EmfPen, OfTwoPixelsCoversTwoRows)
{
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40)
                                           .GeometricPen(1, 0x200, 2, kRed)
                                           .Record(Emr::MoveTo, {10, 20})
                                           .Record(Emr::LineTo, {30, 20}));

    EXPECT_EQ(aInk(aImage)[1], 19);
    EXPECT_EQ(aInk(aImage)[3], 21);
    EXPECT_EQ(nColorAt(aImage, 20, 19), kRed);
    EXPECT_EQ(nColorAt(aImage, 20, 20), kRed);
}

TEST(EmfPen, OfFivePixelsIsCentred)
{
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40)
                                           .GeometricPen(1, 0x200, 5, kRed)
                                           .Record(Emr::MoveTo, {10, 20})
                                           .Record(Emr::LineTo, {30, 20}));

    EXPECT_EQ(aInk(aImage)[1], 18);
    EXPECT_EQ(aInk(aImage)[3], 23);
}

TEST(EmfPen, OfWidthNoughtIsOnePixelAtAnyScale)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::SetMapMode, {8})
        .Record(Emr::SetWindowExt, {4, 4})
        .Record(Emr::SetViewportExt, {40, 40});
    const ImageBuffer aImage =
        aPlayed(objMaker.Pen(1, 0, 0, kBlack).Record(Emr::MoveTo, {1, 2}).Record(Emr::LineTo, {3, 2}));

    EXPECT_EQ(aInk(aImage)[3] - aInk(aImage)[1], 1);
}

TEST(EmfPen, GrowsWithTheScale)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::SetMapMode, {8})
        .Record(Emr::SetWindowExt, {10, 10})
        .Record(Emr::SetViewportExt, {40, 40});
    const ImageBuffer aImage = aPlayed(
        objMaker.GeometricPen(1, 0x200, 2, kBlack).Record(Emr::MoveTo, {2, 5}).Record(Emr::LineTo, {8, 5}));

    EXPECT_EQ(aInk(aImage)[3] - aInk(aImage)[1], 8);
}

TEST(EmfPen, OfNullStyleDrawsNothing)
{
    const ImageBuffer aImage = aPlayed(
        EmfMaker(40, 40).Pen(1, 5, 3, kRed).Record(Emr::MoveTo, {1, 1}).Record(Emr::LineTo, {30, 30}));

    EXPECT_EQ(nCountOf(aImage, kWhite, kAll), 1600);
}

TEST(EmfPen, DashesLeaveGapsThatTheBackgroundFillsWhenItIsOpaque)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::SetBkColor, {static_cast<std::int32_t>(kYellow)}).Pen(1, 1, 1, kRed);
    objMaker.Record(Emr::MoveTo, {0, 10}).Record(Emr::LineTo, {39, 10});
    objMaker.Record(Emr::SetBkMode, {1}).Record(Emr::MoveTo, {0, 20}).Record(Emr::LineTo, {39, 20});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_GT(nCountOf(aImage, kRed, {0, 10, 40, 11}), 24);
    EXPECT_GE(nCountOf(aImage, kYellow, {0, 10, 40, 11}), 5);
    EXPECT_EQ(nCountOf(aImage, kYellow, {0, 20, 40, 21}), 0);
    EXPECT_GE(nCountOf(aImage, kWhite, {0, 20, 40, 21}), 5);
}

TEST(EmfPen, OfItsOwnDashesFollowsThem)
{
    EmfMaker objMaker(40, 40);
    objMaker.GeometricPen(1, 0x207, 4, kRed, {8, 8})
        .Record(Emr::MoveTo, {0, 10})
        .Record(Emr::LineTo, {39, 10});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 4, 10), kRed);
    EXPECT_EQ(nColorAt(aImage, 12, 10), kWhite);
    EXPECT_EQ(nColorAt(aImage, 20, 10), kRed);
    EXPECT_EQ(nColorAt(aImage, 28, 10), kWhite);
}

TEST(EmfPen, CapsReachOverTheEndsAsTheyAreNamed)
{
    const auto nReach = [](std::uint32_t nCap) {
        EmfMaker objMaker(40, 40);
        objMaker.GeometricPen(1, nCap, 9, kBlack).Record(Emr::MoveTo, {15, 20}).Record(Emr::LineTo, {25, 20});
        const ImageBuffer aImage = aPlayed(objMaker);
        return std::pair(nCountOf(aImage, kBlack, {0, 20, 40, 21}),
                         nCountOf(aImage, kBlack, {0, 16, 40, 17}));
    };

    const auto [nFlat, nFlatEdge] = nReach(0x200);
    const auto [nSquare, nSquareEdge] = nReach(0x100);
    const auto [nRound, nRoundEdge] = nReach(0);

    EXPECT_EQ(nSquare, nSquareEdge);
    EXPECT_GE(nSquare, nFlat + 8);
    EXPECT_GE(nRound, nFlat + 7);
    EXPECT_LT(nRoundEdge, nRound - 4);
    EXPECT_LE(nFlatEdge, nFlat + 1);
}

TEST(EmfPen, JoinsAreMiteredBeveledOrRound)
{
    const auto nAtCorner = [](std::uint32_t nJoin) {
        EmfMaker objMaker(40, 40);
        objMaker.GeometricPen(1, 0x200 | nJoin, 11, kBlack);
        objMaker.Bounded(Emr::Polyline, {3, 10, 30, 30, 30, 30, 10});
        return nCountOf(aPlayed(objMaker), kBlack, {30, 30, 40, 40});
    };

    const int nMiter = nAtCorner(0x2000);
    const int nRound = nAtCorner(0);
    const int nBevel = nAtCorner(0x1000);

    EXPECT_GT(nMiter, nRound);
    EXPECT_GT(nRound, nBevel);
}

TEST(EmfPen, InsideFrameStaysWithinTheBox)
{
    EmfMaker objMaker(40, 40);
    objMaker.Select(kNullBrush).Pen(1, 6, 6, kRed).Record(Emr::Rectangle, {5, 5, 34, 34});

    EXPECT_EQ(aInk(aPlayed(objMaker)), (std::array<std::int32_t, 4>{5, 5, 35, 35}));
}

TEST(EmfLineTo, GoesOnFromWhereTheLastLineEnded)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::MoveTo, {5, 5}).Record(Emr::LineTo, {20, 5}).Record(Emr::LineTo, {20, 20});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kBlack, {5, 5, 21, 6}), 16);
    EXPECT_EQ(nCountOf(aImage, kBlack, {20, 5, 21, 21}), 16);
    EXPECT_EQ(nCountOf(aImage, kBlack, kAll), 31);
}

TEST(EmfPolygon, IsClosedAndFilled)
{
    const ImageBuffer aImage = aPlayed(Filled(kGreen).Bounded(Emr::Polygon, {4, 5, 5, 25, 5, 25, 25, 5, 25}));

    EXPECT_EQ(nCountOf(aImage, kGreen, kAll), 400);
    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{5, 5, 25, 25}));
}

TEST(EmfPolygon16, HasPointsOfSixteenBits)
{
    ByteMaker objData;
    objData.Zeros(16).U32Le({4}).U16Le({5, 5, 25, 5, 25, 25, 5, 25});

    EXPECT_EQ(nCountOf(aPlayed(Filled(kGreen).Record(Emr::Polygon16, objData)), kGreen, kAll), 400);
}

TEST(EmfPolyPolygon, OverlapsByTheFillMode)
{
    const auto nHole = [](std::int32_t lMode) {
        EmfMaker objMaker = Filled(kRed);
        objMaker.Record(Emr::SetPolyFillMode, {lMode});
        objMaker.Bounded(Emr::PolyPolygon,
                         {2, 8, 4, 4, 5, 5, 35, 5, 35, 35, 5, 35, 15, 15, 25, 15, 25, 25, 15, 25});
        return nColorAt(aPlayed(objMaker), 20, 20);
    };

    EXPECT_EQ(nHole(1), kWhite);
    EXPECT_EQ(nHole(2), kRed);
}

TEST(EmfPolyPolygon16, IsTheSameWithShortPoints)
{
    ByteMaker objData;
    objData.Zeros(16).U32Le({2, 8, 4, 4});
    objData.U16Le({5, 5, 35, 5, 35, 35, 5, 35, 15, 15, 25, 15, 25, 25, 15, 25});
    const ImageBuffer aImage = aPlayed(Filled(kRed).Record(Emr::PolyPolygon16, objData));

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 900 - 100);
}

TEST(EmfPolyPolyline, DrawsEachLineOfItsOwn)
{
    EmfMaker objMaker(40, 40);
    objMaker.Bounded(Emr::PolyPolyline, {2, 4, 2, 2, 5, 5, 20, 5, 5, 30, 20, 30});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kBlack, kAll), 32);
    EXPECT_EQ(nCountOf(aImage, kBlack, {5, 5, 21, 6}), 16);
}

TEST(EmfPolylineTo, StartsAtTheCurrentPosition)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::MoveTo, {5, 5})
        .Bounded(Emr::PolylineTo, {2, 20, 5, 20, 20})
        .Record(Emr::LineTo, {5, 20});

    EXPECT_EQ(nCountOf(aPlayed(objMaker), kBlack, kAll), 16 + 15 + 15);
}

TEST(EmfPolyBezier, PassesThroughItsEnds)
{
    EmfMaker objMaker(40, 40);
    objMaker.GeometricPen(1, 0x200, 3, kBlack);
    objMaker.Bounded(Emr::PolyBezier, {4, 5, 35, 5, 5, 35, 5, 35, 35});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 5, 33), kBlack);
    EXPECT_EQ(nColorAt(aImage, 35, 33), kBlack);
    EXPECT_EQ(nColorAt(aImage, 20, 12), kBlack);  // the middle of this curve is at 12.5
    EXPECT_EQ(nColorAt(aImage, 20, 35), kWhite);
}

TEST(EmfPolyBezierTo16, StartsAtTheCurrentPosition)
{
    ByteMaker objData;
    objData.Zeros(16).U32Le({3}).U16Le({5, 5, 35, 5, 35, 35});
    EmfMaker objMaker(40, 40);
    objMaker.GeometricPen(1, 0x200, 3, kBlack)
        .Record(Emr::MoveTo, {5, 35})
        .Record(Emr::PolyBezierTo16, objData);

    EXPECT_EQ(nColorAt(aPlayed(objMaker), 20, 12), kBlack);
}

TEST(EmfPolyDraw, MixesMovesLinesAndCurvesAndCloses)
{
    ByteMaker objData;
    objData.Zeros(16).U32Le({4}).U16Le({5, 5, 25, 5, 25, 25, 5, 25}).U8({6, 2, 2, 3});
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40).Record(Emr::PolyDraw16, objData));

    EXPECT_EQ(nCountOf(aImage, kBlack, kAll), 80);
}

TEST(EmfEllipse, FillsItsBox)
{
    const ImageBuffer aImage = aPlayed(Filled(kBlue).Record(Emr::Ellipse, {5, 5, 35, 35}));

    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{5, 5, 35, 35}));
    EXPECT_NEAR(nCountOf(aImage, kBlue, kAll), 15 * 15 * 3.1416, 80);
    EXPECT_EQ(nColorAt(aImage, 6, 6), kWhite);
}

TEST(EmfRoundRect, LeavesOutItsCorners)
{
    const ImageBuffer aImage = aPlayed(Filled(kBlue).Record(Emr::RoundRect, {5, 5, 35, 35, 20, 20}));

    EXPECT_EQ(nColorAt(aImage, 5, 5), kWhite);
    EXPECT_EQ(nColorAt(aImage, 20, 5), kBlue);
    EXPECT_EQ(nColorAt(aImage, 5, 20), kBlue);
}

TEST(EmfPie, RunsAgainstTheClockUnlessToldOtherwise)
{
    const auto aPie = [](std::int32_t lDirection) {
        return aPlayed(Filled(kBlue)
                           .Record(Emr::SetArcDirection, {lDirection})
                           .Record(Emr::Pie, {0, 0, 40, 40, 40, 20, 20, 0}));  // from the right to the top
    };

    const ImageBuffer aAgainst = aPie(1);
    const ImageBuffer aWith = aPie(2);

    EXPECT_EQ(nColorAt(aAgainst, 28, 12), kBlue);
    EXPECT_EQ(nColorAt(aAgainst, 12, 28), kWhite);
    EXPECT_EQ(nColorAt(aWith, 28, 12), kWhite);
    EXPECT_EQ(nColorAt(aWith, 12, 28), kBlue);
}

TEST(EmfChord, IsCutOffByALine)
{
    const ImageBuffer aImage = aPlayed(Filled(kBlue).Record(Emr::Chord, {0, 0, 40, 40, 40, 20, 20, 0}));

    EXPECT_EQ(nColorAt(aImage, 32, 8), kBlue);
    EXPECT_EQ(nColorAt(aImage, 20, 20), kWhite);
}

TEST(EmfArc, IsOnlyALine)
{
    EmfMaker objMaker(40, 40);
    objMaker.Brush(1, kRed).GeometricPen(2, 0x200, 3, kBlack).Record(Emr::Arc, {5, 5, 35, 35, 35, 20, 20, 5});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 0);
    EXPECT_LT(nColorAt(aImage, 30, 10) & 255, 32u);
    EXPECT_EQ(nColorAt(aImage, 9, 30), kWhite);
}

TEST(EmfArcTo, IsJoinedToTheCurrentPositionAndMovesIt)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::MoveTo, {39, 20}).Record(Emr::ArcTo, {10, 5, 30, 35, 30, 20, 20, 5});
    objMaker.Record(Emr::LineTo, {0, 5});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 35, 20), kBlack);
    EXPECT_EQ(nColorAt(aImage, 10, 5), kBlack);
}

TEST(EmfAngleArc, CountsAnglesAgainstTheClock)
{
    ByteMaker objData;
    objData.U32Le({20, 20, 15, 0x00000000, 0x42B40000});  // from 0 over 90 degrees
    EmfMaker objMaker(40, 40);
    objMaker.GeometricPen(1, 0x200, 3, kBlack).Record(Emr::MoveTo, {20, 20}).Record(Emr::AngleArc, objData);
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 27, 20), kBlack);  // the line to its start
    EXPECT_EQ(nColorAt(aImage, 30, 9), kBlack);
    EXPECT_EQ(nColorAt(aImage, 30, 31), kWhite);
}

TEST(EmfSetPixel, SetsOne)
{
    const ImageBuffer aImage =
        aPlayed(EmfMaker(40, 40).Record(Emr::SetPixel, {7, 9, static_cast<std::int32_t>(kRed)}));

    EXPECT_EQ(nColorAt(aImage, 7, 9), kRed);
    EXPECT_EQ(nCountOf(aImage, kWhite, kAll), 1599);
}

TEST(EmfGradientFill, RunsFromOneColourToTheOther)
{
    ByteMaker objData;
    objData.Zeros(16).U32Le({2, 1, 0});
    objData.U32Le({0, 0}).U16Le({0xFF00, 0, 0, 0}).U32Le({40, 40}).U16Le({0, 0, 0xFF00, 0}).U32Le({0, 1});
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40).Record(Emr::GradientFill, objData));

    EXPECT_GT(nColorAt(aImage, 0, 20) & 255, 245u);
    EXPECT_GT(nColorAt(aImage, 39, 20) >> 16, 245u);
    EXPECT_NEAR(nColorAt(aImage, 20, 5) & 255, 128, 8);
    EXPECT_EQ(nColorAt(aImage, 20, 5), nColorAt(aImage, 20, 35));
}

TEST(EmfGradientFill, OfATriangleMeetsTheColoursOfItsCorners)
{
    ByteMaker objData;
    objData.Zeros(16).U32Le({3, 1, 2});
    objData.U32Le({0, 0}).U16Le({0xFF00, 0, 0, 0}).U32Le({40, 0}).U16Le({0, 0, 0xFF00, 0});
    objData.U32Le({0, 40}).U16Le({0, 0xFF00, 0, 0}).U32Le({0, 1, 2});
    const ImageBuffer aImage = aPlayed(EmfMaker(40, 40).Record(Emr::GradientFill, objData));

    EXPECT_GT(nColorAt(aImage, 0, 0) & 255, 240u);
    EXPECT_GT(nColorAt(aImage, 38, 0) >> 16, 235u);
    EXPECT_GT(nColorAt(aImage, 0, 38) >> 8 & 255, 235u);
    EXPECT_EQ(nColorAt(aImage, 30, 30), kWhite);
}

TEST(EmfExtFloodFill, FillsUpToABorderOrOverAColour)
{
    EmfMaker objMaker(40, 40);
    objMaker.Select(kNullBrush).Record(Emr::Rectangle, {5, 5, 34, 34}).Brush(1, kRed);
    objMaker.Record(Emr::ExtFloodFill, {20, 20, 0, 0});  // up to black
    objMaker.Brush(2, kGreen).Record(Emr::ExtFloodFill, {0, 0, static_cast<std::int32_t>(kWhite), 1});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 28 * 28);
    EXPECT_EQ(nCountOf(aImage, kGreen, kAll), 1600 - 900);
}
