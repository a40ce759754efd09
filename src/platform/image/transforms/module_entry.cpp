// The entry points of the transforms module.
#include <new>

#include "src/platform/image/transform_module.h"
#include "src/platform/image/transforms/kernel_image_transform.h"

#define VARNEL_MODULE_FUNCTION extern "C" __attribute__((visibility("default")))

VARNEL_MODULE_FUNCTION ImageTransform* VarnelCreateImageTransform()
{
    return new (std::nothrow) KernelImageTransform;
}

VARNEL_MODULE_FUNCTION void VarnelDestroyImageTransform(ImageTransform* transform)
{
    delete transform;
}
