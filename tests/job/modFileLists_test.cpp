// File lists: pattern matching, order, pauses and links.
#include "src/job/modFileLists.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

using Paths = std::vector<std::string>;

/// An application in the middle of a run, as needed for making lists.
struct Running : TestApplication {
    Running() { frmMain.bRunning = true; }
};

static Paths aListOf(Running& app, const std::string& sSource, bool bDoSubfolders = false)
{
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = sSource;
    objOptions.bDoSubfolders = bDoSubfolders;
    Paths colFiles;
    EXPECT_TRUE(bCreateFileList(app, objOptions, colFiles));
    EXPECT_EQ(objOptions.sErr, "");
    return colFiles;
}

TEST(MatchesPattern, AcceptsAllFilesOrOneExtension)
{
    EXPECT_TRUE(bMatchesPattern("*.*", "jpg"));
    EXPECT_TRUE(bMatchesPattern("*.*", ""));
    EXPECT_TRUE(bMatchesPattern("*.jpg", "jpg"));
    EXPECT_TRUE(bMatchesPattern("*.JPG", "jpg"));
    EXPECT_TRUE(bMatchesPattern("*.jpg", "JPG"));
    EXPECT_FALSE(bMatchesPattern("*.jpg", "jpeg"));
    EXPECT_FALSE(bMatchesPattern("*.tif", "tiff"));
    EXPECT_FALSE(bMatchesPattern("*.tiff", "tif"));
}

TEST(MatchesPattern, MatchesFilesWithoutExtensionForABareDot)
{
    EXPECT_TRUE(bMatchesPattern("*.", ""));
    EXPECT_FALSE(bMatchesPattern("*.", "a"));
}

TEST(MatchesPattern, SupportsNoOtherPatterns)
{
    for (const char* sPattern : {"*", "", "*.j*", "*.*g", "*a.jpg", "*.jp?", "**.jpg", "*.jpg\\x"})
        EXPECT_FALSE(bMatchesPattern(sPattern, "jpg")) << sPattern;
}

TEST(CreateFileList, ListsFilesOfOneExtensionSortedByName)
{
    Running app;
    for (const char* sFile : {"c.BMP", "a.bmp", "b.jpg", "noext", "b.bmp", ".bmp"})
        app.files.AddFile(std::string("C:\\pics\\") + sFile);

    EXPECT_EQ(aListOf(app, "C:\\pics\\*.bmp"),
              (Paths{"C:\\pics\\.bmp", "C:\\pics\\a.bmp", "C:\\pics\\b.bmp", "C:\\pics\\c.BMP"}));
}

TEST(CreateFileList, KeepsTheStyleOfThePath)
{
    Running app;
    app.files.AddFile("/pics/sub/a.bmp");

    EXPECT_EQ(aListOf(app, "/pics/*.bmp", true), Paths{"/pics/sub/a.bmp"});
    EXPECT_EQ(aListOf(app, "\\pics\\*.bmp", true), Paths{"\\pics\\sub\\a.bmp"});
}

TEST(CreateFileList, ListsEveryFileForStarDotStar)
{
    Running app;
    app.files.AddFile("/p/a.bmp");
    app.files.AddFile("/p/readme");

    EXPECT_EQ(aListOf(app, "/p/*.*"), (Paths{"/p/a.bmp", "/p/readme"}));
}

TEST(CreateFileList, IgnoresDotsInFolderNames)
{
    Running app;
    app.files.AddFile("/my.pics/readme");
    app.files.AddFile("/my.pics/a.b");

    EXPECT_EQ(aListOf(app, "/my.pics/*."), Paths{"/my.pics/readme"});
}

TEST(CreateFileList, SucceedsWithAnEmptyListIfNothingMatches)
{
    Running app;
    app.files.AddFile("C:\\pics\\a.jpg");

    EXPECT_EQ(aListOf(app, "C:\\pics\\*.gif"), Paths{});
    EXPECT_EQ(aListOf(app, "C:\\pics\\*"), Paths{});
}

TEST(CreateFileList, ListsAFoldersFilesBeforeItsSubfolders)
{
    Running app;
    for (const char* sFile : {"z.bmp", "a/n.bmp", "a/b/m.bmp", "c/d.bmp", "c/x/y.bmp"})
        app.files.AddFile(std::string("/p/") + sFile);

    EXPECT_EQ(aListOf(app, "/p/*.bmp", true),
              (Paths{"/p/z.bmp", "/p/a/n.bmp", "/p/a/b/m.bmp", "/p/c/d.bmp", "/p/c/x/y.bmp"}));
    EXPECT_EQ(aListOf(app, "/p/*.bmp", false), Paths{"/p/z.bmp"});
}

