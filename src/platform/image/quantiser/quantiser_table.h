// A LUT from colours to the nearest palette index.
// Room: platform/image/quantiser.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "src/platform/image/quantiser/quantiser.h"

constexpr unsigned kTableBits = 6;  ///< of each of B, G and R

/// Index of the nearest palette colour for each cell of the colour cube, measured from its centre. A cell
/// number consists of the top bits of B, G and R, with R lowest. palette has 1 to 256 colours; the first of
/// equally near ones wins.
std::vector<std::uint8_t> BuildNearestTable(std::span<const PaletteColour> palette);
