// Mirrors and quarter turns by the routine that puts loaded pictures upright.
#include "src/platform/image/transforms/geometry/flip.h"

#include "src/platform/image/pixels/orientation.h"
#include "src/platform/image/transforms/rows/new_pixels.h"

namespace transforms
{

static bool bOriented(ImageBuffer& aImage, std::int32_t lOrientation)
{
    return bGuarded([&] {
        ApplyOrientation(aImage, lOrientation);
        return true;
    });
}

bool Flip(ImageBuffer& aImage, bool bVertical)
{
    return bOriented(aImage, bVertical ? 4 : 2);
}

bool TurnQuarters(ImageBuffer& aImage, std::int32_t lQuarters)
{
    constexpr std::int32_t kOrientations[4] = {1, 6, 3, 8};
    return bOriented(aImage, kOrientations[lQuarters & 3]);
}

}  // namespace transforms
