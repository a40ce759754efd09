// Runs special process tasks.
#include "src/engine/modSpecialTask.h"

#include <vector>

#include "src/base/clsConversionOptions.h"
#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/conversion/modConversionItem.h"
#include "src/engine/modFileWalk.h"
#include "src/engine/modLaunch.h"
#include "src/engine/modRunLog.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileLists.h"
#include "src/job/modJobFiles.h"
#include "src/job/modTaskTables.h"
#include "src/platform/window_services.h"

constexpr std::int32_t kErrNoFileList = -10000;
constexpr std::int32_t kErrEndsWalk = -1;

std::string sExitCodeText(const clsConversionOptions& objOptions)
{
    // Not translated: other programs search reports for these texts.
    switch (objOptions.lErr) {
        case 0:
            return "Successfully Processed.";
        case kErrNotLaunched:
            return "Unable to launch application.";
        case kErrTimeout:
            return "Process did not complete in the specified time (Timeout)";
        default:
            return "";
    }
}

std::int32_t lPerformSpecialItem(Application& app, clsConversionOptions& objOptions, OriginalRule eRule)
{
    ItemFiles objFiles;
    bool bImage = true;  // the source is processed as an image
    if (objOptions.lSpecialProcess == kProcessReload) {
        bImage = false;
        objOptions.sErr =
            LoadJobFile(app, objOptions.sTargetFile, objOptions.lTargetFileType, app.frmMain.fgToDo);
        objOptions.lErr = objOptions.sErr.empty() ? 0 : kErrNoFileList;
    } else if (objOptions.lSpecialProcess == SP_LAUNCH) {
        bImage = false;
        objOptions.lErr = lLaunchTask(app, objOptions);
        objOptions.sErr = sExitCodeText(objOptions);
    } else if (bIsTaskProcess(objOptions.lSpecialProcess)) {
        PerformConversionItemNCTOCX(app, objOptions, &objFiles);
    } else {
        bImage = false;  // nothing was done with the source, so keep it
    }
    if (app.frmMain.bDeleteOriginalFileAfterProcessing && bImage && objOptions.lErr == 0)
        (void)bDisposeOfOriginal(app, objOptions, objFiles, eRule);
    return objOptions.lErr;
}

static void DoSingleItem(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                         std::int32_t& lResult)
{
    app.frmMainMDI.sbMain.SetPanel(kPanelFile, objOptions.sOriginalFile);
    app.svc.objWindows.DoEvents();
    lResult = lPerformSpecialItem(app, objOptions);
    LeaveIfStopped(app, objOptions);
    if (lResult != 0 || !app.frmMain.sLogFile.empty())
        LogConversionError(app, lRow, objOptions);
    if (objOptions.lSpecialProcess == SP_LAUNCH && lResult == 0)
        LogExitCode(app, lRow, objOptions);
    app.frmMainMDI.sbMain.SetPanel(kPanelSeconds, sSecondsOfRun(app));
}

static std::int32_t lWalkList(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions,
                              const std::vector<std::string>& colFiles, std::int32_t& lResult)
{
    clsConversionOptions objFile;
    objFile.sActionToDo = objOptions.sActionToDo;
    objFile.lSpecialProcess = objOptions.lSpecialProcess;
    objFile.sExtraParams = objOptions.sExtraParams;
    objFile.lTargetFileType = objOptions.lTargetFileType;
    objFile.lOriginalFileType = objOptions.lOriginalFileType;
    return lWalkFiles(app, objOptions, objFile, colFiles, [&](OriginalRule eRule) {
        const std::int32_t lCode = lPerformSpecialItem(app, objFile, eRule);
        LeaveIfStopped(app, objFile);
        if (lCode != 0 || !app.frmMain.sLogFile.empty()) {
            LogConversionError(app, lRow, objFile);
            lResult = lCode;
        }
        return lCode != kErrEndsWalk;
    });
}

std::int32_t PerformBlockSpecialized(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                                     std::int32_t& lResult)
{
    lResult = 0;
    std::vector<std::string> colFiles, aUnreadable;
    const bool bHasList =
        objOptions.lSpecialProcess != SP_LAUNCH && objOptions.lSpecialProcess != kProcessReload;
    if (bHasList && !bCreateFileList(app, objOptions, colFiles, &aUnreadable)) {
        lResult = objOptions.lErr = kErrNoFileList;
        LogConversionError(app, lRow, objOptions);
        return lResult;
    }
    LogUnreadableFolders(app, lRow, objOptions, aUnreadable, lResult);
    NotePauseBeforeWalk(app, objOptions);
    std::int32_t lPosition = 0;
    if (bContains(objOptions.sOriginalFile, "*"))
        lPosition = lWalkList(app, lRow, objOptions, colFiles, lResult);
    else
        DoSingleItem(app, lRow, objOptions, lResult);
    KeepResumePosition(app, lPosition);
    return lResult;
}
