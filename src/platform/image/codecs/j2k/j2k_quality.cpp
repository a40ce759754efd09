// Chooses the PSNR of a JPEG 2000 picture for a quality setting.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "src/platform/image/codecs/j2k/j2k.h"

static constexpr std::size_t kBlock = 8;          // pixels per side
static constexpr std::size_t kBlockSpacing = 16;  // pixels: the blocks are a quarter of the picture
static constexpr double kStepAt50 = 24;           // levels
static constexpr double kHalfRoot = 0.70710678118654752;

using BlockOfLevels = std::array<std::array<double, kBlock>, kBlock>;

// The quantisation step in levels for a quality, scaled the way the IJG library scales its tables.
static double QuantisationStep(std::int32_t quality)
{
    const double clamped = std::clamp(quality, 1, 99);
    return kStepAt50 * (clamped < 50 ? 50 / clamped : 2 - clamped / 50);
}

static double Luma(const std::uint8_t* pixel, std::int32_t channels)
{
    return channels == 1 ? pixel[0] : 0.114 * pixel[0] + 0.587 * pixel[1] + 0.299 * pixel[2];
}

// Orthonormal Haar transform, so a squared error in the coefficients is the same squared error in the pixels.
static void Transform(BlockOfLevels& block)
{
    for (std::size_t n = kBlock; n > 1; n /= 2) {
        BlockOfLevels half{};
        for (std::size_t y = 0; y < n; ++y)
            for (std::size_t x = 0; x < n / 2; ++x) {
                half[y][x] = (block[y][2 * x] + block[y][2 * x + 1]) * kHalfRoot;
                half[y][x + n / 2] = (block[y][2 * x] - block[y][2 * x + 1]) * kHalfRoot;
            }
        for (std::size_t y = 0; y < n / 2; ++y)
            for (std::size_t x = 0; x < n; ++x) {
                block[y][x] = (half[2 * y][x] + half[2 * y + 1][x]) * kHalfRoot;
                block[y + n / 2][x] = (half[2 * y][x] - half[2 * y + 1][x]) * kHalfRoot;
            }
    }
}

double TargetPsnr(const ImageBuffer& image, std::int32_t quality)
{
    // A quantised coefficient has a mean squared error of step^2 / 12, or its own square if that is smaller.
    const double max_error = QuantisationStep(quality) * QuantisationStep(quality) / 12;
    const auto width = static_cast<std::size_t>(image.width), height = static_cast<std::size_t>(image.height);
    double sum = 0, count = 0;
    for (std::size_t y = 0; y < height; y += kBlockSpacing)
        for (std::size_t x = 0; x < width; x += kBlockSpacing) {
            BlockOfLevels block;
            for (std::size_t i = 0; i < kBlock; ++i)
                for (std::size_t j = 0; j < kBlock; ++j) {
                    const std::size_t pixel =
                        std::min(y + i, height - 1) * width + std::min(x + j, width - 1);
                    block[i][j] =
                        Luma(&image.bytes[pixel * static_cast<std::size_t>(image.channels)], image.channels);
                }
            Transform(block);
            for (const auto& row : block)
                for (const double coefficient : row)
                    sum += std::min(coefficient * coefficient, max_error);
            count += kBlock * kBlock;
        }
    constexpr double kMinError = 0.01;  // 68 dB: invisible with 8 bits
    return 10 * std::log10(255 * 255 / std::max(sum / count, kMinError));
}
