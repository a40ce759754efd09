// An open file of the host that is closed when it is let go.
// Room: platform/posix.
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
    explicit Descriptor(int nNumber) : m_nNumber(nNumber) {}
    Descriptor(Descriptor&& objOther) noexcept : m_nNumber(std::exchange(objOther.m_nNumber, -1)) {}
    Descriptor& operator=(Descriptor&& objOther) noexcept
    {
        std::swap(m_nNumber, objOther.m_nNumber);
        return *this;
    }
    ~Descriptor()
    {
        const int nError = errno;  // the failure that led here is still to be told
        if (m_nNumber >= 0)
            close(m_nNumber);
        errno = nError;
    }

    explicit operator bool() const { return m_nNumber >= 0; }
    int nNumber() const { return m_nNumber; }
    /// Hands the file over; it is no longer closed here.
    int nRelease() { return std::exchange(m_nNumber, -1); }

private:
    int m_nNumber = -1;
};

/// Opens a regular file (a link to one too, unless nFlags says otherwise), never waiting for the other end of
/// a pipe. Holds nothing, with errno set, when it could not.
inline Descriptor OpenRegularFile(const std::string& sHostPath, int nFlags, mode_t nMode = 0666)
{
    Descriptor objFile(open(sHostPath.c_str(), nFlags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, nMode));
    struct stat objStat {
    };
    if (objFile && (fstat(objFile.nNumber(), &objStat) != 0 || !S_ISREG(objStat.st_mode))) {
        errno = S_ISDIR(objStat.st_mode) ? EISDIR : EINVAL;
        return Descriptor();
    }
    return objFile;
}
