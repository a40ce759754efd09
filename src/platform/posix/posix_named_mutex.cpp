// Chooses a private folder, opens lock files in it and waits for their locks.
#include "src/platform/posix/posix_named_mutex.h"

#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

static std::string FileName(const std::string& name)
{
    std::string result = "varnel-" + name.substr(0, 100) + ".lock";
    std::replace(result.begin(), result.end(), '/', '_');
    return result;
}

static Descriptor OpenLockFile(const std::string& path)
{
    return OpenRegularFile(path, O_RDONLY | O_CREAT | O_NOFOLLOW, 0600);
}

static bool IsPrivate(const std::string& folder)
{
    struct stat status {
    };
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
           (status.st_mode & 0022) == 0;
}

std::vector<std::string> PosixNamedMutex::LockFolders()
{
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value && value[0] == '/' ? value : "");
    };
    const std::string user = std::to_string(geteuid());
    for (const std::string& folder : {variable("XDG_RUNTIME_DIR"), "/run/user/" + user})
        if (IsPrivate(folder))
            return {folder};
    std::vector<std::string> folders;
    std::string cache = variable("XDG_CACHE_HOME");
    if (cache.empty() && !variable("HOME").empty())
        cache = variable("HOME") + "/.cache";
    if (!cache.empty()) {
        (void)mkdir(cache.c_str(), 0700);
        folders.push_back(cache + "/varnel");
    }
    folders.push_back("/tmp/varnel-" + user);
    for (const std::string& folder : folders)
        if (mkdir(folder.c_str(), 0700) == 0 || IsPrivate(folder))
            return {folder};
    return {};
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
        if (!IsPrivate(folder))
            continue;
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
