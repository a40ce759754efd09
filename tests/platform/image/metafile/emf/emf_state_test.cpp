// Mapping, saved states, raster operations and objects of EMF records.
#include "tests/platform/image/support/metafile_maker.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

static EmfMaker Filled(std::uint32_t nColor)
{
    EmfMaker objMaker(40, 40);
    objMaker.Brush(1, nColor).Select(kNullPen);
    return objMaker;
}

TEST(EmfWindow, IsMappedOnTheViewport)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SetMapMode, {8})
        .Record(Emr::SetWindowOrg, {100, 100})
        .Record(Emr::SetWindowExt, {200, 400});
    objMaker.Record(Emr::SetViewportOrg, {10, 0}).Record(Emr::SetViewportExt, {20, 40});
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {100, 100, 200, 200}));

    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{10, 0, 20, 10}));
}

TEST(EmfWindow, MayBeMirrored)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SetMapMode, {8})
        .Record(Emr::SetWindowExt, {40, -40})
        .Record(Emr::SetViewportExt, {40, 40});
    objMaker.Record(Emr::SetViewportOrg, {0, 40});
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 10, 10}));

    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{0, 30, 10, 40}));
}

TEST(EmfWindow, CanBeScaled)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SetMapMode, {8})
        .Record(Emr::SetWindowExt, {40, 40})
        .Record(Emr::SetViewportExt, {40, 40});
    objMaker.Record(Emr::ScaleWindowExt, {2, 1, 2, 1}).Record(Emr::ScaleViewportExt, {1, 2, 1, 2});
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40}));

    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{0, 0, 10, 10}));
}

TEST(EmfMapMode, IsotropicKeepsSquaresSquare)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SetMapMode, {7})
        .Record(Emr::SetWindowExt, {10, 10})
        .Record(Emr::SetViewportExt, {40, 20});

    EXPECT_EQ(aInk(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 10, 10}))),
              (std::array<std::int32_t, 4>{0, 0, 20, 20}));
}

TEST(EmfMapMode, OfTenthsOfAMillimetreCountsUpwards)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SetMapMode, {2}).Record(Emr::SetViewportOrg, {0, 40});
    // 5.08 mm are 19.2 pixels at 96 an inch.
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 51, 51}));

    EXPECT_EQ(aInk(aImage), (std::array<std::int32_t, 4>{0, 21, 19, 40}));
}

TEST(EmfMapMode, OfTextLeavesTheExtentsAlone)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SetWindowExt, {4000, 4000}).Record(Emr::SetViewportExt, {40, 40});

    EXPECT_EQ(aInk(aPlayed(objMaker.Record(Emr::Rectangle, {5, 5, 10, 10}))),
              (std::array<std::int32_t, 4>{5, 5, 10, 10}));
}

TEST(EmfWorldTransform, MovesScalesAndTurns)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.World(0, 0, 2, -2, 0, 30, 5);  // twice the size, a quarter turn, then moved

    EXPECT_EQ(aInk(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 10, 5}))),
              (std::array<std::int32_t, 4>{20, 5, 30, 25}));
}

TEST(EmfWorldTransform, IsMultipliedFromEitherSide)
{
    const auto aPlace = [](std::uint32_t nMode) {
        EmfMaker objMaker = Filled(kRed);
        objMaker.World(0, 2, 0, 0, 2, 0, 0).World(nMode, 1, 0, 0, 1, 5, 5);
        return aInk(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 5, 5})));
    };

    EXPECT_EQ(aPlace(2), (std::array<std::int32_t, 4>{10, 10, 20, 20}));  // moved before it is scaled
    EXPECT_EQ(aPlace(3), (std::array<std::int32_t, 4>{5, 5, 15, 15}));
    EXPECT_EQ(aPlace(1), (std::array<std::int32_t, 4>{0, 0, 5, 5}));
    EXPECT_EQ(aPlace(4), (std::array<std::int32_t, 4>{5, 5, 10, 10}));
}

