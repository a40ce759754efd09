// Programs of the host, started and waited for.
#include "src/platform/posix/posix_processes.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "src/platform/posix/posix_file_system.h"

namespace
{

using Arguments = std::vector<std::string>;

class PosixProcesses : public testing::Test
{
protected:
    void SetUp() override
    {
        sFolder = testing::TempDir() + "varnel_processes_" + std::to_string(getpid());
        std::filesystem::create_directories(sFolder);
    }
    void TearDown() override { std::filesystem::remove_all(sFolder); }

    std::unique_ptr<ChildProcess> pStart(const std::string& sProgram, const std::string& sArguments,
                                         std::int32_t lPriority = 32)
    {
        return objLauncher.pStart({sProgram, sArguments, lPriority, 1});
    }
    /// The exit code of a program that ends by itself.
    std::int32_t lExitCode(const std::string& sProgram, const std::string& sArguments)
    {
        const auto pChild = pStart(sProgram, sArguments);
        if (!pChild)
            return -10;
        while (!pChild->bWaitForEnd(1000)) {
        }
        return pChild->lExitCode();
    }
    std::string sScript(const std::string& sName, const std::string& sText, bool bExecutable = true)
    {
        const std::string sPath = sFolder + "/" + sName;
        std::ofstream(sPath) << sText;
        chmod(sPath.c_str(), bExecutable ? 0755 : 0644);
        return sPath;
    }
    std::string sContent(const std::string& sName) const
    {
        std::stringstream objText;
        objText << std::ifstream(sFolder + "/" + sName).rdbuf();
        return objText.str();
    }

    std::string sFolder;
    PosixFileSystem objFiles;
    PosixProcessLauncher objLauncher{objFiles};
};

/// Whether this process has a child, running or dead, that nobody has collected.
bool bHasChildren()
{
    siginfo_t objInfo{};
    return waitid(P_ALL, 0, &objInfo, WEXITED | WNOHANG | WNOWAIT) == 0;
}

}  // namespace

TEST(CutArguments, CutsAtBlanksAndKeepsTogetherWhatIsQuoted)
{
    EXPECT_EQ(aCutArguments("a  b \"c d\" e\"f g\"h"), (Arguments{"a", "b", "c d", "ef gh"}));
    EXPECT_EQ(aCutArguments("  "), Arguments{});
    EXPECT_EQ(aCutArguments(""), Arguments{});
    EXPECT_EQ(aCutArguments("\"\" a"), (Arguments{"", "a"}));
    EXPECT_EQ(aCutArguments("\"a b"), (Arguments{"a b"}));
    EXPECT_EQ(aCutArguments("a\\ b 'c d'"), (Arguments{"a\\", "b", "'c", "d'"}));
}

TEST(NicenessOfPriority, KnowsTheFourPriorities)
{
    int nNiceness = 99;
    EXPECT_TRUE(bNicenessOfPriority(64, nNiceness));
    EXPECT_EQ(nNiceness, 19);
    EXPECT_TRUE(bNicenessOfPriority(32, nNiceness));
    EXPECT_EQ(nNiceness, 0);
    EXPECT_TRUE(bNicenessOfPriority(128, nNiceness));
    EXPECT_EQ(nNiceness, -5);
    EXPECT_TRUE(bNicenessOfPriority(256, nNiceness));
    EXPECT_EQ(nNiceness, -10);
    EXPECT_FALSE(bNicenessOfPriority(0, nNiceness));
}

TEST_F(PosixProcesses, GiveTheirExitCode)
{
    EXPECT_EQ(lExitCode("/bin/true", ""), 0);
    EXPECT_EQ(lExitCode("/bin/false", ""), 1);
    EXPECT_EQ(lExitCode("/bin/sh", "-c \"exit 3\""), 3);
}

TEST_F(PosixProcesses, GiveTheSignalThatEndedThem)
{
    EXPECT_EQ(lExitCode("/bin/sh", "-c \"kill -9 $$\""), 128 + 9);
}

TEST_F(PosixProcesses, CantBeStartedWhenTheyArentThere)
{
    EXPECT_EQ(pStart(sFolder + "/none", ""), nullptr);
    EXPECT_EQ(pStart("", ""), nullptr);
    EXPECT_EQ(pStart(sFolder, ""), nullptr);
    EXPECT_FALSE(bHasChildren());
}

TEST_F(PosixProcesses, CantBeStartedWhenTheyArentPrograms)
{
    EXPECT_EQ(pStart(sScript("plain.sh", "#!/bin/sh\nexit 0\n", false), ""), nullptr);
    EXPECT_EQ(pStart(sScript("empty", ""), ""), nullptr);
    EXPECT_EQ(pStart(sScript("bad.sh", "#!/no/such/shell\n"), ""), nullptr);
    EXPECT_FALSE(bHasChildren());
}

