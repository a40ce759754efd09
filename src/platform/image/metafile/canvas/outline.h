// Lines and curves that are filled or drawn along.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <vector>

#include "src/platform/image/metafile/canvas/geometry.h"

/// Figures of straight lines and cubic Béziers. Every point that goes in is tamed, so that what is in can be
/// drawn.
class Outline
{
public:
    enum class Verb : std::uint8_t { kMove, kLine, kCurve, kClose };

    void MoveTo(Point point);
    /// Without a point to start from this is a MoveTo.
    void LineTo(Point point);
    void CurveTo(Point a, Point b, Point end);
    /// Closes the figure; the next one begins where this one did unless MoveTo says otherwise.
    void Close();

    void AddBox(const Rect& rect);
    void Append(const Outline& other);
    /// Appends other, but joins its first point by a line instead of beginning a figure there.
    void Continue(const Outline& other);
    void Clear();

    bool Empty() const { return verbs_.empty(); }
    std::size_t PointCount() const { return points_.size(); }
    /// The last point of the open figure, or the start of a closed one.
    Point Last() const { return last_; }
    Point First() const { return points_.empty() ? Point{} : points_.front(); }

    Outline Transformed(const Affine& map) const;
    /// The same with every figure closed.
    Outline AllClosed() const;
    /// The rectangle around all points, control points included.
    Rect Extents() const;
    /// True if there are only horizontal and vertical lines.
    bool Rectilinear() const;
    /// The same outline with every vertex on a pixel corner, and nothing narrower than a pixel; for
    /// rectilinear ones.
    Outline OnPixelCorners() const;
    /// The same with the ends of horizontal and vertical lines moved so that a line of width pixels covers
    /// whole pixels. Curves and slanting lines keep the ends that they don't share with such a line.
    Outline OnPixelCentres(double width) const;

    /// The sum of the lengths of its lines, curves taken along their control points.
    double Length() const;
    /// What a scan converter has to step through: the rows that the edges cross within top..bottom, and the
    /// points.
    std::uint64_t Work(std::int32_t top, std::int32_t bottom) const;

    void AddTo(cairo_t* cairo) const;

private:
    template <typename Visitor>
    void ForEach(Visitor visitor) const;

    std::vector<Verb> verbs_;
    std::vector<Point> points_;
    Point start_;
    Point last_;
};
