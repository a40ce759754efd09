// What the tests of the image library share: folders, outside programs, pictures to compare.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "src/platform/image/codecs/codec.h"

/// A folder of its own for one test, removed with what is in it.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    /// The path of a file in the folder.
    std::string sPath(const std::string& sName) const { return m_sFolder + "/" + sName; }

private:
    std::string m_sFolder;
};

/// A file of tests/samples/.
std::string sSamplePath(const std::string& sName);

/// All bytes of a file; a missing one fails the test and gives none.
std::vector<std::uint8_t> aFileContent(const std::string& sPath);
void WriteFileContent(const std::string& sPath, const std::vector<std::uint8_t>& aContent);

/// Runs a shell command; True if it ended with 0. What it printed is in *pOutput.
bool bRun(const std::string& sCommand, std::string* pOutput = nullptr);
/// Runs a Python program with the arguments and gives what it printed; a failure fails the test.
std::string sPython(const std::string& sProgram, const std::string& sArguments);

/// A picture with smooth slopes in all channels and a few hard edges; alpha is a slope too.
ImageBuffer aPattern(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels);
/// A binary PGM or PPM as ImageMagick and djpeg write it, 8 bits.
std::optional<ImageBuffer> aReadPnm(const std::string& sPath);
/// The picture as a binary PGM or PPM (alpha left out).
void WritePnm(const std::string& sPath, const ImageBuffer& aImage);

/// The first page of bytes in memory, by a codec; nothing if it refuses. Without FinishLoaded.
std::optional<ImageBuffer> aDecoded(const Codec& objCodec, Bytes aFile, std::int32_t lFrame = 0);
/// What the codec writes for a picture; empty after a failure.
std::vector<std::uint8_t> aEncoded(const Codec& objCodec, const ImageBuffer& aImage,
                                   const SaveSettings& objSettings = {});

/// The greatest and the mean difference of two pictures' bytes; 256 if their sizes differ.
struct Difference {
    int lGreatest = 256;
    double dMean = 256;
};
Difference objDifference(const ImageBuffer& aOne, const ImageBuffer& aOther);
