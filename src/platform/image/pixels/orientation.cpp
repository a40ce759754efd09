// Flips and half turns in place, quarter turns block by block.
#include "src/platform/image/pixels/orientation.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/picture_memory.h"

// Gathers count pixels that are step bytes apart (negative: backwards) into consecutive ones.
template <std::size_t kChannels>
static void Gather(std::uint8_t* target, const std::uint8_t* source, std::ptrdiff_t step, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i, target += kChannels, source += step)
        std::memcpy(target, source, kChannels);
}

// Copies three-byte pixels as four bytes, one move instead of two; the next pixel overwrites the excess byte.
// The last pixel is copied exactly. The byte after every source pixel but the last must be readable.
template <>
void Gather<3>(std::uint8_t* target, const std::uint8_t* source, std::ptrdiff_t step, std::size_t count)
{
    for (std::size_t i = 0; i + 1 < count; ++i, target += 3, source += step)
        std::memcpy(target, source, 4);
    if (count > 0)
        std::memcpy(target, source, 3);
}

// Swaps rows top to bottom.
static void FlipRows(ImageBuffer& image)
{
    const auto stride = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
    const auto rows = static_cast<std::size_t>(image.height);
    for (std::size_t y = 0; y < rows / 2; ++y) {
        std::uint8_t* upper = image.bytes.data() + y * stride;
        std::swap_ranges(upper, upper + stride, image.bytes.data() + (rows - 1 - y) * stride);
    }
}

// Reverses each row through a copy.
template <std::size_t kChannels>
static void MirrorRows(ImageBuffer& image)
{
    const auto width = static_cast<std::size_t>(image.width);
    std::vector<std::uint8_t> mirrored(width * kChannels + 1);
    std::uint8_t* row = image.bytes.data();
    for (std::int32_t y = 0; y < image.height; ++y, row += width * kChannels) {
        std::memcpy(mirrored.data(), row, width * kChannels);
        Gather<kChannels>(row, mirrored.data() + (width - 1) * kChannels,
                          -static_cast<std::ptrdiff_t>(kChannels), width);
    }
}

// Transposes: target pixel (x, y) is source pixel (y, x), with the source read from the right if from_right
// and from the bottom if from_below. Blocks keep both source and target rows in the L1 cache.
template <std::size_t kChannels>
static PixelBytes Transposed(const ImageBuffer& image, bool from_right, bool from_below)
{
    constexpr std::size_t kBlock = 64;
    PixelBytes turned;
    ResizeFresh(turned, image.bytes.size());
    const auto source_width = static_cast<std::size_t>(image.width);
    const auto source_height = static_cast<std::size_t>(image.height);
    const std::size_t source_stride = source_width * kChannels;
    const std::ptrdiff_t step = static_cast<std::ptrdiff_t>(source_stride) * (from_below ? -1 : 1);
    for (std::size_t y0 = 0; y0 < source_width; y0 += kBlock) {
        const std::size_t y1 = std::min(y0 + kBlock, source_width);
        for (std::size_t x0 = 0; x0 < source_height; x0 += kBlock) {
            const std::size_t x1 = std::min(x0 + kBlock, source_height);
            const std::size_t row = from_below ? source_height - 1 - x0 : x0;
            for (std::size_t y = y0; y < y1; ++y) {
                const std::size_t column = from_right ? source_width - 1 - y : y;
                const std::uint8_t* source = image.bytes.data() + row * source_stride + column * kChannels;
                std::uint8_t* target = turned.data() + (y * source_height + x0) * kChannels;
                // The last pixel of the bottom row ends the buffer: don't read past it.
                const std::size_t exact = from_below && x0 == 0 ? 1 : 0;
                std::memcpy(target, source, exact * kChannels);
                Gather<kChannels>(target + exact * kChannels,
                                  source + static_cast<std::ptrdiff_t>(exact) * step, step, x1 - x0 - exact);
            }
        }
    }
    return turned;
}

