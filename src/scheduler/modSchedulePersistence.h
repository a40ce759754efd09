// The schedule's settings, kept between sessions.
// Room: scheduler.
//
// They are in section "frmScheduler" of app.sIniFile. The job file comes back through its recent list and not
// through its key.
#pragma once

struct Application;

/// Fills the form's inputs. A malformed value is reported in a message box that names section and key, and
/// counts as missing. Fill the lists of hours, minutes and AM/PM first.
void ReadIniFileScheduler(Application& app);

/// Saves the inputs if they are a sound schedule (ValidateSchedule), otherwise nothing. So changes alone,
/// without a Begin or a picked job file, are intentionally not kept.
void SaveIniFileScheduler(Application& app);
