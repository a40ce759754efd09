// Paths, clipping and regions of EMF records.
#include "tests/platform/image/support/metafile_maker.h"

using Box = std::array<std::int32_t, 4>;
static constexpr Box kAll{0, 0, 40, 40};

static EmfMaker Filled(std::uint32_t color)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, color).Select(kNullPen);
    return maker;
}

/// Adds a square as a figure of lines to the path.
static void AddSquare(EmfMaker& maker, std::int32_t from, std::int32_t to)
{
    maker.Record(Emr::MoveTo, {from, from}).Record(Emr::LineTo, {to, from}).Record(Emr::LineTo, {to, to});
    maker.Record(Emr::LineTo, {from, to}).Record(Emr::CloseFigure);
}

TEST(EmfPath, IsFilledWithAllItsFigures)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::BeginPath);
    AddSquare(maker, 5, 35);
    AddSquare(maker, 15, 25);
    maker.Record(Emr::EndPath).Bounded(Emr::FillPath, {});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nCountOf(image, kRed, kAll), 800);
    EXPECT_EQ(nColorAt(image, 20, 20), kWhite);
}

TEST(EmfPath, IsDrawnAlong)
{
    EmfMaker maker(40, 40);
    maker.Record(Emr::BeginPath);
    AddSquare(maker, 5, 24);
    maker.Record(Emr::EndPath).Bounded(Emr::StrokePath, {});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nCountOf(image, kBlack, kAll), 76);
    EXPECT_EQ(nColorAt(image, 15, 15), kWhite);
}

TEST(EmfPath, IsFilledAndDrawnAlongAtOnce)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, kRed).Record(Emr::BeginPath);
    AddSquare(maker, 5, 24);
    maker.Record(Emr::EndPath).Bounded(Emr::StrokeAndFillPath, {});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nCountOf(image, kBlack, kAll), 76);
    EXPECT_EQ(nCountOf(image, kRed, kAll), 18 * 18);
}

TEST(EmfPath, DrawsNothingWhileItIsOpenAndIsUsedUpOnce)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::BeginPath).Record(Emr::Rectangle, {5, 5, 15, 15}).Record(Emr::EndPath);
    maker.Bounded(Emr::FillPath, {}).Brush(2, kBlue).Bounded(Emr::FillPath, {});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nCountOf(image, kRed, kAll), 100);
    EXPECT_EQ(nCountOf(image, kBlue, kAll), 0);
}

TEST(EmfPath, ThatIsAbortedIsGone)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::BeginPath).Record(Emr::Rectangle, {5, 5, 15, 15}).Record(Emr::AbortPath);
    maker.Record(Emr::EndPath).Bounded(Emr::FillPath, {});

    EXPECT_EQ(nCountOf(aPlayed(maker), kWhite, kAll), 1600);
}

TEST(EmfPath, JoinsLinesCurvesAndArcsInOneFigure)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::BeginPath).Record(Emr::MoveTo, {5, 20});
    maker.Record(Emr::ArcTo, {5, 5, 35, 35, 5, 20, 35, 20});  // below, against the clock
    maker.Bounded(Emr::PolyBezierTo, {3, 35, 0, 5, 0, 5, 20}).Record(Emr::CloseFigure).Record(Emr::EndPath);
    const ImageBuffer image = aPlayed(maker.Bounded(Emr::FillPath, {}));

    EXPECT_EQ(nColorAt(image, 20, 30), kRed);
    EXPECT_EQ(nColorAt(image, 20, 10), kRed);
    EXPECT_EQ(nColorAt(image, 20, 3), kWhite);
    EXPECT_EQ(nColorAt(image, 20, 20), kRed);
}

TEST(EmfWidenPath, FillsWhatTheWideLineCovers)
{
    EmfMaker maker(40, 40);
    maker.Brush(1, kRed).GeometricPen(2, 0x200, 6, kBlue).Record(Emr::BeginPath);
    maker.Record(Emr::MoveTo, {5, 20}).Record(Emr::LineTo, {35, 20}).Record(Emr::EndPath);
    maker.Record(Emr::WidenPath).Bounded(Emr::FillPath, {});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nColorAt(image, 20, 18), kRed);
    EXPECT_EQ(nColorAt(image, 20, 21), kRed);
    EXPECT_EQ(nCountOf(image, kBlue, kAll), 0);
}

TEST(EmfFlattenPath, KeepsTheShape)
{
    const auto shape = [](bool flatten) {
        EmfMaker maker = Filled(kRed);
        maker.Record(Emr::BeginPath).Record(Emr::Ellipse, {5, 5, 35, 35}).Record(Emr::EndPath);
        if (flatten)
            maker.Record(Emr::FlattenPath);
        return aPlayed(maker.Bounded(Emr::FillPath, {}));
    };

    EXPECT_EQ(shape(true).bytes, shape(false).bytes);
}

TEST(EmfClip, IsIntersectedAndExcluded)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::IntersectClipRect, {5, 5, 35, 35}).Record(Emr::ExcludeClipRect, {15, 15, 25, 25});
    const ImageBuffer image = aPlayed(maker.Record(Emr::Rectangle, {0, 0, 40, 40}));

    EXPECT_EQ(nCountOf(image, kRed, kAll), 800);
    EXPECT_EQ(nColorAt(image, 20, 20), kWhite);
    EXPECT_EQ(nColorAt(image, 4, 20), kWhite);
}

