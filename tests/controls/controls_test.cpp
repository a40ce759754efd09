// The plain controls: what setting them does and whom it tells.
#include "src/controls/controls.h"

#include <gtest/gtest.h>

#include "src/base/raised_error.h"

struct FieldForm : Form {
    FieldForm() : Form("frmFields") {}
    TextBox txt{*this, "txt"};
    ComboBox cb{*this, "cb"};
    CheckBox chk{*this, "chk"};
    OptionButton rbOne{*this, "rb(0)"};
    OptionButton rbTwo{*this, "rb(1)"};
    CommandButton cmd{*this, "cmd"};
    Action key{*this, "key"};
    TabStrip ts{*this, "ts"};
    StatusBar sb{*this, "sb"};
};

/// Counts what a control raises.
struct Counts {
    int nChanged = 0;
    int nChange = 0;
    int nClick = 0;
};

template <typename T>
static void Watch(T& objControl, Counts& objCounts)
{
    objControl.OnChanged = [&] { ++objCounts.nChanged; };
    if constexpr (requires { objControl.OnChange; })
        objControl.OnChange = [&] { ++objCounts.nChange; };
    if constexpr (requires { objControl.OnClick; })
        objControl.OnClick = [&] { ++objCounts.nClick; };
}

TEST(TextBox, TellsViewAndLogicOfANewText)
{
    FieldForm frm;
    Counts objCounts;
    Watch(frm.txt, objCounts);

    frm.txt.SetText("a");
    frm.txt.SetText("a");

    EXPECT_EQ(frm.txt.Text(), "a");
    EXPECT_EQ(objCounts.nChanged, 1);
    EXPECT_EQ(objCounts.nChange, 1);
}

TEST(TextBox, TellsTheViewBeforeTheLogic)
{
    FieldForm frm;
    std::string sOrder;
    frm.txt.OnChanged = [&] { sOrder += "v"; };
    frm.txt.OnChange = [&] { sOrder += "l"; };
    frm.txt.SetText("a");
    EXPECT_EQ(sOrder, "vl");
}

TEST(TextBox, LetsItsLogicWriteTheTextBack)
{
    FieldForm frm;
    frm.txt.OnChange = [&] { frm.txt.SetText("clean"); };
    frm.txt.SetText("\"dirty\"");
    EXPECT_EQ(frm.txt.Text(), "clean");
}

TEST(TextControl, SelectsNoMoreLettersThanItHas)
{
    FieldForm frm;
    int nSelected = 0;
    frm.txt.OnSelect = [&] { ++nSelected; };
    frm.txt.SetText("äöü");

    frm.txt.SelectFromStart(2);
    EXPECT_EQ(frm.txt.SelLength(), 2);
    frm.txt.SelectFromStart(100);
    EXPECT_EQ(frm.txt.SelLength(), 3);
    frm.txt.SelectFromStart(-1);
    EXPECT_EQ(frm.txt.SelLength(), 0);
    EXPECT_EQ(frm.txt.SelStart(), 0);
    EXPECT_EQ(nSelected, 3);

    frm.txt.SelectFromStart(3);
    frm.txt.SetText("a");
    EXPECT_EQ(frm.txt.SelLength(), 0);
}

/// A combo box of "one" (11) and "two" (22).
static void Fill(ComboBox& cb)
{
    cb.AddItem("one", 11);
    cb.AddItem("two", 22);
}

TEST(ComboBox, HasEntriesWithNumbersOfTheirOwn)
{
    FieldForm frm;
    Fill(frm.cb);

    EXPECT_EQ(frm.cb.ListCount(), 2);
    EXPECT_EQ(frm.cb.List(1), "two");
    EXPECT_EQ(frm.cb.ItemData(1), 22);
    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "");
}

TEST(ComboBox, ClicksForEverySelectionAlsoOfTheSameEntry)
{
    FieldForm frm;
    Fill(frm.cb);
    Counts objCounts;
    Watch(frm.cb, objCounts);

    frm.cb.SetListIndex(1);
    frm.cb.SetListIndex(1);

    EXPECT_EQ(frm.cb.Text(), "two");
    EXPECT_EQ(objCounts.nClick, 2);
    EXPECT_EQ(objCounts.nChange, 0);
    EXPECT_EQ(objCounts.nChanged, 2);
}

TEST(ComboBox, DeselectsWithMinusOne)
{
    FieldForm frm;
    Fill(frm.cb);
    frm.cb.SetListIndex(0);
    frm.cb.SetListIndex(-1);
    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "");
}

TEST(ComboBox, RaisesAnErrorForAnEntryThatIsntThere)
{
    FieldForm frm;
    Fill(frm.cb);
    frm.cb.SetListIndex(1);
    for (const std::int32_t lIndex : {2, -2, 1000000})
        EXPECT_THROW(frm.cb.SetListIndex(lIndex), clsRaisedError);
    EXPECT_EQ(frm.cb.ListIndex(), 1);
}

