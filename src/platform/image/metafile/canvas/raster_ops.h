// Combines new pixels with existing ones: raster operations and alpha blending.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>

constexpr int kRop2Black = 1;
constexpr int kRop2Not = 6;
constexpr int kRop2Nop = 11;
constexpr int kRop2Copy = 13;
constexpr int kRop2White = 16;

constexpr std::uint8_t kRopSourceCopy = 0xCC;
constexpr std::uint8_t kRopPatternCopy = 0xF0;
constexpr std::uint8_t kRopNothing = 0xAA;

/// Binary raster operation 1 to 16. Bit (pen, destination) of operation - 1, counted 00, 01, 10, 11 from the
/// low end, is the result.
inline std::uint32_t Rop2(int operation, std::uint32_t destination, std::uint32_t pen)
{
    const unsigned table = static_cast<unsigned>(operation - 1);
    std::uint32_t result = 0;
    if (table & 1)
        result |= ~pen & ~destination;
    if (table & 2)
        result |= ~pen & destination;
    if (table & 4)
        result |= pen & ~destination;
    if (table & 8)
        result |= pen & destination;
    return result & 0xFFFFFF;
}

/// Ternary raster operation: bit (pattern, source, destination) of operation is the result.
inline std::uint32_t Rop3(std::uint8_t operation, std::uint32_t destination, std::uint32_t source,
                          std::uint32_t pattern)
{
    const auto half = [&](unsigned table) {
        std::uint32_t result = 0;
        if (table & 1)
            result |= ~source & ~destination;
        if (table & 2)
            result |= ~source & destination;
        if (table & 4)
            result |= source & ~destination;
        if (table & 8)
            result |= source & destination;
        return result;
    };
    return ((half(operation & 15u) & ~pattern) | (half(operation >> 4) & pattern)) & 0xFFFFFF;
}

/// True if the result depends on the source (or on the pattern).
inline bool UsesSource(std::uint8_t operation)
{
    return ((operation >> 2) & 0x33) != (operation & 0x33);
}
inline bool UsesPattern(std::uint8_t operation)
{
    return (operation >> 4) != (operation & 15);
}

/// Rounded product / 255, for products of two bytes.
inline std::uint32_t DivideBy255(std::uint32_t product)
{
    product += 128;
    return (product + (product >> 8)) >> 8;
}

/// All four bytes of pixel times level / 255.
inline std::uint32_t ScalePixel(std::uint32_t pixel, std::uint32_t level)
{
    if (level == 255)
        return pixel;
    std::uint32_t result = 0;
    for (unsigned shift = 0; shift < 32; shift += 8)
        result |= DivideBy255((pixel >> shift & 255) * level) << shift;
    return result;
}

/// Blends a premultiplied source over an opaque destination.
inline std::uint32_t BlendOver(std::uint32_t destination, std::uint32_t source)
{
    const std::uint32_t alpha = source >> 24;
    if (alpha == 255)
        return source & 0xFFFFFF;
    std::uint32_t result = 0;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        const std::uint32_t sum =
            (source >> shift & 255) + DivideBy255((destination >> shift & 255) * (255 - alpha));
        result |= (sum > 255 ? 255 : sum) << shift;
    }
    return result;
}
