// EMF files: recognised, refused, written and read back.
#include "src/platform/image/codecs/metafile/emf.h"

#include <algorithm>
#include <cstdlib>

#include "src/platform/image/codecs/metafile/emf_header.h"
#include "src/platform/image/codecs/registry.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

static std::vector<std::uint8_t> aWritten(const ImageBuffer& aImage, const ImageInfoTexts& objTexts = {})
{
    SaveSettings objSettings;
    objSettings.objTexts = objTexts;
    return aEncoded(codecEmf, aImage, objSettings);
}

/// The file with a record before its bitmap that changes nothing, so that it must be played.
static std::vector<std::uint8_t> aToBePlayed(std::vector<std::uint8_t> aFile)
{
    const std::vector<std::uint8_t> aRecord = ByteMaker().U32Le({Emr::SetBkMode, 12, 1}).aBytes();
    aFile.insert(aFile.begin() + static_cast<std::ptrdiff_t>(ByteReader(Bytes(aFile).subspan(4)).U32Le()),
                 aRecord.begin(), aRecord.end());
    return aFile;
}

TEST(CodecEmf, IsFoundByTypeAndContent)
{
    const std::vector<std::uint8_t> aFile = EmfMaker(10, 10).aFile();

    EXPECT_EQ(pCodecOfType(5), &codecEmf);
    EXPECT_EQ(pCodecOfContent(aFile, "png"), &codecEmf);
    EXPECT_FALSE(codecEmf.Sniff(Bytes(aFile).first(43), "emf"));
}

TEST(EmfWriter, GivesBackTheSamePixels)
{
    for (const std::int32_t lChannels : {1, 3})
        for (const auto& [lWidth, lHeight] :
             {std::pair(1, 1), std::pair(37, 23), std::pair(2, 301), std::pair(400, 3)}) {
            const ImageBuffer aImage = aPattern(lWidth, lHeight, lChannels);
            const auto aBack = aDecoded(codecEmf, aWritten(aImage));

            ASSERT_TRUE(aBack.has_value());
            EXPECT_EQ(aBack->width, lWidth);
            EXPECT_EQ(aBack->height, lHeight);
            EXPECT_EQ(aBack->channels, lChannels);
            EXPECT_EQ(aBack->bytes, aImage.bytes);
        }
}

TEST(EmfWriter, WritesRecordsThatThePlayerDrawsToTheSamePixels)
{
    for (const auto& [lWidth, lHeight] :
         {std::pair(1, 1), std::pair(37, 23), std::pair(2, 301), std::pair(5000, 2)}) {
        const ImageBuffer aImage = aPattern(lWidth, lHeight, 3);
        const auto aBack = aDecoded(codecEmf, aToBePlayed(aWritten(aImage)));

        ASSERT_TRUE(aBack.has_value());
        EXPECT_EQ(aBack->width, lWidth);
        EXPECT_EQ(aBack->bytes, aImage.bytes);
    }
}

TEST(EmfWriter, HoldsPicturesWiderThanCairosOwn)
{
    const ImageBuffer aImage = aPattern(50000, 2, 3);
    const auto aBack = aDecoded(codecEmf, aWritten(aImage));
    const auto aPlayedBack = aDecoded(codecEmf, aToBePlayed(aWritten(aImage)));

    ASSERT_TRUE(aBack && aPlayedBack);
    EXPECT_EQ(aBack->bytes, aImage.bytes);
    EXPECT_EQ(aPlayedBack->bytes, aImage.bytes);
}

TEST(EmfWriter, PutsTheTextsIntoTheDescription)
{
    ImageInfoTexts objTexts;
    objTexts.sTitle =
        "Stra\xC3\x9F"
        "e";
    objTexts.sAuthor = "\xF0\x9F\x98\x80";
    const std::vector<std::uint8_t> aFile = aWritten(aPattern(5, 5, 3), objTexts);
    ByteReader rd(Bytes(aFile).subspan(60));
    const std::uint32_t nWords = rd.U32Le();
    const std::uint32_t nOffset = rd.U32Le();
    ByteReader rdText(Bytes(aFile).subspan(nOffset));
    std::u16string sText;
    for (std::uint32_t n = 0; n < nWords; ++n)
        sText.push_back(rdText.U16Le());

    EXPECT_EQ(sText, std::u16string(u"Varnel\0Stra\u00dfe; \U0001f600\0\0", 19));
    EXPECT_TRUE(aDecoded(codecEmf, aFile).has_value());
}

