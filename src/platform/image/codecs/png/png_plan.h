// Plans how a picture is written as PNG: its layout, and whether rows are filtered.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/png/png_deflate.h"
#include "src/platform/image/codecs/png/png_layout.h"

struct PngPlan {
    PngLayout layout;
    bool filtered = true;  ///< false: filter type None for all rows
    PngContent content = PngContent::kPhotograph;
};

/// The plan that makes a sample of the picture's rows smallest. Clear photographs have only one plan and
/// aren't sampled.
PngPlan PlanFor(const ImageBuffer& image);

/// Produces the filtered rows to deflate, each with its filter byte first.
class PngRowSource
{
public:
    /// image and plan must outlive it.
    PngRowSource(const ImageBuffer& image, PngPlan& plan);

    std::size_t FilteredBytes() const { return bytes_ + 1; }
    /// Writes row y to out, and up to kPngRowSlack bytes past it. Rows are made in order; any other y starts
    /// over and is filtered like a first row.
    void Make(std::size_t y, std::uint8_t* out);

private:
    const ImageBuffer& image_;
    PngPlan& plan_;
    std::size_t bytes_;
    // Two rows used in turn, with zeros in front and slack behind.
    PixelBytes here_;
    PixelBytes above_;
    std::size_t next_ = 0;
};
