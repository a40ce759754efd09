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
    /// Throws std::bad_alloc, with the picture as it was.
    explicit HiddenColours(ImageBuffer& image);
    /// Puts the pixels' own colours back, unless Forget was called; alpha must be what it was then.
    ~HiddenColours();
    HiddenColours(const HiddenColours&) = delete;
    HiddenColours& operator=(const HiddenColours&) = delete;

    void Forget() { hidden_.clear(); }

private:
    ImageBuffer& image_;
    std::vector<std::uint8_t> hidden_;  // three bytes for each hidden pixel, as they come
};

/// What the body returns, having seen no hidden colours; False, with the picture as it was, when it throws.
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
