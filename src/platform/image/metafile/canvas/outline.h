// Lines and curves to fill or stroke.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "src/platform/image/metafile/canvas/geometry.h"

/// Figures of lines and cubic Béziers. Points are clamped to drawable coordinates as they are added.
class Outline
{
public:
    enum class Verb : std::uint8_t { kMove, kLine, kCurve, kClose };

    void MoveTo(Point point);
    /// Acts as MoveTo if the outline is empty.
    void LineTo(Point point);
    void CurveTo(Point a, Point b, Point end);
    /// Closes the figure. Without a MoveTo, the next figure starts where this one did.
    void Close();

    void AddBox(const Rect& rect);
    void Append(const Outline& other);
    /// Appends other, connecting its first point by a line instead of starting a new figure.
    void Continue(const Outline& other);
    void Clear();

    bool operator==(const Outline&) const = default;
    bool Empty() const { return verbs_.empty(); }
    std::size_t PointCount() const { return points_.size(); }
    /// The last point of an open figure, or the start of a closed one.
    Point Last() const { return last_; }
    Point First() const { return points_.empty() ? Point{} : points_.front(); }

    Outline Transformed(const Affine& map) const;
    /// A copy with every figure closed.
    Outline AllClosed() const;
    /// The bounding box of all points, including control points.
    Rect Extents() const;
    /// True if all lines are horizontal or vertical.
    bool IsRectilinear() const;
    /// True for a single figure that is a rectangle with horizontal and vertical sides.
    bool IsBox() const;
    /// A copy with every vertex snapped to a pixel corner and nothing thinner than a pixel. For rectilinear
    /// outlines.
    Outline SnapToPixelCorners() const;
    /// A copy with horizontal and vertical lines moved so that strokes of width pixels cover whole pixels.
    /// Other vertices are kept.
    Outline SnapStrokesToPixels(double width) const;

    /// The total length; curves count the length of their control polygon.
    double Length() const;
    /// The cost of scan conversion in budget units: the pixels that edges cross within box, and the points.
    std::uint64_t Work(const Box& box) const;

    /// Calls take(points, closed) for each figure, with curves replaced by chords that deviate by less than a
    /// tenth of a pixel. A figure that is only a MoveTo is left out.
    void ForEachFigure(const std::function<void(std::span<const Point>, bool)>& take) const;

    void AddTo(cairo_t* cairo) const;

private:
    template <typename Visitor>
    void ForEach(Visitor visitor) const;

    std::vector<Verb> verbs_;
    std::vector<Point> points_;
    Point start_;
    Point last_;
};
