// Writes files whole or not at all.
#include "src/platform/files/output_file.h"

#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/temporaries.h"

static constexpr std::size_t kGatherSize = 128 * 1024;
static constexpr std::size_t kPage = 4096;
static constexpr int kTemporaryFlags = O_TMPFILE | O_RDWR | O_CLOEXEC;

OutputFile::OutputFile(const std::string& host_path, FileSaver& saver, mode_t mode) : saver_(saver)
{
    error_ = FindSaveTarget(host_path, target_);
    if (error_ == 0 && target_.exists)
        error_ = WhyNotReplaceable();
    if (error_ != 0)
        return;
    saver_.SweepOnce(target_);
    // What replaces a private file is private from its first byte.
    const mode_t first_mode = target_.exists ? 0600 : mode;
    SystemCalls& system = saver_.System();
    if (system.CanNameFiles())
        file_ = Descriptor(system.Open(target_.folder.Number(), ".", kTemporaryFlags, first_mode));
    if (!file_)
        file_ = CreateTemporary(system, target_.folder.Number(), first_mode, temporary_);
    if (!file_) {
        temporary_.clear();
        Fail();
    }
}

// A rename would put a picture where a device or a pipe was, and would get rid of a file that is protected.
int OutputFile::WhyNotReplaceable() const
{
    if (!S_ISREG(target_.status.st_mode))
        return S_ISDIR(target_.status.st_mode) ? EISDIR : EINVAL;
    if ((target_.status.st_mode & 0222) == 0)
        return EACCES;
    return faccessat(target_.folder.Number(), target_.name.c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

OutputFile::~OutputFile()
{
    if (!temporary_.empty())
        saver_.System().Unlink(target_.folder.Number(), temporary_.c_str());
}

void OutputFile::Fail()
{
    if (error_ == 0)
        error_ = errno != 0 ? errno : EIO;
}

std::string OutputFile::ErrorText() const
{
    return std::generic_category().message(error_);
}

bool OutputFile::WriteThrough(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty() && !Failed()) {
        errno = 0;
        const ssize_t written =
            saver_.System().Write(file_.Number(), bytes.data(), bytes.size(), static_cast<off_t>(flushed_));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            Fail();
            break;
        }
        flushed_ += static_cast<std::uint64_t>(written);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return !Failed();
}

bool OutputFile::Flush()
{
    const bool done = WriteThrough(gathered_);
    gathered_.clear();
    return done;
}

void OutputFile::Gather(std::span<const std::uint8_t>& bytes, std::size_t count)
{
    gathered_.insert(gathered_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    bytes = bytes.subspan(count);
}

// Writes to the system end at page boundaries: a page that arrives in two parts costs twice. A large piece is
// passed on without a copy, except for its ends.
bool OutputFile::Write(std::span<const std::uint8_t> bytes)
{
    while (!Failed() && !bytes.empty()) {
        const bool large = bytes.size() >= kGatherSize;
        if (large && Position() % kPage == 0) {
            const std::size_t pages = bytes.size() / kPage * kPage;
            if (Flush() && WriteThrough(bytes.first(pages)))
                bytes = bytes.subspan(pages);
            continue;
        }
        const std::size_t end = large ? kPage : kGatherSize;
        const std::size_t room = end - Position() % end;
        Gather(bytes, std::min(room, bytes.size()));
        if (Position() % kGatherSize == 0)
            Flush();
    }
    return !Failed();
}

bool OutputFile::WriteText(std::string_view text)
{
    return Write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

bool OutputFile::WriteU16Le(std::uint16_t value)
{
    return WriteU8(static_cast<std::uint8_t>(value)) && WriteU8(static_cast<std::uint8_t>(value >> 8));
}

bool OutputFile::WriteU32Le(std::uint32_t value)
{
    return WriteU16Le(static_cast<std::uint16_t>(value)) &&
           WriteU16Le(static_cast<std::uint16_t>(value >> 16));
}

bool OutputFile::WriteU16Be(std::uint16_t value)
{
    return WriteU8(static_cast<std::uint8_t>(value >> 8)) && WriteU8(static_cast<std::uint8_t>(value));
}

bool OutputFile::WriteU32Be(std::uint32_t value)
{
    return WriteU16Be(static_cast<std::uint16_t>(value >> 16)) &&
           WriteU16Be(static_cast<std::uint16_t>(value));
}

bool OutputFile::Seek(std::uint64_t position)
{
    if (!Flush())
        return false;
    flushed_ = position;
    return true;
}

std::uint64_t OutputFile::Size()
{
    struct stat status {
    };
    Flush();
    return file_ && fstat(file_.Number(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::size_t OutputFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out)
{
    std::size_t done = 0;
    while (Flush() && done < out.size()) {
        const ssize_t count =
            pread(file_.Number(), out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

// Network file systems and quotas may report a full disk only on close.
bool OutputFile::ReportsNoLateFailure()
{
    const int second = dup(file_.Number());
    return second >= 0 && saver_.System().Close(second) == 0;
}

static bool CopyAccessList(int folder, const std::string& name, int file)
{
    constexpr const char* kAttribute = "system.posix_acl_access";
    const Descriptor old(
        openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    std::array<char, 4096> list;
    const ssize_t size = old ? fgetxattr(old.Number(), kAttribute, list.data(), list.size()) : -1;
    return size <= 0 || fsetxattr(file, kAttribute, list.data(), static_cast<std::size_t>(size), 0) == 0;
}

// File systems without owners and modes refuse to change them.
static bool Succeeded(int result)
{
    return result == 0 || errno == EPERM || errno == ENOSYS || errno == EOPNOTSUPP;
}

bool OutputFile::TakeOverAttributes()
{
    SystemCalls& system = saver_.System();
    struct stat own {
    };
    if (fstat(file_.Number(), &own) != 0)
        return false;
    mode_t mode = target_.status.st_mode & 0777;
    const auto [user, group] = std::pair(target_.status.st_uid, target_.status.st_gid);
    const bool differs = own.st_uid != user || own.st_gid != group;
    if (differs && system.ChangeOwner(file_.Number(), user, group) != 0 && own.st_gid != group &&
        system.ChangeOwner(file_.Number(), static_cast<uid_t>(-1), group) != 0)
        mode &= ~((~mode & 07u) << 3);  // another group gets no more than everyone has
    if (!Succeeded(system.ChangeMode(file_.Number(), mode)))
        return false;
    return CopyAccessList(target_.folder.Number(), target_.name, file_.Number());
}

// Renames a temporary over the target. For existing targets, and where a nameless file can't be linked.
bool OutputFile::Replace()
{
    SystemCalls& system = saver_.System();
    const int folder = target_.folder.Number();
    if (target_.exists && !TakeOverAttributes())
        return false;
    const bool replaces =
        target_.exists || faccessat(folder, target_.name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
    if (replaces && saver_.Syncs() && !SyncFile(system, file_.Number()))
        return false;
    if (temporary_.empty() && !NameTemporary(system, file_.Number(), folder, temporary_)) {
        temporary_.clear();
        return false;
    }
    if (system.Rename(folder, temporary_.c_str(), target_.name.c_str()) != 0)
        return false;
    temporary_.clear();
    system.Unlock(file_.Number());
    // The file is in place from here on. A failed folder sync is reported with the queue.
    if (!replaces)
        QueueForSync();
    else if (saver_.Syncs() && !SyncFolder(system, folder, file_.Number()))
        saver_.Queue().NoteFailure();
    return true;
}

void OutputFile::QueueForSync()
{
    if (!saver_.Syncs())
        return;
    saver_.Queue().Add({std::move(file_), std::move(target_.folder), target_.folder_status.st_dev,
                        target_.folder_status.st_ino, flushed_});
}

bool OutputFile::PutIntoPlace()
{
    SystemCalls& system = saver_.System();
    if (!Flush() || !ReportsNoLateFailure())
        return false;
    if (target_.exists)
        return Replace();
    if (new_mode_ != 0 && !Succeeded(system.ChangeMode(file_.Number(), new_mode_)))
        return false;
    if (!temporary_.empty())
        return Replace();
    if (system.GiveName(file_.Number(), target_.folder.Number(), target_.name.c_str()) == 0) {
        QueueForSync();
        return true;
    }
    return errno == EEXIST && Replace();  // someone created a file of that name meanwhile
}

bool OutputFile::Commit()
{
    if (Failed())
        return false;
    const bool done = PutIntoPlace();
    if (!done)
        Fail();
    error_ = done ? EINVAL : error_;  // either way, nothing more may be written
    return done;
}
