// Finds samples and reads their expected images.
#include "tests/platform/image/support/samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "tests/platform/image/support/image_tools.h"

namespace fs = std::filesystem;

std::vector<std::string> SamplesOf(const std::string& format, const std::string& kind)
{
    std::vector<std::string> samples;
    std::error_code missing;
    for (const auto& entry : fs::directory_iterator(SamplePath(format + "/" + kind), missing))
        if (entry.path().extension() != ".pam")
            samples.push_back(entry.path().string());
    std::sort(samples.begin(), samples.end());
    return samples;
}

// False for a malformed line.
static bool ReadHeaderLine(const std::string& line, ExpectedImage& expected, std::size_t& depth)
{
    std::istringstream words(line);
    std::string name;
    words >> name;
    if (name == "WIDTH")
        words >> expected.image.width;
    else if (name == "HEIGHT")
        words >> expected.image.height;
    else if (name == "DEPTH")
        words >> depth;
    else if (line.starts_with("# within "))
        words >> name >> expected.within;
    else if (line.starts_with("# on average within "))
        words >> name >> name >> name >> expected.average.emplace();
    else if (line.starts_with("# cells of "))
        words >> name >> name >> expected.cell;
    else
        return line == "P7" || line == "MAXVAL 255" || name == "TUPLTYPE";
    return !words.fail();
}

std::optional<ExpectedImage> ReadExpectedImage(const std::string& sample, int frame)
{
    const std::string path = sample + (frame > 0 ? "." + std::to_string(frame) : "") + ".pam";
    if (!fs::exists(path))
        return std::nullopt;
    const std::vector<std::uint8_t> file = FileContent(path);
    const std::string text(file.begin(), file.end());
    const std::string end = "\nENDHDR\n";
    const std::size_t header_size = text.find(end);
    if (header_size == std::string::npos) {
        ADD_FAILURE() << path << " is not a PAM file";
        return std::nullopt;
    }
    ExpectedImage expected;
    std::size_t depth = 0;
    std::istringstream header(text.substr(0, header_size));
    for (std::string line; std::getline(header, line);)
        EXPECT_TRUE(ReadHeaderLine(line, expected, depth)) << path << ": " << line;

    ImageBuffer& image = expected.image;
    image.channels = depth == 2 ? 4 : static_cast<std::int32_t>(depth);
    const std::size_t pixels = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    const std::size_t first = header_size + end.size();
    if (depth < 1 || depth > 4 || file.size() - first != pixels * depth) {
        ADD_FAILURE() << path << " has the wrong size";
        return std::nullopt;
    }
    for (std::size_t i = first; i < file.size(); i += depth) {
        if (depth == 1) {
            image.bytes.push_back(file[i]);
            continue;
        }
        for (const std::size_t channel : {2, 1, 0})
            image.bytes.push_back(file[i + (depth == 2 ? 0 : channel)]);
        if (depth != 3)
            image.bytes.push_back(file[i + depth - 1]);
    }
    return expected;
}
