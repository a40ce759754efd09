// The form's fields written over a task.
#include "src/editing/modItemToGrid.h"

#include <gtest/gtest.h>

#include "src/job/modFileTypes.h"
#include "tests/job/support/task_rows.h"

/// A form with the fields "/q/*.tif" and "/o/*.png", and a table of two tasks with the first one current.
struct UpdateGrid : testing::Test {
    TestApplication app;
    Grid& fg = app.frmMain.fgToDo;

    UpdateGrid()
    {
        FillTable(app, 2);
        fg.SetRow(1);
        FormatPassCell(fg, 1, false);
        FillInFileTypeComboBoxOriginal(app);
        FillInFileTypeComboBoxTarget(app);
        bSelectFileType(app.frmMain.cbFileTypeOriginal, 3);
        bSelectFileType(app.frmMain.cbFileTypeTarget, 8);
        app.frmMain.cbOriginalFile.SetText("  /q/*.tif ");
        app.frmMain.cbTargetFile.SetText(" /o/*.png ");
        app.frmMain.sImageConversionOptions = "1^0^";
    }
};

TEST_F(UpdateGrid, WritesAllFieldsButNumberAndMark)
{
    app.frmMain.cbDoSubfolders.SetValue(1);
    app.frmMain.cbSaveToOriginalFolder.SetValue(1);

    UpdateGridFromGUI_ConversionItem(app);

    EXPECT_EQ(aRow(fg, 1), (std::vector<std::string>{"R G M", "1^0^", "1", "C", "/q/*.tif", "3", "tif",
                                                     "/o/*.png", "8", "png", "-"}));
    EXPECT_EQ(fg.Format(1, kColPass).ePicture, CellPicture::imageFail);
    EXPECT_EQ(fg.Rows(), 4);
}

TEST_F(UpdateGrid, SeparatesFlagsBySpaces)
{
    UpdateGridFromGUI_ConversionItem(app);
    EXPECT_EQ(fg.TextMatrix(1, kColFlags), " M");

    app.frmMain.cbSaveToOriginalFolder.SetValue(1);
    UpdateGridFromGUI_ConversionItem(app);
    EXPECT_EQ(fg.TextMatrix(1, kColFlags), " G M");
}

TEST_F(UpdateGrid, WritesTheSourceExtensionOnlyForMethodOne)
{
    app.frmMain.lConversionMethod = 4;
    UpdateGridFromGUI_ConversionItem(app);
    EXPECT_EQ(fg.TextMatrix(1, kColOriginalExtension), "");
    EXPECT_EQ(fg.TextMatrix(1, kColFlags), "");
}

TEST_F(UpdateGrid, LeavesHeaderAndMarkerAlone)
{
    for (const std::int32_t lRow : {0, 3}) {
        fg.SetRow(lRow);
        const std::vector<std::string> aBefore = aRow(fg, lRow);
        UpdateGridFromGUI_ConversionItem(app);
        EXPECT_EQ(aRow(fg, lRow), aBefore);
    }
}
