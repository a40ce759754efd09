// Opens lock files safely in folders that everybody may write to, and waits for them.
#include "src/platform/posix/posix_named_mutex.h"

#include <sys/file.h>

#include <algorithm>
#include <cerrno>

static std::string sFileName(const std::string& sName)
{
    std::string sResult = "varnel-" + sName.substr(0, 100) + ".lock";
    std::replace(sResult.begin(), sResult.end(), '/', '_');
    return sResult;
}

// An existing file is opened without O_CREAT, since systems refuse O_CREAT on another user's file in such
// folders. The mode is set apart from the mask, for the other users.
static Descriptor OpenLockFile(const std::string& sPath)
{
    constexpr int kAttempts = 100;  // another process may make or remove the file between the two steps
    for (int n = 0; n < kAttempts; ++n) {
        Descriptor objFile = OpenRegularFile(sPath, O_RDONLY | O_NOFOLLOW);
        if (objFile || errno != ENOENT)
            return objFile;
        objFile = OpenRegularFile(sPath, O_RDONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
        if (objFile)
            (void)!fchmod(objFile.nNumber(), 0666);
        if (objFile || errno != EEXIST)
            return objFile;
    }
    return Descriptor();
}

static bool bStillUnderItsName(const Descriptor& objFile, const std::string& sPath)
{
    struct stat objHeld {
    }, objNamed{};
    return fstat(objFile.nNumber(), &objHeld) == 0 && lstat(sPath.c_str(), &objNamed) == 0 &&
           objHeld.st_dev == objNamed.st_dev && objHeld.st_ino == objNamed.st_ino;
}

static Descriptor LockInFolder(const std::string& sFolder, const std::string& sName)
{
    const std::string sPath = sFolder + "/" + sFileName(sName);
    while (true) {
        Descriptor objFile = OpenLockFile(sPath);
        if (!objFile)
            return objFile;
        while (flock(objFile.nNumber(), LOCK_EX) != 0)
            if (errno != EINTR)
                return Descriptor();
        // A cleaner may have removed the file while we waited; the others meet at the new one.
        if (bStillUnderItsName(objFile, sPath))
            return objFile;
    }
}

void PosixNamedMutex::Acquire(const std::string& sName)
{
    Held& objHeld = m_aHeld[sName];
    if (++objHeld.nTimes > 1)
        return;
    for (const std::string& sFolder : m_aFolders) {
        objHeld.objFile = LockInFolder(sFolder, sName);
        if (objHeld.objFile)
            return;
    }
}

void PosixNamedMutex::Release(const std::string& sName)
{
    const auto itHeld = m_aHeld.find(sName);
    if (itHeld != m_aHeld.end() && --itHeld->second.nTimes == 0)
        m_aHeld.erase(itHeld);
}
