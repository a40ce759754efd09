// Tests of device-independent bitmaps from hand-made bytes: headers, palettes, masks, RLE.
#include "src/platform/image/dib/dib.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/byte_maker.h"

using Levels = std::vector<int>;

static constexpr std::uint32_t kTopDown2 = static_cast<std::uint32_t>(-2);

// A 40-byte header with 72 dpi and the given fields.
static ByteMaker InfoHeader(std::uint32_t width, std::uint32_t height, std::uint32_t bits,
                            std::uint32_t compression = 0, std::uint32_t colours = 0)
{
    ByteMaker maker;
    maker.U32Le({40, width, height}).U16Le({1, bits}).U32Le({compression, 0, 2835, 2835, colours, 0});
    return maker;
}

// A 108-byte V4 header with masks in the order red, green, blue, alpha.
static ByteMaker Version4Header(std::uint32_t width, std::uint32_t height, std::uint32_t bits,
                                std::uint32_t compression, std::initializer_list<std::uint32_t> masks)
{
    ByteMaker maker;
    maker.U32Le({108, width, height}).U16Le({1, bits}).U32Le({compression, 0, 0, 0, 0, 0});
    maker.U32Le(masks).Zeros(108 - 40 - 16);
    return maker;
}

static Levels LevelsOf(const ImageBuffer& image)
{
    return {image.bytes.begin(), image.bytes.end()};
}

// Decodes a valid bitmap in one piece.
static ImageBuffer DecodeValid(const ByteMaker& maker)
{
    ImageBuffer image;
    EXPECT_TRUE(DecodePackedDib(maker.Data(), image));
    return image;
}

static bool IsRefused(const ByteMaker& maker)
{
    ImageBuffer image;
    image.width = 77;
    const bool decoded = DecodePackedDib(maker.Data(), image);
    EXPECT_TRUE(decoded || image.width == 77) << "a refused decode changed the image";
    return !decoded;
}

TEST(DibRaw, ReadsPaddedBottomUpRows)
{
    const auto image = DecodeValid(InfoHeader(1, 2, 24).U8({1, 2, 3, 0}).U8({4, 5, 6, 0}));

    EXPECT_EQ(image.width, 1);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(image.channels, 3);
    EXPECT_EQ(LevelsOf(image), (Levels{4, 5, 6, 1, 2, 3}));
    EXPECT_NEAR(image.dots_per_inch_x, 72.0, 0.01);
    EXPECT_NEAR(image.dots_per_inch_y, 72.0, 0.01);
}

TEST(DibRaw, ReadsTopDownRowsForNegativeHeight)
{
    EXPECT_EQ(LevelsOf(DecodeValid(InfoHeader(1, kTopDown2, 24).U8({1, 2, 3, 0, 4, 5, 6, 0}))),
              (Levels{1, 2, 3, 4, 5, 6}));
}

TEST(DibRaw, ToleratesMissingPaddingButNotMissingPixels)
{
    EXPECT_EQ(LevelsOf(DecodeValid(InfoHeader(1, 2, 24).U8({1, 2, 3, 0, 4, 5, 6}))),
              (Levels{4, 5, 6, 1, 2, 3}));
    EXPECT_TRUE(IsRefused(InfoHeader(1, 2, 24).U8({1, 2, 3, 0, 4, 5})));
}

TEST(DibRaw, ReturnsOneChannelForGreyPalette)
{
    const auto image =
        DecodeValid(InfoHeader(3, 1, 8, 0, 2).U8({10, 10, 10, 0, 200, 200, 200, 0}).U8({0, 1, 2, 0}));

    EXPECT_EQ(image.channels, 1);
    EXPECT_EQ(LevelsOf(image), (Levels{10, 200, 0})) << "an index beyond the palette is black";
}

