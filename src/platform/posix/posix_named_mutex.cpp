// Opens lock files safely in world-writable folders and waits for their locks.
#include "src/platform/posix/posix_named_mutex.h"

#include <sys/file.h>

#include <algorithm>
#include <cerrno>

static std::string FileName(const std::string& name)
{
    std::string result = "varnel-" + name.substr(0, 100) + ".lock";
    std::replace(result.begin(), result.end(), '/', '_');
    return result;
}

// Opens an existing file without O_CREAT, because kernels may refuse O_CREAT on another user's file in such
// folders. The mode is set explicitly, so that the umask doesn't lock out other users.
static Descriptor OpenLockFile(const std::string& path)
{
    constexpr int kAttempts = 100;  // another process may create or remove the file between the two steps
    for (int n = 0; n < kAttempts; ++n) {
        Descriptor file = OpenRegularFile(path, O_RDONLY | O_NOFOLLOW);
        if (file || errno != ENOENT)
            return file;
        file = OpenRegularFile(path, O_RDONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
        if (file)
            (void)!fchmod(file.Number(), 0666);
        if (file || errno != EEXIST)
            return file;
    }
    return Descriptor();
}

static bool HasItsName(const Descriptor& file, const std::string& path)
{
    struct stat held {
    }, named{};
    return fstat(file.Number(), &held) == 0 && lstat(path.c_str(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

static Descriptor LockInFolder(const std::string& folder, const std::string& name)
{
    const std::string path = folder + "/" + FileName(name);
    while (true) {
        Descriptor file = OpenLockFile(path);
        if (!file)
            return file;
        while (flock(file.Number(), LOCK_EX) != 0)
            if (errno != EINTR)
                return Descriptor();
        // The file may have been removed while we waited; then the others use the new one.
        if (HasItsName(file, path))
            return file;
    }
}

void PosixNamedMutex::Acquire(const std::string& name)
{
    Held& held = held_[name];
    if (++held.times > 1)
        return;
    for (const std::string& folder : folders_) {
        held.file = LockInFolder(folder, name);
        if (held.file)
            return;
    }
}

void PosixNamedMutex::Release(const std::string& name)
{
    const auto held = held_.find(name);
    if (held != held_.end() && --held->second.times == 0)
        held_.erase(held);
}
