// Windows icons (ICO), only read.
// Room: platform/image/codecs/ico.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Every picture of the icon is a page, in the file's order; see icon_directory.h.
extern const Codec kIcoCodec;
