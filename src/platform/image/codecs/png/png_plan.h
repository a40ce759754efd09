// How a picture is written as PNG: its layout, and whether its rows are filtered.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/png/png_deflate.h"
#include "src/platform/image/codecs/png/png_layout.h"

struct PngPlan {
    PngLayout objLayout;
    bool bFilter = true;  ///< False: all rows as they are
    PngContent objContent = PngContent::Photograph;
};

/// The plan that makes a sample of the picture's rows smallest. A picture that can only be a photograph has
/// one plan, and no sample is taken.
PngPlan objPlanFor(const ImageBuffer& aImage);

/// Makes the rows that are deflated, the filter's byte first, one below the other.
class PngRowSource
{
public:
    /// aImage and objPlan outlive it.
    PngRowSource(const ImageBuffer& aImage, PngPlan& objPlan);

    std::size_t nFilteredBytes() const { return m_nBytes + 1; }
    /// Row y to pOut; up to kPngRowSlack bytes behind it may be written too. y follows the y before, or
    /// begins anew: then the row is filtered as if it were the first.
    void Make(std::size_t y, std::uint8_t* pOut);

private:
    const ImageBuffer& m_aImage;
    PngPlan& m_objPlan;
    std::size_t m_nBytes;
    // Two rows that take turns, each with zeros in front and room behind.
    PixelBytes m_aHere;
    PixelBytes m_aAbove;
    std::size_t m_nNext = 0;
};
