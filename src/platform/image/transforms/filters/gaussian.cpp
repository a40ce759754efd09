// Gaussian blur: directly for small deviations, on a reduced picture for large ones.
#include "src/platform/image/transforms/filters/gaussian.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/filters/gaussian_curve.h"
#include "src/platform/image/transforms/filters/small_picture.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

ROW_LOOP static void RoundRow(const std::int16_t* __restrict values, std::size_t count,
                              std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(values[i] + kSteps / 2) / kSteps);
}

BlurredRows::BlurredRows(const ImageBuffer& image, const GaussianCurve& curve)
    : image_(image),
      curve_(curve),
      padding_(curve.Reach() * static_cast<std::size_t>(image.channels)),
      down_(Stride(image) + 2 * padding_),
      rows_(2 * curve.Reach() + 1)
{
}

void BlurredRows::Blur(std::int32_t y, std::int16_t* values)
{
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const auto row = y + static_cast<std::int32_t>(i) - static_cast<std::int32_t>(curve_.Reach());
        rows_[i] = Row(image_, std::clamp(row, 0, image_.height - 1));
    }
    const auto channels = static_cast<std::size_t>(image_.channels);
    std::int16_t* padded_down = down_.data() + padding_;
    curve_.Down(rows_.data(), Stride(image_), padded_down);
    RepeatEnds(padded_down, Stride(image_), channels, curve_.Reach());
    curve_.Along(padded_down, Stride(image_), channels, values);
}

static void BlurAtFullSize(const ImageBuffer& image, double deviation, ImageBuffer& result)
{
    const GaussianCurve curve(deviation);
    EachRows(image.height, 4 * Stride(image), [&](std::int32_t first, std::int32_t last) {
        BlurredRows rows(image, curve);
        std::vector<std::int16_t> values(Stride(image));
        for (std::int32_t y = first; y < last; ++y) {
            rows.Blur(y, values.data());
            RoundRow(values.data(), values.size(), Row(result, y));
        }
    });
}

// Averaging over step pixels and bilinear enlargement add variance, which the blur must leave out.
static double RemainingDeviation(double deviation, std::int32_t step)
{
    const double square = static_cast<double>(step) * step;
    return std::sqrt(deviation * deviation - (square - 1) / 12 - square / 6) / step;
}

ImageBuffer Blurred(const ImageBuffer& image, double deviation)
{
    ImageBuffer result = EmptyLike(image);
    if (deviation <= kGreatestCurve) {
        BlurAtFullSize(image, deviation, result);
        return result;
    }
    const auto step = static_cast<std::int32_t>(deviation / 3);
    SmallPicture small(image, step);
    small.Blur(RemainingDeviation(deviation, step));
    small.Enlarge(result);
    return result;
}

OperationResult GaussianBlur(const ImageBuffer& source, ImageBuffer& result, std::int32_t fuzziness)
{
    if (fuzziness <= 0)
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& out) {
        ImageBuffer blurred = Blurred(image, std::min(fuzziness, 255));
        for (std::size_t i = 3; image.channels == 4 && i < image.bytes.size(); i += 4)
            blurred.bytes[i] = image.bytes[i];
        TakePixels(image, out, std::move(blurred));
        return OperationResult::Changed;
    });
}

}  // namespace transforms
