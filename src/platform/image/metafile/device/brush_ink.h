// What the brushes of a metafile paint with.
// Room: platform/image/metafile/device.
#pragma once

#include <optional>

#include "src/platform/image/metafile/canvas/ink.h"
#include "src/platform/image/metafile/device/objects.h"

class DeviceContext;

/// The colour or the repeating picture of a brush, with the colours that the context has now. Nothing for the
/// null brush, a broken bitmap, or one larger than a pattern can be.
std::optional<Ink> BrushInk(const Brush& brush, const DeviceContext& dc);
