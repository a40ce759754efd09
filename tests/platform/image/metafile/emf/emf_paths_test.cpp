// Paths, clipping and regions of EMF records.
#include "tests/platform/image/support/metafile_maker.h"

using Box = std::array<std::int32_t, 4>;
static constexpr Box kAll{0, 0, 40, 40};

static EmfMaker Filled(std::uint32_t nColor)
{
    EmfMaker objMaker(40, 40);
    objMaker.Brush(1, nColor).Select(kNullPen);
    return objMaker;
}

/// Adds a square as a figure of lines to the path.
static void AddSquare(EmfMaker& objMaker, std::int32_t lFrom, std::int32_t lTo)
{
    objMaker.Record(Emr::MoveTo, {lFrom, lFrom})
        .Record(Emr::LineTo, {lTo, lFrom})
        .Record(Emr::LineTo, {lTo, lTo});
    objMaker.Record(Emr::LineTo, {lFrom, lTo}).Record(Emr::CloseFigure);
}

TEST(EmfPath, IsFilledWithAllItsFigures)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::BeginPath);
    AddSquare(objMaker, 5, 35);
    AddSquare(objMaker, 15, 25);
    objMaker.Record(Emr::EndPath).Bounded(Emr::FillPath, {});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 800);
    EXPECT_EQ(nColorAt(aImage, 20, 20), kWhite);
}

TEST(EmfPath, IsDrawnAlong)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::BeginPath);
    AddSquare(objMaker, 5, 24);
    objMaker.Record(Emr::EndPath).Bounded(Emr::StrokePath, {});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kBlack, kAll), 76);
    EXPECT_EQ(nColorAt(aImage, 15, 15), kWhite);
}

TEST(EmfPath, IsFilledAndDrawnAlongAtOnce)
{
    EmfMaker objMaker(40, 40);
    objMaker.Brush(1, kRed).Record(Emr::BeginPath);
    AddSquare(objMaker, 5, 24);
    objMaker.Record(Emr::EndPath).Bounded(Emr::StrokeAndFillPath, {});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kBlack, kAll), 76);
    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 18 * 18);
}

TEST(EmfPath, DrawsNothingWhileItIsOpenAndIsUsedUpOnce)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::BeginPath).Record(Emr::Rectangle, {5, 5, 15, 15}).Record(Emr::EndPath);
    objMaker.Bounded(Emr::FillPath, {}).Brush(2, kBlue).Bounded(Emr::FillPath, {});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 100);
    EXPECT_EQ(nCountOf(aImage, kBlue, kAll), 0);
}

TEST(EmfPath, ThatIsAbortedIsGone)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::BeginPath).Record(Emr::Rectangle, {5, 5, 15, 15}).Record(Emr::AbortPath);
    objMaker.Record(Emr::EndPath).Bounded(Emr::FillPath, {});

    EXPECT_EQ(nCountOf(aPlayed(objMaker), kWhite, kAll), 1600);
}

TEST(EmfPath, JoinsLinesCurvesAndArcsInOneFigure)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::BeginPath).Record(Emr::MoveTo, {5, 20});
    objMaker.Record(Emr::ArcTo, {5, 5, 35, 35, 5, 20, 35, 20});  // below, against the clock
    objMaker.Bounded(Emr::PolyBezierTo, {3, 35, 0, 5, 0, 5, 20})
        .Record(Emr::CloseFigure)
        .Record(Emr::EndPath);
    const ImageBuffer aImage = aPlayed(objMaker.Bounded(Emr::FillPath, {}));

    EXPECT_EQ(nColorAt(aImage, 20, 30), kRed);
    EXPECT_EQ(nColorAt(aImage, 20, 10), kRed);
    EXPECT_EQ(nColorAt(aImage, 20, 3), kWhite);
    EXPECT_EQ(nColorAt(aImage, 20, 20), kRed);
}

TEST(EmfWidenPath, FillsWhatTheWideLineCovers)
{
    EmfMaker objMaker(40, 40);
    objMaker.Brush(1, kRed).GeometricPen(2, 0x200, 6, kBlue).Record(Emr::BeginPath);
    objMaker.Record(Emr::MoveTo, {5, 20}).Record(Emr::LineTo, {35, 20}).Record(Emr::EndPath);
    objMaker.Record(Emr::WidenPath).Bounded(Emr::FillPath, {});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 20, 18), kRed);
    EXPECT_EQ(nColorAt(aImage, 20, 21), kRed);
    EXPECT_EQ(nCountOf(aImage, kBlue, kAll), 0);
}

TEST(EmfFlattenPath, KeepsTheShape)
{
    const auto aShape = [](bool bFlatten) {
        EmfMaker objMaker = Filled(kRed);
        objMaker.Record(Emr::BeginPath).Record(Emr::Ellipse, {5, 5, 35, 35}).Record(Emr::EndPath);
        if (bFlatten)
            objMaker.Record(Emr::FlattenPath);
        return aPlayed(objMaker.Bounded(Emr::FillPath, {}));
    };

    EXPECT_EQ(aShape(true).bytes, aShape(false).bytes);
}

