// Conversions of pixel rows that several codecs share.
// Room: platform/image/pixels.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

/// Copies `pixels` four-byte pixels, dropping the fourth byte of each.
void PackRowFromFourBytes(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels);

/// Swaps the first and third byte of `pixels` three-byte pixels: BGR to RGB and back. in and out are equal or
/// don't overlap.
void SwapRedAndBlue(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels);
/// The same for four-byte pixels; the fourth byte is unchanged.
void SwapRedAndBlueOfFour(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels);

/// Drops the alpha channel if it is 0 everywhere: the writer left it unset and didn't mean an invisible
/// picture. Other pictures are unchanged.
void DropUnsetAlpha(ImageBuffer& image);

/// Drops the alpha channel if it says nothing: 0 everywhere or 255 everywhere. Other pictures are unchanged.
void DropUniformAlpha(ImageBuffer& image);

/// Converts a picture of 1 or 3 channels to 4, opaque. False if memory runs out; image is then unchanged.
bool AddAlpha(ImageBuffer& image);
