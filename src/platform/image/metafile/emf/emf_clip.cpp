// EMF records on clipping, path brackets and regions.
#include "src/platform/image/metafile/device/device_regions.h"
#include "src/platform/image/metafile/emf/emf_player.h"

enum ClipRecord : std::uint32_t {
    kOffsetClip = 26,
    kSetMetaRegion = 28,
    kExcludeClipRect = 29,
    kIntersectClipRect = 30,
    kBeginPath = 59,
    kEndPath = 60,
    kCloseFigure = 61,
    kFillPath = 62,
    kStrokeAndFillPath = 63,
    kStrokePath = 64,
    kFlattenPath = 65,
    kWidenPath = 66,
    kSelectClipPath = 67,
    kAbortPath = 68,
    kFillRegion = 71,
    kFrameRegion = 72,
    kInvertRegion = 73,
    kPaintRegion = 74,
    kExtSelectClipRegion = 75,
};

static bool bClipMode(std::uint32_t nMode)
{
    return nMode >= 1 && nMode <= 5;
}

static Outcome eOffsetClip(DeviceContext& dc, ByteReader& rd)
{
    const Point ptMove = dc.LogicalToPicture().ApplyToVector(ptRead(rd));
    const auto lWhole = [](double d) { return static_cast<std::int32_t>(std::floor(dTamed(d) + 0.5)); };
    dc.State.clip = Moved(dc.State.clip, lWhole(ptMove.x), lWhole(ptMove.y), dc.Target().Area(), dc.Work());
    return eOutcome(!rd.Failed());
}

static Outcome eClipRect(DeviceContext& dc, ByteReader& rd, ClipMode eMode)
{
    const Rect rc = rcRead(rd);
    dc.CombineClip(dc.ClipOf({&rc, 1}, dc.LogicalToPicture()), eMode);
    return eOutcome(!rd.Failed());
}

static Outcome eSelectRegion(DeviceContext& dc, ByteReader& rd)
{
    const std::uint32_t nSize = rd.U32Le();
    const std::uint32_t nMode = rd.U32Le();
    if (rd.Failed() || !bClipMode(nMode))
        return Outcome::Broken;
    if (nSize == 0) {  // no region: no clip
        dc.ResetClip();
        return Outcome::Done;
    }
    const auto objRegion = objReadRegion(rd);
    if (!objRegion)
        return Outcome::Broken;
    // These rectangles are in units of the device.
    const Clip clip = objRegion->aRects.empty() ? Clip{} : dc.ClipOf(objRegion->aRects, dc.DeviceToPicture());
    dc.CombineClip(clip, static_cast<ClipMode>(nMode));
    return Outcome::Done;
}

static Outcome ePaintRegion(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    rd.U32Le();  // size of the region
    const bool bNamesBrush = objRecord.nType == kFillRegion || objRecord.nType == kFrameRegion;
    const std::uint32_t nBrush = bNamesBrush ? rd.U32Le() : 0;
    const Point ptStroke = objRecord.nType == kFrameRegion ? ptRead(rd) : Point{};
    const auto objRegion = objReadRegion(rd);
    if (!objRegion)
        return Outcome::Broken;
    if (objRegion->aRects.empty())
        return Outcome::Done;
    if (objRecord.nType == kInvertRegion) {
        InvertRegion(dc, *objRegion);
        return Outcome::Done;
    }
    std::shared_ptr<const Brush> pBrush = dc.State.pBrush;
    if (bNamesBrush) {
        const Object objNamed =
            (nBrush & 0x80000000) != 0 ? objStock(nBrush & 0x7FFFFFFF) : objNumbered(objPlay, nBrush);
        const auto* ppBrush = std::get_if<std::shared_ptr<const Brush>>(&objNamed);
        if (!ppBrush)
            return Outcome::Done;
        pBrush = *ppBrush;
    }
    if (objRecord.nType == kFrameRegion)
        FrameRegion(dc, *objRegion, pBrush, ptStroke.x, ptStroke.y);
    else
        FillRegion(dc, *objRegion, pBrush);
    return Outcome::Done;
}

Outcome ePlayClip(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    ByteReader rd = objRecord.Data();
    switch (objRecord.nType) {
        case kOffsetClip:
            return eOffsetClip(dc, rd);
        case kSetMetaRegion:
            dc.SetMetaClip();
            return Outcome::Done;
        case kExcludeClipRect:
            return eClipRect(dc, rd, ClipMode::Difference);
        case kIntersectClipRect:
            return eClipRect(dc, rd, ClipMode::And);
        case kExtSelectClipRegion:
            return eSelectRegion(dc, rd);
        case kBeginPath:
            dc.BeginPath();
            return Outcome::Done;
        case kEndPath:
            dc.EndPath();
            return Outcome::Done;
        case kCloseFigure:
            dc.CloseFigure();
            return Outcome::Done;
        case kFillPath:
            dc.PaintPath(ShapeParts::Fill);
            return Outcome::Done;
        case kStrokeAndFillPath:
            dc.PaintPath(ShapeParts::Both);
            return Outcome::Done;
        case kStrokePath:
            dc.PaintPath(ShapeParts::Line);
            return Outcome::Done;
        case kFlattenPath:
            return Outcome::Done;  // curves as many short lines look as they did
        case kWidenPath:
            dc.WidenPath();
            return Outcome::Done;
        case kSelectClipPath: {
            const std::uint32_t nMode = rd.U32Le();
            if (bClipMode(nMode))
                dc.SelectClipPath(static_cast<ClipMode>(nMode));
            return eOutcome(!rd.Failed());
        }
        case kAbortPath:
            dc.AbortPath();
            return Outcome::Done;
        case kFillRegion:
        case kFrameRegion:
        case kInvertRegion:
        case kPaintRegion:
            return ePaintRegion(objPlay, objRecord);
        default:
            return Outcome::NotMine;
    }
}