TEST(CreateFileList, ReportsAMissingFolder)
{
    Running app;
    app.files.AddFile("C:\\a\\b1.jpg");
    for (const std::string sFolder : {"C:\\none\\", "C:\\a\\b", ""}) {
        clsConversionOptions objOptions;
        objOptions.sOriginalFile = sFolder + "*.jpg";
        Paths colFiles;

        EXPECT_FALSE(bCreateFileList(app, objOptions, colFiles));
        EXPECT_EQ(objOptions.sErr, "Folder: " + sFolder + " does not exist");
        EXPECT_TRUE(colFiles.empty());
    }
}

TEST(CreateFileList, ReportsAMissingFile)
{
    Running app;
    app.files.AddFolder("/p");
    for (const std::string sFile : {"/p/a.jpg", "/p", ""}) {
        clsConversionOptions objOptions;
        objOptions.sOriginalFile = sFile;
        Paths colFiles;

        EXPECT_FALSE(bCreateFileList(app, objOptions, colFiles));
        EXPECT_EQ(objOptions.sErr, "File: " + sFile + " does not exist");
    }
}

TEST(CreateFileList, TranslatesThePartsOfItsMessage)
{
    Running app;
    app.objTranslator.dictTranslations["Folder: "] = "Ordner: ";
    app.objTranslator.dictTranslations[" does not exist"] = " fehlt";
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = "/none/*.jpg";
    Paths colFiles;

    bCreateFileList(app, objOptions, colFiles);

    EXPECT_EQ(objOptions.sErr, "Ordner: /none/ fehlt");
}

TEST(CreateFileList, ListsASingleFile)
{
    Running app;
    app.files.AddFile("C:\\p\\a.xyz");
    EXPECT_EQ(aListOf(app, "C:\\p\\a.xyz"), Paths{"C:\\p\\a.xyz"});
}

TEST(CreateFileList, RestoresTheMousePointer)
{
    Running app;
    app.files.AddFile("/p/a.bmp");
    bool bHourglass = false;
    app.windows.on_do_events = [&] { bHourglass = app.frmMainMDI.Hourglass(); };

    aListOf(app, "/p/*.bmp");

    EXPECT_TRUE(bHourglass);
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
}

TEST(CreateFileList, ReturnsTheFilesFoundBeforeAPause)
{
    Running app;
    for (const char* sFile : {"1.bmp", "2.bmp", "3.bmp", "4.bmp"})
        app.files.AddFile(std::string("/p/") + sFile);
    app.windows.on_do_events = [&] { app.frmMain.bRunning = app.windows.do_events < 4; };

    EXPECT_EQ(aListOf(app, "/p/*.bmp"), (Paths{"/p/1.bmp", "/p/2.bmp"}));
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
}

TEST(AddFolderFiles, ReportsAPauseAndKeepsTheHourglass)
{
    Running app;
    app.files.AddFile("/p/a.bmp");
    app.frmMain.bRunning = false;
    Paths colFiles;
    std::string sFolder = "/p";

    EXPECT_EQ(lAddFolderFiles(app, sFolder, "*.bmp", colFiles, false), -2);
    EXPECT_TRUE(app.frmMainMDI.Hourglass());
    EXPECT_TRUE(colFiles.empty());
}

TEST(AddFolderFiles, ChecksForPausesBetweenSubfoldersToo)
{
    Running app;
    app.files.AddFolder("/p/a");
    app.files.AddFile("/p/b/x.bmp");
    app.windows.on_do_events = [&] { app.frmMain.bRunning = app.windows.do_events < 4; };
    Paths colFiles;
    std::string sFolder = "/p";

    EXPECT_EQ(lAddFolderFiles(app, sFolder, "*.bmp", colFiles, true), -2);
    EXPECT_TRUE(colFiles.empty());
}

