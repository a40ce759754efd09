// Walks the file list of a wildcard task: the half that conversions and special processes share.
// Room: engine.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct Application;
struct clsConversionOptions;

/// For each file from the resume position on: lets events run and leaves when the run was paused; puts the
/// file and its target into objFile, making the target's folder; shows file and progress; and calls fnItem,
/// which returns False to end the walk. A task without wildcard in its target gives every file the same
/// target. Returns the position at which it left, one beyond the last after a whole walk.
std::int32_t lWalkFiles(Application& app, const clsConversionOptions& objOptions,
                        clsConversionOptions& objFile, const std::vector<std::string>& colFiles,
                        const std::function<bool()>& fnItem);

/// Keeps the place for the next start when the run was paused: one file back from lPosition, so that the last
/// finished file is repeated; 0 for a position below 3, and for a task without a list (position 0).
void KeepResumePosition(Application& app, std::int32_t lPosition);

/// Puts the translated notice into the request when Pause came while its list was built.
void NotePauseBeforeWalk(Application& app, clsConversionOptions& objOptions);
