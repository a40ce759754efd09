// Joins the process's arguments into the command text.
#include "src/entry/modCommandText.h"

#include <algorithm>
#include <string_view>

#include "src/base/text.h"

static bool bPathSwitch(std::string_view sText)
{
    return sText.size() == 2 && sText[0] == '/' && bContains("STLBJ", sText.substr(1));
}

// Marks the "/" from nBegin on as part of a path.
static void ProtectSlashes(std::string& sArgument, std::size_t nBegin)
{
    std::replace(sArgument.begin() + static_cast<std::ptrdiff_t>(nBegin), sArgument.end(), '/', kSlashOfPath);
}

std::string sCommandText(const std::vector<std::string>& aArguments)
{
    if (aArguments.size() == 1)
        return aArguments[0];
    std::vector<std::string> aResult = aArguments;
    for (std::size_t i = 0; i < aResult.size(); ++i) {
        if (i > 0 && bPathSwitch(aArguments[i - 1]))
            ProtectSlashes(aResult[i], 0);
        else if (bPathSwitch(std::string_view(aResult[i]).substr(0, 2)))
            ProtectSlashes(aResult[i], 2);
    }
    return sJoin(aResult, " ");
}

std::string sWithSlashes(const std::string& sText)
{
    std::string sResult = sText;
    std::replace(sResult.begin(), sResult.end(), kSlashOfPath, '/');
    return sResult;
}
