// Strokes segment by segment: a box for each line, a wedge for each join.
#include "src/platform/image/metafile/canvas/stroker.h"

#include <array>
#include <numbers>

// Points closer than this, in pixels, make no visible difference; but their joins would pile up.
static constexpr double kShortest = 0.2;

static double Cross(Point a, Point b)
{
    return a.x * b.y - a.y * b.x;
}

static double Dot(Point a, Point b)
{
    return a.x * b.x + a.y * b.y;
}

namespace
{
class Stroker
{
public:
    Stroker(const StrokeStyle& style, const PolygonSink& sink)
        : style_(style), sink_(sink), half_(style.width / 2), to_pen_(style.pen.Inverse())
    {
        const double longest =
            std::max(LengthOf(style.pen.ApplyToVector({1, 0})), LengthOf(style.pen.ApplyToVector({0, 1})));
        shortest_ = kShortest / std::max(longest, 1e-9);
        // The chords of a circle deviate by at most an eighth of a pixel.
        const double radius = std::max(half_ * longest, 0.5);
        arc_step_ = std::clamp(2 * std::acos(1 - 0.125 / radius), 0.02, 0.8);
        for (const double dash : style.dashes)
            period_ += dash;
    }

    void Figure(std::span<const Point> points, bool closed);

private:
    void Line(std::span<const Point> points, bool closed, LineCap start, LineCap end);
    void Dashed(std::span<const Point> points, bool closed);
    void Join(Point at, Point before, Point after);
    void Cap(Point at, Point direction, LineCap cap);
    void Fan(Point centre, Point from, Point to, bool left);
    void Emit(std::span<const Point> polygon);

    const StrokeStyle& style_;
    const PolygonSink& sink_;
    double half_;
    Affine to_pen_;
    double shortest_ = 0;
    double arc_step_ = 0.2;
    double period_ = 0;
    std::vector<Point> points_;
    std::vector<Point> dash_;
    std::vector<Point> polygon_;
    std::vector<Point> sent_;
};
}  // namespace

// Sends a convex polygon to the picture, in the orientation that all have in common.
void Stroker::Emit(std::span<const Point> polygon)
{
    double area = 0;
    for (std::size_t n = 1; n + 1 < polygon.size(); ++n)
        area += Cross(polygon[n] - polygon[0], polygon[n + 1] - polygon[0]);
    sent_.clear();
    for (const Point& point : polygon)
        sent_.push_back(ClampToDrawable(style_.pen.Apply(point)));
    if (area < 0)
        std::reverse(sent_.begin(), sent_.end());
    sink_(sent_);
}

static Point Normal(Point direction, double length)
{
    return {-direction.y * length, direction.x * length};
}

// A sector around centre from one arm to the other. Arms that point in opposite directions leave the side
// open, which left decides.
void Stroker::Fan(Point centre, Point from, Point to, bool left)
{
    double sweep = std::atan2(Cross(from, to), Dot(from, to));
    if (std::abs(std::abs(sweep) - std::numbers::pi) < 1e-6)
        sweep = left ? std::numbers::pi : -std::numbers::pi;
    const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / arc_step_)));
    polygon_.assign({centre, centre + from});
    for (int n = 1; n < steps; ++n) {
        const double angle = sweep * n / steps;
        const double cos = std::cos(angle);
        const double sin = std::sin(angle);
        polygon_.push_back(centre + Point{from.x * cos - from.y * sin, from.x * sin + from.y * cos});
    }
    polygon_.push_back(centre + to);
    Emit(polygon_);
}

void Stroker::Join(Point at, Point before, Point after)
{
    const double turn = Cross(before, after);
    const double along = Dot(before, after);
    if (std::abs(turn) < 1e-6 && along > 0)
        return;
    // The wedge is on the outer side of the turn.
    const double side = turn > 0 ? -half_ : half_;
    const Point from = Normal(before, side);
    const Point to = Normal(after, side);
    if (style_.join == LineJoin::kRound)
        return Fan(at, from, to, turn > 0);
    polygon_.assign({at, at + from});
    // The ratio of the miter's length to the width is 1 / cos(half the turn).
    const double cos_half = std::sqrt(std::max(0.0, (1 + along) / 2));
    if (style_.join == LineJoin::kMiter && cos_half * style_.miter_limit >= 1) {
        const Point middle = from + to;
        polygon_.push_back(at + (1 / (2 * cos_half * cos_half)) * middle);
    }
    polygon_.push_back(at + to);
    Emit(polygon_);
}

// Direction points out of the line.
void Stroker::Cap(Point at, Point direction, LineCap cap)
{
    const Point side = Normal(direction, half_);
    if (cap == LineCap::kRound)
        Fan(at, Point{} - side, side, true);
    else if (cap == LineCap::kSquare) {
        const Point out = half_ * direction;
        Emit(std::array{at - side, at - side + out, at + side + out, at + side});
    }
}

