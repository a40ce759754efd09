// Tests of writing TIFF files of one page.
#include "src/platform/image/codecs/tiff/tiff_writer.h"

#include <gtest/gtest.h>
#include <tiff.h>

#include <algorithm>
#include <array>
#include <random>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"
#include "src/platform/image/codecs/tiff/tiff.h"
#include "src/platform/image/metadata/metadata.h"
#include "src/platform/image/metadata/metadata_edit.h"
#include "src/platform/image/pixels/alpha.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/profiles.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

SaveSettings objCompression(std::int32_t lCompression)
{
    SaveSettings objSettings;
    objSettings.lTIFFCompression = lCompression;
    return objSettings;
}

// The first number of a tag of the first page; 0 if it isn't there.
std::uint64_t nTagOf(const Block& aFile, std::uint16_t nTag)
{
    InputFile objFile{Bytes(aFile)};
    const auto objHeader = objReadTiffHeader(objFile);
    if (!objHeader)
        return 0;
    const auto aEntries = aReadEntries(objFile, *objHeader, objHeader->nFirstDirectory);
    const TiffEntry* pEntry = pEntryOf(aEntries, nTag);
    return pEntry ? nReadNumber(objFile, *objHeader, *pEntry).value_or(0) : 0;
}

std::string sTagOf(const Block& aFile, std::uint16_t nTag)
{
    InputFile objFile{Bytes(aFile)};
    const auto objHeader = objReadTiffHeader(objFile);
    const auto aEntries = aReadEntries(objFile, *objHeader, objHeader->nFirstDirectory);
    const TiffEntry* pEntry = pEntryOf(aEntries, nTag);
    const Block aValue = pEntry ? aReadValue(objFile, *objHeader, *pEntry, 1000) : Block{};
    return {aValue.begin(), std::find(aValue.begin(), aValue.end(), 0)};
}

// What is white and what is black at half intensity, on white paper.
ImageBuffer aBlackAndWhite(const ImageBuffer& aImage)
{
    const ImageBuffer aOpaque = aImage.channels == 4 ? LayOnWhite(aImage) : aImage;
    ImageBuffer aResult;
    aResult.width = aImage.width;
    aResult.height = aImage.height;
    aResult.channels = 1;
    const auto nStep = static_cast<std::size_t>(aOpaque.channels);
    for (std::size_t i = 0; i < aOpaque.bytes.size(); i += nStep) {
        const std::uint8_t* p = aOpaque.bytes.data() + i;
        const int lIntensity = nStep == 1 ? p[0] * 1000 : 114 * p[0] + 587 * p[1] + 299 * p[2];
        aResult.bytes.push_back(lIntensity >= 128000 ? 255 : 0);
    }
    return aResult;
}

struct Way {
    std::int32_t lCompression;
    std::int32_t lChannels;
};

class WrittenTiff : public testing::TestWithParam<Way>
{
protected:
    bool bFax() const { return GetParam().lCompression >= 2 && GetParam().lCompression <= 4; }
    // 83 is no multiple of 8; the picture is higher than one strip.
    ImageBuffer aSource() const { return aPattern(83, 1100, GetParam().lChannels); }
    ImageBuffer aExpected() const { return bFax() ? aBlackAndWhite(aSource()) : aSource(); }
    Block aFile() const { return aEncoded(codecTiff, aSource(), objCompression(GetParam().lCompression)); }
};
}  // namespace

TEST_P(WrittenTiff, IsReadBackAsItWas)
{
    const auto aImage = aDecoded(codecTiff, aFile());

    ASSERT_TRUE(aImage);
    EXPECT_EQ(objDifference(*aImage, aExpected()).lGreatest, 0);
}

