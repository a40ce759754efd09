// Makes folders, processes and limits for tests of saves.
#include "tests/platform/files/support/save_folder.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

SaveFolder::SaveFolder() : path_(testing::TempDir() + "varnel-files-XXXXXX")
{
    EXPECT_NE(mkdtemp(path_.data()), nullptr);
    chmod(path_.c_str(), 0777);
}

SaveFolder::~SaveFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string SaveFolder::Path(const std::string& name) const
{
    return path_ + "/" + name;
}

std::vector<std::string> SaveFolder::Names() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

void WriteContent(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

std::string ContentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return "(none)";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

mode_t ModeOf(const std::string& path)
{
    struct stat status {
    };
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

bool InChild(const std::function<bool()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        try {
            _exit(work() ? 0 : 1);
        } catch (...) {
            _exit(3);
        }
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1) << "the process ended with " << status;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool AsOrdinaryUser(const std::function<bool()>& work)
{
    return InChild([&] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(2);
        return work();
    });
}

FullDisk::FullDisk(rlim_t size)
{
    old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{size, old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
}

FullDisk::~FullDisk()
{
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, old_handler_);
}
