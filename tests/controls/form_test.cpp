// A form: its controls, what it tells its window, and the window's acts.
#include "src/controls/form.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "src/controls/action.h"
#include "src/controls/command_button.h"
#include "src/controls/label.h"
#include "tests/fakes/recording_views.h"

namespace
{

struct TestForm : Form {
    TestForm() : Form("frmTest") {}
    Label lblOne{*this, "lblOne"};
    CommandButton cmdTwo{*this, "cmdTwo"};
    Action keyThree{*this, "keyThree"};
    Menu mnuFour{*this, "mnuFour"};
};

struct RecordingWindow : FormObserver {
    explicit RecordingWindow(Form& frm) : m_objWatch(frm, *this) {}
    void CaptionChanged() override { sTold += "caption "; }
    void VisibleChanged() override { sTold += "visible "; }
    void EnabledChanged() override { sTold += "enabled "; }
    void FontChanged() override { sTold += "font "; }
    void PlaceChanged() override { sTold += "place "; }
    void HourglassChanged() override { sTold += "hourglass "; }
    void BroughtToFront() override { sTold += "front "; }
    std::string sTold;

private:
    Observation m_objWatch;
};

}  // namespace

TEST(Form, KnowsItsControlsInTheOrderOfTheirDeclaration)
{
    TestForm frm;

    EXPECT_EQ(frm.sName(), "frmTest");
    EXPECT_EQ(frm.Controls(), (std::vector<Control*>{&frm.lblOne, &frm.cmdTwo, &frm.keyThree, &frm.mnuFour}));
    EXPECT_EQ(frm.pControl("cmdTwo"), &frm.cmdTwo);
    EXPECT_EQ(frm.pControl("cmdNone"), nullptr);
}

TEST(Form, TellsOfItsCaptionAndItsShowing)
{
    TestForm frm;
    RecordingWindow objWindow(frm);

    frm.SetCaption("Job");
    frm.SetVisible(true);

    EXPECT_EQ(frm.Caption(), "Job");
    EXPECT_TRUE(frm.Visible());
    EXPECT_EQ(objWindow.sTold, "caption visible ");
}

TEST(Form, TellsOfEachChangeOnceAndOfNoneThatIsNone)
{
    TestForm frm;
    RecordingWindow objWindow(frm);

    for (int i = 0; i < 2; ++i) {
        frm.SetEnabled(false);
        frm.SetFontName("f");
        frm.SetPlace({kWindowNormal, 1, 2, 3, 4});
        frm.SetHourglass(true);
    }
    frm.BringToFront();

    EXPECT_EQ(objWindow.sTold, "enabled font place hourglass front ");
}

TEST(Form, ClosesForAPersonUnlessItsLogicRefuses)
{
    TestForm frm;
    frm.SetVisible(true);
    std::string sCalls;
    bool bLet = false;
    frm.OnQueryUnload = [&](CloseReason eReason) {
        sCalls += eReason == CloseReason::User ? "user? " : "program? ";
        return bLet;
    };
    frm.OnUnload = [&] { sCalls += "unload "; };

    EXPECT_FALSE(frm.UserCloses());
    EXPECT_TRUE(frm.Visible());
    bLet = true;
    EXPECT_TRUE(frm.UserCloses());

    EXPECT_FALSE(frm.Visible());
    EXPECT_EQ(sCalls, "user? user? unload ");
}

TEST(Form, ClosesForTheProgramInTheSameWay)
{
    TestForm frm;
    frm.SetVisible(true);
    bool bLet = false;
    frm.OnQueryUnload = [&](CloseReason eReason) { return bLet && eReason == CloseReason::Program; };

    EXPECT_FALSE(frm.Unload());
    EXPECT_TRUE(frm.Visible());
    bLet = true;
    EXPECT_TRUE(frm.Unload());
    EXPECT_FALSE(frm.Visible());
}

TEST(Form, KeepsThePlaceThatAPersonGivesTheWindow)
{
    TestForm frm;
    RecordingWindow objWindow(frm);
    int nResized = 0;
    frm.OnResize = [&] { ++nResized; };

    frm.UserPlaces({kWindowMaximized, 1, 2, 3, 4});
    frm.UserPlaces({kWindowMaximized, 1, 2, 3, 4});
    frm.SetPlace({kWindowNormal, 1, 2, 3, 4});

    EXPECT_EQ(frm.Place(), (WindowPlace{kWindowNormal, 1, 2, 3, 4}));
    EXPECT_EQ(nResized, 1);
    EXPECT_EQ(objWindow.sTold, "place place ");
}

TEST(Form, FindsTheActionThatAKeyBelongsTo)
{
    TestForm frm;
    frm.keyThree.SetShortcut("F5");
    int nClicks = 0;
    frm.keyThree.OnClick = [&] { ++nClicks; };

    EXPECT_TRUE(frm.UserPresses("F5"));
    EXPECT_FALSE(frm.UserPresses("F6"));
    frm.keyThree.SetEnabled(false);
    EXPECT_FALSE(frm.UserPresses("F5"));

    EXPECT_EQ(nClicks, 1);
}

TEST(Form, OffersAKeyToItsLogicBeforeItsActions)
{
    TestForm frm;
    frm.keyThree.SetShortcut("F5");
    frm.keyThree.OnClick = [] { FAIL(); };
    frm.OnKeyDown = [](const std::string& sKey) { return sKey == "F5"; };
    EXPECT_TRUE(frm.UserPresses("F5"));
}

TEST(Form, TakesNoKeyWhileDisabled)
{
    TestForm frm;
    frm.SetEnabled(false);
    frm.OnKeyDown = [](const std::string&) { return true; };
    EXPECT_FALSE(frm.UserPresses("F5"));
}

TEST(Action, ClicksForBothDoorsWhileItMay)
{
    TestForm frm;
    int nClicks = 0;
    frm.keyThree.UserClicks();  // no handler yet
    frm.keyThree.OnClick = [&] { ++nClicks; };

    frm.keyThree.Click();
    frm.keyThree.UserClicks();
    EXPECT_EQ(nClicks, 2);

    frm.keyThree.SetEnabled(false);
    frm.keyThree.Click();
    frm.keyThree.UserClicks();
    EXPECT_EQ(nClicks, 2);
}

TEST(Menu, HoldsActionsAndSeparatorsInTheirOrder)
{
    TestForm frm;
    frm.mnuFour.SetActions({&frm.keyThree, nullptr});
    frm.keyThree.SetDropDown(frm.mnuFour);
    EXPECT_EQ(frm.mnuFour.Actions(), (std::vector<Action*>{&frm.keyThree, nullptr}));
    EXPECT_EQ(frm.keyThree.pDropDown(), &frm.mnuFour);
}

TEST(CommandButton, DoesNothingWhileDisabled)
{
    TestForm frm;
    int nClicks = 0;
    frm.cmdTwo.Click();  // no handler yet
    frm.cmdTwo.OnClick = [&] { ++nClicks; };

    frm.cmdTwo.Click();
    frm.cmdTwo.SetEnabled(false);
    frm.cmdTwo.Click();
    frm.cmdTwo.UserClicks();

    EXPECT_EQ(nClicks, 1);
}

TEST(Label, CanBeClicked)
{
    TestForm frm;
    int nClicks = 0;
    frm.lblOne.OnClick = [&] { ++nClicks; };
    frm.lblOne.UserClicks();
    frm.lblOne.SetVisible(false);
    frm.lblOne.UserClicks();
    EXPECT_EQ(nClicks, 1);
}
