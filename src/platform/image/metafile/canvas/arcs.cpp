// Ellipses, arcs and rounded boxes.
#include "src/platform/image/metafile/canvas/arcs.h"

#include <numbers>

void AddArc(Outline& outline, const Rect& rect, double start, double sweep, ArcStart join)
{
    const Point centre{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    const Point radius{(rect.right - rect.left) / 2, (rect.bottom - rect.top) / 2};
    constexpr double kTurn = 2 * std::numbers::pi;
    if (!std::isfinite(start) || !std::isfinite(sweep))
        return;
    sweep = std::clamp(sweep, -kTurn, kTurn);
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (kTurn / 4) - 1e-9)));
    const double step = sweep / pieces;
    // Tangent length of the cubic that best approximates an arc of step radians.
    const double tangent = 4.0 / 3 * std::tan(step / 4);
    const auto at = [&](double cos, double sin) {
        return Point{centre.x + radius.x * cos, centre.y + radius.y * sin};
    };
    double cos = std::cos(start);
    double sin = std::sin(start);
    if (join == ArcStart::kNewFigure)
        outline.MoveTo(at(cos, sin));
    else
        outline.LineTo(at(cos, sin));
    for (int n = 1; n <= pieces; ++n) {
        const double next_cos = std::cos(start + n * step);
        const double next_sin = std::sin(start + n * step);
        outline.CurveTo(at(cos - tangent * sin, sin + tangent * cos),
                        at(next_cos + tangent * next_sin, next_sin - tangent * next_cos),
                        at(next_cos, next_sin));
        cos = next_cos;
        sin = next_sin;
    }
}

void AddEllipse(Outline& outline, const Rect& rect)
{
    AddArc(outline, rect, 0, -2 * std::numbers::pi, ArcStart::kNewFigure);
    outline.Close();
}

void AddRoundRect(Outline& outline, const Rect& rect, double corner_width, double corner_height)
{
    const Rect good = rect.Normalised();
    const double width = std::min(std::abs(corner_width), good.Width());
    const double height = std::min(std::abs(corner_height), good.Height());
    if (!(width > 0) || !(height > 0))
        return outline.AddBox(good);
    constexpr double kQuarter = std::numbers::pi / 2;
    const Rect right{good.right - width, 0, good.right, 0};
    const Rect left{good.left, 0, good.left + width, 0};
    const auto corner = [&](const Rect& side, bool top) {
        return Rect{side.left, top ? good.top : good.bottom - height, side.right,
                    top ? good.top + height : good.bottom};
    };
    AddArc(outline, corner(right, true), 0, -kQuarter, ArcStart::kNewFigure);
    AddArc(outline, corner(left, true), -kQuarter, -kQuarter, ArcStart::kLineFromLast);
    AddArc(outline, corner(left, false), -2 * kQuarter, -kQuarter, ArcStart::kLineFromLast);
    AddArc(outline, corner(right, false), -3 * kQuarter, -kQuarter, ArcStart::kLineFromLast);
    outline.Close();
}

double ArcAngle(const Rect& rect, Point point)
{
    const double radius_x = (rect.right - rect.left) / 2;
    const double radius_y = (rect.bottom - rect.top) / 2;
    const double x = (point.x - (rect.left + rect.right) / 2) / (radius_x == 0 ? 1 : radius_x);
    const double y = (point.y - (rect.top + rect.bottom) / 2) / (radius_y == 0 ? 1 : radius_y);
    return std::atan2(y, x);
}
