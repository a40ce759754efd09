// Expands the source of a task into a list of files.
// Room: job.
//
// Only two wildcards exist: "*.*" for every file, and "*.ext". Everything before the first "*" is the folder.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/base/clsConversionOptions.h"

struct Application;

constexpr std::int32_t kListNoFolder = -1;
constexpr std::int32_t kListPaused = -2;

/// Fills colFiles with the source files of a task, as paths in the style of sOriginalFile. False, with a
/// message in sErr, if the file or the wildcard's folder doesn't exist or the folder can't be read. If the
/// run is paused, stops and returns True with the files found so far. pUnreadable, if any, receives the
/// subfolders that can't be read.
bool bCreateFileList(Application& app, clsConversionOptions& objOptions, std::vector<std::string>& colFiles,
                     std::vector<std::string>* pUnreadable = nullptr);

/// The message for a folder that exists and can't be read.
std::string sUnreadableFolder(Application& app, const std::string& sFolder);

/// Adds a folder's matching files in ascending order and then, with bRecurse, those of each subfolder.
/// Appends a separator to sFolder. A linked subfolder is skipped if its target was already visited, so cycles
/// of links terminate. Processes events before each file. Returns 0; kListNoFolder if the folder doesn't
/// exist or can't be read; kListPaused if bRunning became False, which leaves the hourglass on.
std::int32_t lAddFolderFiles(Application& app, std::string& sFolder, const std::string& sPattern,
                             std::vector<std::string>& colFiles, bool bRecurse,
                             std::vector<std::string>* pUnreadable = nullptr);

/// True if the pattern is "*.*", or "*." followed by the extension in any case. "*." matches files without an
/// extension; a lone "*" matches nothing.
bool bMatchesPattern(const std::string& sPattern, const std::string& sExtension);

/// The two parts of a wildcard source: everything before the first "*", unchanged, and the rest.
std::string sFolderOfPattern(const std::string& sSource);
std::string sPatternOfSource(const std::string& sSource);

/// True if a source or target contains "*".
bool bHasWildcard(const std::string& sPath);
