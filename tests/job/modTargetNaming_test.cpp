// Target names: per file of a run, completed by validation, suggested while typing.
#include "src/job/modTargetNaming.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

static clsConversionOptions objTask(const std::string& sSource, const std::string& sTarget,
                                    std::int32_t lTargetType = 1)
{
    clsConversionOptions objOptions;
    objOptions.sOriginalFile = sSource;
    objOptions.sTargetFile = sTarget;
    objOptions.lTargetFileType = lTargetType;
    return objOptions;
}

static std::string sTargetOf(const clsConversionOptions& objOptions, const std::string& sFile,
                             std::string* pFolderToMake = nullptr)
{
    std::string sFolderToMake = "?";
    const std::string sTarget = sTargetForFile(objTargetPattern(objOptions), sFile, sFolderToMake);
    if (pFolderToMake)
        *pFolderToMake = sFolderToMake;
    return sTarget;
}

TEST(TargetForFile, MirrorsTheTreeBelowTheTargetFolder)
{
    const clsConversionOptions objOptions = objTask("C:\\pics\\*.bmp", "D:\\out\\*.jpg");
    std::string sFolder;

    EXPECT_EQ(sTargetOf(objOptions, "C:\\pics\\a.bmp", &sFolder), "D:\\out\\a.jpg");
    EXPECT_EQ(sFolder, "D:\\out\\");
    EXPECT_EQ(sTargetOf(objOptions, "C:\\pics\\sub\\deep\\a.bmp", &sFolder), "D:\\out\\sub\\deep\\a.jpg");
    EXPECT_EQ(sFolder, "D:\\out\\sub\\deep\\");
}

TEST(TargetForFile, MirrorsTheTreeForPathsWithSlashes)
{
    const clsConversionOptions objOptions = objTask("/home/me/pics/*.bmp", "/srv/out/*.jpg");
    EXPECT_EQ(sTargetOf(objOptions, "/home/me/pics/sub/a.b.bmp"), "/srv/out/sub/a.b.jpg");
}

TEST(TargetForFile, UsesTheTargetsPathStyle)
{
    EXPECT_EQ(sTargetOf(objTask("C:\\pics\\*.bmp", "/out/*.jpg"), "C:\\pics\\a\\b\\c.bmp"), "/out/a/b/c.jpg");
    EXPECT_EQ(sTargetOf(objTask("/pics/*.bmp", "D:\\out\\*.jpg"), "/pics/a/b/c.bmp"), "D:\\out\\a\\b\\c.jpg");
}

TEST(TargetForFile, IsBesideTheSourceOnRequest)
{
    clsConversionOptions objOptions = objTask("C:\\pics\\*.bmp", "D:\\out\\*.jpg");
    objOptions.bSaveInOriginalFolder = true;
    std::string sFolder;

    EXPECT_EQ(sTargetOf(objOptions, "C:\\pics\\sub\\a.bmp", &sFolder), "C:\\pics\\sub\\a.jpg");
    EXPECT_EQ(sFolder, "");
}

TEST(TargetForFile, HandlesDriveRoots)
{
    EXPECT_EQ(objTargetPattern(objTask("C:\\*.bmp", "D:\\*.jpg")).sSourceRoot, "C:\\");
    EXPECT_EQ(sTargetOf(objTask("C:\\*.bmp", "D:\\*.jpg"), "C:\\a.bmp"), "D:\\a.jpg");
    EXPECT_EQ(sTargetOf(objTask("C:\\*.bmp", "D:\\out\\*.jpg"), "C:\\x\\a.bmp"), "D:\\out\\x\\a.jpg");
    EXPECT_EQ(sTargetOf(objTask("/*.bmp", "/out/*.jpg"), "/x/a.bmp"), "/out/x/a.jpg");
    clsConversionOptions objBeside = objTask("C:\\\\*.bmp", "*.jpg");
    objBeside.bSaveInOriginalFolder = true;
    EXPECT_EQ(sTargetOf(objBeside, "C:\\\\a.bmp"), "C:\\a.jpg");
}

TEST(TargetForFile, PrefersTheTargetsExtensionToTheTypes)
{
    EXPECT_EQ(sTargetOf(objTask("/p/*.bmp", "/o/*.jpeg", 8), "/p/a.bmp"), "/o/a.jpeg");
    EXPECT_EQ(sTargetOf(objTask("/p/*.bmp", "/o/*.", 8), "/p/a.bmp"), "/o/a.png");
    EXPECT_EQ(sTargetOf(objTask("/p/*.bmp", "/o/*", 8), "/p/a.bmp"), "/o/a.png");
    EXPECT_EQ(sTargetOf(objTask("/p/*.bmp", "*.gif", 8), "/p/a.bmp"), "a.gif");
    EXPECT_EQ(sTargetOf(objTask("/p/*.bmp", "/o/*.x*.gif", 8), "/p/a.bmp"), "/o/a.gif");
}

TEST(TargetForFile, IsTheSameForAllFilesWithoutAStar)
{
    std::string sFolder;
    EXPECT_EQ(sTargetOf(objTask("/p/*.bmp", "/o/all.tif", 3), "/p/sub/a.bmp", &sFolder), "/o/all.tif");
    EXPECT_EQ(sFolder, "");
}

TEST(TargetForFile, ReplacesOnlyTheLastExtension)
{
    EXPECT_EQ(sTargetOf(objTask("/p.q/*.*", "/o/*.jpg"), "/p.q/readme"), "/o/readme.jpg");
    EXPECT_EQ(sTargetOf(objTask("/p/*.*", "/o/*.jpg"), "/p/a.tar.gz"), "/o/a.tar.jpg");
}

