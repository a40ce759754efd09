// Mosaic: reduces a picture to tiles.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Divides the picture into tiles of tile_size by tile_size pixels from the top left corner; the last ones
/// may be cut off. A tile's colour is the mean of its pixels, rounded; alpha is unchanged. With plain_colour
/// every tile is filled with its colour. Otherwise only the middle half of a tile is plain, and the quarter
/// on each side blends bilinearly into the neighbouring tile. Tiles at the border are plain up to it. A size
/// of 1 or less changes nothing; one larger than the picture gives a single tile.
OperationResult Mosaic(const ImageBuffer& source, ImageBuffer& result, std::int32_t tile_size,
                       bool plain_colour);

}  // namespace transforms
