// Keeps the record of a run: the Pass marks, the log table and the rows of the report file.
// Room: engine.
#pragma once

#include <cstdint>
#include <string>

class Grid;
struct Application;
struct clsConversionOptions;

/// Adds a row about the request to fgLog and marks it by lErr. The row goes to the report file of the
/// settings as well if there is one, or if bVerboseLog is set and the request names one, which then becomes
/// that of the settings. In spite of its name it records successes too.
void LogConversionError(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions);

/// Adds a row with the exit code of a program that was launched, always marked "+".
void LogExitCode(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions);

/// Marks the grid's current row, "+" for lErr 0 and "-" otherwise, then makes lRow current, brings it into
/// view and lets waiting events run. A grid without a Pass column is left alone.
void UpdatePassedCell(Application& app, Grid& fgGrid, std::int32_t lRow, std::int32_t lErr);

/// Seconds since the run began, as the status bar and the report show them.
std::string sSecondsOfRun(const Application& app);
