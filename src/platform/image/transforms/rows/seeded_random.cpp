// Makes a seed of a picture.
#include "src/platform/image/transforms/rows/seeded_random.h"

#include <algorithm>

namespace transforms
{

std::uint64_t nSeed(const ImageBuffer& aImage)
{
    std::uint64_t nHash = (static_cast<std::uint64_t>(aImage.width) << 32) ^
                          static_cast<std::uint64_t>(aImage.height) * 0x100000001B3U;
    const std::size_t nStep = std::max<std::size_t>(1, aImage.bytes.size() / 4099);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += nStep)
        nHash = (nHash ^ aImage.bytes[i]) * 0x100000001B3U;
    return nRandom(nHash);
}

}  // namespace transforms
