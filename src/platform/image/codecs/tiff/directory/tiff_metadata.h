// Resolution, profile, EXIF, XMP and IPTC of a TIFF page.
// Room: platform/image/codecs/tiff/directory.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

/// The page's colour profile, unchecked; empty if missing or over 16 MB.
std::vector<std::uint8_t> ReadTiffProfile(InputFile& file, const TiffHeader& header,
                                          const std::vector<TiffEntry>& entries);

/// Sets image's resolution and metadata. The EXIF block combines the page's own tags (make, model, date and
/// so on), its orientation if still to be applied, and the EXIF and GPS directories.
void ReadTiffMetadata(InputFile& file, const TiffHeader& header, const std::vector<TiffEntry>& entries,
                      std::uint16_t orientation, ImageBuffer& image);

/// The tags for image's resolution, metadata and texts, plus the profile if has_profile; ascending.
std::vector<TiffTag> TiffMetadataTags(const ImageBuffer& image, const ImageInfoTexts& texts,
                                      bool has_profile);
