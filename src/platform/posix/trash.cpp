// Finds the trash of a file's mount and moves the file there.
#include "src/platform/posix/trash.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <string_view>

#include "src/platform/files/descriptor.h"

static constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
static constexpr int kMostAttempts = 10000;
static constexpr std::size_t kLongestName = 255 - sizeof(".10000.trashinfo");

namespace
{
/// A file to be moved.
struct Doomed {
    int folder;
    std::string folder_path;  ///< absolute, without links
    std::string name;
};

/// A trash folder that may be used, with its two subfolders.
struct TrashFolders {
    Descriptor files;
    Descriptor info;
};
}  // namespace

std::string Trash::HomeTrash()
{
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data && data[0] == '/')
        return std::string(data) + "/Trash";
    const char* home = std::getenv("HOME");
    return home && home[0] == '/' ? std::string(home) + "/.local/share/Trash" : "";
}

static std::string RealPath(const std::string& path)
{
    const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), &std::free);
    return real ? real.get() : "";
}

static std::string ParentOf(const std::string& path)
{
    const std::size_t last = path.rfind('/');
    return last == 0 || last == std::string::npos ? "/" : path.substr(0, last);
}

// A number for the mount that holds a folder. Bind mounts of one file system differ, and a rename can't cross
// from one to the other.
static std::optional<std::uint64_t> MountOf(const std::string& path)
{
    struct statx status {
    };
    if (statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_MNT_ID, &status) != 0)
        return std::nullopt;
    if ((status.stx_mask & STATX_MNT_ID) != 0)
        return status.stx_mnt_id;
    return std::uint64_t{status.stx_dev_major} << 32 | status.stx_dev_minor;  // Linux before 5.8
}

static std::string TopOfMount(std::string folder)
{
    const std::optional<std::uint64_t> mount = MountOf(folder);
    while (folder != "/" && MountOf(ParentOf(folder)) == mount)
        folder = ParentOf(folder);
    return folder;
}

// Opens a subfolder that belongs to this user, making it if there is none.
static Descriptor OpenOwn(int folder, const std::string& name)
{
    if (mkdirat(folder, name.c_str(), 0700) != 0 && errno != EEXIST)
        return {};
    Descriptor own(openat(folder, name.c_str(), kFolderFlags | O_NOFOLLOW));
    struct stat status {
    };
    if (!own || fstat(own.Number(), &status) != 0 || status.st_uid != geteuid())
        return {};
    return own;
}

static std::optional<TrashFolders> OpenTrash(int folder, const std::string& name)
{
    const Descriptor trash = OpenOwn(folder, name);
    if (!trash)
        return std::nullopt;
    TrashFolders folders{OpenOwn(trash.Number(), "files"), OpenOwn(trash.Number(), "info")};
    if (!folders.files || !folders.info)
        return std::nullopt;
    return folders;
}

// The administrator makes .Trash for all users; the sticky bit keeps them from each other's files.
static Descriptor OpenShared(const Descriptor& top)
{
    Descriptor shared(openat(top.Number(), ".Trash", kFolderFlags | O_NOFOLLOW));
    struct stat status {
    };
    if (!shared || fstat(shared.Number(), &status) != 0 || (status.st_mode & S_ISVTX) == 0)
        return {};
    return shared;
}

static bool MakeFolders(const std::string& path)
{
    struct stat status {
    };
    if (stat(path.c_str(), &status) == 0)
        return S_ISDIR(status.st_mode);
    return path != "/" && MakeFolders(ParentOf(path)) && (mkdir(path.c_str(), 0700) == 0 || errno == EEXIST);
}

static std::string Escaped(std::string_view path)
{
    static constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~/";
    std::string result;
    for (const char c : path) {
        std::array<char, 4> code{};
        std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned char>(c));
        if (kPlain.find(c) != std::string_view::npos)
            result += c;
        else
            result += code.data();
    }
    return result;
}

