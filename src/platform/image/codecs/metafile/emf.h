// Enhanced metafiles (EMF).
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads by playing the records at 96 dpi of the frame, on white: undrawn areas are empty, and every viewer
/// shows paper there. Writes a metafile of the picture's size that holds one bitmap.
extern const Codec kEmfCodec;
