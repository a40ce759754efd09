// Reads and writes PNG chunks.
#include "src/platform/image/codecs/png/png_chunks.h"

#include <libdeflate.h>

#include <algorithm>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/output_file.h"

// Large enough that a picture is read with few system calls, small enough to stay in the cache beside the
// strip that is inflated from it.
static constexpr std::size_t kBufferSize = 128 * 1024;

PngChunkReader::PngChunkReader(InputFile& objFile) : m_objFile(objFile)
{
    m_aBuffer.resize(std::min<std::uint64_t>(kBufferSize, objFile.Size()));
}

Bytes PngChunkReader::SomeAt(std::uint64_t nOffset, std::uint64_t nMost)
{
    if (nOffset < m_nBufferStart || nOffset >= m_nBufferStart + m_nBuffered) {
        m_nBufferStart = nOffset;
        m_nBuffered = m_objFile.ReadAt(nOffset, m_aBuffer);
    }
    const std::uint64_t nSkip = nOffset - m_nBufferStart;
    const std::uint64_t nCount = std::min(nMost, m_nBuffered - std::min<std::uint64_t>(nSkip, m_nBuffered));
    return Bytes(m_aBuffer).subspan(m_nBuffered ? nSkip : 0, nCount);
}

std::optional<PngChunk> PngChunkReader::objChunkAt(std::uint64_t nPosition)
{
    std::array<std::uint8_t, 8> aHead{};
    for (std::size_t nDone = 0; nDone < aHead.size();) {
        const Bytes aPiece = SomeAt(nPosition + nDone, aHead.size() - nDone);
        if (aPiece.empty())
            return std::nullopt;
        std::copy(aPiece.begin(), aPiece.end(), aHead.begin() + static_cast<std::ptrdiff_t>(nDone));
        nDone += aPiece.size();
    }
    ByteReader objReader(aHead);
    PngChunk objChunk;
    objChunk.nLength = objReader.U32Be();
    objChunk.nType = objReader.U32Be();
    objChunk.nData = nPosition + 8;
    if (nAfter(objChunk) > m_objFile.Size())
        return std::nullopt;
    return objChunk;
}

std::optional<std::vector<std::uint8_t>> PngChunkReader::aDataOf(const PngChunk& objChunk,
                                                                 std::uint32_t nMost)
{
    if (objChunk.nLength > nMost)
        return std::nullopt;
    std::vector<std::uint8_t> aData(objChunk.nLength + 4);
    if (m_objFile.ReadAt(objChunk.nData, aData) != aData.size())
        return std::nullopt;
    const Bytes aSum = Bytes(aData).last(4);
    const std::array<std::uint8_t, 4> aLetters = {
        static_cast<std::uint8_t>(objChunk.nType >> 24), static_cast<std::uint8_t>(objChunk.nType >> 16),
        static_cast<std::uint8_t>(objChunk.nType >> 8), static_cast<std::uint8_t>(objChunk.nType)};
    const std::uint32_t nLetters = libdeflate_crc32(0, aLetters.data(), aLetters.size());
    if (libdeflate_crc32(nLetters, aData.data(), objChunk.nLength) != ByteReader(aSum).U32Be())
        return std::nullopt;
    aData.resize(objChunk.nLength);
    return aData;
}

bool WritePngChunk(OutputFile& objOut, std::uint32_t nType, Bytes aData)
{
    const std::array<std::uint8_t, 4> aLetters = {
        static_cast<std::uint8_t>(nType >> 24), static_cast<std::uint8_t>(nType >> 16),
        static_cast<std::uint8_t>(nType >> 8), static_cast<std::uint8_t>(nType)};
    std::uint32_t nSum = libdeflate_crc32(0, aLetters.data(), aLetters.size());
    // A null pointer would set the sum back to its start.
    if (!aData.empty())
        nSum = libdeflate_crc32(nSum, aData.data(), aData.size());
    return objOut.WriteU32Be(static_cast<std::uint32_t>(aData.size())) && objOut.Write(aLetters) &&
           objOut.Write(aData) && objOut.WriteU32Be(nSum);
}
