// Writes Targa files.
// Room: platform/image/codecs/tga.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Greys with 8 bits, colours with 24, colours and alpha with 32, from the top left corner; extension area
/// and footer follow. Size against speed: a few rows are packed for trial, and the picture is run-length
/// encoded if they became smaller by a fifth. Photographs don't, and go out in one write as they lie in
/// memory; drawings and scans do.
bool EncodeTga(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
