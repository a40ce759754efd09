// Turns the raw rows of device-independent bitmaps into pixels.
#include "src/platform/image/dib/dib_rows.h"

#include <bit>
#include <cstring>

#include "src/platform/image/pixels/pixel_rows.h"

// The masks of bitmaps that name none.
static constexpr std::array<std::uint32_t, 3> kPlainMasks32 = {0xFF0000, 0xFF00, 0xFF};

DibRows::DibRows(const DibHeader& objHeader) : m_objHeader(objHeader), m_lChannels(lDibChannels(objHeader))
{
    if (objHeader.nBits <= 8) {
        bool bIdentity = objHeader.nBits == 8;
        for (std::size_t i = 0; i < 256; ++i) {
            m_aGreys[i] = objHeader.aPalette[i][0];
            bIdentity = bIdentity && m_aGreys[i] == i;
        }
        m_bPlain = m_lChannels == 1 && bIdentity;
        if (objHeader.nBits == 1 && m_lChannels == 1) {
            m_aEightGreys.resize(256);
            for (std::size_t i = 0; i < 256 * 8; ++i)
                m_aEightGreys[i / 8][i % 8] = m_aGreys[i / 8 >> (7 - i % 8) & 1];
        }
        return;
    }
    const auto& aMasks = objHeader.aMasks;
    const bool bBytes = objHeader.nBits == 32 && aMasks[0] == kPlainMasks32[0] &&
                        aMasks[1] == kPlainMasks32[1] && aMasks[2] == kPlainMasks32[2];
    m_bPlain = objHeader.nBits == 24 || (bBytes && aMasks[3] == 0xFF000000);
    m_bPlain32 = bBytes && aMasks[3] == 0;
    for (std::size_t c = 0; c < 4 && !m_bPlain && !m_bPlain32; ++c) {
        Channel& objChannel = m_aChannels[c];
        objChannel.nMask = aMasks[c == 3 ? 3 : 2 - c];
        if (objChannel.nMask == 0)
            continue;
        objChannel.nShift = static_cast<std::uint32_t>(std::countr_zero(objChannel.nMask));
        objChannel.nMax = objChannel.nMask >> objChannel.nShift;
        if (objChannel.nMax <= 255) {
            for (std::uint64_t nValue = 0; nValue <= objChannel.nMax; ++nValue)
                objChannel.aLevels.push_back(
                    static_cast<std::uint8_t>((nValue * 255 + objChannel.nMax / 2) / objChannel.nMax));
        }
    }
}

std::uint8_t DibRows::LevelOf(const Channel& objChannel, std::uint32_t nPixel) const
{
    const std::uint64_t nValue = (nPixel & objChannel.nMask) >> objChannel.nShift;
    if (!objChannel.aLevels.empty())
        return objChannel.aLevels[nValue];
    return objChannel.nMax == 0
               ? 0
               : static_cast<std::uint8_t>((nValue * 255 + objChannel.nMax / 2) / objChannel.nMax);
}

void DibRows::ConvertIndexes(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels) const
{
    const std::uint32_t nBits = m_objHeader.nBits;
    if (nBits == 8 && m_lChannels == 1) {
        for (std::uint64_t x = 0; x < nPixels; ++x)
            pOut[x] = m_aGreys[pIn[x]];
        return;
    }
    if (nBits == 8) {
        for (std::uint64_t x = 0; x < nPixels; ++x)
            std::memcpy(pOut + x * 3, m_objHeader.aPalette[pIn[x]].data(), 3);
        return;
    }
    std::uint64_t x = 0;
    if (nBits == 1 && m_lChannels == 1) {
        for (; x + 8 <= nPixels; x += 8, ++pIn, pOut += 8)
            std::memcpy(pOut, m_aEightGreys[*pIn].data(), 8);
    }
    const std::uint32_t nPerByte = 8 / nBits;
    const std::uint32_t nMask = (1u << nBits) - 1;
    for (; x < nPixels; ++pIn) {
        std::uint32_t nByte = *pIn;
        for (std::uint32_t i = 0; i < nPerByte && x < nPixels; ++i, ++x) {
            const std::uint32_t nIndex = (nByte >> (8 - nBits)) & nMask;
            nByte <<= nBits;
            if (m_lChannels == 1) {
                *pOut++ = m_aGreys[nIndex];
            } else {
                std::memcpy(pOut, m_objHeader.aPalette[nIndex].data(), 3);
                pOut += 3;
            }
        }
    }
}

void DibRows::ConvertMasked(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels) const
{
    const std::uint32_t nSize = m_objHeader.nBits / 8;
    for (std::uint64_t x = 0; x < nPixels; ++x, pIn += nSize, pOut += m_lChannels) {
        std::uint32_t nPixel = static_cast<std::uint32_t>(pIn[0] | pIn[1] << 8);
        if (nSize == 4)
            nPixel |= static_cast<std::uint32_t>(pIn[2]) << 16 | static_cast<std::uint32_t>(pIn[3]) << 24;
        for (std::int32_t c = 0; c < m_lChannels; ++c)
            pOut[c] = LevelOf(m_aChannels[static_cast<std::size_t>(c)], nPixel);
    }
}

void DibRows::Convert(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels) const
{
    if (m_bPlain)
        std::memcpy(pOut, pIn, nPixels * static_cast<std::uint64_t>(m_lChannels));
    else if (m_bPlain32)
        PackRowFromFourBytes(pIn, pOut, nPixels);
    else if (m_objHeader.nBits <= 8)
        ConvertIndexes(pIn, pOut, nPixels);
    else
        ConvertMasked(pIn, pOut, nPixels);
}
