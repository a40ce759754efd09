// Job files: what is written, what is tolerated on reading, and how a long job is cut into parts.
#include "src/job/modJobFiles.h"

#include <algorithm>
#include <random>

#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

static const std::string kMarkerLine = "\t\t*\t\t\t\t\t\t\t\t\t\r\n";

static std::string sTaskLine(int nNumber, const std::string& sMark = "")
{
    return "RG M\t1^0^FALSE^\t" + std::to_string(nNumber) + "\tC\tC:\\in\\" + std::to_string(nNumber) +
           ".bmp\t2\tbmp\tC:\\out\\a.jpg\t1\tjpg\t" + sMark + "\t\r\n";
}

static std::string sJobOf(int nTasks)
{
    std::string sText;
    for (int i = 1; i <= nTasks; ++i)
        sText += sTaskLine(i);
    return sText + kMarkerLine;
}

/// An application and a folder "/jobs".
struct JobFiles : testing::Test {
    TestApplication app;
    Grid& fgToDo = app.frmMain.fgToDo;

    JobFiles()
    {
        app.objFiles.AddFolder("/jobs");
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
    }
    void Load(const std::string& sContent, std::int32_t lStart = 1)
    {
        app.objFiles.AddFile("/jobs/a.vjb", sContent);
        LoadJobFile(app, "/jobs/a.vjb", lStart, fgToDo);
    }
    std::int32_t lTasks() const { return fgToDo.Rows() - 2; }
    void ExpectMarkerAtEnd() const { EXPECT_EQ(sTabbedRow(fgToDo, fgToDo.Rows() - 1) + "\r\n", kMarkerLine); }
};

using WriteJob = JobFiles;

TEST_F(WriteJob, IsTheMarkerLineAloneForAnEmptyJob)
{
    WriteJobFile(app, "/jobs/a.vjb", fgToDo);
    EXPECT_EQ(app.objFiles.sContent("/jobs/a.vjb"), kMarkerLine);
}

TEST_F(WriteJob, HasATabAfterEachOfTheElevenCells)
{
    Load(sTaskLine(1) + sTaskLine(2, "+"));
    WriteJobFile(app, "/jobs/b.vjb", fgToDo);
    EXPECT_EQ(app.objFiles.sContent("/jobs/b.vjb"), sTaskLine(1) + sTaskLine(2, "+") + kMarkerLine);
}

TEST_F(WriteJob, RaisesAnErrorWhereItCantBeWritten)
{
    app.objFiles.AddFile("/cd/a.vjb", "old");
    app.objFiles.MakeReadOnly("/cd");
    EXPECT_THROW(WriteJobFile(app, "/cd/a.vjb", fgToDo), clsRaisedError);
    EXPECT_EQ(app.objFiles.sContent("/cd/a.vjb"), "old");
}

using LoadJob = JobFiles;

TEST_F(LoadJob, GivesBackEveryCell)
{
    Load(sJobOf(3));
    ASSERT_EQ(lTasks(), 3);
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(sTabbedRow(fgToDo, i) + "\r\n", sTaskLine(i));
    ExpectMarkerAtEnd();
    EXPECT_EQ(fgToDo.Row(), 4);
    EXPECT_EQ(fgToDo.ColSel(), 10);
}

TEST_F(LoadJob, ToleratesWhatIsMissingOrTooMuch)
{
    Load(
        "\tdetails\t\tC\t/a.bmp\n"
        "\r\n"
        "   \r\n"
        "M\td\t7\tC\ta\t1\tjpg\tb\t2\tbmp\t-\textra\tmore\n"
        "\t\t\t\n"
        "x");
    ASSERT_EQ(lTasks(), 4);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColOriginal), "/a.bmp");
    EXPECT_EQ(fgToDo.TextMatrix(1, kColPass), "");
    EXPECT_EQ(sTabbedRow(fgToDo, 2), "M\td\t2\tC\ta\t1\tjpg\tb\t2\tbmp\t-\t");
    EXPECT_EQ(sTabbedRow(fgToDo, 3), "\t\t3\t\t\t\t\t\t\t\t\t");
    EXPECT_EQ(fgToDo.TextMatrix(4, kColFlags), "x");
    EXPECT_EQ(fgToDo.TextMatrix(4, kColNumber), "4");
    ExpectMarkerAtEnd();
}

