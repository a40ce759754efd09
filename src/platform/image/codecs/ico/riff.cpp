// Reads the chunks of RIFF files.
#include "src/platform/image/codecs/ico/riff.h"

#include <algorithm>

std::vector<RiffChunk> RiffChunks(Bytes list)
{
    constexpr std::uint64_t kChunkHeaderSize = 8;
    std::vector<RiffChunk> chunks;
    ByteReader reader(list);
    while (reader.Left() >= kChunkHeaderSize) {
        RiffChunk chunk;
        chunk.id = reader.U32Le();
        const std::uint64_t claimed = reader.U32Le();
        const std::uint64_t size = std::min(claimed, reader.Left());
        chunk.data = reader.Take(size);
        reader.Take(std::min(size % 2, reader.Left()));  // chunks are padded to even sizes
        chunks.push_back(chunk);
    }
    return chunks;
}
