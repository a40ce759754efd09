// Shared helpers for tests of the image library: folders, external programs, pictures.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "src/platform/image/codecs/codec.h"

/// A temporary folder for one test, removed with its contents.
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

/// The path of a file in tests/samples/.
std::string SamplePath(const std::string& name);

/// The bytes of a file; if it is missing, fails the test and returns none.
std::vector<std::uint8_t> FileContent(const std::string& path);
void WriteFileContent(const std::string& path, const std::vector<std::uint8_t>& content);

/// Runs a shell command and stores its output in *output. True if it exits with 0.
bool RunCommand(const std::string& command, std::string* output = nullptr);
/// Runs a Python program with arguments and returns its output. Fails the test if it fails.
std::string Python(const std::string& program, const std::string& arguments);

/// A picture with gradients in all channels, including alpha, and a few hard edges.
ImageBuffer Pattern(std::int32_t width, std::int32_t height, std::int32_t channels);
/// Reads an 8-bit binary PGM or PPM as ImageMagick and djpeg write it.
std::optional<ImageBuffer> ReadPnm(const std::string& path);
/// Writes a binary PGM or PPM, without alpha.
void WritePnm(const std::string& path, const ImageBuffer& image);

/// Decodes a page from memory, without FinishLoaded; nothing if the codec refuses.
std::optional<ImageBuffer> Decoded(const Codec& codec, Bytes bytes, std::int32_t frame = 0);
/// Encodes a picture to memory; empty on failure.
std::vector<std::uint8_t> Encoded(const Codec& codec, const ImageBuffer& image,
                                  const SaveSettings& settings = {});

/// The maximum and mean absolute difference between bytes; 256 if the sizes differ.
struct Difference {
    int greatest = 256;
    double mean = 256;
};
Difference DifferenceBetween(const ImageBuffer& one, const ImageBuffer& other);
