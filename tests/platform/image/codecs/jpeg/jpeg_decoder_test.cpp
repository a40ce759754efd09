// Tests of reading JPEG files.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "src/platform/image/codec_image_file.h"
#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/codecs/jpeg/jpeg_segments.h"
#include "src/platform/image/metadata/metadata_edit.h"
#include "tests/platform/image/support/host_files.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/profiles.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block aSample(const std::string& sName)
{
    return aFileContent(sSamplePath("jpeg/" + sName));
}

ImageBuffer aScene()
{
    return aReadPnm(sSamplePath("jpeg/scene.ppm")).value();
}

// What another program decodes the sample to; it is called with the sample, the options and the PNM file to
// write.
ImageBuffer aBy(const std::string& sProgram, const std::string& sName, const std::string& sOptions = "")
{
    const TestFolder objFolder;
    const std::string sOut = objFolder.sPath("out.pnm");
    std::string sOutput;
    EXPECT_TRUE(bRun(sProgram + " " + sSamplePath("jpeg/" + sName) + " " + sOptions + " " + sOut, &sOutput))
        << sOutput;
    return aReadPnm(sOut).value_or(ImageBuffer{});
}

// The file with one more segment right after its beginning.
Block aWithSegment(const Block& aFile, int nApplication, const std::string& sName, const Block& aBytes)
{
    const std::size_t nLength = 2 + sName.size() + aBytes.size();
    Block aResult = {0xFF,
                     0xD8,
                     0xFF,
                     static_cast<std::uint8_t>(0xE0 + nApplication),
                     static_cast<std::uint8_t>(nLength >> 8),
                     static_cast<std::uint8_t>(nLength)};
    aResult.insert(aResult.end(), sName.begin(), sName.end());
    aResult.insert(aResult.end(), aBytes.begin(), aBytes.end());
    aResult.insert(aResult.end(), aFile.begin() + 2, aFile.end());
    return aResult;
}

const std::string kIcc("ICC_PROFILE\0", 12);
const std::string kXmp("http://ns.adobe.com/xap/1.0/\0", 29);
const std::string kPhotoshop("Photoshop 3.0\0", 14);

Block aIccPart(int nNumber, int nParts, const Block& aBytes)
{
    Block aPart = {static_cast<std::uint8_t>(nNumber), static_cast<std::uint8_t>(nParts)};
    aPart.insert(aPart.end(), aBytes.begin(), aBytes.end());
    return aPart;
}
}  // namespace

class JpegKinds : public testing::TestWithParam<const char*>
{
};

