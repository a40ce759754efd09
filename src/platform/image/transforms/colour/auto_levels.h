// Stretching a picture's levels to the whole scale, as far as its own darkest and lightest pixels allow.
// Room: platform/image/transforms/colour.
#pragma once

#include "src/platform/image_buffer.h"

// Both are plain: no share of the pixels is cut off at the ends, so nothing that was distinct becomes equal,
// and a second application changes nothing. v becomes 255 (v - lo) / (hi - lo), rounded, halves up. What has
// one level only (lo = hi) stays. Pixels of alpha 0 have no say but are changed along; alpha stays. Neither
// is ever False.
namespace transforms
{

/// lo and hi are the least and the greatest value of all colour channels together: the contrast becomes the
/// greatest possible, and one map for all channels keeps greys grey and the mixture of the colours.
bool Autocontrast(ImageBuffer& image);

/// Each channel has its own lo and hi, so that a tint over the whole picture goes too. A flat channel stays.
bool AutoLevel(ImageBuffer& image);

}  // namespace transforms
