// Hands each call to the system.
#include "src/platform/files/system_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

// Repeats a call that a signal interrupted.
template <typename Call>
static auto Retry(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

int SystemCalls::Open(int folder, const char* name, int flags, mode_t mode)
{
    return Retry([&] { return openat(folder, name, flags, mode); });
}

ssize_t SystemCalls::Write(int file, const void* bytes, std::size_t count, off_t offset)
{
    return pwrite(file, bytes, count, offset);
}

int SystemCalls::Close(int file)
{
    return close(file);
}

int SystemCalls::ChangeMode(int file, mode_t mode)
{
    return fchmod(file, mode);
}

int SystemCalls::ChangeOwner(int file, uid_t user, gid_t group)
{
    return fchown(file, user, group);
}

int SystemCalls::Lock(int file)
{
    return Retry([&] { return flock(file, LOCK_EX | LOCK_NB); });
}

int SystemCalls::Unlock(int file)
{
    return flock(file, LOCK_UN);
}

int SystemCalls::Sync(int file)
{
    return Retry([&] { return fsync(file); });
}

int SystemCalls::SyncFileSystem(int file)
{
    return Retry([&] { return syncfs(file); });
}

bool SystemCalls::CanNameFiles()
{
    return access("/proc/self/fd", X_OK) == 0;
}

int SystemCalls::GiveName(int file, int folder, const char* name)
{
    std::array<char, 32> path{};
    std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", file);
    return linkat(AT_FDCWD, path.data(), folder, name, AT_SYMLINK_FOLLOW);
}

int SystemCalls::Rename(int folder, const char* from, const char* to)
{
    return renameat(folder, from, folder, to);
}

int SystemCalls::Unlink(int folder, const char* name)
{
    return unlinkat(folder, name, 0);
}

SystemCalls& RealSystemCalls()
{
    static SystemCalls system;
    return system;
}
