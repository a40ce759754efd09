// Tests of how EMF+ records and EMF records share a file.
#include <gtest/gtest.h>

#include "src/platform/image/codecs/metafile/emf.h"
#include "tests/platform/image/support/emf_plus_maker.h"
#include "tests/platform/image/support/image_tools.h"

static constexpr std::array<std::int32_t, 4> kAll{0, 0, 40, 40};

/// Draws the EMF half of a dual file: everything red.
static void DrawEmfHalf(EmfPlusMaker& maker)
{
    maker.Emf().Select(kNullPen).Brush(1, kRed).Record(Emr::kRectangle, {0, 0, 40, 40});
}

TEST(EmfPlusFile, IsDrawnByItsRecordsAlone)
{
    const ImageBuffer image = Render(EmfPlusMaker(40, 40).FillRect(kPlusBlue, {10, 10, 20, 20}));

    EXPECT_EQ(CountOf(image, kBlue, {10, 10, 30, 30}), 400);
    EXPECT_EQ(CountOf(image, kWhite, kAll), 1200);
}

TEST(EmfPlusFile, IsRefusedIfNothingIsDrawn)
{
    EXPECT_FALSE(Decoded(kEmfCodec, EmfPlusMaker(40, 40).File()).has_value());
    EXPECT_FALSE(Decoded(kEmfCodec, EmfPlusMaker(40, 40).Record(0x4FFF, 0).File()).has_value());
}

TEST(EmfPlusFile, SkipsRecordsThatCannotBeDrawn)
{
    EmfPlusMaker maker(40, 40);
    maker.Record(Plus::kFillPath, 7, PlusBytes().U({3})).FillRect(kPlusBlue, {0, 0, 40, 40});

    EXPECT_EQ(CountOf(Render(maker), kBlue, kAll), 1600);
}

TEST(EmfPlusDual, IsDrawnByEmfPlusHalfIfWhole)
{
    EmfPlusMaker maker(40, 40, true);
    maker.FillRect(kPlusBlue, {0, 0, 40, 40});
    DrawEmfHalf(maker);

    EXPECT_EQ(CountOf(Render(maker), kBlue, kAll), 1600);
}

TEST(EmfPlusDual, CountsEmptyShapesAndTextsAsDrawn)
{
    EmfPlusMaker maker(40, 40, true);
    maker.FillRect(kPlusBlue, {0, 0, 40, 40});
    maker.Object(Plus::kFont, 3, PlusBytes().U({Plus::kVersion}).F({10}).U({2, 0, 0, 5}).Utf16(u"Arial"));
    maker.Record(Plus::kDrawDriverString, 0x8003, PlusBytes().U({0xFF000000, 1, 0, 0}));
    maker.Object(Plus::kPath, 4, PathOf({}, {})).Record(Plus::kFillPath, 0x8004, PlusBytes().U({kPlusRed}));
    DrawEmfHalf(maker);

    EXPECT_EQ(CountOf(Render(maker), kBlue, kAll), 1600);
}

TEST(EmfPlusDual, IsDrawnByEmfHalfIfEmfPlusHalfIsBroken)
{
    EmfPlusMaker maker(40, 40, true);
    maker.FillRect(kPlusBlue, {0, 0, 20, 40}).Record(Plus::kFillPath, 7, PlusBytes().U({3}));
    DrawEmfHalf(maker);

    EXPECT_EQ(CountOf(Render(maker), kRed, kAll), 1600);
}

TEST(EmfPlusDual, IsDrawnByEmfHalfIfEmfPlusHalfIsIncomplete)
{
    EmfPlusMaker maker(40, 40, true);
    maker.FillRect(kPlusBlue, {0, 0, 20, 40});
    DrawEmfHalf(maker);
    const auto image = Decoded(kEmfCodec, maker.File(false));

    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(CountOf(*image, kRed, kAll), 1600);
}

TEST(EmfPlusGetDc, DrawsEmfRecordsUntilNextEmfPlusRecord)
{
    EmfPlusMaker maker(40, 40);
    maker.Record(Plus::kGetDc, 0);
    maker.Emf().Select(kNullPen).Brush(1, kRed).Record(Emr::kRectangle, {0, 0, 20, 40});
    maker.FillRect(kPlusBlue, {30, 0, 10, 40});
    maker.Emf().Record(Emr::kRectangle, {20, 0, 30, 40});
    const ImageBuffer image = Render(maker);

    EXPECT_EQ(CountOf(image, kRed, kAll), 800);
    EXPECT_EQ(CountOf(image, kBlue, kAll), 400);
}

TEST(EmfPlusObject, MayComeInPieces)
{
    const std::vector<std::uint8_t> brush = SolidBrush(kPlusGreen).Data();
    const auto piece = [&brush](std::size_t first, std::size_t end) {
        PlusBytes bytes;
        bytes.U({static_cast<std::uint32_t>(brush.size())});
        bytes.All({brush.begin() + static_cast<std::ptrdiff_t>(first),
                   brush.begin() + static_cast<std::ptrdiff_t>(end)});
        return bytes;
    };
    EmfPlusMaker maker(40, 40);
    maker.Record(Plus::kObject, 0x8100, piece(0, 8)).Record(Plus::kObject, 0x8100, piece(8, 12));
    maker.Record(Plus::kFillRects, 0, PlusBytes().U({0, 1}).F({0, 0, 40, 40}));

    EXPECT_EQ(CountOf(Render(maker), kGreen, kAll), 1600);
}
