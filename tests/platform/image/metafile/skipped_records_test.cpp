// Tests of metafiles in which single records can't be drawn: the others are.
#include <gtest/gtest.h>

#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

/// Draws a red square in front of and a blue one behind the record.
static ImageBuffer Between(std::uint32_t type, const ByteMaker& record)
{
    EmfMaker maker(40, 20);
    maker.Select(kNullPen).Brush(1, kRed).Record(Emr::kRectangle, {0, 0, 10, 20});
    maker.Record(type, record).Brush(2, kBlue).Record(Emr::kRectangle, {30, 0, 40, 20});
    return Render(maker);
}

static ImageBuffer BetweenInWmf(std::uint16_t function, const ByteMaker& record)
{
    WmfMaker maker(40, 20);
    maker.Pen(5, 0, 0).Brush(kRed).Select(0).Select(1).Record(0x041B, {20, 10, 0, 0});
    maker.Record(function, record).Brush(kBlue).Select(2).Record(0x041B, {20, 40, 0, 30});
    return Render(maker);
}

static void ExpectBothSquares(const ImageBuffer& image)
{
    EXPECT_EQ(ColorAt(image, 5, 10), kRed);
    EXPECT_EQ(ColorAt(image, 20, 10), kWhite);
    EXPECT_EQ(ColorAt(image, 35, 10), kBlue);
}

TEST(SkippedRecords, EmfSkipsTruncatedShape)
{
    ExpectBothSquares(Between(Emr::kPolygon, ByteMaker().Zeros(16).U32Le({1000, 1, 1})));
}

TEST(SkippedRecords, EmfSkipsTextBeyondRecord)
{
    ByteMaker text;
    text.Zeros(16).U32Le({1, 0, 0, 5, 5, 4000, 76, 0}).Zeros(20);
    ExpectBothSquares(Between(Emr::kExtTextOutW, text));
}

TEST(SkippedRecords, EmfSkipsBitmapThatCannotBeDecoded)
{
    ByteMaker bitmap;
    bitmap.Zeros(16).U32Le({10, 0, 0, 0, 1, 1, 80, 40, 120, 4, 0, kSrcCopy, 20, 20});
    bitmap.U32Le({40, 1, 1}).U16Le({1, 7}).Zeros(28);
    ExpectBothSquares(Between(Emr::kStretchDibits, bitmap));
}

TEST(SkippedRecords, WmfSkipsOldBitmapThatCannotBeDecoded)
{
    ByteMaker blit;
    blit.U32Le({kSrcCopy}).U16Le({0, 0, 8, 8, 0, 10, 0, 8, 8, 2}).U8({1, 5}).Zeros(16);
    ExpectBothSquares(BetweenInWmf(0x0922, blit));
}

TEST(SkippedRecords, WmfSkipsTextBeyondRecord)
{
    ExpectBothSquares(BetweenInWmf(0x0521, ByteMaker().U16Le({200, 1, 1})));
}

TEST(SkippedRecords, WmfKeepsNumbersOfObjectsBehindBrokenOne)
{
    WmfMaker maker(20, 20);
    maker.Record(0x06FF, {0, 6, 0, 0}).Brush(kRed).Select(1).Record(0x041B, {20, 20, 0, 0});

    EXPECT_EQ(ColorAt(Render(maker), 10, 10), kRed);
}

TEST(SkippedRecords, KeepStateIfTruncated)
{
    EmfMaker emf(40, 20);
    emf.Record(Emr::kSetRop2, {13}).World(0, 2, 0, 0, 2, 0, 0);
    emf.Record(Emr::kSetWorldTransform, {0, 0, 0}).Record(Emr::kSetWindowOrg, {5});
    emf.Select(kNullPen).Brush(1, kRed).Record(Emr::kRectangle, {0, 0, 10, 10});
    WmfMaker wmf(40, 20);
    wmf.Record(0x020B, {0, 0}).Record(0x020C, {20, 40}).Record(0x0104, {13}).Record(0x0104);
    wmf.Pen(5, 0, 0).Select(0).Brush(kRed).Select(1).Record(0x020B, {7}).Record(0x041B, {20, 20, 0, 0});

    EXPECT_EQ(CountOf(Render(emf), kRed, {0, 0, 40, 20}), 400);
    EXPECT_EQ(CountOf(Render(wmf), kRed, {0, 0, 40, 20}), 400);
}

TEST(SkippedRecords, RefusesFileOfWhichNothingCanBeDrawn)
{
    EXPECT_FALSE(
        Decoded(kEmfCodec, EmfMaker(20, 20).Bounded(Emr::kPolygon, {1000, 1, 1}).File()).has_value());
    EXPECT_FALSE(Decoded(kWmfCodec, WmfMaker(20, 20).Record(0x041B, {1, 2}).File()).has_value());
    EXPECT_TRUE(Decoded(kEmfCodec, EmfMaker(20, 20).File()).has_value());
}
