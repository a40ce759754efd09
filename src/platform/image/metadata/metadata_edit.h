// Edits an EXIF block in place.
// Room: platform/image/metadata.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/platform/image/metadata/metadata_ifd.h"

/// Tags of the first directory and the EXIF directory.
constexpr std::uint16_t kTagDocumentName = 0x010D;
constexpr std::uint16_t kTagImageDescription = 0x010E;
constexpr std::uint16_t kTagMake = 0x010F;
constexpr std::uint16_t kTagModel = 0x0110;
constexpr std::uint16_t kTagOrientation = 0x0112;
constexpr std::uint16_t kTagXResolution = 0x011A;
constexpr std::uint16_t kTagYResolution = 0x011B;
constexpr std::uint16_t kTagResolutionUnit = 0x0128;
constexpr std::uint16_t kTagDateTime = 0x0132;
constexpr std::uint16_t kTagArtist = 0x013B;
constexpr std::uint16_t kTagCopyright = 0x8298;
constexpr std::uint16_t kTagExifDirectory = 0x8769;
constexpr std::uint16_t kTagGpsDirectory = 0x8825;
constexpr std::uint16_t kTagInteroperability = 0xA005;
constexpr std::uint16_t kTagPixelXDimension = 0xA002;
constexpr std::uint16_t kTagPixelYDimension = 0xA003;

struct ExifText {
    std::uint16_t tag;
    std::string text;  ///< not empty
};

/// Sets the first number of a 16-bit or 32-bit entry; other entries are unchanged.
void SetExifNumber(std::vector<std::uint8_t>& exif, const IfdEntry& entry, std::uint32_t value);

/// Sets the first rational of an entry, exact to a thousandth; entries of other types are unchanged.
void SetExifRational(std::vector<std::uint8_t>& exif, const IfdEntry& entry, double value);

/// Unlinks the second directory and removes its data: truncates the block if that is at its end, zeroes it
/// elsewhere. Data shared with other directories is kept.
void DropExifThumbnail(std::vector<std::uint8_t>& exif);

/// Rewrites the first directory as the only one in the chain: sorted by tag, without tags that describe pixel
/// storage, with the texts in place of the tags they name. It keeps its place if it fits there. A block
/// without a TIFF header is replaced with a new one. Empty if no tag is left.
void RewriteExif(std::vector<std::uint8_t>& exif, const std::vector<ExifText>& texts);
