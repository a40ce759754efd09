// The pixel surface that a metafile is drawn on.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "src/platform/image/metafile/canvas/budget.h"
#include "src/platform/image/metafile/canvas/clip.h"
#include "src/platform/image/metafile/canvas/ink.h"
#include "src/platform/image/metafile/canvas/outline.h"
#include "src/platform/image/metafile/canvas/stroker.h"

/// A picture, white at first. A measuring canvas has no pixels: it paints nothing and only records what would
/// have been touched. All work is charged to the budget before it
/// is done.
class Canvas
{
public:
    /// A picture of the pixels of area.
    static std::unique_ptr<Canvas> Create(const Box& area, Budget& budget);
    static std::unique_ptr<Canvas> CreateMeasuring(Budget& budget);

    /// Makes the picture white and untouched again.
    void Reset();

    const Box& Area() const { return area_; }
    bool Measuring() const { return pixels_.empty(); }
    /// The bounds of all pixels drawn on so far.
    const Box& Touched() const { return touched_; }
    /// True once Cairo has reported an error, usually lack of memory.
    bool Failed() const { return status_ != CAIRO_STATUS_SUCCESS; }
    Budget& Work() const { return budget_; }

    /// Fills the outline. Unless exact, a rectilinear outline is snapped to whole pixels.
    void Fill(const Outline& outline, bool winding, const Ink& ink, int rop2, const Clip& clip,
              bool exact = false);
    void Stroke(const Outline& outline, const StrokeStyle& style, const Ink& ink, int rop2, const Clip& clip);
    /// The area that an outline covers, filled or stroked.
    Clip ClipOf(const Outline& outline, bool winding, const Box& limit);
    Clip ClipOf(const Outline& outline, const StrokeStyle& style, const Box& limit);

    /// Calls draw on a cleared layer with the pixels of box. Then sets each pixel inside the clip to mix(x,
    /// y, old pixel, layer pixel, clip coverage).
    using Draw = std::function<void(cairo_t*)>;
    using Mix =
        std::function<std::uint32_t(std::int32_t, std::int32_t, std::uint32_t, std::uint32_t, std::uint32_t)>;
    void Compose(const Box& box, const Clip& clip, const Draw& draw, const Mix& mix);

    /// Row y of the picture, starting at x = Area().left: red, green, blue in the low bytes. Not available on
    /// a measuring canvas.
    std::uint32_t* Row(std::int32_t y)
    {
        return pixels_.data() +
               static_cast<std::size_t>(y - area_.top) * static_cast<std::size_t>(area_.Width());
    }
    const std::uint32_t* Row(std::int32_t y) const { return const_cast<Canvas*>(this)->Row(y); }
    void Touch(const Box& box) { touched_ = Union(touched_, box); }

private:
    explicit Canvas(Budget& budget) : budget_(budget) {}

    void Paint(const Box& ink_box, std::uint64_t work, bool winding, const PolygonSource& shape,
               const Ink& ink, int rop2, const Clip& clip);
    Clip CoverageOf(const Box& ink_box, std::uint64_t work, bool winding, const PolygonSource& shape);

    Budget& budget_;
    Box area_;
    Box touched_;
    std::vector<std::uint32_t> pixels_;
    cairo_status_t status_ = CAIRO_STATUS_SUCCESS;
    std::vector<std::uint32_t> layer_;  ///< reused between calls of Compose
};
