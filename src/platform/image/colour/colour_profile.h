// Colour profiles: checking them, and converting pixels to sRGB through them.
// Room: platform/image/colour.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// True if profile is a complete ICC profile of at most 16 MB, of an input, display, output or colour space
/// device, whose colour space matches the channel count: grey for 1, RGB for 3 and 4 (the fourth is alpha).
/// Decoders keep only such profiles. For CMYK see CmykToBgr.
bool ProfileFits(Bytes profile, std::int32_t channels);

/// True if pixels in this profile look the same as in sRGB, to within one level.
bool IsSrgbProfile(Bytes bytes);

/// Converts the pixels to sRGB through the picture's profile and drops the profile. Alpha is unchanged and a
/// grey picture stays grey. Without a profile, or if it is equivalent to sRGB, no pixel changes. False if the
/// profile is unusable: the pixels are unchanged and the profile is dropped.
bool ConvertToSrgb(ImageBuffer& image);

/// Converts CMYK pixels to sRGB: through the CMYK profile, or without a usable one by the naive formula
///   red = (255 - C) * (255 - K) / 255, rounded; green likewise from M, blue from Y,
/// where 255 is full ink. That is what programs without a press profile show.
class CmykToBgr
{
public:
    /// inverted: 0 is full ink, as in Adobe JPEG files. Construction is expensive with a profile; use one
    /// object per picture.
    explicit CmykToBgr(Bytes profile, bool inverted = false);
    ~CmykToBgr();
    CmykToBgr(const CmykToBgr&) = delete;
    CmykToBgr& operator=(const CmykToBgr&) = delete;

    /// Converts `pixels` CMYK pixels to BGR. The buffers must not overlap.
    void Convert(const std::uint8_t* inks, std::uint8_t* bgr, std::size_t pixels) const;

private:
    void* transform_ = nullptr;  ///< a cmsHTRANSFORM; null for the naive formula
    bool inverted_;
};

/// Converts `pixels` CIE L*a*b* (D50) pixels to sRGB in BGR order. L is 0..255 for 0..100; a and b are offset
/// by 128. False if memory runs out.
bool LabToBgr(const std::uint8_t* lab, std::uint8_t* bgr, std::size_t pixels);
