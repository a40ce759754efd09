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

static std::string sFolderOf(const std::string& sHostPath)
{
    const std::size_t nLast = sHostPath.rfind('/');
    if (nLast == std::string::npos)
        return ".";
    return nLast == 0 ? "/" : sHostPath.substr(0, nLast);
}

// A name beside the target. It doesn't hold the target's name, which may be as long as a name can be.
static std::string sTemporaryName(const std::string& sFolder)
{
    std::random_device objRandom;
    std::array<char, 40> aName{};
    std::snprintf(aName.data(), aName.size(), "/.varnel-%08x%08x.tmp", objRandom(), objRandom());
    return sFolder + aName.data();
}

// The end of the links that sPath begins with, whether or not there is a file; "" for a ring of links.
static std::string sEndOfLinks(std::string sPath)
{
    for (int lLinks = 0; lLinks < 40; ++lLinks) {
        std::array<char, PATH_MAX> aTarget;
        const ssize_t nSize = readlink(sPath.c_str(), aTarget.data(), aTarget.size());
        if (nSize < 0)
            return sPath;
        const std::string sTarget(aTarget.data(), static_cast<std::size_t>(nSize));
        sPath = sTarget.starts_with('/') ? sTarget : sFolderOf(sPath) + "/" + sTarget;
    }
    return "";
}

// A nameless file can be given its name only by way of /proc, which a bare environment may lack.
static bool bNamelessFilesUsable()
{
    return access("/proc/self/fd", F_OK) == 0;
}

