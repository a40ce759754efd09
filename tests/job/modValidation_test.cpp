// Validation of tasks: errors and side effects.
#include "src/job/modValidation.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

/// An application with a file "/p/a.bmp" and a folder "/out", and a valid request.
struct Check : testing::Test {
    TestApplication app;
    clsConversionOptions objOptions;

    Check()
    {
        app.files.AddFile("/p/a.bmp");
        app.files.AddFolder("/out");
        objOptions.sOriginalFile = "/p/a.bmp";
        objOptions.lOriginalFileType = 2;
        objOptions.sTargetFile = "/out/a.jpg";
        objOptions.lTargetFileType = 1;
    }
    std::int32_t lErrOf(const std::string& sSource, const std::string& sTarget)
    {
        objOptions.lErr = 0;
        objOptions.sOriginalFile = sSource;
        objOptions.sTargetFile = sTarget;
        ValidateRequest(app, objOptions);
        return objOptions.lErr;
    }
};

using ValidateConversion = Check;

TEST_F(ValidateConversion, AcceptsAValidRequestUnchanged)
{
    ValidateRequest(app, objOptions);

    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_EQ(objOptions.sTargetFile, "/out/a.jpg");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ValidateConversion, NeverClearsAnEarlierError)
{
    objOptions.lErr = -202;
    ValidateRequest(app, objOptions);
    EXPECT_EQ(objOptions.lErr, -202);
}

TEST_F(ValidateConversion, ReplacesAnEarlierErrorByItsOwn)
{
    objOptions.lErr = -202;
    objOptions.sOriginalFile = "/p/none.bmp";
    ValidateRequest(app, objOptions);
    EXPECT_EQ(objOptions.lErr, -4);
}

TEST_F(ValidateConversion, RequiresTheFolderOfAWildcard)
{
    EXPECT_EQ(lErrOf("/none/*.bmp", "/out/*.jpg"), -1);
    EXPECT_EQ(lErrOf("/p/a*.bmp", "/out/*.jpg"), -1);
    EXPECT_EQ(lErrOf("*.bmp", "/out/*.jpg"), -1);
    EXPECT_EQ(lErrOf("/p/*.bmp", "/out/*.jpg"), 0);
    EXPECT_EQ(lErrOf("\\p\\*.bmp", "\\out\\*.jpg"), 0);
}

TEST_F(ValidateConversion, CreatesTheTargetFolderOfAWildcard)
{
    EXPECT_EQ(lErrOf("/p/*.bmp", "/out/new/deep/*.jpg"), 0);
    EXPECT_TRUE(app.files.FolderExists("/out/new/deep"));
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ValidateConversion, FailsIfAWildcardsTargetFolderCannotBeCreated)
{
    app.files.MakeReadOnly("/out");
    EXPECT_EQ(lErrOf("/p/*.bmp", "/out/new/*.jpg"), -3);
    EXPECT_EQ(lErrOf("/p/*.bmp", "*.jpg"), -3);
}

TEST_F(ValidateConversion, AcceptsASingleTargetForAWildcard)
{
    EXPECT_EQ(lErrOf("/p/*.bmp", "/nowhere/all.tif"), 0);
}

TEST_F(ValidateConversion, KeepsFolderFlagsForWildcardsOnly)
{
    objOptions.bDoSubfolders = objOptions.bSaveInOriginalFolder = true;
    lErrOf("/p/*.bmp", "/out/*.jpg");
    EXPECT_TRUE(objOptions.bDoSubfolders && objOptions.bSaveInOriginalFolder);

    lErrOf("/p/a.bmp", "/out/a.jpg");
    EXPECT_FALSE(objOptions.bDoSubfolders || objOptions.bSaveInOriginalFolder);
}

TEST_F(ValidateConversion, ClearsFolderFlagsEvenForAMissingSource)
{
    objOptions.bDoSubfolders = objOptions.bSaveInOriginalFolder = true;
    EXPECT_EQ(lErrOf("/p/none.bmp", "/out/a.jpg"), -4);
    EXPECT_FALSE(objOptions.bDoSubfolders || objOptions.bSaveInOriginalFolder);
}

TEST_F(ValidateConversion, RequiresASingleSourceToExist)
{
    EXPECT_EQ(lErrOf("/p/none.bmp", "/out/a.jpg"), -4);
    EXPECT_EQ(lErrOf("", "/out/a.jpg"), -4);
    EXPECT_EQ(lErrOf("/p", "/out/a.jpg"), -4);
}

