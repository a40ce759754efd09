// Reads and writes Windows bitmaps.
#include "src/platform/image/codecs/bmp/bmp.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/dib/dib.h"
#include "src/platform/image/dib/dib_rows.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "src/platform/image/pixels/stored_rows.h"

static constexpr std::uint64_t kFileHeaderSize = 14;
static constexpr std::uint32_t kInfoHeaderSize = 40;
static constexpr std::uint64_t kPaletteSize = 256 * 4;
/// Header, masks and a full palette at their longest.
static constexpr std::uint64_t kLongestHeader = 4096;
static constexpr std::uint64_t kMaxProfile = 16 << 20;

static bool Sniff(Bytes aHead, std::string_view)
{
    ByteReader rd(aHead);
    const bool bMagic = rd.U8() == 'B' && rd.U8() == 'M';
    rd.Take(12);
    const std::uint32_t nHeaderSize = rd.U32Le();
    return bMagic && !rd.Failed() && (nHeaderSize == 12 || (nHeaderSize >= 16 && nHeaderSize <= 1024));
}

/// What Open found.
struct BmpFile {
    DibHeader objHeader;
    std::uint64_t nBitsOffset = 0;  ///< in the file
};

// The bits lie where the file header says, and right behind the palette if it says nothing that can be.
static bool bReadHeaders(InputFile& objFile, BmpFile& objBmp)
{
    std::array<std::uint8_t, kLongestHeader> aStart;
    const Bytes aHead = Bytes(aStart).first(objFile.ReadAt(0, aStart));
    if (!Sniff(aHead, ""))
        return false;
    ByteReader rd(aHead.subspan(10));
    objBmp.nBitsOffset = rd.U32Le();
    const std::uint64_t nHeaderEnd = kFileHeaderSize + rd.U32Le();
    // A palette may be cut short by the bits that begin before its end.
    const bool bSaysWhere = objBmp.nBitsOffset >= nHeaderEnd;
    const std::uint64_t nEnd =
        bSaysWhere ? std::min<std::uint64_t>(objBmp.nBitsOffset, aHead.size()) : aHead.size();
    if (!ReadDibHeader(aHead.first(nEnd).subspan(kFileHeaderSize), objBmp.objHeader))
        return false;
    if (!bSaysWhere)
        objBmp.nBitsOffset = kFileHeaderSize + objBmp.objHeader.bits_offset;
    return objBmp.nBitsOffset < objFile.Size();
}

// A profile for colours, as far as its header tells.
static bool bColourProfile(Bytes aProfile)
{
    constexpr std::size_t kHeaderSize = 128;
    return aProfile.size() >= kHeaderSize && std::memcmp(aProfile.data() + 16, "RGB ", 4) == 0 &&
           std::memcmp(aProfile.data() + 36, "acsp", 4) == 0;
}

// A profile that doesn't fit (for greys, for instance, which have no tones of their own in an RGB profile) is
// left.
static void ReadProfile(InputFile& objFile, const DibHeader& objHeader, ImageBuffer& aImage)
{
    const std::uint64_t nOffset = kFileHeaderSize + objHeader.profile_offset;
    if (aImage.channels == 1 || objHeader.profile_size == 0 || objHeader.profile_size > kMaxProfile ||
        nOffset > objFile.Size() || objHeader.profile_size > objFile.Size() - nOffset)
        return;
    std::vector<std::uint8_t> aProfile(objHeader.profile_size);
    if (objFile.ReadAt(nOffset, aProfile) == aProfile.size() && bColourProfile(aProfile))
        aImage.icc_profile = std::move(aProfile);
}

// The common case, large and uncompressed: from the file into the picture.
static bool bDecodeRawFile(InputFile& objFile, const BmpFile& objBmp, ImageBuffer& aImage)
{
    const DibHeader& objHeader = objBmp.objHeader;
    if (!IsSizeAllowed(objHeader.width, objHeader.height))
        return false;
    const StoredRows objStored{objBmp.nBitsOffset, DibStride(objHeader),
                               (objHeader.width * objHeader.bits + 7) / 8, objHeader.height};
    ImageBuffer aResult;
    if (!HoldsRows(objFile, objStored) ||
        !Allocate(aResult, objHeader.width, objHeader.height, DibChannels(objHeader)))
        return false;
    const DibRows objRows(objHeader);
    const std::uint64_t nRowSize = objHeader.width * static_cast<std::uint64_t>(aResult.channels);
    const bool bRead = ReadRows(objFile, objStored, [&](std::uint64_t nStored, const std::uint8_t* pRow) {
        const std::uint64_t y = objHeader.top_down ? nStored : objHeader.height - 1 - nStored;
        objRows.Convert(pRow, aResult.bytes.data() + y * nRowSize, objHeader.width);
    });
    if (!bRead)
        return false;
    DropUnsetAlpha(aResult);
    aResult.dots_per_inch_x = objHeader.dots_per_inch_x;
    aResult.dots_per_inch_y = objHeader.dots_per_inch_y;
    aImage = std::move(aResult);
    return true;
}

