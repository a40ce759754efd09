// Adding, updating and removing tasks from the form's fields.
#include "tests/editing/support/editing_form.h"

using Cells = std::vector<std::string>;

TEST_F(EditingForm, AddsItsFieldsAsATask)
{
    frm.sImageConversionOptions = "*^0^FALSE^75^^^^^^^^";

    AddTask("a");

    EXPECT_EQ(aRow(1), (Cells{"M", "*^0^FALSE^75^^^^^^^^", "1", "C", "/in/a.bmp", "2", "bmp", "/out/a.png",
                              "8", "png", ""}));
    EXPECT_EQ(lTasks(), 1);
}

TEST_F(EditingForm, KeepsItsTextsAfterAddingWithTheMarkerRowCurrent)
{
    AddTask("a");

    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/a.bmp");
    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/a.png");
    EXPECT_EQ(frm.fgToDo.Row(), 2);
    EXPECT_EQ(frm.ts.SelectedTab(), 1);
    EXPECT_FALSE(frm.bDirtyConversionItem);
    EXPECT_FALSE(frm.keyUpdate.Enabled());
}

TEST_F(EditingForm, OffersTheTextsOfAnAddedTaskAgain)
{
    AddTask("a");
    AddTask("b");

    ASSERT_EQ(frm.cbOriginalFile.ListCount(), 2);
    EXPECT_EQ(frm.cbOriginalFile.List(0), "/in/b.bmp");
    EXPECT_EQ(frm.cbOriginalFile.List(1), "/in/a.bmp");
}

TEST_F(EditingForm, AddsByToolbarAndMenuToo)
{
    frm.cbOriginalFile.UserTypes("/in/a.bmp");

    frm.keyAdd.UserClicks();
    app.frmMainMDI.mnuAddConversionJob.UserClicks();

    EXPECT_EQ(lTasks(), 2);
}

TEST_F(EditingForm, AddsNothingFromTheLogTab)
{
    frm.cbOriginalFile.UserTypes("/in/a.bmp");
    frm.ts.UserChooses(2);

    frm.cmdAdd.UserClicks();
    frm.cmdAdd.Click();

    EXPECT_EQ(lTasks(), 0);
}

TEST_F(EditingForm, LeavesTheTableAndTheEditsAloneWhenTheCheckFails)
{
    frm.cbOriginalFile.UserTypes("/in/missing.bmp");
    app.windows.answers = {BoxAnswer::No};

    frm.cmdAdd.UserClicks();

    EXPECT_EQ(sLastBox(),
              "Unable to add/update: \r\rOriginal File\r\r/in/missing.bmp\r\rdoes not exist.\n\nAdd anyway?");
    EXPECT_EQ(lTasks(), 0);
    EXPECT_TRUE(frm.bDirtyConversionItem);
    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/missing.bmp");
}

TEST_F(EditingForm, AddsAMissingSourceAsTypedOnYes)
{
    frm.cbOriginalFile.UserTypes("/in/missing.bmp");
    frm.cbTargetFile.UserTypes("/out");
    app.windows.answers = {BoxAnswer::Yes};

    frm.cmdAdd.UserClicks();

    EXPECT_EQ(lTasks(), 1);
    EXPECT_EQ(sCell(1, kColTarget), "/out");
}

TEST_F(EditingForm, SaysThatTheSourceIsEmpty)
{
    frm.cmdAdd.UserClicks();

    EXPECT_EQ(sLastBox(), "Unable to add/update: \r\rOriginal File has not been specified.");
    EXPECT_EQ(lTasks(), 0);
}

TEST_F(EditingForm, DropsTheSubfoldersOfAPlainSource)
{
    frm.cbOriginalFile.UserTypes("/in/*.bmp");
    frm.cbDoSubfolders.UserToggles();
    frm.cbOriginalFile.UserTypes("/in/a.bmp");

    frm.cmdAdd.UserClicks();

    EXPECT_EQ(sCell(1, kColFlags), "M");
}

TEST_F(EditingForm, SavesBesideTheSourceOnRequest)
{
    frm.cbOriginalFile.UserTypes("/in/*.bmp");
    frm.cbSaveToOriginalFolder.UserToggles();
    EXPECT_FALSE(frm.frameTargetFile.Enabled());

    frm.cmdAdd.UserClicks();

    EXPECT_EQ(sCell(1, kColFlags), "GM");
    EXPECT_EQ(sCell(1, kColTarget), "/in/*.jpg");
    EXPECT_EQ(frm.cbTargetFile.Text(), "/in/*.jpg");
}

TEST_F(EditingForm, UpdatesTheCurrentTaskButNotItsNumberAndMark)
{
    AddTask("a");
    AddTask("b");
    frm.fgToDo.SetTextMatrix(1, kColPass, "+");
    frm.fgToDo.SetRow(1);
    frm.cbTargetFile.UserTypes("/out/other.gif");
    ASSERT_TRUE(frm.keyUpdate.Enabled());

    frm.cmdUpdate.UserClicks();

    EXPECT_EQ(sCell(1, kColFlags), " M");
    EXPECT_EQ(sCell(1, kColNumber), "1");
    EXPECT_EQ(sCell(1, kColTarget), "/out/other.gif");
    EXPECT_EQ(sCell(1, kColTargetType), "4");
    EXPECT_EQ(sCell(1, kColTargetExtension), "gif");
    EXPECT_EQ(sCell(1, kColPass), "+");
    EXPECT_EQ(sCell(2, kColTarget), "/out/b.png");
    EXPECT_FALSE(frm.bDirtyConversionItem);
    EXPECT_FALSE(frm.keyUpdate.Enabled());
}

