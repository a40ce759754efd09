// The pixels that a metafile is drawn on.
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

/// How a line is drawn along an outline.
struct StrokeStyle {
    double width = 1;  ///< in the units of pen
    Affine pen;        ///< the linear map that makes the round pen what it is on the picture; never singular
    cairo_line_cap_t cap = CAIRO_LINE_CAP_ROUND;
    cairo_line_join_t join = CAIRO_LINE_JOIN_ROUND;
    double miter_limit = 10;
    std::vector<double> dashes;  ///< in the units of pen; empty for an unbroken line
};

/// A white picture of at most kMaxSurfaceSide pixels a side, or none at all: then nothing is painted, and
/// Touched tells what would have been. Everything is paid for from the budget before it is done.
class Canvas
{
public:
    /// A picture with the pixels of area; null without the memory for it.
    static std::unique_ptr<Canvas> Create(const Box& area, Budget& budget);
    static std::unique_ptr<Canvas> CreateMeasuring(Budget& budget);

    const Box& Area() const { return area_; }
    bool Measuring() const { return !cairo_; }
    /// The pixels that have been drawn on, or would have been.
    const Box& Touched() const { return touched_; }
    /// True once Cairo has given up (no memory, mostly).
    bool Failed() const;
    Budget& Work() const { return budget_; }

    /// An outline of nothing but level and upright lines is brought to whole pixels, unless exact.
    void Fill(const Outline& outline, bool winding, const Ink& ink, int rop2, const Clip& clip,
              bool exact = false);
    void Stroke(const Outline& outline, const StrokeStyle& style, const Ink& ink, int rop2, const Clip& clip);
    /// The part of the picture that an outline covers, filled or drawn along.
    Clip ClipOf(const Outline& outline, bool winding, const Box& limit);
    Clip ClipOf(const Outline& outline, const StrokeStyle& style, const Box& limit);

    /// Lets draw draw in layer of its own, clear at first, whose pixels are those of box; then hands each
    /// pixel inside the clip to mix(x, y, pixel there, pixel of the layer, level of the clip), which returns
    /// what it becomes.
    using Draw = std::function<void(cairo_t*)>;
    using Mix =
        std::function<std::uint32_t(std::int32_t, std::int32_t, std::uint32_t, std::uint32_t, std::uint32_t)>;
    void Compose(const Box& box, const Clip& clip, const Draw& draw, const Mix& mix);

    /// Row y of the picture, from x = Area().left on: red, green, blue in the low bytes. Not while
    /// measuring.
    std::uint32_t* Row(std::int32_t y);
    const std::uint32_t* Row(std::int32_t y) const { return const_cast<Canvas*>(this)->Row(y); }
    void Touch(const Box& box) { touched_ = Union(touched_, box); }

private:
    explicit Canvas(Budget& budget) : budget_(budget) {}

    void Paint(const Box& ink_box, std::uint64_t work, const Ink& ink, int rop2, const Clip& clip,
               const Draw& draw);
    Clip CoverageOf(const Box& ink, std::uint64_t work, const Draw& draw);
    std::uint64_t WorkOf(const Outline& outline, const StrokeStyle& style) const;

    Budget& budget_;
    Box area_;
    Box touched_;
    SurfacePtr surface_;
    CairoPtr cairo_;
    cairo_status_t status_ = CAIRO_STATUS_SUCCESS;
    std::vector<std::uint32_t> layer_;  ///< kept from one Compose to the next
};
