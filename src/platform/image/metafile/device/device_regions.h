// Paints regions on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include "src/platform/image/metafile/device/device_context.h"

/// Paints a region in logical units with a brush.
void FillRegion(DeviceContext& dc, const Region& region, const std::shared_ptr<const Brush>& brush);
/// Paints the region's pixels within width and height of its edge, in logical units.
void FrameRegion(DeviceContext& dc, const Region& region, const std::shared_ptr<const Brush>& brush,
                 double width, double height);
/// Inverts the colours in the region.
void InvertRegion(DeviceContext& dc, const Region& region);
