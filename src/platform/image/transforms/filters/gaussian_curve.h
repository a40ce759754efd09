// Convolution with a sampled Gaussian, one row at a time, in fixed point.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace transforms
{

/// Fixed-point units per level.
constexpr std::int16_t kSteps = 64;
/// The largest deviation of a GaussianCurve; up to here rounding errors are small enough that a flat row
/// stays flat.
constexpr double kGreatestCurve = 6;

/// exp(-x^2 / (2 s^2)) at whole x up to ceil(3 s), normalised to a sum of 1. Throws std::bad_alloc.
class GaussianCurve
{
public:
    /// For 0 < deviation <= kGreatestCurve.
    explicit GaussianCurve(double deviation);

    /// The kernel's radius.
    std::size_t Reach() const { return reach_; }
    /// Convolves count columns vertically. There are 2 Reach() + 1 rows, with the target row in the middle.
    void Down(const std::uint8_t* const* rows, std::size_t count, std::int16_t* means) const;
    /// The same for values in 1/64 level.
    void Down(const std::int16_t* const* rows, std::size_t count, std::int16_t* means) const;
    /// Convolves a row of count values horizontally, with step values per pixel; Reach() more pixels must be
    /// readable on each side.
    void Along(const std::int16_t* row, std::size_t count, std::size_t step, std::int16_t* means) const;

private:
    std::size_t reach_;
    std::vector<std::int16_t> weights_;  // of the middle value and of pairs at growing distance, in 1/32768
};

/// Pads a row of count values with reach copies of its first and last pixel.
void RepeatEnds(std::int16_t* row, std::size_t count, std::size_t step, std::size_t reach);

}  // namespace transforms
