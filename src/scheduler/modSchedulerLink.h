// What the main form does with the scheduler: opening it, running its job, showing its countdown.
// Room: scheduler.
#pragma once

#include <cstdint>
#include <string>

struct Application;

/// Connects the scheduler's events to the main form and, if bPersistRunning, begins the saved schedule
/// afresh. For a process with windows; a run without them has no schedule.
void LinkScheduler(Application& app);

/// Opens the scheduler's form and returns when it is hidden.
void mnuScheduleConversionJob_Click(Application& app);

/// Opens, rewinds and runs a job file, with all messages of a run that the user starts.
void frmSched_RunTheJobEvent(Application& app, const std::string& sJobFile);

/// Shows the countdown in the frame's caption.
void frmSched_DisplayTimeRemainingEvent(Application& app, std::int32_t lDays, std::int32_t lHours,
                                        std::int32_t lMinutes, std::int32_t lSeconds);
