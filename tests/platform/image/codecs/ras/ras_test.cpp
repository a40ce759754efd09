// Sun rasterfiles from hand-made bytes: kinds, depths, colour maps, runs; and what is written.
#include "src/platform/image/codecs/ras/ras.h"

#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

static constexpr std::uint32_t kOld = 0, kStandard = 1, kByteEncoded = 2, kRgb = 3;

static ByteMaker objHeader(std::uint32_t nWidth, std::uint32_t nHeight, std::uint32_t nBits,
                           std::uint32_t nKind = 1, std::uint32_t nMapKind = 0, std::uint32_t nMapSize = 0)
{
    ByteMaker mk;
    mk.U32Be({0x59A66A95, nWidth, nHeight, nBits, 0, nKind, nMapKind, nMapSize});
    return mk;
}

static Levels aLevels(const ByteMaker& mk)
{
    const auto aImage = aDecoded(codecRas, mk.aBytes());
    return aImage ? Levels{aImage->bytes.begin(), aImage->bytes.end()} : Levels{-1};
}

TEST(RasReads, TwentyFourBitsAsBlueGreenRedAndRowsPaddedToSixteenBits)
{
    EXPECT_EQ(aLevels(objHeader(1, 2, 24).U8({1, 2, 3, 99, 4, 5, 6, 99})), (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(aLevels(objHeader(1, 2, 24, kOld).U8({1, 2, 3, 99, 4, 5, 6})), (Levels{1, 2, 3, 4, 5, 6}))
        << "the last filling may be missing";
    EXPECT_EQ(aLevels(objHeader(1, 2, 24).U8({1, 2, 3, 99, 4, 5})), Levels{-1});
}

TEST(RasReads, TheKindRgbTheOtherWayRound)
{
    EXPECT_EQ(aLevels(objHeader(2, 1, 24, kRgb).U8({1, 2, 3, 4, 5, 6})), (Levels{3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(aLevels(objHeader(2, 1, 32, kRgb).U8({99, 1, 2, 3, 99, 4, 5, 6})), (Levels{3, 2, 1, 6, 5, 4}));
}

TEST(RasReads, ThirtyTwoBitsWithoutTheirFirstByte)
{
    EXPECT_EQ(aLevels(objHeader(2, 1, 32).U8({99, 1, 2, 3, 0, 4, 5, 6})), (Levels{1, 2, 3, 4, 5, 6}));
}

TEST(RasReads, OneBitAsWhiteAtZeroAndBlackAtOne)
{
    EXPECT_EQ(aLevels(objHeader(10, 1, 1).U8({0b10110000, 0b01000000})),
              (Levels{0, 255, 0, 0, 255, 255, 255, 255, 255, 0}));
}

TEST(RasReads, OneBitThroughItsMap)
{
    EXPECT_EQ(aLevels(objHeader(2, 1, 1, 1, 1, 6).U8({10, 20, 30, 40, 50, 60}).U8({0x40, 0})),
              (Levels{50, 30, 10, 60, 40, 20}));
    EXPECT_EQ(aLevels(objHeader(2, 1, 1, 1, 1, 6).U8({0, 255, 0, 255, 0, 255}).U8({0x40, 0})),
              (Levels{0, 255}));
}

TEST(RasReads, EightBitsAsGreysOrThroughTheirMap)
{
    EXPECT_EQ(aLevels(objHeader(3, 1, 8).U8({1, 2, 3, 99})), (Levels{1, 2, 3}));
    EXPECT_EQ(aLevels(objHeader(3, 1, 8, 1, 1, 6).U8({10, 20, 30, 40, 50, 60}).U8({1, 0, 2, 99})),
              (Levels{60, 40, 20, 50, 30, 10, 0, 0, 0}))
        << "an index beyond the map is black";
}

TEST(RasReads, AMapThatIsNoTableAsNone)
{
    EXPECT_EQ(aLevels(objHeader(2, 1, 8, 1, 2, 5).U8({10, 20, 30, 40, 50}).U8({1, 2})), (Levels{1, 2}));
    EXPECT_EQ(aLevels(objHeader(2, 1, 8, 1, 0, 2).U8({10, 20}).U8({1, 2})), (Levels{1, 2}));
}

TEST(RasReads, AMapOfColoursThatHoldLevels)
{
    ByteMaker mk = objHeader(1, 1, 24, 1, 1, 768);
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 256; ++i)
            mk.U8({255 - i});

    EXPECT_EQ(aLevels(mk.U8({1, 2, 3, 0})), (Levels{254, 253, 252}));
}

TEST(RasReads, RunsWithTheirEscapes)
{
    EXPECT_EQ(aLevels(objHeader(4, 2, 8, kByteEncoded).U8({5, 0x80, 0, 0x80, 4, 9, 7})),
              (Levels{5, 0x80, 9, 9, 9, 9, 9, 7}))
        << "a run goes on in the next row";
    EXPECT_EQ(aLevels(objHeader(2, 1, 8, kByteEncoded).U8({0x80, 1, 0x80})), (Levels{0x80, 0x80}));
    EXPECT_EQ(aLevels(objHeader(3, 1, 8, kByteEncoded).U8({0x80, 255, 4})), (Levels{4, 4, 4}))
        << "a run too long";
    for (const auto& aEnd : {std::vector<std::uint8_t>{0x80}, {0x80, 2}, {5}, {}})
        EXPECT_EQ(aLevels(objHeader(2, 1, 8, kByteEncoded).All(aEnd)), Levels{-1});
}

TEST(RasReads, NoHeaderThatNobodyWrites)
{
    EXPECT_EQ(aLevels(objHeader(1, 1, 24, 0xFFFF).Zeros(8)), Levels{-1}) << "the experimental kind";
    EXPECT_EQ(aLevels(objHeader(1, 1, 24, 4).Zeros(8)), Levels{-1});
    EXPECT_EQ(aLevels(objHeader(1, 1, 4).Zeros(8)), Levels{-1});
    EXPECT_EQ(aLevels(objHeader(0, 1, 24).Zeros(8)), Levels{-1});
    EXPECT_EQ(aLevels(objHeader(1, 0, 24).Zeros(8)), Levels{-1});
    EXPECT_EQ(aLevels(objHeader(1, 1, 24, kStandard, 1, 0xFFFFFFFF).Zeros(8)), Levels{-1});
}

TEST(RasReads, NothingLargerThanTheDataCanHold)
{
    for (const std::uint32_t nKind : {kStandard, kByteEncoded}) {
        EXPECT_EQ(aLevels(objHeader(60000, 8000, 24, nKind).Zeros(5000)), Levels{-1});
        EXPECT_EQ(aLevels(objHeader(0xFFFFFFFF, 0xFFFFFFFF, 32, nKind).Zeros(5000)), Levels{-1});
        EXPECT_EQ(aLevels(objHeader(65501, 1, 1, nKind).Zeros(10000)), Levels{-1});
    }
}

TEST(RasWrites, TheKindStandardWithTheSizeOfItsData)
{
    const auto aFile = aEncoded(codecRas, aPattern(5, 3, 3));

    ByteReader rd(aFile);
    for (const std::uint32_t nExpected : {0x59A66A95u, 5u, 3u, 24u, 48u, 1u, 0u, 0u})
        EXPECT_EQ(rd.U32Be(), nExpected);
    EXPECT_EQ(aFile.size(), 32u + 48);
}
