// Builds, transforms and measures outlines.
#include "src/platform/image/metafile/canvas/outline.h"

void Outline::MoveTo(Point point)
{
    point = ClampToDrawable(point);
    if (!verbs_.empty() && verbs_.back() == Verb::kMove)
        points_.back() = point;
    else {
        verbs_.push_back(Verb::kMove);
        points_.push_back(point);
    }
    start_ = last_ = point;
}

void Outline::LineTo(Point point)
{
    if (verbs_.empty())
        return MoveTo(point);
    if (verbs_.back() == Verb::kClose)
        MoveTo(start_);
    verbs_.push_back(Verb::kLine);
    points_.push_back(ClampToDrawable(point));
    last_ = points_.back();
}

void Outline::CurveTo(Point a, Point b, Point end)
{
    if (verbs_.empty())
        MoveTo(a);
    if (verbs_.back() == Verb::kClose)
        MoveTo(start_);
    verbs_.push_back(Verb::kCurve);
    points_.push_back(ClampToDrawable(a));
    points_.push_back(ClampToDrawable(b));
    points_.push_back(ClampToDrawable(end));
    last_ = points_.back();
}

void Outline::Close()
{
    if (verbs_.empty() || verbs_.back() == Verb::kClose)
        return;
    verbs_.push_back(Verb::kClose);
    last_ = start_;
}

void Outline::AddBox(const Rect& rect)
{
    MoveTo({rect.left, rect.top});
    LineTo({rect.right, rect.top});
    LineTo({rect.right, rect.bottom});
    LineTo({rect.left, rect.bottom});
    Close();
}

void Outline::Append(const Outline& other)
{
    if (other.Empty())
        return;
    verbs_.insert(verbs_.end(), other.verbs_.begin(), other.verbs_.end());
    points_.insert(points_.end(), other.points_.begin(), other.points_.end());
    start_ = other.start_;
    last_ = other.last_;
}

void Outline::Continue(const Outline& other)
{
    if (other.Empty())
        return;
    LineTo(other.First());
    verbs_.insert(verbs_.end(), other.verbs_.begin() + 1, other.verbs_.end());
    points_.insert(points_.end(), other.points_.begin() + 1, other.points_.end());
    last_ = other.last_;
}

void Outline::Clear()
{
    verbs_.clear();
    points_.clear();
    start_ = last_ = {};
}

// Calls visitor(verb, index of its first point, previous point, start of the figure).
template <typename Visitor>
void Outline::ForEach(Visitor visitor) const
{
    std::size_t point = 0;
    Point start, before;
    for (const Verb verb : verbs_) {
        const std::size_t count = verb == Verb::kCurve ? 3 : verb == Verb::kClose ? 0 : 1;
        visitor(verb, point, before, start);
        point += count;
        before = verb == Verb::kClose ? start : points_[point - 1];
        if (verb == Verb::kMove)
            start = before;
    }
}

Outline Outline::Transformed(const Affine& map) const
{
    Outline result = *this;
    for (Point& point : result.points_)
        point = ClampToDrawable(map.Apply(point));
    result.start_ = ClampToDrawable(map.Apply(start_));
    result.last_ = ClampToDrawable(map.Apply(last_));
    return result;
}

Outline Outline::AllClosed() const
{
    Outline result;
    ForEach([&](Verb verb, std::size_t point, Point, Point) {
        switch (verb) {
            case Verb::kMove:
                result.Close();
                result.MoveTo(points_[point]);
                break;
            case Verb::kLine:
                result.LineTo(points_[point]);
                break;
            case Verb::kCurve:
                result.CurveTo(points_[point], points_[point + 1], points_[point + 2]);
                break;
            case Verb::kClose:
                result.Close();
                break;
        }
    });
    result.Close();
    return result;
}

Rect Outline::Extents() const
{
    if (points_.empty())
        return {};
    Rect rect{points_[0].x, points_[0].y, points_[0].x, points_[0].y};
    for (const Point& point : points_) {
        rect.left = std::min(rect.left, point.x);
        rect.top = std::min(rect.top, point.y);
        rect.right = std::max(rect.right, point.x);
        rect.bottom = std::max(rect.bottom, point.y);
    }
    return rect;
}

