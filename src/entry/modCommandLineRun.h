// Runs a parsed request without windows and reports the outcome.
// Room: entry.
#pragma once

#include <cstdint>

struct Application;
struct clsConversionOptions;

/// Runs one task or a whole job file. Returns 0 on success. On failure, returns -1 for a job (any row in the
/// log table counts), or a failed file's code for a single task. Reports go to sLogFile and, with
/// bVerbose, to message boxes.
std::int32_t lRunFromCommandLine(Application& app, clsConversionOptions& objOptions);
