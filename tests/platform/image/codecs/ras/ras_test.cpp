// Tests of Sun rasterfiles: types, depths, colour maps and runs from hand-made bytes, and writing.
#include "src/platform/image/codecs/ras/ras.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

static constexpr std::uint32_t kOld = 0, kStandard = 1, kByteEncoded = 2, kRgb = 3;

static ByteMaker Header(std::uint32_t width, std::uint32_t height, std::uint32_t bits, std::uint32_t kind = 1,
                        std::uint32_t map_kind = 0, std::uint32_t map_size = 0)
{
    ByteMaker maker;
    maker.U32Be({0x59A66A95, width, height, bits, 0, kind, map_kind, map_size});
    return maker;
}

static Levels LevelsOf(const ByteMaker& maker)
{
    const auto image = Decoded(kRasCodec, maker.Data());
    return image ? Levels{image->bytes.begin(), image->bytes.end()} : Levels{-1};
}

TEST(RasDecoder, ReadsTwentyFourBitsInPaddedRows)
{
    EXPECT_EQ(LevelsOf(Header(1, 2, 24).U8({1, 2, 3, 99, 4, 5, 6, 99})), (Levels{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(LevelsOf(Header(1, 2, 24, kOld).U8({1, 2, 3, 99, 4, 5, 6})), (Levels{1, 2, 3, 4, 5, 6}))
        << "the last padding may be missing";
    EXPECT_EQ(LevelsOf(Header(1, 2, 24).U8({1, 2, 3, 99, 4, 5})), Levels{-1});
}

TEST(RasDecoder, SwapsRedAndBlueForRgbType)
{
    EXPECT_EQ(LevelsOf(Header(2, 1, 24, kRgb).U8({1, 2, 3, 4, 5, 6})), (Levels{3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(LevelsOf(Header(2, 1, 32, kRgb).U8({99, 1, 2, 3, 99, 4, 5, 6})), (Levels{3, 2, 1, 6, 5, 4}));
}

TEST(RasDecoder, SkipsFirstByteOfThirtyTwoBits)
{
    EXPECT_EQ(LevelsOf(Header(2, 1, 32).U8({99, 1, 2, 3, 0, 4, 5, 6})), (Levels{1, 2, 3, 4, 5, 6}));
}

TEST(RasDecoder, ReadsOneBitAsWhiteZeroAndBlackOne)
{
    EXPECT_EQ(LevelsOf(Header(10, 1, 1).U8({0b10110000, 0b01000000})),
              (Levels{0, 255, 0, 0, 255, 255, 255, 255, 255, 0}));
}

TEST(RasDecoder, MapsOneBitThroughColourMap)
{
    EXPECT_EQ(LevelsOf(Header(2, 1, 1, 1, 1, 6).U8({10, 20, 30, 40, 50, 60}).U8({0x40, 0})),
              (Levels{50, 30, 10, 60, 40, 20}));
    EXPECT_EQ(LevelsOf(Header(2, 1, 1, 1, 1, 6).U8({0, 255, 0, 255, 0, 255}).U8({0x40, 0})),
              (Levels{0, 255}));
}

TEST(RasDecoder, MapsEightBitsOrReadsThemAsGrey)
{
    EXPECT_EQ(LevelsOf(Header(3, 1, 8).U8({1, 2, 3, 99})), (Levels{1, 2, 3}));
    EXPECT_EQ(LevelsOf(Header(3, 1, 8, 1, 1, 6).U8({10, 20, 30, 40, 50, 60}).U8({1, 0, 2, 99})),
              (Levels{60, 40, 20, 50, 30, 10, 0, 0, 0}))
        << "an index beyond the map is black";
}

TEST(RasDecoder, IgnoresInvalidColourMap)
{
    EXPECT_EQ(LevelsOf(Header(2, 1, 8, 1, 2, 5).U8({10, 20, 30, 40, 50}).U8({1, 2})), (Levels{1, 2}));
    EXPECT_EQ(LevelsOf(Header(2, 1, 8, 1, 0, 2).U8({10, 20}).U8({1, 2})), (Levels{1, 2}));
}

TEST(RasDecoder, AppliesColourMapToTrueColourChannels)
{
    ByteMaker maker = Header(1, 1, 24, 1, 1, 768);
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 256; ++i)
            maker.U8({255 - i});

    EXPECT_EQ(LevelsOf(maker.U8({1, 2, 3, 0})), (Levels{254, 253, 252}));
}

TEST(RasDecoder, ReadsRunsAndEscapes)
{
    EXPECT_EQ(LevelsOf(Header(4, 2, 8, kByteEncoded).U8({5, 0x80, 0, 0x80, 4, 9, 7})),
              (Levels{5, 0x80, 9, 9, 9, 9, 9, 7}))
        << "a run continues in the next row";
    EXPECT_EQ(LevelsOf(Header(2, 1, 8, kByteEncoded).U8({0x80, 1, 0x80})), (Levels{0x80, 0x80}));
    EXPECT_EQ(LevelsOf(Header(3, 1, 8, kByteEncoded).U8({0x80, 255, 4})), (Levels{4, 4, 4}))
        << "an excess run is clipped";
    for (const auto& end : {std::vector<std::uint8_t>{0x80}, {0x80, 2}, {5}, {}})
        EXPECT_EQ(LevelsOf(Header(2, 1, 8, kByteEncoded).All(end)), Levels{-1});
}

TEST(RasDecoder, RefusesUnsupportedHeaders)
{
    EXPECT_EQ(LevelsOf(Header(1, 1, 24, 0xFFFF).Zeros(8)), Levels{-1}) << "the experimental kind";
    EXPECT_EQ(LevelsOf(Header(1, 1, 24, 4).Zeros(8)), Levels{-1});
    EXPECT_EQ(LevelsOf(Header(1, 1, 4).Zeros(8)), Levels{-1});
    EXPECT_EQ(LevelsOf(Header(0, 1, 24).Zeros(8)), Levels{-1});
    EXPECT_EQ(LevelsOf(Header(1, 0, 24).Zeros(8)), Levels{-1});
    EXPECT_EQ(LevelsOf(Header(1, 1, 24, kStandard, 1, 0xFFFFFFFF).Zeros(8)), Levels{-1});
}

TEST(RasDecoder, RefusesSizesLargerThanData)
{
    for (const std::uint32_t kind : {kStandard, kByteEncoded}) {
        EXPECT_EQ(LevelsOf(Header(60000, 8000, 24, kind).Zeros(5000)), Levels{-1});
        EXPECT_EQ(LevelsOf(Header(0xFFFFFFFF, 0xFFFFFFFF, 32, kind).Zeros(5000)), Levels{-1});
        EXPECT_EQ(LevelsOf(Header(65501, 1, 1, kind).Zeros(10000)), Levels{-1});
    }
}

TEST(RasEncoder, WritesStandardTypeWithDataSize)
{
    const auto file = Encoded(kRasCodec, Pattern(5, 3, 3));

    ByteReader reader(file);
    for (const std::uint32_t expected : {0x59A66A95u, 5u, 3u, 24u, 48u, 1u, 0u, 0u})
        EXPECT_EQ(reader.U32Be(), expected);
    EXPECT_EQ(file.size(), 32u + 48);
}
