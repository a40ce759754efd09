// Closing the main windows: what a run is asked first, and the settings that are saved.
// Room: shell.
#pragma once

#include "src/controls/form.h"

struct Application;

/// Connects closing by either main window and by the menu. Call it once, for a process with windows.
void ConnectClosing(Application& app);

/// True if the frame may close now. A run in progress is asked about; what was chosen happens, and then the
/// frame closes by itself. Other work is finished first, too.
bool frmMainMDI_QueryUnload(Application& app, CloseReason eReason);

/// Unloads the forms from the last loaded to the first; each saves its section of the settings, the frame
/// last.
void frmMainMDI_Unload(Application& app);
