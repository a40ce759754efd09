// What shapes are painted with: a colour or a repeating tile.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "src/platform/image/metafile/canvas/geometry.h"

struct PatternRelease {
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
struct SurfaceRelease {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct CairoRelease {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using PatternPtr = std::unique_ptr<cairo_pattern_t, PatternRelease>;
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceRelease>;
using CairoPtr = std::unique_ptr<cairo_t, CairoRelease>;

/// Pixels with alpha in the high byte, then premultiplied red, green and blue.
struct Pixels {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> pixels;  ///< width * height, top row first

    const std::uint32_t* Row(std::int32_t y) const
    {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    std::uint32_t* Row(std::int32_t y) { return const_cast<std::uint32_t*>(std::as_const(*this).Row(y)); }
};

/// The largest side of a Cairo surface.
constexpr std::int32_t kMaxSurfaceSide = 32000;

/// A Cairo surface on the pixels, which must outlive it.
SurfacePtr SurfaceOn(const Pixels& pixels);

struct Ink {
    std::uint32_t color = 0;             ///< red, green, blue; ignored if there is a tile
    std::shared_ptr<const Pixels> tile;  ///< repeats from (origin_x, origin_y)
    std::int32_t origin_x = 0;
    std::int32_t origin_y = 0;

    /// The colour at a pixel, with alpha.
    std::uint32_t At(std::int32_t x, std::int32_t y) const;
    /// Sets the ink as cairo's source; user space must be pixels.
    void ApplyTo(cairo_t* cairo) const;
};

void SetSourceColor(cairo_t* cairo, std::uint32_t color);
