// Makes and removes folders, variables, processes and limits for tests.
#include "tests/platform/posix/support/host_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

HostFolder::HostFolder() : m_sPath(testing::TempDir() + "varnel-posix-XXXXXX")
{
    EXPECT_NE(mkdtemp(m_sPath.data()), nullptr);
    chmod(m_sPath.c_str(), 0777);
}

HostFolder::~HostFolder()
{
    std::error_code objIgnored;
    fs::remove_all(m_sPath, objIgnored);
}

std::string HostFolder::sFile(const std::string& sName, const std::string& sContent) const
{
    fs::create_directories(fs::path(sFile(sName)).parent_path());
    std::ofstream(sFile(sName), std::ios::binary) << sContent;
    return sFile(sName);
}

std::string HostFolder::sSubfolder(const std::string& sName) const
{
    fs::create_directories(sFile(sName));
    return sFile(sName);
}

std::string HostFolder::sListing() const
{
    std::vector<std::string> aNames;
    for (const auto& objEntry : fs::directory_iterator(m_sPath))
        aNames.push_back(objEntry.path().filename().string());
    std::sort(aNames.begin(), aNames.end());
    std::string sResult;
    for (const std::string& sName : aNames)
        sResult += (sResult.empty() ? "" : " ") + sName;
    return sResult;
}

std::string sContentOf(const std::string& sHostPath)
{
    std::ifstream objFile(sHostPath, std::ios::binary);
    if (!objFile)
        return "(none)";
    return {std::istreambuf_iterator<char>(objFile), std::istreambuf_iterator<char>()};
}

static void SetVariable(const std::string& sName, const char* sValue)
{
    if (sValue)
        setenv(sName.c_str(), sValue, 1);
    else
        unsetenv(sName.c_str());
}

ScopedVariable::ScopedVariable(const char* sName, const char* sValue)
    : m_sName(sName), m_bWasSet(std::getenv(sName)), m_sOld(m_bWasSet ? std::getenv(sName) : "")
{
    SetVariable(m_sName, sValue);
}

ScopedVariable::~ScopedVariable()
{
    SetVariable(m_sName, m_bWasSet ? m_sOld.c_str() : nullptr);
}

bool bAsOrdinaryUser(const std::function<bool()>& fnWork)
{
    const pid_t nChild = fork();
    if (nChild == 0) {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(2);
        bool bAnswer = false;
        try {
            bAnswer = fnWork();
        } catch (...) {
            _exit(3);
        }
        _exit(bAnswer ? 0 : 1);
    }
    int nStatus = 0;
    EXPECT_EQ(waitpid(nChild, &nStatus, 0), nChild);
    EXPECT_TRUE(WIFEXITED(nStatus) && WEXITSTATUS(nStatus) <= 1) << "the process ended with " << nStatus;
    return WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0;
}

ScopedFileSizeLimit::ScopedFileSizeLimit(unsigned long nBytes) : m_pOldHandler(std::signal(SIGXFSZ, SIG_IGN))
{
    rlimit objLimit{};
    getrlimit(RLIMIT_FSIZE, &objLimit);
    m_nOld = objLimit.rlim_cur;
    objLimit.rlim_cur = nBytes;
    setrlimit(RLIMIT_FSIZE, &objLimit);
}

ScopedFileSizeLimit::~ScopedFileSizeLimit()
{
    rlimit objLimit{};
    getrlimit(RLIMIT_FSIZE, &objLimit);
    objLimit.rlim_cur = m_nOld;
    setrlimit(RLIMIT_FSIZE, &objLimit);
    std::signal(SIGXFSZ, m_pOldHandler);
}
