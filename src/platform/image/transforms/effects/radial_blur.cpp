// Radial and zoom blur: the mean of 2^k equal steps by k means of a picture with itself one step further on,
// each step twice the last.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/effects/motion_blur.h"
#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/new_pixels.h"

namespace transforms
{

namespace
{

// A turn by dAngle radians and a magnification about the picture's middle.
StraightMap objAboutMiddle(const ImageBuffer& aImage, double dAngle, double dScale)
{
    const double dMidX = (aImage.width - 1) / 2.0, dMidY = (aImage.height - 1) / 2.0;
    const double dCos = std::cos(dAngle) * dScale, dSin = std::sin(dAngle) * dScale;
    return {dCos,  dSin, dMidX - dCos * dMidX - dSin * dMidY,
            -dSin, dCos, dMidY + dSin * dMidX - dCos * dMidY};
}

// How often the steps are doubled so that the longest way, in pixels, is cut into steps of about one, and a
// long one into steps of two: wider ones would show as bands.
int nDoublings(double dWay)
{
    constexpr int kFine = 6, kMost = 12;
    int n = 1;
    while (n < kMost && (n < kFine ? 1 : 2) * (1 << n) < dWay)
        ++n;
    return n;
}

// The mean of 2^nTimes pictures: of the one drawn through both maps at first, and then again and again of
// what came of it and the same drawn through fnFurther(1), fnFurther(2) ..., in two pictures that take turns.
template <typename Further>
ImageBuffer aMeans(const ImageBuffer& aImage, const StraightMap& objOne, const StraightMap& objOther,
                   int nTimes, const Further& fnFurther)
{
    ImageBuffer aResult = aLike(aImage);
    DrawWarpedMean(aImage, aResult, objOne, objOther);
    if (nTimes < 2)
        return aResult;
    ImageBuffer aNext = aLike(aImage);
    for (int i = 1; i < nTimes; ++i) {
        DrawWarpedMean(aResult, aNext, {}, fnFurther(i));
        std::swap(aResult, aNext);
    }
    return aResult;
}

double dCorner(const ImageBuffer& aImage)
{
    return std::hypot(aImage.width, aImage.height) / 2;
}

}  // namespace

bool RadialBlur(ImageBuffer& aImage, double dDisplacement)
{
    if (!(dDisplacement > 0))
        return true;
    return bAmongVisible(aImage, [&] {
        const double dArc = dClamped(dDisplacement, 0, 100) / 100 * 36 * std::numbers::pi / 180;
        const int nTimes = nDoublings(dArc * dCorner(aImage));
        const double dStep = dArc / ((1 << nTimes) - 1);
        TakePixels(aImage, aMeans(aImage, objAboutMiddle(aImage, -dArc / 2, 1),
                                  objAboutMiddle(aImage, -dArc / 2 + dStep, 1), nTimes,
                                  [&](int i) { return objAboutMiddle(aImage, dStep * (1 << i), 1); }));
        return true;
    });
}

bool ZoomBlur(ImageBuffer& aImage, double dIntensity)
{
    if (!(dIntensity > 0))
        return true;
    return bAmongVisible(aImage, [&] {
        const double dLast = 1 - dClamped(dIntensity, 0, 100) / 200;
        const int nTimes = nDoublings((1 - dLast) * dCorner(aImage));
        const double dStep = std::log(dLast) / ((1 << nTimes) - 1);
        TakePixels(aImage, aMeans(aImage, {}, objAboutMiddle(aImage, 0, std::exp(dStep)), nTimes, [&](int i) {
                       return objAboutMiddle(aImage, 0, std::exp(dStep * (1 << i)));
                   }));
        return true;
    });
}

}  // namespace transforms
