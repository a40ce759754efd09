// Keeps the colours behind the transparent parts of a picture out of what is seen.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image_buffer.h"

namespace transforms
{

/// Gives each pixel of alpha 0 a colour like that of the visible ones near it, in place of its own, which is
/// black as a rule and would be drawn over the edges of what is visible by everything that looks at a pixel's
/// neighbours. The colour is the mean of the visible pixels of the smallest of the squares of 2, 4, 8 ...
/// pixels it lies in that has some, each square's mean being that of its quarters' (the pull and push of
/// Gortler et al., The Lumigraph, SIGGRAPH 1996, in its plainest form).
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
