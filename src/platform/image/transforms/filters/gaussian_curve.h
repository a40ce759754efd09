// Means under a sampled Gaussian, one row of values at a time, in whole numbers.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace transforms
{

/// Values between levels: 64 to a level.
constexpr std::int16_t kSteps = 64;
/// The greatest deviation that a GaussianCurve may have: its sums of rounded products stay exact enough for a
/// plain row to stay plain.
constexpr double kGreatestCurve = 6;

/// The curve exp(-x^2 / (2 s^2)) at whole x up to ceil(3 s), its sum brought to 1. Throws std::bad_alloc.
class GaussianCurve
{
public:
    /// For 0 < dDeviation <= kGreatestCurve.
    explicit GaussianCurve(double dDeviation);

    /// How many values on each side take part.
    std::size_t nReach() const { return m_nReach; }
    /// The means of nCount columns of values. pRows are 2 nReach() + 1 rows, the middle one in their middle.
    void Down(const std::uint8_t* const* pRows, std::size_t nCount, std::int16_t* pMeans) const;
    /// The same of values in 1/64 level, 0 to 255 levels.
    void Down(const std::int16_t* const* pRows, std::size_t nCount, std::int16_t* pMeans) const;
    /// The means along a row of nCount values, nStep of them to a pixel; nReach() pixels more can be read on
    /// each side of it.
    void Along(const std::int16_t* pRow, std::size_t nCount, std::size_t nStep, std::int16_t* pMeans) const;

private:
    std::size_t m_nReach;
    std::vector<std::int16_t> m_aWeights;  // of a value and of pairs further and further out, in 1/32768
};

/// Repeats the first and the last pixel of a row of nCount values nReach times on its left and right.
void RepeatEnds(std::int16_t* pRow, std::size_t nCount, std::size_t nStep, std::size_t nReach);

}  // namespace transforms
