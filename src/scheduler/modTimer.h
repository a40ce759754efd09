// The running schedule: Begin, End and the tick, which decides when the job runs.
// Room: scheduler.
//
// The tick comes every second while the timer is on and doesn't return until a run it started is over. No
// target is run twice, and no run is started within another.
#pragma once

struct Application;

/// Begin, by the button or as the program starts: checks the inputs and starts the timer. Otherwise shows
/// what is wrong. Lets a clsRaisedError through; nothing has started then.
void cmdStartTimer_Click(Application& app);

void StartRelativeTimer(Application& app);
void StartCalendarTimer(Application& app);

/// Takes over the schedule as entered and starts the timer.
void StartTimer(Application& app);

/// End: stops the timer. The target and the countdown stay as they are.
void StopTimer(Application& app);

/// Swaps Begin for End and locks the inputs, or the other way round. Unlocking intentionally enables the
/// number of days even if it isn't chosen; the choice between the kinds and the page "Options" are never
/// locked.
void DisableScheduleInputs(Application& app);
void EnableScheduleInputs(Application& app);

/// The tick: shows the countdown, and runs the job when its target is due. Does nothing while a run goes on
/// or a modal form is open. A target is moved on even if the run raised an error, which is then let through.
void Timer1_Timer(Application& app);
