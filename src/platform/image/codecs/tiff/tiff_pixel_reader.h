// Reads the pixels of a TIFF page from its strips or tiles.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/codecs/tiff/tiff_layout.h"

class InputFile;
struct ImageBuffer;

/// Reads tiff's current page into image, ignoring orientation; the rest of image is cleared. profile is the
/// page's, used for CMYK. False if a strip or tile can't be decoded, or of a fax page nothing at all; image
/// is then unchanged. Besides the picture it needs the largest encoded strip and at most 32 MB. Throws
/// std::bad_alloc.
bool ReadTiffPixels(TIFF* tiff, const TiffLayout& layout, InputFile& file, Bytes profile, ImageBuffer& image);
