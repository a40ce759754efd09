// Leaving a dialog, and its help.
#include "src/dispatch/modDialog.h"

#include <gtest/gtest.h>

#include "src/commands/modHelp.h"
#include "src/dispatch/modDispatcher.h"
#include "tests/fakes/test_application.h"

namespace
{

class Dialog : public testing::Test
{
protected:
    Dialog()
    {
        frm.cmdCancel.OnClick = Handler(app, [this](Application&) {
            ++lCancelled;
            frm.Unload();
        });
        ConnectDialog(app, frm, frm.cmdCancel, kHelpTypeMatch);
        frm.SetVisible(true);
    }

    TestApplication app;
    frmTypeMatchNotification& frm = app.frmTypeMatchNotification;
    int lCancelled = 0;
};

}  // namespace

TEST_F(Dialog, IsLeftByEscapeAsByItsButton)
{
    EXPECT_TRUE(frm.UserPresses("Esc"));

    EXPECT_EQ(lCancelled, 1);
    EXPECT_FALSE(frm.Visible());
}

TEST_F(Dialog, IsLeftByTheWindowsOwnButtonAsByItsButton)
{
    frm.UserCloses();

    EXPECT_EQ(lCancelled, 1);
    EXPECT_FALSE(frm.Visible());
}

TEST_F(Dialog, IsUnloadedByTheProgramWithoutItsButton)
{
    EXPECT_TRUE(frm.Unload());

    EXPECT_EQ(lCancelled, 0);
    EXPECT_FALSE(frm.Visible());
}

TEST_F(Dialog, OpensItsHelpTopicOnF1AndStaysOpen)
{
    InitializeHelpFile(app);

    EXPECT_TRUE(frm.cmdContinue.UserPresses("F1"));

    EXPECT_EQ(app.windows.help_calls, std::vector<std::string>{"Varnel.HLP#16"});
    EXPECT_TRUE(frm.Visible());
}

TEST_F(Dialog, LeavesOtherKeysAlone)
{
    EXPECT_FALSE(frm.UserPresses("F5"));

    EXPECT_EQ(lCancelled, 0);
    EXPECT_TRUE(app.windows.help_calls.empty());
}
