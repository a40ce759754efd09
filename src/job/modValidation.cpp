// Validates requests.
#include "src/job/modValidation.h"

#include "src/base/case_folding.h"
#include "src/base/path_text.h"
#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessDetails.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileLists.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTargetNaming.h"
#include "src/job/modTaskTables.h"
#include "src/platform/locale.h"

constexpr std::int32_t kLastInterpolation = 2;

static bool bFail(clsConversionOptions& objOptions, std::int32_t lErr)
{
    objOptions.lErr = lErr;
    return false;
}

// Creates the folder without asking; the user is asked only if that fails.
static bool bFolderIsThere(Application& app, const std::string& sFolder)
{
    if (!bFolderExists(app, sFolder))
        CreateFolderPath(app, sFolder);
    return bFolderExists(app, sFolder);
}

static bool bCheckWildcardSource(Application& app, clsConversionOptions& objOptions)
{
    if (!bFolderExists(app, sFolderOfPattern(objOptions.sOriginalFile)))
        return bFail(objOptions, kErrOriginalFolder);
    if (bHasWildcard(objOptions.sTargetFile) &&
        !bFolderIsThere(app, sFolderOfPattern(objOptions.sTargetFile)))
        return bFail(objOptions, kErrTargetFolderOfPattern);
    return true;
}

static bool bCheckPlainSource(Application& app, clsConversionOptions& objOptions)
{
    objOptions.bDoSubfolders = false;
    objOptions.bSaveInOriginalFolder = false;
    if (!bFileExists(app, objOptions.sOriginalFile))
        return bFail(objOptions, kErrOriginalFile);
    if (bHasWildcard(objOptions.sTargetFile))
        return bFail(objOptions, kErrTargetWildcard);
    const std::string sFolder = sGetParentFolderName(objOptions.sTargetFile);
    if (!sFolder.empty() && !bFolderIsThere(app, sFolder))  // "": the working folder
        return bFail(objOptions, kErrTargetFolder);
    return true;
}

static bool bCheckFiles(Application& app, clsConversionOptions& objOptions)
{
    return bHasWildcard(objOptions.sOriginalFile) ? bCheckWildcardSource(app, objOptions)
                                                  : bCheckPlainSource(app, objOptions);
}

// A request to run a job file is valid if the file exists, whatever its other fields.
static bool bIsJobRequest(Application& app, clsConversionOptions& objOptions)
{
    if (objOptions.sCLBatchJobFile.empty())
        return false;
    if (!bFileExists(app, objOptions.sCLBatchJobFile))
        objOptions.lErr = kErrJobFile;
    return true;
}

// Intentionally exact: "photo.jpeg" with type JPEG raises the notice, and so does every "*.*".
static void CheckMismatch(Application& app, clsConversionOptions& objOptions)
{
    if (objOptions.lOriginalFileType == kTypeAutodetect || app.frmTypeMatchNotification.bDontShowAgain ||
        app.bCommandLineMode)
        return;
    const std::size_t nPoint = objOptions.sOriginalFile.rfind('.');
    const std::string sFound =
        nPoint == std::string::npos ? "" : sRTrim(objOptions.sOriginalFile.substr(nPoint + 1));
    if (sFoldCase(sFound) != sFoldCase(sFileTypeExtension(objOptions.lOriginalFileType, false)))
        objOptions.lErr = kErrTypeMismatchNotice;
}

void ValidateRequest(Application& app, clsConversionOptions& objOptions)
{
    if (bContains(objOptions.sActionToDo, "S"))
        ValidateSpecializedRequest(app, objOptions);
    else
        ValidateConversionRequest(app, objOptions);
}

void ValidateConversionRequest(Application& app, clsConversionOptions& objOptions)
{
    if (bIsJobRequest(app, objOptions))
        return;
    if (!bCheckFiles(app, objOptions))
        return;
    // It would be completed to a name in the root folder.
    if (sTrim(objOptions.sTargetFile).empty() && !objOptions.bSaveInOriginalFolder) {
        objOptions.lErr = kErrEmptyFile;
        return;
    }
    if (sFileTypeExtension(objOptions.lTargetFileType, false).empty()) {
        objOptions.lErr = kErrTargetType;
        return;
    }
    if (sTrim(objOptions.sExtraParams).empty()) {
        objOptions.lErr = kErrEmptyDetails;
        return;
    }
    CheckMismatch(app, objOptions);
    CompleteTarget(app, objOptions);
}

static bool bCheckSpecialFiles(Application& app, clsConversionOptions& objOptions)
{
    if (objOptions.lSpecialProcess == SP_LAUNCH)
        return true;
    if (sTrim(objOptions.sOriginalFile).empty() || sTrim(objOptions.sTargetFile).empty())
        return bFail(objOptions, kErrEmptyFile);
    return bCheckFiles(app, objOptions);
}

static bool bCheckResize(Application& app, clsConversionOptions& objOptions)
{
    const SpecialProcessRow& objRow = *pSpecialProcess(SP_TRANSFORM_RESIZE);
    DetailsValues aValues = aFreshValues(objRow);
    std::string sPrefix;
    ReadDetails(objRow, objOptions.sExtraParams, sPrefix, aValues, app.svc.objLocale.cDecimalSign());
    const auto lValue = [&](std::size_t i) { return std::get<std::int32_t>(aValues[i]); };
    if (lValue(0) < 0 || lValue(1) < 0)
        return bFail(objOptions, kErrSize);
    if (lValue(2) < 0 || lValue(2) > kLastInterpolation)
        return bFail(objOptions, kErrInterpolation);
    return true;
}

static bool bCheckProcess(Application& app, clsConversionOptions& objOptions)
{
    if (objOptions.lSpecialProcess == SP_TRANSFORM_RESIZE)
        return bCheckResize(app, objOptions);
    if (objOptions.lSpecialProcess == SP_LAUNCH && bHasWildcard(objOptions.sOriginalFile))
        return bFail(objOptions, kErrProcessOriginal);
    return true;
}

void ValidateSpecializedRequest(Application& app, clsConversionOptions& objOptions)
{
    if (bIsJobRequest(app, objOptions) || !bCheckSpecialFiles(app, objOptions) ||
        !bCheckProcess(app, objOptions))
        return;
    objOptions.lTargetFileType = objOptions.lOriginalFileType;
    if (!bIsTaskProcess(objOptions.lSpecialProcess))
        objOptions.lErr = kErrProcessNumber;
}
