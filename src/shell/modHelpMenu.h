// The commands of the help menu.
// Room: shell.
#pragma once

struct Application;

/// Connects them, and F1 in both main windows.
void ConnectHelpMenu(Application& app);
