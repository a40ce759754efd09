// EMF records that lay bitmaps on the picture.
#include <array>

#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/device_bitmaps.h"
#include "src/platform/image/metafile/emf/emf_player.h"

enum BitmapRecord : std::uint32_t {
    kBitBlt = 76,
    kStretchBlt = 77,
    kMaskBlt = 78,
    kPlgBlt = 79,
    kSetDibitsToDevice = 80,
    kStretchDibits = 81,
    kAlphaBlend = 114,
    kTransparentBlt = 116,
};

static constexpr std::uint8_t kAlphaPerPixel = 1;

static Rect rcOf(Point ptCorner, Point ptSize)
{
    return {ptCorner.x, ptCorner.y, ptCorner.x + ptSize.x, ptCorner.y + ptSize.y};
}

/// The source as the transfers of one bitmap describe it.
struct BlitSource {
    Point ptCorner;
    Point ptSize;
    DibSource objDib;
};

// Corner, transform, background and the place of the bitmap: the same fields in the same order in most
// records.
static bool bReadSource(const EmfRecord& objRecord, ByteReader& rd, BlitSource& objSource)
{
    objSource.ptCorner = ptRead(rd);
    const Affine objWorld = objReadTransform(rd);
    rd.U32Le();  // background colour: bitmaps with a palette have their own
    const std::uint32_t nUsage = rd.U32Le();
    const EmfDibPlace objPlace = objReadDibPlace(rd);
    const auto objDib = objDibAt(objRecord, objPlace, nUsage);
    if (rd.Failed() || !objDib)
        return false;
    objSource.objDib = *objDib;
    // The source has a transform of its own, which is the identity unless somebody drew from a scaled
    // context.
    if (objWorld.Finite() && objWorld.xx != 0 && objWorld.yy != 0)
        objSource.ptCorner = objWorld.Apply(objSource.ptCorner);
    return true;
}

static Corners objCornersOfDest(const DeviceContext& dc, const Rect& rcDest)
{
    return objCornersOf(rcDest, dc.LogicalToPicture());
}

static Outcome eBlit(DeviceContext& dc, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    const Point ptDest = ptRead(rd);
    const Point ptDestSize = ptRead(rd);
    const std::uint32_t nRop = rd.U32Le();
    BlitSource objSource;
    if (!bReadSource(objRecord, rd, objSource))
        return Outcome::Broken;
    objSource.ptSize = objRecord.nType == kStretchBlt ? ptRead(rd) : ptDestSize;
    if (rd.Failed())
        return Outcome::Broken;
    const auto nRop3 = static_cast<std::uint8_t>(nRop >> 16);
    const Rect rcDest = rcOf(ptDest, ptDestSize);
    if (objSource.objDib.Empty() || !bUsesSource(nRop3)) {
        if (!bUsesSource(nRop3))
            PaintRect(dc, rcDest, nRop3);
        return Outcome::Done;
    }
    ImageBuffer aImage;
    if (!bDecoded(objSource.objDib, dc, DibColors::AsStored, aImage))
        return Outcome::Broken;
    DrawBitmap(dc, {aImage, rcOf(objSource.ptCorner, objSource.ptSize)}, objCornersOfDest(dc, rcDest), nRop3);
    return Outcome::Done;
}

// Corner of the mask and its bitmap; nothing when it is broken, an empty picture when there is none.
static std::optional<BitmapMask> objReadMask(DeviceContext& dc, const EmfRecord& objRecord, ByteReader& rd)
{
    BitmapMask objMask;
    objMask.lX = static_cast<std::int32_t>(dTamed(rd.I32Le()));
    objMask.lY = static_cast<std::int32_t>(dTamed(rd.I32Le()));
    const std::uint32_t nUsage = rd.U32Le();
    const EmfDibPlace objPlace = objReadDibPlace(rd);
    const auto objDib = objDibAt(objRecord, objPlace, nUsage);
    if (rd.Failed() || !objDib ||
        (!objDib->Empty() && !bDecoded(*objDib, dc, DibColors::AsStored, objMask.aImage)))
        return std::nullopt;
    return objMask;
}

