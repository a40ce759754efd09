// Windows cursors (CUR), only read.
// Room: platform_image. May use: platform.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Every picture of the cursor is a page, in the file's order; see icon_directory.h. The hot spot is no part
/// of it.
extern const Codec codecCur;
