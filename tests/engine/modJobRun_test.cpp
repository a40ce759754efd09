// Running, pausing and rewinding a job.
#include "src/engine/modJobRun.h"

#include <gtest/gtest.h>

#include <new>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "src/commands/modRunState.h"
#include "src/dispatch/modDispatcher.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

namespace
{

class JobRun : public testing::Test
{
protected:
    JobRun()
    {
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
        app.files.AddFolder("/in");
        app.files.AddFolder("/out");
    }

    // Adds a task that converts /in/NAME.bmp to /out/NAME.png.
    void AddTask(const std::string& sName, bool bWithImage = true)
    {
        if (bWithImage)
            app.images.AddImage("/in/" + sName + ".bmp");
        clsConversionOptions objOptions;
        objOptions.sExtraParams = "*^0^FALSE^75";
        objOptions.sOriginalFile = "/in/" + sName + ".bmp";
        objOptions.lOriginalFileType = 2;
        objOptions.sTargetFile = "/out/" + sName + ".png";
        objOptions.lTargetFileType = 8;
        AddTaskRow(app, objOptions);
    }
    std::string sMark(std::int32_t lRow) const { return app.frmMain.fgToDo.TextMatrix(lRow, 10); }
    void ExpectIdle() const
    {
        EXPECT_FALSE(app.frmMain.bRunning);
        EXPECT_FALSE(bRunInProgress(app));
        EXPECT_FALSE(app.bInternalGridChange);
        EXPECT_FALSE(app.frmMainMDI.Hourglass());
        EXPECT_EQ(app.frmMainMDI.sbMain.Panel(3), "-");
        EXPECT_FALSE(app.frmMain.keyPause.Enabled());
        EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
    }

    TestApplication app;
};

}  // namespace

TEST_F(JobRun, MarksEachTaskAndCarriesOnAfterAFailure)
{
    AddTask("a");
    AddTask("missing", false);
    AddTask("c");

    ConversionJobBegin(app);

    EXPECT_EQ(sMark(1), "+");
    EXPECT_EQ(sMark(2), "-");
    EXPECT_EQ(sMark(3), "+");
    EXPECT_EQ(sMark(4), "");
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 11), "File: /in/missing.bmp does not exist");
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(3), "-");
}

TEST_F(JobRun, SyncsItsSavesAtItsEnd)
{
    AddTask("a");
    app.windows.on_do_events = [&] { EXPECT_EQ(app.files.syncs, 0); };

    ConversionJobBegin(app);

    EXPECT_GE(app.files.syncs, 1);
}

TEST_F(JobRun, SyncsItsSavesAfterAnErrorToo)
{
    AddTask("a");
    app.windows.on_do_events = [] { throw clsRaisedError(kErrOverflow, "Overflow"); };

    EXPECT_THROW(ConversionJobBegin(app), clsRaisedError);

    EXPECT_EQ(app.files.syncs, 1);
}

TEST_F(JobRun, RaisesAnErrorIfTheDiskDoesNotConfirmItsSaves)
{
    AddTask("a");
    app.files.fail_syncs = true;

    try {
        ConversionJobBegin(app);
        FAIL();
    } catch (const clsRaisedError& objError) {
        EXPECT_EQ(objError.lNumber(), kErrPathFileAccess);
        EXPECT_TRUE(objError.sDescription().starts_with("Path/File access error: "));
    }
    EXPECT_EQ(sMark(1), "+");
}

TEST_F(JobRun, ReapsLaunchedProgramsPerTaskAndAtItsEnd)
{
    AddTask("1");
    AddTask("2");

    ConversionJobBegin(app);

    EXPECT_EQ(app.launcher.collect_calls, 3);
}

TEST_F(JobRun, CountsItsTasksInTheStatusBar)
{
    AddTask("a");
    AddTask("b");
    app.frmMain.fgToDo.SetTextMatrix(1, 10, "+");
    std::string sCount;
    app.windows.on_do_events = [&] { sCount = app.frmMainMDI.sbMain.Panel(3); };

    ConversionJobBegin(app);

    EXPECT_EQ(sCount, "1");
}

