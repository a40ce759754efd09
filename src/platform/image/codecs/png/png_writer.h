// Writes PNG files.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Writes the whole file, with the layout and filtering that make a sample of the picture smallest. Never
/// holds more than a strip of compressed data.
[[nodiscard]] bool EncodePng(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
