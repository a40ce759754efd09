// Walks through the frames of a GIF with giflib's record interface.
#include "src/platform/image/codecs/gif/gif_reader.h"

#include <gif_lib.h>

#include <algorithm>
#include <cstring>

#include "src/platform/image/base/limits.h"

// The most pixels that a byte of LZW data can stand for: a code of 12 bits names a string of at most 4096,
// and the shorter codes name shorter ones.
static constexpr std::uint64_t kPixelsPerByte = 4096 * 8 / 12 + 1;

int GifReader::Give(GifFileType* pGif, std::uint8_t* pOut, int nCount)
{
    auto& objReader = *static_cast<GifReader*>(pGif->UserData);
    const std::size_t nGiven =
        std::min(objReader.m_aLeft.size(), static_cast<std::size_t>(std::max(nCount, 0)));
    if (nGiven > 0)
        std::memcpy(pOut, objReader.m_aLeft.data(), nGiven);
    objReader.m_aLeft = objReader.m_aLeft.subspan(nGiven);
    return static_cast<int>(nGiven);
}

std::unique_ptr<GifReader> GifReader::Open(Bytes aFile)
{
    std::unique_ptr<GifReader> pReader(new GifReader(aFile));
    pReader->m_pGif = DGifOpen(pReader.get(), &GifReader::Give, nullptr);
    return pReader->m_pGif ? std::move(pReader) : nullptr;
}

GifReader::~GifReader()
{
    if (m_pGif)
        DGifCloseFile(m_pGif, nullptr);
}

std::uint32_t GifReader::ScreenWidth() const
{
    return static_cast<std::uint32_t>(m_pGif->SWidth);
}

std::uint32_t GifReader::ScreenHeight() const
{
    return static_cast<std::uint32_t>(m_pGif->SHeight);
}

// Only the graphic control counts: comments and application blocks draw nothing, and a control that stands
// before a plain text belongs to the text.
bool GifReader::ReadExtension(GifFrame& objFrame)
{
    int nCode = 0;
    GifByteType* pBlock = nullptr;
    if (DGifGetExtension(m_pGif, &nCode, &pBlock) == GIF_ERROR)
        return false;
    if (nCode == PLAINTEXT_EXT_FUNC_CODE) {
        objFrame.objDisposal = GifDisposal::Keep;
        objFrame.nTransparent = -1;
    }
    GraphicsControlBlock objControl{};
    if (nCode == GRAPHICS_EXT_FUNC_CODE && pBlock &&
        DGifExtensionToGCB(pBlock[0], pBlock + 1, &objControl) == GIF_OK) {
        objFrame.nTransparent = objControl.TransparentColor;
        // Some writers count the third bit instead of the third value.
        const bool bRestore = objControl.DisposalMode == DISPOSE_PREVIOUS || objControl.DisposalMode == 4;
        objFrame.objDisposal = bRestore                                        ? GifDisposal::Restore
                               : objControl.DisposalMode == DISPOSE_BACKGROUND ? GifDisposal::Clear
                                                                               : GifDisposal::Keep;
    }
    while (pBlock)
        if (DGifGetExtensionNext(m_pGif, &pBlock) == GIF_ERROR)
            return false;
    return true;
}

void GifReader::SetColours(GifFrame& objFrame) const
{
    const ColorMapObject* pMap = m_pGif->Image.ColorMap ? m_pGif->Image.ColorMap : m_pGif->SColorMap;
    for (std::size_t i = 0; i < objFrame.aColours.size(); ++i) {
        const auto nGrey = static_cast<std::uint8_t>(i);
        if (!pMap)
            objFrame.aColours[i] = {nGrey, nGrey, nGrey, 255};
        else if (i >= static_cast<std::size_t>(pMap->ColorCount))
            objFrame.aColours[i] = {0, 0, 0, 255};
        else
            objFrame.aColours[i] = {pMap->Colors[i].Blue, pMap->Colors[i].Green, pMap->Colors[i].Red, 255};
    }
}

GifReader::Found GifReader::NextFrame(GifFrame& objFrame)
{
    objFrame = GifFrame{};
    for (;;) {
        GifRecordType objType = UNDEFINED_RECORD_TYPE;
        if (DGifGetRecordType(m_pGif, &objType) == GIF_ERROR || objType == TERMINATE_RECORD_TYPE)
            return Found::End;
        if (objType == IMAGE_DESC_RECORD_TYPE)
            break;
        if (!ReadExtension(objFrame))
            return Found::End;
    }
    if (DGifGetImageHeader(m_pGif) == GIF_ERROR)
        return Found::Broken;
    objFrame.nLeft = static_cast<std::uint32_t>(m_pGif->Image.Left);
    objFrame.nTop = static_cast<std::uint32_t>(m_pGif->Image.Top);
    objFrame.nWidth = static_cast<std::uint32_t>(m_pGif->Image.Width);
    objFrame.nHeight = static_cast<std::uint32_t>(m_pGif->Image.Height);
    objFrame.bInterlaced = m_pGif->Image.Interlace;
    SetColours(objFrame);
    const std::uint64_t nPixels = std::uint64_t{objFrame.nWidth} * objFrame.nHeight;
    const bool bPossible = nPixels == 0 || (IsSizeAllowed(objFrame.nWidth, objFrame.nHeight) &&
                                            nPixels <= m_aLeft.size() * kPixelsPerByte);
    return bPossible ? Found::Frame : Found::Broken;
}

bool GifReader::ReadRow(std::span<std::uint8_t> aRow)
{
    return DGifGetLine(m_pGif, aRow.data(), static_cast<int>(aRow.size())) == GIF_OK;
}

bool GifReader::SkipPixels()
{
    GifByteType* pBlock = nullptr;
    do {
        if (DGifGetCodeNext(m_pGif, &pBlock) == GIF_ERROR)
            return false;
    } while (pBlock);
    return true;
}

std::uint32_t GifRowOrder::Next()
{
    static constexpr std::array<std::uint32_t, 4> kFirst = {0, 4, 2, 1};
    static constexpr std::array<std::uint32_t, 4> kStep = {8, 8, 4, 2};
    if (m_bInterlaced)
        while (m_nNext >= m_nHeight && m_nPass + 1 < kFirst.size())
            m_nNext = kFirst[++m_nPass];
    const std::uint32_t nRow = m_nNext;
    m_nNext += m_bInterlaced ? kStep[m_nPass] : 1;
    return nRow;
}
