// Writes a picture as an EMF.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// A metafile of the picture's size at 96 pixels an inch, with one bitmap record. Title, description, author
/// and copyright make its description.
bool EncodeEmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);
