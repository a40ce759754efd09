// A PNG file as a row of chunks: reading them through one buffer, and writing them.
// Room: platform/image/codecs/png.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

class InputFile;
class OutputFile;

constexpr std::array<std::uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};

/// A chunk's four letters as the number that stands in the file.
constexpr std::uint32_t PngType(const char (&letters)[5])
{
    std::uint32_t type = 0;
    for (std::size_t i = 0; i < 4; ++i)
        type = type << 8 | static_cast<std::uint8_t>(letters[i]);
    return type;
}

/// A chunk without which the picture can't be shown: its first letter is upper case.
constexpr bool IsCriticalPngChunk(std::uint32_t type)
{
    return (type & 0x20000000) == 0;
}

struct PngChunk {
    std::uint32_t type = 0;
    std::uint64_t data = 0;    ///< where its data begins in the file
    std::uint32_t length = 0;  ///< of the data
};

/// Walks over a file's chunks and reads what it is asked for. The file outlives it.
class PngChunkReader
{
public:
    explicit PngChunkReader(InputFile& file);

    /// The chunk that begins at position (8 for the first). Nothing when the file doesn't hold all of it, so
    /// that a file cut short is noticed before its data is used.
    std::optional<PngChunk> ChunkAt(std::uint64_t position);
    static std::uint64_t PlaceAfter(const PngChunk& chunk) { return chunk.data + chunk.length + 4; }

    /// The chunk's data, copied. Nothing when it is longer than max or its check sum is wrong.
    std::optional<std::vector<std::uint8_t>> DataOf(const PngChunk& chunk, std::uint32_t max);

    /// One to max bytes from offset on, valid until the next call; none at the end of the file.
    Bytes SomeAt(std::uint64_t offset, std::uint64_t max);

private:
    InputFile& file_;
    PixelBytes buffer_;
    std::uint64_t buffer_start_ = 0;
    std::size_t buffered_ = 0;
};

/// Writes a whole chunk: length, letters, data and check sum. False when the file has failed.
bool WritePngChunk(OutputFile& out, std::uint32_t type, Bytes data);
