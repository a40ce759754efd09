// Traces contours.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Draws black lines on white: for each channel but alpha separately, which gives coloured lines, or with
/// intensity for the pixels' intensity, which gives black ones. A pixel of value v is on a line if, for a
/// right or lower neighbour of value u,
///   it is on the other side of level (v < level <= u or u < level <= v), a contour line; or it differs by
///   more than threshold, an edge.
/// There are no neighbours beyond the border. Level 0 gives no contour lines and threshold 255 no edges. A
/// grey picture stays grey.
OperationResult TraceContours(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level,
                              std::uint8_t threshold, bool intensity);

}  // namespace transforms
