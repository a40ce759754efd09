// Tests of writing single-page TIFF files.
#include "src/platform/image/codecs/tiff/tiff_writer.h"

#include <gtest/gtest.h>
#include <tiff.h>

#include <algorithm>
#include <array>
#include <random>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "src/platform/image/base/input_file.h"
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

SaveSettings Compression(std::int32_t compression)
{
    SaveSettings settings;
    settings.tiff_compression = compression;
    return settings;
}

// The first value of a tag of the first page; 0 if it is missing.
std::uint64_t NumberOfTag(const Block& file, std::uint16_t tag)
{
    InputFile input{Bytes(file)};
    const auto header = ReadTiffHeader(input);
    if (!header)
        return 0;
    const auto entries = ReadEntries(input, *header, header->first_directory);
    const TiffEntry* entry = EntryOf(entries, tag);
    return entry ? ReadNumber(input, *header, *entry).value_or(0) : 0;
}

std::string TextOfTag(const Block& file, std::uint16_t tag)
{
    InputFile input{Bytes(file)};
    const auto header = ReadTiffHeader(input);
    const auto entries = ReadEntries(input, *header, header->first_directory);
    const TiffEntry* entry = EntryOf(entries, tag);
    const Block value = entry ? ReadValue(input, *header, *entry, 1000) : Block{};
    return {value.begin(), std::find(value.begin(), value.end(), 0)};
}

// Thresholds the picture at half intensity, on white.
ImageBuffer BlackAndWhite(const ImageBuffer& image)
{
    const ImageBuffer opaque = image.channels == 4 ? LayOnWhite(image) : image;
    ImageBuffer result;
    result.width = image.width;
    result.height = image.height;
    result.channels = 1;
    const auto step = static_cast<std::size_t>(opaque.channels);
    for (std::size_t i = 0; i < opaque.bytes.size(); i += step) {
        const std::uint8_t* p = opaque.bytes.data() + i;
        const int intensity = step == 1 ? p[0] * 1000 : 114 * p[0] + 587 * p[1] + 299 * p[2];
        result.bytes.push_back(intensity >= 128000 ? 255 : 0);
    }
    return result;
}

struct Way {
    std::int32_t compression;
    std::int32_t channels;
};

class WrittenTiff : public testing::TestWithParam<Way>
{
protected:
    bool Fax() const { return GetParam().compression >= 2 && GetParam().compression <= 4; }
    // 83 isn't a multiple of 8, and the picture is taller than one strip.
    ImageBuffer Source() const { return Pattern(83, 1100, GetParam().channels); }
    ImageBuffer Expected() const { return Fax() ? BlackAndWhite(Source()) : Source(); }
    Block File() const { return Encoded(kTiffCodec, Source(), Compression(GetParam().compression)); }
};
}  // namespace

TEST_P(WrittenTiff, IsReadBackUnchanged)
{
    const auto image = Decoded(kTiffCodec, File());

    ASSERT_TRUE(image);
    EXPECT_EQ(DifferenceBetween(*image, Expected()).greatest, 0);
}

TEST_P(WrittenTiff, IsReadByOtherProgramsUnchanged)
{
    const TestFolder folder;
    WriteFileContent(folder.Path("w.tif"), File());
    const std::string form = Expected().channels == 1 ? "gray:" : Expected().channels == 3 ? "bgr:" : "bgra:";
    const auto same = [&](const std::string& program) {
        std::string output;
        EXPECT_TRUE(RunCommand(program, &output)) << program << "\n" << output;
        EXPECT_EQ(output, "");
        const Block read = FileContent(folder.Path("w.raw"));
        const ImageBuffer image = Expected();
        return std::equal(read.begin(), read.end(), image.bytes.begin(), image.bytes.end());
    };
    const std::string in = folder.Path("w.tif");
    const std::string out = folder.Path("w.raw");

    EXPECT_TRUE(same(ImageMagick("convert") + " " + in + " -depth 8 " + form + out));
    EXPECT_TRUE(same("/usr/bin/python3 -c \"import sys; from PIL import Image; i = Image.open('" + in +
                     "'); i = i.convert('L') if i.mode == '1' else i; "
                     "b = i.split(); i = Image.merge(i.mode, b[2::-1] + b[3:]) if len(b) > 2 else i; "
                     "open('" +
                     out + "', 'wb').write(i.tobytes())\""));
    std::string info;
    EXPECT_TRUE(RunCommand("tiffinfo -D " + in, &info));
    for (const char* trouble : {"rror", "arning", "nknown"})
        EXPECT_EQ(info.find(trouble), std::string::npos) << info;
}

