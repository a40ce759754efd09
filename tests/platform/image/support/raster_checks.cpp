// Checks that the tests of all small raster formats make alike.
#include "tests/platform/image/support/raster_checks.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "src/platform/image/base/input_file.h"
#include "tests/support/paths.h"

std::vector<std::uint8_t> BgraOf(const ImageBuffer& image)
{
    std::vector<std::uint8_t> result;
    const auto step = static_cast<std::size_t>(image.channels);
    for (std::size_t i = 0; i + step <= image.bytes.size(); i += step) {
        for (std::size_t c = 0; c < 3; ++c)
            result.push_back(image.bytes[i + (step == 1 ? 0 : c)]);
        result.push_back(step == 4 ? image.bytes[i + 3] : 255);
    }
    return result;
}

// A program that reads like ImageMagick's convert; options come between the file and the pixels.
static std::vector<std::uint8_t> BgraByCommand(const std::string& program, const std::string& path,
                                               const std::string& options)
{
    const TestFolder folder;
    std::string output;
    const std::string pixels = folder.Path("pixels");
    const bool read =
        RunCommand(program + " '" + path + "[0]' " + options + " -depth 8 rgba:" + pixels, &output);
    EXPECT_TRUE(read) << output;
    if (!read)
        return {};
    auto bytes = FileContent(pixels);
    for (std::size_t i = 0; i + 3 < bytes.size(); i += 4)
        std::swap(bytes[i], bytes[i + 2]);
    return bytes;
}

std::vector<std::uint8_t> BgraByImageMagick(const std::string& path)
{
    // What the format stores the other way up is only turned on demand.
    return BgraByCommand(ImageMagick("convert"), path, "-auto-orient");
}

std::vector<std::uint8_t> BgraByGraphicsMagick(const std::string& path)
{
    return BgraByCommand("gm convert", path, "");
}

std::vector<std::uint8_t> BgraByPillow(const std::string& path)
{
    const TestFolder folder;
    Python(
        "import sys\nfrom PIL import Image\n"
        "r, g, b, a = Image.open(sys.argv[1]).convert('RGBA').split()\n"
        "open(sys.argv[2], 'wb').write(Image.merge('RGBA', (b, g, r, a)).tobytes())\n",
        "'" + path + "' " + folder.Path("pixels"));
    return FileContent(folder.Path("pixels"));
}

ImageBuffer Noise(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint32_t seed)
{
    ImageBuffer image;
    image.width = width;
    image.height = height;
    image.channels = channels;
    image.bytes.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                       static_cast<std::size_t>(channels));
    for (std::uint8_t& byte : image.bytes) {
        seed = seed * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(seed >> 24);
    }
    return image;
}

// Whatever comes must be whole.
static void DecodeAll(const Codec& codec, Bytes bytes)
{
    InputFile file(bytes);
    codec.sniff(file.Head(), "tga");
    const auto decoder = codec.open(file);
    if (!decoder)
        return;
    const std::int32_t frames = decoder->FrameCount();
    ASSERT_GE(frames, 1);
    for (std::int32_t frame = 0; frame < std::min(frames, 8); ++frame) {
        ImageBuffer image;
        if (!decoder->DecodeFrame(frame, image))
            continue;
        ASSERT_TRUE(image.channels == 1 || image.channels == 3 || image.channels == 4);
        ASSERT_GT(image.width, 0);
        ASSERT_GT(image.height, 0);
        ASSERT_EQ(image.bytes.size(), static_cast<std::size_t>(image.width) *
                                          static_cast<std::size_t>(image.height) *
                                          static_cast<std::size_t>(image.channels));
    }
}

void ExpectSurvivesCorruption(const Codec& codec, const std::vector<std::uint8_t>& file, std::size_t step)
{
    std::vector<std::uint8_t> changed = file;
    for (std::size_t i = 0; i < file.size(); i += i < 400 ? step : 41 * step) {
        const std::uint8_t right = file[i];
        for (const int wrong : {0, 255, right ^ 0x80, right ^ 1, right + 1, right - 1}) {
            changed[i] = static_cast<std::uint8_t>(wrong);
            DecodeAll(codec, changed);
            if (testing::Test::HasFatalFailure()) {
                ADD_FAILURE() << "byte " << i << " as " << wrong;
                return;
            }
        }
        changed[i] = right;
    }
}

void ExpectRefusedIfTruncated(const Codec& codec, const std::vector<std::uint8_t>& file,
                              std::size_t spare_at_end)
{
    for (std::size_t size = 0; size + spare_at_end < file.size(); ++size)
        ASSERT_FALSE(Decoded(codec, Bytes(file).first(size)))
            << "with " << size << " of " << file.size() << " bytes";
}
