// Draws a picture by sampling another one at given coordinates.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>
#include <functional>

#include "src/platform/image/transforms/rows/background.h"

namespace transforms
{

/// Source coordinates are in 1/256 pixel, from the centre of the first pixel, right and down.
constexpr std::int32_t kPlaceUnit = 256;

/// Fills xs and ys with the source coordinates of the pixels of target row y. Called from several threads.
using RowOfPlaces = std::function<void(std::int32_t y, std::int32_t* xs, std::int32_t* ys)>;

/// Fills target, whose size and channels are set, by bilinear interpolation, rounded to the nearest level
/// (ties are broken either way within 1/60 level). Colours are weighted by alpha, so hidden colours don't
/// show. Outside the source the colour is *outside or, if that is null, that of the nearest edge pixel.
/// Throws std::bad_alloc.
void DrawWarped(const ImageBuffer& source, ImageBuffer& target, const RowOfPlaces& places,
                const PixelValue* outside);

/// An affine map from target to source coordinates, x' = xx x + xy y + x0, y' = yx x + yy y + y0, in pixels;
/// integers are pixel centres.
struct StraightMap {
    double xx = 1, xy = 0, x0 = 0;
    double yx = 0, yy = 1, y0 = 0;
};
/// Fills xs and ys with the source coordinates of the first count pixels of row y.
void StraightPlaces(const StraightMap& map, std::int32_t y, std::int32_t count, std::int32_t* xs,
                    std::int32_t* ys);

/// Fills target, of the source's size and channels, with the mean of the source drawn through both maps, with
/// bilinear interpolation and edge clamping. Values are rounded once for each map that isn't the identity.
/// Alpha is copied from the source and doesn't weight the colours. Throws std::bad_alloc.
void DrawWarpedMean(const ImageBuffer& source, ImageBuffer& target, const StraightMap& one,
                    const StraightMap& other);

}  // namespace transforms
