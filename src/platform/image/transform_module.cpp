// Forwards operations to the transforms module.
#include "src/platform/image/transform_module.h"

#include "src/platform/image/base/module_file.h"

static constexpr char kFileName[] = "libvarnel_transforms.so";

LazyImageTransform::~LazyImageTransform()
{
    if (module_)
        destroy_(module_);
}

OperationResult LazyImageTransform::Apply(const OperationCall& call, const ImageBuffer& source,
                                          ImageBuffer& result)
{
    return Open() ? module_->Apply(call, source, result) : OperationResult::Failed;
}

void LazyImageTransform::GetMaskBytes(const ImageBuffer& image, ImageBuffer& mask)
{
    if (Open())
        module_->GetMaskBytes(image, mask);
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
    return module_ != nullptr;
}
