// Finds the program's folders from the environment, the executable and the user's home.
#include "src/platform/posix/posix_program_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

static std::string sEnvironment(const char* sName)
{
    const char* sValue = std::getenv(sName);
    std::string sResult = sValue ? sValue : "";
    while (sResult.size() > 1 && sResult.back() == '/')
        sResult.pop_back();
    return sResult;
}

static std::string sHome()
{
    const std::string sFromEnvironment = sEnvironment("HOME");
    if (!sFromEnvironment.empty())
        return sFromEnvironment;
    const passwd* pUser = getpwuid(getuid());
    return pUser && pUser->pw_dir ? pUser->pw_dir : "/";
}

// A folder of the user's: what the variable says, if it is an absolute path, else sBelowHome.
static std::string sUserFolder(const char* sVariable, const char* sBelowHome)
{
    const std::string sSet = sEnvironment(sVariable);
    return (fs::path(sSet).is_absolute() ? fs::path(sSet) : fs::path(sHome()) / sBelowHome).string();
}

static bool bIsFolder(const fs::path& objPath)
{
    std::error_code objIgnored;
    return fs::is_directory(objPath, objIgnored);
}

std::string PosixProgramFolders::sRunningProgram()
{
    std::error_code objError;
    const fs::path objPath = fs::read_symlink("/proc/self/exe", objError);
    return objError ? "" : objPath.string();
}

std::string PosixProgramFolders::sSettingsFolder() const
{
    if (m_sSettings.empty())
        m_sSettings = sEnvironment("VARNEL_SETTINGS_DIR");
    if (m_sSettings.empty() && bIsFolder(m_sSharedSettings) &&
        access(m_sSharedSettings.c_str(), R_OK | W_OK | X_OK) == 0)
        m_sSettings = m_sSharedSettings;
    if (m_sSettings.empty())
        m_sSettings = sUserFolder("XDG_CONFIG_HOME", ".config") + "/varnel";
    return m_sSettings;
}

// Copies into a folder beside the target first, so that a process that comes at the same time, or one after a
// copy that was cut short, never takes a part for the whole.
static bool bFill(const fs::path& objTarget, const fs::path& objSource)
{
    const fs::path objPart = objTarget.string() + "." + std::to_string(getpid());
    std::error_code objError;
    fs::create_directories(objTarget.parent_path(), objError);
    fs::copy(objSource, objPart, fs::copy_options::recursive, objError);
    if (!objError)
        fs::rename(objPart, objTarget, objError);
    if (objError) {
        std::error_code objIgnored;
        fs::remove_all(objPart, objIgnored);
    }
    return bIsFolder(objTarget);
}

std::string PosixProgramFolders::sOwnFolder() const
{
    if (m_sOwn.empty())
        m_sOwn = sEnvironment("VARNEL_HOME");
    const fs::path objProgram = fs::path(m_sExecutable).parent_path();
    if (m_sOwn.empty() && bIsFolder(objProgram / "Languages"))
        m_sOwn = objProgram.string();
    if (m_sOwn.empty()) {
        const fs::path objShipped = objProgram.parent_path() / "share" / "varnel";
        m_sOwn = sUserFolder("XDG_DATA_HOME", ".local/share") + "/varnel";
        if (!bIsFolder(m_sOwn) && bIsFolder(objShipped) && !bFill(m_sOwn, objShipped))
            m_sOwn = objShipped.string();
    }
    return m_sOwn;
}
