// The system calls that a save makes, so that a test can make any of them fail.
// Room: platform/files.
#pragma once

#include <sys/types.h>

#include <cstddef>

/// Each call behaves like the POSIX call it wraps: -1 and errno on failure. The defaults call the system.
class SystemCalls
{
public:
    virtual ~SystemCalls() = default;

    virtual int Open(int folder, const char* name, int flags, mode_t mode);
    virtual ssize_t Write(int file, const void* bytes, std::size_t count, off_t offset);
    virtual int Close(int file);
    virtual int ChangeMode(int file, mode_t mode);
    virtual int ChangeOwner(int file, uid_t user, gid_t group);
    /// Takes the file's exclusive advisory lock; EWOULDBLOCK if another open file has it.
    virtual int Lock(int file);
    virtual int Unlock(int file);
    virtual int Sync(int file);
    /// Syncs everything that is unwritten on the file system that holds `file`.
    virtual int SyncFileSystem(int file);
    /// Whether GiveName works: it needs /proc.
    virtual bool CanNameFiles();
    /// Gives a nameless file its name. EEXIST if that is taken.
    virtual int GiveName(int file, int folder, const char* name);
    virtual int Rename(int folder, const char* from, const char* to);
    virtual int Unlink(int folder, const char* name);
};

SystemCalls& RealSystemCalls();
