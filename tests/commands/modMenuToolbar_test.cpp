// Which commands are enabled in which state.
#include "src/commands/modMenuToolbar.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

namespace
{

// Fills the table with lTasks tasks between header and marker row.
void FillTable(TestApplication& app, std::int32_t lTasks)
{
    Grid& fgToDo = app.frmMain.fgToDo;
    fgToDo.SetRows(1);
    for (std::int32_t l = 1; l <= lTasks; ++l)
        fgToDo.AddItem("\t\t" + std::to_string(l) + "\tC", l);
    fgToDo.AddItem("\t\t*", lTasks + 1);
}

}  // namespace

TEST(UpdateMenuToolbar, EnablesOnlyNewOpenAndAddForAnEmptyJob)
{
    TestApplication app;
    FillTable(app, 0);
    app.frmMain.fgToDo.SetRow(1);

    UpdateMenuToolbar(app);

    EXPECT_TRUE(app.frmMain.keyAdd.Enabled());
    EXPECT_TRUE(app.frmMain.keyNew.Enabled());
    EXPECT_TRUE(app.frmMain.keyOpen.Enabled());
    EXPECT_FALSE(app.frmMain.keyConvert.Enabled());
    EXPECT_FALSE(app.frmMain.keyRemove.Enabled());
    EXPECT_FALSE(app.frmMain.keyUpdate.Enabled());
    EXPECT_FALSE(app.frmMain.keyRewind.Enabled());
    EXPECT_FALSE(app.frmMain.keyPause.Enabled());
    EXPECT_TRUE(app.frmMain.KeySave.Enabled());
    EXPECT_FALSE(app.frmMain.KeySaveLogAsConversionJob.Enabled());
}

TEST(UpdateMenuToolbar, EnablesRemoveForTasksButNotTheMarker)
{
    TestApplication app;
    FillTable(app, 2);
    app.frmMain.fgToDo.SetRow(2);
    UpdateMenuToolbar(app);
    EXPECT_TRUE(app.frmMain.keyRemove.Enabled());

    app.frmMain.fgToDo.SetRow(3);
    UpdateMenuToolbar(app);
    EXPECT_FALSE(app.frmMain.keyRemove.Enabled());
}

TEST(UpdateMenuToolbar, EnablesUpdateOnlyForAnEditedTask)
{
    TestApplication app;
    FillTable(app, 1);
    app.frmMain.fgToDo.SetRow(1);
    UpdateMenuToolbar(app);
    EXPECT_FALSE(app.frmMain.keyUpdate.Enabled());

    app.frmMain.bDirtyConversionItem = true;
    UpdateMenuToolbar(app);
    EXPECT_TRUE(app.frmMain.keyUpdate.Enabled());
}

TEST(UpdateMenuToolbar, DisablesEditingCommandsOnTheLogTab)
{
    TestApplication app;
    FillTable(app, 1);
    app.frmMain.fgToDo.SetRow(1);
    app.frmMain.bDirtyConversionItem = true;
    app.frmMain.ts.SelectTab(2);

    UpdateMenuToolbar(app);

    EXPECT_FALSE(app.frmMain.keyAdd.Enabled());
    EXPECT_FALSE(app.frmMain.keyRemove.Enabled());
    EXPECT_FALSE(app.frmMain.keyUpdate.Enabled());
    EXPECT_TRUE(app.frmMain.keyConvert.Enabled());
}

TEST(UpdateMenuToolbar, EnablesOnlyPauseDuringARun)
{
    TestApplication app;
    FillTable(app, 1);
    app.frmMain.fgToDo.SetRow(1);
    app.frmMain.bRunning = true;

    UpdateMenuToolbar(app);

    EXPECT_TRUE(app.frmMain.keyPause.Enabled());
    EXPECT_TRUE(app.frmMain.cmdPause.Enabled());
    for (const Action* pKey :
         {&app.frmMain.keyRemove, &app.frmMain.keyUpdate, &app.frmMain.keyAdd, &app.frmMain.keyConvert,
          &app.frmMain.keyRewind, &app.frmMain.keyOpen, &app.frmMain.keyNew})
        EXPECT_FALSE(pKey->Enabled()) << pKey->sName();
}

