// Tests of starting programs and waiting for them.
#include "src/platform/posix/posix_processes.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/platform/posix/support/host_services.h"

namespace
{

using Arguments = std::vector<std::string>;

class PosixProcesses : public testing::Test
{
protected:
    void SetUp() override
    {
        folder_ = testing::TempDir() + "varnel_processes_" + std::to_string(getpid());
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::unique_ptr<ChildProcess> Start(const std::string& program, const std::string& arguments,
                                        std::int32_t priority = 32)
    {
        return launcher_.pStart({program, arguments, priority, 1});
    }
    /// The exit code of a program that terminates normally.
    std::int32_t ExitCode(const std::string& program, const std::string& arguments)
    {
        const auto child = Start(program, arguments);
        if (!child)
            return -10;
        while (!child->bWaitForEnd(1000)) {
        }
        return child->lExitCode();
    }
    std::string Script(const std::string& name, const std::string& text, bool executable = true)
    {
        const std::string path = folder_ + "/" + name;
        std::ofstream(path) << text;
        chmod(path.c_str(), executable ? 0755 : 0644);
        return path;
    }
    std::string Content(const std::string& name) const
    {
        std::stringstream text;
        text << std::ifstream(folder_ + "/" + name).rdbuf();
        return text.str();
    }

    std::string folder_;
    HostFileSystem files_;
    PosixProcessLauncher launcher_{files_};
};

/// True if this process has a child, running or zombie, that hasn't been reaped.
bool HasChildren()
{
    siginfo_t info{};
    return waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

}  // namespace

TEST(CutArguments, SplitsAtSpacesButNotInsideQuotes)
{
    EXPECT_EQ(CutArguments("a  b \"c d\" e\"f g\"h"), (Arguments{"a", "b", "c d", "ef gh"}));
    EXPECT_EQ(CutArguments("  "), Arguments{});
    EXPECT_EQ(CutArguments(""), Arguments{});
    EXPECT_EQ(CutArguments("\"\" a"), (Arguments{"", "a"}));
    EXPECT_EQ(CutArguments("\"a b"), (Arguments{"a b"}));
    EXPECT_EQ(CutArguments("a\\ b 'c d'"), (Arguments{"a\\", "b", "'c", "d'"}));
}

TEST(NicenessOfPriority, MapsFourPriorities)
{
    int niceness = 99;
    EXPECT_TRUE(NicenessOfPriority(64, niceness));
    EXPECT_EQ(niceness, 19);
    EXPECT_TRUE(NicenessOfPriority(32, niceness));
    EXPECT_EQ(niceness, 0);
    EXPECT_TRUE(NicenessOfPriority(128, niceness));
    EXPECT_EQ(niceness, -5);
    EXPECT_TRUE(NicenessOfPriority(256, niceness));
    EXPECT_EQ(niceness, -10);
    EXPECT_FALSE(NicenessOfPriority(0, niceness));
}

TEST_F(PosixProcesses, ReturnTheirExitCode)
{
    EXPECT_EQ(ExitCode("/bin/true", ""), 0);
    EXPECT_EQ(ExitCode("/bin/false", ""), 1);
    EXPECT_EQ(ExitCode("/bin/sh", "-c \"exit 3\""), 3);
}

TEST_F(PosixProcesses, ReturnTheSignalThatKilledThem)
{
    EXPECT_EQ(ExitCode("/bin/sh", "-c \"kill -9 $$\""), 128 + 9);
}

TEST_F(PosixProcesses, FailToStartIfMissing)
{
    EXPECT_EQ(Start(folder_ + "/none", ""), nullptr);
    EXPECT_EQ(Start("", ""), nullptr);
    EXPECT_EQ(Start(folder_, ""), nullptr);
    EXPECT_FALSE(HasChildren());
}

TEST_F(PosixProcesses, FailToStartIfNotExecutable)
{
    EXPECT_EQ(Start(Script("plain.sh", "#!/bin/sh\nexit 0\n", false), ""), nullptr);
    EXPECT_EQ(Start(Script("empty", ""), ""), nullptr);
    EXPECT_EQ(Start(Script("bad.sh", "#!/no/such/shell\n"), ""), nullptr);
    EXPECT_FALSE(HasChildren());
}

TEST_F(PosixProcesses, AreFoundByLogicPaths)
{
    std::string backslashes = Script("tool.sh", "#!/bin/sh\nexit 7\n");
    for (char& c : backslashes)
        c = c == '/' ? '\\' : c;
    EXPECT_EQ(ExitCode(backslashes, ""), 7);
}

TEST_F(PosixProcesses, ReceiveDummyNameAndTheirArguments)
{
    const auto child = Start(
        "/bin/sh", "-c \"tr '\\0' '|' < /proc/$$/cmdline > " + folder_ + "/line; exit 0\" one \"two 2\"");
    ASSERT_NE(child, nullptr);
    while (!child->bWaitForEnd(1000)) {
    }
    const std::string line = Content("line");
    EXPECT_TRUE(line.starts_with("Dummy.exe|-c|")) << line;
    EXPECT_TRUE(line.ends_with("|one|two 2|")) << line;
}

TEST_F(PosixProcesses, RunAtNicenessOfTheirPriority)
{
    const auto child = Start("/bin/sh", "-c \"nice > " + folder_ + "/nice\"", 64);
    ASSERT_NE(child, nullptr);
    while (!child->bWaitForEnd(1000)) {
    }
    EXPECT_EQ(Content("nice"), "19\n");
}

TEST_F(PosixProcesses, StartEvenIfPriorityIsRefused)
{
    const auto child = Start("/bin/true", "", 256);
    ASSERT_NE(child, nullptr);
    while (!child->bWaitForEnd(1000)) {
    }
    EXPECT_EQ(child->lExitCode(), 0);
}

TEST_F(PosixProcesses, DoNotInheritIgnoredSignals)
{
    std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(ExitCode("/bin/sh", "-c \"kill -XFSZ $$; exit 0\""), 128 + SIGXFSZ);
    std::signal(SIGXFSZ, SIG_DFL);
}

TEST_F(PosixProcesses, ContinueAfterWaitTimesOut)
{
    // A program that reads standard input would end with the test; this one waits for a file to appear.
    const std::string waiting =
        Script("wait.sh", "#!/bin/sh\nwhile [ ! -e " + folder_ + "/go ]; do sleep 0.01; done\nexit 4\n");
    const auto child = Start(waiting, "");
    ASSERT_NE(child, nullptr);

    EXPECT_FALSE(child->bWaitForEnd(0));
    EXPECT_FALSE(child->bWaitForEnd(5));
    std::ofstream(folder_ + "/go") << "";
    while (!child->bWaitForEnd(1000)) {
    }

    EXPECT_EQ(child->lExitCode(), 4);
    EXPECT_TRUE(child->bWaitForEnd(0)) << "the child stays terminated";
}

TEST_F(PosixProcesses, UseNoCpuTimeWhileBeingWaitedFor)
{
    const auto child = Start("/bin/sleep", "0.3");
    ASSERT_NE(child, nullptr);
    const std::clock_t before = std::clock();
    while (!child->bWaitForEnd(20)) {
    }
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
}

TEST_F(PosixProcesses, RunToCompletionAndAreReapedByLaterStarts)
{
    const std::string late =
        Script("late.sh", "#!/bin/sh\nwhile [ ! -e " + folder_ + "/go ]; do sleep 0.01; done\ntouch " +
                              folder_ + "/done\n");
    Start(late, "").reset();
    std::ofstream(folder_ + "/go") << "";

    // Each start reaps finished children; the file proves that the program ran to completion.
    for (int l = 0; l < 2000 && HasChildren(); ++l)
        EXPECT_EQ(ExitCode("/bin/true", ""), 0);
    EXPECT_FALSE(HasChildren());

    EXPECT_TRUE(std::filesystem::exists(folder_ + "/done"));
}

TEST_F(PosixProcesses, AreReapedWithoutAnotherStart)
{
    Start(Script("soon.sh", "#!/bin/sh\nexit 0\n"), "").reset();

    siginfo_t info{};
    waitid(P_ALL, 0, &info, WEXITED | WNOWAIT);  // it has terminated, but isn't reaped yet
    launcher_.CollectEnded();

    EXPECT_FALSE(HasChildren());
}

namespace
{

/// Puts a fake xdg-open in PATH that writes its arguments to a file.
class DesktopOpener : public PosixProcesses
{
protected:
    void SetUp() override
    {
        PosixProcesses::SetUp();
        Script("xdg-open", "#!/bin/sh\nprintf '%s|' \"$#\" \"$1\" > " + folder_ + "/opened\nexit $CODE\n");
        former_path_ = getenv("PATH");
        setenv("PATH", (folder_ + ":" + former_path_).c_str(), 1);
        setenv("CODE", "0", 1);
    }
    void TearDown() override
    {
        setenv("PATH", former_path_.c_str(), 1);
        unsetenv("CODE");
        PosixProcesses::TearDown();
    }
    static std::int32_t End(const std::unique_ptr<ChildProcess>& opener)
    {
        while (!opener->bWaitForEnd(1000)) {
        }
        return opener->lExitCode();
    }

