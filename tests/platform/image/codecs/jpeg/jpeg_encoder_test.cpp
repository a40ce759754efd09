// Tests of the JPEG encoder.
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

SaveSettings Quality(std::int32_t quality)
{
    SaveSettings settings;
    settings.jpeg_quality = quality;
    return settings;
}

// Evaluates a Python expression over the Pillow image p.
std::string Pillow(const Block& file, const std::string& expression)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("picture.jpg"), file);
    return Python(
        "import sys\nfrom PIL import Image, JpegImagePlugin, IptcImagePlugin\n"
        "p = Image.open(sys.argv[1]); p.load()\nprint(" +
            expression + ", end='')\n",
        folder.Path("picture.jpg"));
}

ImageBuffer AsPillowDecodes(const Block& file)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("picture.jpg"), file);
    Python("import sys\nfrom PIL import Image\nImage.open(sys.argv[1]).save(sys.argv[2])\n",
           folder.Path("picture.jpg") + " " + folder.Path("picture.ppm"));
    return ReadPnm(folder.Path("picture.ppm")).value_or(ImageBuffer{});
}
}  // namespace

TEST(JpegEncoder, WritesFilesThatPillowDecodesEqually)
{
    for (const int channels : {1, 3})
        for (const auto& [w, h] : {std::pair{1, 1}, {83, 61}, {16, 16}, {640, 1}, {1, 300}}) {
            const ImageBuffer image = Pattern(w, h, channels);
            const Block file = Encoded(kJpegCodec, image, Quality(95));
            const auto ours = Decoded(kJpegCodec, file);
            ASSERT_TRUE(ours);
            EXPECT_EQ(ours->channels, channels);
            EXPECT_LE(DifferenceBetween(*ours, AsPillowDecodes(file)).greatest, 1);
            EXPECT_LT(DifferenceBetween(*ours, image).mean, 2);
        }
}

TEST(JpegEncoder, SubsamplesChromaOnlyBelowQualityNinety)
{
    const ImageBuffer image = Pattern(64, 64, 3);
    const std::string sampling = "JpegImagePlugin.get_sampling(p)";  // 0 is 4:4:4, 2 is 4:2:0
    EXPECT_EQ(Pillow(Encoded(kJpegCodec, image, Quality(89)), sampling), "2");
    EXPECT_EQ(Pillow(Encoded(kJpegCodec, image, Quality(90)), sampling), "0");
}

TEST(JpegEncoder, WritesStandardTablesForQuality)
{
    const TestFolder folder;
    const ImageBuffer image = Pattern(200, 150, 3);
    WritePnm(folder.Path("in.ppm"), image);
    for (const int quality : {1, 40, 75, 100}) {
        ASSERT_TRUE(RunCommand("cjpeg -baseline -quality " + std::to_string(quality) +
                               (quality >= 90 ? " -sample 1x1" : "") + " -outfile " + folder.Path("out.jpg") +
                               " " + folder.Path("in.ppm")));
        EXPECT_EQ(Encoded(kJpegCodec, image, Quality(quality)), FileContent(folder.Path("out.jpg")));
    }
}

TEST(JpegEncoder, ClampsQuality)
{
    const ImageBuffer image = Pattern(64, 64, 3);
    EXPECT_EQ(Encoded(kJpegCodec, image, Quality(-5)), Encoded(kJpegCodec, image, Quality(1)));
    EXPECT_EQ(Encoded(kJpegCodec, image, Quality(500)), Encoded(kJpegCodec, image, Quality(100)));
}

TEST(JpegEncoder, WritesSevenTexts)
{
    SaveSettings settings;
    settings.texts = {"T", "Described here", "2021-07-04", "Ann", "(c)", "Maker", "Model"};
    EXPECT_EQ(
        Pillow(Encoded(kJpegCodec, Pattern(9, 9, 3), settings), "sorted(p.getexif().items())"),
        "[(269, 'T'), (270, 'Described here'), (271, 'Maker'), (272, 'Model'), (306, '2021:07:04 00:00:00'), "
        "(315, 'Ann'), (33432, '(c)')]");
}

TEST(JpegEncoder, WritesNoExifWithoutSourceAndTexts)
{
    EXPECT_EQ(Pillow(Encoded(kJpegCodec, Pattern(9, 9, 3)), "sorted(p.info)"),
              "['jfif', 'jfif_density', 'jfif_unit', 'jfif_version']");
}

TEST(JpegEncoder, WritesResolutionAsExactlyAsJfifAllows)
{
    ImageBuffer image = Pattern(9, 9, 3);
    image.dots_per_inch_x = 300;
    image.dots_per_inch_y = 150;
    EXPECT_EQ(Pillow(Encoded(kJpegCodec, image), "p.info['jfif_unit'], p.info['jfif_density']"),
              "1 (300, 150)");
    image.dots_per_inch_x = image.dots_per_inch_y = 100 * 2.54;
    image.dots_per_inch_x = image.dots_per_inch_y = 118 * 2.54;
    EXPECT_EQ(Pillow(Encoded(kJpegCodec, image), "p.info['jfif_unit'], p.info['jfif_density']"),
              "2 (118, 118)");
    for (const double none : {0.0, -1.0, 1e9, std::nan("")}) {
        image.dots_per_inch_x = image.dots_per_inch_y = none;
        EXPECT_EQ(Pillow(Encoded(kJpegCodec, image), "p.info['jfif_unit'], p.info['jfif_density']"),
                  "0 (1, 1)");
    }
}

