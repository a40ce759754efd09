// Checks that files of the small raster formats round-trip and look the same in other programs.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/bmp/bmp.h"
#include "src/platform/image/codecs/pcx/pcx.h"
#include "src/platform/image/codecs/ras/ras.h"
#include "src/platform/image/codecs/tga/tga.h"
#include "tests/platform/image/support/raster_checks.h"

struct Written {
    const char* extension;
    const Codec& codec;
    const char* netpbm;  ///< the netpbm program that reads the format
};

static void PrintTo(const Written& written, std::ostream* stream)
{
    *stream << written.extension;
}

class RasterWrites : public testing::TestWithParam<Written>
{
protected:
    void ExpectSeenAlike(const ImageBuffer& image)
    {
        const TestFolder folder;
        const std::string path = folder.Path(std::string("written.") + GetParam().extension);
        WriteFileContent(path, Encoded(GetParam().codec, image));
        const auto expected = BgraOf(image);

        EXPECT_TRUE(BgraByImageMagick(path) == expected) << "ImageMagick";
        EXPECT_TRUE(BgraByGraphicsMagick(path) == expected) << "GraphicsMagick";
        EXPECT_TRUE(BgraByPillow(path) == expected) << "Pillow";
        if (image.channels == 4)
            return;
        std::string output;
        const std::string pnm = folder.Path("netpbm.pnm");
        // pamdepth converts bitmaps and small depths to 8 bits.
        EXPECT_TRUE(RunCommand(
            std::string(GetParam().netpbm) + " " + path + " 2> /dev/null | pamdepth 255 > " + pnm, &output))
            << output;
        const auto netpbm = ReadPnm(pnm);
        ASSERT_TRUE(netpbm) << GetParam().netpbm;
        EXPECT_TRUE(BgraOf(*netpbm) == expected) << GetParam().netpbm;
    }
};

TEST_P(RasterWrites, LookAlikeInOtherProgramsInColour)
{
    ExpectSeenAlike(Pattern(37, 23, 3));
}

TEST_P(RasterWrites, LookAlikeInOtherProgramsInGrey)
{
    ExpectSeenAlike(Pattern(37, 23, 1));
}

TEST_P(RasterWrites, LookAlikeInOtherProgramsAsNoise)
{
    ExpectSeenAlike(Noise(64, 10, 3));
}

TEST_P(RasterWrites, LookAlikeInOtherProgramsWithAlpha)
{
    if (GetParam().codec.holds_alpha)
        ExpectSeenAlike(Pattern(37, 23, 4));
}

// Trailing bytes that decoding doesn't need: padding of the last BMP or RAS row, the grey palette of PCX,
// anything after the pixels of a Targa file.
static std::size_t SpareAtEnd(FileType type, std::int32_t channels)
{
    switch (type) {
        case FileType::kBmp:
            return 3;
        case FileType::kPcx:
            return channels == 1 ? 769 : 0;
        case FileType::kRas:
            return 1;
        default:
            return 495 + 26;
    }
}

TEST_P(RasterWrites, AreRefusedIfTruncated)
{
    for (const std::int32_t channels : {1, 3})
        ExpectRefusedIfTruncated(GetParam().codec, Encoded(GetParam().codec, Pattern(11, 7, channels)),
                                 SpareAtEnd(GetParam().codec.type, channels));
}

TEST_P(RasterWrites, SurviveCorruptionOfAnySingleByte)
{
    for (const std::int32_t channels : {1, 3})
        ExpectSurvivesCorruption(GetParam().codec, Encoded(GetParam().codec, Pattern(19, 11, channels)));
}

TEST_P(RasterWrites, RoundTripLargePictures)
{
    // More rows than are read at once, a row longer than most buffers, and a column.
    for (const auto& [width, height] : {std::pair{1000, 700}, std::pair{65500, 2}, std::pair{1, 5000}}) {
        for (const std::int32_t channels : {1, 3}) {
            const ImageBuffer image = Noise(width, height, channels);
            const auto back = Decoded(GetParam().codec, Encoded(GetParam().codec, image));
            ASSERT_TRUE(back);
            EXPECT_TRUE(back->bytes == image.bytes) << width << " x " << height << " x " << channels;
        }
    }
}

TEST_P(RasterWrites, ReportFailureIfFileCannotBeWritten)
{
    FileSaver saver(false);
    OutputFile out("/nowhere/at/all", saver);

    EXPECT_FALSE(GetParam().codec.encode(Pattern(20, 20, 3), {}, out));
}

INSTANTIATE_TEST_SUITE_P(Formats, RasterWrites,
                         testing::Values(Written{"bmp", kBmpCodec, "bmptopnm"},
                                         Written{"pcx", kPcxCodec, "pcxtoppm"},
                                         Written{"ras", kRasCodec, "rasttopnm"},
                                         Written{"tga", kTgaCodec, "tgatoppm"}),
                         [](const auto& test) { return std::string(test.param.extension); });

// A picture of random small size with more or less repetition.
static ImageBuffer AnyPicture(bool alpha_allowed)
{
    ImageBuffer image;
    image.width = *rc::gen::inRange(1, 300);
    image.height = *rc::gen::inRange(1, 12);
    const auto kinds = alpha_allowed ? std::vector<std::int32_t>{1, 3, 4} : std::vector<std::int32_t>{1, 3};
    image.channels = *rc::gen::elementOf(kinds);
    const auto pixel_size = static_cast<std::size_t>(image.channels);
    const std::size_t size =
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * pixel_size;
    const int repeats = *rc::gen::inRange(0, 100);
    std::uint32_t state = *rc::gen::arbitrary<std::uint32_t>();
    const auto next = [&state] { return state = state * 1664525 + 1013904223, state >> 24; };
    while (image.bytes.size() < size) {
        const std::size_t done = image.bytes.size();
        const bool repeat = done > 0 && static_cast<int>(next() * 100 / 256) < repeats;
        for (std::size_t c = 0; c < pixel_size; ++c)
            image.bytes.push_back(repeat ? image.bytes[done - pixel_size + c]
                                         : static_cast<std::uint8_t>(c == 3 ? next() | 1 : next()));
    }
    return image;
}

static void CheckRoundTrip(const Codec& codec)
{
    const ImageBuffer image = AnyPicture(codec.holds_alpha);
    const auto back = Decoded(codec, Encoded(codec, image));
    RC_ASSERT(back.has_value());
    RC_ASSERT(back->width == image.width);
    RC_ASSERT(back->height == image.height);
    RC_ASSERT(back->channels == image.channels);
    RC_ASSERT(back->bytes == image.bytes);
}

RC_GTEST_PROP(RasterRoundTrip, BmpGivesEveryPixelBack, ())
{
    CheckRoundTrip(kBmpCodec);
}

RC_GTEST_PROP(RasterRoundTrip, PcxGivesEveryPixelBack, ())
{
    CheckRoundTrip(kPcxCodec);
}

RC_GTEST_PROP(RasterRoundTrip, RasGivesEveryPixelBack, ())
{
    CheckRoundTrip(kRasCodec);
}

RC_GTEST_PROP(RasterRoundTrip, TgaGivesEveryPixelBack, ())
{
    CheckRoundTrip(kTgaCodec);
}
