// Locks between processes.
#include "src/platform/posix/posix_named_mutex.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/platform/posix/support/host_folder.h"

static constexpr const char* kName = "Stellor_Global_Mutex";
static constexpr const char* kFile = "varnel-Stellor_Global_Mutex.lock";

// True when somebody holds the lock of this file.
static bool bIsLocked(const std::string& sPath)
{
    const Descriptor objFile(open(sPath.c_str(), O_RDONLY | O_CLOEXEC));
    return flock(objFile.nNumber(), LOCK_EX | LOCK_NB) != 0;
}

TEST(NamedMutex, LocksAFileUntilTheLastRelease)
{
    const HostFolder objFolder;
    PosixNamedMutex objMutex({objFolder.sPath()});
    objMutex.Acquire(kName);
    objMutex.Acquire(kName);
    EXPECT_TRUE(bIsLocked(objFolder.sFile(kFile)));

    objMutex.Release(kName);
    EXPECT_TRUE(bIsLocked(objFolder.sFile(kFile)));
    objMutex.Release(kName);
    EXPECT_FALSE(bIsLocked(objFolder.sFile(kFile)));
    objMutex.Release(kName);

    objMutex.Acquire(kName);
    EXPECT_TRUE(bIsLocked(objFolder.sFile(kFile)));
}

TEST(NamedMutex, WaitsForAnotherProcess)
{
    const HostFolder objFolder;
    const std::string sLog = objFolder.sFile("log", "");
    constexpr int kProcesses = 4;
    for (int nProcess = 0; nProcess < kProcesses; ++nProcess) {
        if (fork() == 0) {
            PosixNamedMutex objMutex({objFolder.sPath()});
            const Descriptor objLog(open(sLog.c_str(), O_WRONLY | O_APPEND));
            for (int n = 0; n < 200; ++n) {
                objMutex.Acquire(kName);
                for (const char* sLetter : {"(", "x", ")"})
                    (void)!write(objLog.nNumber(), sLetter, 1);
                objMutex.Release(kName);
            }
            _exit(0);
        }
    }
    for (int nStatus = 0; wait(&nStatus) > 0;)
        EXPECT_EQ(nStatus, 0);

    std::string sExpected;
    for (int n = 0; n < kProcesses * 200; ++n)
        sExpected += "(x)";
    EXPECT_EQ(sContentOf(sLog), sExpected);
}

TEST(NamedMutex, IsFreeWhenItsOwnerDies)
{
    const HostFolder objFolder;
    int aPipe[2];
    ASSERT_EQ(pipe(aPipe), 0);
    const pid_t nChild = fork();
    if (nChild == 0) {
        PosixNamedMutex objMutex({objFolder.sPath()});
        objMutex.Acquire(kName);
        (void)!write(aPipe[1], "x", 1);
        pause();
        _exit(0);
    }
    char cReady = 0;
    ASSERT_EQ(read(aPipe[0], &cReady, 1), 1);
    EXPECT_TRUE(bIsLocked(objFolder.sFile(kFile)));

    kill(nChild, SIGKILL);
    waitpid(nChild, nullptr, 0);

    PosixNamedMutex objMutex({objFolder.sPath()});
    objMutex.Acquire(kName);
    EXPECT_TRUE(bIsLocked(objFolder.sFile(kFile)));
    close(aPipe[0]);
    close(aPipe[1]);
}

TEST(NamedMutex, IsNotFooledByALinkNorAnythingElseInItsPlace)
{
    const HostFolder objFirst, objSecond;
    const std::string sVictim = objFirst.sFile("victim", "precious");
    chmod(sVictim.c_str(), 0600);
    PosixNamedMutex objMutex({objFirst.sPath(), objSecond.sPath()});

    std::filesystem::create_symlink(sVictim, objFirst.sFile(kFile));
    objMutex.Acquire(kName);
    EXPECT_FALSE(bIsLocked(sVictim));
    EXPECT_TRUE(bIsLocked(objSecond.sFile(kFile)));
    objMutex.Release(kName);

    std::filesystem::remove(objFirst.sFile(kFile));
    std::filesystem::create_symlink(objFirst.sFile("not there"), objFirst.sFile(kFile));
    objMutex.Acquire(kName);
    EXPECT_TRUE(bIsLocked(objSecond.sFile(kFile)));
    objMutex.Release(kName);

    std::filesystem::remove(objFirst.sFile(kFile));
    ASSERT_EQ(mkfifo(objFirst.sFile(kFile).c_str(), 0666), 0);
    objMutex.Acquire(kName);
    EXPECT_TRUE(bIsLocked(objSecond.sFile(kFile)));
    objMutex.Release(kName);

    EXPECT_EQ(sContentOf(sVictim), "precious");
    struct stat objStat {
    };
    stat(sVictim.c_str(), &objStat);
    EXPECT_EQ(objStat.st_mode & 0777, 0600u);
    EXPECT_FALSE(std::filesystem::exists(objFirst.sFile("not there")));
}

TEST(NamedMutex, IsSharedByTheUsersOfTheMachine)
{
    const HostFolder objFolder;
    chmod(objFolder.sPath().c_str(), 01777);
    PosixNamedMutex objMutex({objFolder.sPath()});
    const mode_t nMask = umask(077);
    objMutex.Acquire(kName);
    objMutex.Release(kName);
    umask(nMask);

    EXPECT_TRUE(bAsOrdinaryUser([&] {
        PosixNamedMutex objOther({objFolder.sPath()});
        objOther.Acquire(kName);
        return bIsLocked(objFolder.sFile(kFile));
    }));
    EXPECT_EQ(objFolder.sListing(), kFile);
}

TEST(NamedMutex, MeetsAtANewFileWhenTheOldOneWasRemoved)
{
    const HostFolder objFolder;
    PosixNamedMutex objMutex({objFolder.sPath()});
    objMutex.Acquire(kName);
    std::filesystem::remove(objFolder.sFile(kFile));
    objMutex.Release(kName);

    objMutex.Acquire(kName);
    EXPECT_TRUE(bIsLocked(objFolder.sFile(kFile)));
}

TEST(NamedMutex, GoesOnWithoutALockWhereThereIsNoPlaceForOne)
{
    PosixNamedMutex objMutex({"/nowhere", "/dev/null"});
    objMutex.Acquire("../any/name");
    objMutex.Release("../any/name");

    PosixNamedMutex objNoPlace(std::vector<std::string>{});
    objNoPlace.Acquire(kName);
    objNoPlace.Release(kName);
    SUCCEED();
}

TEST(NamedMutex, KeepsItsFileInItsFolderWhateverTheName)
{
    const HostFolder objFolder;
    PosixNamedMutex objMutex({objFolder.sSubfolder("locks")});
    objMutex.Acquire("../" + std::string(500, 'x'));

    EXPECT_EQ(objFolder.sListing(), "locks");
    objMutex.Release("../" + std::string(500, 'x'));
}
