// List boxes: entries and the selected one.
#include "src/controls/lists/list_box.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "src/base/raised_error.h"
#include "tests/fakes/recording_views.h"

namespace
{

struct ListForm : Form {
    ListForm() : Form("frmList")
    {
        List1.AddItem("English", 1);
        List1.AddItem("Deutsch", 2);
        List1.OnClick = [this] { ++nClick; };
    }
    ListBox List1{*this, "List1"};
    int nClick = 0;
};

}  // namespace

TEST(ListBox, HasNoEntrySelectedWhenNew)
{
    ListForm frm;
    EXPECT_EQ(frm.List1.ListIndex(), -1);
    EXPECT_EQ(frm.List1.Text(), "");
    EXPECT_EQ(frm.List1.ListCount(), 2);
    EXPECT_EQ(frm.List1.ItemData(1), 2);
}

TEST(ListBox, ClicksForAnotherSelectionOfTheProgram)
{
    ListForm frm;
    RecordingView<ListBox> objView(frm.List1);

    frm.List1.SetListIndex(1);
    frm.List1.SetListIndex(1);

    EXPECT_EQ(frm.List1.Text(), "Deutsch");
    EXPECT_EQ(frm.nClick, 1);
    EXPECT_EQ(objView.sTold, "index ");
}

TEST(ListBox, ClicksForEveryChoiceOfAPerson)
{
    ListForm frm;
    frm.List1.UserChooses(1);
    frm.List1.UserChooses(1);
    frm.List1.UserChooses(2);
    frm.List1.SetEnabled(false);
    frm.List1.UserChooses(0);
    EXPECT_EQ(frm.nClick, 2);
    EXPECT_EQ(frm.List1.ListIndex(), 1);
}

TEST(ListBox, RaisesAnErrorForAnEntryThatIsntThere)
{
    ListForm frm;
    for (const std::int32_t lIndex : {2, -2})
        EXPECT_THROW(frm.List1.SetListIndex(lIndex), clsRaisedError);
}

TEST(ListBox, TellsTheViewOnceWhenItIsFilled)
{
    ListForm frm;
    frm.List1.SetListIndex(1);
    RecordingView<ListBox> objView(frm.List1);
    {
        const RedrawLock objLock(frm.List1);
        frm.List1.Clear();
        EXPECT_EQ(frm.List1.ListIndex(), -1);
        for (int i = 0; i < 500; ++i)
            frm.List1.AddItem("entry");
    }
    EXPECT_EQ(objView.sTold, "items ");
}
