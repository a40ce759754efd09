// Derives, completes and suggests target names.
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

// The folder of a file with its separator; "" for a bare name. A folder of one component has no separator,
// so it takes the one in the file's path.
static std::string sFolderOfFile(const std::string& sFile)
{
    const std::string sFolder = sGetParentFolderName(sFile);
    if (sFolder.empty() || bEndsInSeparator(sFolder))
        return sFolder.empty() ? "" : sWithSeparator(sFolder);
    return sWithSeparator(sFolder + cSeparatorOf(sFolderOfPath(sFolder).empty() ? sFile : sFolder));
}

TargetPattern objTargetPattern(const clsConversionOptions& objOptions)
{
    TargetPattern objPattern;
    objPattern.bEachFile = bContains(objOptions.sTargetFile, "*");
    objPattern.sTargetFile = objOptions.sTargetFile;
    objPattern.sTargetFolder = objOptions.sTargetFile.substr(0, objOptions.sTargetFile.find('*'));
    objPattern.sSourceRoot = sFolderOfFile(objOptions.sOriginalFile);
    objPattern.sExtension = sExtensionOfTarget(objOptions);
    objPattern.bSaveInOriginalFolder = objOptions.bSaveInOriginalFolder;
    return objPattern;
}

// Converts a relative folder to the separators of the target folder, so that reports show targets in the
// user's style.
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
    const std::string sFolder = sFolderOfFile(sFile);
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

// A target without a dot is a folder, or a name without its extension. A single file that goes to a folder is
// named after the extension ("C:\out\jpg.jpg"); this is intentional.
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

// A drive root gets a second separator; "/" doesn't, because "//" could mean something else.
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
    const std::string sFolder = sGetParentFolderName(sSource);
    if (sFolder.empty())
        return sFileTypeExtension(lTargetFileType, true);
    if (sFolderOfPath(sFolder).empty())
        return sFolderOfFile(sSource) + sFileTypeExtension(lTargetFileType, true);
    return sPatternInFolder(sFolder, lTargetFileType);
}

std::string sWithoutQuotes(const std::string& sText)
{
    return sReplaceAll(sText, "\"", "");
}
