// Runs a job from its first unmarked task to its last, marking each task as it ends.
// Room: engine.
#pragma once

#include <cstdint>
#include <functional>

class Grid;
struct Application;
struct clsConversionOptions;

/// Callbacks into higher floors. A run without windows needs none.
struct JobRunHooks {
    /// Writes the edited fields back to their row; False if they were rejected.
    std::function<bool(Application& app)> ConversionJobUpdate;
};

/// Clears the log and runs the tasks in order. A failed task doesn't stop the run. A pause stops it after the
/// current file; the next start resumes at the task left unmarked. Syncs what was saved. Restores the idle
/// state however the run ends; lets what is raised through. Does nothing once a close is waiting.
void ConversionJobBegin(Application& app, const JobRunHooks& objHooks = {});

/// Stops the run at its next check, if keyPause is enabled.
void ConversionJobPause(Application& app);

/// Clears all Pass marks, the resume position and the log.
void ConversionJobRewind(Application& app);

/// Waits until everything that a run saved is on the disk. Raises kErrPathFileAccess if the system reports
/// that something isn't.
void SyncRun(Application& app);

/// Finds the first unmarked row, or one past the last task if there is none. Changes the current row on the
/// way.
void FindStartPoint(Application& app, Grid& fgToDo, std::int32_t& lRow);

/// Asks about fields that differ from their row. bGoOn False: the user wants to return to them.
void bCheckToUpdateDirtyConversionItem(Application& app, const JobRunHooks& objHooks, bool& bGoOn);

/// bNone True: the table has no tasks, and the user has been told.
void bCheckToZeroConversionItems(Application& app, bool& bNone);

/// Runs one task: a conversion if the action contains "C", otherwise a special process if it contains "S".
/// lErr is the outcome.
void PerformBlock(Application& app, std::int32_t lRow, clsConversionOptions& objOptions, std::int32_t& lErr);
