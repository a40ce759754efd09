// All texts of the catalogue, misspellings included: users know them and translations use them as keys.
#include <gtest/gtest.h>

#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"

namespace
{

struct Texts {
    std::int32_t lSpecialProcess;
    const char* sConstant;
    const char* sLabel;
    const char* sDescription;
    const char* sInputs;   ///< input labels in order, "" for a colour, joined by "|"
    const char* sChoices;  ///< entries of its list, from 0, joined by "|"
};

const Texts kTexts[] = {
    {100, "SP_LAUNCH", "(*.*) Launch (Run) a program", "Launches a program or batch file.", "", ""},
    {2, "SP_TRANSFORM_RESIZE", "Transform: Resize Image",
     "Resizes an image. Decreases or magnifies image size using various interpolation methods.",
     "(pixels) Width of image|(pixels) Height of image|Method of interpolation of pixel color||Retain Aspect "
     "Ratio",
     "None|bilinear|bicubic"},
    {3, "SP_TRANSFORM_ROTATE", "Transform: Rotate Image", "Rotates an image.",
     "(degrees) Angle of rotation [-360.0 to +360.0]|", ""},
    {4, "SP_AUTOCROP", "Transform: Autocrop", "Removes borders of the same color around the image.", "", ""},
    {5, "SP_FLIP", "Transform: Flip", "Flips an image either vertically or horizontally.",
     "Specify a flip direction", "Horizontal|Vertical"},
    {6, "SP_SHIFT", "Transform: Shift", "Moves an image as specified in the X and Y directions.",
     "(pixels) Horizontal offset|(pixels) Vertical offset|", ""},
    {7, "SP_PERSPECTIVE", "Transform: Perspective",
     "Transform the oblique plane of a rectangular image to a straight on view.",
     "Specify a correction direction|(degrees) Pitch angle [-90.0 to +90.0]", "Horizontal|Vertical"},
    {8, "SP_SKEW", "Transform: Skew", "Move one border relative to the opposite one.",
     "Specify a correction direction|(degrees) Pitch angle [-90.0 to +90.0]", "Horizontal|Vertical"},
    {9, "SP_TWIRL", "Transform: Twirl", "Rotates the image more at the center than at the edges.",
     "(degrees) Pitch angle [-360.0 to +360.0]", ""},
    {10, "SP_REPRODUCE", "Transform: Reproduce",
     "Creates multiple copies of the original image along vertical and horizontal axis.",
     "Number of copies [1 to 32]", ""},
    {11, "SP_AUTOCONTRAST", "Color: Autocontrast",
     "Adjusts the overall contrast and mixture of colors within an image.", "", ""},
    {12, "SP_AUTOLEVEL", "Color: Auto-level",
     "Defines the lightest and darkest pixels in each color channel as white and black and then "
     "redistributes intermediate pixel values proportionately.",
     "", ""},
    {13, "SP_BALANCEHLS", "Color: Hue, lightness, saturation",
     "Adjusts the hue, lightness and saturation of an image.",
     "Hue, color rotation [-360.0 to 360.0]|Lightness [-1.0 to 1.0]|Saturation [-1.0 to 1.0]", ""},
    {14, "SP_BLUE", "Color: Blue", "Adjusts the color level.", "Adjust color level [-255 to 255]", ""},
    {15, "SP_BRIGHTNESS", "Color: Brightness", "Modify image brightness",
     "Adjust brightness level [-255 to 255]", ""},
    {16, "SP_COLORIZE", "Color: Red, Green, Blue (lightness)",
     "Adjusts the lightness of each color component.", "Red [0 to 255]|Green [0 to 255]|Blue [0 to 255]", ""},
    {17, "SP_CONTRAST", "Color: Contrast", "Modify overall contrast and color mixture.",
     "Coefficient of Color Stretch [0.0 to 1.0]", ""},
    {18, "SP_DESATURATE", "Color: Desaturate",
     "The method converts a color image to a grayscale image replacing each pixel with its lightness value "
     "in Hue-Lightness-Saturation presentation.",
     "", ""},
    {19, "SP_EQUALIZE", "Color: Equalize",
     "Redistributes the brightness values of the pixels so they more evenly represent the entire range of "
     "brightness levels.",
     "Brightness level [Must be >= 0.0]", ""},
    {20, "SP_GAMMA", "Color: Gamma",
     "Change gamma. Higher gamma settings show darker images, lower gamma settings show lighter images.",
     "Gamma level. [Must be >= 0.0, 1.0 = No change]", ""},
    {21, "SP_GREEN", "Color: Green", "Adjusts the color level.", "Adjust color level [-255 to 255]", ""},
    {22, "SP_HUE", "Color: Hue", "Change hue.", "Hue. Angle of color rotation [-360.0 to +360.0]", ""},
    {23, "SP_INTENSITY", "Color: Intensity",
     "Transform a color image to a grayscale image replacing each pixel with its intensity value.", "", ""},
    {24, "SP_INVERT", "Color: Invert", "Invert image.", "", ""},
    {25, "SP_LIGHTNESS", "Color: Lightness", "Change lightness", "-1.0 (all black) to 1.0 (all white)", ""},
    {26, "SP_POSTERIZE", "Color: Tonal Levels",
     "Specify the number of tonal levels for each channel in an image and then maps pixels to the closest "
     "matching level.",
     "Number of Tonal Levels for each channel [2 to 255]", ""},
    {27, "SP_RED", "Color: Red", "Adjusts the color level.", "Adjust color level [-255 to 255]", ""},
    {28, "SP_SATURATION", "Color: Saturation", "Change the saturation.",
     "Saturation level. -1.0 (same as desaturate) to 1.0 (all pixels extremely saturated)", ""},
    {29, "SP_THRESHOLD", "Color: Threshold",
     "Converts color or grayscale images to high contrast, black and white.",
     "Threshold level [0 to 255].  All pixels greater than threshold are turned to white, less than to "
     "black",
     ""},
    {31, "SP_ADDNOISE", "Effect: Add Noise", "Random pixels are added.",
     "Type of noise to apply|Noise level [must be >= 0]", "Color|Black & White"},
    {32, "SP_DIFFUSE", "Effect: Diffuse", "Blurs image by shuffling pixels.",
     "Penetration. [>=0]|(pixels) Maximum displacement distance of diffusion [Must be >= 0]", ""},
    {33, "SP_DILATION", "Effect: Dilation", "Dilation effect.",
     "Square Color Dilation (unchecked means cross color dilation)|Color level to dilate [0 to "
     "255]|Threshold level [0 to 255]",
     ""},
    {34, "SP_EMBOSS", "Effect: Emboss", "Embossing effect.",
     "Angle [0.0 to 360.0]|Brightness adjustment [>0.0]|Height [0 to 16]", ""},
    {35, "SP_EROSION", "Effect: Erosion", "Erosion effect.",
     "Square Color Erosion (unchecked means cross color erosion)|Color level to erode [0 to 255]|Threshold "
     "level [0 to 255]",
     ""},
    {36, "SP_GAUSSIANBLUR", "Effect: Gaussian Blurr", "Apply Gaussian blur.", "Fuzziness [0 to 255]", ""},
    {37, "SP_HALFTONES", "Effect: Half tones", "Apply halftoning",
     "Contrasting level of the halftone pattern|Size of halftone cell [1 to 255]", ""},
    {38, "SP_MOSAIC", "Effect: Mosaic", "Mosaic effect.",
     "No color interpratation (Unchecked is more realistic)|(pixels) Tile size [>=1]", ""},
    {39, "SP_MOTIONBLUR", "Effect: Motion Blur", "Motion Blur effect.",
     "Angle [0.0 to 360.0]|Amount of intensity [2 to 255]", ""},
    {40, "SP_RADIALBLUR", "Effect: Radial Blur", "Radial Blur effect.",
     "(Percent) Displacement level [0.0 to 100.0]", ""},
    {41, "SP_RELIEF", "Effect: Relief", "Embossing effect.",
     "Angle [0.0 to 360.0]|Brightness [>=0.0]|Evening-out relief map value [0.0 to 16.0]", ""},
    {42, "SP_TEXTURIZE", "Effect: Texturize", "Textured embossing effect.",
     "(percent) Angle of light [0.0 to 360.0]|Brightness [>=0.0]|Type of embossing texture",
     "Normal density|Soft noise|Dense noise|Normal waves|Soft waves|Dense waves"},
    {43, "SP_TRACECONTOURS", "Effect: Trace Contours", "Trace Contours effect.",
     "Do intensity contours (unchecked means do color contours)|Level [0 to 255]|Threshold level [0 to 255]",
     ""},
    {44, "SP_ZOOMBLUR", "Effect: Zoom Blur", "Zoom blur effect.", "(percent) Blur intensity [0.0 to 100.0]",
     ""},
    {45, "SP_FILTERHIGHPASS", "Filter: High pass", "Apply high pass filter.", "High pass filter type",
     "Medium|Strong|Weak"},
    {46, "SP_FILTERLOWPASS", "Filter: Low Pass", "Apply low pass filter.", "Low pass filter type",
     "Strong|Medium|Weak"},
    {47, "SP_FILTERDIFFERENCE", "Filter: Difference", "Apply difference filter.", "Search direction",
     "Up|Up-Left|Left|Down-Left|Down|Down-Right|Right|Up-Right"},
    {48, "SP_FILTERLAPLAS", "Filter: Laplas", "Apply Laplas filter.", "Filter type..",
     "Laplas High|Laplas Low"},
    {49, "SP_FILTERSOBEL", "Filter: Sobel", "Apply Sobel filter", "Irregularity direction",
     "Vertical|Horizontal"},
    {50, "SP_FILTERPREWITT", "Filter: Prewitt", "Apply Prewitt filter", "Irregularity direction",
     "Vertical|Horizontal"},
    {51, "SP_FILTERROBERTS", "Filter: Roberts", "Apply Prewitt filter", "Irregularity direction",
     "1st diagonal|2nd diagonal"},
    {52, "SP_FILTERISOTROPIC", "Filter: Isotropic", "Apply Isotropic filter", "Irregularity direction",
     "Vertical|Horizontal"},
    {53, "SP_FILTERLINEDETECTION", "Filter: Line Detection", "Apply directional line filter",
     "Irregularity direction", "Vertical|Horizontal|1st diagonal|2nd diagonal"},
    {54, "SP_FILTERBLUR", "Filter: Blur", "Apply blur filter.", "[0.0 to +1.0]", ""},
    {55, "SP_FILTERSHARPEN", "Filter: Sharpen", "Apply sharpen filter.", "[0.0 to +1.0]", ""},
    {58, "SP_FILTERMINIMAL", "Filter: Minimal",
     "Apply minimal filter. Increases sizes of zones with minimal colors brightness.",
     "Size of the filtering [1 to 256]", ""},
    {59, "SP_FILTERMAXIMAL", "Filter: Maximal",
     "Apply maximal filter. Increases sizes of zones with maximal colors brightness.",
     "Size of the filtering [1 to 256]", ""},
    {60, "SP_DEINTERLACE", "Filter: Deinterlace",
     "Removes video interlacing artifacts by interpolating or duplicating even/odd lines.",
     "Select which lines to deinterlace|Interpolate Colors", "Even|Odd"},
};

}  // namespace

