// Makes pictures for tests of operations.
#include "tests/platform/image/support/kernel_pictures.h"

#include <algorithm>
#include <limits>

static ImageBuffer Empty(std::int32_t width, std::int32_t height, std::int32_t channels)
{
    ImageBuffer image;
    image.width = width;
    image.height = height;
    image.channels = channels;
    image.bytes.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                       static_cast<std::size_t>(channels));
    return image;
}

ImageBuffer RandomPicture(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint32_t start)
{
    ImageBuffer image = Empty(width, height, channels);
    std::uint32_t state = start * 2654435761U + 12345;
    for (auto& byte : image.bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    for (std::size_t i = 3; channels == 4 && i < image.bytes.size(); i += 4)
        image.bytes[i] = std::max<std::uint8_t>(image.bytes[i], 1);
    return image;
}

ImageBuffer RandomOpaque(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint32_t start)
{
    ImageBuffer image = RandomPicture(width, height, channels, start);
    for (std::size_t i = 3; channels == 4 && i < image.bytes.size(); i += 4)
        image.bytes[i] = 255;
    return image;
}

ImageBuffer Plain(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint8_t value)
{
    ImageBuffer image = Empty(width, height, channels);
    std::fill(image.bytes.begin(), image.bytes.end(), value);
    return image;
}

ImageBuffer GreyOf(std::int32_t width, std::int32_t height, std::initializer_list<int> levels)
{
    ImageBuffer image = Plain(width, height, 1, 0);
    std::transform(levels.begin(), levels.end(), image.bytes.begin(),
                   [](int n) { return static_cast<std::uint8_t>(n); });
    return image;
}

ImageBuffer TestPicture(std::int32_t width, std::int32_t height, std::int32_t channels,
                        std::initializer_list<std::uint8_t> bytes)
{
    ImageBuffer image;
    image.width = width;
    image.height = height;
    image.channels = channels;
    image.bytes = bytes;
    return image;
}

ImageBuffer Widened(const ImageBuffer& grey)
{
    ImageBuffer wide = TestPicture(grey.width, grey.height, 3, {});
    for (const std::uint8_t n : grey.bytes)
        wide.bytes.insert(wide.bytes.end(), {n, n, n});
    return wide;
}

int ValueAt(const ImageBuffer& image, std::int32_t x, std::int32_t y, std::int32_t channel)
{
    x = std::clamp(x, 0, image.width - 1);
    y = std::clamp(y, 0, image.height - 1);
    return image.bytes[static_cast<std::size_t>(
        (static_cast<std::int64_t>(y) * image.width + x) * image.channels + channel)];
}

std::vector<int> BytesOf(const ImageBuffer& image)
{
    return {image.bytes.begin(), image.bytes.end()};
}

bool Equal(const ImageBuffer& one, const ImageBuffer& other)
{
    return one.width == other.width && one.height == other.height && one.channels == other.channels &&
           one.bytes == other.bytes;
}

bool SameAlpha(const ImageBuffer& one, const ImageBuffer& other)
{
    for (std::size_t i = 3; one.channels == 4 && i < one.bytes.size(); i += 4)
        if (one.bytes[i] != other.bytes[i])
            return false;
    return one.width == other.width && one.height == other.height && one.channels == other.channels &&
           one.bytes.size() == other.bytes.size();
}

bool Sound(const ImageBuffer& image)
{
    return image.width > 0 && image.height > 0 &&
           image.bytes.size() == static_cast<std::size_t>(image.width) *
                                     static_cast<std::size_t>(image.height) *
                                     static_cast<std::size_t>(image.channels);
}

std::vector<PictureShape> Shapes()
{
    std::vector<PictureShape> result;
    for (const std::int32_t channels : kChannelCounts)
        for (const auto& [width, height] : kSizes)
            result.push_back({width, height, channels});
    return result;
}

std::vector<double> HostileDoubles()
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

std::vector<std::int32_t> HostileLongs()
{
    return {INT32_MIN, INT32_MAX, INT32_MIN + 1, -32768, 32767,  65536, -256, -1, 0, 1,
            2,         3,         255,           256,    1000000};
}

static bool SameAttributes(const ImageBuffer& one, const ImageBuffer& other)
{
    return one.icc_profile == other.icc_profile && one.dots_per_inch_x == other.dots_per_inch_x &&
           one.dots_per_inch_y == other.dots_per_inch_y && one.metadata.exif == other.metadata.exif &&
           one.metadata.xmp == other.metadata.xmp && one.metadata.iptc == other.metadata.iptc;
}

void ExpectAgreement(const ImageBuffer& source, const ImageBuffer& changed, const ImageBuffer& result,
                     OperationResult outcome)
{
    if (outcome == OperationResult::Changed) {
        EXPECT_TRUE(Equal(result, changed) && SameAttributes(result, changed));
    } else {
        EXPECT_TRUE(Equal(changed, source) && SameAttributes(changed, source));
        EXPECT_TRUE(result.bytes.empty());
    }
}
