// The dialog of general options.
#include "src/dialogs/modOptions.h"

#include <gtest/gtest.h>

#include "src/dialogs/modDialogs.h"
#include "src/settings/modSettings.h"
#include "tests/fakes/test_application.h"

namespace
{

using Texts = std::vector<std::string>;

class Options : public testing::Test
{
protected:
    Options() { ConnectDialogs(app); }

    /// Opens the dialog from the menu; a person does fnActs in it.
    void Open(const std::function<void()>& fnActs)
    {
        app.windows.on_show_modal = [this, fnActs](Form&) {
            frm.SetVisible(true);
            fnActs();
        };
        app.frmMainMDI.mnuOptions.UserClicks();
        EXPECT_EQ(app.windows.modal_forms.back(), &frm);
    }
    void ExpectSettings(bool bAutoLoad, bool bAutodetect, bool bDelete, const std::string& sLogFile) const
    {
        EXPECT_EQ(app.frmMain.bAutoLoadImages, bAutoLoad);
        EXPECT_EQ(app.frmMain.bTryAutodetectIfFailed, bAutodetect);
        EXPECT_EQ(app.frmMain.bDeleteOriginalFileAfterProcessing, bDelete);
        EXPECT_EQ(app.frmMain.sLogFile, sLogFile);
    }

    TestApplication app;
    frmOptions& frm = app.frmOptions;
};

}  // namespace

TEST_F(Options, HasItsCaptionsLetterByLetter)
{
    frmOptions_Load(app);

    EXPECT_EQ(frm.Caption(), "Options");
    EXPECT_EQ(frm.fraGeneralOptions.Caption(), "General Options");
    EXPECT_EQ(frm.cbAutoLoadImages.Caption(), "Automatically load image files into viewer");
    EXPECT_EQ(frm.cbTryAutodetectIfFailed.Caption(),
              "If conversion fails, try using Autodetecting Original File Type");
    EXPECT_EQ(frm.cbDeleteAfterProcessing.Caption(), "Delete ORIGINAL files after processing");
    EXPECT_EQ(frm.lblDeleteWarning.Caption(),
              "Please be VERY careful when enabling this option. Back up critical data first.  No deletion "
              "will occur Original and Target are exactly the same file.");
    EXPECT_EQ(frm.fraLogFile.Caption(), "Create Log of Files Processed (Leave empty for none)");
    EXPECT_EQ(frm.lblLogFile.Caption(), "Select the file name of the report (e.g. c:\\myoutput\\Report.TXT)");
    EXPECT_EQ(frm.cmdSelectScheduledJobFile.Caption(), "  File..");
    EXPECT_EQ(frm.cmdApply.Caption(), "&Apply");
    EXPECT_EQ(frm.cmdCancel.Caption(), "&Cancel");
    EXPECT_EQ(frm.cmdHelpRegularExpression.Caption(), "&Help");
    EXPECT_EQ(frm.cmdHelpRegularExpression.ToolTipText(), "Press for help");
}

TEST_F(Options, ShowsTheSettingsOfTheMainForm)
{
    app.frmMain.bAutoLoadImages = false;
    app.frmMain.bDeleteOriginalFileAfterProcessing = true;
    app.frmMain.sLogFile = "/out/report.txt";

    Open([this] {
        EXPECT_EQ(frm.cbAutoLoadImages.Value(), 0);
        EXPECT_EQ(frm.cbTryAutodetectIfFailed.Value(), 1);
        EXPECT_EQ(frm.cbDeleteAfterProcessing.Value(), 1);
        EXPECT_EQ(frm.txtLogFile.Text(), "/out/report.txt");
    });
}

TEST_F(Options, TakesEffectOnApply)
{
    Open([this] {
        frm.cbAutoLoadImages.UserToggles();
        frm.cbTryAutodetectIfFailed.UserToggles();
        frm.cbDeleteAfterProcessing.UserToggles();
        frm.txtLogFile.UserTypes("  /out/report.txt ");
        frm.cmdApply.UserClicks();
        EXPECT_FALSE(frm.Visible());
    });

    ExpectSettings(false, false, true, "/out/report.txt");
    EXPECT_TRUE(app.ini.written.empty());
}

TEST_F(Options, ReachesTheSettingsFileWithTheMainFormsSettings)
{
    Open([this] {
        frm.cbDeleteAfterProcessing.UserToggles();
        frm.txtLogFile.UserTypes("/r.log");
        frm.cmdApply.UserClicks();
    });

    SaveIniFile(app);

    EXPECT_EQ(app.ini.Stored("frmMain", "bDeleteOriginalFileAfterProcessing"), "TRUE");
    EXPECT_EQ(app.ini.Stored("frmMain", "bAutoLoadImages"), "TRUE");
    EXPECT_EQ(app.ini.Stored("frmMain", "sLogFile"), "/r.log");
}

