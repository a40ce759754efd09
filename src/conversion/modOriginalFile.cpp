// Deletes sources, or moves them to the trash.
#include "src/conversion/modOriginalFile.h"

#include <algorithm>

#include "src/base/clsConversionOptions.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/report/modReportMessage.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kErrNotConverted = -103;

static bool bIsOriginal(const Application& app, const clsConversionOptions& objOptions,
                        const std::string& sTarget)
{
    const FileSystem& objFiles = app.svc.objFileSystem;
    if (bEqualIgnoringCase(objOptions.sOriginalFile, sTarget))
        return true;
    const std::optional<FileStamp> objOriginal = objFiles.objStampOf(objOptions.sOriginalFile);
    const std::optional<FileStamp> objTarget = objFiles.objStampOf(sTarget);
    return objOriginal && objTarget && objOriginal->bSameFile(*objTarget);
}

static bool bIsAnyTarget(const Application& app, const clsConversionOptions& objOptions,
                         const ItemFiles& objFiles)
{
    return bIsOriginal(app, objOptions, objOptions.sTargetFile) ||
           std::any_of(objFiles.aTargets.begin(), objFiles.aTargets.end(),
                       [&](const std::string& sTarget) { return bIsOriginal(app, objOptions, sTarget); });
}

static bool bIsConverted(const Application& app, const clsConversionOptions& objOptions,
                         const ItemFiles& objFiles)
{
    return objOptions.lErr == 0 && !objFiles.aTargets.empty() &&
           std::all_of(objFiles.aTargets.begin(), objFiles.aTargets.end(),
                       [&](const std::string& sTarget) { return app.svc.objFileSystem.FileExists(sTarget); });
}

static void ReportKept(Application& app, const clsConversionOptions& objOptions)
{
    const std::string& sLogFile = objOptions.sLogFile.empty() ? app.frmMain.sLogFile : objOptions.sLogFile;
    ReportMessage(app,
                  sTranslate(app, "Unable to delete the original file or to move it to the trash") + ": " +
                      objOptions.sOriginalFile,
                  sLogFile, objOptions.bVerbose || (sLogFile.empty() && app.bCommandLineMode));
}

bool bDisposeOfOriginal(Application& app, clsConversionOptions& objOptions, const ItemFiles& objFiles,
                        OriginalRule eRule)
{
    const std::string& sOriginal = objOptions.sOriginalFile;
    FileSystem& objFileSystem = app.svc.objFileSystem;
    if (!objFileSystem.FileExists(sOriginal) || bIsAnyTarget(app, objOptions, objFiles))
        return true;
    const auto bUnchanged = [&] {
        return objFiles.objOriginal && objFileSystem.objStampOf(sOriginal) == objFiles.objOriginal;
    };
    if (eRule == OriginalRule::OnlyToTrash || !bIsConverted(app, objOptions, objFiles) || !bUnchanged()) {
        if (!objFileSystem.MoveToTrash(sOriginal))
            ReportKept(app, objOptions);
        return true;
    }
    if (!objFileSystem.SyncSaves()) {
        objOptions.lErr = kErrNotConverted;
        objOptions.sErr = sTranslate(app, "Unable to convert");
        return false;
    }
    if (!bDeleteFileRetrying(app, sOriginal, bUnchanged))
        ReportKept(app, objOptions);
    return true;
}
