// The dialog of conversion options.
// Room: dialogs.
#pragma once

#include <string>

struct Application;

/// Shows the dialog with these options and returns them as Done left them; unchanged after Cancel.
std::string sEditConversionOptions(Application& app, const std::string& sOptions);

/// Sets captions, handlers and the inputs' first values, and translates the form.
void frmConversionOptions_Load(Application& app);

/// Fills the inputs from the form's sOptions; without a "^" in it they keep their first values. A compression
/// that isn't offered chooses none.
void SetUpConversionOptions(Application& app);

/// Joins the inputs, less any "^" in them, to sOptions and unloads the form. The image library has the JPEG
/// quality from now on.
void ConversionOptions_Done(Application& app);
