// Looks a JPEG 2000 codestream through before it is decoded: whether it is whole, and what it would take.
// Room: platform/image/codecs/j2k.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

struct J2kComponent {
    std::uint32_t step_x = 1;  ///< of the reference grid, from sample to sample
    std::uint32_t step_y = 1;
};

struct J2kSize {
    std::uint32_t left = 0, top = 0, right = 0, bottom = 0;  ///< of the picture on the reference grid
    std::uint32_t tile_left = 0, tile_top = 0, tile_width = 0, tile_height = 0;  ///< of the first tile
    std::vector<J2kComponent> components;

    std::uint64_t TilesAcross() const;
    std::uint64_t TilesDown() const;
};

/// True when the library may have the codestream: its picture is of an allowed size and not more than 64
/// components, every part of every tile is there to its last byte, the
/// end marker too, and tiles, packets and code blocks are not
/// more than the bytes can hold, or than a sane encoder makes of such a picture. The library believes all
/// these numbers and allocates by them, up to terabytes for a file of a hundred bytes, and it takes some
/// files that are cut for whole.
bool MayDecode(Bytes codestream, J2kSize& size);