TEST_P(WrittenTiff, DeclaresItsEncoding)
{
    const Block bytes = File();
    constexpr std::array<std::uint64_t, 5> kSchemes = {COMPRESSION_NONE, COMPRESSION_LZW,
                                                       COMPRESSION_CCITTRLE, COMPRESSION_CCITTFAX3,
                                                       COMPRESSION_CCITTFAX4};
    const bool known = GetParam().compression >= 0 && GetParam().compression <= 4;
    const std::uint64_t scheme = kSchemes[known ? static_cast<std::size_t>(GetParam().compression) : 0];

    EXPECT_EQ(NumberOfTag(bytes, TIFFTAG_COMPRESSION), scheme);
    EXPECT_EQ(NumberOfTag(bytes, TIFFTAG_BITSPERSAMPLE), Fax() ? 1u : 8u);
    EXPECT_EQ(NumberOfTag(bytes, TIFFTAG_SAMPLESPERPIXEL),
              Fax() ? 1u : static_cast<unsigned>(GetParam().channels));
    EXPECT_EQ(NumberOfTag(bytes, TIFFTAG_PHOTOMETRIC), Fax()                      ? PHOTOMETRIC_MINISWHITE
                                                       : GetParam().channels == 1 ? PHOTOMETRIC_MINISBLACK
                                                                                  : PHOTOMETRIC_RGB);
    EXPECT_EQ(NumberOfTag(bytes, TIFFTAG_PREDICTOR), GetParam().compression == 1 ? 2u : 0u);
    EXPECT_EQ(NumberOfTag(bytes, TIFFTAG_EXTRASAMPLES),
              !Fax() && GetParam().channels == 4 ? EXTRASAMPLE_UNASSALPHA : 0);
}

INSTANTIATE_TEST_SUITE_P(AllWays, WrittenTiff,
                         testing::Values(Way{0, 1}, Way{0, 3}, Way{0, 4}, Way{1, 1}, Way{1, 3}, Way{1, 4},
                                         Way{2, 1}, Way{2, 3}, Way{2, 4}, Way{3, 1}, Way{3, 3}, Way{3, 4},
                                         Way{4, 1}, Way{4, 3}, Way{4, 4}, Way{5, 3}, Way{-1, 3},
                                         Way{32773, 1}));

TEST(TiffBlackAndWhite, SplitsAtHalfIntensity)
{
    ImageBuffer greys;
    greys.width = 256;
    greys.height = 1;
    greys.channels = 1;
    for (int i = 0; i < 256; ++i)
        greys.bytes.push_back(static_cast<std::uint8_t>(i));

    const auto image = Decoded(kTiffCodec, Encoded(kTiffCodec, greys, Compression(4)));

    ASSERT_TRUE(image);
    EXPECT_EQ(image->bytes[127], 0);
    EXPECT_EQ(image->bytes[128], 255);
    EXPECT_EQ(std::count(image->bytes.begin(), image->bytes.end(), 255), 128);
}

