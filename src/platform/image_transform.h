// Applies the image library's operations to pictures in memory.
// Room: platform. Implemented by platform/image; in tests by tests/fakes.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"
#include "src/platform/image_operations.h"

/// What an operation did.
enum class OperationResult : std::uint8_t {
    Failed,     ///< out of memory, or the result would exceed the size limits
    Unchanged,  ///< the operation doesn't change this picture
    Changed,
};

/// Applies operations. Nothing throws. Colour operations leave alpha unchanged; geometric ones move it with
/// the picture.
class ImageTransform
{
public:
    virtual ~ImageTransform() = default;

    /// Reads aSource and, if the outcome is Changed, replaces aResult; otherwise aResult stays as it was, and
    /// nothing of the picture is copied. aResult may be aSource itself, which saves memory; if it is another
    /// picture, aSource isn't written to.
    [[nodiscard]] virtual OperationResult Apply(const OperationCall& objCall, const ImageBuffer& aSource,
                                                ImageBuffer& aResult) = 0;

    /// Gives the opacity as a picture of one channel: 255 opaque, 0 transparent. Empty on failure.
    virtual void GetMaskBytes(const ImageBuffer& aImage, ImageBuffer& aMask) = 0;
};
