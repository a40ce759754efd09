// The least and the greatest value around each pixel.
#include "src/platform/image/transforms/filters/extremes.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <utility>

#include "src/platform/image/base/parallel.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

// The lesser or the greater of two bytes, for nCount of them.
using Choice = void (*)(const std::uint8_t* pOne, const std::uint8_t* pOther, std::size_t nCount,
                        std::uint8_t* __restrict pTarget);

ROW_LOOP static void Lesser(const std::uint8_t* pOne, const std::uint8_t* pOther, std::size_t nCount,
                            std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pTarget[i] = pOne[i] < pOther[i] ? pOne[i] : pOther[i];
}

ROW_LOOP static void Greater(const std::uint8_t* pOne, const std::uint8_t* pOther, std::size_t nCount,
                             std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pTarget[i] = pOne[i] < pOther[i] ? pOther[i] : pOne[i];
}

struct Window {
    Choice fnChoose;
    std::size_t nSize;    // pixels
    std::size_t nBefore;  // of them before the pixel itself
};

// A row, in place. pMemory holds two rows with the window's width more. Windows of 2, 4, 8 ... pixels come
// from two of half the size each, and the last from two that overlap.
static void ChooseAlongRow(std::uint8_t* pRow, std::size_t nBytes, std::size_t nChannels, const Window& obj,
                           std::uint8_t* pMemory)
{
    const std::size_t nMore = (obj.nSize - 1) * nChannels;
    std::uint8_t* pNow = pMemory;
    std::uint8_t* pNext = pMemory + nBytes + nMore;
    const std::size_t nLead = obj.nBefore * nChannels;
    for (std::size_t i = 0; i < nLead; i += nChannels)
        std::memcpy(pNow + i, pRow, nChannels);
    std::memcpy(pNow + nLead, pRow, nBytes);
    for (std::size_t i = nLead + nBytes; i < nMore + nBytes; i += nChannels)
        std::memcpy(pNow + i, pRow + nBytes - nChannels, nChannels);

    std::size_t nReached = 1, nLeft = nBytes + nMore;
    while (2 * nReached < obj.nSize) {
        nLeft -= nReached * nChannels;
        obj.fnChoose(pNow, pNow + nReached * nChannels, nLeft, pNext);
        std::swap(pNow, pNext);
        nReached *= 2;
    }
    obj.fnChoose(pNow, pNow + (obj.nSize - nReached) * nChannels, nBytes, pRow);
}

// Columns of nBytes bytes, in place. The rows are cut into blocks of the window's size. A window is the end
// of one block, whose choices were made from the block's end upwards, and the beginning of the next, where
// they are made on the way down. What an output overwrites has been looked at by then: the next block's
// choices upwards are made before the outputs of this one are written.
class ColumnStrip
{
public:
    static std::size_t nMemory(const Window& obj, std::size_t nBytes) { return (2 * obj.nSize + 2) * nBytes; }

    ColumnStrip(ImageBuffer& aImage, std::size_t nFirst, std::size_t nBytes, const Window& obj,
                std::uint8_t* pMemory)
        : m_pFirst(aImage.bytes.data() + nFirst),
          m_nRowBytes(static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels)),
          m_nHeight(static_cast<std::size_t>(aImage.height)),
          m_nBytes(nBytes),
          m_obj(obj),
          m_pUpwards(pMemory),
          m_pNextUpwards(pMemory + obj.nSize * nBytes),
          m_pDownwards(pMemory + 2 * obj.nSize * nBytes),
          m_pNextDownwards(m_pDownwards + nBytes)
    {
    }

    void Choose()
    {
        ChooseUpwards(0, m_pUpwards);
        for (std::size_t nBlock = 0; nBlock < m_nHeight; nBlock += m_obj.nSize) {
            if (nBlock + m_obj.nSize < m_nHeight)
                ChooseUpwards(nBlock + m_obj.nSize, m_pNextUpwards);
            WriteBlock(nBlock);
            std::swap(m_pUpwards, m_pNextUpwards);
        }
    }