TEST_F(Options, TakesBlanksForNoReportFile)
{
    app.frmMain.sLogFile = "/out/report.txt";

    Open([this] {
        frm.txtLogFile.UserTypes("   ");
        frm.cmdApply.UserClicks();
    });

    EXPECT_EQ(app.frmMain.sLogFile, "");
}

TEST_F(Options, ChangesNothingOnCancelEscapeOrClose)
{
    for (const auto& fnLeave : std::vector<std::function<void()>>{
             [this] { frm.cmdCancel.UserClicks(); }, [this] { frm.txtLogFile.UserPresses("Esc"); },
             [this] { frm.UserCloses(); }}) {
        Open([&] {
            frm.cbAutoLoadImages.UserToggles();
            frm.cbDeleteAfterProcessing.UserToggles();
            frm.txtLogFile.UserTypes("/elsewhere");
            fnLeave();
            EXPECT_FALSE(frm.Visible());
        });
        ExpectSettings(true, true, false, "");
    }
}

TEST_F(Options, PutsThePickedReportFileIntoItsField)
{
    app.windows.picks = {"/out/picked.log"};

    Open([this] {
        frm.cmdSelectScheduledJobFile.UserClicks();
        EXPECT_EQ(frm.txtLogFile.Text(), "/out/picked.log");
    });

    ASSERT_EQ(app.windows.file_pickers.size(), 1u);
    const FilePicker& objPicker = app.windows.file_pickers[0];
    EXPECT_EQ(objPicker.sTitle, "Report File Path");
    EXPECT_EQ(objPicker.sFilter, "Log File(*.LOG)|*.LOG|Text Files (*.TXT)|*.TXT|All Files (*.*)|*.*");
    EXPECT_EQ(objPicker.lFilterIndex, 1);
    EXPECT_FALSE(objPicker.bToSave);
}

TEST_F(Options, KeepsItsReportFileWhenPickingIsCancelled)
{
    app.frmMain.sLogFile = "/out/report.txt";

    Open([this] {
        frm.cmdSelectScheduledJobFile.UserClicks();
        EXPECT_EQ(frm.txtLogFile.Text(), "/out/report.txt");
    });

    EXPECT_EQ(app.windows.file_pickers.size(), 1u);
}

TEST_F(Options, TranslatesCaptionsAndThePickersTitleButNotTheReportFile)
{
    app.objTranslator.dictTranslations = {
        {"&Apply", "Anwenden"}, {"Report File Path", "Berichtsdatei"}, {"/r.log", "wrong"}};
    app.frmMain.sLogFile = "/r.log";

    for (int lTime = 0; lTime < 2; ++lTime)
        Open([this] {
            EXPECT_EQ(frm.cmdApply.Caption(), "Anwenden");
            EXPECT_EQ(frm.txtLogFile.Text(), "/r.log");
            frm.cmdSelectScheduledJobFile.UserClicks();
        });

    EXPECT_EQ(app.windows.file_pickers.at(1).sTitle, "Berichtsdatei");
}

TEST_F(Options, HidesTheViewerOfAConversionWithoutAutomaticLoading)
{
    Open([this] {
        frm.cbAutoLoadImages.UserToggles();
        frm.cmdApply.UserClicks();
    });
    EXPECT_FALSE(app.frmMain.frameImageViewer.Visible());

    Open([this] {
        frm.cbAutoLoadImages.UserToggles();
        frm.cmdApply.UserClicks();
    });
    EXPECT_TRUE(app.frmMain.frameImageViewer.Visible());
}

TEST_F(Options, KeepsTheViewerOfASpecialProcessWithoutAutomaticLoading)
{
    app.frmMain.sActionToDo = "S";

    Open([this] {
        frm.cbAutoLoadImages.UserToggles();
        frm.cmdApply.UserClicks();
    });

    EXPECT_TRUE(app.frmMain.frameImageViewer.Visible());
}

TEST_F(Options, OpensItsHelpTopicByButtonAndKey)
{
    app.sHelpFile = "Varnel.HLP";

    Open([this] {
        frm.cmdHelpRegularExpression.UserClicks();
        frm.UserPresses("F1");
    });

    EXPECT_EQ(app.windows.help_calls, (Texts{"Varnel.HLP#12", "Varnel.HLP#12"}));
}
