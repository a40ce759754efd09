// Regions painted on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include "src/platform/image/metafile/device/device_context.h"

/// Paints a region of logical units with a brush.
void FillRegion(DeviceContext& dc, const Region& objRegion, const std::shared_ptr<const Brush>& pBrush);
/// Paints the pixels of it that lie within dWidth (left and right) and dHeight of its edge, in logical units.
void FrameRegion(DeviceContext& dc, const Region& objRegion, const std::shared_ptr<const Brush>& pBrush,
                 double dWidth, double dHeight);
/// Turns each colour in it into its opposite.
void InvertRegion(DeviceContext& dc, const Region& objRegion);
