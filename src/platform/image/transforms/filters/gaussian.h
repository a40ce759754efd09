// Gaussian blur.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/transforms/filters/gaussian_curve.h"
#include "src/platform/image_transform.h"

namespace transforms
{

/// Blurs each channel but alpha by a Gaussian with a standard deviation of fuzziness pixels, clamped to
/// 0..255; 0 changes nothing. The border is replicated.
///
/// Up to 6 the kernel is sampled at whole pixels up to three deviations, and results are within 0.8 levels of
/// the exact ones before rounding. Above that the picture is reduced by a third of the deviation, blurred by
/// the remaining variance, and enlarged bilinearly, which is cheaper and looks the same: within three levels
/// of the sampled kernel for random pixels.
OperationResult GaussianBlur(const ImageBuffer& source, ImageBuffer& result, std::int32_t fuzziness);

/// The same for all channels and any deviation above 0, in pixels. Throws std::bad_alloc.
ImageBuffer Blurred(const ImageBuffer& image, double deviation);

/// Blurs single rows of a picture, all channels, without rounding to levels. Both arguments must outlive it.
class BlurredRows
{
public:
    /// Throws std::bad_alloc.
    BlurredRows(const ImageBuffer& image, const GaussianCurve& curve);
    /// Fills values with row y in units of 1/kSteps. Allocates nothing.
    void Blur(std::int32_t y, std::int16_t* values);

private:
    const ImageBuffer& image_;
    const GaussianCurve& curve_;
    std::size_t padding_;
    std::vector<std::int16_t> down_;
    std::vector<const std::uint8_t*> rows_;
};

}  // namespace transforms
