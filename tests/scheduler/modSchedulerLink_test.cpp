// What the main form does with the scheduler.
#include "src/scheduler/modSchedulerLink.h"

#include <algorithm>

#include "src/job/modTaskTables.h"
#include "tests/scheduler/support/schedules.h"

namespace
{

class ScheduledJob : public Schedules
{
protected:
    ScheduledJob()
    {
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
        app.files.AddFolder("/in");
        app.files.AddFolder("/out");
    }
    // A job file of one task that converts /in/NAME.bmp to /out/NAME.png.
    void AddJob(const std::string& sJobFile, const std::string& sName)
    {
        app.images.AddImage("/in/" + sName + ".bmp");
        app.files.AddFile(sJobFile, "R M\t*^0^FALSE^75\t1\tC\t/in/" + sName + ".bmp\t2\tbmp\t/out/" + sName +
                                        ".png\t8\tpng\t-\t\r\n\t\t*\t\t\t\t\t\t\t\t\t\r\n");
    }
    std::string sCell(std::int32_t lRow, std::int32_t lCol) const
    {
        return app.frmMain.fgToDo.TextMatrix(lRow, lCol);
    }
    std::string sCaptionOf(std::int32_t lDays, std::int32_t lHours, std::int32_t lMinutes,
                           std::int32_t lSeconds)
    {
        frmSched_DisplayTimeRemainingEvent(app, lDays, lHours, lMinutes, lSeconds);
        return app.frmMainMDI.Caption();
    }
};

}  // namespace

TEST_F(ScheduledJob, RunsThroughTheRunLoop)
{
    AddJob(kJobFile, "a");
    LinkScheduler(app);
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 9, 10));

    EXPECT_TRUE(app.files.Has("/out/a.png"));
    EXPECT_EQ(sCell(1, 10), "+") << "the mark of the file was cleared and set anew";
    EXPECT_EQ(app.frmMain.sCurrentJobFile, kJobFile);
    EXPECT_EQ(app.frmMain.Caption(), kJobFile);
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_EQ(sTarget(), "3/18/2027 9:00:00 AM");
}

TEST_F(ScheduledJob, AsksNothingAboutUnsavedEdits)
{
    AddJob(kJobFile, "a");
    LinkScheduler(app);
    app.frmMain.bDirtyConversionItem = true;
    SetInterval("0", "0", "10");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 8, 0, 10));

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(app.frmMain.bDirtyConversionItem);
    EXPECT_TRUE(app.files.Has("/out/a.png"));
}

TEST_F(ScheduledJob, IsTickedByNothingDuringItsRun)
{
    AddJob(kJobFile, "a");
    LinkScheduler(app);
    SetInterval("0", "0", "1");
    Begin();
    int nTicks = 0;
    app.windows.on_do_events = [&] {
        ++nTicks;
        SetClock(dtAddSeconds(dtNow(), 5));
        Tick();
    };

    SetClock(dtOf(2027, 3, 17, 8, 0, 1));
    Tick();

    EXPECT_GT(nTicks, 0);
    EXPECT_EQ(sTarget(), "8:00:02 AM");
    EXPECT_EQ(std::count(app.images.calls.begin(), app.images.calls.end(), "SavePNG /out/a.png"), 1);
}

TEST_F(ScheduledJob, ThatHasVanishedLeavesTheScheduleGoing)
{
    AddJob(kJobFile, "a");
    LinkScheduler(app);
    SetInterval("0", "0", "10");
    Begin();
    app.files.DeleteFile(kJobFile);

    RunUntil(dtOf(2027, 3, 17, 8, 0, 25));

    EXPECT_TRUE(bTimerOn());
    EXPECT_EQ(sTarget(), "8:00:30 AM");
}

TEST_F(ScheduledJob, ThatFailsLeavesTheScheduleGoing)
{
    AddJob(kJobFile, "a");
    app.files.DeleteFile("/in/a.bmp");
    LinkScheduler(app);
    SetInterval("0", "0", "10");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 8, 0, 15));

    EXPECT_EQ(sCell(1, 10), "-");
    EXPECT_TRUE(bTimerOn());
    EXPECT_EQ(sTarget(), "8:00:20 AM");
}

TEST_F(ScheduledJob, ShowsTheTimeUntilItsRun)
{
    EXPECT_EQ(sCaptionOf(1, 2, 3, 4), "Time Remaining: 1 days : 2 hours : 3 minutes : 4 seconds");
    EXPECT_EQ(sCaptionOf(0, 2, 0, 4), "Time Remaining: 2 hours : 4 seconds");
    EXPECT_EQ(sCaptionOf(0, 0, 3, 0), "Time Remaining: 3 minutes : 0 seconds");
    EXPECT_EQ(sCaptionOf(0, 0, 0, 1), "Time Remaining: 1 seconds");
    EXPECT_EQ(sCaptionOf(2, 0, 0, 0), "Time Remaining: 2 days : 0 seconds");
    EXPECT_EQ(sCaptionOf(0, 0, 0, 0), "Job is Running");
}

