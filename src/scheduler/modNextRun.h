// When a schedule runs next: its first target, the weekly and monthly targets after it, and skipped runs.
// Room: scheduler.
//
// Daily targets need no search: the tick adds days to the last one (modTimer). All times are local.
#pragma once

#include <string>

struct Application;
struct frmScheduler;

/// The first target of a time based schedule: the time of day one interval from now. A carry into the next
/// day is intentionally lost; the tick copes with it.
double dtFirstTimeTarget(Application& app);

/// Sets dtUserTargetTime, dtTargetComplete and, for a monthly schedule, sTargetDate. A target within the
/// present minute is today's. A monthly target may lie in the past. Tells the user what days 29 to 31 mean.
/// Raises kErrTypeMismatch if the day of the month only starts with a number.
void FindFirstCalendarTarget(Application& app);

/// The next weekly target, counted from today; uses and clears bFirstWeeklySearch.
double WeeklyFindNextTargetDate(Application& app);

/// Sets iTargetWeekday to the next ticked day: today if its time is yet to come, and last of all if it isn't.
/// Unchanged if none is ticked.
void FindNextWeekDay(frmScheduler& frm, double dtNow);

/// Sets iTodayWeekday; if that day is ticked, iTargetWeekday too.
bool bTodayIsScheduledDay(frmScheduler& frm, double dtNow);

/// Moves dtCalendarTarget on by iNumMonths to the user's day of the month (the last one of a shorter month)
/// and returns it.
double MonthlyFindNextTargetDate(Application& app, const std::string& sDay);

/// "M/D/YYYY time" with the latest day up to sDay that the month has. Raises kErrTypeMismatch if sDay isn't a
/// number, and kErrOverflow if no day will do.
std::string BuildValidDateText(const Application& app, const std::string& sMonth, const std::string& sDay,
                               const std::string& sYear, const std::string& sTime);

/// Moves a missed target of a time based schedule past the present by whole intervals, unless the job is to
/// run again immediately. A target that passes midnight keeps its day and is never due again; this is
/// intentional.
double SkipMissedRuns(Application& app, double& dtTarget);

/// Raises DisplayTimeRemainingEvent with the distance between two times.
void DisplayTimeRemaining(Application& app, double dtFrom, double dtTo);
