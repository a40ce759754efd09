// Adds the slopes of a picture's intensity to its colours.
#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <optional>
#include <vector>

#include "src/platform/image/transforms/effects/emboss.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "src/platform/image/transforms/filters/gaussian_curve.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{

// Heights of a grey picture around a row that moves down, in units of 1/kSteps. Rounding them to levels would
// turn smooth gradients into steps, which show as stripes.
class Heights
{
public:
    // curve may be null.
    Heights(const ImageBuffer& grey, const GaussianCurve* curve)
        : grey_(grey), width_(static_cast<std::size_t>(grey.width)), rows_(3 * (width_ + 2))
    {
        if (curve)
            blurred_.emplace(grey, *curve);
    }
    void Begin(std::int32_t y)
    {
        Load(y - 1);
        Load(y);
    }
    // Call it in ascending order after Begin, for every row.
    void MoveTo(std::int32_t y) { Load(y + 1); }
    // Row y - 1, y or y + 1. Its ends are replicated.
    const std::int16_t* RowAt(std::int32_t y) const { return rows_.data() + Slot(y) + 1; }

private:
    std::size_t Slot(std::int32_t y) const { return static_cast<std::size_t>((y + 3) % 3) * (width_ + 2); }
    void Load(std::int32_t y)
    {
        std::int16_t* row = rows_.data() + Slot(y) + 1;
        const std::int32_t inside = std::clamp(y, 0, grey_.height - 1);
        if (blurred_) {
            blurred_->Blur(inside, row);
        } else {
            const std::uint8_t* levels = Row(grey_, inside);
            std::transform(levels, levels + width_, row,
                           [](std::uint8_t level) { return static_cast<std::int16_t>(level * kSteps); });
        }
        *(row - 1) = row[0];
        row[width_] = row[width_ - 1];
    }

    const ImageBuffer& grey_;
    std::size_t width_;
    std::vector<std::int16_t> rows_;
    std::optional<BlurredRows> blurred_;
};

// Slopes of row towards the light, rounded to levels.
ROW_LOOP void Slopes(const std::int16_t* __restrict row, const std::int16_t* __restrict upper,
                     const std::int16_t* __restrict lower, float right, float up, std::size_t count,
                     std::int32_t* __restrict slopes)
{
    constexpr std::int32_t kShift = 1 << 16;  // makes the conversion, which truncates, round down
    for (std::size_t i = 0; i < count; ++i) {
        const float slope =
            right * static_cast<float>(row[i] - row[i + 2]) + up * static_cast<float>(lower[i] - upper[i]);
        slopes[i] = static_cast<std::int32_t>(slope + (static_cast<float>(kShift) + 0.5F)) - kShift;
    }
}

template <int kChannels>
void AddSlopes(const std::int32_t* __restrict slopes, std::size_t count, std::uint8_t* __restrict pixels)
{
    for (std::size_t i = 0; i < count; ++i, pixels += kChannels) {
        for (int c = 0; c < (kChannels == 1 ? 1 : 3); ++c)
            pixels[c] = ClampToLevel(pixels[c] + slopes[i]);
    }
}

}  // namespace

OperationResult Relief(const ImageBuffer& source, ImageBuffer& result, double angle, double brightness,
                       double smoothness)
{
    if (!(brightness > 0) || !std::isfinite(angle) || std::isnan(smoothness))
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& lit) {
        const ImageBuffer grey = IntensityPlane(image);
        std::optional<GaussianCurve> curve;
        if (smoothness > 0)
            curve.emplace(std::max(0.1, std::min(smoothness, 16.0) / 4));
        const double turn = std::fmod(angle, 360) * std::numbers::pi / 180;
        const double factor = std::min(brightness, 100.0) / kSteps;
        const auto right = static_cast<float>(std::cos(turn) * factor);
        const auto up = static_cast<float>(std::sin(turn) * factor);
        const auto width = static_cast<std::size_t>(image.width);
        const auto add = image.channels == 1   ? AddSlopes<1>
                         : image.channels == 3 ? AddSlopes<3>
                                               : AddSlopes<4>;
        std::vector<std::vector<std::int32_t>> slopes(BandCount(image), std::vector<std::int32_t>(width));
        std::vector<Heights> heights;
        for (std::size_t i = 0; i < slopes.size(); ++i)
            heights.emplace_back(grey, curve ? &*curve : nullptr);
        Target target(image, lit);
        const auto band = [&](std::size_t band_index, std::int32_t first, std::int32_t end) {
            Heights& rows = heights[band_index];
            std::int32_t* const values = slopes[band_index].data();
            rows.Begin(first);
            for (std::int32_t y = first; y < end; ++y) {
                rows.MoveTo(y);
                Slopes(rows.RowAt(y) - 1, rows.RowAt(y - 1), rows.RowAt(y + 1), right, up, width, values);
                add(values, width, target.LoadRow(y));
            }
        };
        RunBands(image, slopes.size(), std::ref(band));
        return target.Finish();
    });
}

}  // namespace transforms