TEST(EmfRestoreDc, BringsBackWhatWasSaved)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::SaveDc).Brush(2, kBlue).World(0, 1, 0, 0, 1, 20, 20).Record(Emr::SaveDc);
    objMaker.Brush(3, kGreen).Record(Emr::RestoreDc, {-2}).Record(Emr::Rectangle, {0, 0, 10, 10});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kRed, {0, 0, 10, 10}), 100);
    EXPECT_EQ(nCountOf(aImage, kWhite, kAll), 1500);
}

TEST(EmfRestoreDc, OfAStateThatWasNotSavedChangesNothing)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::RestoreDc, {-1}).Record(Emr::RestoreDc, {7}).Record(Emr::RestoreDc, {0});

    EXPECT_EQ(nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 10, 10})), kRed, kAll), 100);
}

TEST(EmfRop2, CombinesPenAndPictureBitByBit)
{
    const auto nResult = [](std::int32_t lRop2) {
        EmfMaker objMaker = Filled(0x00FF00);
        objMaker.Record(Emr::Rectangle, {0, 0, 40, 40}).Brush(2, 0x0F0FF0).Record(Emr::SetRop2, {lRop2});
        return nColorAt(aPlayed(objMaker.Record(Emr::Rectangle, {10, 10, 30, 30})), 20, 20);
    };
    constexpr std::uint32_t kOld = 0x00FF00, kPen = 0x0F0FF0, kAllBits = 0xFFFFFF;

    EXPECT_EQ(nResult(1), 0u);
    EXPECT_EQ(nResult(2), ~(kPen | kOld) & kAllBits);
    EXPECT_EQ(nResult(3), ~kPen & kOld);
    EXPECT_EQ(nResult(4), ~kPen & kAllBits);
    EXPECT_EQ(nResult(5), kPen & ~kOld);
    EXPECT_EQ(nResult(6), ~kOld & kAllBits);
    EXPECT_EQ(nResult(7), kPen ^ kOld);
    EXPECT_EQ(nResult(8), ~(kPen & kOld) & kAllBits);
    EXPECT_EQ(nResult(9), kPen & kOld);
    EXPECT_EQ(nResult(10), ~(kPen ^ kOld) & kAllBits);
    EXPECT_EQ(nResult(11), kOld);
    EXPECT_EQ(nResult(12), (~kPen | kOld) & kAllBits);
    EXPECT_EQ(nResult(13), kPen);
    EXPECT_EQ(nResult(14), (kPen | ~kOld) & kAllBits);
    EXPECT_EQ(nResult(15), kPen | kOld);
    EXPECT_EQ(nResult(16), kAllBits);
}

TEST(EmfRop2, OfExclusiveOrTwiceIsNothing)
{
    EmfMaker objMaker = Filled(0x5500AA);
    objMaker.Record(Emr::SetRop2, {7});
    objMaker.Record(Emr::Ellipse, {5, 5, 35, 35}).Record(Emr::Ellipse, {5, 5, 35, 35});

    EXPECT_EQ(nCountOf(aPlayed(objMaker), kWhite, kAll), 1600);
}

TEST(EmfBrush, HatchesOnTheBackground)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::SetBkColor, {static_cast<std::int32_t>(kYellow)})
        .Select(kNullPen)
        .Brush(1, kRed, 2, 0);
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40}));

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 5 * 40);  // one row in eight
    EXPECT_EQ(nCountOf(aImage, kYellow, kAll), 35 * 40);
}

TEST(EmfBrush, HatchesLeaveATransparentBackgroundAlone)
{
    EmfMaker objMaker(40, 40);
    objMaker.Record(Emr::SetBkMode, {1}).Select(kNullPen).Brush(1, kRed, 2, 5);
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 40, 40}));

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 25 * 16);
    EXPECT_EQ(nCountOf(aImage, kWhite, kAll), 1600 - 25 * 16);
}

static EmfMaker WithPattern(std::uint32_t nType, const Dib& objDib)
{
    EmfMaker objMaker(40, 40);
    const auto nHeader = static_cast<std::uint32_t>(objDib.objHeader.nSize());
    ByteMaker objData;
    objData.U32Le({1, 0, 32, nHeader, 32 + nHeader, static_cast<std::uint32_t>(objDib.objBits.nSize())});
    objData.All(objDib.objHeader.aBytes()).All(objDib.objBits.aBytes());
    objMaker.Select(kNullPen).Record(nType, objData).Select(1);
    return objMaker;
}

