// Puts the line together.
#include "src/viewer/modViewerText.h"

#include "src/translator/modTranslator.h"

static std::string sNumber(Application& app, const std::string& sName, std::int32_t lNumber)
{
    return sTranslate(app, sName) + ": [" + std::to_string(lNumber) + "]";
}

std::string sViewerText(Application& app, std::int32_t lFrames, std::int32_t lFrame, std::int32_t lWidth,
                        std::int32_t lHeight)
{
    std::string sText;
    if (lFrames >= 2)
        sText =
            sNumber(app, "Total frames", lFrames) + ", " + sNumber(app, "Current frame", lFrame + 1) + ", ";
    return sText + sNumber(app, "Image Width", lWidth) + ", " + sNumber(app, "Image Height", lHeight);
}
