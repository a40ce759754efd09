// Takes pixels apart into planes of one colour each, and puts them together again.
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
    alignas(64) std::uint8_t aBlue[kPlaneBlock];
    alignas(64) std::uint8_t aGreen[kPlaneBlock];
    alignas(64) std::uint8_t aRed[kPlaneBlock];
};

/// The same between levels.
struct FloatPlanes {
    alignas(64) float aBlue[kPlaneBlock];
    alignas(64) float aGreen[kPlaneBlock];
    alignas(64) float aRed[kPlaneBlock];
};

/// Values of nCount levels.
void Widen(const std::uint8_t* pLevels, std::size_t nCount, float* pValues);
void Widen(const Planes& objPlanes, std::size_t nPixels, FloatPlanes& objValues);
/// The nearest levels to the values, halves up, 0 below and 255 above the scale.
void Round(const float* pValues, std::size_t nCount, std::uint8_t* pLevels);
void Round(const FloatPlanes& objValues, std::size_t nPixels, Planes& objPlanes);

/// Fills the planes from nPixels pixels of 3 or 4 channels, at most kPlaneBlock.
void SplitPixels(const std::uint8_t* pPixels, std::size_t nPixels, std::size_t nChannels, Planes& objPlanes);
/// The intensities (intensity.h) of as many pixels.
void IntensityOf(const Planes& objPlanes, std::size_t nPixels, std::uint8_t* pIntensity);
/// Gives the pixels the colours of the planes; a fourth channel stays.
void JoinPixels(const Planes& objPlanes, std::size_t nPixels, std::size_t nChannels, std::uint8_t* pPixels);

}  // namespace transforms
