// A lock between processes: an advisory lock on a file.
// Room: platform/posix.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "src/platform/files/descriptor.h"
#include "src/platform/named_mutex.h"

/// The lock file is in a folder that belongs to this user and that only they can write to, so no other user
/// can hold the lock or put something in the file's place. All processes of a user use the same one. The
/// system releases the lock when its owner ends, however that happens.
class PosixNamedMutex : public NamedMutex
{
public:
    /// The first folder is used that is private to this user.
    explicit PosixNamedMutex(std::vector<std::string> folders = LockFolders()) : folders_(std::move(folders))
    {
    }

    /// $XDG_RUNTIME_DIR, else /run/user/UID; else varnel in the user's cache and in /tmp, which are made.
    static std::vector<std::string> LockFolders();

    void Acquire(const std::string& name) override;
    void Release(const std::string& name) override;

private:
    struct Held {
        int times = 0;
        Descriptor file;  ///< empty if no lock file could be opened
    };
    std::vector<std::string> folders_;
    std::map<std::string, Held> held_;
};
