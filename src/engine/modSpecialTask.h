// Runs a special process task: images, a launch, or loading a job's next slice.
// Room: engine.
#pragma once

#include <cstdint>
#include <string>

#include "src/conversion/modOriginalFile.h"

struct Application;
struct clsConversionOptions;

/// Sets lResult, and returns it: 0 on success, -10000 if the file list couldn't be made, or the code of a
/// failed file. A failed file doesn't stop the list, except with code -1. Unlike in a conversion's list, a
/// file that can't be loaded fails. If the settings name a report file, every file is logged and only the
/// last counts.
std::int32_t PerformBlockSpecialized(Application& app, std::int32_t lRow, clsConversionOptions& objOptions,
                                     std::int32_t& lResult);

/// Runs one item: an image, a launch, or loading the next slice of a long job, which replaces fgToDo. Any
/// other number does nothing and isn't an error. Then disposes of an image's source if the settings say so
/// and lErr is 0 (see modOriginalFile.h). Returns lErr.
std::int32_t lPerformSpecialItem(Application& app, clsConversionOptions& objOptions,
                                 OriginalRule eRule = OriginalRule::MayBeDeleted);

/// The message for a launch's lErr; "" for any other code.
std::string sExitCodeText(const clsConversionOptions& objOptions);
