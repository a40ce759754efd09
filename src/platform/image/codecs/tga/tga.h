// Targa (TGA): reads 8 to 32 bits per pixel; writes grey, 24 and 32 bits, with the texts.
// Room: platform/image/codecs/tga.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads colour-mapped, true-colour and grey pictures, plain or run-length encoded, with any of the four
/// origins. The format has no signature, so a file is recognised by its extension (tga, targa, vda, icb, vst)
/// and a valid header. Alpha is used for 32-bit pixels and where the descriptor counts alpha bits, unless it
/// is 0 everywhere: then it was left unset. If the extension area denies it, it must also differ from 255
/// somewhere.
///
/// Writes grey with 8 bits, colour with 24, colour with alpha with 32; top-left origin, extension area and
/// footer. A few rows are packed as a trial, and the picture is run-length encoded only if they shrink by a
/// fifth: drawings and scans do, while photographs don't and are written in one go.
extern const Codec kTgaCodec;

/// Implemented in tga_encode.cpp.
bool EncodeTga(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
