// When saves are synced, and in which order.
#include "src/platform/files/sync_queue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <tuple>

#include "src/platform/files/file_saver.h"
#include "src/platform/files/output_file.h"
#include "tests/platform/files/support/faulty_system.h"
#include "tests/platform/files/support/save_folder.h"

using Calls = std::vector<std::string>;

static const std::string kOld(50, 'o');
static const std::string kNew(20, 'n');

static bool Save(const std::string& path, FileSaver& saver, std::size_t size = 20)
{
    OutputFile out(path, saver);
    return out.WriteText(std::string(size, 'n')) && out.Commit();
}

static std::ptrdiff_t OpenDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(SaveThatReplaces, SyncsDataThenRenamesThenSyncsTheFolder)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);

        EXPECT_TRUE(Save(folder.Path("a"), saver));

        EXPECT_EQ(system.Made(),
                  nameless ? (Calls{"write", "close", "chmod", "sync", "link", "rename", "sync folder"})
                           : (Calls{"create", "write", "close", "chmod", "sync", "rename", "sync folder"}));
        EXPECT_TRUE(saver.SyncSaves());
        EXPECT_EQ(system.Count("sync") + system.Count("sync folder"), 2u) << "nothing is left to sync";
    }
}

TEST(SaveOfANewFile, IsSyncedWithTheOthersAtTheEnd)
{
    const SaveFolder folder;
    for (const bool nameless : {true, false}) {
        FaultySystem system;
        system.nameless_files = nameless;
        FileSaver saver(true, system);
        const std::string name = nameless ? "a" : "b";

        EXPECT_TRUE(Save(folder.Path(name), saver));
        EXPECT_TRUE(Save(folder.Path(name + "2"), saver));
        EXPECT_EQ(system.Count("sync") + system.Count("sync folder") + system.Count("syncfs"), 0u);

        EXPECT_TRUE(saver.SyncSaves());
        EXPECT_EQ(system.Count("sync"), 2u);
        EXPECT_EQ(system.Count("sync folder"), 1u);
        EXPECT_EQ(system.Made().back(), "sync folder") << "data first";
        EXPECT_TRUE(saver.SyncSaves());
        EXPECT_EQ(system.Count("sync"), 2u);
    }
}

TEST(SaveOfANewFile, IsSyncedAtTheEndOfTheProgramAtTheLatest)
{
    const SaveFolder folder;
    FaultySystem system;
    {
        FileSaver saver(true, system);
        EXPECT_TRUE(Save(folder.Path("a"), saver));
    }
    EXPECT_EQ(system.Count("sync"), 1u);
    EXPECT_EQ(system.Count("sync folder"), 1u);
}

TEST(SaveWithoutSync, LeavesAllOfItToTheSystem)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    FaultySystem system;
    {
        FileSaver saver(false, system);
        for (const std::string name : {"a", "b", "c"})
            EXPECT_TRUE(Save(folder.Path(name), saver, 20 << 20));
        EXPECT_TRUE(saver.SyncSaves());
    }
    EXPECT_EQ(system.Count("sync") + system.Count("sync folder") + system.Count("syncfs"), 0u);
    EXPECT_EQ(system.Count("rename"), 1u);
}

TEST(SaveWithoutSync, IsAskedForInTheEnvironment)
{
    unsetenv("VARNEL_SYNC");
    EXPECT_TRUE(IsSyncWanted());
    setenv("VARNEL_SYNC", "0", 1);
    EXPECT_FALSE(IsSyncWanted());
    setenv("VARNEL_SYNC", "1", 1);
    EXPECT_TRUE(IsSyncWanted());
    unsetenv("VARNEL_SYNC");
}

TEST(SyncQueue, SyncsEachFolderOnceIfFilesOfOneFollowEachOther)
{
    const SaveFolder folder;
    FaultySystem system;
    FileSaver saver(true, system);
    for (const std::string name : {"x", "y"})
        std::filesystem::create_directory(folder.Path(name));
    for (const std::string name : {"x/1", "x/2", "y/1", "y/2"})
        EXPECT_TRUE(Save(folder.Path(name), saver));

    EXPECT_TRUE(saver.SyncSaves());

    EXPECT_EQ(system.Count("sync"), 4u);
    EXPECT_EQ(system.Count("sync folder"), 2u);
}

