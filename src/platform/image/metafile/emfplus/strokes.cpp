// Strokes shapes with EMF+ pens: widths, dashes, joins and line ends.
#include <array>

#include "src/platform/image/metafile/canvas/arcs.h"
#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/emfplus/graphics.h"

namespace
{
/// A line end in units of the pen's width, with the line coming up the y axis to the origin.
struct LineEnd {
    Outline fill;
    Outline line;
    double inset = 0;  ///< how much the line itself is shortened
    double line_width = 1;
};

/// An end of an open figure, in pen units: the point and the direction out of the line.
struct FigureEnd {
    Point at;
    Point direction;
};
}  // namespace

static LineCap PlainCap(PlusCap cap)
{
    return cap == PlusCap::kSquare  ? LineCap::kSquare
           : cap == PlusCap::kRound ? LineCap::kRound
                                    : LineCap::kButt;
}

static Outline Polygon(std::initializer_list<Point> points)
{
    Outline result;
    for (const Point& point : points)
        result.LineTo(point);
    result.Close();
    return result;
}

// Anchors are drawn beyond the line's end, which is at their middle or tip.
static std::optional<LineEnd> EndOf(PlusCap cap, const std::optional<PlusCustomCap>& custom)
{
    LineEnd end;
    switch (cap) {
        case PlusCap::kTriangle:
            end.fill = Polygon({{-0.5, 0}, {0, 0.5}, {0.5, 0}});
            return end;
        case PlusCap::kSquareAnchor:
            end.fill = Polygon({{-0.75, -0.75}, {-0.75, 0.75}, {0.75, 0.75}, {0.75, -0.75}});
            return end;
        case PlusCap::kRoundAnchor:
            AddEllipse(end.fill, {-1, -1, 1, 1});
            return end;
        case PlusCap::kDiamondAnchor:
            end.fill = Polygon({{-1, 0}, {0, 1}, {1, 0}, {0, -1}});
            return end;
        case PlusCap::kArrowAnchor:
            end.fill = Polygon({{-1, -1.73}, {0, 0}, {1, -1.73}});
            end.inset = 1;
            return end;
        default:
            break;
    }
    if (!custom)
        return std::nullopt;
    const Affine scale{custom->scale, 0, 0, custom->scale, 0, 0};
    end.fill = custom->fill.Transformed(scale);
    end.line = custom->line.Transformed(scale);
    end.inset = custom->inset * custom->scale;
    end.line_width = custom->line_width;
    return end;
}

// Shortens an open line at its end and says where that was. A line that is shorter than its end keeps a stub
// for the direction.
static std::optional<FigureEnd> Shorten(std::vector<Point>& points, double by)
{
    while (points.size() > 1 && LengthOf(points.back() - points[points.size() - 2]) < 1e-9)
        points.pop_back();
    if (points.size() < 2)
        return std::nullopt;
    const Point at = points.back();
    // Take the direction over the length of the end, so that a curve's arrow follows its course.
    double left = std::max(by, 0.0);
    while (points.size() > 2 && LengthOf(points.back() - points[points.size() - 2]) <= left) {
        left -= LengthOf(points.back() - points[points.size() - 2]);
        points.pop_back();
    }
    const Point before = points[points.size() - 2];
    const Point run = points.back() - before;
    const double length = LengthOf(run);
    const double keep = std::max(length - left, length * 1e-3);
    points.back() = before + (keep / length) * run;
    const Point out = at - (by > 0 ? points.back() : before);
    const double size = LengthOf(out);
    return FigureEnd{at, size > 0 ? (1 / size) * out : (1 / length) * run};
}

// Adds a line end to the polygons of a stroke. pen maps pen units to the picture.
static void AddEnd(Outline& polygons, const LineEnd& end, const FigureEnd& place, double width,
                   const Affine& pen)
{
    // The y axis of the line end points along the direction.
    const Affine turn{place.direction.y * width,
                      -place.direction.x * width,
                      place.direction.x * width,
                      place.direction.y * width,
                      place.at.x,
                      place.at.y};
    const Affine map = Then(turn, pen);
    const double orientation = pen.Determinant() < 0 ? -1 : 1;
    const auto add = [&polygons, orientation](std::span<const Point> points) {
        double area = 0;
        for (std::size_t n = 1; n + 1 < points.size(); ++n) {
            const Point a = points[n] - points[0];
            const Point b = points[n + 1] - points[0];
            area += a.x * b.y - a.y * b.x;
        }
        // Of the same orientation as strokes, so that overlaps add up.
        Outline polygon;
        for (std::size_t n = 0; n < points.size(); ++n)
            polygon.LineTo(points[area * orientation >= 0 ? n : points.size() - 1 - n]);
        polygon.Close();
        polygons.Append(polygon);
    };
    end.fill.Transformed(map).ForEachFigure([&](std::span<const Point> points, bool) { add(points); });
    if (end.line.Empty())
        return;
    StrokeStyle style;
    style.width = end.line_width;
    style.pen = {map.xx, map.yx, map.xy, map.yy, 0, 0};
    style.cap = style.end_cap = LineCap::kButt;
    style.join = LineJoin::kMiter;
    Stroke(end.line.Transformed(map), style, add);
}

