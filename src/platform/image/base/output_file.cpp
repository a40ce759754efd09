// Writes files whole or not at all.
#include "src/platform/image/base/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <utility>

static constexpr std::size_t kGatherSize = 128 * 1024;
static constexpr std::size_t kPage = 4096;

static std::string FolderOf(const std::string& host_path)
{
    const std::size_t last = host_path.rfind('/');
    if (last == std::string::npos)
        return ".";
    return last == 0 ? "/" : host_path.substr(0, last);
}

// A name beside the target. It doesn't hold the target's name, which may be as long as a name can be.
static std::string TemporaryName(const std::string& folder)
{
    std::random_device random;
    std::array<char, 40> name{};
    std::snprintf(name.data(), name.size(), "/.varnel-%08x%08x.tmp", random(), random());
    return folder + name.data();
}

// The end of the links that path begins with, whether or not there is a file; "" for a ring of links.
static std::string EndOfLinks(std::string path)
{
    for (int links = 0; links < 40; ++links) {
        std::array<char, PATH_MAX> target;
        const ssize_t size = readlink(path.c_str(), target.data(), target.size());
        if (size < 0)
            return path;
        const std::string target_path(target.data(), static_cast<std::size_t>(size));
        path = target_path.starts_with('/') ? target_path : FolderOf(path) + "/" + target_path;
    }
    return "";
}

// A nameless file can be given its name only by way of /proc, which a bare environment may lack.
static bool CanUseNamelessFiles()
{
    return access("/proc/self/fd", F_OK) == 0;
}

OutputFile::OutputFile(const std::string& host_path) : target_(host_path)
{
    struct stat status {
    };
    if (stat(target_.c_str(), &status) == 0) {
        replaces_ = true;
        replaced_mode_ = status.st_mode & 07777;
        // A rename would replace a device or a pipe by a picture; and a file that the user protected stays.
        if (!S_ISREG(status.st_mode) || (replaced_mode_ & 0222) == 0 || access(target_.c_str(), W_OK) != 0) {
            failed_ = true;
            return;
        }
        const std::unique_ptr<char, void (*)(void*)> real(realpath(target_.c_str(), nullptr), &std::free);
        if (real)
            target_ = real.get();
    } else {
        target_ = EndOfLinks(target_);
        if (target_.empty()) {
            failed_ = true;
            return;
        }
    }
    const std::string folder = FolderOf(target_);
    if (CanUseNamelessFiles())
        descriptor_ = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor_ < 0) {
        temporary_ = TemporaryName(folder);
        descriptor_ = open(temporary_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
        if (descriptor_ < 0)
            temporary_.clear();
    }
    failed_ = descriptor_ < 0;
}

OutputFile::~OutputFile()
{
    if (descriptor_ >= 0)
        close(descriptor_);
    if (!temporary_.empty())
        unlink(temporary_.c_str());
}

bool OutputFile::WriteThrough(Bytes bytes)
{
    while (!bytes.empty() && !failed_) {
        const ssize_t written = pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(flushed_));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            failed_ = true;
            break;
        }
        flushed_ += static_cast<std::uint64_t>(written);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return !failed_;
}

bool OutputFile::Flush()
{
    const bool done = WriteThrough(gathered_);
    gathered_.clear();
    return done;
}

void OutputFile::Gather(Bytes& bytes, std::size_t count)
{
    gathered_.insert(gathered_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    bytes = bytes.subspan(count);
}

// What goes to the system ends where its pages do: one that comes in two parts costs twice. A large piece
// goes there itself, but for its ends.
bool OutputFile::Write(Bytes bytes)
{
    while (!failed_ && !bytes.empty()) {
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
    return !failed_;
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
    const std::uint64_t position = Position();
    Flush();
    struct stat status {
    };
    if (descriptor_ < 0 || fstat(descriptor_, &status) != 0)
        return 0;
    flushed_ = position;
    return static_cast<std::uint64_t>(status.st_size);
}

std::size_t OutputFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out)
{
    std::size_t done = 0;
    while (Flush() && done < out.size()) {
        const ssize_t got =
            pread(descriptor_, out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

bool OutputFile::Commit()
{
    if (failed_ || descriptor_ < 0 || !Flush())
        return false;
    failed_ = true;  // whatever comes of it, nothing more is written
    // Some file systems (over a network, with quotas) say only when a file is closed that it had no room.
    const int second = dup(descriptor_);
    if (second < 0 || close(second) != 0)
        return false;
    if (replaces_ && fchmod(descriptor_, replaced_mode_) != 0 && errno != EPERM)
        return false;
    const std::string folder = FolderOf(target_);
    const std::string descriptor = "/proc/self/fd/" + std::to_string(descriptor_);
    if (temporary_.empty()) {
        // A new name is given at once; an old one is taken over by way of a temporary name, since only a
        // rename replaces.
        if (!replaces_ &&
            linkat(AT_FDCWD, descriptor.c_str(), AT_FDCWD, target_.c_str(), AT_SYMLINK_FOLLOW) == 0)
            return committed_ = true;
        std::string temporary = TemporaryName(folder);
        if (linkat(AT_FDCWD, descriptor.c_str(), AT_FDCWD, temporary.c_str(), AT_SYMLINK_FOLLOW) != 0)
            return false;
        temporary_ = temporary;
    }
    if (rename(temporary_.c_str(), target_.c_str()) != 0)
        return false;
    temporary_.clear();
    return committed_ = true;
}

int OutputFile::TakeDescriptor()
{
    return committed_ ? std::exchange(descriptor_, -1) : -1;
}
