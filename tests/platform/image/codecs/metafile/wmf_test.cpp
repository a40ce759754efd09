// WMF files: recognised, refused, written and read back.
#include "src/platform/image/codecs/metafile/wmf.h"

#include "src/platform/image/codecs/registry.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

/// The file with a record at its front that changes nothing, so that it must be played.
static std::vector<std::uint8_t> aToBePlayed(std::vector<std::uint8_t> aFile)
{
    const std::vector<std::uint8_t> aRecord = ByteMaker().U32Le({4}).U16Le({0x0102, 1}).aBytes();
    aFile.insert(aFile.begin() + 40, aRecord.begin(), aRecord.end());
    return aFile;
}

TEST(CodecWmf, IsFoundByTypeAndContent)
{
    const std::vector<std::uint8_t> aPlaceable = WmfMaker(10, 10).aFile();
    const std::vector<std::uint8_t> aPlain = WmfMaker().aFile();

    EXPECT_EQ(pCodecOfType(11), &codecWmf);
    EXPECT_EQ(pCodecOfContent(aPlaceable, ""), &codecWmf);
    EXPECT_EQ(pCodecOfContent(aPlain, "jpg"), &codecWmf);
    EXPECT_FALSE(codecWmf.Sniff(Bytes(aPlaceable).first(22), "wmf"));
    EXPECT_FALSE(codecWmf.Sniff(Bytes(aPlain).subspan(1), "wmf"));
}

TEST(WmfWriter, GivesBackTheSamePixels)
{
    for (const std::int32_t lChannels : {1, 3})
        for (const auto& [lWidth, lHeight] :
             {std::pair(1, 1), std::pair(37, 23), std::pair(2, 301), std::pair(32767, 2)}) {
            const ImageBuffer aImage = aPattern(lWidth, lHeight, lChannels);
            const auto aBack = aDecoded(codecWmf, aEncoded(codecWmf, aImage));

            ASSERT_TRUE(aBack.has_value());
            EXPECT_EQ(aBack->width, lWidth);
            EXPECT_EQ(aBack->channels, lChannels);
            EXPECT_EQ(aBack->bytes, aImage.bytes);
        }
}

TEST(WmfWriter, WritesRecordsThatThePlayerDrawsToTheSamePixels)
{
    for (const auto& [lWidth, lHeight] : {std::pair(1, 1), std::pair(37, 23), std::pair(20000, 2)}) {
        const ImageBuffer aImage = aPattern(lWidth, lHeight, 3);
        const auto aBack = aDecoded(codecWmf, aToBePlayed(aEncoded(codecWmf, aImage)));

        ASSERT_TRUE(aBack.has_value());
        EXPECT_EQ(aBack->width, lWidth);
        EXPECT_EQ(aBack->bytes, aImage.bytes);
    }
}

TEST(WmfWriter, RefusesWhatItsRecordCannotHold)
{
    EXPECT_TRUE(aEncoded(codecWmf, aPattern(32768, 1, 3)).empty());
    EXPECT_TRUE(aEncoded(codecWmf, aPattern(1, 32768, 3)).empty());
}

TEST(WmfWriter, WritesAHeaderWhoseChecksumAndSizesAreRight)
{
    const std::vector<std::uint8_t> aFile = aEncoded(codecWmf, aPattern(30, 20, 1));
    ByteReader rd(aFile);
    std::uint16_t nCheck = 0;
    for (int n = 0; n < 10; ++n)
        nCheck = nCheck ^ rd.U16Le();
    EXPECT_EQ(rd.U16Le(), nCheck);
    rd.Take(6);

    EXPECT_EQ(rd.U32Le() * 2 + 22, aFile.size());
}