TEST_F(ValidateConversion, RejectsAWildcardTargetForASingleSource)
{
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/*.jpg"), -5);
}

TEST_F(ValidateConversion, CreatesTheTargetFolderOfASingleFile)
{
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/new/a.jpg"), 0);
    EXPECT_TRUE(app.files.FolderExists("/out/new"));
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ValidateConversion, FailsIfTheTargetFolderCannotBeCreated)
{
    app.files.MakeReadOnly("/out");
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/new/a.jpg"), -6);
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/new/deep/"), -6);
}

TEST_F(ValidateConversion, RequiresATargetTypeWithAnExtension)
{
    for (const std::int32_t lType : {0, 15, -2, kNoFileType}) {
        objOptions.lTargetFileType = lType;
        EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.jpg"), -7);
    }
    for (const std::int32_t lType : {-1, 12, 14}) {
        objOptions.lTargetFileType = lType;
        EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.jpg"), 0);
    }
}

TEST_F(ValidateConversion, RequiresDetails)
{
    objOptions.sExtraParams = "  ";
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.jpg"), -10);
}

TEST_F(ValidateConversion, StopsAtTheFirstFailure)
{
    objOptions.lTargetFileType = 0;
    objOptions.sExtraParams = "";
    EXPECT_EQ(lErrOf("/p/none.bmp", "/out/*"), -4);
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/*"), -5);
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a"), -7);
    EXPECT_EQ(objOptions.sTargetFile, "/out/a");
}

TEST_F(ValidateConversion, NotesATypeMismatchAndCarriesOn)
{
    objOptions.lOriginalFileType = 1;

    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a"), -13);

    EXPECT_EQ(objOptions.sTargetFile, "/out/a.jpg");
}

TEST_F(ValidateConversion, ComparesExtensionsExactlyButIgnoresCase)
{
    for (const char* sFile : {"/p/a.jpeg", "/p/b.tiff", "/p/c.JPG", "/p/d.", "/p/e", "/p/g.Tif"})
        app.files.AddFile(sFile);
    objOptions.lOriginalFileType = 1;
    EXPECT_EQ(lErrOf("/p/a.jpeg", "/out/a.jpg"), -13);
    EXPECT_EQ(lErrOf("/p/c.JPG", "/out/a.jpg"), 0);
    EXPECT_EQ(lErrOf("/p/c.JPG  ", "/out/a.jpg"), 0);
    EXPECT_EQ(lErrOf("/p/d.", "/out/a.jpg"), -13);
    EXPECT_EQ(lErrOf("/p/e", "/out/a.jpg"), -13);
    EXPECT_EQ(lErrOf("/p/*.*", "/out/*.jpg"), -13);
    objOptions.lOriginalFileType = 3;
    EXPECT_EQ(lErrOf("/p/b.tiff", "/out/a.jpg"), -13);
    EXPECT_EQ(lErrOf("/p/g.Tif", "/out/a.jpg"), 0);
}

TEST_F(ValidateConversion, SkipsTheMismatchNoticeWhereItIsUnwanted)
{
    objOptions.lOriginalFileType = -1;
    EXPECT_EQ(lErrOf("/p/*.*", "/out/*.jpg"), 0);

    objOptions.lOriginalFileType = 1;
    app.frmTypeMatchNotification.bDontShowAgain = true;
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.jpg"), 0);

    app.frmTypeMatchNotification.bDontShowAgain = false;
    app.bCommandLineMode = true;
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.jpg"), 0);
}

TEST_F(ValidateConversion, CompletesTheTargetInTheFormToo)
{
    EXPECT_EQ(lErrOf("/p/*.bmp", "/out"), 0);
    EXPECT_EQ(objOptions.sTargetFile, "/out/*.jpg");
    EXPECT_EQ(app.frmMain.cbTargetFile.Text(), "/out/*.jpg");
}

TEST_F(ValidateConversion, RequiresOnlyTheFileOfAJob)
{
    app.files.AddFile("/jobs/a.vjb");
    objOptions = {};
    objOptions.sCLBatchJobFile = "/jobs/a.vjb";
    ValidateRequest(app, objOptions);
    EXPECT_EQ(objOptions.lErr, 0);

    objOptions.sCLBatchJobFile = "/jobs/none.vjb";
    objOptions.sOriginalFile = "/p/none";
    ValidateRequest(app, objOptions);
    EXPECT_EQ(objOptions.lErr, -8);
}

struct ValidateSpecial : Check {
    ValidateSpecial()
    {
        objOptions.sActionToDo = "S";
        objOptions.lSpecialProcess = 6;
        objOptions.lTargetFileType = 1;
    }
};

TEST_F(ValidateSpecial, SetsTheTargetsTypeToTheSources)
{
    ValidateRequest(app, objOptions);
    EXPECT_EQ(objOptions.lErr, 0);
    EXPECT_EQ(objOptions.lTargetFileType, 2);
}

TEST_F(ValidateSpecial, RequiresSourceAndTarget)
{
    EXPECT_EQ(lErrOf("", "/out/a.bmp"), -9);
    EXPECT_EQ(lErrOf("/p/a.bmp", "  "), -9);
}

TEST_F(ValidateSpecial, ChecksFilesLikeAConversion)
{
    app.files.MakeReadOnly("/cd");
    EXPECT_EQ(lErrOf("/none/*.bmp", "/out/*.bmp"), -1);
    EXPECT_EQ(lErrOf("/p/*.bmp", "/cd/*.bmp"), -3);
    EXPECT_EQ(lErrOf("/p/none.bmp", "/out/a.bmp"), -4);
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/*.bmp"), -5);
    EXPECT_EQ(lErrOf("/p/a.bmp", "/cd/a.bmp"), -6);
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/new/a.bmp"), 0);
    EXPECT_TRUE(app.files.FolderExists("/out/new"));
}

TEST_F(ValidateSpecial, SkipsTargetCompletionAndMismatchNotice)
{
    objOptions.lOriginalFileType = 8;
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a"), 0);
    EXPECT_EQ(objOptions.sTargetFile, "/out/a");
}

TEST_F(ValidateSpecial, AcceptsOnlyTaskProcessNumbers)
{
    for (const std::int32_t lProcess : {0, 1, 30, 61, 99, 101, -5}) {
        objOptions.lSpecialProcess = lProcess;
        EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.bmp"), -101) << lProcess;
    }
    for (const std::int32_t lProcess : {3, 29, 31, 56, 57, 60}) {
        objOptions.lSpecialProcess = lProcess;
        EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.bmp"), 0) << lProcess;
    }
}

TEST_F(ValidateSpecial, ChecksTheSizeAndMethodOfAResize)
{
    objOptions.lSpecialProcess = 2;
    const auto lErrWith = [&](const std::string& sOwn) {
        objOptions.sExtraParams = "1^0^FALSE^75^^^^^^^^" + sOwn;
        return lErrOf("/p/a.bmp", "/out/a.bmp");
    };
    EXPECT_EQ(lErrWith("-1^10^0^0^FALSE^"), -200);
    EXPECT_EQ(lErrWith("10^-1^7^0^FALSE^"), -200);
    EXPECT_EQ(lErrWith("10^10^3^0^FALSE^"), -201);
    EXPECT_EQ(lErrWith("10^10^-1^0^FALSE^"), -201);
    EXPECT_EQ(lErrWith("10^10^2^0^TRUE^"), 0);
    EXPECT_EQ(lErrWith("0^0^0^0^FALSE^"), 0);
    EXPECT_EQ(lErrWith("wide^high^smooth"), 0);
    objOptions.sExtraParams = "";
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.bmp"), 0);
}

TEST_F(ValidateSpecial, IgnoresTheDetailsOfOtherProcesses)
{
    objOptions.lSpecialProcess = 6;
    objOptions.sExtraParams = "1^0^FALSE^75^^^^^^^^-5^-5^0^";
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.bmp"), 0);
}

TEST_F(ValidateSpecial, RequiresNoFilesForALaunch)
{
    objOptions.lSpecialProcess = 100;
    EXPECT_EQ(lErrOf("", ""), 0);
    EXPECT_EQ(lErrOf("/no/such/program", "--all *.bmp"), 0);
    EXPECT_EQ(lErrOf("/bin/*", ""), -102);
}

TEST_F(ValidateSpecial, RequiresOnlyTheFileOfAJob)
{
    objOptions.sCLBatchJobFile = "/jobs/none.vjb";
    objOptions.lSpecialProcess = 1;
    ValidateRequest(app, objOptions);
    EXPECT_EQ(objOptions.lErr, -8);
}

TEST_F(ValidateSpecial, IsChosenByTheLetterAnywhereInTheAction)
{
    objOptions.sActionToDo = "CS";
    objOptions.lSpecialProcess = 1;
    EXPECT_EQ(lErrOf("/p/a.bmp", "/out/a.bmp"), -101);
}

TEST_F(ValidateConversion, NeverCompletesAnEmptyTarget)
{
    EXPECT_EQ(lErrOf("/p/*.bmp", ""), -9);
    EXPECT_EQ(lErrOf("/p/a.bmp", "  "), -9);
    EXPECT_EQ(objOptions.sTargetFile, "  ");

    objOptions.bSaveInOriginalFolder = true;
    EXPECT_EQ(lErrOf("/p/*.bmp", ""), 0);
}

TEST_F(ValidateConversion, TakesTheWorkingFolderForTheParentOfABareName)
{
    EXPECT_EQ(lErrOf("/p/a.bmp", "a.jpg"), 0);
    EXPECT_EQ(lErrOf("/p/a.bmp", "out/"), 0);
}
