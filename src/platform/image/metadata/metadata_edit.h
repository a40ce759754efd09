// Changes an EXIF block where it lies.
// Room: platform/image/metadata.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/platform/image/metadata/metadata_ifd.h"

/// Tags of the first directory and of the EXIF directory.
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

/// Sets the first number of an entry of 16-bit or 32-bit numbers, other entries not.
void SetExifNumber(std::vector<std::uint8_t>& exif, const IfdEntry& entry, std::uint32_t value);

/// Sets the first rational of an entry of rationals to value, exact to a thousandth; other entries not.
void SetExifRational(std::vector<std::uint8_t>& exif, const IfdEntry& entry, double value);

/// Takes the second directory out of the chain and what belongs to it out of the block: cut off where it is
/// the block's end, set to zero elsewhere. What also belongs to another directory stays.
void DropExifThumbnail(std::vector<std::uint8_t>& exif);

/// Writes the first directory anew, as the only one of the chain and sorted by tag, without the tags that
/// describe how a file stores its pixels, and with the texts in place of the tags that they name. It stays
/// where it was if it fits there. Without a TIFF header the block becomes a new one. Empty if no tag is left.
void RewriteExif(std::vector<std::uint8_t>& exif, const std::vector<ExifText>& texts);
