// Opens files, folders, web pages and mails with the desktop's programs.
// Room: commands.
#pragma once

#include <string>

struct Application;

/// Opens an existing file or folder with the program that the desktop has for it; a text file with the user's
/// editor. False if that fails; the caller reports it. Waits up to a second for a failure, handling events
/// meanwhile.
bool bOpenPath(Application& app, const std::string& sPath);

/// The same for a web page ("https://...") or a mail ("mailto:...").
bool bOpenAddress(Application& app, const std::string& sAddress);
