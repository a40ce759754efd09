// How targets get their names: proposed while typing, completed at the check, made for each file of a run.
// Room: job.
#pragma once

#include <optional>
#include <string>

#include "src/base/clsConversionOptions.h"

struct Application;

/// What a wildcard task says about the targets of its files.
struct TargetPattern {
    bool bEachFile = false;  ///< the target holds "*"; else all files go to the one sTargetFile
    std::string sTargetFile;
    std::string sTargetFolder;  ///< the target up to its first "*"
    std::string sSourceRoot;    ///< folder of the source, with a separator at its end
    std::string sExtension;     ///< without a point
    bool bSaveInOriginalFolder = false;
};

/// The extension is what follows the last "*." of the target; if nothing does, that of lTargetFileType.
TargetPattern objTargetPattern(const clsConversionOptions& objOptions);

/// The target of one file of the list. The tree below the source root is rebuilt below the target folder:
/// sFolderToMake is then the folder that must exist before the target is written, with a separator at its
/// end. It is "" where the target lies beside its source, or where all files share one target.
std::string sTargetForFile(const TargetPattern& objPattern, const std::string& sFile,
                           std::string& sFolderToMake);

/// Completes the target of a conversion that is being checked, in sTargetFile and in cbTargetFile: a folder
/// gets a pattern or a name, a name its extension. A target that holds "*" or has an extension stays as it
/// is, whether or not the extension agrees with the type.
void CompleteTarget(Application& app, clsConversionOptions& objOptions);

/// The target to propose for a source that the user is typing; nothing when the present one is to stay. A
/// plain source gives the same path in lower case, a wildcard its folder, each with the extension of the
/// target type.
std::optional<std::string> sProposedTarget(const std::string& sSource, std::int32_t lTargetFileType);

/// The text that picking a folder puts into a source or target field: every file there of that type. A drive
/// root ends in its own separator and so shows two; the run takes them for one.
std::string sPatternInFolder(const std::string& sFolder, std::int32_t lType);

/// The target of a task that saves beside its sources: their folder, and every file of the target type.
std::string sPatternBesideSource(const std::string& sSource, std::int32_t lTargetFileType);

/// Paths are pasted with their quotes, which are no part of them.
std::string sWithoutQuotes(const std::string& sText);