TEST(EmfWriter, SaysInTheHeaderWhatIsInTheFile)
{
    const std::vector<std::uint8_t> aFile = aWritten(aPattern(30, 20, 3));
    ByteReader rd(Bytes(aFile).subspan(48));

    EXPECT_EQ(rd.U32Le(), aFile.size());
    EXPECT_EQ(rd.U32Le(), 4u);  // records
    EXPECT_TRUE(bEmfIsWhole(aFile));
    EXPECT_EQ(aFile.size() % 4, 0u);
}

TEST(EmfWriter, IsUnderstoodByAnotherProgram)
{
    const TestFolder objFolder;
    for (const std::int32_t lChannels : {1, 3}) {
        const ImageBuffer aImage = aPattern(37, 23, lChannels);
        WriteFileContent(objFolder.sPath("a.emf"), aWritten(aImage));
        ASSERT_TRUE(bRun("emf2svg-conv -i " + objFolder.sPath("a.emf") + " -o " + objFolder.sPath("a.svg")));
        ASSERT_TRUE(bRun("grep -o 'base64,[^\"]*' " + objFolder.sPath("a.svg") +
                         " | cut -c8- | base64 -d > " + objFolder.sPath("a.png")));
        ASSERT_TRUE(bRun("convert " + objFolder.sPath("a.png") +
                         " -alpha off -type truecolor ppm:" + objFolder.sPath("a.ppm")));
        const auto aSeen = aReadPnm(objFolder.sPath("a.ppm"));

        ASSERT_TRUE(aSeen.has_value());
        ASSERT_EQ(aSeen->width, 37);
        ASSERT_EQ(aSeen->height, 23);
        for (std::int32_t x = 0; x < 37; ++x)
            ASSERT_EQ(nColorAt(*aSeen, x, x % 23), nColorAt(aImage, x, x % 23));
    }
}

TEST(EmfReader, RefusesAFileThatIsCutShortAnywhere)
{
    for (const std::vector<std::uint8_t>& aFile :
         {aWritten(aPattern(7, 5, 3)), EmfMaker(20, 20)
                                           .Brush(1, kRed)
                                           .Record(Emr::Rectangle, {1, 1, 9, 9})
                                           .Bounded(Emr::Polygon, {3, 1, 1, 9, 1, 5, 9})
                                           .aFile()})
        for (std::size_t nSize = 0; nSize < aFile.size() - 20; ++nSize)
            ASSERT_FALSE(aDecoded(codecEmf, Bytes(aFile).first(nSize)).has_value()) << nSize;
}

TEST(EmfReader, RefusesAFrameThatIsNoPictureOrTooLarge)
{
    std::vector<std::uint8_t> aHuge = EmfMaker(20, 20).aFile();
    aHuge[34] = 0x7F;  // over 2,000 metres wide
    std::vector<std::uint8_t> aNone = EmfMaker(20, 20).aFile();
    for (std::size_t n = 8; n < 40; ++n)
        aNone[n] = n < 16 ? 1 : 0;

    EXPECT_FALSE(aDecoded(codecEmf, aHuge).has_value());
    EXPECT_FALSE(aDecoded(codecEmf, aNone).has_value());
}

TEST(EmfReader, TakesTheBoundsWhenThereIsNoFrame)
{
    std::vector<std::uint8_t> aFile = EmfMaker(30, 20).aFile();
    for (std::size_t n = 24; n < 40; ++n)
        aFile[n] = 0;
    const auto aImage = aDecoded(codecEmf, aFile);

    ASSERT_TRUE(aImage.has_value());
    EXPECT_EQ(aImage->width, 30);
    EXPECT_EQ(aImage->height, 20);
}

TEST(EmfReader, GoesByTheFrameWhateverTheDevice)
{
    std::vector<std::uint8_t> aFile =
        EmfMaker(40, 40).Brush(1, kRed).Select(kNullPen).Record(Emr::Rectangle, {0, 0, 100, 100}).aFile();
    // A device of 480 dots an inch: 100 of them are 20 pixels.
    const std::vector<std::uint8_t> aDevice = ByteMaker().U32Le({9600, 7200}).aBytes();
    std::copy(aDevice.begin(), aDevice.end(), aFile.begin() + 72);
    const auto aImage = aDecoded(codecEmf, aFile);

    ASSERT_TRUE(aImage.has_value());
    EXPECT_EQ(nCountOf(*aImage, kRed, {0, 0, 40, 40}), 400);
}

TEST(EmfReader, BeginsAtTheFramesCorner)
{
    std::vector<std::uint8_t> aFile =
        EmfMaker(40, 40).Brush(1, kRed).Select(kNullPen).Record(Emr::Rectangle, {10, 20, 20, 30}).aFile();
    const std::vector<std::uint8_t> aFrame = ByteMaker().U32Le({265, 529, 1323, 1588}).aBytes();
    std::copy(aFrame.begin(), aFrame.end(), aFile.begin() + 24);
    const auto aImage = aDecoded(codecEmf, aFile);

    ASSERT_TRUE(aImage.has_value());
    EXPECT_EQ(aInk(*aImage), (std::array<std::int32_t, 4>{0, 0, 10, 10}));
}

