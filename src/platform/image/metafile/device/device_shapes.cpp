// Lines, shapes and paths of the device context.
#include <utility>

#include "src/platform/image/metafile/canvas/arcs.h"
#include "src/platform/image/metafile/device/device_context.h"

void DeviceContext::MoveTo(Point point)
{
    state.position = point;
    figure_open_ = false;
}

void DeviceContext::LinesTo(std::span<const Point> points)
{
    if (points.empty())
        return;
    const Affine& map = LogicalToPicture();
    Outline line;
    Outline& target = in_path_ ? path_ : line;
    if (!in_path_ || !figure_open_)
        target.MoveTo(map.Apply(state.position));
    for (const Point& point : points)
        target.LineTo(map.Apply(point));
    state.position = points.back();
    figure_open_ = in_path_;
    if (!in_path_)
        DrawLine(std::move(line));
}

void DeviceContext::CurvesTo(std::span<const Point> points)
{
    if (points.size() < 3)
        return;
    const Affine& map = LogicalToPicture();
    Outline line;
    Outline& target = in_path_ ? path_ : line;
    if (!in_path_ || !figure_open_)
        target.MoveTo(map.Apply(state.position));
    for (std::size_t n = 0; n + 3 <= points.size(); n += 3) {
        target.CurveTo(map.Apply(points[n]), map.Apply(points[n + 1]), map.Apply(points[n + 2]));
        state.position = points[n + 2];
    }
    figure_open_ = in_path_;
    if (!in_path_)
        DrawLine(std::move(line));
}

void DeviceContext::ArcTo(const Rect& rect, double start, double sweep)
{
    const Affine& map = LogicalToPicture();
    Outline arc;
    arc.MoveTo(state.position);
    AddArc(arc, rect, start, sweep, ArcStart::kLineFromLast);
    state.position = arc.Last();
    if (!in_path_)
        return DrawLine(arc.Transformed(map));
    // The path continues from its own last point, which replaces the arc's first.
    Outline rest;
    if (!figure_open_)
        path_.MoveTo(map.Apply(arc.First()));
    AddArc(rest, rect, start, sweep, ArcStart::kNewFigure);
    rest = rest.Transformed(map);
    path_.Continue(rest);
    figure_open_ = true;
}

void DeviceContext::Draw(const Outline& logical, ShapeParts parts)
{
    const Outline picture = logical.Transformed(LogicalToPicture());
    if (in_path_) {
        path_.Append(picture);
        figure_open_ = false;
        return;
    }
    if (parts != ShapeParts::kLine)
        if (const auto ink = InkFor(state.brush))
            Fill(picture, *ink, state.rop2);
    if (parts != ShapeParts::kFill)
        DrawLine(picture);
}

void DeviceContext::Draw(const Outline& filled, const Outline& line)
{
    if (in_path_)
        return Draw(line, ShapeParts::kBoth);
    if (const auto ink = InkFor(state.brush))
        Fill(filled.Transformed(LogicalToPicture()), *ink, state.rop2);
    DrawLine(line.Transformed(LogicalToPicture()));
}

Rect DeviceContext::LineBox(const Rect& rect) const
{
    const Rect good = rect.Normalised();
    const Point unit = DeviceUnit();
    Rect line = good;
    // EMF boxes include the last row and column, WMF boxes exclude them.
    if (!request_.enhanced) {
        line.right = std::max(good.left, good.right - unit.x);
        line.bottom = std::max(good.top, good.bottom - unit.y);
    }
    if (state.pen && (state.pen->style & PenStyle::kDashMask) == PenStyle::kInsideFrame) {
        const double inset = std::max(0.0, state.pen->width - std::max(unit.x, unit.y)) / 2;
        const double inset_x = std::min(inset, line.Width() / 2);
        const double inset_y = std::min(inset, line.Height() / 2);
        line = {line.left + inset_x, line.top + inset_y, line.right - inset_x, line.bottom - inset_y};
    }
    return line;
}

void DeviceContext::Fill(const Outline& picture, const Ink& ink, int rop2)
{
    canvas_.Fill(picture, state.winding, ink, rop2, CurrentClip());
}

void DeviceContext::BeginPath()
{
    path_.Clear();
    widened_by_.reset();
    in_path_ = true;
    figure_open_ = false;
}

void DeviceContext::AbortPath()
{
    path_.Clear();
    widened_by_.reset();
    in_path_ = false;
}

void DeviceContext::CloseFigure()
{
    if (!in_path_)
        return;
    path_.Close();
    figure_open_ = false;
}

void DeviceContext::WidenPath()
{
    // Widening is deferred: keep the path and the pen, and stroke with it when the path is filled or becomes
    // the clip.
    if (!in_path_ && state.pen)
        widened_by_ = *state.pen;
}

void DeviceContext::PaintPath(ShapeParts parts)
{
    if (in_path_)
        return;
    const Outline path = std::exchange(path_, {});
    const std::optional<Pen> widened_by = std::exchange(widened_by_, std::nullopt);
    if (widened_by && parts != ShapeParts::kLine) {
        if (const auto ink = InkFor(state.brush))
            canvas_.Stroke(path, StyleOf(*widened_by, false), *ink, state.rop2, CurrentClip());
        return;
    }
    if (parts != ShapeParts::kLine)
        if (const auto ink = InkFor(state.brush))
            Fill(path.AllClosed(), *ink, state.rop2);
    if (parts != ShapeParts::kFill)
        DrawLine(parts == ShapeParts::kBoth ? path.AllClosed() : path);
}

void DeviceContext::SelectClipPath(ClipMode mode)
{
    if (in_path_)
        return;
    const Outline path = std::exchange(path_, {});
    const std::optional<Pen> widened_by = std::exchange(widened_by_, std::nullopt);
    const Box& area = canvas_.Area();
    if (widened_by)
        return CombineClip(canvas_.ClipOf(path, StyleOf(*widened_by, false), area), mode);
    // Many programs set the same clip again for each object that they draw.
    if (!path_clip_ || path_clip_->winding != state.winding || !(path_clip_->path == path))
        path_clip_ = PathClip{path, state.winding, canvas_.ClipOf(path, state.winding, area)};
    CombineClip(path_clip_->result, mode);
}
