// What EMF and WMF records say of a palette alike.
// Room: platform/image/metafile/records.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// Reads count entries of red, green, blue and flags, and adds their colours (red, green, blue from the high
/// byte down). False, with nothing added, when they aren't all there.
bool ReadPaletteColors(ByteReader& reader, std::uint64_t count, std::vector<std::uint32_t>& colors);
