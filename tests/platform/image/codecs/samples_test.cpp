// Decodes every file in tests/samples/: into its expected images, or not at all (see the README there).
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/metadata/metadata.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/raster_checks.h"
#include "tests/platform/image/support/samples.h"

namespace
{

struct Format {
    const char* name;  // the folder's
    FileType type;
    std::size_t good, cut, lying, foreign, unsupported;  // minimum number of samples
    std::size_t corruption_step = 1;                     // larger where decoding is slow
};

constexpr Format kFormats[] = {
    {"jpeg", FileType::kJpeg, 16, 3, 3, 1, 0},  {"bmp", FileType::kBmp, 20, 2, 1, 1, 0},
    {"tiff", FileType::kTiff, 105, 3, 5, 1, 3}, {"gif", FileType::kGif, 13, 2, 1, 1, 0},
    {"emf", FileType::kEmf, 3, 3, 3, 1, 0, 61}, {"j2k", FileType::kJ2k, 20, 2, 2, 1, 0, 41},
    {"pcx", FileType::kPcx, 14, 2, 1, 1, 0},    {"png", FileType::kPng, 86, 5, 10, 2, 3},
    {"ras", FileType::kRas, 11, 2, 1, 1, 0},    {"tga", FileType::kTga, 16, 2, 1, 1, 0},
    {"wmf", FileType::kWmf, 1, 3, 3, 1, 0, 7},  {"ico", FileType::kIco, 9, 2, 1, 1, 0},
    {"cur", FileType::kCur, 3, 2, 1, 1, 0},     {"ani", FileType::kAni, 2, 2, 1, 1, 0},
};

struct Sample {
    const Format* format;
    std::string path;

