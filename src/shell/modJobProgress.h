// How far a run is, over the whole job.
// Room: shell.
#pragma once

struct Application;

/// Shows pbJob while a run goes on, from 0 to 1000, with the time left as its tool tip once it can be told.
/// Call it once, for a process with windows.
void ConnectJobProgress(Application& app);

/// Brings the bar up to date.
void ShowJobProgress(Application& app);
