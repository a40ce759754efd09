// Tests of writing JPEG 2000 files.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "src/platform/image/codecs/j2k/j2k.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block aSaved(const ImageBuffer& aImage, std::int32_t lQuality, const ImageInfoTexts& objTexts = {})
{
    SaveSettings objSettings;
    objSettings.lJPEGQuality = lQuality;
    objSettings.objTexts = objTexts;
    return aEncoded(codecJ2k, aImage, objSettings);
}

double dPsnr(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    double dSum = 0;
    for (std::size_t i = 0; i < aOne.bytes.size(); ++i)
        dSum += std::pow(aOne.bytes[i] - aOther.bytes[i], 2);
    return 10 * std::log10(255 * 255 / (dSum / static_cast<double>(aOne.bytes.size())));
}

// A picture with detail everywhere.
ImageBuffer aDetailed(std::int32_t lWidth, std::int32_t lHeight)
{
    ImageBuffer aImage = aPattern(lWidth, lHeight, 3);
    unsigned nSeed = 5;
    for (std::size_t i = 0; i < aImage.bytes.size(); ++i) {
        if (i % 3 == 0)
            nSeed = nSeed * 1103515245 + 12345;
        aImage.bytes[i] = static_cast<std::uint8_t>(aImage.bytes[i] * 3 / 4 + (nSeed >> 16) % 64);
    }
    return aImage;
}

std::string sOpenJpegSays(const Block& aFile, const std::string& sGrep)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("in.j2k"), aFile);
    std::string sOutput;
    EXPECT_TRUE(bRun("opj_dump -i " + objFolder.sPath("in.j2k") + " | grep -a " + sGrep, &sOutput))
        << sOutput;
    return sOutput;
}
}  // namespace

TEST(J2kEncoder, LosesNothingAtQuality100)
{
    for (const std::int32_t lChannels : {1, 3, 4}) {
        const ImageBuffer aImage = aPattern(150, 90, lChannels);
        const Block aFile = aSaved(aImage, 100);
        ASSERT_FALSE(aFile.empty());
        EXPECT_EQ(aFile[0], 0xFF);
        EXPECT_EQ(aFile[1], 0x4F);
        const auto aBack = aDecoded(codecJ2k, aFile);
        ASSERT_TRUE(aBack);
        EXPECT_EQ(objDifference(*aBack, aImage).lGreatest, 0) << lChannels;
    }
}

TEST(J2kEncoder, IsReadByOtherProgramsToThePixel)
{
    const TestFolder objFolder;
    for (const std::int32_t lChannels : {1, 3}) {
        const ImageBuffer aImage = aPattern(150, 90, lChannels);
        WriteFileContent(objFolder.sPath("in.j2k"), aSaved(aImage, 100));
        const std::string sFiles = objFolder.sPath("in.j2k") + " " + objFolder.sPath("out.pnm");
        for (const std::string& sCommand :
             {ImageMagick("convert") + " " + sFiles,
              "opj_decompress -i " + objFolder.sPath("in.j2k") + " -o " + objFolder.sPath("out.png") +
                  " && " + ImageMagick("convert") + " " + objFolder.sPath("out.png") + " " +
                  objFolder.sPath("out.pnm"),
              "/usr/bin/python3 -c 'import sys; from PIL import Image; "
              "Image.open(sys.argv[1]).save(sys.argv[2])' " +
                  sFiles}) {
            std::string sOutput;
            ASSERT_TRUE(bRun(sCommand, &sOutput)) << sOutput;
            EXPECT_EQ(objDifference(*aReadPnm(objFolder.sPath("out.pnm")), aImage).lGreatest, 0) << sCommand;
        }
    }
}

TEST(J2kEncoder, WritesTilesThatMeetWithoutASeam)
{
    const ImageBuffer aImage = aPattern(1100, 1030, 3);
    const Block aFile = aSaved(aImage, 100);

    EXPECT_NE(sOpenJpegSays(aFile, "'tw='").find("tw=2, th=2"), std::string::npos);
    EXPECT_EQ(objDifference(*aDecoded(codecJ2k, aFile), aImage).lGreatest, 0);
}

TEST(J2kEncoder, GrowsWithTheQuality)
{
    for (const ImageBuffer& aImage : {aPattern(200, 160, 3), aDetailed(200, 160), aPattern(200, 160, 1)}) {
        std::size_t nLast = 0;
        double dLast = 0;
        for (const std::int32_t lQuality : {1, 10, 25, 50, 60, 75, 85, 95}) {
            const Block aFile = aSaved(aImage, lQuality);
            const double dHere = dPsnr(*aDecoded(codecJ2k, aFile), aImage);
            EXPECT_GE(aFile.size(), nLast) << lQuality;
            EXPECT_GT(dHere, dLast) << lQuality;
            nLast = aFile.size();
            dLast = dHere;
        }
        EXPECT_GE(aSaved(aImage, 99).size(), nLast);
        EXPECT_GT(dLast, 40);
    }
}

