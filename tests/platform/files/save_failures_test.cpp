// Saves that fail at any of their steps, and systems that lack a facility.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <ostream>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "tests/platform/files/support/faulty_system.h"
#include "tests/platform/files/support/save_folder.h"

using Names = std::vector<std::string>;

static const std::string kOld(50, 'o');
static const std::string kNew(20, 'n');

static bool Save(const std::string& path, FileSaver& saver, const std::string& content = kNew)
{
    OutputFile out(path, saver);
    return out.WriteText(content) && out.Commit();
}

namespace
{

/// One call of a save that fails.
struct Failure {
    const char* call;
    int error;
    bool nameless;  ///< whether the file system has nameless files
    bool replaces;  ///< whether there is an old file

    friend std::ostream& operator<<(std::ostream& out, const Failure& failure)
    {
        return out << failure.call << (failure.nameless ? "Nameless" : "Named")
                   << (failure.replaces ? "Replaces" : "New");
    }
};

class FailingCall : public testing::TestWithParam<Failure>
{
};

}  // namespace

TEST_P(FailingCall, LeavesTheOldFileAndNothingElse)
{
    const Failure& failure = GetParam();
    const SaveFolder folder;
    if (failure.replaces)
        WriteContent(folder.Path("a"), kOld);
    FaultySystem system;
    system.nameless_files = failure.nameless;
    FileSaver saver(true, system);
    system.FailAt(failure.call, failure.error);
    {
        OutputFile out(folder.Path("a"), saver);
        (void)out.WriteText(kNew);

        EXPECT_FALSE(out.Commit());
        EXPECT_EQ(out.ErrorText(), std::generic_category().message(failure.error));
        EXPECT_FALSE(out.WriteText(kNew));
        EXPECT_FALSE(out.Commit());
    }

    EXPECT_EQ(system.Count(failure.call), 1u) << "the call was never made";
    EXPECT_EQ(ContentOf(folder.Path("a")), failure.replaces ? kOld : "(none)");
    EXPECT_EQ(folder.Names(), failure.replaces ? Names{"a"} : Names{});
    system.FailAt(failure.call, 0);
    EXPECT_TRUE(Save(folder.Path("a"), saver));
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(folder.Names(), Names{"a"});
}

INSTANTIATE_TEST_SUITE_P(
    Save, FailingCall,
    testing::Values(Failure{"create", ENOSPC, false, false}, Failure{"create", EDQUOT, false, true},
                    Failure{"write", ENOSPC, true, false}, Failure{"write", EDQUOT, true, true},
                    Failure{"write", ENOSPC, false, false}, Failure{"write", EIO, false, true},
                    Failure{"close", EDQUOT, true, false}, Failure{"close", ENOSPC, true, true},
                    Failure{"close", EDQUOT, false, false}, Failure{"close", ENOSPC, false, true},
                    Failure{"sync", EIO, true, true}, Failure{"sync", ENOSPC, false, true},
                    Failure{"link", ENOSPC, true, false}, Failure{"link", ENOSPC, true, true},
                    Failure{"chmod", EIO, true, true}, Failure{"rename", ENOSPC, true, true},
                    Failure{"rename", EACCES, false, false}, Failure{"rename", ENOSPC, false, true}),
    testing::PrintToStringParamName());

