// Makes pictures for the tests of the operations.
#include "tests/platform/image/support/kernel_pictures.h"

#include <algorithm>
#include <limits>

static ImageBuffer aEmpty(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels)
{
    ImageBuffer aImage;
    aImage.lWidth = lWidth;
    aImage.lHeight = lHeight;
    aImage.lChannels = lChannels;
    aImage.aBytes.resize(static_cast<std::size_t>(lWidth) * static_cast<std::size_t>(lHeight) *
                         static_cast<std::size_t>(lChannels));
    return aImage;
}

ImageBuffer aRandomPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                           std::uint32_t nStart)
{
    ImageBuffer aImage = aEmpty(lWidth, lHeight, lChannels);
    std::uint32_t nState = nStart * 2654435761U + 12345;
    for (auto& nByte : aImage.aBytes) {
        nState = nState * 1664525U + 1013904223U;
        nByte = static_cast<std::uint8_t>(nState >> 24);
    }
    for (std::size_t i = 3; lChannels == 4 && i < aImage.aBytes.size(); i += 4)
        aImage.aBytes[i] = std::max<std::uint8_t>(aImage.aBytes[i], 1);
    return aImage;
}

ImageBuffer aRandomOpaque(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                          std::uint32_t nStart)
{
    ImageBuffer aImage = aRandomPicture(lWidth, lHeight, lChannels, nStart);
    for (std::size_t i = 3; lChannels == 4 && i < aImage.aBytes.size(); i += 4)
        aImage.aBytes[i] = 255;
    return aImage;
}

ImageBuffer aPlain(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels, std::uint8_t nValue)
{
    ImageBuffer aImage = aEmpty(lWidth, lHeight, lChannels);
    std::fill(aImage.aBytes.begin(), aImage.aBytes.end(), nValue);
    return aImage;
}

ImageBuffer aGreyOf(std::int32_t lWidth, std::int32_t lHeight, std::initializer_list<int> aLevels)
{
    ImageBuffer aImage = aPlain(lWidth, lHeight, 1, 0);
    std::transform(aLevels.begin(), aLevels.end(), aImage.aBytes.begin(),
                   [](int n) { return static_cast<std::uint8_t>(n); });
    return aImage;
}

ImageBuffer aPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                     std::initializer_list<std::uint8_t> aBytes)
{
    ImageBuffer aImage;
    aImage.lWidth = lWidth;
    aImage.lHeight = lHeight;
    aImage.lChannels = lChannels;
    aImage.aBytes = aBytes;
    return aImage;
}

ImageBuffer aWidened(const ImageBuffer& aGrey)
{
    ImageBuffer aWide = aPicture(aGrey.lWidth, aGrey.lHeight, 3, {});
    for (const std::uint8_t n : aGrey.aBytes)
        aWide.aBytes.insert(aWide.aBytes.end(), {n, n, n});
    return aWide;
}

int nValueAt(const ImageBuffer& aImage, std::int32_t x, std::int32_t y, std::int32_t lChannel)
{
    x = std::clamp(x, 0, aImage.lWidth - 1);
    y = std::clamp(y, 0, aImage.lHeight - 1);
    return aImage.aBytes[static_cast<std::size_t>(
        (static_cast<std::int64_t>(y) * aImage.lWidth + x) * aImage.lChannels + lChannel)];
}

std::vector<int> aBytesOf(const ImageBuffer& aImage)
{
    return {aImage.aBytes.begin(), aImage.aBytes.end()};
}

bool bEqual(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    return aOne.lWidth == aOther.lWidth && aOne.lHeight == aOther.lHeight &&
           aOne.lChannels == aOther.lChannels && aOne.aBytes == aOther.aBytes;
}

bool bSameAlpha(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    for (std::size_t i = 3; aOne.lChannels == 4 && i < aOne.aBytes.size(); i += 4)
        if (aOne.aBytes[i] != aOther.aBytes[i])
            return false;
    return aOne.lWidth == aOther.lWidth && aOne.lHeight == aOther.lHeight &&
           aOne.lChannels == aOther.lChannels && aOne.aBytes.size() == aOther.aBytes.size();
}

bool bSound(const ImageBuffer& aImage)
{
    return aImage.lWidth > 0 && aImage.lHeight > 0 &&
           aImage.aBytes.size() == static_cast<std::size_t>(aImage.lWidth) *
                                       static_cast<std::size_t>(aImage.lHeight) *
                                       static_cast<std::size_t>(aImage.lChannels);
}

std::vector<PictureShape> aShapes()
{
    std::vector<PictureShape> aResult;
    for (const std::int32_t lChannels : kChannelCounts)
        for (const auto& [lWidth, lHeight] : kSizes)
            aResult.push_back({lWidth, lHeight, lChannels});
    return aResult;
}

std::vector<double> aHostileDoubles()
{
    using Limits = std::numeric_limits<double>;
    return {Limits::quiet_NaN(),
            Limits::infinity(),
            -Limits::infinity(),
            Limits::max(),
            Limits::lowest(),
            Limits::denorm_min(),
            1e9,
            -1e9,
            0.0,
            -0.0,
            1e-9,
            1e-300,
            1e300,
            -1e300,
            89.999999,
            90.0,
            100.0,
            359.999,
            32767.0};
}

std::vector<std::int32_t> aHostileLongs()
{
    return {INT32_MIN, INT32_MAX, INT32_MIN + 1, -32768, 32767,  65536, -256, -1, 0, 1,
            2,         3,         255,           256,    1000000};
}
