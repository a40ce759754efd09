// Moving samples about: red and blue exchanged, black and white packed into bits.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

/// B, G, R becomes R, G, B, or the other way round. In and out don't overlap.
void SwapRedAndBlue3(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels);

/// B, G, R, A becomes R, G, B, A, or the other way round. In and out don't overlap.
void SwapRedAndBlue4(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels);

/// The lowest bit of each of nPixels bytes, the first in the highest bit of the first byte; what is left of
/// the last byte is 0.
void PackBits(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels);

/// True when all bytes are 0 or 255.
bool bOnlyExtremes(const std::uint8_t* pBytes, std::size_t nBytes);
