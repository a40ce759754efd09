// Keeps the colours of invisible pixels from bleeding into visible ones.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "src/platform/image_buffer.h"
#include "src/platform/image_transform.h"

namespace transforms
{

/// Replaces the colour of each invisible pixel (alpha 0) by that of visible pixels nearby. Invisible pixels
/// are usually black, and every operation that looks at neighbours would smear that black over visible edges.
/// The new colour is the mean of the visible pixels in the smallest enclosing block of 2, 4, 8, ... pixels
/// that has any, computed as the mean of the means of its quarters (a simple form of push-pull: Gortler et
/// al., The Lumigraph, SIGGRAPH 1996).
class HiddenColours
{
public:
    /// Throws std::bad_alloc and leaves the picture unchanged if memory runs out.
    explicit HiddenColours(ImageBuffer& image);
    /// Restores the pixels' original colours unless Forget was called; alpha must not have changed since.
    ~HiddenColours();
    HiddenColours(const HiddenColours&) = delete;
    HiddenColours& operator=(const HiddenColours&) = delete;

    void Forget() { hidden_.clear(); }

private:
    ImageBuffer& image_;
    std::vector<std::uint8_t> hidden_;  // three bytes for each hidden pixel, in order
};

/// True if any pixel has alpha 0.
bool HasHiddenPixels(const ImageBuffer& image);

/// Calls body(source, result) with the colours of hidden pixels replaced, and returns its outcome. For that,
/// a source that isn't the result is copied if it has hidden pixels; body then works in place in the copy. If
/// body throws or returns anything but Changed, the picture keeps its colours.
template <typename Body>
OperationResult WithVisibleColours(const ImageBuffer& source, ImageBuffer& result, const Body& body)
{
    if (&source != &result && !HasHiddenPixels(source))
        return body(source, result);
    ImageBuffer copy;
    if (&source != &result)
        copy = source;
    ImageBuffer& image = &source == &result ? result : copy;
    OperationResult outcome = OperationResult::Failed;
    {
        HiddenColours hidden(image);
        outcome = body(image, image);
        if (outcome == OperationResult::Changed)
            hidden.Forget();
    }
    if (outcome == OperationResult::Changed && &image != &result)
        result = std::move(copy);
    return outcome;
}

}  // namespace transforms
