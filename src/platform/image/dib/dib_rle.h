// Unpacks the run-length encoded pixels of device-independent bitmaps.
// Room: platform/image/dib.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/dib/dib.h"

/// Hands out the rows of one bitmap of kRle4, kRle8 or kRle24. Whatever the bytes are, every call ends.
class DibRuns
{
public:
    /// aBits must outlive the object.
    DibRuns(const DibHeader& objHeader, Bytes aBits);

    /// Fills aRow, width items, with the next row in stored order: one palette index of 8 bits a pixel, or
    /// B, G, R for kRle24. Pixels that the runs pass over are 0; what runs lay beyond the right edge is cut.
    void NextRow(std::span<std::uint8_t> aRow);

    /// False when the bytes were at an end before the rows and there was no mark to say that this is so.
    bool bComplete() const { return !m_bCut; }

private:
    void Absolute(std::uint32_t nCount, std::span<std::uint8_t> aRow);
    void Encoded(std::uint32_t nCount, std::span<std::uint8_t> aRow);
    void Put(std::span<std::uint8_t> aRow, Bytes aPixel);

    DibStorage m_eStorage;
    std::uint64_t m_nWidth;
    ByteReader m_objReader;
    std::uint64_t m_nColumn = 0;
    std::uint32_t m_nRowsToGo = 0;  ///< how many rows on a delta has put the place of the next pixel
    bool m_bEnded = false;
    bool m_bCut = false;
};
