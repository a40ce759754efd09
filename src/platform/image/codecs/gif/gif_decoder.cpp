// Draws the frames of a GIF on its logical screen.
#include "src/platform/image/codecs/gif/gif_decoder.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/pixels/pixel_rows.h"

// A screen is no data, so a few bytes may claim any size of it. Up to this many pixels that does no harm;
// beyond, the file has to be of a size that could fill the screen.
static constexpr std::uint64_t kHarmlessScreen = 16'000'000;
static constexpr std::uint64_t kScreenPixelsPerByte = 4096;

std::unique_ptr<GifDecoder> GifDecoder::Open(Bytes aFile)
{
    std::unique_ptr<GifDecoder> pDecoder(new GifDecoder(aFile));
    return pDecoder->ReadFile() ? std::move(pDecoder) : nullptr;
}

bool GifDecoder::ReadFile()
{
    const auto pReader = GifReader::Open(m_aFile);
    if (!pReader)
        return false;
    m_nWidth = pReader->ScreenWidth();
    m_nHeight = pReader->ScreenHeight();
    GifFrame objFrame;
    while (m_lFrames < kMaxGifFrames) {
        const GifReader::Found objFound = pReader->NextFrame(objFrame);
        if (objFound == GifReader::Found::End)
            break;
        // Some writers leave the screen's size out: then it is as large as its first frame needs.
        if (m_lFrames == 0 && m_nWidth == 0)
            m_nWidth = objFrame.nLeft + objFrame.nWidth;
        if (m_lFrames == 0 && m_nHeight == 0)
            m_nHeight = objFrame.nTop + objFrame.nHeight;
        ++m_lFrames;
        if (objFound == GifReader::Found::Broken || !pReader->SkipPixels())
            break;
    }
    const std::uint64_t nPixels = std::uint64_t{m_nWidth} * m_nHeight;
    return m_lFrames > 0 && IsSizeAllowed(m_nWidth, m_nHeight) &&
           (nPixels <= kHarmlessScreen || nPixels / kScreenPixelsPerByte <= m_aFile.size());
}

bool GifDecoder::Restart()
{
    m_pReader = GifReader::Open(m_aFile);
    m_lDrawn = 0;
    m_objDisposal = GifDisposal::Keep;
    m_aScreen.assign(std::size_t{m_nWidth} * m_nHeight * 4, 0);
    return m_pReader != nullptr;
}

GifDecoder::Area GifDecoder::AreaOf(const GifFrame& objFrame) const
{
    return {std::min(objFrame.nLeft, m_nWidth), std::min(objFrame.nTop, m_nHeight),
            std::min(objFrame.nLeft + objFrame.nWidth, m_nWidth),
            std::min(objFrame.nTop + objFrame.nHeight, m_nHeight)};
}

// Undoes the frame that was drawn last, if it asked for it.
void GifDecoder::Dispose()
{
    if (m_objDisposal == GifDisposal::Keep)
        return;
    const std::size_t nRowBytes = std::size_t{m_objDisposeArea.nRight - m_objDisposeArea.nLeft} * 4;
    if (nRowBytes == 0)
        return;
    const std::uint8_t* pBefore = m_aBefore.data();
    for (std::uint32_t y = m_objDisposeArea.nTop; y < m_objDisposeArea.nBottom; ++y) {
        std::uint8_t* pRow = &m_aScreen[(std::size_t{y} * m_nWidth + m_objDisposeArea.nLeft) * 4];
        if (m_objDisposal == GifDisposal::Clear) {
            std::memset(pRow, 0, nRowBytes);
        } else {
            std::memcpy(pRow, pBefore, nRowBytes);
            pBefore += nRowBytes;
        }
    }
}

bool GifDecoder::DrawFrame(const GifFrame& objFrame, const Area& objArea)
{
    if (objFrame.nWidth == 0 || objFrame.nHeight == 0)
        return m_pReader->SkipPixels();
    PixelBytes aRow(objFrame.nWidth);
    GifRowOrder objOrder(objFrame.nHeight, objFrame.bInterlaced);
    for (std::uint32_t i = 0; i < objFrame.nHeight; ++i) {
        if (!m_pReader->ReadRow(aRow))
            return false;
        const std::uint32_t y = objFrame.nTop + objOrder.Next();
        if (y >= objArea.nBottom || objArea.nLeft == objArea.nRight)
            continue;
        std::uint8_t* pOut = &m_aScreen[(std::size_t{y} * m_nWidth + objArea.nLeft) * 4];
        for (std::uint32_t x = 0; x < objArea.nRight - objArea.nLeft; ++x, pOut += 4)
            if (aRow[x] != objFrame.nTransparent)
                std::memcpy(pOut, objFrame.aColours[aRow[x]].data(), 4);
    }
    return true;
}

bool GifDecoder::DrawNext()
{
    GifFrame objFrame;
    if (m_pReader->NextFrame(objFrame) != GifReader::Found::Frame)
        return false;
    Dispose();
    m_objDisposal = objFrame.objDisposal;
    m_objDisposeArea = AreaOf(objFrame);
    if (m_objDisposal == GifDisposal::Restore) {
        m_aBefore.clear();
        for (std::uint32_t y = m_objDisposeArea.nTop; y < m_objDisposeArea.nBottom; ++y) {
            const auto itRow = m_aScreen.begin() + static_cast<std::ptrdiff_t>(std::size_t{y} * m_nWidth * 4);
            m_aBefore.insert(m_aBefore.end(), itRow + std::ptrdiff_t{m_objDisposeArea.nLeft} * 4,
                             itRow + std::ptrdiff_t{m_objDisposeArea.nRight} * 4);
        }
    }
    return DrawFrame(objFrame, m_objDisposeArea);
}

bool GifDecoder::DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage)
{
    if (lFrame < 0 || lFrame >= m_lFrames || (m_lBroken && lFrame >= *m_lBroken))
        return false;
    if ((!m_pReader || lFrame + 1 < m_lDrawn) && !Restart())
        return false;
    while (m_lDrawn <= lFrame) {
        if (!DrawNext()) {
            // What follows would be drawn on a screen that nobody knows.
            m_lBroken = m_lDrawn;
            m_pReader.reset();
            return false;
        }
        ++m_lDrawn;
    }
    return Show(aImage);
}

bool GifDecoder::Show(ImageBuffer& aImage) const
{
    std::uint8_t nOpaque = 255;
    std::uint8_t nColour = 0;
    const std::size_t nPixels = m_aScreen.size() / 4;
    for (std::size_t i = 0; i < nPixels; ++i) {
        const std::uint8_t* pPixel = &m_aScreen[i * 4];
        nColour |= static_cast<std::uint8_t>((pPixel[0] ^ pPixel[1]) | (pPixel[2] ^ pPixel[1]));
        nOpaque &= pPixel[3];
    }
    const std::int32_t lChannels = nOpaque != 255 ? 4 : nColour == 0 ? 1 : 3;
    ImageBuffer aResult;
    if (!Allocate(aResult, m_nWidth, m_nHeight, lChannels))
        return false;
    if (lChannels == 4)
        std::copy(m_aScreen.begin(), m_aScreen.end(), aResult.bytes.begin());
    else if (lChannels == 3)
        PackRowFromFourBytes(m_aScreen.data(), aResult.bytes.data(), nPixels);
    else
        for (std::size_t i = 0; i < nPixels; ++i)
            aResult.bytes[i] = m_aScreen[i * 4];
    aImage = std::move(aResult);
    return true;
}
