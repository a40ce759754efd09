// Where an operation writes its result: in place, or to a new picture.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image_buffer.h"
#include "src/platform/image_transform.h"

namespace transforms
{

/// An uninitialised picture of the same size and channels. Throws std::bad_alloc.
ImageBuffer EmptyLike(const ImageBuffer& image);

/// Makes result the source with other pixels: profile, resolution and metadata are those of the source.
/// Throws std::bad_alloc and leaves result unchanged if memory runs out.
void TakePixels(const ImageBuffer& source, ImageBuffer& result, ImageBuffer&& pixels);

/// The pixels that an operation of the source's size writes. If result is the source itself, they are the
/// source's own; otherwise they are new ones, which Finish moves into result.
class Target
{
public:
    /// Throws std::bad_alloc.
    Target(const ImageBuffer& source, ImageBuffer& result);
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    bool IsInPlace() const { return &source_ == &result_; }
    /// The picture to write to. Its pixels are uninitialised unless it is the source.
    ImageBuffer& Image() { return IsInPlace() ? result_ : made_; }
    /// Copies the source's bytes first to first + count - 1 to the target, unless they are there already, and
    /// returns them. An operation that changes pixels in place loads a block at a time, so that the copy
    /// never leaves the cache.
    std::uint8_t* Load(std::size_t first, std::size_t count);
    std::uint8_t* LoadRow(std::int32_t y);
    /// Copies the source's alpha to the target's row y, if there is alpha.
    void LoadAlpha(std::int32_t y);
    /// Completes result. Throws std::bad_alloc and leaves result unchanged if memory runs out, but not in
    /// place.
    OperationResult Finish();

private:
    const ImageBuffer& source_;
    ImageBuffer& result_;
    ImageBuffer made_;
};

}  // namespace transforms
