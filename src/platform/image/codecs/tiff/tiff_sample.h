// One sample of a stored row as a level of 8 bits.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/codecs/tiff/tiff_layout.h"

/// How the samples of a row are stored. Samples of 8, 16, 24, 32 and 64 bits are in the machine's byte order,
/// others follow each other bit by bit, the highest first.
struct TiffSampleForm {
    std::uint16_t bits = 8;
    std::uint16_t format = SAMPLEFORMAT_UINT;
    double lowest = 0;   ///< of float and of samples over 16 bits: what becomes 0
    double highest = 1;  ///< and what 255
    /// Of 16 bits: a level is 256 of these, as the colours of Lab are stored, and not the 257th part of the
    /// range.
    bool in_steps = false;
};

/// Reads sample sample of every stored_samples for pixels pixels, and puts each, rounded to the nearest of
/// 0..255, to out, pitch bytes apart. A negative level of signed samples of up to 16 bits is the lower half
/// of the range.
void LevelsOfSample(const TiffSampleForm& form, const std::uint8_t* stored, std::uint32_t sample,
                    std::uint32_t stored_samples, std::size_t pixels, std::uint8_t* out, std::uint32_t pitch);

/// The same samples as numbers, for an index of at most 16 bits.
void IndexesOfSample(std::uint16_t bits, const std::uint8_t* stored, std::uint32_t sample,
                     std::uint32_t stored_samples, std::size_t pixels, std::uint16_t* out);
