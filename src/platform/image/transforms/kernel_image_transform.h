// ImageTransform on top of the kernels.
// Room: platform/image/transforms.
#pragma once

#include "src/platform/image_transform.h"

/// Every kernel is a function of the namespace transforms, bound to its operation by a line of the table in
/// the source file:
///     OperationResult OPERATION(const ImageBuffer& source, ImageBuffer& result, arguments...)
/// It works as Apply does, but may throw std::bad_alloc, with result unchanged.
class KernelImageTransform : public ImageTransform
{
public:
    OperationResult Apply(const OperationCall& call, const ImageBuffer& source, ImageBuffer& result) override;
    void GetMaskBytes(const ImageBuffer& image, ImageBuffer& mask) override;
};
