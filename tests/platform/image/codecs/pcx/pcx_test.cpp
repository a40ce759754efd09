// PCX from hand-made bytes: depths, planes, palettes, runs; and what is written.
#include "src/platform/image/codecs/pcx/pcx.h"

#include <algorithm>

#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

struct Shape {
    int lVersion = 5;
    int lEncoding = 1;
    int lBits = 8;
    int lPlanes = 1;
    std::uint32_t nWidth = 1;
    std::uint32_t nHeight = 1;
    std::uint32_t nBytesPerLine = 1;
    std::uint32_t nPaletteKind = 1;
    std::uint32_t nDotsX = 0;
    std::uint32_t nDotsY = 0;
    std::vector<std::uint8_t> aColours = {};  ///< of the header
};

static ByteMaker objHeader(const Shape& objShape)
{
    ByteMaker mk;
    mk.U8({10, objShape.lVersion, objShape.lEncoding, objShape.lBits});
    mk.U16Le({5, 6, 5 + objShape.nWidth - 1, 6 + objShape.nHeight - 1, objShape.nDotsX, objShape.nDotsY});
    mk.All(objShape.aColours).Zeros(48 - objShape.aColours.size()).U8({0, objShape.lPlanes});
    mk.U16Le({objShape.nBytesPerLine, objShape.nPaletteKind}).Zeros(58);
    return mk;
}

static ByteMaker& Palette(ByteMaker& mk)
{
    mk.U8({12});
    for (int i = 0; i < 256; ++i)
        mk.U8({i, 255 - i, 7});
    return mk;
}

static Levels aLevels(const ByteMaker& mk)
{
    const auto aImage = aDecoded(codecPcx, mk.aBytes());
    return aImage ? Levels{aImage->bytes.begin(), aImage->bytes.end()} : Levels{-1};
}

TEST(PcxReads, OneBitAsBlackAndWhiteWhateverThePalette)
{
    const Shape objShape{.lBits = 1, .nWidth = 10, .nBytesPerLine = 2, .aColours = {9, 9, 9, 8, 8, 8}};

    EXPECT_EQ(aLevels(objHeader(objShape).U8({0xC1, 0xD0, 0x40})),
              (Levels{255, 255, 0, 255, 0, 0, 0, 0, 0, 255}));
}

TEST(PcxReads, PlanesOfOneBitAsIndexesTheFirstPlaneBeingTheLowestBit)
{
    Shape objShape{.lBits = 1, .lPlanes = 4, .nWidth = 3, .nBytesPerLine = 2};
    for (std::uint8_t i = 0; i < 16; ++i)
        objShape.aColours.insert(objShape.aColours.end(), {i, 0, 0});

    EXPECT_EQ(aLevels(objHeader(objShape).U8({0x80, 0, 0x60, 0, 0x20, 0, 0xC1, 0xE0, 0})),
              (Levels{0, 0, 9, 0, 0, 10, 0, 0, 14}));
}

TEST(PcxReads, PackedIndexesFromTheHighBitsOn)
{
    Shape objTwo{
        .lBits = 2, .nWidth = 4, .nBytesPerLine = 1, .aColours = {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}};
    Shape objFour{.lBits = 4, .nWidth = 2, .nBytesPerLine = 1};
    for (std::uint8_t i = 0; i < 16; ++i)
        objFour.aColours.insert(objFour.aColours.end(), {i, i, i});

    EXPECT_EQ(aLevels(objHeader(objTwo).U8({0x1B})), (Levels{1, 2, 3, 4}));
    EXPECT_EQ(aLevels(objHeader(objFour).U8({0xA5})), (Levels{10, 5}));
}

