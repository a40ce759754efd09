// Colours and tiles.
#include "src/platform/image/metafile/canvas/ink.h"

SurfacePtr pSurfaceOn(const Pixels& objPixels)
{
    // Cairo only reads a source picture, though its interface doesn't say so.
    auto* pBytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(objPixels.aPixels.data()));
    return SurfacePtr(cairo_image_surface_create_for_data(pBytes, CAIRO_FORMAT_ARGB32, objPixels.lWidth,
                                                          objPixels.lHeight, objPixels.lWidth * 4));
}

void SetSourceColor(cairo_t* pCairo, std::uint32_t nColor)
{
    cairo_set_source_rgb(pCairo, (nColor >> 16 & 255) / 255.0, (nColor >> 8 & 255) / 255.0,
                         (nColor & 255) / 255.0);
}

static std::int32_t lWrapped(std::int64_t l, std::int32_t lPeriod)
{
    const auto lRest = static_cast<std::int32_t>(l % lPeriod);
    return lRest < 0 ? lRest + lPeriod : lRest;
}

std::uint32_t Ink::At(std::int32_t x, std::int32_t y) const
{
    if (!pTile)
        return nColor | 0xFF000000;
    return pTile->Row(lWrapped(std::int64_t{y} - lOriginY,
                               pTile->lHeight))[lWrapped(std::int64_t{x} - lOriginX, pTile->lWidth)];
}

void Ink::ApplyTo(cairo_t* pCairo) const
{
    if (!pTile)
        return SetSourceColor(pCairo, nColor);
    const SurfacePtr pSurface = pSurfaceOn(*pTile);
    const PatternPtr pPattern(cairo_pattern_create_for_surface(pSurface.get()));
    cairo_pattern_set_extend(pPattern.get(), CAIRO_EXTEND_REPEAT);
    cairo_pattern_set_filter(pPattern.get(), CAIRO_FILTER_NEAREST);
    cairo_matrix_t objMatrix;
    cairo_matrix_init_translate(&objMatrix, -lOriginX, -lOriginY);
    cairo_pattern_set_matrix(pPattern.get(), &objMatrix);
    cairo_set_source(pCairo, pPattern.get());
}
