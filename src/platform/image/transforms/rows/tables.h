// Applies lookup tables to channels.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// A LUT for the 256 values of a channel.
using Table = std::array<std::uint8_t, 256>;

/// The identity LUT.
Table IdentityTable();

/// Puts each colour channel through its table; alpha stays. A grey picture gets the intensity (see
/// intensity.h) of the colour that its grey would have become; with three equal tables that is the table.
void ApplyTables(ImageBuffer& image, const Table& blue, const Table& green, const Table& red);

/// The same table for all colour channels.
void ApplyTable(ImageBuffer& image, const Table& table);

}  // namespace transforms
