// Reads the directory and the pictures of icons and cursors.
#include "src/platform/image/codecs/ico/icon_directory.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/dib/dib.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::uint64_t kDirectoryHeaderSize = 6;
static constexpr std::uint64_t kEntrySize = 16;
static constexpr std::int32_t kPngType = 8;

std::vector<IconEntry> aIconEntries(Bytes aFile)
{
    ByteReader rd(aFile);
    const std::uint32_t nReserved = rd.U16Le();
    const std::uint32_t nKind = rd.U16Le();
    const std::uint64_t nClaimed = rd.U16Le();
    if (rd.Failed() || nReserved != 0 || (nKind != 1 && nKind != 2))
        return {};
    std::vector<IconEntry> aEntries;
    for (std::uint64_t nLeft = std::min(nClaimed, rd.Left() / kEntrySize); nLeft > 0; --nLeft) {
        IconEntry objEntry;
        const std::uint32_t nWidth = rd.U8(), nHeight = rd.U8();
        objEntry.nWidth = nWidth == 0 ? 256 : nWidth;
        objEntry.nHeight = nHeight == 0 ? 256 : nHeight;
        rd.Take(6);  // colours, a reserved byte, planes and bits of an icon or the hot spot of a cursor
        objEntry.nSize = rd.U32Le();
        objEntry.nOffset = rd.U32Le();
        aEntries.push_back(objEntry);
    }
    return aEntries;
}

bool bIconFile(Bytes aHead, IconKind eKind)
{
    ByteReader rd(aHead);
    const bool bReserved = rd.U16Le() == 0;
    const bool bKind = rd.U16Le() == static_cast<std::uint16_t>(eKind);
    const std::uint64_t nDirectory = kDirectoryHeaderSize + rd.U16Le() * kEntrySize;
    if (!bReserved || !bKind)
        return false;
    const std::vector<IconEntry> aEntries = aIconEntries(aHead);
    return std::any_of(aEntries.begin(), aEntries.end(), [nDirectory](const IconEntry& objEntry) {
        return objEntry.nSize > 0 && objEntry.nOffset >= nDirectory;
    });
}

static bool bPngFile(Bytes aPicture)
{
    static constexpr std::array<std::uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return aPicture.size() >= kSignature.size() &&
           std::equal(kSignature.begin(), kSignature.end(), aPicture.begin());
}

static bool bDecodePng(Bytes aPicture, ImageBuffer& aImage)
{
    const Codec* pCodec = pCodecOfType(kPngType);
    InputFile objFile(aPicture);
    const std::unique_ptr<ImageDecoder> pDecoder = pCodec ? pCodec->Open(objFile) : nullptr;
    ImageBuffer aResult;
    if (!pDecoder || !pDecoder->DecodeFrame(0, aResult) || !AddAlpha(aResult))
        return false;
    aImage = std::move(aResult);
    return true;
}

/// The mask behind the colours: one bit a pixel, set where the screen shows through.
struct IconMask {
    const std::uint8_t* pRows = nullptr;
    std::uint64_t nStride = 0;
    bool bTopDown = false;
};

static bool bFindMask(const DibHeader& objColours, Bytes aPicture, IconMask& objMask)
{
    const std::uint64_t nOffset = objColours.bits_offset + DibStride(objColours) * objColours.height;
    objMask.nStride = (objColours.width + 31) / 32 * 4;
    objMask.bTopDown = objColours.top_down;
    const std::uint64_t nSize = objMask.nStride * (objColours.height - 1) + (objColours.width + 7) / 8;
    if (nOffset > aPicture.size() || nSize > aPicture.size() - nOffset)
        return false;
    objMask.pRows = aPicture.data() + nOffset;
    return true;
}

