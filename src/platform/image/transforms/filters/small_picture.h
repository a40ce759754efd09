// A picture of the means of another one's squares, which blurs it cheaply.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// The means over squares of lStep by lStep pixels, from the top left corner on, in 1/64 level. One square
/// beyond the border on each side belongs to it: there stand the border's pixels alone, which go on beyond
/// the border, and so do they in all squares further out. Whatever fails throws std::bad_alloc.
class SmallPicture
{
public:
    /// lStep is 1 to 256.
    SmallPicture(const ImageBuffer& aImage, std::int32_t lStep);

    /// Blurs it by a Gaussian; the deviation is in squares and at most kGreatestCurve.
    void Blur(double dDeviation);
    /// Fills aTarget, of the source's size and channels, bilinearly between the squares' middles.
    void Enlarge(ImageBuffer& aTarget) const;

private:
    // The square left of or above a pixel's middle, and how much the next one weighs.
    struct Tap {
        std::int32_t lCell;
        float dWeight;
    };
    std::vector<Tap> aTaps(std::int32_t lSide) const;
    void ReduceRows(const ImageBuffer& aImage, std::int32_t y, std::vector<std::uint32_t>& aSums,
                    std::int16_t* pMeans) const;
    template <int nChannels>
    static void EnlargeRow(const float* aMixed, const std::vector<Tap>& aAcross, std::uint8_t* pTarget);
    std::size_t nRow() const { return m_nColumns * m_nChannels; }

    std::int32_t m_lStep;
    std::size_t m_nChannels, m_nColumns, m_nRows;
    std::vector<std::int16_t> m_aMeans;  // row by row
};

}  // namespace transforms
