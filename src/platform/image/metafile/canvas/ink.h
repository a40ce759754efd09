// What shapes are painted with: a colour, or a small picture that repeats.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "src/platform/image/metafile/canvas/geometry.h"

struct PatternRelease {
    void operator()(cairo_pattern_t* pPattern) const { cairo_pattern_destroy(pPattern); }
};
struct SurfaceRelease {
    void operator()(cairo_surface_t* pSurface) const { cairo_surface_destroy(pSurface); }
};
struct CairoRelease {
    void operator()(cairo_t* pCairo) const { cairo_destroy(pCairo); }
};
using PatternPtr = std::unique_ptr<cairo_pattern_t, PatternRelease>;
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceRelease>;
using CairoPtr = std::unique_ptr<cairo_t, CairoRelease>;

/// Pixels of a small or large picture: alpha in the high byte, then red, green, blue multiplied by it.
struct Pixels {
    std::int32_t lWidth = 0;
    std::int32_t lHeight = 0;
    std::vector<std::uint32_t> aPixels;  ///< lWidth * lHeight, top row first

    const std::uint32_t* Row(std::int32_t y) const
    {
        return aPixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(lWidth);
    }
    std::uint32_t* Row(std::int32_t y) { return const_cast<std::uint32_t*>(std::as_const(*this).Row(y)); }
};

/// Sides of what Cairo takes as a picture.
constexpr std::int32_t kMaxSurfaceSide = 32000;

/// A picture for Cairo on the pixels, which it borrows.
SurfacePtr pSurfaceOn(const Pixels& objPixels);

struct Ink {
    std::uint32_t nColor = 0;             ///< red, green, blue; used without a tile
    std::shared_ptr<const Pixels> pTile;  ///< repeats from (lOriginX, lOriginY)
    std::int32_t lOriginX = 0;
    std::int32_t lOriginY = 0;

    /// The colour at a pixel, with alpha.
    std::uint32_t At(std::int32_t x, std::int32_t y) const;
    /// Makes it the source of pCairo, whose coordinates are pixels.
    void ApplyTo(cairo_t* pCairo) const;
};

void SetSourceColor(cairo_t* pCairo, std::uint32_t nColor);