static Outcome eMaskBlt(DeviceContext& dc, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    const Point ptDest = ptRead(rd);
    const Point ptDestSize = ptRead(rd);
    const std::uint32_t nRop4 = rd.U32Le();
    BlitSource objSource;
    if (!bReadSource(objRecord, rd, objSource))
        return Outcome::Broken;
    const auto objMask = objReadMask(dc, objRecord, rd);
    if (!objMask)
        return Outcome::Broken;
    const auto nInside = static_cast<std::uint8_t>(nRop4 >> 16);
    const auto nOutside = static_cast<std::uint8_t>(nRop4 >> 24);
    const Rect rcDest = rcOf(ptDest, ptDestSize);
    if (objSource.objDib.Empty()) {
        if (!bUsesSource(nInside))
            PaintRect(dc, rcDest, nInside);
        return Outcome::Done;
    }
    ImageBuffer aImage;
    if (!bDecoded(objSource.objDib, dc, DibColors::AsStored, aImage))
        return Outcome::Broken;
    DrawBitmap(dc, {aImage, rcOf(objSource.ptCorner, ptDestSize)}, objCornersOfDest(dc, rcDest), nInside,
               objMask->aImage.width > 0 ? &*objMask : nullptr, nOutside);
    return Outcome::Done;
}

static Outcome ePlgBlt(DeviceContext& dc, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    const Affine& objMap = dc.LogicalToPicture();
    Corners objCorners;
    for (Point* pPoint : {&objCorners.ptTopLeft, &objCorners.ptTopRight, &objCorners.ptBottomLeft})
        *pPoint = ptTamed(objMap.Apply(ptRead(rd)));
    // The source's size stands between its corner and the rest.
    BlitSource objSource;
    objSource.ptCorner = ptRead(rd);
    objSource.ptSize = ptRead(rd);
    rd.Take(24 + 4);  // transform, background
    const std::uint32_t nUsage = rd.U32Le();
    const EmfDibPlace objPlace = objReadDibPlace(rd);
    const auto objDib = objDibAt(objRecord, objPlace, nUsage);
    const auto objMask = objReadMask(dc, objRecord, rd);
    if (!objDib || !objMask)
        return Outcome::Broken;
    ImageBuffer aImage;
    if (objDib->Empty())
        return Outcome::Done;
    if (!bDecoded(*objDib, dc, DibColors::AsStored, aImage))
        return Outcome::Broken;
    DrawBitmap(dc, {aImage, rcOf(objSource.ptCorner, objSource.ptSize)}, objCorners, kRopSourceCopy,
               objMask->aImage.width > 0 ? &*objMask : nullptr, kRopNothing);
    return Outcome::Done;
}

// These two count the rows of an ordinary bitmap, which is stored from the bottom up, from the bottom.
static Rect rcFromBottom(const DibShape& objShape, Point ptCorner, Point ptSize)
{
    if (!objShape.bTopDown)
        ptCorner.y = static_cast<double>(objShape.lHeight) - ptCorner.y - ptSize.y;
    return rcOf(ptCorner, ptSize);
}

static Outcome eStretchDib(DeviceContext& dc, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    const Point ptDest = ptRead(rd);
    const Point ptSource = ptRead(rd);
    const Point ptSourceSize = ptRead(rd);
    const EmfDibPlace objPlace = objReadDibPlace(rd);
    const std::uint32_t nUsage = rd.U32Le();
    const auto nRop3 = static_cast<std::uint8_t>(rd.U32Le() >> 16);
    const Point ptDestSize = ptRead(rd);
    const auto objDib = objDibAt(objRecord, objPlace, nUsage);
    if (rd.Failed() || !objDib)
        return Outcome::Broken;
    const Rect rcDest = rcOf(ptDest, ptDestSize);
    if (objDib->Empty() || !bUsesSource(nRop3)) {
        if (!bUsesSource(nRop3))
            PaintRect(dc, rcDest, nRop3);
        return Outcome::Done;
    }
    const auto objShape = objDibShape(objDib->aHeader);
    ImageBuffer aImage;
    if (!objShape || !bDecoded(*objDib, dc, DibColors::AsStored, aImage))
        return Outcome::Broken;
    DrawBitmap(dc, {aImage, rcFromBottom(*objShape, ptSource, ptSourceSize)}, objCornersOfDest(dc, rcDest),
               nRop3);
    return Outcome::Done;
}

