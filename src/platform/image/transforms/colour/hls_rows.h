// Hue, lightness and saturation of rows of pixels.
// Room: platform/image/transforms/colour.
#pragma once

#include <cstddef>

#include "src/platform/image/transforms/rows/planes.h"

namespace transforms
{

/// On the scale of 0 to 255; the lightness is kept doubled (M + m), so that it is a whole number at first.
struct HlsChange {
    float fTurn = 0;        // sixths of a turn, 0 to 6
    float fLightScale = 1;  // M + m becomes fLightScale (M + m) + fLightAdd
    float fLightAdd = 0;
    float fSaturation = 1;  // factor of the chroma
};

/// Changes the colours of nPixels pixels as hls.h says.
using HlsRow = void (*)(FloatPlanes& objPlanes, std::size_t nPixels, const HlsChange& objChange);

/// The function that makes the change and no more than it; nullptr for one that changes nothing.
HlsRow fnHlsRow(const HlsChange& objChange);

}  // namespace transforms
