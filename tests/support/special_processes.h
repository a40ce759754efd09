// Numbers of special processes, by the names that the settings give them.
// Room: tests/support.
#pragma once

#include <cstdint>

enum : std::int32_t {
    SP_TRANSFORM_ROTATE = 3,
    SP_FLIP = 5,
    SP_SHIFT = 6,
    SP_SKEW = 8,
    SP_BALANCEHLS = 13,
    SP_COLORIZE = 16,
    SP_CONTRAST = 17,
    SP_GAMMA = 20,
    SP_INVERT = 24,
    SP_ADDNOISE = 31,
    SP_DILATION = 33,
    SP_EMBOSS = 34,
    SP_GAUSSIANBLUR = 36,
    SP_MOSAIC = 38,
    SP_MOTIONBLUR = 39,
    SP_RELIEF = 41,
    SP_TEXTURIZE = 42,
    SP_ZOOMBLUR = 44,
    SP_FILTERSOBEL = 49,
    SP_FILTERBLUR = 54,
    SP_DEINTERLACE = 60,
};
