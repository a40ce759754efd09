// Makes pictures for the tests of the operations.
#include "tests/platform/image/support/kernel_pictures.h"

#include <algorithm>
#include <limits>

static ImageBuffer aEmpty(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels)
{
    ImageBuffer aImage;
    aImage.width = lWidth;
    aImage.height = lHeight;
    aImage.channels = lChannels;
    aImage.bytes.resize(static_cast<std::size_t>(lWidth) * static_cast<std::size_t>(lHeight) *
                        static_cast<std::size_t>(lChannels));
    return aImage;
}

ImageBuffer aRandomPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                           std::uint32_t nStart)
{
    ImageBuffer aImage = aEmpty(lWidth, lHeight, lChannels);
    std::uint32_t nState = nStart * 2654435761U + 12345;
    for (auto& nByte : aImage.bytes) {
        nState = nState * 1664525U + 1013904223U;
        nByte = static_cast<std::uint8_t>(nState >> 24);
    }
    for (std::size_t i = 3; lChannels == 4 && i < aImage.bytes.size(); i += 4)
        aImage.bytes[i] = std::max<std::uint8_t>(aImage.bytes[i], 1);
    return aImage;
}

ImageBuffer aRandomOpaque(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                          std::uint32_t nStart)
{
    ImageBuffer aImage = aRandomPicture(lWidth, lHeight, lChannels, nStart);
    for (std::size_t i = 3; lChannels == 4 && i < aImage.bytes.size(); i += 4)
        aImage.bytes[i] = 255;
    return aImage;
}

ImageBuffer aPlain(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels, std::uint8_t nValue)
{
    ImageBuffer aImage = aEmpty(lWidth, lHeight, lChannels);
    std::fill(aImage.bytes.begin(), aImage.bytes.end(), nValue);
    return aImage;
}

ImageBuffer aGreyOf(std::int32_t lWidth, std::int32_t lHeight, std::initializer_list<int> aLevels)
{
    ImageBuffer aImage = aPlain(lWidth, lHeight, 1, 0);
    std::transform(aLevels.begin(), aLevels.end(), aImage.bytes.begin(),
                   [](int n) { return static_cast<std::uint8_t>(n); });
    return aImage;
}

ImageBuffer aPicture(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                     std::initializer_list<std::uint8_t> aBytes)
{
    ImageBuffer aImage;
    aImage.width = lWidth;
    aImage.height = lHeight;
    aImage.channels = lChannels;
    aImage.bytes = aBytes;
    return aImage;
}

ImageBuffer aWidened(const ImageBuffer& aGrey)
{
    ImageBuffer aWide = aPicture(aGrey.width, aGrey.height, 3, {});
    for (const std::uint8_t n : aGrey.bytes)
        aWide.bytes.insert(aWide.bytes.end(), {n, n, n});
    return aWide;
}

int nValueAt(const ImageBuffer& aImage, std::int32_t x, std::int32_t y, std::int32_t lChannel)
{
    x = std::clamp(x, 0, aImage.width - 1);
    y = std::clamp(y, 0, aImage.height - 1);
    return aImage.bytes[static_cast<std::size_t>(
        (static_cast<std::int64_t>(y) * aImage.width + x) * aImage.channels + lChannel)];
}

std::vector<int> aBytesOf(const ImageBuffer& aImage)
{
    return {aImage.bytes.begin(), aImage.bytes.end()};
}

bool bEqual(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    return aOne.width == aOther.width && aOne.height == aOther.height && aOne.channels == aOther.channels &&
           aOne.bytes == aOther.bytes;
}

bool bSameAlpha(const ImageBuffer& aOne, const ImageBuffer& aOther)
{
    for (std::size_t i = 3; aOne.channels == 4 && i < aOne.bytes.size(); i += 4)
        if (aOne.bytes[i] != aOther.bytes[i])
            return false;
    return aOne.width == aOther.width && aOne.height == aOther.height && aOne.channels == aOther.channels &&
           aOne.bytes.size() == aOther.bytes.size();
}

bool bSound(const ImageBuffer& aImage)
{
    return aImage.width > 0 && aImage.height > 0 &&
           aImage.bytes.size() == static_cast<std::size_t>(aImage.width) *
                                      static_cast<std::size_t>(aImage.height) *
                                      static_cast<std::size_t>(aImage.channels);
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