TEST(PcxReads, TheColoursOfTheEgaWhereTheVersionHasNoPaletteOrItIsEmpty)
{
    Shape objShape{.lVersion = 3, .lBits = 4, .nWidth = 2, .nBytesPerLine = 1, .aColours = {9, 9, 9}};
    const Levels aBrownAndYellow = {0x00, 0x55, 0xAA, 0x55, 0xFF, 0xFF};

    EXPECT_EQ(aLevels(objHeader(objShape).U8({0x6E})), aBrownAndYellow);
    objShape.lVersion = 0;
    EXPECT_EQ(aLevels(objHeader(objShape).U8({0x6E})), aBrownAndYellow);
    objShape.lVersion = 5;
    EXPECT_NE(aLevels(objHeader(objShape).U8({0x6E})), aBrownAndYellow);
    objShape.aColours.clear();
    EXPECT_EQ(aLevels(objHeader(objShape).U8({0x6E})), aBrownAndYellow);
}

TEST(PcxReads, EightBitsThroughThePaletteAtTheEnd)
{
    ByteMaker mk = objHeader({.nWidth = 2, .nBytesPerLine = 2}).U8({3, 100});

    EXPECT_EQ(aLevels(Palette(mk)), (Levels{7, 252, 3, 7, 155, 100}));
}

TEST(PcxReads, EightBitsAsGreysWhereThereIsNoPaletteByRight)
{
    EXPECT_EQ(aLevels(objHeader({.lVersion = 3, .nWidth = 2, .nBytesPerLine = 2}).U8({3, 100})),
              (Levels{3, 100}));
    EXPECT_EQ(aLevels(objHeader({.nWidth = 2, .nBytesPerLine = 2, .nPaletteKind = 2}).U8({3, 100})),
              (Levels{3, 100}));
    EXPECT_EQ(aLevels(objHeader({.nWidth = 2, .nBytesPerLine = 2}).U8({3, 100})), Levels{-1})
        << "version 5 promises a palette of colours";
}

TEST(PcxReads, ThreePlanesAsColoursAndAFourthAsAlpha)
{
    EXPECT_EQ(aLevels(objHeader({.lPlanes = 3, .nWidth = 2, .nBytesPerLine = 2}).U8({1, 2, 3, 4, 5, 6})),
              (Levels{5, 3, 1, 6, 4, 2}));
    EXPECT_EQ(aLevels(objHeader({.lPlanes = 4, .nWidth = 1, .nBytesPerLine = 1}).U8({1, 2, 3, 4})),
              (Levels{3, 2, 1, 4}));
    EXPECT_EQ(aLevels(objHeader({.lPlanes = 4, .nWidth = 1, .nBytesPerLine = 1}).U8({1, 2, 3, 0})),
              (Levels{3, 2, 1}))
        << "alpha that was never set";
}

TEST(PcxReads, DataThatIsNotPacked)
{
    EXPECT_EQ(aLevels(objHeader({.lEncoding = 0, .lPlanes = 3, .nWidth = 1, .nBytesPerLine = 2})
                          .U8({0xC5, 0, 0xC6, 0, 0xC7, 0})),
              (Levels{0xC7, 0xC6, 0xC5}));
}

TEST(PcxReads, RunsThatGoOnInTheNextRowAndEmptyOnes)
{
    ByteMaker mk = objHeader({.nWidth = 4, .nHeight = 3, .nBytesPerLine = 4, .nPaletteKind = 2});

    EXPECT_EQ(aLevels(mk.U8({1, 0xC0, 99, 0xC9, 5, 0xC2, 6})), (Levels{1, 5, 5, 5, 5, 5, 5, 5, 5, 5, 6, 6}));
}

TEST(PcxReads, LongRowsOfRunsAndSingleBytes)
{
    // Long enough for the fast way through, with every kind of run in every place.
    ByteMaker mk = objHeader({.nWidth = 6000, .nHeight = 1, .nBytesPerLine = 6000, .nPaletteKind = 2});
    Levels aExpected;
    for (int i = 0; aExpected.size() < 5900; ++i) {
        const int lCount = i % 64, lValue = i * 7 % 256;
        mk.U8({0xC0 + lCount, lValue});
        aExpected.insert(aExpected.end(), static_cast<std::size_t>(lCount), lValue);
        for (int lSingle = 0; lSingle < i % 11; ++lSingle) {
            mk.U8({lSingle * 13});
            aExpected.push_back(lSingle * 13);
        }
    }
    for (; aExpected.size() < 6000; aExpected.push_back(1))
        mk.U8({1});
    aExpected.resize(6000);

    EXPECT_EQ(aLevels(mk), aExpected);
}

