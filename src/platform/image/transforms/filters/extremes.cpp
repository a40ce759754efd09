// Minimum and maximum filters.
#include "src/platform/image/transforms/filters/extremes.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <utility>

#include "src/platform/image/base/parallel.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

// The minimum or maximum of two rows of count bytes.
using Choice = void (*)(const std::uint8_t* one, const std::uint8_t* other, std::size_t count,
                        std::uint8_t* __restrict target);

ROW_LOOP static void Lesser(const std::uint8_t* one, const std::uint8_t* other, std::size_t count,
                            std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] = one[i] < other[i] ? one[i] : other[i];
}

ROW_LOOP static void Greater(const std::uint8_t* one, const std::uint8_t* other, std::size_t count,
                             std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] = one[i] < other[i] ? other[i] : one[i];
}

namespace
{
struct Window {
    Choice choose;
    std::size_t size;    // pixels
    std::size_t before;  // how many of them precede the pixel
};
}  // namespace

// Filters a row into target, which may be the row itself. memory holds two rows plus the window's width each.
// Windows of 2, 4, 8, ... pixels are combined from two of half the size, and the final one from two that
// overlap.
static void ChooseAlongRow(const std::uint8_t* row, std::size_t bytes, std::size_t channels,
                           const Window& window, std::uint8_t* memory, std::uint8_t* target)
{
    const std::size_t more = (window.size - 1) * channels;
    std::uint8_t* now = memory;
    std::uint8_t* next = memory + bytes + more;
    const std::size_t lead = window.before * channels;
    for (std::size_t i = 0; i < lead; i += channels)
        std::memcpy(now + i, row, channels);
    std::memcpy(now + lead, row, bytes);
    for (std::size_t i = lead + bytes; i < more + bytes; i += channels)
        std::memcpy(now + i, row + bytes - channels, channels);

    std::size_t reached = 1, left = bytes + more;
    while (2 * reached < window.size) {
        left -= reached * channels;
        window.choose(now, now + reached * channels, left, next);
        std::swap(now, next);
        reached *= 2;
    }
    window.choose(now, now + (window.size - reached) * channels, bytes, target);
}

namespace
{
// Filters a strip of columns in place by van Herk's algorithm. Rows are cut into blocks of the window's size;
// a window is the tail of one block, with extremes accumulated upwards from the block's end, and the head of
// the next, accumulated downwards. The upward pass over the next block runs before this block's output is
// written, so no row is overwritten before it has been read.
class ColumnStrip
{
public:
    static std::size_t MemorySize(const Window& window, std::size_t bytes)
    {
        return (2 * window.size + 2) * bytes;
    }

    ColumnStrip(ImageBuffer& image, std::size_t first, std::size_t bytes, const Window& window,
                std::uint8_t* memory)
        : first_(image.bytes.data() + first),
          row_bytes_(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels)),
          height_(static_cast<std::size_t>(image.height)),
          bytes_(bytes),
          window_(window),
          upwards_(memory),
          next_upwards_(memory + window.size * bytes),
          downwards_(memory + 2 * window.size * bytes),
          next_downwards_(downwards_ + bytes)
    {
    }