TEST(UpdateMenuToolbar, ClosesFieldsSavingAndDialogsDuringARun)
{
    TestApplication app;
    FillTable(app, 1);
    app.frmMain.fgLog.SetRows(3);
    frmMainMDI& mdi = app.frmMainMDI;
    const std::vector<Control*> aClosed = {&app.frmMain.KeyOpen,
                                           &app.frmMain.KeySave,
                                           &app.frmMain.KeySaveAs,
                                           &app.frmMain.KeySaveLogAsConversionJob,
                                           &mdi.mnuOpenConversionJob,
                                           &mdi.mnuSaveConversionJob,
                                           &mdi.mnuOptions,
                                           &mdi.mnuLanguage,
                                           &mdi.mnuConversionOptions,
                                           &mdi.mnuScheduleConversionJob,
                                           &app.frmMain.frameCF,
                                           &app.frmMain.frameSpecializedAction,
                                           &app.frmMain.rbActionToDo(0),
                                           &app.frmMain.rbActionToDo(1)};

    app.frmMain.bRunning = true;
    UpdateMenuToolbar(app);
    for (const Control* pControl : aClosed)
        EXPECT_FALSE(pControl->Enabled()) << pControl->sName();

    app.frmMain.bRunning = false;
    UpdateMenuToolbar(app);
    for (const Control* pControl : aClosed)
        EXPECT_TRUE(pControl->Enabled()) << pControl->sName();
}

TEST(UpdateMenuToolbar, OffersNothingUntilAPausedRunHasEnded)
{
    TestApplication app;
    FillTable(app, 1);
    app.frmMain.lRunsInProgress = 1;

    UpdateMenuToolbar(app);

    for (const Action* pKey : {&app.frmMain.keyPause, &app.frmMain.keyConvert, &app.frmMain.keyAdd,
                               &app.frmMain.keyNew, &app.frmMain.KeySave})
        EXPECT_FALSE(pKey->Enabled()) << pKey->sName();
}

TEST(UpdateMenuToolbar, EnablesRewindOnceARunHasLeftTraces)
{
    TestApplication app;
    FillTable(app, 1);
    UpdateMenuToolbar(app);
    EXPECT_FALSE(app.frmMain.keyRewind.Enabled());

    app.frmMain.lResumeFileIndex = 4;
    UpdateMenuToolbar(app);
    EXPECT_TRUE(app.frmMain.keyRewind.Enabled());

    app.frmMain.lResumeFileIndex = 0;
    app.frmMain.fgToDo.SetTextMatrix(1, 10, "-");
    UpdateMenuToolbar(app);
    EXPECT_TRUE(app.frmMain.keyRewind.Enabled());
}

TEST(UpdateMenuToolbar, EnablesConvertWhilePausedWithinATask)
{
    TestApplication app;
    FillTable(app, 0);
    app.frmMain.lResumeFileIndex = 4;

    UpdateMenuToolbar(app);

    EXPECT_TRUE(app.frmMain.keyConvert.Enabled());
}

TEST(UpdateMenuToolbar, EnablesSavingTheLogOnceItHasEntries)
{
    TestApplication app;
    FillTable(app, 1);
    app.frmMain.fgLog.SetRows(3);

    UpdateMenuToolbar(app);

    EXPECT_TRUE(app.frmMain.KeySaveLogAsConversionJob.Enabled());
    EXPECT_TRUE(app.frmMainMDI.mnuSaveLogAsConversionJob.Enabled());
}

TEST(UpdateMenuToolbar, MirrorsTheToolbarToMenusAndButtons)
{
    TestApplication app;
    FillTable(app, 1);
    app.frmMain.fgToDo.SetRow(1);

    UpdateMenuToolbar(app);

    EXPECT_TRUE(app.frmMainMDI.mnuBeginConversionJob.Enabled());
    EXPECT_TRUE(app.frmMainMDI.mnuAddConversionJob.Enabled());
    EXPECT_TRUE(app.frmMainMDI.mnuRemoveConversionJob.Enabled());
    EXPECT_FALSE(app.frmMainMDI.mnuUpdateConversionJob.Enabled());
    EXPECT_FALSE(app.frmMainMDI.mnuPause.Enabled());
    EXPECT_TRUE(app.frmMain.cmdAdd.Enabled());
    EXPECT_TRUE(app.frmMain.cmdRemove.Enabled());
    EXPECT_FALSE(app.frmMain.cmdUpdate.Enabled());
}