TEST(PcxReads, TheResolutionUnlessItIsTheSizeOfAScreenOrOfThePicture)
{
    const auto dDotsOf = [](std::uint32_t nX, std::uint32_t nY) {
        const auto aImage = aDecoded(
            codecPcx, objHeader({.lBits = 1, .nWidth = 8, .nDotsX = nX, .nDotsY = nY}).U8({0x11}).aBytes());
        return aImage ? aImage->dots_per_inch_x * 1000 + aImage->dots_per_inch_y : -1;
    };

    EXPECT_EQ(dDotsOf(300, 300), 300300);
    EXPECT_EQ(dDotsOf(204, 98), 204098);
    EXPECT_EQ(dDotsOf(640, 480), 0);
    EXPECT_EQ(dDotsOf(8, 1), 0);
    EXPECT_EQ(dDotsOf(300, 0), 0);
}

TEST(PcxReads, NoHeaderThatIsNone)
{
    const auto bRefused = [](Shape objShape) {
        const auto mk = objHeader(objShape).Zeros(300);
        return !codecPcx.Sniff(mk.aBytes(), "pcx") && !aDecoded(codecPcx, mk.aBytes());
    };

    EXPECT_FALSE(bRefused({.nPaletteKind = 2}));
    EXPECT_TRUE(bRefused({.lVersion = 6}));
    EXPECT_TRUE(bRefused({.lEncoding = 2}));
    EXPECT_TRUE(bRefused({.lBits = 3}));
    EXPECT_TRUE(bRefused({.lBits = 8, .lPlanes = 2}));
    EXPECT_TRUE(bRefused({.lBits = 1, .lPlanes = 5}));
    EXPECT_TRUE(bRefused({.lBits = 4, .lPlanes = 2}));
    EXPECT_TRUE(bRefused({.lPlanes = 0}));
    EXPECT_TRUE(bRefused({.nWidth = 0})) << "the right edge lies left of the left one";
    EXPECT_TRUE(bRefused({.nWidth = 9, .nBytesPerLine = 8})) << "a row that can't hold its pixels";
}

TEST(PcxReads, NothingLargerThanTheDataCanHold)
{
    EXPECT_EQ(aLevels(objHeader({.nWidth = 60000, .nHeight = 8000, .nBytesPerLine = 60000, .nPaletteKind = 2})
                          .Zeros(1000)),
              Levels{-1});
}

TEST(PcxWrites, TheResolutionAndAnEvenCountOfBytes)
{
    ImageBuffer aImage = aPattern(5, 2, 3);
    aImage.dots_per_inch_x = 299.6;
    aImage.dots_per_inch_y = 1e9;

    const auto aFile = aEncoded(codecPcx, aImage);

    EXPECT_EQ(Levels(aFile.begin(), aFile.begin() + 16),
              (Levels{10, 5, 1, 8, 0, 0, 0, 0, 4, 0, 1, 0, 300 % 256, 1, 255, 255}));
    EXPECT_EQ(aFile[65], 3) << "planes";
    EXPECT_EQ(aFile[66], 6) << "bytes of a row of a plane";
}

TEST(PcxWrites, EqualBytesAsRunsThatEndWithThePlane)
{
    ImageBuffer aImage = aPattern(70, 1, 1);
    std::fill(aImage.bytes.begin(), aImage.bytes.end(), std::uint8_t{7});

    const auto aFile = aEncoded(codecPcx, aImage);

    EXPECT_EQ(Levels(aFile.begin() + 128, aFile.begin() + 132), (Levels{0xC0 + 63, 7, 0xC0 + 7, 7}));
    EXPECT_EQ(aFile.size(), 128u + 4 + 769);
}
