// The samples of a JPEG 2000 component as bytes, one for each pixel of the picture.
// Room: platform/image/codecs/j2k.
#pragma once

#include <openjpeg.h>

#include <cstdint>
#include <vector>

/// The grid of the picture's pixels: every nStepX-th column of the reference grid and every nStepY-th row.
struct PixelGrid {
    std::uint32_t nStepX, nStepY;
    std::uint32_t nFirstX, nFirstY;  ///< in pixels
    std::uint32_t nWidth, nHeight;
};

/// The grid of an image's area at these steps, which are at least 1.
PixelGrid objPixelGrid(const opj_image_t& objImage, std::uint32_t nStepX, std::uint32_t nStepY);

/// A component is lent for the life of the object and has samples, steps of at least 1 and a precision of 1
/// to 38 bits.
class SampleRows
{
public:
    SampleRows(const opj_image_comp_t& objComponent, const PixelGrid& objGrid);

    /// One byte for each pixel of row y into pOut, nStride apart: the sample at or before the pixel, scaled
    /// from its precision by rounding; signed samples count from the middle.
    void Read(std::uint32_t y, std::uint8_t* pOut, std::size_t nStride) const;

private:
    std::uint8_t nScaled(std::uint64_t nValue) const;
    std::uint8_t nByte(std::int64_t nSample) const;

    const opj_image_comp_t* m_pComponent;
    PixelGrid m_objGrid;
    bool m_bDirect = true;  ///< each sample is a pixel, and of 8 bits
    std::uint64_t m_nMost;
    std::int64_t m_nOffset;
    std::vector<std::uint32_t> m_aColumns;
    std::vector<std::uint8_t> m_aScaled;  ///< by value, where that is quicker than a division
};
