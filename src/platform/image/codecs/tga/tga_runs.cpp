// The run-length coding of Targa files.
#include "src/platform/image/codecs/tga/tga_runs.h"

#include <algorithm>
#include <cstring>

static constexpr std::uint8_t kRepeatMark = 0x80;

bool TgaRuns::bNextRow(std::span<std::uint8_t> aRow)
{
    std::uint8_t* pOut = aRow.data();
    std::size_t nRoom = aRow.size() / m_nPixelSize;
    while (nRoom > 0) {
        if (m_nPixelsLeft == 0) {
            if (m_aLeft.empty())
                return false;
            m_bRepeats = (m_aLeft[0] & kRepeatMark) != 0;
            m_nPixelsLeft = (m_aLeft[0] & 0x7Fu) + 1;
            m_aLeft = m_aLeft.subspan(1);
        }
        const std::size_t nPixels = std::min(nRoom, m_nPixelsLeft);
        const std::size_t nStored = m_bRepeats ? m_nPixelSize : nPixels * m_nPixelSize;
        if (m_aLeft.size() < nStored)
            return false;
        if (!m_bRepeats) {
            std::memcpy(pOut, m_aLeft.data(), nStored);
        } else if (m_nPixelSize == 1) {
            std::memset(pOut, m_aLeft[0], nPixels);
        } else {
            for (std::size_t i = 0; i < nPixels; ++i)
                std::memcpy(pOut + i * m_nPixelSize, m_aLeft.data(), m_nPixelSize);
        }
        pOut += nPixels * m_nPixelSize;
        nRoom -= nPixels;
        m_nPixelsLeft -= nPixels;
        // The pixel of a repetition that goes on in the next row stays to be read again.
        if (!m_bRepeats || m_nPixelsLeft == 0)
            m_aLeft = m_aLeft.subspan(nStored);
    }
    return true;
}

std::size_t nMostPackedTga(std::size_t nPixels, std::size_t nPixelSize)
{
    // A repetition saves at least the two heads that it costs, so that only full plain packets add to the
    // size.
    return nPixels * nPixelSize + nPixels / kTgaPacket + 1;
}

// A constant size, so that the comparisons below become one or two loads.
template <std::size_t nSize>
static bool bSame(const std::uint8_t* pPixel)
{
    return std::memcmp(pPixel, pPixel + nSize, nSize) == 0;
}

template <std::size_t nSize>
static std::size_t nPack(const std::uint8_t* pIn, std::size_t nPixels, std::uint8_t* pOut)
{
    // Two equal pixels of one byte are no gain inside other ones: they cost a new head afterwards.
    constexpr std::size_t kWorth = nSize == 1 ? 3 : 2;
    const std::uint8_t* const pStart = pOut;
    const auto nRunAt = [&](std::size_t x) {
        const std::size_t nLimit = std::min(nPixels - x, kTgaPacket);
        std::size_t nRun = 1;
        while (nRun < nLimit && bSame<nSize>(pIn + (x + nRun - 1) * nSize))
            ++nRun;
        return nRun;
    };
    for (std::size_t x = 0; x < nPixels;) {
        std::size_t nRun = nRunAt(x);
        if (nRun >= kWorth) {
            *pOut++ = static_cast<std::uint8_t>(kRepeatMark | (nRun - 1));
            std::memcpy(pOut, pIn + x * nSize, nSize);
            pOut += nSize;
            x += nRun;
            continue;
        }
        std::size_t nPlain = nRun;
        while (x + nPlain < nPixels && nPlain < kTgaPacket && (nRun = nRunAt(x + nPlain)) < kWorth)
            nPlain = std::min(nPlain + nRun, kTgaPacket);
        *pOut++ = static_cast<std::uint8_t>(nPlain - 1);
        std::memcpy(pOut, pIn + x * nSize, nPlain * nSize);
        pOut += nPlain * nSize;
        x += nPlain;
    }
    return static_cast<std::size_t>(pOut - pStart);
}

std::size_t nPackTgaRow(Bytes aRow, std::size_t nPixelSize, std::uint8_t* pOut)
{
    const std::size_t nPixels = aRow.size() / nPixelSize;
    switch (nPixelSize) {
        case 1:
            return nPack<1>(aRow.data(), nPixels, pOut);
        case 2:
            return nPack<2>(aRow.data(), nPixels, pOut);
        case 3:
            return nPack<3>(aRow.data(), nPixels, pOut);
        default:
            return nPack<4>(aRow.data(), nPixels, pOut);
    }
}
