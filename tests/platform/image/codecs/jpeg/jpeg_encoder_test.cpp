// Tests of writing JPEG files.
#include <gtest/gtest.h>

#include <cmath>

#include "src/platform/image/codec_image_file.h"
#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/codecs/jpeg/jpeg_segments.h"
#include "tests/platform/image/support/host_files.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/profiles.h"

namespace
{
using Block = std::vector<std::uint8_t>;

SaveSettings Quality(std::int32_t lQuality)
{
    SaveSettings objSettings;
    objSettings.lJPEGQuality = lQuality;
    return objSettings;
}

// What Pillow says of a file: a Python expression over the picture p.
std::string sPillow(const Block& aFile, const std::string& sExpression)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("picture.jpg"), aFile);
    return sPython(
        "import sys\nfrom PIL import Image, JpegImagePlugin, IptcImagePlugin\n"
        "p = Image.open(sys.argv[1]); p.load()\nprint(" +
            sExpression + ", end='')\n",
        objFolder.sPath("picture.jpg"));
}

ImageBuffer aAsPillowDecodes(const Block& aFile)
{
    const TestFolder objFolder;
    WriteFileContent(objFolder.sPath("picture.jpg"), aFile);
    sPython("import sys\nfrom PIL import Image\nImage.open(sys.argv[1]).save(sys.argv[2])\n",
            objFolder.sPath("picture.jpg") + " " + objFolder.sPath("picture.ppm"));
    return aReadPnm(objFolder.sPath("picture.ppm")).value_or(ImageBuffer{});
}
}  // namespace

TEST(JpegEncoder, MakesFilesThatPillowDecodesAsWeDo)
{
    for (const int lChannels : {1, 3})
        for (const auto& [W, H] : {std::pair{1, 1}, {83, 61}, {16, 16}, {640, 1}, {1, 300}}) {
            const ImageBuffer aImage = aPattern(W, H, lChannels);
            const Block aFile = aEncoded(codecJpeg, aImage, Quality(95));
            const auto aOurs = aDecoded(codecJpeg, aFile);
            ASSERT_TRUE(aOurs);
            EXPECT_EQ(aOurs->channels, lChannels);
            EXPECT_LE(objDifference(*aOurs, aAsPillowDecodes(aFile)).lGreatest, 1);
            EXPECT_LT(objDifference(*aOurs, aImage).dMean, 2);
        }
}

TEST(JpegEncoder, HalvesTheColoursBelowQualityNinetyOnly)
{
    const ImageBuffer aImage = aPattern(64, 64, 3);
    const std::string sSampling = "JpegImagePlugin.get_sampling(p)";  // 0 is 4:4:4, 2 is 4:2:0
    EXPECT_EQ(sPillow(aEncoded(codecJpeg, aImage, Quality(89)), sSampling), "2");
    EXPECT_EQ(sPillow(aEncoded(codecJpeg, aImage, Quality(90)), sSampling), "0");
}

TEST(JpegEncoder, WritesTheTablesThatOtherProgramsWriteForTheQuality)
{
    const TestFolder objFolder;
    const ImageBuffer aImage = aPattern(200, 150, 3);
    WritePnm(objFolder.sPath("in.ppm"), aImage);
    for (const int lQuality : {1, 40, 75, 100}) {
        ASSERT_TRUE(bRun("cjpeg -baseline -quality " + std::to_string(lQuality) +
                         (lQuality >= 90 ? " -sample 1x1" : "") + " -outfile " + objFolder.sPath("out.jpg") +
                         " " + objFolder.sPath("in.ppm")));
        EXPECT_EQ(aEncoded(codecJpeg, aImage, Quality(lQuality)), aFileContent(objFolder.sPath("out.jpg")));
    }
}

TEST(JpegEncoder, ClampsTheQuality)
{
    const ImageBuffer aImage = aPattern(64, 64, 3);
    EXPECT_EQ(aEncoded(codecJpeg, aImage, Quality(-5)), aEncoded(codecJpeg, aImage, Quality(1)));
    EXPECT_EQ(aEncoded(codecJpeg, aImage, Quality(500)), aEncoded(codecJpeg, aImage, Quality(100)));
}

