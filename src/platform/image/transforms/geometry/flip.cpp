// Flips and quarter turns, by the routine that applies EXIF orientation.
#include "src/platform/image/transforms/geometry/flip.h"

#include "src/platform/image/pixels/orientation.h"
#include "src/platform/image/transforms/rows/new_pixels.h"

namespace transforms
{

static bool Orient(ImageBuffer& image, std::int32_t orientation)
{
    return RunGuarded([&] {
        ApplyOrientation(image, orientation);
        return true;
    });
}

bool Flip(ImageBuffer& image, bool vertical)
{
    return Orient(image, vertical ? 4 : 2);
}

bool TurnQuarters(ImageBuffer& image, std::int32_t quarters)
{
    constexpr std::int32_t kOrientations[4] = {1, 6, 3, 8};
    return Orient(image, kOrientations[quarters & 3]);
}

}  // namespace transforms
