// Files and folders dropped on the form.
// Room: editing.
#pragma once

#include <string>
#include <vector>

struct Application;
struct FileFields;

/// Adds a task for each path, in the order of their names, as if it had been typed as the source and Add
/// chosen. A folder becomes the pattern of all its files of the selected type. A single job file is opened
/// instead.
void fgToDo_Drop(Application& app, const std::vector<std::string>& aPaths);
