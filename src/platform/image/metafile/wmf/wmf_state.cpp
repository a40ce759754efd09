// WMF records that change the state of the device context.
#include "src/platform/image/metafile/wmf/wmf_player.h"

enum StateNumber : std::uint8_t {
    kSetBkColor = 0x01,
    kSetBkMode = 0x02,
    kSetMapMode = 0x03,
    kSetRop2 = 0x04,
    kSetPolyFillMode = 0x06,
    kSetStretchBltMode = 0x07,
    kSetTextCharExtra = 0x08,
    kSetTextColor = 0x09,
    kSetTextJustification = 0x0A,
    kSetWindowOrg = 0x0B,
    kSetWindowExt = 0x0C,
    kSetViewportOrg = 0x0D,
    kSetViewportExt = 0x0E,
    kOffsetWindowOrg = 0x0F,
    kScaleWindowExt = 0x10,
    kOffsetViewportOrg = 0x11,
    kScaleViewportExt = 0x12,
    kExcludeClipRect = 0x15,
    kIntersectClipRect = 0x16,
    kSaveDc = 0x1E,
    kOffsetClip = 0x20,
    kRestoreDc = 0x27,
    kSetTextAlign = 0x2E,
};

static Outcome eScale(DeviceContext& dc, ByteReader& rd, bool bWindow)
{
    const double dYDenominator = rd.I16Le();
    const double dYNumerator = rd.I16Le();
    const double dXDenominator = rd.I16Le();
    const double dXNumerator = rd.I16Le();
    const bool bUsable = dXDenominator != 0 && dYDenominator != 0 && dXNumerator != 0 && dYNumerator != 0;
    if (bUsable && !dc.ExtentsAreFixed()) {
        Point& ptExt = bWindow ? dc.State.ptWindowExt : dc.State.ptViewportExt;
        ptExt = {ptExt.x * dXNumerator / dXDenominator, ptExt.y * dYNumerator / dYDenominator};
        dc.MappingChanged();
    }
    return eOutcome(!rd.Failed());
}

static Outcome eClipRect(DeviceContext& dc, ByteReader& rd, ClipMode eMode)
{
    const Rect rc = rcReadReversed(rd);
    if (rd.Failed())
        return Outcome::Broken;
    dc.CombineClip(dc.ClipOf({&rc, 1}, dc.LogicalToPicture()), eMode);
    return Outcome::Done;
}

static Outcome eOffsetClip(DeviceContext& dc, ByteReader& rd)
{
    const Point ptMove = dc.LogicalToPicture().ApplyToVector(ptReadYX(rd));
    const auto lWhole = [](double d) { return static_cast<std::int32_t>(std::floor(dTamed(d) + 0.5)); };
    dc.State.clip = Moved(dc.State.clip, lWhole(ptMove.x), lWhole(ptMove.y), dc.Target().Area(), dc.Work());
    return eOutcome(!rd.Failed());
}

static Outcome eMap(DeviceContext& dc, const WmfRecord& objRecord, ByteReader& rd)
{
    DcState& objState = dc.State;
    const Point pt = ptReadYX(rd);
    if (rd.Failed())
        return Outcome::Broken;
    const bool bExtent = pt.x != 0 && pt.y != 0 && !dc.ExtentsAreFixed();
    switch (objRecord.Number()) {
        case kSetWindowOrg:
            objState.ptWindowOrg = pt;
            break;
        case kSetWindowExt:
            if (bExtent)
                objState.ptWindowExt = pt;
            break;
        case kSetViewportOrg:
            objState.ptViewportOrg = pt;
            break;
        case kSetViewportExt:
            if (bExtent)
                dc.SetViewportExt(pt);
            break;
        case kOffsetWindowOrg:
            objState.ptWindowOrg = objState.ptWindowOrg + pt;
            break;
        default:
            objState.ptViewportOrg = objState.ptViewportOrg + pt;
            break;
    }
    dc.MappingChanged();
    return Outcome::Done;
}

Outcome ePlayWmfState(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    DcState& objState = dc.State;
    ByteReader rd = objRecord.Data();
    switch (objRecord.Number()) {
        case kSetBkColor:
            objState.nBackColor = rd.U32Le();
            break;
        case kSetBkMode:
            objState.bOpaqueBack = rd.U16Le() == 2;
            break;
        case kSetMapMode:
            dc.SetMapMode(rd.U16Le());
            break;
        case kSetRop2: {
            const std::uint16_t nRop2 = rd.U16Le();
            if (nRop2 >= 1 && nRop2 <= 16)
                objState.nRop2 = nRop2;
            break;
        }
        case kSetPolyFillMode:
            objState.bWinding = rd.U16Le() == 2;
            break;
        case kSetStretchBltMode:
            objState.nStretchMode = rd.U16Le();
            break;
        case kSetTextCharExtra:
            objState.dCharExtra = rd.I16Le();
            break;
        case kSetTextColor:
            objState.nTextColor = rd.U32Le();
            break;
        case kSetTextJustification: {
            const double dCount = rd.U16Le();
            const double dExtra = rd.I16Le();
            objState.dBreakExtra = dCount > 0 ? dExtra / dCount : 0;
            break;
        }
        case kSetTextAlign:
            objState.nTextAlign = rd.U16Le();
            break;
        case kSetWindowOrg:
        case kSetWindowExt:
        case kSetViewportOrg:
        case kSetViewportExt:
        case kOffsetWindowOrg:
        case kOffsetViewportOrg:
            return eMap(dc, objRecord, rd);
        case kScaleWindowExt:
        case kScaleViewportExt:
            return eScale(dc, rd, objRecord.Number() == kScaleWindowExt);
        case kExcludeClipRect:
            return eClipRect(dc, rd, ClipMode::Difference);
        case kIntersectClipRect:
            return eClipRect(dc, rd, ClipMode::And);
        case kOffsetClip:
            return eOffsetClip(dc, rd);
        case kSaveDc:
            return eOutcome(dc.SaveState());
        case kRestoreDc:
            dc.RestoreState(rd.I16Le());
            break;
        default:
            return Outcome::NotMine;
    }
    return eOutcome(!rd.Failed());
}
