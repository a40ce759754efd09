// What a TIFF page says beside its pixels: resolution, profile, EXIF, XMP, IPTC.
// Room: platform/image/codecs/tiff/directory.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

/// The page's colour profile as it stands; empty for none, or one over 16 MB.
std::vector<std::uint8_t> ReadTiffProfile(InputFile& file, const TiffHeader& header,
                                          const std::vector<TiffEntry>& entries);

/// Sets the resolution and the metadata of image. The EXIF block is made of the page's own texts (make,
/// model, date and so on), its orientation if the picture is still to be turned, and the directories of EXIF
/// and GPS.
void ReadTiffMetadata(InputFile& file, const TiffHeader& header, const std::vector<TiffEntry>& entries,
                      std::uint16_t orientation, ImageBuffer& image);

/// The tags that carry image's resolution and metadata and texts, ascending; with has_profile the profile
/// too.
std::vector<TiffTag> TiffMetadataTags(const ImageBuffer& image, const ImageInfoTexts& texts,
                                      bool has_profile);
