// The scheduler's form: loading, its buttons, tabs and options.
// Room: scheduler.
//
// The form is loaded once and lives as long as the program; Done only hides it, and a running schedule goes
// on.
#pragma once

#include <string>

struct Application;

/// Fills the lists and captions, connects the handlers and reads the settings.
void frmScheduler_Load(Application& app);

/// Saves the recent list and the settings; the timer stops. Does nothing if the form isn't loaded.
void frmScheduler_Unload(Application& app);

/// Fills the job file's list from the settings file and selects the newest. Loads the form if need be.
void SetUpScheduler(Application& app, const std::string& sIniFile);

/// Shows the chosen tab's page.
void TabStrip1_Click(Application& app);

/// Picks a job file. Cancelling intentionally shows a message, and the schedule then has no job file.
void cmdSelectScheduledJobFile_Click(Application& app);

/// Hides the form; within StopTimer, unloads it.
void cmdDone_Click(Application& app);
