// Enhanced metafiles (EMF).
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads by playing the records at 96 dpi of the frame, on white: undrawn areas are empty, and every viewer
/// shows paper there. A frame over 8192 pixels is drawn smaller, unless it holds a bitmap of more pixels.
/// Writes a metafile of the picture's size that holds one bitmap.
extern const Codec kEmfCodec;

/// Plays a whole EMF in memory. False, with image unchanged, if it can't be drawn.
bool DecodeEmf(Bytes file, ImageBuffer& image);

/// Implemented in emf_writer.cpp. Writes one bitmap record at 96 dpi; title, description, author and
/// copyright go into the metafile's description.
bool EncodeEmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
