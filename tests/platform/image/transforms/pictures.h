// What the tests of the image operations share: small pictures, random ones, and hostile numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <utility>

#include "src/platform/image_buffer.h"

inline constexpr int kChannelCounts[] = {1, 3, 4};
inline constexpr std::pair<int, int> kSizes[] = {{1, 1}, {1, 7}, {9, 1}, {2, 2}, {3, 3}, {33, 17}, {67, 40}};

inline constexpr double kHostileDoubles[] = {0.0,
                                             -0.0,
                                             1e-300,
                                             -1e9,
                                             1e9,
                                             1e300,
                                             -1e300,
                                             32767.0,
                                             std::numeric_limits<double>::infinity(),
                                             -std::numeric_limits<double>::infinity(),
                                             std::numeric_limits<double>::quiet_NaN()};
inline constexpr std::int32_t kHostileLongs[] = {
    std::numeric_limits<std::int32_t>::min(), -32768, -256, -1, 0, 1, 255, 256, 32767,
    std::numeric_limits<std::int32_t>::max()};

inline ImageBuffer aPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                            std::initializer_list<std::uint8_t> aBytes)
{
    ImageBuffer aImage;
    aImage.lWidth = lWidth;
    aImage.lHeight = lHeight;
    aImage.lChannels = lChannels;
    aImage.aBytes = aBytes;
    return aImage;
}

/// Bytes without any order (xorshift), the same each time for the same seed.
inline ImageBuffer aRandom(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                           std::uint32_t nSeed = 1)
{
    ImageBuffer aImage = aPicture(lWidth, lHeight, lChannels, {});
    std::uint32_t nState = nSeed * 2654435761U + 1;
    const auto nBytes = static_cast<std::size_t>(lWidth) * static_cast<std::size_t>(lHeight) *
                        static_cast<std::size_t>(lChannels);
    for (std::size_t i = 0; i < nBytes; ++i) {
        nState ^= nState << 13;
        nState ^= nState >> 17;
        nState ^= nState << 5;
        aImage.aBytes.push_back(static_cast<std::uint8_t>(nState >> 11));
    }
    return aImage;
}

/// Channel c of the pixel; beyond the border that of the nearest one.
inline int nAt(const ImageBuffer& aImage, int x, int y, int c)
{
    x = x < 0 ? 0 : x >= aImage.lWidth ? aImage.lWidth - 1 : x;
    y = y < 0 ? 0 : y >= aImage.lHeight ? aImage.lHeight - 1 : y;
    return aImage.aBytes[static_cast<std::size_t>((y * aImage.lWidth + x) * aImage.lChannels + c)];
}

inline bool bSameSize(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    return aOne.lWidth == aOther.lWidth && aOne.lHeight == aOther.lHeight &&
           aOne.lChannels == aOther.lChannels && aOne.aBytes.size() == aOther.aBytes.size();
}

/// True when the pictures' alpha is the same; so it is for those without.
inline bool bSameAlpha(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    for (std::size_t i = 3; aOne.lChannels == 4 && i < aOne.aBytes.size(); i += 4)
        if (aOne.aBytes[i] != aOther.aBytes[i])
            return false;
    return bSameSize(aOne, aOther);
}

/// The grey picture as one of 3 equal channels.
inline ImageBuffer aWidened(const ImageBuffer& aGrey)
{
    ImageBuffer aWide = aPicture(aGrey.lWidth, aGrey.lHeight, 3, {});
    for (const std::uint8_t n : aGrey.aBytes)
        aWide.aBytes.insert(aWide.aBytes.end(), {n, n, n});
    return aWide;
}
