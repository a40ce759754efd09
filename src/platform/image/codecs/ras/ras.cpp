// Reads and writes Sun rasterfiles.
#include "src/platform/image/codecs/ras/ras.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "src/platform/image/pixels/stored_rows.h"

static constexpr std::uint32_t kMagic = 0x59A66A95;
static constexpr std::uint64_t kHeaderSize = 32;
static constexpr std::uint8_t kEscape = 0x80;

// Kinds of file; 0, the old one, differs from the standard in a header field that nobody needs.
static constexpr std::uint32_t kStandard = 1;
static constexpr std::uint32_t kByteEncoded = 2;
static constexpr std::uint32_t kRgb = 3;

static constexpr std::uint32_t kMapOfColours = 1;  // all reds, then all greens, then all blues

struct RasHeader {
    std::uint64_t nWidth = 0;
    std::uint64_t nHeight = 0;
    std::uint32_t nBits = 0;
    std::uint32_t nKind = 0;
    std::uint32_t nMapKind = 0;
    std::uint64_t nMapSize = 0;

    std::uint64_t nRowBytes() const { return (nWidth * nBits + 7) / 8; }
    std::uint64_t nStride() const { return (nRowBytes() + 1) / 2 * 2; }  ///< rows are filled up to 16 bits
    std::uint64_t nBitsOffset() const { return kHeaderSize + nMapSize; }
};

/// What the pixels become: the level of every value of blue, green and red.
struct RasColours {
    std::int32_t lChannels = 3;
    std::array<std::array<std::uint8_t, 256>, 3> aLevels{};
    bool bPlain = true;  ///< every value is its own level
};

static bool Sniff(Bytes aHead, std::string_view)
{
    return ByteReader(aHead).U32Be() == kMagic;
}

static bool bReadHeader(InputFile& objFile, RasHeader& objHeader)
{
    ByteReader rd(objFile.Head());
    const bool bMagic = rd.U32Be() == kMagic;
    objHeader.nWidth = rd.U32Be();
    objHeader.nHeight = rd.U32Be();
    objHeader.nBits = rd.U32Be();
    rd.U32Be();  // size of the data: old files leave it 0, so it is not believed
    objHeader.nKind = rd.U32Be();
    objHeader.nMapKind = rd.U32Be();
    objHeader.nMapSize = rd.U32Be();
    const bool bBits =
        objHeader.nBits == 1 || objHeader.nBits == 8 || objHeader.nBits == 24 || objHeader.nBits == 32;
    return bMagic && !rd.Failed() && bBits && objHeader.nKind <= kRgb &&
           objHeader.nBitsOffset() < objFile.Size();
}

// A map of a picture of 24 or 32 bits holds the levels of each channel.
static bool bReadColours(InputFile& objFile, const RasHeader& objHeader, RasColours& objColours)
{
    constexpr std::uint64_t kLongestMap = 3 * 65536;
    const std::size_t nEntries =
        std::min<std::uint64_t>(objHeader.nMapSize / 3, objHeader.nBits == 1 ? 2 : 256);
    const bool bMap = objHeader.nMapKind == kMapOfColours && nEntries > 0;
    objColours.lChannels = objHeader.nBits <= 8 ? 1 : 3;
    objColours.bPlain = !bMap && objHeader.nBits != 1;
    for (auto& aLevels : objColours.aLevels) {
        for (std::size_t i = 0; i < aLevels.size(); ++i)
            aLevels[i] = static_cast<std::uint8_t>(objHeader.nBits == 1 ? (i == 0 ? 255 : 0) : i);
    }
    if (!bMap)
        return true;
    if (objHeader.nMapSize > kLongestMap)
        return false;
    std::vector<std::uint8_t> aMap(objHeader.nMapSize);
    if (objFile.ReadAt(kHeaderSize, aMap) != aMap.size())
        return false;
    for (std::size_t c = 0; c < 3; ++c) {
        objColours.aLevels[2 - c].fill(0);
        std::copy_n(aMap.begin() + static_cast<std::ptrdiff_t>(c * (objHeader.nMapSize / 3)), nEntries,
                    objColours.aLevels[2 - c].begin());
    }
    const bool bGrey =
        objColours.aLevels[0] == objColours.aLevels[1] && objColours.aLevels[1] == objColours.aLevels[2];
    if (objHeader.nBits <= 8 && !bGrey)
        objColours.lChannels = 3;
    return true;
}

