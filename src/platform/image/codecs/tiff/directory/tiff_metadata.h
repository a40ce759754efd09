// What a TIFF page says beside its pixels: resolution, profile, EXIF, XMP, IPTC.
// Room: platform/image/codecs/tiff/directory.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

/// The page's colour profile as it stands; empty for none, or one over 16 MB.
std::vector<std::uint8_t> aReadTiffProfile(InputFile& objFile, const TiffHeader& objHeader,
                                           const std::vector<TiffEntry>& aEntries);

/// Sets the resolution and the metadata of aImage. The EXIF block is made of the page's own texts (make,
/// model, date and so on), its orientation if the picture is still to be turned, and the directories of EXIF
/// and GPS.
void ReadTiffMetadata(InputFile& objFile, const TiffHeader& objHeader, const std::vector<TiffEntry>& aEntries,
                      std::uint16_t nOrientation, ImageBuffer& aImage);

/// The tags that carry aImage's resolution and metadata and objTexts, ascending; with bProfile the profile
/// too.
std::vector<TiffTag> aTiffMetadataTags(const ImageBuffer& aImage, const ImageInfoTexts& objTexts,
                                       bool bProfile);