TEST(EmfClip, IsIntersectedAndExcluded)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::IntersectClipRect, {5, 5, 35, 35}).Record(Emr::ExcludeClipRect, {15, 15, 25, 25});
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40}));

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 800);
    EXPECT_EQ(nColorAt(aImage, 20, 20), kWhite);
    EXPECT_EQ(nColorAt(aImage, 4, 20), kWhite);
}

TEST(EmfClip, CanBeMoved)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::IntersectClipRect, {0, 0, 20, 20}).Record(Emr::ExcludeClipRect, {5, 5, 10, 10});
    objMaker.Record(Emr::OffsetClip, {10, 15}).Record(Emr::Rectangle, {0, 0, 40, 40});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(aInk(aImage), (Box{10, 15, 30, 35}));
    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 400 - 25);
    EXPECT_EQ(nColorAt(aImage, 17, 22), kWhite);
}

TEST(EmfClip, IsSavedWithTheState)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SaveDc).Record(Emr::IntersectClipRect, {0, 0, 5, 5}).Record(Emr::RestoreDc, {-1});

    EXPECT_EQ(nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll), 1600);
}

TEST(EmfClip, CombinesRegionsByAllModes)
{
    const auto nArea = [](std::int32_t lMode) {
        EmfMaker objMaker = Filled(kRed);
        objMaker.Record(Emr::IntersectClipRect, {0, 0, 20, 20});
        objMaker.Region(Emr::ExtSelectClipRegion, {lMode}, {{10, 10, 30, 30}});
        return nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll);
    };

    EXPECT_EQ(nArea(1), 100);
    EXPECT_EQ(nArea(2), 700);
    EXPECT_EQ(nArea(3), 600);
    EXPECT_EQ(nArea(4), 300);
    EXPECT_EQ(nArea(5), 400);
}

TEST(EmfClip, OfARegionOfManyBoxesIsTheirUnion)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Region(Emr::ExtSelectClipRegion, {5}, {{0, 0, 20, 10}, {10, 5, 30, 15}, {35, 35, 40, 40}});

    EXPECT_EQ(nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll),
              200 + 200 - 50 + 25);
}

TEST(EmfClip, WithoutARegionIsReset)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::IntersectClipRect, {0, 0, 5, 5}).Record(Emr::ExtSelectClipRegion, {0, 5});

    EXPECT_EQ(nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll), 1600);
}

TEST(EmfClip, OfTheMetaRegionHoldsWhateverComesAfter)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::IntersectClipRect, {0, 0, 20, 20}).Record(Emr::SetMetaRegion);
    objMaker.Record(Emr::ExtSelectClipRegion, {0, 5}).Record(Emr::Rectangle, {0, 0, 40, 40});

    EXPECT_EQ(nCountOf(aPlayed(objMaker), kRed, kAll), 400);
}

TEST(EmfClip, CanBeAPath)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::BeginPath).Record(Emr::Ellipse, {5, 5, 35, 35}).Record(Emr::EndPath);
    objMaker.Record(Emr::SelectClipPath, {1}).Record(Emr::Rectangle, {0, 0, 40, 40});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 20, 20), kRed);
    EXPECT_EQ(nColorAt(aImage, 7, 7), kWhite);
    EXPECT_EQ(aInk(aImage), (Box{5, 5, 35, 35}));
}

TEST(EmfClip, HoldsRasterOperationsToo)
{
    EmfMaker objMaker = Filled(kWhite);
    objMaker.Record(Emr::IntersectClipRect, {10, 10, 20, 20}).Record(Emr::SetRop2, {7});

    EXPECT_EQ(nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40})), kBlack, kAll), 100);
}

TEST(EmfRegion, IsFilledPaintedAndInverted)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Brush(2, kBlue).Region(Emr::FillRegion, {1}, {{0, 0, 10, 10}, {5, 5, 15, 15}});
    objMaker.Region(Emr::PaintRegion, {}, {{20, 0, 30, 10}});
    objMaker.Region(Emr::InvertRegion, {}, {{0, 20, 40, 40}});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 175);
    EXPECT_EQ(nCountOf(aImage, kBlue, kAll), 100);
    EXPECT_EQ(nCountOf(aImage, kBlack, kAll), 800);
}

TEST(EmfRegion, IsFramedAlongItsWholeEdge)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Region(Emr::FrameRegion, {1, 2, 3}, {{5, 5, 25, 25}, {15, 15, 35, 35}});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 6, 15), kRed);
    EXPECT_EQ(nColorAt(aImage, 7, 15), kWhite);
    EXPECT_EQ(nColorAt(aImage, 12, 7), kRed);
    EXPECT_EQ(nColorAt(aImage, 12, 8), kWhite);
    EXPECT_EQ(nColorAt(aImage, 20, 20), kWhite);  // where the boxes overlap there is no edge
}
