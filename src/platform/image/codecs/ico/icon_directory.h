// The directory of icons and cursors, whose pictures are bitmaps with a mask or complete PNG files.
// Room: platform/image/codecs/ico.
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/codecs/codec.h"

enum class IconKind : std::uint16_t { kIcon = 1, kCursor = 2 };

/// A directory entry. Its size is often wrong: the header of the picture itself decides.
struct IconEntry {
    std::uint32_t width = 0;  ///< pixels, 1 to 256
    std::uint32_t height = 0;
    std::uint64_t offset = 0;  ///< in the file
    std::uint64_t size = 0;
};

/// True if head starts a file of this kind with at least one plausible entry.
bool IsIconFile(Bytes head, IconKind kind);

/// The entries of an icon or cursor in file order, as many as fit in the file. Empty for other files.
std::vector<IconEntry> IconEntries(Bytes file);

/// Size and depth of an entry's picture, from its own header: the directory can't be trusted.
struct IconSize {
    std::uint64_t pixels = 0;  ///< 0 if the entry is outside the file or its header is broken
    std::uint32_t bits = 0;    ///< per pixel

    auto operator<=>(const IconSize&) const = default;
};
IconSize SizeOfIconEntry(Bytes file, const IconEntry& entry);

/// The index of the largest picture, the deepest among equally large ones. entries must not be empty.
std::size_t LargestIconEntry(Bytes file, const std::vector<IconEntry>& entries);

/// Decodes an entry to 4 channels. A 32-bit bitmap uses its alpha channel unless that is 0 everywhere; others
/// take their transparency from the mask. If nothing would be visible, as in a cursor that only inverts the
/// screen, the inverting pixels are shown as they look on white. False if the entry is outside the file,
/// truncated or unsupported; image is then unchanged.
bool DecodeIconEntry(Bytes file, const IconEntry& entry, ImageBuffer& image);

/// Each entry is a page. Null if there are no entries.
std::unique_ptr<ImageDecoder> OpenIcon(InputFile& file);
