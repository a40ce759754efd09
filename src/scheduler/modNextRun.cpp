// Computes the targets of a schedule.
#include "src/scheduler/modNextRun.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/platform/clock.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/scheduler/modDateTime.h"
#include "src/translator/modTranslator.h"

namespace
{
constexpr std::int16_t kDaysOfWeek = 7;
constexpr std::int64_t kSecondsOfDay = 86400;
/// From this day on, some months are too short.
constexpr double kFirstDayMissingSomewhere = 29;
constexpr double kLastDayOfMonth = 31;
constexpr std::int32_t kLargestDay = std::numeric_limits<std::int16_t>::max();
}  // namespace

double dtFirstTimeTarget(Application& app)
{
    return dtTimePart(dtAddSeconds(app.svc.objClock.dNow(), app.frmScheduler.lIntervalSeconds));
}

// The date of a daily schedule's first target, for both daily variants: neither the number of days nor the
// weekend plays a part.
static double dtFirstDate(const frmScheduler& frm, double dtNow)
{
    const std::string sNow = sDateTimeText(dtTimePart(dtNow));
    const bool bPassed = lDiffMinutes(frm.dtUserTargetTime, dtTimePart(dtNow)) >= 1;
    const bool bTomorrow =
        frm.cbAmPm.Text() != "AM" ? bContains(sNow, "PM") && bPassed : !bContains(sNow, "AM") || bPassed;
    return dtAddDays(dtDatePart(dtNow), bTomorrow ? 1 : 0);
}

static void NoteOnShortMonths(Application& app, const std::string& sDay)
{
    const double dDay = dLeadingNumber(sDay);
    if (dDay != kFirstDayMissingSomewhere && dDay != kFirstDayMissingSomewhere + 1 && dDay != kLastDayOfMonth)
        return;
    app.svc.objWindows.MsgBox(sTranslate(app, "If a month has fewer than " + sDay +
                                                  " days then the job will run on the last day of the month"),
                              sTranslate(app, "Information"), BoxIcon::Information, BoxButtons::Ok);
}

// This month or the next: the number of months counts from there on. A target of today whose time has passed
// stays in the past; the tick moves it on without running the job.
static double dtFirstMonthlyTarget(Application& app, double dtNow, const std::string& sTime)
{
    frmScheduler& frm = app.frmScheduler;
    const CalendarDate objToday = objDateOf(dtNow);
    const std::string sMonth = std::to_string(objToday.lMonth);
    const std::string sYear = std::to_string(objToday.lYear);
    const std::string sDay = frm.txtDayOfMonth.Text();
    frm.sTargetDate = sMonth + "/" + sDay + "/" + sYear;
    NoteOnShortMonths(app, sDay);
    if (!bIsDateText(frm.sTargetDate))
        frm.sTargetDate = BuildValidDateText(app, sMonth, sDay, sYear, sTime);
    double dtDate = dtDatePart(dtFromText(frm.sTargetDate));
    if (objDateOf(dtDate).lDay < objToday.lDay)
        dtDate = dtAddMonths(dtDate, 1);
    return dtJoin(dtDate, frm.dtUserTargetTime);
}

void FindFirstCalendarTarget(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    const double dtNow = app.svc.objClock.dNow();
    const std::string sTime = frm.cbHours.Text() + ":" + frm.cbMinutes.Text() + ":00 " + frm.cbAmPm.Text();
    frm.dtUserTargetTime = dtTimePart(dtFromText(sTime));
    frm.dtTargetComplete = dtJoin(dtFirstDate(frm, dtNow), frm.dtUserTargetTime);
    if (frm.optWeekly.Value())
        frm.dtTargetComplete = WeeklyFindNextTargetDate(app);
    if (frm.optMonthly.Value())
        frm.dtTargetComplete = dtFirstMonthlyTarget(app, dtNow, sTime);
}

static bool bDayTicked(const frmScheduler& frm, std::int16_t iDay)
{
    const std::array<bool, kDaysOfWeek> aDays{frm.bSun, frm.bMon, frm.bTue, frm.bWed,
                                              frm.bThu, frm.bFri, frm.bSat};
    return aDays.at(static_cast<std::size_t>(iDay - 1));
}

bool bTodayIsScheduledDay(frmScheduler& frm, double dtNow)
{
    frm.iTodayWeekday = iWeekday(dtNow);
    if (!bDayTicked(frm, frm.iTodayWeekday))
        return false;
    frm.iTargetWeekday = frm.iTodayWeekday;
    return true;
}

