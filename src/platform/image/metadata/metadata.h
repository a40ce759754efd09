// Metadata that all codecs handle alike: EXIF for a save, and the last step of every load.
// Room: platform/image/metadata.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

/// Builds the EXIF block (a TIFF structure from its byte order mark, without "Exif\0\0") for saving image. It
/// is image.metadata.exif with orientation 1, the picture's pixel size and resolution where the block has
/// tags for them, without a thumbnail and tags that describe how the source stored its pixels, and with these
/// texts: title DocumentName (0x010D), description ImageDescription (0x010E), equipment type Make (0x010F),
/// equipment model Model (0x0110), date DateTime (0x0132, see ExifDate), author Artist (0x013B), copyright
/// Copyright (0x8298). Empty texts keep the source's tags. Texts are written as UTF-8, as cameras and readers
/// do. A source block that isn't a TIFF structure is ignored. Empty if there is neither a source block nor a
/// text.
///
/// The block is edited in place and grows at its end. Rebuilding it would move the maker notes, whose
/// internal offsets count from the start of the block and are understood by their maker alone. So everything
/// not named above keeps its bytes and its place.
std::vector<std::uint8_t> ExifForSave(const ImageBuffer& image, const ImageInfoTexts& texts);

/// Finishes a picture that a decoder has made: applies the orientation in its EXIF block, sets that to 1 (in
/// the XMP packet too) and drops the EXIF thumbnail. Quarter turns swap the resolutions. Costs nothing
/// without EXIF. Throws std::bad_alloc and then leaves the pixels unchanged.
void FinishLoaded(ImageBuffer& image);

/// True if the orientation in an EXIF block swaps width and height.
bool OrientationSwapsSides(Bytes exif);

/// The resolution in an EXIF block, in dots per inch; both 0 if it has none.
struct ExifResolution {
    double dots_per_inch_x = 0;
    double dots_per_inch_y = 0;
};
ExifResolution ReadExifResolution(Bytes exif);

/// Converts a date to EXIF's "YYYY:MM:DD HH:MM:SS". Accepts M/D/YYYY, YYYY-MM-DD or YYYY:MM:DD, alone
/// (midnight) or followed by a space or "T" and h:mm or h:mm:ss, optionally with AM or PM. Returns other
/// texts unchanged.
std::string ExifDate(std::string_view text);
