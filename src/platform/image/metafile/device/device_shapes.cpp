// Lines, shapes and paths of a metafile's device context.
#include <utility>

#include "src/platform/image/metafile/canvas/arcs.h"
#include "src/platform/image/metafile/device/device_context.h"

void DeviceContext::MoveTo(Point pt)
{
    State.ptPosition = pt;
    m_bFigureOpen = false;
}

void DeviceContext::LinesTo(std::span<const Point> aPoints)
{
    if (aPoints.empty())
        return;
    const Affine& objMap = LogicalToPicture();
    Outline objLine;
    Outline& objTarget = m_bInPath ? m_objPath : objLine;
    if (!m_bInPath || !m_bFigureOpen)
        objTarget.MoveTo(objMap.Apply(State.ptPosition));
    for (const Point& pt : aPoints)
        objTarget.LineTo(objMap.Apply(pt));
    State.ptPosition = aPoints.back();
    m_bFigureOpen = m_bInPath;
    if (!m_bInPath)
        DrawLine(std::move(objLine));
}

void DeviceContext::CurvesTo(std::span<const Point> aPoints)
{
    if (aPoints.size() < 3)
        return;
    const Affine& objMap = LogicalToPicture();
    Outline objLine;
    Outline& objTarget = m_bInPath ? m_objPath : objLine;
    if (!m_bInPath || !m_bFigureOpen)
        objTarget.MoveTo(objMap.Apply(State.ptPosition));
    for (std::size_t n = 0; n + 3 <= aPoints.size(); n += 3) {
        objTarget.CurveTo(objMap.Apply(aPoints[n]), objMap.Apply(aPoints[n + 1]),
                          objMap.Apply(aPoints[n + 2]));
        State.ptPosition = aPoints[n + 2];
    }
    m_bFigureOpen = m_bInPath;
    if (!m_bInPath)
        DrawLine(std::move(objLine));
}

void DeviceContext::ArcTo(const Rect& rc, double dStart, double dSweep)
{
    const Affine& objMap = LogicalToPicture();
    Outline objArc;
    objArc.MoveTo(State.ptPosition);
    AddArc(objArc, rc, dStart, dSweep, ArcStart::LineFromLast);
    State.ptPosition = objArc.Last();
    if (!m_bInPath)
        return DrawLine(objArc.Transformed(objMap));
    // The path goes on where it is, so its own last point takes the place of the arc's first.
    Outline objRest;
    if (!m_bFigureOpen)
        m_objPath.MoveTo(objMap.Apply(objArc.First()));
    AddArc(objRest, rc, dStart, dSweep, ArcStart::NewFigure);
    objRest = objRest.Transformed(objMap);
    m_objPath.Continue(objRest);
    m_bFigureOpen = true;
}

void DeviceContext::Draw(const Outline& objLogical, ShapeParts eParts)
{
    const Outline objPicture = objLogical.Transformed(LogicalToPicture());
    if (m_bInPath) {
        m_objPath.Append(objPicture);
        m_bFigureOpen = false;
        return;
    }
    if (eParts != ShapeParts::Line)
        if (const auto objInk = InkOf(State.pBrush))
            Fill(objPicture, *objInk, State.nRop2);
    if (eParts != ShapeParts::Fill)
        DrawLine(objPicture);
}

void DeviceContext::Draw(const Outline& objFilled, const Outline& objLine)
{
    if (m_bInPath)
        return Draw(objLine, ShapeParts::Both);
    if (const auto objInk = InkOf(State.pBrush))
        Fill(objFilled.Transformed(LogicalToPicture()), *objInk, State.nRop2);
    DrawLine(objLine.Transformed(LogicalToPicture()));
}

Rect DeviceContext::LineBox(const Rect& rc) const
{
    const Rect rcGood = rc.Normalised();
    const Point ptUnit = UnitOfDevice();
    Rect rcLine = rcGood;
    // EMF boxes name the last row and column, those of WMF what comes after.
    if (!m_objRequest.bEnhanced) {
        rcLine.dRight = std::max(rcGood.dLeft, rcGood.dRight - ptUnit.x);
        rcLine.dBottom = std::max(rcGood.dTop, rcGood.dBottom - ptUnit.y);
    }
    if (State.pPen && (State.pPen->nStyle & PenStyle::kDashMask) == PenStyle::kInsideFrame) {
        const double dInset = std::max(0.0, State.pPen->dWidth - std::max(ptUnit.x, ptUnit.y)) / 2;
        const double dInsetX = std::min(dInset, rcLine.Width() / 2);
        const double dInsetY = std::min(dInset, rcLine.Height() / 2);
        rcLine = {rcLine.dLeft + dInsetX, rcLine.dTop + dInsetY, rcLine.dRight - dInsetX,
                  rcLine.dBottom - dInsetY};
    }
    return rcLine;
}

void DeviceContext::Fill(const Outline& objPicture, const Ink& objInk, int nRop2)
{
    m_objCanvas.Fill(objPicture, State.bWinding, objInk, nRop2, CurrentClip());
}

void DeviceContext::BeginPath()
{
    m_objPath.Clear();
    m_objWidenedBy.reset();
    m_bInPath = true;
    m_bFigureOpen = false;
}

void DeviceContext::AbortPath()
{
    m_objPath.Clear();
    m_objWidenedBy.reset();
    m_bInPath = false;
}

void DeviceContext::CloseFigure()
{
    if (!m_bInPath)
        return;
    m_objPath.Close();
    m_bFigureOpen = false;
}

void DeviceContext::WidenPath()
{
    // What a wide line along the path covers has no outline of its own here: the path is kept, and with it
    // the pen that is drawn along it whenever the path is filled or made the clip.
    if (!m_bInPath && State.pPen)
        m_objWidenedBy = *State.pPen;
}

void DeviceContext::PaintPath(ShapeParts eParts)
{
    if (m_bInPath)
        return;
    const Outline objPath = std::exchange(m_objPath, {});
    const std::optional<Pen> objWidenedBy = std::exchange(m_objWidenedBy, std::nullopt);
    if (objWidenedBy && eParts != ShapeParts::Line) {
        if (const auto objInk = InkOf(State.pBrush))
            m_objCanvas.Stroke(objPath, StyleOf(*objWidenedBy, false), *objInk, State.nRop2, CurrentClip());
        return;
    }
    if (eParts != ShapeParts::Line)
        if (const auto objInk = InkOf(State.pBrush))
            Fill(objPath.AllClosed(), *objInk, State.nRop2);
    if (eParts != ShapeParts::Fill)
        DrawLine(eParts == ShapeParts::Both ? objPath.AllClosed() : objPath);
}

void DeviceContext::SelectClipPath(ClipMode eMode)
{
    if (m_bInPath)
        return;
    const Outline objPath = std::exchange(m_objPath, {});
    const std::optional<Pen> objWidenedBy = std::exchange(m_objWidenedBy, std::nullopt);
    const Box& boxArea = m_objCanvas.Area();
    CombineClip(objWidenedBy ? m_objCanvas.ClipOf(objPath, StyleOf(*objWidenedBy, false), boxArea)
                             : m_objCanvas.ClipOf(objPath, State.bWinding, boxArea),
                eMode);
}
