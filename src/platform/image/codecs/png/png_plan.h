// How a picture is written as PNG: its layout, and whether its rows are filtered.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/png/png_deflate.h"
#include "src/platform/image/codecs/png/png_layout.h"

struct PngPlan {
    PngLayout layout;
    bool filtered = true;  ///< False: all rows as they are
    PngContent content = PngContent::kPhotograph;
};

/// The plan that makes a sample of the picture's rows smallest. A picture that can only be a photograph has
/// one plan, and no sample is taken.
PngPlan PlanFor(const ImageBuffer& image);

/// Makes the rows that are deflated, the filter's byte first, one below the other.
class PngRowSource
{
public:
    /// image and plan outlive it.
    PngRowSource(const ImageBuffer& image, PngPlan& plan);

    std::size_t FilteredBytes() const { return bytes_ + 1; }
    /// Row y to out; up to kPngRowSlack bytes behind it may be written too. y follows the y before, or
    /// begins anew: then the row is filtered as if it were the first.
    void Make(std::size_t y, std::uint8_t* out);

private:
    const ImageBuffer& image_;
    PngPlan& plan_;
    std::size_t bytes_;
    // Two rows that take turns, each with zeros in front and room behind.
    PixelBytes here_;
    PixelBytes above_;
    std::size_t next_ = 0;
};
