// What must hold after a program saved a file, whatever failed on the way.
// Room: tests/faults/support.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/faults/support/fault_run.h"

/// Names are relative to the scratch folder.
struct ExpectedSave {
    std::string source;
    std::string source_content;
    std::string target;
    std::optional<std::string> old_content;  ///< of the target; nothing if there was none
    std::string new_content;                 ///< what a save without a fault writes
    std::string report = "work/report.txt";
    /// What the target may also be if a failure is reported: without pages that couldn't be read.
    std::vector<std::string> partial_contents = {};
};

/// One text for each of these that doesn't hold: the target is as it was or wholly new; it is new if the
/// program reported a success; the source is unchanged, or in a trash, or the target is new; the program said
/// something, in the report or on standard error; nothing else is left in the work folder.
std::vector<std::string> CheckSave(const ScratchFolder& folder, const ExpectedSave& expected,
                                   const FaultedRun& run);

/// The file's content; nothing if there is none.
std::optional<std::string> ContentOf(const ScratchFolder& folder, const std::string& name);

/// True if a trash below the scratch folder has a file with this content.
bool IsInTrash(const ScratchFolder& folder, const std::string& content);
