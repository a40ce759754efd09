// Every sample with a picture beside it must decode to that picture; tests/samples/README.md says how to add
// one.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/bmp/bmp.h"
#include "src/platform/image/codecs/ico/ani.h"
#include "src/platform/image/codecs/ico/cur.h"
#include "src/platform/image/codecs/ico/ico.h"
#include "src/platform/image/codecs/pcx/pcx.h"
#include "src/platform/image/codecs/ras/ras.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/codecs/tga/tga.h"
#include "tests/platform/image/support/raster_checks.h"

struct SampleFolder {
    const char* folder;
    const Codec& codec;
};

// How a failure names the folder.
static void PrintTo(const SampleFolder& folder, std::ostream* stream)
{
    *stream << folder.folder;
}

class RasterSamples : public testing::TestWithParam<SampleFolder>
{
protected:
    static std::vector<std::string> FilesIn(const std::string& folder)
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(SamplePath(folder))) {
            if (entry.is_regular_file())
                found.push_back(entry.path().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    // The samples with a picture beside them.
    static std::vector<std::string> Samples()
    {
        std::vector<std::string> found = FilesIn(std::string(GetParam().folder) + "/good");
        std::erase_if(found, [](const std::string& path) {
            return path.ends_with(".pam") || !std::filesystem::exists(path + ".pam");
        });
        return found;
    }
};

TEST_P(RasterSamples, GiveThePicturesBesideThem)
{
    ASSERT_FALSE(Samples().empty());
    for (const std::string& sample : Samples()) {
        const auto bytes = FileContent(sample);
        std::string picture = sample + ".pam";
        for (std::int32_t frame = 0; std::filesystem::exists(picture); ++frame) {
            SCOPED_TRACE(picture);
            const auto expected = ReadPam(picture);
            ASSERT_TRUE(expected);

            const auto image = Decoded(GetParam().codec, bytes, frame);

            ASSERT_TRUE(image);
            EXPECT_EQ(image->width, expected->width);
            EXPECT_EQ(image->height, expected->height);
            EXPECT_EQ(image->channels, expected->channels);
            EXPECT_TRUE(image->bytes == expected->bytes) << "not the same pixels";
            picture = sample + "." + std::to_string(frame + 1) + ".pam";
        }
    }
}

TEST_P(RasterSamples, ThatAreTruncatedLyingOrForeignAreRejected)
{
    std::size_t rejected = 0;
    for (const std::string kind : {"/cut", "/lying", "/foreign"}) {
        for (const std::string& path : FilesIn(GetParam().folder + kind)) {
            EXPECT_FALSE(Decoded(GetParam().codec, FileContent(path))) << path;
            ++rejected;
        }
    }
    EXPECT_GE(rejected, 4u);
}

TEST_P(RasterSamples, AreRecognisedByTheirContentAndNoOtherFormatClaimsThem)
{
    for (const std::string& sample : Samples()) {
        const auto bytes = FileContent(sample);
        InputFile file(bytes);
        const std::string extension = std::filesystem::path(sample).extension().string().substr(1);

        EXPECT_EQ(CodecOfContent(file.Head(), extension), &GetParam().codec) << sample;
        for (const Codec* codec : Codecs())
            EXPECT_EQ(codec->sniff(file.Head(), extension), codec == &GetParam().codec) << sample;
    }
}

TEST_P(RasterSamples, ThatAreCutInTheMiddleAreRefused)
{
    for (const std::string& sample : Samples()) {
        const auto bytes = FileContent(sample);
        for (const std::size_t size : {bytes.size() / 2, bytes.size() / 4, std::size_t{20}, std::size_t{1}})
            EXPECT_FALSE(Decoded(GetParam().codec, Bytes(bytes).first(std::min(size, bytes.size() - 1))))
                << sample << " with " << size << " bytes";
    }
}

TEST_P(RasterSamples, MayLieInAnyByteAndDoNoHarm)
{
    for (const std::string& sample : Samples())
        ExpectAnyByteMayLie(GetParam().codec, FileContent(sample));
}

TEST_P(RasterSamples, OfOtherFormatsAreRefused)
{
    const std::string own = GetParam().folder;
    for (const std::string folder : {"bmp", "pcx", "ras", "tga", "ico", "cur", "ani", "jpeg"}) {
        // Icons and cursors are told apart by the registry; what opens the one can open the other.
        const bool icons = (own == "ico" || own == "cur") && (folder == "ico" || folder == "cur");
        for (const std::string& path :
             folder == own || icons ? std::vector<std::string>{} : FilesIn(folder + "/good"))
            EXPECT_FALSE(Decoded(GetParam().codec, FileContent(path))) << path;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, RasterSamples,
                         testing::Values(SampleFolder{"bmp", kBmpCodec}, SampleFolder{"pcx", kPcxCodec},
                                         SampleFolder{"ras", kRasCodec}, SampleFolder{"tga", kTgaCodec},
                                         SampleFolder{"ico", kIcoCodec}, SampleFolder{"cur", kCurCodec},
                                         SampleFolder{"ani", kAniCodec}),
                         [](const auto& test) { return std::string(test.param.folder); });