void FindNextWeekDay(frmScheduler& frm, double dtNow)
{
    const bool bToday = bTodayIsScheduledDay(frm, dtNow);
    const ClockTime objTarget = objTimeOf(frm.dtTargetComplete);
    const double dtTarget = dtFromTime({objTarget.lHour, objTarget.lMinute, 0});
    if (bToday && lDiffSeconds(dtTarget, dtTimePart(dtNow)) < 0)
        return;
    for (std::int16_t iAhead = 1; iAhead <= kDaysOfWeek; ++iAhead) {
        const auto iDay = static_cast<std::int16_t>((frm.iTodayWeekday - 1 + iAhead) % kDaysOfWeek + 1);
        if (bDayTicked(frm, iDay)) {
            frm.iTargetWeekday = iDay;
            return;
        }
    }
}

static std::int32_t lDaysToWeeklyTarget(const frmScheduler& frm, std::int32_t lToday, bool bTimePassed)
{
    const std::int32_t lTarget = frm.iTargetWeekday;
    // 0 (from 0.4, or a field that was blank at Begin) would leave the target in place for good.
    const std::int32_t lWeeks = std::max<std::int32_t>(frm.iNumWeeks, 1);
    if (lToday < lTarget)  // later in this week, Sunday to Saturday: the number of weeks has no effect
        return lTarget - lToday;
    if (lToday > lTarget) {  // past the end of the week
        const std::int32_t lWeeksSkipped = lWeeks < 2 || frm.bFirstWeeklySearch ? 0 : lWeeks - 1;
        return lWeeksSkipped * kDaysOfWeek + kDaysOfWeek - (lToday - lTarget);
    }
    // Intentionally the whole interval, at the first Begin too, and not just until the next such weekday.
    return bTimePassed ? lWeeks * kDaysOfWeek : 0;
}

double WeeklyFindNextTargetDate(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    const double dtNow = app.svc.objClock.dNow();
    FindNextWeekDay(frm, dtNow);
    const bool bTimePassed = lDiffSeconds(frm.dtUserTargetTime, dtTimePart(dtNow)) > 0;
    const std::int32_t lDays = lDaysToWeeklyTarget(frm, iWeekday(dtNow), bTimePassed);
    frm.bFirstWeeklySearch = false;
    return dtJoin(dtAddDays(dtDatePart(dtNow), lDays), frm.dtUserTargetTime);
}

std::string BuildValidDateText(const Application& app, const std::string& sMonth, const std::string& sDay,
                               const std::string& sYear, const std::string& sTime)
{
    // Whether a day exists is left to the date parser; no table of month lengths is needed.
    std::string sDate = sMonth + "/" + sDay + "/" + sYear;
    std::int32_t lDay = lToLong(sDay, app.svc.objLocale.cDecimalSign());
    while (!bIsDateText(sDate)) {
        if (--lDay < 1 || lDay >= kLargestDay)
            throw clsRaisedError(kErrOverflow, "Overflow");
        sDate = sMonth + "/" + std::to_string(lDay) + "/" + sYear;
    }
    return sDate + " " + sTime;
}

double MonthlyFindNextTargetDate(Application& app, const std::string& sDay)
{
    frmScheduler& frm = app.frmScheduler;
    const ClockTime objTime = objTimeOf(frm.dtCalendarTarget);
    const std::string sTime = std::to_string(objTime.lHour) + ":" + std::to_string(objTime.lMinute) + ":00";
    const CalendarDate objNext = objDateOf(dtAddMonths(frm.dtCalendarTarget, frm.iNumMonths));
    const std::string sMonth = std::to_string(objNext.lMonth);
    const std::string sYear = std::to_string(objNext.lYear);
    // The user's day and not that of the last target, so that a short month doesn't drag the later ones down.
    std::string sDate = sMonth + "/" + sDay + "/" + sYear;
    if (!bIsDateText(sDate))
        sDate = BuildValidDateText(app, sMonth, sDay, sYear, sTime);
    frm.dtCalendarTarget = dtJoin(dtFromText(sDate), frm.dtRunTimeOfDay);
    return frm.dtCalendarTarget;
}

double SkipMissedRuns(Application& app, double& dtTarget)
{
    const frmScheduler& frm = app.frmScheduler;
    if (frm.bRunImmediately)
        return dtTarget;
    const double dtNow = dtTimePart(app.svc.objClock.dNow());
    while (lDiffSeconds(dtTarget, dtNow) >= 1)
        dtTarget = dtAddSeconds(dtTarget, frm.lRunIntervalSeconds);
    return dtTarget;
}

void DisplayTimeRemaining(Application& app, double dtFrom, double dtTo)
{
    if (!app.frmScheduler.DisplayTimeRemainingEvent)
        return;
    // The sign is lost on purpose: a target in the past reads like one in the future.
    const std::int64_t lTotal = std::abs(lDiffSeconds(dtFrom, dtTo));
    const std::int64_t lRest = lTotal % kSecondsOfDay;
    app.frmScheduler.DisplayTimeRemainingEvent(
        static_cast<std::int32_t>(lTotal / kSecondsOfDay), static_cast<std::int32_t>(lRest / 3600),
        static_cast<std::int32_t>(lRest / 60 % 60), static_cast<std::int32_t>(lRest % 60));
}
