// Picks the colour, tile or shader of a brush.
#include "src/platform/image/metafile/emfplus/brush_inks.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/emfplus/gradients.h"

std::uint32_t PremultipliedColor(ArgbColor color)
{
    const std::uint32_t alpha = color >> 24;
    return alpha << 24 | (ScalePixel(color, alpha) & 0xFFFFFF);
}

static Ink ColorInk(ArgbColor color)
{
    Ink ink;
    ink.color = PremultipliedColor(color);
    return ink;
}

// A degenerate gradient shows its last colour.
static Ink ShaderInk(std::shared_ptr<const Shader> shader, ArgbColor otherwise)
{
    if (!shader)
        return ColorInk(otherwise);
    Ink ink;
    ink.shader = std::move(shader);
    return ink;
}

static Ink HatchInk(const PlusHatchBrush& brush, Point origin)
{
    Pixels tile{8, 8, std::vector<std::uint32_t>(64)};
    for (std::int32_t y = 0; y < 8; ++y)
        for (std::int32_t x = 0; x < 8; ++x)
            tile.Row(y)[x] = PremultipliedColor(IsOnPlusHatch(brush.style, x, y) ? brush.fore : brush.back);
    Ink ink = Ink::Tile(std::move(tile));
    ink.origin_x = static_cast<std::int32_t>(std::floor(ClampToDrawable(origin.x)));
    ink.origin_y = static_cast<std::int32_t>(std::floor(ClampToDrawable(origin.y)));
    return ink;
}

Ink InkOf(const PlusBrush& brush, const Affine& world_to_picture, Point origin)
{
    if (const auto* solid = std::get_if<PlusSolidBrush>(&brush))
        return ColorInk(solid->color);
    if (const auto* hatch = std::get_if<PlusHatchBrush>(&brush))
        return HatchInk(*hatch, origin);
    if (const auto* texture = std::get_if<PlusTextureBrush>(&brush))
        return ShaderInk(MakeTextureShader(*texture, world_to_picture), 0);
    if (const auto* linear = std::get_if<PlusLinearBrush>(&brush))
        return ShaderInk(MakeLinearShader(*linear, world_to_picture), linear->second);
    const auto& path = std::get<PlusPathBrush>(brush);
    return ShaderInk(MakePathShader(path, world_to_picture), path.center_color);
}

std::uint64_t InkWork(const PlusBrush& brush)
{
    if (const auto* linear = std::get_if<PlusLinearBrush>(&brush))
        return GradientWork(linear->run, {}, {});
    if (const auto* path = std::get_if<PlusPathBrush>(&brush))
        return GradientWork(path->run, path->boundary, path->center);
    return 500;
}
