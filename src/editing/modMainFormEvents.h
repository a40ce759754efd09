// Which routine each event of the main form runs.
// Room: editing.
#pragma once

struct Application;

/// Sets the handlers of the main form's fields, tables, buttons, toolbar and menus, all through the
/// dispatcher. Called once, when the settings have been read.
void ConnectMainForm(Application& app);
