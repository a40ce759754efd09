// Reads the settings file when it has changed, and replaces it under a lock.
#include "src/platform/posix/posix_ini_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "src/base/number_text.h"
#include "src/base/text_encoding.h"
#include "src/platform/posix/descriptor.h"
#include "src/platform/posix/ini_text.h"
#include "src/platform/posix/replacing_file.h"

// A settings file takes a few kilobytes; what is larger than this is something else.
static constexpr off_t kLargestFile = 16 * 1024 * 1024;

std::optional<std::string> PosixIniFile::sRead(const std::string& sIniFile) const
{
    const Descriptor objFile = OpenRegularFile(sIniFile, O_RDONLY);
    if (!objFile)
        return errno == ENOENT ? std::optional(std::string()) : std::nullopt;
    struct stat objStat {
    };
    if (fstat(objFile.nNumber(), &objStat) != 0 || objStat.st_size > kLargestFile)
        return std::nullopt;
    std::string sBytes(static_cast<std::size_t>(objStat.st_size), '\0');
    std::size_t nDone = 0;
    while (nDone < sBytes.size()) {
        const ssize_t nRead = read(objFile.nNumber(), sBytes.data() + nDone, sBytes.size() - nDone);
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead < 0)
            return std::nullopt;
        if (nRead == 0)
            break;
        nDone += static_cast<std::size_t>(nRead);
    }
    sBytes.resize(nDone);
    return sIniTextOf(sBytes);
}

static bool bSameFile(const struct stat& objLeft, const struct stat& objRight)
{
    return objLeft.st_dev == objRight.st_dev && objLeft.st_ino == objRight.st_ino &&
           objLeft.st_size == objRight.st_size && objLeft.st_mtim.tv_sec == objRight.st_mtim.tv_sec &&
           objLeft.st_mtim.tv_nsec == objRight.st_mtim.tv_nsec;
}

const std::string& PosixIniFile::sText(const std::string& sIniFile) const
{
    struct stat objStat {
    };
    const bool bThere = stat(sIniFile.c_str(), &objStat) == 0;
    if (!bThere || sIniFile != m_sKeptFile || !bSameFile(objStat, m_objKept)) {
        m_sKeptText = bThere ? sRead(sIniFile).value_or("") : "";
        m_sKeptFile = sIniFile;
        m_objKept = objStat;
    }
    return m_sKeptText;
}

std::string PosixIniFile::GetPrivateProfileString(const std::string& sSection, const std::string& sKey,
                                                  const std::string& sDefault, std::int32_t lBufferSize,
                                                  const std::string& sIniFile) const
{
    std::string sValue = sIniValue(sText(sIniFile), sSection, sKey).value_or(sDefault);
    sValue.resize(nWholeCharacters(sValue, static_cast<std::size_t>(std::max(lBufferSize - 1, 0))));
    return sValue;
}

std::int32_t PosixIniFile::GetPrivateProfileInt(const std::string& sSection, const std::string& sKey,
                                                std::int32_t lDefault, const std::string& sIniFile) const
{
    const std::optional<std::string> sValue = sIniValue(sText(sIniFile), sSection, sKey);
    return sValue ? lLeadingNumber(*sValue) : lDefault;
}

// In a folder that several users share, one of them could put a link where the file is to be, and have
// another one write over a file of his own. So a link is followed only if the user, or the system, has made
// it.
static bool bIsForeignLink(const std::string& sIniFile)
{
    struct stat objStat {
    };
    return lstat(sIniFile.c_str(), &objStat) == 0 && S_ISLNK(objStat.st_mode) &&
           objStat.st_uid != geteuid() && objStat.st_uid != 0;
}

// A new file is for those whom the folder is for: in one that a group shares, the group shares the file.
static void ShareAsTheFolder(const std::string& sIniFile, int nFolder)
{
    struct stat objStat {
    };
    if (fstat(nFolder, &objStat) == 0)
        (void)!chmod(sIniFile.c_str(), 0600 | (objStat.st_mode & 0066));
}

bool PosixIniFile::WritePrivateProfileString(const std::string& sSection, const std::string& sKey,
                                             const std::string& sValue, const std::string& sIniFile)
{
    const std::string sFolder = sHostFolderOf(sIniFile);
    std::error_code objIgnored;  // opening the folder tells
    std::filesystem::create_directories(sFolder, objIgnored);
    const Descriptor objFolder(open(sFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!objFolder || bIsForeignLink(sIniFile))
        return false;
    // The lock goes with the descriptor. On a file system that has no locks it must do without.
    while (flock(objFolder.nNumber(), LOCK_EX) != 0 && errno == EINTR)
        continue;

    const std::optional<std::string> sOld = sRead(sIniFile);
    if (!sOld)
        return false;
    const bool bNew = access(sIniFile.c_str(), F_OK) != 0;
    const std::string sNew = sIniTextWith(*sOld, sSection, sKey, sValue);
    if (!bNew && sNew == *sOld)
        return true;
    ReplacingFile objFile(sIniFile);
    objFile.Write(sNew);
    if (!objFile.Commit())
        return false;
    if (bNew)
        ShareAsTheFolder(sIniFile, objFolder.nNumber());
    return true;
}