static std::string NoteText(const std::string& path)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    std::array<char, 32> date{};
    (void)std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + Escaped(path) + "\nDeletionDate=" + date.data() + "\n";
}

static bool WriteNote(const Descriptor& note, const std::string& text)
{
    return write(note.Number(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

// Moves without replacing anything; EEXIST if the name is taken.
static bool MoveTo(const Doomed& doomed, int folder, const std::string& name)
{
    if (renameat2(doomed.folder, doomed.name.c_str(), folder, name.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    // The file system doesn't know the flag. The note has reserved the name, so only a program that doesn't
    // write notes could take it between these two calls.
    if (faccessat(folder, name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
        errno = EEXIST;
        return false;
    }
    return renameat(doomed.folder, doomed.name.c_str(), folder, name.c_str()) == 0;
}

// The note comes first: it reserves the name, and a file in the trash without one couldn't be restored.
static bool MoveInto(const TrashFolders& trash, const Doomed& doomed, const std::string& noted_path)
{
    const std::string stem = doomed.name.substr(0, kLongestName);
    const std::string text = NoteText(noted_path);
    for (int attempt = 1; attempt <= kMostAttempts; ++attempt) {
        const std::string name = attempt == 1 ? stem : stem + "." + std::to_string(attempt);
        const std::string note_name = name + ".trashinfo";
        errno = 0;
        const Descriptor note(openat(trash.info.Number(), note_name.c_str(),
                                     O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!note && errno == EEXIST)
            continue;
        if (note && WriteNote(note, text) && MoveTo(doomed, trash.files.Number(), name))
            return true;
        const bool taken = note && errno == EEXIST;
        if (note)
            unlinkat(trash.info.Number(), note_name.c_str(), 0);
        if (!taken)
            return false;
    }
    return false;
}

static bool TakeToHome(const std::string& home_trash, const Doomed& doomed)
{
    const std::string parent = ParentOf(home_trash);
    if (home_trash.empty() || !MakeFolders(parent))
        return false;
    const std::string real_parent = RealPath(parent);
    const Descriptor folder(open(real_parent.c_str(), kFolderFlags));
    if (!folder || MountOf(real_parent) != MountOf(doomed.folder_path))
        return false;
    const std::optional<TrashFolders> trash =
        OpenTrash(folder.Number(), home_trash.substr(home_trash.rfind('/') + 1));
    const std::string slash = doomed.folder_path == "/" ? "" : "/";
    return trash && MoveInto(*trash, doomed, doomed.folder_path + slash + doomed.name);
}

static bool TakeToTop(const Doomed& doomed)
{
    const std::string top_path = TopOfMount(doomed.folder_path);
    const Descriptor top(open(top_path.c_str(), kFolderFlags));
    if (!top)
        return false;
    // Relative to the top, so that a medium may be mounted elsewhere later.
    std::string path = doomed.folder_path.substr(top_path == "/" ? 0 : top_path.size()) + "/" + doomed.name;
    path.erase(0, path.find_first_not_of('/'));
    const std::string user = std::to_string(geteuid());
    if (const Descriptor shared = OpenShared(top); shared) {
        const std::optional<TrashFolders> trash = OpenTrash(shared.Number(), user);
        if (trash && MoveInto(*trash, doomed, path))
            return true;
    }
    const std::optional<TrashFolders> trash = OpenTrash(top.Number(), ".Trash-" + user);
    return trash && MoveInto(*trash, doomed, path);
}

bool Trash::Take(const std::string& host_path) const
{
    const std::size_t slash = host_path.rfind('/');
    const std::string folder_path =
        RealPath(slash == std::string::npos ? "." : host_path.substr(0, slash + 1));
    const Descriptor folder(open(folder_path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder_path.empty() || !folder)
        return false;
    const Doomed doomed{folder.Number(), folder_path, host_path.substr(slash + 1)};
    return TakeToHome(home_trash_, doomed) || TakeToTop(doomed);
}