template <std::size_t kChannels>
static PixelBytes Transposed(const ImageBuffer& image, std::int32_t orientation)
{
    return Transposed<kChannels>(image, orientation >= 7, orientation == 6 || orientation == 7);
}

static bool IsTransposing(std::int32_t orientation)
{
    return orientation >= 5 && orientation <= 8;
}

static void SwapSides(ImageBuffer& image)
{
    std::swap(image.width, image.height);
    std::swap(image.dots_per_inch_x, image.dots_per_inch_y);
    std::swap(image.reduction.full_width, image.reduction.full_height);
    std::swap(image.reduction.beyond_left, image.reduction.beyond_top);
}

static void OrientEdges(Reduction& reduction, std::int32_t orientation)
{
    // After the transposition of 5 to 8: 6 and 7 mirror, 7 and 8 flip.
    const bool mirrors = orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    const bool flips = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    reduction.beyond_left = reduction.beyond_left != mirrors;
    reduction.beyond_top = reduction.beyond_top != flips;
}

template <std::size_t kChannels>
static void Apply(ImageBuffer& image, std::int32_t orientation)
{
    if (IsTransposing(orientation)) {
        image.bytes = Transposed<kChannels>(image, orientation);
        SwapSides(image);
    }
    if (orientation == 3 || orientation == 4)
        FlipRows(image);
    if (orientation == 2 || orientation == 3)
        MirrorRows<kChannels>(image);
    OrientEdges(image.reduction, orientation);
}

void ApplyOrientation(ImageBuffer& image, std::int32_t orientation)
{
    if (image.channels == 1)
        Apply<1>(image, orientation);
    else if (image.channels == 3)
        Apply<3>(image, orientation);
    else if (image.channels == 4)
        Apply<4>(image, orientation);
}

// The pixels for orientations 2 to 4.
template <std::size_t kChannels>
static PixelBytes Mirrored(const ImageBuffer& image, bool flip, bool mirror)
{
    PixelBytes bytes;
    ResizeFresh(bytes, image.bytes.size());
    const auto width = static_cast<std::size_t>(image.width), rows = static_cast<std::size_t>(image.height);
    const std::size_t stride = width * kChannels;
    for (std::size_t y = 0; y < rows; ++y) {
        const std::uint8_t* source = image.bytes.data() + (flip ? rows - 1 - y : y) * stride;
        std::uint8_t* target = bytes.data() + y * stride;
        if (!mirror) {
            std::memcpy(target, source, stride);
            continue;
        }
        // The last pixel of the bottom row ends the buffer: don't read past it.
        std::memcpy(target, source + stride - kChannels, kChannels);
        if (width > 1)
            Gather<kChannels>(target + kChannels, source + stride - 2 * kChannels,
                              -static_cast<std::ptrdiff_t>(kChannels), width - 1);
    }
    return bytes;
}

template <std::size_t kChannels>
static PixelBytes Oriented(const ImageBuffer& image, std::int32_t orientation)
{
    if (IsTransposing(orientation))
        return Transposed<kChannels>(image, orientation);
    return Mirrored<kChannels>(image, orientation == 3 || orientation == 4,
                               orientation == 2 || orientation == 3);
}

ImageBuffer OrientedCopy(const ImageBuffer& image, std::int32_t orientation)
{
    ImageBuffer result;
    result.width = image.width;
    result.height = image.height;
    result.channels = image.channels;
    result.icc_profile = image.icc_profile;
    result.dots_per_inch_x = image.dots_per_inch_x;
    result.dots_per_inch_y = image.dots_per_inch_y;
    result.metadata = image.metadata;
    result.reduction = image.reduction;
    result.lossy = image.lossy;
    if (image.channels == 1)
        result.bytes = Oriented<1>(image, orientation);
    else if (image.channels == 3)
        result.bytes = Oriented<3>(image, orientation);
    else if (image.channels == 4)
        result.bytes = Oriented<4>(image, orientation);
    if (IsTransposing(orientation))
        SwapSides(result);
    OrientEdges(result.reduction, orientation);
    return result;
}
