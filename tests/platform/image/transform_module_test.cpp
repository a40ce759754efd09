// Tests of the transforms module, loaded on the first operation or missing.
#include "src/platform/image/transform_module.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "src/platform/image/transforms/kernel_image_transform.h"

static ImageBuffer TestPicture()
{
    ImageBuffer image;
    image.width = 2;
    image.height = 1;
    image.channels = 4;
    image.bytes = {1, 2, 3, 40, 5, 6, 7, 255};
    return image;
}

TEST(LazyImageTransform, ConvertsPictureThroughModule)
{
    LazyImageTransform transform;
    ImageBuffer image = TestPicture();

    transform.SetImage(image);
    EXPECT_EQ(image.width, 0);
    EXPECT_TRUE(transform.FilterReserved(1));
    transform.GetImageBytes(image);

    EXPECT_EQ(image.bytes, TestPicture().bytes);
    transform.SetImage(image);
    EXPECT_TRUE(transform.FilterReserved(2));
    transform.GetImageBytes(image);
    EXPECT_EQ(image.bytes, TestPicture().bytes);
}

TEST(LazyImageTransform, FailsWithoutModuleAndKeepsPicture)
{
    setenv("VARNEL_MODULE_DIR", "/no/such/folder", 1);
    LazyImageTransform transform;
    ImageBuffer image = TestPicture();
    transform.SetImage(image);

    EXPECT_FALSE(transform.FilterReserved(1));
    EXPECT_FALSE(transform.Invert());
    transform.GetImageBytes(image);

    EXPECT_EQ(image.bytes, TestPicture().bytes);
    unsetenv("VARNEL_MODULE_DIR");
}

TEST(KernelImageTransform, ReturnsOpacityAsMask)
{
    KernelImageTransform transform;
    ImageBuffer image = TestPicture();
    ImageBuffer mask;
    transform.SetImage(image);

    transform.GetMaskBytes(mask);

    EXPECT_EQ(mask.channels, 1);
    EXPECT_EQ(mask.bytes, (PixelBytes{40, 255}));
}

TEST(KernelImageTransform, ReturnsOpaqueMaskWithoutAlphaAndNoneWithoutPicture)
{
    KernelImageTransform transform;
    ImageBuffer mask = TestPicture();
    transform.GetMaskBytes(mask);
    EXPECT_EQ(mask.width, 0);

    ImageBuffer image;
    image.width = image.height = image.channels = 1;
    image.bytes.assign(1, 0);
    transform.SetImage(image);
    transform.GetMaskBytes(mask);
    EXPECT_EQ(mask.bytes, (PixelBytes{255}));
}
