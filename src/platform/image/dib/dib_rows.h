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
    /// objHeader, of kRaw or of a run-length kind whose rows have been unpacked to raw ones, must outlive the
    /// object.
    explicit DibRows(const DibHeader& objHeader);

    /// nPixels pixels from pIn, which holds that many in the header's bits, to pOut in lDibChannels channels.
    void Convert(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels) const;

private:
    void ConvertIndexes(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels) const;
    void ConvertMasked(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels) const;

    /// One channel of a masked pixel: its place, and the level of every value it can have. A channel of more
    /// than 8 bits is cut to its highest 8 with the lower ones rounded in.
    struct Channel {
        std::uint32_t nMask = 0;
        std::uint32_t nShift = 0;
        std::uint64_t nMax = 0;
        std::vector<std::uint8_t> aLevels;  ///< empty for more than 8 bits
    };
    std::uint8_t LevelOf(const Channel& objChannel, std::uint32_t nPixel) const;

    const DibHeader& m_objHeader;
    std::int32_t m_lChannels;
    bool m_bPlain = false;               ///< the stored bytes are the pixels
    bool m_bPlain32 = false;             ///< B, G, R and a byte without meaning
    std::array<Channel, 4> m_aChannels;  ///< B, G, R, A
    std::array<std::uint8_t, 256> m_aGreys{};
    std::vector<std::array<std::uint8_t, 8>> m_aEightGreys;  ///< for every byte of eight pixels of 1 bit
};