TEST_F(LoadJob, DropsEveryLineWhoseThirdLetterIsAStar)
{
    Load(
        "\t\t*\n"
        "M\t*details\t1\tC\n"
        "\xC3\xA4\xC3\xB6*\n"
        "M\t^*\t1\tC\n"
        "M\td*\t1\tC\n");
    ASSERT_EQ(lTasks(), 2);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColDetails), "^*");
    EXPECT_EQ(fgToDo.TextMatrix(2, kColDetails), "d*");
}

TEST_F(LoadJob, NumbersFromTheStartWhateverTheFileSays)
{
    Load(sTaskLine(99) + sTaskLine(7) + sTaskLine(8) + sTaskLine(9), 3);
    ASSERT_EQ(lTasks(), 2);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColOriginal), "C:\\in\\8.bmp");
    EXPECT_EQ(fgToDo.TextMatrix(1, kColNumber), "3");
    EXPECT_EQ(fgToDo.TextMatrix(2, kColNumber), "4");
}

TEST_F(LoadJob, CountsBlankLinesAsLines)
{
    Load("\r\n\r\n" + sTaskLine(1) + sTaskLine(2), 4);
    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColOriginal), "C:\\in\\2.bmp");
}

TEST_F(LoadJob, ReplacesTheTableThatStood)
{
    Load(sJobOf(5));
    Load(sJobOf(1));
    EXPECT_EQ(lTasks(), 1);
    Load("");
    EXPECT_EQ(lTasks(), 0);
    ExpectMarkerAtEnd();
}

TEST_F(LoadJob, ChangesNothingForAFileThatIsntThere)
{
    Load(sJobOf(2));
    LoadJobFile(app, "/jobs/none.vjb", 1, fgToDo);
    LoadJobFile(app, "", 1, fgToDo);
    EXPECT_EQ(lTasks(), 2);
    EXPECT_TRUE(app.objWindows.aBoxes.empty());
}

TEST_F(LoadJob, CutsAFileOfThirtyThousandTasks)
{
    Load(sJobOf(30000));
    EXPECT_EQ(fgToDo.Rows(), 30002);
    EXPECT_EQ(fgToDo.TextMatrix(29999, kColOriginal), "C:\\in\\29999.bmp");
    EXPECT_EQ(sTabbedRow(fgToDo, 30000),
              " \t \t30000\tS1\tReload conversion job start at task 30000\t0\t0\t/jobs/a.vjb\t30000\t\t\t");
    ExpectMarkerAtEnd();

    LoadJobFile(app, "/jobs/a.vjb", 30000, fgToDo);
    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColOriginal), "C:\\in\\30000.bmp");
    EXPECT_EQ(fgToDo.TextMatrix(1, kColNumber), "30000");
}

TEST_F(LoadJob, CutsAFileOfOneTaskLessTooAndTheRestIsEmpty)
{
    Load(sJobOf(29999));
    EXPECT_EQ(fgToDo.TextMatrix(30000, kColAction), "S1");
    EXPECT_EQ(fgToDo.TextMatrix(30000, kColTargetType), "30000");
    LoadJobFile(app, "/jobs/a.vjb", 30000, fgToDo);
    EXPECT_EQ(lTasks(), 0);
    ExpectMarkerAtEnd();
}

TEST_F(LoadJob, KeepsAFileThatFitsWhole)
{
    Load(sJobOf(29998));
    EXPECT_EQ(lTasks(), 29998);
    EXPECT_EQ(fgToDo.TextMatrix(29998, kColAction), "C");
}

