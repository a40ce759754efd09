// Starts and stops the schedule and runs its job.
#include "src/scheduler/modTimer.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "src/forms/Application.h"
#include "src/platform/clock.h"
#include "src/scheduler/modDateTime.h"
#include "src/scheduler/modNextRun.h"
#include "src/scheduler/modSchedule.h"
#include "src/settings/modMRU.h"

namespace
{
constexpr std::int32_t kTickMilliseconds = 1000;
constexpr std::int64_t kMinutesPerDay = 1440;
constexpr std::int16_t kSunday = 1;
constexpr std::int16_t kSaturday = 7;
}  // namespace

void cmdStartTimer_Click(Application& app)
{
    CollectDataFromFrmScheduler(app);
    if (app.frmScheduler.optTimeBased.Value())
        StartRelativeTimer(app);
    else if (app.frmScheduler.optCalendarBased.Value())
        StartCalendarTimer(app);
}

// Shows what is wrong, if anything is.
static bool bSound(Application& app)
{
    const std::int32_t lCode = ValidateSchedule(app);
    if (lCode != kScheduleSound)
        ShowScheduleError(app, lCode);
    return lCode == kScheduleSound;
}

static void LockInputsAndStart(Application& app)
{
    DisableScheduleInputs(app);
    WriteCollectionToIniFile(app.frmScheduler.mruScheduleSource, app.svc.objIniFile);
    StartTimer(app);
}

void StartRelativeTimer(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.sEditJobFile = frm.cbScheduledJobFile.Text();
    if (!bSound(app))
        return;
    frm.lIntervalSeconds = GetTimeBasedInterval(app);
    frm.dtTimeTarget = dtFirstTimeTarget(app);
    LockInputsAndStart(app);
}

void StartCalendarTimer(Application& app)
{
    GetCalendarTimerDataFromGUI(app);
    if (!bSound(app))
        return;
    FindFirstCalendarTarget(app);
    LockInputsAndStart(app);
}

void StartTimer(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.bTimeBased = frm.optTimeBased.Value();
    frm.sRunJobFile = frm.sEditJobFile;
    if (frm.bTimeBased) {
        frm.bRunImmediately = frm.optImmediately.Value();
        frm.lRunIntervalSeconds = frm.lIntervalSeconds;
    } else {
        CollectDataFromFrmScheduler(app);
        frm.dtCalendarTarget = frm.dtTargetComplete;
    }
    frm.dtLastFired = -1;
    frm.Timer1.SetInterval(kTickMilliseconds);
    frm.Timer1.SetEnabled(true);
}

void StopTimer(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.bStopping = true;
    frm.Timer1.SetEnabled(false);
    frm.cmdDone.SetFocus();
    EnableScheduleInputs(app);
}

static std::vector<Control*> aLockedInputs(frmScheduler& frm)
{
    return {&frm.cmdSelectScheduledJobFile,
            &frm.picScheduledJobFile,
            &frm.txtHours,
            &frm.txtMinutes,
            &frm.txtSeconds,
            &frm.cbScheduledJobFile,
            &frm.optDaily,
            &frm.optWeekly,
            &frm.optMonthly,
            &frm.cbHours,
            &frm.cbMinutes,
            &frm.cbAmPm,
            &frm.txtDayOfMonth,
            &frm.txtNumMonths,
            &frm.txtNumWeeks,
            &frm.chkMon,
            &frm.chkTue,
            &frm.chkWed,
            &frm.chkThu,
            &frm.chkFri,
            &frm.chkSat,
            &frm.chkSun,
            &frm.txtNumDays,
            &frm.optNumDays,
            &frm.optWeekdays};
}

void DisableScheduleInputs(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.cmdEndTimer.SetEnabled(true);
    frm.cmdStartTimer.SetEnabled(false);
    for (Control* pControl : aLockedInputs(frm))
        pControl->SetEnabled(false);
}

void EnableScheduleInputs(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.cmdEndTimer.SetEnabled(false);
    frm.cmdStartTimer.SetEnabled(true);
    for (Control* pControl : aLockedInputs(frm))
        pControl->SetEnabled(true);
    frm.bStopping = false;
}

// Runs the job, unless it was run for this target before, and then moves the target on, whatever came of the
// run: an error must not leave the same target due.
template <typename MoveOn>
static void FireAndMoveOn(frmScheduler& frm, bool bDue, double dtTarget, const MoveOn& fnMoveOn)
{
    const bool bFire = bDue && dtTarget != frm.dtLastFired;
    std::exception_ptr pError;
    try {
        if (bFire) {
            frm.dtLastFired = dtTarget;
            if (frm.RunTheJobEvent)
                frm.RunTheJobEvent(frm.sRunJobFile);
        }
    } catch (...) {
        pError = std::current_exception();
    }
    fnMoveOn();
    if (pError)
        std::rethrow_exception(pError);
}

