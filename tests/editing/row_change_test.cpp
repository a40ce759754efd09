// The form follows the current row, and edits are asked about before they are lost.
#include "src/forms/scope_guards.h"
#include "tests/editing/support/editing_form.h"

namespace
{

class RowChange : public EditingForm
{
protected:
    RowChange()
    {
        AddTask("a");
        AddTask("b");
        frm.fgToDo.SetRow(1);
    }
    void EditFirstTask(BoxAnswer eAnswer)
    {
        frm.cbTargetFile.UserTypes("/out/edited.gif");
        app.windows.answers = {eAnswer};
    }
};

}  // namespace

TEST_F(RowChange, ShowsTheFieldsOfAConversion)
{
    frm.fgToDo.AddItem("R G M\t1^0^FALSE^80^\t3\tC\t/in/*.bmp\t2\tbmp\t/in/*.gif\t4\tgif", 3);

    frm.fgToDo.SetRow(3);

    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/*.bmp");
    EXPECT_EQ(lType(frm.cbFileTypeOriginal), 2);
    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/*.gif");
    EXPECT_EQ(lType(frm.cbFileTypeTarget), 4);
    EXPECT_EQ(frm.cbDoSubfolders.Value(), 1);
    EXPECT_EQ(frm.cbSaveToOriginalFolder.Value(), 1);
    EXPECT_FALSE(frm.frameTargetFile.Enabled());
    EXPECT_FALSE(frm.cmdSelectTargetFile.Visible());
    EXPECT_EQ(frm.sImageConversionOptions, "1^0^FALSE^80^");
    EXPECT_FALSE(frm.bDirtyConversionItem);
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(RowChange, ClosesTheFolderBoxesForAPlainSource)
{
    frm.fgToDo.AddItem("RGM\t1^0^\t3\tC\t/in/a.bmp\t2\tbmp\t/in/a.gif\t4\tgif", 3);

    frm.fgToDo.SetRow(3);

    EXPECT_FALSE(frm.cbDoSubfolders.Enabled());
    EXPECT_FALSE(frm.cbSaveToOriginalFolder.Enabled());
    EXPECT_EQ(frm.cbSaveToOriginalFolder.Value(), 0);
    EXPECT_TRUE(frm.frameTargetFile.Enabled());
    EXPECT_TRUE(frm.cmdSelectTargetFile.Visible());
    EXPECT_TRUE(frm.picSelectTargetFile.Visible());
}

TEST_F(RowChange, LeavesTheTypesThatNoEntryHas)
{
    ChooseItem(frm.cbFileTypeTarget, 4);
    frm.bDirtyConversionItem = false;
    frm.fgToDo.AddItem("M\t\t3\tC\t/in/a.bmp\t99\t\t/in/a\tx\t", 3);

    frm.fgToDo.SetRow(3);

    EXPECT_EQ(lType(frm.cbFileTypeOriginal), 2);
    EXPECT_EQ(lType(frm.cbFileTypeTarget), 4);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(RowChange, LeavesTheFieldsForTheMarkerRow)
{
    frm.fgToDo.SetRow(3);

    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/a.bmp");
    EXPECT_FALSE(frm.keyRemove.Enabled());
}

TEST_F(RowChange, SelectsTheWholeRow)
{
    frm.fgToDo.SetRow(2);

    EXPECT_EQ(frm.fgToDo.Col(), 0);
    EXPECT_EQ(frm.fgToDo.ColSel(), frm.fgToDo.Cols() - 1);
}

TEST_F(RowChange, ByTheProgramShowsNothing)
{
    {
        const InternalChange objChange(app);
        frm.fgToDo.SetRow(2);
    }

    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/a.bmp");
}

TEST_F(RowChange, AsksAboutEditsWhileTheirRowIsStillCurrent)
{
    EditFirstTask(BoxAnswer::No);
    std::int32_t lRowWhenAsked = 0;
    app.windows.on_box = [&] { lRowWhenAsked = frm.fgToDo.Row(); };

    frm.fgToDo.SetRow(2);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text,
              "You've changed the current conversion item #1\r\rDo you want to update your changes?");
    EXPECT_EQ(app.windows.boxes[0].title, "Update Conversion Item");
    EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::YesNoCancel);
    EXPECT_EQ(lRowWhenAsked, 1);
}

TEST_F(RowChange, TranslatesNothingOfTheQuestion)
{
    app.objTranslator.dictTranslations["Update Conversion Item"] = "Aktualisieren";
    EditFirstTask(BoxAnswer::No);

    frm.fgToDo.SetRow(2);

    EXPECT_EQ(app.windows.boxes.at(0).title, "Update Conversion Item");
}

TEST_F(RowChange, KeepsTheEditsOnCancelThoughTheRowHasMoved)
{
    EditFirstTask(BoxAnswer::Cancel);

    frm.fgToDo.SetRow(2);

    EXPECT_EQ(frm.fgToDo.Row(), 2);
    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/edited.gif");
    EXPECT_TRUE(frm.bDirtyConversionItem);
    EXPECT_EQ(sCell(1, kColTarget), "/out/a.png");
}

TEST_F(RowChange, ForgetsTheEditsOnNoAndShowsTheNewRow)
{
    EditFirstTask(BoxAnswer::No);

    frm.fgToDo.SetRow(2);

    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/b.png");
    EXPECT_FALSE(frm.bDirtyConversionItem);
    EXPECT_EQ(sCell(1, kColTarget), "/out/a.png");
}

TEST_F(RowChange, UpdatesTheLeftRowOnYesAndShowsTheNewOne)
{
    EditFirstTask(BoxAnswer::Yes);

    frm.fgToDo.SetRow(2);

    EXPECT_EQ(sCell(1, kColTarget), "/out/edited.gif");
    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/b.png");
    EXPECT_FALSE(frm.bDirtyConversionItem);
}

TEST_F(RowChange, TellsWhatIsWrongOnYesWithAnInvalidField)
{
    frm.cbOriginalFile.UserTypes("/in/missing.bmp");
    app.windows.answers = {BoxAnswer::Yes, BoxAnswer::No};

    frm.fgToDo.SetRow(2);

    EXPECT_EQ(app.windows.boxes.size(), 2u);
    EXPECT_EQ(sCell(1, kColOriginal), "/in/a.bmp");
    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/missing.bmp");
    EXPECT_TRUE(frm.bDirtyConversionItem);
}

TEST_F(RowChange, AsksNothingWhileTheSchedulersTimerIsOn)
{
    EditFirstTask(BoxAnswer::Cancel);
    app.frmScheduler.Timer1.SetEnabled(true);

    frm.fgToDo.SetRow(2);

    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(RowChange, StopsAStartOnCancel)
{
    EditFirstTask(BoxAnswer::Cancel);

    frm.keyConvert.UserClicks();

    EXPECT_EQ(sCell(1, kColPass), "");
    EXPECT_TRUE(frm.bDirtyConversionItem);
    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/edited.gif");
}

TEST_F(RowChange, RunsTheUpdatedTaskOnYes)
{
    EditFirstTask(BoxAnswer::Yes);

    frm.keyConvert.UserClicks();

    EXPECT_TRUE(app.files.Has("/out/edited.gif"));
}

TEST_F(RowChange, ShowsTheSpecialProcessOfARow)
{
    frm.fgToDo.AddItem("R\tdetails\t3\tS36\t/in/*.gif\t4\tgif\t/out/*.gif\t4\tgif", 3);

    frm.fgToDo.SetRow(3);

    EXPECT_TRUE(frm.rbActionToDo(1).Value());
    EXPECT_EQ(frm.sActionToDo, "S");
    EXPECT_EQ(frm.lConversionMethod, 4);
    EXPECT_TRUE(frm.frameSpecializedAction.Visible());
    EXPECT_EQ(frm.cbSpecialProcesses.ItemData(frm.cbSpecialProcesses.ListIndex()), 36);
    EXPECT_EQ(frm.cbOriginalFileSpecialized.Text(), "/in/*.gif");
    EXPECT_EQ(frm.cbTargetFileSpecialized.Text(), "/out/*.gif");
    EXPECT_EQ(lType(frm.cbFileTypeOriginalSpecialized), 4);
    EXPECT_EQ(frm.cbDoSubfoldersSpecialized.Value(), 1);
    EXPECT_EQ(frm.asSP_Details[36], "details");
    EXPECT_FALSE(frm.bDirtyConversionItem);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST_F(RowChange, ShowsTheLaunchOfARow)
{
    frm.fgToDo.AddItem("\t128^3^20\t3\tS100\t/bin/true\t\t\ta b\t\t", 3);

    frm.fgToDo.SetRow(3);

    EXPECT_EQ(frm.cbCommandLine.Text(), "/bin/true");
    EXPECT_EQ(frm.cbCommandLineArguments.Text(), "a b");
    EXPECT_EQ(lType(frm.cbCommandLineThreadPriority), 128);
    EXPECT_EQ(lType(frm.cbCommandLineWindowState), 3);
    EXPECT_EQ(frm.txtCommandLineWaitTimeInSeconds.Text(), "20");
    EXPECT_TRUE(frm.frameCommandLine.Visible());
    EXPECT_FALSE(frm.frameSelectFilesForSpecialProcessing.Visible());
}

TEST_F(RowChange, ComesBackFromASpecialProcessToAConversion)
{
    frm.fgToDo.AddItem("\tdetails\t3\tS36\t/in/a.gif\t4\tgif\t/out/a.gif\t4\tgif", 3);
    frm.fgToDo.SetRow(3);
    ASSERT_EQ(frm.tsImageViewer.TabCount(), 3);

    frm.fgToDo.SetRow(1);

    EXPECT_TRUE(frm.rbActionToDo(0).Value());
    EXPECT_EQ(frm.sActionToDo, "C");
    EXPECT_FALSE(frm.frameSpecializedAction.Visible());
    EXPECT_EQ(frm.tsImageViewer.TabCount(), 2);
}

TEST_F(RowChange, TellsAProcessNumberBeyondAllInABox)
{
    frm.fgToDo.AddItem("\t\t3\tS101\t/in/a.gif\t4\tgif\t/out/a.gif\t4\tgif", 3);

    frm.fgToDo.SetRow(3);

    EXPECT_EQ(sLastBox(), "Subscript out of range");
    EXPECT_FALSE(app.bInternalGridChange);
    EXPECT_EQ(frm.fgToDo.Row(), 3);
}

TEST_F(RowChange, LoadsTheViewerIfPicturesAreLoadedAutomatically)
{
    int lLoads = 0;
    app.objHooks.tsImageViewer_Click = [&](Application&) { ++lLoads; };

    frm.fgToDo.SetRow(2);
    EXPECT_EQ(lLoads, 0);

    frm.bAutoLoadImages = true;
    frm.fgToDo.SetRow(1);
    frm.fgToDo.SetRow(3);
    EXPECT_EQ(lLoads, 2);
}

TEST_F(RowChange, ShowsTheSelectedTaskAgainOnComingBackFromTheLog)
{
    frm.ts.UserChooses(2);
    frm.fgToDo.SetTextMatrix(1, kColTarget, "/out/changed.png");

    frm.ts.UserChooses(1);

    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/changed.png");
}

TEST_F(RowChange, KeepsEditsOverALookAtTheLog)
{
    frm.cbTargetFile.UserTypes("/out/edited.gif");

    frm.ts.UserChooses(2);
    frm.ts.UserChooses(1);

    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/edited.gif");
    EXPECT_TRUE(frm.keyUpdate.Enabled());
}
