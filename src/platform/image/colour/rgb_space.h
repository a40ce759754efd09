// RGB colour spaces given by numbers rather than by a profile, and their conversion to sRGB.
// Room: platform/image/colour.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// CIE 1931 chromaticity.
struct Chromaticity {
    double x = 0;
    double y = 0;
};

/// From a sample, 0 to 1, to light. kPq and kHlg are the high dynamic range curves of ITU-R BT.2100.
enum class TransferFunction { kGamma, kSrgb, kBt709, kPq, kHlg };

/// sRGB, unless changed.
struct RgbSpace {
    Chromaticity white{0.3127, 0.3290};
    Chromaticity red{0.64, 0.33};
    Chromaticity green{0.30, 0.60};
    Chromaticity blue{0.15, 0.06};
    TransferFunction transfer = TransferFunction::kSrgb;
    double gamma = 1;  ///< for kGamma: light = sample ^ gamma
};

/// True if the primaries and the white point are sRGB's, as exactly as files state them.
bool HasSrgbPrimaries(const RgbSpace& space);
/// True if the primaries aren't collinear and all have a luminance.
bool IsUsable(const RgbSpace& space);

/// Converts through linear light, adapting the white point by Bradford's method. Colours outside sRGB are
/// clipped. High dynamic range is compressed per channel by Reinhard's curve L (1 + L / P^2) / (1 + L), where
/// 1 is the reference white of 203 cd/m2 and the peak P 1000 cd/m2.
class RgbSpaceToSrgb
{
public:
    /// bits per sample: 8 or 16. space must be usable.
    RgbSpaceToSrgb(const RgbSpace& space, std::uint32_t bits);

    /// Converts grey, BGR or BGRA of 8 bits in place; alpha is unchanged.
    void Convert(std::uint8_t* pixels, std::int32_t channels, std::size_t count) const;
    /// Converts grey, RGB or RGBA of 16 bits to grey, BGR or BGRA of 8; alpha is rounded.
    void Convert(const std::uint16_t* in, std::int32_t channels, std::size_t count, std::uint8_t* out) const;

private:
    template <typename Sample>
    void ConvertPixels(const Sample* in, std::int32_t channels, std::size_t count, std::size_t red,
                       std::uint8_t* out) const;

    bool has_matrix_;
    std::array<std::array<float, 3>, 3> matrix_{};
    std::vector<float> light_;          ///< by sample
    std::vector<std::uint8_t> levels_;  ///< sRGB by sample, for greys and if there is no matrix
    std::vector<std::uint8_t> encode_;  ///< sRGB by light, in equal steps
};
