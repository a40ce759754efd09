// Hands paths and addresses to the desktop.
#include "src/commands/modDesktop.h"

#include <memory>

#include "src/forms/Application.h"
#include "src/platform/clock.h"
#include "src/platform/processes.h"
#include "src/platform/window_services.h"

constexpr std::int64_t kMillisecondsToFail = 1000;
constexpr std::int32_t kMillisecondsPerPoll = 20;

// On some desktops the opener ends at once, on others only with the program it opened. One that is still
// running after a second has succeeded.
static bool bWorks(Application& app, const std::unique_ptr<ChildProcess>& pOpener)
{
    if (!pOpener)
        return false;
    const std::int64_t lStartTick = app.svc.objClock.GetTickCount();
    while (!pOpener->bWaitForEnd(kMillisecondsPerPoll)) {
        if (app.svc.objClock.GetTickCount() - lStartTick >= kMillisecondsToFail)
            return true;
        app.svc.objWindows.DoEvents();
    }
    return pOpener->lExitCode() == 0;
}

bool bOpenPath(Application& app, const std::string& sPath)
{
    return bWorks(app, app.svc.objProcessLauncher.pOpenPath(sPath));
}

bool bOpenAddress(Application& app, const std::string& sAddress)
{
    return bWorks(app, app.svc.objProcessLauncher.pOpenAddress(sAddress));
}
