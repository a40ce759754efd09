// Regions painted on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include "src/platform/image/metafile/device/device_context.h"

/// Paints a region of logical units with a brush.
void FillRegion(DeviceContext& dc, const Region& region, const std::shared_ptr<const Brush>& brush);
/// Paints the pixels of it that lie within width (left and right) and height of its edge, in logical units.
void FrameRegion(DeviceContext& dc, const Region& region, const std::shared_ptr<const Brush>& brush,
                 double width, double height);
/// Turns each colour in it into its opposite.
void InvertRegion(DeviceContext& dc, const Region& region);
