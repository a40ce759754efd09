// Kernels over rows of pixels that reading and writing TIFF share.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstddef>
#include <cstdint>

/// Bits, the highest of a byte first, to bytes: zero for a 0, one for a 1.
void ExpandBits(const std::uint8_t* in, std::size_t pixels, std::uint8_t zero, std::uint8_t one,
                std::uint8_t* out);

/// Levels to bits, the highest of a byte first: 1 for a level below 128, 0 for others. The last byte is
/// filled with 0.
void PackDarkBits(const std::uint8_t* in, std::size_t pixels, std::uint8_t* out);

/// 255 where the intensity 0.299 R + 0.587 G + 0.114 B is 128 or more, else 0. channels is 1 (grey) or 3 (B,
/// G, R).
void LevelsAtHalf(const std::uint8_t* in, std::size_t pixels, std::uint32_t channels, std::uint8_t* out);

/// Each level less the one channels before it; the first pixel stays.
void SubtractLeft(const std::uint8_t* in, std::size_t bytes, std::uint32_t channels, std::uint8_t* out);

/// Divides B, G and R of pixels of 4 channels by their alpha.
void Unpremultiply(std::uint8_t* pixels, std::size_t pixel_count);