TEST(EmfPatternBrush, RepeatsItsBitmapFromTheBrushOrigin)
{
    EmfMaker objMaker = WithPattern(Emr::CreateDibBrush, objDib24(2, {kRed, kGreen, kBlue, kYellow}));
    objMaker.Record(Emr::SetBrushOrg, {1, 0});
    const ImageBuffer aImage = aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 20, 20}));

    EXPECT_EQ(nColorAt(aImage, 1, 0), kRed);
    EXPECT_EQ(nColorAt(aImage, 0, 0), kGreen);
    EXPECT_EQ(nColorAt(aImage, 1, 1), kBlue);
    EXPECT_EQ(nColorAt(aImage, 12, 17), kYellow);
    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 100);
}

TEST(EmfMonoBrush, TakesTheColoursOfTextAndBackground)
{
    EmfMaker objMaker = WithPattern(Emr::CreateMonoBrush, objDib1({"#...", "...."}, kBlack, kWhite));
    objMaker.Record(Emr::SetTextColor, {static_cast<std::int32_t>(kRed)});
    objMaker.Record(Emr::SetBkColor, {static_cast<std::int32_t>(kBlue)}).Record(Emr::Rectangle, {0, 0, 8, 8});
    objMaker.Record(Emr::SetBkColor, {static_cast<std::int32_t>(kGreen)})
        .Record(Emr::Rectangle, {8, 0, 16, 8});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nCountOf(aImage, kRed, kAll), 2 * 56);
    EXPECT_EQ(nCountOf(aImage, kBlue, {0, 0, 8, 8}), 8);
    EXPECT_EQ(nCountOf(aImage, kGreen, {8, 0, 16, 8}), 8);
}

TEST(EmfPalette, GivesIndexedColours)
{
    EmfMaker objMaker(40, 40);
    ByteMaker objPalette;
    objPalette.U32Le({5}).U16Le({0x300, 2}).U8({10, 20, 30, 0, 40, 50, 60, 0});
    ByteMaker objChange;
    objChange.U32Le({5, 1, 1}).U8({70, 80, 90, 0});
    objMaker.Select(kNullPen).Record(Emr::CreatePalette, objPalette).Record(Emr::SelectPalette, {5});
    objMaker.Brush(1, 0x01000001).Record(Emr::Rectangle, {0, 0, 10, 10});
    objMaker.Record(Emr::SetPaletteEntries, objChange).Record(Emr::Rectangle, {10, 0, 20, 10});
    const ImageBuffer aImage = aPlayed(objMaker);

    EXPECT_EQ(nColorAt(aImage, 5, 5), 40u | 50u << 8 | 60u << 16);
    EXPECT_EQ(nColorAt(aImage, 15, 5), 70u | 80u << 8 | 90u << 16);
}

TEST(EmfObjects, ThatAreDeletedFreeTheirPlace)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(Emr::DeleteObject, {1}).Brush(1, kBlue).Record(Emr::Rectangle, {0, 0, 10, 10});

    EXPECT_EQ(nCountOf(aPlayed(objMaker), kBlue, kAll), 100);
}

TEST(EmfObjects, ThatDoNotExistChangeNothing)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Select(17)
        .Select(12345)
        .Select(static_cast<std::int32_t>(0x80000063))
        .Record(Emr::DeleteObject, {999});

    EXPECT_EQ(nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 10, 10})), kRed, kAll), 100);
}

TEST(EmfRecords, ThatAreUnknownAreLeftOut)
{
    EmfMaker objMaker = Filled(kRed);
    objMaker.Record(4711, {1, 2, 3}).Record(Emr::Comment, {4, 0x12345678}).Record(98, {1});

    EXPECT_EQ(nCountOf(aPlayed(objMaker.Record(Emr::Rectangle, {0, 0, 10, 10})), kRed, kAll), 100);
}
