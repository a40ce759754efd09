// Targa files from hand-made bytes: kinds, corners, maps, alpha, runs; and the texts that are written.
#include "src/platform/image/codecs/tga/tga.h"

#include <algorithm>

#include "src/platform/image/codecs/tga/tga_header.h"
#include "tests/platform/image/support/byte_maker.h"
#include "tests/platform/image/support/raster_checks.h"

using Levels = std::vector<int>;

static constexpr int kFromRight = 16, kFromTop = 32;

static ByteMaker objHeader(int lKind, std::uint32_t nWidth, std::uint32_t nHeight, int lBits,
                           int lDescriptor = kFromTop)
{
    ByteMaker mk;
    mk.U8({0, 0, lKind}).Zeros(9).U16Le({nWidth, nHeight}).U8({lBits, lDescriptor});
    return mk;
}

static ByteMaker objMappedHeader(std::uint32_t nWidth, int lBits, std::uint32_t nFirst, std::uint32_t nLength,
                                 int lMapBits, int lDescriptor = kFromTop)
{
    ByteMaker mk;
    mk.U8({0, 1, 1})
        .U16Le({nFirst, nLength})
        .U8({lMapBits, 0, 0, 0, 0})
        .U16Le({nWidth, 1})
        .U8({lBits, lDescriptor});
    return mk;
}

// Adds an extension area that says lAlpha of the alpha, and the footer.
static ByteMaker objWithExtension(ByteMaker mk, int lAlpha)
{
    const auto nExtension = static_cast<std::uint32_t>(mk.nSize());
    mk.U16Le({495}).Zeros(492).U8({lAlpha});
    mk.U32Le({nExtension, 0}).Text("TRUEVISION-XFILE.").U8({0});
    return mk;
}

static Levels aLevels(const ByteMaker& mk)
{
    const auto aImage = aDecoded(codecTga, mk.aBytes());
    return aImage ? Levels{aImage->bytes.begin(), aImage->bytes.end()} : Levels{-1};
}

TEST(TgaReads, RowsFromEachOfTheFourCorners)
{
    const auto aFrom = [](int lDescriptor) {
        return aLevels(objHeader(3, 2, 2, 8, lDescriptor).U8({1, 2, 3, 4}));
    };

    EXPECT_EQ(aFrom(0), (Levels{3, 4, 1, 2}));
    EXPECT_EQ(aFrom(kFromTop), (Levels{1, 2, 3, 4}));
    EXPECT_EQ(aFrom(kFromRight), (Levels{4, 3, 2, 1}));
    EXPECT_EQ(aFrom(kFromRight | kFromTop), (Levels{2, 1, 4, 3}));
}

