// Asks the user for a file.
// Room: job.
#pragma once

#include <cstdint>
#include <string>

struct Application;

/// Returns the chosen path, or "" if cancelled. Texts must be translated already; lFilterIndex counts from 1.
/// The dialog saves if its title contains the translated word "save" in any case, otherwise it opens.
std::string sPickFile(Application& app, const std::string& sTitle, const std::string& sFilter,
                      std::int32_t lFilterIndex);

/// True if a dialog with that title saves.
bool bTitleSaves(Application& app, const std::string& sTitle);
