// Puts the directories of a TIFF file into bytes, little-endian, classic or with 64-bit offsets.
// Room: platform/image/codecs/tiff/directory.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"

/// A directory with all that it points to, ready to be written at one place of the file.
struct TiffDirectoryBytes {
    std::vector<std::uint8_t> aBytes;
    std::uint64_t nDirectory = 0;  ///< where in the file the directory begins
    std::uint64_t nNextPointer =
        0;  ///< where in the file the offset of the next directory is (0 now; 4 or 8 bytes)
};

/// aTags is ascending by tag. nPlace, an even offset in the file, is where aBytes is to be written. A classic
/// file takes no 64-bit numbers: such a tag becomes 32-bit, or is left out if a value is too large for that.
TiffDirectoryBytes objDirectoryBytes(const std::vector<TiffTag>& aTags, std::uint64_t nPlace, bool bBigTiff);

/// The beginning of a file, 16 bytes in both forms: so a classic file can become one with 64-bit offsets at
/// its place.
std::vector<std::uint8_t> aTiffHeaderBytes(std::uint64_t nFirstDirectory, bool bBigTiff);

/// The number as nSize bytes, the lowest first.
void AppendNumber(std::vector<std::uint8_t>& aBytes, std::uint64_t nValue, std::uint32_t nSize);

// Tags of one kind of value. aNumbers are written with the type's size.
TiffTag objNumberTag(std::uint16_t nTag, std::uint16_t nType, const std::vector<std::uint64_t>& aNumbers);
TiffTag objRationalTag(std::uint16_t nTag, double dValue);
TiffTag objTextTag(std::uint16_t nTag, std::string_view sText);  ///< ends at the first NUL
TiffTag objBytesTag(std::uint16_t nTag, std::uint16_t nType, Bytes aBytes);
