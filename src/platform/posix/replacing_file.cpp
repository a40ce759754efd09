// Writes beside the target and renames.
#include "src/platform/posix/replacing_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <system_error>

static constexpr std::size_t kGatherSize = 64 * 1024;

std::string HostFolderOf(const std::string& host_path)
{
    const std::size_t last = host_path.rfind('/');
    if (last == std::string::npos)
        return ".";
    return last == 0 ? "/" : host_path.substr(0, last);
}

bool WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// A name beside the target. It doesn't hold the target's name, which may be as long as a name can be.
static std::string TemporaryName(const std::string& folder)
{
    std::random_device random;
    std::array<char, 40> name{};
    std::snprintf(name.data(), name.size(), "/.varnel-%08x%08x.tmp", random(), random());
    return folder + name.data();
}

ReplacingFile::ReplacingFile(const std::string& host_path, mode_t mode) : target_(host_path)
{
    struct stat status {
    };
    if (stat(target_.c_str(), &status) == 0) {
        replaces_ = true;
        replaced_mode_ = status.st_mode & 07777;
        // A rename would put a file where a device or a pipe was, and do away with a file that is protected,
        // be it from everybody or from us.
        if (!S_ISREG(status.st_mode))
            error_ = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        else if ((replaced_mode_ & 0222) == 0 || access(target_.c_str(), W_OK) != 0)
            error_ = EACCES;
        if (error_ != 0)
            return;
        const std::unique_ptr<char, void (*)(void*)> real(realpath(target_.c_str(), nullptr), &std::free);
        if (real)
            target_ = real.get();
    }
    if (!Open(HostFolderOf(target_), mode))
        Fail();
}

bool ReplacingFile::Open(const std::string& folder, mode_t mode)
{
    descriptor_ = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
    if (descriptor_ >= 0)
        return true;
    temporary_ = TemporaryName(folder);
    descriptor_ = open(temporary_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, mode);
    if (descriptor_ < 0)
        temporary_.clear();
    return descriptor_ >= 0;
}

ReplacingFile::~ReplacingFile()
{
    if (descriptor_ >= 0)
        close(descriptor_);
    if (!temporary_.empty())
        unlink(temporary_.c_str());
}

void ReplacingFile::Fail()
{
    if (error_ == 0)
        error_ = errno != 0 ? errno : EIO;
}

std::string ReplacingFile::Error() const
{
    return std::generic_category().message(error_);
}

void ReplacingFile::Flush()
{
    if (!Failed() && !WriteAll(descriptor_, gathered_))
        Fail();
    gathered_.clear();
}

void ReplacingFile::Write(std::string_view bytes)
{
    if (Failed())
        return;
    gathered_ += bytes;
    if (gathered_.size() >= kGatherSize)
        Flush();
}

bool ReplacingFile::Commit()
{
    Flush();
    if (Failed())
        return false;
    if (replaces_ && fchmod(descriptor_, replaced_mode_) != 0 && errno != EPERM)
        Fail();
    const std::string descriptor = "/proc/self/fd/" + std::to_string(descriptor_);
    if (!Failed() && temporary_.empty()) {
        // A new name is given at once. An old one is taken over by way of a temporary name, since only a
        // rename replaces.
        if (!replaces_ &&
            linkat(AT_FDCWD, descriptor.c_str(), AT_FDCWD, target_.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            error_ = EINVAL;  // it is done: nothing more may be written
            return true;
        }
        const std::string temporary = TemporaryName(HostFolderOf(target_));
        if (linkat(AT_FDCWD, descriptor.c_str(), AT_FDCWD, temporary.c_str(), AT_SYMLINK_FOLLOW) == 0)
            temporary_ = temporary;
        else
            Fail();
    }
    if (!Failed() && rename(temporary_.c_str(), target_.c_str()) != 0)
        Fail();
    if (Failed())
        return false;
    temporary_.clear();
    error_ = EINVAL;
    return true;
}
