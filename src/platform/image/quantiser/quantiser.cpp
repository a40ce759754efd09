// Turns a picture into one of at most 256 colours.
#include "src/platform/image/quantiser/quantiser.h"

#include "src/platform/image/quantiser/quantiser_dither.h"
#include "src/platform/image/quantiser/quantiser_exact.h"
#include "src/platform/image/quantiser/quantiser_flat.h"
#include "src/platform/image/quantiser/quantiser_palette.h"

static bool bAnyTransparent(const ImageBuffer& aImage)
{
    if (aImage.channels != 4)
        return false;
    for (std::size_t i = 3; i < aImage.bytes.size(); i += 4)
        if (aImage.bytes[i] < 128)
            return true;
    return false;
}

IndexedImage objQuantised(const ImageBuffer& aImage)
{
    if (auto objFew = objExact(aImage))
        return std::move(*objFew);
    IndexedImage objResult;
    const bool bTransparent = bAnyTransparent(aImage);
    const std::vector<FlatColour> aFlats = aFlatColours(aImage);
    objResult.aPalette = aFittedPalette(aImage, aFlats, bTransparent ? 255 : 256);
    if (bTransparent)
        objResult.nTransparent = static_cast<std::int32_t>(objResult.aPalette.size());
    objResult.aIndexes = aDithered(aImage, objResult.aPalette, objResult.nTransparent);
    if (!aFlats.empty())
        TakeFlatColours(aImage, aFlats, 0, objResult.aIndexes);
    if (bTransparent)
        objResult.aPalette.push_back({0, 0, 0});
    return objResult;
}
