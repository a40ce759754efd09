// Deflate's tokens, literals and matches, and their costs.
// Room: platform/image/deflate.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

constexpr std::uint32_t kPngWindow = 32768;  ///< maximum distance of a match
constexpr std::uint32_t kPngShortestMatch = 3;
constexpr std::uint32_t kPngLongestMatch = 258;
constexpr std::size_t kPngLiteralCodes = 286;  ///< literals, end of block, lengths
constexpr std::size_t kPngDistanceCodes = 30;
constexpr std::size_t kPngBlockEnd = 256;

/// A number of literals, then a match of `length` bytes from `distance` back. Length 0 ends the block's
/// tokens.
struct PngToken {
    std::uint32_t literals = 0;
    std::uint16_t length = 0;
    std::uint16_t distance = 0;
};

using PngTokens = std::vector<PngToken>;

/// Maps a match length less 3 to its length code and extra bits.
struct PngLengthCodes {
    std::array<std::uint8_t, 256> symbol{};  ///< code less 257, the first length code
    std::array<std::uint8_t, 29> extra_bits{};
    std::array<std::uint8_t, 29> first{};  ///< the first length of each code, less 3
};

constexpr PngLengthCodes MakePngLengthCodes()
{
    PngLengthCodes codes;
    std::uint32_t length = 0;
    for (std::uint32_t symbol = 0; symbol < 28; ++symbol) {
        const std::uint32_t bits = symbol < 8 ? 0 : symbol / 4 - 1;
        codes.extra_bits[symbol] = static_cast<std::uint8_t>(bits);
        codes.first[symbol] = static_cast<std::uint8_t>(length);
        for (std::uint32_t i = 0; i < 1U << bits && length < 256; ++i)
            codes.symbol[length++] = static_cast<std::uint8_t>(symbol);
    }
    codes.symbol[255] = 28;  // length 258 has a separate code
    codes.first[28] = 255;
    return codes;
}

inline constexpr PngLengthCodes kPngLengthCodes = MakePngLengthCodes();

constexpr std::uint32_t PngDistanceSymbol(std::uint32_t distance)
{
    const std::uint32_t less = distance - 1;
    if (less < 2)
        return less;
    const std::uint32_t highest = static_cast<std::uint32_t>(std::bit_width(less)) - 1;
    return 2 * highest + (less >> (highest - 1) & 1);
}

constexpr std::uint32_t PngDistanceExtraBits(std::uint32_t symbol)
{
    return symbol < 4 ? 0 : symbol / 2 - 1;
}

/// How often each code is used.
struct PngCounts {
    std::array<std::uint32_t, kPngLiteralCodes> literals{};
    std::array<std::uint32_t, kPngDistanceCodes> distances{};
    std::uint64_t extra_bits = 0;
};

/// Estimated costs in bits, from the previous block.
struct PngCosts {
    std::array<std::uint8_t, 256> literal{};
    std::array<std::uint8_t, kPngLongestMatch + 1> length{};  ///< by length, including extra bits
    std::array<std::uint8_t, kPngDistanceCodes> distance{};   ///< by code, including extra bits
    std::uint32_t min_literal = 0;
    std::uint32_t min_match = 0;
};

/// A guess for the first block.
PngCosts FirstPngCosts();
