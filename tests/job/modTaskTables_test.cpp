// Moving tasks into and out of the task table.
#include "src/job/modTaskTables.h"

#include <array>

#include "src/base/raised_error.h"
#include "src/job/modFileTypes.h"
#include "tests/job/support/task_rows.h"

TEST(AddTaskRow, InsertsAConversionBeforeTheMarker)
{
    TestApplication app;
    SetUpToDoGrid(app);
    clsConversionOptions objOptions = objConversion();
    objOptions.bDoSubfolders = objOptions.bSaveInOriginalFolder = true;

    AddTaskRow(app, objOptions);

    const Grid& fg = app.frmMain.fgToDo;
    EXPECT_EQ(fg.Rows(), 3);
    EXPECT_EQ(aRow(fg, 1), (std::vector<std::string>{"RGM", "*^0^FALSE^75^", "1", "C", "/p/a.bmp", "2", "bmp",
                                                     "/out/a.jpg", "1", "jpg", ""}));
    ExpectMarkerAtEnd(fg);
    EXPECT_EQ(fg.Row(), 2);
    EXPECT_EQ(fg.ColSel(), 10);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(AddTaskRow, SetsUpTheTableIfNecessary)
{
    TestApplication app;
    FillTable(app, 1);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(0, kColNumber), "#");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColNumber), "1");
    ExpectMarkerAtEnd(app.frmMain.fgToDo);
}

TEST(AddTaskRow, WritesTheSourceExtensionOnlyForMethodOne)
{
    TestApplication app;
    for (const std::int32_t lMethod : {1, 2, 4}) {
        clsConversionOptions objOptions = objConversion();
        objOptions.lConversionMethod = lMethod;
        AddTaskRow(app, objOptions);
    }
    const Grid& fg = app.frmMain.fgToDo;
    EXPECT_EQ(fg.TextMatrix(1, kColOriginalExtension), "bmp");
    EXPECT_EQ(fg.TextMatrix(2, kColOriginalExtension), "");
    EXPECT_EQ(fg.TextMatrix(3, kColOriginalExtension), "");
    EXPECT_EQ(fg.TextMatrix(1, kColFlags), "M");
    EXPECT_EQ(fg.TextMatrix(2, kColFlags), "");
}

TEST(AddTaskRow, WritesAStarForAutodetect)
{
    TestApplication app;
    clsConversionOptions objOptions = objConversion();
    objOptions.lOriginalFileType = -1;
    AddTaskRow(app, objOptions);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColOriginalType), "-1");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColOriginalExtension), "*");
}

TEST(AddTaskRow, InsertsASpecialProcessWithItsNumber)
{
    TestApplication app;
    clsConversionOptions objOptions = objConversion();
    objOptions.sActionToDo = "S";
    objOptions.lSpecialProcess = 7;
    objOptions.lConversionMethod = 2;
    objOptions.lTargetFileType = 2;

    AddTaskRow(app, objOptions);

    EXPECT_EQ(aRow(app.frmMain.fgToDo, 1),
              (std::vector<std::string>{"", "*^0^FALSE^75^", "1", "S7", "/p/a.bmp", "2", "bmp", "/out/a.jpg",
                                        "2", "bmp", ""}));
}

TEST(AddTaskRow, DropsTheDetailsOfUnknownProcesses)
{
    TestApplication app;
    std::int32_t lRow = 0;
    for (const std::int32_t lProcess : {0, 1, 2, 29, 30, 31, 60, 61, 99, 100, 101}) {
        clsConversionOptions objOptions = objConversion();
        objOptions.sActionToDo = "S";
        objOptions.lSpecialProcess = lProcess;
        AddTaskRow(app, objOptions);
        EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(++lRow, kColDetails),
                  bIsTaskProcess(lProcess) ? objOptions.sExtraParams : " ")
            << lProcess;
    }
    EXPECT_TRUE(bIsTaskProcess(2) && bIsTaskProcess(29) && bIsTaskProcess(31) && bIsTaskProcess(60) &&
                bIsTaskProcess(100));
    EXPECT_FALSE(bIsTaskProcess(0) || bIsTaskProcess(1) || bIsTaskProcess(30) || bIsTaskProcess(61) ||
                 bIsTaskProcess(101));
}

TEST(AddTaskRow, ReplacesTabsAndNewlinesInCells)
{
    TestApplication app;
    clsConversionOptions objOptions = objConversion("/p/a\tb\nc\rd.bmp");
    AddTaskRow(app, objOptions);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColOriginal), "/p/a b c d.bmp");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColTarget), "/out/a.jpg");
}

TEST(FlagsFromRequest, ContainNoSpaces)
{
    clsConversionOptions objOptions;
    EXPECT_EQ(sFlagsFromRequest(objOptions), "M");
    objOptions.bDoSubfolders = true;
    objOptions.bExportFormula = true;
    EXPECT_EQ(sFlagsFromRequest(objOptions), "RM");
    objOptions.lConversionMethod = 2;
    objOptions.bSaveInOriginalFolder = true;
    EXPECT_EQ(sFlagsFromRequest(objOptions), "RG");
}