static Outcome eSetDib(DeviceContext& dc, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    const Point ptDest = ptRead(rd);
    const Point ptSource = ptRead(rd);
    const Point ptSize = ptRead(rd);
    const EmfDibPlace objPlace = objReadDibPlace(rd);
    const std::uint32_t nUsage = rd.U32Le();
    const std::int64_t lFirstRow = rd.U32Le();
    const std::int64_t lRows = rd.U32Le();
    const auto objDib = objDibAt(objRecord, objPlace, nUsage);
    if (rd.Failed() || !objDib)
        return Outcome::Broken;
    if (objDib->Empty() || lRows == 0)
        return Outcome::Done;
    const auto objShape = objDibShape(objDib->aHeader);
    if (!objShape)
        return Outcome::Broken;
    // Only some rows of the bitmap may be there; the header speaks of all of them.
    DibSource objRows = *objDib;
    const std::vector<std::uint8_t> aHeader =
        aWithHeight(objDib->aHeader, *objShape, std::min(lRows, objShape->lHeight));
    objRows.aHeader = aHeader;
    ImageBuffer aImage;
    if (!bDecoded(objRows, dc, DibColors::AsStored, aImage))
        return Outcome::Broken;
    Rect rcSource = rcFromBottom(*objShape, ptSource, ptSize);
    const double dAbove =
        static_cast<double>(objShape->bTopDown ? lFirstRow : objShape->lHeight - lFirstRow - aImage.height);
    rcSource.dTop -= dAbove;
    rcSource.dBottom -= dAbove;
    // The size on the device is that of the source, whatever the map mode.
    const Point ptOrigin = dc.LogicalToPicture().Apply(ptDest);
    const Affine& objDevice = dc.DeviceToPicture();
    const Point ptRight = objDevice.ApplyToVector({ptSize.x, 0});
    const Point ptDown = objDevice.ApplyToVector({0, ptSize.y});
    DrawBitmap(dc, {aImage, rcSource},
               {ptTamed(ptOrigin), ptTamed(ptOrigin + ptRight), ptTamed(ptOrigin + ptDown)}, kRopSourceCopy);
    return Outcome::Done;
}

static Outcome eBlend(DeviceContext& dc, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    const Point ptDest = ptRead(rd);
    const Point ptDestSize = ptRead(rd);
    const std::uint32_t nHow = rd.U32Le();
    BlitSource objSource;
    if (!bReadSource(objRecord, rd, objSource))
        return Outcome::Broken;
    objSource.ptSize = ptRead(rd);
    if (rd.Failed())
        return Outcome::Broken;
    if (objSource.objDib.Empty())
        return Outcome::Done;
    const bool bBlend = objRecord.nType == kAlphaBlend;
    const bool bOwnAlpha = bBlend && (nHow >> 24 & kAlphaPerPixel) != 0;
    ImageBuffer aImage;
    if (!bDecoded(objSource.objDib, dc, bOwnAlpha ? DibColors::WithAlpha : DibColors::AsStored, aImage))
        return Outcome::Broken;
    const auto objShape = objDibShape(objSource.objDib.aHeader);
    const bool bHasAlpha = bOwnAlpha && objShape && objShape->nBits == 32;
    const BitmapPart objPart{aImage, rcOf(objSource.ptCorner, objSource.ptSize)};
    const Corners objCorners = objCornersOfDest(dc, rcOf(ptDest, ptDestSize));
    if (bBlend)
        BlendBitmap(dc, objPart, objCorners, nHow >> 16 & 255, bHasAlpha);
    else
        DrawBitmapBut(dc, objPart, objCorners, dc.Resolved(nHow));
    return Outcome::Done;
}

Outcome ePlayBitmap(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    switch (objRecord.nType) {
        case kBitBlt:
        case kStretchBlt:
            return eBlit(objPlay.dc, objRecord);
        case kMaskBlt:
            return eMaskBlt(objPlay.dc, objRecord);
        case kPlgBlt:
            return ePlgBlt(objPlay.dc, objRecord);
        case kSetDibitsToDevice:
            return eSetDib(objPlay.dc, objRecord);
        case kStretchDibits:
            return eStretchDib(objPlay.dc, objRecord);
        case kAlphaBlend:
        case kTransparentBlt:
            return eBlend(objPlay.dc, objRecord);
        default:
            return Outcome::NotMine;
    }
}
