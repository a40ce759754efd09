// Tab strips: tabs that come and go, and the selected one.
#include "src/controls/tab_strip.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_views.h"

namespace
{

struct TabForm : Form {
    TabForm() : Form("frmTab")
    {
        ts.SetTabs({"Job", "Log"});
        ts.OnClick = [this] { ++nClick; };
    }
    TabStrip ts{*this, "ts"};
    int nClick = 0;
};

}  // namespace

TEST(TabStrip, ClicksForEverySelection)
{
    TabForm frm;
    RecordingView<TabStrip> objView(frm.ts);

    frm.ts.SelectTab(2);
    frm.ts.SelectTab(2);

    EXPECT_EQ(frm.ts.SelectedTab(), 2);
    EXPECT_EQ(frm.nClick, 2);
    EXPECT_EQ(objView.sTold, "selectedtab ");
}

TEST(TabStrip, ClicksForAPersonAlsoOnTheSelectedTab)
{
    TabForm frm;
    frm.ts.UserChooses(1);
    frm.ts.UserChooses(2);
    frm.ts.UserChooses(3);
    frm.ts.UserChooses(0);
    frm.ts.SetEnabled(false);
    frm.ts.UserChooses(1);
    EXPECT_EQ(frm.nClick, 2);
    EXPECT_EQ(frm.ts.SelectedTab(), 2);
}

TEST(TabStrip, ShowsTheTabBeforeTheLastOnceThatGoes)
{
    TabForm frm;
    frm.ts.AddTab("Preview");
    frm.ts.SelectTab(3);
    frm.nClick = 0;
    RecordingView<TabStrip> objView(frm.ts);

    frm.ts.RemoveTab(3);
    frm.ts.RemoveTab(3);

    EXPECT_EQ(frm.ts.SelectedTab(), 2);
    EXPECT_EQ(frm.nClick, 0);
    EXPECT_EQ(objView.sTold, "tabs selectedtab ");
}

TEST(TabStrip, GivesEachTabACaptionAndAToolTip)
{
    TabForm frm;
    RecordingView<TabStrip> objView(frm.ts);

    frm.ts.SetTabCaption(2, "Protokoll");
    frm.ts.SetTabCaption(2, "Protokoll");
    frm.ts.SetTabToolTipText(2, "tip");
    EXPECT_EQ(frm.ts.Tabs(), (std::vector<std::string>{"Job", "Protokoll"}));
    frm.ts.SetTabCaption(3, "none");
    frm.ts.SetTabs({});
    frm.ts.SetTabs({});

    EXPECT_EQ(objView.sTold, "tabs tabs tabs ");
    EXPECT_EQ(frm.ts.TabCount(), 0);
    EXPECT_EQ(frm.ts.TabCaption(1), "");
    frm.ts.AddTab("a");
    frm.ts.SetTabToolTipText(1, "tip");
    EXPECT_EQ(frm.ts.TabCaption(1) + frm.ts.TabToolTipText(1), "atip");
}