TEST(FlagIsSet, ChecksOnlyTheFirstNineCharacters)
{
    for (const char* sFlags : {"RGM", "R G M"})
        EXPECT_TRUE(bFlagIsSet(sFlags, 'R') && bFlagIsSet(sFlags, 'G') && bFlagIsSet(sFlags, 'M'));
    EXPECT_TRUE(bFlagIsSet("        M", 'M'));
    EXPECT_FALSE(bFlagIsSet("         M", 'M'));
    EXPECT_FALSE(bFlagIsSet("", 'M'));
    EXPECT_FALSE(bFlagIsSet("m", 'M'));
}

/// Fills the table with one row of these cells.
static void SetRowTo(TestApplication& app, const std::array<const char*, 9>& aCells)
{
    FillTable(app, 1);
    for (std::size_t i = 0; i < aCells.size(); ++i)
        app.frmMain.fgToDo.SetTextMatrix(1, static_cast<std::int32_t>(i), aCells[i]);
}

TEST(LoadRequestFromGridRow, ReadsEveryFieldOfAConversion)
{
    TestApplication app;
    SetRowTo(app, {"R G M F", "*^2^", "17", "C", "C:\\in\\*.bmp", "2", "bmp", "D:\\out\\*.png", "8"});
    clsConversionOptions objOptions;

    LoadRequestFromGridRow(app, objOptions, 1);

    EXPECT_TRUE(objOptions.bDoSubfolders);
    EXPECT_TRUE(objOptions.bSaveInOriginalFolder);
    EXPECT_TRUE(objOptions.bExportFormula);
    EXPECT_EQ(objOptions.lConversionMethod, 1);
    EXPECT_EQ(objOptions.sExtraParams, "*^2^");
    EXPECT_EQ(objOptions.sActionToDo, "C");
    EXPECT_EQ(objOptions.sOriginalFile, "C:\\in\\*.bmp");
    EXPECT_EQ(objOptions.lOriginalFileType, 2);
    EXPECT_EQ(objOptions.sTargetFile, "D:\\out\\*.png");
    EXPECT_EQ(objOptions.lTargetFileType, 8);
    EXPECT_EQ(app.frmMain.fgToDo.Row(), 1);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(LoadRequestFromGridRow, ReadsMethodTwoIfTheFlagIsMissing)
{
    TestApplication app;
    SetRowTo(app, {"RG", "", "1", "C", "a", "1", "", "b", "1"});
    clsConversionOptions objOptions;
    LoadRequestFromGridRow(app, objOptions, 1);
    EXPECT_EQ(objOptions.lConversionMethod, 2);
}

TEST(LoadRequestFromGridRow, ReadsProcessNumbersAndKeepsTheMethod)
{
    TestApplication app;
    SetRowTo(app, {"", "", "1", "S12", "a", "1", "", "b", "1"});
    clsConversionOptions objOptions;
    LoadRequestFromGridRow(app, objOptions, 1);
    EXPECT_EQ(objOptions.lSpecialProcess, 12);
    EXPECT_EQ(objOptions.lConversionMethod, 1);
}

TEST(LoadRequestFromGridRow, KeepsThePreviousTypesForEmptyCells)
{
    TestApplication app;
    SetRowTo(app, {"", "", "1", "S3", "a", "", "", "b", ""});
    clsConversionOptions objOptions;
    objOptions.lOriginalFileType = 5;
    objOptions.lTargetFileType = 6;
    objOptions.lErr = -101;
    LoadRequestFromGridRow(app, objOptions, 1);
    EXPECT_EQ(objOptions.lOriginalFileType, 5);
    EXPECT_EQ(objOptions.lTargetFileType, 6);
    EXPECT_EQ(objOptions.lErr, -101);
}

TEST(LoadRequestFromGridRow, IgnoresHeaderMarkerAndMissingRows)
{
    TestApplication app;
    FillTable(app, 1);
    for (const std::int32_t lRow : {0, 2, 3, -1, 30001}) {
        clsConversionOptions objOptions;
        objOptions.sOriginalFile = "kept";
        LoadRequestFromGridRow(app, objOptions, lRow);
        EXPECT_EQ(objOptions.sOriginalFile, "kept");
        EXPECT_EQ(app.frmMain.fgToDo.Row(), 2);
    }
}

TEST(LoadRequestFromGridRow, RaisesAnErrorForMalformedNumbers)
{
    for (const std::array<const char*, 3> aBad :
         {std::array{"x", "1", "C"}, {"1", " ", "C"}, {"1", "1", "S"}, {"1", "1", "Sx"}, {"1", "1", "SC1"}}) {
        TestApplication app;
        SetRowTo(app, {"", "", "1", aBad[2], "a", aBad[0], "", "b", aBad[1]});
        clsConversionOptions objOptions;
        EXPECT_THROW(LoadRequestFromGridRow(app, objOptions, 1), clsRaisedError);
    }
}

TEST(LoadRequestFromGridRow, RoundsFractionalTypes)
{
    TestApplication app;
    SetRowTo(app, {"", "", "1", "C", "a", " 2 ", "", "b", "8.5"});
    clsConversionOptions objOptions;
    LoadRequestFromGridRow(app, objOptions, 1);
    EXPECT_EQ(objOptions.lOriginalFileType, 2);
    EXPECT_EQ(objOptions.lTargetFileType, 8);
}

TEST(LoadRequestFromGridRow, RoundTripsAnAddedTask)
{
    TestApplication app;
    clsConversionOptions objAdded = objConversion("/p/*.bmp");
    objAdded.bDoSubfolders = true;
    AddTaskRow(app, objAdded);
    clsConversionOptions objRead;
    LoadRequestFromGridRow(app, objRead, 1);
    EXPECT_EQ(objRead.sOriginalFile, objAdded.sOriginalFile);
    EXPECT_EQ(objRead.sTargetFile, objAdded.sTargetFile);
    EXPECT_EQ(objRead.sExtraParams, objAdded.sExtraParams);
    EXPECT_EQ(objRead.lTargetFileType, objAdded.lTargetFileType);
    EXPECT_EQ(objRead.bDoSubfolders, true);
    EXPECT_EQ(objRead.lConversionMethod, 1);
}

TEST(RemoveActionItem, RemovesTheCurrentTaskAndRenumbersTheRest)
{
    TestApplication app;
    FillTable(app, 3);
    app.frmMain.fgToDo.SetRow(2);
    int nShown = 0;
    app.frmMain.fgToDo.OnEnterCell = [&] { ++nShown; };

    RemoveActionItem(app);

    const Grid& fg = app.frmMain.fgToDo;
    EXPECT_EQ(fg.Rows(), 4);
    EXPECT_EQ(fg.TextMatrix(2, kColOriginal), "/p/3.bmp");
    EXPECT_EQ(fg.TextMatrix(2, kColNumber), "2");
    EXPECT_EQ(fg.Row(), 2);
    EXPECT_EQ(nShown, 1);
    ExpectMarkerAtEnd(fg);
}

TEST(RemoveActionItem, IgnoresAnEmptyJob)
{
    TestApplication app;
    SetUpToDoGrid(app);
    for (const std::int32_t lRow : {0, 1}) {
        app.frmMain.fgToDo.SetRow(lRow);
        RemoveActionItem(app);
        EXPECT_EQ(app.frmMain.fgToDo.Rows(), 2);
        ExpectMarkerAtEnd(app.frmMain.fgToDo);
    }
}

TEST(RemoveActionItem, IgnoresTheMarkerRow)
{
    TestApplication app;
    FillTable(app, 2);
    int nShown = 0;
    app.frmMain.fgToDo.OnEnterCell = [&] { ++nShown; };
    RemoveActionItem(app);
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 4);
    EXPECT_EQ(nShown, 0);
}

