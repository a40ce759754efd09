// The run-length coding of Targa files.
// Room: platform/image/codecs/tga.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/base/byte_reader.h"

/// The most pixels that a packet holds.
constexpr std::size_t kTgaPacket = 128;

/// Packets of 1 to 128 pixels: one that is repeated, or each by itself. Packets may go on from row to row.
class TgaRuns
{
public:
    /// aData must outlive the object; nPixelSize is 1 to 4 bytes.
    TgaRuns(Bytes aData, std::size_t nPixelSize) : m_aLeft(aData), m_nPixelSize(nPixelSize) {}

    /// Fills all of aRow, whole pixels; False when the data ended before.
    bool bNextRow(std::span<std::uint8_t> aRow);

private:
    Bytes m_aLeft;
    std::size_t m_nPixelSize;
    std::size_t m_nPixelsLeft = 0;  ///< of the packet that the last row ended in
    bool m_bRepeats = false;
};

/// How many bytes a row takes at most when it is packed.
std::size_t nMostPackedTga(std::size_t nPixels, std::size_t nPixelSize);

/// Packs the whole pixels of one row and returns how many bytes it took; pOut has room for nMostPackedTga.
std::size_t nPackTgaRow(Bytes aRow, std::size_t nPixelSize, std::uint8_t* pOut);
