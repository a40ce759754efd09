// The samples of a JPEG 2000 component as bytes, one for each pixel of the picture.
// Room: platform/image/codecs/j2k.
#pragma once

#include <openjpeg.h>

#include <cstdint>
#include <vector>

/// The grid of the picture's pixels: every step_x-th column of the reference grid and every step_y-th row.
struct PixelGrid {
    std::uint32_t step_x, step_y;
    std::uint32_t first_x, first_y;  ///< in pixels
    std::uint32_t width, height;
};

/// The grid of an image's area at these steps, which are at least 1.
PixelGrid PixelGridOf(const opj_image_t& image, std::uint32_t step_x, std::uint32_t step_y);

/// A component is lent for the life of the object and has samples, steps of at least 1 and a precision of 1
/// to 38 bits.
class SampleRows
{
public:
    SampleRows(const opj_image_comp_t& component, const PixelGrid& grid);

    /// One byte for each pixel of row y into out, stride apart: the sample at or before the pixel, scaled
    /// from its precision by rounding; signed samples count from the middle.
    void Read(std::uint32_t y, std::uint8_t* out, std::size_t stride) const;

private:
    std::uint8_t Scaled(std::uint64_t value) const;
    std::uint8_t ByteAt(std::int64_t sample) const;

    const opj_image_comp_t* component_;
    PixelGrid grid_;
    bool direct_ = true;  ///< each sample is a pixel, and of 8 bits
    std::uint64_t max_;
    std::int64_t offset_;
    std::vector<std::uint32_t> columns_;
    std::vector<std::uint8_t> scaled_;  ///< by value, where that is quicker than a division
};