// Indexes or levels of 1 and 8 bits.
static void ConvertSmall(const RasHeader& objHeader, const RasColours& objColours, const std::uint8_t* pRow,
                         std::uint8_t* pOut)
{
    for (std::uint64_t x = 0; x < objHeader.nWidth; ++x) {
        const std::uint32_t nIndex = objHeader.nBits == 8 ? pRow[x] : pRow[x / 8] >> (7 - x % 8) & 1;
        for (std::int32_t c = 0; c < objColours.lChannels; ++c)
            *pOut++ = objColours.aLevels[static_cast<std::size_t>(c)][nIndex];
    }
}

static void ConvertColours(const RasHeader& objHeader, const RasColours& objColours, const std::uint8_t* pRow,
                           std::uint8_t* pOut)
{
    const std::uint64_t nWidth = objHeader.nWidth;
    const bool bRgb = objHeader.nKind == kRgb;
    if (objHeader.nBits == 24 && bRgb) {
        SwapRedAndBlue(pRow, pOut, nWidth);
    } else if (objHeader.nBits == 24) {
        std::memcpy(pOut, pRow, nWidth * 3);
    } else {
        // The byte that fills a pixel up comes first.
        for (std::uint64_t x = 0; x < nWidth; ++x)
            std::memcpy(pOut + x * 3, pRow + x * 4 + 1, 3);
        if (bRgb)
            SwapRedAndBlue(pOut, pOut, nWidth);
    }
    for (std::uint64_t i = 0; !objColours.bPlain && i < nWidth * 3; ++i)
        pOut[i] = objColours.aLevels[i % 3][pOut[i]];
}

static void ConvertRow(const RasHeader& objHeader, const RasColours& objColours, const std::uint8_t* pRow,
                       std::uint8_t* pOut)
{
    if (objHeader.nBits > 8)
        ConvertColours(objHeader, objColours, pRow, pOut);
    else if (objHeader.nBits == 8 && objColours.bPlain)
        std::memcpy(pOut, pRow, objHeader.nWidth);
    else
        ConvertSmall(objHeader, objColours, pRow, pOut);
}

/// The bytes of the kind byte-encoded: 0x80 begins a run (count less 1, byte), 0x80 0 is the byte 0x80. Runs
/// go on from row to row.
class RasRuns
{
public:
    explicit RasRuns(Bytes aData) : m_aLeft(aData) {}

    bool bNextRow(std::span<std::uint8_t> aRow)
    {
        std::size_t nDone = 0;
        while (nDone < aRow.size()) {
            const std::size_t nRoom = aRow.size() - nDone;
            if (m_nRun > 0) {
                const std::size_t nCount = std::min(m_nRun, nRoom);
                std::memset(aRow.data() + nDone, m_nRunValue, nCount);
                nDone += nCount;
                m_nRun -= nCount;
                continue;
            }
            const std::size_t nPlain = nBytesToEscape(nRoom);
            std::copy_n(m_aLeft.begin(), nPlain, aRow.begin() + static_cast<std::ptrdiff_t>(nDone));
            nDone += nPlain;
            m_aLeft = m_aLeft.subspan(nPlain);
            if (nDone < aRow.size() && !bTakeRun())
                return false;
        }
        return true;
    }

private:
    std::size_t nBytesToEscape(std::size_t nRoom) const
    {
        const std::size_t nMost = std::min(m_aLeft.size(), nRoom);
        if (nMost == 0)
            return 0;
        const void* pFound = std::memchr(m_aLeft.data(), kEscape, nMost);
        return pFound ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(pFound) - m_aLeft.data())
                      : nMost;
    }

    bool bTakeRun()
    {
        if (m_aLeft.size() < 2)
            return false;
        const std::size_t nCode = m_aLeft[1];
        if (nCode > 0 && m_aLeft.size() < 3)
            return false;
        m_nRun = nCode + 1;
        m_nRunValue = nCode > 0 ? m_aLeft[2] : kEscape;
        m_aLeft = m_aLeft.subspan(nCode > 0 ? 3 : 2);
        return true;
    }

    Bytes m_aLeft;
    std::size_t m_nRun = 0;
    std::uint8_t m_nRunValue = 0;
};