// Coordinates result from a chain of multiplications; ignore rounding errors up to 0.01 pixels.
static bool IsSame(double a, double b)
{
    return std::abs(a - b) < 0.01;
}

bool Outline::IsRectilinear() const
{
    bool result = true;
    ForEach([&](Verb verb, std::size_t point, Point before, Point start) {
        if (verb == Verb::kCurve)
            result = false;
        if (verb == Verb::kLine || verb == Verb::kClose) {
            const Point end = verb == Verb::kLine ? points_[point] : start;
            result = result && (IsSame(end.x, before.x) || IsSame(end.y, before.y));
        }
    });
    return result;
}

bool Outline::IsBox() const
{
    std::size_t count = points_.size();
    if (count < 4 || verbs_[0] != Verb::kMove || !IsRectilinear())
        return false;
    for (std::size_t n = 1; n < verbs_.size(); ++n)
        if (verbs_[n] != Verb::kLine && !(verbs_[n] == Verb::kClose && n + 1 == verbs_.size()))
            return false;
    if (count == 5 && points_[4].x == points_[0].x && points_[4].y == points_[0].y)
        count = 4;
    // Opposite corners differ in both coordinates, and the other two share one with each of them.
    const auto& p = points_;
    const bool across = p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y && p[3].x == p[0].x;
    const bool down = p[0].x == p[1].x && p[1].y == p[2].y && p[2].x == p[3].x && p[3].y == p[0].y;
    return count == 4 && (across || down);
}

// Snaps the points [first, last) of one figure to pixel corners.
static void SnapToCorners(Point* first, Point* last)
{
    Rect rect{first->x, first->y, first->x, first->y};
    for (const Point* point = first; point != last; ++point)
        rect = {std::min(rect.left, point->x), std::min(rect.top, point->y), std::max(rect.right, point->x),
                std::max(rect.bottom, point->y)};
    // Rounding would collapse a bar thinner than a pixel, such as a table rule: keep it one pixel wide.
    const bool thin_x = std::floor(rect.left + 0.5) == std::floor(rect.right + 0.5) && rect.Width() > 0;
    const bool thin_y = std::floor(rect.top + 0.5) == std::floor(rect.bottom + 0.5) && rect.Height() > 0;
    const double middle_x = (rect.left + rect.right) / 2;
    const double middle_y = (rect.top + rect.bottom) / 2;
    for (Point* point = first; point != last; ++point) {
        point->x = thin_x ? std::floor(middle_x) + (point->x > middle_x ? 1 : 0) : std::floor(point->x + 0.5);
        point->y = thin_y ? std::floor(middle_y) + (point->y > middle_y ? 1 : 0) : std::floor(point->y + 0.5);
    }
}

Outline Outline::SnapToPixelCorners() const
{
    Outline result = *this;
    Point* const points = result.points_.data();
    std::size_t first = 0;
    ForEach([&](Verb verb, std::size_t point, Point, Point) {
        if (verb != Verb::kMove || point == first)
            return;
        SnapToCorners(points + first, points + point);
        first = point;
    });
    if (first < points_.size())
        SnapToCorners(points + first, points + points_.size());
    return result;
}

Outline Outline::SnapStrokesToPixels(double width) const
{
    const bool is_odd = std::fmod(std::max(1.0, std::floor(width + 0.5)), 2) == 1;
    // Odd widths are centred on a pixel, even widths on a pixel edge.
    const auto snapped = [is_odd](double d) { return is_odd ? std::floor(d) + 0.5 : std::floor(d); };
    Outline result = *this;
    const std::size_t points = points_.size();
    std::size_t start = 0;
    std::size_t last = 0;
    ForEach([&](Verb verb, std::size_t point, Point before, Point start_point) {
        if (verb == Verb::kMove)
            start = last = point;
        else if (verb == Verb::kCurve)
            last = point + 2;
        else {
            const std::size_t end = verb == Verb::kLine ? point : start;
            const Point end_point = verb == Verb::kLine ? points_[point] : start_point;
            // Keep the short level pieces of a flattened curve unsnapped, or it gets dents.
            const bool is_long = LengthOf(end_point - before) >= 4 || points <= 5;
            const bool is_level = is_long && IsSame(end_point.y, before.y);
            const bool upright = is_long && IsSame(end_point.x, before.x);
            if (is_level)
                result.points_[last].y = result.points_[end].y = snapped(before.y);
            if (upright)
                result.points_[last].x = result.points_[end].x = snapped(before.x);
            last = end;
        }
    });
    return result;
}