TEST_F(JobRun, StartsAtTheFirstUnmarkedRow)
{
    AddTask("a");
    AddTask("b");
    app.frmMain.fgToDo.SetTextMatrix(1, 10, "-");

    ConversionJobBegin(app);

    EXPECT_EQ(sMark(1), "-");
    EXPECT_FALSE(app.files.Has("/out/a.png"));
    EXPECT_TRUE(app.files.Has("/out/b.png"));
}

TEST_F(JobRun, ShowsANoticeIfAllRowsAreMarked)
{
    AddTask("a");
    app.frmMain.fgToDo.SetTextMatrix(1, 10, "+");

    ConversionJobBegin(app);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].title, "Information");
    EXPECT_EQ(app.windows.boxes[0].text,
              "Please click the ADD (+) button first, then click Convert. Or click "
              "REWIND, then click CONVERT");
    EXPECT_FALSE(app.frmMain.bRunning);
}

TEST_F(JobRun, ShowsNoNoticeInCommandLineMode)
{
    AddTask("a");
    app.frmMain.fgToDo.SetTextMatrix(1, 10, "+");
    app.bCommandLineMode = true;

    ConversionJobBegin(app);

    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(JobRun, AsksForATaskIfTheVisibleTableIsEmpty)
{
    app.frmMain.SetVisible(true);

    ConversionJobBegin(app);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Please click the ADD (+) button first, then click Convert");
    EXPECT_EQ(app.windows.boxes[0].title, "Information");
}

TEST_F(JobRun, ClearsTheLogWhenItStarts)
{
    AddTask("a");
    app.frmMain.fgLog.AddItem("old", 1);

    ConversionJobBegin(app);

    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
}

TEST_F(JobRun, ResumesWithThePausedTask)
{
    AddTask("a");
    AddTask("b");
    app.windows.on_do_events = [&] {
        if (app.files.Has("/out/a.png") && app.frmMain.keyPause.Enabled())
            ConversionJobPause(app);
    };

    ConversionJobBegin(app);
    EXPECT_EQ(sMark(1), "+");
    EXPECT_EQ(sMark(2), "");
    EXPECT_FALSE(app.frmMain.bRunning);

    app.windows.on_do_events = nullptr;
    ConversionJobBegin(app);
    EXPECT_EQ(sMark(2), "+");
}

TEST_F(JobRun, IgnoresPauseWhileTheCommandIsDisabled)
{
    AddTask("a");
    app.frmMain.keyPause.SetEnabled(false);
    app.frmMain.bRunning = true;

    ConversionJobPause(app);

    EXPECT_TRUE(app.frmMain.bRunning);
}

TEST_F(JobRun, ClearsMarksLogAndPositionOnRewind)
{
    AddTask("a");
    AddTask("missing", false);
    ConversionJobBegin(app);
    app.frmMain.lResumeFileIndex = 4;

    ConversionJobRewind(app);

    EXPECT_EQ(sMark(1), "");
    EXPECT_EQ(sMark(2), "");
    EXPECT_EQ(app.frmMain.fgToDo.Format(1, 10).ePicture, CellPicture::None);
    EXPECT_EQ(app.frmMain.lResumeFileIndex, 0);
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_EQ(app.frmMain.fgToDo.Row(), 1);
    EXPECT_EQ(app.frmMain.fgToDo.TopRow(), 1);
}

TEST_F(JobRun, KeepsThePreviousRowsTypesForEmptyCells)
{
    AddTask("a");
    AddTask("b");
    app.frmMain.fgToDo.SetTextMatrix(2, 8, "");
    app.frmMain.fgToDo.SetTextMatrix(1, 8, "2");

    ConversionJobBegin(app);

    EXPECT_EQ(app.images.calls.back(), "SaveBMP /out/b.png");
}

TEST_F(JobRun, TreatsAnActionWithBothLettersAsAConversion)
{
    AddTask("a");
    clsConversionOptions objOptions;
    objOptions.sActionToDo = "CS";
    objOptions.sOriginalFile = "/in/a.bmp";
    objOptions.sTargetFile = "/out/a.png";
    objOptions.lTargetFileType = 8;
    std::int32_t lErr = -1;

    PerformBlock(app, 1, objOptions, lErr);

    EXPECT_EQ(lErr, 0);
    EXPECT_TRUE(app.files.Has("/out/a.png"));
}

TEST_F(JobRun, MarksATaskWithNeitherLetterAsPassed)
{
    AddTask("a");
    app.frmMain.fgToDo.SetTextMatrix(1, 3, "X");

    ConversionJobBegin(app);

    EXPECT_EQ(sMark(1), "+");
    EXPECT_TRUE(app.images.calls.empty());
}

TEST_F(JobRun, AsksBeforeDiscardingAnEditedTask)
{
    AddTask("a");
    app.frmMain.fgToDo.SetRow(1);
    app.frmMain.bDirtyConversionItem = true;
    app.windows.answers = {BoxAnswer::Cancel};

    ConversionJobBegin(app);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].title, "Update Conversion Item");
    EXPECT_EQ(app.windows.boxes[0].text,
              "You've changed the current conversion item #1\r\rDo you want to update your changes?");
    EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::YesNoCancel);
    EXPECT_TRUE(app.frmMain.bDirtyConversionItem);
    EXPECT_EQ(sMark(1), "");
}