TEST(DibRaw, ReturnsThreeChannelsForColourPalette)
{
    EXPECT_EQ(
        LevelsOf(DecodeValid(InfoHeader(2, 1, 8, 0, 2).U8({10, 20, 30, 0, 40, 50, 60, 0}).U8({1, 0, 0, 0}))),
        (Levels{40, 50, 60, 10, 20, 30}));
}

TEST(DibRaw, StartsSmallIndexesAtHighBit)
{
    ByteMaker one =
        InfoHeader(10, 1, 1).U8({0, 0, 0, 0, 255, 255, 255, 0}).U8({0b10110000, 0b01000000, 0, 0});
    ByteMaker two = InfoHeader(5, 1, 2, 0, 4);
    two.U8({0, 0, 0, 0, 1, 1, 1, 0, 2, 2, 2, 0, 3, 3, 3, 0}).U8({0b00011011, 0b10000000, 0, 0});
    ByteMaker four = InfoHeader(3, 1, 4, 0, 16);
    for (int i = 0; i < 16; ++i)
        four.U8({i, 0, 0, 0});
    four.U8({0xA5, 0xF0, 0, 0});

    EXPECT_EQ(LevelsOf(DecodeValid(one)), (Levels{255, 0, 255, 255, 0, 0, 0, 0, 0, 255}));
    EXPECT_EQ(LevelsOf(DecodeValid(two)), (Levels{0, 1, 2, 3, 2}));
    EXPECT_EQ(LevelsOf(DecodeValid(four)), (Levels{10, 0, 0, 5, 0, 0, 15, 0, 0}));
}

TEST(DibRaw, KeepsTwoColoursOfOneBitPixels)
{
    EXPECT_EQ(LevelsOf(DecodeValid(InfoHeader(2, 1, 1).U8({255, 0, 0, 0, 0, 0, 255, 0}).U8({0x40, 0, 0, 0}))),
              (Levels{255, 0, 0, 0, 0, 255}));
}

TEST(DibRaw, UsesIndexesAsLevelsWithoutPalette)
{
    const auto maker = InfoHeader(3, 1, 4);
    ImageBuffer image;

    ASSERT_TRUE(DecodeDib(maker.Data(), ByteMaker().U8({0x0F, 0x80, 0, 0}).Data(), image));

    EXPECT_EQ(LevelsOf(image), (Levels{0, 255, 136}));
}

TEST(DibRaw, ReadsSixteenBitsAs555UnlessMasksDiffer)
{
    ByteMaker masks = InfoHeader(2, 1, 16, 3);
    masks.U32Le({0xF800, 0x07E0, 0x001F}).U16Le({0xF800, 0x07E0});

    EXPECT_EQ(LevelsOf(DecodeValid(InfoHeader(2, 1, 16).U16Le({0x7C00, 0x0210}))),
              (Levels{0, 0, 255, 132, 132, 0}));
    EXPECT_EQ(LevelsOf(DecodeValid(masks)), (Levels{0, 0, 255, 0, 255, 0}));
}

TEST(DibRaw, ScalesAnyMaskToEightBitsWithRounding)
{
    // Masks: red 1 bit, green 10 bits, blue none.
    ByteMaker maker = InfoHeader(3, 1, 32, 3);
    maker.U32Le({0x80000000, 0x3FF, 0}).U32Le({0x80000000, 0x3FF, 0x201});

    EXPECT_EQ(LevelsOf(DecodeValid(maker)), (Levels{0, 0, 255, 0, 255, 0, 0, 128, 0}));
}

TEST(DibRaw, ToleratesMasksWithGapsOrAllBits)
{
    ByteMaker maker = InfoHeader(1, 1, 32, 3);
    maker.U32Le({0xFFFFFFFF, 0x80000001, 0xFF}).U32Le({0xFFFFFFFF});

    EXPECT_EQ(LevelsOf(DecodeValid(maker)), (Levels{255, 255, 255}));
}

