// The table of the special processes.
#include "src/specialprocess/modSpecialProcessCatalogue.h"

#include <algorithm>

static constexpr SpecialProcessRow kCatalogue[] = {
    {SP_LAUNCH, "SP_LAUNCH", "(*.*) Launch (Run) a program", "Launches a program or batch file."},
    {SP_TRANSFORM_RESIZE, "SP_TRANSFORM_RESIZE", "Transform: Resize Image",
     "Resizes an image. Decreases or magnifies image size using various interpolation methods.",
     "100^100^0^0^FALSE"},
    // The background of a rotation is missing on purpose: it is read as 0.
    {SP_TRANSFORM_ROTATE, "SP_TRANSFORM_ROTATE", "Transform: Rotate Image", "Rotates an image.", "90"},
    {SP_AUTOCROP, "SP_AUTOCROP", "Transform: Autocrop",
     "Removes borders of the same color around the image."},
    {SP_FLIP, "SP_FLIP", "Transform: Flip", "Flips an image either vertically or horizontally.", "0"},
    {SP_SHIFT, "SP_SHIFT", "Transform: Shift", "Moves an image as specified in the X and Y directions.",
     "0^0^0"},
    {SP_PERSPECTIVE, "SP_PERSPECTIVE", "Transform: Perspective",
     "Transform the oblique plane of a rectangular image to a straight on view.", "FALSE^45"},
    {SP_SKEW, "SP_SKEW", "Transform: Skew", "Move one border relative to the opposite one.", "FALSE^45"},
    {SP_TWIRL, "SP_TWIRL", "Transform: Twirl", "Rotates the image more at the center than at the edges.",
     "50"},
    {SP_REPRODUCE, "SP_REPRODUCE", "Transform: Reproduce",
     "Creates multiple copies of the original image along vertical and horizontal axis.", "2"},
    {SP_AUTOCONTRAST, "SP_AUTOCONTRAST", "Color: Autocontrast",
     "Adjusts the overall contrast and mixture of colors within an image."},
    {SP_AUTOLEVEL, "SP_AUTOLEVEL", "Color: Auto-level",
     "Defines the lightest and darkest pixels in each color channel as white and black and then "
     "redistributes intermediate pixel values proportionately."},
    {SP_BALANCEHLS, "SP_BALANCEHLS", "Color: Hue, lightness, saturation",
     "Adjusts the hue, lightness and saturation of an image.", "0^0^0"},
    {SP_BLUE, "SP_BLUE", "Color: Blue", "Adjusts the color level.", "128"},
    {SP_BRIGHTNESS, "SP_BRIGHTNESS", "Color: Brightness", "Modify image brightness", "40"},
    {SP_COLORIZE, "SP_COLORIZE", "Color: Red, Green, Blue (lightness)",
     "Adjusts the lightness of each color component.", "255^255^255"},
    {SP_CONTRAST, "SP_CONTRAST", "Color: Contrast", "Modify overall contrast and color mixture.", "0.75"},
    {SP_DESATURATE, "SP_DESATURATE", "Color: Desaturate",
     "The method converts a color image to a grayscale image replacing each pixel with its lightness value "
     "in Hue-Lightness-Saturation presentation."},
    {SP_EQUALIZE, "SP_EQUALIZE", "Color: Equalize",
     "Redistributes the brightness values of the pixels so they more evenly represent the entire range of "
     "brightness levels.",
     "0.5"},
    {SP_GAMMA, "SP_GAMMA", "Color: Gamma",
     "Change gamma. Higher gamma settings show darker images, lower gamma settings show lighter images.",
     "0.5"},
    {SP_GREEN, "SP_GREEN", "Color: Green", "Adjusts the color level.", "128"},
    {SP_HUE, "SP_HUE", "Color: Hue", "Change hue.", "0.0"},
    {SP_INTENSITY, "SP_INTENSITY", "Color: Intensity",
     "Transform a color image to a grayscale image replacing each pixel with its intensity value."},
    {SP_INVERT, "SP_INVERT", "Color: Invert", "Invert image."},
    {SP_LIGHTNESS, "SP_LIGHTNESS", "Color: Lightness", "Change lightness", "0.2"},
    {SP_POSTERIZE, "SP_POSTERIZE", "Color: Tonal Levels",
     "Specify the number of tonal levels for each channel in an image and then maps pixels to the closest "
     "matching level.",
     "5"},
    {SP_RED, "SP_RED", "Color: Red", "Adjusts the color level.", "128"},
    {SP_SATURATION, "SP_SATURATION", "Color: Saturation", "Change the saturation.", "0"},
    {SP_THRESHOLD, "SP_THRESHOLD", "Color: Threshold",
     "Converts color or grayscale images to high contrast, black and white.", "100"},
    {SP_ADDNOISE, "SP_ADDNOISE", "Effect: Add Noise", "Random pixels are added.", "FALSE^35"},
    {SP_DIFFUSE, "SP_DIFFUSE", "Effect: Diffuse", "Blurs image by shuffling pixels.", "10^10"},
    {SP_DILATION, "SP_DILATION", "Effect: Dilation", "Dilation effect.", "FALSE^100^100"},
    {SP_EMBOSS, "SP_EMBOSS", "Effect: Emboss", "Embossing effect.", "0^10^1"},
    {SP_EROSION, "SP_EROSION", "Effect: Erosion", "Erosion effect.", "FALSE^40^40"},
    {SP_GAUSSIANBLUR, "SP_GAUSSIANBLUR", "Effect: Gaussian Blurr", "Apply Gaussian blur.", "1"},
    {SP_HALFTONES, "SP_HALFTONES", "Effect: Half tones", "Apply halftoning", "1^1"},
    {SP_MOSAIC, "SP_MOSAIC", "Effect: Mosaic", "Mosaic effect.", "FALSE^6"},
    {SP_MOTIONBLUR, "SP_MOTIONBLUR", "Effect: Motion Blur", "Motion Blur effect.", "0^10"},
    {SP_RADIALBLUR, "SP_RADIALBLUR", "Effect: Radial Blur", "Radial Blur effect.", "50"},
    {SP_RELIEF, "SP_RELIEF", "Effect: Relief", "Embossing effect.", "0^4^10"},
    {SP_TEXTURIZE, "SP_TEXTURIZE", "Effect: Texturize", "Textured embossing effect.", "10^5^0"},
    {SP_TRACECONTOURS, "SP_TRACECONTOURS", "Effect: Trace Contours", "Trace Contours effect.",
     "FALSE^100^100"},
    {SP_ZOOMBLUR, "SP_ZOOMBLUR", "Effect: Zoom Blur", "Zoom blur effect.", "50"},
    {SP_FILTERHIGHPASS, "SP_FILTERHIGHPASS", "Filter: High pass", "Apply high pass filter."},
    {SP_FILTERLOWPASS, "SP_FILTERLOWPASS", "Filter: Low Pass", "Apply low pass filter."},
    {SP_FILTERDIFFERENCE, "SP_FILTERDIFFERENCE", "Filter: Difference", "Apply difference filter."},
    {SP_FILTERLAPLAS, "SP_FILTERLAPLAS", "Filter: Laplas", "Apply Laplas filter."},
    {SP_FILTERSOBEL, "SP_FILTERSOBEL", "Filter: Sobel", "Apply Sobel filter"},
    {SP_FILTERPREWITT, "SP_FILTERPREWITT", "Filter: Prewitt", "Apply Prewitt filter"},
    {SP_FILTERROBERTS, "SP_FILTERROBERTS", "Filter: Roberts", "Apply Prewitt filter"},
    {SP_FILTERISOTROPIC, "SP_FILTERISOTROPIC", "Filter: Isotropic", "Apply Isotropic filter"},
    {SP_FILTERLINEDETECTION, "SP_FILTERLINEDETECTION", "Filter: Line Detection",
     "Apply directional line filter"},
    {SP_FILTERBLUR, "SP_FILTERBLUR", "Filter: Blur", "Apply blur filter."},
    {SP_FILTERSHARPEN, "SP_FILTERSHARPEN", "Filter: Sharpen", "Apply sharpen filter."},
    {SP_FILTERRESERVED56, "SP_FILTERRESERVED56", nullptr, nullptr},
    {SP_FILTERMINIMAL, "SP_FILTERMINIMAL", "Filter: Minimal",
     "Apply minimal filter. Increases sizes of zones with minimal colors brightness.", "2"},
    {SP_FILTERMAXIMAL, "SP_FILTERMAXIMAL", "Filter: Maximal",
     "Apply maximal filter. Increases sizes of zones with maximal colors brightness.", "2"},
    {SP_DEINTERLACE, "SP_DEINTERLACE", "Filter: Deinterlace",
     "Removes video interlacing artifacts by interpolating or duplicating even/odd lines."},
};

std::span<const SpecialProcessRow> SpecialProcessCatalogue()
{
    return kCatalogue;
}

const SpecialProcessRow* pSpecialProcess(std::int32_t lSpecialProcess)
{
    const auto itFound = std::find_if(
        std::begin(kCatalogue), std::end(kCatalogue),
        [&](const SpecialProcessRow& objRow) { return objRow.lSpecialProcess == lSpecialProcess; });
    return itFound == std::end(kCatalogue) ? nullptr : itFound;
}

std::string sDetailsKey(const SpecialProcessRow& objRow)
{
    return std::string("sSP_Details_") + objRow.sConstant;
}
