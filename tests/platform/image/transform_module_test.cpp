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

TEST(LazyImageTransform, AppliesOperationThroughModule)
{
    LazyImageTransform transform;
    ImageBuffer image = TestPicture();

    EXPECT_EQ(transform.Apply(operations::FilterReserved(1), image, image), OperationResult::Unchanged);
    EXPECT_EQ(image.bytes, TestPicture().bytes);

    EXPECT_EQ(transform.Apply(operations::Invert(), image, image), OperationResult::Changed);
    EXPECT_EQ(image.bytes, (PixelBytes{254, 253, 252, 40, 250, 249, 248, 255}));
}

TEST(LazyImageTransform, FailsWithoutModuleAndKeepsPicture)
{
    setenv("VARNEL_MODULE_DIR", "/no/such/folder", 1);
    LazyImageTransform transform;
    ImageBuffer image = TestPicture();

    EXPECT_EQ(transform.Apply(operations::FilterReserved(1), image, image), OperationResult::Failed);
    EXPECT_EQ(transform.Apply(operations::Invert(), image, image), OperationResult::Failed);

    EXPECT_EQ(image.bytes, TestPicture().bytes);
    unsetenv("VARNEL_MODULE_DIR");
}

TEST(KernelImageTransform, FailsForUnknownOperation)
{
    ImageBuffer image = TestPicture();

    EXPECT_EQ(KernelImageTransform().Apply({"Unknown", {}}, image, image), OperationResult::Failed);

    EXPECT_EQ(image.bytes, TestPicture().bytes);
}

TEST(KernelImageTransform, FailsForMissingArguments)
{
    ImageBuffer image = TestPicture();

    EXPECT_EQ(KernelImageTransform().Apply({operations::Hue.sName, {}}, image, image),
              OperationResult::Failed);
}

TEST(KernelImageTransform, ReturnsOpacityAsMask)
{
    ImageBuffer mask;

    KernelImageTransform().GetMaskBytes(TestPicture(), mask);

    EXPECT_EQ(mask.channels, 1);
    EXPECT_EQ(mask.bytes, (PixelBytes{40, 255}));
}

TEST(KernelImageTransform, ReturnsOpaqueMaskWithoutAlphaAndNoneWithoutPicture)
{
    ImageBuffer mask = TestPicture();
    KernelImageTransform().GetMaskBytes({}, mask);
    EXPECT_EQ(mask.width, 0);

    ImageBuffer image;
    image.width = image.height = image.channels = 1;
    image.bytes.assign(1, 0);
    KernelImageTransform().GetMaskBytes(image, mask);
    EXPECT_EQ(mask.bytes, (PixelBytes{255}));
}
