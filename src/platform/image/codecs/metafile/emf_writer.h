// Writes a picture as an EMF.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Writes a metafile of the picture's size at 96 dpi with one bitmap record. Title, description, author and
/// copyright go into its description.
bool EncodeEmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
