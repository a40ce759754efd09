// Forwards operations to the transforms module.
#include "src/platform/image/transform_module.h"

#include <utility>

#include "src/platform/image/base/module_file.h"

static constexpr char kFileName[] = "libvarnel_transforms.so";

LazyImageTransform::~LazyImageTransform()
{
    if (module_)
        destroy_(module_);
}

void LazyImageTransform::SetImage(ImageBuffer& image)
{
    if (module_)
        module_->SetImage(image);
    else
        image_ = std::exchange(image, {});
}

void LazyImageTransform::GetImageBytes(ImageBuffer& image)
{
    if (module_)
        module_->GetImageBytes(image);
    else
        image = std::exchange(image_, {});
}

void LazyImageTransform::GetMaskBytes(ImageBuffer& mask)
{
    if (Open())
        module_->GetMaskBytes(mask);
    else
        mask = {};
}

bool LazyImageTransform::Open()
{
    if (tried_)
        return module_ != nullptr;
    tried_ = true;
    void* module = OpenModule(kFileName);
    const auto create = ModuleFunction<CreateImageTransform>(module, kCreateImageTransform);
    destroy_ = ModuleFunction<DestroyImageTransform>(module, kDestroyImageTransform);
    if (create && destroy_)
        module_ = create();
    if (module_)
        module_->SetImage(image_);
    return module_ != nullptr;
}