// Strokes points that are at least shortest_ apart; a closed line doesn't repeat its first point.
void Stroker::Line(std::span<const Point> points, bool closed, LineCap start, LineCap end)
{
    if (points.empty())
        return;
    if (points.size() == 1) {  // a dot has the shape of its caps
        Cap(points[0], {-1, 0}, start);
        Cap(points[0], {1, 0}, end);
        return;
    }
    const std::size_t segments = points.size() - (closed ? 0 : 1);
    Point first, last;
    for (std::size_t n = 0; n < segments; ++n) {
        const Point a = points[n];
        const Point b = points[n + 1 < points.size() ? n + 1 : 0];
        const Point direction = (1 / std::max(LengthOf(b - a), 1e-30)) * (b - a);
        const Point side = Normal(direction, half_);
        Emit(std::array{a + side, b + side, b - side, a - side});
        if (n == 0)
            first = direction;
        else
            Join(a, last, direction);
        last = direction;
    }
    if (closed)
        return Join(points[0], last, first);
    Cap(points.front(), Point{} - first, start);
    Cap(points.back(), last, end);
}

void Stroker::Dashed(std::span<const Point> points, bool closed)
{
    // Find the dash in which the line starts.
    double offset = std::fmod(style_.dash_offset, 2 * period_);
    if (offset < 0)
        offset += 2 * period_;
    std::size_t index = 0;
    const auto length = [&](std::size_t n) { return style_.dashes[n % style_.dashes.size()]; };
    while (offset >= length(index) && index < 2 * style_.dashes.size()) {
        offset -= length(index);
        ++index;
    }
    double left = length(index) - offset;
    bool is_on = index % 2 == 0;
    bool at_start = !closed;
    dash_.clear();
    if (is_on)
        dash_.push_back(points[0]);
    const auto finish = [&](LineCap end) {
        Line(dash_, false, at_start ? style_.cap : style_.dash_cap, end);
        dash_.clear();
        at_start = false;
    };
    const std::size_t segments = points.size() - (closed ? 0 : 1);
    for (std::size_t n = 0; n < segments; ++n) {
        const Point a = points[n];
        const Point b = points[n + 1 < points.size() ? n + 1 : 0];
        const double size = LengthOf(b - a);
        double done = 0;
        while (size - done > left) {
            done += left;
            const Point at = a + (done / size) * (b - a);
            if (is_on) {
                if (LengthOf(at - dash_.back()) > 1e-12)
                    dash_.push_back(at);
                finish(style_.dash_cap);
            } else
                dash_.assign(1, at);
            at_start = false;
            is_on = !is_on;
            left = length(++index);
        }
        left -= size - done;
        if (is_on)
            dash_.push_back(b);
    }
    if (is_on)
        finish(closed ? style_.dash_cap : style_.end_cap);
}

void Stroker::Figure(std::span<const Point> points, bool closed)
{
    if (points.size() < 2)
        return;
    points_.clear();
    for (const Point& point : points) {
        const Point at = to_pen_.Apply(point);
        if (points_.empty() || LengthOf(at - points_.back()) >= shortest_)
            points_.push_back(at);
    }
    // Dropping points must not move the end.
    const Point end = to_pen_.Apply(points.back());
    if (!closed && points_.size() > 1)
        points_.back() = end;
    if (closed && points_.size() > 1 && LengthOf(points_.back() - points_.front()) < shortest_)
        points_.pop_back();
    if (points_.size() < 2)
        closed = false;
    if (period_ > 0 && points_.size() > 1)
        Dashed(points_, closed);
    else
        Line(points_, closed, style_.cap, style_.end_cap);
}

void Stroke(const Outline& outline, const StrokeStyle& style, const PolygonSink& sink)
{
    Stroker stroker(style, sink);
    outline.ForEachFigure(
        [&stroker](std::span<const Point> points, bool closed) { stroker.Figure(points, closed); });
}

std::uint64_t StrokeWork(const Outline& outline, const StrokeStyle& style, const Box& box)
{
    // Sending a piece, and the pen's outline for each of its ends.
    const double scale = style.pen.Scale();
    const double pen = std::min(style.width * scale, static_cast<double>(box.Width()) + box.Height());
    const double ends = 200 + 8 * pen;
    double pieces = static_cast<double>(outline.PointCount());
    double period = 0;
    for (const double dash : style.dashes)
        period += dash;
    if (period * scale > 0)
        pieces +=
            ClampToDrawable(outline.Length() / (period * scale)) * static_cast<double>(style.dashes.size());
    return outline.Work(box) * 2 + static_cast<std::uint64_t>(pieces * ends);
}
