// Follows links by hand, so that the owner of each can be checked.
#include "src/platform/files/save_target.h"

#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <sys/vfs.h>

#include <array>
#include <climits>
#include <string_view>
#include <vector>

namespace
{

constexpr int kMostLinks = 40;  // as many as the kernel follows

struct PathParts {
    std::string folder;
    std::string name;
};

}  // namespace

static PathParts SplitPath(const std::string& path)
{
    const std::size_t last = path.rfind('/');
    if (last == std::string::npos)
        return {".", path};
    return {last == 0 ? "/" : path.substr(0, last), path.substr(last + 1)};
}

static bool IsTrusted(uid_t user)
{
    return user == geteuid() || user == 0;
}

static bool MayFollowToFile(const struct stat& link, const struct stat& folder)
{
    return IsTrusted(link.st_uid) || (IsTrusted(folder.st_uid) && (folder.st_mode & 0022) == 0);
}

// Saving below someone's folder means trusting its owner with the path.
static bool MayFollowToFolder(const struct stat& link, const struct stat& folder)
{
    return IsTrusted(link.st_uid) || link.st_uid == folder.st_uid || (folder.st_mode & 0022) == 0;
}

// What a link of /proc says is a description; only the kernel can follow it.
static bool IsInProc(int folder)
{
    struct statfs system {
    };
    return fstatfs(folder, &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

static int ReadLink(int folder, const std::string& name, std::string& text)
{
    std::array<char, PATH_MAX> buffer;
    const ssize_t size = readlinkat(folder, name.c_str(), buffer.data(), buffer.size());
    if (size < 0)
        return errno;
    text.assign(buffer.data(), static_cast<std::size_t>(size));
    return text.empty() ? ENOENT : 0;
}

static Descriptor OpenInPlace(int base, const std::string& path, int flags)
{
    return Descriptor(openat(base, path.c_str(), flags | O_DIRECTORY | O_CLOEXEC));
}

// Opens a folder whose path holds no link, in one call. Empty, with errno set, if there is one or the kernel
// lacks the call.
static Descriptor OpenWithoutLinks(int base, const std::string& path, int flags)
{
    open_how how{};
    how.flags = static_cast<unsigned>(flags | O_DIRECTORY | O_CLOEXEC);
    how.resolve = RESOLVE_NO_SYMLINKS;
    return Descriptor(static_cast<int>(syscall(SYS_openat2, base, path.c_str(), &how, sizeof(how))));
}

static void PushParts(const std::string& path, std::vector<std::string>& parts)
{
    for (std::size_t end = path.size(); end > 0;) {
        const std::size_t slash = path.rfind('/', end - 1);
        const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
        if (begin < end)
            parts.push_back(path.substr(begin, end - begin));
        end = slash == std::string::npos ? 0 : slash;
    }
}

// Steps from folder to folder. Returns 0 and the last one, or an errno.
static int WalkToFolder(int base, const std::string& path, int& links_left, Descriptor& folder)
{
    std::vector<std::string> parts;  // the next one at the back
    PushParts(path, parts);
    Descriptor current = OpenInPlace(base, path.starts_with('/') ? "/" : ".", O_PATH);
    while (current && !parts.empty()) {
        const std::string part = std::move(parts.back());
        parts.pop_back();
        struct stat status {
        };
        if (fstatat(current.Number(), part.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return errno;
        if (!S_ISLNK(status.st_mode)) {
            current = OpenInPlace(current.Number(), part, O_PATH | O_NOFOLLOW);
            continue;
        }
        struct stat holder {
        };
        if (--links_left < 0)
            return ELOOP;
        if (fstat(current.Number(), &holder) != 0)
            return errno;
        if (!MayFollowToFolder(status, holder))
            return EACCES;
        if (IsInProc(current.Number())) {
            current = OpenInPlace(current.Number(), part, O_PATH);
            continue;
        }
        std::string text;
        if (const int error = ReadLink(current.Number(), part, text); error != 0)
            return error;
        PushParts(text, parts);
        if (text.starts_with('/'))
            current = OpenInPlace(AT_FDCWD, "/", O_PATH);
    }
    if (!current)
        return errno;
    folder = OpenInPlace(current.Number(), ".", O_RDONLY);
    if (!folder)
        folder = std::move(current);
    return 0;
}

static int OpenFolder(int base, const std::string& path, int& links_left, Descriptor& folder)
{
    Descriptor found = OpenWithoutLinks(base, path, O_RDONLY);
    if (!found && errno == EACCES)
        found = OpenWithoutLinks(base, path, O_PATH);
    if (!found && (errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG))
        return errno;
    if (!found)
        return WalkToFolder(base, path, links_left, folder);
    folder = std::move(found);
    return 0;
}

int FindSaveTarget(const std::string& host_path, SaveTarget& target)
{
    int links_left = kMostLinks;
    Descriptor base;  // empty: the working folder
    std::string path = host_path;
    while (true) {
        auto [folder_path, name] = SplitPath(path);
        if (name.empty() || name == "." || name == "..")
            return path.empty() ? ENOENT : EISDIR;
        Descriptor folder;
        const int start = base ? base.Number() : AT_FDCWD;
        if (const int error = OpenFolder(start, folder_path, links_left, folder); error != 0)
            return error;
        if (fstat(folder.Number(), &target.folder_status) != 0)
            return errno;
        target.exists = fstatat(folder.Number(), name.c_str(), &target.status, AT_SYMLINK_NOFOLLOW) == 0;
        if (!target.exists && errno != ENOENT)
            return errno;
        const bool is_link = target.exists && S_ISLNK(target.status.st_mode);
        if (is_link && !MayFollowToFile(target.status, target.folder_status))
            return EACCES;
        if (is_link && !IsInProc(folder.Number())) {
            if (--links_left < 0)
                return ELOOP;
            if (const int error = ReadLink(folder.Number(), name, path); error != 0)
                return error;
            base = std::move(folder);
            continue;
        }
        if (is_link)
            target.exists = fstatat(folder.Number(), name.c_str(), &target.status, 0) == 0;
        target.is_proc_link = is_link;
        target.folder = std::move(folder);
        target.name = std::move(name);
        return 0;
    }
}
