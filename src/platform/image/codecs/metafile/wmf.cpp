// Recognises WMF files, finds their size, and hands them to the player.
#include "src/platform/image/codecs/metafile/wmf.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/metafile/metafile_dib.h"
#include "src/platform/image/codecs/metafile/metafile_module.h"
#include "src/platform/image/codecs/metafile/wmf_header.h"
#include "src/platform/image/codecs/metafile/wmf_writer.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/dib/dib.h"

static constexpr std::int32_t kWmfType = 11;
static constexpr double kPixelsPerInch = 96;
/// A window without a unit of length is often 20,000 wide, only so as to place points finely.
static constexpr double kMostPixelsWithoutUnit = 4096;

static constexpr std::uint16_t kStretchDib = 0x0F43;
static constexpr std::uint32_t kSourceCopy = 0x00CC0020;

static bool Sniff(Bytes aHead, std::string_view)
{
    return bIsWmf(aHead);
}

static void SetSize(double dWidth, double dHeight, double dUnitsPerInch, MetafileRequest& objRequest)
{
    double dScale = dUnitsPerInch > 0 ? kPixelsPerInch / dUnitsPerInch : 1;
    if (dUnitsPerInch <= 0)
        dScale = std::min(1.0, kMostPixelsWithoutUnit / std::max(std::abs(dWidth), std::abs(dHeight)));
    const auto lPixels = [dScale](double d) {
        return static_cast<std::int32_t>(std::clamp(std::floor(std::abs(d) * dScale + 0.5), 1.0, 1e9));
    };
    objRequest.lWidth = lPixels(dWidth);
    objRequest.lHeight = lPixels(dHeight);
    objRequest.dWindowWidth = dWidth;
    objRequest.dWindowHeight = dHeight;
}

// Size and window: from the placeable header, or the first window that is set, or what is drawn on.
static bool bFindSize(const WmfHeader& objHeader, const WmfRecords& objWalk, MetafileRequest& objRequest)
{
    if (objHeader.bPlaceable) {
        objRequest.dWindowLeft = objHeader.dLeft;
        objRequest.dWindowTop = objHeader.dTop;
        SetSize(objHeader.dWidth, objHeader.dHeight, objHeader.dUnitsPerInch, objRequest);
        return true;
    }
    if (objWalk.dWindowWidth) {
        objRequest.dWindowLeft = objWalk.dWindowLeft.value_or(0);
        objRequest.dWindowTop = objWalk.dWindowTop.value_or(0);
        SetSize(*objWalk.dWindowWidth, *objWalk.dWindowHeight, 0, objRequest);
        return true;
    }
    const MetafileModule objModule = objMetafileModule();
    MetafileBounds objBounds;
    if (!objModule.pMeasure || !objModule.pMeasure(&objRequest, &objBounds))
        return false;
    objRequest.dWindowLeft = objBounds.lLeft;
    objRequest.dWindowTop = objBounds.lTop;
    SetSize(objBounds.lRight - objBounds.lLeft, objBounds.lBottom - objBounds.lTop, 0, objRequest);
    return true;
}

// A metafile that sets its window and shows one picture over all of it is that picture, and needs no player.
static bool bOnlyPicture(const MetafileRequest& objRequest, ImageBuffer& aImage)
{
    Bytes aPicture;
    double dLeft = objRequest.dWindowLeft, dTop = objRequest.dWindowTop;
    double dWidth = objRequest.dWindowWidth, dHeight = objRequest.dWindowHeight;
    Bytes aLeft = objRequest.aRecords;
    for (;;) {
        ByteReader rd(aLeft);
        const std::uint64_t nSize = std::uint64_t{rd.U32Le()} * 2;
        const std::uint16_t nFunction = rd.U16Le();
        if (nFunction == 0)
            break;
        const std::int16_t iFirst = rd.I16Le();
        const std::int16_t iSecond = rd.I16Le();
        if (nFunction == kStretchDib && aPicture.empty())
            aPicture = aLeft.first(nSize).subspan(6);
        else if (nFunction == 0x020B && nSize >= 10 && aPicture.empty()) {
            dTop = iFirst;
            dLeft = iSecond;
        } else if (nFunction == 0x020C && nSize >= 10 && aPicture.empty()) {
            dHeight = iFirst;
            dWidth = iSecond;
        } else if (nFunction != 0x0107 && !(nFunction == 0x0103 && iFirst == 8))
            return false;
        aLeft = aLeft.subspan(nSize);
    }
    ByteReader rd(aPicture);
    const bool bCopies = rd.U32Le() == kSourceCopy && rd.U16Le() == 0;
    const std::int16_t iSourceHeight = rd.I16Le();
    const std::int16_t iSourceWidth = rd.I16Le();
    const bool bFromCorner = rd.I16Le() == 0 && rd.I16Le() == 0;
    const double dTargetHeight = rd.I16Le(), dTargetWidth = rd.I16Le();
    const double dTargetTop = rd.I16Le(), dTargetLeft = rd.I16Le();
    if (rd.Failed() || !bCopies || !bFromCorner || iSourceWidth != objRequest.lWidth ||
        iSourceHeight != objRequest.lHeight || dTargetWidth != dWidth || dTargetHeight != dHeight ||
        dTargetTop != dTop || dTargetLeft != dLeft)
        return false;
    const Bytes aDib = rd.Take(rd.Left());
    DibHeader objDib;
    return ReadDibHeader(aDib, objDib) && objDib.bits_offset <= aDib.size() &&
           bDecodeOnlyBitmap(aDib.first(objDib.bits_offset), aDib.subspan(objDib.bits_offset),
                             objRequest.lWidth, objRequest.lHeight, aImage);
}

static bool bDecode(InputFile& objFile, const WmfHeader& objHeader, ImageBuffer& aImage)
{
    const Bytes aFile = objFile.All();
    if (objHeader.nRecordsOffset > aFile.size())
        return false;
    MetafileRequest objRequest;
    objRequest.aRecords = aFile.subspan(objHeader.nRecordsOffset);
    objRequest.nObjects = objHeader.nObjects;
    objRequest.DecodeDib = DecodeDib;
    const WmfRecords objWalk = objWalkWmf(objRequest.aRecords);
    if (!objWalk.bWhole || !bFindSize(objHeader, objWalk, objRequest))
        return false;
    const auto nWidth = static_cast<std::uint64_t>(objRequest.lWidth);
    const auto nHeight = static_cast<std::uint64_t>(objRequest.lHeight);
    if (!IsSizeAllowed(nWidth, nHeight))
        return false;
    ImageBuffer aResult;
    if (!bOnlyPicture(objRequest, aResult)) {
        const MetafileModule objModule = objMetafileModule();
        if (!objModule.pPlay || !Allocate(aResult, nWidth, nHeight, 3))
            return false;
        objRequest.pPixels = aResult.bytes.data();
        if (!objModule.pPlay(&objRequest))
            return false;
    }
    const double dDots = objHeader.dUnitsPerInch > 0 ? kPixelsPerInch : 0;
    aResult.dots_per_inch_x = aResult.dots_per_inch_y = dDots;
    aImage = std::move(aResult);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& objFile)
{
    const auto objHeader = objReadWmfHeader(objFile.Head());
    if (!objHeader)
        return nullptr;
    return pSinglePage(
        [&objFile, objHeader](ImageBuffer& aImage) { return bDecode(objFile, *objHeader, aImage); });
}

const Codec codecWmf{kWmfType, false, false, Sniff, Open, bWriteWmf};
