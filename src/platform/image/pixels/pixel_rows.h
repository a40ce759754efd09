// Small steps on rows of pixels that several formats need.
// Room: platform/image/pixels.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

/// Copies pixels pixels of four bytes without their fourth.
void PackRowFromFourBytes(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels);

/// Exchanges the first and the third byte of pixels pixels of three bytes: B, G, R to R, G, B and back. in
/// and out are the same or don't overlap.
void SwapRedAndBlue(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels);
/// The same with pixels of four bytes, whose fourth stays.
void SwapRedAndBlueOfFour(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels);

/// Makes a picture of 4 channels one of 3 when its alpha is 0 everywhere: a writer that never set it meant no
/// empty picture. Any other picture is left alone.
void DropUnsetAlpha(ImageBuffer& image);

/// Makes a picture of 1 or 3 channels one of 4, opaque. False, with image as it was, when there is no
/// memory.
bool AddAlpha(ImageBuffer& image);