static bool bDecodeRuns(InputFile& objFile, const RasHeader& objHeader, const RasColours& objColours,
                        ImageBuffer& aImage)
{
    const Bytes aFile = objFile.All();
    if (aFile.size() < objHeader.nBitsOffset())
        return false;
    const Bytes aData = aFile.subspan(objHeader.nBitsOffset());
    // Three bytes hold 256 at most. The last row's filling may be missing.
    const std::uint64_t nNeeded = objHeader.nStride() * (objHeader.nHeight - 1) + objHeader.nRowBytes();
    if (nNeeded > (aData.size() + 2) / 3 * 256 ||
        !Allocate(aImage, objHeader.nWidth, objHeader.nHeight, objColours.lChannels))
        return false;
    RasRuns objRuns(aData);
    std::vector<std::uint8_t> aRow(objHeader.nStride());
    const std::uint64_t nRowSize = objHeader.nWidth * static_cast<std::uint64_t>(objColours.lChannels);
    for (std::uint64_t y = 0; y < objHeader.nHeight; ++y) {
        const bool bLast = y + 1 == objHeader.nHeight;
        if (!objRuns.bNextRow(std::span(aRow).first(bLast ? objHeader.nRowBytes() : aRow.size())))
            return false;
        ConvertRow(objHeader, objColours, aRow.data(), aImage.bytes.data() + y * nRowSize);
    }
    return true;
}

static bool bDecodeRaw(InputFile& objFile, const RasHeader& objHeader, const RasColours& objColours,
                       ImageBuffer& aImage)
{
    const StoredRows objStored{objHeader.nBitsOffset(), objHeader.nStride(), objHeader.nRowBytes(),
                               objHeader.nHeight};
    if (!HoldsRows(objFile, objStored) ||
        !Allocate(aImage, objHeader.nWidth, objHeader.nHeight, objColours.lChannels))
        return false;
    const std::uint64_t nRowSize = objHeader.nWidth * static_cast<std::uint64_t>(objColours.lChannels);
    return ReadRows(objFile, objStored, [&](std::uint64_t y, const std::uint8_t* pRow) {
        ConvertRow(objHeader, objColours, pRow, aImage.bytes.data() + y * nRowSize);
    });
}

static bool bDecode(InputFile& objFile, const RasHeader& objHeader, ImageBuffer& aImage)
{
    RasColours objColours;
    ImageBuffer aResult;
    if (!IsSizeAllowed(objHeader.nWidth, objHeader.nHeight) || !bReadColours(objFile, objHeader, objColours))
        return false;
    if (!(objHeader.nKind == kByteEncoded ? bDecodeRuns(objFile, objHeader, objColours, aResult)
                                          : bDecodeRaw(objFile, objHeader, objColours, aResult)))
        return false;
    aImage = std::move(aResult);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& objFile)
{
    RasHeader objHeader;
    if (!bReadHeader(objFile, objHeader))
        return nullptr;
    return pSinglePage(
        [&objFile, objHeader](ImageBuffer& aImage) { return bDecode(objFile, objHeader, aImage); });
}

static bool bEncode(const ImageBuffer& aImage, const SaveSettings&, OutputFile& objOut)
{
    const auto nHeight = static_cast<std::uint64_t>(aImage.height);
    const std::uint64_t nRowSize =
        static_cast<std::uint64_t>(aImage.width) * static_cast<std::uint64_t>(aImage.channels);
    const std::uint64_t nStride = (nRowSize + 1) / 2 * 2;
    if (nStride * nHeight > UINT32_MAX)  // the header's field for the size has 32 bits
        return false;
    objOut.WriteU32Be(kMagic);
    objOut.WriteU32Be(static_cast<std::uint32_t>(aImage.width));
    objOut.WriteU32Be(static_cast<std::uint32_t>(aImage.height));
    objOut.WriteU32Be(aImage.channels == 1 ? 8 : 24);
    objOut.WriteU32Be(static_cast<std::uint32_t>(nStride * nHeight));
    objOut.WriteU32Be(kStandard);
    objOut.WriteU32Be(0);
    objOut.WriteU32Be(0);
    if (nStride == nRowSize)
        return objOut.Write(aImage.bytes);
    for (std::uint64_t y = 0; y < nHeight && !objOut.Failed(); ++y) {
        objOut.Write(Bytes(aImage.bytes).subspan(y * nRowSize, nRowSize));
        objOut.WriteU8(0);
    }
    return !objOut.Failed();
}

const Codec codecRas{9, false, false, Sniff, Open, bEncode};
