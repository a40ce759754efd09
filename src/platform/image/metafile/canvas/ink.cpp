// Colours and tiles.
#include "src/platform/image/metafile/canvas/ink.h"

SurfacePtr SurfaceOn(const Pixels& pixels)
{
    // Cairo only reads a source surface, although its interface takes a non-const pointer.
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(pixels.pixels.data()));
    return SurfacePtr(cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, pixels.width,
                                                          pixels.height, pixels.width * 4));
}

Ink Ink::Solid(std::uint32_t color)
{
    Ink ink;
    ink.color = color | 0xFF000000;
    return ink;
}

Ink Ink::Tile(Pixels tile)
{
    Ink ink;
    ink.tile = std::make_shared<const Pixels>(std::move(tile));
    return ink;
}

static std::int32_t Wrap(std::int64_t l, std::int32_t period)
{
    const auto rest = static_cast<std::int32_t>(l % period);
    return rest < 0 ? rest + period : rest;
}

std::uint32_t Ink::At(std::int32_t x, std::int32_t y) const
{
    std::uint32_t pixel = 0;
    Row(x, y, {&pixel, 1});
    return pixel;
}

void Ink::Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const
{
    if (shader)
        return shader->Row(x, y, out);
    if (!tile) {
        std::fill(out.begin(), out.end(), color);
        return;
    }
    const std::uint32_t* row = tile->Row(Wrap(std::int64_t{y} - origin_y, tile->height));
    std::int32_t column = Wrap(std::int64_t{x} - origin_x, tile->width);
    for (std::uint32_t& pixel : out) {
        pixel = row[column];
        column = column + 1 < tile->width ? column + 1 : 0;
    }
}
