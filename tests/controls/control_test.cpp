// What all controls share: names, texts, the acts that they take, and what they tell their views.
#include "src/controls/control.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "src/controls/command_button.h"
#include "tests/fakes/recording_views.h"

namespace
{

struct NestedForm : Form {
    NestedForm() : Form("frmNested") {}
    Frame frameOuter{*this, "frameOuter"};
    Frame frameInner{frameOuter, "frameInner"};
    CommandButton cmd{frameInner, "cmd"};
    TextBox txt{*this, "txt"};
};

}  // namespace

TEST(Control, IsVisibleAndEnabledWhenNew)
{
    NestedForm frm;
    EXPECT_TRUE(frm.txt.Visible());
    EXPECT_TRUE(frm.txt.Enabled());
    EXPECT_EQ(frm.txt.Caption(), "");
}

TEST(Control, TellsOfEachChangeOnceAndOfNoneThatIsNone)
{
    NestedForm frm;
    RecordingView<TextBox> objView(frm.txt);

    for (int i = 0; i < 2; ++i) {
        frm.txt.SetCaption("c");
        frm.txt.SetToolTipText("t");
        frm.txt.SetTag("g");
        frm.txt.SetFontName("f");
        frm.txt.SetVisible(false);
        frm.txt.SetEnabled(false);
        frm.txt.SetForeColor(255);
        frm.txt.SetBackColor(0);
    }

    EXPECT_EQ(objView.sTold, "caption tip tag font visible enabled colors colors ");
    EXPECT_EQ(frm.txt.Caption() + frm.txt.ToolTipText() + frm.txt.Tag() + frm.txt.FontName(), "ctgf");
}

TEST(Control, AsksForTheFocusWhereSomebodyCanGiveIt)
{
    NestedForm frm;
    frm.txt.SetFocus();
    RecordingView<TextBox> objView(frm.txt);
    frm.txt.SetFocus();
    EXPECT_EQ(objView.sTold, "focus ");
}

TEST(Control, AsksToBeBroughtToTheFront)
{
    NestedForm frm;
    RecordingView<Frame> objView(frm.frameOuter);
    frm.frameOuter.BringToFront();
    EXPECT_EQ(objView.sTold, "front ");
}

TEST(Control, KnowsItsFormAndTheFrameAroundIt)
{
    NestedForm frm;
    EXPECT_EQ(&frm.cmd.frm(), &frm);
    EXPECT_EQ(frm.cmd.pFrame(), &frm.frameInner);
    EXPECT_EQ(frm.frameOuter.pFrame(), nullptr);
}

TEST(Control, TakesActsOnlyWhileAllAroundItDoes)
{
    NestedForm frm;
    int nClicks = 0;
    frm.cmd.OnClick = [&] { ++nClicks; };

    frm.cmd.UserClicks();
    EXPECT_EQ(nClicks, 1);
    for (Control* pControl : frm.cmd.frm().Controls()) {
        if (pControl == &frm.txt)
            continue;
        pControl->SetEnabled(false);
        frm.cmd.UserClicks();
        pControl->SetEnabled(true);
        pControl->SetVisible(false);
        frm.cmd.UserClicks();
        pControl->SetVisible(true);
    }
    frm.SetEnabled(false);
    frm.cmd.UserClicks();
    EXPECT_EQ(nClicks, 1);

    frm.SetEnabled(true);
    frm.cmd.UserClicks();
    EXPECT_EQ(nClicks, 2);
    EXPECT_TRUE(frm.cmd.Visible() && frm.cmd.Enabled());
}

TEST(Control, HandsAPersonsCommonActsToTheLogic)
{
    NestedForm frm;
    std::string sActs;
    frm.txt.OnLostFocus = [&] { sActs += "leave "; };
    frm.txt.OnDblClick = [&] { sActs += "double "; };
    frm.txt.OnDrop = [&](const std::vector<std::string>& aPaths) { sActs += "drop" + aPaths.at(1) + " "; };
    const auto fnActAll = [&] {
        frm.txt.UserLeaves();
        frm.txt.UserDoubleClicks();
        frm.txt.UserDrops({"/a", "/b"});
        frm.txt.UserDrops({});
    };

    fnActAll();
    EXPECT_EQ(sActs, "leave double drop/b ");
    frm.txt.SetEnabled(false);
    fnActAll();
    EXPECT_EQ(sActs, "leave double drop/b ");
}

TEST(Control, OffersAKeyToItsOwnHandlerThenToTheForm)
{
    NestedForm frm;
    std::string sKeys;
    frm.txt.OnKeyDown = [&](const std::string& sKey) {
        sKeys += "txt:" + sKey + " ";
        return sKey == "Del";
    };
    frm.OnKeyDown = [&](const std::string& sKey) {
        sKeys += "form:" + sKey + " ";
        return sKey == "Esc";
    };

    EXPECT_TRUE(frm.txt.UserPresses("Del"));
    EXPECT_TRUE(frm.txt.UserPresses("Esc"));
    EXPECT_FALSE(frm.txt.UserPresses("F7"));
    EXPECT_EQ(sKeys, "txt:Del txt:Esc form:Esc txt:F7 form:F7 ");
}

TEST(RedrawLock, NestsAndTellsAtTheEndOfTheOutermost)
{
    NestedForm frm;
    RecordingView<TextBox> objView(frm.txt);
    {
        const RedrawLock objOuter(frm.txt);
        {
            const RedrawLock objInner(frm.txt);
            frm.txt.SetText("a");
        }
        frm.txt.SetText("b");
        EXPECT_EQ(objView.sTold, "");
    }
    EXPECT_EQ(objView.sTold, "text ");
}

TEST(RedrawLock, TellsNothingWhereNothingChanged)
{
    NestedForm frm;
    RecordingView<TextBox> objView(frm.txt);
    {
        const RedrawLock objLock(frm.txt);
    }
    EXPECT_EQ(objView.sTold, "");
}

TEST(RedrawLock, TellsTheOthersFirstWhenAnObserverComesMeanwhile)
{
    NestedForm frm;
    RecordingView<TextBox> objFirst(frm.txt);
    {
        const RedrawLock objLock(frm.txt);
        frm.txt.SetText("a");
        RecordingView<TextBox> objSecond(frm.txt);
        EXPECT_EQ(objFirst.sTold, "text ");
        EXPECT_EQ(objSecond.sTold, "");
    }
    EXPECT_EQ(objFirst.sTold, "text ");
}
