// Runs a parsed request without windows and reports the result in text.
// Room: entry.
#pragma once

#include <cstdint>

struct Application;
struct clsConversionOptions;

/// One task, or a whole job file. 0 for success, else not 0: -1 for a job of which any row came into the log
/// table, the first failure's code for a single task. Report lines go to sLogFile and, with bVerbose, to
/// boxes.
std::int32_t lRunFromCommandLine(Application& app, clsConversionOptions& objOptions);
