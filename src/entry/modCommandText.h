// Converts the process's arguments to the single text that the command line grammar expects.
// Room: entry.
#pragma once

#include <string>
#include <vector>

/// Replaces a "/" that belongs to a value, where the grammar would see the start of a switch.
constexpr char kSlashOfPath = '\x1f';

/// Joins the arguments with spaces. So that no value can smuggle in a switch, kSlashOfPath replaces every "/"
/// in an argument that follows a lone switch with a value ("/6" "a title / with a slash"), and in a path that
/// follows /S, /T, /L, /B or /J in the same argument, up to a space before another switch. An argument that
/// is exactly a switch always is one. A single argument is the whole command text, of which only a path
/// directly after its first switch ("/J/home/me/j.vjb") is protected.
std::string sCommandText(const std::vector<std::string>& aArguments);

/// Turns kSlashOfPath back into "/".
std::string sWithSlashes(const std::string& sText);
