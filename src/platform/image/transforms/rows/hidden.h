// Keeps the colours of invisible pixels from bleeding into visible ones.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image_buffer.h"

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

/// Runs body on the picture with its hidden colours replaced, and returns its result. If body throws or
/// returns false, the original colours are restored and the result is false.
template <typename Body>
bool IsVisible(ImageBuffer& image, const Body& body)
{
    return RunGuarded([&] {
        HiddenColours hidden(image);
        const bool done = body();
        if (done)
            hidden.Forget();
        return done;
    });
}

}  // namespace transforms