TEST_F(JobRun, UpdatesOrDiscardsAnEditedTaskAsAnswered)
{
    AddTask("a");
    app.frmMain.fgToDo.SetRow(1);
    app.frmMain.bDirtyConversionItem = true;
    app.windows.answers = {BoxAnswer::Yes, BoxAnswer::No};
    int lUpdates = 0;
    JobRunHooks objHooks;
    objHooks.ConversionJobUpdate = [&](Application&) {
        ++lUpdates;
        return false;
    };

    bool bGoOn = true;
    bCheckToUpdateDirtyConversionItem(app, objHooks, bGoOn);
    EXPECT_FALSE(bGoOn);
    EXPECT_EQ(lUpdates, 1);

    bCheckToUpdateDirtyConversionItem(app, objHooks, bGoOn);
    EXPECT_TRUE(bGoOn);
    EXPECT_FALSE(app.frmMain.bDirtyConversionItem);
}

TEST_F(JobRun, AsksNothingWhileTheSchedulerIsOn)
{
    AddTask("a");
    app.frmMain.fgToDo.SetRow(1);
    app.frmMain.bDirtyConversionItem = true;
    app.frmScheduler.Timer1.SetEnabled(true);
    bool bGoOn = false;

    bCheckToUpdateDirtyConversionItem(app, {}, bGoOn);

    EXPECT_TRUE(bGoOn);
    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(app.frmMain.bDirtyConversionItem);
}

TEST_F(JobRun, FailsAReloadThatLoadsItself)
{
    app.files.AddFile("/j.vjb", " \t \t1\tS1\tReload\t0\t\t/j.vjb\t1\t\t\t\r\n");
    app.frmMain.fgToDo.AddItem(" \t \t1\tS1\tReload\t0\t\t/j.vjb\t1", 1);

    ConversionJobBegin(app);

    EXPECT_EQ(sMark(1), "-");
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 11), "Unable to load the rest of the job.");
}

TEST_F(JobRun, FailsAReloadOfAMissingFileAndCarriesOn)
{
    app.frmMain.fgToDo.AddItem(" \t \t1\tS1\tReload\t0\t\t/gone.vjb\t1", 1);
    AddTask("a");

    ConversionJobBegin(app);

    EXPECT_EQ(sMark(1), "-");
    EXPECT_EQ(sMark(2), "+");
}

TEST_F(JobRun, PutsItsStateBackWhenATaskRaises)
{
    AddTask("a");
    app.frmMain.fgToDo.SetTextMatrix(1, 5, "no number");

    EXPECT_THROW(ConversionJobBegin(app), clsRaisedError);

    ExpectIdle();
    EXPECT_EQ(sMark(1), "");
}

