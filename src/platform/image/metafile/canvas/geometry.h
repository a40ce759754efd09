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

inline Point operator+(Point ptA, Point ptB)
{
    return {ptA.x + ptB.x, ptA.y + ptB.y};
}

inline Point operator-(Point ptA, Point ptB)
{
    return {ptA.x - ptB.x, ptA.y - ptB.y};
}

inline Point operator*(double d, Point pt)
{
    return {d * pt.x, d * pt.y};
}

inline double dLength(Point pt)
{
    return std::hypot(pt.x, pt.y);
}

/// Nothing is drawn farther than this from the picture's corner: beyond it Cairo's 24.8 fixed point would
/// wrap round.
constexpr double kFarthest = 2'000'000;

/// What isn't a number becomes 0, what is too far off comes to the border of what can be drawn.
inline double dTamed(double d)
{
    return std::isnan(d) ? 0 : std::clamp(d, -kFarthest, kFarthest);
}

inline Point ptTamed(Point pt)
{
    return {dTamed(pt.x), dTamed(pt.y)};
}

/// A rectangle of any orientation, in the units of its user.
struct Rect {
    double dLeft = 0;
    double dTop = 0;
    double dRight = 0;
    double dBottom = 0;

    Rect Normalised() const
    {
        return {std::min(dLeft, dRight), std::min(dTop, dBottom), std::max(dLeft, dRight),
                std::max(dTop, dBottom)};
    }
    double Width() const { return dRight - dLeft; }
    double Height() const { return dBottom - dTop; }
};

/// Whole pixels, right and bottom excluded. Empty when they don't lie beyond left and top.
struct Box {
    std::int32_t lLeft = 0;
    std::int32_t lTop = 0;
    std::int32_t lRight = 0;
    std::int32_t lBottom = 0;

    bool Empty() const { return lRight <= lLeft || lBottom <= lTop; }
    std::int32_t Width() const { return Empty() ? 0 : lRight - lLeft; }
    std::int32_t Height() const { return Empty() ? 0 : lBottom - lTop; }
    std::uint64_t Area() const
    {
        return static_cast<std::uint64_t>(Width()) * static_cast<std::uint64_t>(Height());
    }
    bool Holds(std::int32_t x, std::int32_t y) const
    {
        return x >= lLeft && x < lRight && y >= lTop && y < lBottom;
    }
    bool operator==(const Box&) const = default;
};

inline Box Intersection(const Box& boxA, const Box& boxB)
{
    return {std::max(boxA.lLeft, boxB.lLeft), std::max(boxA.lTop, boxB.lTop),
            std::min(boxA.lRight, boxB.lRight), std::min(boxA.lBottom, boxB.lBottom)};
}

/// The smallest box around both; an empty one counts for nothing.
inline Box Around(const Box& boxA, const Box& boxB)
{
    if (boxA.Empty())
        return boxB;
    if (boxB.Empty())
        return boxA;
    return {std::min(boxA.lLeft, boxB.lLeft), std::min(boxA.lTop, boxB.lTop),
            std::max(boxA.lRight, boxB.lRight), std::max(boxA.lBottom, boxB.lBottom)};
}

/// The pixels that a rectangle touches, or with bNearest those between its rounded edges.
inline Box BoxOf(const Rect& rc, bool bNearest = false)
{
    const Rect rcGood = rc.Normalised();
    const auto lWhole = [](double d) { return static_cast<std::int32_t>(dTamed(d)); };
    if (bNearest)
        return {lWhole(std::floor(rcGood.dLeft + 0.5)), lWhole(std::floor(rcGood.dTop + 0.5)),
                lWhole(std::floor(rcGood.dRight + 0.5)), lWhole(std::floor(rcGood.dBottom + 0.5))};
    return {lWhole(std::floor(rcGood.dLeft)), lWhole(std::floor(rcGood.dTop)),
            lWhole(std::ceil(rcGood.dRight)), lWhole(std::ceil(rcGood.dBottom))};
}

/// x' = xx * x + xy * y + x0, y' = yx * x + yy * y + y0.
struct Affine {
    double xx = 1;
    double yx = 0;
    double xy = 0;
    double yy = 1;
    double x0 = 0;
    double y0 = 0;

    Point Apply(Point pt) const { return {xx * pt.x + xy * pt.y + x0, yx * pt.x + yy * pt.y + y0}; }
    Point ApplyToVector(Point pt) const { return {xx * pt.x + xy * pt.y, yx * pt.x + yy * pt.y}; }
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
Affine Then(const Affine& objFirst, const Affine& objSecond);

/// The upright rectangle around the image of rc.
Rect RectAround(const Affine& objMap, const Rect& rc);
