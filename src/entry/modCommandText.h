// The process's arguments as the one text that the command line grammar is written for.
// Room: entry.
#pragma once

#include <string>
#include <vector>

/// Stands for a "/" that belongs to a path, where the grammar would take a "/" for the head of a switch.
constexpr char kSlashOfPath = '\x1f';

/// The arguments joined by one blank. The "/" of a host path don't cut: in an argument that follows a lone
/// /S, /T, /L, /B or /J, or that begins with one of these, they become kSlashOfPath. A single argument is
/// taken for the whole line and left as it is.
std::string sCommandText(const std::vector<std::string>& aArguments);

/// The text with "/" where kSlashOfPath stands.
std::string sWithSlashes(const std::string& sText);
