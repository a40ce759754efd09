// Compares each value with its right and lower neighbours.
#include "src/platform/image/transforms/filters/contours.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

// A row, the same row shifted by one pixel, and the row below.
ROW_LOOP static void Trace(const std::uint8_t* __restrict own, const std::uint8_t* __restrict right,
                           const std::uint8_t* __restrict below, std::size_t count, std::uint8_t limit,
                           std::uint8_t threshold, std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t own_level = own[i];
        const auto to_right =
            static_cast<std::uint8_t>(std::max(own_level, right[i]) - std::min(own_level, right[i]));
        const auto to_below =
            static_cast<std::uint8_t>(std::max(own_level, below[i]) - std::min(own_level, below[i]));
        const bool contour =
            ((own_level < limit) != (right[i] < limit)) | ((own_level < limit) != (below[i] < limit));
        const bool outline = (to_right > threshold) | (to_below > threshold);
        target[i] = (contour | outline) ? 0 : 255;
    }
}

// Traces every channel of values, alpha included.
static ImageBuffer TraceLines(const ImageBuffer& values, std::uint8_t limit, std::uint8_t threshold)
{
    ImageBuffer result = EmptyLike(values);
    const auto channels = static_cast<std::size_t>(values.channels);
    const std::size_t row = Stride(values);
    EachRows(values.height, row, [&](std::int32_t first, std::int32_t last) {
        std::vector<std::uint8_t> right(row);
        for (std::int32_t y = first; y < last; ++y) {
            const std::uint8_t* own = Row(values, y);
            std::memcpy(right.data(), own + channels, row - channels);
            std::memcpy(right.data() + row - channels, own + row - channels, channels);
            Trace(own, right.data(), Row(values, std::min(y + 1, values.height - 1)), row, limit, threshold,
                  Row(result, y));
        }
    });
    return result;
}

OperationResult TraceContours(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level,
                              std::uint8_t threshold, bool intensity)
{
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& out) {
        if (image.channels == 1 || !intensity) {
            ImageBuffer lines = TraceLines(image, level, threshold);
            for (std::size_t i = 3; image.channels == 4 && i < image.bytes.size(); i += 4)
                lines.bytes[i] = image.bytes[i];
            TakePixels(image, out, std::move(lines));
            return OperationResult::Changed;
        }
        const ImageBuffer grey = TraceLines(IntensityPlane(image), level, threshold);
        const auto channels = static_cast<std::size_t>(image.channels);
        Target target(image, out);
        for (std::int32_t y = 0; y < image.height; ++y) {
            const std::uint8_t* line = Row(grey, y);
            std::uint8_t* pixels = Row(target.Image(), y);
            for (std::size_t i = 0; i < static_cast<std::size_t>(image.width); ++i) {
                for (std::size_t c = 0; c < 3; ++c)
                    pixels[i * channels + c] = line[i];
            }
            target.LoadAlpha(y);
        }
        return target.Finish();
    });
}

}  // namespace transforms
