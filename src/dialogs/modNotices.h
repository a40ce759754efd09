// The notice of a type mismatch, and the splash screen.
// Room: dialogs.
#pragma once

struct Application;

/// Sets the captions, which stay English, and the handlers. The notice is loaded once; its buttons hide it,
/// so that the tick stays.
void frmTypeMatchNotification_Load(Application& app);

/// Sets the texts of the splash screen.
void frmPleaseWait_Load(Application& app);
