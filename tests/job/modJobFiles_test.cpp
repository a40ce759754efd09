// Saving and opening job files.
#include "src/job/modJobFiles.h"

#include <algorithm>

#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "tests/job/support/job_files.h"

using WriteJob = JobFiles;

TEST_F(WriteJob, WritesOnlyTheMarkerLineForAnEmptyJob)
{
    WriteJobFile(app, "/jobs/a.vjb", fgToDo);
    EXPECT_EQ(app.files.Content("/jobs/a.vjb"), kMarkerLine);
}

TEST_F(WriteJob, WritesATabAfterEachOfElevenCells)
{
    Load(sTaskLine(1) + sTaskLine(2, "+"));
    WriteJobFile(app, "/jobs/b.vjb", fgToDo);
    EXPECT_EQ(app.files.Content("/jobs/b.vjb"), sTaskLine(1) + sTaskLine(2, "+") + kMarkerLine);
}

TEST_F(WriteJob, RaisesAnErrorIfTheFileCannotBeWritten)
{
    app.files.AddFile("/cd/a.vjb", "old");
    app.files.MakeReadOnly("/cd");
    EXPECT_THROW(WriteJobFile(app, "/cd/a.vjb", fgToDo), clsRaisedError);
    EXPECT_EQ(app.files.Content("/cd/a.vjb"), "old");
}

using OpenJob = JobFiles;

TEST_F(OpenJob, RestoresPassMarks)
{
    app.files.AddFile("/jobs/a.vjb", sTaskLine(1, "+") + sTaskLine(2, "-") + sTaskLine(3, "?") + kMarkerLine);
    app.frmMain.fgLog.SetRows(7);
    std::string sPath = "/jobs/a.vjb";
    bool bUsersMove = false;
    fgToDo.OnEnterCell = [&] { bUsersMove = !app.bInternalGridChange; };

    ConversionJobOpen(app, sPath);

    EXPECT_EQ(fgToDo.Format(1, kColPass).ePicture, CellPicture::imagePass);
    EXPECT_EQ(fgToDo.Format(2, kColPass).ePicture, CellPicture::imageFail);
    EXPECT_EQ(fgToDo.Format(3, kColPass), CellFormat{});
    EXPECT_EQ(fgToDo.TextMatrix(3, kColPass), "?");
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/a.vjb");
    EXPECT_EQ(app.frmMain.Caption(), "/jobs/a.vjb");
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_EQ(fgToDo.Row(), 1);
    EXPECT_TRUE(bUsersMove);
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_TRUE(app.frmMain.keyConvert.Enabled());
    EXPECT_TRUE(app.frmMain.keyRewind.Enabled());
}

TEST_F(OpenJob, AsksForAFileIfNoneIsGiven)
{
    app.files.AddFile("/jobs/b.vjb", sJobOf(2));
    app.windows.picks = {"/jobs/b.vjb"};
    std::string sPath;

    ConversionJobOpen(app, sPath);

    EXPECT_EQ(sPath, "/jobs/b.vjb");
    EXPECT_EQ(lTasks(), 2);
    EXPECT_EQ(app.windows.pickers, std::vector<std::string>{"Open Conversion Job|Tarnis (*.VJB)|*.VJB"});
}

TEST_F(OpenJob, ClearsTheJobsNameIfCancelled)
{
    Load(sJobOf(2));
    app.frmMain.sCurrentJobFile = "/jobs/a.vjb";
    app.frmMain.SetCaption("/jobs/a.vjb");
    std::string sPath;

    ConversionJobOpen(app, sPath);

    EXPECT_EQ(lTasks(), 2);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "");
    EXPECT_EQ(app.frmMain.Caption(), "/jobs/a.vjb");
}

