// Unpacks the run-length encoded pixels of device-independent bitmaps.
#include "src/platform/image/dib/dib_rle.h"

#include <algorithm>
#include <array>

// A pair of bytes is a count and a value; a count of 0 makes the value a command, and above these a count of
// its own.
static constexpr std::uint32_t kEndOfRow = 0;
static constexpr std::uint32_t kEndOfBitmap = 1;
static constexpr std::uint32_t kDelta = 2;

DibRuns::DibRuns(const DibHeader& objHeader, Bytes aBits)
    : m_eStorage(objHeader.eStorage), m_nWidth(objHeader.nWidth), m_objReader(aBits)
{
}

void DibRuns::Put(std::span<std::uint8_t> aRow, Bytes aPixel)
{
    if (m_nColumn < m_nWidth)
        std::copy(aPixel.begin(), aPixel.end(),
                  aRow.begin() + static_cast<std::ptrdiff_t>(m_nColumn * aPixel.size()));
    ++m_nColumn;
}

// nCount pixels as they are, filled up to an even count of bytes.
void DibRuns::Absolute(std::uint32_t nCount, std::span<std::uint8_t> aRow)
{
    if (m_eStorage == DibStorage::kRle4) {
        const Bytes aPairs = m_objReader.Take((nCount + 1) / 2);
        for (std::uint32_t i = 0; i < nCount && !aPairs.empty(); ++i) {
            const std::uint8_t nPair = aPairs[i / 2];
            const auto nIndex = static_cast<std::uint8_t>(i % 2 == 0 ? nPair >> 4 : nPair & 15);
            Put(aRow, {&nIndex, 1});
        }
        m_objReader.Take(std::min<std::uint64_t>(aPairs.size() % 2, m_objReader.Left()));
        return;
    }
    const std::size_t nPixelSize = m_eStorage == DibStorage::kRle24 ? 3 : 1;
    const Bytes aPixels = m_objReader.Take(nCount * nPixelSize);
    for (std::size_t i = 0; i + nPixelSize <= aPixels.size(); i += nPixelSize)
        Put(aRow, aPixels.subspan(i, nPixelSize));
    m_objReader.Take(std::min<std::uint64_t>(aPixels.size() % 2, m_objReader.Left()));
}

// nCount times one pixel; with 4 bits two pixels in turn.
void DibRuns::Encoded(std::uint32_t nCount, std::span<std::uint8_t> aRow)
{
    const Bytes aValue = m_objReader.Take(m_eStorage == DibStorage::kRle24 ? 3 : 1);
    if (aValue.empty())
        return;
    const std::array<std::uint8_t, 2> aPair = {static_cast<std::uint8_t>(aValue[0] >> 4),
                                               static_cast<std::uint8_t>(aValue[0] & 15)};
    for (std::uint32_t i = 0; i < nCount; ++i)
        Put(aRow, m_eStorage == DibStorage::kRle4 ? Bytes(aPair).subspan(i % 2, 1) : aValue);
}

void DibRuns::NextRow(std::span<std::uint8_t> aRow)
{
    std::fill(aRow.begin(), aRow.end(), std::uint8_t{0});
    if (m_bEnded)
        return;
    if (m_nRowsToGo > 1) {
        --m_nRowsToGo;
        return;
    }
    m_nRowsToGo = 0;
    while (true) {
        const std::uint32_t nCount = m_objReader.U8();
        if (!m_objReader.Failed() && nCount > 0) {
            Encoded(nCount, aRow);
            continue;
        }
        const std::uint32_t nCommand = m_objReader.U8();
        if (m_objReader.Failed()) {
            // A last row that is full needs no mark behind it.
            m_bCut = m_nColumn < m_nWidth;
            m_bEnded = m_bCut;
            m_nColumn = 0;
            return;
        }
        if (nCommand == kEndOfRow) {
            m_nColumn = 0;
            return;
        }
        if (nCommand == kEndOfBitmap) {
            m_bEnded = true;
            return;
        }
        if (nCommand == kDelta) {
            m_nColumn += m_objReader.U8();
            m_nRowsToGo = m_objReader.U8();
            if (m_nRowsToGo > 0)
                return;
            continue;
        }
        Absolute(nCommand, aRow);
    }
}