TEST_F(LoadJob, GoesThroughALongFileInParts)
{
    Load(sJobOf(100000));
    std::vector<std::string> aFirsts;
    for (int i = 0; i < 3; ++i) {
        const std::string sPath = fgToDo.TextMatrix(30000, kColTarget);
        const std::string sNext = fgToDo.TextMatrix(30000, kColTargetType);
        ASSERT_EQ(fgToDo.TextMatrix(30000, kColAction), "S1");
        LoadJobFile(app, sPath, std::stoi(sNext), fgToDo);
        aFirsts.push_back(fgToDo.TextMatrix(1, kColOriginal) + " " + fgToDo.TextMatrix(1, kColNumber));
    }
    EXPECT_EQ(aFirsts, (std::vector<std::string>{"C:\\in\\30000.bmp 30000", "C:\\in\\59999.bmp 59999",
                                                 "C:\\in\\89998.bmp 89998"}));
    EXPECT_EQ(lTasks(), 100000 - 89997);
    EXPECT_EQ(fgToDo.TextMatrix(lTasks(), kColNumber), "100000");
}

TEST_F(LoadJob, TellsHowFarItIs)
{
    std::vector<std::string> aTexts;
    app.objWindows.OnDoEvents = [&] { aTexts.push_back(app.frmMainMDI.sbMain.Panel(2)); };
    Load(sJobOf(2500));
    EXPECT_EQ(aTexts,
              (std::vector<std::string>{"Loading Conversion Task: 1000", "Loading Conversion Task: 2000"}));
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(2), "Completed loading conversion job: /jobs/a.vjb");
}

TEST_F(LoadJob, CanBePausedAndNumbersWhatItHas)
{
    bool bPauseEnabled = false, bAddEnabled = true;
    app.objWindows.OnDoEvents = [&] {
        bPauseEnabled = app.frmMain.keyPause.Enabled();
        bAddEnabled = app.frmMain.keyAdd.Enabled();
        EXPECT_TRUE(app.frmMain.bRunning);
        EXPECT_TRUE(app.frmMainMDI.bHourglass);
        EXPECT_TRUE(app.bInternalGridChange);
        app.frmMain.bRunning = false;
    };
    Load(sJobOf(5000), 11);
    EXPECT_EQ(lTasks(), 990);
    EXPECT_EQ(fgToDo.TextMatrix(990, kColNumber), "1000");
    ExpectMarkerAtEnd();
    EXPECT_TRUE(bPauseEnabled);
    EXPECT_FALSE(bAddEnabled);
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(app.frmMain.keyPause.Enabled());
    EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
    EXPECT_FALSE(app.frmMainMDI.bHourglass);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST_F(LoadJob, KeepsARunGoing)
{
    app.frmMain.bRunning = true;
    app.bInternalGridChange = true;
    Load(sJobOf(1));
    EXPECT_TRUE(app.frmMain.bRunning);
    EXPECT_TRUE(app.bInternalGridChange);
}

TEST_F(LoadJob, ShowsTheViewAWholeTableWheneverItLooks)
{
    std::int32_t lSeen = -1;
    bool bWhole = true;
    fgToDo.OnRowInserted = [&](std::int32_t) { bWhole = false; };
    fgToDo.OnTableChanged = [&] { lSeen = fgToDo.Rows(); };
    app.objWindows.OnDoEvents = [&] { bWhole = bWhole && lSeen == fgToDo.Rows(); };
    Load(sJobOf(3500));
    EXPECT_TRUE(bWhole);
    EXPECT_EQ(lSeen, fgToDo.Rows());
}

/// A file system whose job breaks off with an error after some lines.
class BreakingReader : public TextReader
{
public:
    bool ReadLine(std::string& sLine) override
    {
        if (++m_lLine > 3)
            throw clsRaisedError(kErrPathFileAccess, "Path/File access error");
        sLine = "M\td\t1\tC\ta\t1\tjpg\tb\t1\tjpg\t\t";
        return true;
    }

private:
    int m_lLine = 0;
};
class BreakingFileSystem : public FakeFileSystem
{
public:
    std::unique_ptr<TextReader> OpenForInput(const std::string&) const override
    {
        return std::make_unique<BreakingReader>();
    }
};

TEST(LoadJobFile, TellsAFailureInABoxAndKeepsTheRowsReadSoFar)
{
    TestServices objServices;
    BreakingFileSystem objFiles;
    objFiles.AddFile("/jobs/a.vjb");
    Application app(Services{objFiles, objServices.objIni, objServices.objClock, objServices.objLocale,
                             objServices.objMutex, objServices.objFolders, objServices.objWindows,
                             objServices.objImages, objServices.objUtility, objServices.objTransform,
                             objServices.objLauncher});

    LoadJobFile(app, "/jobs/a.vjb", 1, app.frmMain.fgToDo);

    ASSERT_EQ(objServices.objWindows.aBoxes.size(), 1u);
    EXPECT_EQ(objServices.objWindows.aBoxes[0].sText, "Path/File access error");
    EXPECT_EQ(objServices.objWindows.aBoxes[0].sTitle, "Error");
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 5);
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(app.frmMainMDI.bHourglass);
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
}

