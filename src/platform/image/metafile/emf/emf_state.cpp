// EMF records that change the state of the device context.
#include <bit>

#include "src/platform/image/metafile/emf/emf_player.h"

enum StateRecord : std::uint32_t {
    kSetWindowExt = 9,
    kSetWindowOrg = 10,
    kSetViewportExt = 11,
    kSetViewportOrg = 12,
    kSetBrushOrg = 13,
    kSetMapMode = 17,
    kSetBkMode = 18,
    kSetPolyFillMode = 19,
    kSetRop2 = 20,
    kSetStretchBltMode = 21,
    kSetTextAlign = 22,
    kSetTextColor = 24,
    kSetBkColor = 25,
    kScaleViewportExt = 31,
    kScaleWindowExt = 32,
    kSaveDc = 33,
    kRestoreDc = 34,
    kSetWorldTransform = 35,
    kModifyWorldTransform = 36,
    kSetArcDirection = 57,
    kSetMiterLimit = 58,
    kSetTextJustification = 120,
};

static void SetIfUsable(Point& ptTarget, Point ptNew)
{
    if (ptNew.x != 0 && ptNew.y != 0)
        ptTarget = ptNew;
}

static void Scale(DcState& objState, ByteReader& rd, bool bWindow)
{
    const double dXNumerator = rd.I32Le();
    const double dXDenominator = rd.I32Le();
    const double dYNumerator = rd.I32Le();
    const double dYDenominator = rd.I32Le();
    Point& ptExt = bWindow ? objState.ptWindowExt : objState.ptViewportExt;
    if (dXDenominator != 0 && dYDenominator != 0)
        SetIfUsable(ptExt, {ptExt.x * dXNumerator / dXDenominator, ptExt.y * dYNumerator / dYDenominator});
}

static void ModifyWorld(DcState& objState, ByteReader& rd)
{
    const Affine objNew = objReadTransform(rd);
    const std::uint32_t nMode = rd.U32Le();
    Affine objResult = objState.objWorld;
    if (nMode == 1)
        objResult = {};
    else if (nMode == 2)
        objResult = Then(objNew, objState.objWorld);
    else if (nMode == 3)
        objResult = Then(objState.objWorld, objNew);
    else if (nMode == 4)
        objResult = objNew;
    if (objResult.Finite())
        objState.objWorld = objResult;
}

// The documentation calls the limit a whole number, the interface that writes it a floating one. No sensible
// limit is as large as the bits of a float are when they are taken for a whole number.
static double dMiterLimit(std::uint32_t nStored)
{
    const double d = nStored <= 0xFFFF ? nStored : static_cast<double>(std::bit_cast<float>(nStored));
    return std::isfinite(d) && d >= 1 ? d : 10;
}

Outcome ePlayState(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    DcState& objState = dc.State;
    ByteReader rd = objRecord.Data();
    switch (objRecord.nType) {
        case kSetWindowExt:
            if (!dc.ExtentsAreFixed())
                SetIfUsable(objState.ptWindowExt, ptRead(rd));
            break;
        case kSetWindowOrg:
            objState.ptWindowOrg = ptRead(rd);
            break;
        case kSetViewportExt:
            if (!dc.ExtentsAreFixed())
                SetIfUsable(objState.ptViewportExt, ptRead(rd));
            break;
        case kSetViewportOrg:
            objState.ptViewportOrg = ptRead(rd);
            break;
        case kScaleViewportExt:
        case kScaleWindowExt:
            if (!dc.ExtentsAreFixed())
                Scale(objState, rd, objRecord.nType == kScaleWindowExt);
            break;
        case kSetBrushOrg:
            objState.ptBrushOrg = ptRead(rd);
            return eOutcome(!rd.Failed());
        case kSetMapMode:
            dc.SetMapMode(rd.I32Le());
            break;
        case kSetBkMode:
            objState.bOpaqueBack = rd.U32Le() == 2;
            return eOutcome(!rd.Failed());
        case kSetPolyFillMode:
            objState.bWinding = rd.U32Le() == 2;
            return eOutcome(!rd.Failed());
        case kSetRop2: {
            const std::uint32_t nRop2 = rd.U32Le();
            if (nRop2 >= 1 && nRop2 <= 16)
                objState.nRop2 = static_cast<int>(nRop2);
            return eOutcome(!rd.Failed());
        }
        case kSetStretchBltMode:
            objState.nStretchMode = rd.I32Le();
            return eOutcome(!rd.Failed());
        case kSetTextAlign:
            objState.nTextAlign = rd.U32Le();
            return eOutcome(!rd.Failed());
        case kSetTextColor:
            objState.nTextColor = rd.U32Le();
            return eOutcome(!rd.Failed());
        case kSetBkColor:
            objState.nBackColor = rd.U32Le();
            return eOutcome(!rd.Failed());
        case kSetTextJustification: {
            const double dExtra = rd.I32Le();
            const double dCount = rd.I32Le();
            objState.dBreakExtra = dCount > 0 ? dExtra / dCount : 0;
            return eOutcome(!rd.Failed());
        }
        case kSaveDc:
            return eOutcome(dc.SaveState());
        case kRestoreDc:
            dc.RestoreState(rd.I32Le());
            break;
        case kSetWorldTransform: {
            const Affine objNew = objReadTransform(rd);
            if (objNew.Finite())
                objState.objWorld = objNew;
            break;
        }
        case kModifyWorldTransform:
            ModifyWorld(objState, rd);
            break;
        case kSetArcDirection:
            objState.bClockwise = rd.U32Le() == 2;
            return eOutcome(!rd.Failed());
        case kSetMiterLimit:
            objState.dMiterLimit = dMiterLimit(rd.U32Le());
            return eOutcome(!rd.Failed());
        default:
            return Outcome::NotMine;
    }
    dc.MappingChanged();
    return eOutcome(!rd.Failed());
}