// Makes transparent what the mask leaves out; returns whether anything is left to be seen.
static bool bApplyMask(const IconMask& objMask, ImageBuffer& aImage)
{
    const auto nWidth = static_cast<std::uint64_t>(aImage.width);
    const auto nHeight = static_cast<std::uint64_t>(aImage.height);
    bool bVisible = false;
    for (std::uint64_t y = 0; y < nHeight; ++y) {
        const std::uint8_t* pMask =
            objMask.pRows + (objMask.bTopDown ? y : nHeight - 1 - y) * objMask.nStride;
        std::uint8_t* pRow = aImage.bytes.data() + y * nWidth * 4;
        for (std::uint64_t x = 0; x < nWidth; ++x) {
            const bool bThrough = (pMask[x / 8] >> (7 - x % 8) & 1) != 0;
            pRow[x * 4 + 3] = bThrough ? 0 : 255;
            bVisible = bVisible || !bThrough;
        }
    }
    return bVisible;
}

// The screen is inverted where the mask lets it through and the colour isn't black.
static void ShowInverted(ImageBuffer& aImage)
{
    for (std::size_t i = 0; i + 3 < aImage.bytes.size(); i += 4) {
        std::uint8_t* pPixel = aImage.bytes.data() + i;
        if ((pPixel[0] | pPixel[1] | pPixel[2]) == 0)
            continue;
        for (int c = 0; c < 3; ++c)
            pPixel[c] = static_cast<std::uint8_t>(255 - pPixel[c]);
        pPixel[3] = 255;
    }
}

static bool bDecodeBitmap(Bytes aPicture, const IconEntry& objEntry, ImageBuffer& aImage)
{
    DibHeader objHeader;
    if (!ReadDibHeader(aPicture, objHeader) || objHeader.storage != DibStorage::kRaw ||
        objHeader.bits_offset > aPicture.size())
        return false;
    // The header counts the mask's rows too. A few writers forgot that, and the mask.
    const bool bNoMask = objHeader.width == objEntry.nWidth && objHeader.height == objEntry.nHeight;
    if (!bNoMask)
        objHeader.height /= 2;
    if (!IsSizeAllowed(objHeader.width, objHeader.height))
        return false;
    if (objHeader.bits == 32 && objHeader.masks[3] == 0)
        objHeader.masks[3] = 0xFF000000;
    ImageBuffer aResult;
    if (!DecodeDibBits(objHeader, aPicture.subspan(objHeader.bits_offset), aResult))
        return false;
    if (aResult.channels != 4) {
        IconMask objMask;
        const bool bMask = !bNoMask && bFindMask(objHeader, aPicture, objMask);
        const bool bNeeded = !bNoMask && objHeader.bits != 32;
        if ((bNeeded && !bMask) || !AddAlpha(aResult))
            return false;
        if (bMask && !bApplyMask(objMask, aResult))
            ShowInverted(aResult);
    }
    aImage = std::move(aResult);
    return true;
}

bool bDecodeIconEntry(Bytes aFile, const IconEntry& objEntry, ImageBuffer& aImage)
{
    if (objEntry.nOffset > aFile.size() || objEntry.nSize > aFile.size() - objEntry.nOffset)
        return false;
    const Bytes aPicture = aFile.subspan(objEntry.nOffset, objEntry.nSize);
    return bPngFile(aPicture) ? bDecodePng(aPicture, aImage) : bDecodeBitmap(aPicture, objEntry, aImage);
}

/// An open icon or cursor.
class IconDecoder : public ImageDecoder
{
public:
    IconDecoder(InputFile& objFile, std::vector<IconEntry> aEntries)
        : m_objFile(objFile), m_aEntries(std::move(aEntries))
    {
    }

    std::int32_t FrameCount() override { return static_cast<std::int32_t>(m_aEntries.size()); }

    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override
    {
        return lFrame >= 0 && lFrame < FrameCount() &&
               bDecodeIconEntry(m_objFile.All(), m_aEntries[static_cast<std::size_t>(lFrame)], aImage);
    }

private:
    InputFile& m_objFile;
    std::vector<IconEntry> m_aEntries;
};

std::unique_ptr<ImageDecoder> pOpenIcon(InputFile& objFile)
{
    std::vector<IconEntry> aEntries = aIconEntries(objFile.All());
    if (aEntries.empty())
        return nullptr;
    return std::make_unique<IconDecoder>(objFile, std::move(aEntries));
}
