// Deinterlacing: replaces one field of an interlaced picture.
#include "src/platform/image/transforms/filters/deinterlace.h"

#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/row_loop.h"

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

bool Deinterlace(ImageBuffer& image, bool odd_lines, bool interpolate)
{
    if (image.height < 2)
        return true;
    const std::size_t row_bytes =
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
    const auto row = [&](std::int32_t y) {
        return image.bytes.data() + row_bytes * static_cast<std::size_t>(y);
    };
    const auto rows = [&](std::int32_t first, std::int32_t end) {
        for (std::int32_t y = first; y < end; ++y) {
            if ((y % 2 == 1) != odd_lines)
                continue;
            const std::uint8_t* above = row(y > 0 ? y - 1 : 1);
            const std::uint8_t* below = interpolate && y + 1 < image.height ? row(y + 1) : above;
            (image.channels == 4 ? MeanRowBesideAlpha : MeanRow)(above, below, row_bytes, row(y));
        }
    };
    return IsVisible(image, [&] {
        RunBands(image, rows);
        return true;
    });
}

}  // namespace transforms