namespace
{
/// A pen at its size on the picture.
struct SizedPen {
    StrokeStyle style;
    bool aligned = false;  ///< lines go along pixels
};
}  // namespace

static SizedPen SizePen(const PlusGraphics& graphics, const PlusPen& pen, const Affine& to_picture,
                        bool rectilinear)
{
    SizedPen result;
    StrokeStyle& style = result.style;
    // The width is in world units, or in units of the device.
    Affine linear =
        pen.unit == static_cast<std::uint32_t>(PlusUnit::kWorld) ? to_picture : graphics.DeviceToPicture();
    linear.x0 = linear.y0 = 0;
    double width =
        std::abs(pen.width) * (pen.unit == 0 ? 1 : graphics.PixelsPer(static_cast<PlusUnit>(pen.unit)));
    Affine shape = pen.transform;
    shape.x0 = shape.y0 = 0;
    linear = Then(shape, linear);
    double scale = linear.Scale();
    const double longest =
        std::max(LengthOf(linear.ApplyToVector({1, 0})), LengthOf(linear.ApplyToVector({0, 1})));
    if (!(scale > longest * 1e-3) || !std::isfinite(scale)) {
        scale = std::isfinite(longest) && longest > 0 ? longest : 1;
        linear = {scale, 0, 0, scale, 0, 0};
    }
    const double pixels = ClampToDrawable(width * scale);
    const bool hairline = !(pixels > 1.2);
    result.aligned = hairline || rectilinear;
    if (result.aligned) {
        style.width = hairline ? 1 : std::floor(pixels + 0.5);
        style.pen = {};
    } else {
        style.width = ClampToDrawable(width);
        style.pen = linear;
    }
    style.cap = PlainCap(pen.start);
    style.end_cap = PlainCap(pen.end);
    style.dash_cap = PlainCap(pen.dash_cap);
    style.join = pen.join == 1 ? LineJoin::kBevel : pen.join == 2 ? LineJoin::kRound : LineJoin::kMiter;
    style.miter_limit = std::isfinite(pen.miter_limit) ? std::clamp(pen.miter_limit, 1.0, 100.0) : 10;
    double sum = 0;
    for (const double dash : pen.dashes) {
        if (!(dash >= 0) || !std::isfinite(dash))
            return result;
        sum += dash;
    }
    if (sum * std::max(pixels, 1.0) > 0.1 && std::isfinite(pen.dash_offset)) {
        for (const double dash : pen.dashes)
            style.dashes.push_back(dash * style.width);
        style.dash_offset = pen.dash_offset * style.width;
    }
    return result;
}

// Moves a line sideways, for the parallel lines of a compound pen. to_pen and pen map between picture and
// pen.
static Outline Parallel(const Outline& outline, double by, const Affine& pen)
{
    const Affine to_pen = pen.Inverse();
    Outline result;
    outline.ForEachFigure([&](std::span<const Point> points, bool closed) {
        std::vector<Point> line;
        for (const Point& point : points) {
            const Point at = to_pen.Apply(point);
            if (line.empty() || LengthOf(at - line.back()) > 1e-6)
                line.push_back(at);
        }
        if (closed && line.size() > 2 && LengthOf(line.front() - line.back()) < 1e-6)
            line.pop_back();
        const std::size_t count = line.size();
        if (count < 2)
            return;
        const auto normal = [&](std::size_t from, std::size_t to) {
            const Point run = line[to] - line[from];
            return (1 / std::max(LengthOf(run), 1e-12)) * Point{-run.y, run.x};
        };
        Outline figure;
        for (std::size_t n = 0; n < count; ++n) {
            const bool first = n == 0 && !closed;
            const bool last = n + 1 == count && !closed;
            const Point before = first ? normal(0, 1) : normal(n > 0 ? n - 1 : count - 1, n);
            const Point after = last ? before : normal(n, n + 1 < count ? n + 1 : 0);
            const Point sum = before + after;
            const double square = sum.x * sum.x + sum.y * sum.y;
            // The miter of both sides; sharp turns are cut.
            const Point move = square > 0.2 ? (2 / square) * sum : after;
            figure.LineTo(pen.Apply(line[n] + by * move));
        }
        if (closed)
            figure.Close();
        result.Append(figure);
    });
    return result;
}

