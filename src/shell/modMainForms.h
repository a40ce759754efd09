// Loads the frame window and the main form; needed even if neither is shown.
// Room: shell.
#pragma once

struct Application;

/// Fills the lists, sets up both tables, loads the settings and enables the commands for a new job. Only the
/// first call in a process does anything. Raises clsRaisedError for a malformed number in the settings or an
/// index outside its list.
void LoadMainForms(Application& app);
