// Deinterlacing: replaces one field of an interlaced picture.
#include "src/platform/image/transforms/filters/deinterlace.h"

#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

ROW_LOOP static void MeanRow(const std::uint8_t* above, const std::uint8_t* below, std::size_t bytes,
                             std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < bytes; ++i)
        target[i] = static_cast<std::uint8_t>((above[i] + below[i] + 1) >> 1);
}

ROW_LOOP static void MeanRowBesideAlpha(const std::uint8_t* above, const std::uint8_t* below,
                                        std::size_t bytes, std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < bytes; i += 4) {
        const std::uint8_t alpha = target[i + 3];
        for (std::size_t c = 0; c < 3; ++c)
            target[i + c] = static_cast<std::uint8_t>((above[i + c] + below[i + c] + 1) >> 1);
        target[i + 3] = alpha;
    }
}

OperationResult Deinterlace(const ImageBuffer& source, ImageBuffer& result, bool odd_lines, bool interpolate)
{
    if (source.height < 2)
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& out) {
        Target target(image, out);
        const auto rows = [&](std::int32_t first, std::int32_t end) {
            for (std::int32_t y = first; y < end; ++y) {
                if ((y % 2 == 1) != odd_lines) {
                    target.LoadRow(y);
                    continue;
                }
                const std::uint8_t* above = Row(image, y > 0 ? y - 1 : 1);
                const std::uint8_t* below = interpolate && y + 1 < image.height ? Row(image, y + 1) : above;
                if (image.channels == 4)
                    MeanRowBesideAlpha(above, below, Stride(image), target.LoadRow(y));
                else
                    MeanRow(above, below, Stride(image), Row(target.Image(), y));
            }
        };
        RunBands(image, rows);
        return target.Finish();
    });
}

}  // namespace transforms
