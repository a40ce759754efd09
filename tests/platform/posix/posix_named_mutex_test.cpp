// Tests of locks between processes.
#include "src/platform/posix/posix_named_mutex.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/platform/posix/support/host_folder.h"

static constexpr const char* kName = "Stellor_Global_Mutex";
static constexpr const char* kFile = "varnel-Stellor_Global_Mutex.lock";

// True if a process holds the lock on this file.
static bool IsLocked(const std::string& path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return file && flock(file.Number(), LOCK_EX | LOCK_NB) != 0;
}

namespace
{
/// A folder to which only this user may write.
struct PrivateFolder : HostFolder {
    PrivateFolder() { chmod(Path().c_str(), 0755); }
};
}  // namespace

TEST(NamedMutex, HoldsFileLockUntilLastRelease)
{
    const PrivateFolder folder;
    PosixNamedMutex mutex({folder.Path()});
    mutex.Acquire(kName);
    mutex.Acquire(kName);
    EXPECT_TRUE(IsLocked(folder.File(kFile)));

    mutex.Release(kName);
    EXPECT_TRUE(IsLocked(folder.File(kFile)));
    mutex.Release(kName);
    EXPECT_FALSE(IsLocked(folder.File(kFile)));
    mutex.Release(kName);

    mutex.Acquire(kName);
    EXPECT_TRUE(IsLocked(folder.File(kFile)));
}

TEST(NamedMutex, WaitsForAnotherProcess)
{
    const PrivateFolder folder;
    const std::string log_path = folder.File("log", "");
    constexpr int kProcesses = 4;
    for (int process = 0; process < kProcesses; ++process) {
        if (fork() == 0) {
            PosixNamedMutex mutex({folder.Path()});
            const Descriptor log(open(log_path.c_str(), O_WRONLY | O_APPEND));
            for (int n = 0; n < 200; ++n) {
                mutex.Acquire(kName);
                for (const char* letter : {"(", "x", ")"})
                    (void)!write(log.Number(), letter, 1);
                mutex.Release(kName);
            }
            _exit(0);
        }
    }
    for (int status = 0; wait(&status) > 0;)
        EXPECT_EQ(status, 0);

    std::string expected;
    for (int n = 0; n < kProcesses * 200; ++n)
        expected += "(x)";
    EXPECT_EQ(ContentOf(log_path), expected);
}

TEST(NamedMutex, IsReleasedWhenOwnerDies)
{
    const PrivateFolder folder;
    int pipe_ends[2];
    ASSERT_EQ(pipe(pipe_ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        PosixNamedMutex mutex({folder.Path()});
        mutex.Acquire(kName);
        (void)!write(pipe_ends[1], "x", 1);
        pause();
        _exit(0);
    }
    char ready = 0;
    ASSERT_EQ(read(pipe_ends[0], &ready, 1), 1);
    EXPECT_TRUE(IsLocked(folder.File(kFile)));

    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);

    PosixNamedMutex mutex({folder.Path()});
    mutex.Acquire(kName);
    EXPECT_TRUE(IsLocked(folder.File(kFile)));
    close(pipe_ends[0]);
    close(pipe_ends[1]);
}

TEST(NamedMutex, RejectsLinksAndForeignFilesInItsPlace)
{
    const PrivateFolder first, second;
    const std::string victim = first.File("victim", "precious");
    chmod(victim.c_str(), 0600);
    PosixNamedMutex mutex({first.Path(), second.Path()});

    std::filesystem::create_symlink(victim, first.File(kFile));
    mutex.Acquire(kName);
    EXPECT_FALSE(IsLocked(victim));
    EXPECT_TRUE(IsLocked(second.File(kFile)));
    mutex.Release(kName);

    std::filesystem::remove(first.File(kFile));
    std::filesystem::create_symlink(first.File("not there"), first.File(kFile));
    mutex.Acquire(kName);
    EXPECT_TRUE(IsLocked(second.File(kFile)));
    mutex.Release(kName);

    std::filesystem::remove(first.File(kFile));
    ASSERT_EQ(mkfifo(first.File(kFile).c_str(), 0666), 0);
    mutex.Acquire(kName);
    EXPECT_TRUE(IsLocked(second.File(kFile)));
    mutex.Release(kName);

    EXPECT_EQ(ContentOf(victim), "precious");
    struct stat status {
    };
    stat(victim.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_FALSE(std::filesystem::exists(first.File("not there")));
}

TEST(NamedMutex, UsesNoFolderThatOthersCanWriteTo)
{
    const HostFolder open_folder;
    const PrivateFolder own;
    for (const mode_t mode : {01777, 0777, 0775}) {
        chmod(open_folder.Path().c_str(), mode);
        PosixNamedMutex mutex({open_folder.Path(), own.Path()});

        mutex.Acquire(kName);

        EXPECT_TRUE(IsLocked(own.File(kFile)));
        EXPECT_EQ(open_folder.Listing(), "");
    }
}

TEST(NamedMutex, UsesNoFolderOfAnotherUser)
{
    const PrivateFolder folder, links;
    std::filesystem::create_symlink(folder.Path(), links.File("link"));
    PosixNamedMutex mutex({links.File("link")});
    mutex.Acquire(kName);
    EXPECT_EQ(folder.Listing(), "");

    EXPECT_TRUE(RunAsOrdinaryUser([&] {
        PosixNamedMutex other({folder.Path()});
        other.Acquire(kName);
        return folder.Listing().empty();
    }));
}

TEST(NamedMutex, CannotBeStalledByAnotherUser)
{
    const PrivateFolder folder;
    PosixNamedMutex mutex({folder.Path()});
    mutex.Acquire(kName);
    mutex.Release(kName);

    EXPECT_TRUE(RunAsOrdinaryUser([&] { return open(folder.File(kFile).c_str(), O_RDONLY) < 0; }));
}

TEST(NamedMutex, PrefersTheRuntimeFolder)
{
    const HostFolder runtime;
    chmod(runtime.Path().c_str(), 0700);
    setenv("XDG_RUNTIME_DIR", runtime.Path().c_str(), 1);
    EXPECT_EQ(PosixNamedMutex::LockFolders(), std::vector<std::string>{runtime.Path()});

    chmod(runtime.Path().c_str(), 0777);
    EXPECT_NE(PosixNamedMutex::LockFolders(), std::vector<std::string>{runtime.Path()});
    unsetenv("XDG_RUNTIME_DIR");
}

TEST(NamedMutex, UsesNewFileIfOldOneIsRemoved)
{
    const PrivateFolder folder;
    PosixNamedMutex mutex({folder.Path()});
    mutex.Acquire(kName);
    std::filesystem::remove(folder.File(kFile));
    mutex.Release(kName);

    mutex.Acquire(kName);
    EXPECT_TRUE(IsLocked(folder.File(kFile)));
}

TEST(NamedMutex, ContinuesWithoutLockIfFolderIsMissing)
{
    PosixNamedMutex mutex({"/nowhere", "/dev/null"});
    mutex.Acquire("../any/name");
    mutex.Release("../any/name");

    PosixNamedMutex no_place(std::vector<std::string>{});
    no_place.Acquire(kName);
    no_place.Release(kName);
    SUCCEED();
}

TEST(NamedMutex, KeepsFileInItsFolderWhateverTheName)
{
    const PrivateFolder folder;
    PosixNamedMutex mutex({folder.Subfolder("locks")});
    mutex.Acquire("../" + std::string(500, 'x'));

    EXPECT_EQ(folder.Listing(), "locks");
    mutex.Release("../" + std::string(500, 'x'));
}