TEST(TgaReads, RowsFromTheRightInEveryCountOfChannels)
{
    EXPECT_EQ(aLevels(objHeader(2, 3, 1, 24, kFromTop | kFromRight).U8({1, 2, 3, 4, 5, 6, 7, 8, 9})),
              (Levels{7, 8, 9, 4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(aLevels(objHeader(2, 2, 1, 32, kFromTop | kFromRight | 8).U8({1, 2, 3, 4, 5, 6, 7, 8})),
              (Levels{5, 6, 7, 8, 1, 2, 3, 4}));
}

TEST(TgaReads, FifteenAndSixteenBits)
{
    EXPECT_EQ(aLevels(objHeader(2, 2, 1, 15).U16Le({0x7C00, 0x8210})), (Levels{0, 0, 255, 132, 132, 0}));
    EXPECT_EQ(aLevels(objHeader(2, 2, 1, 16).U16Le({0x7C00, 0x8210})), (Levels{0, 0, 255, 132, 132, 0}))
        << "no bit of alpha is counted";
    EXPECT_EQ(aLevels(objHeader(2, 2, 1, 16, kFromTop | 1).U16Le({0x7C00, 0x8210})),
              (Levels{0, 0, 255, 0, 132, 132, 0, 255}));
}

TEST(TgaReads, MapsOfEveryDepthAndTheirFirstIndex)
{
    EXPECT_EQ(aLevels(objMappedHeader(3, 8, 5, 2, 24).U8({1, 2, 3, 4, 5, 6}).U8({6, 5, 0})),
              (Levels{4, 5, 6, 1, 2, 3, 0, 0, 0}));
    EXPECT_EQ(aLevels(objMappedHeader(2, 8, 0, 2, 15).U16Le({0x7C00, 0x001F}).U8({1, 0})),
              (Levels{255, 0, 0, 0, 0, 255}));
    EXPECT_EQ(aLevels(objMappedHeader(2, 8, 0, 2, 32).U8({1, 2, 3, 4, 5, 6, 7, 8}).U8({1, 0})),
              (Levels{5, 6, 7, 8, 1, 2, 3, 4}));
    EXPECT_EQ(aLevels(objMappedHeader(2, 8, 0, 2, 24).U8({7, 7, 7, 9, 9, 9}).U8({1, 0})), (Levels{9, 7}))
        << "a map of greys";
    EXPECT_EQ(aLevels(objMappedHeader(2, 16, 300, 2, 24).U8({7, 7, 7, 9, 9, 9}).U16Le({301, 65535})),
              (Levels{9, 0}));
}

TEST(TgaReads, PastTheIdAndAMapThatIsNotUsed)
{
    ByteMaker mk;
    mk.U8({5, 1, 2}).U16Le({0, 2}).U8({24, 0, 0, 0, 0}).U16Le({1, 1}).U8({24, kFromTop});

    EXPECT_EQ(aLevels(mk.Text("hello").Zeros(6).U8({1, 2, 3})), (Levels{1, 2, 3}));
}

TEST(TgaReads, GreysWithAlpha)
{
    EXPECT_EQ(aLevels(objHeader(3, 2, 1, 16, kFromTop | 8).U8({10, 20, 30, 40})),
              (Levels{10, 10, 10, 20, 30, 30, 30, 40}));
}

TEST(TgaReads, PacketsOfRepeatedAndOfSinglePixels)
{
    EXPECT_EQ(aLevels(objHeader(10, 2, 2, 24).U8({0x81, 1, 2, 3, 1, 4, 5, 6, 7, 8, 9})),
              (Levels{1, 2, 3, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(aLevels(objHeader(11, 2, 2, 8).U8({0x80, 9, 0x82, 7})), (Levels{9, 7, 7, 7}))
        << "a packet goes on in the next row";
    EXPECT_EQ(aLevels(objHeader(11, 2, 2, 8).U8({0x80, 9, 2, 7, 6, 5})), (Levels{9, 7, 6, 5}));
    EXPECT_EQ(aLevels(objHeader(11, 2, 1, 8).U8({0xFF, 9})), (Levels{9, 9})) << "a packet too long";
    EXPECT_EQ(aLevels(objHeader(9, 1, 1, 8).U8({0, 0})), Levels{-1}) << "indexes without a map";
}

TEST(TgaReads, NoPacketsThatEndTooSoon)
{
    for (const auto& aEnd :
         {std::vector<std::uint8_t>{}, {0x81}, {0x81, 1, 2}, {1, 1, 2, 3}, {0x80, 1, 2, 3}})
        EXPECT_EQ(aLevels(objHeader(10, 2, 1, 24).All(aEnd)), Levels{-1});
}

TEST(TgaAlpha, CountsInThirtyTwoBitsUnlessItIsNowhereSet)
{
    const Levels aWith = {1, 2, 3, 4, 5, 6, 7, 8};

    EXPECT_EQ(aLevels(objHeader(2, 2, 1, 32, kFromTop | 8).U8({1, 2, 3, 4, 5, 6, 7, 8})), aWith);
    EXPECT_EQ(aLevels(objHeader(2, 2, 1, 32).U8({1, 2, 3, 4, 5, 6, 7, 8})), aWith)
        << "not counted, yet there";
    EXPECT_EQ(aLevels(objHeader(2, 2, 1, 32, kFromTop | 8).U8({1, 2, 3, 0, 5, 6, 7, 0})),
              (Levels{1, 2, 3, 5, 6, 7}));
}

TEST(TgaAlpha, CountsAsTheExtensionAreaSays)
{
    const ByteMaker mk = objHeader(2, 2, 1, 32, kFromTop | 8).U8({10, 20, 30, 128, 5, 6, 7, 0});
    const Levels aOpaque = {10, 20, 30, 5, 6, 7};

    EXPECT_EQ(aLevels(objWithExtension(mk, 0)), aOpaque);
    EXPECT_EQ(aLevels(objWithExtension(mk, 1)), aOpaque);
    EXPECT_EQ(aLevels(objWithExtension(mk, 2)), aOpaque);
    EXPECT_EQ(aLevels(objWithExtension(mk, 3)), (Levels{10, 20, 30, 128, 5, 6, 7, 0}));
    EXPECT_EQ(aLevels(objWithExtension(mk, 4)), (Levels{20, 40, 60, 128, 5, 6, 7, 0})) << "divided by alpha";
    EXPECT_EQ(aLevels(objWithExtension(mk, 99)), (Levels{10, 20, 30, 128, 5, 6, 7, 0})) << "an unknown word";
}

TEST(TgaAlpha, IsClampedWhereColoursWereMoreThanTheirAlpha)
{
    EXPECT_EQ(aLevels(objWithExtension(objHeader(2, 1, 1, 32).U8({200, 100, 50, 100}), 4)),
              (Levels{255, 255, 128, 100}));
}

TEST(TgaAlpha, DoesNotRelyOnAFooterThatLies)
{
    ByteMaker mk = objHeader(2, 1, 1, 32, kFromTop | 8).U8({1, 2, 3, 4}).Zeros(600);
    for (const std::uint32_t nExtension : {0u, 17u, 200u, 0xFFFFFFFFu}) {
        ByteMaker mkFooter = mk;
        mkFooter.U32Le({nExtension, 0}).Text("TRUEVISION-XFILE.").U8({0});
        EXPECT_EQ(aLevels(mkFooter), (Levels{1, 2, 3, 4})) << nExtension;
    }
}

TEST(TgaSniff, GoesByExtensionAndAPossibleHeader)
{
    const auto bKnown = [](const ByteMaker& mk, std::string_view sExtension = "tga") {
        return codecTga.Sniff(mk.aBytes(), sExtension);
    };

    for (const char* sExtension : {"tga", "targa", "vda", "icb", "vst"})
        EXPECT_TRUE(bKnown(objHeader(2, 1, 1, 24), sExtension));
    EXPECT_FALSE(bKnown(objHeader(2, 1, 1, 24), "jpg"));
    EXPECT_FALSE(bKnown(objHeader(2, 1, 1, 24), ""));
    EXPECT_FALSE(bKnown(objHeader(2, 0, 1, 24)));
    EXPECT_FALSE(bKnown(objHeader(2, 1, 1, 17)));
    EXPECT_FALSE(bKnown(objHeader(2, 1, 1, 8)));
    EXPECT_FALSE(bKnown(objHeader(3, 1, 1, 24)));
    EXPECT_FALSE(bKnown(objHeader(0, 1, 1, 24)));
    EXPECT_FALSE(bKnown(objHeader(32, 1, 1, 24)));
    EXPECT_FALSE(bKnown(objHeader(33, 1, 1, 24)));
    EXPECT_FALSE(bKnown(objHeader(1, 1, 1, 8))) << "indexes without a map";
    EXPECT_FALSE(bKnown(objHeader(2, 1, 1, 24, 0x40))) << "interleaved";
    EXPECT_FALSE(bKnown(objMappedHeader(1, 8, 0, 1, 8))) << "a map of no known depth";
    EXPECT_FALSE(bKnown(ByteMaker().Text("GIF89a, and then some more")));
    EXPECT_FALSE(bKnown(ByteMaker().Zeros(17)));
}

TEST(TgaReads, NothingLargerThanTheDataCanHold)
{
    EXPECT_EQ(aLevels(objHeader(2, 60000, 8000, 24).Zeros(5000)), Levels{-1});
    EXPECT_EQ(aLevels(objHeader(10, 60000, 8000, 24).Zeros(5000)), Levels{-1});
    EXPECT_EQ(aLevels(objHeader(2, 65535, 1, 24).Zeros(200000)), Levels{-1}) << "too wide";
}

// The extension area of what is written for an 8 by 2 picture that isn't packed.
static std::vector<std::uint8_t> aWrittenArea(const ImageInfoTexts& objInfo, std::int32_t lChannels = 3)
{
    SaveSettings objSettings;
    objSettings.objTexts = objInfo;
    const auto aFile = aEncoded(codecTga, aNoise(8, 2, lChannels), objSettings);
    EXPECT_EQ(aFile.size(), 18u + 16 * static_cast<std::size_t>(lChannels) + 495 + 26);
    return {aFile.end() - 26 - 495, aFile.end() - 26};
}

static ImageInfoTexts objTexts(const std::string& sTitle, const std::string& sDescription,
                               const std::string& sDateTime, const std::string& sAuthor)
{
    ImageInfoTexts objResult;
    objResult.sTitle = sTitle;
    objResult.sDescription = sDescription;
    objResult.sDateTime = sDateTime;
    objResult.sAuthor = sAuthor;
    return objResult;
}

static std::string sTextAt(const std::vector<std::uint8_t>& aArea, std::size_t nOffset)
{
    return reinterpret_cast<const char*>(aArea.data() + nOffset);
}

TEST(TgaTexts, GoToTheirFields)
{
    const auto aArea = aWrittenArea(objTexts("The title", "What is seen", "2021-03-04 15:06:07", "Somebody"));

    EXPECT_EQ(ByteReader(aArea).U16Le(), 495);
    EXPECT_EQ(sTextAt(aArea, 2), "Somebody");
    EXPECT_EQ(sTextAt(aArea, 43), "The title");
    EXPECT_EQ(sTextAt(aArea, 43 + 81), "What is seen");
    EXPECT_EQ(Levels(aArea.begin() + 367, aArea.begin() + 379),
              (Levels{3, 0, 4, 0, 2021 % 256, 2021 / 256, 15, 0, 6, 0, 7, 0}));
    EXPECT_EQ(sTextAt(aArea, 379), "The title");
    EXPECT_EQ(sTextAt(aArea, 426), "Varnel");
    EXPECT_EQ(aArea.back(), 0);
}

TEST(TgaTexts, ThatAreEmptyOrNoDateLeaveTheirFieldsEmpty)
{
    const auto aArea = aWrittenArea(objTexts("", "", "last summer", ""));

    for (std::size_t i = 2; i < 426; ++i)
        EXPECT_EQ(aArea[i], 0) << i;
}

TEST(TgaTexts, AreCutToTheirFieldsBetweenTwoCharacters)
{
    const std::string sLong(500, 'x');
    const auto aArea = aWrittenArea(objTexts("t", sLong, "", std::string(39, 'a') + "€uro"));

    EXPECT_EQ(sTextAt(aArea, 2), std::string(39, 'a'));
    for (std::size_t nLine = 1; nLine < 4; ++nLine)
        EXPECT_EQ(sTextAt(aArea, 43 + 81 * nLine), std::string(80, 'x'));
    EXPECT_EQ(Levels(aArea.begin() + 367, aArea.begin() + 379), Levels(12, 0))
        << "nothing runs over into the date";
}

TEST(TgaTexts, BreakAtTheirLineEndsAndOnStrayBytesToo)
{
    const auto aArea = aWrittenArea(objTexts("", "one\n\ntwo\n" + std::string(200, '\x80'), "", ""));

    EXPECT_EQ(sTextAt(aArea, 43), "one");
    EXPECT_EQ(sTextAt(aArea, 43 + 81), "");
    EXPECT_EQ(sTextAt(aArea, 43 + 162), "two");
}

TEST(TgaWrites, ThatAlphaIsUseful)
{
    EXPECT_EQ(aWrittenArea({}, 4).back(), 3);
}

TEST(TgaWrites, RunsOnlyWhereTheyTakeAFifthOff)
{
    ImageBuffer aFlat = aPattern(100, 50, 3);
    std::fill(aFlat.bytes.begin(), aFlat.bytes.end(), std::uint8_t{9});

    EXPECT_EQ(aEncoded(codecTga, aFlat)[2], 10);
    EXPECT_LT(aEncoded(codecTga, aFlat).size(), 1500u);
    EXPECT_EQ(aEncoded(codecTga, aNoise(100, 50, 3))[2], 2);
    EXPECT_EQ(aEncoded(codecTga, aNoise(100, 50, 1))[2], 3);
}