// Intentional: these texts aren't translated.
TEST_F(ScheduledJob, ShowsTheCountdownUntranslated)
{
    app.objTranslator.dictTranslations["Job is Running"] = "Auftrag";
    app.objTranslator.dictTranslations["Time Remaining: "] = "Rest: ";

    EXPECT_EQ(sCaptionOf(0, 0, 0, 0), "Job is Running");
    EXPECT_EQ(sCaptionOf(0, 0, 0, 5), "Time Remaining: 5 seconds");
}

TEST_F(ScheduledJob, CountsDownInTheFramesCaption)
{
    AddJob(kJobFile, "a");
    LinkScheduler(app);
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 8, 0, 1));
    EXPECT_EQ(app.frmMainMDI.Caption(), "Time Remaining: 59 minutes : 59 seconds");
    RunUntil(dtOf(2027, 3, 17, 8, 59, 59));
    EXPECT_EQ(app.frmMainMDI.Caption(), "Time Remaining: 1 seconds");
    RunUntil(dtOf(2027, 3, 17, 9));
    EXPECT_EQ(app.frmMainMDI.Caption(), "Job is Running") << "the last caption before the job";
    RunUntil(dtOf(2027, 3, 17, 9, 0, 1));
    EXPECT_EQ(app.frmMainMDI.Caption(), "Time Remaining: 23 hours : 59 minutes : 59 seconds");
}

TEST_F(ScheduledJob, LeavesTheLastCountdownAtTheEnd)
{
    LinkScheduler(app);
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();
    RunUntil(dtOf(2027, 3, 17, 8, 30));

    StopTimer(app);
    RunUntil(dtOf(2027, 3, 17, 8, 40));

    EXPECT_EQ(app.frmMainMDI.Caption(), "Time Remaining: 30 minutes : 0 seconds");
}

TEST_F(ScheduledJob, BeginsWithTheProgramIfAskedTo)
{
    app.ini.Set("frmScheduler", "optTimeBased", "True");
    app.ini.Set("frmScheduler", "optCalendarBased", "False");
    app.ini.Set("frmScheduler", "txtMinutes", "5");
    app.ini.Set("frmScheduler", "chkPersistRunning", "1");
    frmScheduler_Unload(app);
    app.frmScheduler.bPersistRunning = true;

    LinkScheduler(app);

    EXPECT_TRUE(bTimerOn());
    EXPECT_EQ(sTarget(), "8:05:00 AM");
    EXPECT_EQ(frm.sRunJobFile, kJobFile);
    EXPECT_FALSE(frm.Visible());
    EXPECT_TRUE(app.windows.modal_forms.empty());
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ScheduledJob, DoesNotBeginWithTheProgramUnasked)
{
    LinkScheduler(app);

    EXPECT_FALSE(bTimerOn());
    EXPECT_EQ(frm.cbScheduledJobFile.Text(), kJobFile);
}

TEST_F(ScheduledJob, SaysWhyItCannotBeginWithTheProgram)
{
    app.files.DeleteFile(kJobFile);
    app.frmScheduler.bPersistRunning = true;

    LinkScheduler(app);

    EXPECT_FALSE(bTimerOn());
    EXPECT_EQ(aMessages(), Texts{"Job file does not exist"});
}

TEST_F(ScheduledJob, LetsTheProgramStartEvenIfItCannotBegin)
{
    SetMonthly("31st", "1");
    app.frmScheduler.bPersistRunning = true;

    LinkScheduler(app);

    EXPECT_FALSE(bTimerOn());
    EXPECT_EQ(aMessages().back(), "Type mismatch");
    EXPECT_EQ(app.windows.boxes.back().title, "Error");
}

TEST_F(ScheduledJob, IsScheduledInAModalForm)
{
    LinkScheduler(app);
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/newer.vjb");
    std::string sShown;
    app.windows.on_show_modal = [&](Form&) {
        sShown = frm.cbScheduledJobFile.Text();
        app.frmMain.bRunning = true;
    };
    app.frmMain.keyPause.SetEnabled(false);

    app.frmMainMDI.mnuScheduleConversionJob.Click();

    EXPECT_EQ(app.windows.modal_forms, std::vector<Form*>{&frm});
    EXPECT_EQ(sShown, "/jobs/newer.vjb");
    EXPECT_TRUE(app.frmMain.keyPause.Enabled()) << "the toolbar is updated afterwards";
}