TEST_P(WrittenTiff, IsReadByOtherProgramsAsItWas)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("w.tif"), aFile());
    const std::string sForm = aExpected().channels == 1   ? "gray:"
                              : aExpected().channels == 3 ? "bgr:"
                                                          : "bgra:";
    const auto bSame = [&](const std::string& sProgram) {
        std::string sOutput;
        EXPECT_TRUE(bRun(sProgram, &sOutput)) << sProgram << "\n" << sOutput;
        EXPECT_EQ(sOutput, "");
        const Block aRead = aFileContent(objFolder.sPath("w.raw"));
        const ImageBuffer aImage = aExpected();
        return std::equal(aRead.begin(), aRead.end(), aImage.bytes.begin(), aImage.bytes.end());
    };
    const std::string sIn = objFolder.sPath("w.tif");
    const std::string sOut = objFolder.sPath("w.raw");

    EXPECT_TRUE(bSame(ImageMagick("convert") + " " + sIn + " -depth 8 " + sForm + sOut));
    EXPECT_TRUE(bSame("/usr/bin/python3 -c \"import sys; from PIL import Image; i = Image.open('" + sIn +
                      "'); i = i.convert('L') if i.mode == '1' else i; "
                      "b = i.split(); i = Image.merge(i.mode, b[2::-1] + b[3:]) if len(b) > 2 else i; "
                      "open('" +
                      sOut + "', 'wb').write(i.tobytes())\""));
    std::string sInfo;
    EXPECT_TRUE(bRun("tiffinfo -D " + sIn, &sInfo));
    for (const char* sTrouble : {"rror", "arning", "nknown"})
        EXPECT_EQ(sInfo.find(sTrouble), std::string::npos) << sInfo;
}

TEST_P(WrittenTiff, SaysHowItIsStored)
{
    const Block aBytes = aFile();
    constexpr std::array<std::uint64_t, 5> kSchemes = {COMPRESSION_NONE, COMPRESSION_LZW,
                                                       COMPRESSION_CCITTRLE, COMPRESSION_CCITTFAX3,
                                                       COMPRESSION_CCITTFAX4};
    const bool bKnown = GetParam().lCompression >= 0 && GetParam().lCompression <= 4;
    const std::uint64_t nScheme = kSchemes[bKnown ? static_cast<std::size_t>(GetParam().lCompression) : 0];

    EXPECT_EQ(nTagOf(aBytes, TIFFTAG_COMPRESSION), nScheme);
    EXPECT_EQ(nTagOf(aBytes, TIFFTAG_BITSPERSAMPLE), bFax() ? 1u : 8u);
    EXPECT_EQ(nTagOf(aBytes, TIFFTAG_SAMPLESPERPIXEL),
              bFax() ? 1u : static_cast<unsigned>(GetParam().lChannels));
    EXPECT_EQ(nTagOf(aBytes, TIFFTAG_PHOTOMETRIC), bFax()                      ? PHOTOMETRIC_MINISWHITE
                                                   : GetParam().lChannels == 1 ? PHOTOMETRIC_MINISBLACK
                                                                               : PHOTOMETRIC_RGB);
    EXPECT_EQ(nTagOf(aBytes, TIFFTAG_PREDICTOR), GetParam().lCompression == 1 ? 2u : 0u);
    EXPECT_EQ(nTagOf(aBytes, TIFFTAG_EXTRASAMPLES),
              !bFax() && GetParam().lChannels == 4 ? EXTRASAMPLE_UNASSALPHA : 0);
}

INSTANTIATE_TEST_SUITE_P(AllWays, WrittenTiff,
                         testing::Values(Way{0, 1}, Way{0, 3}, Way{0, 4}, Way{1, 1}, Way{1, 3}, Way{1, 4},
                                         Way{2, 1}, Way{2, 3}, Way{2, 4}, Way{3, 1}, Way{3, 3}, Way{3, 4},
                                         Way{4, 1}, Way{4, 3}, Way{4, 4}, Way{5, 3}, Way{-1, 3},
                                         Way{32773, 1}));

TEST(TiffBlackAndWhite, TurnsAtHalfOfTheIntensity)
{
    ImageBuffer aGreys;
    aGreys.width = 256;
    aGreys.height = 1;
    aGreys.channels = 1;
    for (int i = 0; i < 256; ++i)
        aGreys.bytes.push_back(static_cast<std::uint8_t>(i));

    const auto aImage = aDecoded(codecTiff, aEncoded(codecTiff, aGreys, objCompression(4)));

    ASSERT_TRUE(aImage);
    EXPECT_EQ(aImage->bytes[127], 0);
    EXPECT_EQ(aImage->bytes[128], 255);
    EXPECT_EQ(std::count(aImage->bytes.begin(), aImage->bytes.end(), 255), 128);
}

