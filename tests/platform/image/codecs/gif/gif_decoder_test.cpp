// Tests of reading GIF files.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/gif/gif.h"
#include "src/platform/image/codecs/gif/gif_decoder.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "tests/platform/image/support/gif_maker.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;
using Pages = std::vector<ImageBuffer>;

Block aSample(const std::string& sName)
{
    return aFileContent(sSamplePath("gif/" + sName));
}

Pages aPages(const Block& aFile)
{
    Pages aResult;
    for (std::int32_t i = 0;; ++i) {
        auto aPage = aDecoded(codecGif, aFile, i);
        if (!aPage)
            return aResult;
        aResult.push_back(std::move(*aPage));
    }
}

std::int32_t lFrames(const Block& aFile)
{
    InputFile objFile(aFile);
    const auto pDecoder = codecGif.Open(objFile);
    return pDecoder ? pDecoder->FrameCount() : 0;
}

// Any page as B, G, R, A, with nothing left of the colours of transparent pixels.
PixelBytes aFourChannels(ImageBuffer aImage)
{
    if (aImage.channels == 1) {
        ImageBuffer aColour = aImage;
        aColour.channels = 3;
        aColour.bytes.clear();
        for (const std::uint8_t nGrey : aImage.bytes)
            aColour.bytes.insert(aColour.bytes.end(), 3, nGrey);
        aImage = aColour;
    }
    if (aImage.channels == 3) {
        EXPECT_TRUE(AddAlpha(aImage));
    }
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 4)
        if (aImage.bytes[i + 3] == 0)
            std::fill_n(aImage.bytes.begin() + static_cast<std::ptrdiff_t>(i), 3, std::uint8_t{0});
    return aImage.bytes;
}

// All pages as another program composites them, one after the other.
PixelBytes aCoalesced(const std::string& sName)
{
    const TestFolder objFolder;
    const std::string sOut = objFolder.sPath("out");
    std::string sOutput;
    EXPECT_TRUE(bRun(ImageMagick("convert") + " " + sSamplePath("gif/" + sName) +
                         " -coalesce -alpha set -depth 8 bgra:" + sOut,
                     &sOutput))
        << sOutput;
    ImageBuffer aAll;
    aAll.channels = 4;
    const Block aBytes = aFileContent(sOut);
    aAll.bytes.assign(aBytes.begin(), aBytes.end());
    return aFourChannels(aAll);
}

const GifColours kColours = {{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}}};

// The page in letters: Red, Green, Blue, White, K for black and "." for transparent.
std::string sLetters(const ImageBuffer& aImage)
{
    std::string sResult;
    const PixelBytes aBytes = aFourChannels(aImage);
    for (std::size_t i = 0; i < aBytes.size(); i += 4) {
        const int lCode = (aBytes[i] ? 1 : 0) + (aBytes[i + 1] ? 2 : 0) + (aBytes[i + 2] ? 4 : 0);
        sResult += aBytes[i + 3] == 0 ? '.' : "KBGCRMYW"[lCode];
    }
    return sResult;
}

std::vector<std::string> aLetters(const Block& aFile)
{
    std::vector<std::string> aResult;
    for (const ImageBuffer& aPage : aPages(aFile))
        aResult.push_back(sLetters(aPage));
    return aResult;
}

using Texts = std::vector<std::string>;
}  // namespace

class GifPages : public testing::TestWithParam<const char*>
{
};