TEST(DibRaw, TreatsPlainThirtyTwoBitsAsOpaque)
{
    const auto image =
        DecodeValid(InfoHeader(5, 1, 32).U32Le({0x10203, 0x04050607, 0x08090A0B, 0xC0D0E0F, 0x112233}));

    EXPECT_EQ(image.channels, 3);
    EXPECT_EQ(LevelsOf(image), (Levels{3, 2, 1, 7, 6, 5, 11, 10, 9, 15, 14, 13, 0x33, 0x22, 0x11}));
}

TEST(DibAlpha, IsUsedIfHeaderHasItsMask)
{
    const auto v4 = DecodeValid(
        Version4Header(2, 1, 32, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}).U32Le({0x80102030, 0x00FFFFFF}));
    ByteMaker behind = InfoHeader(1, 1, 16, 6);
    behind.U32Le({0xF00, 0xF0, 0xF, 0xF000}).U16Le({0x8F10, 0});

    EXPECT_EQ(LevelsOf(v4), (Levels{0x30, 0x20, 0x10, 0x80, 255, 255, 255, 0}));
    EXPECT_EQ(LevelsOf(DecodeValid(behind)), (Levels{0, 17, 255, 136}));
}

TEST(DibAlpha, IsUsedInPlainBitmapWithMaskInLongHeader)
{
    EXPECT_EQ(DecodeValid(Version4Header(1, 1, 32, 0, {0, 0, 0, 0xFF000000}).U32Le({0x80102030})).channels,
              4);
    EXPECT_EQ(DecodeValid(Version4Header(1, 1, 32, 0, {0, 0, 0, 0}).U32Le({0x80102030})).channels, 3);
}

TEST(DibAlpha, IsIgnoredIfZeroEverywhere)
{
    const auto image = DecodeValid(
        Version4Header(2, 1, 32, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}).U32Le({0x00102030, 0x00405060}));

    EXPECT_EQ(LevelsOf(image), (Levels{0x30, 0x20, 0x10, 0x60, 0x50, 0x40}));
}

TEST(DibHeaders, ReadThreeBytePaletteOfOs2Version1)
{
    ByteMaker maker;
    maker.U32Le({12}).U16Le({2, 1, 1, 1}).U8({1, 2, 3, 4, 5, 6}).U8({0x40, 0, 0, 0});

    EXPECT_EQ(LevelsOf(DecodeValid(maker)), (Levels{1, 2, 3, 4, 5, 6}));
}

TEST(DibHeaders, ReadPaletteOfOs2Version2WithThreeOrFourBytes)
{
    ByteMaker header;
    header.U32Le({64, 2, 1}).U16Le({1, 1}).Zeros(48);
    ByteMaker short_palette = header, long_palette = header;
    short_palette.U8({1, 2, 3, 4, 5, 6});
    long_palette.U8({1, 2, 3, 0, 4, 5, 6, 0});

    for (const ByteMaker& maker : {short_palette, long_palette}) {
        ImageBuffer image;
        ASSERT_TRUE(DecodeDib(maker.Data(), ByteMaker().U8({0x40, 0, 0, 0}).Data(), image));
        EXPECT_EQ(LevelsOf(image), (Levels{1, 2, 3, 4, 5, 6}));
    }
}

TEST(DibHeaders, AcceptTruncatedOs2Version2)
{
    ByteMaker mk16;
    mk16.U32Le({16, 1, 1}).U16Le({1, 24}).U8({7, 8, 9, 0});
    ByteMaker mk64;
    mk64.U32Le({64, 1, 1}).U16Le({1, 24}).U32Le({0, 0, 0, 0, 0, 0}).Zeros(24).U8({7, 8, 9, 0});

    EXPECT_EQ(LevelsOf(DecodeValid(mk16)), (Levels{7, 8, 9}));
    EXPECT_EQ(LevelsOf(DecodeValid(mk64)), (Levels{7, 8, 9}));
}

