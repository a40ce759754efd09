// What the program remembers between two starts: the settings of the main form and of its frame.
// Room: settings.
//
// All of it lies in the file app.sIniFile. A missing file or key gives the default. Values are cut at 499
// bytes, so a details string of that length comes back without its tail.
#pragma once

#include <functional>
#include <string>

struct Application;
struct frmMainMDI;

/// The conversion options of a first start: compression, pages, append, quality and seven texts.
extern const std::string kFirstStartImageConversionOptions;

/// Reads the settings of frmMain into its fields, controls and tables. The combo boxes of types, processes,
/// window states and priorities must be filled before; fnRefreshGUIOptions shows the fields of the chosen
/// action, between the reading of the options and that of the types. Raises clsRaisedError for a number that
/// is none and for an index that a list doesn't have; what was read before stays read.
void ReadIniFile(Application& app, const std::function<void()>& fnRefreshGUIOptions);

/// Writes them. A file that can't be written is left as it is, without a message.
void SaveIniFile(Application& app);

/// The same for the place of the frame window.
void ReadIniFile(Application& app, frmMainMDI& frm);
void SaveIniFile(Application& app, const frmMainMDI& frm);
