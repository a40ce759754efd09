// Records a run: the Pass marks, the log table and the report file.
// Room: engine.
#pragma once

#include <cstdint>
#include <string>

class Grid;
struct Application;
struct clsConversionOptions;

/// Adds a row for the request to fgLog, marked according to lErr. Also writes it to the settings' report
/// file, if there is one; if bVerboseLog is set and the request names a report file, that one becomes the
/// settings'. Despite its name, it records successes too.
void LogConversionError(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions);

/// Adds a row with the exit code of a launched program, always marked "+".
void LogExitCode(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions);

/// Marks the grid's current row "+" if lErr is 0, otherwise "-"; then makes lRow current, scrolls it into
/// view and processes events. Does nothing if the grid has no Pass column.
void UpdatePassedCell(Application& app, Grid& fgGrid, std::int32_t lRow, std::int32_t lErr);

/// Seconds since the start of the run, formatted for the status bar and the report.
std::string sSecondsOfRun(const Application& app);
