// The header and ancillary chunks of a PNG file.
// Room: platform/image/codecs/png.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/colour/rgb_space.h"

/// Colour types as numbered in the file.
enum class PngColour : std::uint8_t { kGrey = 0, kRgb = 2, kPalette = 3, kGreyAlpha = 4, kRgba = 6 };

struct PngHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t depth = 0;  ///< bits per sample: 1, 2, 4, 8 or 16
    PngColour colour = PngColour::kGrey;
    bool interlaced = false;

    std::uint32_t SampleCount() const;  ///< per pixel: 1 to 4
    bool IsGrey() const { return colour == PngColour::kGrey || colour == PngColour::kGreyAlpha; }
    /// Bytes per row of the whole picture, without the filter byte.
    std::uint64_t RowBytes() const
    {
        return (static_cast<std::uint64_t>(width) * SampleCount() * depth + 7) / 8;
    }
};

struct PngInfo {
    PngHeader header;
    std::vector<std::uint8_t> palette;       ///< RGB
    std::vector<std::uint8_t> transparency;  ///< tRNS data, of a length valid for the colour type
    std::optional<RgbSpace> coded_space;     ///< from cICP
    bool is_srgb = false;                    ///< says the sRGB chunk
    double gamma = 0;                        ///< exponent that the samples were encoded with; 0 = unknown
    std::optional<RgbSpace> chromaticities;  ///< from cHRM
    std::vector<std::uint8_t> icc_profile;   ///< matches the colour type: grey or RGB; empty = none
    double dots_per_inch_x = 0;
    double dots_per_inch_y = 0;
    ImageMetadata metadata;
    PngChunk first_data;  ///< the first IDAT
};

/// Reads from the signature to the first IDAT, skipping broken ancillary chunks. False for a file that isn't
/// PNG, is truncated or contradicts itself.
[[nodiscard]] bool ReadPngInfo(PngChunkReader& reader, PngInfo& info);

/// Reads from position, after the last IDAT, to IEND: text chunks may follow the pixels. False if IEND is
/// missing.
[[nodiscard]] bool ReadPngTail(PngChunkReader& reader, std::uint64_t position, PngInfo& info);