static bool bIsDaily(const frmScheduler& frm)
{
    return frm.bDaily && (frm.bEveryNDays || frm.bEveryWeekday);
}

// A count of 0 (from 0.4, or a field that was blank at Begin) would leave the target in place for good.
static std::int64_t lMinutesToNextDaily(const frmScheduler& frm)
{
    return (frm.bEveryNDays ? std::max<std::int64_t>(frm.iNumDays, 1) : 1) * kMinutesPerDay;
}

static void TickDaily(frmScheduler& frm, std::int64_t lMinutes)
{
    const bool bWeekend = frm.iTodayWeekday == kSunday || frm.iTodayWeekday == kSaturday;
    const bool bRests = !frm.bEveryNDays && bWeekend;
    FireAndMoveOn(frm, lMinutes == 0 && !bRests, frm.dtCalendarTarget, [&frm] {
        frm.dtCalendarTarget = dtAddMinutes(frm.dtCalendarTarget, lMinutesToNextDaily(frm));
    });
}

// Weekly targets are counted from today. In the very second of a target, today is still to come and the
// target stays: the next tick moves it on.
static void TickWeekly(Application& app, std::int64_t lMinutes)
{
    frmScheduler& frm = app.frmScheduler;
    FireAndMoveOn(frm, lMinutes == 0, frm.dtCalendarTarget,
                  [&app, &frm] { frm.dtCalendarTarget = WeeklyFindNextTargetDate(app); });
}

static void TickMonthly(Application& app, std::int64_t lMinutes)
{
    frmScheduler& frm = app.frmScheduler;
    FireAndMoveOn(frm, lMinutes == 0, frm.dtCalendarTarget,
                  [&app, &frm] { MonthlyFindNextTargetDate(app, frm.sDayOfMonth); });
}

// Runs that were missed are never made up. A daily target catches up one step a tick; a weekly or monthly one
// intentionally sleeps until its day of the month comes round again.
static void TickCalendar(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    const double dtNow = app.svc.objClock.dNow();
    const std::int64_t lMinutes = lDiffMinutes(frm.dtCalendarTarget, dtNow);
    DisplayTimeRemaining(app, frm.dtCalendarTarget, dtNow);
    frm.iTodayWeekday = iWeekday(dtNow);
    if (lMinutes < 0)
        return;
    const bool bDayOfTarget = objDateOf(dtNow).lDay == objDateOf(frm.dtCalendarTarget).lDay;
    if (bIsDaily(frm))
        TickDaily(frm, lMinutes);
    else if (frm.bWeekly && bDayOfTarget)
        TickWeekly(app, lMinutes);
    else if (!frm.bWeekly && frm.iNumMonths > 0 && bDayOfTarget)
        TickMonthly(app, lMinutes);
}

// A target carried past midnight is a small time of day and looks long overdue. It is recognised only within
// the first hour, midnight itself excluded; a later one is run at once. Both are intentional.
static bool bIsTomorrowMorning(const frmScheduler& frm, std::int64_t lSecondsOverdue)
{
    return frm.dtTimeTarget > 0 && lDiffSeconds(frm.dtTimeTarget, dtFromTime({0, 59, 59})) >= 0 &&
           lSecondsOverdue > frm.lRunIntervalSeconds;
}

static void TickTimeBased(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    const double dtNow = dtTimePart(app.svc.objClock.dNow());
    const std::int64_t lSeconds = lDiffSeconds(frm.dtTimeTarget, dtNow);
    DisplayTimeRemaining(app, frm.dtTimeTarget, dtNow);
    if (lSeconds < 0) {
        frm.dtLastFired = -1;  // the same time of day is another target the next day
        return;
    }
    if (bIsTomorrowMorning(frm, lSeconds)) {
        DisplayTimeRemaining(app, dtTimePart(dtAddSeconds(dtNow, frm.lRunIntervalSeconds)), 0);
        return;
    }
    FireAndMoveOn(frm, true, frm.dtTimeTarget, [&app, &frm] {
        // From the last target and not from the end of the run, so that the runs keep their grid.
        frm.dtTimeTarget = dtTimePart(dtAddSeconds(frm.dtTimeTarget, frm.lRunIntervalSeconds));
        SkipMissedRuns(app, frm.dtTimeTarget);
    });
}

void Timer1_Timer(Application& app)
{
    if (app.frmScheduler.bTimeBased)
        TickTimeBased(app);
    else
        TickCalendar(app);
}
