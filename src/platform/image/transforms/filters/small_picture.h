// A reduced copy of a picture, for cheap large blurs.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// The means of step by step blocks of pixels, from the top left corner, in units of 1/64 level. One block of
/// replicated border pixels is added on each side. Throws std::bad_alloc if memory runs out.
class SmallPicture
{
public:
    /// step is 1 to 256.
    SmallPicture(const ImageBuffer& image, std::int32_t step);

    /// Applies a Gaussian; deviation is in squares, at most kGreatestCurve.
    void Blur(double deviation);
    /// Enlarges bilinearly into target, which has the source's size and channels.
    void Enlarge(ImageBuffer& target) const;

private:
    // The square to the left of or above a pixel's centre, and the weight of the next one.
    struct Tap {
        std::int32_t cell;
        float weight;
    };
    std::vector<Tap> Taps(std::int32_t side) const;
    void ReduceRows(const ImageBuffer& image, std::int32_t y, std::vector<std::uint32_t>& sums,
                    std::int16_t* means) const;
    template <int kChannels>
    static void EnlargeRow(const float* mixed, const std::vector<Tap>& across, std::uint8_t* target);
    std::size_t RowSize() const { return columns_ * channels_; }

    std::int32_t step_;
    std::size_t channels_, columns_, rows_;
    std::vector<std::int16_t> means_;  // row by row
};

}  // namespace transforms
