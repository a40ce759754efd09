// The transforms' module, opened on the first operation or missing.
#include "src/platform/image/transform_module.h"

#include <cstdlib>

#include "src/platform/image/transforms/kernel_image_transform.h"

static ImageBuffer aPicture()
{
    ImageBuffer aImage;
    aImage.width = 2;
    aImage.height = 1;
    aImage.channels = 4;
    aImage.bytes = {1, 2, 3, 40, 5, 6, 7, 255};
    return aImage;
}

TEST(LazyImageTransform, HandsThePictureToTheModuleAndTakesItBack)
{
    LazyImageTransform objTransform;
    ImageBuffer aImage = aPicture();

    objTransform.SetImage(aImage);
    EXPECT_EQ(aImage.width, 0);
    EXPECT_TRUE(objTransform.FilterReserved(1));
    objTransform.GetImageBytes(aImage);

    EXPECT_EQ(aImage.bytes, aPicture().bytes);
    objTransform.SetImage(aImage);
    EXPECT_TRUE(objTransform.FilterReserved(2));
    objTransform.GetImageBytes(aImage);
    EXPECT_EQ(aImage.bytes, aPicture().bytes);
}

TEST(LazyImageTransform, IsFalseWithoutTheModuleAndKeepsThePicture)
{
    setenv("VARNEL_MODULE_DIR", "/no/such/folder", 1);
    LazyImageTransform objTransform;
    ImageBuffer aImage = aPicture();
    objTransform.SetImage(aImage);

    EXPECT_FALSE(objTransform.FilterReserved(1));
    EXPECT_FALSE(objTransform.Invert());
    objTransform.GetImageBytes(aImage);

    EXPECT_EQ(aImage.bytes, aPicture().bytes);
    unsetenv("VARNEL_MODULE_DIR");
}

TEST(KernelImageTransform, GivesTheOpacityAsItsMask)
{
    KernelImageTransform objTransform;
    ImageBuffer aImage = aPicture();
    ImageBuffer aMask;
    objTransform.SetImage(aImage);

    objTransform.GetMaskBytes(aMask);

    EXPECT_EQ(aMask.channels, 1);
    EXPECT_EQ(aMask.bytes, (PixelBytes{40, 255}));
}

TEST(KernelImageTransform, GivesAMaskThatIsWholeForAPictureWithoutAlphaAndNoneForNoPicture)
{
    KernelImageTransform objTransform;
    ImageBuffer aMask = aPicture();
    objTransform.GetMaskBytes(aMask);
    EXPECT_EQ(aMask.width, 0);

    ImageBuffer aImage;
    aImage.width = aImage.height = aImage.channels = 1;
    aImage.bytes.assign(1, 0);
    objTransform.SetImage(aImage);
    objTransform.GetMaskBytes(aMask);
    EXPECT_EQ(aMask.bytes, (PixelBytes{255}));
}
