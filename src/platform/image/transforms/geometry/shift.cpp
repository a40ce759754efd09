// Shifts rows in place, and crops uniform borders.
#include "src/platform/image/transforms/geometry/shift.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

static void Fill(std::uint8_t* target, std::int64_t pixels, std::int32_t channels, const PixelValue& value)
{
    for (std::int64_t i = 0; i < pixels; ++i, target += channels)
        std::memcpy(target, value.data(), static_cast<std::size_t>(channels));
}

OperationResult Shift(const ImageBuffer& source, ImageBuffer& result, std::int32_t right, std::int32_t down,
                      Colour background)
{
    if (right == 0 && down == 0)
        return OperationResult::Unchanged;
    if (source.channels == 1 && !IsGrey(background))
        return InColour(source, result, [&](const ImageBuffer& image, ImageBuffer& shifted) {
            return Shift(image, shifted, right, down, background);
        });
    const std::int64_t width = source.width, height = source.height, channels = source.channels;
    const std::int64_t shift_x = std::clamp<std::int64_t>(right, -width, width);
    const std::int64_t shift_y = std::clamp<std::int64_t>(down, -height, height);
    const PixelValue fill = Background(source, background);
    const std::int64_t kept = width - std::abs(shift_x);

    Target target(source, result);
    // Go against the direction of the shift, so that no row is overwritten before it has been moved.
    for (std::int64_t i = 0; i < height; ++i) {
        const std::int64_t y = shift_y > 0 ? height - 1 - i : i;
        std::uint8_t* to = Row(target.Image(), static_cast<std::int32_t>(y));
        if (y - shift_y < 0 || y - shift_y >= height) {
            Fill(to, width, source.channels, fill);
            continue;
        }
        const std::uint8_t* from = Row(source, static_cast<std::int32_t>(y - shift_y));
        std::memmove(to + std::max<std::int64_t>(shift_x, 0) * channels,
                     from + std::max<std::int64_t>(-shift_x, 0) * channels,
                     static_cast<std::size_t>(kept * channels));
        Fill(shift_x > 0 ? to : to + kept * channels, width - kept, source.channels, fill);
    }
    return target.Finish();
}

namespace
{
// What counts as the border colour.
struct Comparison {
    std::int32_t channels;
    int tolerance;  // levels per channel

    explicit Comparison(const ImageBuffer& image)
        : channels(image.channels), tolerance(image.lossy ? kLossyTolerance : 0)
    {
    }
    bool IsSame(const std::uint8_t* one, const std::uint8_t* other) const
    {
        if (channels == 4 && one[3] == 0 && other[3] == 0)
            return true;
        for (std::int32_t c = 0; c < channels; ++c)
            if (std::abs(one[c] - other[c]) > tolerance)
                return false;
        return true;
    }

private:
    // The ringing beside an edge in a JPEG of medium quality.
    static constexpr int kLossyTolerance = 24;
};
}  // namespace

// How many consecutive pixels, step bytes apart, have the colour; at most count.
static std::int32_t RunLength(const std::uint8_t* pixel, std::int64_t step, std::int32_t count,
                              const Comparison& comparison, const std::uint8_t* colour)
{
    std::int32_t found = 0;
    while (found < count && comparison.IsSame(pixel + found * step, colour))
        ++found;
    return found;
}

static PixelValue BorderColour(const ImageBuffer& image, const Comparison& comparison)
{
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::uint8_t* top = Row(image, 0);
    const std::uint8_t* bottom = Row(image, image.height - 1);
    const std::uint8_t* corners[4] = {top, top + Stride(image) - channels, bottom,
                                      bottom + Stride(image) - channels};
    std::ptrdiff_t best_count = 0;
    const std::uint8_t* best = top;
    for (const std::uint8_t* corner : corners) {
        const auto equal = std::count_if(std::begin(corners), std::end(corners),
                                         [&](const auto* other) { return comparison.IsSame(corner, other); });
        if (equal > best_count) {
            best_count = equal;
            best = corner;
        }
    }
    PixelValue colour{};
    std::memcpy(colour.data(), best, channels);
    return colour;
}

OperationResult Autocrop(const ImageBuffer& source, ImageBuffer& result)
{
    if (source.width < 1 || source.height < 1)
        return OperationResult::Unchanged;
    const Comparison comparison(source);
    const PixelValue colour = BorderColour(source, comparison);
    const std::int32_t width = source.width, channels = source.channels;
    const auto whole_row = [&](std::int32_t y) {
        return RunLength(Row(source, y), channels, width, comparison, colour.data()) == width;
    };
    std::int32_t top = 0, bottom = source.height;
    while (top < bottom && whole_row(top))
        ++top;
    if (top == bottom)
        return OperationResult::Unchanged;
    while (whole_row(bottom - 1))
        --bottom;

    std::int32_t left = width, right = width;  // border widths so far
    for (std::int32_t y = top; y < bottom; ++y) {
        const std::uint8_t* first = Row(source, y);
        left = RunLength(first, channels, left, comparison, colour.data());
        right = RunLength(first + Stride(source) - channels, -channels, right, comparison, colour.data());
    }
    const std::int32_t new_width = width - left - right, new_height = bottom - top;
    if (new_width == width && new_height == source.height)
        return OperationResult::Unchanged;

    ImageBuffer cut;
    if (!Allocate(cut, static_cast<std::uint64_t>(new_width), static_cast<std::uint64_t>(new_height),
                  channels))
        return OperationResult::Failed;
    for (std::int32_t y = 0; y < new_height; ++y)
        std::memcpy(Row(cut, y), Row(source, top + y) + static_cast<std::int64_t>(left) * channels,
                    Stride(cut));
    TakePixels(source, result, std::move(cut));
    return OperationResult::Changed;
}

}  // namespace transforms
