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
// The samples in these folders of tests/samples/tiff, without their extension.
std::vector<std::string> SampleNames(const std::vector<std::string>& folders)
{
    std::vector<std::string> names;
    for (const std::string& folder : folders)
        for (const auto& entry : std::filesystem::directory_iterator(SamplePath("tiff/" + folder)))
            if (entry.path().extension() == ".tif")
                names.push_back(folder + "/" + entry.path().stem().string());
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
        {"good/hand-old-jpeg", 6},  {"good/hand-ycbcr-1-1", 2},   {"good/hand-ycbcr-2-1", 2},
        {"good/hand-ycbcr-2-2", 2}, {"good/hand-ycbcr-4-2", 2},   {"good/hand-lab", 3},
        {"good/hand-lab-16", 3},    {"good/hand-lab-shifted", 3}, {"good/hand-lab-shifted-16", 3},
        {"good/hand-lab-alpha", 3}, {"good/hand-cmyk-16", 1},     {"good/hand-premultiplied", 1},
        {"good/hand-float-24", 1},
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
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '-' || c == '/'; }, '_');
    return name;
}
}  // namespace

TEST_P(TiffSamples, ShowTheirPictures)
{
    auto image = Decoded(kTiffCodec, FileContent(SamplePath("tiff/" + GetParam() + ".tif")));

    ASSERT_TRUE(image);
    FinishLoaded(*image);
    const ImageBuffer expected = ReadPam(SamplePath("tiff/" + GetParam() + ".tif.pam"));
    EXPECT_EQ(image->width, expected.width);
    EXPECT_EQ(image->height, expected.height);
    EXPECT_EQ(image->channels, expected.channels);
    EXPECT_LE(DifferenceBetween(*image, expected).greatest, Allowed(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, TiffSamples, testing::ValuesIn(SampleNames({"good"})), TestName);

TEST_P(RefusedTiffSamples, LeaveThePictureUntouched)
{
    const auto bytes = FileContent(SamplePath("tiff/" + GetParam() + ".tif"));
    InputFile file{Bytes(bytes)};
    ImageBuffer image = Pattern(3, 2, 1);

    const auto decoder = kTiffCodec.open(file);

    EXPECT_FALSE(decoder && decoder->DecodeFrame(0, image));
    EXPECT_EQ(image.bytes, Pattern(3, 2, 1).bytes);
}

INSTANTIATE_TEST_SUITE_P(All, RefusedTiffSamples,
                         testing::ValuesIn(SampleNames({"cut", "lying", "foreign", "unsupported"})),
                         TestName);
