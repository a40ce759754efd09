// Colours and tiles.
#include "src/platform/image/metafile/canvas/ink.h"

SurfacePtr SurfaceOn(const Pixels& pixels)
{
    // Cairo only reads a source surface, although its interface takes a non-const pointer.
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(pixels.pixels.data()));
    return SurfacePtr(cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, pixels.width,
                                                          pixels.height, pixels.width * 4));
}

void SetSourceColor(cairo_t* cairo, std::uint32_t color)
{
    cairo_set_source_rgb(cairo, (color >> 16 & 255) / 255.0, (color >> 8 & 255) / 255.0,
                         (color & 255) / 255.0);
}

static std::int32_t Wrap(std::int64_t l, std::int32_t period)
{
    const auto rest = static_cast<std::int32_t>(l % period);
    return rest < 0 ? rest + period : rest;
}

std::uint32_t Ink::At(std::int32_t x, std::int32_t y) const
{
    if (!tile)
        return color | 0xFF000000;
    return tile->Row(
        Wrap(std::int64_t{y} - origin_y, tile->height))[Wrap(std::int64_t{x} - origin_x, tile->width)];
}

void Ink::ApplyTo(cairo_t* cairo) const
{
    if (!tile)
        return SetSourceColor(cairo, color);
    const SurfacePtr surface = SurfaceOn(*tile);
    const PatternPtr pattern(cairo_pattern_create_for_surface(surface.get()));
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_REPEAT);
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
    cairo_matrix_t matrix;
    cairo_matrix_init_translate(&matrix, -origin_x, -origin_y);
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    cairo_set_source(cairo, pattern.get());
}
