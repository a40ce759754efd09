// The folder and name that a save ends up in, with links followed where that is safe.
// Room: platform/files.
#pragma once

#include <sys/stat.h>

#include <string>

#include "src/platform/files/descriptor.h"

/// `folder` stays the folder that was found, even if someone renames it or puts a link in its place.
struct SaveTarget {
    Descriptor folder;          ///< open for reading, or O_PATH if the user may not list the folder
    std::string name;           ///< within the folder; no link unless it belongs to /proc
    bool is_proc_link = false;  ///< name is a link that only the kernel can follow
    bool exists = false;
    struct stat status {
    };  ///< of what is there, if anything
    struct stat folder_status {
    };
};

/// Resolves `host_path`. A link to a file that doesn't exist yields the place where that file would be.
///
/// In a folder that others can write to, they could plant a link to make this user overwrite a file
/// elsewhere. So a link at the target is followed only if this user or root owns it, or if no other user can
/// write to the folder that holds it. A link on the way to the folder is also followed if it belongs to the
/// owner of the folder that holds it, and wherever only that owner can write. A link that fails the test is
/// EACCES.
///
/// Returns 0, or the errno that says why nothing can be saved there. Says nothing about whether what exists
/// may be replaced.
[[nodiscard]] int FindSaveTarget(const std::string& host_path, SaveTarget& target);
