// What the operations on pictures share: failures, rows on all cores, new pixels for a picture, backgrounds.
// Room: platform_image. May use: platform, platform_image.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>

#include "src/platform/image_buffer.h"
#include "src/platform/image_transform.h"

namespace transforms
{

/// One pixel's channels in the picture's order; a grey picture uses the first one only.
using PixelValue = std::array<std::uint8_t, 4>;

/// What the body returns; False when it throws, for want of memory. A body changes its picture last.
template <typename Body>
bool bGuarded(const Body& fnBody)
{
    try {
        return fnBody();
    } catch (const std::exception&) {
        return false;
    }
}

/// Calls fnRows(first, last) for parts of the rows 0 to lRows - 1 that together are all of them, on all cores
/// when lRows rows of nRowBytes bytes are worth it. The parts must not depend on each other. Throws what they
/// throw, after all of them, and nothing else.
void EachRows(std::int32_t lRows, std::size_t nRowBytes,
              const std::function<void(std::int32_t, std::int32_t)>& fnRows);

/// The bytes of one row.
inline std::size_t nStride(const ImageBuffer& aImage)
{
    return static_cast<std::size_t>(aImage.lWidth) * static_cast<std::size_t>(aImage.lChannels);
}
inline const std::uint8_t* pRow(const ImageBuffer& aImage, std::int32_t y)
{
    return aImage.aBytes.data() + static_cast<std::size_t>(y) * nStride(aImage);
}
inline std::uint8_t* pRow(ImageBuffer& aImage, std::int32_t y)
{
    return aImage.aBytes.data() + static_cast<std::size_t>(y) * nStride(aImage);
}

/// A picture of the same size and channels, its bytes of no particular value; throws std::bad_alloc.
ImageBuffer aLike(const ImageBuffer& aImage);
/// Gives aImage the size and pixels of aPixels; profile, resolution and metadata stay.
void TakePixels(ImageBuffer& aImage, ImageBuffer&& aPixels);

/// True when no pixel is transparent at all; always for 1 and 3 channels.
bool bOpaque(const ImageBuffer& aImage);

/// True for a red, green and blue that are equal.
bool bGrey(Colour lColour);
/// The colour as a pixel of the picture's channels, opaque; of a grey picture its luma.
PixelValue aBackground(const ImageBuffer& aImage, Colour lColour);
/// Gives aWide the pixels of a grey picture in 3 equal channels, which can hold a colour. Whoever puts them
/// in its place drops the profile, since a grey one can't describe them. False without memory.
bool bWidened(const ImageBuffer& aGrey, ImageBuffer& aWide);

/// The picture of 1 channel that holds every pixel's intensity (intensity.h); of a grey picture a copy.
/// Throws std::bad_alloc.
ImageBuffer aIntensity(const ImageBuffer& aImage);

/// A hash of the picture's size and of some thousands of its bytes: what noise is seeded with, so that a
/// picture gets the same noise each time.
std::uint64_t nSeed(const ImageBuffer& aImage);
/// The next of a sequence of numbers of 64 random bits (splitmix64, Steele, Lea and Flood 2014).
inline std::uint64_t nRandom(std::uint64_t& nState)
{
    std::uint64_t nMixed = nState += 0x9E3779B97F4A7C15U;
    nMixed = (nMixed ^ (nMixed >> 30)) * 0xBF58476D1CE4E5B9U;
    nMixed = (nMixed ^ (nMixed >> 27)) * 0x94D049BB133111EBU;
    return nMixed ^ (nMixed >> 31);
}

/// Brings any finite number into dLow..dHigh.
inline double dClamped(double dValue, double dLow, double dHigh)
{
    return dValue < dLow ? dLow : dValue > dHigh ? dHigh : dValue;
}
/// The nearest level to a value between levels.
inline std::uint8_t nLevel(float dValue)
{
    return static_cast<std::uint8_t>(dValue <= 0 ? 0 : dValue >= 255 ? 255 : dValue + 0.5F);
}
inline std::uint8_t nLevel(std::int32_t lValue)
{
    return static_cast<std::uint8_t>(lValue < 0 ? 0 : lValue > 255 ? 255 : lValue);
}

constexpr double kPi = 3.14159265358979323846;

}  // namespace transforms
