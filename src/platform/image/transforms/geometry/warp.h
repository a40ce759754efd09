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

/// Says for target row y where in the source each of its pixels lies: fills aX and aY, one value a target
/// pixel. Called from several threads at once.
using RowOfPlaces = std::function<void(std::int32_t y, std::int32_t* aX, std::int32_t* aY)>;

/// Fills aTarget, whose size and channels are set, bilinearly: each pixel is the mean of the four source
/// pixels around its place, weighted by 1 less the distance in x times the same in y, to the nearest level
/// (or the one beside it, where two are as near but for 1/60). Transparent pixels weigh by their alpha too,
/// so that their hidden colour doesn't come through. Places outside have the colour *pOutside; without one,
/// the colour of the nearest border pixel. Throws std::bad_alloc.
void DrawWarped(const ImageBuffer& aSource, ImageBuffer& aTarget, const RowOfPlaces& fnPlaces,
                const PixelValue* pOutside);

/// The straight map from target to source places: x' = dXX x + dXY y + dX0, y' = dYX x + dYY y + dY0, in
/// pixels between the pixels' middles, of the first pixel's middle too.
struct StraightMap {
    double dXX = 1, dXY = 0, dX0 = 0;
    double dYX = 0, dYY = 1, dY0 = 0;
};
/// Fills aX and aY with count places of row y.
void StraightPlaces(const StraightMap& objMap, std::int32_t y, std::int32_t lCount, std::int32_t* aX,
                    std::int32_t* aY);

/// Fills aTarget, of the source's size and channels, with the mean of the source drawn through both maps,
/// bilinearly; places outside have the colour of the nearest border pixel. Values are rounded once for each
/// map that isn't the identity. Alpha is neither drawn nor weighed but the source's own. Throws
/// std::bad_alloc.
void DrawWarpedMean(const ImageBuffer& aSource, ImageBuffer& aTarget, const StraightMap& objOne,
                    const StraightMap& objOther);

}  // namespace transforms