// The polygons of a stroke whose ends aren't plain caps.
static Outline WithEnds(const Outline& picture, StrokeStyle style, const std::optional<LineEnd>& start,
                        const std::optional<LineEnd>& end)
{
    Outline shortened;
    Outline polygons;
    const Affine to_pen = style.pen.Inverse();
    if (start)
        style.cap = LineCap::kButt;
    if (end)
        style.end_cap = LineCap::kButt;
    picture.ForEachFigure([&](std::span<const Point> figure, bool closed) {
        std::vector<Point> points;
        for (const Point& point : figure)
            points.push_back(to_pen.Apply(point));
        if (!closed) {
            const auto finish = [&](const std::optional<LineEnd>& which) {
                if (!which)
                    return;
                if (const auto place = Shorten(points, which->inset * style.width))
                    AddEnd(polygons, *which, *place, style.width, style.pen);
            };
            finish(end);
            std::reverse(points.begin(), points.end());
            finish(start);
            std::reverse(points.begin(), points.end());
        }
        Outline line;
        for (const Point& point : points)
            line.LineTo(style.pen.Apply(point));
        if (closed)
            line.Close();
        shortened.Append(line);
    });
    Stroke(shortened, style, [&polygons](std::span<const Point> points) {
        Outline polygon;
        for (const Point& point : points)
            polygon.LineTo(point);
        polygon.Close();
        polygons.Append(polygon);
    });
    return polygons;
}

void PlusGraphics::Stroke(const Outline& world, const PlusPen& pen)
{
    const auto ink = InkFor(pen.brush);
    if (!ink || world.Empty())
        return;
    const Affine to_picture = WorldToPicture();
    Outline picture = world.Transformed(to_picture);
    const bool rectilinear = picture.IsRectilinear();
    SizedPen sized = SizePen(*this, pen, to_picture, rectilinear && pen.compound.size() < 4);
    StrokeStyle& style = sized.style;
    if (!dc_.Work().Spend(StrokeWork(picture, style, canvas_.Area())))
        return;
    Clip clip = state.clip;
    if (pen.inset && !sized.aligned) {
        clip = Combine(clip, canvas_.ClipOf(picture, false, canvas_.Area()), ClipMode::kAnd, dc_.Work());
        style.width *= 2;
    }
    if (!state.half_pixel) {
        // Whole coordinates are pixel centres.
        const Affine& device = DeviceToPicture();
        picture = picture.Transformed(
            {1, 0, 0, 1, std::min(0.5, std::abs(device.xx) / 2), std::min(0.5, std::abs(device.yy) / 2)});
    }
    picture = picture.SnapStrokesToPixels(style.width * style.pen.Scale());
    if (pen.compound.size() >= 4 && pen.compound.size() % 2 == 0) {
        const double whole = style.width;
        Outline polygons;
        for (std::size_t n = 0; n + 1 < pen.compound.size(); n += 2) {
            const double from = std::clamp(pen.compound[n], 0.0, 1.0);
            const double to = std::clamp(pen.compound[n + 1], 0.0, 1.0);
            style.width = (to - from) * whole;
            if (style.width > 0)
                polygons.Append(
                    WithEnds(Parallel(picture, ((from + to) / 2 - 0.5) * whole, style.pen), style, {}, {}));
        }
        return canvas_.Fill(polygons, true, *ink, kRop2Copy, clip, true);
    }
    const auto start = EndOf(pen.start, pen.start == PlusCap::kCustom ? pen.custom_start : std::nullopt);
    const auto end = EndOf(pen.end, pen.end == PlusCap::kCustom ? pen.custom_end : std::nullopt);
    if (start || end)
        canvas_.Fill(WithEnds(picture, style, start, end), true, *ink, kRop2Copy, clip, true);
    else
        canvas_.Stroke(picture, style, *ink, kRop2Copy, clip);
}
