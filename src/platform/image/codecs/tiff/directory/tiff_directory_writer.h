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
    std::vector<std::uint8_t> bytes;
    std::uint64_t directory = 0;  ///< where in the file the directory begins
    std::uint64_t next_pointer =
        0;  ///< where in the file the offset of the next directory is (0 now; 4 or 8 bytes)
};

/// tags is ascending by tag. place, an even offset in the file, is where bytes is to be written. A classic
/// file takes no 64-bit numbers: such a tag becomes 32-bit, or is left out if a value is too large for that.
TiffDirectoryBytes DirectoryBytes(const std::vector<TiffTag>& tags, std::uint64_t place, bool big_tiff);

/// The beginning of a file, 16 bytes in both forms: so a classic file can become one with 64-bit offsets at
/// its place.
std::vector<std::uint8_t> TiffHeaderBytes(std::uint64_t first_directory, bool big_tiff);

/// The number as size bytes, the lowest first.
void AppendNumber(std::vector<std::uint8_t>& bytes, std::uint64_t value, std::uint32_t size);

// Tags of one kind of value. numbers are written with the type's size.
TiffTag NumberTag(std::uint16_t tag, std::uint16_t type, const std::vector<std::uint64_t>& numbers);
TiffTag RationalTag(std::uint16_t tag, double value);
TiffTag TextTag(std::uint16_t tag, std::string_view text);  ///< ends at the first NUL
TiffTag BytesTag(std::uint16_t tag, std::uint16_t type, Bytes bytes);
