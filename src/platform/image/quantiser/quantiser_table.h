// Says which colour of a palette is nearest to a colour.
// Room: platform/image/quantiser.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "src/platform/image/quantiser/quantiser.h"

constexpr unsigned kTableBits = 6;  ///< of each of B, G and R

/// The index of the nearest palette colour for each cell of the colour cube, measured from the cell's middle.
/// The cell of a colour is made of the upper bits of B, of G and of R, R's lowest. palette has 1 to 256
/// colours; of colours equally near the first is taken.
std::vector<std::uint8_t> BuildNearestTable(std::span<const PaletteColour> palette);
