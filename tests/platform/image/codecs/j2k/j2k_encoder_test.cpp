// Tests of the JPEG 2000 encoder.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "src/platform/image/codecs/j2k/j2k.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/support/paths.h"

namespace
{
using Block = std::vector<std::uint8_t>;

Block EncodeAtQuality(const ImageBuffer& image, std::int32_t quality, const ImageInfoTexts& texts = {})
{
    SaveSettings settings;
    settings.jpeg_quality = quality;
    settings.texts = texts;
    return Encoded(kJ2kCodec, image, settings);
}

double Psnr(const ImageBuffer& one, const ImageBuffer& other)
{
    double sum = 0;
    for (std::size_t i = 0; i < one.bytes.size(); ++i)
        sum += std::pow(one.bytes[i] - other.bytes[i], 2);
    return 10 * std::log10(255 * 255 / (sum / static_cast<double>(one.bytes.size())));
}

// A picture with detail everywhere.
ImageBuffer DetailedPicture(std::int32_t width, std::int32_t height)
{
    ImageBuffer image = Pattern(width, height, 3);
    unsigned seed = 5;
    for (std::size_t i = 0; i < image.bytes.size(); ++i) {
        if (i % 3 == 0)
            seed = seed * 1103515245 + 12345;
        image.bytes[i] = static_cast<std::uint8_t>(image.bytes[i] * 3 / 4 + (seed >> 16) % 64);
    }
    return image;
}

std::string OpenJpegSays(const Block& file, const std::string& grep)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("in.j2k"), file);
    std::string output;
    EXPECT_TRUE(RunCommand("opj_dump -i " + folder.Path("in.j2k") + " | grep -a " + grep, &output)) << output;
    return output;
}
}  // namespace

TEST(J2kEncoder, IsLosslessAtQuality100)
{
    for (const std::int32_t channels : {1, 3, 4}) {
        const ImageBuffer image = Pattern(150, 90, channels);
        const Block file = EncodeAtQuality(image, 100);
        ASSERT_FALSE(file.empty());
        EXPECT_EQ(file[0], 0xFF);
        EXPECT_EQ(file[1], 0x4F);
        const auto back = Decoded(kJ2kCodec, file);
        ASSERT_TRUE(back);
        EXPECT_EQ(DifferenceBetween(*back, image).greatest, 0) << channels;
    }
}

TEST(J2kEncoder, IsDecodedByOtherProgramsExactly)
{
    const TestFolder folder;
    for (const std::int32_t channels : {1, 3}) {
        const ImageBuffer image = Pattern(150, 90, channels);
        WriteFileContent(folder.Path("in.j2k"), EncodeAtQuality(image, 100));
        const std::string files = folder.Path("in.j2k") + " " + folder.Path("out.pnm");
        for (const std::string& command :
             {ImageMagick("convert") + " " + files,
              "opj_decompress -i " + folder.Path("in.j2k") + " -o " + folder.Path("out.png") + " && " +
                  ImageMagick("convert") + " " + folder.Path("out.png") + " " + folder.Path("out.pnm"),
              "/usr/bin/python3 -c 'import sys; from PIL import Image; "
              "Image.open(sys.argv[1]).save(sys.argv[2])' " +
                  files}) {
            std::string output;
            ASSERT_TRUE(RunCommand(command, &output)) << output;
            EXPECT_EQ(DifferenceBetween(*ReadPnm(folder.Path("out.pnm")), image).greatest, 0) << command;
        }
    }
}

TEST(J2kEncoder, JoinsTilesWithoutSeams)
{
    const ImageBuffer image = Pattern(1100, 1030, 3);
    const Block file = EncodeAtQuality(image, 100);

    EXPECT_NE(OpenJpegSays(file, "'tw='").find("tw=2, th=2"), std::string::npos);
    EXPECT_EQ(DifferenceBetween(*Decoded(kJ2kCodec, file), image).greatest, 0);
}

TEST(J2kEncoder, WritesMoreBytesForHigherQuality)
{
    for (const ImageBuffer& image : {Pattern(200, 160, 3), DetailedPicture(200, 160), Pattern(200, 160, 1)}) {
        std::size_t last_size = 0;
        double last_psnr = 0;
        for (const std::int32_t quality : {1, 10, 25, 50, 60, 75, 85, 95}) {
            const Block file = EncodeAtQuality(image, quality);
            const double here = Psnr(*Decoded(kJ2kCodec, file), image);
            EXPECT_GE(file.size(), last_size) << quality;
            EXPECT_GT(here, last_psnr) << quality;
            last_size = file.size();
            last_psnr = here;
        }
        EXPECT_GE(EncodeAtQuality(image, 99).size(), last_size);
        EXPECT_GT(last_psnr, 40);
    }
}

