// What deflate makes of bytes: literals, and copies of bytes that came before; and what these cost.
// Room: platform/image/deflate.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

constexpr std::uint32_t kPngWindow = 32768;  ///< the longest distance of a copy
constexpr std::uint32_t kPngShortestCopy = 3;
constexpr std::uint32_t kPngLongestCopy = 258;
constexpr std::size_t kPngLiteralCodes = 286;  ///< literals, the block's end, lengths
constexpr std::size_t kPngDistanceCodes = 30;
constexpr std::size_t kPngBlockEnd = 256;

/// So many bytes as they are, then so many copied from nDistance before. A length of 0 ends a block's tokens.
struct PngToken {
    std::uint32_t nLiterals = 0;
    std::uint16_t nLength = 0;
    std::uint16_t nDistance = 0;
};

using PngTokens = std::vector<PngToken>;

/// The code of a length less 3, and of a distance less 1, and how many further bits tell them apart.
struct PngLengthCodes {
    std::array<std::uint8_t, 256> aSymbol{};  ///< counted from the first length code, which is 257
    std::array<std::uint8_t, 29> aExtraBits{};
    std::array<std::uint8_t, 29> aFirst{};  ///< the first length of the code, less 3
};

constexpr PngLengthCodes MakePngLengthCodes()
{
    PngLengthCodes objCodes;
    std::uint32_t nLength = 0;
    for (std::uint32_t nSymbol = 0; nSymbol < 28; ++nSymbol) {
        const std::uint32_t nBits = nSymbol < 8 ? 0 : nSymbol / 4 - 1;
        objCodes.aExtraBits[nSymbol] = static_cast<std::uint8_t>(nBits);
        objCodes.aFirst[nSymbol] = static_cast<std::uint8_t>(nLength);
        for (std::uint32_t i = 0; i < 1U << nBits && nLength < 256; ++i)
            objCodes.aSymbol[nLength++] = static_cast<std::uint8_t>(nSymbol);
    }
    objCodes.aSymbol[255] = 28;  // 258 has a code of its own
    objCodes.aFirst[28] = 255;
    return objCodes;
}

inline constexpr PngLengthCodes kPngLengthCodes = MakePngLengthCodes();

constexpr std::uint32_t nPngDistanceSymbol(std::uint32_t nDistance)
{
    const std::uint32_t nLess = nDistance - 1;
    if (nLess < 2)
        return nLess;
    const std::uint32_t nHighest = static_cast<std::uint32_t>(std::bit_width(nLess)) - 1;
    return 2 * nHighest + (nLess >> (nHighest - 1) & 1);
}

constexpr std::uint32_t nPngDistanceExtraBits(std::uint32_t nSymbol)
{
    return nSymbol < 4 ? 0 : nSymbol / 2 - 1;
}

/// How often each code is needed.
struct PngCounts {
    std::array<std::uint32_t, kPngLiteralCodes> aLiterals{};
    std::array<std::uint32_t, kPngDistanceCodes> aDistances{};
    std::uint64_t nExtraBits = 0;
};

/// Bits that each thing will cost, going by the block before.
struct PngCosts {
    std::array<std::uint8_t, 256> aLiteral{};
    std::array<std::uint8_t, kPngLongestCopy + 1> aLength{};  ///< by the length, its extra bits included
    std::array<std::uint8_t, kPngDistanceCodes> aDistance{};  ///< by the code, its extra bits included
    std::uint32_t nLeastLiteral = 0;
    std::uint32_t nLeastCopy = 0;
};

/// A guess for before there is a block.
PngCosts objFirstPngCosts();
