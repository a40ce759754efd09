// Icons and cursors from hand-made bytes: masks, alpha, directories that lie.
#include "src/platform/image/codecs/ico/icon_directory.h"

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/ico/cur.h"
#include "src/platform/image/codecs/ico/ico.h"
#include "src/platform/image/codecs/png/png.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;
using Picture = std::vector<std::uint8_t>;

// A bitmap as icons hold it: nRows counts the mask's rows too.
static ByteMaker objBitmap(std::uint32_t nWidth, std::uint32_t nRows, std::uint32_t nBits,
                           std::uint32_t nColours = 0)
{
    ByteMaker mk;
    mk.U32Le({40, nWidth, nRows}).U16Le({1, nBits}).U32Le({0, 0, 0, 0, nColours, 0});
    return mk;
}

// 2 by 1 pixels of 24 bits, the second one masked out.
static Picture aSmall(int lBlue = 1)
{
    return objBitmap(2, 2, 24).U8({lBlue, 2, 3, 4, 5, 6, 0, 0}).U8({0x40, 0, 0, 0}).aBytes();
}

struct Entry {
    Picture aPicture;
    int lWidth = 2;
    int lHeight = 1;
    std::int64_t lOffset = -1;  ///< what the directory claims instead of the truth
    std::int64_t lSize = -1;
};

static std::vector<std::uint8_t> aIcon(const std::vector<Entry>& aEntries, std::uint32_t nKind = 1,
                                       int lCount = -1)
{
    ByteMaker mk;
    mk.U16Le({0, nKind, static_cast<std::uint32_t>(lCount < 0 ? static_cast<int>(aEntries.size()) : lCount)});
    std::size_t nOffset = 6 + 16 * aEntries.size();
    for (const Entry& objEntry : aEntries) {
        mk.U8({objEntry.lWidth, objEntry.lHeight, 0, 0, 1, 0, 0, 0});
        mk.U32Le(
            {static_cast<std::uint32_t>(objEntry.lSize < 0 ? std::ssize(objEntry.aPicture) : objEntry.lSize),
             static_cast<std::uint32_t>(objEntry.lOffset < 0 ? static_cast<std::int64_t>(nOffset)
                                                             : objEntry.lOffset)});
        nOffset += objEntry.aPicture.size();
    }
    for (const Entry& objEntry : aEntries)
        mk.All(objEntry.aPicture);
    return mk.aBytes();
}

static Levels aLevels(const std::vector<std::uint8_t>& aFile, std::int32_t lFrame = 0)
{
    const auto aImage = aDecoded(codecIco, aFile, lFrame);
    if (!aImage)
        return {-1};
    EXPECT_EQ(aImage->channels, 4);
    return {aImage->bytes.begin(), aImage->bytes.end()};
}

static std::int32_t lFramesOf(const std::vector<std::uint8_t>& aFile)
{
    InputFile objFile(aFile);
    const auto pDecoder = codecIco.Open(objFile);
    return pDecoder ? pDecoder->FrameCount() : 0;
}

TEST(IconBitmaps, AreTransparentWhereTheMaskSaysSo)
{
    EXPECT_EQ(aLevels(aIcon({{aSmall()}})), (Levels{1, 2, 3, 255, 4, 5, 6, 0}));
}

TEST(IconBitmaps, OfEveryDepthHaveTheirMaskBehindTheColours)
{
    const auto mkOne = objBitmap(2, 2, 1).U8({1, 1, 1, 0, 2, 2, 2, 0, 0x40, 0, 0, 0, 0x80, 0, 0, 0});
    const auto mkFour = objBitmap(2, 2, 4, 2).U8({1, 1, 1, 0, 2, 2, 2, 0, 0x01, 0, 0, 0, 0x80, 0, 0, 0});
    const auto mkEight = objBitmap(2, 2, 8, 2).U8({1, 1, 1, 0, 2, 2, 2, 0, 0, 1, 0, 0, 0x80, 0, 0, 0});
    const auto mkSixteen = objBitmap(2, 2, 16).U16Le({0x0421, 0x0842}).U8({0x80, 0, 0, 0});
    const Levels aExpected = {1, 1, 1, 0, 2, 2, 2, 255};

    EXPECT_EQ(aLevels(aIcon({{mkOne.aBytes()}})), aExpected);
    EXPECT_EQ(aLevels(aIcon({{mkFour.aBytes()}})), aExpected);
    EXPECT_EQ(aLevels(aIcon({{mkEight.aBytes()}})), aExpected);
    EXPECT_EQ(aLevels(aIcon({{mkSixteen.aBytes()}})), (Levels{8, 8, 8, 0, 16, 16, 16, 255}));
}

