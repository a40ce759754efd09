// EMF records of boxes, arcs, single lines, gradients and floods.
#include <array>
#include <bit>
#include <numbers>

#include "src/platform/image/metafile/canvas/arcs.h"
#include "src/platform/image/metafile/device/device_fills.h"
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/records/shape_records.h"

enum ShapeRecord : std::uint32_t {
    kSetPixel = 15,
    kMoveTo = 27,
    kAngleArc = 41,
    kEllipse = 42,
    kRectangle = 43,
    kRoundRect = 44,
    kArc = 45,
    kChord = 46,
    kPie = 47,
    kExtFloodFill = 53,
    kLineTo = 54,
    kArcTo = 55,
    kGradientFill = 118,
};

static Outcome eAngleArc(DeviceContext& dc, ByteReader& rd)
{
    const Point ptCentre = ptRead(rd);
    const double dRadius = rd.U32Le();
    const double dStart = static_cast<double>(std::bit_cast<float>(rd.U32Le())) / 180 * std::numbers::pi;
    const double dSweep = static_cast<double>(std::bit_cast<float>(rd.U32Le())) / 180 * std::numbers::pi;
    if (rd.Failed())
        return Outcome::Broken;
    // Angles are counted against the clock, unlike those of AddArc.
    const Rect rc{ptCentre.x - dRadius, ptCentre.y - dRadius, ptCentre.x + dRadius, ptCentre.y + dRadius};
    if (std::isfinite(dStart) && std::isfinite(dSweep))
        dc.ArcTo(rc, -dStart, -dSweep);
    return Outcome::Done;
}

static Outcome eArc(DeviceContext& dc, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    const Rect rc = rcRead(rd);
    const Point ptStart = ptRead(rd);
    const Point ptEnd = ptRead(rd);
    if (rd.Failed())
        return Outcome::Broken;
    if (objRecord.nType == kArcTo) {
        const ArcSpan objSpan = objArcSpan(dc, rc.Normalised(), ptStart, ptEnd);
        dc.ArcTo(rc.Normalised(), objSpan.dStart, objSpan.dSweep);
        return Outcome::Done;
    }
    const ArcKind eKind = objRecord.nType == kArc     ? ArcKind::Arc
                          : objRecord.nType == kChord ? ArcKind::Chord
                                                      : ArcKind::Pie;
    DrawArc(dc, rc, ptStart, ptEnd, eKind);
    return Outcome::Done;
}

static Outcome eGradient(DeviceContext& dc, ByteReader& rd)
{
    rcRead(rd);  // bounds
    const std::uint32_t nCorners = rd.U32Le();
    const std::uint32_t nShapes = rd.U32Le();
    const std::uint32_t nMode = rd.U32Le();
    if (rd.Failed() || nMode > 2 || rd.Left() / 16 < nCorners)
        return Outcome::Broken;
    std::vector<GradientCorner> aCorners(nCorners);
    for (GradientCorner& objCorner : aCorners) {
        objCorner.pt = ptRead(rd);
        for (double& d : objCorner.aColor)
            d = rd.U16Le();
        rd.U16Le();  // alpha isn't used
    }
    const std::uint32_t nEach = nMode == 2 ? 3 : 2;
    if (rd.Left() / (4 * nEach) < nShapes)
        return Outcome::Broken;
    for (std::uint32_t n = 0; n < nShapes && !dc.Work().Spent(); ++n) {
        std::array<std::uint32_t, 3> aIndex{};
        for (std::uint32_t i = 0; i < nEach; ++i) {
            aIndex[i] = rd.U32Le();
            if (aIndex[i] >= nCorners)
                return Outcome::Broken;
        }
        if (nMode == 2) {
            const std::array<GradientCorner, 3> aTriangle{aCorners[aIndex[0]], aCorners[aIndex[1]],
                                                          aCorners[aIndex[2]]};
            FillGradientTriangle(dc, aTriangle);
        } else
            FillGradientRect(dc, aCorners[aIndex[0]], aCorners[aIndex[1]], nMode == 1);
    }
    return Outcome::Done;
}

Outcome ePlayShape(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    ByteReader rd = objRecord.Data();
    switch (objRecord.nType) {
        case kMoveTo:
            dc.MoveTo(ptRead(rd));
            return eOutcome(!rd.Failed());
        case kLineTo: {
            const Point pt = ptRead(rd);
            if (!rd.Failed())
                dc.LinesTo({&pt, 1});
            return eOutcome(!rd.Failed());
        }
        case kRectangle:
        case kEllipse: {
            const Rect rc = rcRead(rd);
            if (rd.Failed())
                return Outcome::Broken;
            if (objRecord.nType == kRectangle)
                DrawRectangle(dc, rc);
            else
                DrawEllipse(dc, rc);
            return Outcome::Done;
        }
        case kRoundRect: {
            const Rect rc = rcRead(rd);
            const Point ptCorner = ptRead(rd);
            if (!rd.Failed())
                DrawRoundRect(dc, rc, ptCorner.x, ptCorner.y);
            return eOutcome(!rd.Failed());
        }
        case kArc:
        case kChord:
        case kPie:
        case kArcTo:
            return eArc(dc, objRecord);
        case kAngleArc:
            return eAngleArc(dc, rd);
        case kSetPixel: {
            const Point pt = ptRead(rd);
            const ColorRef nColor = rd.U32Le();
            if (!rd.Failed())
                SetPixel(dc, pt, nColor);
            return eOutcome(!rd.Failed());
        }
        case kExtFloodFill: {
            const Point pt = ptRead(rd);
            const ColorRef nColor = rd.U32Le();
            const std::uint32_t nMode = rd.U32Le();
            if (!rd.Failed())
                FloodFill(dc, pt, nColor, nMode == 1);
            return eOutcome(!rd.Failed());
        }
        case kGradientFill:
            return eGradient(dc, rd);
        default:
            return Outcome::NotMine;
    }
}
