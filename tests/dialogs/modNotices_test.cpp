// The notice of a type mismatch, and the splash screen.
#include "src/dialogs/modNotices.h"

#include <gtest/gtest.h>

#include "src/dialogs/modDialogs.h"
#include "src/settings/modSettings.h"
#include "tests/fakes/test_application.h"

namespace
{

class TypeMatchNotification : public testing::Test
{
protected:
    TypeMatchNotification()
    {
        ConnectDialogs(app);
        frm.SetVisible(true);
    }

    TestApplication app;
    frmTypeMatchNotification& frm = app.frmTypeMatchNotification;
};

}  // namespace

TEST_F(TypeMatchNotification, HasItsTextsLetterByLetterInEveryLanguage)
{
    app.objTranslator.dictTranslations = {{"&Continue", "&Weiter"}, {"File Type Mismatch", "Dateityp"}};

    frmTypeMatchNotification_Load(app);

    EXPECT_EQ(frm.Caption(), "File Type Mismatch");
    EXPECT_EQ(
        frm.lblNotification.Caption(),
        "'Original File Format' and 'Original File' do not match.  For example, you may have chosen JPG "
        "for the file format, but specified \".BMP\" for the file extension.  Do you want to continue?");
    EXPECT_EQ(frm.chkDontShowAgain.Caption(), "Never show this message again");
    EXPECT_EQ(frm.cmdContinue.Caption(), "&Continue");
    EXPECT_EQ(frm.cmdCancel.Caption(), "Ca&ncel");
}

TEST_F(TypeMatchNotification, TellsWhichButtonEndedIt)
{
    frm.cmdContinue.UserClicks();
    EXPECT_TRUE(frm.bContinue);
    EXPECT_FALSE(frm.Visible());

    frm.SetVisible(true);
    frm.cmdCancel.UserClicks();
    EXPECT_FALSE(frm.bContinue);
    EXPECT_FALSE(frm.Visible());
}

TEST_F(TypeMatchNotification, TakesEscapeAndCloseForCancel)
{
    frm.bContinue = true;
    frm.UserPresses("Esc");
    EXPECT_FALSE(frm.bContinue);
    EXPECT_FALSE(frm.Visible());

    frm.SetVisible(true);
    frm.bContinue = true;
    frm.UserCloses();
    EXPECT_FALSE(frm.bContinue);
    EXPECT_FALSE(frm.Visible());
}

TEST_F(TypeMatchNotification, KeepsATickThatCancelFollows)
{
    frm.chkDontShowAgain.UserToggles();
    frm.cmdCancel.UserClicks();

    EXPECT_TRUE(frm.bDontShowAgain);
    EXPECT_FALSE(frm.bContinue);
    EXPECT_EQ(frm.chkDontShowAgain.Value(), 1);
}

TEST_F(TypeMatchNotification, InvertsTheFlagWithEachTick)
{
    frm.chkDontShowAgain.UserToggles();
    frm.chkDontShowAgain.UserToggles();
    EXPECT_FALSE(frm.bDontShowAgain);

    frm.bDontShowAgain = true;
    frm.chkDontShowAgain.UserToggles();
    EXPECT_FALSE(frm.bDontShowAgain);
}

TEST_F(TypeMatchNotification, ComesBackInTheNextRunInSpiteOfItsTick)
{
    frm.chkDontShowAgain.UserToggles();
    SaveIniFile(app);
    EXPECT_EQ(app.ini.Stored("frmTypeMatchNotification", "bDontShowFileMismatchAgain"), "True");
    EXPECT_EQ(app.ini.Stored("frmMain", "bDontShowFileMismatchAgain"), "(none)");
}

TEST(PleaseWait, TranslatesItsHeaderButNotTheMaker)
{
    TestApplication app;
    app.objTranslator.dictTranslations = {
        {"Varnel!", "Varnel?"}, {"Orbelan, Inc.", "wrong"}, {"Please wait...", "Bitte warten..."}};

    frmPleaseWait_Load(app);

    EXPECT_EQ(app.frmPleaseWait.lblHeader.Caption(), "Varnel?");
    EXPECT_EQ(app.frmPleaseWait.lblLine1.Caption(), "Orbelan, Inc.");
    EXPECT_EQ(app.frmPleaseWait.lblLine2.Caption(), "Bitte warten...");
}
