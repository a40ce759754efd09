// Reduces a picture to at most 256 colours.
#include "src/platform/image/quantiser/quantiser.h"

#include "src/platform/image/quantiser/quantiser_dither.h"
#include "src/platform/image/quantiser/quantiser_exact.h"
#include "src/platform/image/quantiser/quantiser_flat.h"
#include "src/platform/image/quantiser/quantiser_palette.h"

static bool HasTransparentPixel(const ImageBuffer& image)
{
    if (image.channels != 4)
        return false;
    for (std::size_t i = 3; i < image.bytes.size(); i += 4)
        if (image.bytes[i] < 128)
            return true;
    return false;
}

IndexedImage Quantise(const ImageBuffer& image)
{
    if (auto few = QuantiseExactly(image))
        return std::move(*few);
    IndexedImage result;
    const bool transparent = HasTransparentPixel(image);
    const std::vector<FlatColour> flats = FindFlatColours(image);
    result.palette = FitPalette(image, flats, transparent ? 255 : 256);
    if (transparent)
        result.transparent = static_cast<std::int32_t>(result.palette.size());
    result.indexes = Dither(image, result.palette, result.transparent);
    if (!flats.empty())
        TakeFlatColours(image, flats, 0, result.indexes);
    if (transparent)
        result.palette.push_back({0, 0, 0});
    return result;
}
