// The directories of a TIFF file: where its pages are, and the tags of one of them.
// Room: platform/image/codecs/tiff/directory.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class InputFile;

/// How the numbers of a file are stored.
struct TiffHeader {
    bool big_endian = false;
    bool big_tiff = false;  ///< 64-bit offsets and counts
    std::uint64_t first_directory = 0;
};

/// One tag as it stands in a directory, its value not yet read.
struct TiffEntry {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;   ///< 1 byte, 2 text, 3 16-bit, 4 32-bit, 5 rational, 7 undefined, 16 64-bit, ...
    std::uint64_t count = 0;  ///< how many of them
    std::uint64_t value_offset = 0;  ///< where in the file the value is, also for one that lies in the entry
};

/// One tag with its value, for directories that are copied or written.
struct TiffTag {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint64_t count = 0;
    std::vector<std::uint8_t> value;  ///< numbers little-endian
    std::vector<TiffTag> directory;  ///< what the directory holds that the tag points to; value is then empty
};

/// Bytes of one value of a type; 0 for a type that is not known.
std::uint32_t TiffTypeSize(std::uint16_t type);

/// True for the tags whose value is the offset of a directory: those of EXIF, GPS and interoperability.
bool PointsToTiffDirectory(std::uint16_t tag);

/// Nothing for bytes that begin no TIFF file.
std::optional<TiffHeader> ReadTiffHeader(InputFile& file);

/// Where the pages' directories are, in the order of the chain, found in one pass over it. The chain ends at
/// the first directory that is broken or was there before, and after 65535 pages.
std::vector<std::uint64_t> PageDirectories(InputFile& file, const TiffHeader& header);

/// The tags of a directory in the order of the file; entries of an unknown type, and entries whose value
/// isn't inside the file, are left out. Empty for an offset that holds no whole directory.
std::vector<TiffEntry> ReadEntries(InputFile& file, const TiffHeader& header, std::uint64_t directory);

/// The entry with a tag, or null.
const TiffEntry* EntryOf(std::span<const TiffEntry> entries, std::uint16_t tag);

/// The value's bytes, as many as limit allows or none. as_stored leaves numbers in the file's order, for
/// tags whose type doesn't tell that they hold bytes.
std::vector<std::uint8_t> ReadValue(InputFile& file, const TiffHeader& header, const TiffEntry& entry,
                                    std::uint64_t limit, bool as_stored = false);

/// The first number of an entry of whole numbers; nothing for other types.
std::optional<std::uint64_t> ReadNumber(InputFile& file, const TiffHeader& header, const TiffEntry& entry);

/// Those of entries whose tag is in wanted (ascending), with their values and, for tags that point to
/// directories, with all tags of those. Ascending by tag, each once. Once the values are 64 MB or more than
/// the file in all, the rest is left out.
std::vector<TiffTag> ReadTags(InputFile& file, const TiffHeader& header, std::span<const TiffEntry> entries,
                              std::span<const std::uint16_t> wanted);
