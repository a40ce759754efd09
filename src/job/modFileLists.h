// From the source of a task to the list of its files.
// Room: job.
//
// A wildcard here is one of two shapes only: "*.*", which is every file, and "*.ext". What stands before the
// first "*" is the folder.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/base/clsConversionOptions.h"

struct Application;

constexpr std::int32_t kListNoFolder = -1;
constexpr std::int32_t kListPaused = -2;

/// Fills colFiles with the paths of a task's sources, written in the style of sOriginalFile. False if the
/// file, or the folder of a wildcard, isn't there: sErr then says so. A pause ends the walk quietly, with
/// what was found so far and True.
bool bCreateFileList(Application& app, clsConversionOptions& objOptions, std::vector<std::string>& colFiles);

/// Adds the files of one folder that match the pattern, then, with bRecurse, those of each subfolder in turn,
/// the same way. Names are in ascending order. sFolder gets a separator at its end. A subfolder that is a
/// link is walked only if the folder behind it wasn't walked yet, so that links in a circle come to an end.
/// Lets events through before each file. 0; kListNoFolder if there is no such folder or it can't be
/// read; kListPaused if bRunning was False meanwhile, and then the hourglass stays.
std::int32_t lAddFolderFiles(Application& app, std::string& sFolder, const std::string& sPattern,
                             std::vector<std::string>& colFiles, bool bRecurse);

/// True for the pattern "*.*", and if the pattern is "*." and the extension, whatever their case. "*." is
/// every file without an extension; a lone "*" matches nothing.
bool bMatchesPattern(const std::string& sPattern, const std::string& sExtension);

/// The parts of a wildcard source: all before the first "*", kept exactly, and the rest.
std::string sFolderOfPattern(const std::string& sSource);
std::string sPatternOfSource(const std::string& sSource);

/// True when a source or target text is a wildcard.
bool bHasWildcard(const std::string& sPath);