/// Completes a target and returns the form's text, and optionally the request's, which differs only in
/// trailing spaces.
static std::string sCompleted(TestApplication& app, const std::string& sSource, const std::string& sTarget,
                              std::string* pRequest = nullptr)
{
    clsConversionOptions objOptions = objTask(sSource, sTarget);
    app.frmMain.cbTargetFile.SetText(sTarget);
    CompleteTarget(app, objOptions);
    if (pRequest)
        *pRequest = objOptions.sTargetFile;
    else
        EXPECT_EQ(objOptions.sTargetFile, app.frmMain.cbTargetFile.Text());
    return app.frmMain.cbTargetFile.Text();
}

TEST(CompleteTarget, TurnsAFolderIntoAPatternForWildcards)
{
    TestApplication app;
    EXPECT_EQ(sCompleted(app, "C:\\p\\*.bmp", "C:\\out\\"), "C:\\out\\*.jpg");
    EXPECT_EQ(sCompleted(app, "C:\\p\\*.bmp", "C:\\out"), "C:\\out\\*.jpg");
    EXPECT_EQ(sCompleted(app, "/p/*.bmp", "/out/"), "/out/*.jpg");
    EXPECT_EQ(sCompleted(app, "/p/*.bmp", "/out"), "/out/*.jpg");
}

TEST(CompleteTarget, NamesASingleFileAfterTheExtension)
{
    TestApplication app;
    app.files.AddFolder("C:\\out");
    app.files.AddFolder("/out");
    EXPECT_EQ(sCompleted(app, "C:\\a", "C:\\out"), "C:\\out\\jpg.jpg");
    EXPECT_EQ(sCompleted(app, "C:\\a", "C:\\new\\"), "C:\\new\\jpg.jpg");
    EXPECT_EQ(sCompleted(app, "/a", "/out"), "/out/jpg.jpg");
}

TEST(CompleteTarget, AddsAMissingExtension)
{
    TestApplication app;
    EXPECT_EQ(sCompleted(app, "C:\\a", "C:\\out\\b"), "C:\\out\\b.jpg");
    EXPECT_EQ(sCompleted(app, "C:\\a", "C:\\out\\a."), "C:\\out\\a.jpg");
    EXPECT_EQ(sCompleted(app, "/p/*.bmp", "/out/a."), "/out/a.jpg");
}

TEST(CompleteTarget, TrimsOnlyTheFormsText)
{
    TestApplication app;
    std::string sRequest;
    EXPECT_EQ(sCompleted(app, "/a", " /out/a. ", &sRequest), " /out/a. ");
    EXPECT_EQ(sRequest, " /out/a. ");
    EXPECT_EQ(sCompleted(app, "/a", "/out/a.  ", &sRequest), "/out/a.jpg");
    EXPECT_EQ(sRequest, "/out/a.  jpg");
}

TEST(CompleteTarget, LeavesCompleteTargetsAlone)
{
    TestApplication app;
    app.files.AddFolder("/my.pics/out");
    for (const char* sTarget :
         {"C:\\out\\a.gif", "C:\\out\\*.jpg", "C:\\out\\*", "/out/*.", ".", "/my.pics/out", "/my.pics/out/"})
        EXPECT_EQ(sCompleted(app, "/a.bmp", sTarget), sTarget);
}

TEST(ProposedTarget, LowersTheCaseOfASingleFile)
{
    EXPECT_EQ(sProposedTarget("C:\\Pics\\A.BMP", 8), "c:\\pics\\a.png");
    EXPECT_EQ(sProposedTarget("/Pics/A.b.BMP", 8), "/pics/a.b.png");
    EXPECT_EQ(sProposedTarget("  A.BMP", 1), "a.jpg");
}

TEST(ProposedTarget, KeepsTheCaseOfAWildcardsFolder)
{
    EXPECT_EQ(sProposedTarget("C:\\Pics\\*.BMP", 8), "C:\\Pics\\*.png");
    EXPECT_EQ(sProposedTarget("/Pics/*.BMP", 8), "/Pics/*.png");
}

TEST(ProposedTarget, IsEmptyWithoutADotOrAWildcardsFolder)
{
    EXPECT_EQ(sProposedTarget("C:\\Pics\\A", 8), std::nullopt);
    EXPECT_EQ(sProposedTarget("", 8), std::nullopt);
    EXPECT_EQ(sProposedTarget("*.bmp", 8), std::nullopt);
}

TEST(PatternInFolder, AppendsASeparatorAndAStar)
{
    EXPECT_EQ(sPatternInFolder("C:\\pics", 1), "C:\\pics\\*.jpg");
    EXPECT_EQ(sPatternInFolder("/pics", 8), "/pics/*.png");
    EXPECT_EQ(sPatternInFolder("C:\\pics", -1), "C:\\pics\\*.*");
}

TEST(PatternInFolder, DoublesTheSeparatorOfDriveRootsOnly)
{
    EXPECT_EQ(sPatternInFolder("C:\\", 1), "C:\\\\*.jpg");
    EXPECT_EQ(sPatternInFolder("/", 1), "/*.jpg");
}

TEST(PatternBesideSource, UsesTheFolderOfTheSource)
{
    EXPECT_EQ(sPatternBesideSource("c:\\p\\*.bmp", 8), "c:\\p\\*.png");
    EXPECT_EQ(sPatternBesideSource("/p/q/a.bmp", 8), "/p/q/*.png");
    EXPECT_EQ(sPatternBesideSource("/a.bmp", 8), "/*.png");
}

TEST(WithoutQuotes, RemovesEveryDoubleQuote)
{
    EXPECT_EQ(sWithoutQuotes("\"C:\\my pics\\a.bmp\""), "C:\\my pics\\a.bmp");
    EXPECT_EQ(sWithoutQuotes("a\"\"b'"), "ab'");
}
