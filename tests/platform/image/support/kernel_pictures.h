// Pictures for the tests of the operations: random ones, small ones by hand, and looks at single pixels.
// Room: tests.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

#include "src/platform/image_buffer.h"

/// The channel counts, and sizes that find errors at borders: 1x1, single rows and columns, odd ones.
inline constexpr int kChannelCounts[] = {1, 3, 4};
inline constexpr std::pair<int, int> kSizes[] = {{1, 1}, {1, 9}, {11, 1},  {2, 2},
                                                 {3, 3}, {7, 5}, {33, 19}, {67, 40}};
/// All of them together.
struct PictureShape {
    std::int32_t width, height, channels;
};
std::vector<PictureShape> Shapes();

/// The picture with these bytes, row after row.
ImageBuffer TestPicture(std::int32_t width, std::int32_t height, std::int32_t channels,
                        std::initializer_list<std::uint8_t> bytes);
/// A picture of random bytes, the same for the same arguments. No pixel is wholly transparent, so that each
/// one's colour counts.
ImageBuffer RandomPicture(std::int32_t width, std::int32_t height, std::int32_t channels,
                          std::uint32_t start = 1);
/// Random, but without transparency.
ImageBuffer RandomOpaque(std::int32_t width, std::int32_t height, std::int32_t channels,
                         std::uint32_t start = 1);
/// Every byte the same.
ImageBuffer Plain(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint8_t value);
/// A grey picture, row after row.
ImageBuffer GreyOf(std::int32_t width, std::int32_t height, std::initializer_list<int> levels);
/// The grey picture as one of 3 equal channels.
ImageBuffer Widened(const ImageBuffer& grey);

/// One channel of one pixel; beyond the border the nearest pixel's.
int ValueAt(const ImageBuffer& image, std::int32_t x, std::int32_t y, std::int32_t channel = 0);
std::vector<int> BytesOf(const ImageBuffer& image);
/// Sizes, channels and bytes agree.
bool Equal(const ImageBuffer& one, const ImageBuffer& other);
/// Sizes and channels agree, and alpha where there is one.
bool SameAlpha(const ImageBuffer& one, const ImageBuffer& other);
/// The bytes are as many as the sizes say.
bool Sound(const ImageBuffer& image);

/// Numbers that no dialog offers: NaN, infinities, huge ones.
std::vector<double> HostileDoubles();
std::vector<std::int32_t> HostileLongs();
