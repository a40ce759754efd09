// How large a picture may be; checked before anything is allocated for it.
// Room: platform/image/base.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

constexpr std::uint64_t kMaxSide = 65500;  ///< pixels
constexpr std::uint64_t kMaxMegapixels = 512;

/// True for 1 to kMaxSide pixels on each side and at most kMaxMegapixels in all. The environment variable
/// VARNEL_MAX_MEGAPIXELS (1 to 4096) overrides the latter.
bool IsSizeAllowed(std::uint64_t width, std::uint64_t height);

/// The size limit in bytes of a file that is read as a whole: room for the largest allowed picture,
/// uncompressed with 16 bits per channel.
std::uint64_t LargestFile();

/// Makes image a picture of this size with 1, 3 or 4 channels, uninitialised pixels and no profile or
/// metadata. False if the size isn't allowed or memory runs out; image is then unchanged.
bool Allocate(ImageBuffer& image, std::uint64_t width, std::uint64_t height, std::int32_t channels);
