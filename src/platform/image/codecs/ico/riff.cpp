// Walks over the chunks of RIFF files.
#include "src/platform/image/codecs/ico/riff.h"

#include <algorithm>

std::vector<RiffChunk> aRiffChunks(Bytes aList)
{
    constexpr std::uint64_t kChunkHeaderSize = 8;
    std::vector<RiffChunk> aChunks;
    ByteReader rd(aList);
    while (rd.Left() >= kChunkHeaderSize) {
        RiffChunk objChunk;
        objChunk.nId = rd.U32Le();
        const std::uint64_t nClaimed = rd.U32Le();
        const std::uint64_t nSize = std::min(nClaimed, rd.Left());
        objChunk.aData = rd.Take(nSize);
        rd.Take(std::min(nSize % 2, rd.Left()));  // chunks begin at even places
        aChunks.push_back(objChunk);
    }
    return aChunks;
}
