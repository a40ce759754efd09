// Allocates new pixels and puts them into place.
#include "src/platform/image/transforms/rows/target.h"

#include <cstring>
#include <utility>

#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

ImageBuffer EmptyLike(const ImageBuffer& image)
{
    ImageBuffer result;
    ResizeFresh(result.bytes, image.bytes.size());
    result.width = image.width;
    result.height = image.height;
    result.channels = image.channels;
    return result;
}

void TakePixels(const ImageBuffer& source, ImageBuffer& result, ImageBuffer&& pixels)
{
    if (&source == &result) {
        result.width = pixels.width;
        result.height = pixels.height;
        result.channels = pixels.channels;
        result.bytes = std::move(pixels.bytes);
        return;
    }
    pixels.icc_profile = source.icc_profile;
    pixels.dots_per_inch_x = source.dots_per_inch_x;
    pixels.dots_per_inch_y = source.dots_per_inch_y;
    pixels.metadata = source.metadata;
    pixels.lossy = source.lossy;
    result = std::move(pixels);
}

Target::Target(const ImageBuffer& source, ImageBuffer& result) : source_(source), result_(result)
{
    if (!IsInPlace())
        made_ = EmptyLike(source);
}

std::uint8_t* Target::Load(std::size_t first, std::size_t count)
{
    if (IsInPlace())
        return result_.bytes.data() + first;
    std::memcpy(made_.bytes.data() + first, source_.bytes.data() + first, count);
    return made_.bytes.data() + first;
}

std::uint8_t* Target::LoadRow(std::int32_t y)
{
    return Load(static_cast<std::size_t>(y) * Stride(source_), Stride(source_));
}

void Target::LoadAlpha(std::int32_t y)
{
    if (source_.channels != 4 || IsInPlace())
        return;
    const std::uint8_t* from = Row(source_, y);
    std::uint8_t* to = Row(made_, y);
    for (std::size_t i = 3; i < Stride(source_); i += 4)
        to[i] = from[i];
}

OperationResult Target::Finish()
{
    if (!IsInPlace())
        TakePixels(source_, result_, std::move(made_));
    return OperationResult::Changed;
}

}  // namespace transforms
