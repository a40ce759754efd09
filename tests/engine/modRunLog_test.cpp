// Log rows, Pass marks and report lines.
#include "src/engine/modRunLog.h"

#include <gtest/gtest.h>

#include "src/base/clsConversionOptions.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/counting_table.h"
#include "tests/fakes/test_application.h"

namespace
{

class RunLog : public testing::Test
{
protected:
    RunLog()
    {
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
        app.files.AddFolder("/out");
        objOptions.sActionToDo = "C";
        objOptions.sExtraParams = "*^0^FALSE^75";
        objOptions.sOriginalFile = "/in/a.bmp";
        objOptions.lOriginalFileType = 2;
        objOptions.sTargetFile = "/out/a.png";
        objOptions.lTargetFileType = 8;
        objOptions.lErr = -103;
        objOptions.sErr = "Unable to convert";
    }

    std::string sLogCell(std::int32_t lRow, std::int32_t lCol) const
    {
        return app.frmMain.fgLog.TextMatrix(lRow, lCol);
    }

    TestApplication app;
    clsConversionOptions objOptions;
};

}  // namespace

TEST_F(RunLog, FillsAllTwelveCellsOfARow)
{
    app.frmMain.fgToDo.AddItem("R G M", 1);

    LogConversionError(app, 1, objOptions);

    ASSERT_EQ(app.frmMain.fgLog.Rows(), 3);
    const std::vector<std::string> aExpected = {
        "R G M", "*^0^FALSE^75", "1", "C",   "/in/a.bmp", "2",
        "bmp",   "/out/a.png",   "8", "png", "-",         "Unable to convert"};
    for (std::int32_t l = 0; l < kLogColumns; ++l)
        EXPECT_EQ(sLogCell(1, l), aExpected[static_cast<std::size_t>(l)]) << l;
}

TEST_F(RunLog, OmitsTheSourceExtensionForOtherMethods)
{
    objOptions.lConversionMethod = 2;

    LogConversionError(app, 1, objOptions);

    EXPECT_EQ(sLogCell(1, 6), "");
}

TEST_F(RunLog, TakesFlagsOfRow30001FromRow1)
{
    app.frmMain.fgToDo.AddItem("RG", 1);

    LogConversionError(app, 30001, objOptions);

    EXPECT_EQ(sLogCell(1, 0), "RG");
    EXPECT_EQ(sLogCell(1, 2), "30001");
}

TEST_F(RunLog, MarksEachRowWithItsOwnResult)
{
    LogConversionError(app, 1, objOptions);
    objOptions.lErr = 0;
    LogConversionError(app, 2, objOptions);
    objOptions.lErr = -101;
    LogConversionError(app, 3, objOptions);

    EXPECT_EQ(sLogCell(1, 10), "-");
    EXPECT_EQ(sLogCell(2, 10), "+");
    EXPECT_EQ(sLogCell(3, 10), "-");
    EXPECT_EQ(sLogCell(4, 10), "");
    EXPECT_EQ(app.frmMain.fgLog.Row(), 4);
    EXPECT_EQ(app.frmMain.fgLog.Format(1, 10).ePicture, CellPicture::imageFail);
    EXPECT_EQ(app.frmMain.fgLog.Format(2, 10).ePicture, CellPicture::imagePass);
}

TEST_F(RunLog, ReportsNothingWithoutAReportFileInSettings)
{
    objOptions.sLogFile = "/out/x.log";

    LogConversionError(app, 1, objOptions);

    EXPECT_FALSE(app.files.Has("/out/x.log"));
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 3);
}

TEST_F(RunLog, WritesTheRowToTheSettingsReportFile)
{
    app.frmMain.sLogFile = "/out/settings.log";

    LogConversionError(app, 1, objOptions);

    EXPECT_EQ(app.files.Content("/out/settings.log"),
              "\t*^0^FALSE^75\t1\tC\t/in/a.bmp\t2\tbmp\t/out/a.png\t8\tpng\t\tUnable to convert\n");
}

TEST_F(RunLog, AdoptsTheRequestsReportFileOnceVerbose)
{
    objOptions.sLogFile = "/out/x.log";
    objOptions.bVerboseLog = true;
    LogConversionError(app, 1, objOptions);
    EXPECT_EQ(app.frmMain.sLogFile, "/out/x.log");

    clsConversionOptions objSuccess = objOptions;
    objSuccess.bVerboseLog = false;
    objSuccess.lErr = 0;
    objSuccess.sErr.clear();
    LogConversionError(app, 2, objSuccess);

    EXPECT_EQ(app.files.Content("/out/x.log"),
              "\t*^0^FALSE^75\t1\tC\t/in/a.bmp\t2\tbmp\t/out/a.png\t8\tpng\t\tUnable to convert\n"
              "\t*^0^FALSE^75\t2\tC\t/in/a.bmp\t2\tbmp\t/out/a.png\t8\tpng\t\t\n");
}

