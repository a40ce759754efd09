// Windows animated cursors (ANI), only read.
// Room: platform/image/codecs/ico.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// The steps of the animation are the pages: the pictures in the order of the sequence, or as they lie in the
/// file when it has none. Each picture is the first one of an icon or cursor, or a bitmap; it has 4 channels.
extern const Codec kAniCodec;
