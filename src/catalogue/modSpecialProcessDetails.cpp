// Formats and parses special process details.
#include "src/catalogue/modSpecialProcessDetails.h"

#include <cmath>
#include <functional>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"

constexpr std::size_t kPrefixFields = 11;

static DetailsValue objFresh(FieldType eType)
{
    switch (eType) {
        case FieldType::Double:
        case FieldType::LongReadAsDouble:
            return 0.0;
        case FieldType::Boolean:
        case FieldType::CapitalBoolean:
            return false;
        default:
            return std::int32_t{0};
    }
}

DetailsValues aFreshValues(const SpecialProcessRow& objRow)
{
    DetailsValues aValues;
    for (const SpecialProcessParameter& objParameter : objRow.aParameters)
        aValues.push_back(objFresh(objParameter.eType));
    return aValues;
}

static std::string sField(FieldType eType, const DetailsValue& objValue, char cDecimalSign)
{
    switch (eType) {
        case FieldType::Double:
            return sFromDouble(std::get<double>(objValue), cDecimalSign);
        case FieldType::LongReadAsDouble:
            return sFromDouble(std::nearbyint(std::get<double>(objValue)), cDecimalSign);
        case FieldType::Boolean:
            return std::get<bool>(objValue) ? "True" : "False";
        case FieldType::CapitalBoolean:
            return std::get<bool>(objValue) ? "TRUE" : "FALSE";
        default:
            return std::to_string(std::get<std::int32_t>(objValue));
    }
}

std::string WriteDetails(const SpecialProcessRow& objRow, const std::string& sPrefix,
                         const DetailsValues& aValues, char cDecimalSign)
{
    std::string sDetails = sPrefix;
    for (std::size_t i = 0; i < objRow.aParameters.size(); ++i)
        sDetails += sField(objRow.aParameters[i].eType, aValues[i], cDecimalSign) + "^";
    return sDetails;
}

// Parses a field; raises an error if the text doesn't convert.
static DetailsValue objRead(FieldType eType, const std::string& sText, char cDecimalSign)
{
    switch (eType) {
        case FieldType::Double:
        case FieldType::LongReadAsDouble:
            return dToDouble(sText, cDecimalSign);
        case FieldType::Boolean:
            return bToBoolean(sText, cDecimalSign);
        case FieldType::CapitalBoolean:
            return !sText.empty() && bToBoolean(sText, cDecimalSign);
        default:
            return lToLong(sText, cDecimalSign);
    }
}

// Swallows a conversion error, so that the field keeps its value.
static void AssignOrKeep(const std::function<void()>& fnAssign)
{
    try {
        fnAssign();
    } catch (const clsRaisedError&) {
    }
}

void ReadDetails(const SpecialProcessRow& objRow, const std::string& sDetails, std::string& sPrefix,
                 DetailsValues& aValues, char cDecimalSign)
{
    const std::vector<std::string> aFields = aSplit(sDetails, '^');
    if (aFields.size() < 2)
        return;
    sPrefix.clear();
    for (std::size_t i = 0; i < kPrefixFields && i < aFields.size(); ++i)
        sPrefix += aFields[i] + "^";
    for (std::size_t i = 0; i < objRow.aParameters.size(); ++i) {
        const FieldType eType = objRow.aParameters[i].eType;
        const bool bThere = kPrefixFields + i < aFields.size();
        if (bThere || eType == FieldType::CapitalBoolean)
            AssignOrKeep(
                [&] { aValues[i] = objRead(eType, bThere ? aFields[kPrefixFields + i] : "", cDecimalSign); });
    }
}

std::string WriteLaunchDetails(const LaunchDetails& objDetails)
{
    return std::to_string(objDetails.lPriority) + "^" + std::to_string(objDetails.lWindowState) + "^" +
           std::to_string(objDetails.lWaitSeconds);
}

LaunchDetails ReadLaunchDetails(const std::string& sDetails, char cDecimalSign)
{
    LaunchDetails objDetails;
    const std::vector<std::string> aFields = aSplit(sDetails, '^');
    if (aFields.size() < 2)
        return objDetails;
    std::int32_t* const aTargets[] = {&objDetails.lPriority, &objDetails.lWindowState,
                                      &objDetails.lWaitSeconds};
    for (std::size_t i = 0; i < std::size(aTargets) && i < aFields.size(); ++i)
        AssignOrKeep([&] { *aTargets[i] = lToLong(aFields[i], cDecimalSign); });
    return objDetails;
}