TEST(J2kEncoder, ComesCloseToTargetPsnr)
{
    const ImageBuffer image = DetailedPicture(256, 256);
    for (const std::int32_t quality : {30, 60, 90})
        EXPECT_NEAR(Psnr(*Decoded(kJ2kCodec, EncodeAtQuality(image, quality)), image),
                    TargetPsnr(image, quality), 1.5)
            << quality;
}

TEST(J2kEncoder, BeatsJpegOfSameQualityAtSimilarSize)
{
    const ImageBuffer image = DetailedPicture(320, 240);
    const TestFolder folder;
    WritePnm(folder.Path("in.ppm"), image);
    for (const std::int32_t quality : {60, 75, 90}) {
        ASSERT_TRUE(RunCommand("cjpeg -quality " + std::to_string(quality) + " -outfile " +
                               folder.Path("out.jpg") + " " + folder.Path("in.ppm")));
        ASSERT_TRUE(RunCommand("djpeg -outfile " + folder.Path("out.ppm") + " " + folder.Path("out.jpg")));

        const Block file = EncodeAtQuality(image, quality);

        EXPECT_LT(file.size(), FileContent(folder.Path("out.jpg")).size() * 3 / 2) << quality;
        EXPECT_GT(Psnr(*Decoded(kJ2kCodec, file), image), Psnr(*ReadPnm(folder.Path("out.ppm")), image))
            << quality;
    }
}

TEST(J2kTarget, RisesWithQualityAndSmoothness)
{
    const ImageBuffer smooth = Pattern(200, 160, 3), full = DetailedPicture(200, 160);
    for (std::int32_t quality = 2; quality <= 99; ++quality) {
        EXPECT_GT(TargetPsnr(smooth, quality), TargetPsnr(full, quality)) << quality;
        EXPECT_GE(TargetPsnr(full, quality), TargetPsnr(full, quality - 1)) << quality;
    }
}

TEST(J2kEncoder, WritesPicturesOfAnyShape)
{
    for (const auto& [width, height] :
         {std::pair{1, 1}, {2, 1}, {1, 3}, {1, 2000}, {3000, 1}, {33, 2}, {1025, 1}})
        for (const std::int32_t channels : {1, 3, 4})
            for (const std::int32_t quality : {100, 75}) {
                const ImageBuffer image = Pattern(width, height, channels);
                const auto back = Decoded(kJ2kCodec, EncodeAtQuality(image, quality));
                ASSERT_TRUE(back) << width << "x" << height << "x" << channels << " " << quality;
                EXPECT_LE(DifferenceBetween(*back, image).greatest, quality == 100 ? 0 : 60);
            }
}

TEST(J2kEncoder, WritesTextsAsComment)
{
    ImageInfoTexts texts;
    texts.sTitle = "A title";
    texts.sCopyright = std::string(70000, 'c');

    const Block file = EncodeAtQuality(Pattern(9, 9, 3), 100, texts);

    const std::string file_path(file.begin(), file.end());
    EXPECT_NE(file_path.find("Title: A title\nCopyright: ccc"), std::string::npos);
    EXPECT_TRUE(Decoded(kJ2kCodec, file));
}

RC_GTEST_PROP(J2kEncoder, GivesBackAnyPictureAtQuality100, ())
{
    ImageBuffer image;
    image.width = *rc::gen::inRange(1, 40);
    image.height = *rc::gen::inRange(1, 40);
    image.channels = *rc::gen::element(1, 3, 4);
    const auto byte_count = static_cast<std::size_t>(image.width * image.height * image.channels);
    const auto bytes = *rc::gen::container<Block>(byte_count, rc::gen::arbitrary<std::uint8_t>());
    image.bytes.assign(bytes.begin(), bytes.end());

    const auto back = Decoded(kJ2kCodec, EncodeAtQuality(image, 100));

    RC_ASSERT(back.has_value());
    RC_ASSERT(DifferenceBetween(*back, image).greatest == 0);
}
