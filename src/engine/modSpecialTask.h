// Runs one task of a special process: over its file list, as a launch, or as the load of a job's next part.
// Room: engine.
#pragma once

#include <cstdint>
#include <string>

struct Application;
struct clsConversionOptions;

/// lResult, which is returned too, becomes 0 for a pass, -10000 when no file list could be made, or a failed
/// file's code. A failing file doesn't stop the list; only the code -1 does. Unlike in a conversion's list, a
/// file that could not be loaded fails. With a report file in the settings every file is logged, and the last
/// alone decides.
std::int32_t PerformBlockSpecialized(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                                     std::int32_t& lResult);

/// One item: a picture, a launch, or the next part of a long job, which replaces the table fgToDo. A number
/// that is none of these does nothing and is no failure. Returns lErr. The source of a picture is deleted
/// afterwards where the settings ask for it, the result is 0 and the source is not the target.
std::int32_t lPerformSpecialItem(Application& app, clsConversionOptions& objOptions);

/// The text about a launch's outcome, by lErr; "" for a code that no launch has.
std::string sExitCodeText(const clsConversionOptions& objOptions);
