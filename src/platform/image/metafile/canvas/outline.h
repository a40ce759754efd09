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
    enum class Verb : std::uint8_t { Move, Line, Curve, Close };

    void MoveTo(Point pt);
    /// Without a point to start from this is a MoveTo.
    void LineTo(Point pt);
    void CurveTo(Point ptA, Point ptB, Point ptEnd);
    /// Closes the figure; the next one begins where this one did unless MoveTo says otherwise.
    void Close();

    void AddBox(const Rect& rc);
    void Append(const Outline& objOther);
    /// Appends objOther, but joins its first point by a line instead of beginning a figure there.
    void Continue(const Outline& objOther);
    void Clear();

    bool Empty() const { return m_aVerbs.empty(); }
    std::size_t PointCount() const { return m_aPoints.size(); }
    /// The last point of the open figure, or the start of a closed one.
    Point Last() const { return m_ptLast; }
    Point First() const { return m_aPoints.empty() ? Point{} : m_aPoints.front(); }

    Outline Transformed(const Affine& objMap) const;
    /// The same with every figure closed.
    Outline AllClosed() const;
    /// The rectangle around all points, control points included.
    Rect Extents() const;
    /// True if there are only horizontal and vertical lines.
    bool Rectilinear() const;
    /// The same outline with every vertex on a pixel corner, and nothing narrower than a pixel; for
    /// rectilinear ones.
    Outline OnPixelCorners() const;
    /// The same with the ends of horizontal and vertical lines moved so that a line of dWidth pixels covers
    /// whole pixels. Curves and slanting lines keep the ends that they don't share with such a line.
    Outline OnPixelCentres(double dWidth) const;

    /// The sum of the lengths of its lines, curves taken along their control points.
    double Length() const;
    /// What a scan converter has to step through: the rows that the edges cross within lTop..lBottom, and the
    /// points.
    std::uint64_t Work(std::int32_t lTop, std::int32_t lBottom) const;

    void AddTo(cairo_t* pCairo) const;

private:
    template <typename Visitor>
    void ForEach(Visitor objVisitor) const;

    std::vector<Verb> m_aVerbs;
    std::vector<Point> m_aPoints;
    Point m_ptStart;
    Point m_ptLast;
};
