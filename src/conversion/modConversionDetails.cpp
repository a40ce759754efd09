// Splits and joins the options of a conversion.
#include "src/conversion/modConversionDetails.h"

#include <functional>
#include <vector>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/platform/locale.h"

constexpr std::int32_t kQualityIfNotNumeric = 100;

// Swallows a conversion error, so that the field keeps its value.
static void AssignOrKeep(const std::function<void()>& fnAssign)
{
    try {
        fnAssign();
    } catch (const clsRaisedError&) {
    }
}

void SplitImageConversionOptions(const std::string& sOptions, char cDecimalSign,
                                 ConversionDetails& objDetails)
{
    const std::vector<std::string> aFields = aSplit(sOptions, '^');
    if (aFields.size() < 2)
        return;
    objDetails.sPagesToDo = aFields[0];
    AssignOrKeep([&] { objDetails.lCompression = lToLong(aFields[1], cDecimalSign); });
    if (aFields.size() > 2) {
        const std::string sAppend = aFields[2].empty() ? "FALSE" : aFields[2];
        AssignOrKeep([&] { objDetails.bAppendToTiff = bToBoolean(sAppend, cDecimalSign); });
    }
    const std::string sQuality = aFields.size() > 3 ? aFields[3] : "";
    if (bIsNumeric(sQuality, cDecimalSign))
        AssignOrKeep([&] { objDetails.lQuality = lToLong(sQuality, cDecimalSign); });
    else
        objDetails.lQuality = kQualityIfNotNumeric;
    std::string* const aTexts[] = {&objDetails.objTexts.sTitle,        &objDetails.objTexts.sDescription,
                                   &objDetails.objTexts.sDateTime,     &objDetails.objTexts.sAuthor,
                                   &objDetails.objTexts.sCopyright,    &objDetails.objTexts.sEquipmentModel,
                                   &objDetails.objTexts.sEquipmentType};
    for (std::size_t i = 0; i < std::size(aTexts) && i + 4 < aFields.size(); ++i)
        *aTexts[i] = aFields[i + 4];
}

std::string sJoinImageConversionOptions(const ConversionDetails& objDetails)
{
    const ImageInfoTexts& objTexts = objDetails.objTexts;
    const std::string aFields[] = {objDetails.sPagesToDo,
                                   std::to_string(objDetails.lCompression),
                                   objDetails.bAppendToTiff ? "TRUE" : "FALSE",
                                   std::to_string(objDetails.lQuality),
                                   objTexts.sTitle,
                                   objTexts.sDescription,
                                   objTexts.sDateTime,
                                   objTexts.sAuthor,
                                   objTexts.sCopyright,
                                   objTexts.sEquipmentModel,
                                   objTexts.sEquipmentType};
    std::string sOptions;
    for (const std::string& sField : aFields)
        sOptions += sField + "^";
    return sOptions;
}

ConversionDetails SplitImageConversionOptions(Application& app, const std::string& sExtraParams)
{
    ConversionDetails objDetails;
    objDetails.lCompression = app.frmMain.lTIFFCompression;
    objDetails.lQuality = app.frmMain.lJPEGQuality;
    SplitImageConversionOptions(sExtraParams, app.svc.objLocale.cDecimalSign(), objDetails);
    app.frmMain.lTIFFCompression = objDetails.lCompression;
    app.frmMain.lJPEGQuality = objDetails.lQuality;
    return objDetails;
}
