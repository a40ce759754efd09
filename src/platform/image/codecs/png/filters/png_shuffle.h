// Reorders and packs samples: red and blue, black and white.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

/// BGR to RGB or back. in and out must not overlap.
void SwapRedAndBlue3(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels);

/// BGRA to RGBA or back. in and out must not overlap.
void SwapRedAndBlue4(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels);

/// Packs the lowest bit of each of `pixels` bytes, the first in the highest bit. Unused bits of the last byte
/// are 0.
void PackBits(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels);

/// True if every byte is 0 or 255.
bool HasOnlyExtremes(const std::uint8_t* bytes, std::size_t byte_count);
