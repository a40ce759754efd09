// Converts the process's arguments to the single text that the command line grammar expects.
// Room: entry.
#pragma once

#include <string>
#include <vector>

/// Replaces a "/" inside a path, where the grammar would see the start of a switch.
constexpr char kSlashOfPath = '\x1f';

/// Joins the arguments with spaces. Each "/" in a path, which is an argument that follows a lone /S, /T, /L,
/// /B or /J or starts with one of them, becomes kSlashOfPath. A single argument is taken as the whole command
/// text, unchanged.
std::string sCommandText(const std::vector<std::string>& aArguments);

/// Turns kSlashOfPath back into "/".
std::string sWithSlashes(const std::string& sText);
