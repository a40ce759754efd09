// Targa files (TGA): read with 8 to 32 bits a pixel, written with greys, 24 or 32 bits and the texts.
// Room: platform/image/codecs/tga.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads colour-mapped, true-colour and grey pictures, plain or run-length encoded, from any of the four
/// corners. The format has no signature: a file is one if its extension says so (tga, targa, vda, icb, vst)
/// and its header is possible. Alpha counts when the extension area calls it useful, or, in a file without
/// one, when the descriptor counts alpha bits.
///
/// Writes from the top left corner; run-length encoded where that takes at least a fifth off (see
/// tga_encode.h).
extern const Codec kTgaCodec;