double Outline::Length() const
{
    double sum = 0;
    ForEach([&](Verb verb, std::size_t point, Point before, Point start) {
        if (verb == Verb::kLine)
            sum += LengthOf(points_[point] - before);
        else if (verb == Verb::kClose)
            sum += LengthOf(start - before);
        else if (verb == Verb::kCurve)
            sum += LengthOf(points_[point] - before) + LengthOf(points_[point + 1] - points_[point]) +
                   LengthOf(points_[point + 2] - points_[point + 1]);
    });
    return sum;
}

std::uint64_t Outline::Work(const Box& box) const
{
    // Cells within a row count once per column, and only inside the box.
    const auto cells = [&](Point a, Point b) {
        const double upper = std::max<double>(std::min(a.y, b.y), box.top);
        const double rows = std::min<double>(std::max(a.y, b.y), box.bottom) - upper;
        const double start = std::max<double>(std::min(a.x, b.x), box.left);
        const double columns = std::min<double>(std::max(a.x, b.x), box.right) - start;
        return rows <= 0 ? 0 : rows + std::max(0.0, columns);
    };
    double sum = 0;
    ForEach([&](Verb verb, std::size_t point, Point before, Point start) {
        if (verb == Verb::kLine)
            sum += cells(before, points_[point]);
        else if (verb == Verb::kClose)
            sum += cells(before, start);
        else if (verb == Verb::kCurve)
            sum += 100 + cells(before, points_[point]) + cells(points_[point], points_[point + 1]) +
                   cells(points_[point + 1], points_[point + 2]);
    });
    return static_cast<std::uint64_t>(sum) * 6 + points_.size() * 20;
}

static void AddCurve(std::vector<Point>& points, Point a, Point b, Point end)
{
    const Point start = points.back();
    // The deviation of n chords is at most 3/4 of the larger second difference by n squared.
    const double bend = std::max(LengthOf(start - 2 * a + b), LengthOf(a - 2 * b + end));
    const int chords = static_cast<int>(std::clamp(std::ceil(std::sqrt(0.75 * bend / 0.1)), 1.0, 500.0));
    for (int n = 1; n < chords; ++n) {
        const double t = static_cast<double>(n) / chords;
        const double u = 1 - t;
        points.push_back(u * u * u * start + 3 * u * u * t * a + 3 * u * t * t * b + t * t * t * end);
    }
    points.push_back(end);
}

void Outline::ForEachFigure(const std::function<void(std::span<const Point>, bool)>& take) const
{
    std::vector<Point> figure;
    const auto finish = [&](bool closed) {
        if (figure.size() > 1)
            take(figure, closed);
        figure.clear();
    };
    ForEach([&](Verb verb, std::size_t point, Point before, Point) {
        switch (verb) {
            case Verb::kMove:
                finish(false);
                figure.push_back(points_[point]);
                break;
            case Verb::kLine:
                figure.push_back(points_[point]);
                break;
            case Verb::kCurve:
                if (figure.empty())
                    figure.push_back(before);
                AddCurve(figure, points_[point], points_[point + 1], points_[point + 2]);
                break;
            case Verb::kClose:
                finish(true);
                break;
        }
    });
    finish(false);
}

void Outline::AddTo(cairo_t* cairo) const
{
    ForEach([&](Verb verb, std::size_t point, Point, Point) {
        switch (verb) {
            case Verb::kMove:
                cairo_move_to(cairo, points_[point].x, points_[point].y);
                break;
            case Verb::kLine:
                cairo_line_to(cairo, points_[point].x, points_[point].y);
                break;
            case Verb::kCurve:
                cairo_curve_to(cairo, points_[point].x, points_[point].y, points_[point + 1].x,
                               points_[point + 1].y, points_[point + 2].x, points_[point + 2].y);
                break;
            case Verb::kClose:
                cairo_close_path(cairo);
                break;
        }
    });
}
