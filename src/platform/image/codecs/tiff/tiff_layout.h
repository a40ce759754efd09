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
    std::uint32_t nWidth = 0;   ///< pixels
    std::uint32_t nHeight = 0;  ///< pixels
    std::uint16_t nBits = 1;    ///< bits of a sample: 1 to 16, 24, 32 or 64
    std::uint16_t nFormat = SAMPLEFORMAT_UINT;
    std::uint16_t nSamples = 1;  ///< samples of a pixel in the file, those that nobody needs included
    std::uint16_t nCompression = COMPRESSION_NONE;
    TiffColour enColour = TiffColour::kGrey;
    bool bMinIsWhite = false;
    TiffAlpha enAlpha = TiffAlpha::kNone;
    std::uint16_t nAlphaSample = 0;  ///< which of the samples it is
    bool bSeparate = false;          ///< each sample in strips or tiles of its own
    bool bTiled = false;
    std::uint32_t nChunkWidth = 0;  ///< pixels of a tile, or of a strip (then the page's)
    std::uint32_t nChunkHeight = 0;
    std::uint16_t nSubsamplingX = 1;  ///< YCbCr that isn't expanded by its decoder: pixels to a Cb and Cr
    std::uint16_t nSubsamplingY = 1;
    std::uint16_t nOrientation = ORIENTATION_TOPLEFT;
    double dLowest = 0;  ///< of float and of wide whole samples: what becomes 0 and what 255
    double dHighest = 1;

    /// Samples that mean a colour: 1, 3 or 4.
    std::uint32_t nColours() const;
    /// Samples that are read: the colours, and alpha.
    std::uint32_t nUsed() const { return nColours() + (enAlpha == TiffAlpha::kNone ? 0u : 1u); }
    bool bSubsampled() const { return nSubsamplingX * nSubsamplingY > 1; }
};

/// False for a directory whose sizes are over the limits or whose chunks aren't in the file. It costs no more
/// than the directory itself, and is asked before libtiff reads the directory, since libtiff allocates by
/// what it finds there.
bool bDirectoryPlausible(InputFile& objFile, const TiffHeader& objHeader, std::uint64_t nDirectory);

/// The layout of the page that pTiff is at. Decoders that can give 8-bit RGB are told to. Nothing for a
/// layout that isn't known, and for one that the bytes of its chunks can't make.
std::optional<TiffLayout> objReadLayout(TIFF* pTiff, InputFile& objFile);
