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
std::vector<std::string> aSampleNames(bool bRefused)
{
    std::vector<std::string> aNames;
    for (const auto& objEntry : std::filesystem::directory_iterator(sSamplePath("tiff"))) {
        const std::string sName = objEntry.path().stem().string();
        if (objEntry.path().extension() == ".tif" && sName.starts_with("refused") == bRefused)
            aNames.push_back(sName);
    }
    std::sort(aNames.begin(), aNames.end());
    return aNames;
}

// A PAM of 8 bits: grey, grey and alpha (which becomes B, G, R, A), R G B, R G B A.
ImageBuffer aReadPam(const std::string& sPath)
{
    const auto aFile = aFileContent(sPath);
    const std::string sFile(aFile.begin(), aFile.end());
    const std::size_t nPixels = sFile.find("ENDHDR\n") + 7;
    std::istringstream objHead(sFile.substr(0, nPixels));
    std::map<std::string, std::size_t> aNumbers;
    for (std::string sLine; std::getline(objHead, sLine);) {
        std::istringstream objLine(sLine);
        std::string sName;
        objLine >> sName >> aNumbers[sName];
    }
    const std::size_t nDepth = aNumbers["DEPTH"];
    ImageBuffer aImage;
    aImage.width = static_cast<std::int32_t>(aNumbers["WIDTH"]);
    aImage.height = static_cast<std::int32_t>(aNumbers["HEIGHT"]);
    aImage.channels = nDepth == 1 ? 1 : nDepth == 3 ? 3 : 4;
    for (std::size_t i = nPixels; i + nDepth <= aFile.size(); i += nDepth) {
        if (nDepth == 1) {
            aImage.bytes.push_back(aFile[i]);
            continue;
        }
        for (const std::size_t nChannel : {2, 1, 0})
            aImage.bytes.push_back(aFile[i + (nDepth == 2 ? 0 : nChannel)]);
        if (nDepth % 2 == 0)
            aImage.bytes.push_back(aFile[i + nDepth - 1]);
    }
    return aImage;
}

// Levels by which a sample may differ from its picture; 0 for all that aren't named. JPEG decoders round in
// their own ways; colours of Lab and of a luminance's range are computed by other white points and other
// roundings.
int nAllowed(const std::string& sName)
{
    static const std::map<std::string, int> kAllowed = {
        {"old-jpeg", 6}, {"ycbcr-1-1", 2},     {"ycbcr-2-1", 2},   {"ycbcr-2-2", 2},      {"ycbcr-4-2", 2},
        {"lab", 3},      {"lab-16", 3},        {"lab-shifted", 3}, {"lab-shifted-16", 3}, {"lab-alpha", 3},
        {"cmyk-16", 1},  {"premultiplied", 1}, {"float-24", 1},
    };
    const auto itFound = kAllowed.find(sName);
    return itFound == kAllowed.end() ? 0 : itFound->second;
}

class TiffSamples : public testing::TestWithParam<std::string>
{
};

class RefusedTiffSamples : public testing::TestWithParam<std::string>
{
};

std::string sTestName(const testing::TestParamInfo<std::string>& objInfo)
{
    std::string sName = objInfo.param;
    std::replace(sName.begin(), sName.end(), '-', '_');
    return sName;
}
}  // namespace

TEST_P(TiffSamples, ShowTheirPictures)
{
    auto aImage = aDecoded(codecTiff, aFileContent(sSamplePath("tiff/" + GetParam() + ".tif")));

    ASSERT_TRUE(aImage);
    FinishLoaded(*aImage);
    const ImageBuffer aExpected = aReadPam(sSamplePath("tiff/" + GetParam() + ".pam"));
    EXPECT_EQ(aImage->width, aExpected.width);
    EXPECT_EQ(aImage->height, aExpected.height);
    EXPECT_EQ(aImage->channels, aExpected.channels);
    EXPECT_LE(objDifference(*aImage, aExpected).lGreatest, nAllowed(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, TiffSamples, testing::ValuesIn(aSampleNames(false)), sTestName);

TEST_P(RefusedTiffSamples, LeaveThePictureUntouched)
{
    const auto aFile = aFileContent(sSamplePath("tiff/" + GetParam() + ".tif"));
    InputFile objFile{Bytes(aFile)};
    ImageBuffer aImage = aPattern(3, 2, 1);

    const auto pDecoder = codecTiff.Open(objFile);

    EXPECT_FALSE(pDecoder && pDecoder->DecodeFrame(0, aImage));
    EXPECT_EQ(aImage.bytes, aPattern(3, 2, 1).bytes);
}

INSTANTIATE_TEST_SUITE_P(All, RefusedTiffSamples, testing::ValuesIn(aSampleNames(true)), sTestName);
