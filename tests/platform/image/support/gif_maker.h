// Builds GIF files block by block, for what no program writes.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/platform/image/support/byte_maker.h"

using GifColours = std::vector<std::array<int, 3>>;  ///< R, G, B; 2, 4, 8 ... of them

/// Pictures are written in codes of 3 bits without a single string, so that a reader's table plays no part:
/// indexes are 0 to 3.
class GifMaker
{
public:
    GifMaker(std::uint32_t nWidth, std::uint32_t nHeight, const GifColours& aColours, int lBackground = 0)
    {
        m_objBytes.Text("GIF89a").U16Le({nWidth, nHeight});
        m_objBytes.U8({aColours.empty() ? 0 : 0x80 | nTableSize(aColours), lBackground, 0});
        Table(aColours);
    }
    /// lDisposal 0 to 7; lTransparent -1 for none.
    GifMaker& Control(int lDisposal, int lTransparent = -1)
    {
        m_objBytes.U8({0x21, 0xF9, 4, lDisposal << 2 | (lTransparent >= 0 ? 1 : 0), 10, 0,
                       lTransparent >= 0 ? lTransparent : 0, 0});
        return *this;
    }
    GifMaker& Comment(const std::string& sText)
    {
        m_objBytes.U8({0x21, 0xFE, static_cast<int>(sText.size())}).Text(sText).U8({0});
        return *this;
    }
    GifMaker& PlainText()
    {
        m_objBytes.U8({0x21, 0x01, 12}).Zeros(12).U8({1, 'x', 0});
        return *this;
    }
    GifMaker& Descriptor(std::uint32_t nLeft, std::uint32_t nTop, std::uint32_t nWidth, std::uint32_t nHeight,
                         const GifColours& aLocal = {}, bool bInterlaced = false)
    {
        m_objBytes.U8({0x2C}).U16Le({nLeft, nTop, nWidth, nHeight});
        m_objBytes.U8({(aLocal.empty() ? 0 : 0x80 | nTableSize(aLocal)) | (bInterlaced ? 0x40 : 0)});
        Table(aLocal);
        return *this;
    }
    GifMaker& Pixels(const std::vector<int>& aIndexes)
    {
        std::vector<std::uint8_t> aData;
        unsigned nBits = 0, nWaiting = 0;
        const auto Code = [&](unsigned nCode) {
            nBits |= nCode << nWaiting;
            nWaiting += 3;
            if (nWaiting >= 8) {
                aData.push_back(static_cast<std::uint8_t>(nBits));
                nBits >>= 8;
                nWaiting -= 8;
            }
        };
        for (std::size_t i = 0; i < aIndexes.size(); ++i) {
            if (i % 2 == 0)
                Code(4);  // clear, before the reader's table grows past 3 bits
            Code(static_cast<unsigned>(aIndexes[i]));
        }
        Code(5);
        aData.push_back(static_cast<std::uint8_t>(nBits));
        return Data(2, aData);
    }
    GifMaker& Data(int lCodeSize, const std::vector<std::uint8_t>& aData)
    {
        m_objBytes.U8({lCodeSize});
        for (std::size_t i = 0; i < aData.size(); i += 255) {
            const std::size_t nEnd = std::min(aData.size(), i + 255);
            m_objBytes.U8({static_cast<int>(nEnd - i)});
            m_objBytes.All({aData.begin() + static_cast<long>(i), aData.begin() + static_cast<long>(nEnd)});
        }
        m_objBytes.U8({0});
        return *this;
    }
    GifMaker& Frame(std::uint32_t nLeft, std::uint32_t nTop, std::uint32_t nWidth, std::uint32_t nHeight,
                    const std::vector<int>& aIndexes, const GifColours& aLocal = {})
    {
        return Descriptor(nLeft, nTop, nWidth, nHeight, aLocal).Pixels(aIndexes);
    }
    GifMaker& Raw(std::initializer_list<int> aValues)
    {
        m_objBytes.U8(aValues);
        return *this;
    }
    GifMaker& End() { return Raw({0x3B}); }
    const std::vector<std::uint8_t>& aBytes() const { return m_objBytes.aBytes(); }

private:
    static int nTableSize(const GifColours& aColours)
    {
        int nBits = 1;
        while (1u << nBits < aColours.size())
            ++nBits;
        return nBits - 1;
    }
    void Table(const GifColours& aColours)
    {
        for (const auto& aColour : aColours)
            m_objBytes.U8({aColour[0], aColour[1], aColour[2]});
    }
    ByteMaker m_objBytes;
};
