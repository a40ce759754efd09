// Runs a conversion task over its file list.
// Room: engine.
#pragma once

#include <cstdint>

struct Application;
struct clsConversionOptions;

/// Sets lResult to 0 on success, -10000 if the file list couldn't be made, or the code of a failed file. A
/// failed file doesn't stop the list. For a list, the item's return value counts rather than its lErr, so a
/// file that can't be loaded isn't a failure. If the settings name a report file, only the last file counts.
void PerformBlockConversion(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                            std::int32_t& lResult);
