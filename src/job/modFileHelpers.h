// What the program does with files beside reading and writing pictures: look, make folders, move, delete.
// Room: job.
//
// Paths are taken in either style, "\" or "/". Nothing here shows a message or throws.
#pragma once

#include <string>

struct Application;

/// Makes the folder and its missing parents. It reports nothing: the caller asks bFolderExists afterwards.
void CreateFolderPath(Application& app, const std::string& sFolder);

bool bFolderExists(Application& app, const std::string& sFolder);

/// True when the path, without the blanks around it, names a file. Folders and patterns are no files.
bool bFileExists(Application& app, const std::string& sPath);

/// Copies sTemp over sTarget and deletes sTemp, read-only or not. False if either failed; sTarget is then
/// whole in its old or its new form, and sTemp may still be there.
bool bMoveFileReplacing(Application& app, const std::string& sTemp, const std::string& sTarget);

/// Deletes a file, also a read-only one. False if it isn't there or can't be deleted.
bool bDeleteFileOnce(Application& app, const std::string& sFile);

/// True if there is no such file or it could be deleted. Else tries again each second, 20 times, and waits
/// once more before it gives up: whoever still holds the file gets the time to let it go.
bool bDeleteFileRetrying(Application& app, const std::string& sFile);

/// True for a folder that holds any file or folder.
bool bFolderHasEntries(Application& app, const std::string& sPath);
