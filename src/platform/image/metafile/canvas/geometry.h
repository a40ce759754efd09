// Points, boxes and affine maps of the metafile player.
// Room: platform/image/metafile/canvas.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
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

/// Limit of drawable coordinates: further out, Cairo's 24.8 fixed point would overflow.
constexpr double kMaxCoordinate = 2'000'000;

/// Clamps to drawable coordinates; NaN becomes 0.
inline double ClampToDrawable(double d)
{
    return std::isnan(d) ? 0 : std::clamp(d, -kMaxCoordinate, kMaxCoordinate);
}

inline Point ClampToDrawable(Point point)
{
    return {ClampToDrawable(point.x), ClampToDrawable(point.y)};
}

/// A rectangle in its user's units; its edges may be swapped.
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

/// A rectangle of whole pixels, half-open: right and bottom are excluded. Empty unless they exceed left and
/// top.
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

/// The smallest box that contains both; empty boxes are ignored.
inline Box Union(const Box& a, const Box& b)
{
    if (a.Empty())
        return b;
    if (b.Empty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

/// The pixels that a rectangle touches, or with nearest, those between its rounded edges.
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
    /// True if the map keeps horizontal and vertical lines axis-parallel.
    bool KeepsAxes() const { return (xy == 0 && yx == 0) || (xx == 0 && yy == 0); }
    bool Finite() const
    {
        return std::isfinite(xx) && std::isfinite(yx) && std::isfinite(xy) && std::isfinite(yy) &&
               std::isfinite(x0) && std::isfinite(y0);
    }
    /// The mean scale factor for lengths.
    double Scale() const { return std::sqrt(std::abs(Determinant())); }
    /// The inverse map; the identity if the map is singular.
    Affine Inverse() const;
};

/// Composes the maps: first is applied first.
Affine Then(const Affine& first, const Affine& second);

/// The bounding rectangle of rect's image under map.
Rect BoundsOf(const Affine& map, const Rect& rect);
