// Moving samples about: red and blue exchanged, black and white packed into bits.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

/// B, G, R becomes R, G, B, or the other way round. In and out don't overlap.
void SwapRedAndBlue3(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels);

/// B, G, R, A becomes R, G, B, A, or the other way round. In and out don't overlap.
void SwapRedAndBlue4(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels);

/// The lowest bit of each of pixels bytes, the first in the highest bit of the first byte; what is left of
/// the last byte is 0.
void PackBits(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels);

/// True when all bytes are 0 or 255.
bool HasOnlyExtremes(const std::uint8_t* bytes, std::size_t byte_count);