TEST_F(EditingForm, WritesTheFormsFlagsWithBlanks)
{
    frm.cbOriginalFile.UserTypes("/in/*.bmp");
    frm.cbTargetFile.UserTypes("/out/*.png");
    frm.cmdAdd.UserClicks();
    frm.fgToDo.SetRow(1);

    frm.cbDoSubfolders.UserToggles();
    frm.cmdUpdate.UserClicks();
    EXPECT_EQ(sCell(1, kColFlags), "R M");

    frm.cbSaveToOriginalFolder.UserToggles();
    frm.cmdUpdate.UserClicks();
    EXPECT_EQ(sCell(1, kColFlags), "R G M");
}

TEST_F(EditingForm, DoesNotUpdateWithTheMarkerRowCurrent)
{
    AddTask("a");
    frm.cbTargetFile.UserTypes("/out/other.gif");

    EXPECT_FALSE(frm.keyUpdate.Enabled());
    frm.cmdUpdate.UserClicks();

    EXPECT_EQ(sCell(1, kColTarget), "/out/a.png");
    EXPECT_EQ(sCell(2, kColNumber), "*");
}

TEST_F(EditingForm, LeavesTheRowAloneWhenAnUpdateFails)
{
    AddTask("a");
    frm.fgToDo.SetRow(1);
    frm.cbOriginalFile.UserTypes("/in/missing.bmp");
    app.windows.answers = {BoxAnswer::No};

    frm.cmdUpdate.UserClicks();

    EXPECT_EQ(sCell(1, kColOriginal), "/in/a.bmp");
    EXPECT_TRUE(frm.bDirtyConversionItem);
}

TEST_F(EditingForm, RemovesTheCurrentTaskAndShowsTheNextOne)
{
    AddTask("a");
    AddTask("b");
    frm.fgToDo.SetRow(1);

    frm.cmdRemove.UserClicks();

    EXPECT_EQ(lTasks(), 1);
    EXPECT_EQ(sCell(1, kColNumber), "1");
    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/b.bmp");
}

TEST_F(EditingForm, ForgetsTheEditsOfARemovedTask)
{
    AddTask("a");
    AddTask("b");
    frm.fgToDo.SetRow(1);
    frm.cbTargetFile.UserTypes("/out/other.gif");

    frm.cmdRemove.UserClicks();

    EXPECT_EQ(frm.cbTargetFile.Text(), "/out/b.png");
    EXPECT_FALSE(frm.bDirtyConversionItem);
}

TEST_F(EditingForm, RemovesNothingWithTheMarkerRowCurrent)
{
    AddTask("a");

    EXPECT_FALSE(frm.keyRemove.Enabled());
    frm.keyRemove.UserClicks();

    EXPECT_EQ(lTasks(), 1);
}

TEST_F(EditingForm, RunsNothingWithoutATask)
{
    frm.keyConvert.SetEnabled(true);

    frm.keyConvert.UserClicks();

    EXPECT_EQ(sLastBox(), "Please click the ADD (+) button first, then click Convert");
    EXPECT_FALSE(frm.bRunning);
    EXPECT_TRUE(app.images.calls.empty());
}

TEST_F(EditingForm, ConvertsItsTasks)
{
    AddTask("a");
    AddTask("b");

    frm.keyConvert.UserClicks();

    EXPECT_EQ(sCell(1, kColPass), "+");
    EXPECT_EQ(sCell(2, kColPass), "+");
    EXPECT_TRUE(app.files.Has("/out/b.png"));
}

TEST_F(EditingForm, BeginsNoRunInsideARun)
{
    AddTask("a");
    AddTask("b");
    int lRuns = 0;
    app.windows.on_do_events = [&] {
        ++lRuns;
        frm.keyPause.UserClicks();
        frm.keyConvert.SetEnabled(true);
        frm.keyConvert.UserClicks();
        frm.keyAdd.SetEnabled(true);
        frm.keyAdd.UserClicks();
    };

    frm.keyConvert.UserClicks();

    EXPECT_GT(lRuns, 0);
    EXPECT_EQ(lTasks(), 2);
    EXPECT_EQ(sCell(2, kColPass), "");
    EXPECT_FALSE(frm.bRunning);
}

TEST_F(EditingForm, TakesNoEditsDuringARun)
{
    AddTask("a");
    app.windows.on_do_events = [&] { frm.cbOriginalFile.UserTypes("/in/typed.bmp"); };

    frm.keyConvert.UserClicks();

    EXPECT_EQ(frm.cbOriginalFile.Text(), "/in/a.bmp");
    EXPECT_FALSE(frm.bDirtyConversionItem);
}