TEST(J2kEncoder, ComesNearItsTarget)
{
    const ImageBuffer aImage = aDetailed(256, 256);
    for (const std::int32_t lQuality : {30, 60, 90})
        EXPECT_NEAR(dPsnr(*aDecoded(codecJ2k, aSaved(aImage, lQuality)), aImage),
                    dTargetPsnr(aImage, lQuality), 1.5)
            << lQuality;
}

TEST(J2kEncoder, LosesLessThanJpegOfThatQualityInAboutAsManyBytes)
{
    const ImageBuffer aImage = aDetailed(320, 240);
    const TestFolder objFolder;
    WritePnm(objFolder.sPath("in.ppm"), aImage);
    for (const std::int32_t lQuality : {60, 75, 90}) {
        ASSERT_TRUE(bRun("cjpeg -quality " + std::to_string(lQuality) + " -outfile " +
                         objFolder.sPath("out.jpg") + " " + objFolder.sPath("in.ppm")));
        ASSERT_TRUE(bRun("djpeg -outfile " + objFolder.sPath("out.ppm") + " " + objFolder.sPath("out.jpg")));

        const Block aFile = aSaved(aImage, lQuality);

        EXPECT_LT(aFile.size(), aFileContent(objFolder.sPath("out.jpg")).size() * 3 / 2) << lQuality;
        EXPECT_GT(dPsnr(*aDecoded(codecJ2k, aFile), aImage),
                  dPsnr(*aReadPnm(objFolder.sPath("out.ppm")), aImage))
            << lQuality;
    }
}

TEST(J2kTarget, IsHigherForSmoothPicturesAndRisesWithTheQuality)
{
    const ImageBuffer aSmooth = aPattern(200, 160, 3), aFull = aDetailed(200, 160);
    for (std::int32_t lQuality = 2; lQuality <= 99; ++lQuality) {
        EXPECT_GT(dTargetPsnr(aSmooth, lQuality), dTargetPsnr(aFull, lQuality)) << lQuality;
        EXPECT_GE(dTargetPsnr(aFull, lQuality), dTargetPsnr(aFull, lQuality - 1)) << lQuality;
    }
}

TEST(J2kEncoder, WritesPicturesOfAnyShape)
{
    for (const auto& [lWidth, lHeight] :
         {std::pair{1, 1}, {2, 1}, {1, 3}, {1, 2000}, {3000, 1}, {33, 2}, {1025, 1}})
        for (const std::int32_t lChannels : {1, 3, 4})
            for (const std::int32_t lQuality : {100, 75}) {
                const ImageBuffer aImage = aPattern(lWidth, lHeight, lChannels);
                const auto aBack = aDecoded(codecJ2k, aSaved(aImage, lQuality));
                ASSERT_TRUE(aBack) << lWidth << "x" << lHeight << "x" << lChannels << " " << lQuality;
                EXPECT_LE(objDifference(*aBack, aImage).lGreatest, lQuality == 100 ? 0 : 60);
            }
}

TEST(J2kEncoder, WritesTheTextsAsAComment)
{
    ImageInfoTexts objTexts;
    objTexts.sTitle = "A title";
    objTexts.sCopyright = std::string(70000, 'c');

    const Block aFile = aSaved(aPattern(9, 9, 3), 100, objTexts);

    const std::string sFile(aFile.begin(), aFile.end());
    EXPECT_NE(sFile.find("Title: A title\nCopyright: ccc"), std::string::npos);
    EXPECT_TRUE(aDecoded(codecJ2k, aFile));
}

RC_GTEST_PROP(J2kEncoder, GivesBackAnyPictureAtQuality100, ())
{
    ImageBuffer aImage;
    aImage.width = *rc::gen::inRange(1, 40);
    aImage.height = *rc::gen::inRange(1, 40);
    aImage.channels = *rc::gen::element(1, 3, 4);
    const auto nBytes = static_cast<std::size_t>(aImage.width * aImage.height * aImage.channels);
    const auto aBytes = *rc::gen::container<Block>(nBytes, rc::gen::arbitrary<std::uint8_t>());
    aImage.bytes.assign(aBytes.begin(), aBytes.end());

    const auto aBack = aDecoded(codecJ2k, aSaved(aImage, 100));

    RC_ASSERT(aBack.has_value());
    RC_ASSERT(objDifference(*aBack, aImage).lGreatest == 0);
}
