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

// A turn by angle radians and a magnification about the picture's middle.
StraightMap AboutMiddle(const ImageBuffer& image, double angle, double scale)
{
    const double mid_x = (image.width - 1) / 2.0, mid_y = (image.height - 1) / 2.0;
    const double cos = std::cos(angle) * scale, sin = std::sin(angle) * scale;
    return {cos, sin, mid_x - cos * mid_x - sin * mid_y, -sin, cos, mid_y + sin * mid_x - cos * mid_y};
}

// How often the steps are doubled so that the longest way, in pixels, is cut into steps of about one, and a
// long one into steps of two: wider ones would show as bands.
int Doublings(double way)
{
    constexpr int kFine = 6, kMost = 12;
    int n = 1;
    while (n < kMost && (n < kFine ? 1 : 2) * (1 << n) < way)
        ++n;
    return n;
}

// The mean of 2^times pictures: of the one drawn through both maps at first, and then again and again of
// what came of it and the same drawn through further(1), further(2) ..., in two pictures that take turns.
template <typename Further>
ImageBuffer Means(const ImageBuffer& image, const StraightMap& one, const StraightMap& other, int times,
                  const Further& further)
{
    ImageBuffer result = EmptyLike(image);
    DrawWarpedMean(image, result, one, other);
    if (times < 2)
        return result;
    ImageBuffer next = EmptyLike(image);
    for (int i = 1; i < times; ++i) {
        DrawWarpedMean(result, next, {}, further(i));
        std::swap(result, next);
    }
    return result;
}

double CornerDistance(const ImageBuffer& image)
{
    return std::hypot(image.width, image.height) / 2;
}

}  // namespace

bool RadialBlur(ImageBuffer& image, double displacement)
{
    if (!(displacement > 0))
        return true;
    return IsVisible(image, [&] {
        const double arc = Clamped(displacement, 0, 100) / 100 * 36 * std::numbers::pi / 180;
        const int times = Doublings(arc * CornerDistance(image));
        const double step = arc / ((1 << times) - 1);
        TakePixels(image,
                   Means(image, AboutMiddle(image, -arc / 2, 1), AboutMiddle(image, -arc / 2 + step, 1),
                         times, [&](int i) { return AboutMiddle(image, step * (1 << i), 1); }));
        return true;
    });
}

bool ZoomBlur(ImageBuffer& image, double intensity)
{
    if (!(intensity > 0))
        return true;
    return IsVisible(image, [&] {
        const double last = 1 - Clamped(intensity, 0, 100) / 200;
        const int times = Doublings((1 - last) * CornerDistance(image));
        const double step = std::log(last) / ((1 << times) - 1);
        TakePixels(image, Means(image, {}, AboutMiddle(image, 0, std::exp(step)), times,
                                [&](int i) { return AboutMiddle(image, 0, std::exp(step * (1 << i))); }));
        return true;
    });
}

}  // namespace transforms
