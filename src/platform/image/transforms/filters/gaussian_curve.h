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
    /// For 0 < deviation <= kGreatestCurve.
    explicit GaussianCurve(double deviation);

    /// How many values on each side take part.
    std::size_t Reach() const { return reach_; }
    /// The means of count columns of values. rows are 2 Reach() + 1 rows, the middle one in their middle.
    void Down(const std::uint8_t* const* rows, std::size_t count, std::int16_t* means) const;
    /// The same of values in 1/64 level, 0 to 255 levels.
    void Down(const std::int16_t* const* rows, std::size_t count, std::int16_t* means) const;
    /// The means along a row of count values, step of them to a pixel; reach() pixels more can be read on
    /// each side of it.
    void Along(const std::int16_t* row, std::size_t count, std::size_t step, std::int16_t* means) const;

private:
    std::size_t reach_;
    std::vector<std::int16_t> weights_;  // of a value and of pairs further and further out, in 1/32768
};

/// Repeats the first and the last pixel of a row of count values reach times on its left and right.
void RepeatEnds(std::int16_t* row, std::size_t count, std::size_t step, std::size_t reach);

}  // namespace transforms
