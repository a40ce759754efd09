// Target names: suggested while typing, completed by validation, derived for each file of a run.
// Room: job.
#pragma once

#include <optional>
#include <string>

#include "src/base/clsConversionOptions.h"

struct Application;

/// How a task derives its target names.
struct TargetPattern {
    bool bEachFile = false;  ///< the target contains "*"; otherwise all files share sTargetFile
    std::string sTargetFile;
    std::string sTargetFolder;  ///< the target up to its first "*"
    std::string sSourceRoot;    ///< folder of the source, with a trailing separator
    std::string sExtension;     ///< without a dot
    bool bSaveInOriginalFolder = false;
};

/// The extension is the text after the last "*." of the target or, if there is none, that of lTargetFileType.
TargetPattern objTargetPattern(const clsConversionOptions& objOptions);

/// The target for one file of the list. The tree below the source root is mirrored below the target folder.
/// sFolderToMake receives the folder to create first, with a trailing separator, or "" if the target is saved
/// beside its source or all files share one target.
std::string sTargetForFile(const TargetPattern& objPattern, const std::string& sFile,
                           std::string& sFolderToMake);

/// Completes a conversion's target in sTargetFile and cbTargetFile: a folder gets a pattern or a name, a name
/// gets its extension. A target that contains "*" or has an extension is left alone, even if the extension
/// doesn't match the type.
void CompleteTarget(Application& app, clsConversionOptions& objOptions);

/// The target to suggest for the source being typed, or nothing to keep the current one. For a single file:
/// the same path in lower case with the target type's extension. For a wildcard: its folder and "*." with
/// that extension.
std::optional<std::string> sProposedTarget(const std::string& sSource, std::int32_t lTargetFileType);

/// The wildcard to enter when the user picks a folder: all files of that type. A drive root ends up with two
/// separators, which the run treats as one.
std::string sPatternInFolder(const std::string& sFolder, std::int32_t lType);

/// The target of a task that saves beside its sources: their folder with a wildcard for the target type.
std::string sPatternBesideSource(const std::string& sSource, std::int32_t lTargetFileType);

/// Removes the quotes of a pasted path.
std::string sWithoutQuotes(const std::string& sText);
