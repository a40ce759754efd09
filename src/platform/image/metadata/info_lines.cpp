// Joins the user's texts into one comment.
#include "src/platform/image/metadata/info_lines.h"

#include <utility>

std::string InfoLines(const ImageInfoTexts& texts)
{
    const std::pair<const char*, const std::string&> lines[] = {
        {"Title: ", texts.sTitle},
        {"Description: ", texts.sDescription},
        {"Date: ", texts.sDateTime},
        {"Author: ", texts.sAuthor},
        {"Copyright: ", texts.sCopyright},
        {"Equipment type: ", texts.sEquipmentType},
        {"Equipment model: ", texts.sEquipmentModel},
    };
    std::string result;
    for (const auto& [name, text] : lines)
        if (!text.empty())
            result += (result.empty() ? "" : "\n") + (name + text);
    return result;
}
