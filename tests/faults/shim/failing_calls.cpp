// A library for LD_PRELOAD that makes one system call of a program fail, or kills the program at it.
//
// Calls count if they concern a file below FAULT_ROOT. The file FAULT_LOG gets the name of each call's kind,
// so that a run without faults tells how many there are. FAULT_CALL is the kind to fail ("any" for all
// kinds), FAULT_NUMBER the one of them, from 1, and FAULT_ACTION what happens:
//   an error number   the call does nothing and fails with it
//   "kill"            the process dies before the call
//   "short"           a write takes only half of its bytes
// With FAULT_STAYS=1 all later calls of the kind fail as well, as on a full disk.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace
{

std::atomic<int> calls_seen{0};

const char* Setting(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

template <typename Function>
Function* Next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool IsBelowRoot(std::string_view path)
{
    static const std::string_view root = Setting("FAULT_ROOT");
    return !root.empty() && path.starts_with(root);
}

struct Path {
    std::array<char, 2 * PATH_MAX> text{};
};

Path PathOfDescriptor(int file)
{
    Path link;
    Path path;
    std::snprintf(link.text.data(), link.text.size(), "/proc/self/fd/%d", file);
    const long size =
        syscall(SYS_readlinkat, AT_FDCWD, link.text.data(), path.text.data(), path.text.size() - 1);
    path.text[static_cast<std::size_t>(size > 0 ? size : 0)] = '\0';
    return path;
}

bool Concerns(int file)
{
    const int error = errno;
    const bool concerns = IsBelowRoot(PathOfDescriptor(file).text.data());
    errno = error;
    return concerns;
}

bool Concerns(int folder, const char* name)
{
    return name && (name[0] == '/' ? IsBelowRoot(name) : folder != AT_FDCWD && Concerns(folder));
}

bool IsOpenForWriting(int file)
{
    const int flags = fcntl(file, F_GETFL);
    return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY && (flags & O_PATH) == 0;
}

void Log(std::string_view kind)
{
    static const long log =
        syscall(SYS_openat, AT_FDCWD, Setting("FAULT_LOG"), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    std::array<char, 64> line{};
    const int size =
        std::snprintf(line.data(), line.size(), "%.*s\n", static_cast<int>(kind.size()), kind.data());
    (void)syscall(SYS_write, log, line.data(), static_cast<std::size_t>(size));
}

enum class Fault { None, Error, Short };

/// Counts a call. With Fault::Error, errno is set.
Fault Count(std::string_view kind)
{
    static const std::string_view wanted = Setting("FAULT_CALL");
    static const int number = std::atoi(Setting("FAULT_NUMBER"));
    static const std::string_view action = Setting("FAULT_ACTION");
    static const bool stays = *Setting("FAULT_STAYS") == '1';
    const int error = errno;
    Log(kind);
    errno = error;
    if (number == 0 || (kind != wanted && wanted != "any"))
        return Fault::None;
    const int seen = ++calls_seen;
    if (seen != number && !(stays && seen > number))
        return Fault::None;
    Log("fault");
    if (action == "kill")
        syscall(SYS_kill, getpid(), SIGKILL);
    if (action == "short") {
        errno = error;
        return Fault::Short;
    }
    errno = std::atoi(action.data());
    return Fault::Error;
}

bool Fails(std::string_view kind)
{
    return Count(kind) == Fault::Error;
}

std::string_view KindOfOpen(int flags)
{
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? "create" : "open";
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    if (Concerns(AT_FDCWD, path) && Fails(KindOfOpen(flags)))
        return -1;
    return Next<int(const char*, int, ...)>("open")(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    if (Concerns(folder, path) && Fails(KindOfOpen(flags)))
        return -1;
    return Next<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t count)
{
    const Fault fault = Concerns(file) ? Count("write") : Fault::None;
    if (fault == Fault::Error)
        return -1;
    return Next<ssize_t(int, const void*, size_t)>("write")(file, bytes,
                                                            fault == Fault::Short ? count / 2 : count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset)
{
    const Fault fault = Concerns(file) ? Count("write") : Fault::None;
    if (fault == Fault::Error)
        return -1;
    return Next<ssize_t(int, const void*, size_t, off_t)>("pwrite")(
        file, bytes, fault == Fault::Short ? count / 2 : count, offset);
}

ssize_t read(int file, void* bytes, size_t count)
{
    if (Concerns(file) && Fails("read"))
        return -1;
    return Next<ssize_t(int, void*, size_t)>("read")(file, bytes, count);
}

ssize_t pread(int file, void* bytes, size_t count, off_t offset)
{
    if (Concerns(file) && Fails("read"))
        return -1;
    return Next<ssize_t(int, void*, size_t, off_t)>("pread")(file, bytes, count, offset);
}

int close(int file)
{
    const bool fails = Concerns(file) && IsOpenForWriting(file) && Fails("close");
    const int error = errno;
    const int result = Next<int(int)>("close")(file);
    if (!fails)
        return result;
    errno = error;
    return -1;
}

int fsync(int file)
{
    return Concerns(file) && Fails("sync") ? -1 : Next<int(int)>("fsync")(file);
}

int fdatasync(int file)
{
    return Concerns(file) && Fails("sync") ? -1 : Next<int(int)>("fdatasync")(file);
}

int syncfs(int file)
{
    return Concerns(file) && Fails("sync") ? -1 : Next<int(int)>("syncfs")(file);
}

int ftruncate(int file, off_t size)
{
    return Concerns(file) && Fails("truncate") ? -1 : Next<int(int, off_t)>("ftruncate")(file, size);
}

int fchmod(int file, mode_t mode)
{
    return Concerns(file) && Fails("mode") ? -1 : Next<int(int, mode_t)>("fchmod")(file, mode);
}

int fchown(int file, uid_t user, gid_t group)
{
    return Concerns(file) && Fails("owner") ? -1 : Next<int(int, uid_t, gid_t)>("fchown")(file, user, group);
}

int linkat(int from_folder, const char* from, int folder, const char* name, int flags)
{
    if (Concerns(folder, name) && Fails("link"))
        return -1;
    return Next<int(int, const char*, int, const char*, int)>("linkat")(from_folder, from, folder, name,
                                                                        flags);
}

int rename(const char* from, const char* to)
{
    return Concerns(AT_FDCWD, to) && Fails("rename")
               ? -1
               : Next<int(const char*, const char*)>("rename")(from, to);
}

int renameat(int from_folder, const char* from, int folder, const char* name)
{
    if (Concerns(folder, name) && Fails("rename"))
        return -1;
    return Next<int(int, const char*, int, const char*)>("renameat")(from_folder, from, folder, name);
}

int renameat2(int from_folder, const char* from, int folder, const char* name, unsigned flags)
{
    if (Concerns(folder, name) && Fails("rename"))
        return -1;
    return Next<int(int, const char*, int, const char*, unsigned)>("renameat2")(from_folder, from, folder,
                                                                                name, flags);
}

int unlink(const char* path)
{
    return Concerns(AT_FDCWD, path) && Fails("remove") ? -1 : Next<int(const char*)>("unlink")(path);
}

int unlinkat(int folder, const char* name, int flags)
{
    if (Concerns(folder, name) && Fails("remove"))
        return -1;
    return Next<int(int, const char*, int)>("unlinkat")(folder, name, flags);
}

int mkdir(const char* path, mode_t mode)
{
    return Concerns(AT_FDCWD, path) && Fails("folder") ? -1
                                                       : Next<int(const char*, mode_t)>("mkdir")(path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode)
{
    return Concerns(folder, path) && Fails("folder")
               ? -1
               : Next<int(int, const char*, mode_t)>("mkdirat")(folder, path, mode);
}

}  // extern "C"