TEST_F(PosixProcesses, AreFoundByThePathsOfTheLogic)
{
    std::string sBackslashes = sScript("tool.sh", "#!/bin/sh\nexit 7\n");
    for (char& c : sBackslashes)
        c = c == '/' ? '\\' : c;
    EXPECT_EQ(lExitCode(sBackslashes, ""), 7);
}

TEST_F(PosixProcesses, SeeTheNameDummyAndThenTheirArguments)
{
    const auto pChild = pStart(
        "/bin/sh", "-c \"tr '\\0' '|' < /proc/$$/cmdline > " + sFolder + "/line; exit 0\" one \"two 2\"");
    ASSERT_NE(pChild, nullptr);
    while (!pChild->bWaitForEnd(1000)) {
    }
    const std::string sLine = sContent("line");
    EXPECT_TRUE(sLine.starts_with("Dummy.exe|-c|")) << sLine;
    EXPECT_TRUE(sLine.ends_with("|one|two 2|")) << sLine;
}

TEST_F(PosixProcesses, RunAtTheNicenessOfTheirPriority)
{
    const auto pChild = pStart("/bin/sh", "-c \"nice > " + sFolder + "/nice\"", 64);
    ASSERT_NE(pChild, nullptr);
    while (!pChild->bWaitForEnd(1000)) {
    }
    EXPECT_EQ(sContent("nice"), "19\n");
}

TEST_F(PosixProcesses, StartThoughTheirPriorityMayBeRefused)
{
    const auto pChild = pStart("/bin/true", "", 256);
    ASSERT_NE(pChild, nullptr);
    while (!pChild->bWaitForEnd(1000)) {
    }
    EXPECT_EQ(pChild->lExitCode(), 0);
}

TEST_F(PosixProcesses, DontInheritTheSignalsThatThisProcessIgnores)
{
    std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(lExitCode("/bin/sh", "-c \"kill -XFSZ $$; exit 0\""), 128 + SIGXFSZ);
    std::signal(SIGXFSZ, SIG_DFL);
}

TEST_F(PosixProcesses, AreWaitedForNoLongerThanAllowedAndRunOn)
{
    // A program that ends when its standard input does would end with the test; this one waits for a file to
    // come.
    const std::string sWaiting =
        sScript("wait.sh", "#!/bin/sh\nwhile [ ! -e " + sFolder + "/go ]; do sleep 0.01; done\nexit 4\n");
    const auto pChild = pStart(sWaiting, "");
    ASSERT_NE(pChild, nullptr);

    EXPECT_FALSE(pChild->bWaitForEnd(0));
    EXPECT_FALSE(pChild->bWaitForEnd(5));
    std::ofstream(sFolder + "/go") << "";
    while (!pChild->bWaitForEnd(1000)) {
    }

    EXPECT_EQ(pChild->lExitCode(), 4);
    EXPECT_TRUE(pChild->bWaitForEnd(0)) << "an end stays one";
}

TEST_F(PosixProcesses, CostNoProcessorTimeWhileTheyAreWaitedFor)
{
    const auto pChild = pStart("/bin/sleep", "0.3");
    ASSERT_NE(pChild, nullptr);
    const std::clock_t nBefore = std::clock();
    while (!pChild->bWaitForEnd(20)) {
    }
    EXPECT_LT(std::clock() - nBefore, CLOCKS_PER_SEC / 10);
}

TEST_F(PosixProcesses, AreNeverEndedAndCollectedAfterTheirEnd)
{
    const std::string sLate =
        sScript("late.sh", "#!/bin/sh\nwhile [ ! -e " + sFolder + "/go ]; do sleep 0.01; done\ntouch " +
                               sFolder + "/done\n");
    pStart(sLate, "").reset();
    std::ofstream(sFolder + "/go") << "";

    // Each start collects what has ended since; the file shows that the program went on to its end.
    for (int l = 0; l < 2000 && bHasChildren(); ++l)
        EXPECT_EQ(lExitCode("/bin/true", ""), 0);
    EXPECT_FALSE(bHasChildren());

    EXPECT_TRUE(std::filesystem::exists(sFolder + "/done"));
}

TEST_F(PosixProcesses, AreCollectedWithoutAnotherStart)
{
    pStart(sScript("soon.sh", "#!/bin/sh\nexit 0\n"), "").reset();

    siginfo_t objInfo{};
    waitid(P_ALL, 0, &objInfo, WEXITED | WNOWAIT);  // it has ended, and nobody has collected it
    objLauncher.CollectEnded();

    EXPECT_FALSE(bHasChildren());
}
