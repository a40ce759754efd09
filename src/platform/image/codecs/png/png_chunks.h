// Reads and writes a PNG file's chunks.
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

/// A chunk type as the big-endian number in the file.
constexpr std::uint32_t PngType(const char (&letters)[5])
{
    std::uint32_t type = 0;
    for (std::size_t i = 0; i < 4; ++i)
        type = type << 8 | static_cast<std::uint8_t>(letters[i]);
    return type;
}

/// True for a chunk that decoding depends on: its first letter is upper case.
constexpr bool IsCriticalPngChunk(std::uint32_t type)
{
    return (type & 0x20000000) == 0;
}

struct PngChunk {
    std::uint32_t type = 0;
    std::uint64_t data = 0;    ///< offset of the data in the file
    std::uint32_t length = 0;  ///< of the data, in bytes
};

/// Reads chunks on demand through one buffer. The file must outlive it.
class PngChunkReader
{
public:
    explicit PngChunkReader(InputFile& file);

    /// The chunk at position (8 for the first), or nothing if the file doesn't hold all of it; so truncation
    /// is noticed before the chunk's data is used.
    std::optional<PngChunk> ChunkAt(std::uint64_t position);
    static std::uint64_t PlaceAfter(const PngChunk& chunk) { return chunk.data + chunk.length + 4; }

    /// A copy of the chunk's data, or nothing if it is longer than max or its CRC is wrong.
    std::optional<std::vector<std::uint8_t>> DataOf(const PngChunk& chunk, std::uint32_t max);

    /// Between 1 and max bytes at offset, valid until the next call; none at the end of the file.
    Bytes SomeAt(std::uint64_t offset, std::uint64_t max);

private:
    InputFile& file_;
    PixelBytes buffer_;
    std::uint64_t buffer_start_ = 0;
    std::size_t buffered_ = 0;
};

/// Writes a whole chunk: length, type, data and CRC. False if writing failed.
bool WritePngChunk(OutputFile& out, std::uint32_t type, Bytes data);
