// Recognises EMF files, hands them to the player, and knows those that only hold a picture.
#include "src/platform/image/codecs/metafile/emf.h"

#include <cmath>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/metafile/emf_header.h"
#include "src/platform/image/codecs/metafile/emf_writer.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"
#include "src/platform/image/codecs/metafile/metafile_module.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/dib/dib.h"

static constexpr std::int32_t kEmfType = 5;
static constexpr double kPixelsPerInch = 96;

static constexpr std::uint32_t kEndRecord = 14;
static constexpr std::uint32_t kSetStretchBltMode = 21;
static constexpr std::uint32_t kComment = 70;
static constexpr std::uint32_t kStretchDibits = 81;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

static bool Sniff(Bytes aHead, std::string_view)
{
    return bIsEmf(aHead);
}

// From the pixels of the reference device to those of the picture.
static void SetMapping(const EmfHeader& objHeader, MetafileRequest& objRequest)
{
    const double dPixelX = objHeader.lWidth / objHeader.dFrameWidth;
    const double dPixelY = objHeader.lHeight / objHeader.dFrameHeight;
    objRequest.dScaleX = 100 / objHeader.dDotsPerMillimetreX * dPixelX;
    objRequest.dScaleY = 100 / objHeader.dDotsPerMillimetreY * dPixelY;
    objRequest.dOffsetX = -objHeader.dFrameLeft * dPixelX;
    objRequest.dOffsetY = -objHeader.dFrameTop * dPixelY;
    objRequest.dDotsPerMillimetreX = objHeader.dDotsPerMillimetreX;
    objRequest.dDotsPerMillimetreY = objHeader.dDotsPerMillimetreY;
}

// The bitmap of a record that lays all of it on all of the picture.
static bool bCoversAll(Bytes aRecord, const EmfHeader& objHeader, const MetafileRequest& objRequest,
                       ImageBuffer& aImage)
{
    ByteReader rd(aRecord);
    rd.Take(8 + 16);  // type, size, bounds
    const double dLeft = rd.I32Le();
    const double dTop = rd.I32Le();
    const std::int32_t lSourceX = rd.I32Le();
    const std::int32_t lSourceY = rd.I32Le();
    const std::int32_t lSourceWidth = rd.I32Le();
    const std::int32_t lSourceHeight = rd.I32Le();
    const std::uint64_t nHeaderOffset = rd.U32Le();
    const std::uint64_t nHeaderSize = rd.U32Le();
    const std::uint64_t nBitsOffset = rd.U32Le();
    const std::uint64_t nBitsSize = rd.U32Le();
    const std::uint32_t nUsage = rd.U32Le();
    const std::uint32_t nRop = rd.U32Le();
    const double dWidth = rd.I32Le();
    const double dHeight = rd.I32Le();
    const auto bAt = [](double dScale, double dOffset, double d, double dWanted) {
        return std::floor(d * dScale + dOffset + 0.5) == dWanted;
    };
    const bool bPlaced = bAt(objRequest.dScaleX, objRequest.dOffsetX, dLeft, 0) &&
                         bAt(objRequest.dScaleY, objRequest.dOffsetY, dTop, 0) &&
                         bAt(objRequest.dScaleX, objRequest.dOffsetX, dLeft + dWidth, objHeader.lWidth) &&
                         bAt(objRequest.dScaleY, objRequest.dOffsetY, dTop + dHeight, objHeader.lHeight);
    const bool bWhole = lSourceX == 0 && lSourceY == 0 && lSourceWidth == objHeader.lWidth &&
                        lSourceHeight == objHeader.lHeight;
    if (rd.Failed() || !bPlaced || !bWhole || nUsage != 0 || nRop != kSourceCopy ||
        nHeaderOffset + nHeaderSize > aRecord.size() || nBitsOffset + nBitsSize > aRecord.size())
        return false;
    return bDecodeOnlyBitmap(aRecord.subspan(nHeaderOffset, nHeaderSize),
                             aRecord.subspan(nBitsOffset, nBitsSize), objHeader.lWidth, objHeader.lHeight,
                             aImage);
}

// A metafile that does nothing but show one picture is that picture, grey if it is grey, and needs no player.
static bool bOnlyPicture(Bytes aFile, const EmfHeader& objHeader, const MetafileRequest& objRequest,
                         ImageBuffer& aImage)
{
    Bytes aPicture;
    Bytes aLeft = aFile.subspan(objHeader.nSize);
    for (;;) {
        ByteReader rd(aLeft);
        const std::uint32_t nType = rd.U32Le();
        const std::uint32_t nSize = rd.U32Le();
        if (nType == kEndRecord)
            break;
        if (nType == kStretchDibits && aPicture.empty())
            aPicture = aLeft.first(nSize);
        else if (nType != kSetStretchBltMode && nType != kComment)
            return false;
        aLeft = aLeft.subspan(nSize);
    }
    return !aPicture.empty() && bCoversAll(aPicture, objHeader, objRequest, aImage);
}

static bool bDecode(InputFile& objFile, const EmfHeader& objHeader, ImageBuffer& aImage)
{
    const auto nWidth = static_cast<std::uint64_t>(objHeader.lWidth);
    const auto nHeight = static_cast<std::uint64_t>(objHeader.lHeight);
    if (!IsSizeAllowed(nWidth, nHeight))
        return false;
    const Bytes aFile = objFile.All();
    if (!bEmfIsWhole(aFile))
        return false;
    MetafileRequest objRequest;
    objRequest.bEnhanced = true;
    objRequest.aRecords = aFile;
    objRequest.nObjects = objHeader.nObjects;
    objRequest.lWidth = objHeader.lWidth;
    objRequest.lHeight = objHeader.lHeight;
    objRequest.DecodeDib = DecodeDib;
    SetMapping(objHeader, objRequest);
    ImageBuffer aResult;
    if (!bOnlyPicture(aFile, objHeader, objRequest, aResult)) {
        const MetafileModule objModule = objMetafileModule();
        if (!objModule.pPlay || !Allocate(aResult, nWidth, nHeight, 3))
            return false;
        objRequest.pPixels = aResult.bytes.data();
        if (!objModule.pPlay(&objRequest))
            return false;
    }
    aResult.dots_per_inch_x = aResult.dots_per_inch_y = kPixelsPerInch;
    aImage = std::move(aResult);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& objFile)
{
    const auto objHeader = objReadEmfHeader(objFile.Head());
    if (!objHeader)
        return nullptr;
    return pSinglePage(
        [&objFile, objHeader](ImageBuffer& aImage) { return bDecode(objFile, *objHeader, aImage); });
}

const Codec codecEmf{kEmfType, false, false, Sniff, Open, bWriteEmf};