    std::string former_path_;
};

}  // namespace

TEST_F(DesktopOpener, ReceivesPathAsSingleArgument)
{
    const std::string file = Script("a \"b\" $c.txt", "", false);

    const auto opener = launcher_.pOpenPath(file);

    ASSERT_TRUE(opener);
    EXPECT_EQ(End(opener), 0);
    EXPECT_EQ(Content("opened"), "1|" + file + "|");
}

TEST_F(DesktopOpener, OpensFoldersAndMailAddresses)
{
    const auto folder = launcher_.pOpenPath(folder_);
    ASSERT_TRUE(folder);
    End(folder);
    EXPECT_EQ(Content("opened"), "1|" + folder_ + "|");

    const auto mail = launcher_.pOpenAddress("mailto:sales@example.org?subject=a%20b");
    ASSERT_TRUE(mail);
    End(mail);
    EXPECT_EQ(Content("opened"), "1|mailto:sales@example.org?subject=a%20b|");
}

TEST_F(DesktopOpener, IgnoresMissingPathsAndOptions)
{
    EXPECT_FALSE(launcher_.pOpenPath(folder_ + "/none.txt"));
    EXPECT_FALSE(launcher_.pOpenPath(""));
    EXPECT_FALSE(launcher_.pOpenAddress("--version"));
    EXPECT_EQ(Content("opened"), "");
}

TEST_F(DesktopOpener, ReportsFailureThroughExitCode)
{
    setenv("CODE", "4", 1);

    const auto opener = launcher_.pOpenAddress("https://example.org");

    ASSERT_TRUE(opener);
    EXPECT_EQ(End(opener), 4);
}

TEST_F(DesktopOpener, MayBeMissing)
{
    setenv("PATH", (folder_ + "/none").c_str(), 1);

    EXPECT_FALSE(launcher_.pOpenPath(folder_));
    EXPECT_FALSE(launcher_.pOpenAddress("https://example.org"));
}