private:
    std::uint8_t* pRow(std::size_t y) { return m_pFirst + y * m_nRowBytes; }
    // The row with which window n begins; beyond the border the border's.
    std::uint8_t* pBegin(std::size_t n)
    {
        return pRow(n < m_obj.nBefore ? 0 : std::min(n - m_obj.nBefore, m_nHeight - 1));
    }
    void ChooseUpwards(std::size_t nBlock, std::uint8_t* pChoices)
    {
        const std::size_t nLast = m_obj.nSize - 1;
        std::memcpy(pChoices + nLast * m_nBytes, pBegin(nBlock + nLast), m_nBytes);
        for (std::size_t i = nLast; i-- > 0;)
            m_obj.fnChoose(pChoices + (i + 1) * m_nBytes, pBegin(nBlock + i), m_nBytes,
                           pChoices + i * m_nBytes);
    }
    void WriteBlock(std::size_t nBlock)
    {
        const std::size_t nEnd = std::min(m_obj.nSize, m_nHeight - nBlock);
        std::memcpy(pRow(nBlock), m_pUpwards, m_nBytes);
        for (std::size_t i = 1; i < nEnd; ++i) {
            const std::uint8_t* pNew = pBegin(nBlock + m_obj.nSize + i - 1);
            if (i == 1)
                std::memcpy(m_pNextDownwards, pNew, m_nBytes);
            else
                m_obj.fnChoose(m_pDownwards, pNew, m_nBytes, m_pNextDownwards);
            std::swap(m_pDownwards, m_pNextDownwards);
            m_obj.fnChoose(m_pUpwards + i * m_nBytes, m_pDownwards, m_nBytes, pRow(nBlock + i));
        }
    }

    std::uint8_t* m_pFirst;
    std::size_t m_nRowBytes, m_nHeight, m_nBytes;
    Window m_obj;
    std::uint8_t *m_pUpwards, *m_pNextUpwards, *m_pDownwards, *m_pNextDownwards;
};

// Alpha isn't worth a way around it in the loops: it is kept aside, and put back.
static void KeepAlpha(const ImageBuffer& aImage, PixelBytes& aAlpha)
{
    for (std::size_t i = 0; i < aAlpha.size(); ++i)
        aAlpha[i] = aImage.bytes[4 * i + 3];
}

static void PutAlphaBack(ImageBuffer& aImage, const PixelBytes& aAlpha)
{
    for (std::size_t i = 0; i < aAlpha.size(); ++i)
        aImage.bytes[4 * i + 3] = aAlpha[i];
}

static bool bChoose(ImageBuffer& aImage, std::int32_t lSize, Choice fnChoose)
{
    constexpr std::size_t kStrip = 2048;  // bytes: 512 rows of them stay in the second cache
    const auto nSize = static_cast<std::size_t>(std::clamp(lSize, 1, 256));
    if (nSize == 1)
        return true;
    const Window obj{fnChoose, nSize, nSize / 2};
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::size_t nRowBytes = static_cast<std::size_t>(aImage.width) * nChannels;
    const std::size_t nStrips = (nRowBytes + kStrip - 1) / kStrip;
    const std::size_t nCount = nBands(aImage);
    const std::size_t nAlongMemory = 2 * (nRowBytes + (nSize - 1) * nChannels);
    const std::size_t nMemory = std::max(nAlongMemory, ColumnStrip::nMemory(obj, kStrip));
    PixelBytes aMemory, aAlpha;
    const auto fnRows = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
        for (std::int32_t y = lFirst; y < lEnd; ++y)
            ChooseAlongRow(aImage.bytes.data() + nRowBytes * static_cast<std::size_t>(y), nRowBytes,
                           nChannels, obj, aMemory.data() + nBand * nMemory);
    };
    const auto fnStrips = [&](std::size_t nPart) {
        for (std::size_t n = nStrips * nPart / nCount; n < nStrips * (nPart + 1) / nCount; ++n)
            ColumnStrip(aImage, n * kStrip, std::min(kStrip, nRowBytes - n * kStrip), obj,
                        aMemory.data() + nPart * nMemory)
                .Choose();
    };
    return bAmongVisible(aImage, [&] {
        aMemory.resize(nCount * nMemory);
        aAlpha.resize(nChannels == 4 ? aImage.bytes.size() / 4 : 0);
        KeepAlpha(aImage, aAlpha);
        RunBands(aImage, nCount, std::ref(fnRows));
        RunParts(nCount, std::ref(fnStrips));
        PutAlphaBack(aImage, aAlpha);
        return true;
    });
}

bool FilterMinimal(ImageBuffer& aImage, std::int32_t lSize)
{
    return bChoose(aImage, lSize, Lesser);
}

bool FilterMaximal(ImageBuffer& aImage, std::int32_t lSize)
{
    return bChoose(aImage, lSize, Greater);
}

}  // namespace transforms
