// Running a special process task.
#include "src/engine/modSpecialTask.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "src/base/clsConversionOptions.h"
#include "src/engine/modJobRun.h"
#include "src/job/modJobFiles.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

namespace
{

using Calls = std::vector<std::string>;

class SpecialTask : public testing::Test
{
protected:
    SpecialTask()
    {
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
        app.frmMain.bRunning = true;
        app.files.AddFolder("/in");
        app.files.AddFolder("/out");
        objOptions.sActionToDo = "S24";
        objOptions.lSpecialProcess = 24;
        objOptions.lOriginalFileType = 2;
        objOptions.lTargetFileType = 2;
        objOptions.sExtraParams = "*^0^FALSE^75^^^^^^^^";
    }

    void AddPictures(int lCount)
    {
        for (int l = 1; l <= lCount; ++l)
            app.images.AddImage("/in/" + std::to_string(l) + ".bmp");
    }
    std::int32_t lRun(const std::string& sSource, const std::string& sTarget)
    {
        objOptions.sOriginalFile = sSource;
        objOptions.sTargetFile = sTarget;
        std::int32_t lResult = 12345;
        EXPECT_EQ(PerformBlockSpecialized(app, 1, objOptions, lResult), lResult);
        return lResult;
    }
    std::string sLog(std::int32_t lRow, std::int32_t lCol) const
    {
        return app.frmMain.fgLog.TextMatrix(lRow, lCol);
    }
    void SetUpLaunch()
    {
        objOptions.sActionToDo = "S100";
        objOptions.lSpecialProcess = 100;
        objOptions.sExtraParams = "32^1^-1";
    }

    TestApplication app;
    clsConversionOptions objOptions;
};

}  // namespace

TEST_F(SpecialTask, AppliesItsProcessBetweenLoadAndSave)
{
    AddPictures(1);

    EXPECT_EQ(lRun("/in/1.bmp", "/out/1.bmp"), 0);

    EXPECT_EQ(app.transform.calls, Calls{"Invert"});
    EXPECT_EQ(app.images.PagesOf("/out/1.bmp").size(), 1u);
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(8), "/in/1.bmp");
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(11), "1000.0");
}

TEST_F(SpecialTask, FailsIfTheSourceIsMissing)
{
    EXPECT_EQ(lRun("/in/none.bmp", "/out/1.bmp"), -10000);

    EXPECT_EQ(objOptions.lErr, -10000);
    EXPECT_EQ(sLog(1, 11), "File: /in/none.bmp does not exist");
    EXPECT_TRUE(app.transform.calls.empty());
}

TEST_F(SpecialTask, SucceedsSilentlyForAnEmptyList)
{
    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.bmp"), 0);
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
}

TEST_F(SpecialTask, MirrorsTheTreeBelowTheTargetFolder)
{
    AddPictures(1);
    app.images.AddImage("/in/sub/2.bmp");
    objOptions.bDoSubfolders = true;

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.bmp"), 0);

    EXPECT_TRUE(app.files.FileExists("/out/1.bmp"));
    EXPECT_TRUE(app.files.FileExists("/out/sub/2.bmp"));
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(6), "100.0  Percent Complete ");
}

TEST_F(SpecialTask, FailsForListedFilesThatDoNotLoad)
{
    AddPictures(2);
    app.images.broken.insert("/in/1.bmp");

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.bmp"), -101);

    EXPECT_EQ(sLog(1, 4), "/in/1.bmp");
    EXPECT_TRUE(app.files.FileExists("/out/2.bmp"));
}

TEST_F(SpecialTask, FailsOnlyTheFileThatOverflows)
{
    AddPictures(2);
    objOptions.lSpecialProcess = 16;
    objOptions.sExtraParams += "256^0^0^";

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.bmp"), -103);

    EXPECT_EQ(sLog(1, 11), "Unable to convert: Overflow");
    EXPECT_EQ(sLog(2, 11), "Unable to convert: Overflow");
    EXPECT_FALSE(app.files.FileExists("/out/1.bmp"));
}

TEST_F(SpecialTask, ReportsEveryFileButReturnsTheLastResult)
{
    AddPictures(2);
    app.images.broken.insert("/in/1.bmp");
    app.frmMain.sLogFile = "/out/report.txt";

    EXPECT_EQ(lRun("/in/*.bmp", "/out/*.bmp"), 0);

    EXPECT_EQ(sLog(1, 10), "-");
    EXPECT_EQ(sLog(2, 10), "+");
}

