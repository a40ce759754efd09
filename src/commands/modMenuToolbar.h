// Which commands the user can choose right now.
// Room: commands.
#pragma once

struct Application;

/// Enables and disables the toolbar buttons according to the run, the task table and the current tab, then
/// mirrors them to the menu items and the form's buttons. Call it after any change that could matter.
void UpdateMenuToolbar(Application& app);