    void Choose()
    {
        ChooseUpwards(0, upwards_);
        for (std::size_t block = 0; block < height_; block += window_.size) {
            if (block + window_.size < height_)
                ChooseUpwards(block + window_.size, next_upwards_);
            WriteBlock(block);
            std::swap(upwards_, next_upwards_);
        }
    }

private:
    std::uint8_t* Row(std::size_t y) { return first_ + y * row_bytes_; }
    // The first row of window n, clamped to the border.
    std::uint8_t* Begin(std::size_t n)
    {
        return Row(n < window_.before ? 0 : std::min(n - window_.before, height_ - 1));
    }
    void ChooseUpwards(std::size_t block, std::uint8_t* choices)
    {
        const std::size_t last = window_.size - 1;
        std::memcpy(choices + last * bytes_, Begin(block + last), bytes_);
        for (std::size_t i = last; i-- > 0;)
            window_.choose(choices + (i + 1) * bytes_, Begin(block + i), bytes_, choices + i * bytes_);
    }
    void WriteBlock(std::size_t block)
    {
        const std::size_t end = std::min(window_.size, height_ - block);
        std::memcpy(Row(block), upwards_, bytes_);
        for (std::size_t i = 1; i < end; ++i) {
            const std::uint8_t* new_row = Begin(block + window_.size + i - 1);
            if (i == 1)
                std::memcpy(next_downwards_, new_row, bytes_);
            else
                window_.choose(downwards_, new_row, bytes_, next_downwards_);
            std::swap(downwards_, next_downwards_);
            window_.choose(upwards_ + i * bytes_, downwards_, bytes_, Row(block + i));
        }
    }

    std::uint8_t* first_;
    std::size_t row_bytes_, height_, bytes_;
    Window window_;
    std::uint8_t *upwards_, *next_upwards_, *downwards_, *next_downwards_;
};
}  // namespace

// The loops process alpha like any channel; saving and restoring it is cheaper than skipping it.
static void SaveAlpha(const ImageBuffer& image, PixelBytes& alpha)
{
    for (std::size_t i = 0; i < alpha.size(); ++i)
        alpha[i] = image.bytes[4 * i + 3];
}

static void RestoreAlpha(ImageBuffer& image, const PixelBytes& alpha)
{
    for (std::size_t i = 0; i < alpha.size(); ++i)
        image.bytes[4 * i + 3] = alpha[i];
}

static OperationResult Choose(const ImageBuffer& source, ImageBuffer& result, std::int32_t size,
                              Choice choose)
{
    constexpr std::size_t kStrip = 2048;  // bytes; 512 rows of a strip fit the L2 cache
    const auto radius = static_cast<std::size_t>(std::clamp(size, 1, 256));
    if (radius == 1)
        return OperationResult::Unchanged;
    const Window window{choose, radius, radius / 2};
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& out) {
        const auto channels = static_cast<std::size_t>(image.channels);
        const std::size_t row_bytes = Stride(image);
        const std::size_t strip_count = (row_bytes + kStrip - 1) / kStrip;
        const std::size_t count = BandCount(image);
        const std::size_t along_memory = 2 * (row_bytes + (radius - 1) * channels);
        const std::size_t memory_size = std::max(along_memory, ColumnStrip::MemorySize(window, kStrip));
        PixelBytes memory(count * memory_size), alpha(channels == 4 ? image.bytes.size() / 4 : 0);
        Target target(image, out);
        const auto rows = [&](std::size_t band, std::int32_t first, std::int32_t end) {
            for (std::int32_t y = first; y < end; ++y)
                ChooseAlongRow(Row(image, y), row_bytes, channels, window, memory.data() + band * memory_size,
                               Row(target.Image(), y));
        };
        const auto strips = [&](std::size_t part) {
            for (std::size_t n = strip_count * part / count; n < strip_count * (part + 1) / count; ++n)
                ColumnStrip(target.Image(), n * kStrip, std::min(kStrip, row_bytes - n * kStrip), window,
                            memory.data() + part * memory_size)
                    .Choose();
        };
        SaveAlpha(image, alpha);
        RunBands(image, count, std::ref(rows));
        RunParts(count, std::ref(strips));
        RestoreAlpha(target.Image(), alpha);
        return target.Finish();
    });
}

OperationResult FilterMinimal(const ImageBuffer& source, ImageBuffer& result, std::int32_t size)
{
    return Choose(source, result, size, Lesser);
}

OperationResult FilterMaximal(const ImageBuffer& source, ImageBuffer& result, std::int32_t size)
{
    return Choose(source, result, size, Greater);
}

}  // namespace transforms