TEST_F(SpecialTask, ResumesOneFileBeforeThePause)
{
    AddPictures(6);
    app.windows.on_do_events = [&] {
        app.frmMain.bRunning = app.files.FileExists("/out/4.bmp") ? false : app.frmMain.bRunning;
    };

    lRun("/in/*.bmp", "/out/*.bmp");
    EXPECT_EQ(app.frmMain.lResumeFileIndex, 4);

    app.windows.on_do_events = nullptr;
    app.images.calls.clear();
    app.frmMain.bRunning = true;
    lRun("/in/*.bmp", "/out/*.bmp");
    EXPECT_EQ(std::count(app.images.calls.begin(), app.images.calls.end(), "LoadImage /in/4.bmp"), 1);
    EXPECT_EQ(std::count(app.images.calls.begin(), app.images.calls.end(), "LoadImage /in/3.bmp"), 0);
}

TEST_F(SpecialTask, ShowsProgressRelativeToTheWholeList)
{
    AddPictures(8);
    app.frmMain.lResumeFileIndex = 3;
    std::vector<std::string> aPercents;
    app.transform.on_apply = [&] { aPercents.push_back(app.frmMainMDI.sbMain.Panel(6)); };

    lRun("/in/*.bmp", "/out/*.bmp");

    EXPECT_EQ(aPercents.front(), "37.5  Percent Complete ");
    EXPECT_EQ(aPercents.back(), "100.0  Percent Complete ");
}

TEST_F(SpecialTask, ReportsSingleFilesButNotListedOnes)
{
    AddPictures(1);
    app.images.broken.insert("/in/1.bmp");
    objOptions.bVerboseLog = true;
    objOptions.sLogFile = "/out/report.txt";

    lRun("/in/*.bmp", "/out/*.bmp");
    EXPECT_FALSE(app.files.FileExists("/out/report.txt"));

    lRun("/in/1.bmp", "/out/1.bmp");
    EXPECT_TRUE(app.files.FileExists("/out/report.txt"));
}

TEST_F(SpecialTask, DeletesTheSourceOnRequestAfterSuccess)
{
    AddPictures(2);
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.images.unwritable.insert("/out/2.bmp");

    lRun("/in/*.bmp", "/out/*.bmp");

    EXPECT_FALSE(app.files.FileExists("/in/1.bmp"));
    EXPECT_TRUE(app.files.FileExists("/in/2.bmp"));
}

TEST_F(SpecialTask, SyncsBeforeItDeletesTheSource)
{
    AddPictures(1);
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.files.fail_syncs = true;

    EXPECT_EQ(lRun("/in/1.bmp", "/out/1.bmp"), -103);

    EXPECT_TRUE(app.files.FileExists("/in/1.bmp"));
}

TEST_F(SpecialTask, NeverDeletesASourceThatEqualsItsTarget)
{
    app.images.AddImage("/in/a.bmp");
    app.files.AddLink("/link", "/in");
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;

    lRun("/in/a.bmp", "/in/A.BMP");
    EXPECT_TRUE(app.files.FileExists("/in/a.bmp"));
    lRun("/in/a.bmp", "/link/a.bmp");
    EXPECT_TRUE(app.files.FileExists("/in/a.bmp"));
}

TEST_F(SpecialTask, RetriesDeletingALockedSource)
{
    AddPictures(1);
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.files.deletes_to_refuse = 2;

    EXPECT_EQ(lRun("/in/1.bmp", "/out/1.bmp"), 0);

    EXPECT_FALSE(app.files.FileExists("/in/1.bmp"));
    EXPECT_FALSE(app.clock.sleeps.empty());
}

TEST_F(SpecialTask, LetsLoadReducePictureForInterpolatedResizeOnly)
{
    using Sizes = std::vector<std::pair<std::int32_t, std::int32_t>>;
    AddPictures(1);
    const auto aSizes = [&](std::int32_t lProcess, const std::string& sDetails) {
        app.images.smallest_sizes.clear();
        objOptions.lSpecialProcess = lProcess;
        objOptions.sExtraParams = "1^0^FALSE^75^^^^^^^^" + sDetails;
        lRun("/in/1.bmp", "/out/1.bmp");
        return app.images.smallest_sizes;
    };
    EXPECT_EQ(aSizes(2, "320^200^2^0^FALSE^"), (Sizes{{640, 400}}));
    EXPECT_EQ(aSizes(2, "320^0^1^0^FALSE^"), (Sizes{{640, 0}}));
    EXPECT_EQ(aSizes(2, "-5^2000000000^1^0^FALSE^"), (Sizes{{0, 65534}}));
    EXPECT_EQ(aSizes(2, "320^200^0^0^FALSE^"), (Sizes{{0, 0}}));
    EXPECT_EQ(aSizes(2, "0^0^2^0^FALSE^"), (Sizes{{0, 0}}));
    EXPECT_EQ(aSizes(24, ""), (Sizes{{0, 0}}));
}

