// Splits interleaved pixels into planes and joins them again.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// Pixels per block: planes and results stay in the L1 cache.
constexpr std::size_t kPlaneBlock = 512;

/// One array per colour, the layout that vectorises best.
struct Planes {
    alignas(64) std::uint8_t blue[kPlaneBlock];
    alignas(64) std::uint8_t green[kPlaneBlock];
    alignas(64) std::uint8_t red[kPlaneBlock];
};

/// The same as floats, 0 to 255.
struct FloatPlanes {
    alignas(64) float blue[kPlaneBlock];
    alignas(64) float green[kPlaneBlock];
    alignas(64) float red[kPlaneBlock];
};

/// Converts levels to floats.
void Widen(const std::uint8_t* levels, std::size_t count, float* values);
void Widen(const Planes& planes, std::size_t pixels, FloatPlanes& values);
/// Rounds to the nearest level, halves up, and clamps to 0..255.
void Round(const float* values, std::size_t count, std::uint8_t* levels);
void Round(const FloatPlanes& values, std::size_t pixels, Planes& planes);

/// Fills the planes from at most kPlaneBlock pixels of 3 or 4 channels.
void SplitPixels(const std::uint8_t* pixels, std::size_t pixel_count, std::size_t channels, Planes& planes);
/// Computes the intensities (intensity.h) of the pixels.
void IntensityOf(const Planes& planes, std::size_t pixels, std::uint8_t* intensity);
/// Writes the planes back to interleaved pixels; alpha stays.
void JoinPixels(const Planes& planes, std::size_t pixel_count, std::size_t channels, std::uint8_t* pixels);

}  // namespace transforms
