// The pixel layout of a TIFF page, validated against the file before anything is allocated.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <optional>

class InputFile;
struct TiffHeader;

/// Colour models.
enum class TiffColour { kGrey, kRgb, kPalette, kCmyk, kYCbCr, kLab, kIccLab };

/// How an extra sample is used as alpha.
enum class TiffAlpha { kNone, kAssociated, kUnassociated };

struct TiffLayout {
    std::uint32_t width = 0;   ///< pixels
    std::uint32_t height = 0;  ///< pixels
    std::uint16_t bits = 1;    ///< per sample: 1 to 16, 24, 32 or 64
    std::uint16_t format = SAMPLEFORMAT_UINT;
    std::uint16_t samples = 1;  ///< per pixel in the file, including unused ones
    std::uint16_t compression = COMPRESSION_NONE;
    TiffColour colour = TiffColour::kGrey;
    bool min_is_white = false;
    TiffAlpha alpha = TiffAlpha::kNone;
    std::uint16_t alpha_sample = 0;  ///< index of the alpha sample
    bool separate = false;           ///< planar: each sample has its own strips or tiles
    bool tiled = false;
    std::uint32_t chunk_width = 0;  ///< size in pixels of a tile or strip (as wide as the page)
    std::uint32_t chunk_height = 0;
    std::uint16_t subsampling_x = 1;  ///< of YCbCr not upsampled by its codec: pixels per Cb and Cr
    std::uint16_t subsampling_y = 1;
    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    double lowest =
        0;  ///< for floats, signed integers and those over 16 bits: the values that become 0 and 255
    double highest = 1;
    bool range_from_data = false;  ///< signed, and the tags give no range: these two are the type's

    /// Colour samples per pixel: 1, 3 or 4.
    std::uint32_t ColourCount() const;
    /// Samples per pixel that are read: the colours and alpha.
    std::uint32_t Used() const { return ColourCount() + (alpha == TiffAlpha::kNone ? 0u : 1u); }
    /// True for a colour or alpha sample, false for one to skip.
    bool IsUsed(std::uint32_t sample) const
    {
        return sample < ColourCount() || (alpha != TiffAlpha::kNone && sample == alpha_sample);
    }
    bool IsSubsampled() const { return subsampling_x * subsampling_y > 1; }
};

/// False if a directory's sizes exceed the limits or its chunks aren't in the file. Reads no more than the
/// directory. Check this before libtiff reads the directory, since libtiff allocates by what it finds there.
bool IsPlausibleDirectory(InputFile& file, const TiffHeader& header, std::uint64_t directory);

/// Reads the layout of tiff's current page and sets up codecs that can output 8-bit RGB to do so. Nothing for
/// an unsupported layout, or if its chunks are too small for the pixels.
std::optional<TiffLayout> ReadLayout(TIFF* tiff, InputFile& file);
