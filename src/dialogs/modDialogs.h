// Connects the dialogs with the commands that open them.
// Room: dialogs.
#pragma once

struct Application;

/// For a main window. Without it, as in a run without windows, the commands do nothing.
void ConnectDialogs(Application& app);
