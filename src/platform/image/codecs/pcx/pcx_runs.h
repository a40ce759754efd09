// The run-length coding of PCX files.
// Room: platform/image/codecs/pcx.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/base/byte_reader.h"

/// A byte of 0xC0 and more is a count of 0 to 63, and the byte that is repeated follows; any other byte is
/// itself. Runs may go on from one row to the next, as some writers had it.
class PcxRuns
{
public:
    /// aData must outlive the object. Without bPacked the bytes are taken as they are.
    PcxRuns(Bytes aData, bool bPacked) : m_aLeft(aData), m_bPacked(bPacked) {}

    /// Fills all of aRow; False when the data ended before.
    bool bNextRow(std::span<std::uint8_t> aRow);

private:
    Bytes m_aLeft;
    bool m_bPacked;
    std::size_t m_nRun = 0;  ///< what is left of a run that the last row ended in
    std::uint8_t m_nRunValue = 0;
};

/// Packs one row (or one plane of it) and returns how many bytes it took; pOut has room for 2 * aRow.size().
/// pOut must not lie in aRow.
std::size_t nPackPcxRow(Bytes aRow, std::uint8_t* pOut);
