// Validates a JPEG 2000 codestream before decoding: is it complete, and what would it cost?
// Room: platform/image/codecs/j2k.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

struct J2kComponent {
    std::uint32_t step_x = 1;  ///< reference grid units from sample to sample
    std::uint32_t step_y = 1;
};

/// A marker without parameters in the header of a tile-part.
struct J2kBareMarker {
    std::uint64_t offset = 0;    ///< in the codestream
    std::uint64_t part_end = 0;  ///< the end of its tile-part
};

/// What a codestream's headers say about its structure.
struct J2kLayout {
    std::uint32_t left = 0, top = 0, right = 0, bottom = 0;  ///< of the picture on the reference grid
    std::uint32_t tile_left = 0, tile_top = 0, tile_width = 0, tile_height = 0;  ///< of the first tile
    std::vector<J2kComponent> components;
    std::vector<J2kBareMarker> bare_markers;
    std::uint64_t parts_end = 0;  ///< where the last tile-part ends
    bool has_end = false;         ///< the end marker comes next
    bool lossy = false;           ///< a component uses the irreversible wavelet

    std::uint64_t TilesAcross() const;
    std::uint64_t TilesDown() const;
};

/// True if the codestream is safe to decode: the picture's size is allowed, it has at most 64 components,
/// every tile-part is complete, and the tiles, packets and code blocks aren't more than
/// the bytes can hold or a sane encoder would make. OpenJPEG trusts all these numbers and allocates by them,
/// up to terabytes for a file of a hundred bytes, and accepts some truncated files as complete. The
/// end marker may be missing if the tile-parts tell that they are complete.
bool MayDecode(Bytes codestream, J2kLayout& layout);