TEST_P(GifPages, LookAsAnotherProgramCompositesThem)
{
    PixelBytes aAll;
    for (const ImageBuffer& aPage : aPages(aSample(GetParam()))) {
        const PixelBytes aBytes = aFourChannels(aPage);
        aAll.insert(aAll.end(), aBytes.begin(), aBytes.end());
    }

    EXPECT_FALSE(aAll.empty());
    EXPECT_TRUE(aAll == aCoalesced(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Samples, GifPages,
                         testing::Values("plain.gif", "interlaced.gif", "grey.gif", "two-colours.gif",
                                         "transparent.gif", "optimised.gif", "sicle.gif", "dispose-none.gif",
                                         "dispose-background.gif", "dispose-previous.gif"),
                         [](const auto& objInfo) {
                             std::string sName = objInfo.param;
                             std::erase_if(
                                 sName, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return sName;
                         });

TEST(GifDecoder, GivesGreyColourOrAlphaAsThePageNeeds)
{
    EXPECT_EQ(aDecoded(codecGif, aSample("grey.gif"))->channels, 1);
    EXPECT_EQ(aDecoded(codecGif, aSample("plain.gif"))->channels, 3);
    EXPECT_EQ(aDecoded(codecGif, aSample("transparent.gif"))->channels, 4);
}

TEST(GifDecoder, FindsTheSceneThatOtherProgramsPacked)
{
    const auto aScene = aReadPnm(sSamplePath("gif/scene.ppm"));
    for (const char* sName : {"plain.gif", "interlaced.gif", "optimised.gif", "sicle.gif"})
        EXPECT_LE(objDifference(*aDecoded(codecGif, aSample(sName)), *aScene).lGreatest, 3) << sName;
}

TEST(GifDecoder, LeavesAFrameInPlaceUnlessItAsksForMore)
{
    for (const int lDisposal : {0, 1, 5, 7})
        EXPECT_EQ(aLetters(GifMaker(3, 1, kColours)
                               .Control(lDisposal)
                               .Frame(0, 0, 2, 1, {0, 0})
                               .Control(lDisposal)
                               .Frame(1, 0, 1, 1, {1})
                               .Frame(2, 0, 1, 1, {2})
                               .End()
                               .aBytes()),
                  (Texts{"RR.", "RG.", "RGB"}));
}

TEST(GifDecoder, ClearsAFrameThatAsksForTheBackground)
{
    EXPECT_EQ(aLetters(GifMaker(3, 1, kColours, 3)
                           .Frame(0, 0, 3, 1, {0, 0, 0})
                           .Control(2)
                           .Frame(1, 0, 1, 1, {1})
                           .Frame(2, 0, 1, 1, {2})
                           .End()
                           .aBytes()),
              (Texts{"RRR", "RGR", "R.B"}));
}

TEST(GifDecoder, BringsBackWhatWasThereBeforeAFrameThatAsksForIt)
{
    for (const int lDisposal : {3, 4})
        EXPECT_EQ(aLetters(GifMaker(3, 1, kColours)
                               .Frame(0, 0, 2, 1, {0, 1})
                               .Control(lDisposal)
                               .Frame(1, 0, 2, 1, {2, 2})
                               .Control(lDisposal)
                               .Frame(0, 0, 1, 1, {3})
                               .Frame(2, 0, 1, 1, {2})
                               .End()
                               .aBytes()),
                  (Texts{"RG.", "RBB", "WG.", "RGB"}));
}

TEST(GifDecoder, BringsBackNothingBeforeTheFirstFrame)
{
    EXPECT_EQ(aLetters(GifMaker(2, 1, kColours)
                           .Control(3)
                           .Frame(0, 0, 2, 1, {0, 0})
                           .Frame(0, 0, 1, 1, {1})
                           .End()
                           .aBytes()),
              (Texts{"RR", "G."}));
}

TEST(GifDecoder, LetsTheScreenShowThroughTheTransparentIndex)
{
    EXPECT_EQ(aLetters(GifMaker(3, 1, kColours)
                           .Frame(0, 0, 2, 1, {0, 1})
                           .Control(0, 2)
                           .Frame(0, 0, 3, 1, {2, 3, 2})
                           .End()
                           .aBytes()),
              (Texts{"RG.", "RW."}));
}

TEST(GifDecoder, ForgetsTheControlAfterItsFrame)
{
    EXPECT_EQ(aLetters(GifMaker(1, 1, kColours)
                           .Control(0, 0)
                           .Frame(0, 0, 1, 1, {0})
                           .Frame(0, 0, 1, 1, {0})
                           .End()
                           .aBytes()),
              (Texts{".", "R"}));
}

TEST(GifDecoder, GivesTheControlBeforeAPlainTextToTheText)
{
    EXPECT_EQ(
        aLetters(GifMaker(1, 1, kColours).Control(0, 0).PlainText().Frame(0, 0, 1, 1, {0}).End().aBytes()),
        (Texts{"R"}));
}

TEST(GifDecoder, ReadsOnPastComments)
{
    EXPECT_EQ(
        aLetters(
            GifMaker(1, 1, kColours).Control(0, 0).Comment("hello").Frame(0, 0, 1, 1, {0}).End().aBytes()),
        (Texts{"."}));
}

TEST(GifDecoder, PrefersTheFramesOwnColours)
{
    const GifColours aLocal = {{255, 255, 255}, {0, 0, 0}};

    EXPECT_EQ(
        aLetters(
            GifMaker(2, 1, kColours).Frame(0, 0, 2, 1, {0, 1}, aLocal).Frame(0, 0, 1, 1, {2}).End().aBytes()),
        (Texts{"WK", "BK"}));
}

TEST(GifDecoder, TakesIndexesBeyondTheTableAsBlackAndNoTableAsGreys)
{
    EXPECT_EQ(aLetters(GifMaker(2, 1, {{255, 0, 0}, {0, 255, 0}}).Frame(0, 0, 2, 1, {1, 3}).End().aBytes()),
              (Texts{"GK"}));
    const auto aGreys = aDecoded(codecGif, GifMaker(2, 1, {}).Frame(0, 0, 2, 1, {1, 3}).End().aBytes());
    ASSERT_TRUE(aGreys);
    EXPECT_EQ(aGreys->bytes, (PixelBytes{1, 3}));
}

TEST(GifDecoder, ClipsFramesToTheScreen)
{
    EXPECT_EQ(aLetters(GifMaker(2, 2, kColours)
                           .Control(3)
                           .Frame(1, 1, 2, 2, {0, 1, 2, 3})
                           .Control(2)
                           .Frame(5, 5, 1, 1, {0})
                           .Frame(0, 1, 3, 1, {1, 2, 3})
                           .End()
                           .aBytes()),
              (Texts{"...R", "....", "..GB"}));
}

TEST(GifDecoder, MakesAScreenWithoutASizeAsLargeAsItsFirstFrameNeeds)
{
    const auto aImage = aDecoded(codecGif, GifMaker(0, 0, kColours).Frame(1, 0, 1, 2, {0, 1}).End().aBytes());

    ASSERT_TRUE(aImage);
    EXPECT_EQ(aImage->width, 2);
    EXPECT_EQ(aImage->height, 2);
    EXPECT_EQ(sLetters(*aImage), ".R.G");
}

TEST(GifDecoder, DrawsNothingForAnEmptyFrame)
{
    EXPECT_EQ(aLetters(GifMaker(1, 1, kColours)
                           .Frame(0, 0, 1, 1, {2})
                           .Frame(0, 0, 0, 1, {})
                           .Frame(0, 0, 1, 1, {1})
                           .End()
                           .aBytes()),
              (Texts{"B", "B", "G"}));
}

TEST(GifDecoder, PutsInterlacedRowsIntoTheirPlaces)
{
    for (std::uint32_t nHeight = 1; nHeight <= 20; ++nHeight) {
        // Each row is stored as its number modulo 4, in the order of the four passes.
        std::vector<int> aStored;
        for (const auto& [nFirst, nStep] : {std::pair{0u, 8u}, {4u, 8u}, {2u, 4u}, {1u, 2u}})
            for (std::uint32_t y = nFirst; y < nHeight; y += nStep)
                aStored.push_back(static_cast<int>(y % 4));
        std::string sWanted;
        for (std::uint32_t y = 0; y < nHeight; ++y)
            sWanted += "RGBW"[y % 4];

        const auto aFile = GifMaker(1, nHeight, kColours)
                               .Descriptor(0, 0, 1, nHeight, {}, true)
                               .Pixels(aStored)
                               .End()
                               .aBytes();

        EXPECT_EQ(aLetters(aFile), Texts{sWanted});
    }
}

TEST(GifDecoder, GivesPagesInAnyOrder)
{
    const Block aFile = aSample("dispose-previous.gif");
    const Pages aInOrder = aPages(aFile);
    InputFile objFile(aFile);
    const auto pDecoder = codecGif.Open(objFile);
    ASSERT_EQ(pDecoder->FrameCount(), 5);

    for (const std::int32_t lFrame : {4, 0, 2, 2, 1, 3}) {
        ImageBuffer aPage;
        ASSERT_TRUE(pDecoder->DecodeFrame(lFrame, aPage)) << lFrame;
        EXPECT_EQ(objDifference(aPage, aInOrder[static_cast<std::size_t>(lFrame)]).lGreatest, 0) << lFrame;
    }
    ImageBuffer aPage;
    EXPECT_FALSE(pDecoder->DecodeFrame(-1, aPage));
    EXPECT_FALSE(pDecoder->DecodeFrame(5, aPage));
    EXPECT_EQ(aPage.width, 0);
}

TEST(GifDecoder, RefusesTheFrameThatIsCutAndKeepsThoseBefore)
{
    const Block aFile = aSample("cut.gif");
    InputFile objFile(aFile);
    const auto pDecoder = codecGif.Open(objFile);
    const std::int32_t lLast = pDecoder->FrameCount() - 1;
    ASSERT_GT(lLast, 0);
    ImageBuffer aPage;

    EXPECT_FALSE(pDecoder->DecodeFrame(lLast, aPage));
    EXPECT_EQ(aPage.width, 0);
    EXPECT_TRUE(pDecoder->DecodeFrame(lLast - 1, aPage));
    EXPECT_FALSE(pDecoder->DecodeFrame(lLast, aPage));
    EXPECT_TRUE(pDecoder->DecodeFrame(0, aPage));
}

TEST(GifDecoder, RefusesAPictureThatEndsTooSoonWhereverItEnds)
{
    const Block aFile = aSample("plain.gif");
    for (std::size_t nSize = 0; nSize + 1 < aFile.size(); ++nSize)
        EXPECT_FALSE(aDecoded(codecGif, Bytes(aFile).first(nSize))) << nSize;
    EXPECT_TRUE(
        aDecoded(codecGif, Bytes(aFile).first(aFile.size() - 1)));  // nothing but the trailer is missing
}

TEST(GifDecoder, RefusesFilesThatLieOrAreSomethingElse)
{
    for (const char* sName : {"cut-first.gif", "lies-about-size.gif", "foreign.gif"})
        EXPECT_FALSE(aDecoded(codecGif, aSample(sName))) << sName;
    EXPECT_FALSE(codecGif.Sniff(aSample("foreign.gif"), "gif"));
    EXPECT_TRUE(codecGif.Sniff(aSample("plain.gif"), ""));
    EXPECT_EQ(lFrames(GifMaker(1, 1, kColours).End().aBytes()), 0);
    EXPECT_EQ(lFrames(GifMaker(0, 0, kColours).Frame(0, 0, 0, 0, {}).End().aBytes()), 0);
}

TEST(GifDecoder, RefusesAScreenThatItsFileCouldNeverFill)
{
    EXPECT_EQ(lFrames(GifMaker(60000, 8000, kColours).Frame(0, 0, 1, 1, {0}).End().aBytes()), 0);
    EXPECT_EQ(lFrames(GifMaker(4000, 4000, kColours).Frame(0, 0, 1, 1, {0}).End().aBytes()), 1);
}

TEST(GifDecoder, ShowsNothingAfterAFrameOfBrokenCodes)
{
    const Block aFile = GifMaker(2, 1, kColours)
                            .Frame(0, 0, 2, 1, {0, 1})
                            .Descriptor(0, 0, 2, 1)
                            .Data(2, {0xFF, 0xFF})
                            .Frame(0, 0, 2, 1, {0, 1})
                            .End()
                            .aBytes();

    EXPECT_EQ(lFrames(aFile), 3);
    EXPECT_TRUE(aDecoded(codecGif, aFile, 0));
    EXPECT_FALSE(aDecoded(codecGif, aFile, 1));
    EXPECT_FALSE(aDecoded(codecGif, aFile, 2));
}

TEST(GifDecoder, StopsCountingFramesAtItsLimit)
{
    GifMaker objMaker(1, 1, kColours);
    for (std::int32_t i = 0; i < kMaxGifFrames + 10; ++i)
        objMaker.Frame(0, 0, 1, 1, {0});

    EXPECT_EQ(lFrames(objMaker.End().aBytes()), kMaxGifFrames);
}

TEST(GifDecoder, SurvivesAnyByteOfAFileBeingAnother)
{
    const Block aFile = aSample("dispose-previous.gif");
    for (std::size_t i = 0; i < aFile.size(); ++i) {
        Block aBroken = aFile;
        aBroken[i] = static_cast<std::uint8_t>(aBroken[i] ^ (i % 3 == 0 ? 0x01 : i % 3 == 1 ? 0x80 : 0xFF));
        InputFile objFile(aBroken);
        const auto pDecoder = codecGif.Open(objFile);
        ImageBuffer aPage;
        for (std::int32_t lFrame = 0; pDecoder && lFrame < pDecoder->FrameCount(); ++lFrame)
            if (pDecoder->DecodeFrame(lFrame, aPage)) {
                EXPECT_EQ(aPage.bytes.size(), static_cast<std::size_t>(aPage.width) *
                                                  static_cast<std::size_t>(aPage.height) *
                                                  static_cast<std::size_t>(aPage.channels));
            }
    }
}
