// Loading job files: malformed lines, slices of long files, pauses.
#include "src/job/modJobFiles.h"

#include <random>

#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "tests/fakes/counting_table.h"
#include "tests/job/support/job_files.h"

using LoadJob = JobFiles;

TEST_F(LoadJob, LoadsEveryCell)
{
    Load(sJobOf(3));
    ASSERT_EQ(lTasks(), 3);
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(sTabbedRow(fgToDo, i) + "\r\n", sTaskLine(i));
    ExpectMarkerAtEnd();
    EXPECT_EQ(fgToDo.Row(), 4);
    EXPECT_EQ(fgToDo.ColSel(), 10);
}

TEST_F(LoadJob, ToleratesMissingAndSurplusCells)
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

TEST_F(LoadJob, DropsLinesWithAStarAsThirdCharacter)
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

TEST_F(LoadJob, NumbersTasksFromTheStartLine)
{
    Load(sTaskLine(99) + sTaskLine(7) + sTaskLine(8) + sTaskLine(9), 3);
    ASSERT_EQ(lTasks(), 2);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColOriginal), "C:\\in\\8.bmp");
    EXPECT_EQ(fgToDo.TextMatrix(1, kColNumber), "3");
    EXPECT_EQ(fgToDo.TextMatrix(2, kColNumber), "4");
}

TEST_F(LoadJob, CountsBlankLinesTowardsTheStartLine)
{
    Load("\r\n\r\n" + sTaskLine(1) + sTaskLine(2), 4);
    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColOriginal), "C:\\in\\2.bmp");
}

TEST_F(LoadJob, ReplacesThePreviousTable)
{
    Load(sJobOf(5));
    Load(sJobOf(1));
    EXPECT_EQ(lTasks(), 1);
    Load("");
    EXPECT_EQ(lTasks(), 0);
    ExpectMarkerAtEnd();
}

