// Composites pixels over white.
#include "src/platform/image/pixels/alpha.h"

#include <cstddef>

#include "src/platform/image/base/picture_memory.h"

ImageBuffer LayOnWhite(const ImageBuffer& image)
{
    ImageBuffer result;
    result.width = image.width;
    result.height = image.height;
    result.channels = 3;
    result.icc_profile = image.icc_profile;
    result.dots_per_inch_x = image.dots_per_inch_x;
    result.dots_per_inch_y = image.dots_per_inch_y;
    result.metadata = image.metadata;
    const std::size_t pixels = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    ResizeFresh(result.bytes, pixels * 3);
    const std::uint8_t* in = image.bytes.data();
    std::uint8_t* out = result.bytes.data();
    for (std::size_t i = 0; i < pixels; ++i, in += 4, out += 3) {
        const unsigned alpha = in[3];
        for (int c = 0; c < 3; ++c) {
            // x / 255, rounded; exact for every product of two bytes.
            const unsigned mixed = in[c] * alpha + 255u * (255u - alpha) + 128u;
            out[c] = static_cast<std::uint8_t>((mixed + (mixed >> 8)) >> 8);
        }
    }
    return result;
}