TEST(EmfClip, CanBeMoved)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::IntersectClipRect, {0, 0, 20, 20}).Record(Emr::ExcludeClipRect, {5, 5, 10, 10});
    maker.Record(Emr::OffsetClip, {10, 15}).Record(Emr::Rectangle, {0, 0, 40, 40});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(aInk(image), (Box{10, 15, 30, 35}));
    EXPECT_EQ(nCountOf(image, kRed, kAll), 400 - 25);
    EXPECT_EQ(nColorAt(image, 17, 22), kWhite);
}

TEST(EmfClip, IsSavedWithTheState)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::SaveDc).Record(Emr::IntersectClipRect, {0, 0, 5, 5}).Record(Emr::RestoreDc, {-1});

    EXPECT_EQ(nCountOf(aPlayed(maker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll), 1600);
}

TEST(EmfClip, CombinesRegionsByAllModes)
{
    const auto area = [](std::int32_t mode) {
        EmfMaker maker = Filled(kRed);
        maker.Record(Emr::IntersectClipRect, {0, 0, 20, 20});
        maker.Region(Emr::ExtSelectClipRegion, {mode}, {{10, 10, 30, 30}});
        return nCountOf(aPlayed(maker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll);
    };

    EXPECT_EQ(area(1), 100);
    EXPECT_EQ(area(2), 700);
    EXPECT_EQ(area(3), 600);
    EXPECT_EQ(area(4), 300);
    EXPECT_EQ(area(5), 400);
}

TEST(EmfClip, OfARegionOfManyBoxesIsTheirUnion)
{
    EmfMaker maker = Filled(kRed);
    maker.Region(Emr::ExtSelectClipRegion, {5}, {{0, 0, 20, 10}, {10, 5, 30, 15}, {35, 35, 40, 40}});

    EXPECT_EQ(nCountOf(aPlayed(maker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll),
              200 + 200 - 50 + 25);
}

TEST(EmfClip, WithoutARegionIsReset)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::IntersectClipRect, {0, 0, 5, 5}).Record(Emr::ExtSelectClipRegion, {0, 5});

    EXPECT_EQ(nCountOf(aPlayed(maker.Record(Emr::Rectangle, {0, 0, 40, 40})), kRed, kAll), 1600);
}

TEST(EmfClip, OfTheMetaRegionHoldsWhateverComesAfter)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::IntersectClipRect, {0, 0, 20, 20}).Record(Emr::SetMetaRegion);
    maker.Record(Emr::ExtSelectClipRegion, {0, 5}).Record(Emr::Rectangle, {0, 0, 40, 40});

    EXPECT_EQ(nCountOf(aPlayed(maker), kRed, kAll), 400);
}

TEST(EmfClip, CanBeAPath)
{
    EmfMaker maker = Filled(kRed);
    maker.Record(Emr::BeginPath).Record(Emr::Ellipse, {5, 5, 35, 35}).Record(Emr::EndPath);
    maker.Record(Emr::SelectClipPath, {1}).Record(Emr::Rectangle, {0, 0, 40, 40});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nColorAt(image, 20, 20), kRed);
    EXPECT_EQ(nColorAt(image, 7, 7), kWhite);
    EXPECT_EQ(aInk(image), (Box{5, 5, 35, 35}));
}

TEST(EmfClip, HoldsRasterOperationsToo)
{
    EmfMaker maker = Filled(kWhite);
    maker.Record(Emr::IntersectClipRect, {10, 10, 20, 20}).Record(Emr::SetRop2, {7});

    EXPECT_EQ(nCountOf(aPlayed(maker.Record(Emr::Rectangle, {0, 0, 40, 40})), kBlack, kAll), 100);
}

TEST(EmfRegion, IsFilledPaintedAndInverted)
{
    EmfMaker maker = Filled(kRed);
    maker.Brush(2, kBlue).Region(Emr::FillRegion, {1}, {{0, 0, 10, 10}, {5, 5, 15, 15}});
    maker.Region(Emr::PaintRegion, {}, {{20, 0, 30, 10}});
    maker.Region(Emr::InvertRegion, {}, {{0, 20, 40, 40}});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nCountOf(image, kRed, kAll), 175);
    EXPECT_EQ(nCountOf(image, kBlue, kAll), 100);
    EXPECT_EQ(nCountOf(image, kBlack, kAll), 800);
}

TEST(EmfRegion, IsFramedAlongItsWholeEdge)
{
    EmfMaker maker = Filled(kRed);
    maker.Region(Emr::FrameRegion, {1, 2, 3}, {{5, 5, 25, 25}, {15, 15, 35, 35}});
    const ImageBuffer image = aPlayed(maker);

    EXPECT_EQ(nColorAt(image, 6, 15), kRed);
    EXPECT_EQ(nColorAt(image, 7, 15), kWhite);
    EXPECT_EQ(nColorAt(image, 12, 7), kRed);
    EXPECT_EQ(nColorAt(image, 12, 8), kWhite);
    EXPECT_EQ(nColorAt(image, 20, 20), kWhite);  // where the boxes overlap there is no edge
}