TEST_F(LoadJob, SurvivesRubbish)
{
    std::mt19937 objRandom(1);
    const std::string sLetters("\0\t\t\t\r\n\n*^ SC1-\xFF\xC3", 17);
    for (int nFile = 0; nFile < 200; ++nFile) {
        std::string sContent;
        for (auto n = objRandom() % 2000; n > 0; --n)
            sContent += nFile % 2 ? sLetters[objRandom() % sLetters.size()] : static_cast<char>(objRandom());
        Load(sContent, static_cast<std::int32_t>(objRandom() % 5) - 1);
        ExpectMarkerAtEnd();
        for (std::int32_t l = 1; l <= lTasks(); ++l) {
            clsConversionOptions objOptions;
            try {
                LoadRequestFromGridRow(app, objOptions, l);
            } catch (const clsRaisedError&) {
                // a cell that is no number: the run reports it
            }
        }
    }
}

TEST_F(LoadJob, SurvivesALineOfMegabytesWithoutAnEnd)
{
    Load(std::string(8'000'000, 'x') + std::string(100, '\0'));
    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColFlags).size(), 8'000'100u);
    Load("a" + std::string(8'000'000, '\t'));
    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(sTabbedRow(fgToDo, 1), "a\t\t1\t\t\t\t\t\t\t\t\t");
}

using OpenJob = JobFiles;

TEST_F(OpenJob, BringsThePassMarksBack)
{
    app.objFiles.AddFile("/jobs/a.vjb",
                         sTaskLine(1, "+") + sTaskLine(2, "-") + sTaskLine(3, "?") + kMarkerLine);
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

TEST_F(OpenJob, AsksForAFileThatWasntGiven)
{
    app.objFiles.AddFile("/jobs/b.vjb", sJobOf(2));
    app.objWindows.aPicks = {"/jobs/b.vjb"};
    std::string sPath;

    ConversionJobOpen(app, sPath);

    EXPECT_EQ(sPath, "/jobs/b.vjb");
    EXPECT_EQ(lTasks(), 2);
    EXPECT_EQ(app.objWindows.aPickers, std::vector<std::string>{"Open Conversion Job|Tarnis (*.VJB)|*.VJB"});
}

TEST_F(OpenJob, ForgetsTheNameOfTheJobWhenCancelled)
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

TEST_F(OpenJob, ClearsNothingForAMissingFileButTakesItsName)
{
    Load(sJobOf(2));
    app.frmMain.fgLog.SetRows(5);
    std::string sPath = "/jobs/none.vjb";

    ConversionJobOpen(app, sPath);

    EXPECT_EQ(lTasks(), 2);
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 5);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/none.vjb");
    EXPECT_EQ(app.frmMain.Caption(), "/jobs/none.vjb");
    EXPECT_TRUE(app.objWindows.aBoxes.empty());
}

