// Parses the details of a conversion.
#include "src/conversion/modConversionDetails.h"

#include <functional>
#include <vector>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/platform/locale.h"

// Swallows a conversion error, so that the field keeps its value.
static void AssignOrKeep(const std::function<void()>& fnAssign)
{
    try {
        fnAssign();
    } catch (const clsRaisedError&) {
    }
}

ConversionDetails SplitImageConversionOptions(Application& app, const std::string& sExtraParams)
{
    ConversionDetails objDetails;
    const std::vector<std::string> aFields = aSplit(sExtraParams, '^');
    if (aFields.size() < 2)
        return objDetails;
    const char cDecimalSign = app.svc.objLocale.cDecimalSign();
    objDetails.sPagesToDo = aFields[0];
    AssignOrKeep([&] { app.frmMain.lTIFFCompression = lToLong(aFields[1], cDecimalSign); });
    if (aFields.size() > 2 && !aFields[2].empty())
        AssignOrKeep([&] { objDetails.bAppendToTiff = bToBoolean(aFields[2], cDecimalSign); });
    if (aFields.size() > 3 && !bIsNumeric(aFields[3], cDecimalSign))
        app.frmMain.lJPEGQuality = 100;
    else if (aFields.size() > 3)
        AssignOrKeep([&] { app.frmMain.lJPEGQuality = lToLong(aFields[3], cDecimalSign); });
    std::string* const aTexts[] = {&objDetails.objTexts.sTitle,        &objDetails.objTexts.sDescription,
                                   &objDetails.objTexts.sDateTime,     &objDetails.objTexts.sAuthor,
                                   &objDetails.objTexts.sCopyright,    &objDetails.objTexts.sEquipmentModel,
                                   &objDetails.objTexts.sEquipmentType};
    for (std::size_t i = 0; i < std::size(aTexts) && i + 4 < aFields.size(); ++i)
        *aTexts[i] = aFields[i + 4];
    return objDetails;
}
