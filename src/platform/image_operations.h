// The image library's operations: their names and parameters.
// Room: platform.
#pragma once

#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

/// A stored colour: its low byte is red, the next one green, the next one blue; the high byte is ignored.
using Colour = std::int32_t;

using OperationArgument = std::variant<std::int32_t, double, bool, std::uint8_t>;

/// An operation with its arguments, ready to be applied.
struct OperationCall {
    std::string_view sName;  ///< identifies the operation
    std::vector<OperationArgument> aArguments;
};

/// An operation that takes these arguments; calling it gives an OperationCall.
template <typename... Arguments>
struct Operation {
    const char* sName;

    OperationCall operator()(Arguments... vArguments) const { return {sName, {vArguments...}}; }
};

/// Every operation, once. To add one, add it here, bind its kernel in platform/image/transforms, and list it
/// in the catalogue.
///
/// Sizes are in pixels, angles in degrees. Any number may be passed for any argument: it is clamped to the
/// operation's range, and NaN changes nothing. The formulas are documented with the kernels.
namespace operations
{

using Long = std::int32_t;
using Byte = std::uint8_t;

inline constexpr Operation<> Autocontrast{"Autocontrast"};
inline constexpr Operation<> AutoLevel{"AutoLevel"};
inline constexpr Operation<Long> Brightness{"Brightness"};    ///< level -255 to 255
inline constexpr Operation<double> Contrast{"Contrast"};      ///< stretch 0.0 to 1.0
inline constexpr Operation<double> Gamma{"Gamma"};            ///< 1.0 no change, higher is darker
inline constexpr Operation<double> Hue{"Hue"};                ///< angle
inline constexpr Operation<double> Lightness{"Lightness"};    ///< -1.0 black to 1.0 white
inline constexpr Operation<double> Saturation{"Saturation"};  ///< -1.0 grey to 1.0 extreme
inline constexpr Operation<double, double, double> BalanceHLS{"BalanceHLS"};  ///< hue, lightness, saturation
inline constexpr Operation<Long> Red{"Red"};                                  ///< level -255 to 255
inline constexpr Operation<Long> Green{"Green"};                              ///< level -255 to 255
inline constexpr Operation<Long> Blue{"Blue"};                                ///< level -255 to 255
inline constexpr Operation<Byte, Byte, Byte> Colorize{"Colorize"};            ///< red, green, blue
inline constexpr Operation<> Desaturate{"Desaturate"};
inline constexpr Operation<> Intensity{"Intensity"};
inline constexpr Operation<> Invert{"Invert"};
inline constexpr Operation<double> Equalize{"Equalize"};  ///< 0.0 no change to 1.0 full
inline constexpr Operation<Byte> Threshold{"Threshold"};  ///< level
inline constexpr Operation<Long> Posterize{"Posterize"};  ///< levels, 2 to 255

inline constexpr Operation<Long> FilterDifference{"FilterDifference"};        ///< direction 0 to 7
inline constexpr Operation<Long> FilterHighPass{"FilterHighPass"};            ///< 0 medium, 1 strong, 2 weak
inline constexpr Operation<Long> FilterLowPass{"FilterLowPass"};              ///< 0 strong, 1 medium, 2 weak
inline constexpr Operation<Long> FilterLaplas{"FilterLaplas"};                ///< 0 high, 1 low
inline constexpr Operation<Long> FilterSobel{"FilterSobel"};                  ///< 0 vertical, 1 horizontal
inline constexpr Operation<Long> FilterPrewitt{"FilterPrewitt"};              ///< 0 vertical, 1 horizontal
inline constexpr Operation<Long> FilterRoberts{"FilterRoberts"};              ///< 0 first, 1 second diagonal
inline constexpr Operation<Long> FilterIsotropic{"FilterIsotropic"};          ///< 0 vertical, 1 horizontal
inline constexpr Operation<Long> FilterMinimal{"FilterMinimal"};              ///< size 1 to 256
inline constexpr Operation<Long> FilterMaximal{"FilterMaximal"};              ///< size 1 to 256
inline constexpr Operation<Long> FilterLineDetection{"FilterLineDetection"};  ///< as Sobel; 2, 3 diagonals
inline constexpr Operation<Long> FilterReserved{"FilterReserved"};            ///< changes nothing
inline constexpr Operation<double> FilterBlur{"FilterBlur"};                  ///< amount 0.0 to 1.0
inline constexpr Operation<double> FilterSharpen{"FilterSharpen"};            ///< amount 0.0 to 1.0
inline constexpr Operation<bool, bool> Deinterlace{"Deinterlace"};            ///< odd lines, interpolate

inline constexpr Operation<double, Long> MotionBlur{"MotionBlur"};    ///< angle, amount 2 to 255
inline constexpr Operation<Long> GaussianBlur{"GaussianBlur"};        ///< fuzziness 0 to 255
inline constexpr Operation<double> RadialBlur{"RadialBlur"};          ///< displacement in percent
inline constexpr Operation<double> ZoomBlur{"ZoomBlur"};              ///< intensity in percent
inline constexpr Operation<Long, bool> AddNoise{"AddNoise"};          ///< level, monochrome
inline constexpr Operation<Long, double> Diffuse{"Diffuse"};          ///< distance, penetration
inline constexpr Operation<double, Long, double> Emboss{"Emboss"};    ///< angle, height, brightness
inline constexpr Operation<double, double, double> Relief{"Relief"};  ///< angle, brightness, smoothness
inline constexpr Operation<double, double, Long> Texturize{
    "Texturize"};                                                   ///< angle, brightness, texture 0 to 5
inline constexpr Operation<Long, bool> Mosaic{"Mosaic"};            ///< tile size, plain colour
inline constexpr Operation<Byte, Byte, bool> Dilation{"Dilation"};  ///< level, threshold, square
inline constexpr Operation<Byte, Byte, bool> Erosion{"Erosion"};    ///< level, threshold, square
inline constexpr Operation<Byte, Byte, bool> TraceContours{"TraceContours"};  ///< level, threshold, intensity
inline constexpr Operation<Long, double> Halftones{"Halftones"};              ///< cell size, contrast

inline constexpr Operation<> Autocrop{"Autocrop"};
inline constexpr Operation<bool> Flip{"Flip"};                ///< True: top to bottom
inline constexpr Operation<double, Colour> Rotate{"Rotate"};  ///< angle clockwise, background
/// Width, height, interpolation (0 nearest, 1 bilinear, 2 bicubic), background.
inline constexpr Operation<Long, Long, Long, Colour> Resize{"Resize"};
inline constexpr Operation<Long, Long, Colour> Shift{"Shift"};        ///< right, down, background
inline constexpr Operation<bool, double> Perspective{"Perspective"};  ///< vertical, angle -90 to 90
inline constexpr Operation<bool, double> Skew{"Skew"};                ///< vertical, angle
inline constexpr Operation<double> Twirl{"Twirl"};                    ///< angle
inline constexpr Operation<Long> Reproduce{"Reproduce"};              ///< copies 1 to 32

}  // namespace operations
