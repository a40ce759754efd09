// From a path as the user gave it to a path of the host.
// Room: platform/posix.
//
// "\" and "/" separate alike, and several count as one. "X:\..." lies below the host folder that drive X is
// mapped to; "\a\b" is "/a/b"; all else is relative to the process's working folder. What exists is found by
// its exact name first, then without regard to case, the first in order of bytes.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "src/platform/posix/folder_names.h"

class HostPaths
{
public:
    /// The host folder of a drive, given as a capital letter; "" for one that isn't mapped. The environment's
    /// VARNEL_DRIVE_X is asked before.
    using DriveLookup = std::function<std::string(char drive)>;
    explicit HostPaths(DriveLookup drive_folder = {}) : drive_folder_(std::move(drive_folder)) {}

    /// The host path of what exists there, a link that leads nowhere included; nothing when there is none.
    std::optional<std::string> Existing(const std::string& path) const;

    /// The host path at which a file (or, with separators at the end, a folder) of that name is to be made,
    /// whether or not it and its folders exist. A path with a "\" or a drive takes over the case of a file
    /// that is there; one with "/" alone means exactly the name it says. Nothing for a drive that isn't
    /// mapped, an empty name, ".", "..", a NUL, and "*" or "?" in the name.
    std::optional<std::string> ToWrite(const std::string& path) const;

private:
    std::string DriveFolder(char drive) const;

    DriveLookup drive_folder_;
    mutable FolderNames names_;
};
