// Decides what the user may do at any moment.
// Room: commands.
#pragma once

struct Application;

/// Sets the enabled state of the toolbar's buttons from the state of the run, the table and the tab shown,
/// and copies it to the menu items and to the form's own buttons. Called after every change that could
/// matter.
void UpdateMenuToolbar(Application& app);
