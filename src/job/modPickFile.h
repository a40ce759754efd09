// Asks the user for a file or a folder.
// Room: job.
#pragma once

#include <cstdint>
#include <string>

struct Application;

/// Returns the chosen path, or "" if cancelled. Texts must be translated already; lFilterIndex counts from 1
/// and comes back as the filter that was chosen. The dialog saves if its title contains the translated word
/// "save" in any case, otherwise it opens.
std::string sPickFile(Application& app, const std::string& sTitle, const std::string& sFilter,
                      std::int32_t& lFilterIndex);

/// The same, starting in the folder of sStartPath if there is one.
std::string sPickFileInFolder(Application& app, const std::string& sTitle, const std::string& sFilter,
                              std::int32_t& lFilterIndex, const std::string& sStartPath);

/// Returns the chosen folder, or "" if cancelled. Starts in sStartFolder if there is one.
std::string sPickFolder(Application& app, const std::string& sStartFolder);

/// True if a dialog with that title saves.
bool bTitleSaves(Application& app, const std::string& sTitle);
