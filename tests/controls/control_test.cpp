// What all controls and forms share: names, captions, state, observers.
#include "src/controls/control.h"

#include <gtest/gtest.h>

#include "src/controls/controls.h"

struct TestForm : Form {
    TestForm() : Form("frmTest") {}
    Label lblOne{*this, "lblOne"};
    CommandButton cmdTwo{*this, "cmdTwo"};
};

TEST(Form, KnowsItsControlsInTheOrderOfTheirDeclaration)
{
    TestForm frm;

    EXPECT_EQ(frm.sName(), "frmTest");
    EXPECT_EQ(frm.Controls(), (std::vector<Control*>{&frm.lblOne, &frm.cmdTwo}));
    EXPECT_EQ(frm.pControl("cmdTwo"), &frm.cmdTwo);
    EXPECT_EQ(frm.pControl("cmdNone"), nullptr);
}

TEST(Form, TellsOfItsCaptionAndItsShowing)
{
    TestForm frm;
    int nTold = 0;
    frm.OnChanged = [&] { ++nTold; };

    frm.SetCaption("Job");
    frm.SetVisible(true);

    EXPECT_EQ(frm.Caption(), "Job");
    EXPECT_TRUE(frm.Visible());
    EXPECT_EQ(nTold, 2);
}

TEST(Control, IsVisibleAndEnabledWhenNew)
{
    TestForm frm;
    EXPECT_TRUE(frm.lblOne.Visible());
    EXPECT_TRUE(frm.lblOne.Enabled());
    EXPECT_EQ(frm.lblOne.Caption(), "");
}

TEST(Control, TellsOfEachChangeOnceAndOfNoneThatIsNone)
{
    TestForm frm;
    int nTold = 0;
    frm.lblOne.OnChanged = [&] { ++nTold; };

    for (int i = 0; i < 2; ++i) {
        frm.lblOne.SetCaption("c");
        frm.lblOne.SetToolTipText("t");
        frm.lblOne.SetTag("g");
        frm.lblOne.SetFontName("f");
        frm.lblOne.SetVisible(false);
        frm.lblOne.SetEnabled(false);
    }

    EXPECT_EQ(nTold, 6);
    EXPECT_EQ(frm.lblOne.Caption() + frm.lblOne.ToolTipText() + frm.lblOne.Tag() + frm.lblOne.FontName(),
              "ctgf");
}

TEST(Control, AsksForTheFocusWhereSomebodyCanGiveIt)
{
    TestForm frm;
    int nAsked = 0;
    frm.lblOne.SetFocus();
    frm.lblOne.OnSetFocus = [&] { ++nAsked; };
    frm.lblOne.SetFocus();
    EXPECT_EQ(nAsked, 1);
}
