// What a PNG file says of its picture before and after the pixels.
// Room: platform/image/codecs/png.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/codecs/png/png_chunks.h"

/// Colour types, by their numbers in the file.
enum class PngColour : std::uint8_t { kGrey = 0, kRgb = 2, kPalette = 3, kGreyAlpha = 4, kRgba = 6 };

struct PngHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t depth = 0;  ///< bits a sample: 1, 2, 4, 8 or 16
    PngColour colour = PngColour::kGrey;
    bool interlaced = false;

    std::uint32_t SampleCount() const;  ///< a pixel: 1 to 4
    bool IsGrey() const { return colour == PngColour::kGrey || colour == PngColour::kGreyAlpha; }
    /// Bytes of one row of the whole picture without the filter's byte.
    std::uint64_t RowBytes() const
    {
        return (static_cast<std::uint64_t>(width) * SampleCount() * depth + 7) / 8;
    }
};

struct PngInfo {
    PngHeader header;
    std::vector<std::uint8_t> palette;       ///< R, G, B in turn
    std::vector<std::uint8_t> transparency;  ///< the data of tRNS, of a length that its colour type allows
    double gamma = 0;                       ///< the exponent that the samples were encoded with; 0 = not said
    bool has_colour_space = false;          ///< sRGB or a profile: then gamma doesn't count
    std::vector<std::uint8_t> icc_profile;  ///< grey for grey, RGB for the others; empty = none
    double dots_per_inch_x = 0;
    double dots_per_inch_y = 0;
    ImageMetadata metadata;
    PngChunk first_data;  ///< the first IDAT
};

/// Reads from the signature to the first IDAT. Broken chunks that the picture can do without are passed over.
/// False for a foreign, cut-short or contradictory file.
[[nodiscard]] bool ReadPngInfo(PngChunkReader& reader, PngInfo& info);

/// Reads from position, behind the last IDAT, to the end chunk: texts may stand there too. False when the
/// file ends before it.
[[nodiscard]] bool ReadPngTail(PngChunkReader& reader, std::uint64_t position, PngInfo& info);
