// Stretches a picture's levels to the full range.
// Room: platform/image/transforms/colour.
#pragma once

#include "src/platform/image_transform.h"

// v becomes 255 (v - lo) / (hi - lo), rounded, halves up. No outliers are clipped, so distinct levels stay
// distinct and applying it again changes nothing. If there is only one level (lo = hi), nothing changes.
// Pixels with alpha 0 are changed but not counted; alpha stays.
namespace transforms
{

/// lo and hi are the minimum and maximum over all colour channels together. One map for all channels keeps
/// greys grey and the colour balance.
OperationResult Autocontrast(const ImageBuffer& source, ImageBuffer& result);

/// Each channel has its own lo and hi, which also removes a colour cast. A flat channel stays.
OperationResult AutoLevel(const ImageBuffer& source, ImageBuffer& result);

}  // namespace transforms