TEST(TiffLzw, IsReadBackAtLengthsAroundFullTable)
{
    std::mt19937 random(7);
    for (std::int32_t width = 3800; width < 3880; ++width) {
        ImageBuffer noise;
        noise.width = width;
        noise.height = 1;
        noise.channels = 1;
        for (std::int32_t i = 0; i < width; ++i)
            noise.bytes.push_back(static_cast<std::uint8_t>(random()));

        const auto image = Decoded(kTiffCodec, Encoded(kTiffCodec, noise, Compression(1)));

        ASSERT_TRUE(image) << width;
        ASSERT_EQ(image->bytes, noise.bytes) << width;
    }
}

TEST(TiffLzw, IsNoLargerThanThatOfLibtiff)
{
    const TestFolder folder;
    ImageBuffer image = Pattern(1200, 900, 3);
    std::mt19937 random(3);
    for (std::uint8_t& level : image.bytes)
        level = static_cast<std::uint8_t>(level + random() % 4);
    WriteFileContent(folder.Path("none.tif"), Encoded(kTiffCodec, image, Compression(0)));

    const Block ours = Encoded(kTiffCodec, image, Compression(1));
    ASSERT_TRUE(RunCommand("tiffcp -c lzw:2 " + folder.Path("none.tif") + " " + folder.Path("theirs.tif")));

    // Allow for a few more tags.
    EXPECT_LE(ours.size(), FileContent(folder.Path("theirs.tif")).size() + 100);
}

TEST(TiffTexts, GoToTheirTags)
{
    SaveSettings settings;
    settings.texts = {"A title", "Gr\xC3\xBC\xC3\x9F", "3/5/2024 1:02:03 PM", "Ann", "(c) Ann", "Cameras Ltd",
                      "X-1"};

    const Block file = Encoded(kTiffCodec, Pattern(4, 4, 3), settings);

    EXPECT_EQ(TextOfTag(file, TIFFTAG_DOCUMENTNAME), "A title");
    EXPECT_EQ(TextOfTag(file, TIFFTAG_IMAGEDESCRIPTION), "Gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(TextOfTag(file, TIFFTAG_DATETIME), "2024:03:05 13:02:03");
    EXPECT_EQ(TextOfTag(file, TIFFTAG_ARTIST), "Ann");
    EXPECT_EQ(TextOfTag(file, TIFFTAG_COPYRIGHT), "(c) Ann");
    EXPECT_EQ(TextOfTag(file, TIFFTAG_MAKE), "Cameras Ltd");
    EXPECT_EQ(TextOfTag(file, TIFFTAG_MODEL), "X-1");
}

TEST(TiffTexts, WriteNothingIfEmpty)
{
    const Block file = Encoded(kTiffCodec, Pattern(4, 4, 3));

    for (const int tag : {TIFFTAG_DOCUMENTNAME, TIFFTAG_IMAGEDESCRIPTION, TIFFTAG_DATETIME, TIFFTAG_ARTIST,
                          TIFFTAG_COPYRIGHT, TIFFTAG_MAKE, TIFFTAG_MODEL, TIFFTAG_SOFTWARE, TIFFTAG_EXIFIFD,
                          TIFFTAG_ICCPROFILE, TIFFTAG_XRESOLUTION})
        EXPECT_EQ(TextOfTag(file, static_cast<std::uint16_t>(tag)), "") << tag;
}

TEST(TiffMetadata, IsCopiedFromLoadToSave)
{
    const TestFolder folder;
    const std::string source = folder.Path("source.jpg");
    const std::string target = folder.Path("target.tif");
    Python(
        "import sys; from PIL import Image, TiffImagePlugin as T\n"
        "e = Image.Exif(); e[271] = 'Cameras Ltd'; e[274] = 6; e[0x8769] = e[0x8825] = 0\n"
        "e._ifds[0x8769] = {0x9003: '2024:03:05 10:20:30', 0x829A: T.IFDRational(1, 250)}\n"
        "e._ifds[0x8825] = {1: 'N', 2: (48.0, 10.0, 1.5)}\n"
        "Image.new('RGB', (9, 6), (50, 100, 200)).save(sys.argv[1], 'TIFF', exif=e, dpi=(300, 150))\n",
        source);
    auto image = Decoded(kTiffCodec, FileContent(source));
    ASSERT_TRUE(image);
    FinishLoaded(*image);
    ASSERT_EQ(image->width, 6);
    image->icc_profile = SwappedProfile();
    image->metadata.xmp = {'<', 'x', '/', '>'};
    image->metadata.iptc = {0x1C, 2, 5, 0, 1, 'A'};

    WriteFileContent(target, Encoded(kTiffCodec, *image));

    const auto again = Decoded(kTiffCodec, FileContent(target));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->icc_profile, SwappedProfile());
    EXPECT_EQ(again->metadata.xmp, image->metadata.xmp);
    EXPECT_EQ(again->metadata.iptc, image->metadata.iptc);
    EXPECT_DOUBLE_EQ(again->dots_per_inch_x, 150);
    EXPECT_DOUBLE_EQ(again->dots_per_inch_y, 300);
    EXPECT_EQ(
        Python("import sys; from PIL import Image\n"
               "i = Image.open(sys.argv[1]); e = i.getexif(); s = e.get_ifd(0x8769); g = e.get_ifd(0x8825)\n"
               "print(e[271], e[274], s[0x9003], float(s[0x829A]), g[1], [float(v) for v in g[2]], "
               "i.info['dpi'], len(i.info['icc_profile']))",
               target),
        "Cameras Ltd 1 2024:03:05 10:20:30 0.004 N [48.0, 10.0, 1.5] (150.0, 300.0) " +
            std::to_string(SwappedProfile().size()) + "\n");
}