TEST_F(JobRun, PutsItsStateBackWhateverRaisesWhileEventsAreLetIn)
{
    for (int lRaiseAt = 1; lRaiseAt <= 8; ++lRaiseAt) {
        AddTask(std::to_string(lRaiseAt));
        clsConversionOptions objWildcard;
        objWildcard.sOriginalFile = "/in/*.bmp";
        objWildcard.sTargetFile = "/out/*.png";
        objWildcard.lTargetFileType = 8;
        AddTaskRow(app, objWildcard);
        int lEvents = 0;
        app.windows.on_do_events = [&] {
            if (++lEvents == lRaiseAt)
                throw std::bad_alloc();
        };

        EXPECT_THROW(ConversionJobBegin(app), std::bad_alloc) << lRaiseAt;

        app.windows.on_do_events = nullptr;
        ExpectIdle();
        ConversionJobRewind(app);
    }
}

TEST_F(JobRun, BeginsNoMoreOnceClosingWasAskedFor)
{
    AddTask("a");
    int lCloses = 0;

    Dispatch(app, Act::Ordinary, [&] {
        CloseWhenIdle(app, [&](Application&) { ++lCloses; });
        ConversionJobBegin(app);
    });

    EXPECT_EQ(sMark(1), "");
    EXPECT_EQ(lCloses, 1);
}

TEST_F(JobRun, OffersNothingWhileAPausedRunFinishesItsFile)
{
    AddTask("a");
    AddTask("b");
    bool bConvertWhilePaused = true, bPauseWhilePaused = true;
    app.windows.on_do_events = [&] {
        ConversionJobPause(app);
        bConvertWhilePaused = app.frmMain.keyConvert.Enabled();
        bPauseWhilePaused = app.frmMain.keyPause.Enabled();
    };

    ConversionJobBegin(app);

    EXPECT_FALSE(bConvertWhilePaused);
    EXPECT_FALSE(bPauseWhilePaused);
    EXPECT_TRUE(app.frmMain.keyConvert.Enabled());
}

TEST_F(JobRun, EndsWhenItIsPausedWhileTheNextSliceLoads)
{
    std::string sJob;
    for (int l = 1; l <= 2500; ++l)
        sJob += "\t\t" + std::to_string(l) + "\tX\t\t\t\t\t\t\t\t\r\n";
    app.files.AddFile("/j.vjb", sJob);
    app.frmMain.fgToDo.AddItem(" \t \t1\tS1\tReload\t0\t\t/j.vjb\t1", 1);
    app.windows.on_do_events = [&] {
        if (app.frmMainMDI.sbMain.Panel(2) == "Loading Conversion Task: 1000")
            ConversionJobPause(app);
    };

    ConversionJobBegin(app);

    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 1003);
    EXPECT_EQ(sMark(1), "");
    EXPECT_EQ(sMark(1001), "");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1001, 3), "S1");
    ExpectIdle();

    // The next start runs the part that was loaded and then loads the rest.
    app.windows.on_do_events = nullptr;
    ConversionJobBegin(app);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, 2), "1001");
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 1502);
    EXPECT_EQ(sMark(1500), "+");
}

TEST_F(JobRun, FailsAReloadThatAnotherPathLeadsToAgain)
{
    app.files.AddFile("/real/j.vjb", " \t \t1\tS1\tReload\t0\t\t/link/j.vjb\t1\t\t\t\r\n");
    app.files.AddLink("/link", "/real");
    app.frmMain.fgToDo.AddItem(" \t \t1\tS1\tReload\t0\t\t/real/j.vjb\t1", 1);

    ConversionJobBegin(app);

    EXPECT_EQ(sMark(1), "-");
    EXPECT_EQ(app.frmMain.fgLog.TextMatrix(1, 11), "Unable to load the rest of the job.");
}

