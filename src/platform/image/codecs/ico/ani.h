// Animated Windows cursors (ANI), read-only.
// Room: platform/image/codecs/ico.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Pages are the animation's steps: in the order of the sequence chunk or, without one, in file order. Each
/// is the largest picture of an icon or cursor, or a bitmap, and has 4 channels. The main page is the first
/// of the largest steps.
extern const Codec kAniCodec;
