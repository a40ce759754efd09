// Draws the metafiles in tests/samples/metafiles and checks what must be seen in them (see make.py there).
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "src/platform/image/codecs/registry.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

namespace
{
constexpr std::size_t kSamples = 54;
// Each drawing has at least its size and a colour or a box of ink.
constexpr int kLeastChecks = 2;

std::vector<std::filesystem::path> AllSamples()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(SamplePath("metafiles")))
        if (entry.path().extension() == ".emf" || entry.path().extension() == ".wmf")
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string TestName(const testing::TestParamInfo<std::filesystem::path>& info)
{
    std::string name = info.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class OfficeSample : public testing::TestWithParam<std::filesystem::path>
{
};

void ExpectColor(const ImageBuffer& image, std::int32_t x, std::int32_t y, std::uint32_t rgb)
{
    const std::uint32_t color = ColorAt(image, x, y);
    for (const auto& [mine, theirs] : {std::pair(0, 16), std::pair(8, 8), std::pair(16, 0)})
        EXPECT_NEAR(static_cast<int>(color >> mine & 255), static_cast<int>(rgb >> theirs & 255), 12)
            << "at " << x << ' ' << y;
}

void ExpectInk(const ImageBuffer& image, const std::array<std::int32_t, 4>& box, int least, int most)
{
    const int pixels = (box[2] - box[0]) * (box[3] - box[1]);
    const int ink = 100 - 100 * CountOf(image, kWhite, box) / pixels;
    EXPECT_GE(ink, least) << "ink in " << box[0] << ' ' << box[1] << ' ' << box[2] << ' ' << box[3];
    EXPECT_LE(ink, most) << "ink in " << box[0] << ' ' << box[1] << ' ' << box[2] << ' ' << box[3];
}

// Checks one line; false if it is malformed.
bool Check(const ImageBuffer& image, const std::string& line)
{
    std::istringstream stream(line);
    std::string kind;
    stream >> kind;
    if (kind == "size") {
        std::int32_t width = 0, height = 0;
        stream >> width >> height;
        EXPECT_EQ(image.width, width);
        EXPECT_EQ(image.height, height);
    } else if (kind == "at") {
        std::int32_t x = 0, y = 0;
        std::uint32_t rgb = 0;
        stream >> x >> y >> std::hex >> rgb;
        ExpectColor(image, x, y, rgb);
    } else if (kind == "ink") {
        std::array<std::int32_t, 4> box{};
        int least = 0, most = 0;
        stream >> box[0] >> box[1] >> box[2] >> box[3] >> least >> most;
        ExpectInk(image, box, least, most);
    } else
        return false;
    return !stream.fail();
}
}  // namespace

TEST(OfficeSamples, AreAllThere)
{
    EXPECT_EQ(AllSamples().size(), kSamples);
}

TEST_P(OfficeSample, ShowsWhatWasDrawn)
{
    const std::vector<std::uint8_t> file = FileContent(GetParam().string());
    const Codec* codec = CodecOfContent(Bytes(file), "");
    ASSERT_NE(codec, nullptr);
    const auto image = Decoded(*codec, file);
    ASSERT_TRUE(image.has_value());
    std::ifstream checks(std::filesystem::path(GetParam()).replace_extension(".checks"));
    int count = 0;
    for (std::string line; std::getline(checks, line); ++count)
        EXPECT_TRUE(Check(*image, line)) << line;
    EXPECT_GE(count, kLeastChecks);
}

INSTANTIATE_TEST_SUITE_P(Metafiles, OfficeSample, testing::ValuesIn(AllSamples()), TestName);