TEST(TiffProfile, IsOmittedFromBlackAndWhiteIfColour)
{
    ImageBuffer image = Pattern(9, 9, 3);
    image.icc_profile = SwappedProfile();

    const auto colours = Decoded(kTiffCodec, Encoded(kTiffCodec, image, Compression(1)));
    ASSERT_TRUE(colours);
    EXPECT_EQ(colours->icc_profile, SwappedProfile());
    const Block black_and_white_file = Encoded(kTiffCodec, image, Compression(4));
    InputFile file{Bytes(black_and_white_file)};
    const auto header = ReadTiffHeader(file);
    ASSERT_TRUE(header);
    EXPECT_FALSE(EntryOf(ReadEntries(file, *header, header->first_directory), TIFFTAG_ICCPROFILE));
}

TEST(BigTiff, IsWrittenIfClassicFileIsTooSmall)
{
    const TestFolder folder;
    ImageBuffer image = Pattern(300, 200, 3);
    image.dots_per_inch_x = image.dots_per_inch_y = 72;
    FileSaver saver(false);
    OutputFile out(folder.Path("big.tif"), saver);
    TiffPagePlace place;
    SaveSettings settings = Compression(1);
    settings.texts.sTitle = "Large";

    ASSERT_TRUE(WriteTiffFile(out, image, settings, {true, false, 0}, place) && out.Commit());

    const Block file = FileContent(folder.Path("big.tif"));
    EXPECT_EQ(file[2], 43);
    const auto read = Decoded(kTiffCodec, file);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->bytes, image.bytes);
    EXPECT_DOUBLE_EQ(read->dots_per_inch_x, 72);
    EXPECT_EQ(TextOfTag(file, TIFFTAG_DOCUMENTNAME), "Large");
    std::string info;
    EXPECT_TRUE(RunCommand("tiffinfo -D " + folder.Path("big.tif"), &info));
    EXPECT_NE(info.find("Compression Scheme: LZW"), std::string::npos) << info;
    EXPECT_EQ(info.find("arning"), std::string::npos) << info;
}

TEST(BigTiff, IsChosenBySizeAlone)
{
    ImageBuffer image = Pattern(300, 200, 3);
    EXPECT_LT(MaxPageBytes(image), kClassicEnd);
    EXPECT_GT(MaxPageBytes(image), image.bytes.size() * 3 / 2);
    EXPECT_EQ(Encoded(kTiffCodec, image)[2], 42);
}