TEST(IconBitmaps, HaveRowsFromBelowInBothParts)
{
    const auto mk = objBitmap(1, 4, 24).U8({1, 1, 1, 0, 2, 2, 2, 0}).U8({0, 0, 0, 0, 0x80, 0, 0, 0});

    EXPECT_EQ(aLevels(aIcon({{mk.aBytes(), 1, 2}})), (Levels{2, 2, 2, 0, 1, 1, 1, 255}));
}

TEST(IconBitmaps, OfThirtyTwoBitsHaveTheirOwnAlpha)
{
    const auto mk = objBitmap(2, 2, 32).U8({1, 2, 3, 100, 4, 5, 6, 0}).U8({0xC0, 0, 0, 0});

    EXPECT_EQ(aLevels(aIcon({{mk.aBytes()}})), (Levels{1, 2, 3, 100, 4, 5, 6, 0}));
}

TEST(IconBitmaps, OfThirtyTwoBitsWithoutAnyAlphaGoByTheMask)
{
    const auto mk = objBitmap(2, 2, 32).U8({1, 2, 3, 0, 4, 5, 6, 0});
    ByteMaker mkMasked = mk;
    mkMasked.U8({0x80, 0, 0, 0});

    EXPECT_EQ(aLevels(aIcon({{mkMasked.aBytes()}})), (Levels{1, 2, 3, 0, 4, 5, 6, 255}));
    EXPECT_EQ(aLevels(aIcon({{mk.aBytes()}})), (Levels{1, 2, 3, 255, 4, 5, 6, 255})) << "and need none";
}

TEST(IconBitmaps, ThatOnlyInvertTheScreenShowWhatTheyInvert)
{
    // A beam: masked out as a whole, the first pixel inverts, the second one does nothing.
    const auto mk = objBitmap(2, 2, 1).U8({0, 0, 0, 0, 255, 255, 255, 0, 0x80, 0, 0, 0, 0xC0, 0, 0, 0});

    EXPECT_EQ(aLevels(aIcon({{mk.aBytes()}})), (Levels{0, 0, 0, 255, 0, 0, 0, 0}));
}

