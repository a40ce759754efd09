// Splits and joins paths.
#include "src/base/path_text.h"

#include "src/base/text.h"

static constexpr std::string_view kSeparators = "\\/";

// Length of the root, the part that has no parent: "C:\", "C:", "\" or "/".
static std::size_t nRootLength(std::string_view sPath)
{
    const bool bDrive = sPath.size() >= 2 && sPath[1] == ':';
    const std::size_t nName = bDrive ? 2 : 0;
    return sPath.size() > nName && bContains(kSeparators, sPath.substr(nName, 1)) ? nName + 1 : nName;
}

std::string_view sWithoutTrailingSeparators(std::string_view sPath)
{
    const std::size_t nRoot = nRootLength(sPath);
    while (sPath.size() > nRoot && bEndsInSeparator(sPath))
        sPath.remove_suffix(1);
    return sPath;
}

static std::string_view sLastComponent(std::string_view sPath)
{
    sPath = sWithoutTrailingSeparators(sPath);
    const std::size_t nLast = sPath.find_last_of(kSeparators);
    if (nLast != std::string_view::npos)
        return sPath.substr(nLast + 1);
    return sPath.substr(nRootLength(sPath));
}

char cSeparatorOf(std::string_view sPath)
{
    const std::size_t nLast = sPath.find_last_of(kSeparators);
    return nLast == std::string_view::npos ? '/' : sPath[nLast];
}

std::string sFolderOfPath(std::string_view sPath)
{
    const std::size_t nLast = sPath.find_last_of(kSeparators);
    return nLast == std::string_view::npos ? std::string() : std::string(sPath.substr(0, nLast + 1));
}

std::string sExtensionOfPath(std::string_view sPath)
{
    const std::size_t nPoint = sPath.rfind('.');
    return nPoint == std::string_view::npos ? std::string() : sTrim(sPath.substr(nPoint + 1));
}

std::string sGetParentFolderName(std::string_view sPath)
{
    sPath = sWithoutTrailingSeparators(sPath);
    const std::size_t nRoot = nRootLength(sPath);
    if (sPath.size() <= nRoot)
        return "";
    const std::size_t nLast = sPath.find_last_of(kSeparators);
    if (nLast == std::string_view::npos || nLast < nRoot)
        return std::string(sPath.substr(0, nRoot));
    return std::string(sWithoutTrailingSeparators(sPath.substr(0, nLast)));
}

std::string sGetBaseName(std::string_view sPath)
{
    const std::string_view sName = sLastComponent(sPath);
    return std::string(sName.substr(0, sName.rfind('.')));
}

std::string sGetExtensionName(std::string_view sPath)
{
    const std::string_view sName = sLastComponent(sPath);
    const std::size_t nPoint = sName.rfind('.');
    return nPoint == std::string_view::npos ? std::string() : std::string(sName.substr(nPoint + 1));
}

std::string sWithSeparator(std::string_view sFolder)
{
    std::string sResult(sFolder);
    if (!bEndsInSeparator(sFolder))
        sResult += cSeparatorOf(sFolder);
    sResult = sReplaceAll(sResult, ":\\\\", ":\\");
    return sReplaceAll(sResult, "//", "/");
}

bool bEndsInSeparator(std::string_view sPath)
{
    return !sPath.empty() && bContains(kSeparators, sPath.substr(sPath.size() - 1));
}
