// Converts brushes to ink.
// Room: platform/image/metafile/device.
#pragma once

#include <optional>

#include "src/platform/image/metafile/canvas/ink.h"
#include "src/platform/image/metafile/device/objects.h"

class DeviceContext;

/// The colour or tile of a brush, with the context's current colours. Nothing for the null brush, an invalid
/// bitmap, or one too large for a pattern.
std::optional<Ink> BrushInk(const Brush& brush, const DeviceContext& dc);
