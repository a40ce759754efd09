// Maps a path as the user wrote it to a host path.
// Room: platform/posix.
//
// "\" and "/" are both separators, and repeated ones count as one. "X:\..." is below the host folder that
// drive X is mapped to; "\a\b" is "/a/b"; everything else is relative to the working folder. Existing entries
// are looked up by exact name first, then ignoring case, in byte order.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "src/platform/posix/folder_names.h"

class HostPaths
{
public:
    /// The host folder of a drive, given as a capital letter; "" if it isn't mapped. The environment variable
    /// VARNEL_DRIVE_X takes precedence.
    using DriveLookup = std::function<std::string(char drive)>;
    explicit HostPaths(DriveLookup drive_folder = {}) : drive_folder_(std::move(drive_folder)) {}

    /// The host path of an existing entry, dangling links included; nothing if there is none.
    std::optional<std::string> Existing(const std::string& path) const;

    /// The host path at which to create a file (or a folder, if path ends in a separator), whether or not it
    /// and its folders exist. A path with a "\" or a drive adopts the case of an existing entry; a path with
    /// only "/" means exactly the name it gives. Nothing for an unmapped drive, an empty name, ".", "..", a
    /// NUL, and "*" or "?" in the name.
    std::optional<std::string> ToWrite(const std::string& path) const;

private:
    std::string DriveFolder(char drive) const;

    DriveLookup drive_folder_;
    mutable FolderNames names_;
};
