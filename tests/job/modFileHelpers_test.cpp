// File helpers: lookup, folder creation, move and delete.
#include "src/job/modFileHelpers.h"

#include <gtest/gtest.h>

#include "src/commands/modRunState.h"
#include "tests/fakes/test_application.h"

TEST(CreateFolderPath, CreatesMissingParentsFirst)
{
    TestApplication app;
    app.files.AddFolder("C:\\");

    CreateFolderPath(app, "C:\\out\\a\\b");

    EXPECT_EQ(app.files.made_folders, (std::vector<std::string>{"C:\\out", "C:\\out\\a", "C:\\out\\a\\b"}));
}

TEST(CreateFolderPath, AcceptsSlashesAndTrailingSeparators)
{
    TestApplication app;
    app.files.AddFolder("/home");

    CreateFolderPath(app, "/home/me/out//");

    EXPECT_TRUE(bFolderExists(app, "/home/me/out"));
    EXPECT_EQ(app.files.made_folders, (std::vector<std::string>{"/home/me", "/home/me/out"}));
}

TEST(CreateFolderPath, FailsSilently)
{
    TestApplication app;
    app.files.AddFolder("/cd");
    app.files.MakeReadOnly("/cd");

    CreateFolderPath(app, "/cd/out");
    CreateFolderPath(app, "Z:\\nowhere");
    CreateFolderPath(app, "");

    EXPECT_FALSE(bFolderExists(app, "/cd/out"));
    EXPECT_TRUE(app.files.made_folders.empty());
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(CreateFolderPath, IgnoresTextsTooLongForAPath)
{
    TestApplication app;
    app.files.AddFolder("/");
    std::string sPath;
    for (int i = 0; i < 500'000; ++i)
        sPath += "/a";

    CreateFolderPath(app, sPath);

    EXPECT_TRUE(app.files.made_folders.empty());
}

TEST(FileExists, IsFalseForFoldersPatternsAndEmptyPaths)
{
    TestApplication app;
    app.files.AddFile("C:\\pics\\a.jpg");

    EXPECT_TRUE(bFileExists(app, "C:\\pics\\a.jpg"));
    EXPECT_TRUE(bFileExists(app, "c:/PICS/A.JPG"));
    EXPECT_FALSE(bFileExists(app, "C:\\pics"));
    EXPECT_FALSE(bFileExists(app, "C:\\pics\\*.jpg"));
    EXPECT_FALSE(bFileExists(app, "C:\\pics\\b.jpg"));
    EXPECT_FALSE(bFileExists(app, ""));
    EXPECT_FALSE(bFileExists(app, "   "));
}

TEST(FileExists, IgnoresSpacesAroundThePath)
{
    TestApplication app;
    app.files.AddFile("/pics/a.jpg");
    EXPECT_TRUE(bFileExists(app, "  /pics/a.jpg "));
}

TEST(DeleteFileOnce, FailsForAMissingFile)
{
    TestApplication app;
    app.files.AddFile("/a");

    EXPECT_TRUE(bDeleteFileOnce(app, "/a"));
    EXPECT_FALSE(bDeleteFileOnce(app, "/a"));
}

TEST(DeleteFileRetrying, SucceedsImmediatelyForAMissingFile)
{
    TestApplication app;

    EXPECT_TRUE(bDeleteFileRetrying(app, "/none"));
    EXPECT_TRUE(app.clock.sleeps.empty());
}

TEST(DeleteFileRetrying, WaitsASecondBeforeEachRetry)
{
    TestApplication app;
    app.files.AddFile("/held");
    app.files.deletes_to_refuse = 3;

    const std::int64_t start = app.clock.tick;

    EXPECT_TRUE(bDeleteFileRetrying(app, "/held"));

    EXPECT_EQ(app.clock.tick - start, 3 * 1000);
    EXPECT_FALSE(app.files.Has("/held"));
}

TEST(DeleteFileRetrying, GivesUpAfterTwentyRetriesAndAFinalWait)
{
    TestApplication app;
    app.files.AddFile("/held");
    app.files.undeletable.insert("/held");

    const std::int64_t start = app.clock.tick;

    EXPECT_FALSE(bDeleteFileRetrying(app, "/held"));

    EXPECT_EQ(app.files.refused_deletes, 21);
    EXPECT_EQ(app.clock.tick - start, 21 * 1000);
}

TEST(FolderHasEntries, IsTrueIfTheFolderContainsAnything)
{
    TestApplication app;
    app.files.AddFile("/full/a.txt");
    app.files.AddFolder("/nested/inner");
    app.files.AddFolder("/empty");

    EXPECT_TRUE(bFolderHasEntries(app, "/full"));
    EXPECT_TRUE(bFolderHasEntries(app, "\\nested\\"));
    EXPECT_FALSE(bFolderHasEntries(app, "/empty"));
    EXPECT_FALSE(bFolderHasEntries(app, "/full/a.txt"));
    EXPECT_FALSE(bFolderHasEntries(app, "/none"));
    EXPECT_FALSE(bFolderHasEntries(app, ""));
}

TEST(DeleteFileRetrying, HandlesEventsWhileItWaits)
{
    TestApplication app;
    app.files.AddFile("/held");
    app.files.deletes_to_refuse = 1;
    std::vector<std::int64_t> ticks;
    app.windows.on_do_events = [&] { ticks.push_back(app.clock.tick); };

    EXPECT_TRUE(bDeleteFileRetrying(app, "/held"));

    ASSERT_EQ(ticks.size(), 50u);
    EXPECT_EQ(ticks[1] - ticks[0], 20);
}

TEST(DeleteFileRetrying, LeavesTheFileOnceTheRunIsStopped)
{
    TestApplication app;
    app.files.AddFile("/held");
    app.files.undeletable.insert("/held");
    const RunScope objRun(app);
    app.windows.on_do_events = [&] { StopRun(app); };

    EXPECT_THROW(bDeleteFileRetrying(app, "/held"), clsRunStopped);

    EXPECT_EQ(app.windows.do_events, 1);
    EXPECT_TRUE(app.files.Has("/held"));
}
