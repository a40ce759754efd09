// Keeps a picture of few colours as it is.
// Room: platform/image/quantiser.
#pragma once

#include <optional>

#include "src/platform/image/quantiser/quantiser.h"

/// The picture in its own colours, in the order in which they appear (greys in ascending order); nothing if
/// it has more than 256, the transparent one included.
std::optional<IndexedImage> QuantiseExactly(const ImageBuffer& image);
