// Owner of an open file descriptor, which it closes at the end of its life.
// Room: platform/files.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>

class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor()
    {
        const int error = errno;  // the caller still reports the failure that led here
        if (number_ >= 0)
            close(number_);
        errno = error;
    }

    explicit operator bool() const { return number_ >= 0; }
    int Number() const { return number_; }
    /// Gives up ownership: the caller closes it.
    int Release() { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

/// Opens a regular file, or a link to one unless `flags` forbids that. Never waits for the other end of a
/// pipe. Empty, with errno set, on failure.
inline Descriptor OpenRegularFile(const std::string& host_path, int flags, mode_t mode = 0666)
{
    Descriptor file(open(host_path.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, mode));
    struct stat status {
    };
    if (file && (fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode))) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return Descriptor();
    }
    return file;
}
