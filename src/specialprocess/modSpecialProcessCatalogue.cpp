// The table of the special processes.
#include "src/specialprocess/modSpecialProcessCatalogue.h"

#include <algorithm>

static constexpr SpecialProcessRow kCatalogue[] = {
    {SP_LAUNCH, "SP_LAUNCH"},
    {SP_TRANSFORM_RESIZE, "SP_TRANSFORM_RESIZE", "100^100^0^0^FALSE"},
    // The background of a rotation is missing on purpose: it is read as 0.
    {SP_TRANSFORM_ROTATE, "SP_TRANSFORM_ROTATE", "90"},
    {SP_AUTOCROP, "SP_AUTOCROP"},
    {SP_FLIP, "SP_FLIP", "0"},
    {SP_SHIFT, "SP_SHIFT", "0^0^0"},
    {SP_PERSPECTIVE, "SP_PERSPECTIVE", "FALSE^45"},
    {SP_SKEW, "SP_SKEW", "FALSE^45"},
    {SP_TWIRL, "SP_TWIRL", "50"},
    {SP_REPRODUCE, "SP_REPRODUCE", "2"},
    {SP_AUTOCONTRAST, "SP_AUTOCONTRAST"},
    {SP_AUTOLEVEL, "SP_AUTOLEVEL"},
    {SP_BALANCEHLS, "SP_BALANCEHLS", "0^0^0"},
    {SP_BLUE, "SP_BLUE", "128"},
    {SP_BRIGHTNESS, "SP_BRIGHTNESS", "40"},
    {SP_COLORIZE, "SP_COLORIZE", "255^255^255"},
    {SP_CONTRAST, "SP_CONTRAST", "0.75"},
    {SP_DESATURATE, "SP_DESATURATE"},
    {SP_EQUALIZE, "SP_EQUALIZE", "0.5"},
    {SP_GAMMA, "SP_GAMMA", "0.5"},
    {SP_GREEN, "SP_GREEN", "128"},
    {SP_HUE, "SP_HUE", "0.0"},
    {SP_INTENSITY, "SP_INTENSITY"},
    {SP_INVERT, "SP_INVERT"},
    {SP_LIGHTNESS, "SP_LIGHTNESS", "0.2"},
    {SP_POSTERIZE, "SP_POSTERIZE", "5"},
    {SP_RED, "SP_RED", "128"},
    {SP_SATURATION, "SP_SATURATION", "0"},
    {SP_THRESHOLD, "SP_THRESHOLD", "100"},
    {SP_ADDNOISE, "SP_ADDNOISE", "FALSE^35"},
    {SP_DIFFUSE, "SP_DIFFUSE", "10^10"},
    {SP_DILATION, "SP_DILATION", "FALSE^100^100"},
    {SP_EMBOSS, "SP_EMBOSS", "0^10^1"},
    {SP_EROSION, "SP_EROSION", "FALSE^40^40"},
    {SP_GAUSSIANBLUR, "SP_GAUSSIANBLUR", "1"},
    {SP_HALFTONES, "SP_HALFTONES", "1^1"},
    {SP_MOSAIC, "SP_MOSAIC", "FALSE^6"},
    {SP_MOTIONBLUR, "SP_MOTIONBLUR", "0^10"},
    {SP_RADIALBLUR, "SP_RADIALBLUR", "50"},
    {SP_RELIEF, "SP_RELIEF", "0^4^10"},
    {SP_TEXTURIZE, "SP_TEXTURIZE", "10^5^0"},
    {SP_TRACECONTOURS, "SP_TRACECONTOURS", "FALSE^100^100"},
    {SP_ZOOMBLUR, "SP_ZOOMBLUR", "50"},
    {SP_FILTERHIGHPASS, "SP_FILTERHIGHPASS"},
    {SP_FILTERLOWPASS, "SP_FILTERLOWPASS"},
    {SP_FILTERDIFFERENCE, "SP_FILTERDIFFERENCE"},
    {SP_FILTERLAPLAS, "SP_FILTERLAPLAS"},
    {SP_FILTERSOBEL, "SP_FILTERSOBEL"},
    {SP_FILTERPREWITT, "SP_FILTERPREWITT"},
    {SP_FILTERROBERTS, "SP_FILTERROBERTS"},
    {SP_FILTERISOTROPIC, "SP_FILTERISOTROPIC"},
    {SP_FILTERLINEDETECTION, "SP_FILTERLINEDETECTION"},
    {SP_FILTERBLUR, "SP_FILTERBLUR"},
    {SP_FILTERSHARPEN, "SP_FILTERSHARPEN"},
    {SP_FILTERRESERVED56, "SP_FILTERRESERVED56"},
    {SP_FILTERMINIMAL, "SP_FILTERMINIMAL", "2"},
    {SP_FILTERMAXIMAL, "SP_FILTERMAXIMAL", "2"},
    {SP_DEINTERLACE, "SP_DEINTERLACE"},
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
