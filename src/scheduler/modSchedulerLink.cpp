// Connects the scheduler to the main form.
#include "src/scheduler/modSchedulerLink.h"

#include "src/commands/modMenuToolbar.h"
#include "src/dispatch/modDispatcher.h"
#include "src/engine/modJobRun.h"
#include "src/forms/Application.h"
#include "src/job/modJobFiles.h"
#include "src/platform/window_services.h"
#include "src/scheduler/modSchedulerForm.h"
#include "src/scheduler/modTimer.h"

void LinkScheduler(Application& app)
{
    frmScheduler& frmSched = app.frmScheduler;
    frmSched.RunTheJobEvent = [&app](const std::string& sJobFile) { frmSched_RunTheJobEvent(app, sJobFile); };
    frmSched.DisplayTimeRemainingEvent = [&app](std::int32_t lDays, std::int32_t lHours,
                                                std::int32_t lMinutes, std::int32_t lSeconds) {
        frmSched_DisplayTimeRemainingEvent(app, lDays, lHours, lMinutes, lSeconds);
    };
    app.frmMainMDI.mnuScheduleConversionJob.OnClick = Handler(app, mnuScheduleConversionJob_Click);
    SetUpScheduler(app, app.sIniFile);
    // A separate act: an error in starting the schedule must not keep the program from starting.
    if (frmSched.bPersistRunning)
        Dispatch(app, Act::Ordinary, [&app] { cmdStartTimer_Click(app); });
}

void mnuScheduleConversionJob_Click(Application& app)
{
    SetUpScheduler(app, app.sIniFile);
    app.svc.objWindows.ShowModal(app.frmScheduler);
    UpdateMenuToolbar(app);
}

void frmSched_RunTheJobEvent(Application& app, const std::string& sJobFile)
{
    std::string sPath = sJobFile;
    ConversionJobOpen(app, sPath);
    ConversionJobRewind(app);
    ConversionJobBegin(app);
}

// Intentionally not translated.
static std::string sCountdown(std::int32_t lDays, std::int32_t lHours, std::int32_t lMinutes,
                              std::int32_t lSeconds)
{
    if (lDays == 0 && lHours == 0 && lMinutes == 0 && lSeconds == 0)
        return "Job is Running";
    std::string sText = "Time Remaining: ";
    if (lDays != 0)
        sText += std::to_string(lDays) + " days : ";
    if (lHours != 0)
        sText += std::to_string(lHours) + " hours : ";
    if (lMinutes != 0)
        sText += std::to_string(lMinutes) + " minutes : ";
    return sText + std::to_string(lSeconds) + " seconds";
}

void frmSched_DisplayTimeRemainingEvent(Application& app, std::int32_t lDays, std::int32_t lHours,
                                        std::int32_t lMinutes, std::int32_t lSeconds)
{
    app.frmMainMDI.SetCaption(sCountdown(lDays, lHours, lMinutes, lSeconds));
}
