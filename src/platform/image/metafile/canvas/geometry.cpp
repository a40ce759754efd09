// Affine maps.
#include "src/platform/image/metafile/canvas/geometry.h"

Affine Affine::Inverse() const
{
    const double determinant = Determinant();
    if (!std::isfinite(1 / determinant))
        return {};
    Affine result{yy / determinant, -yx / determinant, -xy / determinant, xx / determinant, 0, 0};
    const Point moved = result.ApplyToVector({x0, y0});
    result.x0 = -moved.x;
    result.y0 = -moved.y;
    return result;
}

Affine Then(const Affine& first, const Affine& second)
{
    const Point x = second.ApplyToVector({first.xx, first.yx});
    const Point y = second.ApplyToVector({first.xy, first.yy});
    const Point moved = second.Apply({first.x0, first.y0});
    return {x.x, x.y, y.x, y.y, moved.x, moved.y};
}

Rect BoundsOf(const Affine& map, const Rect& rect)
{
    const Point a = ClampToDrawable(map.Apply({rect.left, rect.top}));
    const Point b = ClampToDrawable(map.Apply({rect.right, rect.top}));
    const Point c = ClampToDrawable(map.Apply({rect.right, rect.bottom}));
    const Point d = ClampToDrawable(map.Apply({rect.left, rect.bottom}));
    return {std::min({a.x, b.x, c.x, d.x}), std::min({a.y, b.y, c.y, d.y}), std::max({a.x, b.x, c.x, d.x}),
            std::max({a.y, b.y, c.y, d.y})};
}
