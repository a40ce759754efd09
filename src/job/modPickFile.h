// Asks the user for a file.
// Room: job.
#pragma once

#include <cstdint>
#include <string>

struct Application;

/// The path picked, "" on cancel. The texts come translated; lFilterIndex counts from 1. The title decides
/// the kind of dialog: one that contains the translated word "save", whatever its case, saves, any other
/// opens.
std::string sPickFile(Application& app, const std::string& sTitle, const std::string& sFilter,
                      std::int32_t lFilterIndex);

/// Whether a dialog of that title saves.
bool bTitleSaves(Application& app, const std::string& sTitle);
