// Colour profiles: whether one fits, and turning pixels into sRGB by it.
// Room: platform/image/colour.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// True when profile is worth keeping for pixels of channels values: an ICC profile of an input, display,
/// output or colour space device whose colour space has that many channels (grey 1, RGB 3 or 4 where the
/// fourth is alpha), whole, and of at most 16 MB. A decoder keeps no other. For CMYK see CmykToBgr.
bool ProfileFits(Bytes profile, std::int32_t channels);

/// True when pixels in this profile mean what the same pixels in sRGB mean, to less than a level.
bool IsSrgbProfile(Bytes bytes);

/// Turns the pixels to sRGB by the picture's profile and drops the profile; alpha stays. Without a profile,
/// and with one that is sRGB in effect, no pixel is touched. A grey picture stays grey. False, with the
/// pixels as they were and the profile dropped, when the profile can't be used.
bool ConvertToSrgb(ImageBuffer& image);

/// Turns pixels of four inks into sRGB. With a CMYK profile, through it. Without one, or with one that is no
/// CMYK profile or can't be used, by the plain formula of ideal inks,
///   red = (255 - C) * (255 - K) / 255, green with M and blue with Y alike, rounded,
/// where 255 is full ink: the colours that programs without a press profile show.
class CmykToBgr
{
public:
    /// With inverted 0 is full ink, as in Adobe's JPEG files. Not cheap with a profile: one for a whole
    /// picture.
    explicit CmykToBgr(Bytes profile, bool inverted = false);
    ~CmykToBgr();
    CmykToBgr(const CmykToBgr&) = delete;
    CmykToBgr& operator=(const CmykToBgr&) = delete;

    /// pixels times C, M, Y, K from inks to B, G, R in bgr. The two must not overlap.
    void Convert(const std::uint8_t* inks, std::uint8_t* bgr, std::size_t pixels) const;

private:
    void* transform_ = nullptr;  ///< of the colour library; null for the plain formula
    bool inverted_;
};

/// Turns CIE L*a*b* (D50 white) into sRGB: pixels times L (0..255 for 0..100), a, b (each plus 128) to B, G,
/// R. False when there is no memory for it.
bool LabToBgr(const std::uint8_t* lab, std::uint8_t* bgr, std::size_t pixels);
