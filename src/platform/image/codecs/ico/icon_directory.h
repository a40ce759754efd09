// What icons and cursors share: a directory of pictures, each a bitmap with a mask or a whole PNG file.
// Room: platform/image/codecs/ico.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/codecs/codec.h"

enum class IconKind : std::uint16_t { kIcon = 1, kCursor = 2 };

/// One entry as it stands in the directory; nothing of it is to be believed before the picture itself is
/// looked at.
struct IconEntry {
    std::uint32_t width = 0;  ///< pixels, 1 to 256
    std::uint32_t height = 0;
    std::uint64_t offset = 0;  ///< in the file
    std::uint64_t size = 0;
};

/// True when head begins a file of that kind with at least one possible entry.
bool IsIconFile(Bytes head, IconKind kind);

/// The entries of a file of either kind, in its order; as many as the file has room for, whatever it claims.
/// Empty for a foreign file.
std::vector<IconEntry> IconEntries(Bytes file);

/// Decodes one entry to 4 channels. A bitmap of 32 bits has its alpha, unless that is 0 everywhere; any other
/// is transparent where its mask says so. A picture that would be nothing but transparent, as that of a
/// cursor that only inverts the screen, shows what it inverts as it would be on white. False, with image
/// untouched, for an entry that lies outside of the file, is cut short or isn't known.
bool DecodeIconEntry(Bytes file, const IconEntry& entry, ImageBuffer& image);

/// Every entry is a page. Null for a file without entries.
std::unique_ptr<ImageDecoder> OpenIcon(InputFile& file);
