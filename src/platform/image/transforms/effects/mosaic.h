// Lays a picture out in tiles.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Lays tiles of tile_size by tile_size pixels from the top left corner; the last ones may be cut off. A
/// tile's colour is the mean of its pixels, channel by channel (alpha excepted, which is carried), to the
/// nearest level. plain_colour: each tile is of its colour all over. Otherwise tiles are soft: the middle
/// half of a tile is of its colour, and over the quarter on each side it passes evenly into the neighbour's,
/// so that both have an equal part at the seam; in x and y alike (bilinear). At the border tiles are of their
/// colour up to the end. A size of 1 or less changes nothing; one larger than the picture is one tile.
bool Mosaic(ImageBuffer& image, std::int32_t tile_size, bool plain_colour);

}  // namespace transforms