TEST_P(JpegKinds, DecodeAsOtherProgramsDecodeThem)
{
    const auto aImage = aDecoded(codecJpeg, aSample(GetParam()));

    ASSERT_TRUE(aImage);
    EXPECT_LE(objDifference(*aImage, aBy(ImageMagick("convert"), GetParam(), "-colorspace sRGB -depth 8"))
                  .lGreatest,
              2);
    if (aImage->channels == 3) {
        EXPECT_LT(objDifference(*aImage, aScene()).dMean, 4);
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, JpegKinds,
                         testing::Values("baseline.jpg", "progressive.jpg", "wide-chroma.jpg",
                                         "tall-chroma.jpg", "restarts.jpg", "arithmetic.jpg", "grey.jpg",
                                         "rgb.jpg"),
                         [](const auto& objInfo) {
                             std::string sName = objInfo.param;
                             std::erase_if(
                                 sName, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return sName;
                         });

TEST(JpegDecoder, GivesExactlyThePixelsOfTheReferenceDecoder)
{
    for (const char* sName : {"baseline.jpg", "progressive.jpg", "grey.jpg"}) {
        const auto aImage = aDecoded(codecJpeg, aSample(sName));
        ASSERT_TRUE(aImage) << sName;
        EXPECT_EQ(objDifference(*aImage, aBy("djpeg -dct int", sName, ">")).lGreatest, 0) << sName;
    }
}

// Coefficients of such a size are given back while rows come out; those of halved colours lie in rows of
// different lengths.
TEST(JpegDecoder, GivesTheSamePixelsOfALargeProgressiveFile)
{
    const TestFolder objFolder;
    WritePnm(objFolder.sPath("in.ppm"), aPattern(4200, 4101, 3));
    for (const char* sSampling : {"1x1", "2x1,1x1,1x1"}) {
        const std::string sFile = objFolder.sPath("in.jpg");
        const std::string sOut = objFolder.sPath("out.ppm");
        ASSERT_TRUE(bRun("cjpeg -progressive -sample " + std::string(sSampling) + " -outfile " + sFile + " " +
                         objFolder.sPath("in.ppm")));
        ASSERT_TRUE(bRun("djpeg -dct int -outfile " + sOut + " " + sFile));

        const auto aImage = aDecoded(codecJpeg, aFileContent(sFile));

        ASSERT_TRUE(aImage) << sSampling;
        EXPECT_EQ(objDifference(*aImage, aReadPnm(sOut).value_or(ImageBuffer{})).lGreatest, 0) << sSampling;
    }
}

TEST(JpegDecoder, ShowsInksOfEveryKindInTheColoursOfTheScene)
{
    for (const char* sName : {"cmyk.jpg", "cmyk-plain.jpg", "ycck.jpg"}) {
        const auto aImage = aDecoded(codecJpeg, aSample(sName));
        ASSERT_TRUE(aImage) << sName;
        EXPECT_EQ(aImage->channels, 3);
        const double dMean = objDifference(*aImage, aScene()).dMean;
        EXPECT_LT(dMean, 5) << sName;
    }
}

TEST(JpegDecoder, TurnsInksThroughTheFilesProfile)
{
    const Block aFile = aWithSegment(aSample("cmyk.jpg"), 2, kIcc, aIccPart(1, 1, aCmykProfile()));
    const auto aPlain = aDecoded(codecJpeg, aSample("cmyk.jpg"));
    const auto aImage = aDecoded(codecJpeg, aFile);

    ASSERT_TRUE(aImage);
    EXPECT_TRUE(aImage->icc_profile.empty());
    // The profile has cyan and yellow exchanged, and with them red and blue.
    ImageBuffer aExchanged = *aPlain;
    for (std::size_t i = 0; i + 2 < aExchanged.bytes.size(); i += 3)
        std::swap(aExchanged.bytes[i], aExchanged.bytes[i + 2]);
    EXPECT_LT(objDifference(*aImage, aExchanged).dMean, 6);
    EXPECT_GT(objDifference(*aImage, *aPlain).dMean, 30);
}

class JpegRefused : public testing::TestWithParam<const char*>
{
};

TEST_P(JpegRefused, IsAnOrdinaryFalse)
{
    EXPECT_FALSE(aDecoded(codecJpeg, aSample(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Samples, JpegRefused,
                         testing::Values("cut.jpg", "no-end.jpg", "end-too-soon.jpg", "lies-about-size.jpg",
                                         "too-large.jpg", "many-scans.jpg", "foreign.jpg", "README.md"),
                         [](const auto& objInfo) {
                             std::string sName = objInfo.param;
                             std::erase_if(
                                 sName, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return sName;
                         });

TEST(JpegDecoder, RefusesAFileCutAtAnyByte)
{
    for (const char* sName : {"baseline.jpg", "progressive.jpg", "arithmetic.jpg", "restarts.jpg"}) {
        const Block aGood = aSample(sName);
        for (std::size_t n = 0; n < aGood.size(); ++n)
            ASSERT_FALSE(aDecoded(codecJpeg, Bytes(aGood).first(n))) << sName << " cut to " << n;
    }
}

TEST(JpegDecoder, SurvivesEveryChangedByte)
{
    for (const char* sName :
         {"baseline.jpg", "progressive.jpg", "arithmetic.jpg", "restarts.jpg", "ycck.jpg"}) {
        const Block aGood = aSample(sName);
        int lDecoded = 0;
        for (std::size_t n = 0; n < aGood.size(); ++n)
            for (const std::uint8_t nMask : Block{0xFF, 0x01, 0x80}) {
                Block aChanged = aGood;
                aChanged[n] ^= nMask;
                lDecoded += aDecoded(codecJpeg, aChanged) ? 1 : 0;
            }
        EXPECT_GT(lDecoded, 0) << sName;
    }
}

TEST(JpegDecoder, DecodesAPictureThatIsDamagedBetweenRestarts)
{
    const Block aGood = aSample("restarts.jpg");
    Block aChanged = aGood;
    // The entropy data of one restart interval: a byte halfway between two restart markers is turned round.
    const auto IsRestart = [&](std::size_t n) { return aGood[n] == 0xFF && aGood[n + 1] == 0xD0; };
    std::size_t nMarker = 0;
    while (!IsRestart(nMarker))
        ++nMarker;
    aChanged[nMarker + 20] ^= 0x3C;

    const auto aImage = aDecoded(codecJpeg, aChanged);

    ASSERT_TRUE(aImage);
    EXPECT_LT(objDifference(*aImage, aScene()).dMean, 20);
}

TEST(JpegDecoder, RefusesMoreMegapixelsThanAllowedBeforeDecoding)
{
    Block aLarge = aSample("arithmetic.jpg");  // has no least count of bytes
    const std::uint8_t aFrame[] = {0xFF, 0xC9};
    const auto itFrame = std::search(aLarge.begin(), aLarge.end(), std::begin(aFrame), std::end(aFrame));
    ASSERT_NE(itFrame, aLarge.end());
    for (const int n : {5, 7}) {
        itFrame[n] = 0x40;  // 16384 pixels and more
        itFrame[n + 1] = 0;
    }
    setenv("VARNEL_MAX_MEGAPIXELS", "100", 1);
    EXPECT_FALSE(aDecoded(codecJpeg, aLarge));
    unsetenv("VARNEL_MAX_MEGAPIXELS");
}

TEST(JpegDecoder, ReadsResolutionInInchesCentimetresOrFromExif)
{
    Block aFile = aSample("baseline.jpg");  // JFIF: at 13 the unit, then two densities
    const auto SetDensity = [&](std::uint8_t nUnit, std::uint8_t nX, std::uint8_t nY) {
        aFile[13] = nUnit;
        aFile[14] = aFile[16] = 0;
        aFile[15] = nX;
        aFile[17] = nY;
    };
    SetDensity(1, 200, 100);
    EXPECT_EQ(aDecoded(codecJpeg, aFile)->dots_per_inch_x, 200);
    EXPECT_EQ(aDecoded(codecJpeg, aFile)->dots_per_inch_y, 100);
    SetDensity(2, 100, 50);
    EXPECT_DOUBLE_EQ(aDecoded(codecJpeg, aFile)->dots_per_inch_x, 254);
    SetDensity(0, 1, 1);
    EXPECT_EQ(aDecoded(codecJpeg, aFile)->dots_per_inch_x, 0);
    Block aExif = {'M', 'M', 0, 42, 0, 0, 0, 8, 0, 2};
    for (const std::uint8_t nTag : Block{0x1A, 0x1B})
        aExif.insert(aExif.end(), {1, nTag, 0, 5, 0, 0, 0, 1, 0, 0, 0, 38});
    aExif.insert(aExif.end(), {0, 0, 0, 0, 0, 0, 1, 44, 0, 0, 0, 1});
    aFile = aWithSegment(aFile, 1, std::string("Exif\0\0", 6), aExif);
    EXPECT_EQ(aDecoded(codecJpeg, aFile)->dots_per_inch_x, 300);
}

TEST(JpegDecoder, BringsXmpAndIptcAndAProfileInParts)
{
    const Block aXmp = {'<', 'x', '/', '>'};
    const Block aIptc = {0x1C, 2, 5, 0, 3, 'a', 'b', 'c'};
    Block aResources = {'8', 'B', 'I', 'M', 3,   0xED, 1, 'n', 0, 0, 0, 3, 1, 2,
                        3,   0,   '8', 'B', 'I', 'M',  4, 4,   0, 0, 0, 0, 0, 8};
    aResources.insert(aResources.end(), aIptc.begin(), aIptc.end());
    const Block aProfile = aSwappedProfile();
    const Block aFirst(aProfile.begin(), aProfile.begin() + 100);
    const Block aSecond(aProfile.begin() + 100, aProfile.end());
    Block aFile = aWithSegment(aSample("baseline.jpg"), 1, kXmp, aXmp);
    aFile = aWithSegment(aFile, 13, kPhotoshop, aResources);
    aFile = aWithSegment(aFile, 2, kIcc, aIccPart(1, 2, aFirst));
    aFile = aWithSegment(aFile, 2, kIcc, aIccPart(2, 2, aSecond));  // comes first in the file

    const auto aImage = aDecoded(codecJpeg, aFile);

    ASSERT_TRUE(aImage);
    EXPECT_EQ(aImage->metadata.xmp, aXmp);
    EXPECT_EQ(aImage->metadata.iptc, aIptc);
    EXPECT_EQ(aImage->icc_profile, aProfile);
}

TEST(JpegDecoder, DropsAProfileThatIsBrokenOrOfAnotherSpace)
{
    const Block aGood = aSample("baseline.jpg");
    const Block aProfile = aSwappedProfile();
    for (const Block& aPart : {aIccPart(1, 2, aProfile), aIccPart(0, 1, aProfile), aIccPart(2, 1, aProfile),
                               aIccPart(1, 1, aGreyProfile(1)), aIccPart(1, 1, {}), Block{1}}) {
        const auto aImage = aDecoded(codecJpeg, aWithSegment(aGood, 2, kIcc, aPart));
        ASSERT_TRUE(aImage);
        EXPECT_TRUE(aImage->icc_profile.empty());
    }
    EXPECT_TRUE(aDecoded(codecJpeg, aWithSegment(aSample("grey.jpg"), 2, kIcc, aIccPart(1, 1, aProfile)))
                    ->icc_profile.empty());
}

TEST(JpegLoad, TurnsAPhotographUprightAndForgetsTheOrientation)
{
    const HostFiles objFiles;
    CodecImageFile objImageFile(objFiles);
    ImageBuffer aImage;

    ASSERT_TRUE(objImageFile.LoadImage(sSamplePath("jpeg/turned.jpg"), aImage));

    EXPECT_LT(objDifference(aImage, aScene()).dMean, 4);
    EXPECT_EQ(aImage.dots_per_inch_x, 144);
    const IfdReader objReader(aImage.metadata.exif);
    const auto aEntries = objReader.Entries(objReader.FirstDirectory());
    EXPECT_EQ(objReader.Number(*EntryWithTag(aEntries, kTagOrientation)), 1u);
}

TEST(JpegLoad, ShowsAllEightOrientationsAlike)
{
    const HostFiles objFiles;
    CodecImageFile objImageFile(objFiles);
    const TestFolder objFolder;
    // Pillow stores the scene so that each orientation tag puts it upright.
    sPython(
        "import sys\nfrom PIL import Image as I\n"
        "back = {1: None, 2: I.FLIP_LEFT_RIGHT, 3: I.ROTATE_180, 4: I.FLIP_TOP_BOTTOM, 5: I.TRANSPOSE,\n"
        "        6: I.ROTATE_90, 7: I.TRANSVERSE, 8: I.ROTATE_270}\n"
        "p = I.open(sys.argv[1])\n"
        "for n, how in back.items():\n"
        "    e = I.Exif(); e[0x112] = n\n"
        "    (p.transpose(how) if how is not None else p).save('%s%d.jpg' % (sys.argv[2], n), quality=98,\n"
        "        subsampling=0, exif=e.tobytes())\n",
        sSamplePath("jpeg/scene.ppm") + " " + objFolder.sPath(""));
    for (int lOrientation = 1; lOrientation <= 8; ++lOrientation) {
        ImageBuffer aImage;
        ASSERT_TRUE(objImageFile.LoadImage(objFolder.sPath(std::to_string(lOrientation) + ".jpg"), aImage));
        EXPECT_LT(objDifference(aImage, aScene()).dMean, 1.5) << lOrientation;
    }
}

TEST(JpegLoad, GoesByContentAndCountsOnePage)
{
    const HostFiles objFiles;
    CodecImageFile objImageFile(objFiles);
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("photo.bmp"), aSample("baseline.jpg"));
    ImageBuffer aImage;

    EXPECT_EQ(objImageFile.GetFrameCount(objFolder.sPath("photo.bmp")), 1);
    EXPECT_TRUE(objImageFile.LoadFrame(objFolder.sPath("photo.bmp"), 0, aImage));
    EXPECT_FALSE(objImageFile.LoadFrame(objFolder.sPath("photo.bmp"), 1, aImage));
    EXPECT_FALSE(objImageFile.LoadFrame(objFolder.sPath("photo.bmp"), -1, aImage));
    EXPECT_EQ(aImage.width, 83);
}
