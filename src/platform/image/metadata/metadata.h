// What the codecs share about metadata: EXIF for a save, and the finish of every load.
// Room: platform/image/metadata.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

/// The EXIF block (a TIFF structure from its byte order mark on, without "Exif\0\0") to put into a file that
/// image is saved to. It is the source's block of image.metadata.exif with orientation 1, no thumbnail,
/// the picture's pixel size and resolution where the block names them, without the tags that describe how the
/// source stored its pixels, and with the texts put in:
///   title DocumentName (0x010D), description ImageDescription (0x010E), equipment type Make (0x010F),
///   equipment model Model (0x0110), date DateTime (0x0132, see ExifDate), author Artist (0x013B), copyright
///   Copyright (0x8298). An empty text leaves the source's tag. Texts are written as UTF-8, as cameras and
///   readers do.
/// Empty when there is neither a source's block nor a text. A source's block that is no TIFF structure counts
/// as none.
///
/// The block is edited where it lies and grows at its end. A library that takes it apart and builds it anew
/// would move the maker notes, whose inner offsets count from the beginning of the block and are understood
/// by their maker alone; so everything here that isn't named above stays byte for byte at its place.
std::vector<std::uint8_t> ExifForSave(const ImageBuffer& image, const ImageInfoTexts& texts);

/// Brings a picture that a decoder made into the state in which it is handed on: turned upright by the
/// orientation that its EXIF block names, that orientation set to 1 (in the XMP packet too), the EXIF
/// thumbnail dropped, the resolutions exchanged for quarter turns. Costs nothing for a picture without EXIF.
/// Throws std::bad_alloc, with the pixels as they were.
void FinishLoaded(ImageBuffer& image);

/// The resolution that an EXIF block names, in dots per inch; both 0 if it names none.
struct ExifResolution {
    double dots_per_inch_x = 0;
    double dots_per_inch_y = 0;
};
ExifResolution ReadExifResolution(Bytes exif);

/// A date text in EXIF's form "YYYY:MM:DD HH:MM:SS", if it is a date: M/D/YYYY, YYYY-MM-DD or YYYY:MM:DD,
/// alone (midnight) or followed by a blank or "T" and h:mm or h:mm:ss, with AM or PM after a blank or not.
/// Any other text as it stands.
std::string ExifDate(std::string_view text);
