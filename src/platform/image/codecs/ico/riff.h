// The chunks of RIFF files.
// Room: platform/image/codecs/ico.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

struct RiffChunk {
    std::uint32_t id = 0;  ///< see RiffId()
    Bytes data;            ///< cut off at the end of the file
};

/// A four-character code as the number in the file.
constexpr std::uint32_t RiffId(std::string_view name)
{
    std::uint32_t id = 0;
    for (std::size_t i = 0; i < 4; ++i)
        id |= static_cast<std::uint32_t>(static_cast<unsigned char>(name[i])) << (8 * i);
    return id;
}

/// The chunks in the contents of a file or list, without its type.
std::vector<RiffChunk> RiffChunks(Bytes list);
