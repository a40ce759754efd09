// From a PNG's samples to the pixels of a picture buffer.
// Room: platform/image/codecs/png.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "src/platform/image/codecs/png/png_info.h"

/// What an index, or a grey sample of fewer than 8 bits, stands for.
struct PngPalette {
    std::int32_t channels = 1;                                 ///< of the pixels that come of it: 1, 3 or 4
    std::array<std::uint8_t, std::size_t{4} * 256> entries{};  ///< channels bytes each
};

/// The palette of the file, or the greys of its depth. One channel when all entries are grey and opaque, and
/// the file's profile, if it has one, isn't for RGB; indices beyond the palette's end are black.
PngPalette PaletteOf(const PngInfo& info);

/// Takes pixels indices of depth bits (1, 2, 4 or 8, the leftmost in the highest bits) and puts their
/// pixels to out.
void LookUpRow(const PngPalette& palette, std::uint32_t depth, const std::uint8_t* in, std::uint8_t* out,
               std::size_t pixels);

/// What a usual screen, and the samples of a file that says nothing, are made for.
constexpr double kPngScreenGamma = 2.2;

/// The exponent that turns the file's samples into those of a usual screen, 1 when nothing is to be done:
/// when the file names a colour space or no gamma, or one so near to 1/2.2 that nobody sees it, or one that
/// can't be meant.
double PngGammaExponent(const PngInfo& info);

/// Each of the pixel_count pixels of channels through value ^ exponent, alpha excepted.
void ApplyGamma(double exponent, std::int32_t channels, std::uint8_t* pixels, std::size_t pixel_count);

/// Each value of B, G and R through the table, alpha and grey pictures likewise.
void ApplyTable(const std::array<std::uint8_t, 256>& table, std::int32_t channels, std::uint8_t* pixels,
                std::size_t pixel_count);
