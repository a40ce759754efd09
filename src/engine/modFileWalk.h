// Walks the file list of a wildcard task; shared by conversions and special processes.
// Room: engine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "src/conversion/modOriginalFile.h"

struct Application;
struct clsConversionOptions;

/// For each file, starting at the resume position: processes events and stops if the run is paused; sets
/// source and target in objFile and creates the target's folder; shows file and progress; calls fnItem, which
/// is told what may become of the source and returns False to stop. If the target has no wildcard, all files
/// get the same one. Returns the position, from 1, at which the walk stopped, or one past the last.
std::int32_t lWalkFiles(Application& app, const clsConversionOptions& objOptions,
                        clsConversionOptions& objFile, const std::vector<std::string>& colFiles,
                        const std::function<bool(OriginalRule eRule)>& fnItem);

/// If the run is paused, stores where to resume: one file before lPosition, so that the last finished file is
/// repeated. 0 for a position below 3, and for a task without a list (position 0).
void KeepResumePosition(Application& app, std::int32_t lPosition);

/// Raises clsRunStopped if the run was stopped and the item failed: the item was abandoned, so don't record a
/// failure.
void LeaveIfStopped(const Application& app, const clsConversionOptions& objItem);

/// Logs each folder of a walk that couldn't be read as a failure of the task, and sets lResult to its code.
void LogUnreadableFolders(Application& app, std::int32_t lRow, const clsConversionOptions& objOptions,
                          const std::vector<std::string>& aUnreadable, std::int32_t& lResult);

/// Notes in the request that the run was paused while the file list was being built.
void NotePauseBeforeWalk(Application& app, clsConversionOptions& objOptions);
