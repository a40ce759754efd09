// What a PNG file says of its picture before and after the pixels.
// Room: platform/image/codecs/png.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/codecs/png/png_chunks.h"

/// Colour types, by their numbers in the file.
enum class PngColour : std::uint8_t { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6 };

struct PngHeader {
    std::uint32_t nWidth = 0;
    std::uint32_t nHeight = 0;
    std::uint32_t nDepth = 0;  ///< bits a sample: 1, 2, 4, 8 or 16
    PngColour objColour = PngColour::Grey;
    bool bInterlaced = false;

    std::uint32_t nSamples() const;  ///< a pixel: 1 to 4
    bool bGrey() const { return objColour == PngColour::Grey || objColour == PngColour::GreyAlpha; }
    /// Bytes of one row of the whole picture without the filter's byte.
    std::uint64_t nRowBytes() const
    {
        return (static_cast<std::uint64_t>(nWidth) * nSamples() * nDepth + 7) / 8;
    }
};

struct PngInfo {
    PngHeader objHeader;
    std::vector<std::uint8_t> aPalette;       ///< R, G, B in turn
    std::vector<std::uint8_t> aTransparency;  ///< the data of tRNS, of a length that its colour type allows
    double dGamma = 0;                      ///< the exponent that the samples were encoded with; 0 = not said
    bool bColourSpace = false;              ///< sRGB or a profile: then dGamma doesn't count
    std::vector<std::uint8_t> aIccProfile;  ///< grey for grey, RGB for the others; empty = none
    double dDotsPerInchX = 0;
    double dDotsPerInchY = 0;
    ImageMetadata objMetadata;
    PngChunk objFirstData;  ///< the first IDAT
};

/// Reads from the signature to the first IDAT. Broken chunks that the picture can do without are passed over.
/// False for a foreign, cut-short or contradictory file.
[[nodiscard]] bool bReadPngInfo(PngChunkReader& objReader, PngInfo& objInfo);

/// Reads from nPosition, behind the last IDAT, to the end chunk: texts may stand there too. False when the
/// file ends before it.
[[nodiscard]] bool bReadPngTail(PngChunkReader& objReader, std::uint64_t nPosition, PngInfo& objInfo);
