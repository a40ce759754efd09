// WMF records that lay bitmaps on the picture.
#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/device_bitmaps.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

enum BitmapNumber : std::uint8_t {
    kPatBlt = 0x1D,
    kBitBlt = 0x22,
    kStretchBlt = 0x23,
    kSetDibToDevice = 0x33,
    kDibBitBlt = 0x40,
    kDibStretchBlt = 0x41,
    kStretchDib = 0x43,
};

static Rect rcOf(Point ptCorner, Point ptSize)
{
    return {ptCorner.x, ptCorner.y, ptCorner.x + ptSize.x, ptCorner.y + ptSize.y};
}

static Bitmap16Source objReadBitmap16(ByteReader& rd)
{
    Bitmap16Source objBitmap;
    rd.U16Le();  // type
    objBitmap.lWidth = rd.I16Le();
    objBitmap.lHeight = rd.I16Le();
    objBitmap.nBytesPerRow = rd.U16Le();
    rd.U8();  // planes
    objBitmap.nBitsPerPixel = rd.U8();
    objBitmap.aBits = rd.Take(rd.Left());
    return objBitmap;
}

static Outcome ePatBlt(DeviceContext& dc, ByteReader& rd)
{
    const auto nRop3 = static_cast<std::uint8_t>(rd.U32Le() >> 16);
    const Point ptSize = ptReadYX(rd);
    const Point ptDest = ptReadYX(rd);
    if (rd.Failed())
        return Outcome::Broken;
    if (!bUsesSource(nRop3))
        PaintRect(dc, rcOf(ptDest, ptSize), nRop3);
    return Outcome::Done;
}

// BitBlt and StretchBlt with either kind of bitmap, or with the picture itself as source.
static Outcome eBlit(DeviceContext& dc, const WmfRecord& objRecord)
{
    const std::uint8_t nNumber = objRecord.Number();
    const bool bStretch = nNumber == kStretchBlt || nNumber == kDibStretchBlt;
    const bool bDib = nNumber == kDibBitBlt || nNumber == kDibStretchBlt;
    ByteReader rd = objRecord.Data();
    const auto nRop3 = static_cast<std::uint8_t>(rd.U32Le() >> 16);
    Point ptSourceSize = bStretch ? ptReadYX(rd) : Point{};
    const Point ptSource = ptReadYX(rd);
    if (objRecord.WithoutBitmap())
        rd.U16Le();
    const Point ptDestSize = ptReadYX(rd);
    const Point ptDest = ptReadYX(rd);
    if (rd.Failed())
        return Outcome::Broken;
    if (!bStretch)
        ptSourceSize = ptDestSize;
    const Rect rcDest = rcOf(ptDest, ptDestSize);
    if (!bUsesSource(nRop3)) {
        PaintRect(dc, rcDest, nRop3);
        return Outcome::Done;
    }
    const Corners objCorners = objCornersOf(rcDest, dc.LogicalToPicture());
    ImageBuffer aImage;
    if (objRecord.WithoutBitmap()) {
        if (bCopyPicture(dc, rcOf(ptSource, ptSourceSize), aImage)) {
            const Rect rcAll{0, 0, static_cast<double>(aImage.width), static_cast<double>(aImage.height)};
            DrawBitmap(dc, {aImage, rcAll}, objCorners, nRop3);
        }
        return Outcome::Done;
    }
    const bool bGood =
        bDib ? bDecoded(objPackedDib(rd.Take(rd.Left()), false), dc, DibColors::AsStored, aImage)
             : bDecoded(objReadBitmap16(rd), dc, aImage);
    if (!bGood)
        return Outcome::Broken;
    DrawBitmap(dc, {aImage, rcOf(ptSource, ptSourceSize)}, objCorners, nRop3);
    return Outcome::Done;
}

static Outcome eStretchDib(DeviceContext& dc, ByteReader& rd)
{
    const auto nRop3 = static_cast<std::uint8_t>(rd.U32Le() >> 16);
    const std::uint16_t nUsage = rd.U16Le();
    const Point ptSourceSize = ptReadYX(rd);
    Point ptSource = ptReadYX(rd);
    const Point ptDestSize = ptReadYX(rd);
    const Point ptDest = ptReadYX(rd);
    if (rd.Failed())
        return Outcome::Broken;
    const Rect rcDest = rcOf(ptDest, ptDestSize);
    if (!bUsesSource(nRop3)) {
        PaintRect(dc, rcDest, nRop3);
        return Outcome::Done;
    }
    const DibSource objDib = objPackedDib(rd.Take(rd.Left()), nUsage == 1);
    const auto objShape = objDibShape(objDib.aHeader);
    ImageBuffer aImage;
    if (!objShape || !bDecoded(objDib, dc, DibColors::AsStored, aImage))
        return Outcome::Broken;
    // The rows of an ordinary bitmap, which is stored from the bottom up, are counted from the bottom.
    if (!objShape->bTopDown)
        ptSource.y = static_cast<double>(objShape->lHeight) - ptSource.y - ptSourceSize.y;
    DrawBitmap(dc, {aImage, rcOf(ptSource, ptSourceSize)}, objCornersOf(rcDest, dc.LogicalToPicture()),
               nRop3);
    return Outcome::Done;
}

static Outcome eSetDib(DeviceContext& dc, ByteReader& rd)
{
    const std::uint16_t nUsage = rd.U16Le();
    const std::int64_t lRows = rd.U16Le();
    const std::int64_t lFirstRow = rd.U16Le();
    Point ptSource = ptReadYX(rd);
    const Point ptSize = ptReadYX(rd);
    const Point ptDest = ptReadYX(rd);
    if (rd.Failed())
        return Outcome::Broken;
    DibSource objDib = objPackedDib(rd.Take(rd.Left()), nUsage == 1);
    const auto objShape = objDibShape(objDib.aHeader);
    if (!objShape)
        return Outcome::Broken;
    if (lRows == 0)
        return Outcome::Done;
    const std::int64_t lThere = std::min(lRows, objShape->lHeight);
    const std::vector<std::uint8_t> aHeader = aWithHeight(objDib.aHeader, *objShape, lThere);
    objDib.aHeader = aHeader;
    ImageBuffer aImage;
    if (!bDecoded(objDib, dc, DibColors::AsStored, aImage))
        return Outcome::Broken;
    if (!objShape->bTopDown)
        ptSource.y = static_cast<double>(objShape->lHeight) - ptSource.y - ptSize.y;
    ptSource.y -=
        static_cast<double>(objShape->bTopDown ? lFirstRow : objShape->lHeight - lFirstRow - lThere);
    // There is no device whose pixels the size could be counted in: they are taken for units like all others.
    DrawBitmap(dc, {aImage, rcOf(ptSource, ptSize)},
               objCornersOf(rcOf(ptDest, ptSize), dc.LogicalToPicture()), kRopSourceCopy);
    return Outcome::Done;
}

Outcome ePlayWmfBitmap(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    switch (objRecord.Number()) {
        case kPatBlt:
            return ePatBlt(objPlay.dc, rd);
        case kBitBlt:
        case kStretchBlt:
        case kDibBitBlt:
        case kDibStretchBlt:
            return eBlit(objPlay.dc, objRecord);
        case kStretchDib:
            return eStretchDib(objPlay.dc, rd);
        case kSetDibToDevice:
            return eSetDib(objPlay.dc, rd);
        default:
            return Outcome::NotMine;
    }
}
