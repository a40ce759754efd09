// The sizes that a picture may have, asked before anything is allocated for it.
// Room: platform/image/base.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

constexpr std::uint64_t kMaxSide = 65500;  ///< pixels
constexpr std::uint64_t kMaxMegapixels = 512;

/// True for 1..kMaxSide pixels on each side and at most 512 megapixels in all; VARNEL_MAX_MEGAPIXELS in the
/// environment sets another count (1 to 4096).
bool IsSizeAllowed(std::uint64_t width, std::uint64_t height);

/// The most bytes that a file may have which is read as a whole: enough for the largest picture that is
/// allowed, stored without compression and with 16 bits a channel.
std::uint64_t LargestFile();

/// Gives image its size, 1, 3 or 4 channels and bytes of no particular value; everything else of it is
/// emptied. False, with image as it was, for a size that isn't allowed or for which there is no memory.
bool Allocate(ImageBuffer& image, std::uint64_t width, std::uint64_t height, std::int32_t channels);
