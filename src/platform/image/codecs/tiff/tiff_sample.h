// One sample of a stored row as a level of 8 bits.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/codecs/tiff/tiff_layout.h"

/// How the samples of a row are stored. Samples of 8, 16, 24, 32 and 64 bits are in the machine's byte order,
/// others follow each other bit by bit, the highest first.
struct TiffSampleForm {
    std::uint16_t nBits = 8;
    std::uint16_t nFormat = SAMPLEFORMAT_UINT;
    double dLowest = 0;   ///< of float and of samples over 16 bits: what becomes 0
    double dHighest = 1;  ///< and what 255
    /// Of 16 bits: a level is 256 of these, as the colours of Lab are stored, and not the 257th part of the
    /// range.
    bool bInSteps = false;
};

/// Reads sample nSample of every nStoredSamples for nPixels pixels, and puts each, rounded to the nearest of
/// 0..255, to pOut, nPitch bytes apart. A negative level of signed samples of up to 16 bits is the lower half
/// of the range.
void LevelsOfSample(const TiffSampleForm& objForm, const std::uint8_t* pStored, std::uint32_t nSample,
                    std::uint32_t nStoredSamples, std::size_t nPixels, std::uint8_t* pOut,
                    std::uint32_t nPitch);

/// The same samples as numbers, for an index of at most 16 bits.
void IndexesOfSample(std::uint16_t nBits, const std::uint8_t* pStored, std::uint32_t nSample,
                     std::uint32_t nStoredSamples, std::size_t nPixels, std::uint16_t* pOut);
