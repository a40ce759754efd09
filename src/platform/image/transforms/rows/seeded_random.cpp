// Derives a seed from a picture.
#include "src/platform/image/transforms/rows/seeded_random.h"

#include <algorithm>

namespace transforms
{

std::uint64_t SeedOf(const ImageBuffer& image)
{
    std::uint64_t hash = (static_cast<std::uint64_t>(image.width) << 32) ^
                         static_cast<std::uint64_t>(image.height) * 0x100000001B3U;
    const std::size_t step = std::max<std::size_t>(1, image.bytes.size() / 4099);
    for (std::size_t i = 0; i < image.bytes.size(); i += step)
        hash = (hash ^ image.bytes[i]) * 0x100000001B3U;
    return Random(hash);
}

}  // namespace transforms
