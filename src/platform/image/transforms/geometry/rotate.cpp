// Rotation: quarter turns move pixels, all other angles go through an affine map.
#include "src/platform/image/transforms/geometry/rotate.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/geometry/flip.h"
#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/new_pixels.h"

namespace transforms
{

// Rounds a side of the canvas up, but tolerates the rounding errors of sine and cosine.
static std::uint64_t PaddedSide(double length)
{
    return static_cast<std::uint64_t>(std::ceil(length - 1e-6));
}

bool Rotate(ImageBuffer& image, double angle, Colour background)
{
    if (!std::isfinite(angle))
        return true;
    const double turn = std::fmod(angle, 360.0);
    if (std::fmod(turn, 90.0) == 0)
        return TurnQuarters(image, static_cast<std::int32_t>(turn / 90) + 4);

    return RunGuarded([&] {
        const double cos = std::cos(turn * std::numbers::pi / 180),
                     sin = std::sin(turn * std::numbers::pi / 180);
        const double width = image.width, height = image.height;
        const bool widen = image.channels == 1 && !IsGrey(background);
        ImageBuffer canvas;
        if (!Allocate(canvas, PaddedSide(width * std::fabs(cos) + height * std::fabs(sin)),
                      PaddedSide(width * std::fabs(sin) + height * std::fabs(cos)),
                      widen ? 3 : image.channels))
            return false;
        ImageBuffer wide;
        if (widen && !WidenGrey(image, wide))
            return false;
        const ImageBuffer& source = widen ? wide : image;

        const double mid_x = (canvas.width - 1) / 2.0, mid_y = (canvas.height - 1) / 2.0;
        const StraightMap map{cos,  sin, (width - 1) / 2 - cos * mid_x - sin * mid_y,
                              -sin, cos, (height - 1) / 2 + sin * mid_x - cos * mid_y};
        const PixelValue outside = Background(source, background);
        DrawWarped(
            source, canvas,
            [&](std::int32_t y, std::int32_t* xs, std::int32_t* ys) {
                StraightPlaces(map, y, canvas.width, xs, ys);
            },
            &outside);
        TakePixels(image, std::move(canvas));
        if (widen)
            image.icc_profile.clear();
        return true;
    });
}

}  // namespace transforms