TEST_F(OpenJob, TakesALogThatWasWrittenAsAJob)
{
    Grid& fgLog = app.frmMain.fgLog;
    fgLog.AddItem("RM\t1^0\t4\tC\t/in/a.bmp\t2\tbmp\t/out/a.jpg\t1\tjpg\t-\tUnable to convert", 1);
    WriteLogAsJobFile(app, "/jobs/log.vjb", fgLog);
    EXPECT_EQ(app.objFiles.sContent("/jobs/log.vjb"), "RM\t1\t4\tC\t/in/a.bmp\t2\tbmp\t/out/a.jpg\t\r\n");

    std::string sPath = "/jobs/log.vjb";
    ConversionJobOpen(app, sPath);

    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(sTabbedRow(fgToDo, 1), "RM\t1\t1\tC\t/in/a.bmp\t2\tbmp\t/out/a.jpg\t\t\t\t");
}

TEST_F(JobFiles, OfALogLeaveOutTheEmptyRowAsLongAsItsNumberHasOneDigit)
{
    Grid& fgLog = app.frmMain.fgLog;
    WriteLogAsJobFile(app, "/jobs/log.vjb", fgLog);
    EXPECT_EQ(app.objFiles.sContent("/jobs/log.vjb"), "");

    for (int i = 0; i < 9; ++i)
        fgLog.AddItem("\t\t\tC\tx", 1);
    WriteLogAsJobFile(app, "/jobs/log.vjb", fgLog);
    EXPECT_TRUE(
        app.objFiles.sContent("/jobs/log.vjb").ends_with("\t9\t\tC\tx\t\t\t\t\r\n\t10\t\t\t\t\t\t\t\r\n"));
}

using SaveJob = JobFiles;

TEST_F(SaveJob, WritesToTheFileOfTheJob)
{
    Load(sJobOf(2));
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    ConversionJobSave(app);
    EXPECT_EQ(app.objFiles.sContent("/jobs/c.vjb"), sJobOf(2));
    EXPECT_TRUE(app.objWindows.aPickers.empty());
}

TEST_F(SaveJob, AsksForAFileWhereThereIsNone)
{
    for (const char* sCurrent : {"", "*"}) {
        app.frmMain.sCurrentJobFile = sCurrent;
        app.objWindows.aPickers.clear();
        app.objWindows.aPicks = {"/jobs/d.vjb"};
        ConversionJobSave(app);
        EXPECT_EQ(app.objWindows.aPickers, std::vector<std::string>{"Save|Varnel (*.VJB)|*.VJB"});
        EXPECT_EQ(app.objFiles.sContent("/jobs/d.vjb"), kMarkerLine);
        EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/d.vjb");
        EXPECT_EQ(app.frmMain.Caption(), "/jobs/d.vjb");
    }
}

TEST_F(SaveJob, ChangesNothingWhenCancelled)
{
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    app.frmMain.SetCaption("/jobs/c.vjb");
    ConversionJobSaveAs(app);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/c.vjb");
    EXPECT_EQ(app.frmMain.Caption(), "/jobs/c.vjb");
    EXPECT_FALSE(app.objFiles.bHas("/jobs/c.vjb"));
}

TEST_F(SaveJob, AddsTheExtensionThatWasntTyped)
{
    app.objWindows.aPicks = {"/jobs/e"};
    ConversionJobSaveAs(app);
    EXPECT_TRUE(app.objFiles.bHas("/jobs/e.VJB"));
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/e.VJB");
    EXPECT_TRUE(app.objWindows.aBoxes.empty());
}

TEST_F(SaveJob, AsksBeforeTheExtensionMakesItReplaceAFile)
{
    app.objFiles.AddFile("/jobs/e.VJB", "old");
    app.objWindows.aPicks = {"/jobs/e", "/jobs/e"};
    app.objWindows.aAnswers = {BoxAnswer::No, BoxAnswer::Yes};

    ConversionJobSaveAs(app);
    EXPECT_EQ(app.objFiles.sContent("/jobs/e.VJB"), "old");
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "");

    ConversionJobSaveAs(app);
    EXPECT_EQ(app.objFiles.sContent("/jobs/e.VJB"), kMarkerLine);
}