TEST_F(OpenJob, TakesAMissingFilesNameButClearsNothing)
{
    Load(sJobOf(2));
    app.frmMain.fgLog.SetRows(5);
    std::string sPath = "/jobs/none.vjb";

    ConversionJobOpen(app, sPath);

    EXPECT_EQ(lTasks(), 2);
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 5);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/none.vjb");
    EXPECT_EQ(app.frmMain.Caption(), "/jobs/none.vjb");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(OpenJob, OpensALogThatWasSavedAsAJob)
{
    Grid& fgLog = app.frmMain.fgLog;
    fgLog.AddItem("RM\t1^0\t4\tC\t/in/a.bmp\t2\tbmp\t/out/a.jpg\t1\tjpg\t-\tUnable to convert", 1);
    WriteLogAsJobFile(app, "/jobs/log.vjb", fgLog);
    EXPECT_EQ(app.files.Content("/jobs/log.vjb"), "RM\t1\t4\tC\t/in/a.bmp\t2\tbmp\t/out/a.jpg\t\r\n");

    std::string sPath = "/jobs/log.vjb";
    ConversionJobOpen(app, sPath);

    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(sTabbedRow(fgToDo, 1), "RM\t1\t1\tC\t/in/a.bmp\t2\tbmp\t/out/a.jpg\t\t\t\t");
}

TEST_F(JobFiles, OmitTheLogsEmptyRowUpToRowNine)
{
    Grid& fgLog = app.frmMain.fgLog;
    WriteLogAsJobFile(app, "/jobs/log.vjb", fgLog);
    EXPECT_EQ(app.files.Content("/jobs/log.vjb"), "");

    for (int i = 0; i < 9; ++i)
        fgLog.AddItem("\t\t\tC\tx", 1);
    WriteLogAsJobFile(app, "/jobs/log.vjb", fgLog);
    EXPECT_TRUE(
        app.files.Content("/jobs/log.vjb").ends_with("\t9\t\tC\tx\t\t\t\t\r\n\t10\t\t\t\t\t\t\t\r\n"));
}

using SaveJob = JobFiles;

TEST_F(SaveJob, WritesToTheJobsFile)
{
    Load(sJobOf(2));
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    ConversionJobSave(app);
    EXPECT_EQ(app.files.Content("/jobs/c.vjb"), sJobOf(2));
    EXPECT_TRUE(app.windows.pickers.empty());
}

TEST_F(SaveJob, AsksForAFileIfTheJobHasNone)
{
    for (const char* sCurrent : {"", "*"}) {
        app.frmMain.sCurrentJobFile = sCurrent;
        app.windows.pickers.clear();
        app.windows.picks = {"/jobs/d.vjb"};
        ConversionJobSave(app);
        EXPECT_EQ(app.windows.pickers, std::vector<std::string>{"Save|Varnel (*.VJB)|*.VJB"});
        EXPECT_EQ(app.files.Content("/jobs/d.vjb"), kMarkerLine);
        EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/d.vjb");
        EXPECT_EQ(app.frmMain.Caption(), "/jobs/d.vjb");
    }
}

TEST_F(SaveJob, ChangesNothingIfCancelled)
{
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    app.frmMain.SetCaption("/jobs/c.vjb");
    ConversionJobSaveAs(app);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/c.vjb");
    EXPECT_EQ(app.frmMain.Caption(), "/jobs/c.vjb");
    EXPECT_FALSE(app.files.Has("/jobs/c.vjb"));
}

TEST_F(SaveJob, AddsAMissingExtension)
{
    app.windows.picks = {"/jobs/e"};
    ConversionJobSaveAs(app);
    EXPECT_TRUE(app.files.Has("/jobs/e.VJB"));
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/e.VJB");
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(SaveJob, ConfirmsOverwritingAfterAddingTheExtension)
{
    app.files.AddFile("/jobs/e.VJB", "old");
    app.windows.picks = {"/jobs/e", "/jobs/e"};
    app.windows.answers = {BoxAnswer::No, BoxAnswer::Yes};

    ConversionJobSaveAs(app);
    EXPECT_EQ(app.files.Content("/jobs/e.VJB"), "old");
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "");

    ConversionJobSaveAs(app);
    EXPECT_EQ(app.files.Content("/jobs/e.VJB"), kMarkerLine);
}

