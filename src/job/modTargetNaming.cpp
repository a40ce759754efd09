// Makes, completes and proposes target names.
#include "src/job/modTargetNaming.h"

#include <algorithm>

#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileTypes.h"

static std::string sExtensionOfTarget(const clsConversionOptions& objOptions)
{
    const std::size_t nStar = objOptions.sTargetFile.rfind("*.");
    if (nStar == std::string::npos || nStar + 2 == objOptions.sTargetFile.size())
        return sFileTypeExtension(objOptions.lTargetFileType, false);
    return objOptions.sTargetFile.substr(nStar + 2);
}

TargetPattern objTargetPattern(const clsConversionOptions& objOptions)
{
    TargetPattern objPattern;
    objPattern.bEachFile = bContains(objOptions.sTargetFile, "*");
    objPattern.sTargetFile = objOptions.sTargetFile;
    objPattern.sTargetFolder = objOptions.sTargetFile.substr(0, objOptions.sTargetFile.find('*'));
    objPattern.sSourceRoot = sWithSeparator(sGetParentFolderName(objOptions.sOriginalFile));
    objPattern.sExtension = sExtensionOfTarget(objOptions);
    objPattern.bSaveInOriginalFolder = objOptions.bSaveInOriginalFolder;
    return objPattern;
}

// The path of a folder below the source root, in the style of the target folder, so that a report shows the
// target in the style in which it was given.
static std::string sInStyleOf(const std::string& sTargetFolder, std::string sRelative)
{
    if (sFolderOfPath(sTargetFolder).empty())
        return sRelative;
    const auto bSeparator = [](char c) { return c == '\\' || c == '/'; };
    std::replace_if(sRelative.begin(), sRelative.end(), bSeparator, cSeparatorOf(sTargetFolder));
    return sRelative;
}

std::string sTargetForFile(const TargetPattern& objPattern, const std::string& sFile,
                           std::string& sFolderToMake)
{
    sFolderToMake.clear();
    if (!objPattern.bEachFile)
        return objPattern.sTargetFile;
    const std::string sFolder = sWithSeparator(sGetParentFolderName(sFile));
    const std::string sName = sGetBaseName(sFile) + "." + objPattern.sExtension;
    if (objPattern.bSaveInOriginalFolder)
        return sFolder + sName;
    const std::size_t nRoot = std::min(objPattern.sSourceRoot.size(), sFolder.size());
    sFolderToMake = objPattern.sTargetFolder + sInStyleOf(objPattern.sTargetFolder, sFolder.substr(nRoot));
    return sFolderToMake + sName;
}

static void SetTarget(Application& app, clsConversionOptions& objOptions, const std::string& sTarget)
{
    objOptions.sTargetFile = sTarget;
    app.frmMain.cbTargetFile.SetText(sTarget);
}

// A target without a point is a folder, or a name that lacks its extension. A single file that goes to a
// folder is named after the extension, as in "C:\out\jpg.jpg": that is how it is meant to come out.
static std::string sCompletedWithoutPoint(Application& app, const std::string& sSource,
                                          const std::string& sTarget, const std::string& sExtension)
{
    const bool bWildcard = bContains(sSource, "*");
    if (bEndsInSeparator(sTarget))
        return sTarget + (bWildcard ? "*" : sExtension) + "." + sExtension;
    const std::string sAsFolder = sTarget + cSeparatorOf(sTarget);
    if (bWildcard)
        return sAsFolder + "*." + sExtension;
    if (bFolderExists(app, sAsFolder))
        return sAsFolder + sExtension + "." + sExtension;
    return sTarget + "." + sExtension;
}

void CompleteTarget(Application& app, clsConversionOptions& objOptions)
{
    const std::string sTarget = objOptions.sTargetFile;
    const std::string sExtension = sFileTypeExtension(objOptions.lTargetFileType, false);
    if (bContains(sTarget, "*"))
        return;
    const std::size_t nPoint = sTarget.rfind('.');
    if (nPoint == std::string::npos) {
        SetTarget(app, objOptions,
                  sCompletedWithoutPoint(app, objOptions.sOriginalFile, sTarget, sExtension));
    } else if (nPoint > 0 && sTrim(sTarget).size() == nPoint + 1) {
        app.frmMain.cbTargetFile.SetText(sTrim(sTarget) + sExtension);
        objOptions.sTargetFile = sTarget + sExtension;
    }
}

std::optional<std::string> sProposedTarget(const std::string& sSource, std::int32_t lTargetFileType)
{
    const std::string sExtension = sFileTypeExtension(lTargetFileType, false);
    const std::size_t nPoint = sSource.rfind('.');
    if (nPoint == std::string::npos)
        return std::nullopt;
    if (!bContains(sSource, "*"))
        return sTrim(sLower(std::string_view(sSource).substr(0, nPoint + 1))) + sExtension;
    const std::string sFolder = sFolderOfPath(sSource);
    if (sFolder.empty())
        return std::nullopt;
    return sFolder + "*." + sExtension;
}

// The separator is added even to a drive root that ends in one; "//" alone would name something else.
static std::string sFolderAndSeparator(const std::string& sFolder)
{
    return sFolder == "/" ? sFolder : sFolder + cSeparatorOf(sFolder);
}

std::string sPatternInFolder(const std::string& sFolder, std::int32_t lType)
{
    return sFolderAndSeparator(sFolder) + sFileTypeExtension(lType, true);
}

std::string sPatternBesideSource(const std::string& sSource, std::int32_t lTargetFileType)
{
    return sPatternInFolder(sGetParentFolderName(sSource), lTargetFileType);
}

std::string sWithoutQuotes(const std::string& sText)
{
    return sReplaceAll(sText, "\"", "");
}
