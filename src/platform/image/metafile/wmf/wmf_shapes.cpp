// WMF records of lines, shapes, regions and floods.
#include "src/platform/image/metafile/device/device_fills.h"
#include "src/platform/image/metafile/device/device_regions.h"
#include "src/platform/image/metafile/records/shape_records.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

enum ShapeNumber : std::uint8_t {
    kLineTo = 0x13,
    kMoveTo = 0x14,
    kArc = 0x17,
    kEllipse = 0x18,
    kFloodFill = 0x19,
    kPie = 0x1A,
    kRectangle = 0x1B,
    kRoundRect = 0x1C,
    kSetPixel = 0x1F,
    kPolygon = 0x24,
    kPolyline = 0x25,
    kFillRegion = 0x28,
    kFrameRegion = 0x29,
    kInvertRegion = 0x2A,
    kPaintRegion = 0x2B,
    kChord = 0x30,
    kPolyPolygon = 0x38,
    kExtFloodFill = 0x48,
};

static bool bReadPoints(ByteReader& rd, std::uint64_t nCount, std::vector<Point>& aPoints)
{
    if (rd.Failed() || rd.Left() / 4 < nCount)
        return false;
    aPoints.resize(nCount);
    for (Point& pt : aPoints) {
        pt.x = rd.I16Le();
        pt.y = rd.I16Le();
    }
    return true;
}

static Outcome ePolyPolygon(DeviceContext& dc, ByteReader& rd)
{
    const std::uint16_t nFigures = rd.U16Le();
    if (rd.Failed() || rd.Left() / 2 < nFigures)
        return Outcome::Broken;
    std::vector<std::uint16_t> aCounts(nFigures);
    std::uint64_t nSum = 0;
    for (std::uint16_t& nCount : aCounts)
        nSum += nCount = rd.U16Le();
    std::vector<Point> aPoints;
    if (!bReadPoints(rd, nSum, aPoints))
        return Outcome::Broken;
    Outline objShape;
    std::size_t nPoint = 0;
    for (const std::uint16_t nCount : aCounts) {
        if (nCount == 0)
            continue;
        objShape.MoveTo(aPoints[nPoint]);
        for (std::size_t n = 1; n < nCount; ++n)
            objShape.LineTo(aPoints[nPoint + n]);
        objShape.Close();
        nPoint += nCount;
    }
    dc.Draw(objShape, ShapeParts::Both);
    return Outcome::Done;
}

static Outcome ePoints(DeviceContext& dc, ByteReader& rd, bool bClosed)
{
    std::vector<Point> aPoints;
    const std::uint16_t nCount = rd.U16Le();
    if (!bReadPoints(rd, nCount, aPoints))
        return Outcome::Broken;
    if (bClosed)
        DrawPolygon(dc, aPoints);
    else
        DrawPolyline(dc, aPoints);
    return Outcome::Done;
}

static Outcome eArc(DeviceContext& dc, ByteReader& rd, ArcKind eKind)
{
    const Point ptEnd = ptReadYX(rd);
    const Point ptStart = ptReadYX(rd);
    const Rect rc = rcReadReversed(rd);
    if (rd.Failed())
        return Outcome::Broken;
    DrawArc(dc, rc, ptStart, ptEnd, eKind);
    return Outcome::Done;
}

static Outcome eRegion(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    ByteReader rd = objRecord.Data();
    const Object& objRegion = objNumbered(objPlay, rd.U16Le());
    const bool bNamesBrush = objRecord.Number() == kFillRegion || objRecord.Number() == kFrameRegion;
    const Object& objBrush = objNumbered(objPlay, bNamesBrush ? rd.U16Le() : 0xFFFF);
    const Point ptFrame = objRecord.Number() == kFrameRegion ? ptReadYX(rd) : Point{};
    if (rd.Failed())
        return Outcome::Broken;
    const auto* ppRegion = std::get_if<std::shared_ptr<const Region>>(&objRegion);
    const auto* ppBrush =
        bNamesBrush ? std::get_if<std::shared_ptr<const Brush>>(&objBrush) : &dc.State.pBrush;
    if (!ppRegion || !ppBrush || (*ppRegion)->aRects.empty())
        return Outcome::Done;
    if (objRecord.Number() == kInvertRegion)
        InvertRegion(dc, **ppRegion);
    else if (objRecord.Number() == kFrameRegion)
        FrameRegion(dc, **ppRegion, *ppBrush, ptFrame.x, ptFrame.y);
    else
        FillRegion(dc, **ppRegion, *ppBrush);
    return Outcome::Done;
}

static Outcome eBox(DeviceContext& dc, const WmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    const bool bRound = objRecord.Number() == kRoundRect;
    const Point ptCorner = bRound ? ptReadYX(rd) : Point{};
    const Rect rc = rcReadReversed(rd);
    if (rd.Failed())
        return Outcome::Broken;
    if (bRound)
        DrawRoundRect(dc, rc, ptCorner.x, ptCorner.y);
    else if (objRecord.Number() == kEllipse)
        DrawEllipse(dc, rc);
    else
        DrawRectangle(dc, rc);
    return Outcome::Done;
}

Outcome ePlayWmfShape(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    ByteReader rd = objRecord.Data();
    switch (objRecord.Number()) {
        case kMoveTo:
            dc.MoveTo(ptReadYX(rd));
            return eOutcome(!rd.Failed());
        case kLineTo: {
            const Point pt = ptReadYX(rd);
            if (!rd.Failed())
                dc.LinesTo({&pt, 1});
            return eOutcome(!rd.Failed());
        }
        case kEllipse:
        case kRectangle:
        case kRoundRect:
            return eBox(dc, objRecord);
        case kArc:
            return eArc(dc, rd, ArcKind::Arc);
        case kPie:
            return eArc(dc, rd, ArcKind::Pie);
        case kChord:
            return eArc(dc, rd, ArcKind::Chord);
        case kPolygon:
        case kPolyline:
            return ePoints(dc, rd, objRecord.Number() == kPolygon);
        case kPolyPolygon:
            return ePolyPolygon(dc, rd);
        case kSetPixel: {
            const ColorRef nColor = rd.U32Le();
            const Point pt = ptReadYX(rd);
            if (!rd.Failed())
                SetPixel(dc, pt, nColor);
            return eOutcome(!rd.Failed());
        }
        case kFloodFill:
        case kExtFloodFill: {
            const bool bOverColor = objRecord.Number() == kExtFloodFill && rd.U16Le() == 1;
            const ColorRef nColor = rd.U32Le();
            const Point pt = ptReadYX(rd);
            if (!rd.Failed())
                FloodFill(dc, pt, nColor, bOverColor);
            return eOutcome(!rd.Failed());
        }
        case kFillRegion:
        case kFrameRegion:
        case kInvertRegion:
        case kPaintRegion:
            return eRegion(objPlay, objRecord);
        default:
            return Outcome::NotMine;
    }
}
