// Fields of text: who is told of a new one, and what may be selected in it.
#include "src/controls/text_box.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/fakes/recording_views.h"

namespace
{

struct TextForm : Form {
    TextForm() : Form("frmText") {}
    TextBox txt{*this, "txt"};
};

}  // namespace

TEST(TextBox, TellsViewAndLogicOfANewText)
{
    TextForm frm;
    RecordingView<TextBox> objView(frm.txt);
    int nChange = 0;
    frm.txt.OnChange = [&] { ++nChange; };

    frm.txt.SetText("a");
    frm.txt.SetText("a");

    EXPECT_EQ(frm.txt.Text(), "a");
    EXPECT_EQ(objView.sTold, "text ");
    EXPECT_EQ(nChange, 1);
}

TEST(TextBox, TellsTheViewBeforeTheLogic)
{
    TextForm frm;
    RecordingView<TextBox> objView(frm.txt);
    frm.txt.OnChange = [&] { objView.sTold += "logic "; };
    frm.txt.SetText("a");
    EXPECT_EQ(objView.sTold, "text logic ");
}

TEST(TextBox, LetsItsLogicWriteTheTextBack)
{
    TextForm frm;
    frm.txt.OnChange = [&] { frm.txt.SetText("clean"); };
    frm.txt.SetText("\"dirty\"");
    EXPECT_EQ(frm.txt.Text(), "clean");
}

TEST(TextBox, TellsTheLogicWhatAPersonTypes)
{
    TextForm frm;
    std::string sHeard;
    frm.txt.OnChange = [&] { sHeard += frm.txt.Text() + " "; };

    frm.txt.UserTypes("a");
    frm.txt.UserTypes("a");
    frm.txt.UserTypes("ab");

    EXPECT_EQ(sHeard, "a ab ");
}

TEST(TextBox, GivesTheViewItsTextBackWhereNothingMayBeTyped)
{
    TextForm frm;
    RecordingView<TextBox> objView(frm.txt);
    frm.txt.OnChange = [] { FAIL(); };

    frm.txt.SetLocked(true);
    frm.txt.UserTypes("a");
    frm.txt.SetLocked(false);
    frm.SetEnabled(false);
    frm.txt.UserTypes("b");

    EXPECT_EQ(frm.txt.Text(), "");
    EXPECT_EQ(objView.sTold, "text text ");
}

TEST(TextControl, SelectsNoMoreLettersThanItHas)
{
    TextForm frm;
    frm.txt.SetText("äöü");
    RecordingView<TextBox> objView(frm.txt);

    frm.txt.SelectFromStart(2);
    EXPECT_EQ(frm.txt.SelLength(), 2);
    frm.txt.SelectFromStart(100);
    EXPECT_EQ(frm.txt.SelLength(), 3);
    frm.txt.SelectFromStart(-1);
    EXPECT_EQ(frm.txt.SelLength(), 0);
    EXPECT_EQ(frm.txt.SelStart(), 0);
    EXPECT_EQ(objView.sTold, "selected selected selected ");

    frm.txt.SelectFromStart(3);
    frm.txt.SetText("a");
    EXPECT_EQ(frm.txt.SelLength(), 0);
}
