// Derives a seed from a picture.
#include "src/platform/image/transforms/rows/seeded_random.h"

#include <algorithm>

#include "src/platform/image/transforms/rows/intensity.h"

namespace transforms
{

std::uint64_t SeedOf(const ImageBuffer& image)
{
    std::uint64_t hash = (static_cast<std::uint64_t>(image.width) << 32) ^
                         static_cast<std::uint64_t>(image.height) * 0x100000001B3U;
    // Intensities, so that the seed is the same for any number of channels.
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::size_t step = channels * std::max<std::size_t>(1, image.bytes.size() / channels / 4099);
    for (std::size_t i = 0; i + channels <= image.bytes.size(); i += step) {
        const std::uint8_t* pixel = &image.bytes[i];
        hash = (hash ^ (channels == 1 ? pixel[0] : IntensityOfPixel(pixel[0], pixel[1], pixel[2]))) *
               0x100000001B3U;
    }
    return Random(hash);
}

}  // namespace transforms
