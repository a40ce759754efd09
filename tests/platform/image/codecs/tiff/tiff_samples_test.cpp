// Every sample of TIFF shows the picture beside it, or is refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/tiff/tiff.h"
#include "src/platform/image/metadata/metadata.h"
#include "tests/platform/image/support/image_tools.h"

namespace
{
std::vector<std::string> SampleNames(bool refused)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(SamplePath("tiff"))) {
        const std::string name = entry.path().stem().string();
        if (entry.path().extension() == ".tif" && name.starts_with("refused") == refused)
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// A PAM of 8 bits: grey, grey and alpha (which becomes B, G, R, A), R G B, R G B A.
ImageBuffer ReadPam(const std::string& path)
{
    const auto bytes = FileContent(path);
    const std::string text(bytes.begin(), bytes.end());
    const std::size_t pixels = text.find("ENDHDR\n") + 7;
    std::istringstream head(text.substr(0, pixels));
    std::map<std::string, std::size_t> numbers;
    for (std::string line; std::getline(head, line);) {
        std::istringstream words(line);
        std::string name;
        words >> name >> numbers[name];
    }
    const std::size_t depth = numbers["DEPTH"];
    ImageBuffer image;
    image.width = static_cast<std::int32_t>(numbers["WIDTH"]);
    image.height = static_cast<std::int32_t>(numbers["HEIGHT"]);
    image.channels = depth == 1 ? 1 : depth == 3 ? 3 : 4;
    for (std::size_t i = pixels; i + depth <= bytes.size(); i += depth) {
        if (depth == 1) {
            image.bytes.push_back(bytes[i]);
            continue;
        }
        for (const std::size_t channel : {2, 1, 0})
            image.bytes.push_back(bytes[i + (depth == 2 ? 0 : channel)]);
        if (depth % 2 == 0)
            image.bytes.push_back(bytes[i + depth - 1]);
    }
    return image;
}

// Levels by which a sample may differ from its picture; 0 for all that aren't named. JPEG decoders round in
// their own ways; colours of Lab and of a luminance's range are computed by other white points and other
// roundings.
int Allowed(const std::string& name)
{
    static const std::map<std::string, int> kAllowed = {
        {"old-jpeg", 6}, {"ycbcr-1-1", 2},     {"ycbcr-2-1", 2},   {"ycbcr-2-2", 2},      {"ycbcr-4-2", 2},
        {"lab", 3},      {"lab-16", 3},        {"lab-shifted", 3}, {"lab-shifted-16", 3}, {"lab-alpha", 3},
        {"cmyk-16", 1},  {"premultiplied", 1}, {"float-24", 1},
    };
    const auto found = kAllowed.find(name);
    return found == kAllowed.end() ? 0 : found->second;
}

class TiffSamples : public testing::TestWithParam<std::string>
{
};

class RefusedTiffSamples : public testing::TestWithParam<std::string>
{
};

std::string TestName(const testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}
}  // namespace

TEST_P(TiffSamples, ShowTheirPictures)
{
    auto image = Decoded(kTiffCodec, FileContent(SamplePath("tiff/" + GetParam() + ".tif")));

    ASSERT_TRUE(image);
    FinishLoaded(*image);
    const ImageBuffer expected = ReadPam(SamplePath("tiff/" + GetParam() + ".pam"));
    EXPECT_EQ(image->width, expected.width);
    EXPECT_EQ(image->height, expected.height);
    EXPECT_EQ(image->channels, expected.channels);
    EXPECT_LE(DifferenceBetween(*image, expected).greatest, Allowed(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, TiffSamples, testing::ValuesIn(SampleNames(false)), TestName);

TEST_P(RefusedTiffSamples, LeaveThePictureUntouched)
{
    const auto bytes = FileContent(SamplePath("tiff/" + GetParam() + ".tif"));
    InputFile file{Bytes(bytes)};
    ImageBuffer image = Pattern(3, 2, 1);

    const auto decoder = kTiffCodec.open(file);

    EXPECT_FALSE(decoder && decoder->DecodeFrame(0, image));
    EXPECT_EQ(image.bytes, Pattern(3, 2, 1).bytes);
}

INSTANTIATE_TEST_SUITE_P(All, RefusedTiffSamples, testing::ValuesIn(SampleNames(true)), TestName);
