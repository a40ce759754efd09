// Hue, lightness and saturation of rows of pixels.
// Room: platform/image/transforms/colour.
#pragma once

#include <cstddef>

#include "src/platform/image/transforms/rows/planes.h"

namespace transforms
{

/// On a scale of 0 to 255, with twice the lightness (M + m), which starts as a whole number.
struct HlsChange {
    float turn = 0;         // sixths of a turn, 0 to 6
    float light_scale = 1;  // M + m becomes light_scale (M + m) + light_add
    float light_add = 0;
    float saturation = 1;  // factor of the chroma
};

/// Applies a change to a row of pixels as described in hls.h.
using HlsRow = void (*)(FloatPlanes& planes, std::size_t pixels, const HlsChange& change);

/// The cheapest function that makes the change; null if nothing changes.
HlsRow ChooseHlsRow(const HlsChange& change);

}  // namespace transforms
