// Tests of the JPEG decoder.
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

Block Sample(const std::string& name)
{
    return FileContent(SamplePath("jpeg/" + name));
}

ImageBuffer Scene()
{
    return ReadPnm(SamplePath("jpeg/scene.ppm")).value();
}

// Decodes the sample with another program, called with the sample, options and the PNM file to write.
ImageBuffer By(const std::string& program, const std::string& name, const std::string& options = "")
{
    const TestFolder folder;
    const std::string out = folder.Path("out.pnm");
    std::string output;
    EXPECT_TRUE(RunCommand(program + " " + SamplePath("jpeg/" + name) + " " + options + " " + out, &output))
        << output;
    return ReadPnm(out).value_or(ImageBuffer{});
}

// Inserts a segment after the start of image.
Block WithSegment(const Block& file, int application, const std::string& name, const Block& bytes)
{
    const std::size_t length = 2 + name.size() + bytes.size();
    Block result = {0xFF,
                    0xD8,
                    0xFF,
                    static_cast<std::uint8_t>(0xE0 + application),
                    static_cast<std::uint8_t>(length >> 8),
                    static_cast<std::uint8_t>(length)};
    result.insert(result.end(), name.begin(), name.end());
    result.insert(result.end(), bytes.begin(), bytes.end());
    result.insert(result.end(), file.begin() + 2, file.end());
    return result;
}

const std::string kIcc("ICC_PROFILE\0", 12);
const std::string kXmp("http://ns.adobe.com/xap/1.0/\0", 29);
const std::string kPhotoshop("Photoshop 3.0\0", 14);

Block IccPart(int number, int parts, const Block& bytes)
{
    Block part = {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(parts)};
    part.insert(part.end(), bytes.begin(), bytes.end());
    return part;
}
}  // namespace

class JpegKinds : public testing::TestWithParam<const char*>
{
};

