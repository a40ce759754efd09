// File operations of the logic on the host's file system.
#include "src/platform/posix/posix_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <system_error>

#include "src/base/path_text.h"
#include "src/base/raised_error.h"
#include "src/platform/files/descriptor.h"
#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "src/platform/files/save_target.h"
#include "src/platform/posix/text_files.h"
#include "src/platform/posix/trash.h"

std::optional<std::string> PosixFileSystem::sHostPathOfExisting(const std::string& path) const
{
    return paths_.Existing(path);
}

std::optional<std::string> PosixFileSystem::sHostPathToWrite(const std::string& path) const
{
    return bEndsInSeparator(path) ? std::nullopt : paths_.ToWrite(path);
}

// The mode of the file at a host path, following links; 0 if there is none.
static mode_t ModeOf(const std::optional<std::string>& host_path)
{
    struct stat status {
    };
    return host_path && stat(host_path->c_str(), &status) == 0 ? status.st_mode : 0;
}

bool PosixFileSystem::FolderExists(const std::string& path) const
{
    return S_ISDIR(ModeOf(paths_.Existing(path)));
}

bool PosixFileSystem::FileExists(const std::string& path) const
{
    return S_ISREG(ModeOf(paths_.Existing(path)));
}

bool PosixFileSystem::CreateFolder(const std::string& path)
{
    const std::optional<std::string> host_path = paths_.ToWrite(path);
    return host_path && mkdir(host_path->c_str(), 0777) == 0;
}

bool PosixFileSystem::ListFolder(const std::string& folder, FolderListing& listing) const
{
    const std::optional<std::string> host_path = paths_.Existing(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(host_path ? opendir(host_path->c_str()) : nullptr,
                                                        &closedir);
    if (!directory)
        return false;
    listing = {};
    while (const dirent* entry = readdir(directory.get())) {
        std::string name = entry->d_name;
        if (name == "." || name == ".." || name.find('\\') != std::string::npos)
            continue;
        mode_t mode = entry->d_type == DT_REG ? S_IFREG : entry->d_type == DT_DIR ? S_IFDIR : 0;
        struct stat status {
        };
        if (mode == 0 && fstatat(dirfd(directory.get()), entry->d_name, &status, 0) == 0)
            mode = status.st_mode;
        if (S_ISREG(mode)) {
            listing.aFiles.push_back(std::move(name));
        } else if (S_ISDIR(mode)) {
            // Without a type from the file system, any folder may be a link.
            if (entry->d_type != DT_DIR)
                listing.aLinks.insert(name);
            listing.aSubfolders.push_back(std::move(name));
        }
    }
    std::sort(listing.aFiles.begin(), listing.aFiles.end());
    std::sort(listing.aSubfolders.begin(), listing.aSubfolders.end());
    return true;
}

std::string PosixFileSystem::sRealPath(const std::string& path) const
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    const std::unique_ptr<char, void (*)(void*)> real(
        host_path ? realpath(host_path->c_str(), nullptr) : nullptr, &std::free);
    return real ? real.get() : "";
}

// Reads to the end of the file and passes each block to take. False, with errno set, if a read fails.
template <typename Take>
static bool ReadAll(int descriptor, Take take)
{
    std::string block(256 * 1024, '\0');
    while (true) {
        const ssize_t got = read(descriptor, block.data(), block.size());
        if (got == 0)
            return true;
        if (got > 0)
            take(std::string_view(block).substr(0, static_cast<std::size_t>(got)));
        else if (errno != EINTR)
            return false;
    }
}

bool PosixFileSystem::CopyFile(const std::string& source_path, const std::string& target_path)
{
    const std::optional<std::string> from = paths_.Existing(source_path);
    const std::optional<std::string> to = sHostPathToWrite(target_path);
    if (!from || !to)
        return false;
    const Descriptor source = OpenRegularFile(*from, O_RDONLY);
    struct stat status {
    };
    if (!source || fstat(source.Number(), &status) != 0)
        return false;
    OutputFile target(*to, saver_, status.st_mode & 0777);
    return !target.Failed() &&
           ReadAll(source.Number(), [&](std::string_view bytes) { target.WriteText(bytes); }) &&
           target.Commit();
}

