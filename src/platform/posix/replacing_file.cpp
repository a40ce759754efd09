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

std::string sHostFolderOf(const std::string& sHostPath)
{
    const std::size_t nLast = sHostPath.rfind('/');
    if (nLast == std::string::npos)
        return ".";
    return nLast == 0 ? "/" : sHostPath.substr(0, nLast);
}

bool bWriteAll(int nDescriptor, std::string_view sBytes)
{
    while (!sBytes.empty()) {
        const ssize_t nWritten = write(nDescriptor, sBytes.data(), sBytes.size());
        if (nWritten < 0 && errno != EINTR)
            return false;
        if (nWritten > 0)
            sBytes.remove_prefix(static_cast<std::size_t>(nWritten));
    }
    return true;
}

// A name beside the target. It doesn't hold the target's name, which may be as long as a name can be.
static std::string sTemporaryName(const std::string& sFolder)
{
    std::random_device objRandom;
    std::array<char, 40> aName{};
    std::snprintf(aName.data(), aName.size(), "/.varnel-%08x%08x.tmp", objRandom(), objRandom());
    return sFolder + aName.data();
}

ReplacingFile::ReplacingFile(const std::string& sHostPath, mode_t nMode) : m_sTarget(sHostPath)
{
    struct stat objStat {
    };
    if (stat(m_sTarget.c_str(), &objStat) == 0) {
        m_bReplaces = true;
        m_nReplacedMode = objStat.st_mode & 07777;
        // A rename would put a file where a device or a pipe was, and do away with a file that is protected,
        // be it from everybody or from us.
        if (!S_ISREG(objStat.st_mode))
            m_nError = S_ISDIR(objStat.st_mode) ? EISDIR : EINVAL;
        else if ((m_nReplacedMode & 0222) == 0 || access(m_sTarget.c_str(), W_OK) != 0)
            m_nError = EACCES;
        if (m_nError != 0)
            return;
        const std::unique_ptr<char, void (*)(void*)> sReal(realpath(m_sTarget.c_str(), nullptr), &std::free);
        if (sReal)
            m_sTarget = sReal.get();
    }
    if (!bOpen(sHostFolderOf(m_sTarget), nMode))
        Fail();
}

bool ReplacingFile::bOpen(const std::string& sFolder, mode_t nMode)
{
    m_nDescriptor = open(sFolder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, nMode);
    if (m_nDescriptor >= 0)
        return true;
    m_sTemporary = sTemporaryName(sFolder);
    m_nDescriptor = open(m_sTemporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, nMode);
    if (m_nDescriptor < 0)
        m_sTemporary.clear();
    return m_nDescriptor >= 0;
}

ReplacingFile::~ReplacingFile()
{
    if (m_nDescriptor >= 0)
        close(m_nDescriptor);
    if (!m_sTemporary.empty())
        unlink(m_sTemporary.c_str());
}

void ReplacingFile::Fail()
{
    if (m_nError == 0)
        m_nError = errno != 0 ? errno : EIO;
}

std::string ReplacingFile::sError() const
{
    return std::generic_category().message(m_nError);
}

void ReplacingFile::Flush()
{
    if (!bFailed() && !bWriteAll(m_nDescriptor, m_sGathered))
        Fail();
    m_sGathered.clear();
}

void ReplacingFile::Write(std::string_view sBytes)
{
    if (bFailed())
        return;
    m_sGathered += sBytes;
    if (m_sGathered.size() >= kGatherSize)
        Flush();
}

bool ReplacingFile::Commit()
{
    Flush();
    if (bFailed())
        return false;
    if (m_bReplaces && fchmod(m_nDescriptor, m_nReplacedMode) != 0 && errno != EPERM)
        Fail();
    const std::string sDescriptor = "/proc/self/fd/" + std::to_string(m_nDescriptor);
    if (!bFailed() && m_sTemporary.empty()) {
        // A new name is given at once. An old one is taken over by way of a temporary name, since only a
        // rename replaces.
        if (!m_bReplaces &&
            linkat(AT_FDCWD, sDescriptor.c_str(), AT_FDCWD, m_sTarget.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            m_nError = EINVAL;  // it is done: nothing more may be written
            return true;
        }
        const std::string sTemporary = sTemporaryName(sHostFolderOf(m_sTarget));
        if (linkat(AT_FDCWD, sDescriptor.c_str(), AT_FDCWD, sTemporary.c_str(), AT_SYMLINK_FOLLOW) == 0)
            m_sTemporary = sTemporary;
        else
            Fail();
    }
    if (!bFailed() && rename(m_sTemporary.c_str(), m_sTarget.c_str()) != 0)
        Fail();
    if (bFailed())
        return false;
    m_sTemporary.clear();
    m_nError = EINVAL;
    return true;
}
