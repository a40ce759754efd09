// Picking files and folders for the fields, and opening what they name.
// Room: editing.
#pragma once

#include <string>

struct Application;
struct FileFields;

/// Opens a file or a folder with the desktop; a box says if there is none, or if the desktop can't.
void LaunchFileOrFolder(Application& app, const std::string& sPath);

/// Starts the program of the launch fields with its arguments, without waiting for it.
void LaunchCommandLine(Application& app);

/// Ask for a file, starting where the field points, and put it into the field. Cancelling changes nothing.
void SelectSourceFile(Application& app, const FileFields& objFields);
void SelectTargetFile(Application& app, const FileFields& objFields);
void SelectCommandLine(Application& app);

/// Ask for a folder, and put every file there of the field's type into the field.
void SelectSourceFolder(Application& app, const FileFields& objFields);
void SelectTargetFolder(Application& app, const FileFields& objFields);
