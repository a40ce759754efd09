// Temporaries of killed processes, which the next save sweeps, and files that it must not touch.
#include "src/platform/files/temporaries.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <memory>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "tests/platform/files/support/faulty_system.h"
#include "tests/platform/files/support/save_folder.h"

using Names = std::vector<std::string>;

static const std::string kOld(50, 'o');
static const std::string kNew(20, 'n');

static bool Save(const std::string& path, FileSaver& saver)
{
    OutputFile out(path, saver);
    return out.WriteText(kNew) && out.Commit();
}

// Lets a process that saves `count` files at a time, with a named temporary each, kill itself.
static void LeaveTemporaries(const SaveFolder& folder, int count)
{
    const pid_t child = fork();
    if (child == 0) {
        FaultySystem system;
        system.nameless_files = false;
        FileSaver saver(true, system);
        std::vector<std::unique_ptr<OutputFile>> files;
        for (int i = 0; i < count; ++i) {
            files.push_back(std::make_unique<OutputFile>(folder.Path(std::to_string(i)), saver));
            (void)files.back()->WriteText(std::string(300000, 'x'));
        }
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_EQ(folder.Names().size(), static_cast<std::size_t>(count));
}

// Kills a process just as it is about to do `call`, while it replaces the file "a".
static void KillAt(const SaveFolder& folder, const std::string& call)
{
    WriteContent(folder.Path("a"), kOld);
    const pid_t child = fork();
    if (child == 0) {
        FaultySystem system;
        system.before = [&](const std::string& made) {
            if (made == call)
                kill(getpid(), SIGKILL);
        };
        FileSaver saver(true, system);
        _exit(Save(folder.Path("a"), saver) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << call << " was never made";
}

TEST(Temporaries, HaveHiddenNamesWithAChecksum)
{
    EXPECT_EQ(TemporaryName(1000, 0), TemporaryName(1000, 0));
    EXPECT_NE(TemporaryName(1000, 0), TemporaryName(1000, 1));
    EXPECT_NE(TemporaryName(1000, 0), TemporaryName(1001, 0));
    const std::string name = TemporaryName(1000, 7);
    EXPECT_TRUE(name.starts_with(".varnel-1000-7-")) << name;
    EXPECT_TRUE(name.ends_with(".tmp")) << name;
    EXPECT_EQ(name.size(), std::string(".varnel-1000-7-0123456789abcdef.tmp").size()) << name;
}

TEST(Temporaries, OfAKilledProcessAreSweptByTheNextSave)
{
    for (const int count : {1, 3, 40}) {
        const SaveFolder folder;
        LeaveTemporaries(folder, count);
        FileSaver saver;

        EXPECT_TRUE(Save(folder.Path("a"), saver));

        EXPECT_EQ(folder.Names(), Names{"a"}) << count;
    }
}

TEST(Temporaries, AreSweptAlsoIfSomeOfThemAreGone)
{
    const SaveFolder folder;
    LeaveTemporaries(folder, 12);
    for (unsigned slot = 0; slot < 11; ++slot)
        std::filesystem::remove(folder.Path(TemporaryName(geteuid(), slot)));
    FileSaver saver;

    EXPECT_TRUE(Save(folder.Path("a"), saver));

    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(Temporaries, OfAProcessKilledWhileItReplacedAFileAreSwept)
{
    for (const std::string call : {"write", "sync", "link", "rename"}) {
        const SaveFolder folder;
        KillAt(folder, call);
        EXPECT_EQ(ContentOf(folder.Path("a")), kOld) << call;
        EXPECT_EQ(folder.Names().size(), call == "rename" ? 2u : 1u) << call;
        FileSaver saver;

        EXPECT_TRUE(Save(folder.Path("b"), saver));

        EXPECT_EQ(folder.Names(), (Names{"a", "b"})) << call;
    }
}

TEST(Temporaries, OfALiveProcessAreLeftAlone)
{
    const SaveFolder folder;
    FaultySystem system;
    system.nameless_files = false;
    FileSaver saver(true, system);
    OutputFile out(folder.Path("a"), saver);
    EXPECT_TRUE(out.WriteText(kNew));

    EXPECT_TRUE(InChild([&] {
        FaultySystem others_system;
        others_system.nameless_files = false;
        FileSaver other(true, others_system);
        return Save(folder.Path("b"), other) && Save(folder.Path("b"), other);
    }));

    EXPECT_EQ(folder.Names().size(), 2u);
    EXPECT_TRUE(out.Commit());
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(folder.Names(), (Names{"a", "b"}));
}

TEST(Temporaries, AreSweptOncePerFolderAndRun)
{
    const SaveFolder folder;
    FileSaver saver;
    EXPECT_TRUE(Save(folder.Path("a"), saver));
    WriteContent(folder.Path(TemporaryName(geteuid(), 3)), kOld);

    EXPECT_TRUE(Save(folder.Path("b"), saver));
    EXPECT_EQ(folder.Names().size(), 3u);

    FileSaver next;
    EXPECT_TRUE(Save(folder.Path("b"), next));
    EXPECT_EQ(folder.Names(), (Names{"a", "b"}));
}

TEST(Temporaries, AreNeverTakenForAUsersFile)
{
    const SaveFolder folder;
    const std::string user = std::to_string(geteuid());
    const Names names = {".varnel",
                         ".varnel-" + user + "-0-0123456789abcdef.tmp",
                         ".varnel-" + user + "-0.tmp",
                         ".varnel-00112233aabbccdd.tmp",
                         TemporaryName(geteuid() + 1, 0),
                         "a.tif.TIF",
                         "picture.tmp"};
    for (const std::string& name : names)
        WriteContent(folder.Path(name), kOld);
    FaultySystem system;
    system.nameless_files = false;
    FileSaver saver(true, system);

    EXPECT_TRUE(Save(folder.Path("a"), saver));

    EXPECT_EQ(folder.Names().size(), names.size() + 1);
    for (const std::string& name : names)
        EXPECT_EQ(ContentOf(folder.Path(name)), kOld) << name;
}

TEST(Temporaries, GetOutOfTheWayOfWhateverHasTheirName)
{
    const SaveFolder folder;
    WriteContent(folder.Path("precious"), kOld);
    const auto name = [](unsigned slot) { return TemporaryName(geteuid(), slot); };
    ASSERT_EQ(symlink("precious", folder.Path(name(0)).c_str()), 0);
    ASSERT_EQ(mkfifo(folder.Path(name(1)).c_str(), 0666), 0);
    std::filesystem::create_directory(folder.Path(name(2)));
    WriteContent(folder.Path("a"), kOld);
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);

        EXPECT_TRUE(Save(folder.Path("a"), saver));
    }

    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(ContentOf(folder.Path("precious")), kOld);
    EXPECT_EQ(folder.Names().size(), 5u);
}

TEST(Temporaries, FindAFreeNameEvenIfAllInOrderAreTaken)
{
    const SaveFolder folder;
    for (unsigned slot = 0; slot < 300; ++slot)
        std::filesystem::create_directory(folder.Path(TemporaryName(geteuid(), slot)));
    FaultySystem system;
    system.nameless_files = false;
    FileSaver saver(true, system);

    EXPECT_TRUE(Save(folder.Path("a"), saver));

    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(folder.Names().size(), 301u);
}

TEST(Temporaries, OfManyProcessesInOneFolderNeverMeet)
{
    const SaveFolder folder;
    std::vector<pid_t> children;
    for (int process = 0; process < 8; ++process) {
        children.push_back(fork());
        if (children.back() != 0)
            continue;
        bool all = true;
        for (int i = 0; i < 100; ++i) {
            FaultySystem system;
            system.nameless_files = i % 2 == 0;
            FileSaver saver(false, system);
            all = Save(folder.Path(std::to_string(process)), saver) && Save(folder.Path("shared"), saver) &&
                  all;
        }
        _exit(all ? 0 : 1);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }

    EXPECT_EQ(folder.Names(), (Names{"0", "1", "2", "3", "4", "5", "6", "7", "shared"}));
    for (const std::string& name : folder.Names())
        EXPECT_EQ(ContentOf(folder.Path(name)), kNew) << name;
}
