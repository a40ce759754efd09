// Palette entries common to EMF and WMF records.
// Room: platform/image/metafile/records.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// Reads count entries of red, green, blue and flags, and appends their colours (red, green, blue from the
/// high byte down). False if data is missing; colors is then unchanged.
bool ReadPaletteColors(ByteReader& reader, std::uint64_t count, std::vector<std::uint32_t>& colors);
