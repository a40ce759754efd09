// Reads TIFF directories: the page chain and the tags of a page.
// Room: platform/image/codecs/tiff/directory.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class InputFile;

/// How a file stores numbers.
struct TiffHeader {
    bool big_endian = false;
    bool big_tiff = false;  ///< 64-bit offsets and counts
    std::uint64_t first_directory = 0;
};

/// A directory entry whose value hasn't been read yet.
struct TiffEntry {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;   ///< 1 byte, 2 text, 3 16-bit, 4 32-bit, 5 rational, 7 undefined, 16 64-bit, ...
    std::uint64_t count = 0;  ///< number of values
    std::uint64_t value_offset = 0;  ///< file offset of the value, also for one stored inside the entry
};

/// A tag with its value, for copying or writing.
struct TiffTag {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint64_t count = 0;
    std::vector<std::uint8_t> value;  ///< numbers are little-endian
    std::vector<TiffTag> directory;   ///< tags of the directory it points to; value is then empty
};

/// Bytes per value of a type; 0 for an unknown type.
std::uint32_t TiffTypeSize(std::uint16_t type);

/// True for tags that hold the offset of a directory: EXIF, GPS and interoperability.
bool PointsToTiffDirectory(std::uint16_t tag);

/// Nothing if the file doesn't start like a TIFF.
std::optional<TiffHeader> ReadTiffHeader(InputFile& file);

/// The directories of a file's pages.
struct TiffPages {
    std::vector<std::uint64_t> directories;  ///< offsets
    bool breaks_off = false;                 ///< the last one leads to a page that can't be read
};

/// Finds all pages in one pass over the chain of directories. A chain that leads back to an earlier page ends
/// there.
TiffPages FindTiffPages(InputFile& file, const TiffHeader& header);

/// A directory's entries in file order. Skips entries of an unknown type or with a value outside the file.
/// Empty if the offset doesn't hold a whole directory.
std::vector<TiffEntry> ReadEntries(InputFile& file, const TiffHeader& header, std::uint64_t directory);

/// The entry with this tag, or null.
const TiffEntry* EntryOf(std::span<const TiffEntry> entries, std::uint16_t tag);

/// The bytes of a value, or none if there are more than limit. as_stored keeps numbers in file byte order,
/// for tags whose type doesn't reveal that they hold bytes.
std::vector<std::uint8_t> ReadValue(InputFile& file, const TiffHeader& header, const TiffEntry& entry,
                                    std::uint64_t limit, bool as_stored = false);

/// An entry's first number; nothing for types that aren't integers.
std::optional<std::uint64_t> ReadNumber(InputFile& file, const TiffHeader& header, const TiffEntry& entry);

/// Reads the entries whose tag is in `wanted` (ascending), with their values and, for tags that point to
/// directories, all tags of those. Sorted by tag, without duplicates. Values that exceed 64 MB or
/// the file size in total are left out.
std::vector<TiffTag> ReadTags(InputFile& file, const TiffHeader& header, std::span<const TiffEntry> entries,
                              std::span<const std::uint16_t> wanted);
