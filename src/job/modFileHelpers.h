// File operations other than reading and writing images.
// Room: job.
//
// Both path styles ("\" and "/") are accepted. Nothing here shows a message or throws.
#pragma once

#include <functional>
#include <string>

struct Application;

/// Creates the folder and its missing parents. Doesn't report failure: check bFolderExists afterwards.
void CreateFolderPath(Application& app, const std::string& sFolder);

bool bFolderExists(Application& app, const std::string& sFolder);

/// True if the trimmed path names a file; false for folders and wildcard patterns.
bool bFileExists(Application& app, const std::string& sPath);

/// Deletes a file, even a read-only one. False if it doesn't exist or can't be deleted.
bool bDeleteFileOnce(Application& app, const std::string& sFile);

/// True if the file doesn't exist or was deleted. Otherwise retries every second, 20 times, and waits one
/// more second before giving up, so that another process has time to close the file. Events are handled while
/// it waits; raises clsRunStopped if the run is stopped meanwhile. bMay is asked before each try; False gives
/// up at once.
bool bDeleteFileRetrying(Application& app, const std::string& sFile, const std::function<bool()>& bMay = {});

/// True if the folder contains any file or folder.
bool bFolderHasEntries(Application& app, const std::string& sPath);
