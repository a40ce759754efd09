// Targa (TGA): reads 8 to 32 bits per pixel; writes grey, 24 and 32 bits, with the texts.
// Room: platform/image/codecs/tga.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads colour-mapped, true-colour and grey pictures, plain or run-length encoded, with any of the four
/// origins. The format has no signature, so a file is recognised by its extension (tga, targa, vda, icb, vst)
/// and a valid header. Alpha is used if the extension area declares it useful or, in a file without one, if
/// the descriptor counts alpha bits.
///
/// Writes with a top-left origin, run-length encoded where that saves at least a fifth (see tga_encode.h).
extern const Codec kTgaCodec;
