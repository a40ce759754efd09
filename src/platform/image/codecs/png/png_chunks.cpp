// Reads and writes PNG chunks.
#include "src/platform/image/codecs/png/png_chunks.h"

#include <libdeflate.h>

#include <algorithm>

#include "src/platform/files/output_file.h"
#include "src/platform/image/base/input_file.h"

// Large enough for few system calls, small enough to stay in the cache along with the strip being inflated.
static constexpr std::size_t kBufferSize = 128 * 1024;

PngChunkReader::PngChunkReader(InputFile& file) : file_(file)
{
    buffer_.resize(std::min<std::uint64_t>(kBufferSize, file.Size()));
}

Bytes PngChunkReader::SomeAt(std::uint64_t offset, std::uint64_t max)
{
    if (offset < buffer_start_ || offset >= buffer_start_ + buffered_) {
        buffer_start_ = offset;
        buffered_ = file_.ReadAt(offset, buffer_);
    }
    const std::uint64_t skip = offset - buffer_start_;
    const std::uint64_t count = std::min(max, buffered_ - std::min<std::uint64_t>(skip, buffered_));
    return Bytes(buffer_).subspan(buffered_ ? skip : 0, count);
}

std::optional<PngChunk> PngChunkReader::ChunkAt(std::uint64_t position)
{
    std::array<std::uint8_t, 8> head{};
    for (std::size_t done = 0; done < head.size();) {
        const Bytes piece = SomeAt(position + done, head.size() - done);
        if (piece.empty())
            return std::nullopt;
        std::copy(piece.begin(), piece.end(), head.begin() + static_cast<std::ptrdiff_t>(done));
        done += piece.size();
    }
    ByteReader reader(head);
    PngChunk chunk;
    chunk.length = reader.U32Be();
    chunk.type = reader.U32Be();
    chunk.data = position + 8;
    if (PlaceAfter(chunk) > file_.Size())
        return std::nullopt;
    return chunk;
}

std::optional<std::vector<std::uint8_t>> PngChunkReader::DataOf(const PngChunk& chunk, std::uint32_t max)
{
    if (chunk.length > max)
        return std::nullopt;
    std::vector<std::uint8_t> data(chunk.length + 4);
    if (file_.ReadAt(chunk.data, data) != data.size())
        return std::nullopt;
    const Bytes sum = Bytes(data).last(4);
    const std::array<std::uint8_t, 4> letters = {
        static_cast<std::uint8_t>(chunk.type >> 24), static_cast<std::uint8_t>(chunk.type >> 16),
        static_cast<std::uint8_t>(chunk.type >> 8), static_cast<std::uint8_t>(chunk.type)};
    const std::uint32_t type_crc = libdeflate_crc32(0, letters.data(), letters.size());
    if (libdeflate_crc32(type_crc, data.data(), chunk.length) != ByteReader(sum).U32Be())
        return std::nullopt;
    data.resize(chunk.length);
    return data;
}

bool WritePngChunk(OutputFile& out, std::uint32_t type, Bytes data)
{
    const std::array<std::uint8_t, 4> letters = {
        static_cast<std::uint8_t>(type >> 24), static_cast<std::uint8_t>(type >> 16),
        static_cast<std::uint8_t>(type >> 8), static_cast<std::uint8_t>(type)};
    std::uint32_t sum = libdeflate_crc32(0, letters.data(), letters.size());
    // libdeflate_crc32() returns its start value for a null pointer.
    if (!data.empty())
        sum = libdeflate_crc32(sum, data.data(), data.size());
    return out.WriteU32Be(static_cast<std::uint32_t>(data.size())) && out.Write(letters) && out.Write(data) &&
           out.WriteU32Be(sum);
}