TEST(EmfReader, RefusesARecordWhoseContentDoesNotFitIt)
{
    const auto bRefused = [](const EmfMaker& objMaker) {
        return !aDecoded(codecEmf, objMaker.aFile()).has_value();
    };

    EXPECT_TRUE(bRefused(EmfMaker(20, 20).Bounded(Emr::Polygon, {1000, 1, 1})));
    EXPECT_TRUE(bRefused(EmfMaker(20, 20).Bounded(Emr::PolyPolygon, {2, 4, 3, 3, 1, 1})));
    EXPECT_TRUE(bRefused(EmfMaker(20, 20).Bounded(Emr::PolyPolygon, {0x40000000, 4, 3, 3, 1, 1})));
    EXPECT_TRUE(bRefused(EmfMaker(20, 20).Record(Emr::Rectangle, {1, 2})));
    EXPECT_TRUE(bRefused(
        EmfMaker(20, 20).Bounded(Emr::StretchDibits, {0, 0, 0, 0, 1, 1, 80, 40, 4000, 4, 0, 0, 1, 1})));
}

TEST(EmfReader, RefusesAFileThatOnlyItsOtherRecordsDraw)
{
    const auto Comment = [](std::uint16_t nFlags) {
        return ByteMaker()
            .U32Le({32, 0x2B464D45})
            .U16Le({0x4001, nFlags})
            .U32Le({28, 16, 0xDBC01001, 0, 96, 96});
    };

    EXPECT_FALSE(aDecoded(codecEmf, EmfMaker(20, 20).Record(Emr::Comment, Comment(0)).aFile()).has_value());
    EXPECT_TRUE(aDecoded(codecEmf, EmfMaker(20, 20).Record(Emr::Comment, Comment(1)).aFile()).has_value());
    EXPECT_TRUE(
        aDecoded(
            codecEmf,
            EmfMaker(20, 20).Record(Emr::Comment, Comment(0)).Record(Emr::Rectangle, {1, 1, 9, 9}).aFile())
            .has_value());
}

TEST(EmfReader, RefusesAFileThatWantsMoreWorkThanItsPictureIsWorth)
{
    EmfMaker objMaker(1000, 1000);
    for (int n = 0; n < 3000; ++n)
        objMaker.Transfer(Emr::BitBlt, {0, 0, 1000, 1000}, kWhiteness, {0, 0}, {});

    EXPECT_FALSE(aDecoded(codecEmf, objMaker.aFile()).has_value());
}

// What other programs made, as tests/samples/emf/README.md tells.
TEST(EmfReader, DrawsWhatOtherProgramsWrote)
{
    struct Expected {
        const char* sName;
        std::int32_t lWidth, lHeight;
        int nLeastInk, nMostInk;  ///< percent of the pixels
    };
    for (const Expected& obj :
         {Expected{"emf/gnuplot.emf", 399, 264, 4, 25}, Expected{"emf/fig2dev.emf", 371, 232, 4, 30},
          Expected{"emf/pstoedit.emf", 354, 235, 90, 100}}) {
        const std::vector<std::uint8_t> aFile = aFileContent(sSamplePath(obj.sName));
        const auto aImage = aDecoded(codecEmf, aFile);

        ASSERT_TRUE(aImage.has_value()) << obj.sName;
        EXPECT_EQ(aImage->width, obj.lWidth) << obj.sName;
        EXPECT_EQ(aImage->height, obj.lHeight) << obj.sName;
        const int nInk = 100 - 100 * nCountOf(*aImage, kWhite, {0, 0, obj.lWidth, obj.lHeight}) /
                                   (obj.lWidth * obj.lHeight);
        EXPECT_GE(nInk, obj.nLeastInk) << obj.sName;
        EXPECT_LE(nInk, obj.nMostInk) << obj.sName;
    }
}

TEST(EmfReader, DrawsTheColouredShapesOfAnotherProgramWhereTheyBelong)
{
    const auto aImage = aDecoded(codecEmf, aFileContent(sSamplePath("emf/fig2dev.emf")));

    ASSERT_TRUE(aImage.has_value());
    EXPECT_EQ(nColorAt(*aImage, 222, 40), kYellow);  // in the circle
    EXPECT_EQ(nColorAt(*aImage, 80, 5), kBlue);      // on the box's line
    EXPECT_EQ(nColorAt(*aImage, 80, 40), kWhite);    // in the box, which is white
    EXPECT_GT(nCountOf(*aImage, kGreen, {290, 5, 370, 80}), 1000);
}
