// Runs conversion tasks.
#include "src/engine/modConversionTask.h"

#include <string>
#include <vector>

#include "src/base/clsConversionOptions.h"
#include "src/base/text.h"
#include "src/conversion/modConversionItem.h"
#include "src/engine/modFileWalk.h"
#include "src/engine/modRunLog.h"
#include "src/forms/Application.h"
#include "src/job/modFileLists.h"
#include "src/platform/window_services.h"

constexpr std::int32_t kErrNoFileList = -10000;

// A copy of the request for the files of a list, so that the task's own record keeps its wildcards.
static clsConversionOptions objFileOf(const clsConversionOptions& objOptions)
{
    clsConversionOptions objFile;
    objFile.lConversionMethod = objOptions.lConversionMethod;
    objFile.sActionToDo = objOptions.sActionToDo;
    objFile.lSpecialProcess = objOptions.lSpecialProcess;
    objFile.sExtraParams = objOptions.sExtraParams;
    objFile.bVerboseLog = objOptions.bVerboseLog;
    objFile.sLogFile = objOptions.sLogFile;
    objFile.lOriginalFileType = objOptions.lOriginalFileType;
    objFile.lTargetFileType = objOptions.lTargetFileType;
    return objFile;
}

static void ConvertSingleFile(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                              std::int32_t& lResult)
{
    app.frmMain.sCurrentFile = objOptions.sOriginalFile;
    app.frmMainMDI.sbMain.SetPanel(kPanelFile, objOptions.sOriginalFile);
    app.svc.objWindows.DoEvents();
    lPerformConversionItem(app, objOptions);
    LeaveIfStopped(app, objOptions);
    if (objOptions.lErr != 0 || !app.frmMain.sLogFile.empty())
        LogConversionError(app, lRow, objOptions);
    lResult = objOptions.lErr;
    app.frmMainMDI.sbMain.SetPanel(kPanelSeconds, sSecondsOfRun(app));
}

static std::int32_t lConvertList(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions,
                                 const std::vector<std::string>& colFiles, std::int32_t& lResult)
{
    clsConversionOptions objFile = objFileOf(objOptions);
    return lWalkFiles(app, objOptions, objFile, colFiles, [&](OriginalRule eRule) {
        const std::int32_t lCode = lPerformConversionItem(app, objFile, eRule);
        LeaveIfStopped(app, objFile);
        if (lCode != 0 || !app.frmMain.sLogFile.empty()) {
            LogConversionError(app, lRow, objFile);
            lResult = lCode;
        }
        return true;
    });
}

void PerformBlockConversion(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                            std::int32_t& lResult)
{
    lResult = 0;
    std::vector<std::string> colFiles, aUnreadable;
    if (!bCreateFileList(app, objOptions, colFiles, &aUnreadable)) {
        lResult = objOptions.lErr = kErrNoFileList;
        LogConversionError(app, lRow, objOptions);
        return;
    }
    LogUnreadableFolders(app, lRow, objOptions, aUnreadable, lResult);
    NotePauseBeforeWalk(app, objOptions);
    std::int32_t lPosition = 0;
    const bool bManySources = bContains(objOptions.sOriginalFile, "*");
    if (bManySources)
        lPosition = lConvertList(app, lRow, objOptions, colFiles, lResult);
    else if (!bContains(objOptions.sTargetFile, "*"))
        ConvertSingleFile(app, lRow, objOptions, lResult);
    KeepResumePosition(app, lPosition);
}
