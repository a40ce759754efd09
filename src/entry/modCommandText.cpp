// Joins the process's arguments into the command text.
#include "src/entry/modCommandText.h"

#include <algorithm>
#include <string_view>

#include "src/base/text.h"

static constexpr std::string_view kSwitchesWithPath = "STLBJ";
static constexpr std::string_view kSwitchesWithValue = "SFTCLBJP0123456789abcdefghij";
static constexpr std::string_view kSwitches = "SFTCLBJP0123456789abcdefghijVZRGO?";

static bool bStartsWithSwitch(std::string_view sText, std::string_view sLetters)
{
    return sText.size() >= 2 && sText[0] == '/' && bContains(sLetters, sText.substr(1, 1));
}

static bool bIsSwitch(std::string_view sText, std::string_view sLetters)
{
    return sText.size() == 2 && bStartsWithSwitch(sText, sLetters);
}

static void ProtectSlashes(std::string& sArgument, std::size_t nBegin, std::size_t nEnd)
{
    const auto itText = sArgument.begin();
    std::replace(itText + static_cast<std::ptrdiff_t>(nBegin), itText + static_cast<std::ptrdiff_t>(nEnd),
                 '/', kSlashOfPath);
}

// Where a path ends that shares its argument with switches: before a blank, a slash and a switch's letter.
static std::size_t nEndOfPath(std::string_view sArgument, std::size_t nBegin)
{
    for (std::size_t n = sArgument.find(' ', nBegin); n != std::string_view::npos;
         n = sArgument.find(' ', n + 1))
        if (bStartsWithSwitch(sArgument.substr(n + 1), kSwitches))
            return n;
    return sArgument.size();
}

// Protects the path that follows a switch in the same argument.
static void ProtectPathAfterSwitch(std::string& sArgument)
{
    const std::size_t nPath = sArgument.find_first_not_of(' ', 2);
    if (nPath == std::string::npos)
        return;
    // "/T /R": another switch instead of a path.
    const std::string_view sFirst =
        std::string_view(sArgument).substr(nPath, sArgument.find(' ', nPath) - nPath);
    if (!bIsSwitch(sFirst, kSwitches))
        ProtectSlashes(sArgument, nPath, nEndOfPath(sArgument, nPath));
}

std::string sCommandText(const std::vector<std::string>& aArguments)
{
    std::vector<std::string> aResult = aArguments;
    const bool bWholeLine = aArguments.size() == 1;
    for (std::size_t i = 0; i < aResult.size(); ++i) {
        std::string& sArgument = aResult[i];
        if (bIsSwitch(sArgument, kSwitches))
            continue;
        if (i > 0 && bIsSwitch(aArguments[i - 1], kSwitchesWithValue))
            ProtectSlashes(sArgument, 0, sArgument.size());
        else if (bStartsWithSwitch(sArgument, kSwitchesWithPath) && !(bWholeLine && sArgument[2] == ' '))
            ProtectPathAfterSwitch(sArgument);
    }
    return sJoin(aResult, " ");
}

std::string sWithSlashes(const std::string& sText)
{
    std::string sResult = sText;
    std::replace(sResult.begin(), sResult.end(), kSlashOfPath, '/');
    return sResult;
}
