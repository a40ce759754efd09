// Runs one conversion task over its whole file list.
// Room: engine.
#pragma once

#include <cstdint>

struct Application;
struct clsConversionOptions;

/// lResult becomes 0 for a pass, -10000 when no file list could be made, or a failed file's code. A failing
/// file doesn't stop the list. In a list the item's result counts, not its lErr, so that a file that could
/// not be loaded fails neither the file nor the task; with a report file in the settings the last file alone
/// decides.
void PerformBlockConversion(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                            std::int32_t& lResult);
