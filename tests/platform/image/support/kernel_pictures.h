// Pictures for tests of operations, and comparisons.
// Room: tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <type_traits>
#include <utility>
#include <vector>

#include "src/platform/image_transform.h"

/// Channel counts, and sizes that reveal border errors: 1x1, single rows and columns, odd ones.
inline constexpr int kChannelCounts[] = {1, 3, 4};
inline constexpr std::pair<int, int> kSizes[] = {{1, 1}, {1, 9}, {11, 1},  {2, 2},
                                                 {3, 3}, {7, 5}, {33, 19}, {67, 40}};
/// All combinations.
struct PictureShape {
    std::int32_t width, height, channels;
};
std::vector<PictureShape> Shapes();

/// A picture of the given bytes, row by row.
ImageBuffer TestPicture(std::int32_t width, std::int32_t height, std::int32_t channels,
                        std::initializer_list<std::uint8_t> bytes);
/// A picture of random bytes, reproducible for equal arguments. No pixel is fully transparent, so every
/// colour counts.
ImageBuffer RandomPicture(std::int32_t width, std::int32_t height, std::int32_t channels,
                          std::uint32_t start = 1);
/// Random and opaque.
ImageBuffer RandomOpaque(std::int32_t width, std::int32_t height, std::int32_t channels,
                         std::uint32_t start = 1);
/// Every byte is the same.
ImageBuffer Plain(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint8_t value);
/// A grey picture, row by row.
ImageBuffer GreyOf(std::int32_t width, std::int32_t height, std::initializer_list<int> levels);
/// The grey picture with 3 equal channels.
ImageBuffer Widened(const ImageBuffer& grey);

/// One channel of one pixel; coordinates are clamped to the border.
int ValueAt(const ImageBuffer& image, std::int32_t x, std::int32_t y, std::int32_t channel = 0);
std::vector<int> BytesOf(const ImageBuffer& image);
/// True if sizes, channels and bytes are equal.
bool Equal(const ImageBuffer& one, const ImageBuffer& other);
/// True if sizes and channels are equal, and alpha if present.
bool SameAlpha(const ImageBuffer& one, const ImageBuffer& other);
/// True if the number of bytes matches the size.
bool Sound(const ImageBuffer& image);

/// Expects that result, made of source, is what changed, made in place, is; and is empty unless it was
/// Changed.
void ExpectAgreement(const ImageBuffer& source, const ImageBuffer& changed, const ImageBuffer& result,
                     OperationResult outcome);

/// Numbers that no dialog offers: NaN, infinities, huge ones.
std::vector<double> HostileDoubles();
std::vector<std::int32_t> HostileLongs();

/// Calls a kernel in place, and again with the result in another picture, and expects both to agree and the
/// source to stay as it was. True unless the kernel fails.
template <typename... Parameters>
bool ApplyKernel(OperationResult (*kernel)(const ImageBuffer&, ImageBuffer&, Parameters...),
                 ImageBuffer& image, std::type_identity_t<Parameters>... arguments)
{
    const ImageBuffer source = image;
    ImageBuffer result;
    const OperationResult outcome = kernel(source, result, arguments...);
    EXPECT_EQ(kernel(image, image, arguments...), outcome);
    ExpectAgreement(source, image, result, outcome);
    return outcome != OperationResult::Failed;
}
