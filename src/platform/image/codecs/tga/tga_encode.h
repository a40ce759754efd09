// Writes Targa files.
// Room: platform/image/codecs/tga.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Writes grey with 8 bits, colour with 24, colour with alpha with 32; top-left origin, extension area and
/// footer. A few rows are packed as a trial, and the picture is run-length encoded only if they shrink by a
/// fifth: drawings and scans do, while photographs don't and are written in one go.
bool EncodeTga(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
