// Writes PNG files.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// The whole file, in the layout and with the filters that a sample of the picture says are smallest. At no
/// time is there more of the packed picture in memory than a strip.
[[nodiscard]] bool EncodePng(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
