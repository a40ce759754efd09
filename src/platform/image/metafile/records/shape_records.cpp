// Draws shapes with the context's pen and brush.
#include "src/platform/image/metafile/records/shape_records.h"

#include <numbers>

#include "src/platform/image/metafile/canvas/arcs.h"

ArcSpan ArcSpanOf(const DeviceContext& dc, const Rect& rect, Point start_point, Point end)
{
    constexpr double kTurn = 2 * std::numbers::pi;
    const double start = ArcAngle(rect, start_point);
    double sweep = ArcAngle(rect, end) - start;
    const bool growing = dc.state.clockwise == (dc.Handedness() > 0);
    if (growing && sweep <= 1e-9)
        sweep += kTurn;
    if (!growing && sweep >= -1e-9)
        sweep -= kTurn;
    return {start, sweep};
}

void DrawRectangle(DeviceContext& dc, const Rect& rect)
{
    Outline filled, line;
    filled.AddBox(rect.Normalised());
    line.AddBox(dc.LineBox(rect));
    dc.Draw(filled, line);
}

void DrawEllipse(DeviceContext& dc, const Rect& rect)
{
    Outline filled, line;
    AddEllipse(filled, rect.Normalised());
    AddEllipse(line, dc.LineBox(rect));
    dc.Draw(filled, line);
}

void DrawRoundRect(DeviceContext& dc, const Rect& rect, double corner_width, double corner_height)
{
    Outline filled, line;
    AddRoundRect(filled, rect, corner_width, corner_height);
    AddRoundRect(line, dc.LineBox(rect), corner_width, corner_height);
    dc.Draw(filled, line);
}

static Outline ArcOf(const Rect& rect, const ArcSpan& span, ArcKind kind)
{
    Outline result;
    if (kind == ArcKind::kPie)
        result.MoveTo({(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
    AddArc(result, rect, span.start, span.sweep,
           kind == ArcKind::kPie ? ArcStart::kLineFromLast : ArcStart::kNewFigure);
    if (kind != ArcKind::kArc)
        result.Close();
    return result;
}

void DrawArc(DeviceContext& dc, const Rect& rect, Point start, Point end, ArcKind kind)
{
    const Rect good = rect.Normalised();
    const ArcSpan span = ArcSpanOf(dc, good, start, end);
    const Outline line = ArcOf(dc.LineBox(rect), span, kind);
    if (kind == ArcKind::kArc)
        dc.Draw(line, ShapeParts::kLine);
    else
        dc.Draw(ArcOf(good, span, kind), line);
}

static Outline LineThrough(std::span<const Point> points)
{
    Outline result;
    for (const Point& point : points)
        result.LineTo(point);
    return result;
}

void DrawPolygon(DeviceContext& dc, std::span<const Point> points)
{
    Outline shape = LineThrough(points);
    shape.Close();
    dc.Draw(shape, ShapeParts::kBoth);
}

void DrawPolyline(DeviceContext& dc, std::span<const Point> points)
{
    dc.Draw(LineThrough(points), ShapeParts::kLine);
}
