// Draws a picture's outlines.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Draws black lines on white, in each channel but alpha by itself (which gives coloured lines), or with
/// intensity the same for all by the pixels' intensity. A pixel with value v is on a line when, of the
/// neighbours right of it and below it, with value u,
///   one is on the other side of level (v < level <= u or u < level <= v): the contour of that level; or
///   one differs by more than threshold: the outline of a thing.
/// Pixels at the right and lower borders have no neighbour there. With level 0 there are no contours of a
/// level, with threshold 255 no outlines; all of it is white then. A grey picture stays grey.
bool TraceContours(ImageBuffer& image, std::uint8_t level, std::uint8_t threshold, bool intensity);

}  // namespace transforms