TEST(JpegEncoder, WritesTheSevenTexts)
{
    SaveSettings objSettings;
    objSettings.objTexts = {"T", "Described here", "2021-07-04", "Ann", "(c)", "Maker", "Model"};
    EXPECT_EQ(
        sPillow(aEncoded(codecJpeg, aPattern(9, 9, 3), objSettings), "sorted(p.getexif().items())"),
        "[(269, 'T'), (270, 'Described here'), (271, 'Maker'), (272, 'Model'), (306, '2021:07:04 00:00:00'), "
        "(315, 'Ann'), (33432, '(c)')]");
}

TEST(JpegEncoder, WritesNoExifWithoutSourceAndTexts)
{
    EXPECT_EQ(sPillow(aEncoded(codecJpeg, aPattern(9, 9, 3)), "sorted(p.info)"),
              "['jfif', 'jfif_density', 'jfif_unit', 'jfif_version']");
}

TEST(JpegEncoder, WritesTheResolutionAsExactlyAsJfifCan)
{
    ImageBuffer aImage = aPattern(9, 9, 3);
    aImage.dots_per_inch_x = 300;
    aImage.dots_per_inch_y = 150;
    EXPECT_EQ(sPillow(aEncoded(codecJpeg, aImage), "p.info['jfif_unit'], p.info['jfif_density']"),
              "1 (300, 150)");
    aImage.dots_per_inch_x = aImage.dots_per_inch_y = 100 * 2.54;
    aImage.dots_per_inch_x = aImage.dots_per_inch_y = 118 * 2.54;
    EXPECT_EQ(sPillow(aEncoded(codecJpeg, aImage), "p.info['jfif_unit'], p.info['jfif_density']"),
              "2 (118, 118)");
    for (const double dNone : {0.0, -1.0, 1e9, std::nan("")}) {
        aImage.dots_per_inch_x = aImage.dots_per_inch_y = dNone;
        EXPECT_EQ(sPillow(aEncoded(codecJpeg, aImage), "p.info['jfif_unit'], p.info['jfif_density']"),
                  "0 (1, 1)");
    }
}

TEST(JpegEncoder, CarriesProfileXmpAndIptcThrough)
{
    ImageBuffer aImage = aPattern(33, 21, 3);
    aImage.icc_profile = aSwappedProfile();
    aImage.metadata.xmp = {'<', 'x', '/', '>'};
    aImage.metadata.iptc = {0x1C, 2, 120, 0, 5, 'h', 'e', 'l', 'l', 'o'};

    const Block aFile = aEncoded(codecJpeg, aImage);

    EXPECT_EQ(sPillow(aFile, "IptcImagePlugin.getiptcinfo(p)"), "{(2, 120): b'hello'}");
    EXPECT_EQ(sPillow(aFile, "len(p.info['icc_profile'])"), std::to_string(aImage.icc_profile.size()));
    const auto aBack = aDecoded(codecJpeg, aFile);
    ASSERT_TRUE(aBack);
    EXPECT_EQ(aBack->icc_profile, aImage.icc_profile);
    EXPECT_EQ(aBack->metadata.xmp, aImage.metadata.xmp);
    EXPECT_EQ(aBack->metadata.iptc, aImage.metadata.iptc);
}

