// Windows cursors (CUR), only read.
// Room: platform/image/codecs/ico.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Every picture of the cursor is a page, in the file's order; see icon_directory.h. The hot spot is no part
/// of it.
extern const Codec kCurCodec;
