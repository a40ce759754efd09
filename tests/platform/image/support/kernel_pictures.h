// Pictures for the tests of the operations: random ones, small ones by hand, and looks at single pixels.
// Room: tests.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "src/platform/image_buffer.h"

/// A picture of random bytes, the same for the same arguments.
ImageBuffer aRandomPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                           std::uint32_t nStart = 1);
/// Random, but without transparency.
ImageBuffer aRandomOpaque(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                          std::uint32_t nStart = 1);
/// Every byte the same.
ImageBuffer aPlain(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels, std::uint8_t nValue);
/// A grey picture, row after row.
ImageBuffer aGreyOf(std::int32_t lWidth, std::int32_t lHeight, std::initializer_list<int> aLevels);

/// One channel of one pixel; beyond the border the nearest pixel's.
int nValueAt(const ImageBuffer& aImage, std::int32_t x, std::int32_t y, std::int32_t lChannel = 0);
std::vector<int> aBytesOf(const ImageBuffer& aImage);
/// Sizes, channels and bytes agree.
bool bEqual(const ImageBuffer& aOne, const ImageBuffer& aOther);
/// The bytes are as many as the sizes say.
bool bSound(const ImageBuffer& aImage);

/// Sizes and channel counts that find errors at borders: 1x1, single rows and columns, odd sizes.
struct PictureShape {
    std::int32_t lWidth, lHeight, lChannels;
};
std::vector<PictureShape> aShapes();
/// Numbers that no dialog offers: NaN, infinities, huge ones.
std::vector<double> aHostileDoubles();
std::vector<std::int32_t> aHostileLongs();
