// Folders, environment variables, processes and limits for tests.
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

HostFolder::HostFolder() : path_(testing::TempDir() + "varnel-posix-XXXXXX")
{
    EXPECT_NE(mkdtemp(path_.data()), nullptr);
    chmod(path_.c_str(), 0777);
}

HostFolder::~HostFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string HostFolder::File(const std::string& name, const std::string& content) const
{
    fs::create_directories(fs::path(File(name)).parent_path());
    std::ofstream(File(name), std::ios::binary) << content;
    return File(name);
}

std::string HostFolder::Subfolder(const std::string& name) const
{
    fs::create_directories(File(name));
    return File(name);
}

std::string HostFolder::Listing() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    std::string result;
    for (const std::string& name : names)
        result += (result.empty() ? "" : " ") + name;
    return result;
}

std::string ContentOf(const std::string& host_path)
{
    std::ifstream file(host_path, std::ios::binary);
    if (!file)
        return "(none)";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

static void SetVariable(const std::string& name, const char* value)
{
    if (value)
        setenv(name.c_str(), value, 1);
    else
        unsetenv(name.c_str());
}

ScopedVariable::ScopedVariable(const char* name, const char* value)
    : name_(name), was_set_(std::getenv(name)), old_(was_set_ ? std::getenv(name) : "")
{
    SetVariable(name_, value);
}

ScopedVariable::~ScopedVariable()
{
    SetVariable(name_, was_set_ ? old_.c_str() : nullptr);
}

bool RunAsOrdinaryUser(const std::function<bool()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(2);
        bool answer = false;
        try {
            answer = work();
        } catch (...) {
            _exit(3);
        }
        _exit(answer ? 0 : 1);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1) << "the process ended with " << status;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

ScopedFileSizeLimit::ScopedFileSizeLimit(unsigned long bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN))
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    old_ = limit.rlim_cur;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
}

ScopedFileSizeLimit::~ScopedFileSizeLimit()
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = old_;
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, old_handler_);
}
