// Reproducible random numbers, seeded from a picture.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// A hash of the picture's size and of a few thousand of its intensities. Noise is seeded with it, so that a
/// picture gets the same noise each time, with any number of channels.
std::uint64_t SeedOf(const ImageBuffer& image);
/// The next 64 random bits (splitmix64: Steele, Lea and Flood 2014).
inline std::uint64_t Random(std::uint64_t& state)
{
    std::uint64_t mixed = state += 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31);
}

}  // namespace transforms