OutputFile::OutputFile(const std::string& sHostPath) : m_sTarget(sHostPath)
{
    struct stat objStat {
    };
    if (stat(m_sTarget.c_str(), &objStat) == 0) {
        m_bReplaces = true;
        m_nReplacedMode = objStat.st_mode & 07777;
        // A rename would replace a device or a pipe by a picture; and a file that the user protected stays.
        if (!S_ISREG(objStat.st_mode) || (m_nReplacedMode & 0222) == 0 ||
            access(m_sTarget.c_str(), W_OK) != 0) {
            m_bFailed = true;
            return;
        }
        const std::unique_ptr<char, void (*)(void*)> sReal(realpath(m_sTarget.c_str(), nullptr), &std::free);
        if (sReal)
            m_sTarget = sReal.get();
    } else {
        m_sTarget = sEndOfLinks(m_sTarget);
        if (m_sTarget.empty()) {
            m_bFailed = true;
            return;
        }
    }
    const std::string sFolder = sFolderOf(m_sTarget);
    if (bNamelessFilesUsable())
        m_nDescriptor = open(sFolder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (m_nDescriptor < 0) {
        m_sTemporary = sTemporaryName(sFolder);
        m_nDescriptor = open(m_sTemporary.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
        if (m_nDescriptor < 0)
            m_sTemporary.clear();
    }
    m_bFailed = m_nDescriptor < 0;
}

OutputFile::~OutputFile()
{
    if (m_nDescriptor >= 0)
        close(m_nDescriptor);
    if (!m_sTemporary.empty())
        unlink(m_sTemporary.c_str());
}

bool OutputFile::WriteThrough(Bytes aBytes)
{
    while (!aBytes.empty() && !m_bFailed) {
        const ssize_t nWritten =
            pwrite(m_nDescriptor, aBytes.data(), aBytes.size(), static_cast<off_t>(m_nFlushed));
        if (nWritten < 0 && errno == EINTR)
            continue;
        if (nWritten <= 0) {
            m_bFailed = true;
            break;
        }
        m_nFlushed += static_cast<std::uint64_t>(nWritten);
        aBytes = aBytes.subspan(static_cast<std::size_t>(nWritten));
    }
    return !m_bFailed;
}

bool OutputFile::Flush()
{
    const bool bDone = WriteThrough(m_aGathered);
    m_aGathered.clear();
    return bDone;
}

void OutputFile::Gather(Bytes& aBytes, std::size_t nCount)
{
    m_aGathered.insert(m_aGathered.end(), aBytes.begin(),
                       aBytes.begin() + static_cast<std::ptrdiff_t>(nCount));
    aBytes = aBytes.subspan(nCount);
}

// What goes to the system ends where its pages do: one that comes in two parts costs twice. A large piece
// goes there itself, but for its ends.
bool OutputFile::Write(Bytes aBytes)
{
    while (!m_bFailed && !aBytes.empty()) {
        const bool bLarge = aBytes.size() >= kGatherSize;
        if (bLarge && Position() % kPage == 0) {
            const std::size_t nPages = aBytes.size() / kPage * kPage;
            if (Flush() && WriteThrough(aBytes.first(nPages)))
                aBytes = aBytes.subspan(nPages);
            continue;
        }
        const std::size_t nEnd = bLarge ? kPage : kGatherSize;
        const std::size_t nRoom = nEnd - Position() % nEnd;
        Gather(aBytes, std::min(nRoom, aBytes.size()));
        if (Position() % kGatherSize == 0)
            Flush();
    }
    return !m_bFailed;
}

bool OutputFile::WriteU16Le(std::uint16_t nValue)
{
    return WriteU8(static_cast<std::uint8_t>(nValue)) && WriteU8(static_cast<std::uint8_t>(nValue >> 8));
}

bool OutputFile::WriteU32Le(std::uint32_t nValue)
{
    return WriteU16Le(static_cast<std::uint16_t>(nValue)) &&
           WriteU16Le(static_cast<std::uint16_t>(nValue >> 16));
}

bool OutputFile::WriteU16Be(std::uint16_t nValue)
{
    return WriteU8(static_cast<std::uint8_t>(nValue >> 8)) && WriteU8(static_cast<std::uint8_t>(nValue));
}

bool OutputFile::WriteU32Be(std::uint32_t nValue)
{
    return WriteU16Be(static_cast<std::uint16_t>(nValue >> 16)) &&
           WriteU16Be(static_cast<std::uint16_t>(nValue));
}

bool OutputFile::Seek(std::uint64_t nPosition)
{
    if (!Flush())
        return false;
    m_nFlushed = nPosition;
    return true;
}

std::uint64_t OutputFile::Size()
{
    const std::uint64_t nPosition = Position();
    Flush();
    struct stat objStat {
    };
    if (m_nDescriptor < 0 || fstat(m_nDescriptor, &objStat) != 0)
        return 0;
    m_nFlushed = nPosition;
    return static_cast<std::uint64_t>(objStat.st_size);
}

std::size_t OutputFile::ReadAt(std::uint64_t nOffset, std::span<std::uint8_t> aOut)
{
    std::size_t nDone = 0;
    while (Flush() && nDone < aOut.size()) {
        const ssize_t nRead = pread(m_nDescriptor, aOut.data() + nDone, aOut.size() - nDone,
                                    static_cast<off_t>(nOffset + nDone));
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead <= 0)
            break;
        nDone += static_cast<std::size_t>(nRead);
    }
    return nDone;
}

bool OutputFile::Commit()
{
    if (m_bFailed || m_nDescriptor < 0 || !Flush())
        return false;
    m_bFailed = true;  // whatever comes of it, nothing more is written
    // Some file systems (over a network, with quotas) say only when a file is closed that it had no room.
    const int nSecond = dup(m_nDescriptor);
    if (nSecond < 0 || close(nSecond) != 0)
        return false;
    if (m_bReplaces && fchmod(m_nDescriptor, m_nReplacedMode) != 0 && errno != EPERM)
        return false;
    const std::string sFolder = sFolderOf(m_sTarget);
    const std::string sDescriptor = "/proc/self/fd/" + std::to_string(m_nDescriptor);
    if (m_sTemporary.empty()) {
        // A new name is given at once; an old one is taken over by way of a temporary name, since only a
        // rename replaces.
        if (!m_bReplaces &&
            linkat(AT_FDCWD, sDescriptor.c_str(), AT_FDCWD, m_sTarget.c_str(), AT_SYMLINK_FOLLOW) == 0)
            return m_bCommitted = true;
        std::string sTemporary = sTemporaryName(sFolder);
        if (linkat(AT_FDCWD, sDescriptor.c_str(), AT_FDCWD, sTemporary.c_str(), AT_SYMLINK_FOLLOW) != 0)
            return false;
        m_sTemporary = sTemporary;
    }
    if (rename(m_sTemporary.c_str(), m_sTarget.c_str()) != 0)
        return false;
    m_sTemporary.clear();
    return m_bCommitted = true;
}

int OutputFile::TakeDescriptor()
{
    return m_bCommitted ? std::exchange(m_nDescriptor, -1) : -1;
}
