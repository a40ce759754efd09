// Luma of pixels, and the operations based on it.
#include "src/platform/image/transforms/rows/intensity.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/planes.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

constexpr std::size_t kBlock = 1024;  // pixels; they stay in the L1 cache

void IntensityRow(const std::uint8_t* pixels, std::size_t pixel_count, std::int32_t channels,
                  std::uint8_t* intensity)
{
    if (channels == 1) {
        std::memcpy(intensity, pixels, pixel_count);
        return;
    }
    const auto channel_count = static_cast<std::size_t>(channels);
    Planes planes;
    for (std::size_t i = 0; i < pixel_count; i += kPlaneBlock) {
        const std::size_t part = std::min(kPlaneBlock, pixel_count - i);
        SplitPixels(pixels + i * channel_count, part, channel_count, planes);
        IntensityOf(planes, part, intensity + i);
    }
}

ROW_LOOP static void CutRow(std::uint8_t* __restrict values, std::size_t count, std::uint8_t level)
{
    for (std::size_t i = 0; i < count; ++i)
        values[i] = values[i] > level ? 255 : 0;
}

ROW_LOOP static void WriteGrey3(const std::uint8_t* __restrict grey, std::size_t pixel_count,
                                std::uint8_t* __restrict pixels)
{
    for (std::size_t i = 0; i < pixel_count; ++i)
        pixels[3 * i] = pixels[3 * i + 1] = pixels[3 * i + 2] = grey[i];
}

ROW_LOOP static void WriteGrey4(const std::uint8_t* __restrict grey, std::size_t pixel_count,
                                std::uint8_t* __restrict pixels)
{
    for (std::size_t i = 0; i < pixel_count; ++i) {
        const std::uint8_t alpha = pixels[4 * i + 3];
        pixels[4 * i] = pixels[4 * i + 1] = pixels[4 * i + 2] = grey[i];
        pixels[4 * i + 3] = alpha;
    }
}

// Makes every pixel grey, with the level that change_row computes from its intensity.
template <typename Change>
static OperationResult MakeGrey(const ImageBuffer& source, ImageBuffer& result, const Change& change_row)
{
    const auto channels = static_cast<std::size_t>(source.channels);
    const auto width = static_cast<std::size_t>(source.width);
    Target target(source, result);
    RunBands(source, [&](std::int32_t first, std::int32_t end) {
        std::uint8_t grey[kBlock];
        const std::size_t last = width * static_cast<std::size_t>(end);
        for (std::size_t i = width * static_cast<std::size_t>(first); i < last; i += kBlock) {
            const std::size_t pixel_count = std::min(kBlock, last - i);
            std::uint8_t* pixels = target.Load(i * channels, pixel_count * channels);
            IntensityRow(pixels, pixel_count, source.channels, grey);
            change_row(grey, pixel_count);
            if (channels == 1)
                std::memcpy(pixels, grey, pixel_count);
            else if (channels == 3)
                WriteGrey3(grey, pixel_count, pixels);
            else
                WriteGrey4(grey, pixel_count, pixels);
        }
    });
    return target.Finish();
}

ImageBuffer IntensityPlane(const ImageBuffer& image)
{
    ImageBuffer result;
    result.width = image.width;
    result.height = image.height;
    result.channels = 1;
    if (image.channels == 1) {
        result.bytes = image.bytes;
        return result;
    }
    ResizeFresh(result.bytes, image.bytes.size() / static_cast<std::size_t>(image.channels));
    EachRows(image.height, Stride(image), [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y)
            IntensityRow(Row(image, y), static_cast<std::size_t>(image.width), image.channels,
                         Row(result, y));
    });
    return result;
}

OperationResult Intensity(const ImageBuffer& source, ImageBuffer& result)
{
    if (source.channels == 1)
        return OperationResult::Unchanged;
    return MakeGrey(source, result, [](std::uint8_t*, std::size_t) {});
}

OperationResult Threshold(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level)
{
    return MakeGrey(source, result,
                    [=](std::uint8_t* grey, std::size_t pixels) { CutRow(grey, pixels, level); });
}

}  // namespace transforms
