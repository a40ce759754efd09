// Converts PNG samples to the buffer's pixels.
// Room: platform/image/codecs/png.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "src/platform/image/codecs/png/png_info.h"

/// Maps palette indices, or greys of fewer than 8 bits, to pixels.
struct PngPalette {
    std::int32_t channels = 1;                                 ///< per pixel: 1, 3 or 4
    std::array<std::uint8_t, std::size_t{4} * 256> entries{};  ///< `channels` bytes each
};

/// The file's palette, or the greys of its depth. One channel if all entries are grey and opaque and any
/// profile isn't RGB. Indices past the end of the palette are black.
PngPalette PaletteOf(const PngInfo& info);

/// Maps a row of indices of `depth` bits (1, 2, 4 or 8, the leftmost in the highest bits) to pixels.
void LookUpRow(const PngPalette& palette, std::uint32_t depth, const std::uint8_t* in, std::uint8_t* out,
               std::size_t pixels);

/// Applies the LUT to every channel but alpha.
void ApplyTable(const std::array<std::uint8_t, 256>& table, std::int32_t channels, std::uint8_t* pixels,
                std::size_t pixel_count);
