// Converts uncompressed DIB rows to pixels.
// Room: platform/image/dib.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/dib/dib.h"

/// Create one per bitmap: the constructor builds LUTs for palettes and masks.
class DibRows
{
public:
    /// header must outlive this object. It is kRaw, or run-length encoded with rows already unpacked.
    explicit DibRows(const DibHeader& header);

    /// Converts `pixels` pixels from the header's format to DibChannels() channels.
    void Convert(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const;

private:
    void ConvertIndexes(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const;
    void ConvertMasked(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const;

    /// A channel of a masked pixel: its bit position and a LUT from value to level. Channels of more than 8
    /// bits are rounded to their top 8 instead.
    struct Channel {
        std::uint32_t mask = 0;
        std::uint32_t shift = 0;
        std::uint64_t max = 0;
        std::vector<std::uint8_t> levels;  ///< empty for more than 8 bits
    };
    std::uint8_t LevelOf(const Channel& channel, std::uint32_t pixel) const;

    const DibHeader& header_;
    std::int32_t channels_;
    bool plain_ = false;                      ///< stored bytes are the pixels
    bool plain32_ = false;                    ///< BGR and an unused byte
    std::array<Channel, 4> masked_channels_;  ///< BGRA
    std::array<std::uint8_t, 256> greys_{};
    std::vector<std::array<std::uint8_t, 8>> eight_greys_;  ///< eight 1-bit pixels for each byte value
};
