// Enhanced metafiles.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads by playing the records, at 96 pixels an inch of the frame, on white: where nothing is drawn a
/// metafile is empty, and every viewer shows paper there. Writes a metafile of the picture's size that holds
/// one bitmap.
extern const Codec kEmfCodec;