TEST(IconBitmaps, WhoseHeaderForgotTheMaskHaveNone)
{
    const auto mk = objBitmap(2, 2, 24).U8({1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0});

    EXPECT_EQ(aLevels(aIcon({{mk.aBytes(), 2, 2}})),
              (Levels{7, 8, 9, 255, 10, 11, 12, 255, 1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(IconBitmaps, WithoutTheMaskThatTheyNeedAreRefused)
{
    const auto mk = objBitmap(2, 2, 24).U8({1, 2, 3, 4, 5, 6, 0, 0});

    EXPECT_EQ(aLevels(aIcon({{mk.aBytes()}})), Levels{-1});
}

TEST(IconBitmaps, ThatNoIconHasAreRefused)
{
    ByteMaker mkRuns;
    mkRuns.U32Le({40, 2, 2}).U16Le({1, 8}).U32Le({1, 0, 0, 0, 1, 0}).U8({1, 1, 1, 0, 2, 0, 0, 1, 0, 0, 0, 0});

    EXPECT_EQ(aLevels(aIcon({{mkRuns.aBytes()}})), Levels{-1});
    EXPECT_EQ(aLevels(aIcon({{objBitmap(2, 1, 24).Zeros(50).aBytes(), 2, 7}})), Levels{-1})
        << "no row is left";
    EXPECT_EQ(aLevels(aIcon({{objBitmap(60000, 16000, 32).Zeros(50).aBytes()}})), Levels{-1});
    EXPECT_EQ(aLevels(aIcon({{Picture{}, 2, 1, 22, 0}})), Levels{-1}) << "nothing at all";
    EXPECT_EQ(aLevels(aIcon({{Picture{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0}}})), Levels{-1});
}

TEST(IconPngs, GiveFourChannelsWhateverTheyHold)
{
    for (const std::int32_t lChannels : {1, 3, 4}) {
        const ImageBuffer aInner = aPattern(9, 5, lChannels);
        const auto aImage = aDecoded(codecIco, aIcon({{aEncoded(codecPng, aInner), 9, 5}}));

        ASSERT_TRUE(aImage);
        EXPECT_EQ(aImage->channels, 4);
        EXPECT_EQ(aBgraOf(*aImage), aBgraOf(aInner));
    }
}

TEST(IconPngs, ThatAreCutSpoilOnlyTheirOwnPage)
{
    auto aPng = aEncoded(codecPng, aPattern(9, 5, 3));
    aPng.resize(aPng.size() / 2);
    const auto aFile = aIcon({{aPng, 9, 5}, {aSmall(20)}});

    EXPECT_EQ(aLevels(aFile, 0), Levels{-1});
    EXPECT_EQ(aLevels(aFile, 1)[0], 20);
}

TEST(IconDirectory, GivesEveryEntryAsAPageInTheFilesOrder)
{
    const auto aFile = aIcon({{aSmall(10)}, {aSmall(20)}, {aSmall(30)}});

    EXPECT_EQ(lFramesOf(aFile), 3);
    for (std::int32_t lFrame = 0; lFrame < 3; ++lFrame)
        EXPECT_EQ(aLevels(aFile, lFrame)[0], 10 + 10 * lFrame);
}

TEST(IconDirectory, SpoilsOnlyTheEntriesThatLie)
{
    const auto aFile = aIcon({{aSmall(10), 2, 1, 0x7FFFFFFF},
                              {aSmall(20)},
                              {aSmall(30), 2, 1, -1, 0x7FFFFFFF},
                              {aSmall(40), 2, 1, 3},
                              {aSmall(50), 2, 1, -1, 20},
                              {aSmall(60), 99, 99}});

    ASSERT_EQ(lFramesOf(aFile), 6);
    EXPECT_EQ(aLevels(aFile, 0), Levels{-1}) << "beyond the file";
    EXPECT_EQ(aLevels(aFile, 1)[0], 20);
    EXPECT_EQ(aLevels(aFile, 2), Levels{-1}) << "longer than the file";
    EXPECT_EQ(aLevels(aFile, 3), Levels{-1}) << "in the directory";
    EXPECT_EQ(aLevels(aFile, 4), Levels{-1}) << "too short";
    EXPECT_EQ(aLevels(aFile, 5)[0], 60) << "the bitmap knows its size better";
}

TEST(IconDirectory, MayNameOnePictureTwice)
{
    const auto aFile = aIcon({{aSmall(10)}, {Picture{}, 2, 1, 38, std::ssize(aSmall())}});

    EXPECT_EQ(aLevels(aFile, 0), aLevels(aFile, 1));
}

TEST(IconDirectory, HasNoMoreEntriesThanTheFileHasRoomFor)
{
    EXPECT_EQ(lFramesOf(aIcon({{aSmall()}}, 1, 65535)),
              static_cast<std::int32_t>((16 + aSmall().size()) / 16));
    EXPECT_EQ(lFramesOf(aIcon({}, 1, 5)), 0);
    EXPECT_EQ(lFramesOf(aIcon({{aSmall()}}, 1, 0)), 0);
    EXPECT_EQ(lFramesOf({}), 0);
}

TEST(IconSniff, TellsIconsFromCursors)
{
    const auto aIconFile = aIcon({{aSmall()}}, 1);
    const auto aCursorFile = aIcon({{aSmall()}}, 2);

    EXPECT_TRUE(codecIco.Sniff(aIconFile, ""));
    EXPECT_FALSE(codecCur.Sniff(aIconFile, ""));
    EXPECT_FALSE(codecIco.Sniff(aCursorFile, ""));
    EXPECT_TRUE(codecCur.Sniff(aCursorFile, ""));
    EXPECT_FALSE(codecIco.Sniff(aIcon({{aSmall()}}, 3), ""));
    EXPECT_TRUE(aDecoded(codecCur, aCursorFile));
}

TEST(IconSniff, NeedsOneEntryThatIsPossible)
{
    EXPECT_TRUE(codecIco.Sniff(aIcon({{aSmall(), 2, 1, 3}, {aSmall()}}), ""));
    EXPECT_FALSE(codecIco.Sniff(aIcon({{aSmall(), 2, 1, 3}}), ""));
    EXPECT_FALSE(codecIco.Sniff(aIcon({{aSmall(), 2, 1, -1, 0}}), ""));
    EXPECT_FALSE(codecIco.Sniff(ByteMaker().Zeros(100).aBytes(), ""));
    EXPECT_FALSE(codecIco.Sniff(Bytes{}, ""));
}

TEST(IconCodecs, OnlyRead)
{
    EXPECT_EQ(codecIco.Encode, nullptr);
    EXPECT_EQ(codecCur.Encode, nullptr);
    EXPECT_EQ(codecIco.lType, 12);
    EXPECT_EQ(codecCur.lType, 13);
}
