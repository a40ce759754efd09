// Flips and quarter turns, by the routine that applies EXIF orientation.
#include "src/platform/image/transforms/geometry/flip.h"

#include "src/platform/image/pixels/orientation.h"

namespace transforms
{

static OperationResult Orient(const ImageBuffer& source, ImageBuffer& result, std::int32_t orientation)
{
    if (orientation == 1)
        return OperationResult::Unchanged;
    if (&source == &result)
        ApplyOrientation(result, orientation);
    else
        result = OrientedCopy(source, orientation);
    return OperationResult::Changed;
}

OperationResult Flip(const ImageBuffer& source, ImageBuffer& result, bool vertical)
{
    return Orient(source, result, vertical ? 4 : 2);
}

OperationResult TurnQuarters(const ImageBuffer& source, ImageBuffer& result, std::int32_t quarters)
{
    constexpr std::int32_t kOrientations[4] = {1, 6, 3, 8};
    return Orient(source, result, kOrientations[quarters & 3]);
}

}  // namespace transforms
