// Tests of PCX files: depths, planes, palettes and runs from hand-made bytes, and writing.
#include "src/platform/image/codecs/pcx/pcx.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

struct Shape {
    int version = 5;
    int encoding = 1;
    int bits = 8;
    int planes = 1;
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint32_t bytes_per_line = 1;
    std::uint32_t palette_kind = 1;
    std::uint32_t dots_x = 0;
    std::uint32_t dots_y = 0;
    std::vector<std::uint8_t> colours = {};  ///< of the header
};

static ByteMaker Header(const Shape& shape)
{
    ByteMaker maker;
    maker.U8({10, shape.version, shape.encoding, shape.bits});
    maker.U16Le({5, 6, 5 + shape.width - 1, 6 + shape.height - 1, shape.dots_x, shape.dots_y});
    maker.All(shape.colours).Zeros(48 - shape.colours.size()).U8({0, shape.planes});
    maker.U16Le({shape.bytes_per_line, shape.palette_kind}).Zeros(58);
    return maker;
}

static ByteMaker& Palette(ByteMaker& maker)
{
    maker.U8({12});
    for (int i = 0; i < 256; ++i)
        maker.U8({i, 255 - i, 7});
    return maker;
}

static Levels LevelsOf(const ByteMaker& maker)
{
    const auto image = Decoded(kPcxCodec, maker.Data());
    return image ? Levels{image->bytes.begin(), image->bytes.end()} : Levels{-1};
}

TEST(PcxDecoder, ReadsOneBitAsBlackAndWhite)
{
    const Shape shape{.bits = 1, .width = 10, .bytes_per_line = 2, .colours = {9, 9, 9, 8, 8, 8}};

    EXPECT_EQ(LevelsOf(Header(shape).U8({0xC1, 0xD0, 0x40})), (Levels{255, 255, 0, 255, 0, 0, 0, 0, 0, 255}));
}

TEST(PcxDecoder, CombinesOneBitPlanesFromLowestBit)
{
    Shape shape{.bits = 1, .planes = 4, .width = 3, .bytes_per_line = 2};
    for (std::uint8_t i = 0; i < 16; ++i)
        shape.colours.insert(shape.colours.end(), {i, 0, 0});

    EXPECT_EQ(LevelsOf(Header(shape).U8({0x80, 0, 0x60, 0, 0x20, 0, 0xC1, 0xE0, 0})),
              (Levels{0, 0, 9, 0, 0, 10, 0, 0, 14}));
}

TEST(PcxDecoder, ReadsPackedIndexesFromHighBits)
{
    Shape two{.bits = 2, .width = 4, .bytes_per_line = 1, .colours = {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}};
    Shape four{.bits = 4, .width = 2, .bytes_per_line = 1};
    for (std::uint8_t i = 0; i < 16; ++i)
        four.colours.insert(four.colours.end(), {i, i, i});

    EXPECT_EQ(LevelsOf(Header(two).U8({0x1B})), (Levels{1, 2, 3, 4}));
    EXPECT_EQ(LevelsOf(Header(four).U8({0xA5})), (Levels{10, 5}));
}

TEST(PcxDecoder, FallsBackToEgaPalette)
{
    Shape shape{.version = 3, .bits = 4, .width = 2, .bytes_per_line = 1, .colours = {9, 9, 9}};
    const Levels brown_and_yellow = {0x00, 0x55, 0xAA, 0x55, 0xFF, 0xFF};

    EXPECT_EQ(LevelsOf(Header(shape).U8({0x6E})), brown_and_yellow);
    shape.version = 0;
    EXPECT_EQ(LevelsOf(Header(shape).U8({0x6E})), brown_and_yellow);
    shape.version = 5;
    EXPECT_NE(LevelsOf(Header(shape).U8({0x6E})), brown_and_yellow);
    shape.colours.clear();
    EXPECT_EQ(LevelsOf(Header(shape).U8({0x6E})), brown_and_yellow);
}

TEST(PcxDecoder, MapsEightBitsThroughTrailingPalette)
{
    ByteMaker maker = Header({.width = 2, .bytes_per_line = 2}).U8({3, 100});

    EXPECT_EQ(LevelsOf(Palette(maker)), (Levels{7, 252, 3, 7, 155, 100}));
}

TEST(PcxDecoder, ReadsEightBitsAsGreyIfPaletteIsOptional)
{
    EXPECT_EQ(LevelsOf(Header({.version = 3, .width = 2, .bytes_per_line = 2}).U8({3, 100})),
              (Levels{3, 100}));
    EXPECT_EQ(LevelsOf(Header({.width = 2, .bytes_per_line = 2, .palette_kind = 2}).U8({3, 100})),
              (Levels{3, 100}));
    EXPECT_EQ(LevelsOf(Header({.width = 2, .bytes_per_line = 2}).U8({3, 100})), Levels{-1})
        << "version 5 requires a palette";
}

TEST(PcxDecoder, ReadsThreePlanesAsColourAndFourthAsAlpha)
{
    EXPECT_EQ(LevelsOf(Header({.planes = 3, .width = 2, .bytes_per_line = 2}).U8({1, 2, 3, 4, 5, 6})),
              (Levels{5, 3, 1, 6, 4, 2}));
    EXPECT_EQ(LevelsOf(Header({.planes = 4, .width = 1, .bytes_per_line = 1}).U8({1, 2, 3, 4})),
              (Levels{3, 2, 1, 4}));
    EXPECT_EQ(LevelsOf(Header({.planes = 4, .width = 1, .bytes_per_line = 1}).U8({1, 2, 3, 0})),
              (Levels{3, 2, 1}))
        << "alpha is zero everywhere";
}