TEST(DibHeaders, LocateProfileInVersion5)
{
    ByteMaker maker;
    maker.U32Le({124, 1, 1}).U16Le({1, 24}).U32Le({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x4D424544}).Zeros(48);
    maker.U32Le({4, 128, 500, 0}).U8({1, 2, 3, 0});
    DibHeader header;

    ASSERT_TRUE(ReadDibHeader(maker.Data(), header));

    EXPECT_EQ(header.bits_offset, 124u);
    EXPECT_EQ(header.profile_offset, 128u);
    EXPECT_EQ(header.profile_size, 500u);
}

TEST(DibHeaders, AreRefusedIfNoProgramWritesThem)
{
    EXPECT_TRUE(IsRefused(InfoHeader(0, 1, 24).Zeros(64))) << "no width";
    EXPECT_TRUE(IsRefused(InfoHeader(1, 0, 24).Zeros(64))) << "no height";
    EXPECT_TRUE(IsRefused(InfoHeader(0x80000001, 1, 24).Zeros(64))) << "negative width";
    EXPECT_TRUE(IsRefused(InfoHeader(1, 0x80000000, 24).Zeros(64))) << "a height that can't be negated";
    EXPECT_TRUE(IsRefused(InfoHeader(1, 1, 0).Zeros(64)));
    EXPECT_TRUE(IsRefused(InfoHeader(1, 1, 7).Zeros(64)));
    EXPECT_TRUE(IsRefused(InfoHeader(1, 1, 64).Zeros(64)));
    EXPECT_TRUE(IsRefused(InfoHeader(1, 1, 24, 1).Zeros(64))) << "runs of 24 bits";
    EXPECT_TRUE(IsRefused(InfoHeader(1, 1, 24, 3).Zeros(64))) << "masks of 24 bits";
    EXPECT_TRUE(IsRefused(InfoHeader(1, 1, 24, 99).Zeros(64)));
    EXPECT_TRUE(IsRefused(InfoHeader(1, 1, 8, 0, 0xFFFFFFFF).Zeros(2000))) << "a palette of 16 gigabytes";
    EXPECT_TRUE(IsRefused(ByteMaker().U32Le({15}).Zeros(64)));
    EXPECT_TRUE(IsRefused(ByteMaker().U32Le({40}).Zeros(20)));
    EXPECT_TRUE(IsRefused(ByteMaker()));
}

TEST(DibLimits, RefuseSizesLargerThanData)
{
    EXPECT_TRUE(IsRefused(InfoHeader(60000, 8000, 24).Zeros(64)));
    EXPECT_TRUE(IsRefused(InfoHeader(65501, 1, 8, 0, 1).Zeros(70000)));
    EXPECT_TRUE(IsRefused(InfoHeader(0x7FFFFFFF, 0x7FFFFFFF, 32).Zeros(64)));
    EXPECT_TRUE(IsRefused(InfoHeader(60000, 8000, 8, 1, 1).U8({0, 0, 0, 0, 5, 0, 0, 1}))) << "runs";
}

static ByteMaker Rle8(std::uint32_t width, std::uint32_t height)
{
    ByteMaker maker = InfoHeader(width, height, 8, 1, 10);
    for (int i = 0; i < 10; ++i)
        maker.U8({i, i, i, 0});
    return maker;
}

static ByteMaker Rle4(std::uint32_t width, std::uint32_t height)
{
    ByteMaker maker = InfoHeader(width, height, 4, 2, 16);
    for (int i = 0; i < 16; ++i)
        maker.U8({i, i, i, 0});
    return maker;
}

TEST(DibRuns, FillRowsFromBottom)
{
    EXPECT_EQ(LevelsOf(DecodeValid(Rle8(5, 2).U8({2, 7, 0, 3, 1, 2, 3, 0, 0, 0, 5, 9, 0, 1}))),
              (Levels{9, 9, 9, 9, 9, 7, 7, 1, 2, 3}));
    EXPECT_EQ(LevelsOf(DecodeValid(Rle4(7, 1).U8({3, 0x12, 0, 3, 0x34, 0x50, 1, 0xF0, 0, 1}))),
              (Levels{1, 2, 1, 3, 4, 5, 15}));
    EXPECT_EQ(LevelsOf(DecodeValid(Rle4(5, 1).U8({0, 5, 0x12, 0x34, 0x50, 0, 0, 1}))),
              (Levels{1, 2, 3, 4, 5}))
        << "literals end on an even count of bytes";
}

