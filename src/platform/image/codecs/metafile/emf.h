// Enhanced metafiles (EMF).
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads by playing the records at 96 dpi of the frame, on white: undrawn areas are empty, and every viewer
/// shows paper there. Writes a metafile of the picture's size that holds one bitmap.
extern const Codec kEmfCodec;

/// Implemented in emf_writer.cpp. Writes one bitmap record at 96 dpi; title, description, author and
/// copyright go into the metafile's description.
bool EncodeEmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
