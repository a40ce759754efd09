// Draws a picture whose pixels come from other places of another picture, between its pixels.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>
#include <functional>

#include "src/platform/image/transforms/rows/background.h"

namespace transforms
{

/// Places in the source are counted in 1/256 pixel from the middle of its first pixel, right and down.
constexpr std::int32_t kPlaceUnit = 256;

/// Says for target row y where in the source each of its pixels lies: fills xs and ys, one value a target
/// pixel. Called from several threads at once.
using RowOfPlaces = std::function<void(std::int32_t y, std::int32_t* xs, std::int32_t* ys)>;

/// Fills target, whose size and channels are set, bilinearly: each pixel is the mean of the four source
/// pixels around its place, weighted by 1 less the distance in x times the same in y, to the nearest level
/// (or the one beside it, where two are as near but for 1/60). Transparent pixels weigh by their alpha too,
/// so that their hidden colour doesn't come through. Places outside have the colour *outside; without one,
/// the colour of the nearest border pixel. Throws std::bad_alloc.
void DrawWarped(const ImageBuffer& source, ImageBuffer& target, const RowOfPlaces& places,
                const PixelValue* outside);

/// The straight map from target to source places: x' = xx x + xy y + x0, y' = yx x + yy y + y0, in
/// pixels between the pixels' middles, of the first pixel's middle too.
struct StraightMap {
    double xx = 1, xy = 0, x0 = 0;
    double yx = 0, yy = 1, y0 = 0;
};
/// Fills xs and ys with count places of row y.
void StraightPlaces(const StraightMap& map, std::int32_t y, std::int32_t count, std::int32_t* xs,
                    std::int32_t* ys);

/// Fills target, of the source's size and channels, with the mean of the source drawn through both maps,
/// bilinearly; places outside have the colour of the nearest border pixel. Values are rounded once for each
/// map that isn't the identity. Alpha is neither drawn nor weighed but the source's own. Throws
/// std::bad_alloc.
void DrawWarpedMean(const ImageBuffer& source, ImageBuffer& target, const StraightMap& one,
                    const StraightMap& other);

}  // namespace transforms