TEST_F(LoadJob, ChangesNothingForAMissingFile)
{
    Load(sJobOf(2));
    LoadJobFile(app, "/jobs/none.vjb", 1, fgToDo);
    LoadJobFile(app, "", 1, fgToDo);
    EXPECT_EQ(lTasks(), 2);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(LoadJob, SplitsAFileOfThirtyThousandTasks)
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

TEST_F(LoadJob, AddsAReloadRowEvenIfNothingIsLeft)
{
    Load(sJobOf(29999));
    EXPECT_EQ(fgToDo.TextMatrix(30000, kColAction), "S1");
    EXPECT_EQ(fgToDo.TextMatrix(30000, kColTargetType), "30000");
    LoadJobFile(app, "/jobs/a.vjb", 30000, fgToDo);
    EXPECT_EQ(lTasks(), 0);
    ExpectMarkerAtEnd();
}

TEST_F(LoadJob, LoadsAFileThatFitsCompletely)
{
    Load(sJobOf(29998));
    EXPECT_EQ(lTasks(), 29998);
    EXPECT_EQ(fgToDo.TextMatrix(29998, kColAction), "C");
}

TEST_F(LoadJob, LoadsALongFileSliceBySlice)
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

TEST_F(LoadJob, ShowsItsProgress)
{
    std::vector<std::string> aTexts;
    app.windows.on_do_events = [&] { aTexts.push_back(app.frmMainMDI.sbMain.Panel(2)); };
    Load(sJobOf(2500));
    EXPECT_EQ(aTexts,
              (std::vector<std::string>{"Loading Conversion Task: 1000", "Loading Conversion Task: 2000"}));
    EXPECT_EQ(app.frmMainMDI.sbMain.Panel(2), "Completed loading conversion job: /jobs/a.vjb");
}

TEST_F(LoadJob, StopsOnPauseAndNumbersTheLoadedTasks)
{
    bool bPauseEnabled = false, bAddEnabled = true;
    app.windows.on_do_events = [&] {
        bPauseEnabled = app.frmMain.keyPause.Enabled();
        bAddEnabled = app.frmMain.keyAdd.Enabled();
        EXPECT_TRUE(app.frmMain.bRunning);
        EXPECT_TRUE(app.frmMainMDI.Hourglass());
        EXPECT_TRUE(app.bInternalGridChange);
        app.frmMain.bRunning = false;
    };
    Load(sJobOf(5000), 11);
    EXPECT_EQ(lTasks(), 991);
    EXPECT_EQ(fgToDo.TextMatrix(990, kColNumber), "1000");
    EXPECT_EQ(fgToDo.TextMatrix(991, kColAction), "S1");  // reloads what is left
    EXPECT_EQ(fgToDo.TextMatrix(991, kColTargetType), "1001");
    ExpectMarkerAtEnd();
    EXPECT_TRUE(bPauseEnabled);
    EXPECT_FALSE(bAddEnabled);
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(app.frmMain.keyPause.Enabled());
    EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST_F(LoadJob, AddsNoReloadRowIfItIsPausedAtTheEnd)
{
    app.windows.on_do_events = [&] { app.frmMain.bRunning = false; };

    Load(sJobOf(1000).substr(0, sJobOf(1000).rfind("\t\t*")));

    EXPECT_EQ(lTasks(), 1000);
}

TEST_F(LoadJob, LeavesTheRunningFlagAlone)
{
    app.frmMain.bRunning = true;
    app.bInternalGridChange = true;
    Load(sJobOf(1));
    EXPECT_TRUE(app.frmMain.bRunning);
    EXPECT_TRUE(app.bInternalGridChange);
}

TEST_F(LoadJob, UpdatesTheViewBeforeProcessingEvents)
{
    std::int32_t lSeen = -1;
    bool bWhole = true;
    CountingTable objView(fgToDo);
    app.windows.on_do_events = [&] {
        lSeen = objView.lRows;
        bWhole = bWhole && lSeen == fgToDo.Rows() && objView.nInsertions == 1;
    };
    Load(sJobOf(3500));
    EXPECT_TRUE(bWhole);
    EXPECT_EQ(lSeen, 2);
    EXPECT_EQ(objView.lRows, fgToDo.Rows());
}

TEST_F(LoadJob, TellsTheViewOnceOfAllRows)
{
    SetUpToDoGrid(app);
    CountingTable objView(fgToDo);

    Load(sJobOf(29998));

    EXPECT_EQ(fgToDo.Rows(), 30000);
    EXPECT_EQ(objView.nInsertions, 2);  // the marker row of the new table, and all tasks
    EXPECT_EQ(objView.nRemovals, 1);    // the old marker row
    EXPECT_EQ(objView.nResets, 0);
    EXPECT_EQ(objView.lRows, fgToDo.Rows());
}

/// A file system whose job file fails with an error after three lines.
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

TEST(LoadJobFile, ReportsAReadErrorAndKeepsTheRowsReadSoFar)
{
    TestServices objServices;
    BreakingFileSystem objFiles;
    objFiles.AddFile("/jobs/a.vjb");
    Application app(Services{objFiles, objServices.ini, objServices.clock, objServices.locale,
                             objServices.mutex, objServices.folders, objServices.windows, objServices.images,
                             objServices.utility, objServices.transform, objServices.launcher});

    EXPECT_EQ(LoadJobFile(app, "/jobs/a.vjb", 1, app.frmMain.fgToDo), "Path/File access error");

    ASSERT_EQ(objServices.windows.boxes.size(), 1u);
    EXPECT_EQ(objServices.windows.boxes[0].text, "Path/File access error");
    EXPECT_EQ(objServices.windows.boxes[0].title, "Error");
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 5);
    EXPECT_FALSE(app.frmMain.bRunning);
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
}

TEST_F(LoadJob, SurvivesRandomBytes)
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
                // Malformed numbers are expected here.
            }
        }
    }
}

TEST_F(LoadJob, SurvivesAHugeUnterminatedLine)
{
    Load(std::string(8'000'000, 'x') + std::string(100, '\0'));
    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(fgToDo.TextMatrix(1, kColFlags).size(), 8'000'100u);
    Load("a" + std::string(8'000'000, '\t'));
    ASSERT_EQ(lTasks(), 1);
    EXPECT_EQ(sTabbedRow(fgToDo, 1), "a\t\t1\t\t\t\t\t\t\t\t\t");
}
