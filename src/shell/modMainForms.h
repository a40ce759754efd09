// Loads the frame and the main form: what happens before either can be used, shown or not.
// Room: shell.
#pragma once

struct Application;

/// Fills the lists, sets up both tables, reads the settings, and brings the commands to the state of a new
/// job. Only the first call of a process does anything. A setting that is no number, or a choice that its
/// list doesn't have, raises clsRaisedError.
void LoadMainForms(Application& app);
