// What shapes are painted with: a colour, a repeating tile or a shader.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <span>
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

/// Colours that differ from pixel to pixel.
class Shader
{
public:
    virtual ~Shader() = default;
    /// Sets out to the premultiplied colours of consecutive pixels of row y; the first one is at x.
    virtual void Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const = 0;
    /// The cost of a pixel in budget units.
    virtual std::uint64_t CostOfPixel() const = 0;
};

struct Ink {
    std::uint32_t color = 0xFF000000;    ///< premultiplied; ignored if there is a tile or a shader
    std::shared_ptr<const Pixels> tile;  ///< repeats from (origin_x, origin_y)
    std::int32_t origin_x = 0;
    std::int32_t origin_y = 0;
    std::shared_ptr<const Shader> shader;

    /// An opaque colour: red, green, blue from the high byte down.
    static Ink Solid(std::uint32_t color);
    static Ink Tile(Pixels tile);

    bool IsSolid() const { return !tile && !shader; }
    /// The colour at a pixel, with alpha.
    std::uint32_t At(std::int32_t x, std::int32_t y) const;
    /// The colours of consecutive pixels, with alpha.
    void Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const;
    std::uint64_t CostOfPixel() const { return shader ? shader->CostOfPixel() : 1; }
};
