// Rotation: quarter turns move pixels, all other angles go through an affine map.
#include "src/platform/image/transforms/geometry/rotate.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/geometry/flip.h"
#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

// Rounds a side of the canvas up, but tolerates the rounding errors of sine and cosine.
static std::uint64_t PaddedSide(double length)
{
    return static_cast<std::uint64_t>(std::ceil(length - 1e-6));
}

OperationResult Rotate(const ImageBuffer& source, ImageBuffer& result, double angle, Colour background)
{
    if (!std::isfinite(angle))
        return OperationResult::Unchanged;
    const double turn = std::fmod(angle, 360.0);
    if (std::fmod(turn, 90.0) == 0)
        return TurnQuarters(source, result, static_cast<std::int32_t>(turn / 90) + 4);

    const double cos = std::cos(turn * std::numbers::pi / 180), sin = std::sin(turn * std::numbers::pi / 180);
    const double width = source.width, height = source.height;
    const bool widen = source.channels == 1 && !IsGrey(background);
    ImageBuffer canvas;
    if (!Allocate(canvas, PaddedSide(width * std::fabs(cos) + height * std::fabs(sin)),
                  PaddedSide(width * std::fabs(sin) + height * std::fabs(cos)), widen ? 3 : source.channels))
        return OperationResult::Failed;
    ImageBuffer wide;
    if (widen && !WidenGrey(source, wide))
        return OperationResult::Failed;
    const ImageBuffer& pixels = widen ? wide : source;

    const double mid_x = (canvas.width - 1) / 2.0, mid_y = (canvas.height - 1) / 2.0;
    const StraightMap map{cos,  sin, (width - 1) / 2 - cos * mid_x - sin * mid_y,
                          -sin, cos, (height - 1) / 2 + sin * mid_x - cos * mid_y};
    const PixelValue outside = Background(pixels, background);
    DrawWarped(
        pixels, canvas,
        [&](std::int32_t y, std::int32_t* xs, std::int32_t* ys) {
            StraightPlaces(map, y, canvas.width, xs, ys);
        },
        &outside);
    TakePixels(source, result, std::move(canvas));
    if (widen)
        result.icc_profile.clear();
    return OperationResult::Changed;
}

}  // namespace transforms
