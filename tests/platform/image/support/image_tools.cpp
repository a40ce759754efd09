// Folders, external programs and pictures for tests of the image library.
#include "tests/platform/image/support/image_tools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "src/platform/image/base/input_file.h"
#include "tests/support/paths.h"

TestFolder::TestFolder()
{
    std::string name_template = testing::TempDir() + "varnel-image-XXXXXX";
    folder_ = mkdtemp(name_template.data());
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::string SamplePath(const std::string& name)
{
    return SourceFolder() + "/tests/samples/" + name;
}

std::vector<std::uint8_t> FileContent(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFileContent(const std::string& path, const std::vector<std::uint8_t>& content)
{
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    EXPECT_TRUE(file.good()) << path;
}

bool RunCommand(const std::string& command, std::string* output)
{
    FILE* pipe = popen(("{ " + command + "\n} 2>&1").c_str(), "r");
    if (!pipe)
        return false;
    std::string lines;
    std::array<char, 4096> part{};
    for (std::size_t got = 0; (got = fread(part.data(), 1, part.size(), pipe)) > 0;)
        lines.append(part.data(), got);
    if (output)
        *output = lines;
    return pclose(pipe) == 0;
}

std::string Python(const std::string& program, const std::string& arguments)
{
    const TestFolder folder;
    const std::string file = folder.Path("program.py");
    WriteFileContent(file, {program.begin(), program.end()});
    std::string output;
    EXPECT_TRUE(RunCommand("/usr/bin/python3 " + file + " " + arguments, &output)) << output;
    return output;
}

ImageBuffer Pattern(std::int32_t width, std::int32_t height, std::int32_t channels)
{
    ImageBuffer image;
    image.width = width;
    image.height = height;
    image.channels = channels;
    for (std::int32_t y = 0; y < height; ++y)
        for (std::int32_t x = 0; x < width; ++x)
            for (std::int32_t c = 0; c < channels; ++c) {
                const std::int32_t slope = c == 0   ? x * 255 / width
                                           : c == 1 ? y * 255 / height
                                                    : (x + y) * 255 / (width + height);
                const bool in_box = x > width / 4 && x < width / 2 && y > height / 3 && y < height / 2;
                image.bytes.push_back(static_cast<std::uint8_t>(in_box && c < 3 ? 230 - 80 * c : slope));
            }
    return image;
}

std::optional<ImageBuffer> ReadPnm(const std::string& path)
{
    const auto file = FileContent(path);
    std::istringstream head(std::string(file.begin(), file.begin() + std::min<long>(100, std::ssize(file))));
    std::string magic;
    ImageBuffer image;
    int max = 0;
    head >> magic >> image.width >> image.height >> max;
    if ((magic != "P5" && magic != "P6") || max != 255)
        return std::nullopt;
    image.channels = magic == "P5" ? 1 : 3;
    const long start = static_cast<long>(head.tellg()) + 1;
    const long size = static_cast<long>(image.width) * image.height * image.channels;
    if (std::ssize(file) < start + size)
        return std::nullopt;
    image.bytes.assign(file.begin() + start, file.begin() + start + size);
    if (image.channels == 3)
        for (std::size_t i = 0; i + 2 < image.bytes.size(); i += 3)
            std::swap(image.bytes[i], image.bytes[i + 2]);
    return image;
}

void WritePnm(const std::string& path, const ImageBuffer& image)
{
    const std::string head = std::string(image.channels == 1 ? "P5 " : "P6 ") + std::to_string(image.width) +
                             " " + std::to_string(image.height) + " 255\n";
    std::vector<std::uint8_t> file(head.begin(), head.end());
    const auto step = static_cast<std::size_t>(image.channels);
    for (std::size_t i = 0; i < image.bytes.size(); i += step)
        for (std::size_t c = std::min<std::size_t>(step, 3); c-- > 0;)
            file.push_back(image.bytes[i + c]);
    WriteFileContent(path, file);
}

std::optional<ImageBuffer> Decoded(const Codec& codec, Bytes bytes, std::int32_t frame)
{
    InputFile file(bytes);
    const auto decoder = codec.open(file);
    ImageBuffer image;
    if (!decoder || frame >= decoder->FrameCount() || !decoder->DecodeFrame(frame, image))
        return std::nullopt;
    return image;
}

std::vector<std::uint8_t> Encoded(const Codec& codec, const ImageBuffer& image, const SaveSettings& settings)
{
    const TestFolder folder;
    FileSaver saver(false);
    OutputFile out(folder.Path("encoded"), saver);
    if (!codec.encode(image, settings, out) || !out.Commit())
        return {};
    return FileContent(folder.Path("encoded"));
}

Difference DifferenceBetween(const ImageBuffer& one, const ImageBuffer& other)
{
    if (one.width != other.width || one.height != other.height || one.channels != other.channels ||
        one.bytes.size() != other.bytes.size() || one.bytes.empty())
        return {};
    Difference result{0, 0};
    for (std::size_t i = 0; i < one.bytes.size(); ++i) {
        const int difference = std::abs(one.bytes[i] - other.bytes[i]);
        result.greatest = std::max(result.greatest, difference);
        result.mean += difference;
    }
    result.mean /= static_cast<double>(one.bytes.size());
    return result;
}
