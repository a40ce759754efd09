// Opens the transforms module on the first operation.
// Room: platform/image.
#pragma once

#include "src/platform/image_transform.h"

/// The module's entry point: creates its ImageTransform.
using CreateImageTransform = ImageTransform*();
using DestroyImageTransform = void(ImageTransform*);
constexpr char kCreateImageTransform[] = "VarnelCreateImageTransform";
constexpr char kDestroyImageTransform[] = "VarnelDestroyImageTransform";

/// Forwards to the module libvarnel_transforms.so (see module_file.h for where it is searched). Runs without
/// operations never open it. Without the module every operation fails.
class LazyImageTransform : public ImageTransform
{
public:
    LazyImageTransform() = default;
    LazyImageTransform(const LazyImageTransform&) = delete;
    LazyImageTransform& operator=(const LazyImageTransform&) = delete;
    ~LazyImageTransform() override;

    OperationResult Apply(const OperationCall& call, const ImageBuffer& source, ImageBuffer& result) override;
    void GetMaskBytes(const ImageBuffer& image, ImageBuffer& mask) override;

private:
    bool Open();

    bool tried_ = false;
    ImageTransform* module_ = nullptr;
    DestroyImageTransform* destroy_ = nullptr;
};
