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
    std::string Path(const std::string& name) const { return folder_ + "/" + name; }

private:
    std::string folder_;
};

/// A file of tests/samples/.
std::string SamplePath(const std::string& name);

/// All bytes of a file; a missing one fails the test and gives none.
std::vector<std::uint8_t> FileContent(const std::string& path);
void WriteFileContent(const std::string& path, const std::vector<std::uint8_t>& content);

/// Runs a shell command; True if it ended with 0. What it printed is in *output.
bool RunCommand(const std::string& command, std::string* output = nullptr);
/// Runs a Python program with the arguments and gives what it printed; a failure fails the test.
std::string Python(const std::string& program, const std::string& arguments);

/// A picture with smooth slopes in all channels and a few hard edges; alpha is a slope too.
ImageBuffer Pattern(std::int32_t width, std::int32_t height, std::int32_t channels);
/// A binary PGM or PPM as ImageMagick and djpeg write it, 8 bits.
std::optional<ImageBuffer> ReadPnm(const std::string& path);
/// The picture as a binary PGM or PPM (alpha left out).
void WritePnm(const std::string& path, const ImageBuffer& image);

/// The first page of bytes in memory, by a codec; nothing if it refuses. Without FinishLoaded.
std::optional<ImageBuffer> Decoded(const Codec& codec, Bytes bytes, std::int32_t frame = 0);
/// What the codec writes for a picture; empty after a failure.
std::vector<std::uint8_t> Encoded(const Codec& codec, const ImageBuffer& image,
                                  const SaveSettings& settings = {});

/// The greatest and the mean difference of two pictures' bytes; 256 if their sizes differ.
struct Difference {
    int greatest = 256;
    double mean = 256;
};
Difference DifferenceBetween(const ImageBuffer& one, const ImageBuffer& other);
