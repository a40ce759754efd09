// Serialises TIFF directories, little-endian, classic or BigTIFF.
// Room: platform/image/codecs/tiff/directory.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"

/// A directory and everything it points to, for writing at a fixed file offset.
struct TiffDirectoryBytes {
    std::vector<std::uint8_t> bytes;
    std::uint64_t directory = 0;     ///< file offset of the directory
    std::uint64_t next_pointer = 0;  ///< file offset of its link to the next directory, which is 0
};

/// tags must be ascending; place is the even file offset where the bytes will be written. Classic TIFF has no
/// 64-bit numbers: such tags are narrowed to 32 bits, or dropped if a value doesn't fit.
TiffDirectoryBytes DirectoryBytes(const std::vector<TiffTag>& tags, std::uint64_t place, bool big_tiff);

/// The start of a file, padded to 16 bytes in either form, so that a classic header can be replaced in place
/// by a BigTIFF one.
std::vector<std::uint8_t> TiffHeaderBytes(std::uint64_t first_directory, bool big_tiff);

/// Appends value in `size` bytes, little-endian.
void AppendNumber(std::vector<std::uint8_t>& bytes, std::uint64_t value, std::uint32_t size);

// Tags whose values share one type; numbers are stored in that type's size.
TiffTag NumberTag(std::uint16_t tag, std::uint16_t type, const std::vector<std::uint64_t>& numbers);
TiffTag RationalTag(std::uint16_t tag, double value);
TiffTag TextTag(std::uint16_t tag, std::string_view text);  ///< ends at the first NUL
TiffTag BytesTag(std::uint16_t tag, std::uint16_t type, Bytes bytes);
