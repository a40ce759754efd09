// Turns the raw rows of device-independent bitmaps into pixels.
// Room: platform/image/dib.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/dib/dib.h"

/// Made once a bitmap, since the tables for palettes and masks are.
class DibRows
{
public:
    /// header, of kRaw or of a run-length kind whose rows have been unpacked to raw ones, must outlive the
    /// object.
    explicit DibRows(const DibHeader& header);

    /// pixels pixels from in, which holds that many in the header's bits, to out in DibChannels channels.
    void Convert(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const;

private:
    void ConvertIndexes(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const;
    void ConvertMasked(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels) const;

    /// One channel of a masked pixel: its place, and the level of every value it can have. A channel of more
    /// than 8 bits is cut to its highest 8 with the lower ones rounded in.
    struct Channel {
        std::uint32_t mask = 0;
        std::uint32_t shift = 0;
        std::uint64_t max = 0;
        std::vector<std::uint8_t> levels;  ///< empty for more than 8 bits
    };
    std::uint8_t LevelOf(const Channel& channel, std::uint32_t pixel) const;

    const DibHeader& header_;
    std::int32_t channels_;
    bool plain_ = false;                      ///< the stored bytes are the pixels
    bool plain32_ = false;                    ///< B, G, R and a byte without meaning
    std::array<Channel, 4> masked_channels_;  ///< B, G, R, A
    std::array<std::uint8_t, 256> greys_{};
    std::vector<std::array<std::uint8_t, 8>> eight_greys_;  ///< for every byte of eight pixels of 1 bit
};
