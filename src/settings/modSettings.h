// Settings of the main form and its frame window, kept between sessions.
// Room: settings.
//
// Everything is in the file app.sIniFile. Missing files and keys give defaults. Values are truncated to 499
// bytes, including details strings.
#pragma once

#include <functional>
#include <string>

struct Application;
struct frmImageViewer;
struct frmMainMDI;

/// Default conversion options: compression, pages, append, quality and seven texts.
extern const std::string kFirstStartImageConversionOptions;

/// Loads the settings of frmMain into its fields, controls and tables. Fill the combo boxes of types,
/// processes, window states and priorities first. fnRefreshGUIOptions shows the fields of the chosen action;
/// it is called after the options are loaded and before the types. A malformed number or an index outside its
/// list is replaced by the default, and a box names section and key; in a run without windows it raises
/// clsRaisedError with that text, and settings loaded so far remain.
void ReadIniFile(Application& app, const std::function<void()>& fnRefreshGUIOptions);

/// Saves them. Does nothing, silently, if the file can't be written.
void SaveIniFile(Application& app);

/// Same for the position of the frame window.
void ReadIniFile(Application& app, frmMainMDI& frm);
void SaveIniFile(Application& app, const frmMainMDI& frm);

/// Same for the position of the viewer dialog.
void ReadIniFile(Application& app, frmImageViewer& frm);
void SaveIniFile(Application& app, const frmImageViewer& frm);
