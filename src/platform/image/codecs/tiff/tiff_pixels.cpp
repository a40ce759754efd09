// Row kernels.
#include "src/platform/image/codecs/tiff/tiff_pixels.h"

#include <algorithm>
#include <cstring>

void ExpandBits(const std::uint8_t* in, std::size_t pixels, std::uint8_t zero, std::uint8_t one,
                std::uint8_t* out)
{
    // Expands eight pixels at a time: multiplying copies the byte to all eight lanes, each lane keeps one
    // bit, and a carry out of its low seven bits shows whether that bit is set.
    constexpr std::uint64_t kEach = 0x0101010101010101u;
    constexpr std::uint64_t kOneBit = 0x0102040810204080u;  // the highest bit becomes the first byte
    constexpr std::uint64_t kLowSeven = 0x7F7F7F7F7F7F7F7Fu;
    const std::uint64_t zeros = zero * kEach;
    const std::uint64_t flips = (zero ^ one) * kEach;
    const std::size_t whole = pixels / 8;
    for (std::size_t i = 0; i < whole; ++i) {
        const std::uint64_t bits = (in[i] * kEach) & kOneBit;
        const std::uint64_t set = (((bits & kLowSeven) + kLowSeven) | bits) & ~kLowSeven;
        const std::uint64_t mask = (set >> 7) * 0xFF;
        const std::uint64_t levels = zeros ^ (mask & flips);
        std::memcpy(out + i * 8, &levels, 8);
    }
    for (std::size_t i = whole * 8; i < pixels; ++i)
        out[i] = in[i / 8] >> (7 - i % 8) & 1 ? one : zero;
}

void PackDarkBits(const std::uint8_t* in, std::size_t pixels, std::uint8_t* out)
{
    constexpr std::uint64_t kHighest = 0x8080808080808080u;
    constexpr std::uint64_t kGather = 0x8040201008040201u;  // one bit of each byte, the first one highest
    const std::size_t whole = pixels / 8;
    for (std::size_t i = 0; i < whole; ++i) {
        std::uint64_t levels = 0;
        std::memcpy(&levels, in + i * 8, 8);
        out[i] = static_cast<std::uint8_t>(((~levels & kHighest) >> 7) * kGather >> 56);
    }
    if (pixels % 8 == 0)
        return;
    out[whole] = 0;
    for (std::size_t i = whole * 8; i < pixels; ++i)
        if (in[i] < 128)
            out[whole] = static_cast<std::uint8_t>(out[whole] | 0x80 >> i % 8);
}

void Threshold(const std::uint8_t* in, std::size_t pixels, std::uint32_t channels, std::uint8_t* out)
{
    if (channels == 1) {
        for (std::size_t i = 0; i < pixels; ++i)
            out[i] = in[i] >= 128 ? 255 : 0;
        return;
    }
    for (std::size_t i = 0; i < pixels; ++i) {
        const unsigned intensity = 114u * in[i * 3] + 587u * in[i * 3 + 1] + 299u * in[i * 3 + 2];
        out[i] = intensity >= 128000 ? 255 : 0;
    }
}

void SubtractLeft(const std::uint8_t* __restrict in, std::size_t bytes, std::uint32_t channels,
                  std::uint8_t* __restrict out)
{
    const std::size_t first = std::min<std::size_t>(bytes, channels);
    std::memcpy(out, in, first);
    for (std::size_t i = first; i < bytes; ++i)
        out[i] = static_cast<std::uint8_t>(in[i] - in[i - channels]);
}

void Unpremultiply(std::uint8_t* pixels, std::size_t pixel_count)
{
    for (std::uint8_t* p = pixels; p != pixels + pixel_count * 4; p += 4) {
        const unsigned alpha = p[3];
        if (alpha == 0 || alpha == 255)
            continue;
        for (int c = 0; c < 3; ++c)
            p[c] = static_cast<std::uint8_t>(std::min(255u, (p[c] * 255u + alpha / 2) / alpha));
    }
}
