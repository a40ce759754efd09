// The running schedule: Begin, End and the tick, which decides when the job runs.
// Room: scheduler.
//
// The tick comes every second while the timer is on and doesn't return until a run it started is over. It is
// an unattended act: the dispatcher refuses it while a run goes on, a form or a box is open, or another tick
// is at work. No target is run twice.
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

/// The tick: shows the countdown, and runs the job when its target is due. A target is moved on even if the
/// run raised an error, which is then let through.
void Timer1_Timer(Application& app);
