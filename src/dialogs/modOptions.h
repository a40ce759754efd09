// The dialog of general options.
// Room: dialogs.
#pragma once

struct Application;

/// Shows the dialog. With Apply the options take effect at once; the main form saves them with its settings.
void mnuOptions_Click(Application& app);

/// Sets the captions and handlers, translates the form and fills it with the main form's options.
void frmOptions_Load(Application& app);