TEST(SyncQueue, SkipsFilesThatWereDeletedAgain)
{
    const SaveFolder folder;
    FaultySystem system;
    FileSaver saver(true, system);
    for (const std::string name : {"a", "b", "c"})
        EXPECT_TRUE(Save(folder.Path(name), saver));
    std::filesystem::remove(folder.Path("b"));

    EXPECT_TRUE(saver.SyncSaves());

    EXPECT_EQ(system.Count("sync"), 2u);
}

TEST(SyncQueue, SyncsManyFilesByOneCallForTheirFileSystem)
{
    const SaveFolder folder;
    FaultySystem system;
    FileSaver saver(true, system);
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(Save(folder.Path(std::to_string(i)), saver));

    EXPECT_TRUE(saver.SyncSaves());

    EXPECT_EQ(system.Count("syncfs"), 1u);
    EXPECT_EQ(system.Count("sync") + system.Count("sync folder"), 0u);
}

TEST(SyncQueue, HoldsFewDescriptorsHoweverManyFilesThereAre)
{
    const SaveFolder folder;
    FileSaver saver;
    const auto before = OpenDescriptors();
    std::ptrdiff_t most = 0;
    for (int i = 0; i < 500; ++i) {
        EXPECT_TRUE(Save(folder.Path(std::to_string(i)), saver));
        most = std::max(most, OpenDescriptors() - before);
    }

    EXPECT_GT(most, 0);
    EXPECT_LE(most, 20);
    EXPECT_TRUE(saver.SyncSaves());
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(SyncQueue, SyncsLargeAmountsInTheBackground)
{
    const SaveFolder folder;
    FaultySystem system;
    std::mutex mutex;
    std::condition_variable synced;
    bool done = false;
    system.before = [&](const std::string& call) {
        if (call != "sync folder")
            return;
        const std::lock_guard lock(mutex);
        done = true;
        synced.notify_all();
    };
    FileSaver saver(true, system);

    EXPECT_TRUE(Save(folder.Path("large"), saver, 20 << 20));

    std::unique_lock lock(mutex);
    EXPECT_TRUE(synced.wait_for(lock, std::chrono::seconds(60), [&] { return done; }));
    lock.unlock();
    EXPECT_TRUE(Save(folder.Path("small"), saver));
    EXPECT_TRUE(saver.SyncSaves());
    EXPECT_EQ(system.Count("sync"), 2u);
}

TEST(SyncQueue, ReportsAFailureOnce)
{
    const SaveFolder folder;
    for (const auto& [call, files, size] :
         {std::tuple("sync", 1, 20), {"sync folder", 1, 20}, {"syncfs", 20, 20}, {"sync", 1, 20 << 20}}) {
        FaultySystem system;
        FileSaver saver(true, system);
        system.FailAt(call, EIO);
        for (int i = 0; i < files; ++i)
            EXPECT_TRUE(Save(folder.Path(call + std::to_string(size) + std::to_string(i)), saver,
                             static_cast<std::size_t>(size)));

        EXPECT_FALSE(saver.SyncSaves()) << call;
        EXPECT_TRUE(saver.SyncSaves()) << call;
    }
}

TEST(SyncQueue, ReportsAFolderThatCouldNotBeSyncedAfterAReplacement)
{
    const SaveFolder folder;
    WriteContent(folder.Path("a"), kOld);
    FaultySystem system;
    FileSaver saver(true, system);
    system.FailAt("sync folder", EIO);

    EXPECT_TRUE(Save(folder.Path("a"), saver)) << "the file is in place";

    EXPECT_EQ(ContentOf(folder.Path("a")), kNew);
    EXPECT_FALSE(saver.SyncSaves());
}

TEST(SyncQueue, TakesAFileSystemThatCannotSyncAsItIs)
{
    const SaveFolder folder;
    FaultySystem system;
    FileSaver saver(true, system);
    for (const char* call : {"sync", "sync folder", "syncfs"})
        system.FailAt(call, EINVAL);
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(Save(folder.Path("a"), saver));

    EXPECT_TRUE(saver.SyncSaves());
}