static bool bDecode(InputFile& objFile, const BmpFile& objBmp, ImageBuffer& aImage)
{
    if (objBmp.objHeader.storage == DibStorage::kRaw) {
        if (!bDecodeRawFile(objFile, objBmp, aImage))
            return false;
    } else {
        const Bytes aAll = objFile.All();
        if (objBmp.nBitsOffset > aAll.size() ||
            !DecodeDibBits(objBmp.objHeader, aAll.subspan(objBmp.nBitsOffset), aImage))
            return false;
    }
    if (aImage.icc_profile.empty())
        ReadProfile(objFile, objBmp.objHeader, aImage);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& objFile)
{
    BmpFile objBmp;
    if (!bReadHeaders(objFile, objBmp))
        return nullptr;
    return pSinglePage([&objFile, objBmp](ImageBuffer& aImage) { return bDecode(objFile, objBmp, aImage); });
}

static std::uint32_t nDotsPerMetre(double dDotsPerInch)
{
    const double dDots = dDotsPerInch / 0.0254;
    return dDots > 0 && dDots < 1e9 ? static_cast<std::uint32_t>(std::lround(dDots)) : 0;
}

static void WriteHeaders(const ImageBuffer& aImage, std::uint64_t nStride, OutputFile& objOut)
{
    const bool bGrey = aImage.channels == 1;
    const std::uint64_t nBitsOffset = kFileHeaderSize + kInfoHeaderSize + (bGrey ? kPaletteSize : 0);
    const std::uint64_t nBits = nStride * static_cast<std::uint64_t>(aImage.height);
    objOut.WriteU8('B');
    objOut.WriteU8('M');
    objOut.WriteU32Le(static_cast<std::uint32_t>(nBitsOffset + nBits));
    objOut.WriteU32Le(0);
    objOut.WriteU32Le(static_cast<std::uint32_t>(nBitsOffset));
    objOut.WriteU32Le(kInfoHeaderSize);
    objOut.WriteU32Le(static_cast<std::uint32_t>(aImage.width));
    objOut.WriteU32Le(static_cast<std::uint32_t>(aImage.height));
    objOut.WriteU16Le(1);
    objOut.WriteU16Le(bGrey ? 8 : 24);
    objOut.WriteU32Le(0);
    objOut.WriteU32Le(static_cast<std::uint32_t>(nBits));
    objOut.WriteU32Le(nDotsPerMetre(aImage.dots_per_inch_x));
    objOut.WriteU32Le(nDotsPerMetre(aImage.dots_per_inch_y));
    objOut.WriteU32Le(bGrey ? 256 : 0);
    objOut.WriteU32Le(0);
    for (std::uint32_t nGrey = 0; bGrey && nGrey < 256; ++nGrey)
        objOut.WriteU32Le(nGrey * 0x10101);
}

static bool bEncode(const ImageBuffer& aImage, const SaveSettings&, OutputFile& objOut)
{
    const std::uint64_t nRowSize =
        static_cast<std::uint64_t>(aImage.width) * static_cast<std::uint64_t>(aImage.channels);
    const std::uint64_t nStride = (nRowSize + 3) / 4 * 4;
    const auto nHeight = static_cast<std::uint64_t>(aImage.height);
    if (nStride * nHeight > UINT32_MAX - 2 * kPaletteSize)  // the header's fields for sizes have 32 bits
        return false;
    WriteHeaders(aImage, nStride, objOut);

    // Row by row from below, gathered into large writes: handing the kernel the rows as they lie in the
    // picture costs it three times as much.
    static constexpr std::array<std::uint8_t, 3> kFilling{};
    for (std::uint64_t y = nHeight; y-- > 0;) {
        objOut.Write(Bytes(aImage.bytes).subspan(y * nRowSize, nRowSize));
        objOut.Write(Bytes(kFilling).first(nStride - nRowSize));
    }
    return !objOut.Failed();
}

const Codec codecBmp{2, false, false, Sniff, Open, bEncode};
