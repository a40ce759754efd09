// Motion blur as a sum of shifted rows.
#include "src/platform/image/transforms/effects/motion_blur.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{

ROW_LOOP void AddBytes(const std::uint8_t* __restrict bytes, std::size_t count,
                       std::uint16_t* __restrict sums)
{
    for (std::size_t i = 0; i < count; ++i)
        sums[i] = static_cast<std::uint16_t>(sums[i] + bytes[i]);
}

// floor(sum / n + 0.5), exactly: adding 0.5 keeps the quotient away from integers, where rounding errors
// would matter.
ROW_LOOP void Divide(const std::uint16_t* __restrict sums, std::size_t count, std::int32_t divisor,
                     std::uint8_t* __restrict target)
{
    const float inverse = 1.F / static_cast<float>(divisor);
    const std::int32_t half = divisor / 2;
    for (std::size_t i = 0; i < count; ++i)
        target[i] = static_cast<std::uint8_t>(
            static_cast<std::int32_t>((static_cast<float>(sums[i] + half) + 0.5F) * inverse));
}

void AddPixel(const std::uint8_t* pixel, std::size_t times, std::size_t channels, std::uint16_t* sums)
{
    for (std::size_t i = 0; i < times; ++i) {
        for (std::size_t c = 0; c < channels; ++c, ++sums)
            *sums = static_cast<std::uint16_t>(*sums + pixel[c]);
    }
}

// Adds a row shifted left by x pixels, replicating its border.
void AddMoved(const std::uint8_t* source, std::int32_t x, std::int32_t width, std::size_t channels,
              std::uint16_t* sums)
{
    const auto columns = static_cast<std::size_t>(width);
    const auto moved = std::min(columns, static_cast<std::size_t>(std::abs(x)));
    const std::size_t kept = (columns - moved) * channels;
    if (x >= 0) {
        AddBytes(source + moved * channels, kept, sums);
        AddPixel(source + (columns - 1) * channels, moved, channels, sums + kept);
    } else {
        AddPixel(source, moved, channels, sums);
        AddBytes(source, kept, sums + moved * channels);
    }
}

struct Offset {
    std::int32_t x, y;
};

std::vector<Offset> Line(double angle, std::int32_t count)
{
    // The line is the same after half a turn. Quarter turns are exact: a rounding error must not move a
    // pixel.
    const double turn = std::fmod(std::fmod(angle, 180) + 180, 180);
    const double cos = turn == 90 ? 0 : std::cos(turn * std::numbers::pi / 180),
                 sin = std::sin(turn * std::numbers::pi / 180);
    std::vector<Offset> offsets;
    for (std::int32_t k = 0; k < count; ++k) {
        const std::int32_t t = k - (count - 1) / 2;
        offsets.push_back({static_cast<std::int32_t>(std::floor(t * cos + 0.5)),
                           -static_cast<std::int32_t>(std::floor(t * sin + 0.5))});
    }
    return offsets;
}

}  // namespace

OperationResult MotionBlur(const ImageBuffer& source, ImageBuffer& result, double angle, std::int32_t amount)
{
    const std::int32_t count = std::min(amount, 255);
    if (count < 2 || !std::isfinite(angle))
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& out) {
        const std::vector<Offset> offsets = Line(angle, count);
        const auto channels = static_cast<std::size_t>(image.channels);
        const std::size_t row = Stride(image);
        ImageBuffer blurred = EmptyLike(image);
        EachRows(image.height, row * offsets.size(), [&](std::int32_t first, std::int32_t last) {
            std::vector<std::uint16_t> sums(row);
            for (std::int32_t y = first; y < last; ++y) {
                std::fill(sums.begin(), sums.end(), std::uint16_t{0});
                for (const Offset& offset : offsets)
                    AddMoved(Row(image, std::clamp(y + offset.y, 0, image.height - 1)), offset.x, image.width,
                             channels, sums.data());
                std::uint8_t* target = Row(blurred, y);
                Divide(sums.data(), row, count, target);
                for (std::size_t i = 3; channels == 4 && i < row; i += 4)
                    target[i] = Row(image, y)[i];
            }
        });
        TakePixels(image, out, std::move(blurred));
        return OperationResult::Changed;
    });
}

}  // namespace transforms