TEST(RemoveActionItem, SetsUpTheTableIfNecessary)
{
    TestApplication app;
    RemoveActionItem(app);
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 2);
    ExpectMarkerAtEnd(app.frmMain.fgToDo);
}

TEST(RemoveActionItem, CanEmptyAJob)
{
    TestApplication app;
    FillTable(app, 3);
    for (int i = 0; i < 5; ++i) {
        app.frmMain.fgToDo.SetRow(1);
        RemoveActionItem(app);
    }
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 2);
    ExpectMarkerAtEnd(app.frmMain.fgToDo);
}

TEST(RemoveAllFilesWithJobNumber, RenumbersFromOneEvenWithinASlice)
{
    TestApplication app;
    FillTable(app, 3);
    for (std::int32_t l = 1; l <= 3; ++l)
        app.frmMain.fgToDo.SetTextMatrix(l, kColNumber, std::to_string(30000 + l));
    RemoveAllFilesWithJobNumber(app, 1);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, kColNumber), "1");
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(2, kColNumber), "2");
}

TEST(RemoveAllFilesWithJobNumber, NeverRemovesTheFixedRows)
{
    TestApplication app;
    FillTable(app, 1);
    for (const std::int32_t lRow : {-1, 0, 2, 3})
        RemoveAllFilesWithJobNumber(app, lRow);
    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 3);
}

TEST(RemoveAllFilesWithJobNumber, MovesPicturesAlongWithTheirTasks)
{
    TestApplication app;
    FillTable(app, 3);
    FormatPassCell(app.frmMain.fgToDo, 3, true);
    RemoveAllFilesWithJobNumber(app, 1);
    EXPECT_EQ(app.frmMain.fgToDo.Format(2, kColPass).ePicture, CellPicture::imagePass);
    EXPECT_EQ(app.frmMain.fgToDo.Format(3, kColPass).ePicture, CellPicture::None);
}
