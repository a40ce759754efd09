// Converts samples of any width to 8-bit levels.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "src/platform/image/codecs/tiff/tiff_layout.h"

/// How a row's samples are stored. Samples of 8, 16, 24, 32 and 64 bits are in host byte order; other widths
/// are packed, highest bit first.
struct TiffSampleForm {
    std::uint16_t bits = 8;
    std::uint16_t format = SAMPLEFORMAT_UINT;
    double lowest = 0;   ///< for floats, signed samples and those over 16 bits: the value that becomes 0
    double highest = 1;  ///< the value that becomes 255
    /// For 16 bits: divide by 256, as in Lab encodings, rather than scaling 65535 to 255.
    bool in_steps = false;
    /// For unsigned 8 and 16 bits: invert the highest bit, as in the signed a* and b* of CIELAB.
    bool flip_sign = false;
};

/// Reads one sample of each of `pixels` pixels, scales it to 0..255 (rounded to nearest) and writes it to
/// out, pitch bytes apart.
void LevelsOfSample(const TiffSampleForm& form, const std::uint8_t* stored, std::uint32_t sample,
                    std::uint32_t stored_samples, std::size_t pixels, std::uint8_t* out, std::uint32_t pitch);

/// The least and the greatest value of some samples.
struct TiffRange {
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -std::numeric_limits<double>::infinity();
};

/// Widens range to the same samples, which are signed.
void WidenRange(const TiffSampleForm& form, const std::uint8_t* stored, std::uint32_t sample,
                std::uint32_t stored_samples, std::size_t pixels, TiffRange& range);

/// Reads the same samples unscaled, as indices of at most 16 bits.
void IndicesOfSample(std::uint16_t bits, const std::uint8_t* stored, std::uint32_t sample,
                     std::uint32_t stored_samples, std::size_t pixels, std::uint16_t* out);
