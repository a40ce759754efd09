// The commands of the help menu.
#include "src/shell/modHelpMenu.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

namespace
{

struct HelpMenu : TestApplication {
    HelpMenu()
    {
        sHelpFile = "Varnel.HLP";
        frmMainMDI.SetVisible(true);
        ConnectHelpMenu(*this);
    }
};

}  // namespace

TEST(HelpMenu, OpensTheHelpAtItsStartAndAtTheCommandLine)
{
    HelpMenu app;

    app.frmMainMDI.mnuLaunchHelpFile.UserClicks();
    app.frmMainMDI.cmdHelpCommandLine.UserClicks();

    EXPECT_EQ(app.windows.help_calls, (std::vector<std::string>{"Varnel.HLP#-1234", "Varnel.HLP#30"}));
}

TEST(HelpMenu, OpensTheTopicOfTheMainWindowOnF1)
{
    HelpMenu app;

    EXPECT_TRUE(app.frmMainMDI.UserPresses("F1"));
    EXPECT_TRUE(app.frmMain.UserPresses("F1"));
    EXPECT_FALSE(app.frmMain.UserPresses("F2"));

    EXPECT_EQ(app.windows.help_calls, (std::vector<std::string>{"Varnel.HLP#10", "Varnel.HLP#10"}));
}

TEST(HelpMenu, ShowsTheAboutBox)
{
    HelpMenu app;

    app.frmMainMDI.mnuAbout.UserClicks();

    ASSERT_EQ(app.windows.modal_forms.size(), 1u);
    EXPECT_EQ(app.windows.modal_forms[0]->sName(), "frmAbout");
}

TEST(HelpMenu, OpensPagesWithTheDesktop)
{
    HelpMenu app;
    frmMainMDI& frm = app.frmMainMDI;

    for (Action* pPage : {&frm.mnuHelpOnLine, &frm.mnuHelpProductHomePage, &frm.mnuHelpProductUpdates,
                          &frm.mnuOrbelanHomePage, &frm.mnuAdditionalImageConversionTools})
        pPage->UserClicks();

    ASSERT_EQ(app.launcher.opened.size(), 5u);
    for (const std::string& sOpened : app.launcher.opened)
        EXPECT_TRUE(sOpened.starts_with("address https://")) << sOpened;
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST(HelpMenu, TellsOfAPageThatCannotBeOpened)
{
    HelpMenu app;
    app.launcher.can_open = false;

    app.frmMainMDI.mnuOrbelanHomePage.UserClicks();

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Unable to open:\r\n\r\nhttps://www.orbelan.example");
}