TEST_F(SaveJob, KeepsTheFormerFileWhenTheNewOneCantBeWritten)
{
    app.objFiles.AddFolder("/cd");
    app.objFiles.MakeReadOnly("/cd");
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    app.objWindows.aPicks = {"/cd/a.vjb"};
    EXPECT_THROW(ConversionJobSaveAs(app), clsRaisedError);
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/c.vjb");
}

TEST_F(SaveJob, KeepsALongFileBesideThePartThatReplacesIt)
{
    const std::string sLong = sJobOf(30500);
    Load(sLong);
    app.frmMain.sCurrentJobFile = "/jobs/a.vjb";

    ConversionJobSave(app);

    EXPECT_EQ(app.objFiles.sContent("/jobs/a.vjb.bak"), sLong);
    const std::string sSaved = app.objFiles.sContent("/jobs/a.vjb");
    EXPECT_EQ(std::count(sSaved.begin(), sSaved.end(), '\n'), 30001);
    EXPECT_TRUE(bContains(sSaved, "Reload conversion job start at task 30000"));

    ConversionJobSave(app);
    EXPECT_EQ(app.objFiles.sContent("/jobs/a.vjb.bak"), sLong);
}

TEST_F(SaveJob, KeepsALongFileBesideItsLastPartToo)
{
    const std::string sLong = sJobOf(30500);
    Load(sLong, 30000);
    app.frmMain.sCurrentJobFile = "/jobs/a.vjb";
    ConversionJobSave(app);
    EXPECT_EQ(app.objFiles.sContent("/jobs/a.vjb.bak"), sLong);
}

TEST_F(SaveJob, LeavesNoOtherFileBesideAJobThatIsWhole)
{
    Load(sJobOf(3));
    app.frmMain.sCurrentJobFile = "/jobs/a.vjb";
    fgToDo.SetRow(1);
    RemoveActionItem(app);
    ConversionJobSave(app);
    EXPECT_FALSE(app.objFiles.bHas("/jobs/a.vjb.bak"));
}

TEST_F(SaveJob, AndOpenKeepsCellsAndMarks)
{
    Load(sTaskLine(1, "+") + sTaskLine(2) + kMarkerLine);
    app.objWindows.aPicks = {"/jobs/f.vjb", "/jobs/f.vjb"};
    ConversionJobSaveAs(app);
    ConversionJobNew(app);
    std::string sPath;
    ConversionJobOpen(app, sPath);
    EXPECT_EQ(sTabbedRow(fgToDo, 1) + "\r\n", sTaskLine(1, "+"));
    EXPECT_EQ(sTabbedRow(fgToDo, 2) + "\r\n", sTaskLine(2));
    EXPECT_EQ(fgToDo.Format(1, kColPass).ePicture, CellPicture::imagePass);
}

TEST_F(SaveJob, WritesTheLogWithoutChangingTheJobsName)
{
    app.frmMain.sCurrentJobFile = "/jobs/c.vjb";
    app.frmMain.fgLog.AddItem("M\td\t1\tC\t/a\t1\tjpg\t/b\t2\tbmp\t+\t", 1);
    app.objWindows.aPicks = {"/jobs/log.vjb"};

    SaveLogAsConversionJob(app);
    SaveLogAsConversionJob(app);

    EXPECT_EQ(app.objWindows.aPickers, std::vector<std::string>(2, "Save|Tarnis (*.VJB)|*.VJB"));
    EXPECT_EQ(app.objFiles.sContent("/jobs/log.vjb"), "M\t1\t1\tC\t/a\t1\tjpg\t/b\t\r\n");
    EXPECT_EQ(app.frmMain.sCurrentJobFile, "/jobs/c.vjb");
}

TEST_F(JobFiles, StartAnewWithoutAName)
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
