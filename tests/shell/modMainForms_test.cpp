// Loading the main forms.
#include "src/shell/modMainForms.h"

#include <gtest/gtest.h>

#include "src/commands/modMenuToolbar.h"
#include "tests/fakes/test_application.h"

TEST(LoadMainForms, UsesDefaultsWithoutASettingsFile)
{
    TestApplication app;

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 2);
    EXPECT_EQ(app.frmMain.fgToDo.TextMatrix(1, 2), "*");
    EXPECT_EQ(app.frmMain.fgLog.Rows(), 2);
    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ListCount(), 11);
    EXPECT_EQ(app.frmMain.cbFileTypeOriginal.ListCount(), 15);
    EXPECT_EQ(app.frmMain.sActionToDo, "C");
    EXPECT_TRUE(app.frmMain.rbActionToDo(0).Value());
    EXPECT_TRUE(app.ini.written.empty());
}

TEST(LoadMainForms, OffersTheCommandsOfANewJobAndConvert)
{
    TestApplication app;

    LoadMainForms(app);
    frmMain& frm = app.frmMain;
    frmMainMDI& mdi = app.frmMainMDI;
    const std::vector<const Control*> aCommands = {
        &frm.keyNew,
        &frm.keyOpen,
        &frm.keyAdd,
        &frm.keyRemove,
        &frm.keyUpdate,
        &frm.keyRewind,
        &frm.keyPause,
        &frm.KeySave,
        &frm.KeySaveAs,
        &frm.KeyOpen,
        &frm.KeySaveLogAsConversionJob,
        &frm.cmdAdd,
        &frm.cmdRemove,
        &frm.cmdUpdate,
        &frm.cmdPause,
        &mdi.mnuNewConversionJob,
        &mdi.mnuOpenConversionJob,
        &mdi.mnuSaveConversionJob,
        &mdi.mnuSaveConversionJobAs,
        &mdi.mnuSaveLogAsConversionJob,
        &mdi.mnuAddConversionJob,
        &mdi.mnuRemoveConversionJob,
        &mdi.mnuUpdateConversionJob,
        &mdi.mnuPause,
        &mdi.mnuRewindConversionJob,
    };
    const auto EnabledOnes = [&] {
        std::vector<std::string> aNames;
        for (const Control* pCommand : aCommands)
            if (pCommand->Enabled())
                aNames.push_back(pCommand->sName());
        return aNames;
    };
    const std::vector<std::string> aAtStart = EnabledOnes();

    EXPECT_TRUE(frm.keyConvert.Enabled());
    EXPECT_TRUE(mdi.mnuBeginConversionJob.Enabled());

    UpdateMenuToolbar(app);
    EXPECT_EQ(aAtStart, EnabledOnes());
    EXPECT_FALSE(frm.keyConvert.Enabled());
    EXPECT_FALSE(mdi.mnuBeginConversionJob.Enabled());
}

TEST(LoadMainForms, LetsAConvertAtStartSayWhatToDoFirst)
{
    TestApplication app;
    LoadMainForms(app);
    app.frmMain.SetVisible(true);

    app.frmMain.keyConvert.UserClicks();

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Please click the ADD (+) button first, then click Convert");
}

TEST(LoadMainForms, LoadsTheReportFileFromTheSettings)
{
    TestApplication app;
    app.ini.Set("frmMain", "sLogFile", "/out/report.txt");
    app.ini.Set("frmMain", "bDeleteOriginalFileAfterProcessing", "TRUE");

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.sLogFile, "/out/report.txt");
    EXPECT_TRUE(app.frmMain.bDeleteOriginalFileAfterProcessing);
}

TEST(LoadMainForms, ShowsThePanelOfTheProcessLastUsed)
{
    TestApplication app;
    app.ini.Set("frmMain", "sActionToDO", "S");
    app.ini.Set("frmMain", "cbSpecialProcesses.ListIndex", "4");
    app.ini.Set("frmMain", "sSP_Details_SP_FLIP", "1^0^FALSE^75^^^^^^^^1");

    LoadMainForms(app);

    EXPECT_TRUE(app.frmMain.frameSpecializedAction.Visible());
    EXPECT_EQ(app.frmMain.tsSpecialProcessParameters.TabCaption(1), "Flip Direction");
    EXPECT_EQ(app.frmMain.cbSpecialProcessListBox.ListIndex(), 1);
}

TEST(LoadMainForms, StartsAProcessAfreshWhoseStoredChoiceDoesNotExist)
{
    TestApplication app;
    app.ini.Set("frmMain", "sActionToDO", "S");
    app.ini.Set("frmMain", "cbSpecialProcesses.ListIndex", "4");
    app.ini.Set("frmMain", "sSP_Details_SP_FLIP", "1^0^FALSE^75^^^^^^^^9");

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.cbSpecialProcessListBox.ListIndex(), 0);
    EXPECT_TRUE(app.frmMain.frameSpecializedAction.Visible());
}

TEST(LoadMainForms, DoesNothingWhenCalledAgain)
{
    TestApplication app;
    LoadMainForms(app);
    app.frmMain.fgToDo.AddItem("\t\t1\tC", 1);

    LoadMainForms(app);

    EXPECT_EQ(app.frmMain.fgToDo.Rows(), 3);
}