TEST(FindStartPoint, ReturnsOnePastTheLastTaskIfAllAreMarked)
{
    TestApplication app;
    SetUpToDoGrid(app);
    app.frmMain.fgToDo.AddItem("\t\t1\tC\t\t\t\t\t\t\t+", 1);
    std::int32_t lRow = 0;

    FindStartPoint(app, app.frmMain.fgToDo, lRow);

    EXPECT_EQ(lRow, 2);
    EXPECT_FALSE(app.bInternalGridChange);
}

namespace
{

/// A run that is stopped while the image library works on its second file.
class StoppedRun : public JobRun
{
protected:
    void RunAndStopAt(const std::string& sCall)
    {
        app.images.on_call = [this, sCall] {
            if (app.images.calls.back() == sCall)
                StopRun(app);
        };
        Dispatch(app, Act::Ordinary, [this] { ConversionJobBegin(app); });
    }
};

}  // namespace

TEST_F(StoppedRun, LeavesTheFileInWorkUnmadeAndUnmarked)
{
    AddTask("a");
    AddTask("b");
    AddTask("c");

    RunAndStopAt("LoadImage /in/b.bmp");

    EXPECT_EQ(sMark(1), "+");
    EXPECT_EQ(sMark(2), "");
    EXPECT_TRUE(app.files.Has("/out/a.png"));
    EXPECT_FALSE(app.files.Has("/out/b.png"));
    EXPECT_FALSE(app.files.Has("/out/c.png"));
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_TRUE(app.windows.boxes.empty());
    ExpectIdle();
}

TEST_F(StoppedRun, TakesAnAbandonedLoadOrSaveForNoFailure)
{
    for (const char* sCall : {"LoadImage /in/a.bmp", "SavePNG /out/a.png"}) {
        SetUpToDoGrid(app);
        AddTask("a");
        app.frmMain.bDeleteOriginalFileAfterProcessing = true;
        app.images.broken = {"/in/a.bmp"};
        app.images.unwritable = {"/out/a.png"};
        if (std::string(sCall).starts_with("Save"))
            app.images.broken.clear();

        RunAndStopAt(sCall);

        EXPECT_EQ(app.images.calls.back(), sCall);
        EXPECT_EQ(sMark(1), "");
        EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
        EXPECT_TRUE(app.files.Has("/in/a.bmp"));
    }
}

TEST_F(StoppedRun, LetsGoOfAMultiPageFile)
{
    app.images.AddImage("/in/m.tif", {1, 2, 3});
    app.images.AddImage("/out/m.tif", {9});
    clsConversionOptions objOptions;
    objOptions.sExtraParams = "*^0^TRUE^75";
    objOptions.sOriginalFile = "/in/m.tif";
    objOptions.lOriginalFileType = 3;
    objOptions.sTargetFile = "/out/m.tif";
    objOptions.lTargetFileType = 3;
    AddTaskRow(app, objOptions);

    RunAndStopAt("LoadFrame /in/m.tif 1");

    EXPECT_EQ(app.images.calls.back(), "MultiFrameSave False");
    EXPECT_EQ(app.images.PagesOf("/out/m.tif"), std::vector<std::uint8_t>{9});
}

TEST_F(StoppedRun, KeepsWhatASpecialProcessHadFinished)
{
    app.images.AddImage("/in/1.bmp");
    app.images.AddImage("/in/2.bmp");
    clsConversionOptions objOptions;
    objOptions.sActionToDo = "S24";
    objOptions.lSpecialProcess = 24;
    objOptions.sOriginalFile = "/in/*.bmp";
    objOptions.lOriginalFileType = 2;
    objOptions.sTargetFile = "/out/*.bmp";
    objOptions.lTargetFileType = 2;
    AddTaskRow(app, objOptions);

    RunAndStopAt("SaveBMP /out/1.bmp");

    EXPECT_TRUE(app.files.Has("/out/1.bmp"));
    EXPECT_FALSE(app.files.Has("/out/2.bmp"));
    EXPECT_EQ(sMark(1), "");
    ExpectIdle();
}
