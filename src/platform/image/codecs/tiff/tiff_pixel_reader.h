// Reads the pixels of one page of a TIFF file, in strips and tiles.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/codecs/tiff/tiff_layout.h"

class InputFile;
struct ImageBuffer;

/// Gives image the pixels of the page that tiff is at, as they are stored (not turned); everything else of
/// it is emptied. profile is the page's own, for colours of inks. False, with image untouched, when a strip
/// or tile can't be decoded. Beside the picture it takes what the largest strip has in the file, and at most
/// 32 MB more. Throws std::bad_alloc.
bool ReadTiffPixels(TIFF* tiff, const TiffLayout& layout, InputFile& file, Bytes profile, ImageBuffer& image);
