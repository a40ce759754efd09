// Applies lookup tables to channels.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// A LUT for the 256 values of a channel.
using Table = std::array<std::uint8_t, 256>;

/// The identity LUT.
Table IdentityTable();

/// Applies a LUT to each colour channel; alpha stays. A grey picture gets 3 channels if the tables differ,
/// and loses its grey profile.
OperationResult ApplyTables(const ImageBuffer& source, ImageBuffer& result, const Table& blue,
                            const Table& green, const Table& red);

/// Applies one LUT to all colour channels.
OperationResult ApplyTable(const ImageBuffer& source, ImageBuffer& result, const Table& table);

}  // namespace transforms
