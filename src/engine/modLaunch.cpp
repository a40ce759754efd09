// Launches programs.
#include "src/engine/modLaunch.h"

#include "src/base/clsConversionOptions.h"
#include "src/catalogue/modSpecialProcessDetails.h"
#include "src/engine/modRunLog.h"
#include "src/forms/Application.h"
#include "src/platform/clock.h"
#include "src/platform/locale.h"
#include "src/platform/processes.h"
#include "src/platform/window_services.h"

constexpr std::int32_t kNoTimeout = -1;
// Polling interval: short enough for a click on Pause, long enough not to burn CPU.
constexpr std::int32_t kPollMilliseconds = 20;

std::int32_t lLaunchTask(Application& app, clsConversionOptions& objOptions)
{
    const LaunchDetails objDetails =
        ReadLaunchDetails(objOptions.sExtraParams, app.svc.objLocale.cDecimalSign());
    return lLaunchAndWait(app, objOptions.sOriginalFile, objOptions.sTargetFile, objDetails.lWindowState,
                          objDetails.lPriority, objDetails.lWaitSeconds, objOptions.lCommandLineExitCode);
}

std::int32_t lLaunchAndWait(Application& app, const std::string& sProgram, const std::string& sArguments,
                            std::int32_t iWindowState, std::int32_t lPriority, std::int32_t lTimeoutSeconds,
                            std::int32_t& lExitCode)
{
    const std::int64_t lStartTick = app.svc.objClock.GetTickCount();
    const auto pChild = app.svc.objProcessLauncher.pStart({sProgram, sArguments, lPriority, iWindowState});
    if (!pChild)
        return kErrNotLaunched;
    const std::int64_t lLimit = std::int64_t{lTimeoutSeconds} * 1000;
    do {
        app.frmMainMDI.sbMain.SetPanel(kPanelSeconds, sSecondsOfRun(app));
        if (lTimeoutSeconds != kNoTimeout && app.svc.objClock.GetTickCount() - lStartTick > lLimit)
            break;
        app.svc.objWindows.DoEvents();
    } while (!pChild->bWaitForEnd(app.frmMain.bRunning ? kPollMilliseconds : 0) && app.frmMain.bRunning);
    if (!pChild->bWaitForEnd(0))
        return kErrTimeout;
    lExitCode = pChild->lExitCode();
    return 0;
}