TEST(DibRuns, LeaveIndexZeroWhereDeltaSkips)
{
    EXPECT_EQ(LevelsOf(DecodeValid(Rle8(3, 3).U8({1, 4, 0, 2, 1, 1, 1, 6, 0, 0, 1, 8, 0, 1}))),
              (Levels{8, 0, 0, 0, 0, 6, 4, 0, 0}));
    EXPECT_EQ(LevelsOf(DecodeValid(Rle8(2, 4).U8({1, 4, 0, 2, 0, 3, 1, 6, 0, 1}))),
              (Levels{0, 6, 0, 0, 0, 0, 4, 0}));
}

TEST(DibRuns, MayEndRowsAndPicturesEarly)
{
    EXPECT_EQ(LevelsOf(DecodeValid(Rle8(2, 3).U8({1, 4, 0, 0, 1, 5, 0, 1}))), (Levels{0, 0, 5, 0, 4, 0}));
}

TEST(DibRuns, AreClippedAtEdges)
{
    EXPECT_EQ(
        LevelsOf(DecodeValid(Rle8(2, 2).U8({255, 3, 0, 0, 0, 200}).Zeros(200).U8({0, 0, 9, 9, 0, 0, 9, 9}))),
        (Levels{0, 0, 3, 3}));
    EXPECT_EQ(LevelsOf(DecodeValid(Rle8(2, 2).U8({1, 3, 0, 2, 255, 255, 1, 4, 0, 1}))), (Levels{0, 0, 3, 0}));
}

TEST(DibRuns, AreRefusedIfRowsAreIncomplete)
{
    EXPECT_TRUE(IsRefused(Rle8(2, 2).U8({2, 3, 0, 0, 1, 4})));
    EXPECT_TRUE(IsRefused(Rle8(2, 2).U8({2, 3, 0, 0, 2})));
    EXPECT_TRUE(IsRefused(Rle8(2, 2).U8({2, 3, 0, 0, 0, 200, 1, 1})));
    EXPECT_TRUE(IsRefused(Rle8(2, 2)));
    EXPECT_FALSE(IsRefused(Rle8(2, 2).U8({2, 3, 0, 0, 2, 4}))) << "only the end mark is missing";
    EXPECT_FALSE(IsRefused(Rle8(2, 2).U8({2, 3, 0, 0, 2, 4, 0, 0})));
}

TEST(DibRuns, AreReadWithTwentyFourBits)
{
    ByteMaker maker;
    maker.U32Le({64, 3, 1}).U16Le({1, 24}).U32Le({4, 0, 0, 0, 0, 0}).Zeros(24);

    EXPECT_EQ(LevelsOf(DecodeValid(maker.U8({2, 1, 2, 3, 1, 4, 5, 6, 0, 1}))),
              (Levels{1, 2, 3, 1, 2, 3, 4, 5, 6}));
}

TEST(DibRuns, TerminateForAnyBytes)
{
    // A small generator makes failures reproducible.
    std::uint32_t state = 1;
    const auto next = [&state] {
        return state = state * 1664525 + 1013904223, static_cast<int>(state >> 24);
    };
    for (int attempt = 0; attempt < 3000; ++attempt) {
        ByteMaker maker = attempt % 2 == 0 ? Rle8(17, 9) : Rle4(17, 9);
        for (int i = next() % 120; i > 0; --i)
            maker.U8({next() % 4 == 0 ? next() % 4 : next()});
        ImageBuffer image;
        if (DecodePackedDib(maker.Data(), image)) {
            ASSERT_EQ(image.bytes.size(), 17u * 9u);
        }
    }
}
