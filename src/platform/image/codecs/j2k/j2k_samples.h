// Reads a JPEG 2000 component as bytes, one per pixel of the picture.
// Room: platform/image/codecs/j2k.
#pragma once

#include <openjpeg.h>

#include <cstdint>
#include <vector>

/// The picture's pixel grid: every step_x-th column and every step_y-th row of the reference grid.
struct PixelGrid {
    std::uint32_t step_x, step_y;
    std::uint32_t first_x, first_y;  ///< in pixels
    std::uint32_t width, height;
};

/// The pixel grid that covers an image's area with these steps, which are at least 1.
PixelGrid PixelGridOf(const opj_image_t& image, std::uint32_t step_x, std::uint32_t step_y);

/// component must outlive this object and have samples, steps of at least 1 and a precision of 1 to 38 bits.
class SampleRows
{
public:
    SampleRows(const opj_image_comp_t& component, const PixelGrid& grid);

    /// Writes a byte for each pixel of row y to out, stride apart: the sample at or before the pixel, scaled
    /// to 8 bits and rounded. The zero of signed samples maps to the middle of the range.
    void Read(std::uint32_t y, std::uint8_t* out, std::size_t stride) const;

private:
    std::uint8_t Scaled(std::uint64_t value) const;
    std::uint8_t ByteAt(std::int64_t sample) const;

    const opj_image_comp_t* component_;
    PixelGrid grid_;
    bool direct_ = true;  ///< one 8-bit sample per pixel
    std::uint64_t max_;
    std::int64_t offset_;
    std::vector<std::uint32_t> columns_;
    std::vector<std::uint8_t> scaled_;  ///< LUT by sample value, where that is faster than dividing
};
