// Checks that the tests of all small raster formats make alike.
#include "tests/platform/image/support/raster_checks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "src/platform/image/base/input_file.h"
#include "tests/support/paths.h"

std::optional<ImageBuffer> aReadPam(const std::string& sPath)
{
    const auto aFile = aFileContent(sPath);
    const std::string sText(aFile.begin(), aFile.end());
    const std::string sEnd = "ENDHDR\n";
    const std::size_t nEnd = sText.find(sEnd);
    if (!sText.starts_with("P7\n") || nEnd == std::string::npos)
        return std::nullopt;
    std::istringstream objHead(sText.substr(3, nEnd - 3));
    ImageBuffer aImage;
    for (std::string sName, sValue; objHead >> sName >> sValue;) {
        if (sName == "WIDTH")
            aImage.width = std::stoi(sValue);
        if (sName == "HEIGHT")
            aImage.height = std::stoi(sValue);
        if (sName == "DEPTH")
            aImage.channels = std::stoi(sValue);
    }
    aImage.bytes.assign(aFile.begin() + static_cast<std::ptrdiff_t>(nEnd + sEnd.size()), aFile.end());
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    for (std::size_t i = 0; nChannels >= 3 && i + nChannels <= aImage.bytes.size(); i += nChannels)
        std::swap(aImage.bytes[i], aImage.bytes[i + 2]);
    if (aImage.bytes.size() !=
        static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.height) * nChannels)
        return std::nullopt;
    return aImage;
}

std::vector<std::uint8_t> aBgraOf(const ImageBuffer& aImage)
{
    std::vector<std::uint8_t> aResult;
    const auto nStep = static_cast<std::size_t>(aImage.channels);
    for (std::size_t i = 0; i + nStep <= aImage.bytes.size(); i += nStep) {
        for (std::size_t c = 0; c < 3; ++c)
            aResult.push_back(aImage.bytes[i + (nStep == 1 ? 0 : c)]);
        aResult.push_back(nStep == 4 ? aImage.bytes[i + 3] : 255);
    }
    return aResult;
}

// A program that reads like ImageMagick's convert; sOptions come between the file and the pixels.
static std::vector<std::uint8_t> aBgraByCommand(const std::string& sProgram, const std::string& sPath,
                                                const std::string& sOptions)
{
    const TestFolder objFolder;
    std::string sOutput;
    const std::string sPixels = objFolder.sPath("pixels");
    const bool bRead =
        bRun(sProgram + " '" + sPath + "[0]' " + sOptions + " -depth 8 rgba:" + sPixels, &sOutput);
    EXPECT_TRUE(bRead) << sOutput;
    if (!bRead)
        return {};
    auto aBytes = aFileContent(sPixels);
    for (std::size_t i = 0; i + 3 < aBytes.size(); i += 4)
        std::swap(aBytes[i], aBytes[i + 2]);
    return aBytes;
}

std::vector<std::uint8_t> aBgraByImageMagick(const std::string& sPath)
{
    // What the format stores the other way up is only turned on demand.
    return aBgraByCommand(ImageMagick("convert"), sPath, "-auto-orient");
}

std::vector<std::uint8_t> aBgraByGraphicsMagick(const std::string& sPath)
{
    return aBgraByCommand("gm convert", sPath, "");
}

std::vector<std::uint8_t> aBgraByPillow(const std::string& sPath)
{
    const TestFolder objFolder;
    sPython(
        "import sys\nfrom PIL import Image\n"
        "r, g, b, a = Image.open(sys.argv[1]).convert('RGBA').split()\n"
        "open(sys.argv[2], 'wb').write(Image.merge('RGBA', (b, g, r, a)).tobytes())\n",
        "'" + sPath + "' " + objFolder.sPath("pixels"));
    return aFileContent(objFolder.sPath("pixels"));
}

ImageBuffer aNoise(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels, std::uint32_t nSeed)
{
    ImageBuffer aImage;
    aImage.width = lWidth;
    aImage.height = lHeight;
    aImage.channels = lChannels;
    aImage.bytes.resize(static_cast<std::size_t>(lWidth) * static_cast<std::size_t>(lHeight) *
                        static_cast<std::size_t>(lChannels));
    for (std::uint8_t& nByte : aImage.bytes) {
        nSeed = nSeed * 1664525 + 1013904223;
        nByte = static_cast<std::uint8_t>(nSeed >> 24);
    }
    return aImage;
}

// Whatever comes must be whole.
static void DecodeAll(const Codec& objCodec, Bytes aFile)
{
    InputFile objFile(aFile);
    objCodec.Sniff(objFile.Head(), "tga");
    const auto pDecoder = objCodec.Open(objFile);
    if (!pDecoder)
        return;
    const std::int32_t lFrames = pDecoder->FrameCount();
    ASSERT_GE(lFrames, 1);
    for (std::int32_t lFrame = 0; lFrame < std::min(lFrames, 8); ++lFrame) {
        ImageBuffer aImage;
        if (!pDecoder->DecodeFrame(lFrame, aImage))
            continue;
        ASSERT_TRUE(aImage.channels == 1 || aImage.channels == 3 || aImage.channels == 4);
        ASSERT_GT(aImage.width, 0);
        ASSERT_GT(aImage.height, 0);
        ASSERT_EQ(aImage.bytes.size(), static_cast<std::size_t>(aImage.width) *
                                           static_cast<std::size_t>(aImage.height) *
                                           static_cast<std::size_t>(aImage.channels));
    }
}

void ExpectAnyByteMayLie(const Codec& objCodec, const std::vector<std::uint8_t>& aFile)
{
    std::vector<std::uint8_t> aChanged = aFile;
    for (std::size_t i = 0; i < aFile.size(); i += i < 400 ? 1 : 41) {
        const std::uint8_t nRight = aFile[i];
        for (const int lWrong : {0, 255, nRight ^ 0x80, nRight ^ 1, nRight + 1, nRight - 1}) {
            aChanged[i] = static_cast<std::uint8_t>(lWrong);
            DecodeAll(objCodec, aChanged);
            if (testing::Test::HasFatalFailure()) {
                ADD_FAILURE() << "byte " << i << " as " << lWrong;
                return;
            }
        }
        aChanged[i] = nRight;
    }
}

void ExpectCutFilesRefused(const Codec& objCodec, const std::vector<std::uint8_t>& aFile,
                           std::size_t nSpareAtEnd)
{
    for (std::size_t nSize = 0; nSize + nSpareAtEnd < aFile.size(); ++nSize)
        ASSERT_FALSE(aDecoded(objCodec, Bytes(aFile).first(nSize)))
            << "with " << nSize << " of " << aFile.size() << " bytes";
}
