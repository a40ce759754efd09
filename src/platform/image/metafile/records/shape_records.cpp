// Draws the shapes of records.
#include "src/platform/image/metafile/records/shape_records.h"

#include <numbers>

#include "src/platform/image/metafile/canvas/arcs.h"

ArcSpan objArcSpan(const DeviceContext& dc, const Rect& rc, Point ptStart, Point ptEnd)
{
    constexpr double kTurn = 2 * std::numbers::pi;
    const double dStart = dArcAngle(rc, ptStart);
    double dSweep = dArcAngle(rc, ptEnd) - dStart;
    const bool bGrowing = dc.State.bClockwise == (dc.Handedness() > 0);
    if (bGrowing && dSweep <= 1e-9)
        dSweep += kTurn;
    if (!bGrowing && dSweep >= -1e-9)
        dSweep -= kTurn;
    return {dStart, dSweep};
}

void DrawRectangle(DeviceContext& dc, const Rect& rc)
{
    Outline objFilled, objLine;
    objFilled.AddBox(rc.Normalised());
    objLine.AddBox(dc.LineBox(rc));
    dc.Draw(objFilled, objLine);
}

void DrawEllipse(DeviceContext& dc, const Rect& rc)
{
    Outline objFilled, objLine;
    AddEllipse(objFilled, rc.Normalised());
    AddEllipse(objLine, dc.LineBox(rc));
    dc.Draw(objFilled, objLine);
}

void DrawRoundRect(DeviceContext& dc, const Rect& rc, double dCornerWidth, double dCornerHeight)
{
    Outline objFilled, objLine;
    AddRoundRect(objFilled, rc, dCornerWidth, dCornerHeight);
    AddRoundRect(objLine, dc.LineBox(rc), dCornerWidth, dCornerHeight);
    dc.Draw(objFilled, objLine);
}

static Outline objArcOf(const Rect& rc, const ArcSpan& objSpan, ArcKind eKind)
{
    Outline objResult;
    if (eKind == ArcKind::Pie)
        objResult.MoveTo({(rc.dLeft + rc.dRight) / 2, (rc.dTop + rc.dBottom) / 2});
    AddArc(objResult, rc, objSpan.dStart, objSpan.dSweep,
           eKind == ArcKind::Pie ? ArcStart::LineFromLast : ArcStart::NewFigure);
    if (eKind != ArcKind::Arc)
        objResult.Close();
    return objResult;
}

void DrawArc(DeviceContext& dc, const Rect& rc, Point ptStart, Point ptEnd, ArcKind eKind)
{
    const Rect rcGood = rc.Normalised();
    const ArcSpan objSpan = objArcSpan(dc, rcGood, ptStart, ptEnd);
    const Outline objLine = objArcOf(dc.LineBox(rc), objSpan, eKind);
    if (eKind == ArcKind::Arc)
        dc.Draw(objLine, ShapeParts::Line);
    else
        dc.Draw(objArcOf(rcGood, objSpan, eKind), objLine);
}

static Outline objLineThrough(std::span<const Point> aPoints)
{
    Outline objResult;
    for (const Point& pt : aPoints)
        objResult.LineTo(pt);
    return objResult;
}

void DrawPolygon(DeviceContext& dc, std::span<const Point> aPoints)
{
    Outline objShape = objLineThrough(aPoints);
    objShape.Close();
    dc.Draw(objShape, ShapeParts::Both);
}

void DrawPolyline(DeviceContext& dc, std::span<const Point> aPoints)
{
    dc.Draw(objLineThrough(aPoints), ShapeParts::Line);
}
