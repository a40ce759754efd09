// Startup: chooses between running without windows and opening the main window.
// Room: entry.
#pragma once

#include <string>

#include "src/translator/modTranslator.h"

class ProgramFolders;

/// Path of the settings file, shared by all instances with the same settings folder.
std::string sSettingsFile(const ProgramFolders& objFolders);

/// Executes the command text. An empty text opens the main window; a valid one runs without windows, or opens
/// a job in the main window (/J with /O); an invalid one is reported. If frmMain is visible afterwards, the
/// process goes on as a window; otherwise it ends without saving settings. Never raises: errors that end a
/// run are reported.
void Main(Application& app, const std::string& sCommandLine);

/// Shows the splash screen, then the frame window and the main form. Without a display, only shows an error.
void ShowMainWindows(Application& app);

/// Sets sIniFile, sHelpFile and the translator, which everything else depends on. On a first start in a
/// foreign locale the user is asked for a language by fnSelectLanguage.
void InitializeProcess(Application& app, const SelectLanguage& fnSelectLanguage = {});
