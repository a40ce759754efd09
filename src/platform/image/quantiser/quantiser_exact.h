// Indexes a picture of few colours without loss.
// Room: platform/image/quantiser.
#pragma once

#include <optional>

#include "src/platform/image/quantiser/quantiser.h"

/// The picture with its own colours in order of appearance (greys: ascending), or nothing if there are more
/// than 256, including the transparent one.
std::optional<IndexedImage> QuantiseExactly(const ImageBuffer& image);
