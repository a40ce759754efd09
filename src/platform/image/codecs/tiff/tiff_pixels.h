// Row kernels shared by reading and writing TIFF.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstddef>
#include <cstdint>

/// Expands bits, highest first, to bytes: `zero` for 0 and `one` for 1.
void ExpandBits(const std::uint8_t* in, std::size_t pixels, std::uint8_t zero, std::uint8_t one,
                std::uint8_t* out);

/// Packs levels into bits, highest first: 1 for a level below 128, 0 otherwise. The last byte is padded with
/// 0.
void PackDarkBits(const std::uint8_t* in, std::size_t pixels, std::uint8_t* out);

/// 255 where the luma 0.299 R + 0.587 G + 0.114 B is at least 128, else 0. channels is 1 (grey) or 3 (BGR).
void Threshold(const std::uint8_t* in, std::size_t pixels, std::uint32_t channels, std::uint8_t* out);

/// Subtracts the sample `channels` bytes before it from each sample; the first pixel is unchanged.
void SubtractLeft(const std::uint8_t* in, std::size_t bytes, std::uint32_t channels, std::uint8_t* out);

/// Divides B, G and R of four-channel pixels by their alpha.
void Unpremultiply(std::uint8_t* pixels, std::size_t pixel_count);