TEST(ComboBox, HasNoEntrySelectedOnceATextIsTyped)
{
    FieldForm frm;
    Fill(frm.cb);
    frm.cb.SetListIndex(1);
    Counts objCounts;
    Watch(frm.cb, objCounts);

    frm.cb.SetText("own");

    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "own");
    EXPECT_EQ(objCounts.nChange, 1);
    EXPECT_EQ(objCounts.nClick, 0);
}

TEST(ComboBox, TellsTheViewThatNoEntryIsSelectedAlsoWhenTheTextStays)
{
    FieldForm frm;
    Fill(frm.cb);
    frm.cb.SetListIndex(1);
    Counts objCounts;
    Watch(frm.cb, objCounts);

    frm.cb.SetText("two");

    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(objCounts.nChanged, 1);
    EXPECT_EQ(objCounts.nChange, 0);
}

TEST(ComboBox, ForgetsAllWhenCleared)
{
    FieldForm frm;
    Fill(frm.cb);
    frm.cb.SetListIndex(1);
    frm.cb.Clear();
    EXPECT_EQ(frm.cb.ListCount(), 0);
    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "");
}

TEST(CheckBox, ClicksOnlyWhenItsValueChanges)
{
    FieldForm frm;
    Counts objCounts;
    Watch(frm.chk, objCounts);

    frm.chk.SetValue(0);
    frm.chk.SetValue(1);
    frm.chk.SetValue(1);

    EXPECT_EQ(frm.chk.Value(), 1);
    EXPECT_EQ(objCounts.nClick, 1);
    EXPECT_EQ(objCounts.nChanged, 1);
}

TEST(OptionButton, TakesTheChoiceFromItsSiblingsWithoutAClickOfTheirs)
{
    FieldForm frm;
    const std::vector<OptionButton*> aGroup{&frm.rbOne, &frm.rbTwo};
    frm.rbOne.SetGroup(aGroup);
    frm.rbTwo.SetGroup(aGroup);
    frm.rbOne.SetValue(true);
    Counts objOne, objTwo;
    Watch(frm.rbOne, objOne);
    Watch(frm.rbTwo, objTwo);

    frm.rbTwo.SetValue(true);
    frm.rbTwo.SetValue(true);

    EXPECT_FALSE(frm.rbOne.Value());
    EXPECT_TRUE(frm.rbTwo.Value());
    EXPECT_EQ(objOne.nClick, 0);
    EXPECT_EQ(objOne.nChanged, 1);
    EXPECT_EQ(objTwo.nClick, 1);
    EXPECT_EQ(objTwo.nChanged, 1);
}

TEST(OptionButton, LosesItsChoiceWithoutAClick)
{
    FieldForm frm;
    frm.rbOne.SetValue(true);
    Counts objCounts;
    Watch(frm.rbOne, objCounts);
    frm.rbOne.SetValue(false);
    EXPECT_EQ(objCounts.nClick, 0);
    EXPECT_EQ(objCounts.nChanged, 1);
}

TEST(ButtonsAndActions, DoNothingWhileDisabled)
{
    FieldForm frm;
    Counts objButton, objAction;
    frm.cmd.Click();  // nobody listens
    Watch(frm.cmd, objButton);
    Watch(frm.key, objAction);

    frm.cmd.Click();
    frm.key.Choose();
    frm.cmd.SetEnabled(false);
    frm.key.SetEnabled(false);
    frm.cmd.Click();
    frm.key.Choose();

    EXPECT_EQ(objButton.nClick, 1);
    EXPECT_EQ(objAction.nClick, 1);
}

TEST(TabStrip, ClicksForEverySelection)
{
    FieldForm frm;
    frm.ts.SetTabs({"Job", "Log"});
    Counts objCounts;
    Watch(frm.ts, objCounts);

    frm.ts.SelectTab(2);
    frm.ts.SelectTab(2);

    EXPECT_EQ(frm.ts.SelectedTab(), 2);
    EXPECT_EQ(objCounts.nClick, 2);
}

TEST(StatusBar, MakesThePanelsThatAreWrittenTo)
{
    FieldForm frm;
    Counts objCounts;
    Watch(frm.sb, objCounts);

    frm.sb.SetPanel(11, "1.5");
    frm.sb.SetPanel(11, "1.5");
    frm.sb.SetPanel(0, "none");
    frm.sb.SetPanel(-1, "none");

    EXPECT_EQ(frm.sb.Panel(11), "1.5");
    EXPECT_EQ(frm.sb.Panel(2), "");
    EXPECT_EQ(frm.sb.Panel(0), "");
    EXPECT_EQ(frm.sb.Panel(99), "");
    EXPECT_EQ(objCounts.nChanged, 1);
}