TEST_F(RunLog, ReportsNothingIfVerboseWithoutAFileName)
{
    objOptions.bVerboseLog = true;

    LogConversionError(app, 1, objOptions);

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_EQ(app.frmMain.sLogFile, "");
}

TEST_F(RunLog, ReplacesTabsAndNewlinesInFileNames)
{
    objOptions.sOriginalFile = "/in/a\tb\nc.bmp";
    app.frmMain.sLogFile = "/out/r.log";

    LogConversionError(app, 1, objOptions);

    EXPECT_EQ(sLogCell(1, 4), "/in/a b c.bmp");
    EXPECT_EQ(sLogCell(1, 11), "Unable to convert");
}

TEST_F(RunLog, MarksExitCodesAsPassedWithoutReportingThem)
{
    app.frmMain.sLogFile = "/out/r.log";
    app.frmMain.fgToDo.AddItem("RG", 1);
    objOptions.sActionToDo = "S100";
    objOptions.lCommandLineExitCode = 3;

    LogExitCode(app, 1, objOptions);

    EXPECT_EQ(sLogCell(1, 0), "RG");
    EXPECT_EQ(sLogCell(1, 3), "S100");
    EXPECT_EQ(sLogCell(1, 6), "");
    EXPECT_EQ(sLogCell(1, 9), "");
    EXPECT_EQ(sLogCell(1, 10), "+");
    EXPECT_EQ(sLogCell(1, 11), "Exit Code: 3");
    EXPECT_FALSE(app.files.Has("/out/r.log"));
}

TEST(UpdatePassedCell, MarksCurrentRowThenMovesToGivenRow)
{
    TestApplication app;
    SetUpToDoGrid(app);
    Grid& fgToDo = app.frmMain.fgToDo;
    fgToDo.AddItem("\t\t1\tC", 1);
    fgToDo.AddItem("\t\t2\tC", 2);
    fgToDo.SetRow(1);

    UpdatePassedCell(app, fgToDo, 2, -103);

    EXPECT_EQ(fgToDo.TextMatrix(1, 10), "-");
    EXPECT_EQ(fgToDo.TextMatrix(2, 10), "");
    EXPECT_EQ(fgToDo.Row(), 2);
    EXPECT_EQ(app.windows.do_events, 1);
}

TEST(UpdatePassedCell, DrawsTheTextInItsBackgroundColour)
{
    TestApplication app;
    SetUpToDoGrid(app);
    Grid& fgToDo = app.frmMain.fgToDo;
    fgToDo.AddItem("\t\t1\tC", 1);
    fgToDo.SetRow(1);

    UpdatePassedCell(app, fgToDo, 1, 0);

    const CellFormat& objFormat = fgToDo.Format(1, 10);
    EXPECT_EQ(objFormat.ePicture, CellPicture::imagePass);
    EXPECT_EQ(objFormat.lForeColor, objFormat.lBackColor);
    EXPECT_EQ(static_cast<std::uint32_t>(objFormat.lForeColor), 2147483653u);
    EXPECT_EQ(objFormat.eAlignment, CellAlignment::Centre);
}

TEST(UpdatePassedCell, ScrollsTheRowIntoViewBelowTwoOthers)
{
    TestApplication app;
    SetUpToDoGrid(app);
    Grid& fgToDo = app.frmMain.fgToDo;
    for (std::int32_t l = 1; l <= 20; ++l)
        fgToDo.AddItem("\t\t" + std::to_string(l), l);
    fgToDo.UserScrolls(100, 1);

    UpdatePassedCell(app, fgToDo, 12, 0);
    EXPECT_EQ(fgToDo.TopRow(), 10);

    UpdatePassedCell(app, fgToDo, 2, 0);
    EXPECT_EQ(fgToDo.TopRow(), 1);
}

TEST(UpdatePassedCell, IgnoresAGridWithoutAPassColumn)
{
    TestApplication app;
    Form& frm = app.frmPleaseWait;
    Grid fgSmall(frm, "fgSmall", 3);
    fgSmall.SetRows(3);

    UpdatePassedCell(app, fgSmall, 2, -1);

    EXPECT_EQ(fgSmall.Row(), 0);
}

TEST_F(RunLog, TellsTheViewOfEachRowAndNeverResetsIt)
{
    CountingTable objView(app.frmMain.fgLog);

    for (std::int32_t l = 1; l <= 30000; ++l)
        LogConversionError(app, l, objOptions);

    EXPECT_EQ(objView.nInsertions, 30000);
    EXPECT_EQ(objView.nRemovals + objView.nResets, 0);
    EXPECT_EQ(objView.nCellChanges, 30000);
    EXPECT_EQ(objView.lRows, 30002);
}