TEST(FullDisk, LeavesTheOldFile)
{
    const SaveFolder folder;
    FileSaver saver;
    WriteContent(folder.Path("a"), kOld);
    {
        const FullDisk disk(200000);
        OutputFile out(folder.Path("a"), saver);
        ASSERT_FALSE(out.Failed());
        EXPECT_TRUE(out.WriteText(std::string(150000, 'n')));
        EXPECT_FALSE(out.WriteText(std::string(150000, 'n')));
        EXPECT_TRUE(out.Failed());
        EXPECT_FALSE(out.WriteU8(1));
        EXPECT_FALSE(out.Seek(0));
        EXPECT_FALSE(out.Commit());
    }
    EXPECT_EQ(ContentOf(folder.Path("a")), kOld);
    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(FullDisk, IsNoticedInWhatIsStillGatheredAtTheEnd)
{
    const SaveFolder folder;
    FileSaver saver;
    {
        const FullDisk disk(100);
        OutputFile out(folder.Path("a"), saver);
        EXPECT_TRUE(out.WriteText(std::string(101, 'n')));
        EXPECT_FALSE(out.Commit());
    }
    EXPECT_TRUE(folder.Names().empty());
}

TEST(FullDisk, IsNoticedInTheMiddleOfPieces)
{
    const SaveFolder folder;
    FileSaver saver;
    {
        const FullDisk disk(500500);
        OutputFile out(folder.Path("a"), saver);
        for (int i = 0; i < 600; ++i)
            (void)out.WriteText(std::string(1000, 'n'));
        EXPECT_TRUE(out.Failed());
        EXPECT_FALSE(out.Commit());
    }
    EXPECT_TRUE(folder.Names().empty());
}

static bool MakeMountsPrivate()
{
    return unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// Not without root, in most containers, and in a chroot whose root is a plain folder.
static bool CanMountPrivately()
{
    return InChild(MakeMountsPrivate);
}

// Mounts are private to the child, which ends right after.
static bool InPrivateMounts(const std::function<bool()>& work)
{
    return InChild([&] { return MakeMountsPrivate() && work(); });
}

TEST(FullDisk, OfARealFileSystemLeavesTheOldFile)
{
    if (!CanMountPrivately())
        GTEST_SKIP() << "can't mount a small disk here";
    const SaveFolder folder;

    EXPECT_TRUE(InPrivateMounts([&] {
        if (mount("small", folder.Path().c_str(), "tmpfs", 0, "size=1m") != 0)
            return false;
        FileSaver saver;
        const std::string large(2 << 20, 'n');
        return Save(folder.Path("a"), saver, kOld) && !Save(folder.Path("a"), saver, large) &&
               !Save(folder.Path("b"), saver, large) && ContentOf(folder.Path("a")) == kOld &&
               folder.Names() == Names{"a"};
    }));
}

TEST(FileSystem, WithoutNamelessFilesIsWrittenToAllTheSame)
{
    const SaveFolder folder;
    FaultySystem system;
    system.nameless_files = false;
    FileSaver saver(true, system);

    for (int i = 0; i < 2; ++i)  // created, then replaced
        EXPECT_TRUE(Save(folder.Path("a"), saver));

    EXPECT_EQ(system.Count("link"), 0u);
    EXPECT_EQ(system.Count("rename"), 2u);
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(FileSystem, WithoutLocksIsWrittenToAllTheSame)
{
    const SaveFolder folder;
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        system.locks = false;
        FileSaver saver(true, system);
        for (int i = 0; i < 2; ++i)
            EXPECT_TRUE(Save(folder.Path("a"), saver));
    }
    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(FileSystem, WithoutModesAndOwnersIsWrittenToAllTheSame)
{
    const SaveFolder folder;
    FaultySystem system;
    FileSaver saver(true, system);
    system.FailAt("chmod", EPERM);
    system.FailAt("chown", EPERM);

    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(Save(folder.Path("a"), saver));

    EXPECT_EQ(system.Count("chmod"), 1u);
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
}

TEST(MissingProc, IsMadeUpForByNamedTemporaries)
{
    const SaveFolder folder;
    FaultySystem system;
    system.proc = false;
    FileSaver saver(true, system);

    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(Save(folder.Path("a"), saver));

    EXPECT_EQ(system.Count("create"), 2u);
    EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(MissingProc, ForRealIsNoObstacle)
{
    if (!CanMountPrivately())
        GTEST_SKIP() << "can't hide /proc here";
    const SaveFolder folder;

    EXPECT_TRUE(InPrivateMounts([&] {
        if (mount("empty", "/proc", "tmpfs", 0, nullptr) != 0 || std::filesystem::exists("/proc/self"))
            return false;
        FileSaver saver;
        return Save(folder.Path("a"), saver, kOld) && Save(folder.Path("a"), saver) && saver.SyncSaves();
    }));
    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_EQ(folder.Names(), Names{"a"});
}
