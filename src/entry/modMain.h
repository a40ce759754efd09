// The start of the process: tells its run modes apart.
// Room: entry.
#pragma once

#include <string>

class ProgramFolders;
struct Application;

/// The path of the settings file: one for all that start the program with the same folder.
std::string sSettingsFile(const ProgramFolders& objFolders);

/// Carries out the command text: an empty one opens the main window, one that parses runs without windows (or
/// opens a job in the main window, with /J and /O), any other is reported and ends. When frmMain is visible
/// afterwards the process goes on as a window; else it ends, and nothing is saved to the settings. Raises
/// nothing: an error that ended a run has been reported.
void Main(Application& app, const std::string& sCommandLine);

/// Shows the banner, then the frame and the main form. Without a display it says so and shows nothing.
void ShowMainWindows(Application& app);

/// sIniFile, the translator and the help file's name: what every entry into the program needs first.
void InitializeProcess(Application& app);