TEST_P(JpegKinds, MatchOtherDecoders)
{
    const auto image = Decoded(kJpegCodec, Sample(GetParam()));

    ASSERT_TRUE(image);
    EXPECT_LE(DifferenceBetween(*image, By(ImageMagick("convert"), GetParam(), "-colorspace sRGB -depth 8"))
                  .greatest,
              2);
    if (image->channels == 3) {
        EXPECT_LT(DifferenceBetween(*image, Scene()).mean, 4);
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, JpegKinds,
                         testing::Values("good/cjpeg-baseline.jpg", "good/cjpeg-progressive.jpg",
                                         "good/cjpeg-wide-chroma.jpg", "good/cjpeg-tall-chroma.jpg",
                                         "good/cjpeg-restarts.jpg", "good/cjpeg-arithmetic.jpg",
                                         "good/cjpeg-grey.jpg", "good/cjpeg-rgb.jpg"),
                         [](const auto& test) {
                             std::string name = test.param;
                             std::erase_if(
                                 name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return name;
                         });

TEST(JpegDecoder, MatchesReferenceDecoderExactly)
{
    for (const char* name :
         {"good/cjpeg-baseline.jpg", "good/cjpeg-progressive.jpg", "good/cjpeg-grey.jpg"}) {
        const auto image = Decoded(kJpegCodec, Sample(name));
        ASSERT_TRUE(image) << name;
        EXPECT_EQ(DifferenceBetween(*image, By("djpeg -dct int", name, ">")).greatest, 0) << name;
    }
}

// Coefficients of large files are released while rows are output; with subsampling, their rows differ in
// length.
TEST(JpegDecoder, DecodesLargeProgressiveFileExactly)
{
    const TestFolder folder;
    WritePnm(folder.Path("in.ppm"), Pattern(4200, 4101, 3));
    for (const char* sampling : {"1x1", "2x1,1x1,1x1"}) {
        const std::string file = folder.Path("in.jpg");
        const std::string out = folder.Path("out.ppm");
        ASSERT_TRUE(RunCommand("cjpeg -progressive -sample " + std::string(sampling) + " -outfile " + file +
                               " " + folder.Path("in.ppm")));
        ASSERT_TRUE(RunCommand("djpeg -dct int -outfile " + out + " " + file));

        const auto image = Decoded(kJpegCodec, FileContent(file));

        ASSERT_TRUE(image) << sampling;
        EXPECT_EQ(DifferenceBetween(*image, ReadPnm(out).value_or(ImageBuffer{})).greatest, 0) << sampling;
    }
}

TEST(JpegDecoder, ConvertsEveryKindOfCmykToScene)
{
    for (const char* name : {"good/pil-cmyk.jpg", "good/pil-cmyk-plain.jpg", "good/im-ycck.jpg"}) {
        const auto image = Decoded(kJpegCodec, Sample(name));
        ASSERT_TRUE(image) << name;
        EXPECT_EQ(image->channels, 3);
        const double mean = DifferenceBetween(*image, Scene()).mean;
        EXPECT_LT(mean, 5) << name;
    }
}

TEST(JpegDecoder, ConvertsCmykThroughEmbeddedProfile)
{
    const Block file = WithSegment(Sample("good/pil-cmyk.jpg"), 2, kIcc, IccPart(1, 1, CmykProfile()));
    const auto plain = Decoded(kJpegCodec, Sample("good/pil-cmyk.jpg"));
    const auto image = Decoded(kJpegCodec, file);

    ASSERT_TRUE(image);
    EXPECT_TRUE(image->icc_profile.empty());
    // The profile swaps cyan and yellow, and thus red and blue.
    ImageBuffer exchanged = *plain;
    for (std::size_t i = 0; i + 2 < exchanged.bytes.size(); i += 3)
        std::swap(exchanged.bytes[i], exchanged.bytes[i + 2]);
    EXPECT_LT(DifferenceBetween(*image, exchanged).mean, 6);
    EXPECT_GT(DifferenceBetween(*image, *plain).mean, 30);
}

class RefusedJpeg : public testing::TestWithParam<const char*>
{
};

TEST_P(RefusedJpeg, ReturnsFalseFromDecoder)
{
    EXPECT_FALSE(Decoded(kJpegCodec, Sample(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Samples, RefusedJpeg,
                         testing::Values("cut/in-header.jpg", "cut/no-pixels.jpg",
                                         "cut/end-before-pixels.jpg", "lying/size.jpg", "lying/too-large.jpg",
                                         "lying/many-scans.jpg", "foreign/gif.jpg", "README.md"),
                         [](const auto& test) {
                             std::string name = test.param;
                             std::erase_if(
                                 name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return name;
                         });

// Where the data of the first scan starts.
static std::size_t PixelsOffset(const Block& file)
{
    const std::uint8_t scan[] = {0xFF, 0xDA};
    const auto found = std::search(file.begin(), file.end(), std::begin(scan), std::end(scan));
    return static_cast<std::size_t>(found - file.begin()) + 2 + found[3];
}

static std::int32_t EqualRows(const ImageBuffer& one, const ImageBuffer& other)
{
    const auto end = std::mismatch(one.bytes.begin(), one.bytes.end(), other.bytes.begin()).first;
    return static_cast<std::int32_t>(end - one.bytes.begin()) / (one.width * one.channels);
}

TEST(JpegDecoder, ShowsRowsBeforeTruncation)
{
    for (const char* name : {"good/cjpeg-baseline.jpg", "good/cjpeg-restarts.jpg"}) {
        const Block good = Sample(name);
        const std::size_t pixels = PixelsOffset(good);
        const ImageBuffer whole = Decoded(kJpegCodec, good).value();
        std::int32_t last_rows = 0;
        for (std::size_t n = 0; n < good.size(); ++n) {
            SCOPED_TRACE(std::string(name) + " cut to " + std::to_string(n));
            const auto image = Decoded(kJpegCodec, Bytes(good).first(n));
            if (n <= pixels) {
                ASSERT_FALSE(image);
            } else if (n > pixels + 40) {
                ASSERT_TRUE(image);
                const std::int32_t rows = EqualRows(*image, whole);
                ASSERT_GE(rows, last_rows);
                last_rows = rows;
            }
        }
        EXPECT_EQ(last_rows, whole.height) << "only the end marker is missing";
    }
}

TEST(JpegDecoder, ShowsProgressiveScansBeforeTruncation)
{
    const Block good = Sample("good/cjpeg-progressive.jpg");
    const std::size_t pixels = PixelsOffset(good);
    const std::size_t data = good.size() - pixels;
    const auto difference_at = [&](std::size_t n) {
        const auto image = Decoded(kJpegCodec, Bytes(good).first(n));
        return image ? DifferenceBetween(*image, Scene()).mean : 255.0;
    };

    EXPECT_EQ(difference_at(pixels), 255) << "no pixels";
    for (std::size_t n = pixels + 40; n < good.size(); ++n)
        ASSERT_LT(difference_at(n), 70) << "cut to " << n;
    EXPECT_LT(difference_at(pixels + data / 4), 40);
    EXPECT_LT(difference_at(pixels + data / 2), difference_at(pixels + data / 4));
    EXPECT_LT(difference_at(good.size() - 2), 4);
}

TEST(JpegDecoder, SurvivesTruncationOfArithmeticFileAtAnyByte)
{
    const Block good = Sample("good/cjpeg-arithmetic.jpg");
    const std::size_t pixels = PixelsOffset(good);
    for (std::size_t n = 0; n < good.size(); ++n) {
        const auto image = Decoded(kJpegCodec, Bytes(good).first(n));
        ASSERT_TRUE(!image || n > pixels) << n;
        ASSERT_TRUE(image || n < pixels + 20) << n;
    }
}

TEST(JpegDecoder, SurvivesCorruptionOfAnySingleByte)
{
    for (const char* name : {"good/cjpeg-baseline.jpg", "good/cjpeg-progressive.jpg",
                             "good/cjpeg-arithmetic.jpg", "good/cjpeg-restarts.jpg", "good/im-ycck.jpg"}) {
        const Block good = Sample(name);
        int decoded = 0;
        for (std::size_t n = 0; n < good.size(); ++n)
            for (const std::uint8_t mask : Block{0xFF, 0x01, 0x80}) {
                Block changed = good;
                changed[n] ^= mask;
                decoded += Decoded(kJpegCodec, changed) ? 1 : 0;
            }
        EXPECT_GT(decoded, 0) << name;
    }
}

TEST(JpegDecoder, DecodesDamageBetweenRestartMarkers)
{
    const Block good = Sample("good/cjpeg-restarts.jpg");
    Block changed = good;
    // Inverts a byte halfway between two restart markers, inside entropy-coded data.
    const auto is_restart = [&](std::size_t n) { return good[n] == 0xFF && good[n + 1] == 0xD0; };
    std::size_t marker = 0;
    while (!is_restart(marker))
        ++marker;
    changed[marker + 20] ^= 0x3C;

    const auto image = Decoded(kJpegCodec, changed);

    ASSERT_TRUE(image);
    EXPECT_LT(DifferenceBetween(*image, Scene()).mean, 20);
}

TEST(JpegDecoder, RefusesTooManyMegapixelsBeforeDecoding)
{
    Block large = Sample("good/cjpeg-arithmetic.jpg");  // arithmetic coding has no minimum size
    const std::uint8_t frame[] = {0xFF, 0xC9};
    const auto found = std::search(large.begin(), large.end(), std::begin(frame), std::end(frame));
    ASSERT_NE(found, large.end());
    for (const int n : {5, 7}) {
        found[n] = 0x40;  // at least 16384 pixels
        found[n + 1] = 0;
    }
    setenv("VARNEL_MAX_MEGAPIXELS", "100", 1);
    EXPECT_FALSE(Decoded(kJpegCodec, large));
    unsetenv("VARNEL_MAX_MEGAPIXELS");
}

// Fewer scans than the limit, but each visits 275,625 blocks.
TEST(JpegDecoder, RefusesScansThatVisitTooManyBlocks)
{
    const TestFolder folder;
    ImageBuffer flat = Pattern(4200, 4200, 1);
    std::fill(flat.bytes.begin(), flat.bytes.end(), std::uint8_t{90});
    WritePnm(folder.Path("in.pgm"), flat);
    ASSERT_TRUE(
        RunCommand("cjpeg -progressive -outfile " + folder.Path("in.jpg") + " " + folder.Path("in.pgm")));
    const Block good = FileContent(folder.Path("in.jpg"));
    const std::uint8_t scan[] = {0xFF, 0xDA};
    const auto last = std::find_end(good.begin(), good.end(), std::begin(scan), std::end(scan));
    Block file(good.begin(), last);
    for (int i = 0; i < 460; ++i)
        file.insert(file.end(), last, good.end() - 2);
    file.insert(file.end(), good.end() - 2, good.end());

    EXPECT_TRUE(Decoded(kJpegCodec, good));
    EXPECT_FALSE(Decoded(kJpegCodec, file));
}

TEST(JpegDecoder, ReadsResolutionFromJfifOrExif)
{
    Block file = Sample("good/cjpeg-baseline.jpg");  // JFIF: unit at 13, then two densities
    const auto set_density = [&](std::uint8_t unit, std::uint8_t x, std::uint8_t y) {
        file[13] = unit;
        file[14] = file[16] = 0;
        file[15] = x;
        file[17] = y;
    };
    set_density(1, 200, 100);
    EXPECT_EQ(Decoded(kJpegCodec, file)->dots_per_inch_x, 200);
    EXPECT_EQ(Decoded(kJpegCodec, file)->dots_per_inch_y, 100);
    set_density(2, 100, 50);
    EXPECT_DOUBLE_EQ(Decoded(kJpegCodec, file)->dots_per_inch_x, 254);
    set_density(0, 1, 1);
    EXPECT_EQ(Decoded(kJpegCodec, file)->dots_per_inch_x, 0);
    Block exif = {'M', 'M', 0, 42, 0, 0, 0, 8, 0, 2};
    for (const std::uint8_t tag : Block{0x1A, 0x1B})
        exif.insert(exif.end(), {1, tag, 0, 5, 0, 0, 0, 1, 0, 0, 0, 38});
    exif.insert(exif.end(), {0, 0, 0, 0, 0, 0, 1, 44, 0, 0, 0, 1});
    file = WithSegment(file, 1, std::string("Exif\0\0", 6), exif);
    EXPECT_EQ(Decoded(kJpegCodec, file)->dots_per_inch_x, 300);
}

TEST(JpegDecoder, ReadsXmpIptcAndProfileInParts)
{
    const Block xmp = {'<', 'x', '/', '>'};
    const Block iptc = {0x1C, 2, 5, 0, 3, 'a', 'b', 'c'};
    Block resources = {'8', 'B', 'I', 'M', 3,   0xED, 1, 'n', 0, 0, 0, 3, 1, 2,
                       3,   0,   '8', 'B', 'I', 'M',  4, 4,   0, 0, 0, 0, 0, 8};
    resources.insert(resources.end(), iptc.begin(), iptc.end());
    const Block profile = SwappedProfile();
    const Block first(profile.begin(), profile.begin() + 100);
    const Block second(profile.begin() + 100, profile.end());
    Block file = WithSegment(Sample("good/cjpeg-baseline.jpg"), 1, kXmp, xmp);
    file = WithSegment(file, 13, kPhotoshop, resources);
    file = WithSegment(file, 2, kIcc, IccPart(1, 2, first));
    file = WithSegment(file, 2, kIcc, IccPart(2, 2, second));  // precedes part 1 in the file

    const auto image = Decoded(kJpegCodec, file);

    ASSERT_TRUE(image);
    EXPECT_EQ(image->metadata.xmp, xmp);
    EXPECT_EQ(image->metadata.iptc, iptc);
    EXPECT_EQ(image->icc_profile, profile);
}

TEST(JpegDecoder, DropsInvalidProfileAndProfileOfOtherSpace)
{
    const Block good = Sample("good/cjpeg-baseline.jpg");
    const Block profile = SwappedProfile();
    for (const Block& part : {IccPart(1, 2, profile), IccPart(0, 1, profile), IccPart(2, 1, profile),
                              IccPart(1, 1, GreyProfile(1)), IccPart(1, 1, {}), Block{1}}) {
        const auto image = Decoded(kJpegCodec, WithSegment(good, 2, kIcc, part));
        ASSERT_TRUE(image);
        EXPECT_TRUE(image->icc_profile.empty());
    }
    EXPECT_TRUE(
        Decoded(kJpegCodec, WithSegment(Sample("good/cjpeg-grey.jpg"), 2, kIcc, IccPart(1, 1, profile)))
            ->icc_profile.empty());
}

TEST(JpegLoad, RotatesPhotographUprightAndResetsOrientation)
{
    HostFiles files;
    CodecImageFile image_file(files, files.saver);
    ImageBuffer image;

    ASSERT_TRUE(image_file.LoadImage(SamplePath("jpeg/good/pil-turned.jpg"), image));

    EXPECT_LT(DifferenceBetween(image, Scene()).mean, 4);
    EXPECT_EQ(image.dots_per_inch_x, 144);
    const IfdReader reader(image.metadata.exif);
    const auto entries = reader.Entries(reader.FirstDirectory());
    EXPECT_EQ(reader.Number(*EntryWithTag(entries, kTagOrientation)), 1u);
}

TEST(JpegLoad, ShowsAllEightOrientationsAlike)
{
    HostFiles files;
    CodecImageFile image_file(files, files.saver);
    const TestFolder folder;
    // Pillow stores the scene so that each orientation tag puts it upright.
    Python(
        "import sys\nfrom PIL import Image as I\n"
        "back = {1: None, 2: I.FLIP_LEFT_RIGHT, 3: I.ROTATE_180, 4: I.FLIP_TOP_BOTTOM, 5: I.TRANSPOSE,\n"
        "        6: I.ROTATE_90, 7: I.TRANSVERSE, 8: I.ROTATE_270}\n"
        "p = I.open(sys.argv[1])\n"
        "for n, how in back.items():\n"
        "    e = I.Exif(); e[0x112] = n\n"
        "    (p.transpose(how) if how is not None else p).save('%s%d.jpg' % (sys.argv[2], n), quality=98,\n"
        "        subsampling=0, exif=e.tobytes())\n",
        SamplePath("jpeg/scene.ppm") + " " + folder.Path(""));
    for (int orientation = 1; orientation <= 8; ++orientation) {
        ImageBuffer image;
        ASSERT_TRUE(image_file.LoadImage(folder.Path(std::to_string(orientation) + ".jpg"), image));
        EXPECT_LT(DifferenceBetween(image, Scene()).mean, 1.5) << orientation;
    }
}

TEST(JpegLoad, DetectsContentAndReportsOnePage)
{
    HostFiles files;
    CodecImageFile image_file(files, files.saver);
    const TestFolder folder;
    WriteFileContent(folder.Path("photo.bmp"), Sample("good/cjpeg-baseline.jpg"));
    ImageBuffer image;

    EXPECT_EQ(image_file.GetFrameCount(folder.Path("photo.bmp")), 1);
    EXPECT_TRUE(image_file.LoadFrame(folder.Path("photo.bmp"), 0, image));
    EXPECT_FALSE(image_file.LoadFrame(folder.Path("photo.bmp"), 1, image));
    EXPECT_FALSE(image_file.LoadFrame(folder.Path("photo.bmp"), -1, image));
    EXPECT_EQ(image.width, 83);
}
