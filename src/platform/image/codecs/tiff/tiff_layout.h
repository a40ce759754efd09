// How a page of a TIFF file stores its pixels, checked against the file before anything is allocated for
// them.
// Room: platform/image/codecs/tiff.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <optional>

class InputFile;
struct TiffHeader;

/// What the samples of a pixel mean.
enum class TiffColour { kGrey, kRgb, kPalette, kCmyk, kYCbCr, kLab, kIccLab };

/// What a sample beside the colours does.
enum class TiffAlpha { kNone, kAssociated, kUnassociated };

struct TiffLayout {
    std::uint32_t width = 0;   ///< pixels
    std::uint32_t height = 0;  ///< pixels
    std::uint16_t bits = 1;    ///< bits of a sample: 1 to 16, 24, 32 or 64
    std::uint16_t format = SAMPLEFORMAT_UINT;
    std::uint16_t samples = 1;  ///< samples of a pixel in the file, those that nobody needs included
    std::uint16_t compression = COMPRESSION_NONE;
    TiffColour colour = TiffColour::kGrey;
    bool min_is_white = false;
    TiffAlpha alpha = TiffAlpha::kNone;
    std::uint16_t alpha_sample = 0;  ///< which of the samples it is
    bool separate = false;           ///< each sample in strips or tiles of its own
    bool tiled = false;
    std::uint32_t chunk_width = 0;  ///< pixels of a tile, or of a strip (then the page's)
    std::uint32_t chunk_height = 0;
    std::uint16_t subsampling_x = 1;  ///< YCbCr that isn't expanded by its decoder: pixels to a Cb and Cr
    std::uint16_t subsampling_y = 1;
    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    double lowest = 0;  ///< of float and of wide whole samples: what becomes 0 and what 255
    double highest = 1;

    /// Samples that mean a colour: 1, 3 or 4.
    std::uint32_t ColourCount() const;
    /// Samples that are read: the colours, and alpha.
    std::uint32_t Used() const { return ColourCount() + (alpha == TiffAlpha::kNone ? 0u : 1u); }
    bool IsSubsampled() const { return subsampling_x * subsampling_y > 1; }
};

/// False for a directory whose sizes are over the limits or whose chunks aren't in the file. It costs no more
/// than the directory itself, and is asked before libtiff reads the directory, since libtiff allocates by
/// what it finds there.
bool IsPlausibleDirectory(InputFile& file, const TiffHeader& header, std::uint64_t directory);

/// The layout of the page that tiff is at. Decoders that can give 8-bit RGB are told to. Nothing for a
/// layout that isn't known, and for one that the bytes of its chunks can't make.
std::optional<TiffLayout> ReadLayout(TIFF* tiff, InputFile& file);