TEST(TiffLzw, IsReadBackAtEveryLengthAroundAFullTable)
{
    std::mt19937 objRandom(7);
    for (std::int32_t lWidth = 3800; lWidth < 3880; ++lWidth) {
        ImageBuffer aNoise;
        aNoise.width = lWidth;
        aNoise.height = 1;
        aNoise.channels = 1;
        for (std::int32_t i = 0; i < lWidth; ++i)
            aNoise.bytes.push_back(static_cast<std::uint8_t>(objRandom()));

        const auto aImage = aDecoded(codecTiff, aEncoded(codecTiff, aNoise, objCompression(1)));

        ASSERT_TRUE(aImage) << lWidth;
        ASSERT_EQ(aImage->bytes, aNoise.bytes) << lWidth;
    }
}

TEST(TiffLzw, IsNoLargerThanLibtiffs)
{
    const TestFolder objFolder;
    ImageBuffer aImage = aPattern(1200, 900, 3);
    std::mt19937 objRandom(3);
    for (std::uint8_t& nLevel : aImage.bytes)
        nLevel = static_cast<std::uint8_t>(nLevel + objRandom() % 4);
    WriteFileContent(objFolder.sPath("none.tif"), aEncoded(codecTiff, aImage, objCompression(0)));

    const Block aOurs = aEncoded(codecTiff, aImage, objCompression(1));
    ASSERT_TRUE(bRun("tiffcp -c lzw:2 " + objFolder.sPath("none.tif") + " " + objFolder.sPath("theirs.tif")));

    // But for the tags, which say a little more.
    EXPECT_LE(aOurs.size(), aFileContent(objFolder.sPath("theirs.tif")).size() + 100);
}

