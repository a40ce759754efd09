// Tests of applying the EXIF orientation.
#include "src/platform/image/pixels/orientation.h"

#include <gtest/gtest.h>

#include "tests/platform/image/support/image_tools.h"

// Reference: the source position of target pixel (x, y) for each orientation of a W by H source.
static ImageBuffer OrientByReference(const ImageBuffer& source, int orientation)
{
    const bool quarter = orientation >= 5;
    ImageBuffer result = source;
    result.width = quarter ? source.height : source.width;
    result.height = quarter ? source.width : source.height;
    const int width = source.width, height = source.height, channels = source.channels;
    for (int y = 0; y < result.height; ++y)
        for (int x = 0; x < result.width; ++x) {
            int sx = quarter ? y : x;
            int sy = quarter ? x : y;
            if (orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8)
                sx = width - 1 - sx;
            if (orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7)
                sy = height - 1 - sy;
            for (int c = 0; c < channels; ++c)
                result.bytes[static_cast<std::size_t>((y * result.width + x) * channels + c)] =
                    source.bytes[static_cast<std::size_t>((sy * width + sx) * channels + c)];
        }
    return result;
}

TEST(ApplyOrientation, MovesEveryPixelForAllOrientationsAndChannels)
{
    for (const int channels : {1, 3, 4})
        for (int orientation = 1; orientation <= 8; ++orientation)
            for (const auto& [w, h] : {std::pair{1, 1}, {1, 7}, {67, 1}, {33, 64}, {100, 37}}) {
                const ImageBuffer source = Pattern(w, h, channels);
                ImageBuffer image = source;
                ApplyOrientation(image, orientation);
                EXPECT_EQ(DifferenceBetween(image, OrientByReference(source, orientation)).greatest, 0)
                    << orientation << " " << w << "x" << h << " " << channels;
            }
}

TEST(ApplyOrientation, PutsFirstPixelWhereOrientationSays)
{
    ImageBuffer image;
    image.width = 3;
    image.height = 2;
    image.channels = 1;
    image.bytes = {1, 2, 3, 4, 5, 6};

    ApplyOrientation(image, 6);

    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 3);
    EXPECT_EQ(image.bytes, (PixelBytes{4, 1, 5, 2, 6, 3}));
}

TEST(ApplyOrientation, SwapsResolutionsForQuarterTurnsOnly)
{
    ImageBuffer image = Pattern(4, 4, 3);
    image.dots_per_inch_x = 100;
    image.dots_per_inch_y = 200;

    ApplyOrientation(image, 3);
    EXPECT_EQ(image.dots_per_inch_x, 100);
    ApplyOrientation(image, 8);
    EXPECT_EQ(image.dots_per_inch_x, 200);
    EXPECT_EQ(image.dots_per_inch_y, 100);
}

TEST(ApplyOrientation, IgnoresInvalidOrientation)
{
    const ImageBuffer source = Pattern(5, 3, 3);
    for (const int orientation : {-1, 0, 1, 9, 65536}) {
        ImageBuffer image = source;
        ApplyOrientation(image, orientation);
        EXPECT_EQ(DifferenceBetween(image, source).greatest, 0);
    }
}