TEST_F(SpecialTask, LoadsAndSavesForProcess57WithoutAnOperation)
{
    AddPictures(1);
    objOptions.lSpecialProcess = 57;

    EXPECT_EQ(lRun("/in/1.bmp", "/out/1.bmp"), 0);

    EXPECT_EQ(app.transform.calls, Calls{});
    EXPECT_TRUE(app.files.FileExists("/out/1.bmp"));
}

TEST_F(SpecialTask, SucceedsWithoutDoingAnythingForUnknownNumbers)
{
    AddPictures(1);
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    for (const std::int32_t lProcess : {30, 61, 99}) {
        objOptions.lSpecialProcess = lProcess;
        EXPECT_EQ(lRun("/in/1.bmp", "/out/1.bmp"), 0);
    }

    EXPECT_TRUE(app.images.calls.empty());
    EXPECT_TRUE(app.files.FileExists("/in/1.bmp"));
}

TEST_F(SpecialTask, LaunchesAProgramAndLogsItsExitCode)
{
    SetUpLaunch();
    app.launcher.exit_code = 3;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.files.AddFile("/bin/tool");

    EXPECT_EQ(lRun("/bin/tool", "-x"), 0);

    EXPECT_EQ(sLog(1, 11), "Exit Code: 3");
    EXPECT_EQ(sLog(1, 10), "+");
    EXPECT_EQ(objOptions.sErr, "Successfully Processed.");
    EXPECT_TRUE(app.files.FileExists("/bin/tool"));
}

TEST_F(SpecialTask, LogsALaunchTwiceIfThereIsAReportFile)
{
    SetUpLaunch();
    app.frmMain.sLogFile = "/out/report.txt";

    lRun("/bin/tool", "-x");

    EXPECT_EQ(sLog(1, 11), "Successfully Processed.");
    EXPECT_EQ(sLog(2, 11), "Exit Code: 0");
}

TEST_F(SpecialTask, LogsAFailedLaunchOnce)
{
    SetUpLaunch();
    app.launcher.can_start = false;

    EXPECT_EQ(lRun("/bin/none", ""), -10);

    EXPECT_EQ(sLog(1, 11), "Unable to launch application.");
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 3);
}

TEST_F(SpecialTask, LogsALaunchThatTimesOut)
{
    SetUpLaunch();
    objOptions.sExtraParams = "32^1^5";
    app.launcher.polls_until_exit = 0;
    app.launcher.on_poll = [&] { app.clock.tick += 6000; };

    EXPECT_EQ(lRun("/bin/tool", ""), -11);

    EXPECT_EQ(sLog(1, 11), "Process did not complete in the specified time (Timeout)");
}

TEST_F(SpecialTask, LaunchesAgainAfterAPause)
{
    app.frmMain.fgToDo.AddItem("\t32^1^-1\t1\tS100\t/bin/tool\t\t\t-x\t\t\t\t", 1);
    app.launcher.polls_until_exit = 0;
    app.launcher.on_poll = [&] { app.frmMain.bRunning = false; };
    app.frmMain.bRunning = false;

    ConversionJobBegin(app);

    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColPass), "");
    EXPECT_EQ(sLog(1, 10), "-");
    EXPECT_EQ(sLog(1, 11), "Process did not complete in the specified time (Timeout)");

    app.launcher.polls_until_exit = 1;
    ConversionJobBegin(app);

    EXPECT_EQ(app.launcher.starts.size(), 2u);
}

TEST(ExitCodeText, IsEmptyForCodesOfOtherTasks)
{
    clsConversionOptions objOptions;
    objOptions.lErr = -103;
    EXPECT_EQ(sExitCodeText(objOptions), "");
}