    const Codec& codec() const { return *CodecOfType(format->type); }
    std::string extension() const { return std::filesystem::path(path).extension().string().substr(1); }
};

void PrintTo(const Sample& sample, std::ostream* stream)
{
    *stream << sample.path;
}

std::vector<Sample> AllOf(const std::vector<std::string>& kinds)
{
    std::vector<Sample> samples;
    for (const Format& format : kFormats)
        for (const std::string& kind : kinds)
            for (const std::string& path : SamplesOf(format.name, kind))
                samples.push_back({&format, path});
    return samples;
}

std::string TestName(const testing::TestParamInfo<Sample>& info)
{
    const std::filesystem::path path = info.param.path;
    std::string name = std::string(info.param.format->name) + "_" + path.parent_path().filename().string() +
                       "_" + path.filename().string();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

// Averages cells of `cell` by `cell` pixels; a remainder at the right and bottom is dropped.
ImageBuffer InCells(const ImageBuffer& image, int cell)
{
    if (cell == 1)
        return image;
    ImageBuffer result;
    result.width = image.width / cell;
    result.height = image.height / cell;
    result.channels = image.channels;
    for (std::int32_t y = 0; y < result.height; ++y)
        for (std::int32_t x = 0; x < result.width; ++x)
            for (std::int32_t c = 0; c < result.channels; ++c) {
                int sum = 0;
                for (int i = 0; i < cell * cell; ++i) {
                    const std::int32_t pixel = (y * cell + i / cell) * image.width + x * cell + i % cell;
                    sum += image.bytes[static_cast<std::size_t>(pixel * image.channels + c)];
                }
                result.bytes.push_back(static_cast<std::uint8_t>(sum / (cell * cell)));
            }
    return result;
}

void ExpectLike(const ExpectedImage& expected, ImageBuffer image)
{
    FinishLoaded(image);
    const ImageBuffer shown = InCells(image, expected.cell);
    ASSERT_EQ(shown.width, expected.image.width);
    ASSERT_EQ(shown.height, expected.image.height);
    ASSERT_EQ(shown.channels, expected.image.channels);
    const Difference difference = DifferenceBetween(shown, expected.image);
    if (expected.average) {
        EXPECT_LE(difference.mean, *expected.average);
    } else {
        EXPECT_LE(difference.greatest, expected.within);
    }
}

// Decodes the pages that have an expected image and returns their number.
std::int32_t CheckPages(const Sample& sample, ImageDecoder& decoder)
{
    std::int32_t frame = 0;
    for (;; ++frame) {
        SCOPED_TRACE("page " + std::to_string(frame));
        const auto expected = ReadExpectedImage(sample.path, frame);
        if (!expected)
            return frame;
        ImageBuffer image;
        EXPECT_TRUE(decoder.DecodeFrame(frame, image));
        ExpectLike(*expected, std::move(image));
    }
}

class GoodSample : public testing::TestWithParam<Sample>
{
};

class BadSample : public testing::TestWithParam<Sample>
{
};

}  // namespace

TEST(Samples, CoverEveryFormatAndKind)
{
    EXPECT_EQ(std::size(kFormats), Codecs().size());
    for (const Format& format : kFormats) {
        EXPECT_GE(SamplesOf(format.name, "good").size(), format.good) << format.name;
        EXPECT_GE(SamplesOf(format.name, "cut").size(), format.cut) << format.name;
        EXPECT_GE(SamplesOf(format.name, "lying").size(), format.lying) << format.name;
        EXPECT_GE(SamplesOf(format.name, "foreign").size(), format.foreign) << format.name;
        EXPECT_GE(SamplesOf(format.name, "unsupported").size(), format.unsupported) << format.name;
        EXPECT_GE(std::min({format.good, format.cut, format.lying, format.foreign}), 1u) << format.name;
    }
}

TEST_P(GoodSample, DecodesToExpectedImages)
{
    const auto file = FileContent(GetParam().path);
    InputFile input{Bytes(file)};
    const auto decoder = GetParam().codec().open(input);
    ASSERT_TRUE(decoder);

    const std::int32_t frames = CheckPages(GetParam(), *decoder);

    EXPECT_GE(frames, 1) << "no expected image";
    EXPECT_EQ(decoder->FrameCount(), frames);
    ImageBuffer image;
    EXPECT_FALSE(decoder->DecodeFrame(frames, image));
}

TEST_P(GoodSample, IsRecognisedByItsCodecOnly)
{
    const auto file = FileContent(GetParam().path);
    InputFile input{Bytes(file)};

    EXPECT_EQ(CodecOfContent(input.Head(), GetParam().extension()), &GetParam().codec());
    for (const Codec* codec : Codecs())
        EXPECT_EQ(codec->sniff(input.Head(), GetParam().extension()), codec == &GetParam().codec())
            << static_cast<int>(codec->type);
}

TEST_P(GoodSample, IsRejectedByOtherCodecs)
{
    const auto icon = [](FileType type) { return type == FileType::kIco || type == FileType::kCur; };
    const auto file = FileContent(GetParam().path);
    for (const Codec* codec : Codecs()) {
        // The registry tells icons from cursors; each codec opens both.
        if (codec == &GetParam().codec() || (icon(codec->type) && icon(GetParam().format->type)))
            continue;
        EXPECT_FALSE(Decoded(*codec, file)) << static_cast<int>(codec->type);
    }
}

TEST_P(GoodSample, SurvivesCorruptionOfAnySingleByte)
{
    ExpectSurvivesCorruption(GetParam().codec(), FileContent(GetParam().path),
                             GetParam().format->corruption_step);
}

TEST_P(GoodSample, IsRejectedOrCompleteWhenTruncated)
{
    const auto file = FileContent(GetParam().path);
    const auto whole = Decoded(GetParam().codec(), file);
    ASSERT_TRUE(whole);
    // The first of several pages may be complete, and a TIFF may end in optional data. A truncated JPEG shows
    // what is there.
    const std::string format = GetParam().format->name;
    const bool may_be_partial = format == "jpeg";
    const bool may_be_complete = format == "gif" || format == "ico" || format == "tiff";
    for (const std::size_t size :
         {file.size() / 2, file.size() / 4, std::size_t{20}, std::size_t{1}, std::size_t{0}}) {
        const auto image = Decoded(GetParam().codec(), Bytes(file).first(std::min(size, file.size() - 1)));
        if (!image)
            continue;
        SCOPED_TRACE("with " + std::to_string(size) + " bytes");
        EXPECT_TRUE(may_be_complete || may_be_partial);
        EXPECT_EQ(image->width, whole->width);
        EXPECT_EQ(image->height, whole->height);
        if (!may_be_partial) {
            EXPECT_EQ(DifferenceBetween(*image, *whole).greatest, 0);
        }
    }
}

TEST_P(BadSample, IsRejectedAndLeavesImageUntouched)
{
    const auto file = FileContent(GetParam().path);
    InputFile input{Bytes(file)};
    const auto decoder = GetParam().codec().open(input);
    if (!decoder)
        return;
    const std::int32_t whole_frames = CheckPages(GetParam(), *decoder);
    ImageBuffer image = Pattern(3, 2, 1);

    EXPECT_FALSE(decoder->DecodeFrame(whole_frames, image));
    EXPECT_EQ(image.bytes, Pattern(3, 2, 1).bytes);
}

INSTANTIATE_TEST_SUITE_P(All, GoodSample, testing::ValuesIn(AllOf({"good"})), TestName);
INSTANTIATE_TEST_SUITE_P(All, BadSample, testing::ValuesIn(AllOf({"cut", "lying", "foreign", "unsupported"})),
                         TestName);