TEST_F(SaveJob, KeepsTheJobsNameIfSavingFails)
{
    app.files.AddFolder("/cd");
    app.files.MakeReadOnly("/cd");
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    app.windows.picks = {"/cd/a.vjb"};
    EXPECT_THROW(ConversionJobSaveAs(app), clsRaisedError);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/c.vjb");
}

TEST_F(SaveJob, BacksUpALongFileBeforeSavingASlice)
{
    const std::string sLong = sJobOf(30500);
    Load(sLong);
    app.frmMain.sCurrentJobFile = "/jobs/a.vjb";

    ConversionJobSave(app);

    EXPECT_EQ(app.files.Content("/jobs/a.vjb.bak"), sLong);
    const std::string sSaved = app.files.Content("/jobs/a.vjb");
    EXPECT_EQ(std::count(sSaved.begin(), sSaved.end(), '\n'), 30001);
    EXPECT_TRUE(bContains(sSaved, "Reload conversion job start at task 30000"));

    ConversionJobSave(app);
    EXPECT_EQ(app.files.Content("/jobs/a.vjb.bak"), sLong);
}

TEST_F(SaveJob, BacksUpALongFileBeforeSavingItsLastSlice)
{
    const std::string sLong = sJobOf(30500);
    Load(sLong, 30000);
    app.frmMain.sCurrentJobFile = "/jobs/a.vjb";
    ConversionJobSave(app);
    EXPECT_EQ(app.files.Content("/jobs/a.vjb.bak"), sLong);
}

TEST_F(SaveJob, MakesNoBackupForACompleteJob)
{
    Load(sJobOf(3));
    app.frmMain.sCurrentJobFile = "/jobs/a.vjb";
    fgToDo.SetRow(1);
    RemoveActionItem(app);
    ConversionJobSave(app);
    EXPECT_FALSE(app.files.Has("/jobs/a.vjb.bak"));
}

TEST_F(SaveJob, PreservesCellsAndMarksWhenReopened)
{
    Load(sTaskLine(1, "+") + sTaskLine(2) + kMarkerLine);
    app.windows.picks = {"/jobs/f.vjb", "/jobs/f.vjb"};
    ConversionJobSaveAs(app);
    ConversionJobNew(app);
    std::string sPath;
    ConversionJobOpen(app, sPath);
    EXPECT_EQ(sTabbedRow(fgToDo, 1) + "\r\n", sTaskLine(1, "+"));
    EXPECT_EQ(sTabbedRow(fgToDo, 2) + "\r\n", sTaskLine(2));
    EXPECT_EQ(fgToDo.Format(1, kColPass).ePicture, CellPicture::imagePass);
}

TEST_F(SaveJob, SavesTheLogWithoutChangingTheJobsName)
{
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    app.frmMain.fgLog.AddItem("M\td\t1\tC\t/a\t1\tjpg\t/b\t2\tbmp\t+\t", 1);
    app.windows.picks = {"/jobs/log.vjb"};

    SaveLogAsConversionJob(app);
    SaveLogAsConversionJob(app);

    EXPECT_EQ(app.windows.pickers, std::vector<std::string>(2, "Save|Tarnis (*.VJB)|*.VJB"));
    EXPECT_EQ(app.files.Content("/jobs/log.vjb"), "M\t1\t1\tC\t/a\t1\tjpg\t/b\t\r\n");
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/c.vjb");
}

TEST_F(JobFiles, HaveNoNameAfterNew)
{
    Load(sJobOf(2));
    app.frmMain.fgLog.SetRows(4);
    ConversionJobNew(app);
    EXPECT_EQ(lTasks(), 0);
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "*");
    EXPECT_EQ(app.frmMain.Caption(), "*");
    EXPECT_FALSE(app.frmMain.keyConvert.Enabled());
}