TEST(JpegEncoder, SplitsAProfileThatIsLongerThanASegment)
{
    ImageBuffer aImage = aPattern(9, 9, 3);
    aImage.icc_profile = aSwappedProfile();
    aImage.icc_profile.resize(150'000, 7);  // bytes after a profile's own size are allowed

    const Block aFile = aEncoded(codecJpeg, aImage);

    EXPECT_EQ(aDecoded(codecJpeg, aFile)->icc_profile, aImage.icc_profile);
    EXPECT_EQ(sPillow(aFile, "len(p.info['icc_profile'])"), "150000");
}

TEST(JpegEncoder, LeavesOutAProfileOfAnotherSpace)
{
    ImageBuffer aImage = aPattern(9, 9, 1);
    aImage.icc_profile = aSwappedProfile();
    EXPECT_EQ(sPillow(aEncoded(codecJpeg, aImage), "'icc_profile' in p.info"), "False");
}

TEST(JpegEncoder, LeavesOutBlocksThatAreTooLongAndStillWritesTheTexts)
{
    ImageBuffer aImage = aPattern(9, 9, 3);
    aImage.metadata.exif = {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12, 1, 3,
                            0,   1,   0,  0, 0, 1, 0, 0, 0, 0, 0,    0, 0};
    aImage.metadata.exif.resize(70'000, 1);
    aImage.metadata.xmp.assign(70'000, 'x');
    aImage.metadata.iptc.assign(70'000, 0x1C);
    SaveSettings objSettings;
    objSettings.objTexts.sAuthor = "Ann";

    const Block aFile = aEncoded(codecJpeg, aImage, objSettings);

    EXPECT_EQ(sPillow(aFile, "sorted(p.getexif().items())"), "[(315, 'Ann')]");
    EXPECT_TRUE(aDecoded(codecJpeg, aFile)->metadata.xmp.empty());
    EXPECT_TRUE(aDecoded(codecJpeg, aFile)->metadata.iptc.empty());
}

TEST(JpegEncoder, TakesThePaddingOffAnXmpPacketThatIsTooLong)
{
    ImageBuffer aImage = aPattern(9, 9, 3);
    const std::string sXmp = "<x/>" + std::string(70'000, ' ') + "<?xpacket end='w'?>";
    aImage.metadata.xmp.assign(sXmp.begin(), sXmp.end());

    const auto aBack = aDecoded(codecJpeg, aEncoded(codecJpeg, aImage));

    EXPECT_EQ(std::string(aBack->metadata.xmp.begin(), aBack->metadata.xmp.end()), "<x/><?xpacket end='w'?>");
}

TEST(JpegEncoder, HoldsTheLongestSides)
{
    EXPECT_EQ(aDecoded(codecJpeg, aEncoded(codecJpeg, aPattern(65500, 2, 3)))->width, 65500);
    EXPECT_EQ(aDecoded(codecJpeg, aEncoded(codecJpeg, aPattern(1, 65500, 1)))->height, 65500);
}

TEST(JpegSave, LaysAlphaOnWhiteAndKeepsExifAcrossALoad)
{
    const HostFiles objFiles;
    CodecImageFile objImageFile(objFiles);
    const TestFolder objFolder;
    ImageBuffer aImage;
    ASSERT_TRUE(objImageFile.LoadImage(sSamplePath("jpeg/turned.jpg"), aImage));
    ASSERT_TRUE(objImageFile.SaveJPEG(aImage, objFolder.sPath("upright.jpg")));
    EXPECT_EQ(sPillow(aFileContent(objFolder.sPath("upright.jpg")), "p.size, sorted(p.getexif().items())"),
              "(83, 61) [(271, 'Cameras Ltd'), (274, 1)]");

    ImageBuffer aClear = aPattern(40, 30, 4);
    for (std::size_t i = 3; i < aClear.bytes.size(); i += 4)
        aClear.bytes[i] = 0;
    ASSERT_TRUE(objImageFile.SaveJPEG(aClear, objFolder.sPath("clear.jpg")));
    EXPECT_EQ(sPillow(aFileContent(objFolder.sPath("clear.jpg")), "p.getextrema()"),
              "((255, 255), (255, 255), (255, 255))");
}

TEST(JpegSave, IsFalseForAFullDiskAndLeavesNothing)
{
    const HostFiles objFiles;
    CodecImageFile objImageFile(objFiles);
    const TestFolder objFolder;
    EXPECT_FALSE(objImageFile.SaveJPEG(aPattern(40, 30, 3), objFolder.sPath("missing/out.jpg")));
    EXPECT_FALSE(objImageFile.SaveJPEG(aPattern(40, 30, 3), "/dev/full"));
    EXPECT_FALSE(objImageFile.SaveJPEG(ImageBuffer{}, objFolder.sPath("empty.jpg")));
}