TEST(AddFolderFiles, AppendsASeparatorToTheFolder)
{
    Running app;
    app.files.AddFile("C:\\p\\a.bmp");
    Paths colFiles;
    std::string sFolder = "C:\\p";

    EXPECT_EQ(lAddFolderFiles(app, sFolder, "*.bmp", colFiles, false), 0);
    EXPECT_EQ(sFolder, "C:\\p\\");
    EXPECT_EQ(colFiles, Paths{"C:\\p\\a.bmp"});

    std::string sMissing = "C:\\q";
    EXPECT_EQ(lAddFolderFiles(app, sMissing, "*.bmp", colFiles, false), -1);
    EXPECT_EQ(sMissing, "C:\\q");
}

TEST(AddFolderFiles, ShowsTheFolderAndProcessesEventsPerFile)
{
    Running app;
    app.files.AddFile("/p/a.bmp");
    app.files.AddFile("/p/b.txt");
    Paths colFiles;
    std::string sFolder = "/p";

    lAddFolderFiles(app, sFolder, "*.bmp", colFiles, false);

    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(2), "Creating File List: /p/");
    EXPECT_EQ(app.windows.do_events, 3);
}

TEST(AddFolderFiles, TerminatesDespiteCyclicLinks)
{
    Running app;
    app.files.AddFile("/p/a/x.bmp");
    app.files.AddLink("/p/a/back", "/p");
    Paths colFiles;
    std::string sFolder = "/p";

    lAddFolderFiles(app, sFolder, "*.bmp", colFiles, true);

    EXPECT_EQ(colFiles, Paths{"/p/a/x.bmp"});
}

TEST(AddFolderFiles, FollowsLinksToTheSameFolderOnce)
{
    Running app;
    app.files.AddFile("/else/x.bmp");
    app.files.AddLink("/p/first", "/else");
    app.files.AddLink("/p/second", "/else");
    Paths colFiles;
    std::string sFolder = "/p";

    lAddFolderFiles(app, sFolder, "*.bmp", colFiles, true);

    EXPECT_EQ(colFiles, Paths{"/p/first/x.bmp"});
}

TEST(AddFolderFiles, AlwaysWalksRealFoldersUnderTheirOwnName)
{
    Running app;
    app.files.AddFile("/p/real/x.bmp");
    app.files.AddLink("/p/alias", "/p/real");
    app.files.AddLink("/p/zalias", "/p/real");
    Paths colFiles;
    std::string sFolder = "/p";

    lAddFolderFiles(app, sFolder, "*.bmp", colFiles, true);

    EXPECT_EQ(colFiles, (Paths{"/p/alias/x.bmp", "/p/real/x.bmp"}));
}

TEST(WildcardSource, SplitsAtTheFirstStar)
{
    EXPECT_EQ(sFolderOfPattern("C:\\a\\*.jpg"), "C:\\a\\");
    EXPECT_EQ(sPatternOfSource("C:\\a\\*.jpg"), "*.jpg");
    EXPECT_EQ(sFolderOfPattern("C:\\a*\\*.jpg"), "C:\\a");
    EXPECT_EQ(sPatternOfSource("C:\\a*\\*.jpg"), "*\\*.jpg");
    EXPECT_EQ(sPatternOfSource("C:\\a.jpg"), "");
    EXPECT_TRUE(bHasWildcard("a*"));
    EXPECT_FALSE(bHasWildcard("a?"));
}

TEST(FileList, FailsIfTheFolderCannotBeRead)
{
    Running app;
    app.files.AddFile("/in/a.bmp");
    app.files.unlistable.insert("/in/");
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = "/in/*.bmp";
    Paths colFiles;

    EXPECT_FALSE(bCreateFileList(app, objOptions, colFiles));

    EXPECT_EQ(objOptions.sErr, "Unable to read folder: /in/");
}

TEST(FileList, NamesSubfoldersThatCannotBeRead)
{
    Running app;
    app.files.AddFile("/in/a.bmp");
    app.files.AddFile("/in/no/b.bmp");
    app.files.AddFile("/in/yes/c.bmp");
    app.files.unlistable.insert("/in/no");
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = "/in/*.bmp";
    objOptions.bDoSubfolders = true;
    Paths colFiles, aUnreadable;

    EXPECT_TRUE(bCreateFileList(app, objOptions, colFiles, &aUnreadable));

    EXPECT_EQ(colFiles, (Paths{"/in/a.bmp", "/in/yes/c.bmp"}));
    EXPECT_EQ(aUnreadable, Paths{"/in/no"});
}
