// Setup of the task and log tables: fixed rows, headers, cell formats.
#include "src/job/modTaskTables.h"

#include "tests/job/support/task_rows.h"

TEST(SetUpToDoGrid, CreatesTheHeaderAndTheMarkerRow)
{
    TestApplication app;
    FillTable(app, 3);

    SetUpToDoGrid(app);

    const Grid& fg = app.frmMain.fgToDo;
    EXPECT_EQ(fg.Rows(), 2);
    EXPECT_EQ(fg.Cols(), 11);
    EXPECT_EQ(aRow(fg, 0), (std::vector<std::string>{"", "", "#", "Do", "Original File(s)", "", "Type",
                                                     "Target File(s)", "", "Type", "Pass"}));
    ExpectMarkerAtEnd(fg);
    EXPECT_EQ(fg.Row(), 1);
    EXPECT_EQ(fg.Col(), 0);
    EXPECT_EQ(fg.ColSel(), 10);
}

TEST(SetUpToDoGrid, TranslatesAllHeadersButTheNumberSign)
{
    TestApplication app;
    SetUpToDoGrid(app);
    app.objTranslator.dictTranslations["Do"] = "Was";
    app.objTranslator.dictTranslations["#"] = "Nr";

    SetUpToDoGrid(app);

    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(0, kColNumber), "#");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(0, kColAction), "Was");
}

TEST(SetUpToDoGrid, FormatsTheMarkerDifferentlyTheFirstTime)
{
    TestApplication app;
    const Grid& fg = app.frmMain.fgToDo;

    SetUpToDoGrid(app);
    for (const std::int32_t lCol : {0, 1, 2}) {
        EXPECT_TRUE(fg.Format(1, lCol).bBold);
        EXPECT_EQ(fg.Format(1, lCol).eAlignment, CellAlignment::Centre);
        EXPECT_EQ(fg.Format(1, lCol).lFontSize, 0);
    }
    EXPECT_EQ(fg.Format(1, 3), CellFormat{});

    SetUpToDoGrid(app);
    EXPECT_EQ(fg.Format(1, 1).lFontSize, 12);
    EXPECT_TRUE(fg.Format(1, 1).bBold);
    EXPECT_EQ(fg.Format(1, 0), CellFormat{});
    EXPECT_EQ(fg.Format(1, 2), CellFormat{});
}

TEST(SetUpToDoGrid, AvoidsBoldHeadersInDoubleByteLocales)
{
    TestApplication app;
    SetUpToDoGrid(app);
    EXPECT_TRUE(app.frmMain.fgToDo.Format(0, 4).bBold);
    EXPECT_EQ(app.frmMain.fgToDo.Format(0, 4).eAlignment, CellAlignment::Centre);

    TestApplication appWide;
    appWide.bDoubleByteLocale = true;
    SetUpToDoGrid(appWide);
    EXPECT_FALSE(appWide.frmMain.fgToDo.Format(0, 4).bBold);
    EXPECT_FALSE(appWide.frmMain.fgToDo.Format(1, 2).bBold);
    EXPECT_EQ(appWide.frmMain.fgToDo.Format(1, 2).eAlignment, CellAlignment::Centre);
}

TEST(SetUpToDoGrid, SuppressesChangeHandlers)
{
    TestApplication app;
    FillTable(app, 2);
    bool bSeenAsUsers = false;
    app.frmMain.fgToDo.OnEnterCell =
        app.frmMain.fgToDo.OnLeaveCell = [&] { bSeenAsUsers = bSeenAsUsers || !app.bInternalGridChange; };
    SetUpToDoGrid(app);
    EXPECT_FALSE(bSeenAsUsers);
    EXPECT_FALSE(app.bInternalGridChange);

    app.bInternalGridChange = true;
    SetUpToDoGrid(app);
    EXPECT_TRUE(app.bInternalGridChange);
}

TEST(SetUpLogGrid, CreatesTheHeaderAndAnEmptyRow)
{
    TestApplication app;
    app.frmMain.fgLog.SetRows(9);
    app.frmMain.fgLog.SetTextMatrix(1, 4, "/old");

    SetUpLogGrid(app);

    const Grid& fg = app.frmMain.fgLog;
    EXPECT_EQ(fg.Rows(), 2);
    EXPECT_EQ(fg.Cols(), 12);
    EXPECT_EQ(aRow(fg, 0), (std::vector<std::string>{"", "", "Job #", "Do", "", "", "", "Target File", "",
                                                     "Type", "Pass", "Status"}));
    EXPECT_EQ(aRow(fg, 1), std::vector<std::string>(12, ""));
    EXPECT_EQ(fg.Format(0, 11).eAlignment, CellAlignment::Centre);
    EXPECT_EQ(fg.Row(), 1);
    EXPECT_EQ(fg.ColSel(), 11);
}

TEST(SetUpLogGrid, AlwaysClearsTheInternalChangeFlag)
{
    TestApplication app;
    app.bInternalGridChange = true;
    SetUpLogGrid(app);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(FormatPassCell, DrawsTheTextInItsBackgroundColour)
{
    TestApplication app;
    FillTable(app, 2);
    Grid& fg = app.frmMain.fgToDo;

    FormatPassCell(fg, 1, true);
    FormatPassCell(fg, 2, false);

    EXPECT_EQ(fg.TextMatrix(1, kColPass), "+");
    EXPECT_EQ(fg.TextMatrix(2, kColPass), "-");
    EXPECT_EQ(fg.Format(1, kColPass).ePicture, CellPicture::imagePass);
    EXPECT_EQ(fg.Format(2, kColPass).ePicture, CellPicture::imageFail);
    EXPECT_EQ(fg.Format(1, kColPass).eAlignment, CellAlignment::Centre);
    EXPECT_EQ(static_cast<std::uint32_t>(fg.Format(1, kColPass).lForeColor), 2147483653u);
    EXPECT_EQ(static_cast<std::uint32_t>(fg.Format(1, kColPass).lBackColor), 2147483653u);
}

TEST(RestorePassMark, DependsOnlyOnTheText)
{
    TestApplication app;
    FillTable(app, 3);
    Grid& fg = app.frmMain.fgToDo;
    fg.SetTextMatrix(1, kColPass, "+");
    fg.SetTextMatrix(2, kColPass, "++");
    for (std::int32_t l = 1; l <= 3; ++l)
        RestorePassMark(fg, l);
    EXPECT_EQ(fg.Format(1, kColPass).ePicture, CellPicture::imagePass);
    EXPECT_EQ(fg.Format(2, kColPass), CellFormat{});
    EXPECT_EQ(fg.TextMatrix(2, kColPass), "++");
    EXPECT_EQ(fg.Format(3, kColPass), CellFormat{});
}

TEST(SelectGridRow, SelectsAllColumns)
{
    TestApplication app;
    Grid& fg = app.frmMain.fgLog;
    fg.SetCol(5);
    SelectGridRow(app, fg);
    EXPECT_EQ(fg.Col(), 0);
    EXPECT_EQ(fg.ColSel(), 11);
    EXPECT_FALSE(app.bInternalGridChange);
}
