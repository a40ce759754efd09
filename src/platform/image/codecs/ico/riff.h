// The chunks of RIFF files.
// Room: platform/image/codecs/ico.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

struct RiffChunk {
    std::uint32_t id = 0;  ///< as RiffId makes it
    Bytes data;            ///< what is there of it: a chunk that claims more than the file has is cut
};

/// The number of a name of four characters.
constexpr std::uint32_t RiffId(std::string_view name)
{
    std::uint32_t id = 0;
    for (std::size_t i = 0; i < 4; ++i)
        id |= static_cast<std::uint32_t>(static_cast<unsigned char>(name[i])) << (8 * i);
    return id;
}

/// The chunks that lie one after the other in list, which is the content of a file or of a list behind its
/// type.
std::vector<RiffChunk> RiffChunks(Bytes list);
