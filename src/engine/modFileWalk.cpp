// Walks the file list of a wildcard task.
#include "src/engine/modFileWalk.h"

#include "src/base/clsConversionOptions.h"
#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/commands/modRunState.h"
#include "src/engine/modOriginalRules.h"
#include "src/engine/modRunLog.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/job/modFileLists.h"
#include "src/job/modTargetNaming.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

static void ShowFile(Application& app, const clsConversionOptions& objFile, std::int32_t lPosition,
                     std::size_t nCount)
{
    const double dPercent = lPosition * 100.0 / static_cast<double>(nCount);
    const std::string sPercent = sFormatOneDecimal(dPercent, app.svc.objLocale.cDecimalSign());
    // Intentional: the space goes before the number for a conversion, after it for a special process.
    const bool bConversion = bContains(objFile.sActionToDo, "C");
    app.frmMain.sCurrentFile = objFile.sOriginalFile;
    app.frmMain.dTaskDone = (lPosition - 1) / static_cast<double>(nCount);
    app.frmMainMDI.sbMain.SetPanel(kPanelFile, objFile.sOriginalFile);
    app.frmMainMDI.sbMain.SetPanel(kPanelPercent, (bConversion ? " " + sPercent : sPercent + " ") +
                                                      sTranslate(app, " Percent Complete "));
}

std::int32_t lWalkFiles(Application& app, const clsConversionOptions& objOptions,
                        clsConversionOptions& objFile, const std::vector<std::string>& colFiles,
                        const std::function<bool(OriginalRule eRule)>& fnItem)
{
    const TargetPattern objPattern = objTargetPattern(objOptions);
    OriginalRules objRules(app, objOptions, objPattern, colFiles);
    const auto lCount = static_cast<std::int32_t>(colFiles.size());
    std::int32_t lPosition = app.frmMain.lResumeFileIndex == 0 ? 1 : app.frmMain.lResumeFileIndex;
    for (; lPosition <= lCount; ++lPosition) {
        app.svc.objWindows.DoEvents();
        if (!app.frmMain.bRunning)
            break;
        objFile.sOriginalFile = colFiles[static_cast<std::size_t>(lPosition - 1)];
        std::string sFolder;
        objFile.sTargetFile = sTargetForFile(objPattern, objFile.sOriginalFile, sFolder);
        if (!sFolder.empty() && !bFolderExists(app, sFolder))
            CreateFolderPath(app, sFolder);
        ShowFile(app, objFile, lPosition, colFiles.size());
        const bool bGoOn = fnItem(objRules.eRuleFor(objFile.sOriginalFile, objFile.sTargetFile));
        app.frmMainMDI.sbMain.SetPanel(kPanelSeconds, sSecondsOfRun(app));
        if (!bGoOn)
            break;
    }
    return lPosition;
}

void KeepResumePosition(Application& app, std::int32_t lPosition)
{
    if (!app.frmMain.bRunning)
        app.frmMain.lResumeFileIndex = lPosition >= 3 ? lPosition - 1 : 0;
}

void LeaveIfStopped(const Application& app, const clsConversionOptions& objItem)
{
    if (objItem.lErr != 0)
        RaiseIfStopped(app);
}

void LogUnreadableFolders(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions,
                          const std::vector<std::string>& aUnreadable, std::int32_t& lResult)
{
    constexpr std::int32_t kErrUnreadable = -10000;
    for (const std::string& sFolder : aUnreadable) {
        clsConversionOptions objFolder = objOptions;
        objFolder.sOriginalFile = sFolder;
        lResult = objFolder.lErr = kErrUnreadable;
        objFolder.sErr = sUnreadableFolder(app, sFolder);
        LogConversionError(app, lRow, objFolder);
    }
}

void NotePauseBeforeWalk(Application& app, clsConversionOptions& objOptions)
{
    if (app.frmMain.bRunning)
        return;
    objOptions.sErr = sTranslate(app, "Conversion Process paused.");
    objOptions.lErr = 0;
}
