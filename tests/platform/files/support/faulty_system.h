// System calls that fail on demand, and a record of those that were made.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "src/platform/files/system_calls.h"

/// Real calls, unless a test says that one is to fail. `Made` lists the calls that change something or sync.
class FaultySystem : public SystemCalls
{
public:
    /// Every call of that name fails with the error from now on; 0 makes it work again.
    void FailAt(const std::string& call, int error) { errors_[call] = error; }
    /// Runs before each call of that name.
    std::function<void(const std::string& call)> before;
    std::size_t most_bytes = SIZE_MAX;  ///< that one Write takes
    int interruptions = 0;              ///< so many Writes fail with EINTR
    bool nameless_files = true;         ///< whether the file system knows O_TMPFILE
    bool proc = true;
    bool locks = true;

    std::vector<std::string> Made()
    {
        const std::lock_guard lock(mutex_);
        return made_;
    }
    std::size_t Count(const std::string& call)
    {
        const auto made = Made();
        return static_cast<std::size_t>(std::count(made.begin(), made.end(), call));
    }

    int Open(int folder, const char* name, int flags, mode_t mode) override
    {
        if ((flags & O_TMPFILE) == O_TMPFILE && !nameless_files)
            return Error(EOPNOTSUPP);
        if ((flags & O_CREAT) != 0 && Fails("create"))
            return -1;
        return SystemCalls::Open(folder, name, flags, mode);
    }
    ssize_t Write(int file, const void* bytes, std::size_t count, off_t offset) override
    {
        if (interruptions > 0) {
            --interruptions;
            return Error(EINTR);
        }
        return Fails("write") ? -1 : SystemCalls::Write(file, bytes, std::min(count, most_bytes), offset);
    }
    int Close(int file) override
    {
        const bool fails = Fails("close");
        const int error = errno;
        SystemCalls::Close(file);
        return fails ? Error(error) : 0;
    }
    int ChangeMode(int file, mode_t mode) override
    {
        return Fails("chmod") ? -1 : SystemCalls::ChangeMode(file, mode);
    }
    int ChangeOwner(int file, uid_t user, gid_t group) override
    {
        return Fails("chown") ? -1 : SystemCalls::ChangeOwner(file, user, group);
    }
    int Lock(int file) override { return locks ? SystemCalls::Lock(file) : Error(ENOLCK); }
    int Sync(int file) override
    {
        struct stat status {
        };
        const bool folder = fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
        return Fails(folder ? "sync folder" : "sync") ? -1 : SystemCalls::Sync(file);
    }
    int SyncFileSystem(int file) override { return Fails("syncfs") ? -1 : SystemCalls::SyncFileSystem(file); }
    bool CanNameFiles() override { return proc && SystemCalls::CanNameFiles(); }
    int GiveName(int file, int folder, const char* name) override
    {
        return Fails("link") ? -1 : SystemCalls::GiveName(file, folder, name);
    }
    int Rename(int folder, const char* from, const char* to) override
    {
        return Fails("rename") ? -1 : SystemCalls::Rename(folder, from, to);
    }

private:
    static int Error(int error)
    {
        errno = error;
        return -1;
    }
    bool Fails(const std::string& call)
    {
        if (before)
            before(call);
        const std::lock_guard lock(mutex_);
        made_.push_back(call);
        const auto found = errors_.find(call);
        if (found == errors_.end() || found->second == 0)
            return false;
        errno = found->second;
        return true;
    }

    std::mutex mutex_;
    std::vector<std::string> made_;
    std::map<std::string, int> errors_;
};