TEST(WmfWriter, IsUnderstoodByAnotherProgram)
{
    const TestFolder objFolder;
    for (const std::int32_t lChannels : {1, 3}) {
        const ImageBuffer aImage = aPattern(37, 23, lChannels);
        WriteFileContent(objFolder.sPath("a.wmf"), aEncoded(codecWmf, aImage));
        ASSERT_TRUE(bRun("cd " + objFolder.sPath("") + " && wmf2svg -o a.svg a.wmf"));
        ASSERT_TRUE(bRun("convert " + objFolder.sPath("a-1.png") +
                         " -alpha off -type truecolor ppm:" + objFolder.sPath("a.ppm")));
        const auto aSeen = aReadPnm(objFolder.sPath("a.ppm"));

        ASSERT_TRUE(aSeen.has_value());
        ASSERT_EQ(aSeen->width, 37);
        ASSERT_EQ(aSeen->height, 23);
        for (std::int32_t x = 0; x < 37; ++x)
            ASSERT_EQ(nColorAt(*aSeen, x, x % 23), nColorAt(aImage, x, x % 23));
    }
}

TEST(WmfReader, RefusesAFileThatIsCutShortAnywhere)
{
    for (const std::vector<std::uint8_t>& aFile :
         {aEncoded(codecWmf, aPattern(7, 5, 3)), WmfMaker(20, 20)
                                                     .Brush(kRed)
                                                     .Select(0)
                                                     .Record(0x041B, {9, 9, 1, 1})
                                                     .Record(0x0324, {3, 1, 1, 9, 1, 5, 9})
                                                     .aFile()})
        for (std::size_t nSize = 0; nSize < aFile.size(); ++nSize)
            ASSERT_FALSE(aDecoded(codecWmf, Bytes(aFile).first(nSize)).has_value()) << nSize;
}

TEST(WmfReader, RefusesASizeThatIsNoneOrTooLarge)
{
    EXPECT_FALSE(aDecoded(codecWmf, WmfMaker(30000, 30000).UnitsPerInch(1).aFile()).has_value());
    EXPECT_FALSE(aDecoded(codecWmf, WmfMaker(10, 0).aFile()).has_value());
}

TEST(WmfReader, RefusesARecordWhoseContentDoesNotFitIt)
{
    const auto bRefused = [](const WmfMaker& objMaker) {
        return !aDecoded(codecWmf, objMaker.aFile()).has_value();
    };

    EXPECT_TRUE(bRefused(WmfMaker(20, 20).Record(0x0324, {1000, 1, 1})));
    EXPECT_TRUE(bRefused(WmfMaker(20, 20).Record(0x0538, {2, 3, 30000, 1, 1})));
    EXPECT_TRUE(bRefused(WmfMaker(20, 20).Record(0x041B, {1, 2})));
    EXPECT_TRUE(bRefused(WmfMaker(20, 20).Record(0x0521, {200, 1, 1})));
    EXPECT_TRUE(bRefused(WmfMaker(20, 20).Record(0x06FF, {0, 6, 0, 0, 0, 900, 4, 5, 5, 35, 20})));
}

TEST(WmfReader, BelievesAHeaderWithoutAChecksum)
{
    std::vector<std::uint8_t> aFile = WmfMaker(20, 20).aFile();
    aFile[20] ^= 0x55;

    EXPECT_TRUE(aDecoded(codecWmf, aFile).has_value());
}

// What another program made, as tests/samples/wmf/README.md tells.
TEST(WmfReader, DrawsWhatAnotherProgramWrote)
{
    const auto aImage = aDecoded(codecWmf, aFileContent(sSamplePath("wmf/shapes.wmf")));

    ASSERT_TRUE(aImage.has_value());
    EXPECT_EQ(aImage->width, 288);
    EXPECT_EQ(aImage->height, 192);
    EXPECT_EQ(nColorAt(*aImage, 50, 35), 0xA0F0FFu);   // in the rectangle
    EXPECT_EQ(nColorAt(*aImage, 10, 35), 0xC80000u);   // on its line
    EXPECT_EQ(nColorAt(*aImage, 230, 50), 0x00A000u);  // in the triangle
    EXPECT_EQ(nColorAt(*aImage, 30, 85), 0x00A000u);   // in the pie
    EXPECT_EQ(nColorAt(*aImage, 70, 85), kWhite);      // where a piece of it is missing
    EXPECT_GT(nCountOf(*aImage, 0xA000A0, {10, 125, 110, 155}), 100);
}
