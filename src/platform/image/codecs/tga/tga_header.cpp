// Reads what stands around the pixels of a Targa file.
#include "src/platform/image/codecs/tga/tga_header.h"

#include <algorithm>

static constexpr std::uint32_t kPackedKind = 8;  // added to the number of the plain kind

static bool bKindOf(std::uint32_t nKind, TgaKind& eKind)
{
    switch (nKind & ~kPackedKind) {
        case 1:
            eKind = TgaKind::kMapped;
            return true;
        case 2:
            eKind = TgaKind::kTrueColour;
            return true;
        case 3:
            eKind = TgaKind::kGrey;
            return true;
        default:
            return false;
    }
}

static bool bColourDepth(std::uint32_t nBits)
{
    return nBits == 15 || nBits == 16 || nBits == 24 || nBits == 32;
}

static bool bDepthFits(const TgaHeader& objHeader)
{
    if (objHeader.eKind == TgaKind::kTrueColour)
        return bColourDepth(objHeader.nBits);
    return objHeader.nBits == 8 || objHeader.nBits == 16;
}

bool bReadTgaHeader(Bytes aHead, TgaHeader& objHeader)
{
    TgaHeader objResult;
    ByteReader rd(aHead);
    const std::uint32_t nIdLength = rd.U8();
    const std::uint32_t nMapKind = rd.U8();
    const std::uint32_t nKind = rd.U8();
    objResult.nMapFirst = rd.U16Le();
    objResult.nMapLength = rd.U16Le();
    objResult.nMapBits = rd.U8();
    rd.U32Le();  // where on a screen the picture was
    objResult.nWidth = rd.U16Le();
    objResult.nHeight = rd.U16Le();
    objResult.nBits = rd.U8();
    const std::uint32_t nDescriptor = rd.U8();
    if (rd.Failed() || nMapKind > 1 || nKind > 11 || !bKindOf(nKind, objResult.eKind))
        return false;
    objResult.bPacked = (nKind & kPackedKind) != 0;
    objResult.nAlphaBits = nDescriptor & 15;
    objResult.bFromRight = (nDescriptor & 16) != 0;
    objResult.bFromTop = (nDescriptor & 32) != 0;
    const bool bInterleaved = (nDescriptor & 0xC0) != 0;
    if (!bDepthFits(objResult) || bInterleaved || objResult.nWidth == 0 || objResult.nHeight == 0)
        return false;
    if (nMapKind == 0) {
        objResult.nMapFirst = objResult.nMapLength = objResult.nMapBits = 0;
    } else if (!bColourDepth(objResult.nMapBits)) {
        return false;
    }
    if (objResult.eKind == TgaKind::kMapped && objResult.nMapLength == 0)
        return false;
    objResult.nMapOffset = kTgaHeaderSize + nIdLength;
    objResult.nBitsOffset =
        objResult.nMapOffset + std::uint64_t{objResult.nMapLength} * ((objResult.nMapBits + 7) / 8);
    objHeader = objResult;
    return true;
}

// The extension area's byte for the kind of alpha; 0 to 4 mean something, and -1 is no area.
static int lAttributesType(InputFile& objFile)
{
    std::array<std::uint8_t, kTgaFooterSize> aFooter{};
    if (objFile.Size() < kTgaHeaderSize + kTgaFooterSize)
        return -1;
    if (objFile.ReadAt(objFile.Size() - kTgaFooterSize, aFooter) != aFooter.size() ||
        !std::equal(kTgaSignature.begin(), kTgaSignature.end(), aFooter.begin() + 8))
        return -1;
    const std::uint64_t nExtension = ByteReader(aFooter).U32Le();
    std::array<std::uint8_t, kTgaExtensionSize> aExtension{};
    if (nExtension < kTgaHeaderSize || objFile.ReadAt(nExtension, aExtension) != aExtension.size() ||
        ByteReader(aExtension).U16Le() < kTgaExtensionSize)
        return -1;
    return aExtension.back();
}

TgaAlpha eTgaAlpha(InputFile& objFile, const TgaHeader& objHeader)
{
    switch (lAttributesType(objFile)) {
        case 0:  // none
        case 1:  // undefined, to be ignored
        case 2:  // undefined, to be kept
            return TgaAlpha::kNone;
        case 3:
            return TgaAlpha::kStraight;
        case 4:
            return TgaAlpha::kPremultiplied;
        default: {
            // Programs in use write 32 bits with alpha and count none in the descriptor.
            const bool bFourBytes = objHeader.nBits == 32 || objHeader.nMapBits == 32;
            return objHeader.nAlphaBits > 0 || bFourBytes ? TgaAlpha::kStraight : TgaAlpha::kNone;
        }
    }
}

std::array<std::uint8_t, 4> aTgaColour(const std::uint8_t* pStored, std::uint32_t nBits)
{
    if (nBits >= 24)
        return {pStored[0], pStored[1], pStored[2], nBits == 32 ? pStored[3] : std::uint8_t{255}};
    const std::uint32_t nColour = pStored[0] | static_cast<std::uint32_t>(pStored[1]) << 8;
    const auto nLevel = [nColour](std::uint32_t nShift) {
        return static_cast<std::uint8_t>(((nColour >> nShift & 31) * 255 + 15) / 31);
    };
    const bool bOpaque = nBits == 15 || (nColour & 0x8000) != 0;
    return {nLevel(0), nLevel(5), nLevel(10), bOpaque ? std::uint8_t{255} : std::uint8_t{0}};
}

bool bReadTgaMap(InputFile& objFile, const TgaHeader& objHeader,
                 std::vector<std::array<std::uint8_t, 4>>& aMap)
{
    const std::size_t nEntrySize = (objHeader.nMapBits + 7) / 8;
    std::vector<std::uint8_t> aStored(objHeader.nMapLength * nEntrySize);
    if (objFile.ReadAt(objHeader.nMapOffset, aStored) != aStored.size())
        return false;
    aMap.assign(objHeader.nMapFirst, {0, 0, 0, 255});
    for (std::size_t i = 0; i < objHeader.nMapLength; ++i)
        aMap.push_back(aTgaColour(aStored.data() + i * nEntrySize, objHeader.nMapBits));
    return true;
}
