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
    double dWidth = 1;  ///< in the units of objPen
    Affine objPen;      ///< the linear map that makes the round pen what it is on the picture; never singular
    cairo_line_cap_t eCap = CAIRO_LINE_CAP_ROUND;
    cairo_line_join_t eJoin = CAIRO_LINE_JOIN_ROUND;
    double dMiterLimit = 10;
    std::vector<double> aDashes;  ///< in the units of objPen; empty for an unbroken line
};

/// A white picture of at most kMaxSurfaceSide pixels a side, or none at all: then nothing is painted, and
/// Touched tells what would have been. Everything is paid for from the budget before it is done.
class Canvas
{
public:
    /// A picture with the pixels of boxArea; null without the memory for it.
    static std::unique_ptr<Canvas> Create(const Box& boxArea, Budget& objBudget);
    static std::unique_ptr<Canvas> CreateMeasuring(Budget& objBudget);

    const Box& Area() const { return m_boxArea; }
    bool Measuring() const { return !m_pCairo; }
    /// The pixels that have been drawn on, or would have been.
    const Box& Touched() const { return m_boxTouched; }
    /// True once Cairo has given up (no memory, mostly).
    bool Failed() const;
    Budget& Work() const { return m_objBudget; }

    /// An outline of nothing but level and upright lines is brought to whole pixels, unless bExact.
    void Fill(const Outline& objOutline, bool bWinding, const Ink& objInk, int nRop2, const Clip& clip,
              bool bExact = false);
    void Stroke(const Outline& objOutline, const StrokeStyle& objStyle, const Ink& objInk, int nRop2,
                const Clip& clip);
    /// The part of the picture that an outline covers, filled or drawn along.
    Clip ClipOf(const Outline& objOutline, bool bWinding, const Box& boxLimit);
    Clip ClipOf(const Outline& objOutline, const StrokeStyle& objStyle, const Box& boxLimit);

    /// Lets fDraw draw in layer of its own, clear at first, whose pixels are those of box; then hands each
    /// pixel inside the clip to fMix(x, y, pixel there, pixel of the layer, level of the clip), which returns
    /// what it becomes.
    using Draw = std::function<void(cairo_t*)>;
    using Mix =
        std::function<std::uint32_t(std::int32_t, std::int32_t, std::uint32_t, std::uint32_t, std::uint32_t)>;
    void Compose(const Box& box, const Clip& clip, const Draw& fDraw, const Mix& fMix);

    /// Row y of the picture, from x = Area().left on: red, green, blue in the low bytes. Not while
    /// measuring.
    std::uint32_t* Row(std::int32_t y);
    const std::uint32_t* Row(std::int32_t y) const { return const_cast<Canvas*>(this)->Row(y); }
    void Touch(const Box& box) { m_boxTouched = Around(m_boxTouched, box); }

private:
    explicit Canvas(Budget& objBudget) : m_objBudget(objBudget) {}

    void Paint(const Box& boxInk, std::uint64_t nWork, const Ink& objInk, int nRop2, const Clip& clip,
               const Draw& fDraw);
    Clip Covered(const Box& boxInk, std::uint64_t nWork, const Draw& fDraw);
    std::uint64_t WorkOf(const Outline& objOutline, const StrokeStyle& objStyle) const;

    Budget& m_objBudget;
    Box m_boxArea;
    Box m_boxTouched;
    SurfacePtr m_pSurface;
    CairoPtr m_pCairo;
    cairo_status_t m_eStatus = CAIRO_STATUS_SUCCESS;
    std::vector<std::uint32_t> m_aLayer;  ///< kept from one Compose to the next
};
