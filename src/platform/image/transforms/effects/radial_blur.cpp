// Radial and zoom blur: the mean of 2^k equal steps as k passes, each taking the mean of the picture and the
// picture moved on by twice the previous step.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/effects/motion_blur.h"
#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{

// Rotation by angle radians and scaling about the picture's centre.
StraightMap AboutMiddle(const ImageBuffer& image, double angle, double scale)
{
    const double mid_x = (image.width - 1) / 2.0, mid_y = (image.height - 1) / 2.0;
    const double cos = std::cos(angle) * scale, sin = std::sin(angle) * scale;
    return {cos, sin, mid_x - cos * mid_x - sin * mid_y, -sin, cos, mid_y + sin * mid_x - cos * mid_y};
}

// The number of doublings that cuts a path of this many pixels into steps of about one pixel, or two for long
// paths; wider steps would show as bands.
int Doublings(double way)
{
    constexpr int kFine = 6, kMost = 12;
    int n = 1;
    while (n < kMost && (n < kFine ? 1 : 2) * (1 << n) < way)
        ++n;
    return n;
}

// The mean of 2^times pictures: first of the one drawn through both maps, then repeatedly of the result and
// the result drawn through further(1), further(2), ... Two buffers are used alternately.
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

OperationResult RadialBlur(const ImageBuffer& source, ImageBuffer& result, double displacement)
{
    if (!(displacement > 0))
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& blurred) {
        const double arc = Clamped(displacement, 0, 100) / 100 * 36 * std::numbers::pi / 180;
        const int times = Doublings(arc * CornerDistance(image));
        const double step = arc / ((1 << times) - 1);
        TakePixels(image, blurred,
                   Means(image, AboutMiddle(image, -arc / 2, 1), AboutMiddle(image, -arc / 2 + step, 1),
                         times, [&](int i) { return AboutMiddle(image, step * (1 << i), 1); }));
        return OperationResult::Changed;
    });
}

OperationResult ZoomBlur(const ImageBuffer& source, ImageBuffer& result, double intensity)
{
    if (!(intensity > 0))
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& blurred) {
        const double last = 1 - Clamped(intensity, 0, 100) / 200;
        const int times = Doublings((1 - last) * CornerDistance(image));
        const double step = std::log(last) / ((1 << times) - 1);
        TakePixels(image, blurred, Means(image, {}, AboutMiddle(image, 0, std::exp(step)), times, [&](int i) {
                       return AboutMiddle(image, 0, std::exp(step * (1 << i)));
                   }));
        return OperationResult::Changed;
    });
}

}  // namespace transforms
