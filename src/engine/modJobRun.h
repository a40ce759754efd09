// The run of a job: from the first task without a mark to the last, each marked as it ends.
// Room: engine.
#pragma once

#include <cstdint>
#include <functional>

class Grid;
struct Application;
struct clsConversionOptions;

/// What a run needs of the floors above it. A run without windows needs none of it.
struct JobRunHooks {
    /// Writes the changed fields back to their row; False when that was refused.
    std::function<bool(Application& app)> ConversionJobUpdate;
};

/// Runs the table's tasks in order. A failing task doesn't stop the run; Pause does, after the file in work,
/// and the next start goes on at the task that it left unmarked. Clears the log table. A clsRaisedError
/// passes through; the caller then puts the run's state back with EndRun.
void ConversionJobBegin(Application& app, const JobRunHooks& objHooks = {});

/// Stops the run at its next test, if keyPause is enabled.
void ConversionJobPause(Application& app);

/// Clears the marks of all rows and the resume position, and empties the log table.
void ConversionJobRewind(Application& app);

/// Puts the state of a run back to idle, however it ended.
void EndRun(Application& app);

/// Gives the first row without a mark, one beyond the last task if there is none; rows become current on the
/// way.
void FindStartPoint(Application& app, Grid& fgToDo, std::int32_t& lRow);

/// bGoOn False: the user wants to go back to the fields that differ from their row.
void bCheckToUpdateDirtyConversionItem(Application& app, const JobRunHooks& objHooks, bool& bGoOn);

/// bNone True: the table has no task, and the user was told.
void bCheckToZeroConversionItems(Application& app, bool& bNone);

/// One task, by its action: "C" anywhere in it makes a conversion, else "S" a special process. lErr is its
/// outcome.
void PerformBlock(Application& app, std::int32_t lRow, clsConversionOptions& objOptions, std::int32_t& lErr);
