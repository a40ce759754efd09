// Kernels over rows of pixels that reading and writing TIFF share.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstddef>
#include <cstdint>

/// Bits, the highest of a byte first, to bytes: nZero for a 0, nOne for a 1.
void ExpandBits(const std::uint8_t* pIn, std::size_t nPixels, std::uint8_t nZero, std::uint8_t nOne,
                std::uint8_t* pOut);

/// Levels to bits, the highest of a byte first: 1 for a level below 128, 0 for others. The last byte is
/// filled with 0.
void PackDarkBits(const std::uint8_t* pIn, std::size_t nPixels, std::uint8_t* pOut);

/// 255 where the intensity 0.299 R + 0.587 G + 0.114 B is 128 or more, else 0. nChannels is 1 (grey) or 3 (B,
/// G, R).
void LevelsAtHalf(const std::uint8_t* pIn, std::size_t nPixels, std::uint32_t nChannels, std::uint8_t* pOut);

/// Each level less the one nChannels before it; the first pixel stays.
void SubtractLeft(const std::uint8_t* pIn, std::size_t nBytes, std::uint32_t nChannels, std::uint8_t* pOut);

/// Divides B, G and R of pixels of 4 channels by their alpha.
void Unpremultiply(std::uint8_t* pPixels, std::size_t nPixels);
