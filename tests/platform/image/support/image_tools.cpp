// Folders, outside programs and pictures for the tests of the image library.
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

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/output_file.h"
#include "tests/support/paths.h"

TestFolder::TestFolder()
{
    std::string sTemplate = testing::TempDir() + "varnel-image-XXXXXX";
    m_sFolder = mkdtemp(sTemplate.data());
}

TestFolder::~TestFolder()
{
    std::error_code objIgnored;
    std::filesystem::remove_all(m_sFolder, objIgnored);
}

std::string sSamplePath(const std::string& sName)
{
    return SourceFolder() + "/tests/samples/" + sName;
}

std::vector<std::uint8_t> aFileContent(const std::string& sPath)
{
    std::ifstream objFile(sPath, std::ios::binary);
    EXPECT_TRUE(objFile.good()) << sPath;
    return {std::istreambuf_iterator<char>(objFile), {}};
}

void WriteFileContent(const std::string& sPath, const std::vector<std::uint8_t>& aContent)
{
    std::ofstream objFile(sPath, std::ios::binary);
    objFile.write(reinterpret_cast<const char*>(aContent.data()),
                  static_cast<std::streamsize>(aContent.size()));
    EXPECT_TRUE(objFile.good()) << sPath;
}

bool bRun(const std::string& sCommand, std::string* pOutput)
{
    FILE* pPipe = popen(("{ " + sCommand + "\n} 2>&1").c_str(), "r");
    if (!pPipe)
        return false;
    std::string sOutput;
    std::array<char, 4096> aPart{};
    for (std::size_t nRead = 0; (nRead = fread(aPart.data(), 1, aPart.size(), pPipe)) > 0;)
        sOutput.append(aPart.data(), nRead);
    if (pOutput)
        *pOutput = sOutput;
    return pclose(pPipe) == 0;
}

std::string sPython(const std::string& sProgram, const std::string& sArguments)
{
    const TestFolder objFolder;
    const std::string sFile = objFolder.sPath("program.py");
    WriteFileContent(sFile, {sProgram.begin(), sProgram.end()});
    std::string sOutput;
    EXPECT_TRUE(bRun("/usr/bin/python3 " + sFile + " " + sArguments, &sOutput)) << sOutput;
    return sOutput;
}

ImageBuffer aPattern(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels)
{
    ImageBuffer aImage;
    aImage.width = lWidth;
    aImage.height = lHeight;
    aImage.channels = lChannels;
    for (std::int32_t y = 0; y < lHeight; ++y)
        for (std::int32_t x = 0; x < lWidth; ++x)
            for (std::int32_t c = 0; c < lChannels; ++c) {
                const std::int32_t lSlope = c == 0   ? x * 255 / lWidth
                                            : c == 1 ? y * 255 / lHeight
                                                     : (x + y) * 255 / (lWidth + lHeight);
                const bool bInBox = x > lWidth / 4 && x < lWidth / 2 && y > lHeight / 3 && y < lHeight / 2;
                aImage.bytes.push_back(static_cast<std::uint8_t>(bInBox && c < 3 ? 230 - 80 * c : lSlope));
            }
    return aImage;
}

std::optional<ImageBuffer> aReadPnm(const std::string& sPath)
{
    const auto aFile = aFileContent(sPath);
    std::istringstream objHead(
        std::string(aFile.begin(), aFile.begin() + std::min<long>(100, std::ssize(aFile))));
    std::string sMagic;
    ImageBuffer aImage;
    int lMost = 0;
    objHead >> sMagic >> aImage.width >> aImage.height >> lMost;
    if ((sMagic != "P5" && sMagic != "P6") || lMost != 255)
        return std::nullopt;
    aImage.channels = sMagic == "P5" ? 1 : 3;
    const long lStart = static_cast<long>(objHead.tellg()) + 1;
    const long lSize = static_cast<long>(aImage.width) * aImage.height * aImage.channels;
    if (std::ssize(aFile) < lStart + lSize)
        return std::nullopt;
    aImage.bytes.assign(aFile.begin() + lStart, aFile.begin() + lStart + lSize);
    if (aImage.channels == 3)
        for (std::size_t i = 0; i + 2 < aImage.bytes.size(); i += 3)
            std::swap(aImage.bytes[i], aImage.bytes[i + 2]);
    return aImage;
}

void WritePnm(const std::string& sPath, const ImageBuffer& aImage)
{
    const std::string sHead = std::string(aImage.channels == 1 ? "P5 " : "P6 ") +
                              std::to_string(aImage.width) + " " + std::to_string(aImage.height) + " 255\n";
    std::vector<std::uint8_t> aFile(sHead.begin(), sHead.end());
    const auto nStep = static_cast<std::size_t>(aImage.channels);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += nStep)
        for (std::size_t c = std::min<std::size_t>(nStep, 3); c-- > 0;)
            aFile.push_back(aImage.bytes[i + c]);
    WriteFileContent(sPath, aFile);
}

std::optional<ImageBuffer> aDecoded(const Codec& objCodec, Bytes aFile, std::int32_t lFrame)
{
    InputFile objFile(aFile);
    const auto pDecoder = objCodec.Open(objFile);
    ImageBuffer aImage;
    if (!pDecoder || lFrame >= pDecoder->FrameCount() || !pDecoder->DecodeFrame(lFrame, aImage))
        return std::nullopt;
    return aImage;
}

std::vector<std::uint8_t> aEncoded(const Codec& objCodec, const ImageBuffer& aImage,
                                   const SaveSettings& objSettings)
{
    const TestFolder objFolder;
    OutputFile objOut(objFolder.sPath("encoded"));
    if (!objCodec.Encode(aImage, objSettings, objOut) || !objOut.Commit())
        return {};
    return aFileContent(objFolder.sPath("encoded"));
}

Difference objDifference(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    if (aOne.width != aOther.width || aOne.height != aOther.height || aOne.channels != aOther.channels ||
        aOne.bytes.size() != aOther.bytes.size() || aOne.bytes.empty())
        return {};
    Difference objResult{0, 0};
    for (std::size_t i = 0; i < aOne.bytes.size(); ++i) {
        const int lDifference = std::abs(aOne.bytes[i] - aOther.bytes[i]);
        objResult.lGreatest = std::max(objResult.lGreatest, lDifference);
        objResult.dMean += lDifference;
    }
    objResult.dMean /= static_cast<double>(aOne.bytes.size());
    return objResult;
}