TEST(TiffTexts, GoToTheirTags)
{
    SaveSettings objSettings;
    objSettings.objTexts = {
        "A title", "Gr\xC3\xBC\xC3\x9F", "3/5/2024 1:02:03 PM", "Ann", "(c) Ann", "Cameras Ltd", "X-1"};

    const Block aFile = aEncoded(codecTiff, aPattern(4, 4, 3), objSettings);

    EXPECT_EQ(sTagOf(aFile, TIFFTAG_DOCUMENTNAME), "A title");
    EXPECT_EQ(sTagOf(aFile, TIFFTAG_IMAGEDESCRIPTION), "Gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(sTagOf(aFile, TIFFTAG_DATETIME), "2024:03:05 13:02:03");
    EXPECT_EQ(sTagOf(aFile, TIFFTAG_ARTIST), "Ann");
    EXPECT_EQ(sTagOf(aFile, TIFFTAG_COPYRIGHT), "(c) Ann");
    EXPECT_EQ(sTagOf(aFile, TIFFTAG_MAKE), "Cameras Ltd");
    EXPECT_EQ(sTagOf(aFile, TIFFTAG_MODEL), "X-1");
}

TEST(TiffTexts, ThatAreEmptyWriteNothing)
{
    const Block aFile = aEncoded(codecTiff, aPattern(4, 4, 3));

    for (const int lTag : {TIFFTAG_DOCUMENTNAME, TIFFTAG_IMAGEDESCRIPTION, TIFFTAG_DATETIME, TIFFTAG_ARTIST,
                           TIFFTAG_COPYRIGHT, TIFFTAG_MAKE, TIFFTAG_MODEL, TIFFTAG_SOFTWARE, TIFFTAG_EXIFIFD,
                           TIFFTAG_ICCPROFILE, TIFFTAG_XRESOLUTION})
        EXPECT_EQ(sTagOf(aFile, static_cast<std::uint16_t>(lTag)), "") << lTag;
}

TEST(TiffMetadata, IsCarriedFromALoadToASave)
{
    const TestFolder objFolder;
    const std::string sSource = objFolder.sPath("source.jpg");
    const std::string sTarget = objFolder.sPath("target.tif");
    sPython(
        "import sys; from PIL import Image, TiffImagePlugin as T\n"
        "e = Image.Exif(); e[271] = 'Cameras Ltd'; e[274] = 6; e[0x8769] = e[0x8825] = 0\n"
        "e._ifds[0x8769] = {0x9003: '2024:03:05 10:20:30', 0x829A: T.IFDRational(1, 250)}\n"
        "e._ifds[0x8825] = {1: 'N', 2: (48.0, 10.0, 1.5)}\n"
        "Image.new('RGB', (9, 6), (50, 100, 200)).save(sys.argv[1], 'TIFF', exif=e, dpi=(300, 150))\n",
        sSource);
    auto aImage = aDecoded(codecTiff, aFileContent(sSource));
    ASSERT_TRUE(aImage);
    FinishLoaded(*aImage);
    ASSERT_EQ(aImage->width, 6);
    aImage->icc_profile = aSwappedProfile();
    aImage->metadata.xmp = {'<', 'x', '/', '>'};
    aImage->metadata.iptc = {0x1C, 2, 5, 0, 1, 'A'};

    WriteFileContent(sTarget, aEncoded(codecTiff, *aImage));

    const auto aAgain = aDecoded(codecTiff, aFileContent(sTarget));
    ASSERT_TRUE(aAgain);
    EXPECT_EQ(aAgain->icc_profile, aSwappedProfile());
    EXPECT_EQ(aAgain->metadata.xmp, aImage->metadata.xmp);
    EXPECT_EQ(aAgain->metadata.iptc, aImage->metadata.iptc);
    EXPECT_DOUBLE_EQ(aAgain->dots_per_inch_x, 150);
    EXPECT_DOUBLE_EQ(aAgain->dots_per_inch_y, 300);
    EXPECT_EQ(
        sPython("import sys; from PIL import Image\n"
                "i = Image.open(sys.argv[1]); e = i.getexif(); s = e.get_ifd(0x8769); g = e.get_ifd(0x8825)\n"
                "print(e[271], e[274], s[0x9003], float(s[0x829A]), g[1], [float(v) for v in g[2]], "
                "i.info['dpi'], len(i.info['icc_profile']))",
                sTarget),
        "Cameras Ltd 1 2024:03:05 10:20:30 0.004 N [48.0, 10.0, 1.5] (150.0, 300.0) " +
            std::to_string(aSwappedProfile().size()) + "\n");
}

TEST(TiffProfile, OfColoursIsLeftOutOfBlackAndWhite)
{
    ImageBuffer aImage = aPattern(9, 9, 3);
    aImage.icc_profile = aSwappedProfile();

    const auto aColours = aDecoded(codecTiff, aEncoded(codecTiff, aImage, objCompression(1)));
    ASSERT_TRUE(aColours);
    EXPECT_EQ(aColours->icc_profile, aSwappedProfile());
    const Block aBlackAndWhiteFile = aEncoded(codecTiff, aImage, objCompression(4));
    InputFile objFile{Bytes(aBlackAndWhiteFile)};
    const auto objHeader = objReadTiffHeader(objFile);
    ASSERT_TRUE(objHeader);
    EXPECT_FALSE(pEntryOf(aReadEntries(objFile, *objHeader, objHeader->nFirstDirectory), TIFFTAG_ICCPROFILE));
}

TEST(BigTiff, IsWrittenForWhatAClassicFileCannotHold)
{
    const TestFolder objFolder;
    ImageBuffer aImage = aPattern(300, 200, 3);
    aImage.dots_per_inch_x = aImage.dots_per_inch_y = 72;
    OutputFile objOut(objFolder.sPath("big.tif"));
    TiffPagePlace objPlace;
    SaveSettings objSettings = objCompression(1);
    objSettings.objTexts.sTitle = "Large";

    ASSERT_TRUE(bWriteTiffFile(objOut, aImage, objSettings, {true, false, 0}, objPlace) && objOut.Commit());

    const Block aFile = aFileContent(objFolder.sPath("big.tif"));
    EXPECT_EQ(aFile[2], 43);
    const auto aRead = aDecoded(codecTiff, aFile);
    ASSERT_TRUE(aRead);
    EXPECT_EQ(aRead->bytes, aImage.bytes);
    EXPECT_DOUBLE_EQ(aRead->dots_per_inch_x, 72);
    EXPECT_EQ(sTagOf(aFile, TIFFTAG_DOCUMENTNAME), "Large");
    std::string sInfo;
    EXPECT_TRUE(bRun("tiffinfo -D " + objFolder.sPath("big.tif"), &sInfo));
    EXPECT_NE(sInfo.find("Compression Scheme: LZW"), std::string::npos) << sInfo;
    EXPECT_EQ(sInfo.find("arning"), std::string::npos) << sInfo;
}

TEST(BigTiff, IsChosenBySizeAlone)
{
    ImageBuffer aImage = aPattern(300, 200, 3);
    EXPECT_LT(nMostPageBytes(aImage), kClassicEnd);
    EXPECT_GT(nMostPageBytes(aImage), aImage.bytes.size() * 3 / 2);
    EXPECT_EQ(aEncoded(codecTiff, aImage)[2], 42);
}