TEST_F(SpecialTask, LoadsTheNextSliceOfAJob)
{
    app.files.AddFile("/jobs/a.vjb",
                      "M\td\t1\tC\t/in/1.bmp\t2\tbmp\t/out/1.png\t8\tpng\t\t\r\n"
                      "M\td\t2\tC\t/in/2.bmp\t2\tbmp\t/out/2.png\t8\tpng\t\t\r\n");
    objOptions.lSpecialProcess = 1;
    objOptions.lTargetFileType = 2;

    EXPECT_EQ(lRun("Reload conversion job start at task 2", "/jobs/a.vjb"), 0);

    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 3);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColOriginal), "/in/2.bmp");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColNumber), "2");
}

TEST_F(SpecialTask, RunsAJobSliceBySlice)
{
    AddPictures(3);
    std::string sJob;
    for (int l = 1; l <= 3; ++l) {
        const std::string sName = std::to_string(l);
        sJob += "M\t1^0^FALSE^75\t" + sName + "\tC\t/in/" + sName + ".bmp\t2\tbmp\t/out/" + sName +
                ".png\t8\tpng\t\t\r\n";
    }
    app.files.AddFile("/jobs/a.vjb", sJob);
    app.frmMain.fgToDo.AddItem("M\t1^0^FALSE^75\t1\tC\t/in/1.bmp\t2\tbmp\t/out/1.png\t8\tpng\t\t", 1);
    app.frmMain.fgToDo.AddItem(" \t \t2\tS1\tReload conversion job start at task 2\t\t\t/jobs/a.vjb\t2\t\t\t",
                               2);
    app.frmMain.bRunning = false;

    ConversionJobBegin(app);

    for (const char* sTarget : {"/out/1.png", "/out/2.png", "/out/3.png"})
        EXPECT_TRUE(app.files.FileExists(sTarget)) << sTarget;
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColOriginal), "/in/2.bmp");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColPass), "+");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(2, kColPass), "+");
}

TEST_F(SpecialTask, MarksEveryKindOfTaskInAJob)
{
    AddPictures(1);
    app.launcher.exit_code = 7;
    const auto AddRow = [&](const std::string& sDetails, const std::string& sAction,
                            const std::string& sOriginal, const std::string& sTarget) {
        app.frmMain.fgToDo.AddItem(
            "M\t" + sDetails + "\t1\t" + sAction + "\t" + sOriginal + "\t2\tbmp\t" + sTarget + "\t2\tbmp\t\t",
            app.frmMain.fgToDo.Rows() - 1);
    };
    const std::string sPrefix = "1^0^FALSE^75^^^^^^^^";
    AddRow(sPrefix, "C", "/in/1.bmp", "/out/c.bmp");
    AddRow(sPrefix, "S24", "/in/1.bmp", "/out/s.bmp");
    AddRow(sPrefix + "40000^1^0^0^", "S2", "/in/1.bmp", "/out/big.bmp");
    AddRow(sPrefix, "S30", "/in/1.bmp", "/out/gap.bmp");
    AddRow("32^1^-1", "S100", "/bin/tool", "-x");
    AddRow(sPrefix, "S24", "/in/none.bmp", "/out/none.bmp");
    AddRow(sPrefix, "S24", "/in/*.none", "/out/*.bmp");
    app.frmMain.bRunning = false;

    ConversionJobBegin(app);

    std::string sMarks;
    for (std::int32_t l = 1; l < app.frmMain.fgToDo.Rows() - 1; ++l)
        sMarks += app.frmMain.fgToDo.TextMatrix(l, kColPass);
    EXPECT_EQ(sMarks, "++-++-+");
    std::string sLogged;
    for (std::int32_t l = 1; l < app.frmMain.fgLog.Rows() - 1; ++l)
        sLogged += sLog(l, 10) + sLog(l, 2) + " " + sLog(l, 11) + "\n";
    EXPECT_EQ(sLogged,
              "-3 Unable to convert: Overflow\n+5 Exit Code: 7\n-6 File: /in/none.bmp does not exist\n");
}

TEST_F(SpecialTask, IsChosenByTheLetterSUnlessThereIsAC)
{
    AddPictures(1);
    objOptions.sOriginalFile = "/in/1.bmp";
    objOptions.sTargetFile = "/out/1.bmp";
    std::int32_t lErr = 12345;

    PerformBlock(app, 1, objOptions, lErr);
    EXPECT_EQ(lErr, 0);
    EXPECT_EQ(app.transform.calls.size(), 1u);

    app.transform.calls.clear();
    objOptions.sActionToDo = "CS";
    PerformBlock(app, 1, objOptions, lErr);
    EXPECT_TRUE(app.transform.calls.empty());
}
