// Turns a picture: quarters by moving pixels, all else by drawing it through a straight map.
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

// The canvas's side, where a side that is a whole number but for the sines' last digits doesn't grow by one.
static std::uint64_t nSide(double dLength)
{
    return static_cast<std::uint64_t>(std::ceil(dLength - 1e-6));
}

bool Rotate(ImageBuffer& aImage, double dAngle, Colour lBackground)
{
    if (!std::isfinite(dAngle))
        return true;
    const double dTurn = std::fmod(dAngle, 360.0);
    if (std::fmod(dTurn, 90.0) == 0)
        return TurnQuarters(aImage, static_cast<std::int32_t>(dTurn / 90) + 4);

    return bGuarded([&] {
        const double dCos = std::cos(dTurn * std::numbers::pi / 180),
                     dSin = std::sin(dTurn * std::numbers::pi / 180);
        const double dWidth = aImage.width, dHeight = aImage.height;
        const bool bWiden = aImage.channels == 1 && !bGrey(lBackground);
        ImageBuffer aCanvas;
        if (!Allocate(aCanvas, nSide(dWidth * std::fabs(dCos) + dHeight * std::fabs(dSin)),
                      nSide(dWidth * std::fabs(dSin) + dHeight * std::fabs(dCos)),
                      bWiden ? 3 : aImage.channels))
            return false;
        ImageBuffer aWide;
        if (bWiden && !bWidened(aImage, aWide))
            return false;
        const ImageBuffer& aSource = bWiden ? aWide : aImage;

        const double dMidX = (aCanvas.width - 1) / 2.0, dMidY = (aCanvas.height - 1) / 2.0;
        const StraightMap objMap{dCos,  dSin, (dWidth - 1) / 2 - dCos * dMidX - dSin * dMidY,
                                 -dSin, dCos, (dHeight - 1) / 2 + dSin * dMidX - dCos * dMidY};
        const PixelValue aOutside = aBackground(aSource, lBackground);
        DrawWarped(
            aSource, aCanvas,
            [&](std::int32_t y, std::int32_t* aX, std::int32_t* aY) {
                StraightPlaces(objMap, y, aCanvas.width, aX, aY);
            },
            &aOutside);
        TakePixels(aImage, std::move(aCanvas));
        if (bWiden)
            aImage.icc_profile.clear();
        return true;
    });
}

}  // namespace transforms
