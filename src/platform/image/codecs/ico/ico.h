// Windows icons (ICO), read-only.
// Room: platform/image/codecs/ico.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Each picture is a page, in file order; the main page is the largest. See icon_directory.h.
extern const Codec kIcoCodec;
