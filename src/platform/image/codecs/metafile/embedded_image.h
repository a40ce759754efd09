// Decodes the image files that EMF+ records hold.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// Decodes the first page of a file in any format but a metafile's, which could hold itself endlessly. False,
/// with image unchanged, if it can't be decoded.
bool DecodeEmbeddedImage(Bytes file, ImageBuffer& image);
