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
    std::int32_t lWidth, lHeight, lChannels;
};
std::vector<PictureShape> aShapes();

/// The picture with these bytes, row after row.
ImageBuffer aPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                     std::initializer_list<std::uint8_t> aBytes);
/// A picture of random bytes, the same for the same arguments. No pixel is wholly transparent, so that each
/// one's colour counts.
ImageBuffer aRandomPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                           std::uint32_t nStart = 1);
/// Random, but without transparency.
ImageBuffer aRandomOpaque(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                          std::uint32_t nStart = 1);
/// Every byte the same.
ImageBuffer aPlain(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels, std::uint8_t nValue);
/// A grey picture, row after row.
ImageBuffer aGreyOf(std::int32_t lWidth, std::int32_t lHeight, std::initializer_list<int> aLevels);
/// The grey picture as one of 3 equal channels.
ImageBuffer aWidened(const ImageBuffer& aGrey);

/// One channel of one pixel; beyond the border the nearest pixel's.
int nValueAt(const ImageBuffer& aImage, std::int32_t x, std::int32_t y, std::int32_t lChannel = 0);
std::vector<int> aBytesOf(const ImageBuffer& aImage);
/// Sizes, channels and bytes agree.
bool bEqual(const ImageBuffer& aOne, const ImageBuffer& aOther);
/// Sizes and channels agree, and alpha where there is one.
bool bSameAlpha(const ImageBuffer& aOne, const ImageBuffer& aOther);
/// The bytes are as many as the sizes say.
bool bSound(const ImageBuffer& aImage);

/// Numbers that no dialog offers: NaN, infinities, huge ones.
std::vector<double> aHostileDoubles();
std::vector<std::int32_t> aHostileLongs();