TEST(JpegEncoder, CopiesProfileXmpAndIptc)
{
    ImageBuffer image = Pattern(33, 21, 3);
    image.icc_profile = SwappedProfile();
    image.metadata.xmp = {'<', 'x', '/', '>'};
    image.metadata.iptc = {0x1C, 2, 120, 0, 5, 'h', 'e', 'l', 'l', 'o'};

    const Block file = Encoded(kJpegCodec, image);

    EXPECT_EQ(Pillow(file, "IptcImagePlugin.getiptcinfo(p)"), "{(2, 120): b'hello'}");
    EXPECT_EQ(Pillow(file, "len(p.info['icc_profile'])"), std::to_string(image.icc_profile.size()));
    const auto back = Decoded(kJpegCodec, file);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->icc_profile, image.icc_profile);
    EXPECT_EQ(back->metadata.xmp, image.metadata.xmp);
    EXPECT_EQ(back->metadata.iptc, image.metadata.iptc);
}

TEST(JpegEncoder, SplitsProfileLongerThanOneSegment)
{
    ImageBuffer image = Pattern(9, 9, 3);
    image.icc_profile = SwappedProfile();
    image.icc_profile.resize(150'000, 7);  // padding after a profile is allowed

    const Block file = Encoded(kJpegCodec, image);

    EXPECT_EQ(Decoded(kJpegCodec, file)->icc_profile, image.icc_profile);
    EXPECT_EQ(Pillow(file, "len(p.info['icc_profile'])"), "150000");
}

TEST(JpegEncoder, OmitsProfileOfOtherColourSpace)
{
    ImageBuffer image = Pattern(9, 9, 1);
    image.icc_profile = SwappedProfile();
    EXPECT_EQ(Pillow(Encoded(kJpegCodec, image), "'icc_profile' in p.info"), "False");
}

TEST(JpegEncoder, OmitsOversizedBlocksButWritesTexts)
{
    ImageBuffer image = Pattern(9, 9, 3);
    image.metadata.exif = {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12, 1, 3,
                           0,   1,   0,  0, 0, 1, 0, 0, 0, 0, 0,    0, 0};
    image.metadata.exif.resize(70'000, 1);
    image.metadata.xmp.assign(70'000, 'x');
    image.metadata.iptc.assign(70'000, 0x1C);
    SaveSettings settings;
    settings.texts.sAuthor = "Ann";

    const Block file = Encoded(kJpegCodec, image, settings);

    EXPECT_EQ(Pillow(file, "sorted(p.getexif().items())"), "[(315, 'Ann')]");
    EXPECT_TRUE(Decoded(kJpegCodec, file)->metadata.xmp.empty());
    EXPECT_TRUE(Decoded(kJpegCodec, file)->metadata.iptc.empty());
}

TEST(JpegEncoder, StripsPaddingFromOversizedXmpPacket)
{
    ImageBuffer image = Pattern(9, 9, 3);
    const std::string xmp = "<x/>" + std::string(70'000, ' ') + "<?xpacket end='w'?>";
    image.metadata.xmp.assign(xmp.begin(), xmp.end());

    const auto back = Decoded(kJpegCodec, Encoded(kJpegCodec, image));

    EXPECT_EQ(std::string(back->metadata.xmp.begin(), back->metadata.xmp.end()), "<x/><?xpacket end='w'?>");
}

TEST(JpegEncoder, SupportsMaximumSides)
{
    EXPECT_EQ(Decoded(kJpegCodec, Encoded(kJpegCodec, Pattern(65500, 2, 3)))->width, 65500);
    EXPECT_EQ(Decoded(kJpegCodec, Encoded(kJpegCodec, Pattern(1, 65500, 1)))->height, 65500);
}

TEST(JpegSave, FlattensAlphaOnWhiteAndKeepsExif)
{
    HostFiles files;
    CodecImageFile image_file(files, files.saver);
    const TestFolder folder;
    ImageBuffer image;
    ASSERT_TRUE(image_file.LoadImage(SamplePath("jpeg/good/pil-turned.jpg"), image));
    ASSERT_TRUE(image_file.SaveJPEG(image, folder.Path("upright.jpg")));
    EXPECT_EQ(Pillow(FileContent(folder.Path("upright.jpg")), "p.size, sorted(p.getexif().items())"),
              "(83, 61) [(271, 'Cameras Ltd'), (274, 1)]");

    ImageBuffer clear = Pattern(40, 30, 4);
    for (std::size_t i = 3; i < clear.bytes.size(); i += 4)
        clear.bytes[i] = 0;
    ASSERT_TRUE(image_file.SaveJPEG(clear, folder.Path("clear.jpg")));
    EXPECT_EQ(Pillow(FileContent(folder.Path("clear.jpg")), "p.getextrema()"),
              "((255, 255), (255, 255), (255, 255))");
}

TEST(JpegSave, FailsOnFullDiskAndLeavesNothing)
{
    HostFiles files;
    CodecImageFile image_file(files, files.saver);
    const TestFolder folder;
    EXPECT_FALSE(image_file.SaveJPEG(Pattern(40, 30, 3), folder.Path("missing/out.jpg")));
    EXPECT_FALSE(image_file.SaveJPEG(Pattern(40, 30, 3), "/dev/full"));
    EXPECT_FALSE(image_file.SaveJPEG(ImageBuffer{}, folder.Path("empty.jpg")));
}
