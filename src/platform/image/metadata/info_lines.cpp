// Joins the texts of a save into the lines of a comment.
#include "src/platform/image/metadata/info_lines.h"

#include <utility>

std::string sInfoLines(const ImageInfoTexts& objTexts)
{
    const std::pair<const char*, const std::string&> aLines[] = {
        {"Title: ", objTexts.sTitle},
        {"Description: ", objTexts.sDescription},
        {"Date: ", objTexts.sDateTime},
        {"Author: ", objTexts.sAuthor},
        {"Copyright: ", objTexts.sCopyright},
        {"Equipment type: ", objTexts.sEquipmentType},
        {"Equipment model: ", objTexts.sEquipmentModel},
    };
    std::string sLines;
    for (const auto& [sName, sText] : aLines)
        if (!sText.empty())
            sLines += (sLines.empty() ? "" : "\n") + (sName + sText);
    return sLines;
}
