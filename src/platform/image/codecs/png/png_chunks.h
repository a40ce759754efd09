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
constexpr std::uint32_t nPngType(const char (&sLetters)[5])
{
    std::uint32_t nType = 0;
    for (std::size_t i = 0; i < 4; ++i)
        nType = nType << 8 | static_cast<std::uint8_t>(sLetters[i]);
    return nType;
}

/// A chunk without which the picture can't be shown: its first letter is upper case.
constexpr bool bPngCritical(std::uint32_t nType)
{
    return (nType & 0x20000000) == 0;
}

struct PngChunk {
    std::uint32_t nType = 0;
    std::uint64_t nData = 0;    ///< where its data begins in the file
    std::uint32_t nLength = 0;  ///< of the data
};

/// Walks over a file's chunks and reads what it is asked for. The file outlives it.
class PngChunkReader
{
public:
    explicit PngChunkReader(InputFile& objFile);

    /// The chunk that begins at nPosition (8 for the first). Nothing when the file doesn't hold all of it, so
    /// that a file cut short is noticed before its data is used.
    std::optional<PngChunk> objChunkAt(std::uint64_t nPosition);
    static std::uint64_t nAfter(const PngChunk& objChunk) { return objChunk.nData + objChunk.nLength + 4; }

    /// The chunk's data, copied. Nothing when it is longer than nMost or its check sum is wrong.
    std::optional<std::vector<std::uint8_t>> aDataOf(const PngChunk& objChunk, std::uint32_t nMost);

    /// One to nMost bytes from nOffset on, valid until the next call; none at the end of the file.
    Bytes SomeAt(std::uint64_t nOffset, std::uint64_t nMost);

private:
    InputFile& m_objFile;
    PixelBytes m_aBuffer;
    std::uint64_t m_nBufferStart = 0;
    std::size_t m_nBuffered = 0;
};

/// Writes a whole chunk: length, letters, data and check sum. False when the file has failed.
bool WritePngChunk(OutputFile& objOut, std::uint32_t nType, Bytes aData);
