// The special processes: their numbers, which are fixed for ever since job files carry them, and what each
// one is. Room: sp_catalogue. May use: base, platform, forms.
#pragma once

#include <cstdint>
#include <span>
#include <string>

enum SpecialProcess : std::int32_t {
    SP_TRANSFORM_RESIZE = 2,
    SP_TRANSFORM_ROTATE = 3,
    SP_AUTOCROP = 4,
    SP_FLIP = 5,
    SP_SHIFT = 6,
    SP_PERSPECTIVE = 7,
    SP_SKEW = 8,
    SP_TWIRL = 9,
    SP_REPRODUCE = 10,
    SP_AUTOCONTRAST = 11,
    SP_AUTOLEVEL = 12,
    SP_BALANCEHLS = 13,
    SP_BLUE = 14,
    SP_BRIGHTNESS = 15,
    SP_COLORIZE = 16,
    SP_CONTRAST = 17,
    SP_DESATURATE = 18,
    SP_EQUALIZE = 19,
    SP_GAMMA = 20,
    SP_GREEN = 21,
    SP_HUE = 22,
    SP_INTENSITY = 23,
    SP_INVERT = 24,
    SP_LIGHTNESS = 25,
    SP_POSTERIZE = 26,
    SP_RED = 27,
    SP_SATURATION = 28,
    SP_THRESHOLD = 29,
    SP_ADDNOISE = 31,
    SP_DIFFUSE = 32,
    SP_DILATION = 33,
    SP_EMBOSS = 34,
    SP_EROSION = 35,
    SP_GAUSSIANBLUR = 36,
    SP_HALFTONES = 37,
    SP_MOSAIC = 38,
    SP_MOTIONBLUR = 39,
    SP_RADIALBLUR = 40,
    SP_RELIEF = 41,
    SP_TEXTURIZE = 42,
    SP_TRACECONTOURS = 43,
    SP_ZOOMBLUR = 44,
    SP_FILTERHIGHPASS = 45,
    SP_FILTERLOWPASS = 46,
    SP_FILTERDIFFERENCE = 47,
    SP_FILTERLAPLAS = 48,
    SP_FILTERSOBEL = 49,
    SP_FILTERPREWITT = 50,
    SP_FILTERROBERTS = 51,
    SP_FILTERISOTROPIC = 52,
    SP_FILTERLINEDETECTION = 53,
    SP_FILTERBLUR = 54,
    SP_FILTERSHARPEN = 55,
    SP_FILTERRESERVED56 = 56,  ///< no list offers it; a job file or a command line may name it
    SP_FILTERMINIMAL = 58,
    SP_FILTERMAXIMAL = 59,
    SP_DEINTERLACE = 60,
    SP_LAUNCH = 100,
};

/// One special process.
struct SpecialProcessRow {
    std::int32_t lSpecialProcess;
    const char* sConstant;  ///< its name, part of the key under which the settings keep its details
    /// The English texts of the list and of the panel, misspellings included: they are keys of the
    /// translation. Null for the one process that the list doesn't offer.
    const char* sLabel;
    const char* sDescription;
    /// Its own details fields on a first start, without a closing "^"; null where the settings keep none.
    const char* sFirstStartDetails = nullptr;
};

/// All of them in the order of the list: the launch first, though its number is the highest. The numbers 1,
/// 30, 57 and 61 to 99 are no processes.
std::span<const SpecialProcessRow> SpecialProcessCatalogue();

/// The row of a number; null for one that is no process.
const SpecialProcessRow* pSpecialProcess(std::int32_t lSpecialProcess);

/// The key of section "frmMain" under which the settings keep the details last used.
std::string sDetailsKey(const SpecialProcessRow& objRow);
