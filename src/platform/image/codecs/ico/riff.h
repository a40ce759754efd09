// The chunks of RIFF files.
// Room: platform/image/codecs/ico.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

struct RiffChunk {
    std::uint32_t nId = 0;  ///< as nRiffId makes it
    Bytes aData;            ///< what is there of it: a chunk that claims more than the file has is cut
};

/// The number of a name of four characters.
constexpr std::uint32_t nRiffId(std::string_view sName)
{
    std::uint32_t nId = 0;
    for (std::size_t i = 0; i < 4; ++i)
        nId |= static_cast<std::uint32_t>(static_cast<unsigned char>(sName[i])) << (8 * i);
    return nId;
}

/// The chunks that lie one after the other in aList, which is the content of a file or of a list behind its
/// type.
std::vector<RiffChunk> aRiffChunks(Bytes aList);