TEST(PcxDecoder, ReadsUncompressedData)
{
    EXPECT_EQ(LevelsOf(Header({.encoding = 0, .planes = 3, .width = 1, .bytes_per_line = 2})
                           .U8({0xC5, 0, 0xC6, 0, 0xC7, 0})),
              (Levels{0xC7, 0xC6, 0xC5}));
}

TEST(PcxDecoder, ReadsRunsAcrossRowsAndEmptyRuns)
{
    ByteMaker maker = Header({.width = 4, .height = 3, .bytes_per_line = 4, .palette_kind = 2});

    EXPECT_EQ(LevelsOf(maker.U8({1, 0xC0, 99, 0xC9, 5, 0xC2, 6})),
              (Levels{1, 5, 5, 5, 5, 5, 5, 5, 5, 5, 6, 6}));
}

TEST(PcxDecoder, ReadsLongRowsOfRunsAndSingleBytes)
{
    // Long enough for the fast path, with runs of every length.
    ByteMaker maker = Header({.width = 6000, .height = 1, .bytes_per_line = 6000, .palette_kind = 2});
    Levels expected;
    for (int i = 0; expected.size() < 5900; ++i) {
        const int count = i % 64, value = i * 7 % 256;
        maker.U8({0xC0 + count, value});
        expected.insert(expected.end(), static_cast<std::size_t>(count), value);
        for (int single = 0; single < i % 11; ++single) {
            maker.U8({single * 13});
            expected.push_back(single * 13);
        }
    }
    for (; expected.size() < 6000; expected.push_back(1))
        maker.U8({1});
    expected.resize(6000);

    EXPECT_EQ(LevelsOf(maker), expected);
}

TEST(PcxDecoder, IgnoresResolutionThatIsScreenOrPictureSize)
{
    const auto dots_of = [](std::uint32_t x, std::uint32_t y) {
        const auto image =
            Decoded(kPcxCodec, Header({.bits = 1, .width = 8, .dots_x = x, .dots_y = y}).U8({0x11}).Data());
        return image ? image->dots_per_inch_x * 1000 + image->dots_per_inch_y : -1;
    };

    EXPECT_EQ(dots_of(300, 300), 300300);
    EXPECT_EQ(dots_of(204, 98), 204098);
    EXPECT_EQ(dots_of(640, 480), 0);
    EXPECT_EQ(dots_of(8, 1), 0);
    EXPECT_EQ(dots_of(300, 0), 0);
}

TEST(PcxDecoder, RefusesInvalidHeaders)
{
    const auto refused = [](Shape shape) {
        const auto maker = Header(shape).Zeros(300);
        return !kPcxCodec.sniff(maker.Data(), "pcx") && !Decoded(kPcxCodec, maker.Data());
    };

    EXPECT_FALSE(refused({.palette_kind = 2}));
    EXPECT_TRUE(refused({.version = 6}));
    EXPECT_TRUE(refused({.encoding = 2}));
    EXPECT_TRUE(refused({.bits = 3}));
    EXPECT_TRUE(refused({.bits = 8, .planes = 2}));
    EXPECT_TRUE(refused({.bits = 1, .planes = 5}));
    EXPECT_TRUE(refused({.bits = 4, .planes = 2}));
    EXPECT_TRUE(refused({.planes = 0}));
    EXPECT_TRUE(refused({.width = 0})) << "the right edge is left of the left edge";
    EXPECT_TRUE(refused({.width = 9, .bytes_per_line = 8})) << "a row that can't hold its pixels";
}

TEST(PcxDecoder, RefusesSizesLargerThanData)
{
    EXPECT_EQ(
        LevelsOf(
            Header({.width = 60000, .height = 8000, .bytes_per_line = 60000, .palette_kind = 2}).Zeros(1000)),
        Levels{-1});
}

TEST(PcxEncoder, WritesResolutionAndEvenStride)
{
    ImageBuffer image = Pattern(5, 2, 3);
    image.dots_per_inch_x = 299.6;
    image.dots_per_inch_y = 1e9;

    const auto file = Encoded(kPcxCodec, image);

    EXPECT_EQ(Levels(file.begin(), file.begin() + 16),
              (Levels{10, 5, 1, 8, 0, 0, 0, 0, 4, 0, 1, 0, 300 % 256, 1, 255, 255}));
    EXPECT_EQ(file[65], 3) << "planes";
    EXPECT_EQ(file[66], 6) << "bytes of a row of a plane";
}

TEST(PcxEncoder, EndsRunsWithEachPlane)
{
    ImageBuffer image = Pattern(70, 1, 1);
    std::fill(image.bytes.begin(), image.bytes.end(), std::uint8_t{7});

    const auto file = Encoded(kPcxCodec, image);

    EXPECT_EQ(Levels(file.begin() + 128, file.begin() + 132), (Levels{0xC0 + 63, 7, 0xC0 + 7, 7}));
    EXPECT_EQ(file.size(), 128u + 4 + 769);
}
