// Points, boxes and affine maps of the metafile player.
// Room: platform/image/metafile/canvas.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

struct Point {
    double x = 0;
    double y = 0;
};

inline Point operator+(Point a, Point b)
{
    return {a.x + b.x, a.y + b.y};
}

inline Point operator-(Point a, Point b)
{
    return {a.x - b.x, a.y - b.y};
}

inline Point operator*(double d, Point point)
{
    return {d * point.x, d * point.y};
}

inline double LengthOf(Point point)
{
    return std::hypot(point.x, point.y);
}

/// Nothing is drawn farther than this from the picture's corner: beyond it Cairo's 24.8 fixed point would
/// wrap round.
constexpr double kMaxCoordinate = 2'000'000;

/// What isn't a number becomes 0, what is too far off comes to the border of what can be drawn.
inline double ClampToDrawable(double d)
{
    return std::isnan(d) ? 0 : std::clamp(d, -kMaxCoordinate, kMaxCoordinate);
}

inline Point ClampToDrawable(Point point)
{
    return {ClampToDrawable(point.x), ClampToDrawable(point.y)};
}

/// A rectangle of any orientation, in the units of its user.
struct Rect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    Rect Normalised() const
    {
        return {std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)};
    }
    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
};

/// Whole pixels, right and bottom excluded. Empty when they don't lie beyond left and top.
struct Box {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    bool Empty() const { return right <= left || bottom <= top; }
    std::int32_t Width() const { return Empty() ? 0 : right - left; }
    std::int32_t Height() const { return Empty() ? 0 : bottom - top; }
    std::uint64_t Area() const
    {
        return static_cast<std::uint64_t>(Width()) * static_cast<std::uint64_t>(Height());
    }
    bool Holds(std::int32_t x, std::int32_t y) const
    {
        return x >= left && x < right && y >= top && y < bottom;
    }
    bool operator==(const Box&) const = default;
};

inline Box Intersection(const Box& a, const Box& b)
{
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

/// The smallest box around both; an empty one counts for nothing.
inline Box Union(const Box& a, const Box& b)
{
    if (a.Empty())
        return b;
    if (b.Empty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

/// The pixels that a rectangle touches, or with nearest those between its rounded edges.
inline Box BoxOf(const Rect& rect, bool nearest = false)
{
    const Rect good = rect.Normalised();
    const auto whole = [](double d) { return static_cast<std::int32_t>(ClampToDrawable(d)); };
    if (nearest)
        return {whole(std::floor(good.left + 0.5)), whole(std::floor(good.top + 0.5)),
                whole(std::floor(good.right + 0.5)), whole(std::floor(good.bottom + 0.5))};
    return {whole(std::floor(good.left)), whole(std::floor(good.top)), whole(std::ceil(good.right)),
            whole(std::ceil(good.bottom))};
}

/// x' = xx * x + xy * y + x0, y' = yx * x + yy * y + y0.
struct Affine {
    double xx = 1;
    double yx = 0;
    double xy = 0;
    double yy = 1;
    double x0 = 0;
    double y0 = 0;

    Point Apply(Point point) const
    {
        return {xx * point.x + xy * point.y + x0, yx * point.x + yy * point.y + y0};
    }
    Point ApplyToVector(Point point) const
    {
        return {xx * point.x + xy * point.y, yx * point.x + yy * point.y};
    }
    double Determinant() const { return xx * yy - xy * yx; }
    /// True when horizontal and vertical lines stay so (or change places).
    bool KeepsAxes() const { return (xy == 0 && yx == 0) || (xx == 0 && yy == 0); }
    bool Finite() const
    {
        return std::isfinite(xx) && std::isfinite(yx) && std::isfinite(xy) && std::isfinite(yy) &&
               std::isfinite(x0) && std::isfinite(y0);
    }
    /// The mean factor by which lengths grow.
    double Scale() const { return std::sqrt(std::abs(Determinant())); }
    /// The map that undoes this one; the identity if there is none.
    Affine Inverse() const;
};

/// First one map, then the other.
Affine Then(const Affine& first, const Affine& second);

/// The upright rectangle around the image of rect.
Rect BoundsOf(const Affine& map, const Rect& rect);