bool PosixFileSystem::DeleteFile(const std::string& path)
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    return S_ISREG(ModeOf(host_path)) && unlink(host_path->c_str()) == 0;
}

bool PosixFileSystem::MoveToTrash(const std::string& path)
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    return S_ISREG(ModeOf(host_path)) && Trash().Take(*host_path);
}

std::optional<FileStamp> PosixFileSystem::objStampOf(const std::string& path) const
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    struct stat status {
    };
    if (!host_path || stat(host_path->c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileStamp{status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
                     std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec};
}

bool PosixFileSystem::ClearReadOnly(const std::string& path)
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    const mode_t mode = ModeOf(host_path);
    if (!S_ISREG(mode))
        return false;
    // We may be able to write to another user's file even if we can't chmod it.
    return (mode & S_IWUSR) != 0 || chmod(host_path->c_str(), (mode & 07777) | S_IWUSR) == 0 ||
           access(host_path->c_str(), W_OK) == 0;
}

std::unique_ptr<TextReader> PosixFileSystem::OpenForInput(const std::string& path) const
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    if (!host_path)
        throw clsRaisedError(kErrFileNotFound, "File not found: " + path);
    Descriptor file = OpenRegularFile(*host_path, O_RDONLY);
    if (!file)
        RaisePathFileAccess(path, std::generic_category().message(errno));
    return std::make_unique<PosixTextReader>(file.Release(), path);
}

std::unique_ptr<TextWriter> PosixFileSystem::OpenForOutput(const std::string& path)
{
    const std::optional<std::string> host_path = sHostPathToWrite(path);
    if (!host_path)
        RaisePathFileAccess(path, "not a name for a file");
    return std::make_unique<PosixTextWriter>(*host_path, path, saver_);
}

// Appends everything in one write, so that lines of several processes don't mix. False, with errno set, on
// failure; a partial write is then truncated, unless another process has appended after it.
static bool Append(int descriptor, std::string_view bytes)
{
    ssize_t written = 0;
    do
        written = write(descriptor, bytes.data(), bytes.size());
    while (written < 0 && errno == EINTR);
    if (written == static_cast<ssize_t>(bytes.size()))
        return true;
    if (written >= 0) {
        const off_t end = lseek(descriptor, 0, SEEK_CUR);
        struct stat status {
        };
        if (written > 0 && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
            status.st_size == end)
            (void)!ftruncate(descriptor, end - written);
        errno = ENOSPC;
    }
    return false;
}

// Opens a file to append to it. Like a save, doesn't follow a link that someone else could have planted.
// Doesn't wait for the reader of a pipe. Empty, with errno set, on failure.
static Descriptor OpenToAppend(const std::string& host_path, int flags)
{
    SaveTarget target;
    errno = FindSaveTarget(host_path, target);
    if (errno != 0)
        return {};
    const int follow = target.is_proc_link ? 0 : O_NOFOLLOW;
    return Descriptor(openat(target.folder.Number(), target.name.c_str(),
                             flags | follow | O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666));
}

void PosixFileSystem::AppendLine(const std::string& path, const std::string& line)
{
    const std::optional<std::string> host_path = sHostPathToWrite(path);
    if (!host_path)
        RaisePathFileAccess(path, "not a name for a file");
    const Descriptor file = OpenToAppend(*host_path, O_CREAT);
    if (!file || !Append(file.Number(), line + "\n"))
        RaisePathFileAccess(path, std::generic_category().message(errno));
}

std::optional<std::string> PosixFileSystem::sReadBytes(const std::string& path) const
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    const Descriptor file = host_path ? OpenRegularFile(*host_path, O_RDONLY) : Descriptor();
    if (!file)
        return std::nullopt;
    try {
        std::string bytes;
        if (!ReadAll(file.Number(), [&](std::string_view block) { bytes += block; }))
            return std::nullopt;
        return bytes;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

bool PosixFileSystem::AppendBytes(const std::string& path, const std::string& bytes)
{
    const std::optional<std::string> host_path = paths_.Existing(path);
    const Descriptor file = S_ISREG(ModeOf(host_path)) ? OpenToAppend(*host_path, 0) : Descriptor();
    return file && Append(file.Number(), bytes);
}

bool PosixFileSystem::SyncSaves()
{
    return saver_.SyncSaves();
}
