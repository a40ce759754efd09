// How new pixels meet those that are there: the bitwise raster operations, and mixing by coverage.
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

/// Binary raster operation 1 to 16 of pen and destination: bit (pen, destination) of the number less 1,
/// counted 00, 01, 10, 11 from the low end, says what comes out.
inline std::uint32_t nRop2(int nOperation, std::uint32_t nDestination, std::uint32_t nPen)
{
    const unsigned nTable = static_cast<unsigned>(nOperation - 1);
    std::uint32_t nResult = 0;
    if (nTable & 1)
        nResult |= ~nPen & ~nDestination;
    if (nTable & 2)
        nResult |= ~nPen & nDestination;
    if (nTable & 4)
        nResult |= nPen & ~nDestination;
    if (nTable & 8)
        nResult |= nPen & nDestination;
    return nResult & 0xFFFFFF;
}

/// Ternary raster operation: the same with bit (pattern, source, destination) of nOperation.
inline std::uint32_t nRop3(std::uint8_t nOperation, std::uint32_t nDestination, std::uint32_t nSource,
                           std::uint32_t nPattern)
{
    const auto nHalf = [&](unsigned nTable) {
        std::uint32_t nResult = 0;
        if (nTable & 1)
            nResult |= ~nSource & ~nDestination;
        if (nTable & 2)
            nResult |= ~nSource & nDestination;
        if (nTable & 4)
            nResult |= nSource & ~nDestination;
        if (nTable & 8)
            nResult |= nSource & nDestination;
        return nResult;
    };
    return ((nHalf(nOperation & 15u) & ~nPattern) | (nHalf(nOperation >> 4) & nPattern)) & 0xFFFFFF;
}

/// True if the outcome depends on the source (or on the pattern).
inline bool bUsesSource(std::uint8_t nOperation)
{
    return ((nOperation >> 2) & 0x33) != (nOperation & 0x33);
}
inline bool bUsesPattern(std::uint8_t nOperation)
{
    return (nOperation >> 4) != (nOperation & 15);
}

/// nProduct / 255 rounded, for products of two bytes.
inline std::uint32_t nDividedBy255(std::uint32_t nProduct)
{
    nProduct += 128;
    return (nProduct + (nProduct >> 8)) >> 8;
}

/// All four bytes of nPixel times nLevel / 255.
inline std::uint32_t nScaled(std::uint32_t nPixel, std::uint32_t nLevel)
{
    if (nLevel == 255)
        return nPixel;
    std::uint32_t nResult = 0;
    for (unsigned nShift = 0; nShift < 32; nShift += 8)
        nResult |= nDividedBy255((nPixel >> nShift & 255) * nLevel) << nShift;
    return nResult;
}

/// nSource (alpha, and colours already multiplied by it) laid over an opaque pixel.
inline std::uint32_t nOver(std::uint32_t nDestination, std::uint32_t nSource)
{
    const std::uint32_t nAlpha = nSource >> 24;
    if (nAlpha == 255)
        return nSource & 0xFFFFFF;
    std::uint32_t nResult = 0;
    for (unsigned nShift = 0; nShift < 24; nShift += 8) {
        const std::uint32_t nSum =
            (nSource >> nShift & 255) + nDividedBy255((nDestination >> nShift & 255) * (255 - nAlpha));
        nResult |= (nSum > 255 ? 255 : nSum) << nShift;
    }
    return nResult;
}