TEST(SpecialProcessTexts, AreUnchangedAndInThisOrder)
{
    const auto aRows = SpecialProcessCatalogue();
    std::size_t nRow = 0;
    for (const Texts& objExpected : kTexts) {
        if (aRows[nRow].lSpecialProcess == 56)
            ++nRow;  // not listed
        const SpecialProcessRow& objRow = aRows[nRow++];
        EXPECT_EQ(objRow.lSpecialProcess, objExpected.lSpecialProcess);
        EXPECT_STREQ(objRow.sConstant, objExpected.sConstant);
        EXPECT_STREQ(objRow.sLabel, objExpected.sLabel);
        EXPECT_STREQ(objRow.sDescription, objExpected.sDescription);
        std::vector<std::string> aInputs, aChoices;
        for (const SpecialProcessParameter& objParameter : objRow.aParameters)
            aInputs.emplace_back(objParameter.sLabel ? objParameter.sLabel : "");
        for (const char* sChoice : objRow.aChoices)
            aChoices.emplace_back(sChoice);
        EXPECT_EQ(sJoin(aInputs, "|"), objExpected.sInputs) << objExpected.sConstant;
        EXPECT_EQ(sJoin(aChoices, "|"), objExpected.sChoices) << objExpected.sConstant;
    }
    EXPECT_EQ(nRow, aRows.size());
}
