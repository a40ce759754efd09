// Splits pixels into one plane per colour and joins them again.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// Pixels at a time: their planes, and what loops make of them, stay in the nearest cache.
constexpr std::size_t kPlaneBlock = 512;

/// The colours of as many pixels, one array for each: what loops over them are vectorised best from.
struct Planes {
    alignas(64) std::uint8_t blue[kPlaneBlock];
    alignas(64) std::uint8_t green[kPlaneBlock];
    alignas(64) std::uint8_t red[kPlaneBlock];
};

/// The same between levels.
struct FloatPlanes {
    alignas(64) float blue[kPlaneBlock];
    alignas(64) float green[kPlaneBlock];
    alignas(64) float red[kPlaneBlock];
};

/// Values of count levels.
void Widen(const std::uint8_t* levels, std::size_t count, float* values);
void Widen(const Planes& planes, std::size_t pixels, FloatPlanes& values);
/// The nearest levels to the values, halves up, 0 below and 255 above the scale.
void Round(const float* values, std::size_t count, std::uint8_t* levels);
void Round(const FloatPlanes& values, std::size_t pixels, Planes& planes);

/// Fills the planes from pixel_count pixels of 3 or 4 channels, at most kPlaneBlock.
void SplitPixels(const std::uint8_t* pixels, std::size_t pixel_count, std::size_t channels, Planes& planes);
/// The intensities (intensity.h) of as many pixels.
void IntensityOf(const Planes& planes, std::size_t pixels, std::uint8_t* intensity);
/// Gives the pixels the colours of the planes; a fourth channel stays.
void JoinPixels(const Planes& planes, std::size_t pixel_count, std::size_t channels, std::uint8_t* pixels);

}  // namespace transforms
