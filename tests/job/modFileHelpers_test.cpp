// File helpers: lookup, folder creation, move and delete.
#include "src/job/modFileHelpers.h"

#include "tests/fakes/test_application.h"

TEST(CreateFolderPath, CreatesMissingParentsFirst)
{
    TestApplication app;
    app.objFiles.AddFolder("C:\\");

    CreateFolderPath(app, "C:\\out\\a\\b");

    EXPECT_EQ(app.objFiles.aMadeFolders,
              (std::vector<std::string>{"C:\\out", "C:\\out\\a", "C:\\out\\a\\b"}));
}

TEST(CreateFolderPath, AcceptsSlashesAndTrailingSeparators)
{
    TestApplication app;
    app.objFiles.AddFolder("/home");

    CreateFolderPath(app, "/home/me/out//");

    EXPECT_TRUE(bFolderExists(app, "/home/me/out"));
    EXPECT_EQ(app.objFiles.aMadeFolders, (std::vector<std::string>{"/home/me", "/home/me/out"}));
}

TEST(CreateFolderPath, FailsSilently)
{
    TestApplication app;
    app.objFiles.AddFolder("/cd");
    app.objFiles.MakeReadOnly("/cd");

    CreateFolderPath(app, "/cd/out");
    CreateFolderPath(app, "Z:\\nowhere");
    CreateFolderPath(app, "");

    EXPECT_FALSE(bFolderExists(app, "/cd/out"));
    EXPECT_TRUE(app.objFiles.aMadeFolders.empty());
    EXPECT_TRUE(app.objWindows.aBoxes.empty());
}

TEST(CreateFolderPath, IgnoresTextsTooLongForAPath)
{
    TestApplication app;
    app.objFiles.AddFolder("/");
    std::string sPath;
    for (int i = 0; i < 500'000; ++i)
        sPath += "/a";

    CreateFolderPath(app, sPath);

    EXPECT_TRUE(app.objFiles.aMadeFolders.empty());
}

TEST(FileExists, IsFalseForFoldersPatternsAndEmptyPaths)
{
    TestApplication app;
    app.objFiles.AddFile("C:\\pics\\a.jpg");

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
    app.objFiles.AddFile("/pics/a.jpg");
    EXPECT_TRUE(bFileExists(app, "  /pics/a.jpg "));
}

TEST(MoveFileReplacing, ReplacesTheTargetsContent)
{
    TestApplication app;
    app.objFiles.AddFile("/out/a.tif.TIF", "new");
    app.objFiles.AddFile("/out/a.tif", "old");

    EXPECT_TRUE(bMoveFileReplacing(app, "/out/a.tif.TIF", "/out/a.tif"));

    EXPECT_EQ(app.objFiles.sContent("/out/a.tif"), "new");
    EXPECT_FALSE(app.objFiles.bHas("/out/a.tif.TIF"));
}

TEST(MoveFileReplacing, KeepsBothFilesIfCopyingFails)
{
    TestApplication app;
    app.objFiles.AddFile("/out/a.tif.TIF", "new");
    app.objFiles.AddFile("/out/a.tif", "old");
    app.objFiles.bFailCopies = true;

    EXPECT_FALSE(bMoveFileReplacing(app, "/out/a.tif.TIF", "/out/a.tif"));

    EXPECT_EQ(app.objFiles.sContent("/out/a.tif"), "old");
    EXPECT_TRUE(app.objFiles.bHas("/out/a.tif.TIF"));
}

TEST(MoveFileReplacing, FailsIfTheSourceCannotBeDeleted)
{
    TestApplication app;
    app.objFiles.AddFile("/out/t", "new");
    app.objFiles.aUndeletable.insert("/out/t");

    EXPECT_FALSE(bMoveFileReplacing(app, "/out/t", "/out/a.tif"));
    EXPECT_EQ(app.objFiles.sContent("/out/a.tif"), "new");
}

TEST(DeleteFileOnce, FailsForAMissingFile)
{
    TestApplication app;
    app.objFiles.AddFile("/a");

    EXPECT_TRUE(bDeleteFileOnce(app, "/a"));
    EXPECT_FALSE(bDeleteFileOnce(app, "/a"));
}

TEST(DeleteFileRetrying, SucceedsImmediatelyForAMissingFile)
{
    TestApplication app;

    EXPECT_TRUE(bDeleteFileRetrying(app, "/none"));
    EXPECT_TRUE(app.objClock.aSleeps.empty());
}

TEST(DeleteFileRetrying, WaitsASecondBeforeEachRetry)
{
    TestApplication app;
    app.objFiles.AddFile("/held");
    app.objFiles.lDeletesToRefuse = 3;

    EXPECT_TRUE(bDeleteFileRetrying(app, "/held"));

    EXPECT_EQ(app.objClock.aSleeps, std::vector<std::int32_t>(3, 1000));
    EXPECT_FALSE(app.objFiles.bHas("/held"));
}

TEST(DeleteFileRetrying, GivesUpAfterTwentyRetriesAndAFinalWait)
{
    TestApplication app;
    app.objFiles.AddFile("/held");
    app.objFiles.aUndeletable.insert("/held");

    EXPECT_FALSE(bDeleteFileRetrying(app, "/held"));

    EXPECT_EQ(app.objFiles.lRefusedDeletes, 21);
    EXPECT_EQ(app.objClock.aSleeps, std::vector<std::int32_t>(21, 1000));
}

TEST(FolderHasEntries, IsTrueIfTheFolderContainsAnything)
{
    TestApplication app;
    app.objFiles.AddFile("/full/a.txt");
    app.objFiles.AddFolder("/nested/inner");
    app.objFiles.AddFolder("/empty");

    EXPECT_TRUE(bFolderHasEntries(app, "/full"));
    EXPECT_TRUE(bFolderHasEntries(app, "\\nested\\"));
    EXPECT_FALSE(bFolderHasEntries(app, "/empty"));
    EXPECT_FALSE(bFolderHasEntries(app, "/full/a.txt"));
    EXPECT_FALSE(bFolderHasEntries(app, "/none"));
    EXPECT_FALSE(bFolderHasEntries(app, ""));
}
